#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks and prints one table: each row is a piece of work done in
# two ways in turns, ours and a plain one or a peer, with the ratio of their times and the goal for it.
#   ./bench.sh            all rows, that of the running editor, and how long it takes to start; some minutes
#   ./bench.sh GROUP...   only terrain, objects, archive, saving, pictures, ground or history
set -euo pipefail
cd "$(dirname "$0")"
source tools/packages.sh

need "${build_packages[@]}" "${bench_packages[@]}"
build bench bench_table
LIBGL_ALWAYS_SOFTWARE=1 build/bench/bin/bench_table "$@"
[ $# -eq 0 ] || exit 0

need "${display_packages[@]}"
build bench held_brush
tests/monkey/run.sh build/bench held_brush
build release
exec tools/start_up_times.sh "$PWD/build/release"
