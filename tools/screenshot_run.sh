#!/usr/bin/env bash
# screenshot_run.sh BUILD: starts the editor in a virtual display, opens a sample level with key and mouse
# events as a user would, saves a screenshot as BUILD/screenshot.png and ends the editor.
set -euo pipefail
build=$1
picture=$build/screenshot.png
map_x=47 map_y=83  # pixel of the Mini-Map to go to
source "$(dirname "$0")/virtual_display.sh"

fail() {
  echo "The sample level could not be shown: $*" >&2
  [ ! -s "$log" ] || tail -n 20 "$log" >&2
  import -window root "$picture" 2>/dev/null && echo "What the display showed: $picture" >&2
  exit 1
}

# The 3D view shows a drawn level when its middle has many colours; sky alone or an empty view has few.
level_is_drawn() {
  local colours
  colours=$(import -window root -crop 800x500+300+150 -depth 8 -format %k info: 2>/dev/null) || return 1
  [ "$colours" -gt 300 ]
}

log=$(mktemp)
trap stop_all EXIT
start_display

cd "$build/work"
"$build/bin/mapwright" >"$log" 2>&1 &
editor_pid=$!

answer "About Mapwright" space                # the splash picture
answer "Select a Mod" Return                  # the mod at start-up
answer "Mapwright" Return                     # "Open an Existing Level"
answer "Select a Mod" Return                  # the mod of the level
answer "Load Level" Return                    # the first of the levels
wait_for 60 main_is_active

# Up into the air, then to a place of the level by a click into the Mini-Map, as a user would go there.
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

end_editor
