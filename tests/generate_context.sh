#!/bin/sh
# Writes a result document of a test context to standard output: ASSERTS
# assertions spread over CASES test cases, every other one a sequence diagram
# test, every tenth failed (every 97th of its assertions), every 25th not
# terminated. Used by the benchmarks and by tests that need a large context.
#
# Usage: sh tests/generate_context.sh ASSERTS CASES
awk -v asserts="${1:?ASSERTS}" -v cases="${2:?CASES}" 'BEGIN {
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
