#!/usr/bin/env bash
# Builds the help from help/: PluginManager.chm beside the program, and the same pages for a browser in build/help-web.
# The same sources give the same bytes.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/lib.sh"

sources=$root/help
project=$build/help
web=$build/help-web
chm=$bin/PluginManager.chm

entries() {
    grep -v '^ *\(#\|$\)' "$1"
}

pages() {
    entries "$sources/contents.txt" | tr -d ' '
}

# title PAGE
title() {
    sed -n 's|^<title>\(.*\)</title>$|\1|p' "$sources/$1"
}

# The words of the index, sorted: WORD <tab> PAGE or PAGE#PLACE
keywords() {
    local page
    for page in $(pages); do
        sed -n 's|^<meta name="keywords" content="\(.*\)" />$|\1|p' "$sources/$page" | tr ';' '\n' |
            awk -F'#' -v OFS='\t' -v page="$page" '{ sub(/^ +/, ""); print $1, page ($2 ? "#" $2 : "") }'
    done | LC_ALL=C sort -f
}

# tree ENTRY: the contents as nested lists, each page by what ENTRY PAGE TITLE prints
tree() {
    local entry=$1 line page level=-1 depth
    while IFS= read -r line; do
        page=${line##* }
        depth=$(((${#line} - ${#page}) / 4))
        [ "$depth" -gt "$level" ] && echo '<ul>'
        for (( ; level > depth; level--)); do echo '</li></ul>'; done
        [ "$depth" = "$level" ] && echo '</li>'
        level=$depth
        printf '<li>'
        "$entry" "$page" "$(title "$page")"
    done < <(entries "$sources/contents.txt")
    for (( ; level >= 0; level--)); do echo '</li></ul>'; done
}

# values PAGE XPATH: of the attributes, a line each
values() {
    xmllint --xpath "$2" "$sources/$1" 2>/dev/null | grep -o '"[^"]*"' | tr -d '"'
}

# What can be led to: pictures, PAGE and PAGE#PLACE
places() {
    local page
    entries "$sources/pictures.txt" | cut -d' ' -f1
    for page in $(pages); do
        echo "$page"
        values "$page" //@id | sed "s/^/$page#/"
    done
}

# What the pages, the index and the program lead to, and from where
leads() {
    local page
    for page in $(pages); do
        values "$page" '//a/@href | //img/@src' | sed "s/^#/$page&/; s/\$/ $page/"
    done
    keywords | awk -F'\t' '{ print $2, "the index" }'
    grep -rho --include='*.cpp' 'L"[a-z-]*\.htm"' "$root/app" | sed 's/^L"\(.*\)"$/\1 the program/' || echo 'none the program'
}

# What is wrong with the pages, a line each
faults() {
    local page there words word
    cd "$sources"
    there=$(places)
    words=$(keywords)
    xmllint --noout *.htm 2>&1
    # The viewer's contents and index know no encoding.
    LC_ALL=C grep -n '[^ -~]' *.htm
    diff <(pages | LC_ALL=C sort -u) <(LC_ALL=C ls *.htm)
    grep -L '^<title>[^<]' *.htm | sed 's/$/ has no title/'
    diff <(for page in *.htm; do title "$page"; done) <(xmllint --xpath '//h1/text()' *.htm 2>/dev/null)
    xmllint --xpath '//img[not(@alt) or @alt=""]/@src' *.htm 2>/dev/null | sed 's/^/no description of /'
    { pages; cut -f2 <<<"$words"; } | sed 's/#.*//' | sort | uniq -u | sed 's/$/ is not in the index/'
    {
        echo "$there"
        cut -f1 <<<"$words" | sed 's/^/the word /'
        for page in *.htm; do title "$page"; done | sed 's/^/the title /'
    } | sort | uniq -d | sed 's/^/twice: /'
    for word in $(languages); do
        grep -qw "$word" languages.htm || echo "languages.htm does not name $word"
        grep -qF "[$word](docs/main-${word,,}.png)" "$root/README.md" || echo "README.md does not show $word"
        [ -e "$root/docs/main-${word,,}.png" ] || echo "docs/ has no picture of $word"
    done
    leads | awk 'NR == FNR { has[$1]; next } !($1 in has) { print "not there: " $0 }' <(echo "$there") -
}

check_pages() {
    local found
    found=$(faults) || true
    [ -z "$found" ] || die "$found"
}

sitemap_object() {
    printf '<object type="text/sitemap"><param name="Name" value="%s"><param name="Local" value="%s"></object>\n' "$2" "$1"
}

web_link() {
    printf '<a href="%s">%s</a>\n' "$1" "$2"
}

sitemap() {
    echo '<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">'
    echo '<html><head></head><body>'
    cat
    echo '</body></html>'
}

make_pictures() {
    local name from part marks mark x y
    while read -r name from part marks; do
        local change=(-font /usr/share/wine/fonts/tahomabd.ttf -pointsize 17)
        [ "$part" = - ] || change+=(-crop "$part" +repage)
        for mark in $marks; do
            IFS=@, read -r mark x y <<<"$mark"
            change+=(-fill '#c2571a' -draw "circle $x,$y $((x + 12)),$y" -fill white -draw "text $((x - 5)),$((y + 6)) '$mark'")
        done
        convert "$root/docs/$from" "${change[@]}" -strip -define png:exclude-chunks=date,time "$1/$name"
    done < <(entries "$sources/pictures.txt")
}

make_project() {
    rm -rf "$project"
    mkdir -p "$project"
    cp "$sources"/*.htm "$sources/help.css" "$project"
    make_pictures "$project"
    tree sitemap_object | sitemap >"$project/contents.hhc"
    {
        echo '<ul>'
        keywords | while IFS=$'\t' read -r word place; do
            printf '<li>'
            sitemap_object "$place" "$word"
            echo '</li>'
        done
        echo '</ul>'
    } | sitemap >"$project/index.hhk"
    # The window: contents, index, search and favourites beside the page; it keeps the place that the user gives it.
    local name='Corvane Plug-in Manager Help' first
    first=$(pages | head -n 1)
    {
        printf '%s\n' '[OPTIONS]' 'Compatibility=1.1 or later' 'Compiled file=PluginManager.chm' \
            'Contents file=contents.hhc' 'Index file=index.hhk' "Default topic=$first" "Title=$name" \
            'Language=0x409 English (United States)' 'Full-text search=Yes' 'Binary Index=No' 'Default Window=main' '' '[WINDOWS]'
        printf 'main="%s","contents.hhc","index.hhk","%s","%s",,,,,0x41520,260,0x304e,[60,40,1140,780],,,,,,,0\n' \
            "$name" "$first" "$first"
        printf '%s\n' '' '[FILES]'
        (cd "$project" && LC_ALL=C ls -- *.htm *.css *.png)
    } >"$project/help.hhp"
}

# zero FILE OFFSET: four bytes
zero() {
    printf '\0\0\0\0' | dd of="$1" bs=1 seek="$2" conv=notrunc status=none
}

# The compiler notes the time of its run in the file's header, and in its system table before its own name.
remove_times() {
    local name
    name=$(LC_ALL=C grep -obUa 'HHA Version' "$1" | head -n 1 | cut -d: -f1)
    [ -n "$name" ] || die "the help file has no system table"
    zero "$1" 16
    zero "$1" $((name - 8))
}

# What the compiler can't find it leaves out without failing.
check_chm() {
    local file names
    names=$(chmls -p -n list "$1" 2>/dev/null)
    for file in $(cd "$project" && ls -- *.htm *.css *.png *.hhc *.hhk) '#WINDOWS' "\$FIftiMain"; do
        grep -qxF "/$file" <<<"${names// /}" || die "the help file lacks $file"
    done
}

make_chm() {
    (cd "$project" && quietly "$build/help.log" chmcmd help.hhp) || die "the help file could not be built"
    check_chm "$project/PluginManager.chm"
    remove_times "$project/PluginManager.chm"
    mkdir -p "$bin"
    cp "$project/PluginManager.chm" "$chm"
}

# web_page FILE CONTENTS: the page with the contents beside its text, in which it is marked
web_page() {
    local name=${1##*/}
    {
        sed '/^<\/head>$/,$d' "$1"
        cat "$sources/web-head.txt"
        echo "${2/"href=\"$name\""/"href=\"$name\" aria-current=\"page\""}"
        printf '%s\n' '</div>' '<div id="page">'
        sed '1,/^<body>$/d; s|^</body>$|</div>\n&|' "$1"
    } >"$web/$name"
}

# The words of the index, which a browser has no window for.
words_page() {
    cat <<'END'
<!DOCTYPE html>
<html lang="en">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=utf-8" />
<title>Index</title>
<link rel="stylesheet" type="text/css" href="help.css" />
</head>
<body>
<h1>Index</h1>
<ul>
END
    keywords | while IFS=$'\t' read -r word place; do
        printf '<li>%s</li>\n' "$(web_link "$place" "$word")"
    done
    printf '%s\n' '</ul>' '</body>' '</html>'
}

make_web() {
    local page contents
    rm -rf "$web"
    mkdir -p "$web"
    cp "$sources"/*.css "$project"/*.png "$web"
    contents=$(tree web_link; web_link words.htm Index)
    for page in $(pages); do web_page "$sources/$page" "$contents"; done
    words_page >"$build/words.htm"
    web_page "$build/words.htm" "$contents"
    cp "$web/$(pages | head -n 1)" "$web/index.htm"
}

"$root/scripts/setup.sh"
check_pages
make_project
make_chm
make_web
echo "$chm"
echo "$web/index.htm"
