#!/usr/bin/env bash
# Makes the packages and tests them under Wine: installs silently for all users and for one, runs the program from
# there, removes it again, and compares registry and disk. Prints what failed; the last line counts.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

passed=0 failed=0
package=$build/package
work=$build/package-test
title='Corvane Plug-in Manager x64'
uninstaller=PluginManager-uninstall.exe licence=PluginManager-LICENSE.txt
uninstall_key='Software\Microsoft\Windows\CurrentVersion\Uninstall\CorvanePluginManager'
company_key='Software\Corvane Music Software'
machine=HKEY_LOCAL_MACHINE user=HKEY_CURRENT_USER
layout_class=CorvanePluginManager.Layout
tools_menu_entry="$machine\\$company_key\\Tools Menu\\Plugin Manager"
export LC_ALL=C.UTF-8  # for the letters in folder names

# check WHAT COMMAND...: one test; what the command prints is shown when it fails.
check() {
    local what=$1
    shift
    if "$@" >"$work/output.txt" 2>&1 </dev/null; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        echo "failed: $what"
        sed 's/^/    /' "$work/output.txt"
    fi
}

not() {
    ! "$@"
}

# on_disk FOLDER: a Windows path below C: as the Linux side sees it.
on_disk() {
    local path=${1#C:}
    printf '%s' "$WINEPREFIX/drive_c${path//\\//}"
}

# run_silently PROGRAM ARGUMENT...: without quotes around the folder that "/D=" or "_?=" names, which is taken as it
# stands up to the line's end.
run_silently() {
    local program=$1
    shift
    # shellcheck disable=SC2048,SC2086
    timeout -k 10 120 wine "$program" /S $*
}

run_setup() {
    run_silently "$package/$name-setup.exe" "$@"
}

ends_with() {
    local wanted=$1 status=0
    shift
    "$@" || status=$?
    [ "$status" = "$wanted" ] || { echo "exit code $status instead of $wanted"; return 1; }
}

# value_of KEY NAME: a text of the registry, read from an export, because that knows all letters.
value_of() {
    wine regedit /E "$(windows_path "$work/key.reg")" "$1"
    iconv -f utf-16 -t utf-8 "$work/key.reg" | tr -d '\r' |
        sed -n "s/^\"$2\"=\"\(.*\)\"\$/\1/p" | sed 's/\\\(.\)/\1/g'
}

has_value() {
    local found
    found=$(value_of "$1" "$2")
    [ "$found" = "$3" ] || { echo "$1 $2: '$found' instead of '$3'"; return 1; }
}

# snapshot NAME: the files of the disk, and the registry without what Wine and its list of devices note down.
snapshot() {
    local hive
    : >"$work/$1.txt"
    for hive in "$machine\\Software" "$user"; do
        wine regedit /E "$(windows_path "$work/hive.reg")" "$hive"
        iconv -f utf-16 -t utf-8 "$work/hive.reg" | tr -d '\r' >>"$work/$1.txt"
    done
    awk '/^\[/ {skipped = /\\Software\\(Wine|Microsoft\\ActiveMovie\\devenum)/} !skipped' "$work/$1.txt" >"$work/registry.txt"
    (cd "$WINEPREFIX/drive_c" && find . \( -iname temp -o -name '*.log' \) -prune -o -printf '%P %y\n' | sort) |
        cat "$work/registry.txt" - >"$work/$1.txt"
}

same_as_before() {
    snapshot after
    diff "$work/before.txt" "$work/after.txt"
}

# opens_layouts ROOT FOLDER: Windows offers the copy there for layouts, and no more than that.
opens_layouts() {
    local key
    : >"$work/classes.txt"
    for key in "$layout_class" .pgl; do
        wine regedit /E "$(windows_path "$work/key.reg")" "$1\\Software\\Classes\\$key"
        iconv -f utf-16 -t utf-8 "$work/key.reg" | tr -d '\r' >>"$work/classes.txt"
    done
    cat "$work/classes.txt"
    [ "$(grep '^["@]' "$work/classes.txt")" = '@="Plug-in Menu Layout"
@="\"'"${2//\\/\\\\}"'\\PluginManager.exe\" \"%1\""
"'"$layout_class"'"=""' ]
}

start_program() {
    wine "$1\\PluginManager.exe" >/dev/null 2>&1 </dev/null &
    program=$!
    timeout -k 10 60 wine "$bin/window_probe.exe" --popup "$title"
}

close_program() {
    timeout -k 10 60 wine "$bin/window_probe.exe" --popup "$title" --close && wait "$program"
}

# Starts the uninstaller as Windows does, by its entry among the installed programs; its work goes on in a copy of it.
uninstall() {
    local root=$1 folder=$2 command
    command=$(value_of "$root\\$uninstall_key" QuietUninstallString)
    [ "$command" = "\"$folder\\$uninstaller\" /S" ] || { echo "the entry says $command"; return 1; }
    run_silently "$folder\\$uninstaller"
    wait_for 30 not wine reg query "$root\\$uninstall_key" && wait_for 30 not test -e "$(on_disk "$folder\\$uninstaller")"
}

# What is installed is what the zip holds, without its own readme.
has_program_files() {
    local file folder
    folder=$(on_disk "$1")
    for file in "$package/$name"/*; do
        [ "$(basename "$file")" = readme.txt ] || cmp "$file" "$folder/$(basename "$file")" || return 1
    done
    [ -e "$folder/$uninstaller" ] && [ ! -e "$folder/PluginManager-new" ]
}

# In its version resource; the letters there have 16 bits, most of them with a zero.
names_itself() {
    tr -d '\0' <"$package/$name/PluginManager.exe" >"$work/letters.txt"
    LC_ALL=C grep -qaP 'LegalCopyrightCopyright \xa9 ' "$work/letters.txt" && grep -qa "ProductVersion$version" "$work/letters.txt"
}

# As after another checkout, whose files have other times.
same_bytes_again() {
    cp "$package/SHA256SUMS" "$work/SHA256SUMS"
    rm -f "$bin"/PluginManager{,Cmd}.exe "$bin/PluginManager.chm"
    touch "$root/packaging"/* "$root/LICENSE" "$root/res"/*.ico
    "$root/scripts/package.sh" --test-kit && diff "$work/SHA256SUMS" "$package/SHA256SUMS"
}

# What the format requires (bom-1.5.schema.json), and what no program of this toolchain goes without.
bill_is_complete() {
    jq -e --arg version "$version" --arg hash "$(sha256sum <"$package/$name/PluginManager.exe" | cut -d' ' -f1)" '
        .bomFormat == "CycloneDX" and .specVersion == "1.5" and .version == 1 and
        (.serialNumber | test("^urn:uuid:[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$")) and
        (.metadata.component | .type == "application" and .version == $version and .hashes[0].content == $hash and
            (.components[0].hashes[0].content | test("^[0-9a-f]{64}$"))) and
        ([.components[].name] | contains(["g++-mingw", "gcc-mingw", "mingw-w64-x86-64-dev", "nsis-common"])) and
        ([.components[].properties[].value] | contains(["/libstdc++.a", "/libgcc.a", "/libmingwex.a", "/libpthread.a"])) and
        all(.components[]; .type == "library" and (.version | test("^[0-9]")) and .licenses[0].expression and
            .purl == ."bom-ref" and (.purl | test("^pkg:deb/debian/[^+?]+@[^+?]+[?]arch=")))' "$package/$name-sbom.cdx.json"
}

# What the schemas of version 1.6.0 require (microsoft/winget-cli, schemas/JSON/manifests/v1.6.0), and what is filled in.
manifest_is_complete() {
    local url='https://example.com/a&b/setup.exe' all=$package/winget/CorvanePluginManager.CorvanePluginManager file keys key
    "$root/scripts/winget.sh" "$url" || return 1
    while read -r file keys; do
        for key in PackageIdentifier PackageVersion ManifestType 'ManifestVersion: 1.6.0' $keys; do
            grep -E "^(- |  )?$key(:|\$)" "$all$file" || { echo "$file lacks $key"; return 1; }
        done
    done <<'END'
.yaml DefaultLocale
.installer.yaml Installers Architecture InstallerType InstallerUrl InstallerSha256
.locale.en-US.yaml PackageLocale Publisher PackageName License ShortDescription
END
    key=$(sha256sum "$package/$name-setup.exe" | cut -d' ' -f1)
    [ "$(grep -ciF -e "InstallerUrl: \"$url\"" -e "InstallerSha256: $key" "$all.installer.yaml")" = 4 ] &&
        [ "$(grep -A 4 'Scope: ' "$all.installer.yaml" | grep -oE '(user|machine|/AllUsers|/CurrentUser)$' | xargs)" = \
            'user /CurrentUser machine /AllUsers' ] &&
        ! grep @ "$package"/winget/*.yaml && not "$root/scripts/winget.sh" 'ftp://example.com/setup.exe'
}

# With a certificate that nobody else trusts.
sign_packages() {
    openssl req -x509 -newkey rsa:2048 -nodes -subj '/CN=Package test' -addext extendedKeyUsage=codeSigning -days 2 \
        -keyout "$work/key.pem" -out "$work/certificate.pem" &&
        openssl pkcs12 -export -inkey "$work/key.pem" -in "$work/certificate.pem" -passout 'pass:not a secret' \
            -out "$work/certificate.p12" &&
        SIGN_CERTIFICATE=$work/certificate.p12 SIGN_PASSWORD='not a secret' "$root/scripts/package.sh" &&
        mv "$package"/*-setup.exe "$work/signed-setup.exe"
}

zip_is_whole() {
    (cd "$work" && cmake -E tar xf "$package/$name-portable.zip") && diff -r "$package/$name" "$work/$name"
}

# What a user has made, where the program keeps it.
plant_user_work() {
    load_studio &&
        wine reg add "$user\\$company_key\\ExcludedPlugIns\\{11111111-2222-3333-4444-555555555555}" /f &&
        wine reg add "$user\\$company_key\\Corvane Plugin Manager" /v MenuLayoutsDirty /t REG_DWORD /d 1 /f
}

# As version 1.0 called its files.
give_old_names() {
    mv "$1/$uninstaller" "$1/Uninstall.exe" && mv "$1/$licence" "$1/LICENSE.txt"
    wine reg add "$user\\$uninstall_key" /v UninstallString /d "\"$2\\Uninstall.exe\"" /f >/dev/null
}

test_all_users() {
    local folder='C:\Program Files\Corvane Plugin Manager' own='C:\Own Tools'
    snapshot before
    check "silent, for all users" run_setup /AllUsers
    check "files" has_program_files "$folder"
    check "version among the installed programs" has_value "$machine\\$uninstall_key" DisplayVersion "$version"
    check "start menu" test -e "$(on_disk 'C:\ProgramData\Microsoft\Windows\Start Menu\Programs')/Corvane Plug-in Manager.lnk"
    check "Tools menu of the host" has_value "$tools_menu_entry" ExePath "$folder\\PluginManager.exe"
    check "one more program to open layouts with" opens_layouts "$machine" "$folder"
    run_setup /CurrentUser "/D=$own"
    check "one user's copy leaves the entry to that of all" has_value "$tools_menu_entry" ExePath "$folder\\PluginManager.exe"
    check "silent removal of one user's copy" uninstall "$user" "$own"
    check "and the entry is still there" has_value "$tools_menu_entry" ExePath "$folder\\PluginManager.exe"
    check "the program shows its window" start_program "$folder"
    check "the program closes" close_program
    check "silent removal" uninstall "$machine" "$folder"
    check "nothing is left" same_as_before
}

test_one_user() {
    local folder='C:\Müsik Tools\プラグイン 1' moved='C:\Müsik Tools\プラグイン 2' other='C:\Other\PluginManager.exe' there file
    there=$(on_disk "$folder")
    check "the user's work" plant_user_work
    snapshot before
    check "silent, for one user, into a folder with blanks and foreign letters" run_setup /CurrentUser "/D=$folder"
    check "files there" has_program_files "$folder"
    check "the machine's Tools menu is left alone" not wine reg query "$tools_menu_entry"

    check "the program shows its window there" start_program "$folder"
    check "a running program is not replaced" ends_with 2 run_setup
    check "a running program is not removed" ends_with 2 run_silently "$folder\\$uninstaller" "_?=$folder"
    check "nothing of it is gone" has_program_files "$folder"
    check "the program closes there" close_program

    wine reg add "$user\\$uninstall_key" /v DisplayVersion /d 99.0 /f >/dev/null
    check "a newer version is not replaced silently" ends_with 2 run_setup
    wine reg add "$user\\$uninstall_key" /v DisplayVersion /d "$version" /f >/dev/null
    echo "an older one" >"$there/PluginManager.exe"
    give_old_names "$there" "$folder"
    mkdir -p "$there/PluginManager-new/PluginManager.chm"
    check "a file that can't be written ends it" ends_with 2 run_setup
    rm -r "$there/PluginManager-new"
    check "and leaves the older version" grep -q "an older one" "$there/PluginManager.exe"
    check "which is replaced where it is" run_setup
    check "by the files of this one" has_program_files "$folder"
    check "and its version" has_value "$user\\$uninstall_key" DisplayVersion "$version"
    check "with other names" not compgen -G "$there/[UL]*"
    mkdir -p "$(on_disk "$moved")/$licence"
    check "a folder that can't be written to ends moving" ends_with 2 run_setup "/D=$moved"
    check "and leaves what was there" has_program_files "$folder"
    check "and nothing in the other folder" rmdir "$(on_disk "$moved")/$licence" "$(on_disk "$moved")"
    cp "$there/PluginManager.exe" "$there/$uninstaller"  # would open its window and wait
    check "moving to another folder, without running what lies in the old one" run_setup "/D=$moved"
    check "takes the files there" has_program_files "$moved"
    check "and is what layouts can be opened with" opens_layouts "$user" "$moved"
    check "and leaves none" not test -e "$there"
    check "silent removal for one user" uninstall "$user" "$moved"
    rmdir "$(on_disk 'C:\Müsik Tools')"  # a folder above its own is not the installer's to remove
    check "the user's work is left, and nothing else" same_as_before

    mkdir -p "$there"
    for file in Uninstall.exe LICENSE.txt notes.txt; do echo "another product's" >"$there/$file"; done
    cp -r "$there" "$work/strangers"
    run_setup /CurrentUser "/D=$folder"
    wine reg add "$tools_menu_entry" /v ExePath /d "$other" /f >/dev/null
    wine reg add "$user\\$uninstall_key" /v UninstallString /d "\"$folder\\Uninstall.exe\"" /f >/dev/null
    run_setup  # over a version 1.0, over whose files the other product was installed
    check "removal beside what others own" uninstall "$user" "$folder"
    check "another copy's entry in the Tools menu stays" has_value "$tools_menu_entry" ExePath "$other"
    check "strangers' files stay" diff -r "$work/strangers" "$there"
}

# The companion as scripts use it, with the sample studio. What it prints stands in docs/console.schema.json.
test_console() {
    local folder='C:\Console' list=$work/list.json
    local -x MANAGER="wine $folder\\PluginManagerCmd.exe"
    mkdir "$(on_disk "$folder")"
    cp "$package/$name"/PluginManager* "$root/samples/inventory.cmd" "$(on_disk "$folder")"
    check "the companion lists the studio" test "$($MANAGER list --format json | tee "$list" | jq length)" -gt 100
    check "as its schema says" python3 -m jsonschema -i "$list" "$root/docs/console.schema.json"
    check "which is strict" not python3 -m jsonschema -i <(jq '.[0].vstId = "x"' "$list") "$root/docs/console.schema.json"
    check "a script of the system's own" ends_with 0 wine cmd /c "$folder\\inventory.cmd" 'C:\inventory.csv'
    check "which writes an inventory" test "$(wc -l <"$(on_disk 'C:\inventory.csv')")" = "$(($(jq length "$list") + 1))"
    check "a shell script" ends_with 0 "$root/samples/hide-missing.sh"
    check "which has hidden what is missing" test "$($MANAGER list --only missing --format json |
        jq '[.[] | select(.excluded == false and .category != "surface" and .category != "qtz")] | length')" = 0
    check "and has nothing left to do" ends_with 0 "$root/samples/hide-missing.sh"
}

test_signed() {
    local folder='C:\Signed' file
    run_silently "$work/signed-setup.exe" /CurrentUser "/D=$folder"
    for file in "$work/signed-setup.exe" "$(on_disk "$folder")"/*.exe; do
        check "the signature of $(basename "$file")" osslsigncode verify -CAfile "$work/certificate.pem" -in "$file"
    done
    check "removal by a signed uninstaller, in place" ends_with 0 run_silently "$folder\\$uninstaller" "_?=$folder"
    check "which leaves nothing but itself" rm -d "$(on_disk "$folder\\$uninstaller")" "$(on_disk "$folder")"
}

# Libraries under the names of the system's beside the program. Others are none that can be planted here: Wine's own
# libraries take them from there. The probe asks for them as the program must not.
test_planted_libraries() {
    local folder='C:\Planted' library trace
    local -x WINEDLLOVERRIDES="$WINEDLLOVERRIDES;msdmo,hhctrl.ocx=n,b"
    trace=$(on_disk 'C:\planted.txt')
    mkdir "$(on_disk "$folder")"
    cp "$bin"/{PluginManager,PluginManagerCmd,window_probe}.exe "$(on_disk "$folder")"
    for library in msdmo.dll hhctrl.ocx; do
        cp "$bin/planted_library.dll" "$(on_disk "$folder\\$library")"
        wine "$folder\\window_probe.exe" --load "$library"
        check "a planted $library would be noticed" rm "$trace"
    done
    check "the companion runs beside them" wine "$folder\\PluginManagerCmd.exe" list
    wine "$folder\\PluginManager.exe" >/dev/null 2>&1 </dev/null &
    check "the program lists its plug-ins beside them" timeout -k 10 90 wine "$bin/window_probe.exe" --wait 60 --close
    check "and loads none of them" not test -e "$trace"
}

# kit_result FILE SETS COMMAND...: the kit runs so many sets without a failure and leaves a word of each in the file.
kit_result() {
    local file
    file=$(on_disk "$1")
    timeout -k 10 600 wine cmd /c "${@:3}" || echo "exit code $?"
    tr -d '\r' <"$file" >"$work/result.txt"
    cat "$work/result.txt"
    [ "$(grep -c '^exit code 0$' "$work/result.txt")" = "$2" ] && [ "$(grep -c '^\[  PASSED  \]' "$work/result.txt")" = "$2" ] &&
        grep -q '^--- end' "$work/result.txt"
}

# In a system of its own: outside of Windows Sandbox a sample, and all of it as if within.
test_kit() {
    local kit='C:\Test Kit' within='set USERNAME=WDAGUtilityAccount&call C:\TestKit\run-in-sandbox.cmd'
    stop_prefix "$WINEPREFIX"
    fresh_prefix "$build/kit-prefix"
    wine "$bin/window_probe.exe" --sleep >/dev/null 2>&1 </dev/null &
    # Wine's desktop comes up with the first window and keeps the output of the program that made it.
    wine "$bin/gui_tests.exe" '--gtest_filter=MainDialog.TabGoesThroughThePanesInReadingOrder' >/dev/null 2>&1
    (cd "$work" && cmake -E tar xf "$package/$name-test-kit.zip" && cp -r "$name-test-kit" "$(on_disk "$kit")")
    wine cmd /c "$kit\run-in-sandbox.cmd" >/dev/null 2>&1 </dev/null || true  # there is none to start
    check "the kit names its folders to the sandbox" grep -q '<HostFolder>C:.Test Kit.sandbox<' "$(on_disk "$kit\tests.wsb")"
    check "in a file that can be read" xmllint --noout "$(on_disk "$kit\tests.wsb")"
    check "the kit outside" kit_result "$kit\result.txt" 3 "$kit\run-tests.cmd" '--gtest_filter=CmdLine.*:Settings.*:Tips.*'
    check "leaves out the real program" grep -q '^Left out' "$(on_disk "$kit\result.txt")"
    check "and tells the screen" grep -q '^Screen: ' "$(on_disk "$kit\result.txt")"
    mkdir "$(on_disk 'C:\TestKitResult')"
    cp -r "$(on_disk "$kit")" "$(on_disk 'C:\TestKit')"
    check "the kit within" kit_result 'C:\TestKitResult\result.txt' 4 "$within"
}

rm -rf "$work"
mkdir -p "$work"
trap clear_up EXIT
check "packages are signed" sign_packages
"$root/scripts/package.sh" --test-kit
build_preset release window_probe studio_registrar planted_library || die "the build failed"
name=$(cd "$package" && echo CorvanePluginManager-*-setup.exe)
name=${name%-setup.exe}
version=${name##*-}
check "the same bytes when it is built again" same_bytes_again
check "the zip" zip_is_whole
check "the bill of materials" bill_is_complete
check "the manifest for the package manager" manifest_is_complete
check "a program that imports more is refused" ends_with 1 "$root/scripts/check-program.sh" "$bin/studio_registrar.exe"
check "the program file's version and copyright" names_itself

start_display
fresh_prefix "$build/package-prefix"
wine "$bin/window_probe.exe" --sleep >/dev/null 2>&1 </dev/null &
# The system's own, which every Windows has and a fresh prefix makes when they are first used.
for key in "${uninstall_key%\\*}" 'Software\Microsoft\ActiveMovie' 'Software\Classes'; do
    wine reg add "$user\\$key" /f >/dev/null
done
test_all_users
test_one_user
test_console
test_signed
test_planted_libraries
test_kit
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
