#!/bin/sh
# Checks schema/TestResult.xsd against every result document that qendor
# writes for the bundled example (both record forms) and for each end-to-end
# scenario in tests/scenarios/: a context run per context named in the info
# file, a context without members and a run without its result file. Every
# XML file written is validated with xmllint; so are the expected documents
# kept beside the scenarios. Then it checks that the schema refuses documents
# that qendor never writes. Last, the JUnit export of every document and of a
# generated context of 400 test cases must pass the JUnit schemas of the
# xUnit import (tests/junit-xunit.xsd) and of the testsuites readers
# (tests/junit.xsd), and with root=testsuite the Ant-style one
# (tests/junit-ant.xsd); tests/junit_test.sh checks what they refuse.
#
# Usage: sh tests/schema_test.sh SOURCE_DIR QENDOR_BINARY

set -u
if [ $# -ne 2 ]; then
  echo "usage: sh tests/schema_test.sh SOURCE_DIR QENDOR_BINARY"
  exit 2
fi
src=$(cd "$1" && pwd) || exit 2
qendor=$(cd "$(dirname "$2")" && pwd)/$(basename "$2") || exit 2
schema=$src/schema/TestResult.xsd
# 77: skipped, as CTest is told; `make build` does not install xmllint.
command -v xmllint >/dev/null 2>&1 || {
  echo "schema test skipped: xmllint is missing (Debian package libxml2-utils; make test installs it)"
  exit 77
}
[ -x "$qendor" ] || { echo "$qendor is not an executable"; exit 2; }

work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT
failures=0
fail() {
  echo "FAIL: $*"
  failures=$((failures + 1))
}

# run_case DIR OUT ARGS...: runs qendor in DIR with output directory OUT and
# checks that it ended with a verdict (0, 10 to 13) or status 24 of a missing
# result file, not with a usage, input or output error.
run_case() {
  dir=$1 out=$2
  shift 2
  (cd "$dir" && TZ=UTC LC_ALL=C "$qendor" "$@" -outdirectory "$out" >/dev/null 2>&1)
  status=$?
  case $status in
    0 | 10 | 11 | 12 | 13 | 24) ;;
    *) fail "qendor $* in $dir ended with status $status" ;;
  esac
}

# The bundled example, full and short record form.
cp -R "$src/examples" "$work/examples"
for form in full short; do
  if [ $form = full ]; then
    dir=$work/examples info=shop.info context=Shop.Checkout
  else
    dir=$work/examples/short info=short.info context=Shop.Cart
  fi
  mkdir "$dir/out"
  cp "$dir"/verification/*.ver "$dir/out/"
  [ -d "$dir/images" ] && cp -R "$dir/images/spec_jpegs" "$dir/images/result_jpegs" "$dir/out/"
  run_case "$dir" out -infofile "$info" -resultfile results.log -tcontext "$context"
  mkdir "$dir/out-explain"
  cp "$dir"/verification/*.ver "$dir/out-explain/"
  run_case "$dir" out-explain -infofile "$info" -resultfile results.log -tcontext "$context" \
    -explain
  for language in CHS KOR; do
    run_case "$dir" "out-$language" -infofile "$info" -resultfile results.log \
      -tcontext "$context" -language "$language"
  done
  # The model coverage, twice with a history so that it adds up over runs.
  mkdir "$dir/out-coverage"
  cp "$dir"/verification/*.ver "$dir/out-coverage/"
  for round in 1 2; do
    run_case "$dir" out-coverage -infofile "$info" -resultfile results.log \
      -tcontext "$context" -coverage -history history-coverage
  done
done

# Every scenario: each of its contexts, an empty context, no result file.
for scenario in "$src"/tests/scenarios/*/; do
  name=$(basename "$scenario")
  dir=$work/scenarios/$name
  mkdir -p "$work/scenarios"
  cp -R "$scenario" "$dir"
  rm -rf "$dir/expected"
  info=$(cd "$dir" && ls *.info | head -n 1)
  result=$(cd "$dir" && ls *.log | head -n 1)
  contexts=$(sed -n 's/^TESTCASE \([^ ]*\).*/\1/p' "$dir/$info" | sed 's/\.[^.]*$//' | sort -u)
  for context in $contexts; do
    mkdir -p "$dir/out-$context"
    cp "$dir"/out/*.ver "$dir/out-$context/" 2>/dev/null
    run_case "$dir" "out-$context" -infofile "$info" -resultfile "$result" -tcontext "$context"
  done
  run_case "$dir" out-empty -infofile "$info" -resultfile "$result" -tcontext No.Such.Context
  mkdir -p "$dir/out-noresult"
  cp "$dir"/out/*.ver "$dir/out-noresult/" 2>/dev/null
  run_case "$dir" out-noresult -infofile "$info" -resultfile no-such.log -tcontext "$(echo "$contexts" | head -n 1)"
done

documents=$(find "$work" -name '*.xml' -path '*/out*/*' | sort)
count=$(echo "$documents" | grep -c .)
# 10 + 3 documents per example run, and at least one per scenario run.
if [ "$count" -lt 39 ]; then
  fail "only $count result documents were written"
fi
histories=$(find "$work" -name '*.history.xml' | sort)
for document in $documents $histories "$src"/tests/scenarios/*/expected/*.xml; do
  if ! xmllint --noout --schema "$schema" "$document" 2>"$work/err"; then
    fail "$document does not validate:"
    cat "$work/err"
  fi
done
echo "$count result documents validated"

# The schema must refuse what qendor never writes.
sample=$work/examples/out/Checkout.xml
[ -f "$sample" ] || { echo "FAIL: $sample was not written"; exit 1; }
# refuse_edit DOCUMENT SCHEMA WHAT SED-EXPRESSION: the edited document must
# differ and fail the schema.
refuse_edit() {
  document=$1 against=$2 what=$3 expression=$4
  sed "$expression" "$document" >"$work/bad.xml"
  if cmp -s "$document" "$work/bad.xml"; then
    fail "$what: the edit changed nothing"
  elif xmllint --noout --schema "$against" "$work/bad.xml" 2>/dev/null; then
    fail "$what: the schema accepted it"
  fi
}
refuse() { refuse_edit "$sample" "$schema" "$@"; }
explained=$work/examples/out-explain/Checkout.xml
grep -q '<Diagnosis kind="sequence">' "$explained" ||
  fail "$explained holds no sequence diagnosis"
grep -q '<Diagnosis kind="chart">' "$explained" || fail "$explained holds no chart diagnosis"
sed 's/<Diagnosis kind="sequence">/<Diagnosis kind="sd">/' "$explained" >"$work/bad.xml"
if xmllint --noout --schema "$schema" "$work/bad.xml" 2>/dev/null; then
  fail "unknown diagnosis kind: the schema accepted it"
fi

refuse "status NOT_TERMINATED" 's/status="ERROR"/status="NOT_TERMINATED"/'
refuse "unknown kind" 's/kind="rk_testcontext"/kind="rk_other"/'
refuse "unknown test type" 's/testType="tt_Code"/testType="tt_Chart"/'
refuse "unknown arbiter kind" 's/arbiterAssert="internal"/arbiterAssert="inside"/'
refuse "missing verification result" '0,/ verificationResult="[^"]*"/s/ verificationResult="[^"]*"//'
refuse "unknown element" 's/<ConfigurationInfo /<ConfigInfo /'
refuse "assertion status" '0,/<AssertionInfo name="[^"]*" status="PASSED"/s/\(<AssertionInfo name="[^"]*" status="\)PASSED"/\1OK"/'

# The JUnit export, of every document and of a large generated context.
junit_sheet=$src/stylesheets/TestResult2JUnit.xslt
sh "$src/tests/generate_context.sh" 9600 400 >"$work/generated.xml"
exported=0
for document in $documents "$work/generated.xml"; do
  if ! xsltproc -o "$work/junit.xml" "$junit_sheet" "$document" 2>"$work/err" ||
    ! xsltproc --stringparam root testsuite -o "$work/junit-ant.xml" "$junit_sheet" "$document" \
      2>>"$work/err"; then
    fail "JUnit export of $document failed:"
    cat "$work/err"
    continue
  fi
  valid=1
  for check in "junit-xunit junit.xml" "junit junit.xml" "junit-ant junit-ant.xml"; do
    set -- $check
    if ! xmllint --noout --schema "$src/tests/$1.xsd" "$work/$2" 2>"$work/err"; then
      fail "JUnit export of $document does not validate against $1.xsd:"
      cat "$work/err"
      valid=0
    fi
  done
  exported=$((exported + valid))
done
echo "$exported JUnit exports validated"
xsltproc -o "$work/junit.xml" "$junit_sheet" "$work/generated.xml"
tests=$(xmllint --xpath 'string(/testsuites/testsuite/@tests)' "$work/junit.xml")
[ "$tests" = 400 ] || fail "generated context: $tests tests in the JUnit export, not 400"
stamp=$(xmllint --xpath 'string(/testsuites/testsuite/@timestamp)' "$work/junit.xml")
[ "$stamp" = 2025-11-22T10:15:42 ] || fail "generated context: timestamp '$stamp'"

if [ "$failures" -ne 0 ]; then
  echo "$failures failure(s)"
  exit 1
fi
echo "schema test passed"
