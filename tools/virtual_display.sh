# Sourced by the scripts that run the editor in a virtual display and answer it with keys, as a user would.
# They set `log`, the file for what the editor says.

# The main window's title, as a pattern: without a level, or with its name and a mark for unsaved changes.
main_title='^(Mapwright - Varnhold Level Editor|.+ - Mapwright)$'

# start_display: a display with a window manager, 1280x800 unless `display_size` says otherwise.
start_display() {
  local number
  number=$(mktemp)
  Xvfb -displayfd 3 -screen 0 "${display_size:-1280x800}x24" -nolisten tcp 3>"$number" 2>/dev/null &
  display_pid=$!
  for _ in $(seq 100); do [ -s "$number" ] && break || sleep 0.05; done
  DISPLAY=:$(cat "$number")
  rm -f "$number"
  [ "$DISPLAY" != : ] || { echo "The virtual display did not start." >&2; exit 1; }
  export DISPLAY LIBGL_ALWAYS_SOFTWARE=1 QT_QPA_PLATFORM=xcb LANG=C.UTF-8
  openbox >/dev/null 2>&1 &
  manager_pid=$!
  # A window that opens before the manager is there would not become active.
  for _ in $(seq 100); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break || sleep 0.05
  done
}

# keep_surroundings_out WORK: the user's own settings do not reach an editor that is started from now on; its
# working folder is WORK.
keep_surroundings_out() {
  unset WAYLAND_DISPLAY QT_QPA_PLATFORMTHEME
  export LC_ALL=C.UTF-8 QT_STYLE_OVERRIDE=Fusion QT_SCALE_FACTOR=1 QT_FONT_DPI=96
  export XDG_CONFIG_DIRS=$1/settings XDG_CONFIG_HOME=$1/home
}

stop_all() {
  local pid
  for pid in ${editor_pid:-} ${manager_pid:-} ${display_pid:-}; do kill "$pid" 2>/dev/null || true; done
  rm -f "$log"
}

# wait_for SECONDS COMMAND...: until the command succeeds; `fail` ends the script otherwise.
wait_for() {
  local end=$((SECONDS + $1 + 1))
  shift
  until "$@"; do
    kill -0 "$editor_pid" 2>/dev/null || fail "the editor ended by itself"
    [ "$SECONDS" -lt "$end" ] || fail "waited in vain for: $*"
    sleep "${poll:-0.1}"
  done
}

# answer TITLE KEY...: waits for the dialog to be active and types the keys.
answer() {
  local title=$1
  shift
  wait_for 60 active_is "$title"
  sleep 0.3
  xdotool key --delay 80 "$@"
}

# go_to TITLE [OTHER KEY]...: waits for the dialog to be active; the OTHER ones get their key when they come first.
go_to() { wait_for 60 is_there "$@"; }
is_there() {
  local title i key
  title=$(active_title) || return 1
  [ "$title" != "$1" ] || return 0
  for ((i = 2; i < $#; i += 2)); do
    if [ "$title" = "${!i}" ]; then
      key=$((i + 1))
      xdotool key "${!key}"
    fi
  done
  return 1
}

active_title() { xdotool getactivewindow getwindowname 2>/dev/null; }
active_is() { [ "$(active_title)" = "$1" ]; }
main_is_active() { [[ $(active_title) =~ $main_title ]]; }

# The top-left corner of the 3D view on the screen: beside 190 pixels of panel and strip, below menu and
# toolbars.
view_corner() {
  local window X Y
  window=$(xdotool search --onlyvisible --name "$main_title" | head -n 1)
  eval "$(xwininfo -id "$window" | awk '/Absolute upper-left X/ {print "X=" $NF} /Absolute upper-left Y/ {print "Y=" $NF}')"
  echo $((X + 190)) $((Y + 79))
}

# close_with KEY: presses what closes the editor, which must then end without an error.
close_with() {
  xdotool key "$1"
  for _ in $(seq 100); do kill -0 "$editor_pid" 2>/dev/null || break; sleep 0.1; done
  kill -0 "$editor_pid" 2>/dev/null && fail "the editor did not end when it was closed"
  wait "$editor_pid" || fail "the editor ended with an error"
  editor_pid=
}
end_editor() { close_with alt+F4; }
