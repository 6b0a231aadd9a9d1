#!/usr/bin/env bash
# Counts the lines of code by folder, without blank lines and comments; the last line tells the share of the tests.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

rooms=(app console studio layouts inventory presets util framework)
others=(res samples bench scripts packaging cmake)

# count FOLDER NAMES COMMENT: the lines of the files whose names match; COMMENT is what begins a comment
count() {
    find "$root/$1" -type f -regextype egrep -regex ".*/($2)" -exec cat {} + | grep -vcE "^[[:space:]]*(($3).*)?\$" || true
}

lines() {
    local code script
    code=$(count "$1" '.*\.(cpp|h|h\.in|inc|rc)' //)
    script=$(count "$1" '.*\.(sh|awk|cmake|nsi|nsh)|CMakeLists\.txt' '#|;')
    echo $((code + script))
}

# sum FOLDER...: of their lines, each folder with its own
sum() {
    local folder own
    total=0
    for folder in "$@"; do
        own=$(lines "$folder")
        printf '%-10s %6d\n' "$folder" "$own"
        total=$((total + own))
    done
}

sum "${rooms[@]}"
in_rooms=$total
sum "${others[@]}"
elsewhere=$((in_rooms + total))
sum tests
printf 'tests: %d lines, %d %% of the %d in the rooms, %d %% of the %d of all other code\n' \
    "$total" $((100 * total / in_rooms)) "$in_rooms" $((100 * total / elsewhere)) "$elsewhere"
