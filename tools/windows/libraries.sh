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
  local apt=$windows/apt file
  if [ ! -d "$apt/sources" ]; then
    mkdir -p "$apt"/{sources,lists/partial,cache/archives/partial}
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
      [ ! -e "$file" ] || sed -n 's/^deb /deb-src /p' "$file" >"$apt/sources/$(basename "$file")"
    done
    for file in /etc/apt/sources.list.d/*.sources; do
      [ ! -e "$file" ] || sed 's/^Types:.*/Types: deb-src/' "$file" >"$apt/sources/$(basename "$file")"
    done
  fi
  apt-get -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$apt/sources" \
    -o Dir::State::lists="$apt/lists" -o Dir::Cache="$apt/cache" -o APT::Sandbox::User=root "$@"
}

# fetch_source PACKAGE: unpacked and patched as Debian has it, in build/windows/PACKAGE.
fetch_source() {
  [ ! -d "$windows/$1" ] || return 0
  mkdir -p "$windows/downloads"
  (
    cd "$windows/downloads"
    if ! ls "$1"_*.dsc >/dev/null 2>&1; then
      [ -e "$windows/apt/updated" ] || apt_with_sources update >"$windows/apt.log" 2>&1 || true
      apt_with_sources source --download-only "$1" >"$windows/$1.fetch.log" 2>&1 || {
        tail -n 20 "$windows/apt.log" "$windows/$1.fetch.log" >&2
        echo "The source of $1 cannot be fetched: where this machine has its packages from, there are no" >&2
        echo "source packages (deb-src), or not this one. Either name a mirror that has them, or put" >&2
        echo "$1_*.dsc and the files that it names into $windows/downloads." >&2
        exit 1
      }
      touch "$windows/apt/updated"
    fi
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
  for feature in tabletevent sql network dbus printsupport xml concurrent vulkan testlib direct2d directwrite3; do
    off+=("-DFEATURE_$feature=OFF")
  done
  cross_build "$windows/qt6-base" -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
    -DINPUT_opengl=desktop -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF "${off[@]}"
}

# make_prefix FOLDER: what Wine makes of nothing, as Windows 10; used from then on.
make_prefix() {
  export WINEPREFIX=$1 WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
  [ -e "$WINEPREFIX/made" ] && return
  mkdir -p "$windows"
  quietly wine.log /usr/lib/wine/wine64 wineboot --init
  quietly wine.log /usr/lib/wine/wine64 reg add 'HKCU\Software\Wine' /v Version /d win10 /f
  touch "$WINEPREFIX/made"
}

# The one that the tests use.
start_wine() { make_prefix "$windows/wine"; }
