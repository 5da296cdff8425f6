<?xml version="1.0" encoding="UTF-8"?>
<!--
  HTML report in English. The page itself is built by TestResultCore.xslt;
  this file gives only the language: its lang value, font stack, number
  formats and strings.
  Entries with "src" translate a value of the result document; a value that
  has no entry is shown as it stands.
-->
<xsl:stylesheet version="1.0"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:l="urn:qendor:strings"
    exclude-result-prefixes="l">
  <xsl:import href="TestResultCore.xslt"/>

  <xsl:variable name="lang" select="'en'"/>
  <xsl:variable name="fonts" select="'system-ui, -apple-system, &quot;Segoe UI&quot;, Roboto, &quot;Noto Sans&quot;, Arial, sans-serif'"/>
  <xsl:variable name="intFormat" select="'#,##0'"/>
  <xsl:variable name="pctFormat" select="'0.#'"/>
  <xsl:variable name="pctSign" select="'%'"/>
  <xsl:variable name="headingBreak" select="'normal'"/>
  <xsl:variable name="T" select="document('')/*/l:strings/l:s"/>

  <!-- Header values: the pattern of the header's time ({Y}, {M}, {D}, {W}
       the weekday's word, {T} the clock; empty keeps the time as written),
       the weekdays, and the word for a user or machine the run did not know. -->
  <l:strings>
    <l:s k="date">{W} {N} {D} {T} {Y}</l:s>
    <l:s k="wd" src="Mon">Mon</l:s>
    <l:s k="wd" src="Tue">Tue</l:s>
    <l:s k="wd" src="Wed">Wed</l:s>
    <l:s k="wd" src="Thu">Thu</l:s>
    <l:s k="wd" src="Fri">Fri</l:s>
    <l:s k="wd" src="Sat">Sat</l:s>
    <l:s k="wd" src="Sun">Sun</l:s>
    <l:s k="unknown">unknown</l:s>
  </l:strings>

  <!-- Strings of the earlier runs (TestResultHistory.xslt). -->
  <l:strings>
    <l:s k="hist.strip">Last runs, oldest first</l:s>
    <l:s k="hist.run">Run</l:s>
    <l:s k="hist.now">This run</l:s>
    <l:s k="hist.trend">Trend of the last runs</l:s>
    <l:s k="hist.above">Passed, above the line</l:s>
    <l:s k="hist.below">Not passed, below the line</l:s>
    <l:s k="hist.numbers">Runs in numbers</l:s>
    <l:s k="hist.time">Time</l:s>
    <l:s k="hist.problemsCaption">Test cases that did not pass: new failures first, then in execution order</l:s>
    <l:s k="hist.nNew">New failures: {n}</l:s>
    <l:s k="hist.nFixed">Fixed: {n}</l:s>
    <l:s k="hist.nFlaky">Flaky: {n}</l:s>
    <l:s k="hist.changes">Since the run before</l:s>
    <l:s k="hist.only">Only</l:s>
    <l:s k="hist.runsOrder">Newest first</l:s>
    <l:s k="hc" src="new">New failure</l:s>
    <l:s k="hc" src="fixed">Fixed</l:s>
    <l:s k="hc" src="flaky">Flaky</l:s>
    <l:s k="hc" src="still failing">Still failing</l:s>
    <l:s k="hc" src="stable">Stable</l:s>
  </l:strings>

  <l:strings>
    <l:s k="title.case">Test case report</l:s>
    <l:s k="title.context">Test context report</l:s>
    <l:s k="sec.report">Report</l:s>
    <l:s k="sec.env">Environment</l:s>
    <l:s k="sec.config">Configuration</l:s>
    <l:s k="sec.summary">Summary</l:s>
    <l:s k="sec.cases">Test cases</l:s>
    <l:s k="sec.assertions">Assertions</l:s>
    <l:s k="sec.coverage">Sequence diagram coverage</l:s>
    <l:s k="name">Name</l:s>
    <l:s k="fullname">Full name</l:s>
    <l:s k="time">Created</l:s>
    <l:s k="userName">User</l:s>
    <l:s k="machineName">Machine</l:s>
    <l:s k="osVersion">Operating system</l:s>
    <l:s k="korvanVersion">Korvan version</l:s>
    <l:s k="ostraVersion">Ostra version</l:s>
    <l:s k="projectName">Project</l:s>
    <l:s k="componentName">Component</l:s>
    <l:s k="configurationName">Configuration</l:s>
    <l:s k="contextStatus">Context status</l:s>
    <l:s k="caseStatus">Test case status</l:s>
    <l:s k="exitStatus">Exit status</l:s>
    <l:s k="testCases">Test cases</l:s>
    <l:s k="passRate">Pass rate</l:s>
    <l:s k="assertions">Assertions</l:s>
    <l:s k="countsByStatus">Test cases by status</l:s>
    <l:s k="testCase">Test case</l:s>
    <l:s k="testType">Test type</l:s>
    <l:s k="status">Status</l:s>
    <l:s k="verificationResult">Verification result</l:s>
    <l:s k="cov.name">SD instance</l:s>
    <l:s k="cov.sdname">Sequence diagram</l:s>
    <l:s k="cov.value">Steps reached</l:s>
    <l:s k="cov.max">Steps in total</l:s>
    <l:s k="cov.coverage">Coverage</l:s>
    <l:s k="img.model">Specified diagram</l:s>
    <l:s k="img.result">Result diagram</l:s>
    <l:s k="none.cases">This test context has no test cases.</l:s>
    <l:s k="none.assertions">No assertions were recorded for this test case.</l:s>
    <l:s k="col.sdiname">SD instance</l:s>
    <l:s k="col.msgid">Message ID</l:s>
    <l:s k="col.usermsg">User message</l:s>
    <l:s k="col.inr">In no.</l:s>
    <l:s k="col.onr">Out no.</l:s>
    <l:s k="col.arbiter">Arbiter</l:s>
    <l:s k="col.guid">GUID</l:s>
    <l:s k="col.name">Assertion</l:s>
    <l:s k="col.dir">Directory</l:s>
    <l:s k="skip">Skip to the test cases</l:s>
    <l:s k="sec.problems">Problems</l:s>
    <l:s k="problems.caption">Test cases that did not pass, in execution order</l:s>
    <l:s k="firstFailure">First failing assertion</l:s>
    <l:s k="lastAssertion">last assertion reached</l:s>
    <l:s k="none.problems">No problems: every test case passed.</l:s>
    <l:s k="none.match">No test case matches the filter.</l:s>
    <l:s k="ctl.show">Show</l:s>
    <l:s k="ctl.search">Search</l:s>
    <l:s k="ctl.searchHint">names, messages, files</l:s>
    <l:s k="ctl.expand">Expand all</l:s>
    <l:s k="ctl.collapse">Collapse all</l:s>
    <l:s k="ctl.dark">Dark mode</l:s>
    <l:s k="ctl.keys">Keys: / search, j next problem, k previous problem</l:s>
    <l:s k="total">Total</l:s>
    <l:s k="notPassed">Not passed</l:s>
    <l:s k="col.fileLine">File:line</l:s>
    <l:s k="generated">Report generated by qendor.</l:s>
    <l:s k="st" src="PASSED">Passed</l:s>
    <l:s k="st" src="FAILED">Failed</l:s>
    <l:s k="st" src="ERROR">Error</l:s>
    <l:s k="st" src="UNDEFINED">Undefined</l:s>
    <l:s k="tt" src="tt_SD">Sequence diagram test</l:s>
    <l:s k="tt" src="tt_Code">Code test</l:s>
    <l:s k="kind" src="rk_testcase">Test case report</l:s>
    <l:s k="kind" src="rk_testcontext">Test context report</l:s>
    <l:s k="arb" src="internal">internal</l:s>
    <l:s k="arb" src="external">external</l:s>
    <l:s k="vr" src="Result verification successful">Result verification successful</l:s>
    <l:s k="vr" src="Result verification failed">Result verification failed</l:s>
    <l:s k="vr" src="Result verification switched off">Result verification switched off</l:s>
    <l:s k="vr" src="Statechart contains elements that are not supported for result verification">Statechart contains elements that are not supported for result verification</l:s>
    <l:s k="vr" src="No result verification for Code TestCases">No result verification for Code TestCases</l:s>
    <l:s k="vr" src="Result verification currently not supported for SDs with interaction operator parallel">Result verification currently not supported for SDs with interaction operator parallel</l:s>
    <l:s k="vr" src="TestCase did not terminate as expected">TestCase did not terminate as expected</l:s>
    <l:s k="colon" xml:space="preserve">: </l:s>
    <l:s k="sep" xml:space="preserve">, </l:s>
    <l:s k="line.allPassed">All {m} test cases passed</l:s>
    <l:s k="line.failed.first">{n} of {m} test cases failed</l:s>
    <l:s k="line.error.first">{n} of {m} test cases ended in error</l:s>
    <l:s k="line.error">{n} ended in error</l:s>
    <l:s k="line.other.first">{n} of {m} test cases have no verdict</l:s>
    <l:s k="line.other">{n} have no verdict</l:s>
    <l:s k="firstProblem">First problem</l:s>
    <l:s k="mp.label">Model path</l:s>
    <l:s k="as.failed">{n} failed</l:s>
    <l:s k="as.passed">all {m} passed</l:s>
    <l:s k="as.none">none</l:s>
    <l:s k="ctl.shown">{n} of {m} test cases shown</l:s>
    <l:s k="img.of">sequence diagram {n} of test case {m}</l:s>
    <l:s k="mp" src="Result verification successful">followed</l:s>
    <l:s k="mp" src="Result verification failed">not followed</l:s>
    <l:s k="mp" src="Result verification switched off">not checked (no verification file)</l:s>
    <l:s k="mp" src="Statechart contains elements that are not supported for result verification">not checked (statechart elements not supported)</l:s>
    <l:s k="mp" src="No result verification for Code TestCases">none (code test)</l:s>
    <l:s k="mp" src="Result verification currently not supported for SDs with interaction operator parallel">not checked (parallel fragment)</l:s>
    <l:s k="mp" src="TestCase did not terminate as expected">did not terminate</l:s>
  </l:strings>
  <!-- Strings of the problems list of a large context. -->
  <l:strings>
    <l:s k="problems.grouped">Test cases that did not pass, grouped by status, verdict and first failing assertion</l:s>
    <l:s k="problems.more">{n} more</l:s>
    <l:s k="none.failing">no assertion failed</l:s>
  </l:strings>
</xsl:stylesheet>
