# Sourced by run.sh, test.sh, bench.sh and tools/package.sh: the Debian packages that the program, its tests and its
# benchmarks need, and how missing ones are installed.

build_packages=(g++ cmake ninja-build ccache qt6-base-dev libqt6opengl6-dev qt6-svg-dev liblzo2-dev
  libstb-dev libcli11-dev nlohmann-json3-dev libgl-dev libglu1-mesa-dev fonts-dejavu-core)
display_packages=(xvfb xauth openbox xdotool imagemagick x11-utils libgl1-mesa-dri)
test_packages=(libgtest-dev libgmock-dev libbenchmark-dev libegl-dev clang-format-14 locales lld)
tidy_packages=(clang clang-tidy)
sanitizer_packages=(clang libclang-rt-14-dev llvm)  # llvm names what they find; for the fuzz targets too
package_packages=(dpkg-dev file lintian desktop-file-utils appstream libxml2-utils)
windows_test_packages=(cmake ninja-build ccache g++-mingw-w64-x86-64-posix wine64 googletest dpkg-dev
  libstb-dev libcli11-dev nlohmann-json3-dev)
windows_packages=("${windows_test_packages[@]}" zip unzip python3)
bench_packages=(libbenchmark-dev libegl-dev libsquish-dev)

# need PACKAGE...: installs those that are missing; ends the script with advice when that is impossible.
need() {
  local missing=() name
  for name in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return
  command -v apt-get >/dev/null || {
    echo "This script installs Debian packages, and there is no apt-get here. Please install what these" >&2
    echo "packages hold, then build with 'cmake --preset release': ${missing[*]}" >&2
    exit 1
  }
  local sudo=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "These packages are missing; please install them as root: ${missing[*]}" >&2
      exit 1
    }
    sudo=(sudo)
  fi
  echo "Installing ${missing[*]} ..."
  local log
  log=$(mktemp)
  if ! { "${sudo[@]}" apt-get update -qq &&
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
      "${missing[@]}"; } >"$log" 2>&1; then
    cat "$log" >&2
    echo "The packages above could not be installed." >&2
    exit 1
  fi
  rm -f "$log"
}

# build PRESET [TARGET...]: configures and builds quietly, and shows the compiler's output on failure.
build() {
  local preset=$1 log
  shift
  export CCACHE_SLOPPINESS=pch_defines,time_macros  # or nothing with precompiled headers is kept
  log=$(mktemp)
  if ! { cmake --preset "$preset" && cmake --build --preset "$preset" ${1:+--target "$@"}; } >"$log" 2>&1
  then
    tail -n 60 "$log" >&2
    echo "Building '$preset' failed." >&2
    exit 1
  fi
  rm -f "$log"
}
