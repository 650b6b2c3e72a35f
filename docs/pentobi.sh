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
# Where games lie, which the PATH of root leaves out.
export PATH=$build/bin:$PATH:/usr/games

work=$(mktemp -d)
host=
finish() {
  [ -z "$host" ] || kill "$host" 2>/dev/null || true
  [ -z "$host" ] || wait "$host" 2>/dev/null || true
  rm -rf "$work"
}
trap finish EXIT
export HOME=$work/home XDG_RUNTIME_DIR=$work/home QT_QPA_PLATFORM=offscreen
mkdir -m 700 "$HOME"

tarnix run -- pentobi -qwindowgeometry 760x430 2>"$work/messages" &
host=$!
port=
until [ -n "$port" ]; do
  kill -0 "$host"
  sleep 0.1
  port=$(sed -n 's/^tarnix: .* on port \([0-9]*\)$/\1/p' "$work/messages")
done
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
