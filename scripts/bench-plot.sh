#!/usr/bin/env bash
# Puts the results of the bench into docs/: bench.svg, with each row's time over its floor's by size beside its bound,
# and the tables of bench.md.
#   scripts/bench-plot.sh FILE.json
set -euo pipefail

docs=$(cd "$(dirname "${BASH_SOURCE[0]}")/../docs" && pwd)
tables=$(mktemp)
trap 'rm -f "$tables"' EXIT

# One record a line, as the bench writes them.
awk -v tables="$tables" '
function field(name,    part) {
    if (!match($0, "\"" name "\": (\"[^\"]*\"|[-+.e0-9]+)")) return ""
    part = substr($0, RSTART + length(name) + 4, RLENGTH - length(name) - 4)
    gsub(/"/, "", part)
    return part
}
# Ratios from a quarter to four, in proportion to their logarithms.
function across(ratio) {
    if (ratio < 0.25) ratio = 0.25
    if (ratio > 4) ratio = 4
    return 360 + 340 * (log(ratio) - log(0.25)) / log(16)
}
function text(x, y, anchor, words) {
    printf "    <text x=\"%d\" y=\"%d\" text-anchor=\"%s\">%s</text>\n", x, y, anchor, words
}
function line(x, colour, dashes) {
    printf "  <path d=\"M%.1f 54V%d\" stroke=\"%s\"%s/>\n", x, bottom, colour, dashes
}
function cell(words) { printf " %s |", words >tables }
function missedWords(missed) { return missed ? "**missed**" : "" }
/"rows": \[/ { kind = "row"; next }
/"growth": \[/ { kind = "growth"; next }
/"figures": \[/ { kind = "figure"; next }
kind == "row" && /"name"/ {
    name = field("name")
    if (!(name in sizes)) names[++count] = name
    row = ++sizes[name]
    size[name, row] = field("size")
    ratio[name, row] = field("ratio") + 0
    ratios[name] = ratios[name] sprintf(" %.2f", field("ratio"))
    ours[name] = field("ours")
    floor[name] = field("floor")
    bound[name] = field("bound") + 0
    why[name] = field("why")
    if (field("missed") == 1) missed[name] = 1
}
kind == "growth" && /"name"/ {
    grows[field("name")] = sprintf("%.2f / %.2f", field("ours"), field("floor"))
    if (field("missed") == 1) missed[field("name")] = 1
}
kind == "figure" && /"name"/ {
    figures = figures sprintf("| %s | %.4g | %s | %s |\n", field("name"), field("value"), field("bound"),
        missedWords(field("missed") == 1))
}
END {
    bottom = 64 + 20 * count
    printf "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1000 %d\"", bottom + 40
    print " font-family=\"Segoe UI, Tahoma, DejaVu Sans, sans-serif\" font-size=\"13\">"
    print "  <title>What the program takes, over what the system takes for the same</title>"
    printf "  <rect width=\"1000\" height=\"%d\" fill=\"#ffffff\"/>\n", bottom + 40
    line(across(1), "#5b6b7c", "")
    for (mark = 0.25; mark <= 4; mark *= 2)
        if (mark != 1) line(across(mark), "#dfe5ec", "")
    print "  <g font-weight=\"bold\" fill=\"#22303f\">"
    text(20, 24, "start", "time over the floor\047s")
    text(810, 40, "end", "largest size")
    text(890, 40, "end", "ms")
    text(985, 40, "end", "growth")
    print "  </g>\n  <g fill=\"#5b6b7c\">"
    for (mark = 0.25; mark <= 4; mark *= 2) text(across(mark), 44, "middle", mark)
    text(20, bottom + 24, "start", "Dots: small to large sizes, from pale to dark. Bar: the bound. " \
        "Growth: exponents of the program and of the floor.")
    print "  </g>"
    for (i = 1; i <= count; ++i) {
        name = names[i]
        last = sizes[name]
        y = 54 + 20 * i
        printf "  <g fill=\"%s\">\n", missed[name] ? "#c2571a" : "#22303f"
        text(20, y, "start", name)
        text(810, y, "end", size[name, last])
        text(890, y, "end", sprintf(ours[name] < 10 ? "%.1f" : "%.0f", ours[name]))
        text(985, y, "end", grows[name])
        print "  </g>"
        if (bound[name] > 0)
            printf "  <path d=\"M%.1f %dv14\" stroke=\"#b98a5e\" stroke-width=\"3\"/>\n", across(bound[name]), y - 11
        for (row = 1; row <= last; ++row)
            printf "  <circle cx=\"%.1f\" cy=\"%d\" r=\"4\" fill=\"#22303f\" fill-opacity=\"%.2f\"/>\n",
                across(ratio[name, row]), y - 4, row / last
    }
    print "</svg>"
    print "| Row | Sizes | ms at the largest | Floor, ms | Ratios, small to large | Bound | Growth, ours / floor | |" >tables
    print "|---|---|---|---|---|---|---|---|" >tables
    for (i = 1; i <= count; ++i) {
        name = names[i]
        printf "|" >tables
        cell(name)
        cell(sizes[name] > 1 ? size[name, 1] " to " size[name, sizes[name]] : size[name, 1])
        cell(sprintf("%.1f", ours[name]))
        cell(sprintf("%.1f", floor[name]))
        cell(substr(ratios[name], 2))
        cell(bound[name])
        cell(grows[name])
        cell(missedWords(missed[name]) (missed[name] && why[name] != "" ? "; " : "") why[name])
        print "" >tables
    }
    print "\n| Figure | Value | Bound | |\n|---|---|---|---|" >tables
    printf "%s", figures >tables
}' "$1" >"$docs/bench.svg"

awk -v tables="$tables" '
/<!-- end of the results -->/ { within = 0 }
!within { print }
/<!-- the results/ {
    within = 1
    while ((getline line <tables) > 0) print line
}' "$docs/bench.md" >"$docs/bench.md.new"
mv "$docs/bench.md.new" "$docs/bench.md"
