#!/usr/bin/env bash
# Draws the results of the bench: each row's time over its floor's, by size, beside its bound.
#   scripts/bench-plot.sh FILE.json >FILE.svg
set -euo pipefail

# One record a line, as the bench writes them.
awk '
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
/"rows": \[/ { kind = "row"; next }
/"growth": \[/ { kind = "growth"; next }
/"figures": \[/ { kind = "figure"; next }
kind == "row" && /"name"/ {
    name = field("name")
    if (!(name in sizes)) names[++count] = name
    row = ++sizes[name]
    size[name, row] = field("size")
    ratio[name, row] = field("ratio") + 0
    ours[name] = field("ours")
    bound[name] = field("bound") + 0
}
kind == "growth" && /"name"/ {
    grows[field("name")] = sprintf("%.2f / %.2f", field("ours"), field("floor"))
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
        missed = bound[name] > 0 && ratio[name, last] > bound[name]
        printf "  <g fill=\"%s\">\n", missed ? "#c2571a" : "#22303f"
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
}' "$1"
