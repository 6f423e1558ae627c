# Sourced by tools/windows/build.sh and test.sh: the libraries that the Windows program needs, from their
# Debian sources, cross-compiled into build/windows/libraries. What is there is not made again.

windows=$PWD/build/windows
libraries=$windows/libraries
export CCACHE_SLOPPINESS=pch_defines,time_macros  # or nothing with precompiled headers is kept

# quietly LOG COMMAND...: shows the end of what a command says only if it fails.
quietly() {
  local log=$windows/$1
  shift
  "$@" >"$log" 2>&1 || {
    tail -n 60 "$log" >&2
    echo "'$*' failed; all it said is in $log." >&2
    exit 1
  }
}

# apt with sources of programs, from wherever this machine has its packages; its own lists are left alone.
apt_with_sources() {
  local apt=$windows/apt
  if [ ! -e "$apt/list.sources" ] && [ ! -e "$apt/list.list" ]; then
    mkdir -p "$apt/lists/partial" "$apt/cache/archives/partial"
    local lists
    lists=$(ls /etc/apt/sources.list.d/*.sources 2>/dev/null || true)
    [ -z "$lists" ] || awk 'FNR == 1 && NR > 1 {print ""} {print}' $lists |
      sed 's/^Types:.*/Types: deb-src/' >"$apt/list.sources"
    [ -n "$lists" ] || sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$apt/list.list"
  fi
  apt-get -o Dir::Etc::sourcelist="$(ls "$apt"/list.*)" -o Dir::Etc::sourceparts=/dev/null \
    -o Dir::State::lists="$apt/lists" -o Dir::Cache="$apt/cache" -o APT::Sandbox::User=root "$@"
}

# fetch_source PACKAGE: unpacked and patched as Debian has it, in build/windows/PACKAGE.
fetch_source() {
  [ ! -d "$windows/$1" ] || return 0
  mkdir -p "$windows/downloads"
  (
    cd "$windows/downloads"
    [ -e "$windows/apt/updated" ] || quietly apt.log apt_with_sources update
    touch "$windows/apt/updated"
    quietly "$1.fetch.log" apt_with_sources source --download-only "$1"
    rm -rf "$windows/$1.new"
    quietly "$1.unpack.log" dpkg-source --no-check -x "$1"_*.dsc "$windows/$1.new"
  )
  mv "$windows/$1.new" "$windows/$1"
}

# cross_build SOURCE OPTION...: configures, builds and installs it.
cross_build() {
  local name
  name=$(basename "$1")
  echo "Building $name for Windows ..."
  quietly "$name.configure.log" cmake -S "$1" -B "$windows/$name-build" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/windows.cmake" -DMAPWRIGHT_WINDOWS_LIBRARIES="$libraries" \
    -DCMAKE_INSTALL_PREFIX="$libraries" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "${@:2}"
  quietly "$name.build.log" cmake --build "$windows/$name-build"
  quietly "$name.install.log" cmake --install "$windows/$name-build" --strip
}

build_lzo() {
  [ ! -e "$libraries/lib/liblzo2.a" ] || return 0
  fetch_source lzo2
  cross_build "$windows/lzo2"
}

# What the program needs of Qt, with the host's own tools. The header for tablets is not in the source.
build_qt() {
  [ ! -e "$libraries/plugins/platforms/qwindows.dll" ] || return 0
  fetch_source qt6-base
  local off=() feature
  for feature in tabletevent sql network dbus printsupport xml concurrent vulkan testlib direct2d; do
    off+=("-DFEATURE_$feature=OFF")
  done
  cross_build "$windows/qt6-base" -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
    -DINPUT_opengl=desktop -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF "${off[@]}"
}

# What test programs and wine need of this machine.
start_wine() {
  export WINEPREFIX=$windows/wine WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
  [ -e "$WINEPREFIX/made" ] && return
  mkdir -p "$windows"
  quietly wine.log /usr/lib/wine/wine64 wineboot --init
  quietly wine.log /usr/lib/wine/wine64 reg add 'HKCU\Software\Wine' /v Version /d win10 /f
  touch "$WINEPREFIX/made"
}
