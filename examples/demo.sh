#!/usr/bin/env bash
# A walk through what a companion can see of a real application: a board game that knows nothing of
# the probe. Given a build folder and the folder to leave the results in; ends by itself.
set -euo pipefail
build=$(realpath "$1")
mkdir -p "$2"
out=$(realpath "$2")

here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
# shellcheck source=examples/board_game.sh
source "$here/board_game.sh"
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}

show() {
  printf '\n$ tarnix %s\n' "$*"
  tarnix "$@"
}

printf '$ tarnix run pentobi &\n'
start_game

show list
show sync --port "$port"
show html --port "$port" -o "$out/pentobi.html"
cat "$out/pentobi.html"
printf '\n\nleft in %s: pentobi.html\n' "$out"
