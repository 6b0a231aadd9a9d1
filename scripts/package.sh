#!/usr/bin/env bash
# Makes the packages in build/package: the installer, the zip for use without installing, the bill of materials, and
# SHA256SUMS. The same commit always gives the same bytes: every time in them is that of the commit.
# Where SIGN_CERTIFICATE names a file (see scripts/sign.sh), program, installer and uninstaller are signed.
#   scripts/package.sh [--test-kit]     --test-kit: a zip with the tests as well, to run on a computer with Windows
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

"$root/scripts/setup.sh" --package
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")
[ -n "$version" ] || die "CMakeLists.txt tells no version"
if [ -z "${SOURCE_DATE_EPOCH:-}" ]; then
    SOURCE_DATE_EPOCH=$(git -C "$root" log -1 --format=%ct 2>/dev/null || stat -c %Y "$root/CHANGELOG.md")
fi
export SOURCE_DATE_EPOCH TZ=UTC LC_ALL=C.UTF-8

build_preset release PluginManager PluginManagerCmd || die "the build failed"
"$root/scripts/help.sh" >/dev/null || die "the help file could not be made"
for program in PluginManager PluginManagerCmd; do
    "$root/scripts/check-program.sh" "$bin/$program.exe" >&2 || die "$program asks more of the system than it may"
    ! grep -qaF "$root" "$bin/$program.exe" || die "$program holds the path of its sources"
done

package=$build/package
name=CorvanePluginManager-$version
files=$package/$name  # as they lie in the zip
rm -rf "$package"
mkdir -p "$files"
cp "$bin"/PluginManager{.exe,Cmd.exe,.chm,-LICENSE.txt} "$files"
chmod 644 "$files"/*
sign=
if [ -n "${SIGN_CERTIFICATE:-}" ]; then
    sign=$root/scripts/sign.sh
    for program in "$files"/*.exe; do
        quietly "$package/sign.log" "$sign" "$program" || die "$program could not be signed"
    done
fi
touch -d "@$SOURCE_DATE_EPOCH" "$files"/*
installed_kb=$(cat "$files"/* | wc -c | awk '{print int(($1 + 1023) / 1024)}')

languages installer | sed 's/.*/!insertmacro MUI_LANGUAGE "&"/' >"$package/languages.nsh"
quietly "$package/installer.log" makensis -INPUTCHARSET UTF8 -WX -V3 "-DVERSION=$version" "-DFILES=$files" \
    "-DLANGUAGES=$package/languages.nsh" "-DSIZE_KB=$installed_kb" ${sign:+"-DSIGN=$sign"} \
    "-DOUTPUT=$package/$name-setup.exe" "$root/packaging/installer.nsi" ||
    die "the installer could not be made"
[ -z "$sign" ] || quietly "$package/sign.log" "$sign" "$package/$name-setup.exe" || die "the installer could not be signed"

# Windows line ends, as in the licence.
sed "s/@VERSION@/$version/; s/\$/\r/" "$root/packaging/readme.txt" >"$files/readme.txt"
chmod 644 "$files/readme.txt"
touch -d "@$SOURCE_DATE_EPOCH" "$files/readme.txt"
(cd "$package" && find "$name" -type f | LC_ALL=C sort | zip -q -X -9 "$name-portable.zip" -@)

"$root/scripts/sbom.sh" "$version" "$files"/PluginManager{,Cmd}.exe >"$package/$name-sbom.cdx.json" || die "the bill of materials could not be made"
(cd "$package" && sha256sum "$name-portable.zip" "$name-sbom.cdx.json" "$name-setup.exe" >SHA256SUMS)
echo "$package/$name-setup.exe"
echo "$package/$name-portable.zip"
echo "$package/$name-sbom.cdx.json"

# All that the tests need beside them; what they take from the tree otherwise is in the programs.
make_test_kit() {
    local kit=$package/$name-test-kit file
    build_preset release unit_tests system_tests gui_tests program_tests studio_registrar || die "the build failed"
    mkdir -p "$kit/Database"
    cp "$bin"/{studio_registrar.exe,stand_in_tool.exe,studio.reg} "$root"/samples/*.pgl "$kit"
    for file in {unit,system,gui,program}_tests.exe Database/VrnDatabase.dll; do
        x86_64-w64-mingw32-strip -o "$kit/$file" "$bin/$file"
    done
    cp "$root/docs/hand-trials.md" "$kit/hand-trials.txt"
    cp "$root"/packaging/test-kit/* "$kit"
    sed -i "s/@VERSION@/$version/; s/@DATE@/$(date -d "@$SOURCE_DATE_EPOCH" +%F)/; s/\$/\r/" "$kit"/*.{cmd,txt}
    cp "$files"/PluginManager* "$kit"  # its licence has its line ends
    find "$kit" -type f -exec chmod 644 {} + -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
    (cd "$package" && find "$name-test-kit" -type f | LC_ALL=C sort | zip -q -X -9 "$name-test-kit.zip" -@)
    (cd "$package" && sha256sum "$name-test-kit.zip" >>SHA256SUMS)
    echo "$package/$name-test-kit.zip"
}

if [[ " $* " == *" --test-kit "* ]]; then make_test_kit; fi
