<?xml version="1.0" encoding="UTF-8"?>
<!--
  The HTML report of a large context, included by TestResultCore.xslt.

  A context of more than 500 test cases or 10,000 assertions is "large": a
  browser would hold a million elements if every assertion were a table row.
  Only its first ten problems open as full blocks; every other test case is a
  closed block that keeps its assertions as lines of text in one element
  (found by the browser's find, printed, read without scripts), which the
  page's script turns into the table when the reader opens the block or a
  link points into it. Its problems are listed grouped.

    $large, $openProblems  whether the context is large; the problems that
                           still open as full blocks
    lite-body              the body of a closed block: facts and lines
    problem-groups         the problems, a row per status, verdict and first
                           failing assertion
    large-css              the styles of both
-->
<xsl:stylesheet version="1.0"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:l="urn:qendor:strings"
    exclude-result-prefixes="l">

  <xsl:variable name="allCases" select="/TestResult/TestContextResult/TestCaseResult"/>
  <xsl:variable name="large" select="count($allCases) &gt; 500 or count($allCases/*/AssertionInfo) &gt; 10000"/>
  <xsl:variable name="openProblems" select="$allCases[not(@status = 'PASSED')][position() &lt;= 10]"/>
  <!-- Problems with the same status, verdict and first failing assertion. -->
  <xsl:key name="problem-group" match="TestCaseResult[not(@status = 'PASSED')]"
           use="concat(@status, '&#9;', @verificationResult, '&#9;', (*/AssertionInfo[not(@status = 'PASSED')])[1]/@sdiname, '/',
                       (*/AssertionInfo[not(@status = 'PASSED')])[1]/@msgid, '/', (*/AssertionInfo[not(@status = 'PASSED')])[1]/@name)"/>

  <!-- The body of a closed block of a large context: the facts in one line
       and each assertion as a line of text, its columns apart by tabs, the
       heads first. The script makes the table of it when the block is
       opened by hand or a link points at one of its rows. -->
  <xsl:template name="lite-body">
    <xsl:param name="cid"/>
    <xsl:variable name="colon"><xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template></xsl:variable>
    <xsl:variable name="results" select="ResultForSD | ResultForCode"/>
    <xsl:variable name="sd" select="boolean(ResultForSD)"/>
    <div class="body">
      <p class="lite-facts">
        <span><xsl:call-template name="t"><xsl:with-param name="k" select="'fullname'"/></xsl:call-template><xsl:value-of select="$colon"/><xsl:value-of select="@fullname"/></span>
        <xsl:text> </xsl:text>
        <span><xsl:call-template name="t"><xsl:with-param name="k" select="'verificationResult'"/></xsl:call-template><xsl:value-of select="$colon"/><xsl:call-template name="word"><xsl:with-param name="k" select="'vr'"/><xsl:with-param name="v" select="@verificationResult"/></xsl:call-template></span>
        <xsl:for-each select="ResultForSD/SDSummaryInfo/SDResults/SDResult">
          <xsl:text> </xsl:text>
          <span><xsl:call-template name="t"><xsl:with-param name="k" select="'cov.coverage'"/></xsl:call-template><xsl:value-of select="$colon"/><xsl:value-of select="concat(@sdname, ' ', @coverage, $pctSign, ' (', @value, '/', @max, ')')"/></span>
        </xsl:for-each>
      </p>
      <xsl:apply-templates select="Diagnosis">
        <xsl:with-param name="cid" select="$cid"/>
      </xsl:apply-templates>
      <xsl:if test="ResultForSD/UsedSDs/UsedSD or ResultForSD/SDSummaryInfo/SDResults/SDResult/SDs">
        <div class="images">
          <xsl:for-each select="ResultForSD/UsedSDs/UsedSD">
            <xsl:call-template name="image"><xsl:with-param name="k" select="'img.model'"/></xsl:call-template>
          </xsl:for-each>
          <xsl:for-each select="ResultForSD/SDSummaryInfo/SDResults/SDResult/SDs">
            <xsl:call-template name="image"><xsl:with-param name="k" select="'img.result'"/></xsl:call-template>
          </xsl:for-each>
        </div>
      </xsl:if>
      <xsl:choose>
        <xsl:when test="not($results/AssertionInfo)">
          <p class="empty"><xsl:call-template name="t"><xsl:with-param name="k" select="'none.assertions'"/></xsl:call-template></p>
        </xsl:when>
        <xsl:otherwise>
          <pre class="lite-rows" data-kind="{substring('sdcode', 1 + 2 * not($sd), 2 + 2 * not($sd))}">
            <xsl:attribute name="data-caption">
              <xsl:call-template name="t"><xsl:with-param name="k" select="'sec.assertions'"/></xsl:call-template>
              <xsl:text> (</xsl:text>
              <xsl:call-template name="int"><xsl:with-param name="n" select="count($results/AssertionInfo)"/></xsl:call-template>
              <xsl:text>)</xsl:text>
            </xsl:attribute>
            <xsl:text>#&#9;</xsl:text>
            <xsl:call-template name="t"><xsl:with-param name="k" select="'status'"/></xsl:call-template>
            <xsl:text>&#9;</xsl:text>
            <xsl:choose>
              <xsl:when test="$sd">
                <xsl:call-template name="t"><xsl:with-param name="k" select="'col.sdiname'"/></xsl:call-template> / <xsl:call-template name="t"><xsl:with-param name="k" select="'col.msgid'"/></xsl:call-template>
                <xsl:text>&#9;</xsl:text>
                <xsl:call-template name="t"><xsl:with-param name="k" select="'col.usermsg'"/></xsl:call-template>
                <xsl:text>&#9;</xsl:text>
                <xsl:call-template name="t"><xsl:with-param name="k" select="'col.inr'"/></xsl:call-template> / <xsl:call-template name="t"><xsl:with-param name="k" select="'col.onr'"/></xsl:call-template>
                <xsl:text>&#9;</xsl:text>
                <xsl:call-template name="t"><xsl:with-param name="k" select="'col.arbiter'"/></xsl:call-template>
                <xsl:text>&#9;</xsl:text>
                <xsl:call-template name="t"><xsl:with-param name="k" select="'col.guid'"/></xsl:call-template>
              </xsl:when>
              <xsl:otherwise>
                <xsl:call-template name="t"><xsl:with-param name="k" select="'col.name'"/></xsl:call-template>
              </xsl:otherwise>
            </xsl:choose>
            <xsl:text>&#9;</xsl:text>
            <xsl:call-template name="t"><xsl:with-param name="k" select="'col.dir'"/></xsl:call-template>
            <xsl:text>&#9;</xsl:text>
            <xsl:call-template name="t"><xsl:with-param name="k" select="'col.fileLine'"/></xsl:call-template>
            <xsl:for-each select="$results/AssertionInfo">
              <xsl:text>&#10;</xsl:text>
              <xsl:value-of select="position()"/>
              <xsl:text>&#9;</xsl:text>
              <xsl:choose>
                <xsl:when test="@status = 'PASSED'"><xsl:value-of select="$w.PASSED"/></xsl:when>
                <xsl:otherwise><xsl:call-template name="row-status"/></xsl:otherwise>
              </xsl:choose>
              <xsl:text>&#9;</xsl:text>
              <xsl:choose>
                <xsl:when test="$sd">
                  <xsl:value-of select="translate(concat(@sdiname, ' / ', @msgid), '&#9;&#10;&#13;', '   ')"/>
                  <xsl:text>&#9;</xsl:text>
                  <xsl:value-of select="translate(concat(@usermsg, substring(' ', 1, string-length(@name)), @name), '&#9;&#10;&#13;', '   ')"/>
                  <xsl:text>&#9;</xsl:text>
                  <xsl:if test="string(@inr) or string(@onr)">
                    <xsl:value-of select="concat(substring-before(concat(@inr, ' '), ' '), ' / ', substring-before(concat(@onr, ' '), ' '))"/>
                  </xsl:if>
                  <xsl:text>&#9;</xsl:text>
                  <xsl:choose>
                    <xsl:when test="@arbiterAssert = 'internal'"><xsl:value-of select="$w.internal"/></xsl:when>
                    <xsl:when test="@arbiterAssert = 'external'"><xsl:value-of select="$w.external"/></xsl:when>
                    <xsl:otherwise><xsl:value-of select="@arbiterAssert"/></xsl:otherwise>
                  </xsl:choose>
                  <xsl:text>&#9;</xsl:text>
                  <xsl:choose>
                    <xsl:when test="starts-with(@guid, 'GUID ')"><xsl:value-of select="substring(@guid, 6)"/></xsl:when>
                    <xsl:otherwise><xsl:value-of select="@guid"/></xsl:otherwise>
                  </xsl:choose>
                </xsl:when>
                <xsl:otherwise><xsl:value-of select="translate(@name, '&#9;&#10;&#13;', '   ')"/></xsl:otherwise>
              </xsl:choose>
              <xsl:value-of select="concat('&#9;', @dir, '&#9;', @filename, ':', @lnr)"/>
            </xsl:for-each>
          </pre>
        </xsl:otherwise>
      </xsl:choose>
    </div>
  </xsl:template>

  <!-- The problems of a large context, a row for each status, verdict and
       first failing assertion that they share: the first five test cases
       linked, the others in a closed list (still found by the browser's find).
       The first test case's failure stands for the group's. -->
  <xsl:template name="problem-groups">
    <xsl:param name="bad"/>
    <div class="scroll">
    <table class="grid problems grouped">
      <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'problems.grouped'"/></xsl:call-template></caption>
      <thead>
        <tr>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'testCase'"/></xsl:call-template></th>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'status'"/></xsl:call-template></th>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'mp.label'"/></xsl:call-template></th>
          <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'firstFailure'"/></xsl:call-template></th>
        </tr>
      </thead>
      <tbody>
        <xsl:for-each select="$bad">
          <xsl:variable name="group" select="key('problem-group', concat(@status, '&#9;', @verificationResult, '&#9;',
              (*/AssertionInfo[not(@status = 'PASSED')])[1]/@sdiname, '/', (*/AssertionInfo[not(@status = 'PASSED')])[1]/@msgid, '/',
              (*/AssertionInfo[not(@status = 'PASSED')])[1]/@name))"/>
          <xsl:if test="generate-id($group[1]) = generate-id()">
            <xsl:variable name="cid"><xsl:call-template name="case-id"/></xsl:variable>
            <xsl:variable name="first" select="key('bad-by-case', generate-id())[1]"/>
            <tr>
              <xsl:attribute name="data-status"><xsl:call-template name="status-key"><xsl:with-param name="s" select="string(@status)"/></xsl:call-template></xsl:attribute>
              <th scope="row">
                <span class="n"><xsl:call-template name="int"><xsl:with-param name="n" select="count($group)"/></xsl:call-template></span>
                <xsl:text> </xsl:text>
                <xsl:for-each select="$group[position() &lt;= 5]">
                  <xsl:if test="position() != 1"><xsl:call-template name="t"><xsl:with-param name="k" select="'sep'"/></xsl:call-template></xsl:if>
                  <a><xsl:attribute name="href">#<xsl:call-template name="case-id"/></xsl:attribute><xsl:value-of select="@name"/></a>
                </xsl:for-each>
                <xsl:if test="count($group) &gt; 5">
                  <xsl:text> </xsl:text>
                  <details class="more">
                    <summary>
                      <xsl:call-template name="fmt">
                        <xsl:with-param name="k" select="'problems.more'"/>
                        <xsl:with-param name="n"><xsl:call-template name="int"><xsl:with-param name="n" select="count($group) - 5"/></xsl:call-template></xsl:with-param>
                      </xsl:call-template>
                    </summary>
                    <xsl:for-each select="$group[position() &gt; 5]">
                      <xsl:if test="position() != 1"><xsl:call-template name="t"><xsl:with-param name="k" select="'sep'"/></xsl:call-template></xsl:if>
                      <a><xsl:attribute name="href">#<xsl:call-template name="case-id"/></xsl:attribute><xsl:value-of select="@name"/></a>
                    </xsl:for-each>
                  </details>
                </xsl:if>
              </th>
              <td><xsl:call-template name="badge"><xsl:with-param name="s" select="@status"/></xsl:call-template></td>
              <td><xsl:call-template name="vr"><xsl:with-param name="k" select="'mp'"/></xsl:call-template></td>
              <td>
                <xsl:choose>
                  <xsl:when test="$first">
                    <xsl:for-each select="$first">
                      <xsl:variable name="nr"><xsl:number/></xsl:variable>
                      <a href="#{$cid}-a{$nr}"><xsl:call-template name="assert-text"/></a>
                      <xsl:call-template name="where"/>
                    </xsl:for-each>
                  </xsl:when>
                  <xsl:otherwise>
                    <span class="muted"><xsl:call-template name="t"><xsl:with-param name="k" select="'none.failing'"/></xsl:call-template></span>
                  </xsl:otherwise>
                </xsl:choose>
              </td>
            </tr>
          </xsl:if>
        </xsl:for-each>
      </tbody>
    </table>
    </div>
  </xsl:template>

  <xsl:template name="large-css">
    <xsl:text>
.lite-facts{margin:0 0 8px;color:var(--muted);font-size:.88em;}
.lite-facts span+span::before{content:" \b7  ";}
pre.lite-rows{margin:0;white-space:pre-wrap;overflow-wrap:anywhere;tab-size:3;font-family:ui-monospace,SFMono-Regular,Menlo,Consolas,monospace;font-size:.82em;line-height:1.5;}
.problems.grouped th .n{font-variant-numeric:tabular-nums;margin-right:4px;}
.problems.grouped th{font-weight:400;}
.problems details.more{display:inline;}
.problems details.more>summary{display:inline;cursor:pointer;color:var(--muted);}
.problems details.more[open]>summary{display:block;}
</xsl:text>
  </xsl:template>

</xsl:stylesheet>
