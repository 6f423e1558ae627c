#!/usr/bin/env bash
# fuzz.sh SECONDS RUNS FOLDER FUZZER: runs one fuzz target until it has had SECONDS of processor time and has
# made RUNS executions, starting from its corpus in the repository and what earlier runs found in FOLDER. No
# input may take more than a second of processor time or 512 MiB. Prints what was done; faults are in FOLDER.
set -uo pipefail
cd "$(dirname "$0")/.."
seconds=$1 runs=$2 folder=$3 fuzzer=$4
name=$(basename "$fuzzer" _fuzzer)
log=$folder/$name.log
options=(-max_len=4096)
# A text: of a few lines one can do as much as of many.
[ -f "fuzz/dictionaries/$name.dict" ] && options=(-max_len=1024 "-dict=fuzz/dictionaries/$name.dict")
# Its bookkeeping about rare features takes more time than some of the targets.
options+=(-entropic=0)
mkdir -p "$folder/found/$name"
# The memory that the address sanitizer keeps from being used again would count as the target's. Where it was
# asked for, which takes much of the time to note, running the faulty input again tells.
export ASAN_OPTIONS=quarantine_size_mb=16:malloc_context_size=1 UBSAN_OPTIONS=print_stacktrace=1

# timed OUTPUT COMMAND...: runs it, with the milliseconds of processor time that it took in `took`.
timed() {
  local output=$1 TIMEFORMAT='%3U %3S' status
  { time "${@:2}" >"$output" 2>&1; status=$?; } 2>"$folder/$name.time"
  took=$(awk 'END { print int(1000 * ($1 + $2)) }' "$folder/$name.time")
  return "$status"
}

# The largest of what the chunks of the log printed as a statistic, or their sum.
largest() { awk -v stat="stat::$1:" '$1 == stat && $2 > most { most = $2 } END { print most + 0 }' "$log"; }
sum() { awk -v stat="stat::$1:" '$1 == stat { all += $2 } END { print all + 0 }' "$log"; }

# Inputs that the clock found slow are run again by themselves: the machine may have been busy, or the process
# stopped. Fails at one that does take long.
slow_inputs_hold() {
  local input before
  timed /dev/null "$fuzzer" -runs=0
  before=$took
  for input in "$folder/$name"-timeout-* "$folder/$name"-slow-unit-*; do
    [ -f "$input" ] || continue
    timed "$folder/$name-again.log" "$fuzzer" -rss_limit_mb=512 -timeout=300 "$input" ||
      { echo "$name: $input fails when it is run again"; return 1; }
    took=$((took > before ? took - before : 0))
    [ "$took" -gt "$slowest" ] && slowest=$took
    [ "$took" -le 1000 ] || { echo "$name: $input takes $took ms"; return 1; }
    rm "$input"
  done
}

rm -f "$folder/$name"-{timeout,slow-unit}-*
: >"$log"
used=0 slowest=0 done=0
# In chunks, because libFuzzer counts only the time on the clock.
while [ "$used" -lt $((1000 * seconds)) ] || [ "$done" -lt "$runs" ]; do
  left=$((seconds - used / 1000))
  chunk=$((left > 0 && left < 300 ? left : 300))
  # Leaks, which are slow to look for, show at the start, with the inputs that are there already.
  timed "$folder/$name-chunk.log" "$fuzzer" -max_total_time="$chunk" -detect_leaks=$((used < 10000)) \
    -rss_limit_mb=512 -timeout=2 -report_slow_units=1 "${options[@]}" -print_final_stats=1 -artifact_prefix="$folder/$name-" \
    "$folder/found/$name" "$PWD/fuzz/corpus/$name"
  status=$?
  used=$((used + took))
  cat "$folder/$name-chunk.log" >>"$log"
  done=$(sum number_of_executed_units)
  # 70 is libFuzzer's code for an input that took too long on the clock.
  if { [ "$status" -ne 0 ] && [ "$status" -ne 70 ]; } || ! slow_inputs_hold; then
    tail -n 40 "$folder/$name-chunk.log"
    exit 1
  fi
done
printf '%-18s %9d runs in %4d s of processor time, slowest input %s, peak %d MiB\n' "$name" "$done" \
  $((used / 1000)) "$([ "$slowest" -eq 0 ] && echo 'under 1 s' || echo "$slowest ms")" "$(largest peak_rss_mb)"
