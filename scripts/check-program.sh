#!/usr/bin/env bash
# Checks what the built program asks of the system: the functions that it imports, all of which packaging/imports.txt
# has to name, its headers and its manifest. Prints what is wrong.
#   scripts/check-program.sh [FILE]
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
export LC_ALL=C

file=${1:-$bin/PluginManager.exe}
allowed=$root/packaging/imports.txt
faults=0

fault() {
    echo "$(basename "$file"): $*"
    faults=$((faults + 1))
}

headers=$(x86_64-w64-mingw32-objdump -p "$file") || die "$file can't be read"

# A line for each function; one that is imported by its number has no name.
imports=$(awk '/DLL Name:/ {dll = tolower($NF)} /^$/ {dll = ""} dll && /^\t[0-9a-f]/ {print dll "!" $NF}' <<<"$headers" | sort -u)

names() {
    grep -v '^#' "$allowed"
}

[ -n "$imports" ] || fault "its imports can't be read"
names | sort -cu || fault "packaging/imports.txt is not in order"
while IFS= read -r name; do
    fault "the import $name is not in packaging/imports.txt"
done < <(comm -23 - <(names | sort -u) <<<"$imports")

has() {
    grep -qE "$2" <<<"$headers" || fault "$1"
}
case $file in
    *Cmd.exe) has "it is no console program" '^Subsystem.*Windows CUI' ;;
    *) has "it is no window program" '^Subsystem.*Windows GUI' ;;
esac
has "the subsystem's version is not 10.0" '^MajorSubsystemVersion[[:space:]]+10$'
has "it can't be moved in memory" 'Base Relocations'
for flag in DYNAMIC_BASE HIGH_ENTROPY_VA NX_COMPAT TERMINAL_SERVICE_AWARE; do
    has "it is not $flag" "^[[:space:]]+$flag\$"
done

# one WHAT XPATH: there is one of these in the manifests, which are plain text within the program
one() {
    local count
    count=$(xmllint --xpath "count($2)" - <<<"<all>$manifests</all>") || count="no readable"
    [ "$count" = 1 ] || fault "$count $1 instead of one"
}
manifests=$(grep -zoaP '(?s)<assembly .*?</assembly>' "$file" | tr -d '\0') || true
one "manifest" '/all/*'
one "application element of asm.v3" "//*[name()='application'][namespace-uri()='urn:schemas-microsoft-com:asm.v3']"
one "supported system, of Windows 10," "//*[name()='supportedOS']/@Id"
[ "$faults" = 0 ]
