#!/usr/bin/env bash
# monkey.sh [EVENTS [SEED...]]: the editor under the sanitizers and a monkey: for every seed (1) it opens a
# sample level, sends the windows 20,000 random events and looks whether anything is wrong
# (tests/monkey/monkey.cpp). Takes about an hour for a seed.
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/packages.sh

events=${1:-20000}
seeds=("${@:2}")
[ ${#seeds[@]} -gt 0 ] || seeds=(1)

need "${build_packages[@]}" "${display_packages[@]}" "${test_packages[@]}"
build asan monkey
failed=0
for seed in "${seeds[@]}"; do
  tests/monkey/run.sh build/asan monkey --seed "$seed" --events "$events" || failed=1
done
exit "$failed"
