#!/usr/bin/env bash
# tour.sh LINUX_BUILD [PICTURES]: the packed Windows program under Wine, and the program of LINUX_BUILD, each in a
# virtual display and both on the same sample game. What they show there is written into PICTURES.
#   - A level is opened, edited by the same keys, saved and closed: the files of both are the same, byte by byte.
#   - Each is killed with unsaved work, and the other one goes on with it: the levels are the same again.
#   - The Windows program works in its own folder, wherever it is started, and without mpwr.cfg in the user's.
# Wine begins with nothing of its own: the program brings all that it needs.
set -euo pipefail
cd "$(dirname "$0")/../.."
linux=$(realpath "$1")
pictures=$(realpath -m "${2:-build/windows/pictures}")
mkdir -p "$pictures"
source tools/virtual_display.sh
source tools/windows/libraries.sh
packed=$(ls -d "$windows"/mapwright-*-win64 | tail -n 1)
scratch=$(mktemp -d)
log=$scratch/editor.log
trap 'stop_all; /usr/lib/wine/wineserver64 -k || true; rm -rf "$scratch"' EXIT
level=Mods/varnhold/Archives/varnhold/levels/Harbour_Point.vra
title='Harbour_Point - Mapwright'

fail() {
  echo "The tour failed on $system: $*" >&2
  [ ! -s "$log" ] || tail -n 20 "$log" >&2
  import -window root "$pictures/failed.png" 2>/dev/null && echo "What was to be seen: $pictures/failed.png" >&2
  exit 1
}

picture() {
  sleep 2
  import -window root "$pictures/$system-$1.png"
}

# How many there are in the middle of the view.
colours_of_view() {
  convert "$pictures/$system-$1.png" -gravity center -crop 600x400+90+50 -format %k info:
}

# make_folder SYSTEM NAME: a working folder with the sample game, its level untouched.
make_folder() {
  mkdir -p "$scratch/$2"
  if [ "$1" = Windows ]; then
    cp -r "$packed/." "$scratch/$2"
  else
    cp -r "$linux/work/"{media,TextureSets,scripts,mpwr.cfg} "$scratch/$2"
  fi
  cp -r "$scratch/sample/." "$scratch/$2"
  # The scripts of a level name the game's folder in a comment: it is called the same on both systems.
  sed -i 's#^GamePath=.*#GamePath=game\\#' "$scratch/$2/varnhold.cfg"
}

# start SYSTEM FOLDER [LEVEL]: from a folder that is not the one it works in.
start() {
  system=$1
  cd /
  if [ "$1" = Windows ]; then
    QT_QPA_PLATFORM=windows /usr/lib/wine/wine64 "$scratch/$2/mapwright.exe" \
      ${3:+"Z:$scratch/$2/game/$3"} >"$log" 2>&1 &
  else
    "$linux/bin/mapwright" --folder "$scratch/$2" ${3:+"$scratch/$2/game/$3"} >"$log" 2>&1 &
  fi
  editor_pid=$!
}

# The same keys on both systems; none of them goes by what is under the mouse. All pines are doubled, all objects put
# onto the ground, and the water gets another depth.
edit() {
  go_to "$title" "About Mapwright" space
  picture opened
  [ "$(colours_of_view opened)" -gt 200 ] || fail "the view shows nothing"
  xdotool key F3
  xdotool key ctrl+f
  xdotool type --delay 100 pine
  sleep 1  # the field filters the tree a little later
  xdotool key Return
  sleep 1
  xdotool key --delay 300 alt+e k
  xdotool key --delay 300 alt+e d
  picture duplicated
  xdotool key --delay 300 alt+t s
  wait_for 60 main_is_active
  xdotool key ctrl+shift+w
  wait_for 60 active_is "Water Settings"
  xdotool key --delay 200 alt+a ctrl+a
  xdotool type --delay 100 7.25
  picture water
  answer "Water Settings" Return
  wait_for 60 main_is_active
}

save_and_end() {
  touch "$scratch/before"
  sleep 1.5
  main_is_active || fail "the main window is not active"
  xdotool key ctrl+s
  wait_for 120 is_newer "$scratch/$1/game/$level" "$scratch/before"
  picture saved
  end_editor
}
is_newer() { [ "$1" -nt "$2" ]; }

# Fails if two folders' files differ.
expect_same() {
  system="one of them"
  diff -r "$scratch/$1" "$scratch/$2" >"$log" && return
  "$linux/bin/mapwright-archive" diff "$scratch/$1/$level" "$scratch/$2/$level" >>"$log" || true
  fail "what they have written differs"
}

# killed_and_taken_up ONE OTHER: unsaved work of the killed program goes on in the other one.
killed_and_taken_up() {
  local folder=killed-on-$1
  make_folder "$1" "$folder"
  start "$1" "$folder" "$level"
  edit
  wait_for 300 test -e "$scratch/$folder/mapwright.recovery"
  sleep 1
  kill -9 "$editor_pid"
  wait "$editor_pid" 2>/dev/null || true
  cmp "$scratch/$folder/game/$level" "$scratch/sample/game/$level" || fail "the level was touched"

  make_folder "$2" "taken-up-on-$2"
  cp -r "$scratch/$folder"/{game,mapwright.recovery} "$scratch/taken-up-on-$2"
  start "$2" "taken-up-on-$2"
  go_to "Select a Mod" "About Mapwright" space
  answer "Select a Mod" Return
  wait_for 60 active_is "Recover?"
  picture recovery
  answer "Recover?" Return
  wait_for 120 active_title_is_of_level
  save_and_end "taken-up-on-$2"
}
active_title_is_of_level() { [[ $(active_title) == *Harbour_Point*Mapwright ]]; }

# Windows has fonts, and Wine has none: one of this machine takes the place of those.
give_fonts() {
  cp /usr/share/fonts/truetype/dejavu/*.ttf "$WINEPREFIX/drive_c/windows/Fonts"
  local name
  for name in "MS Shell Dlg" "MS Shell Dlg 2" "Segoe UI" Tahoma; do
    quietly wine.log /usr/lib/wine/wine64 reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$name" \
      /d "DejaVu Sans" /f
  done
}

mkdir "$scratch/sample"
(cd "$scratch/sample" && "$linux/bin/make_sample" game . >/dev/null)
keep_surroundings_out "$scratch"
start_display
make_prefix "$scratch/wine"
give_fonts

for system in Windows Linux; do
  make_folder $system $system
  start $system $system "$level"
  edit
  save_and_end $system
done
expect_same Linux/game Windows/game
cmp -s "$scratch/Linux/game/$level" "$scratch/sample/game/$level" && fail "nothing was edited"
echo "After the same edits both have saved the same level of" \
  "$(stat -c %s "$scratch/Linux/game/$level") bytes, checksum $(cksum <"$scratch/Linux/game/$level" | cut -d' ' -f1)."

killed_and_taken_up Linux Windows
killed_and_taken_up Windows Linux
expect_same taken-up-on-Linux/game taken-up-on-Windows/game
echo "What was left by a killed program on one system, the other has taken up and saved, with the same bytes."

make_folder Windows users
rm "$scratch/users/mpwr.cfg"
start Windows users
go_to Error "About Mapwright" space
picture no_template
kill -9 "$editor_pid" || true  # it told that no game is there and waits for an answer
ls -d "$scratch"/wine/drive_c/users/*/AppData/Local/mapwright >/dev/null || fail "no folder of the user's was made"
echo "Without mpwr.cfg beside it the program works in %LOCALAPPDATA%\\mapwright."
