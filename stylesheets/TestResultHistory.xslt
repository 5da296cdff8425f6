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
                           cases over the runs as bars with their counts,
                           with the numbers as a table
    history-banner         in the banner: new failures, fixed and flaky
                           test cases, each linked to the first of its kind
    history-problem-mark   in the Problems table: the classification label
    problems-caption       its caption, which says the order shown (new
                           failures first: the table sorts by the
                           "hist-trend" key)
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
    <xsl:value-of select="concat(' ', ../@number, ' (')"/>
    <xsl:call-template name="header-time"><xsl:with-param name="text" select="../@time"/></xsl:call-template>
    <xsl:text>)</xsl:text>
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

  <!-- The caption of the Problems table says the order it shows: with
       earlier runs new failures come first (the table sorts by the
       "hist-trend" key). -->
  <xsl:template name="problems-caption">
    <xsl:call-template name="t">
      <xsl:with-param name="k">
        <xsl:choose>
          <xsl:when test="/TestResult/History">hist.problemsCaption</xsl:when>
          <xsl:otherwise>problems.caption</xsl:otherwise>
        </xsl:choose>
      </xsl:with-param>
    </xsl:call-template>
  </xsl:template>

  <!-- ===== Filters ===== -->

  <!-- Beside the status filters: only the new failures, the fixed or the
       flaky test cases, each with its count (none ticked shows all). -->
  <xsl:template name="history-filters">
    <xsl:param name="cases"/>
    <xsl:if test="/TestResult/History/TestCaseTrend">
      <fieldset class="filters changes">
        <legend><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.only'"/></xsl:call-template></legend>
        <xsl:for-each select="document('')/*/l:changes/l:c">
          <xsl:variable name="c" select="string(.)"/>
          <label class="filter">
            <input type="checkbox" value="{$c}"/>
            <xsl:text> </xsl:text>
            <xsl:call-template name="history-label"><xsl:with-param name="c" select="$c"/></xsl:call-template>
            <xsl:text> </xsl:text>
            <span class="n"><xsl:value-of select="count($cases[key('hist-trend', @fullname)[1]/@classification = $c])"/></span>
          </label>
        </xsl:for-each>
      </fieldset>
    </xsl:if>
  </xsl:template>
  <l:changes><l:c>new</l:c><l:c>fixed</l:c><l:c>flaky</l:c></l:changes>

  <!-- The classification of the TestCaseResult in context, for the filter. -->
  <xsl:template name="history-data">
    <xsl:variable name="c" select="key('hist-trend', @fullname)[1]/@classification"/>
    <xsl:if test="$c">
      <xsl:attribute name="data-change"><xsl:value-of select="$c"/></xsl:attribute>
    </xsl:if>
  </xsl:template>

  <!-- ===== In the banner ===== -->

  <!-- One line of what changed since the run before: new failures, fixed
       and flaky test cases, each count a link to the first of its kind in
       execution order. -->
  <xsl:template name="history-banner">
    <xsl:param name="cases"/>
    <xsl:if test="/TestResult/History/TestCaseTrend">
      <p id="hist-banner">
        <span class="vh"><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.changes'"/></xsl:call-template><xsl:text>: </xsl:text></span>
        <xsl:call-template name="history-banner-count">
          <xsl:with-param name="cases" select="$cases"/>
          <xsl:with-param name="c" select="'new'"/>
          <xsl:with-param name="k" select="'hist.nNew'"/>
        </xsl:call-template>
        <xsl:text> </xsl:text>
        <xsl:call-template name="history-banner-count">
          <xsl:with-param name="cases" select="$cases"/>
          <xsl:with-param name="c" select="'fixed'"/>
          <xsl:with-param name="k" select="'hist.nFixed'"/>
        </xsl:call-template>
        <xsl:text> </xsl:text>
        <xsl:call-template name="history-banner-count">
          <xsl:with-param name="cases" select="$cases"/>
          <xsl:with-param name="c" select="'flaky'"/>
          <xsl:with-param name="k" select="'hist.nFlaky'"/>
        </xsl:call-template>
      </p>
    </xsl:if>
  </xsl:template>

  <xsl:template name="history-banner-count">
    <xsl:param name="cases"/>
    <xsl:param name="c"/>
    <xsl:param name="k"/>
    <xsl:variable name="these" select="$cases[key('hist-trend', @fullname)[1]/@classification = $c]"/>
    <xsl:variable name="text">
      <xsl:call-template name="fmt">
        <xsl:with-param name="k" select="$k"/>
        <xsl:with-param name="n"><xsl:call-template name="int"><xsl:with-param name="n" select="count($these)"/></xsl:call-template></xsl:with-param>
      </xsl:call-template>
    </xsl:variable>
    <xsl:choose>
      <xsl:when test="$these">
        <xsl:variable name="cid"><xsl:for-each select="$these[1]"><xsl:call-template name="case-id"/></xsl:for-each></xsl:variable>
        <a id="hist-first-{$c}" class="hist-label hl-{$c}" href="#{$cid}"><xsl:value-of select="$text"/></a>
      </xsl:when>
      <xsl:otherwise>
        <span class="hist-label hl-none"><xsl:value-of select="$text"/></span>
      </xsl:otherwise>
    </xsl:choose>
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
        <!-- One column a run, as wide as the page allows, oldest first:
             passed test cases rise above the line, the others hang below
             it, each bar with its count and the run's number as text, so
             the two read apart without colour. -->
        <div class="hist-chart" role="img" aria-label="{$label}">
          <xsl:for-each select="$runs">
            <xsl:sort select="@number" data-type="number" order="ascending"/>
            <xsl:call-template name="history-bars">
              <xsl:with-param name="run" select="concat('#', @number)"/>
              <xsl:with-param name="passed" select="count(TestCaseRun[@status = 'PASSED'])"/>
              <xsl:with-param name="total" select="count(TestCaseRun)"/>
              <xsl:with-param name="most" select="$most"/>
            </xsl:call-template>
          </xsl:for-each>
          <xsl:call-template name="history-bars">
            <xsl:with-param name="run"><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.now'"/></xsl:call-template></xsl:with-param>
            <xsl:with-param name="passed" select="$nowPassed"/>
            <xsl:with-param name="total" select="$nowTotal"/>
            <xsl:with-param name="most" select="$most"/>
            <xsl:with-param name="now" select="true()"/>
          </xsl:call-template>
        </div>
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
            <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'hist.runsOrder'"/></xsl:call-template></caption>
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
                <td><xsl:call-template name="header-time"><xsl:with-param name="text" select="../ResultHeader/@time"/></xsl:call-template></td>
                <td><xsl:call-template name="badge"><xsl:with-param name="s" select="../TestContextResult/@status"/></xsl:call-template></td>
                <td class="num"><xsl:value-of select="$nowPassed"/></td>
                <td class="num"><xsl:value-of select="$nowTotal - $nowPassed"/></td>
              </tr>
              <xsl:for-each select="$runs">
                <tr>
                  <th scope="row"><xsl:value-of select="@number"/></th>
                  <td><xsl:call-template name="header-time"><xsl:with-param name="text" select="@time"/></xsl:call-template></td>
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

  <!-- The column of one run: its bars in percent of the largest run. -->
  <xsl:template name="history-bars">
    <xsl:param name="run"/>
    <xsl:param name="passed"/>
    <xsl:param name="total"/>
    <xsl:param name="most"/>
    <xsl:param name="now" select="false()"/>
    <span>
      <xsl:attribute name="class">
        <xsl:text>hb</xsl:text>
        <xsl:if test="$now"> now</xsl:if>
      </xsl:attribute>
      <span class="hb-up">
        <span class="hb-n"><xsl:value-of select="$passed"/></span>
        <span class="hb-bar st-pass" style="height:{round(100 * $passed div $most)}%"></span>
      </span>
      <span class="hb-down">
        <span class="hb-bar st-fail" style="height:{round(100 * ($total - $passed) div $most)}%"></span>
        <span class="hb-n"><xsl:value-of select="$total - $passed"/></span>
      </span>
      <span class="hb-run"><xsl:value-of select="$run"/></span>
    </span>
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
.hist-chart{display:flex;width:100%;box-sizing:border-box;gap:2px;padding:4px 6px;background:var(--card);border:1px solid var(--line);border-radius:4px;font-size:.78em;font-variant-numeric:tabular-nums;}
.hb{flex:1 1 0;min-width:0;display:flex;flex-direction:column;align-items:stretch;text-align:center;}
.hb-up,.hb-down{display:flex;flex-direction:column;height:64px;}
.hb-up{justify-content:flex-end;border-bottom:1px solid var(--muted);}
.hb-bar{display:block;margin:0 18%;min-height:0;background:var(--bar);}
.hb-n{line-height:1.3;}
.hb-run{color:var(--muted);overflow:hidden;text-overflow:ellipsis;white-space:nowrap;}
.hb.now .hb-bar{outline:1.5px solid var(--fg);}
.hb.now .hb-run{color:var(--fg);font-weight:600;}
#hist-banner{display:flex;flex-wrap:wrap;gap:6px;}
#hist-banner a.hist-label{text-decoration:none;}
#hist-banner a.hist-label:hover{text-decoration:underline;}
.hl-none{color:var(--muted);border-color:var(--line);font-weight:400;}
.hist-legend{margin:4px 0;color:var(--muted);font-size:.88em;}
.hl-key{color:var(--bar);}
.hist-numbers summary{cursor:pointer;color:var(--muted);font-size:.88em;}
@media print{.hm,.hist-label,.hb-bar{print-color-adjust:exact;-webkit-print-color-adjust:exact;}}
</xsl:text>
  </xsl:template>

</xsl:stylesheet>
