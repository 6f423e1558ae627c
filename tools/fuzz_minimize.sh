#!/usr/bin/env bash
# Makes the corpora in the repository anew: the smallest set of inputs that reaches all that they and the inputs
# found by `./test.sh --fuzz` (in build/fuzz) reach, and those with a name of their own: faults of the past.
set -euo pipefail
cd "$(dirname "$0")/.."
export TMPDIR
TMPDIR=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
for fuzzer in build/fuzz/bin/*_fuzzer; do
  name=$(basename "$fuzzer" _fuzzer)
  mkdir -p "$TMPDIR/$name" "build/fuzz/found/$name"
  "$fuzzer" -merge=1 -use_counters=0 -max_len=65536 "$TMPDIR/$name" "$PWD/fuzz/corpus/$name" \
    "$PWD/build/fuzz/found/$name" >"build/fuzz/$name-merge.log" 2>&1 || { tail -n 20 "build/fuzz/$name-merge.log"; exit 1; }
  find "fuzz/corpus/$name" -type f -regextype egrep ! -regex '.*/[0-9a-f]{40}' -exec cp -t "$TMPDIR/$name" {} +
  rm -rf "fuzz/corpus/$name"
  mv "$TMPDIR/$name" fuzz/corpus/
  printf '%-18s %5d inputs\n' "$name" "$(find "fuzz/corpus/$name" -type f | wc -l)"
done
rm -rf "$TMPDIR"
