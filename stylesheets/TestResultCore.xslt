<?xml version="1.0" encoding="UTF-8"?>
<!--
  Shared body of the qendor HTML reports.

  A language file (TestResult2ENU.xslt and its siblings) imports this file and
  supplies only what differs between languages:
    $lang   the value of the html lang attribute
    $fonts  the CSS font stack
    $T      its strings: l:s elements with a key "k" and, for words that stand
            for a value of the result document, the original value in "src".
  Every label goes through $T; the run's own values (names, messages, paths,
  GUIDs) are written as they stand, escaped by the serializer.

  The page uses only HTML 4 elements and inline CSS, so it opens offline from
  disk and passes a strict HTML parser.
-->
<xsl:stylesheet version="1.0"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:l="urn:qendor:strings"
    exclude-result-prefixes="l">

  <xsl:output method="html" encoding="UTF-8" indent="yes"
              doctype-system="about:legacy-compat"/>

  <!-- Defaults, overridden by the importing language file. -->
  <xsl:variable name="lang" select="'en'"/>
  <xsl:variable name="fonts"
      select="'system-ui, -apple-system, &quot;Segoe UI&quot;, Roboto, &quot;Noto Sans&quot;, Arial, sans-serif'"/>
  <xsl:variable name="T" select="/.."/>

  <!-- The verification result that the program gives to a test case that did
       not terminate; such a test case keeps the status ERROR in the document
       but ends the run with its own exit status. -->
  <xsl:variable name="notTerminatedText" select="'TestCase did not terminate as expected'"/>

  <!-- ===== Strings ===== -->

  <!-- A label by key. -->
  <xsl:template name="t">
    <xsl:param name="k"/>
    <xsl:value-of select="$T[@k = $k][1]"/>
  </xsl:template>

  <!-- A value of the result document put into words: the translation when the
       language knows the value, else the value as it stands. -->
  <xsl:template name="word">
    <xsl:param name="k"/>
    <xsl:param name="v"/>
    <xsl:variable name="hit" select="$T[@k = $k][@src = $v][1]"/>
    <xsl:choose>
      <xsl:when test="$hit"><xsl:value-of select="$hit"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="$v"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- ===== Status ===== -->

  <!-- The status a test case ends the run with: NOT_TERMINATED where the
       document says ERROR together with the not-terminated verdict. -->
  <xsl:template name="case-outcome">
    <xsl:param name="tc" select="."/>
    <xsl:choose>
      <xsl:when test="$tc/@status = 'ERROR' and $tc/@verificationResult = $notTerminatedText">NOT_TERMINATED</xsl:when>
      <xsl:otherwise><xsl:value-of select="$tc/@status"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- CSS class and symbol of a status, so that it is never told by colour
       alone. -->
  <xsl:template name="status-class">
    <xsl:param name="s"/>
    <xsl:choose>
      <xsl:when test="$s = 'PASSED'">st-pass</xsl:when>
      <xsl:when test="$s = 'FAILED'">st-fail</xsl:when>
      <xsl:when test="$s = 'ERROR'">st-error</xsl:when>
      <xsl:when test="$s = 'NOT_TERMINATED'">st-nt</xsl:when>
      <xsl:otherwise>st-other</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="status-symbol">
    <xsl:param name="s"/>
    <xsl:choose>
      <xsl:when test="$s = 'PASSED'">&#x2714;</xsl:when>
      <xsl:when test="$s = 'FAILED'">&#x2718;</xsl:when>
      <xsl:when test="$s = 'ERROR'">!</xsl:when>
      <xsl:when test="$s = 'NOT_TERMINATED'">&#x2026;</xsl:when>
      <xsl:otherwise>?</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="badge">
    <xsl:param name="s"/>
    <span>
      <xsl:attribute name="class">
        <xsl:text>badge </xsl:text>
        <xsl:call-template name="status-class"><xsl:with-param name="s" select="$s"/></xsl:call-template>
      </xsl:attribute>
      <span class="sym" aria-hidden="true">
        <xsl:call-template name="status-symbol"><xsl:with-param name="s" select="$s"/></xsl:call-template>
      </span>
      <xsl:text> </xsl:text>
      <xsl:call-template name="word">
        <xsl:with-param name="k" select="'st'"/>
        <xsl:with-param name="v" select="$s"/>
      </xsl:call-template>
    </span>
  </xsl:template>

  <!-- The exit status qendor gives for a report of this status. -->
  <xsl:template name="exit-status">
    <xsl:param name="s"/>
    <xsl:choose>
      <xsl:when test="$s = 'PASSED'">0</xsl:when>
      <xsl:when test="$s = 'FAILED'">10</xsl:when>
      <xsl:when test="$s = 'ERROR'">11</xsl:when>
      <xsl:when test="$s = 'NOT_TERMINATED'">13</xsl:when>
      <xsl:otherwise>12</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- ===== Page ===== -->

  <xsl:template match="/">
    <xsl:apply-templates select="TestResult"/>
  </xsl:template>

  <xsl:template match="TestResult">
    <xsl:variable name="isContext" select="@kind = 'rk_testcontext' or TestContextResult"/>
    <html lang="{$lang}">
      <head>
        <title>
          <xsl:call-template name="t">
            <xsl:with-param name="k">
              <xsl:choose>
                <xsl:when test="$isContext">title.context</xsl:when>
                <xsl:otherwise>title.case</xsl:otherwise>
              </xsl:choose>
            </xsl:with-param>
          </xsl:call-template>
          <xsl:text>: </xsl:text>
          <xsl:value-of select="ResultHeader/@name"/>
        </title>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <style type="text/css">
          <xsl:text>body{font-family:</xsl:text>
          <xsl:value-of select="$fonts"/>
          <xsl:text>;}</xsl:text>
          <xsl:call-template name="css"/>
        </style>
      </head>
      <body>
        <div class="page">
          <xsl:apply-templates select="ResultHeader">
            <xsl:with-param name="isContext" select="$isContext"/>
          </xsl:apply-templates>
          <xsl:apply-templates select="TestContextResult"/>
          <xsl:for-each select="TestCaseResult">
            <xsl:call-template name="case-summary"/>
            <xsl:apply-templates select=".">
              <xsl:with-param name="index" select="position()"/>
            </xsl:apply-templates>
          </xsl:for-each>
          <p class="foot">
            <xsl:call-template name="t"><xsl:with-param name="k" select="'generated'"/></xsl:call-template>
          </p>
        </div>
      </body>
    </html>
  </xsl:template>

  <!-- ===== Header ===== -->

  <xsl:template match="ResultHeader">
    <xsl:param name="isContext"/>
    <h1>
      <span class="kind">
        <xsl:call-template name="word">
          <xsl:with-param name="k" select="'kind'"/>
          <xsl:with-param name="v" select="../@kind"/>
        </xsl:call-template>
      </span>
      <xsl:text> </xsl:text>
      <xsl:value-of select="@name"/>
    </h1>
    <div class="cards">
      <table class="card">
        <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.report'"/></xsl:call-template></caption>
        <xsl:call-template name="field"><xsl:with-param name="k" select="'name'"/><xsl:with-param name="v" select="@name"/></xsl:call-template>
        <xsl:call-template name="field"><xsl:with-param name="k" select="'fullname'"/><xsl:with-param name="v" select="@fullname"/></xsl:call-template>
        <xsl:call-template name="field"><xsl:with-param name="k" select="'time'"/><xsl:with-param name="v" select="@time"/></xsl:call-template>
      </table>
      <xsl:for-each select="EnvironmentInfo">
        <table class="card">
          <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.env'"/></xsl:call-template></caption>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'userName'"/><xsl:with-param name="v" select="@userName"/></xsl:call-template>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'machineName'"/><xsl:with-param name="v" select="@machineName"/></xsl:call-template>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'osVersion'"/><xsl:with-param name="v" select="@osVersion"/></xsl:call-template>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'korvanVersion'"/><xsl:with-param name="v" select="@korvanVersion"/></xsl:call-template>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'ostraVersion'"/><xsl:with-param name="v" select="@ostraVersion"/></xsl:call-template>
        </table>
      </xsl:for-each>
      <xsl:for-each select="ConfigurationInfo">
        <table class="card">
          <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.config'"/></xsl:call-template></caption>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'projectName'"/><xsl:with-param name="v" select="@projectName"/></xsl:call-template>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'componentName'"/><xsl:with-param name="v" select="@componentName"/></xsl:call-template>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'configurationName'"/><xsl:with-param name="v" select="@configurationName"/></xsl:call-template>
        </table>
      </xsl:for-each>
    </div>
  </xsl:template>

  <!-- One labelled row of a card. -->
  <xsl:template name="field">
    <xsl:param name="k"/>
    <xsl:param name="v"/>
    <tr>
      <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="$k"/></xsl:call-template></th>
      <td><xsl:value-of select="$v"/></td>
    </tr>
  </xsl:template>

  <!-- ===== Test context ===== -->

  <xsl:template match="TestContextResult">
    <xsl:variable name="cases" select="TestCaseResult"/>
    <xsl:variable name="total" select="count($cases)"/>
    <xsl:variable name="nPassed" select="count($cases[@status = 'PASSED'])"/>
    <xsl:variable name="nFailed" select="count($cases[@status = 'FAILED'])"/>
    <xsl:variable name="nNotTerm" select="count($cases[@status = 'ERROR' and @verificationResult = $notTerminatedText])"/>
    <xsl:variable name="nError" select="count($cases[@status = 'ERROR']) - $nNotTerm"/>
    <xsl:variable name="nOther" select="$total - $nPassed - $nFailed - $nError - $nNotTerm"/>
    <xsl:variable name="asserts" select="$cases/*/AssertionInfo"/>

    <h2><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.summary'"/></xsl:call-template></h2>
    <div class="summary">
      <table class="card">
        <xsl:call-template name="status-row">
          <xsl:with-param name="k" select="'contextStatus'"/>
          <xsl:with-param name="s" select="@status"/>
        </xsl:call-template>
        <tr>
          <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'exitStatus'"/></xsl:call-template></th>
          <td class="num">
            <xsl:call-template name="exit-status"><xsl:with-param name="s" select="@status"/></xsl:call-template>
          </td>
        </tr>
        <tr>
          <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'testCases'"/></xsl:call-template></th>
          <td class="num"><xsl:value-of select="$total"/></td>
        </tr>
        <tr>
          <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'passRate'"/></xsl:call-template></th>
          <td class="num">
            <xsl:choose>
              <xsl:when test="$total &gt; 0"><xsl:value-of select="format-number($nPassed * 100 div $total, '0')"/>&#160;%</xsl:when>
              <xsl:otherwise>&#8211;</xsl:otherwise>
            </xsl:choose>
          </td>
        </tr>
        <tr>
          <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'assertions'"/></xsl:call-template></th>
          <td class="num">
            <xsl:value-of select="count($asserts)"/>
            <xsl:text> (</xsl:text>
            <xsl:call-template name="t"><xsl:with-param name="k" select="'failedShort'"/></xsl:call-template>
            <xsl:text> </xsl:text>
            <xsl:value-of select="count($asserts[@status != 'PASSED'])"/>
            <xsl:text>)</xsl:text>
          </td>
        </tr>
      </table>
      <table class="card counts">
        <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'countsByStatus'"/></xsl:call-template></caption>
        <xsl:call-template name="count-row"><xsl:with-param name="s" select="'PASSED'"/><xsl:with-param name="n" select="$nPassed"/></xsl:call-template>
        <xsl:call-template name="count-row"><xsl:with-param name="s" select="'FAILED'"/><xsl:with-param name="n" select="$nFailed"/></xsl:call-template>
        <xsl:call-template name="count-row"><xsl:with-param name="s" select="'ERROR'"/><xsl:with-param name="n" select="$nError"/></xsl:call-template>
        <xsl:call-template name="count-row"><xsl:with-param name="s" select="'NOT_TERMINATED'"/><xsl:with-param name="n" select="$nNotTerm"/></xsl:call-template>
        <xsl:call-template name="count-row"><xsl:with-param name="s" select="'UNDEFINED'"/><xsl:with-param name="n" select="$nOther"/></xsl:call-template>
      </table>
    </div>
    <xsl:if test="$total &gt; 0">
      <div class="bar" role="img">
        <xsl:attribute name="aria-label">
          <xsl:call-template name="t"><xsl:with-param name="k" select="'countsByStatus'"/></xsl:call-template>
        </xsl:attribute>
        <xsl:call-template name="bar-part"><xsl:with-param name="s" select="'PASSED'"/><xsl:with-param name="n" select="$nPassed"/><xsl:with-param name="total" select="$total"/></xsl:call-template>
        <xsl:call-template name="bar-part"><xsl:with-param name="s" select="'FAILED'"/><xsl:with-param name="n" select="$nFailed"/><xsl:with-param name="total" select="$total"/></xsl:call-template>
        <xsl:call-template name="bar-part"><xsl:with-param name="s" select="'ERROR'"/><xsl:with-param name="n" select="$nError"/><xsl:with-param name="total" select="$total"/></xsl:call-template>
        <xsl:call-template name="bar-part"><xsl:with-param name="s" select="'NOT_TERMINATED'"/><xsl:with-param name="n" select="$nNotTerm"/><xsl:with-param name="total" select="$total"/></xsl:call-template>
        <xsl:call-template name="bar-part"><xsl:with-param name="s" select="'UNDEFINED'"/><xsl:with-param name="n" select="$nOther"/><xsl:with-param name="total" select="$total"/></xsl:call-template>
      </div>
    </xsl:if>

    <h2><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.cases'"/></xsl:call-template></h2>
    <xsl:choose>
      <xsl:when test="$total = 0">
        <p class="empty"><xsl:call-template name="t"><xsl:with-param name="k" select="'none.cases'"/></xsl:call-template></p>
      </xsl:when>
      <xsl:otherwise>
        <table class="grid overview">
          <thead>
            <tr>
              <th scope="col">#</th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'testCase'"/></xsl:call-template></th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'testType'"/></xsl:call-template></th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'status'"/></xsl:call-template></th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'verificationResult'"/></xsl:call-template></th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'assertions'"/></xsl:call-template></th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'cov.coverage'"/></xsl:call-template></th>
            </tr>
          </thead>
          <tbody>
            <xsl:for-each select="$cases">
              <xsl:variable name="outcome"><xsl:call-template name="case-outcome"/></xsl:variable>
              <tr>
                <xsl:attribute name="class">
                  <xsl:call-template name="status-class"><xsl:with-param name="s" select="$outcome"/></xsl:call-template>
                </xsl:attribute>
                <td class="num"><xsl:value-of select="position()"/></td>
                <td><a href="#tc{position()}"><xsl:value-of select="@name"/></a></td>
                <td>
                  <xsl:call-template name="word"><xsl:with-param name="k" select="'tt'"/><xsl:with-param name="v" select="@testType"/></xsl:call-template>
                </td>
                <td><xsl:call-template name="badge"><xsl:with-param name="s" select="$outcome"/></xsl:call-template></td>
                <td>
                  <xsl:call-template name="word"><xsl:with-param name="k" select="'vr'"/><xsl:with-param name="v" select="@verificationResult"/></xsl:call-template>
                </td>
                <td class="num">
                  <xsl:value-of select="count(*/AssertionInfo)"/>
                  <xsl:if test="*/AssertionInfo[@status != 'PASSED']">
                    <xsl:text> (</xsl:text>
                    <xsl:call-template name="t"><xsl:with-param name="k" select="'failedShort'"/></xsl:call-template>
                    <xsl:text> </xsl:text>
                    <xsl:value-of select="count(*/AssertionInfo[@status != 'PASSED'])"/>
                    <xsl:text>)</xsl:text>
                  </xsl:if>
                </td>
                <td class="num">
                  <xsl:for-each select="ResultForSD/SDSummaryInfo/SDResults/SDResult[1]">
                    <xsl:value-of select="@coverage"/>&#160;%</xsl:for-each>
                </td>
              </tr>
            </xsl:for-each>
          </tbody>
        </table>
        <xsl:for-each select="$cases">
          <xsl:apply-templates select=".">
            <xsl:with-param name="index" select="position()"/>
          </xsl:apply-templates>
        </xsl:for-each>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="status-row">
    <xsl:param name="k"/>
    <xsl:param name="s"/>
    <tr>
      <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="$k"/></xsl:call-template></th>
      <td><xsl:call-template name="badge"><xsl:with-param name="s" select="$s"/></xsl:call-template></td>
    </tr>
  </xsl:template>

  <xsl:template name="count-row">
    <xsl:param name="s"/>
    <xsl:param name="n"/>
    <tr>
      <th scope="row"><xsl:call-template name="badge"><xsl:with-param name="s" select="$s"/></xsl:call-template></th>
      <td class="num"><xsl:value-of select="$n"/></td>
    </tr>
  </xsl:template>

  <xsl:template name="bar-part">
    <xsl:param name="s"/>
    <xsl:param name="n"/>
    <xsl:param name="total"/>
    <xsl:if test="$n &gt; 0">
      <span style="width:{format-number($n * 100 div $total, '0.###')}%">
        <xsl:attribute name="class">
          <xsl:call-template name="status-class"><xsl:with-param name="s" select="$s"/></xsl:call-template>
        </xsl:attribute>
        <xsl:attribute name="title">
          <xsl:call-template name="word"><xsl:with-param name="k" select="'st'"/><xsl:with-param name="v" select="$s"/></xsl:call-template>
          <xsl:text>: </xsl:text>
          <xsl:value-of select="$n"/>
        </xsl:attribute>
        <xsl:value-of select="$n"/>
      </span>
    </xsl:if>
  </xsl:template>

  <!-- Summary of a test case document: the status the run ends with. -->
  <xsl:template name="case-summary">
    <xsl:variable name="outcome"><xsl:call-template name="case-outcome"/></xsl:variable>
    <h2><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.summary'"/></xsl:call-template></h2>
    <table class="card">
      <xsl:call-template name="status-row">
        <xsl:with-param name="k" select="'caseStatus'"/>
        <xsl:with-param name="s" select="$outcome"/>
      </xsl:call-template>
      <tr>
        <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'exitStatus'"/></xsl:call-template></th>
        <td class="num"><xsl:call-template name="exit-status"><xsl:with-param name="s" select="$outcome"/></xsl:call-template></td>
      </tr>
    </table>
  </xsl:template>

  <!-- ===== Test case ===== -->

  <xsl:template match="TestCaseResult">
    <xsl:param name="index" select="1"/>
    <xsl:variable name="outcome"><xsl:call-template name="case-outcome"/></xsl:variable>
    <div id="tc{$index}">
      <xsl:attribute name="class">
        <xsl:text>case </xsl:text>
        <xsl:call-template name="status-class"><xsl:with-param name="s" select="$outcome"/></xsl:call-template>
      </xsl:attribute>
      <h3>
        <xsl:call-template name="badge"><xsl:with-param name="s" select="$outcome"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <xsl:value-of select="@name"/>
      </h3>
      <table class="card">
        <xsl:call-template name="field"><xsl:with-param name="k" select="'fullname'"/><xsl:with-param name="v" select="@fullname"/></xsl:call-template>
        <tr>
          <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'testType'"/></xsl:call-template></th>
          <td><xsl:call-template name="word"><xsl:with-param name="k" select="'tt'"/><xsl:with-param name="v" select="@testType"/></xsl:call-template></td>
        </tr>
        <xsl:call-template name="status-row">
          <xsl:with-param name="k" select="'status'"/>
          <xsl:with-param name="s" select="@status"/>
        </xsl:call-template>
        <tr>
          <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'verificationResult'"/></xsl:call-template></th>
          <td>
            <xsl:attribute name="class">
              <xsl:text>vr </xsl:text>
              <xsl:choose>
                <xsl:when test="@verificationResult = 'Result verification successful'">vr-ok</xsl:when>
                <xsl:when test="@verificationResult = 'Result verification failed' or @verificationResult = $notTerminatedText">vr-bad</xsl:when>
                <xsl:otherwise>vr-info</xsl:otherwise>
              </xsl:choose>
            </xsl:attribute>
            <xsl:call-template name="word"><xsl:with-param name="k" select="'vr'"/><xsl:with-param name="v" select="@verificationResult"/></xsl:call-template>
          </td>
        </tr>
      </table>
      <xsl:apply-templates select="ResultForSD | ResultForCode"/>
    </div>
  </xsl:template>

  <xsl:template match="ResultForSD">
    <xsl:if test="UsedSDs/UsedSD or SDSummaryInfo/SDResults/SDResult/SDs">
      <div class="images">
        <xsl:for-each select="UsedSDs/UsedSD">
          <xsl:call-template name="image"><xsl:with-param name="k" select="'img.spec'"/></xsl:call-template>
        </xsl:for-each>
        <xsl:for-each select="SDSummaryInfo/SDResults/SDResult/SDs">
          <xsl:call-template name="image"><xsl:with-param name="k" select="'img.result'"/></xsl:call-template>
        </xsl:for-each>
      </div>
    </xsl:if>
    <xsl:apply-templates select="SDSummaryInfo"/>
    <xsl:call-template name="assertions">
      <xsl:with-param name="sd" select="true()"/>
    </xsl:call-template>
  </xsl:template>

  <xsl:template match="ResultForCode">
    <xsl:call-template name="assertions">
      <xsl:with-param name="sd" select="false()"/>
    </xsl:call-template>
  </xsl:template>

  <!-- A diagram image, linked by the relative path the document gives. -->
  <xsl:template name="image">
    <xsl:param name="k"/>
    <xsl:variable name="label"><xsl:call-template name="t"><xsl:with-param name="k" select="$k"/></xsl:call-template></xsl:variable>
    <div class="figure">
      <a href="{@img}"><img src="{@img}" alt="{$label}"/></a>
      <div class="caption"><xsl:value-of select="$label"/>: <span class="path"><xsl:value-of select="@img"/></span></div>
    </div>
  </xsl:template>

  <xsl:template match="SDSummaryInfo">
    <table class="grid coverage">
      <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.coverage'"/></xsl:call-template></caption>
      <thead>
        <tr>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'cov.name'"/></xsl:call-template></th>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'cov.sdname'"/></xsl:call-template></th>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'status'"/></xsl:call-template></th>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'cov.value'"/></xsl:call-template></th>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'cov.max'"/></xsl:call-template></th>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'cov.coverage'"/></xsl:call-template></th>
        </tr>
      </thead>
      <tbody>
        <xsl:for-each select="SDResults/SDResult">
          <xsl:variable name="pct" select="number(@coverage)"/>
          <tr>
            <td><xsl:value-of select="@name"/></td>
            <td><xsl:value-of select="@sdname"/></td>
            <td><xsl:call-template name="badge"><xsl:with-param name="s" select="@status"/></xsl:call-template></td>
            <td class="num"><xsl:value-of select="@value"/></td>
            <td class="num"><xsl:value-of select="@max"/></td>
            <td class="meter-cell">
              <span class="meter">
                <xsl:if test="$pct = $pct">
                  <span class="fill">
                    <xsl:attribute name="style">
                      <xsl:text>width:</xsl:text>
                      <xsl:choose>
                        <xsl:when test="$pct &gt; 100">100</xsl:when>
                        <xsl:when test="$pct &lt; 0">0</xsl:when>
                        <xsl:otherwise><xsl:value-of select="$pct"/></xsl:otherwise>
                      </xsl:choose>
                      <xsl:text>%</xsl:text>
                    </xsl:attribute>
                  </span>
                </xsl:if>
              </span>
              <xsl:text> </xsl:text>
              <xsl:value-of select="@coverage"/>&#160;%</td>
          </tr>
        </xsl:for-each>
      </tbody>
    </table>
  </xsl:template>

  <!-- The assertion table of a test case; SD assertions carry the sequence
       diagram attributes, code assertions their statement. -->
  <xsl:template name="assertions">
    <xsl:param name="sd"/>
    <xsl:choose>
      <xsl:when test="not(AssertionInfo)">
        <p class="empty"><xsl:call-template name="t"><xsl:with-param name="k" select="'none.assertions'"/></xsl:call-template></p>
      </xsl:when>
      <xsl:otherwise>
        <table class="grid asserts">
          <caption>
            <xsl:call-template name="t"><xsl:with-param name="k" select="'sec.assertions'"/></xsl:call-template>
            <xsl:text> (</xsl:text>
            <xsl:value-of select="count(AssertionInfo)"/>
            <xsl:text>)</xsl:text>
          </caption>
          <thead>
            <tr>
              <th scope="col">#</th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'status'"/></xsl:call-template></th>
              <xsl:choose>
                <xsl:when test="$sd">
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.sdiname'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.msgid'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.usermsg'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.inr'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.onr'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.arbiter'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.guid'"/></xsl:call-template></th>
                </xsl:when>
                <xsl:otherwise>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.name'"/></xsl:call-template></th>
                </xsl:otherwise>
              </xsl:choose>
              <th scope="col">
                <xsl:call-template name="t"><xsl:with-param name="k" select="'col.filename'"/></xsl:call-template>
                <span class="sub">
                  <xsl:call-template name="t"><xsl:with-param name="k" select="'col.dir'"/></xsl:call-template>
                </span>
              </th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.fnr'"/></xsl:call-template></th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.lnr'"/></xsl:call-template></th>
            </tr>
          </thead>
          <tbody>
            <xsl:for-each select="AssertionInfo">
              <tr>
                <xsl:attribute name="class">
                  <xsl:choose>
                    <xsl:when test="@status = 'PASSED'">row-ok</xsl:when>
                    <xsl:otherwise>row-bad</xsl:otherwise>
                  </xsl:choose>
                </xsl:attribute>
                <td class="num"><xsl:value-of select="position()"/></td>
                <td><xsl:call-template name="badge"><xsl:with-param name="s" select="@status"/></xsl:call-template></td>
                <xsl:choose>
                  <xsl:when test="$sd">
                    <td><xsl:value-of select="@sdiname"/></td>
                    <td><xsl:value-of select="@msgid"/></td>
                    <td class="msg"><xsl:value-of select="@usermsg"/><xsl:if test="@name"><div class="stmt"><xsl:value-of select="@name"/></div></xsl:if></td>
                    <td class="num"><xsl:value-of select="@inr"/></td>
                    <td class="onr"><xsl:value-of select="@onr"/></td>
                    <td>
                      <xsl:if test="@arbiterAssert">
                        <xsl:call-template name="word"><xsl:with-param name="k" select="'arb'"/><xsl:with-param name="v" select="@arbiterAssert"/></xsl:call-template>
                      </xsl:if>
                    </td>
                    <td class="guid"><xsl:value-of select="@guid"/></td>
                  </xsl:when>
                  <xsl:otherwise>
                    <td class="msg"><xsl:value-of select="@name"/></td>
                  </xsl:otherwise>
                </xsl:choose>
                <td>
                  <span class="file"><xsl:value-of select="@filename"/></span>
                  <span class="dir"><xsl:value-of select="@dir"/></span>
                </td>
                <td class="num"><xsl:value-of select="@fnr"/></td>
                <td class="num"><xsl:value-of select="@lnr"/></td>
              </tr>
            </xsl:for-each>
          </tbody>
        </table>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- ===== Style ===== -->

  <xsl:template name="css">
    <xsl:text>
:root{color-scheme:light dark;}
body{margin:0;background:#f6f7f9;color:#1f2328;font-size:15px;line-height:1.45;}
.page{max-width:1200px;margin:0 auto;padding:20px 24px 40px;}
h1{font-size:1.6em;margin:0 0 14px;}
h1 .kind{display:block;font-size:.55em;font-weight:600;color:#57606a;text-transform:uppercase;letter-spacing:.05em;}
h2{font-size:1.25em;margin:28px 0 10px;border-bottom:1px solid #d0d7de;padding-bottom:4px;}
h3{font-size:1.1em;margin:0 0 10px;}
.cards,.summary{display:flex;flex-wrap:wrap;gap:14px;align-items:flex-start;}
table{border-collapse:collapse;}
caption{text-align:left;font-weight:700;padding:0 0 6px;}
.card{background:#fff;border:1px solid #d0d7de;border-radius:6px;}
.card caption{padding:8px 10px 4px;}
.card th,.card td{text-align:left;padding:4px 10px;vertical-align:top;}
.card th{color:#57606a;font-weight:600;white-space:nowrap;}
.grid{width:100%;background:#fff;border:1px solid #d0d7de;margin:10px 0;}
.grid th,.grid td{border-bottom:1px solid #eaeef2;padding:5px 8px;text-align:left;vertical-align:top;}
.grid thead th{background:#eef1f4;font-weight:600;white-space:nowrap;}
.num{text-align:right;font-variant-numeric:tabular-nums;}
.grid td.num{text-align:right;}
.path,.guid,.onr,.stmt,.file,.dir{font-family:ui-monospace,SFMono-Regular,Menlo,Consolas,monospace;font-size:.85em;}
.path,.guid,.onr,.stmt,.dir{overflow-wrap:anywhere;}
.file{white-space:nowrap;}
.dir,.sub{display:block;color:#57606a;font-size:.8em;}
.sub{font-weight:400;}
.guid{min-width:9em;}
.stmt{color:#57606a;margin-top:2px;}
.badge{display:inline-block;padding:1px 8px;border-radius:10px;font-weight:600;font-size:.9em;white-space:nowrap;border:1px solid;}
.st-pass .sym,.st-fail .sym,.st-error .sym,.st-nt .sym,.st-other .sym{font-weight:700;}
.badge.st-pass{color:#116329;background:#dafbe1;border-color:#4ac26b;}
.badge.st-fail{color:#a40e26;background:#ffebe9;border-color:#ff8182;}
.badge.st-error{color:#7d4e00;background:#fff8c5;border-color:#d4a72c;}
.badge.st-nt{color:#6639ba;background:#fbefff;border-color:#c297ff;}
.badge.st-other{color:#424a53;background:#eaeef2;border-color:#afb8c1;}
.bar{display:flex;height:22px;border-radius:4px;overflow:hidden;margin:12px 0;border:1px solid #d0d7de;}
.bar span{display:block;color:#fff;font-size:.8em;font-weight:700;text-align:center;line-height:22px;}
.bar .st-pass{background:#1a7f37;}.bar .st-fail{background:#cf222e;}.bar .st-error{background:#9a6700;}
.bar .st-nt{background:#8250df;}.bar .st-other{background:#6e7781;}
.case{background:#fff;border:1px solid #d0d7de;border-left:6px solid #6e7781;border-radius:6px;padding:14px 16px;margin:18px 0;}
.case.st-pass{border-left-color:#1a7f37;}.case.st-fail{border-left-color:#cf222e;}
.case.st-error{border-left-color:#9a6700;}.case.st-nt{border-left-color:#8250df;}
.case .card{border:none;}
.case{overflow-x:auto;}
.overview tr.st-fail td,.overview tr.st-error td,.overview tr.st-nt td{background:#fffafa;}
tr.row-bad td{background:#fff5f5;}
.vr-ok{color:#116329;font-weight:600;}.vr-bad{color:#a40e26;font-weight:600;}.vr-info{color:#424a53;}
.images{display:flex;flex-wrap:wrap;gap:16px;margin:10px 0;}
.figure{border:1px solid #d0d7de;border-radius:6px;padding:8px;background:#fafbfc;}
.figure img{max-width:520px;max-height:360px;display:block;}
.caption{font-size:.85em;color:#57606a;margin-top:4px;}
.meter{display:inline-block;width:90px;height:10px;border:1px solid #8c959f;border-radius:5px;overflow:hidden;vertical-align:middle;background:#eaeef2;}
.meter .fill{display:block;height:100%;background:#1a7f37;}
.empty{color:#57606a;font-style:italic;}
.foot{margin-top:30px;color:#6e7781;font-size:.85em;}
a{color:#0550ae;}
@media (prefers-color-scheme:dark){
body{background:#0d1117;color:#e6edf3;}
.card,.grid,.case{background:#161b22;border-color:#30363d;}
.grid thead th{background:#21262d;}
.grid th,.grid td{border-bottom-color:#30363d;}
.card th,h1 .kind,.caption,.empty,.stmt,.foot,.dir,.sub{color:#9da7b3;}
tr.row-bad td,.overview tr.st-fail td,.overview tr.st-error td,.overview tr.st-nt td{background:#2a1618;}
.figure{background:#0d1117;border-color:#30363d;}
a{color:#79c0ff;}
.vr-ok{color:#56d364;}.vr-bad{color:#ff7b72;}.vr-info{color:#9da7b3;}
}
@media print{body{background:#fff;}.case{break-inside:avoid;}}
</xsl:text>
  </xsl:template>

</xsl:stylesheet>
