#!/bin/sh
# Runs every named fuzz target for the given number of seconds and prints
# how many inputs each ran and how many a second.
# usage: run-fuzzers.sh <fuzz build folder> <seconds> <target>...
set -u
build=$1
seconds=$2
shift 2
source=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$build/corpus" "$build/artifacts" "$build/logs"
failed=""
for target in "$@"; do
  corpus="$build/corpus/$target"
  mkdir -p "$corpus"
  seeds="$source/corpus/$target"
  regressions=""
  [ -d "$source/regressions/$target" ] && regressions="$source/regressions/$target"
  log="$build/logs/$target.log"
  # The line readers reach every rule within a few short lines: small inputs
  # let them run many more of them in the same time.
  case $target in
    info_file | result_file | verification_file | assertion_macro | assertion_text) max_len=1024 ;;
    *) max_len=65536 ;;
  esac
  "$build/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2560 \
    -max_len="$max_len" -print_final_stats=1 -artifact_prefix="$build/artifacts/$target-" \
    "$corpus" "$seeds" $regressions >"$log" 2>&1
  status=$?
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
  if [ $status -eq 0 ]; then
    printf '%-22s %10s runs %8s/s  no finding\n' "$target" "${runs:-?}" "${rate:-?}"
  else
    printf '%-22s %10s runs %8s/s  FINDING (see %s)\n' "$target" "${runs:-?}" "${rate:-?}" "$log"
    grep -E 'ERROR|SUMMARY|Test unit written' "$log" | head -5
    failed="$failed $target"
  fi
done
if [ -n "$failed" ]; then
  echo "fuzz: findings in:$failed"
  exit 1
fi
