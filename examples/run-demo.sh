#!/bin/sh
# Runs qendor on the bundled examples and says what came out.
#
# Usage: sh examples/run-demo.sh BUILD_DIR
#
# The full-form example (examples/shop.info, examples/results.log) is reported
# into BUILD_DIR/demo, the short-form example (examples/short/) into
# BUILD_DIR/demo-short. qendor reads the verification files and the diagram
# images from its output directory, so they are copied there first. Each run
# is checked against the expected statuses beside its info file; the script
# exits non-zero only when a run did not come out as expected.
#
# The runs keep their history in BUILD_DIR/demo-history (-history), which the
# script leaves in place: run it again and the reports show the earlier runs
# beside each test case.

if [ $# -lt 1 ]; then
  echo "usage: sh examples/run-demo.sh BUILD_DIR"
  exit 2
fi
examples=$(cd "$(dirname "$0")" && pwd)
build=$(cd "$1" 2>/dev/null && pwd) || {
  echo "build directory $1 does not exist: build qendor first (make build)"
  exit 2
}
qendor=$build/qendor
history=$build/demo-history
if [ ! -x "$qendor" ]; then
  echo "$qendor does not exist: build qendor first (make build)"
  exit 2
fi
have_xsltproc=yes
command -v xsltproc >/dev/null 2>&1 || have_xsltproc=no

meaning() {
  case $1 in
    0) echo "passed" ;;
    10) echo "failed" ;;
    11) echo "error" ;;
    12) echo "undefined" ;;
    13) echo "not terminated" ;;
    20) echo "usage: incomplete command line" ;;
    21) echo "info file could not be read" ;;
    22) echo "test case not found in the info file" ;;
    24) echo "result file could not be read" ;;
    25) echo "output not written" ;;
    30) echo "unexpected error" ;;
    *) echo "not a qendor exit status" ;;
  esac
}

problems=0

# run_example TITLE SOURCE_DIR INFO RESULT OUT_DIR CONTEXT REPORT EXPECTED_STATUS [OPTION]
run_example() {
  title=$1 src=$2 info=$3 result=$4 out=$5 context=$6 report=$7 expected=$8 option=${9:-}
  echo "== $title: test context $context"
  rm -rf "$out"
  mkdir -p "$out" || { echo "cannot create $out"; problems=$((problems + 1)); return; }
  cp "$src"/verification/*.ver "$out"/
  if [ -d "$src/images" ]; then
    cp -R "$src"/images/spec_jpegs "$src"/images/result_jpegs "$out"/
  fi
  # Run from the example's folder: the FILE paths of the info file are
  # relative to it.
  # -explain draws, in the report, where each failed model-based test case
  # left its diagram or chart.
  # An OPTION such as -coverage (how much of each model the test cases went
  # through) is added to the run.
  (cd "$src" && "$qendor" -infofile "$info" -resultfile "$result" -outdirectory "$out" \
    -tcontext "$context" -explain -history "$history" $option)
  status=$?
  echo
  echo "exit status $status: $(meaning "$status")"
  if [ "$status" != "$expected" ]; then
    echo "UNEXPECTED: the example should end with $expected ($(meaning "$expected"))"
    problems=$((problems + 1))
  fi
  if [ -f "$history/$report.history.xml" ]; then
    runs=$(grep -c '<Run ' "$history/$report.history.xml")
    echo "history: $runs run(s) in $history/$report.history.xml"
  fi
  if [ -f "$out/$report.html" ]; then
    echo "HTML report: $out/$report.html"
  elif [ "$have_xsltproc" = no ]; then
    echo "xsltproc is not installed, so no HTML report was made (XML: $out/$report.xml)"
  else
    echo "no HTML report was made (XML: $out/$report.xml)"
    problems=$((problems + 1))
  fi
  if [ "$have_xsltproc" = yes ] && [ -f "$out/$report.xml" ]; then
    echo "test case | status | verification result | coverage"
    xsltproc "$examples/summary.xslt" "$out/$report.xml" >"$out/summary.txt"
    sed 's/^/  /' "$out/summary.txt"
    if ! diff "$src/expected.txt" "$out/summary.txt" >/dev/null; then
      echo "UNEXPECTED: the statuses differ from $src/expected.txt:"
      diff "$src/expected.txt" "$out/summary.txt"
      problems=$((problems + 1))
    fi
  fi
  echo
}

run_example "full record form" "$examples" shop.info results.log "$build/demo" \
  Shop.Checkout Checkout 10 -coverage
run_example "short record form" "$examples/short" short.info results.log "$build/demo-short" \
  Shop.Cart Cart 0
run_example "a diagram and a chart the run left" "$examples/explain" explain.info results.log \
  "$build/demo-explain" Shop.Returns Returns 10

if [ "$problems" -ne 0 ]; then
  echo "$problems unexpected outcome(s)"
  exit 1
fi
if [ -f "$build/demo/Checkout.html" ]; then
  echo "Open $build/demo/Checkout.html in a browser to read the report and its model coverage,"
  echo "and $build/demo-explain/Returns.html to see where failed runs left their models."
fi
