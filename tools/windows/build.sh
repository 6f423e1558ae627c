#!/usr/bin/env bash
# Makes build/windows/mapwright-<version>-win64.zip on Debian: fetches and cross-compiles Qt and LZO, paints the
# pictures, cross-compiles the program, and puts together the folder that a user unpacks. What was made before is kept
# in build/windows; the first time takes an hour on two cores.
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/packages.sh
source tools/windows/libraries.sh

need "${build_packages[@]}" "${windows_packages[@]}"
mkdir -p "$windows"
build_lzo
build_qt

# Pictures and the template of mods are the same on every machine and are made by this one's own programs.
echo "Painting the pictures ..."
build release make_media media help_pages sample
painted=$windows/painted
for what in pictures windows; do
  into=$painted
  [ $what = windows ] || into=$painted/$what
  QT_QPA_PLATFORM=offscreen quietly "painting.log" build/release/bin/make_media "$what" resources/icons "$into"
done

echo "Building the program for Windows ..."
quietly program.configure.log cmake -S . -B "$windows/program" -G Ninja \
  -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/windows.cmake" -DMAPWRIGHT_WINDOWS_LIBRARIES="$libraries" \
  -DMAPWRIGHT_PAINTED="$painted" -DMAPWRIGHT_TESTS=OFF -DCMAKE_BUILD_TYPE=Release -DCMAKE_UNITY_BUILD=ON \
  -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake
quietly program.build.log cmake --build "$windows/program" --target mapwright mapwright-archive make_sample \
  sample_game mw_amm mw_smg

# The folder of the program, and in it what it reads: it is its own working folder.
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:.*=//p' "$windows/program/CMakeCache.txt")
name=mapwright-$version-win64
folder=$windows/$name
rm -rf "$folder" "$folder.zip"
mkdir -p "$folder/platforms" "$folder/styles" "$folder/include"
bin=$windows/program/bin
cp "$bin"/{mapwright,mapwright-archive,make_sample,varnhold}.exe "$bin"/mw_{amm,smg}.mwp "$folder"
cp "$libraries"/bin/Qt6{Core,Gui,Widgets,OpenGL}.dll "$folder"
cp "$libraries/plugins/platforms/qwindows.dll" "$folder/platforms"
cp "$libraries/plugins/styles/"*.dll "$folder/styles"
for library in libstdc++-6 libgcc_s_seh-1 libwinpthread-1; do
  cp "$(x86_64-w64-mingw32-g++-posix -print-file-name=$library.dll)" "$folder"
done
x86_64-w64-mingw32-strip "$folder"/*.{exe,dll,mwp} "$folder"/*/*.dll
cp -r build/release/work/{media,TextureSets,scripts,mpwr.cfg,guide.htm,tutorial.htm,help.css,pictures} "$folder"
sed -i 's/^GamePath=.*/GamePath=/' "$folder/mpwr.cfg"  # here it leads to this machine's sample game
cp plugins/mapwright_plugin.h "$folder/include"
cp packaging/copyright "$folder/LICENSES.txt"
cp LICENSE CHANGELOG.md "$folder"

# A zip is the same for the same content: entries by name, without times of this build.
find "$folder" -exec touch -d 2000-01-01 {} +
(cd "$windows" && find "$name" -type f | LC_ALL=C sort | zip -q -X -9 "$name.zip" -@)
tools/windows/check_folder.py "$folder" /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
unzip -l "$folder.zip" >"$folder.list"
echo "$folder.zip: $(stat -c %s "$folder.zip") bytes, $(unzip -Z1 "$folder.zip" | wc -l) files (listed in $name.list)"
