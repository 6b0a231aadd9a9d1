#!/usr/bin/env bash
# Fills in the manifest for the package manager of Windows: packaging/winget/, with the address that the installer in
# build/package will be downloaded from.
#   scripts/winget.sh https://.../CorvanePluginManager-VERSION-setup.exe
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

url=${1:-}
[[ $url =~ ^https://[^[:space:]\"]+$ ]] || die "the address has to begin with https://"
setup=$(echo "$build"/package/CorvanePluginManager-*-setup.exe)
[ -f "$setup" ] || die "scripts/package.sh has to run first"
version=$(basename "${setup%-setup.exe}")
version=${version##*-}
hash=$(sha256sum "$setup" | cut -d' ' -f1)

manifest=$build/package/winget
mkdir -p "$manifest"
for file in "$root"/packaging/winget/*.yaml; do
    text=$(<"$file")
    text=${text//@VERSION@/"$version"}
    text=${text//@URL@/"$url"}
    echo "${text//@HASH@/"${hash^^}"}" >"$manifest/$(basename "$file")"
done
echo "$manifest"
