<?xml version="1.0" encoding="UTF-8"?>
<!--
  A qendor result document, of a test case or of a test context, as JUnit
  XML for CI servers:

    xsltproc -o Checkout.junit.xml TestResult2JUnit.xslt Checkout.xml
    xsltproc -stringparam root testsuite -o Checkout.junit.xml TestResult2JUnit.xslt Checkout.xml

  The output is read by the three common consumers of JUnit XML: the
  xUnit-style import (tests/junit-xunit.xsd), the readers of a "testsuites"
  root (tests/junit.xsd) and, with the parameter root=testsuite, the
  Ant-style readers that want a "testsuite" root (tests/junit-ant.xsd). So
  it keeps to what all of them allow: testsuites carries name, tests,
  failures, errors and time; testsuite name, tests, failures, errors,
  skipped, time, timestamp and hostname, then properties, the testcase
  elements, system-out and system-err; testcase only name, classname and
  time, holding at most a failure or an error and, under a testsuites root,
  its system-out. The result documents hold no durations: every time is 0.
  The assertion counts are properties of the suite, and each test case's
  system-out lists its assertions (under a testsuite root, whose readers
  allow no system-out in a testcase, the suite's system-out lists them).

  One testsuite per document, one testcase per test case in execution order.
  A FAILED test case gets a failure element; ERROR, NOT_TERMINATED (an ERROR
  with the not-terminated verdict) and any other status an error element, so
  the counts agree with the exit status rules: only PASSED passes. The
  message, one line, names the first assertion that did not pass; for a
  model that rejected the run ("Result verification failed" or the
  not-terminated verdict) whose document explains it (-explain), the
  explained position instead; otherwise the verification result. The body
  lists every assertion that did not pass with its file and line.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">

  <xsl:output method="xml" encoding="UTF-8" indent="yes"/>

  <!-- "testsuites" (the default) or "testsuite": the root element. -->
  <xsl:param name="root" select="'testsuites'"/>

  <xsl:variable name="notTerminatedText" select="'TestCase did not terminate as expected'"/>
  <xsl:variable name="rejectedText" select="'Result verification failed'"/>
  <xsl:variable name="nl" select="'&#10;'"/>
  <xsl:variable name="suiteRoot" select="$root = 'testsuite'"/>

  <xsl:key name="bad-by-case" match="AssertionInfo[@status != 'PASSED']" use="generate-id(../..)"/>

  <xsl:template match="/">
    <xsl:apply-templates select="TestResult"/>
  </xsl:template>

  <xsl:template match="TestResult">
    <xsl:variable name="cases" select="TestContextResult/TestCaseResult | TestCaseResult"/>
    <xsl:variable name="tests" select="count($cases)"/>
    <xsl:variable name="failures" select="count($cases[@status = 'FAILED'])"/>
    <xsl:variable name="errors" select="$tests - $failures - count($cases[@status = 'PASSED'])"/>
    <xsl:choose>
      <xsl:when test="$suiteRoot">
        <xsl:call-template name="suite">
          <xsl:with-param name="cases" select="$cases"/>
          <xsl:with-param name="failures" select="$failures"/>
          <xsl:with-param name="errors" select="$errors"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise>
        <testsuites name="{ResultHeader/@fullname}" tests="{$tests}" failures="{$failures}" errors="{$errors}" time="0">
          <xsl:call-template name="suite">
            <xsl:with-param name="cases" select="$cases"/>
            <xsl:with-param name="failures" select="$failures"/>
            <xsl:with-param name="errors" select="$errors"/>
          </xsl:call-template>
        </testsuites>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The one testsuite of the document (the TestResult in hand). -->
  <xsl:template name="suite">
    <xsl:param name="cases"/>
    <xsl:param name="failures"/>
    <xsl:param name="errors"/>
    <xsl:variable name="asserts" select="$cases/*/AssertionInfo"/>
    <xsl:variable name="suite">
      <xsl:choose>
        <xsl:when test="TestContextResult"><xsl:value-of select="ResultHeader/@fullname"/></xsl:when>
        <xsl:otherwise>
          <xsl:call-template name="classname"><xsl:with-param name="tc" select="TestCaseResult"/></xsl:call-template>
        </xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="timestamp">
      <xsl:call-template name="iso-time"><xsl:with-param name="text" select="ResultHeader/@time"/></xsl:call-template>
    </xsl:variable>
    <xsl:variable name="host" select="string(ResultHeader/EnvironmentInfo/@machineName)"/>
    <testsuite name="{$suite}" tests="{count($cases)}" failures="{$failures}" errors="{$errors}" skipped="0" time="0">
      <xsl:if test="string($timestamp)">
        <xsl:attribute name="timestamp"><xsl:value-of select="$timestamp"/></xsl:attribute>
      </xsl:if>
      <!-- Ant-style readers want a host name: "unknown" stands for none. -->
      <xsl:attribute name="hostname">
        <xsl:value-of select="$host"/>
        <xsl:if test="not($host)">unknown</xsl:if>
      </xsl:attribute>
      <properties>
        <property name="kind" value="{@kind}"/>
        <xsl:if test="TestContextResult">
          <property name="contextStatus" value="{TestContextResult/@status}"/>
        </xsl:if>
        <property name="assertions" value="{count($asserts)}"/>
        <property name="assertionsPassed" value="{count($asserts[@status = 'PASSED'])}"/>
        <property name="assertionsFailed" value="{count($asserts[@status != 'PASSED'])}"/>
        <xsl:for-each select="ResultHeader/@time | ResultHeader/EnvironmentInfo/@* | ResultHeader/ConfigurationInfo/@*">
          <property name="{name()}" value="{.}"/>
        </xsl:for-each>
      </properties>
      <xsl:apply-templates select="$cases"/>
      <system-out>
        <xsl:if test="TestContextResult">
          <xsl:value-of select="concat('Context status: ', TestContextResult/@status, $nl)"/>
        </xsl:if>
        <xsl:call-template name="assert-count"><xsl:with-param name="asserts" select="$asserts"/></xsl:call-template>
        <xsl:if test="$suiteRoot">
          <xsl:for-each select="$cases">
            <xsl:value-of select="concat($nl, 'Test case: ', @name, $nl)"/>
            <xsl:call-template name="case-out"/>
          </xsl:for-each>
        </xsl:if>
      </system-out>
      <system-err/>
    </testsuite>
  </xsl:template>

  <!-- "Assertions: 3 (2 passed, 1 failed)" and a line break. -->
  <xsl:template name="assert-count">
    <xsl:param name="asserts"/>
    <xsl:value-of select="concat('Assertions: ', count($asserts), ' (', count($asserts[@status = 'PASSED']),
                                 ' passed, ', count($asserts[@status != 'PASSED']), ' failed)', $nl)"/>
  </xsl:template>

  <!-- The header's time, written by the C library as "Sat Nov  2 10:15:42
       2025", in ISO 8601 ("2025-11-02T10:15:42", local time as the header
       has it). Empty for a time in any other form, such as a date in the
       words of another locale, so that no malformed timestamp is written. -->
  <xsl:template name="iso-time">
    <xsl:param name="text"/>
    <xsl:variable name="t" select="normalize-space($text)"/>
    <xsl:variable name="rest1" select="substring-after($t, ' ')"/>
    <xsl:variable name="month" select="substring-before($rest1, ' ')"/>
    <xsl:variable name="rest2" select="substring-after($rest1, ' ')"/>
    <xsl:variable name="day" select="substring-before($rest2, ' ')"/>
    <xsl:variable name="rest3" select="substring-after($rest2, ' ')"/>
    <xsl:variable name="clock" select="substring-before($rest3, ' ')"/>
    <xsl:variable name="year" select="substring-after($rest3, ' ')"/>
    <xsl:variable name="months" select="'JanFebMarAprMayJunJulAugSepOctNovDec'"/>
    <xsl:variable name="m" select="string-length(substring-before($months, $month)) div 3 + 1"/>
    <xsl:if test="string-length($month) = 3 and contains($months, $month) and $m = floor($m)
                  and string-length($day) &lt;= 2 and translate($day, '0123456789', '') = '' and string($day)
                  and string-length($clock) = 8 and translate($clock, '0123456789', '##########') = '##:##:##'
                  and string-length($year) = 4 and translate($year, '0123456789', '') = ''">
      <xsl:value-of select="concat($year, '-', format-number($m, '00'), '-', format-number($day, '00'), 'T', $clock)"/>
    </xsl:if>
  </xsl:template>

  <!-- The dotted full name without its last part: the test case's context. -->
  <xsl:template name="classname">
    <xsl:param name="tc" select="."/>
    <xsl:variable name="full" select="string($tc/@fullname)"/>
    <xsl:variable name="cut" select="string-length($full) - string-length($tc/@name) - 1"/>
    <xsl:choose>
      <xsl:when test="$cut &gt; 0 and substring($full, $cut + 1) = concat('.', $tc/@name)">
        <xsl:value-of select="substring($full, 1, $cut)"/>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$full"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template match="TestCaseResult">
    <xsl:variable name="outcome">
      <xsl:choose>
        <xsl:when test="@status = 'ERROR' and @verificationResult = $notTerminatedText">NOT_TERMINATED</xsl:when>
        <xsl:when test="string(@status)"><xsl:value-of select="@status"/></xsl:when>
        <xsl:otherwise>UNDEFINED</xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="bad" select="key('bad-by-case', generate-id())"/>
    <xsl:variable name="classname"><xsl:call-template name="classname"/></xsl:variable>
    <xsl:variable name="explained">
      <xsl:if test="@verificationResult = $rejectedText or @verificationResult = $notTerminatedText">
        <xsl:apply-templates select="Diagnosis" mode="position"/>
      </xsl:if>
    </xsl:variable>
    <testcase name="{@name}" classname="{$classname}" time="0">
      <xsl:if test="$outcome != 'PASSED'">
        <xsl:variable name="message">
          <xsl:choose>
            <xsl:when test="string($explained)"><xsl:value-of select="$explained"/></xsl:when>
            <xsl:when test="$bad">
              <xsl:for-each select="$bad[1]"><xsl:call-template name="assert-line"/></xsl:for-each>
            </xsl:when>
            <xsl:otherwise><xsl:value-of select="@verificationResult"/></xsl:otherwise>
          </xsl:choose>
        </xsl:variable>
        <xsl:variable name="body">
          <xsl:value-of select="concat('Status: ', @status, $nl)"/>
          <xsl:if test="$outcome != string(@status)">
            <xsl:value-of select="concat('Ends the run as: ', $outcome, $nl)"/>
          </xsl:if>
          <xsl:value-of select="concat('Verification result: ', @verificationResult, $nl)"/>
          <xsl:if test="string($explained)">
            <xsl:value-of select="concat('Explained: ', $explained, $nl)"/>
          </xsl:if>
          <xsl:for-each select="ResultForSD/SDSummaryInfo/SDResults/SDResult">
            <xsl:value-of select="concat('Coverage: ', @coverage, '% (', @value, '/', @max, ')', $nl)"/>
          </xsl:for-each>
          <xsl:for-each select="$bad">
            <xsl:call-template name="assert-line"/>
            <xsl:value-of select="$nl"/>
          </xsl:for-each>
          <xsl:if test="not($bad) and */AssertionInfo">
            <xsl:text>Last assertion reached: </xsl:text>
            <xsl:for-each select="*/AssertionInfo[last()]"><xsl:call-template name="assert-line"/></xsl:for-each>
            <xsl:value-of select="$nl"/>
          </xsl:if>
        </xsl:variable>
        <!-- A message on one line, whatever the names hold. -->
        <xsl:variable name="line" select="translate($message, '&#10;&#13;&#9;', '   ')"/>
        <xsl:choose>
          <xsl:when test="$outcome = 'FAILED'">
            <failure message="{$line}" type="{$outcome}"><xsl:value-of select="$body"/></failure>
          </xsl:when>
          <xsl:otherwise>
            <error message="{$line}" type="{$outcome}"><xsl:value-of select="$body"/></error>
          </xsl:otherwise>
        </xsl:choose>
      </xsl:if>
      <xsl:if test="not($suiteRoot)">
        <system-out><xsl:call-template name="case-out"/></system-out>
      </xsl:if>
    </testcase>
  </xsl:template>

  <!-- What a test case tells beside its verdict: type, status, coverage and
       every assertion on a line of its own. -->
  <xsl:template name="case-out">
    <xsl:value-of select="concat('Test type: ', @testType, $nl, 'Status: ', @status, $nl, 'Verification result: ', @verificationResult, $nl)"/>
    <xsl:for-each select="ResultForSD/SDSummaryInfo/SDResults/SDResult">
      <xsl:value-of select="concat('Coverage: ', @coverage, '% (', @value, '/', @max, ')', $nl)"/>
    </xsl:for-each>
    <xsl:call-template name="assert-count"><xsl:with-param name="asserts" select="*/AssertionInfo"/></xsl:call-template>
    <!-- The assertion lines of assert-line, written in one piece each: a
         large context lists a hundred thousand of them. -->
    <xsl:for-each select="ResultForCode/AssertionInfo">
      <xsl:value-of select="concat(position(), '. ', @filename, ':', @lnr, ' ', @status, ' ', @name, $nl)"/>
    </xsl:for-each>
    <xsl:for-each select="ResultForSD/AssertionInfo">
      <xsl:value-of select="concat(position(), '. ', @filename, ':', @lnr, ' ', @status, ' ', @sdiname, '/', @msgid,
                                   substring(' ', 1, string-length(@usermsg)), @usermsg, $nl)"/>
    </xsl:for-each>
  </xsl:template>

  <!-- The position a diagnosis explains, on one line; empty when it names
       none. A sequence diagram: "expected step 4 or 5, recorded step 2
       (refundToCard)". -->
  <xsl:template match="Diagnosis[@kind = 'sequence']" mode="position">
    <xsl:variable name="values" select="Expected/Value"/>
    <xsl:if test="$values or Rejected">
      <xsl:text>expected </xsl:text>
      <xsl:choose>
        <xsl:when test="$values">
          <xsl:text>step </xsl:text>
          <xsl:for-each select="$values">
            <xsl:if test="position() &gt; 1">
              <xsl:choose>
                <xsl:when test="position() = last()"> or </xsl:when>
                <xsl:otherwise>, </xsl:otherwise>
              </xsl:choose>
            </xsl:if>
            <xsl:value-of select="@value"/>
          </xsl:for-each>
        </xsl:when>
        <xsl:otherwise>no further step</xsl:otherwise>
      </xsl:choose>
      <xsl:choose>
        <xsl:when test="Rejected">
          <xsl:value-of select="concat(', recorded step ', Rejected/@value, ' (', Rejected/@msgid, ')')"/>
        </xsl:when>
        <xsl:otherwise>, recorded no further step</xsl:otherwise>
      </xsl:choose>
    </xsl:if>
  </xsl:template>

  <!-- A chart: where the search stood and what it found no way to. -->
  <xsl:template match="Diagnosis[@kind != 'sequence']" mode="position">
    <xsl:for-each select="NoMatch">
      <xsl:value-of select="concat('no state or transition reachable from ', @name, ' performs assertion ',
                                   @assertion, ': ', normalize-space(@statement))"/>
    </xsl:for-each>
    <xsl:for-each select="NoEnd">
      <xsl:value-of select="concat('no way from ', @name, ' to the end of the chart')"/>
    </xsl:for-each>
  </xsl:template>

  <!-- One assertion on one line: file:line, status and its words. -->
  <xsl:template name="assert-line">
    <xsl:value-of select="concat(@filename, ':', @lnr, ' ', @status, ' ')"/>
    <xsl:choose>
      <xsl:when test="@name"><xsl:value-of select="@name"/></xsl:when>
      <xsl:otherwise>
        <xsl:value-of select="concat(@sdiname, '/', @msgid)"/>
        <xsl:if test="string(@usermsg)"><xsl:value-of select="concat(' ', @usermsg)"/></xsl:if>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

</xsl:stylesheet>
