#!/usr/bin/env bash
# Installs what is missing, builds the editor, writes the sample game and starts the editor on it. Without
# a display it opens a sample level in a virtual one, saves a screenshot, says where, and ends.
set -euo pipefail
cd "$(dirname "$0")"
source tools/packages.sh

need "${build_packages[@]}"
build release

# The version of the sample game is read where a desktop keeps it for installed programs.
export XDG_CONFIG_DIRS=$PWD/build/release/work/settings:${XDG_CONFIG_DIRS:-/etc/xdg}

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  cd build/release/work
  exec ../bin/mapwright
fi

need "${display_packages[@]}"
exec tools/screenshot_run.sh "$PWD/build/release"
