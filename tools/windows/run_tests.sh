#!/usr/bin/env bash
# Runs the test programs that were built for Windows under Wine, two at a time, and says what was not run and why.
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/windows/libraries.sh
start_wine
list=tests/windows/skipped.txt
bin=build/windows/tests/bin
results=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
# Wine takes no folder for temporary files from its surroundings: it has one of its own, which leads there.
temporary=$WINEPREFIX/drive_c/users/$(id -un)/Temp
rm -rf "$temporary"
mkdir "$results/temporary"
ln -s "$results/temporary" "$temporary"
trap '/usr/lib/wine/wineserver64 -k || true; rm -rf "$results" "$temporary"; mkdir "$temporary"' EXIT

# Tests by name that the list leaves out, for --gtest_filter.
left_out=$(grep -vE '^#|^$|^[^ ]*\.cpp ' "$list" | cut -d' ' -f1 | paste -sd: || true)

run_one() {
  local name=$1
  timeout 1200 /usr/lib/wine/wine64 "$bin/$name.exe" --gtest_filter="*${left_out:+-$left_out}" \
    >"$results/$name.log" 2>&1 </dev/null || echo "$name ended with $?" >"$results/$name.failed"
}
export -f run_one
export results bin left_out

ls "$bin"/test_*.exe | xargs -n 1 basename -s .exe | xargs -P 2 -I{} bash -c 'run_one {}'

# The sum of the numbers in what matches.
count() { cat "$results"/*.log | { grep -oE "$1" | grep -oE '[0-9]+' || true; } | awk '{n += $1} END {print n + 0}'; }
for failed in "$results"/*.failed; do
  [ -e "$failed" ] || continue
  name=$(basename "$failed" .failed)
  cat "$failed"
  grep -vE '^\[ +(OK|RUN) ' "$results/$name.log" | tail -n "${FAILED_LINES:-60}"
done
echo "Not run on Windows:"
grep -vE '^#|^$' "$list" | sed 's/^/  /'
# What a test says that skips itself stands in front of its name.
cat "$results"/*.log | tr -d '\r' | awk '/Skipped$/ {getline; reason = $0} /^\[  SKIPPED \].* ms\)$/ {
  sub(/ \(.*/, "", $0); print "  " $4 " " reason}' | sort -u
passed=$(count '\[  PASSED  \] [0-9]+ test') skipped=$(count '\[  SKIPPED \] [0-9]+ test')
failures=$(count '\[  FAILED  \] [0-9]+ test')
skipped=$((skipped + $(grep -cvE '^#|^$' "$list")))
broken=$(find "$results" -name '*.failed' | wc -l)
[ "$failures" -gt 0 ] || failures=$broken  # a program that ended early has no last line
echo "$passed passed, $failures failed, $skipped skipped"
[ "$broken" -eq 0 ]
