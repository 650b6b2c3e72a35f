#!/usr/bin/env bash
# Makes driven_application.gif anew: a board game, driven by `tarnix do` with the steps that lie
# beside this script, on a screen of its own, as a person in front of it sees it.
#
#     docs/overlay/record.sh [BUILD_FOLDER]
#
# Needs Xvfb, imagemagick and pentobi. Look at the result before it is committed.
set -euo pipefail
here=$(dirname "$(realpath "${BASH_SOURCE[0]}")")
build=$(realpath "${1:-build/release}")
# shellcheck source=examples/board_game.sh
source "$here/../../examples/board_game.sh"

width=720
height=440
shown_width=480
# The longest that it may take.
seconds=30

mkdir "$work/frames"

# The X server writes the number of the display that it took once it is ready.
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$work/display" \
  >/dev/null 2>&1 &
pids+=($!)
until [ -s "$work/display" ]; do
  kill -0 "${pids[0]}"
  sleep 0.1
done
DISPLAY=:$(cat "$work/display")
export DISPLAY QT_QPA_PLATFORM=xcb QT_QUICK_BACKEND=software

# At the corner of the screen: there is no window manager that would place it elsewhere.
start_game -qwindowgeometry "${width}x${height}+0+0"
tarnix wait --port "$port" --text "Undo Move" --timeout 30 >/dev/null
# Until what that question showed has gone.
sleep 4

record() {
  local end=$((SECONDS + seconds)) start now number=0
  start=$(date +%s%N)
  while [ "$SECONDS" -lt "$end" ] && [ ! -e "$work/done" ]; do
    import -silent -window root -crop "${width}x${height}+0+0" +repage "$work/frames/$(printf %04d "$number").ppm"
    number=$((number + 1))
    # More frames than some ten a second would only make the picture heavy.
    sleep 0.06
    now=$(date +%s%N)
    # The time that frame was taken at decides how long the one before is shown.
    echo $(((now - start) / 10000000)) >>"$work/times"
  done
}
record &
recorder=$!
pids+=("$recorder")
sleep 0.5
tarnix do --port "$port" "$here/driven_application.yaml"
# The last of what is shown fades.
sleep 1.5
touch "$work/done"
wait "$recorder"

arguments=()
before=0
number=0
while read -r time; do
  arguments+=(-delay $((time - before > 2 ? time - before : 2)))
  arguments+=("$work/frames/$(printf %04d "$number").ppm")
  before=$time
  number=$((number + 1))
done <"$work/times"
convert "${arguments[@]}" -resize "${shown_width}x" +dither -colors 48 -layers optimize -loop 0 \
  "$here/driven_application.gif"
printf '%s frames, %s bytes\n' "$number" "$(stat -c %s "$here/driven_application.gif")"
