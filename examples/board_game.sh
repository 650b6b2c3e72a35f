# shellcheck shell=bash
# For scripts that show a real application with the probe in it: a board game that knows nothing of
# that. Read by them, with $build naming the build folder. Makes the folder $work with the home of a
# new player in it; at the end of the script that goes, after all processes of $pids.

# Where games lie, which the PATH of root leaves out.
export PATH=${build:?}/bin:$PATH:/usr/games

work=$(mktemp -d)
pids=()
finish() {
  for pid in "${pids[@]}"; do
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  done
  rm -rf "$work"
}
trap finish EXIT
export HOME=$work/home XDG_RUNTIME_DIR=$work/home
mkdir -m 700 "$HOME"

# Starts the game with these arguments and sets $port to where its probe listens.
start_game() {
  local game
  : >"$work/messages"
  tarnix run -- pentobi "$@" 2> >(tee -a "$work/messages" >&2) &
  game=$!
  pids+=("$game")
  port=
  # `tarnix run` tells the port in one line; other games that are probed stay out of this.
  until [ -n "$port" ]; do
    kill -0 "$game" || { echo 'the game has ended' >&2; exit 1; }
    sleep 0.1
    port=$(sed -n 's/^tarnix: .* on port \([0-9]*\)$/\1/p' "$work/messages")
  done
}
