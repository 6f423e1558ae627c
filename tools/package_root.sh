#!/usr/bin/env bash
# package_root.sh [DEB]: installs the package (the newest in build/package) in a Debian 12 of its own, which has
# nothing but what the package depends on; starts the editor there as an ordinary user, from / and with a home
# folder whose path has blanks and letters beyond ASCII; tries the sample game, has its level saved and opens it
# again as a recent one; then removes the package and looks for what is left of it outside the home folder. What
# the editor showed comes to lie beside the package. Only root can run it, and it loads some 150 MB of packages.
#   MAPWRIGHT_DEBIAN=DIR   keeps the Debian in DIR for the next time
set -euo pipefail
[ "$(id -u)" -eq 0 ] || { echo "This check makes a Debian of its own, which only root can do." >&2; exit 1; }
# Its mounts are seen by this script alone and end with it.
[ -n "${own_mounts:-}" ] || own_mounts=1 exec unshare --mount "$0" "$@"
deb=${1:+$(realpath "$1")}
cd "$(dirname "$0")/.."
source tools/packages.sh
source tools/virtual_display.sh

need debootstrap "${display_packages[@]}"
deb=${deb:-$(ls -t build/package/*.deb 2>/dev/null | head -n 1)}
[ -f "$deb" ] || { echo "There is no package yet; tools/package.sh makes one." >&2; exit 1; }
pictures=$PWD/build/package
mkdir -p "$pictures"
scratch=$(mktemp -d)
root=$scratch/root
log=$scratch/editor.log
home="/home/Jörg der Jüngere"
folder="$home/.local/share/mapwright"
level=Stone_Ridge

clean_up() {
  [ -z "${display_pid:-}" ] || stop_all
  umount "$root/proc" 2>/dev/null || true
  rm -rf --one-file-system "$scratch"
}
trap clean_up EXIT

fail() {
  echo "The package is not in order: $*" >&2
  [ ! -s "$log" ] || tail -n 20 "$log" >&2
  [ -z "${DISPLAY:-}" ] || import -window root "$pictures/failure.png" 2>/dev/null || true
  exit 1
}

# quietly COMMAND...: shows what the command says only when it fails.
quietly() { "$@" >"$log" 2>&1 || fail "$*"; }

# A plain Debian 12, made or copied from the one that is kept. It comes from where this machine's packages
# come from, if that has Debian 12, else from debootstrap's own choice.
make_debian() {
  local kept=${MAPWRIGHT_DEBIAN:-$scratch/debian} mirror
  mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' 'Codename: bookworm' | head -n 1)
  if [ ! -e "$kept/etc/debian_version" ] || [ -e "$kept/debootstrap" ]; then
    quietly debootstrap --variant=minbase bookworm "$kept" ${mirror:+"$mirror"}
  fi
  cp -a "$kept" "$root"
  cp /etc/resolv.conf "$root/etc/"
  mount -t proc proc "$root/proc"
}

as_root() {
  chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}

# What goes before a command of the user, who has logged in to a desktop.
become_user() {
  user=(chroot --userspec=modder:modder "$root" env -i PATH=/usr/bin:/bin LANG=C.UTF-8 "HOME=$home" USER=modder
    "DISPLAY=$DISPLAY" XDG_RUNTIME_DIR=/run/user/modder)
}

add_user() {
  quietly as_root useradd --create-home --home-dir "$home" --user-group --shell /bin/sh modder
  quietly as_root install -d -o modder -g modder -m 700 /run/user/modder
}

# All that is outside of /home, files with what they hold; but for what dpkg, apt and ldconfig write down about
# their own work.
inventory() {
  local skip=() path
  for path in ./home ./proc ./sys ./dev ./var/cache/apt ./var/cache/ldconfig ./var/lib/apt ./var/log \
    ./var/lib/dpkg/triggers './var/lib/dpkg/status*' './var/lib/dpkg/available*' './var/lib/dpkg/lock*'; do
    skip+=(-path "$path" -o)
  done
  (cd "$root" && {
    find . -xdev \( "${skip[@]}" -false \) -prune -o -type f -print0 | xargs -0 sha256sum
    find . -xdev \( "${skip[@]}" -false \) -prune -o ! -type f -printf '%y %p %l\n'
  }) | sort -k 2
}

packages() { as_root dpkg-query -W -f '${Package}\n' | sort; }

# First what the package says that it needs, then the package, which must bring nothing else along.
install_package() {
  local before added
  quietly as_root apt-get update
  quietly as_root apt-get satisfy -y --no-install-recommends "$(dpkg-deb -f "$deb" Depends)"
  as_root apt-get clean
  before=$(packages)
  inventory >"$scratch/before"
  cp "$deb" "$root/package.deb"
  quietly as_root apt-get install -y --no-install-recommends /package.deb
  rm "$root/package.deb"
  added=$(comm -13 <(echo "$before") <(packages))
  [ "$added" = mapwright ] || fail "apt installed with it: $added"
  grep -q 'application/x-varnhold-archive:\*\.vra' "$root/usr/share/mime/globs2" ||
    fail "the system does not know archives"
}

remove_package() {
  quietly as_root apt-get purge -y mapwright
  inventory >"$scratch/after"
  diff "$scratch/before" "$scratch/after" >"$log" || fail "this is left of it outside the home folder:"
  : >"$log"
}

start_editor() {
  (cd / && exec "${user[@]}" mapwright) >"$log" 2>&1 &
  editor_pid=$!
}

take_picture() {
  sleep 1
  import -window root "$pictures/$1.png"
  echo "  $pictures/$1.png"
}

# Nothing is there yet: the editor makes its working folder and offers the sample game.
start_first() {
  start_editor
  go_to Mapwright "About Mapwright" space
  take_picture first_start
  wait_for 5 has_icons
  [ -d "$root$folder" ] || fail "no working folder was made in $folder"
}

# The toolbar has many colours; without icons it has those of its border.
has_icons() {
  [ "$(import -window root -crop 640x26+0+39 -depth 8 -format %k info: 2>/dev/null)" -gt 100 ]
}

is_changed() { [[ $(active_title) == *"* - Mapwright" ]]; }
is_open() { [[ $(active_title) == "$level - Mapwright" ]]; }
is_saved() { main_is_active && ! is_changed; }

# The sample game is written and its level opened; the water of that is raised, and it is saved.
save_level() {
  local archive="$root$folder/game/Mods/varnhold/Archives/varnhold/levels/$level.vra" before
  xdotool key alt+t  # "Try the Sample Game"
  wait_for 120 is_open
  before=$(sha256sum <"$archive")
  read -r view_x view_y < <(view_corner)
  xdotool mousemove $((view_x + 500)) $((view_y + 350))
  sleep 0.5
  xdotool key Prior
  wait_for 10 is_changed
  xdotool key ctrl+s
  wait_for 60 is_saved
  take_picture saved
  end_editor
  [ "$(sha256sum <"$archive")" != "$before" ] || fail "the level on disk is as it was before it was saved"
  quietly "${user[@]}" mapwright-archive verify "${archive#"$root"}"
}

# The next start offers the level, and so does the menu.
open_recent() {
  start_editor
  go_to Mapwright "About Mapwright" space "Select a Mod" Return
  take_picture second_start
  xdotool key alt+1
  wait_for 60 is_open
  xdotool key --delay 300 alt+f r
  take_picture open_recent
  xdotool key --delay 300 Escape Escape Escape
  end_editor
}

echo "A Debian of its own ..."
make_debian
add_user
echo "Installing $(basename "$deb") ..."
install_package
display_size=1280x800
start_display
become_user
echo "The first start ..."
start_first
echo "The sample game is tried and its level saved ..."
save_level
echo "It is found again ..."
open_recent
echo "Removing it ..."
remove_package
echo "The package can be installed, used and removed."
