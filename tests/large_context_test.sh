#!/bin/sh
# Renders a generated context of CASES test cases with the builtin renderer
# and checks that the run said nothing on standard error (where the
# sanitizers report) and left a page for every document.
#
#   sh tests/large_context_test.sh QENDOR GENERATOR CASES
set -eu
qendor=$1
generate=$2
cases=$3
work=$(mktemp -d /tmp/large-context.XXXXXX)
trap 'rm -rf "$work"' EXIT INT TERM

"$generate" "$work" --cases "$cases" --records 24 --files 10 --used-files 10 --steps 22 >/dev/null
cd "$work"
status=0
"$qendor" -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx \
  -render builtin >stdout.txt 2>stderr.txt || status=$?
# The generated test cases end before their diagrams do: the context failed.
if [ "$status" -ne 10 ]; then
  echo "large context: status $status, expected 10" >&2
  cat stderr.txt >&2
  exit 1
fi
if [ -s stderr.txt ] || [ -s stdout.txt ]; then
  echo "large context: the run printed something:" >&2
  head -n 40 stderr.txt stdout.txt >&2
  exit 1
fi
xml=$(ls out/*.xml | wc -l)
html=$(ls out/*.html | wc -l)
if [ "$xml" -ne $((cases + 1)) ] || [ "$html" -ne "$xml" ]; then
  echo "large context: $xml documents and $html pages, expected $((cases + 1)) of each" >&2
  exit 1
fi
echo "large context: $html pages rendered"
