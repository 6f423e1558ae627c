#!/usr/bin/env bash
# Installs what is missing, checks the sources with clang-format and clang-tidy, builds, and runs all tests
# under a virtual display: as they are, and again under the address and undefined-behaviour sanitizers.
#   ./test.sh                 all tests
#   ./test.sh --fuzz [S [N]]  every fuzz target, starting from fuzz/corpus, until it has had S seconds of
#                             processor time (60) and has made N executions (0)
#   ./test.sh --windows       cross-compiles for Windows what needs no Qt, and runs its tests under Wine
#   ./test.sh --package       makes the packages and looks at them (tools/package.sh)
set -euo pipefail
cd "$(dirname "$0")"
source tools/packages.sh

# Every fuzz target for some seconds and executions, two targets at a time: from the corpus in the repository,
# into build/fuzz.
run_fuzzers() {
  local seconds=$1 runs=$2 failed=0
  local folder=$PWD/build/fuzz
  need "${build_packages[@]}" "${sanitizer_packages[@]}"
  build fuzz fuzzers
  export TMPDIR
  TMPDIR=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
  ls build/fuzz/bin/*_fuzzer | xargs -n 1 -P 2 tools/fuzz.sh "$seconds" "$runs" "$folder" || failed=1
  rm -rf "$TMPDIR"
  [ "$failed" -eq 0 ] || { echo "Fuzz targets found faults; the inputs are in $folder."; exit 1; }
  echo "No fuzz target found a fault."
}

check_format() {
  local clang_format
  clang_format=$(command -v clang-format-14 || command -v clang-format)
  find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -print0 |
    xargs -0 "$clang_format" --dry-run --Werror
}

# run_tests PRESET: the tests of a build, under a virtual display of their own.
run_tests() {
  local scratch
  scratch=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
  trap "rm -rf '$scratch'" EXIT
  TMPDIR=$scratch xvfb-run -a -s "-screen 0 1280x800x24 -noreset" \
    env LIBGL_ALWAYS_SOFTWARE=1 QT_QPA_PLATFORM=xcb ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --test-dir "build/$1" --output-on-failure -j "$(nproc)" |
    { grep -vE '^ +Start |Passed +[0-9.]+ sec$' || true; }
  rm -rf "$scratch"
}

# lines FOLDER...: of C++, all of them.
lines() {
  find "$@" \( -name '*.cpp' -o -name '*.h' \) -print0 | xargs -0 cat | wc -l
}

print_share() {
  local product tests tenths
  product=$(lines core platform data terrain objects app plugins resources assets sample tools)
  tests=$(lines tests)
  tenths=$((1000 * tests / product))
  echo "Tests: $tests lines, $((tenths / 10)).$((tenths % 10)) for 100 of the $product of the product."
}

if [ "${1:-}" = --fuzz ]; then
  run_fuzzers "${2:-60}" "${3:-0}"
  exit
fi

if [ "${1:-}" = --windows ]; then
  source tools/windows/libraries.sh
  need "${windows_test_packages[@]}"
  build_lzo
  build windows-tests
  exec tools/windows/run_tests.sh
fi

if [ "${1:-}" = --package ]; then
  exec tools/package.sh --check
fi

need "${build_packages[@]}" "${display_packages[@]}" "${test_packages[@]}" "${sanitizer_packages[@]}"
check_format
tools/tidy.sh
build tests
run_tests tests
build asan
run_tests asan
print_share
