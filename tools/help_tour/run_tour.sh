#!/usr/bin/env bash
# run_tour.sh BUILD PAGE WORK [PICTURES]: follows a help page in the editor of the build folder BUILD, in a
# virtual display of its own. WORK, a new folder, becomes the working folder, with a fresh sample game in
# WORK/game. The pictures that the page shows go to the folder PICTURES.
set -euo pipefail
source "$(dirname "$0")/../virtual_display.sh"
build=$(realpath "$1") page=$(realpath "$2")
mkdir -p "$3"
work=$(realpath "$3")
pictures=${4:+$(realpath "$4")}
patience=500  # seconds for the whole page

log=$work/tour.log
trap stop_all EXIT

"$build/bin/make_sample" "$work/game" "$work" --force >/dev/null
cp "$build/work/game/varnhold.exe" "$work/game/"
cp -r "$build/work/media" "$build/work/TextureSets" "$build/work/scripts" "$work/"

start_display
keep_surroundings_out "$work"
cd "$work"
timeout "$patience" "$build/bin/help_tour" "$page" ${pictures:+"$pictures"} >"$log" 2>&1 || {
  tail -n 20 "$log" >&2
  exit 1
}
