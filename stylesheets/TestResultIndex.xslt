<?xml version="1.0" encoding="UTF-8"?>
<!--
  The index page of an output folder (index.xml, written by qendor -index):
  every test context document of the folder on one page, problems first,
  each with its status, its test cases by status, its assertions, where it
  ran and when, and a link to its report. The same status filters, search,
  theme toggle and address hash as a context report, on the same styles.
  Included by TestResultCore.xslt, whose page templates and language strings
  ($T) it shares; its own words are below, per language ($lang of the
  language file), and a language without them gets the English ones. The
  list reads and prints without scripts: the script only adds the controls.
-->
<xsl:stylesheet version="1.0"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:x="urn:qendor:index"
    exclude-result-prefixes="x">

  <x:strings>
    <x:s lang="en" k="title">Test contexts</x:s>
    <x:s lang="en" k="kind">Index of the output folder</x:s>
    <x:s lang="en" k="skip">Skip to the test contexts</x:s>
    <x:s lang="en" k="allPassed">All {m} test contexts passed</x:s>
    <x:s lang="en" k="notPassed">{n} of {m} test contexts did not pass</x:s>
    <x:s lang="en" k="none">No test context documents in this folder.</x:s>
    <x:s lang="en" k="noMatch">No test context matches the filter.</x:s>
    <x:s lang="en" k="shown">{n} of {m} test contexts shown</x:s>
    <x:s lang="en" k="searchHint">names, projects, files</x:s>
    <x:s lang="en" k="file">File</x:s>
    <x:s lang="en" k="skipped">Files not indexed</x:s>
    <x:s lang="en" k="could not be read">could not be read</x:s>
    <x:s lang="en" k="is not well-formed">is not well-formed</x:s>

    <x:s lang="zh-CN" k="title">测试上下文</x:s>
    <x:s lang="zh-CN" k="kind">输出文件夹索引</x:s>
    <x:s lang="zh-CN" k="skip">跳到测试上下文</x:s>
    <x:s lang="zh-CN" k="allPassed">全部 {m} 个测试上下文均通过</x:s>
    <x:s lang="zh-CN" k="notPassed">{m} 个测试上下文中 {n} 个未通过</x:s>
    <x:s lang="zh-CN" k="none">此文件夹中没有测试上下文文档。</x:s>
    <x:s lang="zh-CN" k="noMatch">没有与筛选条件匹配的测试上下文。</x:s>
    <x:s lang="zh-CN" k="shown">显示 {m} 个测试上下文中的 {n} 个</x:s>
    <x:s lang="zh-CN" k="searchHint">名称、项目、文件</x:s>
    <x:s lang="zh-CN" k="file">文件</x:s>
    <x:s lang="zh-CN" k="skipped">未编入索引的文件</x:s>
    <x:s lang="zh-CN" k="could not be read">无法读取</x:s>
    <x:s lang="zh-CN" k="is not well-formed">格式不正确</x:s>

    <x:s lang="zh-TW" k="title">測試情境</x:s>
    <x:s lang="zh-TW" k="kind">輸出資料夾索引</x:s>
    <x:s lang="zh-TW" k="skip">跳到測試情境</x:s>
    <x:s lang="zh-TW" k="allPassed">全部 {m} 個測試情境皆通過</x:s>
    <x:s lang="zh-TW" k="notPassed">{m} 個測試情境中 {n} 個未通過</x:s>
    <x:s lang="zh-TW" k="none">此資料夾中沒有測試情境文件。</x:s>
    <x:s lang="zh-TW" k="noMatch">沒有符合篩選條件的測試情境。</x:s>
    <x:s lang="zh-TW" k="shown">顯示 {m} 個測試情境中的 {n} 個</x:s>
    <x:s lang="zh-TW" k="searchHint">名稱、專案、檔案</x:s>
    <x:s lang="zh-TW" k="file">檔案</x:s>
    <x:s lang="zh-TW" k="skipped">未編入索引的檔案</x:s>
    <x:s lang="zh-TW" k="could not be read">無法讀取</x:s>
    <x:s lang="zh-TW" k="is not well-formed">格式不正確</x:s>

    <x:s lang="ko" k="title">테스트 컨텍스트</x:s>
    <x:s lang="ko" k="kind">출력 폴더 색인</x:s>
    <x:s lang="ko" k="skip">테스트 컨텍스트로 건너뛰기</x:s>
    <x:s lang="ko" k="allPassed">테스트 컨텍스트 {m}개 모두 통과</x:s>
    <x:s lang="ko" k="notPassed">테스트 컨텍스트 {m}개 중 {n}개 통과하지 못함</x:s>
    <x:s lang="ko" k="none">이 폴더에 테스트 컨텍스트 문서가 없습니다.</x:s>
    <x:s lang="ko" k="noMatch">필터와 일치하는 테스트 컨텍스트가 없습니다.</x:s>
    <x:s lang="ko" k="shown">테스트 컨텍스트 {m}개 중 {n}개 표시</x:s>
    <x:s lang="ko" k="searchHint">이름, 프로젝트, 파일</x:s>
    <x:s lang="ko" k="file">파일</x:s>
    <x:s lang="ko" k="skipped">색인되지 않은 파일</x:s>
    <x:s lang="ko" k="could not be read">읽을 수 없음</x:s>
    <x:s lang="ko" k="is not well-formed">올바른 형식이 아님</x:s>

    <x:s lang="ja" k="title">テストコンテキスト</x:s>
    <x:s lang="ja" k="kind">出力フォルダーの索引</x:s>
    <x:s lang="ja" k="skip">テストコンテキストへ移動</x:s>
    <x:s lang="ja" k="allPassed">{m} 件のテストコンテキストがすべて合格</x:s>
    <x:s lang="ja" k="notPassed">{m} 件中 {n} 件のテストコンテキストが合格せず</x:s>
    <x:s lang="ja" k="none">このフォルダーにテストコンテキストの文書はありません。</x:s>
    <x:s lang="ja" k="noMatch">フィルターに一致するテストコンテキストはありません。</x:s>
    <x:s lang="ja" k="shown">{m} 件中 {n} 件のテストコンテキストを表示</x:s>
    <x:s lang="ja" k="searchHint">名前、プロジェクト、ファイル</x:s>
    <x:s lang="ja" k="file">ファイル</x:s>
    <x:s lang="ja" k="skipped">索引に含まれないファイル</x:s>
    <x:s lang="ja" k="could not be read">読み込めません</x:s>
    <x:s lang="ja" k="is not well-formed">整形式ではありません</x:s>
  </x:strings>

  <xsl:variable name="indexWords" select="document('')/*/x:strings/x:s"/>

  <!-- A word of the index in the page's language, else in English. -->
  <xsl:template name="xw">
    <xsl:param name="k"/>
    <xsl:variable name="own" select="$indexWords[@lang = $lang][@k = $k]"/>
    <xsl:choose>
      <xsl:when test="$own"><xsl:value-of select="$own"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="$indexWords[@lang = 'en'][@k = $k]"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The same with "{n}" and "{m}" filled in. -->
  <xsl:template name="xfmt">
    <xsl:param name="k"/>
    <xsl:param name="n"/>
    <xsl:param name="m"/>
    <xsl:call-template name="fill">
      <xsl:with-param name="s"><xsl:call-template name="xw"><xsl:with-param name="k" select="$k"/></xsl:call-template></xsl:with-param>
      <xsl:with-param name="n" select="$n"/>
      <xsl:with-param name="m" select="$m"/>
    </xsl:call-template>
  </xsl:template>

  <!-- A context's status as one of the four filter keys. -->
  <xsl:template name="index-key">
    <xsl:call-template name="status-key"><xsl:with-param name="s" select="@status"/></xsl:call-template>
  </xsl:template>

  <!-- ===== Page ===== -->

  <xsl:template match="TestIndex">
    <xsl:variable name="all" select="Context"/>
    <xsl:variable name="bad" select="Context[not(@status = 'PASSED')]"/>
    <xsl:variable name="title"><xsl:call-template name="xw"><xsl:with-param name="k" select="'title'"/></xsl:call-template></xsl:variable>
    <html lang="{$lang}">
      <head>
        <meta charset="UTF-8"/>
        <title><xsl:value-of select="$title"/></title>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <meta name="color-scheme" content="light dark"/>
        <style>
          <xsl:text>body{font-family:</xsl:text>
          <xsl:value-of select="$fonts"/>
          <xsl:text>;}h1,h2,h3,caption,legend,th{word-break:</xsl:text>
          <xsl:value-of select="$headingBreak"/>
          <xsl:text>;}</xsl:text>
          <xsl:call-template name="css"/>
          <xsl:call-template name="index-css"/>
        </style>
      </head>
      <body>
        <a class="skip" href="#main">
          <xsl:call-template name="xw"><xsl:with-param name="k" select="'skip'"/></xsl:call-template>
        </a>
        <div class="page">
          <header class="head">
            <h1>
              <span class="kind"><xsl:call-template name="xw"><xsl:with-param name="k" select="'kind'"/></xsl:call-template></span>
              <xsl:value-of select="$title"/>
            </h1>
            <xsl:variable name="worst">
              <xsl:choose>
                <xsl:when test="$bad"><xsl:value-of select="$bad[1]/@status"/></xsl:when>
                <xsl:otherwise>PASSED</xsl:otherwise>
              </xsl:choose>
            </xsl:variable>
            <div id="banner">
              <xsl:attribute name="class">
                <xsl:text>banner </xsl:text>
                <xsl:call-template name="status-class"><xsl:with-param name="s" select="$worst"/></xsl:call-template>
              </xsl:attribute>
              <p class="verdict-line">
                <xsl:call-template name="badge"><xsl:with-param name="s" select="$worst"/></xsl:call-template>
                <span id="banner-line">
                  <xsl:choose>
                    <xsl:when test="not($all)"><xsl:call-template name="xw"><xsl:with-param name="k" select="'none'"/></xsl:call-template></xsl:when>
                    <xsl:when test="$bad">
                      <xsl:call-template name="xfmt">
                        <xsl:with-param name="k" select="'notPassed'"/>
                        <xsl:with-param name="n" select="count($bad)"/>
                        <xsl:with-param name="m" select="count($all)"/>
                      </xsl:call-template>
                    </xsl:when>
                    <xsl:otherwise>
                      <xsl:call-template name="xfmt">
                        <xsl:with-param name="k" select="'allPassed'"/>
                        <xsl:with-param name="m" select="count($all)"/>
                      </xsl:call-template>
                    </xsl:otherwise>
                  </xsl:choose>
                </span>
              </p>
            </div>
          </header>
          <xsl:call-template name="index-controls"><xsl:with-param name="all" select="$all"/></xsl:call-template>
          <main id="main" tabindex="-1">
            <h2 id="contexts" tabindex="-1">
              <xsl:value-of select="$title"/>
              <xsl:text> (</xsl:text>
              <xsl:call-template name="int"><xsl:with-param name="n" select="count($all)"/></xsl:call-template>
              <xsl:text>)</xsl:text>
            </h2>
            <xsl:choose>
              <xsl:when test="not($all)">
                <p class="empty"><xsl:call-template name="xw"><xsl:with-param name="k" select="'none'"/></xsl:call-template></p>
              </xsl:when>
              <xsl:otherwise>
                <ol class="index">
                  <xsl:apply-templates select="$all"/>
                </ol>
                <p class="empty" id="nomatch" hidden="hidden">
                  <xsl:call-template name="xw"><xsl:with-param name="k" select="'noMatch'"/></xsl:call-template>
                </p>
              </xsl:otherwise>
            </xsl:choose>
            <xsl:if test="Skipped">
              <h2 id="skipped"><xsl:call-template name="xw"><xsl:with-param name="k" select="'skipped'"/></xsl:call-template></h2>
              <ul class="skipped">
                <xsl:for-each select="Skipped">
                  <li>
                    <span class="mono"><xsl:value-of select="@file"/></span>
                    <xsl:text> </xsl:text>
                    <xsl:call-template name="xw"><xsl:with-param name="k" select="string(@reason)"/></xsl:call-template>
                  </li>
                </xsl:for-each>
              </ul>
            </xsl:if>
          </main>
          <footer class="foot">
            <p><xsl:call-template name="t"><xsl:with-param name="k" select="'generated'"/></xsl:call-template></p>
          </footer>
        </div>
        <script>
          <xsl:call-template name="index-script"/>
        </script>
      </body>
    </html>
  </xsl:template>

  <!-- The status filters with their counts, the search, the theme and the
       count of what is shown; hidden until the script runs. -->
  <xsl:template name="index-controls">
    <xsl:param name="all"/>
    <div class="controls" id="controls" hidden="hidden" role="search">
      <fieldset class="filters">
        <legend><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.show'"/></xsl:call-template></legend>
        <xsl:call-template name="index-filter"><xsl:with-param name="s" select="'PASSED'"/><xsl:with-param name="n" select="count($all[@status = 'PASSED'])"/></xsl:call-template>
        <xsl:call-template name="index-filter"><xsl:with-param name="s" select="'FAILED'"/><xsl:with-param name="n" select="count($all[@status = 'FAILED'])"/></xsl:call-template>
        <xsl:call-template name="index-filter"><xsl:with-param name="s" select="'ERROR'"/><xsl:with-param name="n" select="count($all[@status = 'ERROR'])"/></xsl:call-template>
        <xsl:call-template name="index-filter"><xsl:with-param name="s" select="'UNDEFINED'"/><xsl:with-param name="n" select="count($all[not(@status = 'PASSED' or @status = 'FAILED' or @status = 'ERROR')])"/></xsl:call-template>
      </fieldset>
      <label class="search">
        <span><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.search'"/></xsl:call-template></span>
        <xsl:text> </xsl:text>
        <input type="search" id="q" autocomplete="off">
          <xsl:attribute name="placeholder"><xsl:call-template name="xw"><xsl:with-param name="k" select="'searchHint'"/></xsl:call-template></xsl:attribute>
        </input>
      </label>
      <span class="buttons">
        <button type="button" id="theme" aria-pressed="false"><xsl:call-template name="t"><xsl:with-param name="k" select="'ctl.dark'"/></xsl:call-template></button>
      </span>
      <p class="shown" id="shown" aria-live="polite">
        <xsl:attribute name="data-format"><xsl:call-template name="xw"><xsl:with-param name="k" select="'shown'"/></xsl:call-template></xsl:attribute>
        <xsl:call-template name="xfmt">
          <xsl:with-param name="k" select="'shown'"/>
          <xsl:with-param name="n" select="count($all)"/>
          <xsl:with-param name="m" select="count($all)"/>
        </xsl:call-template>
      </p>
    </div>
  </xsl:template>

  <xsl:template name="index-filter">
    <xsl:param name="s"/>
    <xsl:param name="n"/>
    <label class="filter">
      <input type="checkbox" checked="checked" value="{$s}"/>
      <xsl:text> </xsl:text>
      <xsl:call-template name="badge"><xsl:with-param name="s" select="$s"/></xsl:call-template>
      <xsl:text> </xsl:text>
      <span class="n"><xsl:value-of select="$n"/></span>
    </label>
  </xsl:template>

  <!-- One context: status and linked name first, then its test cases by
       status (only the statuses it has), then where and when it ran. -->
  <xsl:template match="Context">
    <xsl:variable name="key"><xsl:call-template name="index-key"/></xsl:variable>
    <li data-status="{$key}">
      <xsl:attribute name="class">
        <xsl:text>ctx </xsl:text>
        <xsl:call-template name="status-class"><xsl:with-param name="s" select="@status"/></xsl:call-template>
      </xsl:attribute>
      <p class="ctx-head">
        <xsl:call-template name="badge"><xsl:with-param name="s" select="@status"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <a class="name" href="{@href}"><xsl:value-of select="@name"/></a>
        <xsl:if test="@fullname != @name">
          <xsl:text> </xsl:text>
          <span class="mono muted"><xsl:value-of select="@fullname"/></span>
        </xsl:if>
      </p>
      <p class="ctx-counts">
        <span>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'testCases'"/></xsl:call-template>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template>
          <b><xsl:call-template name="int"><xsl:with-param name="n" select="@testCases"/></xsl:call-template></b>
        </span>
        <xsl:call-template name="index-count"><xsl:with-param name="s" select="'FAILED'"/><xsl:with-param name="n" select="@failed"/></xsl:call-template>
        <xsl:call-template name="index-count"><xsl:with-param name="s" select="'ERROR'"/><xsl:with-param name="n" select="@error"/></xsl:call-template>
        <xsl:call-template name="index-count"><xsl:with-param name="s" select="'UNDEFINED'"/><xsl:with-param name="n" select="@undefined"/></xsl:call-template>
        <xsl:call-template name="index-count"><xsl:with-param name="s" select="'PASSED'"/><xsl:with-param name="n" select="@passed"/></xsl:call-template>
        <span>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'assertions'"/></xsl:call-template>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template>
          <b><xsl:call-template name="int"><xsl:with-param name="n" select="@assertions"/></xsl:call-template></b>
        </span>
      </p>
      <p class="facts">
        <xsl:call-template name="index-fact"><xsl:with-param name="k" select="'projectName'"/><xsl:with-param name="v" select="@projectName"/></xsl:call-template>
        <xsl:call-template name="index-fact"><xsl:with-param name="k" select="'componentName'"/><xsl:with-param name="v" select="@componentName"/></xsl:call-template>
        <xsl:call-template name="index-fact"><xsl:with-param name="k" select="'configurationName'"/><xsl:with-param name="v" select="@configurationName"/></xsl:call-template>
        <xsl:call-template name="index-fact"><xsl:with-param name="k" select="'time'"/><xsl:with-param name="v"><xsl:call-template name="header-time"><xsl:with-param name="text" select="@time"/></xsl:call-template></xsl:with-param></xsl:call-template>
        <span>
          <xsl:call-template name="xw"><xsl:with-param name="k" select="'file'"/></xsl:call-template>
          <xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template>
          <span class="mono"><xsl:value-of select="@file"/></span>
        </span>
      </p>
    </li>
  </xsl:template>

  <!-- "✘ Failed 2" when the context has test cases of that status. -->
  <xsl:template name="index-count">
    <xsl:param name="s"/>
    <xsl:param name="n"/>
    <xsl:if test="$n &gt; 0">
      <span>
        <xsl:call-template name="badge"><xsl:with-param name="s" select="$s"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <b><xsl:call-template name="int"><xsl:with-param name="n" select="$n"/></xsl:call-template></b>
      </span>
    </xsl:if>
  </xsl:template>

  <xsl:template name="index-fact">
    <xsl:param name="k"/>
    <xsl:param name="v"/>
    <xsl:if test="string($v)">
      <span>
        <xsl:call-template name="t"><xsl:with-param name="k" select="$k"/></xsl:call-template>
        <xsl:call-template name="t"><xsl:with-param name="k" select="'colon'"/></xsl:call-template>
        <xsl:value-of select="$v"/>
      </span>
    </xsl:if>
  </xsl:template>

  <!-- ===== Style, on top of the report's ===== -->

  <xsl:template name="index-css">
    <xsl:text>
ol.index{list-style:none;margin:0;padding:0;}
.ctx{background:var(--card);border:1px solid var(--line);border-left:6px solid var(--c);border-radius:6px;margin:8px 0;padding:6px 12px;}
.ctx p{margin:3px 0;}
.ctx-head{display:flex;flex-wrap:wrap;gap:4px 10px;align-items:baseline;}
.ctx-head .name{font-weight:700;font-size:1.08em;overflow-wrap:anywhere;}
.ctx-head .mono{overflow-wrap:anywhere;}
.ctx-counts{display:flex;flex-wrap:wrap;gap:4px 14px;align-items:baseline;font-variant-numeric:tabular-nums;}
.ctx .facts{overflow-wrap:anywhere;}
.skipped{padding-left:20px;}
.skipped li{margin:2px 0;overflow-wrap:anywhere;}
@media print{.ctx{break-inside:avoid;}}
</xsl:text>
  </xsl:template>

  <!-- ===== Script ===== -->

  <!-- The filters with the count of what they show, the search, the state in
       the address hash ("hide=FAILED,ERROR&q=text", as a context report
       writes it), "/" for the search and the theme toggle, which shares its
       stored choice with the reports. -->
  <xsl:template name="index-script">
    <xsl:text>
(function () {
  'use strict';
  var doc = document, root = doc.documentElement;
  var controls = doc.getElementById('controls');
  if (!controls) return;
  var items = Array.prototype.slice.call(doc.querySelectorAll('li.ctx'));
  var texts = items.map(function (li) { return li.textContent.toLowerCase(); });
  var boxes = Array.prototype.slice.call(controls.querySelectorAll('.filters input'));
  var q = doc.getElementById('q');
  var nomatch = doc.getElementById('nomatch');
  var shownNote = doc.getElementById('shown');
  var themeButton = doc.getElementById('theme');

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

  function state() {
    var hidden = boxes.filter(function (b) { return !b.checked; }).map(function (b) { return b.value; });
    var parts = [];
    if (hidden.length) parts.push('hide=' + hidden.join(','));
    if (q.value) parts.push('q=' + encodeURIComponent(q.value));
    return parts.join('&amp;');
  }

  function apply(writeHash) {
    var shown = {};
    boxes.forEach(function (b) { shown[b.value] = b.checked; });
    var needle = q.value.trim().toLowerCase();
    var visible = 0;
    items.forEach(function (li, i) {
      var on = shown[li.getAttribute('data-status')] !== false &amp;&amp;
               (!needle || texts[i].indexOf(needle) !== -1);
      li.hidden = !on;
      if (on) visible++;
    });
    if (nomatch) nomatch.hidden = visible !== 0;
    var text = shownNote.getAttribute('data-format').replace('{n}', visible).replace('{m}', items.length);
    if (shownNote.textContent !== text) shownNote.textContent = text;
    if (writeHash) {
      var s = state();
      history.replaceState(null, '', s ? '#' + s : location.pathname + location.search);
    }
  }

  function readHash() {
    if (!/^#(hide|q)=/.test(location.hash)) return;
    var hide = [], text = '';
    location.hash.replace(/^#/, '').split('&amp;').forEach(function (p) {
      var kv = p.split('=');
      if (kv[0] === 'hide') hide = decodeURIComponent(kv[1] || '').split(',');
      if (kv[0] === 'q') text = decodeURIComponent(kv[1] || '');
    });
    boxes.forEach(function (b) { b.checked = hide.indexOf(b.value) === -1; });
    q.value = text;
    apply(false);
  }

  boxes.forEach(function (b) { b.addEventListener('change', function () { apply(true); }); });
  var timer = 0;
  q.addEventListener('input', function () {
    clearTimeout(timer);
    timer = setTimeout(function () { apply(true); }, 150);
  });
  doc.addEventListener('keydown', function (e) {
    if (e.ctrlKey || e.metaKey || e.altKey) return;
    var t = e.target.tagName;
    if ((t === 'INPUT' &amp;&amp; e.target.type !== 'checkbox') || t === 'TEXTAREA' || t === 'SELECT') {
      if (e.key === 'Escape') e.target.blur();
      return;
    }
    if (e.key === '/') { e.preventDefault(); q.focus(); q.select(); }
  });
  window.addEventListener('hashchange', readHash);
  controls.hidden = false;
  readHash();
})();
</xsl:text>
  </xsl:template>

</xsl:stylesheet>
