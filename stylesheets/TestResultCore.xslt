<?xml version="1.0" encoding="UTF-8"?>
<!--
  Shared body of the qendor HTML reports.

  A language file (TestResult2ENU.xslt and its siblings) imports this file and
  supplies only what differs between languages:
    $lang       the value of the html lang attribute
    $fonts      the CSS font stack
    $intFormat  the format-number pattern of counts (grouping of thousands)
    $pctFormat  the format-number pattern of percentages
    $T          its strings: l:s elements with a key "k" and, for words that
                stand for a value of the result document, the original value
                in "src".
  Every label goes through $T; the run's own values (names, messages, paths,
  GUIDs) are written as they stand, escaped by the serializer.

  The page is one self-contained file: inline CSS, a small script, no
  external assets; images are linked by the relative paths of the document.
  Everything is readable and printable with scripts off: the script only adds
  the filters, the search, the keys and the theme toggle. Test cases are
  native details blocks (problems open, passed ones closed) so that the
  browser's own find reaches every row. A large context (see "Large
  contexts") keeps its closed blocks light: their assertions are lines of
  text, and only closed blocks skip their layout off screen
  (content-visibility), which costs nothing in place since a closed block is
  one line high. Open blocks are laid out whole, so a jump's target lands
  where the jump put it and stays there: nothing above it changes its height
  later (the diagram images have a fixed box, so loading one moves nothing).
  The verdict comes first: a banner with the status word of the document,
  the exit status and one line that says what went wrong, linked to it. A
  test case report is that banner and the one test case; the counts, filters
  and problems list belong to a context report only.
-->
<xsl:stylesheet version="1.0"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:l="urn:qendor:strings"
    exclude-result-prefixes="l">

  <xsl:output method="html" encoding="UTF-8" indent="no"
              doctype-system="about:legacy-compat"/>

  <!-- Earlier runs, when the document has a History element. -->
  <xsl:include href="TestResultHistory.xslt"/>
  <!-- The closed blocks and grouped problems of a large context. -->
  <xsl:include href="TestResultLarge.xslt"/>

  <!-- The index page of an output folder (qendor -index), for index.xml. -->
  <xsl:include href="TestResultIndex.xslt"/>

  <!-- Defaults, overridden by the importing language file. -->
  <xsl:variable name="lang" select="'en'"/>
  <xsl:variable name="fonts"
      select="'system-ui, -apple-system, &quot;Segoe UI&quot;, Roboto, &quot;Noto Sans&quot;, Arial, sans-serif'"/>
  <xsl:variable name="intFormat" select="'#,##0'"/>
  <xsl:variable name="pctFormat" select="'0.#'"/>
  <xsl:variable name="pctSign" select="'%'"/>
  <!-- word-break of headings and captions: keep-all where a language breaks
       only between words (Korean) or wants its words kept whole (Chinese,
       Japanese); such a heading still breaks where it would overflow. -->
  <xsl:variable name="headingBreak" select="'normal'"/>
  <xsl:variable name="T" select="/.."/>

  <!-- The verification result that the program gives to a test case that did
       not terminate. Such a test case keeps the status ERROR in the document,
       and the page shows that word; only the exit status of a test case
       report tells it apart. -->
  <xsl:variable name="notTerminatedText" select="'TestCase did not terminate as expected'"/>

  <!-- Test cases by their status word. -->
  <xsl:key name="case-by-status" match="TestCaseResult" use="string(@status)"/>
  <!-- Assertions that did not pass, by their test case. -->
  <xsl:key name="bad-by-case" match="AssertionInfo[@status != 'PASSED']" use="generate-id(../..)"/>


  <!-- The strings of the language file, by key and by key and value (a tab
       between the two, which an attribute value of the strings cannot hold).
       Looked up with the strings document as the context, see "t". -->
  <!-- The diagnosis of a run with -explain, drawn on the model. -->
  <xsl:include href="TestResultDiagnosis.xslt"/>
  <!-- The model coverage of a run with -coverage. -->
  <xsl:include href="TestResultCoverage.xslt"/>

  <xsl:key name="label" match="l:s" use="@k"/>
  <xsl:key name="word" match="l:s[@src]" use="concat(@k, '&#9;', @src)"/>

  <!-- Words needed once per assertion row, looked up once per page. -->
  <xsl:variable name="w.PASSED" select="string($T[@k = 'st'][@src = 'PASSED'])"/>
  <xsl:variable name="w.FAILED" select="string($T[@k = 'st'][@src = 'FAILED'])"/>
  <xsl:variable name="w.ERROR" select="string($T[@k = 'st'][@src = 'ERROR'])"/>
  <xsl:variable name="w.internal" select="string($T[@k = 'arb'][@src = 'internal'])"/>
  <xsl:variable name="w.external" select="string($T[@k = 'arb'][@src = 'external'])"/>

  <!-- ===== Strings ===== -->

  <!-- A label by key. -->
  <xsl:template name="t">
    <xsl:param name="k"/>
    <xsl:for-each select="$T[1]"><xsl:value-of select="key('label', $k)"/></xsl:for-each>
  </xsl:template>

  <!-- A value of the result document put into words: the translation when the
       language knows the value, else the value as it stands. -->
  <xsl:template name="word">
    <xsl:param name="k"/>
    <xsl:param name="v"/>
    <xsl:for-each select="$T[1]">
      <xsl:variable name="hit" select="key('word', concat($k, '&#9;', $v))"/>
      <xsl:choose>
        <xsl:when test="$hit"><xsl:value-of select="$hit"/></xsl:when>
        <xsl:otherwise><xsl:value-of select="$v"/></xsl:otherwise>
      </xsl:choose>
    </xsl:for-each>
    <xsl:if test="not($T)"><xsl:value-of select="$v"/></xsl:if>
  </xsl:template>

  <!-- A count in the language's pattern. Counts below a thousand need no
       grouping, so they skip format-number, which costs more than the rest
       of a test case's header. -->
  <xsl:template name="int">
    <xsl:param name="n"/>
    <xsl:choose>
      <xsl:when test="$n &gt;= 0 and $n &lt; 1000 and $n = floor($n)"><xsl:value-of select="$n"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="format-number($n, $intFormat)"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A percentage in the language's pattern. A share that is neither none
       nor all is never rounded to either: below 0.1 it reads "< 0.1%", above
       99.9 "> 99.9%". -->
  <xsl:template name="pct">
    <xsl:param name="n"/>
    <xsl:choose>
      <xsl:when test="$n &gt; 0 and $n &lt; 0.1">
        <xsl:value-of select="concat('&lt; ', format-number(0.1, $pctFormat))"/>
      </xsl:when>
      <xsl:when test="$n &lt; 100 and $n &gt; 99.9">
        <xsl:value-of select="concat('&gt; ', format-number(99.9, $pctFormat))"/>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="format-number($n, $pctFormat)"/></xsl:otherwise>
    </xsl:choose>
    <xsl:value-of select="$pctSign"/>
  </xsl:template>

  <!-- ===== Header values in the report's language ===== -->

  <!-- Every time on the page in one form, the language's "date" pattern ({Y}
       year, {M} month and {D} day as numbers, {N} the month's three-letter
       name, {W} the "wd" word of the weekday, {T} the clock): the header's,
       written by the C library as "Sat Nov  2 10:15:42 2025", and the
       history's, ISO 8601 in UTC ("2025-11-02T10:15:42Z"), which says "UTC"
       after it. A time in any other form shows as it stands. -->
  <xsl:template name="header-time">
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
    <xsl:choose>
      <xsl:when test="string-length($month) = 3 and contains($months, $month) and $m = floor($m)
                      and string($day) and string-length($day) &lt;= 2 and translate($day, '0123456789', '') = ''
                      and string-length($clock) = 8 and translate($clock, '0123456789', '##########') = '##:##:##'
                      and string-length($year) = 4 and translate($year, '0123456789', '') = ''">
        <xsl:call-template name="date-text">
          <xsl:with-param name="y" select="number($year)"/>
          <xsl:with-param name="m" select="$m"/>
          <xsl:with-param name="d" select="number($day)"/>
          <xsl:with-param name="clock" select="$clock"/>
          <xsl:with-param name="weekday" select="substring-before($t, ' ')"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:when test="string-length($t) = 20 and translate($t, '0123456789', '##########') = '####-##-##T##:##:##Z'">
        <xsl:variable name="y" select="number(substring($t, 1, 4))"/>
        <xsl:variable name="mm" select="number(substring($t, 6, 2))"/>
        <xsl:variable name="d" select="number(substring($t, 9, 2))"/>
        <!-- The weekday of a Gregorian date (0 Sunday), from the year
             shifted to start in March. -->
        <xsl:variable name="ys" select="$y - number($mm &lt; 3)"/>
        <xsl:variable name="w" select="($ys + floor($ys div 4) - floor($ys div 100) + floor($ys div 400)
                                        + number(substring('032503514624', $mm, 1)) + $d) mod 7"/>
        <xsl:call-template name="date-text">
          <xsl:with-param name="y" select="$y"/>
          <xsl:with-param name="m" select="$mm"/>
          <xsl:with-param name="d" select="$d"/>
          <xsl:with-param name="clock" select="substring($t, 12, 8)"/>
          <xsl:with-param name="weekday" select="substring('SunMonTueWedThuFriSat', 3 * $w + 1, 3)"/>
        </xsl:call-template>
        <xsl:text> UTC</xsl:text>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$text"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="date-text">
    <xsl:param name="y"/>
    <xsl:param name="m"/>
    <xsl:param name="d"/>
    <xsl:param name="clock"/>
    <xsl:param name="weekday"/>
    <xsl:variable name="w">
      <xsl:call-template name="word"><xsl:with-param name="k" select="'wd'"/><xsl:with-param name="v" select="$weekday"/></xsl:call-template>
    </xsl:variable>
    <xsl:call-template name="date-fill">
      <xsl:with-param name="s"><xsl:call-template name="t"><xsl:with-param name="k" select="'date'"/></xsl:call-template></xsl:with-param>
      <xsl:with-param name="values" select="concat('{Y}', $y, '&#9;{M}', $m, '&#9;{D}', $d, '&#9;{N}',
                                                   substring('JanFebMarAprMayJunJulAugSepOctNovDec', 3 * $m - 2, 3),
                                                   '&#9;{W}', $w, '&#9;{T}', $clock, '&#9;')"/>
    </xsl:call-template>
  </xsl:template>

  <!-- `s` with each "{X}" replaced by its value in `values` ("{X}value" and a
       tab, one after the other). -->
  <xsl:template name="date-fill">
    <xsl:param name="s"/>
    <xsl:param name="values"/>
    <xsl:choose>
      <xsl:when test="contains($s, '{') and contains(substring-after($s, '{'), '}')">
        <xsl:variable name="token" select="concat('{', substring-before(substring-after($s, '{'), '}'), '}')"/>
        <xsl:value-of select="substring-before($s, '{')"/>
        <xsl:choose>
          <xsl:when test="contains($values, $token)">
            <xsl:value-of select="substring-before(substring-after($values, $token), '&#9;')"/>
          </xsl:when>
          <xsl:otherwise><xsl:value-of select="$token"/></xsl:otherwise>
        </xsl:choose>
        <xsl:call-template name="date-fill">
          <xsl:with-param name="s" select="substring-after($s, $token)"/>
          <xsl:with-param name="values" select="$values"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$s"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A user or machine name: the program writes "unknown" where the
       environment named none, which the language says in its own word. -->
  <xsl:template name="known">
    <xsl:param name="v"/>
    <xsl:choose>
      <xsl:when test="$v = 'unknown'"><xsl:call-template name="t"><xsl:with-param name="k" select="'unknown'"/></xsl:call-template></xsl:when>
      <xsl:otherwise><xsl:value-of select="$v"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A version as the header joins it, "3.1, build 88": without a build
       number the ", build " the program writes all the same is left out. -->
  <xsl:template name="version">
    <xsl:param name="v"/>
    <xsl:variable name="cut" select="string-length($v) - string-length(', build ')"/>
    <xsl:choose>
      <xsl:when test="$cut &gt;= 0 and substring($v, $cut + 1) = ', build '"><xsl:value-of select="substring($v, 1, $cut)"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="$v"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A sentence of the language file with its "{n}" and "{m}" filled in
       (each at most once, in either order). -->
  <xsl:template name="fmt">
    <xsl:param name="k"/>
    <xsl:param name="n"/>
    <xsl:param name="m"/>
    <xsl:call-template name="fill">
      <xsl:with-param name="s"><xsl:call-template name="t"><xsl:with-param name="k" select="$k"/></xsl:call-template></xsl:with-param>
      <xsl:with-param name="n" select="$n"/>
      <xsl:with-param name="m" select="$m"/>
    </xsl:call-template>
  </xsl:template>

  <xsl:template name="fill">
    <xsl:param name="s"/>
    <xsl:param name="n"/>
    <xsl:param name="m"/>
    <xsl:choose>
      <xsl:when test="contains($s, '{n}') and not(contains(substring-before($s, '{n}'), '{m}'))">
        <xsl:value-of select="substring-before($s, '{n}')"/>
        <xsl:value-of select="$n"/>
        <xsl:call-template name="fill">
          <xsl:with-param name="s" select="substring-after($s, '{n}')"/>
          <xsl:with-param name="m" select="$m"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:when test="contains($s, '{m}')">
        <xsl:value-of select="substring-before($s, '{m}')"/>
        <xsl:value-of select="$m"/>
        <xsl:call-template name="fill">
          <xsl:with-param name="s" select="substring-after($s, '{m}')"/>
          <xsl:with-param name="n" select="$n"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$s"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A path that breaks only after its separators ("/" or "\"), never
       inside a name. One of up to 20 characters fits any column whole and is
       written as it stands, which spares the rows of a large report the
       recursion. -->
  <xsl:template name="path">
    <xsl:param name="p"/>
    <xsl:variable name="slashed" select="translate($p, '\', '/')"/>
    <xsl:choose>
      <xsl:when test="string-length($p) &gt; 20 and contains($slashed, '/')">
        <xsl:variable name="cut" select="string-length(substring-before($slashed, '/')) + 1"/>
        <xsl:value-of select="substring($p, 1, $cut)"/>
        <wbr/>
        <xsl:call-template name="path"><xsl:with-param name="p" select="substring($p, $cut + 1)"/></xsl:call-template>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$p"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- ===== Status ===== -->

  <!-- The status a test case ends the run with: its status word, or
       NOT_TERMINATED for an ERROR with the not-terminated verdict. Only the
       exit status of a test case report depends on the difference. -->
  <xsl:template name="case-outcome">
    <xsl:param name="tc" select="."/>
    <xsl:choose>
      <xsl:when test="$tc/@status = 'ERROR' and $tc/@verificationResult = $notTerminatedText">NOT_TERMINATED</xsl:when>
      <xsl:otherwise><xsl:value-of select="$tc/@status"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- CSS class and symbol of a status, so that it is never told by colour
       alone: each status has its own shape as well as its word. -->
  <xsl:template name="status-class">
    <xsl:param name="s"/>
    <xsl:choose>
      <xsl:when test="$s = 'PASSED'">st-pass</xsl:when>
      <xsl:when test="$s = 'FAILED'">st-fail</xsl:when>
      <xsl:when test="$s = 'ERROR'">st-error</xsl:when>
      <xsl:otherwise>st-other</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="status-symbol">
    <xsl:param name="s"/>
    <xsl:choose>
      <xsl:when test="$s = 'PASSED'">&#x2714;</xsl:when>
      <xsl:when test="$s = 'FAILED'">&#x2718;</xsl:when>
      <xsl:when test="$s = 'ERROR'">!</xsl:when>
      <xsl:otherwise>?</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The status key of the filters: one of four, any other status counting
       as UNDEFINED. -->
  <xsl:template name="status-key">
    <xsl:param name="s"/>
    <xsl:choose>
      <xsl:when test="$s = 'PASSED' or $s = 'FAILED' or $s = 'ERROR'"><xsl:value-of select="$s"/></xsl:when>
      <xsl:otherwise>UNDEFINED</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="badge">
    <xsl:param name="s"/>
    <xsl:param name="id"/>
    <span>
      <xsl:if test="$id"><xsl:attribute name="id"><xsl:value-of select="$id"/></xsl:attribute></xsl:if>
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

  <!-- The anchor of a test case: stable across runs, made of its name. -->
  <xsl:template name="case-id">
    <xsl:param name="tc" select="."/>
    <xsl:value-of select="concat('tc-', translate($tc/@name, ' &#9;&#10;&#13;#%&quot;', '_______'))"/>
  </xsl:template>

  <!-- ===== Page ===== -->

  <xsl:template match="/">
    <xsl:apply-templates select="TestResult | TestIndex"/>
  </xsl:template>

  <xsl:template match="TestResult">
    <xsl:variable name="isContext" select="boolean(TestContextResult) or (@kind = 'rk_testcontext' and not(TestCaseResult))"/>
    <xsl:variable name="cases" select="TestContextResult/TestCaseResult | TestCaseResult"/>
    <html lang="{$lang}">
      <head>
        <meta charset="UTF-8"/>
        <title>
          <xsl:value-of select="ResultHeader/@name"/>
          <xsl:text> – </xsl:text>
          <xsl:call-template name="t">
            <xsl:with-param name="k">
              <xsl:choose>
                <xsl:when test="$isContext">title.context</xsl:when>
                <xsl:otherwise>title.case</xsl:otherwise>
              </xsl:choose>
            </xsl:with-param>
          </xsl:call-template>
        </title>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <meta name="color-scheme" content="light dark"/>
        <style>
          <xsl:text>body{font-family:</xsl:text>
          <xsl:value-of select="$fonts"/>
          <xsl:text>;}h1,h2,h3,caption,legend,th{word-break:</xsl:text>
          <xsl:value-of select="$headingBreak"/>
          <xsl:text>;}</xsl:text>
          <xsl:call-template name="css"/>
          <xsl:call-template name="history-css"/>
          <xsl:call-template name="large-css"/>
        </style>
      </head>
      <body>
        <a class="skip" href="#main">
          <xsl:call-template name="t"><xsl:with-param name="k" select="'skip'"/></xsl:call-template>
        </a>
        <div class="page">
          <header class="head">
            <xsl:apply-templates select="ResultHeader" mode="title"/>
            <xsl:call-template name="banner">
              <xsl:with-param name="cases" select="$cases"/>
              <xsl:with-param name="isContext" select="$isContext"/>
            </xsl:call-template>
            <xsl:apply-templates select="ResultHeader"/>
          </header>
          <xsl:call-template name="controls">
            <xsl:with-param name="cases" select="$cases"/>
            <xsl:with-param name="isContext" select="$isContext"/>
          </xsl:call-template>
          <main id="main" tabindex="-1">
            <xsl:choose>
              <xsl:when test="$isContext">
                <xsl:call-template name="summary">
                  <xsl:with-param name="cases" select="$cases"/>
                </xsl:call-template>
                <xsl:apply-templates select="History" mode="trend"/>
                <xsl:call-template name="problems">
                  <xsl:with-param name="cases" select="$cases"/>
                </xsl:call-template>
                <xsl:call-template name="coverage-section"/>
                <h2 id="cases" tabindex="-1">
                  <xsl:call-template name="t"><xsl:with-param name="k" select="'sec.cases'"/></xsl:call-template>
                </h2>
                <xsl:choose>
                  <xsl:when test="not($cases)">
                    <p class="empty"><xsl:call-template name="t"><xsl:with-param name="k" select="'none.cases'"/></xsl:call-template></p>
                  </xsl:when>
                  <xsl:otherwise>
                    <xsl:apply-templates select="$cases"/>
                    <p class="empty" id="nomatch" hidden="hidden">
                      <xsl:call-template name="t"><xsl:with-param name="k" select="'none.match'"/></xsl:call-template>
                    </p>
                  </xsl:otherwise>
                </xsl:choose>
              </xsl:when>
              <xsl:otherwise>
                <!-- A test case report: the one test case, open. -->
                <xsl:apply-templates select="$cases">
                  <xsl:with-param name="open" select="true()"/>
                </xsl:apply-templates>
                <xsl:call-template name="coverage-section"/>
              </xsl:otherwise>
            </xsl:choose>
          </main>
          <footer class="foot">
            <p><xsl:call-template name="t"><xsl:with-param name="k" select="'generated'"/></xsl:call-template></p>
          </footer>
        </div>
        <script>
          <xsl:call-template name="script"/>
        </script>
      </body>
    </html>
  </xsl:template>

  <!-- ===== Verdict banner ===== -->

  <!-- The first thing on the page: the status word with its symbol, the exit
       status and one line of what went wrong, linked to the first problem
       (of a context) or the first failing assertion (of a test case). -->
  <xsl:template name="banner">
    <xsl:param name="cases"/>
    <xsl:param name="isContext"/>
    <xsl:variable name="status">
      <xsl:choose>
        <xsl:when test="$isContext"><xsl:value-of select="TestContextResult/@status"/></xsl:when>
        <xsl:otherwise><xsl:value-of select="$cases[1]/@status"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="outcome">
      <xsl:choose>
        <xsl:when test="$isContext"><xsl:value-of select="$status"/></xsl:when>
        <xsl:otherwise><xsl:call-template name="case-outcome"><xsl:with-param name="tc" select="$cases[1]"/></xsl:call-template></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <section id="banner" aria-labelledby="verdict">
      <xsl:attribute name="class">
        <xsl:text>banner </xsl:text>
        <xsl:call-template name="status-class"><xsl:with-param name="s" select="$status"/></xsl:call-template>
      </xsl:attribute>
      <p class="verdict-line">
        <span class="verdict-label">
          <xsl:call-template name="t">
            <xsl:with-param name="k">
              <xsl:choose>
                <xsl:when test="$isContext">contextStatus</xsl:when>
                <xsl:otherwise>caseStatus</xsl:otherwise>
              </xsl:choose>
            </xsl:with-param>
          </xsl:call-template>
        </span>
        <xsl:text> </xsl:text>
        <xsl:call-template name="badge">
          <xsl:with-param name="s" select="$status"/>
          <xsl:with-param name="id" select="'verdict'"/>
        </xsl:call-template>
        <xsl:text> </xsl:text>
        <span class="exit">
          <xsl:call-template name="t"><xsl:with-param name="k" select="'exitStatus'"/></xsl:call-template>
          <xsl:text> </xsl:text>
          <b id="exit"><xsl:call-template name="exit-status"><xsl:with-param name="s" select="$outcome"/></xsl:call-template></b>
        </span>
      </p>
      <xsl:choose>
        <xsl:when test="$isContext">
          <xsl:call-template name="banner-context"><xsl:with-param name="cases" select="$cases"/></xsl:call-template>
        </xsl:when>
        <xsl:otherwise>
          <xsl:for-each select="$cases[1]">
            <xsl:call-template name="banner-case"/>
          </xsl:for-each>
        </xsl:otherwise>
      </xsl:choose>
    </section>
  </xsl:template>

  <xsl:template name="banner-context">
    <xsl:param name="cases"/>
    <xsl:variable name="total" select="count($cases)"/>
    <xsl:variable name="m"><xsl:call-template name="int"><xsl:with-param name="n" select="$total"/></xsl:call-template></xsl:variable>
    <xsl:variable name="nFailed" select="count(key('case-by-status', 'FAILED'))"/>
    <xsl:variable name="nError" select="count(key('case-by-status', 'ERROR'))"/>
    <xsl:variable name="nOther" select="$total - count(key('case-by-status', 'PASSED')) - $nFailed - $nError"/>
    <!-- With earlier runs the first problem is the first new failure. -->
    <xsl:variable name="firstAny" select="$cases[not(@status = 'PASSED')][1]"/>
    <xsl:variable name="firstNew" select="$cases[not(@status = 'PASSED')][key('hist-trend', @fullname)[1]/@classification = 'new'][1]"/>
    <xsl:variable name="first" select="$firstNew | $firstAny[not($firstNew)]"/>
    <p id="banner-line">
      <xsl:choose>
        <xsl:when test="$total = 0">
          <xsl:call-template name="t"><xsl:with-param name="k" select="'none.cases'"/></xsl:call-template>
        </xsl:when>
        <xsl:when test="not($first)">
          <xsl:call-template name="fmt"><xsl:with-param name="k" select="'line.allPassed'"/><xsl:with-param name="m" select="$m"/></xsl:call-template>
        </xsl:when>
        <xsl:otherwise>
          <!-- Each count that is not zero; the first one names the total. -->
          <xsl:if test="$nFailed &gt; 0">
            <xsl:call-template name="fmt">
              <xsl:with-param name="k" select="'line.failed.first'"/>
              <xsl:with-param name="n"><xsl:call-template name="int"><xsl:with-param name="n" select="$nFailed"/></xsl:call-template></xsl:with-param>
              <xsl:with-param name="m" select="$m"/>
            </xsl:call-template>
          </xsl:if>
          <xsl:if test="$nError &gt; 0">
            <xsl:if test="$nFailed &gt; 0"><xsl:call-template name="t"><xsl:with-param name="k" select="'sep'"/></xsl:call-template></xsl:if>
            <xsl:call-template name="fmt">
              <xsl:with-param name="k" select="concat('line.error', substring('.first', 1, 6 * ($nFailed = 0)))"/>
              <xsl:with-param name="n"><xsl:call-template name="int"><xsl:with-param name="n" select="$nError"/></xsl:call-template></xsl:with-param>
              <xsl:with-param name="m" select="$m"/>
            </xsl:call-template>
          </xsl:if>
          <xsl:if test="$nOther &gt; 0">
            <xsl:if test="$nFailed + $nError &gt; 0"><xsl:call-template name="t"><xsl:with-param name="k" select="'sep'"/></xsl:call-template></xsl:if>
            <xsl:call-template name="fmt">
              <xsl:with-param name="k" select="concat('line.other', substring('.first', 1, 6 * ($nFailed + $nError = 0)))"/>
              <xsl:with-param name="n"><xsl:call-template name="int"><xsl:with-param name="n" select="$nOther"/></xsl:call-template></xsl:with-param>
              <xsl:with-param name="m" select="$m"/>
            </xsl:call-template>
          </xsl:if>
        </xsl:otherwise>
      </xsl:choose>
    </p>
    <xsl:call-template name="history-banner"><xsl:with-param name="cases" select="$cases"/></xsl:call-template>
    <xsl:if test="$first">
      <p>
        <a id="first-problem" href="#{concat('tc-', translate($first/@name, ' &#9;&#10;&#13;#%&quot;', '_______'))}">
          <xsl:call-template name="t"><xsl:with-param name="k" select="'firstProblem'"/></xsl:call-template>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template>
          <xsl:value-of select="$first/@name"/>
        </a>
      </p>
    </xsl:if>
  </xsl:template>

  <!-- The banner line of a test case report: model path and assertions, then
       the first assertion that did not pass. -->
  <xsl:template name="banner-case">
    <xsl:variable name="cid"><xsl:call-template name="case-id"/></xsl:variable>
    <xsl:variable name="first" select="key('bad-by-case', generate-id())[1]"/>
    <p id="banner-line"><xsl:call-template name="case-facts"/></p>
    <xsl:if test="$first">
      <p>
        <xsl:for-each select="$first">
          <xsl:variable name="nr"><xsl:number/></xsl:variable>
          <a id="first-problem" href="#{$cid}-a{$nr}">
            <xsl:call-template name="t"><xsl:with-param name="k" select="'firstFailure'"/></xsl:call-template>
            <xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template>
            <xsl:call-template name="assert-text"/>
          </a>
          <xsl:call-template name="where"/>
        </xsl:for-each>
      </p>
    </xsl:if>
  </xsl:template>

  <!-- What the verification and the assertions of a test case say, each
       under its own name: "Model path: followed · Assertions: 1 failed". -->
  <xsl:template name="case-facts">
    <xsl:variable name="nAll" select="count(*/AssertionInfo)"/>
    <xsl:variable name="nBad" select="count(key('bad-by-case', generate-id()))"/>
    <xsl:variable name="colon"><xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template></xsl:variable>
    <span>
      <xsl:attribute name="class">
        <xsl:choose>
          <xsl:when test="@verificationResult = 'Result verification successful'">mp vr-ok</xsl:when>
          <xsl:when test="@verificationResult = 'Result verification failed' or @verificationResult = $notTerminatedText">mp vr-bad</xsl:when>
          <xsl:otherwise>mp vr-info</xsl:otherwise>
        </xsl:choose>
      </xsl:attribute>
      <xsl:call-template name="t"><xsl:with-param name="k" select="'mp.label'"/></xsl:call-template>
      <xsl:value-of select="$colon"/>
      <xsl:call-template name="word"><xsl:with-param name="k" select="'mp'"/><xsl:with-param name="v" select="@verificationResult"/></xsl:call-template>
    </span>
    <xsl:text> </xsl:text>
    <span>
      <xsl:attribute name="class">
        <xsl:choose>
          <xsl:when test="$nBad &gt; 0">as vr-bad</xsl:when>
          <xsl:otherwise>as</xsl:otherwise>
        </xsl:choose>
      </xsl:attribute>
      <xsl:call-template name="t"><xsl:with-param name="k" select="'assertions'"/></xsl:call-template>
      <xsl:value-of select="$colon"/>
      <xsl:choose>
        <xsl:when test="$nBad &gt; 0">
          <xsl:call-template name="fmt">
            <xsl:with-param name="k" select="'as.failed'"/>
            <xsl:with-param name="n"><xsl:call-template name="int"><xsl:with-param name="n" select="$nBad"/></xsl:call-template></xsl:with-param>
            <xsl:with-param name="m"><xsl:call-template name="int"><xsl:with-param name="n" select="$nAll"/></xsl:call-template></xsl:with-param>
          </xsl:call-template>
        </xsl:when>
        <xsl:when test="$nAll &gt; 0">
          <xsl:call-template name="fmt">
            <xsl:with-param name="k" select="'as.passed'"/>
            <xsl:with-param name="m"><xsl:call-template name="int"><xsl:with-param name="n" select="$nAll"/></xsl:call-template></xsl:with-param>
          </xsl:call-template>
        </xsl:when>
        <xsl:otherwise><xsl:call-template name="t"><xsl:with-param name="k" select="'as.none'"/></xsl:call-template></xsl:otherwise>
      </xsl:choose>
    </span>
  </xsl:template>

  <!-- ===== Header ===== -->

  <xsl:template match="ResultHeader" mode="title">
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
  </xsl:template>

  <xsl:template match="ResultHeader">
    <div class="cards">
      <div class="scroll">
        <table class="card">
          <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.report'"/></xsl:call-template></caption>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'name'"/><xsl:with-param name="v" select="@name"/></xsl:call-template>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'fullname'"/><xsl:with-param name="v" select="@fullname"/></xsl:call-template>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'time'"/><xsl:with-param name="v"><xsl:call-template name="header-time"><xsl:with-param name="text" select="@time"/></xsl:call-template></xsl:with-param></xsl:call-template>
        </table>
      </div>
      <xsl:for-each select="EnvironmentInfo">
        <div class="scroll">
          <table class="card">
            <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.env'"/></xsl:call-template></caption>
            <xsl:call-template name="field"><xsl:with-param name="k" select="'userName'"/><xsl:with-param name="v"><xsl:call-template name="known"><xsl:with-param name="v" select="@userName"/></xsl:call-template></xsl:with-param></xsl:call-template>
            <xsl:call-template name="field"><xsl:with-param name="k" select="'machineName'"/><xsl:with-param name="v"><xsl:call-template name="known"><xsl:with-param name="v" select="@machineName"/></xsl:call-template></xsl:with-param></xsl:call-template>
            <xsl:call-template name="field"><xsl:with-param name="k" select="'osVersion'"/><xsl:with-param name="v" select="@osVersion"/></xsl:call-template>
            <xsl:call-template name="field"><xsl:with-param name="k" select="'korvanVersion'"/><xsl:with-param name="v"><xsl:call-template name="version"><xsl:with-param name="v" select="@korvanVersion"/></xsl:call-template></xsl:with-param></xsl:call-template>
            <xsl:call-template name="field"><xsl:with-param name="k" select="'ostraVersion'"/><xsl:with-param name="v"><xsl:call-template name="version"><xsl:with-param name="v" select="@ostraVersion"/></xsl:call-template></xsl:with-param></xsl:call-template>
          </table>
        </div>
      </xsl:for-each>
      <xsl:for-each select="ConfigurationInfo">
        <div class="scroll">
          <table class="card">
            <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.config'"/></xsl:call-template></caption>
            <xsl:call-template name="field"><xsl:with-param name="k" select="'projectName'"/><xsl:with-param name="v" select="@projectName"/></xsl:call-template>
            <xsl:call-template name="field"><xsl:with-param name="k" select="'componentName'"/><xsl:with-param name="v" select="@componentName"/></xsl:call-template>
            <xsl:call-template name="field"><xsl:with-param name="k" select="'configurationName'"/><xsl:with-param name="v" select="@configurationName"/></xsl:call-template>
          </table>
        </div>
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

  <!-- ===== Controls (shown by the script only) ===== -->

  <!-- A context gets the status filters, the count of what they show, the
       search, expand and collapse and the keys; a test case report only the
       search and the theme. -->
  <xsl:template name="controls">
    <xsl:param name="cases"/>
    <xsl:param name="isContext"/>
    <div class="controls" id="controls" hidden="hidden" role="search">
      <xsl:if test="$isContext">
        <fieldset class="filters">
          <legend><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.show'"/></xsl:call-template></legend>
          <xsl:call-template name="filter-box"><xsl:with-param name="s" select="'PASSED'"/><xsl:with-param name="cases" select="$cases"/></xsl:call-template>
          <xsl:call-template name="filter-box"><xsl:with-param name="s" select="'FAILED'"/><xsl:with-param name="cases" select="$cases"/></xsl:call-template>
          <xsl:call-template name="filter-box"><xsl:with-param name="s" select="'ERROR'"/><xsl:with-param name="cases" select="$cases"/></xsl:call-template>
          <xsl:call-template name="filter-box"><xsl:with-param name="s" select="'UNDEFINED'"/><xsl:with-param name="cases" select="$cases"/></xsl:call-template>
        </fieldset>
        <xsl:call-template name="history-filters"><xsl:with-param name="cases" select="$cases"/></xsl:call-template>
      </xsl:if>
      <label class="search">
        <span><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.search'"/></xsl:call-template></span>
        <xsl:text> </xsl:text>
        <input type="search" id="q" autocomplete="off">
          <xsl:attribute name="placeholder"><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.searchHint'"/></xsl:call-template></xsl:attribute>
        </input>
      </label>
      <span class="buttons">
        <xsl:if test="$isContext">
          <button type="button" id="expand"><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.expand'"/></xsl:call-template></button>
          <button type="button" id="collapse"><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.collapse'"/></xsl:call-template></button>
        </xsl:if>
        <button type="button" id="theme" aria-pressed="false"><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.dark'"/></xsl:call-template></button>
      </span>
      <xsl:if test="$isContext">
        <p class="shown" id="shown" aria-live="polite">
          <xsl:attribute name="data-format"><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.shown'"/></xsl:call-template></xsl:attribute>
          <xsl:call-template name="fmt">
            <xsl:with-param name="k" select="'ctl.shown'"/>
            <xsl:with-param name="n" select="count($cases)"/>
            <xsl:with-param name="m" select="count($cases)"/>
          </xsl:call-template>
        </p>
        <p class="keys"><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.keys'"/></xsl:call-template></p>
      </xsl:if>
    </div>
  </xsl:template>

  <xsl:template name="count-of">
    <xsl:param name="s"/>
    <xsl:param name="cases"/>
    <xsl:choose>
      <xsl:when test="$s = 'UNDEFINED'">
        <xsl:value-of select="count($cases) - count(key('case-by-status', 'PASSED')) - count(key('case-by-status', 'FAILED'))
                              - count(key('case-by-status', 'ERROR'))"/>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="count(key('case-by-status', $s))"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="filter-box">
    <xsl:param name="s"/>
    <xsl:param name="cases"/>
    <label class="filter">
      <input type="checkbox" checked="checked" value="{$s}"/>
      <xsl:text> </xsl:text>
      <xsl:call-template name="badge"><xsl:with-param name="s" select="$s"/></xsl:call-template>
      <xsl:text> </xsl:text>
      <span class="n">
        <xsl:call-template name="count-of"><xsl:with-param name="s" select="$s"/><xsl:with-param name="cases" select="$cases"/></xsl:call-template>
      </span>
    </label>
  </xsl:template>

  <!-- ===== Summary of a context ===== -->

  <xsl:template name="summary">
    <xsl:param name="cases"/>
    <xsl:variable name="total" select="count($cases)"/>
    <xsl:variable name="nPassed" select="count(key('case-by-status', 'PASSED'))"/>
    <xsl:variable name="nFailed" select="count(key('case-by-status', 'FAILED'))"/>
    <xsl:variable name="nError" select="count(key('case-by-status', 'ERROR'))"/>
    <xsl:variable name="nOther" select="$total - $nPassed - $nFailed - $nError"/>
    <xsl:variable name="nAsserts" select="count($cases/*/AssertionInfo)"/>
    <xsl:variable name="nBadAsserts" select="count($cases/*/AssertionInfo[@status != 'PASSED'])"/>

    <h2 id="summary"><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.summary'"/></xsl:call-template></h2>
    <div class="summary">
      <div class="scroll">
        <table class="card verdict">
          <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'testCases'"/></xsl:call-template></caption>
          <tr>
            <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'total'"/></xsl:call-template></th>
            <td class="num" id="ncases"><xsl:call-template name="int"><xsl:with-param name="n" select="$total"/></xsl:call-template></td>
          </tr>
          <tr>
            <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'passRate'"/></xsl:call-template></th>
            <td class="num" id="passrate">
              <xsl:choose>
                <xsl:when test="$total &gt; 0">
                  <xsl:call-template name="pct"><xsl:with-param name="n" select="$nPassed * 100 div $total"/></xsl:call-template>
                </xsl:when>
                <xsl:otherwise>&#8211;</xsl:otherwise>
              </xsl:choose>
            </td>
          </tr>
        </table>
      </div>
      <div class="scroll">
        <table class="card counts">
          <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'countsByStatus'"/></xsl:call-template></caption>
          <xsl:call-template name="count-row"><xsl:with-param name="s" select="'PASSED'"/><xsl:with-param name="n" select="$nPassed"/></xsl:call-template>
          <xsl:call-template name="count-row"><xsl:with-param name="s" select="'FAILED'"/><xsl:with-param name="n" select="$nFailed"/></xsl:call-template>
          <xsl:call-template name="count-row"><xsl:with-param name="s" select="'ERROR'"/><xsl:with-param name="n" select="$nError"/></xsl:call-template>
          <xsl:call-template name="count-row"><xsl:with-param name="s" select="'UNDEFINED'"/><xsl:with-param name="n" select="$nOther"/></xsl:call-template>
        </table>
      </div>
      <div class="scroll">
        <table class="card asserts-total">
          <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'assertions'"/></xsl:call-template></caption>
          <tr>
            <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'total'"/></xsl:call-template></th>
            <td class="num" id="nasserts"><xsl:call-template name="int"><xsl:with-param name="n" select="$nAsserts"/></xsl:call-template></td>
          </tr>
          <tr>
            <th scope="row"><xsl:call-template name="badge"><xsl:with-param name="s" select="'PASSED'"/></xsl:call-template></th>
            <td class="num"><xsl:call-template name="int"><xsl:with-param name="n" select="$nAsserts - $nBadAsserts"/></xsl:call-template></td>
          </tr>
          <tr>
            <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'notPassed'"/></xsl:call-template></th>
            <td class="num" id="nbad"><xsl:call-template name="int"><xsl:with-param name="n" select="$nBadAsserts"/></xsl:call-template></td>
          </tr>
        </table>
      </div>
    </div>
    <xsl:if test="$total &gt; 0">
      <xsl:variable name="label">
        <xsl:call-template name="t"><xsl:with-param name="k" select="'countsByStatus'"/></xsl:call-template>
        <xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template>
        <xsl:call-template name="bar-label"><xsl:with-param name="s" select="'PASSED'"/><xsl:with-param name="n" select="$nPassed"/></xsl:call-template>
        <xsl:call-template name="bar-label"><xsl:with-param name="s" select="'FAILED'"/><xsl:with-param name="n" select="$nFailed"/></xsl:call-template>
        <xsl:call-template name="bar-label"><xsl:with-param name="s" select="'ERROR'"/><xsl:with-param name="n" select="$nError"/></xsl:call-template>
        <xsl:call-template name="bar-label"><xsl:with-param name="s" select="'UNDEFINED'"/><xsl:with-param name="n" select="$nOther"/></xsl:call-template>
      </xsl:variable>
      <svg class="bar" viewBox="0 0 {$total} 1" preserveAspectRatio="none" role="img" aria-label="{$label}">
        <xsl:call-template name="bar-part"><xsl:with-param name="s" select="'PASSED'"/><xsl:with-param name="x" select="0"/><xsl:with-param name="n" select="$nPassed"/></xsl:call-template>
        <xsl:call-template name="bar-part"><xsl:with-param name="s" select="'FAILED'"/><xsl:with-param name="x" select="$nPassed"/><xsl:with-param name="n" select="$nFailed"/></xsl:call-template>
        <xsl:call-template name="bar-part"><xsl:with-param name="s" select="'ERROR'"/><xsl:with-param name="x" select="$nPassed + $nFailed"/><xsl:with-param name="n" select="$nError"/></xsl:call-template>
        <xsl:call-template name="bar-part"><xsl:with-param name="s" select="'UNDEFINED'"/><xsl:with-param name="x" select="$nPassed + $nFailed + $nError"/><xsl:with-param name="n" select="$nOther"/></xsl:call-template>
      </svg>
    </xsl:if>
  </xsl:template>

  <xsl:template name="count-row">
    <xsl:param name="s"/>
    <xsl:param name="n"/>
    <tr>
      <th scope="row"><xsl:call-template name="badge"><xsl:with-param name="s" select="$s"/></xsl:call-template></th>
      <td class="num" data-count="{$s}"><xsl:call-template name="int"><xsl:with-param name="n" select="$n"/></xsl:call-template></td>
    </tr>
  </xsl:template>

  <xsl:template name="bar-label">
    <xsl:param name="s"/>
    <xsl:param name="n"/>
    <xsl:if test="$n &gt; 0">
      <xsl:call-template name="word"><xsl:with-param name="k" select="'st'"/><xsl:with-param name="v" select="$s"/></xsl:call-template>
      <xsl:text> </xsl:text>
      <xsl:value-of select="$n"/>
      <xsl:call-template name="t"><xsl:with-param name="k" select="'sep'"/></xsl:call-template>
    </xsl:if>
  </xsl:template>

  <!-- One segment of the status bar; the gaps between segments and the
       symbols in the legend beside it keep it readable without colour. -->
  <xsl:template name="bar-part">
    <xsl:param name="s"/>
    <xsl:param name="x"/>
    <xsl:param name="n"/>
    <xsl:if test="$n &gt; 0">
      <rect x="{$x}" y="0" width="{$n}" height="1">
        <xsl:attribute name="class">
          <xsl:call-template name="status-class"><xsl:with-param name="s" select="$s"/></xsl:call-template>
        </xsl:attribute>
      </rect>
    </xsl:if>
  </xsl:template>

  <!-- ===== Problems ===== -->

  <xsl:template name="problems">
    <xsl:param name="cases"/>
    <xsl:variable name="bad" select="$cases[@status != 'PASSED' or not(@status)]"/>
    <h2 id="problems">
      <xsl:call-template name="t"><xsl:with-param name="k" select="'sec.problems'"/></xsl:call-template>
      <xsl:text> (</xsl:text>
      <xsl:value-of select="count($bad)"/>
      <xsl:text>)</xsl:text>
    </h2>
    <xsl:choose>
      <xsl:when test="not($bad)">
        <p class="empty ok-note"><xsl:call-template name="t"><xsl:with-param name="k" select="'none.problems'"/></xsl:call-template></p>
      </xsl:when>
      <xsl:when test="$large">
        <xsl:call-template name="problem-groups"><xsl:with-param name="bad" select="$bad"/></xsl:call-template>
      </xsl:when>
      <xsl:otherwise>
        <div class="scroll">
        <table class="grid problems">
          <caption><xsl:call-template name="problems-caption"/></caption>
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
              <xsl:sort select="number(key('hist-trend', @fullname)[1]/@classification != 'new')" data-type="number"/>
              <xsl:variable name="cid"><xsl:call-template name="case-id"/></xsl:variable>
              <xsl:variable name="first" select="key('bad-by-case', generate-id())[1]"/>
              <tr data-case="{$cid}">
                <th scope="row"><a href="#{$cid}"><xsl:value-of select="@name"/></a><xsl:call-template name="history-problem-mark"/></th>
                <td><xsl:call-template name="badge"><xsl:with-param name="s" select="@status"/></xsl:call-template></td>
                <td><xsl:call-template name="vr"><xsl:with-param name="k" select="'mp'"/></xsl:call-template></td>
                <td>
                  <xsl:choose>
                    <xsl:when test="$first">
                      <xsl:for-each select="$first">
                        <xsl:variable name="nr"><xsl:number/></xsl:variable>
                        <a href="#{$cid}-a{$nr}">
                          <xsl:call-template name="assert-text"/>
                        </a>
                        <xsl:call-template name="where"/>
                      </xsl:for-each>
                    </xsl:when>
                    <xsl:when test="*/AssertionInfo">
                      <xsl:for-each select="*/AssertionInfo[last()]">
                        <span class="muted"><xsl:call-template name="t"><xsl:with-param name="k" select="'lastAssertion'"/></xsl:call-template><xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template></span>
                        <a href="#{$cid}-a{count(../AssertionInfo)}">
                          <xsl:call-template name="assert-text"/>
                        </a>
                        <xsl:call-template name="where"/>
                      </xsl:for-each>
                    </xsl:when>
                    <xsl:otherwise>
                      <span class="muted"><xsl:call-template name="t"><xsl:with-param name="k" select="'none.assertions'"/></xsl:call-template></span>
                    </xsl:otherwise>
                  </xsl:choose>
                </td>
              </tr>
            </xsl:for-each>
          </tbody>
        </table>
        </div>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The words of an assertion: SD instance, message and user message, or
       the statement of a code assertion. -->
  <xsl:template name="assert-text">
    <xsl:choose>
      <xsl:when test="@name"><code><xsl:value-of select="@name"/></code></xsl:when>
      <xsl:otherwise>
        <code><xsl:value-of select="@sdiname"/>/<xsl:value-of select="@msgid"/></code>
        <xsl:if test="string(@usermsg)">
          <xsl:text> </xsl:text>
          <xsl:value-of select="@usermsg"/>
        </xsl:if>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="where">
    <xsl:if test="string(@filename) or string(@lnr)">
      <span class="where">
        <xsl:value-of select="@filename"/>
        <xsl:text>:</xsl:text>
        <xsl:value-of select="@lnr"/>
      </span>
    </xsl:if>
  </xsl:template>

  <!-- The verification result, in the words of `k`: "vr" the document's
       sentence, "mp" what it says of the model path. -->
  <xsl:template name="vr">
    <xsl:param name="v" select="@verificationResult"/>
    <xsl:param name="k" select="'vr'"/>
    <span>
      <xsl:attribute name="class">
        <xsl:choose>
          <xsl:when test="$v = 'Result verification successful'">vr vr-ok</xsl:when>
          <xsl:when test="$v = 'Result verification failed' or $v = $notTerminatedText">vr vr-bad</xsl:when>
          <xsl:otherwise>vr vr-info</xsl:otherwise>
        </xsl:choose>
      </xsl:attribute>
      <xsl:call-template name="word"><xsl:with-param name="k" select="$k"/><xsl:with-param name="v" select="$v"/></xsl:call-template>
    </span>
  </xsl:template>

  <!-- ===== Test case ===== -->

  <!-- A test case as a block that opens and closes; `open` opens it whatever
       its status (the block of a test case report). The name is a heading,
       so that a screen reader steps from test case to test case. -->
  <xsl:template match="TestCaseResult">
    <xsl:param name="open" select="false()"/>
    <!-- h3 below the context's "Test cases", h2 as the heading of a test
         case report. -->
    <xsl:variable name="heading">
      <xsl:choose>
        <xsl:when test="$open">h2</xsl:when>
        <xsl:otherwise>h3</xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="status" select="string(@status)"/>
    <xsl:variable name="key"><xsl:call-template name="status-key"><xsl:with-param name="s" select="$status"/></xsl:call-template></xsl:variable>
    <xsl:variable name="cid"><xsl:call-template name="case-id"/></xsl:variable>
    <xsl:variable name="sd" select="ResultForSD/SDSummaryInfo/SDResults/SDResult[1]"/>
    <!-- In a large context: a closed block with its assertions as text. -->
    <xsl:variable name="lite" select="$large and not($open) and count($openProblems | .) != count($openProblems)"/>
    <details id="{$cid}" data-status="{$key}">
      <xsl:call-template name="history-data"/>
      <xsl:attribute name="class">
        <xsl:text>case </xsl:text>
        <xsl:call-template name="status-class"><xsl:with-param name="s" select="$status"/></xsl:call-template>
        <xsl:if test="$status != 'PASSED'"> problem</xsl:if>
        <xsl:if test="$lite"> lite</xsl:if>
      </xsl:attribute>
      <xsl:if test="$open or ($status != 'PASSED' and not($lite))"><xsl:attribute name="open">open</xsl:attribute></xsl:if>
      <summary>
        <xsl:call-template name="badge"><xsl:with-param name="s" select="$status"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <xsl:element name="{$heading}"><xsl:attribute name="class">name</xsl:attribute><xsl:value-of select="@name"/></xsl:element>
        <xsl:text> </xsl:text>
        <xsl:call-template name="history-strip"/>
        <span class="facts">
          <xsl:call-template name="case-facts"/>
          <span class="tt"><xsl:call-template name="word"><xsl:with-param name="k" select="'tt'"/><xsl:with-param name="v" select="@testType"/></xsl:call-template></span>
          <xsl:if test="$sd">
            <span>
              <xsl:call-template name="t"><xsl:with-param name="k" select="'cov.coverage'"/></xsl:call-template>
              <xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template>
              <xsl:value-of select="$sd/@coverage"/>
              <xsl:value-of select="$pctSign"/>
            </span>
          </xsl:if>
        </span>
      </summary>
      <xsl:choose>
        <xsl:when test="$lite">
          <xsl:call-template name="lite-body"><xsl:with-param name="cid" select="$cid"/></xsl:call-template>
        </xsl:when>
        <xsl:otherwise>
      <div class="body">
        <div class="scroll">
        <table class="card facts-table">
          <caption><xsl:call-template name="t"><xsl:with-param name="k" select="'testCase'"/></xsl:call-template></caption>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'name'"/><xsl:with-param name="v" select="@name"/></xsl:call-template>
          <xsl:call-template name="field"><xsl:with-param name="k" select="'fullname'"/><xsl:with-param name="v" select="@fullname"/></xsl:call-template>
          <tr>
            <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'testType'"/></xsl:call-template></th>
            <td><xsl:call-template name="word"><xsl:with-param name="k" select="'tt'"/><xsl:with-param name="v" select="@testType"/></xsl:call-template></td>
          </tr>
          <tr>
            <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'status'"/></xsl:call-template></th>
            <td><xsl:call-template name="badge"><xsl:with-param name="s" select="@status"/></xsl:call-template></td>
          </tr>
          <tr>
            <th scope="row"><xsl:call-template name="t"><xsl:with-param name="k" select="'verificationResult'"/></xsl:call-template></th>
            <td><xsl:call-template name="vr"/></td>
          </tr>
        </table>
        </div>
        <xsl:apply-templates select="Diagnosis">
          <xsl:with-param name="cid" select="$cid"/>
          <xsl:with-param name="heading" select="substring('h3h4', 1 + 2 * not($open), 2)"/>
        </xsl:apply-templates>
        <xsl:apply-templates select="ResultForSD | ResultForCode">
          <xsl:with-param name="cid" select="$cid"/>
        </xsl:apply-templates>
      </div>
        </xsl:otherwise>
      </xsl:choose>
    </details>
  </xsl:template>

  <xsl:template match="ResultForSD">
    <xsl:param name="cid"/>
    <xsl:apply-templates select="SDSummaryInfo"/>
    <xsl:if test="UsedSDs/UsedSD or SDSummaryInfo/SDResults/SDResult/SDs">
      <div class="images">
        <xsl:for-each select="UsedSDs/UsedSD">
          <xsl:call-template name="image"><xsl:with-param name="k" select="'img.model'"/></xsl:call-template>
        </xsl:for-each>
        <xsl:for-each select="SDSummaryInfo/SDResults/SDResult/SDs">
          <xsl:call-template name="image"><xsl:with-param name="k" select="'img.result'"/></xsl:call-template>
        </xsl:for-each>
      </div>
    </xsl:if>
    <xsl:call-template name="assertions">
      <xsl:with-param name="sd" select="true()"/>
      <xsl:with-param name="cid" select="$cid"/>
    </xsl:call-template>
  </xsl:template>

  <xsl:template match="ResultForCode">
    <xsl:param name="cid"/>
    <xsl:call-template name="assertions">
      <xsl:with-param name="sd" select="false()"/>
      <xsl:with-param name="cid" select="$cid"/>
    </xsl:call-template>
  </xsl:template>

  <!-- A diagram image, linked by the relative path the document gives. -->
  <xsl:template name="image">
    <xsl:param name="k"/>
    <xsl:variable name="label"><xsl:call-template name="t"><xsl:with-param name="k" select="$k"/></xsl:call-template></xsl:variable>
    <xsl:variable name="tc" select="ancestor::TestCaseResult[1]"/>
    <xsl:variable name="alt">
      <xsl:value-of select="$label"/>
      <xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template>
      <xsl:call-template name="fmt">
        <xsl:with-param name="k" select="'img.of'"/>
        <xsl:with-param name="n" select="$tc/ResultForSD/SDSummaryInfo/SDResults/SDResult[1]/@sdname"/>
        <xsl:with-param name="m" select="$tc/@name"/>
      </xsl:call-template>
    </xsl:variable>
    <div class="figure">
      <div class="caption"><xsl:value-of select="$label"/></div>
      <a href="{@img}"><img src="{@img}" alt="{$alt}" loading="lazy"/></a>
      <div class="path"><xsl:call-template name="path"><xsl:with-param name="p" select="@img"/></xsl:call-template></div>
    </div>
  </xsl:template>

  <!-- Coverage of the sequence diagram: steps reached of all steps, drawn as
       a meter with its numbers beside it. -->
  <!-- Its container takes the keyboard focus, so that it scrolls from the
       keyboard too when it is wider than the screen. -->
  <xsl:template match="SDSummaryInfo">
    <div class="scroll" tabindex="0" role="group">
      <xsl:attribute name="aria-label"><xsl:call-template name="t"><xsl:with-param name="k" select="'sec.coverage'"/></xsl:call-template></xsl:attribute>
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
          <xsl:variable name="w">
            <xsl:choose>
              <xsl:when test="not($pct = $pct) or $pct &lt; 0">0</xsl:when>
              <xsl:when test="$pct &gt; 100">100</xsl:when>
              <xsl:otherwise><xsl:value-of select="$pct"/></xsl:otherwise>
            </xsl:choose>
          </xsl:variable>
          <tr>
            <td><xsl:value-of select="@name"/></td>
            <td><xsl:value-of select="@sdname"/></td>
            <td><xsl:call-template name="badge"><xsl:with-param name="s" select="@status"/></xsl:call-template></td>
            <td class="num"><xsl:value-of select="@value"/></td>
            <td class="num"><xsl:value-of select="@max"/></td>
            <td class="meter-cell">
              <span class="meter" role="meter" aria-valuemin="0" aria-valuemax="100" aria-valuenow="{$w}">
                <xsl:attribute name="aria-label">
                  <xsl:call-template name="t"><xsl:with-param name="k" select="'cov.coverage'"/></xsl:call-template>
                  <xsl:value-of select="concat(': ', @value, ' / ', @max)"/>
                </xsl:attribute>
                <span class="fill" style="width:{$w}%"></span>
              </span>
              <xsl:text> </xsl:text>
              <span class="pct"><xsl:value-of select="@coverage"/><xsl:value-of select="$pctSign"/></span>
              <xsl:text> </xsl:text>
              <span class="muted">(<xsl:value-of select="@value"/>/<xsl:value-of select="@max"/>)</span>
            </td>
          </tr>
        </xsl:for-each>
      </tbody>
    </table>
    </div>
  </xsl:template>

  <!-- The assertion table of a test case; SD assertions carry the sequence
       diagram attributes, code assertions their statement. Each row has its
       own anchor, the test case's followed by "-a" and the row number. -->
  <xsl:template name="assertions">
    <xsl:param name="sd"/>
    <xsl:param name="cid"/>
    <xsl:choose>
      <xsl:when test="not(AssertionInfo)">
        <p class="empty"><xsl:call-template name="t"><xsl:with-param name="k" select="'none.assertions'"/></xsl:call-template></p>
      </xsl:when>
      <xsl:otherwise>
        <div class="scroll">
        <table>
          <xsl:attribute name="class">
            <xsl:choose>
              <xsl:when test="$sd">grid asserts sd</xsl:when>
              <xsl:otherwise>grid asserts code</xsl:otherwise>
            </xsl:choose>
          </xsl:attribute>
          <caption>
            <xsl:call-template name="t"><xsl:with-param name="k" select="'sec.assertions'"/></xsl:call-template>
            <xsl:text> (</xsl:text>
            <xsl:call-template name="int"><xsl:with-param name="n" select="count(AssertionInfo)"/></xsl:call-template>
            <xsl:text>)</xsl:text>
          </caption>
          <thead>
            <tr>
              <th scope="col">#</th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'status'"/></xsl:call-template></th>
              <xsl:choose>
                <xsl:when test="$sd">
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.sdiname'"/></xsl:call-template> / <xsl:call-template name="t"><xsl:with-param name="k" select="'col.msgid'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.usermsg'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.inr'"/></xsl:call-template> / <xsl:call-template name="t"><xsl:with-param name="k" select="'col.onr'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.arbiter'"/></xsl:call-template></th>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.guid'"/></xsl:call-template></th>
                </xsl:when>
                <xsl:otherwise>
                  <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.name'"/></xsl:call-template></th>
                </xsl:otherwise>
              </xsl:choose>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.dir'"/></xsl:call-template></th>
              <th scope="col"><xsl:call-template name="t"><xsl:with-param name="k" select="'col.fileLine'"/></xsl:call-template></th>
            </tr>
          </thead>
          <tbody>
            <!-- The rows are the bulk of a large page, so each is kept to
                 plain cells: the column styles, the status colour and its
                 symbol come from the stylesheet (by column and by the row's
                 class, which only a row that did not pass carries). The
                 anchor is written "ID": the same attribute to a browser, but
                 the XSLT processor then does not enter each of a hundred
                 thousand rows into its table of IDs, which costs it more
                 than the rest of the row. -->
            <!-- The row the model rejected, when explained (NaN: none). -->
            <xsl:variable name="rejected" select="number(../Diagnosis/Rejected/@assertion | ../Diagnosis/NoMatch/@assertion)"/>
            <xsl:choose>
              <xsl:when test="$sd">
                <xsl:for-each select="AssertionInfo">
                  <tr ID="{$cid}-a{position()}">
                    <xsl:choose>
                      <xsl:when test="position() = $rejected"><xsl:call-template name="rejected-row-class"/></xsl:when>
                      <xsl:when test="not(@status = 'PASSED')"><xsl:call-template name="row-class"/></xsl:when>
                    </xsl:choose>
                    <th><a href="#{$cid}-a{position()}"><xsl:value-of select="position()"/></a></th>
                    <td>
                      <xsl:choose>
                        <xsl:when test="@status = 'PASSED'"><xsl:value-of select="$w.PASSED"/></xsl:when>
                        <xsl:otherwise><xsl:call-template name="row-status"/></xsl:otherwise>
                      </xsl:choose>
                      <xsl:if test="position() = $rejected"><xsl:call-template name="rejected-row-mark"><xsl:with-param name="cid" select="$cid"/></xsl:call-template></xsl:if>
                    </td>
                    <td><xsl:value-of select="concat(@sdiname, ' / ', @msgid)"/></td>
                    <td><xsl:value-of select="@usermsg"/><xsl:if test="@name"><div class="mono"><xsl:value-of select="@name"/></div></xsl:if></td>
                    <td>
                      <!-- Only the numbers: the document keeps whatever
                           followed them in the assertion text. -->
                      <xsl:if test="string(@inr) or string(@onr)">
                        <xsl:value-of select="concat(substring-before(concat(@inr, ' '), ' '), ' / ', substring-before(concat(@onr, ' '), ' '))"/>
                      </xsl:if>
                    </td>
                    <td>
                      <xsl:if test="@arbiterAssert">
                        <xsl:choose>
                          <xsl:when test="@arbiterAssert = 'internal'"><xsl:value-of select="$w.internal"/></xsl:when>
                          <xsl:when test="@arbiterAssert = 'external'"><xsl:value-of select="$w.external"/></xsl:when>
                          <xsl:otherwise><xsl:value-of select="@arbiterAssert"/></xsl:otherwise>
                        </xsl:choose>
                      </xsl:if>
                    </td>
                    <td>
                      <xsl:choose>
                        <xsl:when test="starts-with(@guid, 'GUID ')"><xsl:value-of select="substring(@guid, 6)"/></xsl:when>
                        <xsl:otherwise><xsl:value-of select="@guid"/></xsl:otherwise>
                      </xsl:choose>
                    </td>
                    <td><xsl:call-template name="path"><xsl:with-param name="p" select="@dir"/></xsl:call-template></td>
                    <td title="{@fnr}"><xsl:value-of select="concat(@filename, ':', @lnr)"/></td>
                  </tr>
                </xsl:for-each>
                <xsl:apply-templates select="../Diagnosis/NotJudged" mode="rows">
                  <xsl:with-param name="sd" select="true()"/>
                  <xsl:with-param name="cid" select="$cid"/>
                </xsl:apply-templates>
              </xsl:when>
              <xsl:otherwise>
                <xsl:for-each select="AssertionInfo">
                  <tr ID="{$cid}-a{position()}">
                    <xsl:choose>
                      <xsl:when test="position() = $rejected"><xsl:call-template name="rejected-row-class"/></xsl:when>
                      <xsl:when test="not(@status = 'PASSED')"><xsl:call-template name="row-class"/></xsl:when>
                    </xsl:choose>
                    <th><a href="#{$cid}-a{position()}"><xsl:value-of select="position()"/></a></th>
                    <td>
                      <xsl:choose>
                        <xsl:when test="@status = 'PASSED'"><xsl:value-of select="$w.PASSED"/></xsl:when>
                        <xsl:otherwise><xsl:call-template name="row-status"/></xsl:otherwise>
                      </xsl:choose>
                      <xsl:if test="position() = $rejected"><xsl:call-template name="rejected-row-mark"><xsl:with-param name="cid" select="$cid"/></xsl:call-template></xsl:if>
                    </td>
                    <td><xsl:value-of select="@name"/></td>
                    <td><xsl:call-template name="path"><xsl:with-param name="p" select="@dir"/></xsl:call-template></td>
                    <td title="{@fnr}"><xsl:value-of select="concat(@filename, ':', @lnr)"/></td>
                  </tr>
                </xsl:for-each>
                <xsl:apply-templates select="../Diagnosis/NotJudged" mode="rows">
                  <xsl:with-param name="sd" select="false()"/>
                  <xsl:with-param name="cid" select="$cid"/>
                </xsl:apply-templates>
              </xsl:otherwise>
            </xsl:choose>
          </tbody>
        </table>
        </div>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The class of an assertion row that did not pass. -->
  <xsl:template name="row-class">
    <xsl:attribute name="class">
      <xsl:call-template name="row-class-text"/>
    </xsl:attribute>
  </xsl:template>

  <xsl:template name="row-class-text">
    <xsl:choose>
      <xsl:when test="@status = 'FAILED'">bad st-fail</xsl:when>
      <xsl:when test="@status = 'ERROR'">bad st-error</xsl:when>
      <xsl:when test="@status">bad st-other</xsl:when>
      <xsl:otherwise>st-other</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The status word of an assertion row that did not pass. -->
  <xsl:template name="row-status">
    <xsl:choose>
      <xsl:when test="@status = 'FAILED'"><xsl:value-of select="$w.FAILED"/></xsl:when>
      <xsl:when test="@status = 'ERROR'"><xsl:value-of select="$w.ERROR"/></xsl:when>
      <xsl:otherwise><xsl:call-template name="word"><xsl:with-param name="k" select="'st'"/><xsl:with-param name="v" select="@status"/></xsl:call-template></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- ===== Style ===== -->

  <xsl:template name="css">
    <xsl:text>
:root{color-scheme:light;--bg:#f6f7f9;--fg:#1f2328;--card:#fff;--line:#d0d7de;--soft:#eef1f4;--muted:#57606a;--link:#0550ae;--focus:#0969da;
--pass:#0f6b3a;--pass-bg:#dcf5e6;--fail:#b01c0c;--fail-bg:#ffe8e3;--error:#8a4b00;--error-bg:#fff1d6;--nt:#6a2fa8;--nt-bg:#f3e8ff;--other:#424a53;--other-bg:#eaeef2;
--pass-bar:#009e73;--fail-bar:#d55e00;--error-bar:#e69f00;--nt-bar:#9b59b6;--other-bar:#8c959f;--bad-row:#fff6f4;--hit:#fff1a6;--toolbar:0px;}
:root[data-theme=dark]{color-scheme:dark;--bg:#0d1117;--fg:#e6edf3;--card:#161b22;--line:#30363d;--soft:#21262d;--muted:#9da7b3;--link:#79c0ff;--focus:#58a6ff;
--pass:#7ee2a8;--pass-bg:#0f2d1c;--fail:#ffa198;--fail-bg:#3c1618;--error:#f2cc60;--error-bg:#3a2a08;--nt:#d2a8ff;--nt-bg:#2a1a45;--other:#c9d1d9;--other-bg:#2b3137;--bad-row:#24161a;--hit:#3d3500;}
@media (prefers-color-scheme:dark){:root:not([data-theme=light]){color-scheme:dark;--bg:#0d1117;--fg:#e6edf3;--card:#161b22;--line:#30363d;--soft:#21262d;--muted:#9da7b3;--link:#79c0ff;--focus:#58a6ff;
--pass:#7ee2a8;--pass-bg:#0f2d1c;--fail:#ffa198;--fail-bg:#3c1618;--error:#f2cc60;--error-bg:#3a2a08;--nt:#d2a8ff;--nt-bg:#2a1a45;--other:#c9d1d9;--other-bg:#2b3137;--bad-row:#24161a;--hit:#3d3500;}}
body{margin:0;background:var(--bg);color:var(--fg);font-size:15px;line-height:1.45;}
a{color:var(--link);}
:focus-visible{outline:3px solid var(--focus);outline-offset:2px;}
.skip{position:absolute;left:-9999px;top:0;background:var(--card);padding:6px 10px;z-index:2;}
.skip:focus{left:8px;top:8px;}
.page{max-width:1280px;margin:0 auto;padding:18px 24px 40px;}
@media (max-width:600px){.page{padding:10px 10px 30px;}}
h1,h2,h3,caption{overflow-wrap:break-word;}
h1{font-size:1.6em;margin:0 0 12px;}
h1 .kind{display:block;font-size:.55em;font-weight:600;color:var(--muted);text-transform:uppercase;letter-spacing:.05em;}
h2{font-size:1.25em;margin:26px 0 10px;border-bottom:1px solid var(--line);padding-bottom:4px;}
.cards,.summary{display:flex;flex-wrap:wrap;gap:12px;align-items:flex-start;}
.cards>.scroll,.summary>.scroll{min-width:0;}
.banner{background:var(--b);border:1px solid var(--c);border-left:8px solid var(--c);border-radius:6px;padding:8px 14px;margin:0 0 14px;}
.banner p{margin:4px 0;}
.verdict-line{display:flex;flex-wrap:wrap;gap:6px 14px;align-items:center;font-size:1.15em;}
.verdict-label{font-weight:600;}
.banner .badge{font-size:1em;padding:1px 12px;background:var(--card);}
.exit b{font-variant-numeric:tabular-nums;}
#banner-line{font-weight:600;}
#banner-line>span+span::before{content:" \b7  ";}
table{border-collapse:collapse;}
caption{text-align:left;font-weight:700;padding:0 0 6px;}
.card{background:var(--card);border:1px solid var(--line);border-radius:6px;}
.card caption{padding:8px 10px 4px;}
.card th,.card td{text-align:left;padding:3px 10px;vertical-align:top;}
.card th{color:var(--muted);font-weight:600;white-space:nowrap;}
.card td{overflow-wrap:anywhere;}
.card .badge{color:inherit;}
.grid{width:100%;background:var(--card);border:1px solid var(--line);}
.grid caption{padding:8px 0 6px;}
.grid th,.grid td{border-bottom:1px solid var(--soft);padding:4px 8px;text-align:left;vertical-align:top;}
.grid thead th{background:var(--soft);font-weight:600;white-space:nowrap;}
.grid tbody th{font-weight:600;}
.num,.grid td.num{text-align:right;font-variant-numeric:tabular-nums;}
.mono,code,.where,.path{font-family:ui-monospace,SFMono-Regular,Menlo,Consolas,monospace;font-size:.86em;}
.mono{overflow-wrap:anywhere;}
.file{white-space:nowrap;}
.guid{min-width:10em;}
.muted,.where,.path{color:var(--muted);}
.where{margin-left:8px;white-space:nowrap;}
.badge{display:inline-block;padding:0 8px;border-radius:10px;font-weight:600;font-size:.9em;white-space:nowrap;border:1px solid;}
.badge .sym{font-weight:700;}
.st-pass{--c:var(--pass);--b:var(--pass-bg);--bar:var(--pass-bar);}
.st-fail{--c:var(--fail);--b:var(--fail-bg);--bar:var(--fail-bar);}
.st-error{--c:var(--error);--b:var(--error-bg);--bar:var(--error-bar);}
.st-nt{--c:var(--nt);--b:var(--nt-bg);--bar:var(--nt-bar);}
.st-other{--c:var(--other);--b:var(--other-bg);--bar:var(--other-bar);}
.badge,.card .badge{color:var(--c);background:var(--b);border-color:var(--c);}
td.s{color:var(--c);font-weight:600;white-space:nowrap;}
.asserts td:nth-child(2){color:var(--pass);font-weight:600;white-space:nowrap;}
.asserts tr[class] td:nth-child(2){color:var(--c);}
.asserts td:nth-child(2)::before{content:"\2714\a0";content:"\2714\a0"/"";}
.asserts tr.st-fail td:nth-child(2)::before{content:"\2718\a0";content:"\2718\a0"/"";}
.asserts tr.st-error td:nth-child(2)::before{content:"!\a0";content:"!\a0"/"";}
.asserts tr.st-other td:nth-child(2)::before{content:"?\a0";content:"?\a0"/"";}
.asserts.sd td:nth-child(3),.asserts.sd td:nth-child(n+5):not(:nth-child(6)),.asserts.code td:nth-child(n+3){font-family:ui-monospace,SFMono-Regular,Menlo,Consolas,monospace;font-size:.86em;overflow-wrap:anywhere;}
.asserts.sd td:nth-child(n+5):nth-child(8),.asserts.code td:nth-child(n+3):nth-child(4){overflow-wrap:normal;}
.asserts.sd td:nth-child(7){min-width:10em;}
.asserts td:last-child{white-space:nowrap;overflow-wrap:normal;}
svg.bar{display:block;width:100%;height:18px;margin:12px 0 0;border-radius:4px;background:var(--soft);}
svg.bar rect{fill:var(--bar);stroke:var(--card);stroke-width:2px;vector-effect:non-scaling-stroke;}
.problems th a{font-weight:700;}
.ok-note{color:var(--pass);font-style:normal;font-weight:600;}
.case{background:var(--card);border:1px solid var(--line);border-left:6px solid var(--c);border-radius:6px;margin:10px 0;}
.case>summary{cursor:pointer;padding:9px 12px;list-style-position:inside;}
.case>summary .name{display:inline;font-weight:700;font-size:1.05em;margin:0 6px 0 0;overflow-wrap:anywhere;}
details.case,tr[id],h2[id],main{scroll-margin-top:10px;}
details.case:target{outline:3px solid var(--focus);outline-offset:2px;}
tr:target>*{background:var(--hit) !important;}
tr:target>th:first-child{box-shadow:inset 4px 0 0 var(--focus);}
.facts{color:var(--muted);font-size:.88em;}
.facts span+span::before{content:" · ";}
.case[open]>summary{border-bottom:1px solid var(--soft);}
.body{padding:8px 12px 12px;}
.facts-table{margin:4px 0 10px;}
.scroll{overflow-x:auto;max-width:100%;}
tr.bad>*{background:var(--bad-row);}
.vr-ok{color:var(--pass);}.vr-bad{color:var(--fail);font-weight:600;}.vr-info{color:var(--muted);}
.images{display:flex;flex-wrap:wrap;gap:14px;margin:10px 0;}
.figure{flex:1 1 260px;min-width:0;max-width:560px;border:1px solid var(--line);border-radius:6px;padding:8px;background:var(--bg);}
.figure img{display:block;width:100%;height:280px;object-fit:contain;background:#fff;}
.caption{font-weight:600;margin-bottom:4px;}
.meter{display:inline-block;width:110px;height:10px;border:1px solid var(--muted);border-radius:5px;overflow:hidden;vertical-align:middle;background:var(--soft);}
.meter .fill{display:block;height:100%;background:var(--pass-bar);}
.pct{font-weight:700;}
.empty{color:var(--muted);font-style:italic;}
.foot{margin-top:30px;color:var(--muted);font-size:.85em;}
.controls{position:sticky;top:0;z-index:1;background:var(--bg);border-bottom:1px solid var(--line);padding:8px 0;margin-top:14px;display:flex;flex-wrap:wrap;gap:8px 16px;align-items:center;}
.controls[hidden]{display:none;}
.filters{border:none;margin:0;padding:0;display:flex;flex-wrap:wrap;gap:4px 10px;align-items:center;}
.filters legend{float:left;margin-right:6px;font-weight:600;}
.filter{white-space:nowrap;cursor:pointer;}
.filter .n{font-variant-numeric:tabular-nums;}
.search input{font:inherit;padding:3px 8px;width:16em;max-width:60vw;border:1px solid var(--line);border-radius:4px;background:var(--card);color:var(--fg);}
button{font:inherit;padding:3px 10px;border:1px solid var(--line);border-radius:4px;background:var(--card);color:var(--fg);cursor:pointer;}
.keys{margin:0;color:var(--muted);font-size:.85em;}
.shown{margin:0;font-weight:600;font-size:.9em;}
.case.current{outline:3px solid var(--focus);}
[hidden]{display:none !important;}
@media print{
.controls,.skip{display:none !important;}
body{background:#fff;color:#000;font-size:11pt;}
.case{content-visibility:visible;break-inside:auto;}
.figure img{height:auto;max-height:380px;}
.case>summary{list-style:none;}
.scroll{overflow:visible;}
}
@media print{details::details-content{content-visibility:visible;display:block;}}
</xsl:text>
    <!-- Landing and focus below the sticky toolbar (the html element's scroll
         padding is the toolbar's height, which the script measures), closed
         blocks laid out only near the view, the status filters as classes of
         main, the toolbar on a phone, and paper in the light palette whatever
         the screen's scheme. -->
    <xsl:text>html{scroll-padding-top:var(--toolbar);}
details.case:not([open]){content-visibility:auto;contain-intrinsic-size:auto 42px;}
@media (max-width:600px){details.case:not([open]){contain-intrinsic-size:auto 92px;}}
main.hide-PASSED tr[data-status=PASSED],main.hide-FAILED tr[data-status=FAILED],main.hide-ERROR tr[data-status=ERROR],main.hide-UNDEFINED tr[data-status=UNDEFINED]{display:none;}
@media (max-width:600px){.controls{gap:4px 10px;padding:4px 0;margin-top:8px;}.keys{display:none;}.search input{width:9em;}.filters legend{float:none;display:block;margin:0;}}
@media print{:root[data-theme],:root:not([data-theme]){color-scheme:light;--bg:#f6f7f9;--fg:#1f2328;--card:#fff;--line:#d0d7de;--soft:#eef1f4;--muted:#57606a;--link:#0550ae;--focus:#0969da;
--pass:#0f6b3a;--pass-bg:#dcf5e6;--fail:#b01c0c;--fail-bg:#ffe8e3;--error:#8a4b00;--error-bg:#fff1d6;--nt:#6a2fa8;--nt-bg:#f3e8ff;--other:#424a53;--other-bg:#eaeef2;--bad-row:#fff6f4;--hit:#fff1a6;}}
</xsl:text>
  </xsl:template>

  <!-- ===== Script ===== -->

  <!-- Filters by status with the count of what they show, a text search,
       state in the URL hash, keys and the theme toggle. A test case report
       has only the search and the toggle. The page is complete without it. -->
  <xsl:template name="script">
    <xsl:text>
(function () {
  'use strict';
  var doc = document, root = doc.documentElement;
  var controls = doc.getElementById('controls');
  if (!controls) return;
  var slice = function (list) { return Array.prototype.slice.call(list); };
  var main = doc.getElementById('main');
  var cases = slice(doc.querySelectorAll('details.case'));
  var boxes = slice(controls.querySelectorAll('.filters:not(.changes) input'));
  // With earlier runs: only the test cases of the ticked changes (none
  // ticked: all of them).
  var changeBoxes = slice(controls.querySelectorAll('.changes input'));
  var want = null;
  var q = doc.getElementById('q');
  var nomatch = doc.getElementById('nomatch');
  var shownNote = doc.getElementById('shown');
  var problemRows = slice(doc.querySelectorAll('table.problems tbody tr[data-case]'));
  var themeButton = doc.getElementById('theme');
  var current = -1;

  // Per test case, by its place in the page: status key, whether the
  // search finds it, its text (lowercase, read once), whether rows are
  // hidden. The status filters are also classes of main, which hide the
  // grouped problems of a large context.
  var index = {};
  var statuses = cases.map(function (c, i) { index[c.id] = i; return c.getAttribute('data-status'); });
  var changes = cases.map(function (c) { return c.getAttribute('data-change') || ''; });
  var found = cases.map(function () { return true; });
  var texts = [], heads = [], rowsHidden = [];
  var off = {};
  var problemCase = problemRows.map(function (r) {
    var i = index[r.getAttribute('data-case')];
    return i === undefined ? -1 : i;
  });

  function store(key, value) { try { localStorage.setItem(key, value); } catch (e) {} }
  function load(key) { try { return localStorage.getItem(key); } catch (e) { return null; } }

  function isDark() {
    var t = root.getAttribute('data-theme');
    if (t) return t === 'dark';
    return window.matchMedia &amp;&amp; window.matchMedia('(prefers-color-scheme: dark)').matches;
  }
  function showTheme() { themeButton.setAttribute('aria-pressed', isDark() ? 'true' : 'false'); }
  var saved = load('qendor-theme');
  if (saved === 'dark' || saved === 'light') root.setAttribute('data-theme', saved);
  themeButton.addEventListener('click', function () {
    var next = isDark() ? 'light' : 'dark';
    root.setAttribute('data-theme', next);
    store('qendor-theme', next);
    showTheme();
  });
  showTheme();

  function caseText(i) {
    if (texts[i] === undefined) texts[i] = cases[i].textContent.toLowerCase();
    return texts[i];
  }
  function headText(i) {
    if (heads[i] === undefined) heads[i] = cases[i].querySelector('summary').textContent.toLowerCase();
    return heads[i];
  }
  function shown(i) { return found[i] &amp;&amp; !off[statuses[i]] &amp;&amp; (!want || want[changes[i]] === true); }

  // The assertion lines of a closed block of a large context made into the
  // table that a full block has, with the same anchors and row classes.
  var words = {};
  boxes.forEach(function (b) {
    var badge = b.parentNode.querySelector('.badge');
    words[b.value] = badge ? badge.lastChild.textContent.trim() : '';
  });
  function esc(t) { return t.replace(/&amp;/g, '&amp;amp;').replace(/[&lt;]/g, '&amp;lt;').replace(/"/g, '&amp;quot;'); }
  function upgrade(c) {
    var pre = c.querySelector('pre.lite-rows');
    c.classList.remove('lite');
    if (!pre) return;
    var lines = pre.textContent.split('\n');
    var html = ['&lt;table class="grid asserts ', pre.getAttribute('data-kind'), '"&gt;&lt;caption&gt;',
                esc(pre.getAttribute('data-caption')), '&lt;\/caption&gt;&lt;thead&gt;&lt;tr&gt;'];
    lines[0].split('\t').forEach(function (h) { html.push('&lt;th scope="col"&gt;', esc(h), '&lt;\/th&gt;'); });
    html.push('&lt;\/tr&gt;&lt;\/thead&gt;&lt;tbody&gt;');
    for (var k = 1; k &lt; lines.length; k++) {
      var cells = lines[k].split('\t');
      var id = esc(c.id + '-a' + cells[0]);
      var st = cells[1] === words.PASSED ? '' : cells[1] === words.FAILED ? 'bad st-fail'
             : cells[1] === words.ERROR ? 'bad st-error' : 'bad st-other';
      html.push('&lt;tr id="', id, st ? '" class="' + st : '', '"&gt;&lt;th&gt;&lt;a href="#', id, '"&gt;', esc(cells[0]), '&lt;\/a&gt;&lt;\/th&gt;');
      for (var n = 1; n &lt; cells.length; n++) html.push('&lt;td&gt;', esc(cells[n]), '&lt;\/td&gt;');
      html.push('&lt;\/tr&gt;');
    }
    var box = doc.createElement('div');
    box.className = 'scroll';
    box.innerHTML = html.join('') + '&lt;\/tbody&gt;&lt;\/table&gt;';
    pre.parentNode.replaceChild(box, pre);
    texts[index[c.id]] = undefined;
  }
  // Opened by hand: the table. Opened by the browser's find: the lines stay,
  // so that the match it marks stays where it is.
  main.addEventListener('click', function (e) {
    var s = e.target.closest &amp;&amp; e.target.closest('summary');
    var c = s &amp;&amp; s.parentNode;
    if (c &amp;&amp; !c.open &amp;&amp; c.classList.contains('lite')) upgrade(c);
  });

  function state() {
    var hidden = boxes.filter(function (b) { return !b.checked; }).map(function (b) { return b.value; });
    var parts = [];
    if (hidden.length) parts.push('hide=' + hidden.join(','));
    var only = changeBoxes.filter(function (b) { return b.checked; }).map(function (b) { return b.value; });
    if (only.length) parts.push('only=' + only.join(','));
    if (q.value) parts.push('q=' + encodeURIComponent(q.value));
    return parts.join('&amp;');
  }

  var batch = 0, nextShown = 0;
  function showSome() {
    var end = Math.min(cases.length, nextShown + 300);
    for (; nextShown !== end; nextShown++) {
      if (cases[nextShown].hidden &amp;&amp; shown(nextShown)) cases[nextShown].hidden = false;
    }
    batch = nextShown === cases.length ? 0 : requestAnimationFrame(showSome);
  }

  function apply(writeHash) {
    off = {};
    want = null;
    changeBoxes.forEach(function (b) {
      if (!b.checked) return;
      want = want || {};
      want[b.value] = true;
    });
    boxes.forEach(function (b) {
      off[b.value] = !b.checked;
      main.classList.toggle('hide-' + b.value, !b.checked);
    });
    var needle = q.value.trim().toLowerCase();
    var visible = 0;
    for (var i = 0; i !== cases.length; i++) {
      var c = cases[i];
      var on = !needle || caseText(i).indexOf(needle) !== -1;
      // In a full block the search also hides the rows that do not match
      // (unless the name does) and opens the block.
      if (on &amp;&amp; needle &amp;&amp; !c.classList.contains('lite')) {
        var head = headText(i).indexOf(needle) !== -1;
        var rows = c.querySelectorAll('tbody tr[id]');
        for (var r = 0; r !== rows.length; r++) {
          rows[r].hidden = !head &amp;&amp; rows[r].textContent.toLowerCase().indexOf(needle) === -1;
        }
        rowsHidden[i] = !head;
        if (!head) c.open = true;
      } else if (rowsHidden[i]) {
        slice(c.querySelectorAll('tbody tr[hidden]')).forEach(function (row) { row.hidden = false; });
        rowsHidden[i] = false;
      }
      found[i] = on;
      if (shown(i)) visible++;
      else if (!c.hidden) c.hidden = true;
    }
    // Blocks that come back are shown a few hundred a frame, from the top:
    // those in view at once, the rest while the reader looks at them.
    cancelAnimationFrame(batch);
    nextShown = 0;
    showSome();
    if (nomatch) nomatch.hidden = visible !== 0;
    // The problems list follows the filter, and the count says what it left.
    problemRows.forEach(function (row, k) {
      var hide = problemCase[k] === -1 || !shown(problemCase[k]);
      if (row.hidden !== hide) row.hidden = hide;
    });
    if (shownNote) {
      var text = shownNote.getAttribute('data-format').replace('{n}', visible).replace('{m}', cases.length);
      if (shownNote.textContent !== text) shownNote.textContent = text;
    }
    if (writeHash) {
      var s = state();
      history.replaceState(null, '', s ? '#' + s : location.pathname + location.search);
    }
  }

  function readHash() {
    var h = decodeURIComponent(location.hash.replace(/^#/, ''));
    if (/^(hide|q|only)=/.test(h)) {
      var hide = [], text = '', only = [];
      location.hash.replace(/^#/, '').split('&amp;').forEach(function (p) {
        var kv = p.split('=');
        if (kv[0] === 'hide') hide = decodeURIComponent(kv[1] || '').split(',');
        if (kv[0] === 'q') text = decodeURIComponent(kv[1] || '');
        if (kv[0] === 'only') only = decodeURIComponent(kv[1] || '').split(',');
      });
      boxes.forEach(function (b) { b.checked = hide.indexOf(b.value) === -1; });
      changeBoxes.forEach(function (b) { b.checked = only.indexOf(b.value) !== -1; });
      q.value = text;
      apply(false);
      return;
    }
    var target = h &amp;&amp; doc.getElementById(h);
    // A row of a closed block of a large context: the block's table first.
    var row = !target &amp;&amp; /^(.*)-a\d+$/.exec(h);
    if (row &amp;&amp; index[row[1]] !== undefined) {
      upgrade(cases[index[row[1]]]);
      target = doc.getElementById(h);
    }
    if (!target) return;
    var refilter = false;
    for (var n = target; n; n = n.parentElement) {
      if (n.tagName === 'DETAILS') {
        if (n.classList.contains('lite')) upgrade(n);
        n.open = true;
        n.hidden = false;
        if (index[n.id] !== undefined) {
          found[index[n.id]] = true;
          boxes.forEach(function (b) {
            if (b.value === statuses[index[n.id]] &amp;&amp; !b.checked) { b.checked = true; refilter = true; }
          });
          if (want &amp;&amp; want[changes[index[n.id]]] !== true) {
            changeBoxes.forEach(function (b) { b.checked = false; });
            refilter = true;
          }
        }
      }
      if (n.tagName === 'TR') n.hidden = false;
    }
    if (refilter) apply(false);
    land(target);
  }

  // A jump's target stays where the jump put it while the blocks near it
  // are laid out for the first time (a closed block's height is only
  // estimated until then): for a few frames, and until the reader scrolls,
  // it is put back if it moved.
  var moved = false;
  ['wheel', 'touchstart', 'keydown', 'mousedown'].forEach(function (type) {
    window.addEventListener(type, function () { moved = true; }, {passive: true});
  });
  function land(target) {
    moved = false;
    target.scrollIntoView();
    var top = target.getBoundingClientRect().top, frames = 0;
    (function hold() {
      if (moved || ++frames &gt; 20) return;
      if (Math.abs(target.getBoundingClientRect().top - top) &gt; 1) target.scrollIntoView();
      requestAnimationFrame(hold);
    })();
  }

  boxes.concat(changeBoxes).forEach(function (b) { b.addEventListener('change', function () { apply(true); }); });
  // The search runs once per frame, however fast the keys come.
  var pending = 0;
  q.addEventListener('input', function () {
    if (!pending) pending = requestAnimationFrame(function () { pending = 0; apply(true); });
  });
  function onClick(id, action) {
    var button = doc.getElementById(id);
    if (button) button.addEventListener('click', action);
  }
  onClick('expand', function () {
    cases.forEach(function (c, i) { if (shown(i)) c.open = true; });
  });
  onClick('collapse', function () {
    cases.forEach(function (c) { if (c.open) c.open = false; });
  });

  function step(by) {
    var problems = cases.filter(function (c, i) { return shown(i) &amp;&amp; c.classList.contains('problem'); });
    if (!problems.length) return;
    current = (current + by + problems.length) % problems.length;
    cases.forEach(function (c) { c.classList.remove('current'); });
    var c = problems[current];
    c.classList.add('current');
    c.open = true;
    c.scrollIntoView({block: 'start'});
    c.querySelector('summary').focus({preventScroll: true});
  }
  doc.addEventListener('keydown', function (e) {
    if (e.ctrlKey || e.metaKey || e.altKey) return;
    var t = e.target.tagName;
    if ((t === 'INPUT' &amp;&amp; e.target.type !== 'checkbox') || t === 'TEXTAREA' || t === 'SELECT') {
      if (e.key === 'Escape') e.target.blur();
      return;
    }
    if (e.key === '/') { e.preventDefault(); q.focus(); q.select(); }
    else if (e.key === 'j' &amp;&amp; boxes.length) step(1);
    else if (e.key === 'k' &amp;&amp; boxes.length) step(-1);
  });
  window.addEventListener('hashchange', readHash);
  window.addEventListener('beforeprint', function () { cases.forEach(function (c) { c.open = true; }); });

  // Targets stop below the sticky toolbar: the page's scroll padding is its
  // height, measured again whenever it wraps differently.
  function measureToolbar() {
    root.style.setProperty('--toolbar', Math.ceil(controls.getBoundingClientRect().height) + 'px');
  }
  controls.hidden = false;
  measureToolbar();
  if (window.ResizeObserver) new ResizeObserver(measureToolbar).observe(controls);
  else window.addEventListener('resize', measureToolbar);
  readHash();

  // The text the search looks through, read while the page is idle, so that
  // the first key typed into the search finds it ready.
  var warmed = 0;
  function warm(deadline) {
    while (warmed &lt; cases.length &amp;&amp; deadline.timeRemaining() &gt; 1) { caseText(warmed); warmed++; }
    if (warmed &lt; cases.length) requestIdleCallback(warm);
  }
  if (window.requestIdleCallback) requestIdleCallback(warm);
})();
</xsl:text>
  </xsl:template>

</xsl:stylesheet>
