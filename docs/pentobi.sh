#!/usr/bin/env bash
# Makes pentobi.png anew: a board game, the points that `tarnix html` tells marked in its picture,
# and what it prints beside it.
#
#     docs/pentobi.sh [BUILD_FOLDER]
#
# Needs imagemagick and pentobi. Look at the result before it is committed.
set -euo pipefail
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
build=$(realpath "${1:-build/release}")
# shellcheck source=examples/board_game.sh
source "$here/../examples/board_game.sh"
export QT_QPA_PLATFORM=offscreen

start_game -qwindowgeometry 760x430
tarnix wait --port "$port" --text "Undo Move" --timeout 30
tarnix html --port "$port" >"$work/screen.html"
tarnix screenshot --port "$port" "$work/screen.png" >/dev/null

marks=()
while read -r number x y; do
  marks+=(-fill '#d6336ccc' -stroke white -draw "circle $x,$((y + 17)) $x,$((y + 9))"
    -fill white -stroke none -draw "text $((x - ${#number} * 3)),$((y + 21)) '$number'")
done < <(sed -n 's/.* id=\([0-9]*\) c="\([0-9-]*\),\([0-9-]*\)".*/\1 \2 \3/p' "$work/screen.html")
convert "$work/screen.png" -font DejaVu-Sans -pointsize 10 "${marks[@]}" "$work/marked.png"

shown=$(printf '$ tarnix html\n\n' && cat "$work/screen.html")
convert -size 450x430 xc:'#16181d' -font DejaVu-Sans-Mono -pointsize 12 -fill '#e4e4e4' \
  -annotate +14+28 "$shown" "$work/text.png"
convert "$work/marked.png" "$work/text.png" +append +repage -depth 8 -colors 128 \
  "$here/pentobi.png"
