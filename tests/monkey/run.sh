#!/usr/bin/env bash
# run.sh BUILD PROGRAM [ARGUMENT...]: runs a program of this folder on the editor of the build folder BUILD,
# in a virtual display of its own and a copy of the sample game that it may spoil. What it found is in the
# output; after a failure also its last events. All of them go to the file EVENTS_LOG, if that is set.
set -euo pipefail
source "$(dirname "$0")/../../tools/virtual_display.sh"
build=$(realpath "$1") program=$2
shift 2

work=$(mktemp -d)
log=$work/output.log
end() {
  [ -z "${EVENTS_LOG:-}" ] || cp "$work/events.log" "$EVENTS_LOG"
  stop_all
  rm -rf "$work"
}
trap end EXIT

cp -r "$build/work/." "$work"
# The configuration writes the path of its game in the game's own way.
sed -i "s|^GamePath=.*|GamePath=$(printf %s "$work/game/" | sed 's|/|\\\\|g')\r|" "$work/varnhold.cfg"

[ "$program" != monkey ] || display_size=800x600  # the less there is to draw, the more can happen
start_display
keep_surroundings_out "$work"
cd "$work"
"$build/bin/$program" "$@" 2>"$log" || {
  echo "The last events:"
  tail -n 100 events.log 2>/dev/null || true
  grep -v '^qt\.' "$log" | tail -n 200
  exit 1
}
