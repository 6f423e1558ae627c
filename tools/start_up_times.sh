#!/usr/bin/env bash
# start_up_times.sh BUILD: starts the editor in a virtual display, opens the Medium sample level, and prints
# how long it was waited for, how much of that the processor worked, and how much memory it took at most.
set -euo pipefail
build=$1
source "$(dirname "$0")/virtual_display.sh"
poll=0.01

fail() {
  echo "The editor could not be timed: $*" >&2
  [ ! -s "$log" ] || tail -n 20 "$log" >&2
  exit 1
}

now() { date +%s%N; }
cpu_ms() { awk -v hz="$(getconf CLK_TCK)" '{print int(($14 + $15) * 1000 / hz)}' "/proc/$editor_pid/stat"; }
peak_mb() { awk '/VmHWM/ {printf "%.0f", $2 / 1024}' "/proc/$editor_pid/status"; }

# Adds the time until the dialog is there to `waited`.
await() {
  local start
  start=${2:-$(now)}
  wait_for 60 active_is "$1"
  waited=$((waited + ($(now) - start) / 1000000))
  sleep 0.5
}
press() {
  start=$(now)
  xdotool key --delay 0 "$@"
}

report() {
  printf '%-40s %6d ms waited, %6d ms of processor time, %5s MB at most\n' "$1" "$waited" \
    "$(($(cpu_ms) - cpu_before))" "$(peak_mb)"
  waited=0
  cpu_before=$(cpu_ms)
}

# The Mini-Map in the view's corner has many greys once a level is there.
map_is_drawn() {
  local colours
  colours=$(import -window root -crop "100x100+$((view_x + 15))+$((view_y + 35))" -depth 8 -format %k info: \
    2>/dev/null) || return 1
  [ "$colours" -gt 24 ]
}

log=$(mktemp)
trap stop_all EXIT
start_display
cd "$build/work"
waited=0
cpu_before=0
start=$(now)
"$build/bin/mapwright" >"$log" 2>&1 &
editor_pid=$!
await "About Mapwright" "$start"
press space
await "Select a Mod" "$start"
press Return
await "Mapwright" "$start"
report "start to welcome dialog"

press Return                     # "Open an Existing Level"
await "Select a Mod" "$start"
press Return
await "Load Level" "$start"
xdotool key --delay 50 End       # the Medium level is the last
sleep 0.3
read -r view_x view_y < <(view_corner)
waited=0
cpu_before=$(cpu_ms)
press Return
wait_for 60 map_is_drawn
waited=$((($(now) - start) / 1000000))
report "opening the Medium sample level"
end_editor
