#!/usr/bin/env bash
# A walk through what a companion can see of a real application: a board game that knows nothing of
# the probe. Given a build folder and the folder to leave the results in; ends by itself.
set -euo pipefail
build=$(realpath "$1")
mkdir -p "$2"
out=$(realpath "$2")

work=$(mktemp -d)
host=
finish() {
  [ -z "$host" ] || kill "$host" 2>/dev/null || true
  [ -z "$host" ] || wait "$host" 2>/dev/null || true
  rm -rf "$work"
}
trap finish EXIT
# A home of its own: the game starts as it does for a new player.
# Where games lie, which the PATH of root leaves out.
export PATH=$PATH:/usr/games
export HOME=$work XDG_RUNTIME_DIR=$work QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
chmod 700 "$work"

show() {
  printf '\n$ tarnix %s\n' "$*"
  "$build/bin/tarnix" "$@"
}

printf '$ tarnix run pentobi &\n'
"$build/bin/tarnix" run pentobi 2> >(tee "$work/messages" >&2) &
host=$!
# `tarnix run` tells the port in one line; other games that are probed stay out of this.
port=
while [ -z "$port" ]; do
  kill -0 "$host" || { echo 'the game has ended' >&2; exit 1; }
  sleep 0.2
  port=$(sed -n 's/^tarnix: .* on port \([0-9]*\)$/\1/p' "$work/messages")
done

show list
show sync --port "$port"
show html --port "$port" -o "$out/pentobi.html"
cat "$out/pentobi.html"
printf '\n\nleft in %s: pentobi.html\n' "$out"
