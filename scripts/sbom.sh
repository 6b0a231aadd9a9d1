#!/usr/bin/env bash
# Prints the bill of materials (CycloneDX 1.5) of the release build and its installer: which Debian packages have parts in
# them. The linker's map tells what of the toolchain was really linked.
#   scripts/sbom.sh VERSION PROGRAM CONSOLE_PROGRAM
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"
export LC_ALL=C

version=$1
program=$2
console=$3
maps=("$build/release/PluginManager.map" "$build/release/PluginManagerCmd.map")

# Libraries that gave the programs something, start-up objects, and what every installer consists of.
parts() {
    local map
    for map in "${maps[@]}"; do
        sed '/^Discarded input sections/,$d' "$map" | sed -n 's/^\(\/[^(]*\.a\)(.*/\1/p'
        sed -n 's/^LOAD \(\/usr\/.*\.o\)$/\1/p' "$map"
    done
    echo /usr/share/nsis/Stubs/lzma_solid-amd64-unicode
}

# As the copyright files of the packages have it for such parts.
licence() {
    case $1 in
        g++-mingw-w64-* | gcc-mingw-w64-*) echo 'GPL-3.0-or-later WITH GCC-exception-3.1' ;;
        mingw-w64-*) echo 'ZPL-2.1 AND MIT AND BSD-3-Clause' ;;
        nsis-common) echo 'Zlib AND CPL-1.0' ;;
    esac
}

# PACKAGE <tab> FILE, a line each
owners() {
    parts | sort -u | xargs -r realpath -e | sort -u | xargs dpkg -S | sed 's/\(:[a-z0-9]*\)\?: /\t/'
}

components() {
    local package version source architecture
    for package in $(cut -f1 "$build/owners.txt" | sort -u); do
        IFS=' ' read -r version source architecture < <(dpkg-query -W -f '${Version} ${source:Package} ${Architecture}\n' "$package")
        jq -n --arg name "$package" --arg version "$version" --arg source "$source" --arg arch "$architecture" \
            --arg licence "$(licence "$package")" --rawfile owners "$build/owners.txt" '
            ("pkg:deb/debian/\($name | @uri)@\($version | @uri)?arch=\($arch)&upstream=\($source | @uri)") as $id |
            {type: "library", "bom-ref": $id, name: $name, version: $version, purl: $id, publisher: "Debian"} +
            if $licence == "" then {} else {licenses: [{expression: $licence}]} end +
            {properties: [$owners | split("\n")[] | split("\t") | select(.[0] == $name) | {name: "file", value: .[1]}]}'
    done
}

[ -s "${maps[0]}" ] && [ -s "${maps[1]}" ] || die "the linker has left no map"
hash=$(sha256sum "$program" | cut -d' ' -f1)
console_hash=$(sha256sum "$console" | cut -d' ' -f1)
owners >"$build/owners.txt" || die "a part belongs to no package"
all=$(components)
jq -n --arg version "$version" --arg hash "$hash" --arg console_hash "$console_hash" --argjson components "$(jq -s . <<<"$all")" \
    --arg serial "$(sed -E 's/^(.{8})(.{4}).(.{3}).(.{3})(.{12}).*/\1-\2-5\3-8\4-\5/' <<<"$hash")" \
    --arg time "$(date -u -d "@$SOURCE_DATE_EPOCH" +%FT%TZ)" '
    {
        bomFormat: "CycloneDX", specVersion: "1.5", serialNumber: "urn:uuid:\($serial)", version: 1,
        metadata: {timestamp: $time, component: {
            type: "application", "bom-ref": "program", name: "Corvane Plug-in Manager", version: $version,
            licenses: [{license: {id: "MIT"}}], hashes: [{alg: "SHA-256", content: $hash}],
            components: [{type: "file", name: "PluginManagerCmd.exe", hashes: [{alg: "SHA-256", content: $console_hash}]}]
        }},
        components: $components,
        dependencies: [{ref: "program", dependsOn: [$components[]["bom-ref"]]}]
    }'
