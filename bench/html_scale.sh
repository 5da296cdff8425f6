#!/bin/sh
# Times the HTML report of a large test context: ASSERTS assertions (default
# 100000) spread over CASES test cases (default 200), every 97th failed, a few
# test cases not terminated. Prints the sizes and the seconds xsltproc takes
# with the English stylesheet (and, for comparison, with the JUnit export).
# Then the cost per document of small reports, where starting xsltproc and
# compiling the stylesheet weigh most: a test case of 100 assertions and one
# of a single assertion, each the mean of 20 runs, beside xsltproc with an
# empty stylesheet.
#
# Usage: sh bench/html_scale.sh [STYLESHEET_DIR] [ASSERTS] [CASES]

here=$(cd "$(dirname "$0")" && pwd)
sheets=${1:-$here/../stylesheets}
asserts=${2:-100000}
cases=${3:-200}
work=$(mktemp -d "${TMPDIR:-/tmp}/qendor-html-scale.XXXXXX") || exit 1
trap 'rm -rf "$work"' EXIT INT TERM

generate() { # asserts, cases: writes the document to standard output
awk -v asserts="$1" -v cases="$2" 'BEGIN {
  per = int(asserts / cases)
  print "<?xml version=\"1.0\"?>"
  print "<TestResult kind=\"rk_testcontext\">"
  print "  <ResultHeader name=\"Big\" fullname=\"Bench.Big\" time=\"Sat Nov 22 10:15:42 2025\">"
  print "    <EnvironmentInfo userName=\"bench\" machineName=\"host\" osVersion=\"Linux\" korvanVersion=\"3.1, build 88\" ostraVersion=\"7.5, build 1234\"/>"
  print "    <ConfigurationInfo projectName=\"Bench\" componentName=\"Big\" configurationName=\"Release\"/>"
  print "  </ResultHeader>"
  print "  <TestContextResult status=\"FAILED\">"
  n = 0
  for (c = 1; c <= cases; c++) {
    sd = c % 2
    status = "PASSED"; verdict = "Result verification successful"
    if (c % 10 == 3) status = "FAILED"
    if (c % 25 == 7) { status = "ERROR"; verdict = "TestCase did not terminate as expected" }
    printf "    <TestCaseResult name=\"Case%d\" fullname=\"Bench.Big.Case%d\" testType=\"%s\" status=\"%s\" verificationResult=\"%s\">\n", c, c, sd ? "tt_SD" : "tt_Code", status, verdict
    print sd ? "      <ResultForSD><UsedSDs/>" : "      <ResultForCode>"
    for (a = 1; a <= per; a++) {
      n++
      st = (status == "FAILED" && a % 97 == 0) ? "FAILED" : "PASSED"
      if (sd)
        printf "        <AssertionInfo sdiname=\"Lifeline%d\" msgid=\"msg%d\" guid=\"GUID 1b4e28ba-2fa1-11d2-883f-%012d\" status=\"%s\" usermsg=\"Step %d of case %d\" inr=\"%d\" onr=\"%d - [Arbiter ASSERT: internal] - GUID 1b4e28ba-2fa1-11d2-883f-%012d\" dir=\"src/bench\" filename=\"case%d.cpp\" fnr=\"%d\" lnr=\"%d\" arbiterAssert=\"internal\"/>\n", a % 5, a, n, st, a, c, a, a + 1, n, c, c, a
      else
        printf "        <AssertionInfo name=\"value_%d == expected_%d\" status=\"%s\" dir=\"src/bench\" filename=\"case%d.cpp\" fnr=\"%d\" lnr=\"%d\"/>\n", a, a, st, c, c, a
    }
    if (sd) printf "        <SDSummaryInfo><SDResults><SDResult name=\"Lifeline1\" sdname=\"Sd%d\" status=\"%s\" coverage=\"100\" value=\"%d\" max=\"%d\"/></SDResults></SDSummaryInfo>\n", c, status, per, per
    print sd ? "      </ResultForSD>" : "      </ResultForCode>"
    print "    </TestCaseResult>"
  }
  print "  </TestContextResult>"
  print "</TestResult>"
}'
}
generate "$asserts" "$cases" >"$work/big.xml"
generate 100 1 >"$work/case100.xml"
generate 1 1 >"$work/case1.xml"
cat >"$work/empty.xslt" <<'EOF'
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"><xsl:template match="/"><p/></xsl:template></xsl:stylesheet>
EOF

seconds() { # command...; prints the wall-clock seconds it took
  start=$(date +%s.%N)
  "$@" || echo "command failed: $*" >&2
  end=$(date +%s.%N)
  echo "$start $end" | awk '{ printf "%.2f", $2 - $1 }'
}

echo "document: $(grep -c '<AssertionInfo' "$work/big.xml") assertions in $cases test cases, $(du -h "$work/big.xml" | cut -f1)"
t=$(seconds xsltproc -o "$work/big.html" "$sheets/TestResult2ENU.xslt" "$work/big.xml")
echo "HTML (ENU):  ${t} s, $(du -h "$work/big.html" | cut -f1)"
t=$(seconds xsltproc -o "$work/big.junit.xml" "$sheets/TestResult2JUnit.xslt" "$work/big.xml")
echo "JUnit XML:   ${t} s, $(du -h "$work/big.junit.xml" | cut -f1)"

per_run() { # runs, sheet, document; prints the milliseconds per xsltproc run
  runs=$1
  start=$(date +%s.%N)
  i=0
  while [ "$i" -lt "$runs" ]; do
    xsltproc -o "$work/small.html" "$2" "$3" || echo "xsltproc failed on $3" >&2
    i=$((i + 1))
  done
  end=$(date +%s.%N)
  echo "$start $end $runs" | awk '{ printf "%.1f", ($2 - $1) * 1000 / $3 }'
}
echo "test case of 100 assertions (ENU): $(per_run 20 "$sheets/TestResult2ENU.xslt" "$work/case100.xml") ms"
echo "test case of 1 assertion (ENU):    $(per_run 20 "$sheets/TestResult2ENU.xslt" "$work/case1.xml") ms"
echo "xsltproc alone (empty stylesheet): $(per_run 20 "$work/empty.xslt" "$work/case1.xml") ms"
