#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks and prints tables: each row is a piece of work done in two ways
# in turns, ours and a plain one or a peer, with the ratio of their times and the goal for it, or work of the
# running editor on levels of every size, with how it grows.
#   ./bench.sh                    all rows; a quarter of an hour
#   ./bench.sh GROUP...           only terrain, objects, archive, saving, pictures, ground or history
#   ./bench.sh program [SIDE...]  only the running editor, on levels of 256, 512 and 1024 samples, and its start
set -euo pipefail
cd "$(dirname "$0")"
source tools/packages.sh

need "${build_packages[@]}" "${bench_packages[@]}"
if [ "${1:-}" != program ]; then
  build bench bench_table
  LIBGL_ALWAYS_SOFTWARE=1 build/bench/bin/bench_table "$@"
  [ $# -eq 0 ] || exit 0
fi

need "${display_packages[@]}"
build bench program mapwright empty_window
tests/monkey/run.sh build/bench program "${@:2}"
exec tools/start_up_times.sh "$PWD/build/bench"
