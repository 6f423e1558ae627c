#!/usr/bin/env bash
# tour.sh LINUX_BUILD [PICTURES]: the packed Windows program under Wine, and the program of LINUX_BUILD, each in a
# virtual display. Both write the sample game, open a level of it, edit it by the same keys, save and end; what they
# have written must be the same, byte by byte. Pictures of the Windows program go into PICTURES.
set -euo pipefail
cd "$(dirname "$0")/../.."
linux=$(realpath "$1")
pictures=${2:-$PWD/build/windows/pictures}
mkdir -p "$pictures"
source tools/virtual_display.sh
source tools/windows/libraries.sh
start_wine
scratch=$(mktemp -d)
log=$scratch/editor.log
trap 'stop_all; /usr/lib/wine/wineserver64 -k || true; rm -rf "$scratch"' EXIT
level=game/Mods/varnhold/Archives/varnhold/levels/Harbour_Point.vra

fail() {
  echo "The tour failed on $system: $*" >&2
  [ ! -s "$log" ] || tail -n 20 "$log" >&2
  import -window root "$pictures/failed.png" 2>/dev/null && echo "What was to be seen: $pictures/failed.png" >&2
  exit 1
}

picture() {
  sleep 2
  [ "$system" = Linux ] || import -window root "$pictures/$1.png"
}
changed() { [ "$level" -nt "$scratch/before" ]; }

# The same keys on both systems; none of them goes by what is under the mouse.
edit_and_save() {
  go_to "$1" "About Mapwright" space
  picture opened
  xdotool key F3
  xdotool key ctrl+i
  xdotool key ctrl+d
  picture duplicated
  xdotool key ctrl+shift+w
  answer "Water Settings" Return
  touch "$scratch/before"
  sleep 1.5
  main_is_active || fail "the main window is not active"
  xdotool key ctrl+s
  wait_for 60 changed
  picture saved
  end_editor
}

prepare() {
  cp -r "build/windows/$(basename "$(ls -d build/windows/mapwright-*-win64 | tail -n 1)")" "$scratch/Windows"
  mkdir "$scratch/Linux"
  cp -r "$linux/work/"{media,TextureSets,scripts,mpwr.cfg} "$scratch/Linux"
}

title='Harbour_Point - Mapwright'
prepare
keep_surroundings_out "$scratch"
start_display

system=Linux
cd "$scratch/Linux"
"$linux/bin/make_sample" game . >"$log" 2>&1 || fail "no sample game"
"$linux/bin/mapwright" "$level" >"$log" 2>&1 &
editor_pid=$!
edit_and_save "$title"

system=Windows
cd "$scratch/Windows"
/usr/lib/wine/wine64 make_sample.exe game . >"$log" 2>&1 || fail "no sample game"
QT_QPA_PLATFORM=windows /usr/lib/wine/wine64 mapwright.exe "$level" >"$log" 2>&1 &
editor_pid=$!
edit_and_save "$title"

system="one of them"
cd "$scratch"
(cd Linux && find game -type f) | while read -r file; do
  [[ $file == *.exe ]] || cmp "Linux/$file" "Windows/$file" || touch different
done
[ ! -e different ] || fail "files differ"
echo "Both wrote the same $(cd Linux && find game -type f -not -name '*.exe' | wc -l) files; the level has" \
  "$(stat -c %s "Windows/$level") bytes."
