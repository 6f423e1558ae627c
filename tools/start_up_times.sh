#!/usr/bin/env bash
# start_up_times.sh BUILD: starts the editor in a virtual display, up to its welcome dialog, and in turns a program
# that only shows an empty window; prints the medians of how long each was waited for, how much of that the
# processor worked, and how much memory it took at most. Then it does so for the Medium sample level, once.
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

# note FILE: a line with what was waited and worked since the last one.
note() {
  echo "$waited $(($(cpu_ms) - cpu_before)) $(peak_mb)" >>"$1"
  waited=0
  cpu_before=$(cpu_ms)
}

median() { sort -n | awk '{a[NR] = $1} END {print a[int((NR + 1) / 2)]}'; }
# The medians of a file's columns.
medians() { for column in 1 2 3; do awk -v c="$column" '{print $c}' "$1" | median; done | xargs; }
report() {
  local title=$1
  shift
  printf '%-40s %6d ms waited, %6d ms of processor time, %5s MB at most\n' "$title" "$@"
}

# Nothing is open that could be lost.
stop() {
  kill "$editor_pid"
  wait "$editor_pid" || true
}

# start PROGRAM
start() {
  waited=0
  cpu_before=0
  start=$(now)
  "$1" >"$log" 2>&1 &
  editor_pid=$!
}
start_editor() {
  start "$build/bin/mapwright"
  await "About Mapwright" "$start"
  press space
  await "Select a Mod" "$start"
  press Return
  await "Mapwright" "$start"
}
start_empty_window() {
  start "$build/bin/empty_window"
  await "Empty Window" "$start"
}

# The Mini-Map in the view's corner has many greys once a level is there.
map_is_drawn() {
  local colours
  colours=$(import -window root -crop "100x100+$((view_x + 15))+$((view_y + 35))" -depth 8 -format %k info: \
    2>/dev/null) || return 1
  [ "$colours" -gt 24 ]
}

log=$(mktemp)
ours=$(mktemp) empty=$(mktemp)
trap 'stop_all; rm -f "$ours" "$empty"' EXIT
start_display
cd "$build/work"
for round in 1 2 3 4 5; do
  start_empty_window
  note "$empty"
  stop
  start_editor
  note "$ours"
  [ "$round" = 5 ] || stop
done
read -r our_wait our_work our_memory < <(medians "$ours")
read -r empty_wait empty_work empty_memory < <(medians "$empty")
report "start to welcome dialog" "$our_wait" "$our_work" "$our_memory"
report "start to an empty window" "$empty_wait" "$empty_work" "$empty_memory"
awk -v a="$our_wait" -v b="$empty_wait" -v c="$our_work" -v d="$empty_work" \
  'BEGIN {printf "ours / its: %.2f waited, %.2f of processor time; goal 2: %s\n", a / b, c / d, a <= 2 * b ? "met" : "NOT MET"}'

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
report "opening the Medium sample level" "$waited" "$(($(cpu_ms) - cpu_before))" "$(peak_mb)"
end_editor
