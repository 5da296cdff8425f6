#!/bin/sh
# The JUnit export (stylesheets/TestResult2JUnit.xslt) of the hand-made
# result documents in tests/stylesheet_samples and of test case documents
# made from them (passed, failed, error, not terminated, undefined): the
# default output, a testsuites root, validates against the schemas of the
# xUnit import (tests/junit-xunit.xsd) and of the testsuites readers
# (tests/junit.xsd); with root=testsuite it validates against the Ant-style
# schema (tests/junit-ant.xsd) and the xUnit one. Then the values: counts,
# messages (the first failing assertion, or the explained position of a
# model failure), the assertions listed in system-out. Last, each schema
# refuses what its readers refuse.
#
# Usage: sh tests/junit_test.sh [SOURCE_DIR]
# Prints "N passed, M failed" last; exits non-zero when a check failed.

here=$(cd "$(dirname "$0")" && pwd)
src=${1:-$here/..}
sheet=$src/stylesheets/TestResult2JUnit.xslt
samples=$src/tests/stylesheet_samples
LC_ALL=C
export LC_ALL

passed=0
failed=0
work=$(mktemp -d "${TMPDIR:-/tmp}/qendor-junit.XXXXXX") || exit 1
trap 'rm -rf "$work"' EXIT INT TERM

ok() { passed=$((passed + 1)); }
bad() {
  failed=$((failed + 1))
  echo "FAIL: $*"
}
is() { # description, expected, actual
  if [ "$2" = "$3" ]; then ok; else bad "$1: expected '$2', got '$3'"; fi
}
for tool in xsltproc xmllint; do
  if ! command -v $tool >/dev/null 2>&1; then
    echo "$tool is not installed"
    echo "0 passed, 1 failed"
    exit 1
  fi
done

# export NAME DOCUMENT: NAME.junit.xml (default) and NAME.ant.xml (root=testsuite).
export_both() {
  if xsltproc -o "$work/$1.junit.xml" "$sheet" "$2" 2>"$work/err" && [ ! -s "$work/err" ]; then
    ok
  else
    bad "$1: xsltproc failed: $(cat "$work/err")"
  fi
  xsltproc --stringparam root testsuite -o "$work/$1.ant.xml" "$sheet" "$2" 2>/dev/null
}
# valid SCHEMA FILE: the file validates against tests/SCHEMA.xsd.
valid() {
  if xmllint --noout --schema "$src/tests/$1.xsd" "$2" 2>"$work/err"; then
    ok
  else
    bad "$(basename "$2") against $1.xsd: $(grep -v 'fails to validate' "$work/err" | head -3)"
  fi
}
# refused SCHEMA FILE DESCRIPTION: the file does not validate.
refused() {
  if xmllint --noout --schema "$src/tests/$1.xsd" "$2" 2>/dev/null; then
    bad "$1.xsd accepted $3"
  else
    ok
  fi
}
jx() { # NAME.KIND, then an XPath whose string value is printed
  xmllint --xpath "$2" "$work/$1.xml" 2>/dev/null
}

# Test case documents of every outcome, made from the failed code test.
base=$samples/testcase_code.xml
case_doc() { # name, sed script for the TestCaseResult line and its assertions
  sed "$2" "$base" >"$work/$1.xml"
}
case_doc case_passed 's/status="FAILED"/status="PASSED"/'  # the test case's and its assertion's
cp "$base" "$work/case_failed.xml"
case_doc case_error '/<TestCaseResult/s/ status="FAILED" verificationResult="[^"]*"/ status="ERROR" verificationResult="Result verification failed"/'
case_doc case_not_terminated 's/ status="FAILED" verificationResult="[^"]*"/ status="ERROR" verificationResult="TestCase did not terminate as expected"/'
case_doc case_undefined 's/ status="FAILED" verificationResult="[^"]*"/ status="UNDEFINED" verificationResult="Some future verdict"/'

for xml in "$samples"/*.xml "$work"/case_*.xml; do
  name=$(basename "$xml" .xml)
  export_both "$name" "$xml"
  valid junit-xunit "$work/$name.junit.xml"
  valid junit "$work/$name.junit.xml"
  valid junit-ant "$work/$name.ant.xml"
  valid junit-xunit "$work/$name.ant.xml"
  refused junit-ant "$work/$name.junit.xml" "the testsuites root of $name"
done

# Counts and names of a context.
c=context.junit
is "context: root" testsuites "$(jx $c 'name(/*)')"
is "context: tests" 9 "$(jx $c 'string(/testsuites/@tests)')"
is "context: root counts" '9 1 4 0' "$(jx $c 'concat(/*/@tests, " ", /*/@failures, " ", /*/@errors, " ", /*/@time)')"
is "context: suite counts" '9 1 4 0 0' \
  "$(jx $c 'concat(//testsuite/@tests, " ", //testsuite/@failures, " ", //testsuite/@errors, " ", //testsuite/@skipped, " ", //testsuite/@time)')"
is "context: suite attributes in order" 'name tests failures errors skipped time timestamp hostname' \
  "$(jx $c '//testsuite/@*' | sed 's/^ *\([a-z]*\)=.*/\1/' | tr '\n' ' ' | sed 's/ $//')"
is "context: assertions" 7 "$(jx $c 'string(//testsuite/properties/property[@name="assertions"]/@value)')"
is "context: assertions passed" 6 "$(jx $c 'string(//property[@name="assertionsPassed"]/@value)')"
is "context: assertions failed" 1 "$(jx $c 'string(//property[@name="assertionsFailed"]/@value)')"
is "context: no properties in a testcase" 0 "$(jx $c 'count(//testcase/properties)')"
is "context: testcase attributes only name, classname, time" 27 "$(jx $c 'count(//testcase/@*)')"
is "context: no assertions attribute" 0 "$(jx $c 'count(//@assertions)')"
is "context: timestamp" 2025-11-22T10:15:42 "$(jx $c 'string(//testsuite/@timestamp)')"
is "context: suite name" Shop.Checkout "$(jx $c 'string(//testsuite/@name)')"
is "context: host" build-07 "$(jx $c 'string(//testsuite/@hostname)')"
is "context: context status" FAILED "$(jx $c 'string(//property[@name="contextStatus"]/@value)')"
is "context: project" Shop "$(jx $c 'string(//property[@name="projectName"]/@value)')"
is "context: PASSED has neither" 0 "$(jx $c 'count(//testcase[@name="PlaceOrder"]/*[self::failure or self::error])')"
is "context: classname" Shop.Checkout "$(jx $c 'string(//testcase[@name="PlaceOrder"]/@classname)')"
is "context: FAILED is a failure" FAILED "$(jx $c 'string(//testcase[@name="ReturnItem"]/failure/@type)')"
is "context: failure names the assertion" 'return.cpp:33 FAILED refund == price' \
  "$(jx $c 'string(//testcase[@name="ReturnItem"]/failure/@message)')"
is "context: ERROR is an error" ERROR "$(jx $c 'string(//testcase[@name="PayTwice"]/error/@type)')"
is "context: error message" 'Result verification failed' "$(jx $c 'string(//testcase[@name="PayTwice"]/error/@message)')"
is "context: NOT_TERMINATED is an error" NOT_TERMINATED "$(jx $c 'string(//testcase[@name="Stalls"]/error/@type)')"
is "context: UNDEFINED is an error" UNDEFINED "$(jx $c 'string(//testcase[@name="Odd"]/error/@type)')"
is "context: test cases in order" 'PlaceOrder PayTwice ReturnItem Stalls Missing Chart Parallel Total Odd' \
  "$(jx $c '//testcase/@name' | sed 's/^ *name="\([^"]*\)"$/\1/' | tr '\n' ' ' | sed 's/ $//')"
is "context: suite output" 'Context status: FAILED
Assertions: 7 (6 passed, 1 failed)' "$(jx $c 'string(//testsuite/system-out)')"
is "context: suite error output empty" '1 0' "$(jx $c 'concat(count(//testsuite/system-err), " ", string-length(//testsuite/system-err))')"
is "context: a test case's output lists its assertions" 'Test type: tt_SD
Status: PASSED
Verification result: Result verification successful
Coverage: 100% (3/3)
Assertions: 1 (1 passed, 0 failed)
1. place_order.cpp:14 PASSED Checkout/m1 Order placed' "$(jx $c 'string(//testcase[@name="PlaceOrder"]/system-out)')"
is "context: output of a test case without assertions" 'Test type: tt_Code
Status: UNDEFINED
Verification result: Some future verdict
Assertions: 0 (0 passed, 0 failed)' "$(jx $c 'string(//testcase[@name="Odd"]/system-out)')"
is "context: failure body" 'Status: FAILED
Verification result: Result verification failed
return.cpp:33 FAILED refund == price' "$(jx $c 'string(//testcase[@name="ReturnItem"]/failure)')"
is "context: not-terminated body" 'Status: ERROR
Ends the run as: NOT_TERMINATED
Verification result: TestCase did not terminate as expected
Last assertion reached: stall.cpp:3 PASSED Starting test case: Stalls' "$(jx $c 'string(//testcase[@name="Stalls"]/error)')"

# root=testsuite: the same suite as the root, the test cases' output in the suite's.
c=context.ant
is "ant: root" testsuite "$(jx $c 'name(/*)')"
is "ant: counts" '9 1 4 0 0' \
  "$(jx $c 'concat(/testsuite/@tests, " ", /testsuite/@failures, " ", /testsuite/@errors, " ", /testsuite/@skipped, " ", /testsuite/@time)')"
is "ant: no output in a testcase" 0 "$(jx $c 'count(//testcase/system-out)')"
is "ant: failure" 'return.cpp:33 FAILED refund == price' "$(jx $c 'string(//testcase[@name="ReturnItem"]/failure/@message)')"
is "ant: suite output names each test case" 9 "$(jx $c 'string(/testsuite/system-out)' | grep -c '^Test case: ')"
is "ant: suite output of a test case" 'Test case: ReturnItem
Test type: tt_Code
Status: FAILED
Verification result: Result verification failed
Assertions: 1 (0 passed, 1 failed)
1. return.cpp:33 FAILED refund == price' \
  "$(jx $c 'string(/testsuite/system-out)' | sed -n '/^Test case: ReturnItem$/,/^$/p' | sed '/^$/d')"
is "ant: host of a header without one" unknown "$(jx case_failed.ant 'string(/testsuite/@hostname)')"

# The header's time as the C library pads a one-digit day, and in the
# words of another locale, which gives no timestamp rather than a wrong one.
sed 's/time="[^"]*"/time="Sun Nov  2 07:05:09 2025"/' "$samples/context.xml" >"$work/early.xml"
export_both early "$work/early.xml"
is "one-digit day: timestamp" 2025-11-02T07:05:09 "$(jx early.junit 'string(//testsuite/@timestamp)')"
sed 's/time="[^"]*"/time="2025年11月22日 10時15分42秒"/' "$samples/context.xml" >"$work/local.xml"
export_both local "$work/local.xml"
is "other locale: no timestamp" 0 "$(jx local.junit 'count(//testsuite/@timestamp)')"
is "other locale: hostname still there" build-07 "$(jx local.junit 'string(//testsuite/@hostname)')"
valid junit-ant "$work/local.ant.xml"

# Test case documents.
c=testcase_code.junit
is "testcase: suite is the context" Shop.Checkout "$(jx $c 'string(/testsuites/testsuite/@name)')"
is "testcase: one test" 1 "$(jx $c 'string(/testsuites/@tests)')"
is "testcase: one failure" 1 "$(jx $c 'string(/testsuites/@failures)')"
is "testcase: failure message escaped back" ':21 FAILED total < 0 && x > 1' "$(jx $c 'string(//failure/@message)')"
is "passed: counts" '1 0 0' "$(jx case_passed.junit 'concat(//testsuite/@tests, " ", //testsuite/@failures, " ", //testsuite/@errors)')"
is "passed: no failure, no error" 0 "$(jx case_passed.junit 'count(//failure | //error)')"
is "error: counts" '1 0 1' "$(jx case_error.junit 'concat(//testsuite/@tests, " ", //testsuite/@failures, " ", //testsuite/@errors)')"
is "error: the failing assertion" 'ERROR :21 FAILED total < 0 && x > 1' "$(jx case_error.junit 'concat(//error/@type, " ", //error/@message)')"
is "not terminated: type" NOT_TERMINATED "$(jx case_not_terminated.junit 'string(//error/@type)')"
is "undefined: type and message" 'UNDEFINED :21 FAILED total < 0 && x > 1' "$(jx case_undefined.junit 'concat(//error/@type, " ", //error/@message)')"
c=context_empty.junit
is "empty: no tests" '0 0 0' "$(jx $c 'concat(/testsuites/@tests, " ", //testsuite/@tests, " ", count(//testcase))')"
is "empty: status UNDEFINED" UNDEFINED "$(jx $c 'string(//property[@name="contextStatus"]/@value)')"
is "empty: no assertions" 'Context status: UNDEFINED
Assertions: 0 (0 passed, 0 failed)' "$(jx $c 'string(//testsuite/system-out)')"
is "sd: passed" 0 "$(jx testcase_sd.junit 'count(//failure | //error)')"

# A model failure explained (-explain): the position, not the last assertion.
c=context_diagnosis.junit
is "explained sequence diagram" 'expected step 5, recorded step 2 (refundToCard)' \
  "$(jx $c 'string(//testcase[@name="RefundOrder"]/error/@message)')"
is "explained chart" 'no state or transition reachable from Filled performs assertion 3: ZKR_ASSERT_TRUE(order.isPaid());' \
  "$(jx $c 'string(//testcase[@name="ReturnParcel"]/error/@message)')"
is "explained in the body" 'Explained: expected step 5, recorded step 2 (refundToCard)' \
  "$(jx $c 'string(//testcase[@name="RefundOrder"]/error)' | grep '^Explained')"
diagnosed() { # name, sed script on context_diagnosis.xml
  sed "$2" "$samples/context_diagnosis.xml" >"$work/$1.xml"
  export_both "$1" "$work/$1.xml"
  valid junit-xunit "$work/$1.junit.xml"
}
diagnosed two_values 's|<Value value="5"/>|<Value value="4"/><Value value="5"/>|'
is "two steps expected" 'expected step 4 or 5, recorded step 2 (refundToCard)' \
  "$(jx two_values.junit 'string(//testcase[@name="RefundOrder"]/error/@message)')"
diagnosed three_values 's|<Value value="5"/>|<Value value="2"/><Value value="3"/><Value value="5"/>|'
is "three steps expected" 'expected step 2, 3 or 5, recorded step 2 (refundToCard)' \
  "$(jx three_values.junit 'string(//testcase[@name="RefundOrder"]/error/@message)')"
diagnosed ended '/<Rejected /d'
is "run ended before the step" 'expected step 5, recorded no further step' \
  "$(jx ended.junit 'string(//testcase[@name="RefundOrder"]/error/@message)')"
diagnosed no_value 's|<Value value="5"/>||'
is "no step could follow" 'expected no further step, recorded step 2 (refundToCard)' \
  "$(jx no_value.junit 'string(//testcase[@name="RefundOrder"]/error/@message)')"
diagnosed no_end 's|<NoMatch name="Filled" guid="[^"]*" assertion="3" statement="[^"]*">|<NoEnd name="Filled" guid="x">|;s|</NoMatch>|</NoEnd>|'
is "chart without an end" 'no way from Filled to the end of the chart' \
  "$(jx no_end.junit 'string(//testcase[@name="ReturnParcel"]/error/@message)')"
diagnosed two_lines 's|statement="ZKR_ASSERT_TRUE(order.isPaid());"|statement="ZKR_ASSERT_TRUE(a \&amp;\&amp;\&#10;  b);"|'
is "a statement of two lines on one" 'no state or transition reachable from Filled performs assertion 3: ZKR_ASSERT_TRUE(a && b);' \
  "$(jx two_lines.junit 'string(//testcase[@name="ReturnParcel"]/error/@message)')"
diagnosed switched_off 's|verificationResult="Result verification failed"|verificationResult="Result verification switched off"|g'
is "no position for another verdict" 'Result verification switched off' \
  "$(jx switched_off.junit 'string(//testcase[@name="RefundOrder"]/error/@message)')"
sed 's|name="refund == price"|name="refund ==\&#10;price"|' "$samples/context.xml" >"$work/multi.xml"
export_both multi "$work/multi.xml"
is "an assertion of two lines on one" 'return.cpp:33 FAILED refund == price' \
  "$(jx multi.junit 'string(//testcase[@name="ReturnItem"]/failure/@message)')"

# What each reader refuses.
refuse() { # schema, file, description, sed script
  sed "$4" "$2" >"$work/refused.xml"
  if cmp -s "$2" "$work/refused.xml"; then
    bad "$3: the edit changed nothing"
  else
    refused "$1" "$work/refused.xml" "$3"
  fi
}
ctx=$work/context.junit.xml
ant=$work/context.ant.xml
refuse junit-xunit "$ctx" "properties in a testcase" '0,/<system-out>/s//<properties\/><system-out>/'
refuse junit-xunit "$ctx" "assertions on a testcase" '0,/<testcase name="\([^"]*\)"/s//<testcase name="\1" assertions="1"/'
refuse junit-xunit "$ctx" "assertions on a testsuite" 's/<testsuite name="\([^"]*\)"/<testsuite name="\1" assertions="7"/'
refuse junit-xunit "$ctx" "a failure without a message" '0,/<failure message="[^"]*"/s//<failure/'
refuse junit-xunit "$ctx" "properties after the test cases" 's|<system-out>Context status|<properties/><system-out>Context status|'
refuse junit-xunit "$ctx" "timestamp not in ISO 8601" 's/timestamp="[^"]*"/timestamp="Sat Nov 22 10:15:42 2025"/'
refuse junit-xunit "$ctx" "time not in seconds" '0,/<testcase name="\([^"]*\)"/s//<testcase name="\1" time="1 s"/'
refuse junit-xunit "$ctx" "an unknown child" '0,/<system-out>/s//<stdout\/><system-out>/'
refuse junit "$ctx" "assertions on a testcase" '0,/<testcase name="\([^"]*\)"/s//<testcase name="\1" assertions="1"/'
refused junit "$ant" "a testsuite root"
refuse junit-ant "$ant" "output in a testcase" '0,/<\/testcase>/s//<system-out\/><\/testcase>/'
refuse junit-ant "$ant" "no system-err" 's|<system-err/>||'
refuse junit-ant "$ant" "no time" 's/ skipped="0" time="0"/ skipped="0"/'
refuse junit-ant "$ant" "an empty host name" 's/hostname="[^"]*"/hostname=""/'
refuse junit-ant "$ant" "a failure and an error in one testcase" 's|</failure>|</failure><error type="x"/>|'

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
