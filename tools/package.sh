#!/usr/bin/env bash
# Makes the packages in build/package: mapwright_<version>_<architecture>.deb and a .tar.gz that runs from
# wherever it is unpacked.
#   tools/package.sh           makes them
#   tools/package.sh --check   and looks at them with lintian and the tools of the desktop, and starts what is in them
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/packages.sh

need "${build_packages[@]}" "${package_packages[@]}"
build release
rm -f build/package/mapwright*  # of another version
(cd build/release && cpack >package.log) || { tail -n 40 build/release/package.log >&2; exit 1; }
ls build/package/*.deb build/package/*.tar.gz
[ "${1:-}" = --check ] || exit 0

need "${display_packages[@]}"
source tools/virtual_display.sh
scratch=$(mktemp -d)
log=$scratch/editor.log
root="$scratch/ein Ort für Programme"
home="$scratch/Jörg der Jüngere"
mkdir -p "$root" "$home" "$scratch/run"
chmod 700 "$scratch/run"
trap '[ -z "${display_pid:-}" ] || stop_all; rm -rf "$scratch"' EXIT
fail() {
  echo "The packages are not in order: $*" >&2
  [ ! -s "$log" ] || tail -n 20 "$log" >&2
  exit 1
}

# What the desktop and the package system read.
check_contents() {
  lintian --fail-on error "$deb"
  dpkg-deb -x "$deb" "$scratch/deb"
  local shared=$scratch/deb/usr/share
  desktop-file-validate "$shared"/applications/*.desktop
  appstreamcli validate --no-net "$shared"/metainfo/*.xml
  xmllint --noout "$shared"/mime/packages/*.xml
}

# ends_with CODE COMMAND...
ends_with() {
  local code=0
  "${@:2}" >"$log" 2>&1 || code=$?
  [ "$code" = "$1" ] || fail "exit code $code, not $1: ${*:2}"
}

# As a user whose home folder is empty, from /; in a process of its own.
as_new_user() {
  cd / && exec env -u XDG_DATA_HOME -u XDG_CONFIG_HOME HOME="$home" XDG_RUNTIME_DIR="$scratch/run" "$@"
}

# The .tar.gz, unpacked where nobody expected it: what it needs goes with it.
check_unpacked() {
  tar -xf "$archive" -C "$root" --strip-components=1
  local program=$root/bin/mapwright
  ends_with 0 "$program" --version
  ends_with 0 "$root/bin/mapwright-archive" --help
  ends_with 2 "$program" --folder "$root/missing"
  ends_with 1 env -u DISPLAY -u WAYLAND_DISPLAY "$program"
  start_display
  as_new_user "$program" >"$log" 2>&1 &
  editor_pid=$!
  go_to Mapwright "About Mapwright" space
  [ -d "$home/.local/share/mapwright" ] || fail "it has made no working folder"
  close_with alt+c
}

deb=$(ls -t build/package/*.deb | head -n 1)
archive=$(ls -t build/package/*.tar.gz | head -n 1)
check_contents
check_unpacked
echo "The packages are in order."
