<?xml version="1.0" encoding="UTF-8"?>
<!--
  A qendor result document, of a test case or of a test context, as JUnit
  XML for CI servers:

    xsltproc -o Checkout.junit.xml TestResult2JUnit.xslt Checkout.xml

  The output keeps to the attributes that strict JUnit schemas allow:
  testsuites carries name, tests, failures and errors; testsuite name, tests,
  failures, errors, skipped, timestamp and hostname; testcase name and
  classname. Everything else, the assertion counts among it, goes into
  property elements.

  One testsuite per document, one testcase per test case in execution order.
  A FAILED test case gets a failure element; ERROR, NOT_TERMINATED (an ERROR
  with the not-terminated verdict) and any other status an error element, so
  the counts agree with the exit status rules: only PASSED passes. The
  message names the first assertion that did not pass (or, when every
  assertion passed, the verification result); the body lists every such
  assertion with its file and line.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">

  <xsl:output method="xml" encoding="UTF-8" indent="yes"/>

  <xsl:variable name="notTerminatedText" select="'TestCase did not terminate as expected'"/>
  <xsl:variable name="nl" select="'&#10;'"/>

  <xsl:key name="bad-by-case" match="AssertionInfo[@status != 'PASSED']" use="generate-id(../..)"/>

  <xsl:template match="/">
    <xsl:apply-templates select="TestResult"/>
  </xsl:template>

  <xsl:template match="TestResult">
    <xsl:variable name="cases" select="TestContextResult/TestCaseResult | TestCaseResult"/>
    <xsl:variable name="tests" select="count($cases)"/>
    <xsl:variable name="failures" select="count($cases[@status = 'FAILED'])"/>
    <xsl:variable name="errors" select="$tests - $failures - count($cases[@status = 'PASSED'])"/>
    <xsl:variable name="asserts" select="count($cases/*/AssertionInfo)"/>
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
    <testsuites name="{ResultHeader/@fullname}" tests="{$tests}" failures="{$failures}" errors="{$errors}">
      <testsuite name="{$suite}" tests="{$tests}" failures="{$failures}" errors="{$errors}" skipped="0">
        <xsl:if test="string($timestamp)">
          <xsl:attribute name="timestamp"><xsl:value-of select="$timestamp"/></xsl:attribute>
        </xsl:if>
        <xsl:attribute name="hostname"><xsl:value-of select="ResultHeader/EnvironmentInfo/@machineName"/></xsl:attribute>
        <properties>
          <property name="kind" value="{@kind}"/>
          <xsl:if test="TestContextResult">
            <property name="contextStatus" value="{TestContextResult/@status}"/>
          </xsl:if>
          <property name="assertions" value="{$asserts}"/>
          <xsl:for-each select="ResultHeader/@time | ResultHeader/EnvironmentInfo/@* | ResultHeader/ConfigurationInfo/@*">
            <property name="{name()}" value="{.}"/>
          </xsl:for-each>
        </properties>
        <xsl:apply-templates select="$cases"/>
      </testsuite>
    </testsuites>
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
    <testcase name="{@name}" classname="{$classname}">
      <properties>
        <property name="assertions" value="{count(*/AssertionInfo)}"/>
      </properties>
      <xsl:if test="$outcome != 'PASSED'">
        <xsl:variable name="message">
          <xsl:choose>
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
        <xsl:choose>
          <xsl:when test="$outcome = 'FAILED'">
            <failure type="{$outcome}" message="{$message}"><xsl:value-of select="$body"/></failure>
          </xsl:when>
          <xsl:otherwise>
            <error type="{$outcome}" message="{$message}"><xsl:value-of select="$body"/></error>
          </xsl:otherwise>
        </xsl:choose>
      </xsl:if>
      <system-out>
        <xsl:value-of select="concat('Test type: ', @testType, $nl, 'Status: ', @status, $nl, 'Verification result: ', @verificationResult, $nl)"/>
        <xsl:for-each select="ResultForSD/SDSummaryInfo/SDResults/SDResult">
          <xsl:value-of select="concat('Coverage: ', @coverage, '% (', @value, '/', @max, ')', $nl)"/>
        </xsl:for-each>
      </system-out>
    </testcase>
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
