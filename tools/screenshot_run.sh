#!/usr/bin/env bash
# screenshot_run.sh BUILD: starts the editor in a virtual display, opens a sample level with key and mouse
# events as a user would, saves a screenshot as BUILD/screenshot.png and ends the editor.
set -euo pipefail
build=$1
picture=$build/screenshot.png
map_x=47 map_y=83  # pixel of the Mini-Map to go to
main_title="Mapwright - Varnhold Level Editor"

fail() {
  echo "The sample level could not be shown: $*" >&2
  [ ! -s "$log" ] || tail -n 20 "$log" >&2
  import -window root "$picture" 2>/dev/null && echo "What the display showed: $picture" >&2
  exit 1
}

stop_all() {
  local pid
  for pid in ${editor_pid:-} ${manager_pid:-} ${display_pid:-}; do kill "$pid" 2>/dev/null || true; done
  rm -f "$log" "$number"
}

# wait_for SECONDS COMMAND...: until the command succeeds.
wait_for() {
  local tries=$(($1 * 10))
  shift
  while ! "$@"; do
    kill -0 "$editor_pid" 2>/dev/null || fail "the editor ended by itself"
    [ $((tries -= 1)) -gt 0 ] || fail "waited in vain for: $*"
    sleep 0.1
  done
}

active_is() { [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = "$1" ]; }

# answer TITLE KEY...: waits for the dialog to be active and types the keys.
answer() {
  local title=$1
  shift
  wait_for 30 active_is "$title"
  sleep 0.3
  xdotool key --delay 80 "$@"
}

# The 3D view shows a drawn level when its middle has many colours; sky alone or an empty view has few.
level_is_drawn() {
  local colours
  colours=$(import -window root -crop 800x500+300+150 -depth 8 -format %k info: 2>/dev/null) || return 1
  [ "$colours" -gt 300 ]
}

# The top-left corner of the 3D view on the screen.
view_corner() {
  local window X Y
  window=$(xdotool search --onlyvisible --name "^$main_title\$" | head -n 1)
  eval "$(xwininfo -id "$window" | awk '/Absolute upper-left X/ {print "X=" $NF} /Absolute upper-left Y/ {print "Y=" $NF}')"
  echo $((X + 190)) $((Y + 79))
}

log=$(mktemp)
number=$(mktemp)
trap stop_all EXIT

Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$number" 2>/dev/null &
display_pid=$!
for _ in $(seq 100); do [ -s "$number" ] && break || sleep 0.05; done
[ -s "$number" ] || { echo "The virtual display did not start." >&2; exit 1; }
DISPLAY=:$(cat "$number")
export DISPLAY LIBGL_ALWAYS_SOFTWARE=1 QT_QPA_PLATFORM=xcb LANG=C.UTF-8
openbox >/dev/null 2>&1 &
manager_pid=$!
# A window that opens before the manager is there would not become active.
for _ in $(seq 100); do
  xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break || sleep 0.05
done

cd "$build/work"
"$build/bin/mapwright" >"$log" 2>&1 &
editor_pid=$!

answer "About Mapwright" space                # the splash picture
answer "Select a Mod" Return                  # the mod at start-up
answer "Mapwright" Return                     # "Open an Existing Level"
answer "Select a Mod" Return                  # the mod of the level
answer "Load Level" Return                    # the first of the levels
wait_for 60 active_is "$main_title"

# Up into the air, then to a place of the level by a click into the Mini-Map, as a user would go there. The
# view's top-left corner lies beside the 190 pixels of panel and strip, below menu and toolbars.
read -r view_x view_y < <(view_corner)
over_view() { xdotool mousemove $((view_x + 500)) $((view_y + 350)); }
over_view
xdotool key o
xdotool mousemove $((view_x + 7 + map_x)) $((view_y + 25 + map_y)) click 1
over_view
xdotool key o
wait_for 30 level_is_drawn
sleep 1
import -window root "$picture"
echo "Screenshot: $picture"

xdotool key alt+F4
for _ in $(seq 100); do kill -0 "$editor_pid" 2>/dev/null || break; sleep 0.1; done
kill -0 "$editor_pid" 2>/dev/null && fail "the editor did not end when its window was closed"
wait "$editor_pid" || fail "the editor ended with an error"
editor_pid=
