#!/usr/bin/env bash
# Makes the packages in build/package: mapwright_<version>_<architecture>.deb and a .tar.gz that runs from
# wherever it is unpacked.
#   tools/package.sh           makes them
#   tools/package.sh --check   and looks at them with lintian, and at the desktop's files with its own tools
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/packages.sh

need "${build_packages[@]}" "${package_packages[@]}"
build release
(cd build/release && cpack >package.log) || { tail -n 40 build/release/package.log >&2; exit 1; }
ls build/package/*.deb build/package/*.tar.gz
[ "${1:-}" = --check ] || exit 0

deb=$(ls -t build/package/*.deb | head -n 1)
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
lintian --fail-on error "$deb"
dpkg-deb -x "$deb" "$root"
desktop-file-validate "$root"/usr/share/applications/*.desktop
appstreamcli validate --no-net "$root"/usr/share/metainfo/*.xml
xmllint --noout "$root"/usr/share/mime/packages/*.xml
# What it needs is there, from a folder that is not the one it was made for, and without a display.
test "$("$root/usr/bin/mapwright" --version)" = "$(build/release/bin/mapwright --version)"
code=0
"$root/usr/bin/mapwright" --folder "$root/missing" 2>/dev/null || code=$?
test "$code" = 2
code=0
env -u DISPLAY -u WAYLAND_DISPLAY "$root/usr/bin/mapwright" 2>/dev/null || code=$?
test "$code" = 1
echo "The packages are in order."
