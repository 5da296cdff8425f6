<?xml version="1.0" encoding="UTF-8"?>
<!--
  The earlier runs of a report, from the "History" element that qendor adds
  with its -history option. Included by TestResultCore.xslt, which calls
  these templates at a few places; without a History element each of them
  writes nothing, so the page is the same as without this file.

    history-strip          beside a test case: its last runs as small
                           status marks (oldest first, this run last) and
                           its classification as a label
    History, mode trend    on a context report: passed and not passed test
                           cases over the runs as inline SVG, with the
                           numbers as a table
    history-problem-mark   in the Problems table: the classification label
    history-problems-note  in its caption: new failures come first (the
                           table sorts by the "hist-trend" key)
    history-css            the styles of all of these

  Marks tell a status by shape as well as by colour (the shapes of the
  status bar's legend: circle passed, square failed, triangle error, diamond
  not terminated, ring anything else) and carry its word for screen readers
  and in their tooltip. Everything reads without scripts and prints.
  Strings come from the language file through $T, keys "hist.*" and, for
  the classifications, "hc".
-->
<xsl:stylesheet version="1.0"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:l="urn:qendor:strings"
    exclude-result-prefixes="l">

  <!-- How many earlier runs the strip beside a test case shows. -->
  <xsl:variable name="historyStripRuns" select="10"/>

  <xsl:key name="hist-runs-of" match="History/Run/TestCaseRun" use="@fullname"/>
  <xsl:key name="hist-trend" match="History/TestCaseTrend" use="@fullname"/>

  <!-- ===== Beside a test case ===== -->

  <!-- The strip and label of the TestCaseResult in context. -->
  <xsl:template name="history-strip">
    <xsl:variable name="trend" select="key('hist-trend', @fullname)[1]"/>
    <xsl:if test="$trend">
      <xsl:variable name="outcome"><xsl:value-of select="@status"/></xsl:variable>
      <xsl:variable name="earlier" select="key('hist-runs-of', @fullname)[position() &lt;= $historyStripRuns]"/>
      <span class="hist">
        <span class="hist-strip" aria-hidden="true">
          <xsl:for-each select="$earlier">
            <xsl:sort select="../@number" data-type="number" order="ascending"/>
            <xsl:call-template name="history-mark"/>
          </xsl:for-each>
          <xsl:call-template name="history-mark">
            <xsl:with-param name="s" select="$outcome"/>
            <xsl:with-param name="now" select="true()"/>
          </xsl:call-template>
        </span>
        <span class="vh">
          <xsl:call-template name="t"><xsl:with-param name="k" select="'hist.strip'"/></xsl:call-template>
          <xsl:text>: </xsl:text>
          <xsl:for-each select="$earlier">
            <xsl:sort select="../@number" data-type="number" order="ascending"/>
            <xsl:call-template name="history-run-word"/>
            <xsl:text>; </xsl:text>
          </xsl:for-each>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'hist.now'"/></xsl:call-template>
          <xsl:text>: </xsl:text>
          <xsl:call-template name="word"><xsl:with-param name="k" select="'st'"/><xsl:with-param name="v" select="$outcome"/></xsl:call-template>
          <xsl:text>. </xsl:text>
        </span>
        <xsl:text> </xsl:text>
        <xsl:call-template name="history-label"><xsl:with-param name="c" select="$trend/@classification"/></xsl:call-template>
      </span>
      <xsl:text> </xsl:text>
    </xsl:if>
  </xsl:template>

  <!-- One mark: the TestCaseRun in context, or this run's status $s. -->
  <xsl:template name="history-mark">
    <xsl:param name="s"><xsl:value-of select="@status"/></xsl:param>
    <xsl:param name="now" select="false()"/>
    <span>
      <xsl:attribute name="class">
        <xsl:text>hm </xsl:text>
        <xsl:call-template name="status-class"><xsl:with-param name="s" select="$s"/></xsl:call-template>
        <xsl:if test="$now"> now</xsl:if>
      </xsl:attribute>
      <xsl:attribute name="title">
        <xsl:choose>
          <xsl:when test="$now"><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.now'"/></xsl:call-template><xsl:text>: </xsl:text></xsl:when>
          <xsl:otherwise><xsl:call-template name="history-run-name"/><xsl:text>: </xsl:text></xsl:otherwise>
        </xsl:choose>
        <xsl:call-template name="word"><xsl:with-param name="k" select="'st'"/><xsl:with-param name="v" select="$s"/></xsl:call-template>
      </xsl:attribute>
    </span>
  </xsl:template>

  <!-- "Run 12 (time)" of the TestCaseRun in context. -->
  <xsl:template name="history-run-name">
    <xsl:call-template name="t"><xsl:with-param name="k" select="'hist.run'"/></xsl:call-template>
    <xsl:value-of select="concat(' ', ../@number, ' (', ../@time, ')')"/>
  </xsl:template>

  <!-- "Run 12: Failed" of the TestCaseRun in context. -->
  <xsl:template name="history-run-word">
    <xsl:variable name="s"><xsl:value-of select="@status"/></xsl:variable>
    <xsl:call-template name="t"><xsl:with-param name="k" select="'hist.run'"/></xsl:call-template>
    <xsl:value-of select="concat(' ', ../@number, ': ')"/>
    <xsl:call-template name="word"><xsl:with-param name="k" select="'st'"/><xsl:with-param name="v" select="$s"/></xsl:call-template>
  </xsl:template>

  <!-- The classification as a label; its word is the label's text. -->
  <xsl:template name="history-label">
    <xsl:param name="c"/>
    <span class="hist-label hl-{translate($c, ' ', '-')}">
      <xsl:call-template name="word"><xsl:with-param name="k" select="'hc'"/><xsl:with-param name="v" select="$c"/></xsl:call-template>
    </span>
  </xsl:template>

  <!-- ===== Problems table ===== -->

  <!-- The label of a test case that did not pass, unless it merely stays as
       it was (still failing). -->
  <xsl:template name="history-problem-mark">
    <xsl:variable name="c" select="string(key('hist-trend', @fullname)[1]/@classification)"/>
    <xsl:if test="$c != '' and $c != 'still failing' and $c != 'stable'">
      <xsl:text> </xsl:text>
      <xsl:call-template name="history-label"><xsl:with-param name="c" select="$c"/></xsl:call-template>
    </xsl:if>
  </xsl:template>

  <xsl:template name="history-problems-note">
    <xsl:if test="/TestResult/History">
      <span class="hist-note"><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.newFirst'"/></xsl:call-template></span>
    </xsl:if>
  </xsl:template>

  <!-- ===== Trend on a context report ===== -->

  <xsl:template match="History" mode="trend">
    <xsl:variable name="cases" select="../TestContextResult/TestCaseResult"/>
    <xsl:if test="../TestContextResult">
      <xsl:variable name="nowTotal" select="count($cases)"/>
      <xsl:variable name="nowPassed" select="count($cases[@status = 'PASSED'])"/>
      <xsl:variable name="runs" select="Run"/>
      <xsl:variable name="n" select="count($runs) + 1"/>
      <xsl:variable name="mostEarlier">
        <xsl:for-each select="$runs">
          <xsl:sort select="count(TestCaseRun)" data-type="number" order="descending"/>
          <xsl:if test="position() = 1"><xsl:value-of select="count(TestCaseRun)"/></xsl:if>
        </xsl:for-each>
      </xsl:variable>
      <xsl:variable name="most">
        <xsl:choose>
          <xsl:when test="string($mostEarlier) != '' and $mostEarlier &gt; $nowTotal"><xsl:value-of select="$mostEarlier"/></xsl:when>
          <xsl:when test="$nowTotal &gt; 0"><xsl:value-of select="$nowTotal"/></xsl:when>
          <xsl:otherwise>1</xsl:otherwise>
        </xsl:choose>
      </xsl:variable>
      <xsl:variable name="passedWord">
        <xsl:call-template name="word"><xsl:with-param name="k" select="'st'"/><xsl:with-param name="v" select="'PASSED'"/></xsl:call-template>
      </xsl:variable>
      <!-- "Trend: Run 1: Passed 7/9; ...; This run: Passed 6/9" -->
      <xsl:variable name="label">
        <xsl:call-template name="t"><xsl:with-param name="k" select="'hist.trend'"/></xsl:call-template>
        <xsl:text>: </xsl:text>
        <xsl:for-each select="$runs">
          <xsl:sort select="@number" data-type="number" order="ascending"/>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'hist.run'"/></xsl:call-template>
          <xsl:value-of select="concat(' ', @number, ': ', $passedWord, ' ', count(TestCaseRun[@status = 'PASSED']), '/', count(TestCaseRun), '; ')"/>
        </xsl:for-each>
        <xsl:call-template name="t"><xsl:with-param name="k" select="'hist.now'"/></xsl:call-template>
        <xsl:value-of select="concat(': ', $passedWord, ' ', $nowPassed, '/', $nowTotal)"/>
      </xsl:variable>
      <div class="hist-trend" role="region" aria-labelledby="hist-trend-title">
        <h3 id="hist-trend-title"><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.trend'"/></xsl:call-template></h3>
        <!-- One slot of ten units a run; passed test cases rise above the
             line, the others hang below it, so the two read apart without
             colour. -->
        <svg class="hist-chart" viewBox="0 0 {$n * 10} {2 * $most + 1}" preserveAspectRatio="none"
             role="img" aria-label="{$label}" style="max-width:{$n * 36}px">
          <xsl:for-each select="$runs">
            <xsl:sort select="@number" data-type="number" order="ascending"/>
            <xsl:call-template name="history-bars">
              <xsl:with-param name="i" select="position() - 1"/>
              <xsl:with-param name="passed" select="count(TestCaseRun[@status = 'PASSED'])"/>
              <xsl:with-param name="total" select="count(TestCaseRun)"/>
              <xsl:with-param name="most" select="$most"/>
            </xsl:call-template>
          </xsl:for-each>
          <xsl:call-template name="history-bars">
            <xsl:with-param name="i" select="$n - 1"/>
            <xsl:with-param name="passed" select="$nowPassed"/>
            <xsl:with-param name="total" select="$nowTotal"/>
            <xsl:with-param name="most" select="$most"/>
            <xsl:with-param name="now" select="true()"/>
          </xsl:call-template>
          <rect class="axis" x="0" y="{$most + 0.4}" width="{$n * 10}" height="0.2"/>
        </svg>
        <p class="hist-legend">
          <span class="hl-key st-pass" aria-hidden="true">&#x25B2;</span>
          <xsl:text> </xsl:text>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'hist.above'"/></xsl:call-template>
          <xsl:text> </xsl:text>
          <span class="hl-key st-fail" aria-hidden="true">&#x25BC;</span>
          <xsl:text> </xsl:text>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'hist.below'"/></xsl:call-template>
        </p>
        <details class="hist-numbers">
          <summary><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.numbers'"/></xsl:call-template></summary>
          <!-- Scrolls in its own box on a narrow screen, from the keyboard too. -->
          <div class="scroll" tabindex="0" role="group">
          <xsl:attribute name="aria-label"><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.numbers'"/></xsl:call-template></xsl:attribute>
          <table class="grid">
            <thead>
              <tr>
                <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.run'"/></xsl:call-template></th>
                <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.time'"/></xsl:call-template></th>
                <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'status'"/></xsl:call-template></th>
                <th scope="col"><xsl:call-template name="word"><xsl:with-param name="k" select="'st'"/><xsl:with-param name="v" select="'PASSED'"/></xsl:call-template></th>
                <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'notPassed'"/></xsl:call-template></th>
              </tr>
            </thead>
            <tbody>
              <tr>
                <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.now'"/></xsl:call-template></th>
                <td><xsl:value-of select="../ResultHeader/@time"/></td>
                <td><xsl:call-template name="badge"><xsl:with-param name="s" select="../TestContextResult/@status"/></xsl:call-template></td>
                <td class="num"><xsl:value-of select="$nowPassed"/></td>
                <td class="num"><xsl:value-of select="$nowTotal - $nowPassed"/></td>
              </tr>
              <xsl:for-each select="$runs">
                <tr>
                  <th scope="row"><xsl:value-of select="@number"/></th>
                  <td><xsl:value-of select="@time"/></td>
                  <td><xsl:call-template name="badge"><xsl:with-param name="s" select="@status"/></xsl:call-template></td>
                  <td class="num"><xsl:value-of select="count(TestCaseRun[@status = 'PASSED'])"/></td>
                  <td class="num"><xsl:value-of select="count(TestCaseRun[@status != 'PASSED' or not(@status)])"/></td>
                </tr>
              </xsl:for-each>
            </tbody>
          </table>
          </div>
        </details>
      </div>
    </xsl:if>
  </xsl:template>

  <!-- The two bars of the run in slot $i. -->
  <xsl:template name="history-bars">
    <xsl:param name="i"/>
    <xsl:param name="passed"/>
    <xsl:param name="total"/>
    <xsl:param name="most"/>
    <xsl:param name="now" select="false()"/>
    <xsl:variable name="extra"><xsl:if test="$now"> now</xsl:if></xsl:variable>
    <xsl:if test="$passed &gt; 0">
      <rect class="st-pass{$extra}" x="{$i * 10 + 1.5}" y="{$most - $passed}" width="7" height="{$passed}"/>
    </xsl:if>
    <xsl:if test="$total - $passed &gt; 0">
      <rect class="st-fail{$extra}" x="{$i * 10 + 1.5}" y="{$most + 1}" width="7" height="{$total - $passed}"/>
    </xsl:if>
  </xsl:template>

  <!-- ===== Style ===== -->

  <!-- Marks and bars are drawn with borders and fills, which print even when
       the browser leaves out backgrounds. -->
  <xsl:template name="history-css">
    <xsl:text>
.hist{white-space:nowrap;margin-right:6px;}
.hist-strip{display:inline-flex;gap:3px;align-items:center;vertical-align:middle;margin-right:4px;}
.hm{display:inline-block;box-sizing:border-box;width:11px;height:11px;border:5.5px solid var(--bar);border-radius:0;}
.hm.st-pass{border-radius:50%;}
.hm.st-error{border-width:0 5.5px 11px;border-color:transparent transparent var(--bar);}
.hm.st-other{border-width:2px;border-radius:50%;}
.hm.now{outline:2px solid var(--fg);outline-offset:1px;margin-left:3px;}
.vh{position:absolute;width:1px;height:1px;overflow:hidden;clip:rect(0 0 0 0);clip-path:inset(50%);white-space:nowrap;}
.hist-label{display:inline-block;padding:0 7px;border-radius:4px;font-size:.82em;font-weight:600;border:1px solid;white-space:nowrap;}
.hl-new{color:var(--fail);background:var(--fail-bg);}
.hl-fixed{color:var(--pass);background:var(--pass-bg);}
.hl-flaky{color:var(--nt);background:var(--nt-bg);border-style:dashed;}
.hl-still-failing{color:var(--error);background:var(--error-bg);}
.hl-stable{color:var(--muted);border-color:var(--line);}
.hist-trend h3{font-size:1.05em;margin:18px 0 6px;}
svg.hist-chart{display:block;width:100%;min-width:160px;height:120px;background:var(--card);border:1px solid var(--line);border-radius:4px;}
svg.hist-chart rect{fill:var(--bar);}
svg.hist-chart rect.now{stroke:var(--fg);stroke-width:1.5px;vector-effect:non-scaling-stroke;}
svg.hist-chart rect.axis{fill:var(--muted);}
.hist-note{display:block;font-weight:400;color:var(--muted);font-size:.9em;}
.hist-legend{margin:4px 0;color:var(--muted);font-size:.88em;}
.hl-key{color:var(--bar);}
.hist-numbers summary{cursor:pointer;color:var(--muted);font-size:.88em;}
@media print{.hm,.hist-label,svg.hist-chart rect{print-color-adjust:exact;-webkit-print-color-adjust:exact;}}
</xsl:text>
  </xsl:template>

</xsl:stylesheet>
