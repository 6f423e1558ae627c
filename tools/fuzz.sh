#!/usr/bin/env bash
# fuzz.sh SECONDS FOLDER FUZZER: runs one fuzz target, starting from its corpus in the repository and what
# earlier runs found in FOLDER. No input may take more than a second or 512 MiB. Prints what was done;
# faults are in FOLDER.
set -uo pipefail
cd "$(dirname "$0")/.."
seconds=$1 folder=$2 fuzzer=$3
name=$(basename "$fuzzer" _fuzzer)
options=(-max_len=4096)
# A text: of a few lines one can do as much as of many.
[ -f "fuzz/dictionaries/$name.dict" ] && options=(-max_len=1024 "-dict=fuzz/dictionaries/$name.dict")
mkdir -p "$folder/found/$name"
# The memory that the address sanitizer keeps from being used again would count as the target's. Where it was
# asked for, which takes much of the time to note, running the faulty input again tells.
export ASAN_OPTIONS=quarantine_size_mb=16:malloc_context_size=1 UBSAN_OPTIONS=print_stacktrace=1
if ! "$fuzzer" -max_total_time="$seconds" -rss_limit_mb=512 -timeout=1 "${options[@]}" \
  -print_final_stats=1 -artifact_prefix="$folder/$name-" \
  "$folder/found/$name" "$PWD/fuzz/corpus/$name" >"$folder/$name.log" 2>&1; then
  tail -n 40 "$folder/$name.log"
  exit 1
fi
awk -v name="$name" '/^Done / { runs = $2; took = $5 } /slowest_unit_time_sec/ { slowest = $2 }
  /peak_rss_mb/ { peak = $2 }
  END { printf "%-18s %9d runs in %4d s, slowest input %d s, peak %d MiB\n", name, runs, took, slowest, peak }' \
  "$folder/$name.log"
