#!/usr/bin/env bash
# Installs what building, running and testing need and this machine lacks: Debian packages, nothing else.
#   scripts/setup.sh [--lint] [--fuzz] [--package]
# --lint: also what the format and lint checks need; --fuzz: the fuzzer; --package: the packages
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

packages=(g++-mingw-w64-x86-64-posix cmake ninja-build g++ googletest wine wine64 xvfb imagemagick
    fonts-wine fonts-ipafont-gothic fonts-wqy-microhei fp-utils libxml2-utils)
for option in "$@"; do
    case $option in
        --lint) packages+=(clang-format clang-tidy) ;;
        --fuzz) packages+=(clang-14 clang libclang-rt-14-dev) ;;
        --package) packages+=(nsis zip jq openssl osslsigncode python3-jsonschema) ;;
        *) die "unknown option: $option" ;;
    esac
done

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

missing=()
for package in "${packages[@]}"; do
    is_installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" != 0 ]; then
    as_root=(sudo -n)
    sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v; } || die "these packages are missing and need root to install: ${missing[*]}"
fi
command -v apt-get >/dev/null || die "this is no Debian; these packages are missing: ${missing[*]}"

log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt_get() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q "$@" >>"$log" 2>&1 </dev/null
}
apt_get update || true  # a broken list may still leave the packages at hand
apt_get install -y --no-install-recommends "${missing[@]}" ||
    die "these packages are missing and could not be installed ($(grep -m1 '^E:' "$log" || echo "no reason given")): ${missing[*]}"
