#!/usr/bin/env bash
# tavix_inspect_test.sh PROGRAM PICTURE DATA: runs tavix-inspect as a user would and checks exit
# codes, messages and files.
set -euo pipefail
program=$1 picture=$2 data=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset DISPLAY WAYLAND_DISPLAY

fail() {
    echo "FAILED: $*" >&2
    cat "$work/out" "$work/err" >&2
    exit 1
}

# expect CODE ARGUMENTS...: runs the program and checks its exit code.
expect() {
    local code=0 wanted=$1
    shift
    "$program" "$@" >"$work/out" 2>"$work/err" || code=$?
    [ "$code" -eq "$wanted" ] || fail "exit code $code, not $wanted: $*"
}

expect 0 "$picture" --csv "$work/blobs.csv" --screenshot "$work/shot.png" --size 400x300
grep -q '^automatic threshold: [0-9]' "$work/out" || fail "no threshold"
[ "$(head -1 "$work/blobs.csv")" = left,top,right,bottom,pixels ] || fail "CSV header"
count=$(($(wc -l <"$work/blobs.csv") - 1))
grep -q "^$count blobs$" "$work/out" || fail "count differs from the CSV's $count"
file_header=$(head -c 24 "$work/shot.png" | od -An -tx1 | tr -d ' \n')
[[ $file_header == 89504e47*000001900000012c ]] ||
    fail "screenshot is not a PNG of 400 x 300: $file_header"

# A line for each blob, with as many pixels as the table says.
expect 0 "$picture" --csv "$work/blobs.csv" --points "$work/points.txt" --screenshot "$work/shot.png"
[ "$(awk -F, 'NR > 1 { print $5 }' "$work/blobs.csv")" = "$(awk -F';' '{ print NF - 1 }' "$work/points.txt")" ] ||
    fail "pixels differ from the counts"
expect 1 "$picture" --points "$work/no/such/file" --screenshot "$work/shot.png"

# Bounds restrict the list: every remaining blob satisfies them, and there are fewer.
expect 0 "$picture" --csv "$work/large.csv" --screenshot "$work/shot.png" \
    --min-width 20 --max-width 60 --min-height 20 --max-height 60
awk -F, 'NR > 1 && ($3-$1 < 20 || $3-$1 > 59 || $4-$2 < 20 || $4-$2 > 59) { bad = 1 }
         END { exit bad || NR < 2 }' "$work/large.csv" || fail "bounds"
[ "$(wc -l <"$work/large.csv")" -le "$count" ] || fail "bounds did not restrict"

# Regions of interest restrict it, too: a rectangle's mask has its right and bottom edges in it.
roi="<Tavix_ROI><ImageSize>1,1</ImageSize><RoiElements><Element><Points>50,40;200,40;200,160;50,160;\
</Points></Element></RoiElements></Tavix_ROI>"
printf '%s' "$roi" >"$work/a.roix"
expect 0 "$picture" --roi "$work/a.roix" --csv "$work/roi.csv" --points "$work/points.txt" \
    --screenshot "$work/shot.png"
awk -F, 'NR > 1 && ($1 < 50 || $3 > 200 || $2 < 40 || $4 > 160) { bad = 1 }
         END { exit bad || NR < 2 }' "$work/roi.csv" || fail "blobs outside the region"
! cmp -s "$work/roi.csv" "$work/blobs.csv" || fail "--roi changes nothing"
printf '%s' "${roi/50,40;/}" | sed 's/200,40;200,160;//' >"$work/empty.roix"
for useless in "$work/missing.roix" "$work/blobs.csv" "$work/empty.roix"; do
    expect 2 "$picture" --roi "$useless" --screenshot "$work/shot.png"
    grep -qF "$useless" "$work/err" || fail "message does not name $useless"
done

expect 0 "$picture" --dark --csv "$work/dark.csv" --screenshot "$work/shot.png"
! cmp -s "$work/dark.csv" "$work/blobs.csv" || fail "--dark changes nothing"

for unreadable in "$work/missing.png" "$data/truncated.jpg" "$work"; do
    expect 2 "$unreadable" --screenshot "$work/none.png"
    [ "$(grep -vc '^QStandardPaths: ' "$work/err")" -eq 1 ] || fail "not one line for $unreadable"
    grep -qF "$unreadable" "$work/err" || fail "message does not name $unreadable"
    [ ! -e "$work/none.png" ] || fail "screenshot of $unreadable"
done

expect 1 "$picture"
grep -q 'no display' "$work/err" || fail "no word of the missing display"
expect 1 "$picture" --screenshot "$work/no/such/folder.png"
expect 1 "$picture" --csv "$work/no/such/folder.csv" --screenshot "$work/shot.png"
expect 2
expect 2 "$picture" --size 0x10
expect 2 "$picture" --min-width many
expect 0 --help
echo "tavix-inspect: all checks passed"
