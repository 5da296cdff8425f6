<?xml version="1.0" encoding="UTF-8"?>
<!--
  The "ModelCoverage" elements of a document (written by qendor -coverage):
  each model drawn once with, on every element, how many test cases went
  through it. What no test case reached comes first; then a sequence
  diagram as nested fragment boxes with step chips, or a chart as a table of
  its states and transitions (the "coverage-chart" template, kept apart so
  that a drawing of the chart can take its place). Each count is written as
  text; the shade of its chip or cell (four steps: none, up to a third, up
  to two thirds, more) only repeats it.
  Included by TestResultCore.xslt. Its words are below, per language ($lang
  of the language file); a language without them gets the English ones.
  Plain HTML and CSS: it reads without scripts, prints and follows the
  page's dark mode; a wide model scrolls inside its own box.
-->
<xsl:stylesheet version="1.0"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:c="urn:qendor:coverage"
    exclude-result-prefixes="c">

  <c:strings>
    <c:s lang="en" k="title">Model coverage</c:s>
    <c:s lang="en" k="intro">How many test cases of this run went through each part of each model; the shade grows with the share, the number says how many.</c:s>
    <c:s lang="en" k="sequence">Sequence diagram</c:s>
    <c:s lang="en" k="chart">Chart</c:s>
    <c:s lang="en" k="testCases">test cases</c:s>
    <c:s lang="en" k="testCase">test case</c:s>
    <c:s lang="en" k="members">Test cases:</c:s>
    <c:s lang="en" k="thisRun">This run</c:s>
    <c:s lang="en" k="overPre">Over the last</c:s>
    <c:s lang="en" k="overPost">runs</c:s>
    <c:s lang="en" k="steps">steps</c:s>
    <c:s lang="en" k="operands">operands</c:s>
    <c:s lang="en" k="states">states</c:s>
    <c:s lang="en" k="transitions">transitions</c:s>
    <c:s lang="en" k="unreached">Not reached by any test case</c:s>
    <c:s lang="en" k="allReached">Every step and operand, or state and transition, was reached.</c:s>
    <c:s lang="en" k="model">The model</c:s>
    <c:s lang="en" k="step">step</c:s>
    <c:s lang="en" k="operand">operand</c:s>
    <c:s lang="en" k="state">state</c:s>
    <c:s lang="en" k="transition">transition</c:s>
    <c:s lang="en" k="line">line</c:s>
    <c:s lang="en" k="reachedBy">test cases reached it:</c:s>
    <c:s lang="en" k="of">of</c:s>
    <c:s lang="en" k="iterations">Iterations per test case</c:s>
    <c:s lang="en" k="zero">none</c:s>
    <c:s lang="en" k="once">once</c:s>
    <c:s lang="en" k="more">more</c:s>
    <c:s lang="en" k="kind">Kind</c:s>
    <c:s lang="en" k="name">Name</c:s>
    <c:s lang="en" k="count">Test cases</c:s>
    <c:s lang="en" k="chartCaption">States and transitions of</c:s>
    <c:s lang="en" k="shownPre">Drawn:</c:s>
    <c:s lang="en" k="shownPost">states around what no test case reached.</c:s>
    <c:s lang="en" k="sep">, </c:s>

    <c:s lang="zh-CN" k="title">模型覆盖率</c:s>
    <c:s lang="zh-CN" k="intro">本次运行中经过每个模型各部分的测试用例数；颜色越深占比越大，数字表示具体数量。</c:s>
    <c:s lang="zh-CN" k="sequence">序列图</c:s>
    <c:s lang="zh-CN" k="chart">状态图/流程图</c:s>
    <c:s lang="zh-CN" k="testCases">个测试用例</c:s>
    <c:s lang="zh-CN" k="testCase">个测试用例</c:s>
    <c:s lang="zh-CN" k="members">测试用例：</c:s>
    <c:s lang="zh-CN" k="thisRun">本次运行</c:s>
    <c:s lang="zh-CN" k="overPre">最近</c:s>
    <c:s lang="zh-CN" k="overPost">次运行</c:s>
    <c:s lang="zh-CN" k="steps">步骤</c:s>
    <c:s lang="zh-CN" k="operands">操作数</c:s>
    <c:s lang="zh-CN" k="states">状态</c:s>
    <c:s lang="zh-CN" k="transitions">转换</c:s>
    <c:s lang="zh-CN" k="unreached">没有测试用例到达</c:s>
    <c:s lang="zh-CN" k="allReached">所有步骤和操作数（或状态和转换）均已到达。</c:s>
    <c:s lang="zh-CN" k="model">模型</c:s>
    <c:s lang="zh-CN" k="step">步骤</c:s>
    <c:s lang="zh-CN" k="operand">操作数</c:s>
    <c:s lang="zh-CN" k="state">状态</c:s>
    <c:s lang="zh-CN" k="transition">转换</c:s>
    <c:s lang="zh-CN" k="line">行</c:s>
    <c:s lang="zh-CN" k="reachedBy">到达的测试用例：</c:s>
    <c:s lang="zh-CN" k="of">/</c:s>
    <c:s lang="zh-CN" k="iterations">每个测试用例的迭代次数</c:s>
    <c:s lang="zh-CN" k="zero">零次</c:s>
    <c:s lang="zh-CN" k="once">一次</c:s>
    <c:s lang="zh-CN" k="more">多次</c:s>
    <c:s lang="zh-CN" k="kind">类型</c:s>
    <c:s lang="zh-CN" k="name">名称</c:s>
    <c:s lang="zh-CN" k="count">测试用例</c:s>
    <c:s lang="zh-CN" k="chartCaption">状态和转换：</c:s>
    <c:s lang="zh-CN" k="shownPre">已绘制：</c:s>
    <c:s lang="zh-CN" k="shownPost">个状态（围绕没有测试用例到达的部分）。</c:s>
    <c:s lang="zh-CN" k="sep">，</c:s>

    <c:s lang="zh-TW" k="title">模型覆蓋率</c:s>
    <c:s lang="zh-TW" k="intro">本次執行中經過每個模型各部分的測試案例數；顏色越深比例越大，數字表示具體數量。</c:s>
    <c:s lang="zh-TW" k="sequence">循序圖</c:s>
    <c:s lang="zh-TW" k="chart">狀態圖/流程圖</c:s>
    <c:s lang="zh-TW" k="testCases">個測試案例</c:s>
    <c:s lang="zh-TW" k="testCase">個測試案例</c:s>
    <c:s lang="zh-TW" k="members">測試案例：</c:s>
    <c:s lang="zh-TW" k="thisRun">本次執行</c:s>
    <c:s lang="zh-TW" k="overPre">最近</c:s>
    <c:s lang="zh-TW" k="overPost">次執行</c:s>
    <c:s lang="zh-TW" k="steps">步驟</c:s>
    <c:s lang="zh-TW" k="operands">運算元</c:s>
    <c:s lang="zh-TW" k="states">狀態</c:s>
    <c:s lang="zh-TW" k="transitions">轉換</c:s>
    <c:s lang="zh-TW" k="unreached">沒有測試案例到達</c:s>
    <c:s lang="zh-TW" k="allReached">所有步驟和運算元（或狀態和轉換）均已到達。</c:s>
    <c:s lang="zh-TW" k="model">模型</c:s>
    <c:s lang="zh-TW" k="step">步驟</c:s>
    <c:s lang="zh-TW" k="operand">運算元</c:s>
    <c:s lang="zh-TW" k="state">狀態</c:s>
    <c:s lang="zh-TW" k="transition">轉換</c:s>
    <c:s lang="zh-TW" k="line">行</c:s>
    <c:s lang="zh-TW" k="reachedBy">到達的測試案例：</c:s>
    <c:s lang="zh-TW" k="of">/</c:s>
    <c:s lang="zh-TW" k="iterations">每個測試案例的迭代次數</c:s>
    <c:s lang="zh-TW" k="zero">零次</c:s>
    <c:s lang="zh-TW" k="once">一次</c:s>
    <c:s lang="zh-TW" k="more">多次</c:s>
    <c:s lang="zh-TW" k="kind">類型</c:s>
    <c:s lang="zh-TW" k="name">名稱</c:s>
    <c:s lang="zh-TW" k="count">測試案例</c:s>
    <c:s lang="zh-TW" k="chartCaption">狀態和轉換：</c:s>
    <c:s lang="zh-TW" k="shownPre">已繪製：</c:s>
    <c:s lang="zh-TW" k="shownPost">個狀態（圍繞沒有測試案例到達的部分）。</c:s>
    <c:s lang="zh-TW" k="sep">，</c:s>

    <c:s lang="ko" k="title">모델 커버리지</c:s>
    <c:s lang="ko" k="intro">이번 실행에서 각 모델의 각 부분을 지나간 테스트 케이스 수입니다. 비율이 클수록 색이 진하고, 숫자가 그 수를 나타냅니다.</c:s>
    <c:s lang="ko" k="sequence">시퀀스 다이어그램</c:s>
    <c:s lang="ko" k="chart">차트</c:s>
    <c:s lang="ko" k="testCases">개 테스트 케이스</c:s>
    <c:s lang="ko" k="testCase">개 테스트 케이스</c:s>
    <c:s lang="ko" k="members">테스트 케이스:</c:s>
    <c:s lang="ko" k="thisRun">이번 실행</c:s>
    <c:s lang="ko" k="overPre">최근</c:s>
    <c:s lang="ko" k="overPost">회 실행</c:s>
    <c:s lang="ko" k="steps">단계</c:s>
    <c:s lang="ko" k="operands">피연산자</c:s>
    <c:s lang="ko" k="states">상태</c:s>
    <c:s lang="ko" k="transitions">전이</c:s>
    <c:s lang="ko" k="unreached">어떤 테스트 케이스도 도달하지 않음</c:s>
    <c:s lang="ko" k="allReached">모든 단계와 피연산자(또는 상태와 전이)에 도달했습니다.</c:s>
    <c:s lang="ko" k="model">모델</c:s>
    <c:s lang="ko" k="step">단계</c:s>
    <c:s lang="ko" k="operand">피연산자</c:s>
    <c:s lang="ko" k="state">상태</c:s>
    <c:s lang="ko" k="transition">전이</c:s>
    <c:s lang="ko" k="line">줄</c:s>
    <c:s lang="ko" k="reachedBy">도달한 테스트 케이스:</c:s>
    <c:s lang="ko" k="of">/</c:s>
    <c:s lang="ko" k="iterations">테스트 케이스별 반복 횟수</c:s>
    <c:s lang="ko" k="zero">0회</c:s>
    <c:s lang="ko" k="once">1회</c:s>
    <c:s lang="ko" k="more">여러 번</c:s>
    <c:s lang="ko" k="kind">종류</c:s>
    <c:s lang="ko" k="name">이름</c:s>
    <c:s lang="ko" k="count">테스트 케이스</c:s>
    <c:s lang="ko" k="chartCaption">상태와 전이:</c:s>
    <c:s lang="ko" k="shownPre">그린 상태:</c:s>
    <c:s lang="ko" k="shownPost">(어떤 테스트 케이스도 도달하지 않은 부분 주변)</c:s>
    <c:s lang="ko" k="sep">, </c:s>

    <c:s lang="ja" k="title">モデルカバレッジ</c:s>
    <c:s lang="ja" k="intro">この実行で各モデルの各部分を通ったテストケースの数です。割合が大きいほど色が濃く、数字がその数を示します。</c:s>
    <c:s lang="ja" k="sequence">シーケンス図</c:s>
    <c:s lang="ja" k="chart">チャート</c:s>
    <c:s lang="ja" k="testCases">件のテストケース</c:s>
    <c:s lang="ja" k="testCase">件のテストケース</c:s>
    <c:s lang="ja" k="members">テストケース:</c:s>
    <c:s lang="ja" k="thisRun">今回の実行</c:s>
    <c:s lang="ja" k="overPre">直近</c:s>
    <c:s lang="ja" k="overPost">回の実行</c:s>
    <c:s lang="ja" k="steps">ステップ</c:s>
    <c:s lang="ja" k="operands">オペランド</c:s>
    <c:s lang="ja" k="states">状態</c:s>
    <c:s lang="ja" k="transitions">遷移</c:s>
    <c:s lang="ja" k="unreached">どのテストケースも到達していない</c:s>
    <c:s lang="ja" k="allReached">すべてのステップとオペランド（または状態と遷移）に到達しました。</c:s>
    <c:s lang="ja" k="model">モデル</c:s>
    <c:s lang="ja" k="step">ステップ</c:s>
    <c:s lang="ja" k="operand">オペランド</c:s>
    <c:s lang="ja" k="state">状態</c:s>
    <c:s lang="ja" k="transition">遷移</c:s>
    <c:s lang="ja" k="line">行</c:s>
    <c:s lang="ja" k="reachedBy">到達したテストケース:</c:s>
    <c:s lang="ja" k="of">/</c:s>
    <c:s lang="ja" k="iterations">テストケースごとの反復回数</c:s>
    <c:s lang="ja" k="zero">0回</c:s>
    <c:s lang="ja" k="once">1回</c:s>
    <c:s lang="ja" k="more">複数回</c:s>
    <c:s lang="ja" k="kind">種類</c:s>
    <c:s lang="ja" k="name">名前</c:s>
    <c:s lang="ja" k="count">テストケース</c:s>
    <c:s lang="ja" k="chartCaption">状態と遷移:</c:s>
    <c:s lang="ja" k="shownPre">描画:</c:s>
    <c:s lang="ja" k="shownPost">状態（どのテストケースも到達しなかった部分の周り）</c:s>
    <c:s lang="ja" k="sep">、</c:s>
  </c:strings>

  <xsl:variable name="coverageWords" select="document('')/*/c:strings/c:s"/>

  <!-- A word of the coverage view in the page's language, else in English. -->
  <xsl:template name="cw">
    <xsl:param name="k"/>
    <xsl:variable name="own" select="$coverageWords[@lang = $lang][@k = $k]"/>
    <xsl:choose>
      <xsl:when test="$own"><xsl:value-of select="$own"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="$coverageWords[@lang = 'en'][@k = $k]"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The section: called with the document's ModelCoverage elements; a
       document without them gets nothing. -->
  <xsl:template name="coverage-section">
    <xsl:param name="models" select="ModelCoverage"/>
    <xsl:if test="$models">
      <section class="cov" aria-labelledby="coverage">
        <style>
          <xsl:call-template name="coverage-css"/>
        </style>
        <h2 id="coverage" tabindex="-1"><xsl:call-template name="cw"><xsl:with-param name="k" select="'title'"/></xsl:call-template></h2>
        <p class="cov-intro"><xsl:call-template name="cw"><xsl:with-param name="k" select="'intro'"/></xsl:call-template></p>
        <xsl:apply-templates select="$models" mode="coverage"/>
      </section>
    </xsl:if>
  </xsl:template>

  <xsl:template match="ModelCoverage" mode="coverage">
    <xsl:variable name="id" select="concat('cov-', position())"/>
    <div class="cov-model" role="region" aria-labelledby="{$id}">
      <h3 id="{$id}">
        <xsl:call-template name="cw"><xsl:with-param name="k" select="@kind"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <span class="cov-name"><xsl:value-of select="@name"/></span>
        <span class="cov-cases">
          <xsl:text> · </xsl:text>
          <xsl:call-template name="int"><xsl:with-param name="n" select="@testCases"/></xsl:call-template>
          <xsl:text> </xsl:text>
          <xsl:call-template name="cw"><xsl:with-param name="k" select="concat('testCase', substring('s', 1, number(@testCases != 1)))"/></xsl:call-template>
        </span>
      </h3>
      <xsl:call-template name="coverage-totals"/>
      <xsl:choose>
        <!-- Many test cases fold away behind their number. -->
        <xsl:when test="count(Member) &gt; 12">
          <details class="cov-members">
            <summary>
              <xsl:call-template name="cw"><xsl:with-param name="k" select="'members'"/></xsl:call-template>
              <xsl:text> </xsl:text>
              <xsl:call-template name="int"><xsl:with-param name="n" select="count(Member)"/></xsl:call-template>
            </summary>
            <xsl:call-template name="coverage-members"/>
          </details>
        </xsl:when>
        <xsl:otherwise>
          <p class="cov-members">
            <xsl:call-template name="cw"><xsl:with-param name="k" select="'members'"/></xsl:call-template>
            <xsl:text> </xsl:text>
            <xsl:call-template name="coverage-members"/>
          </p>
        </xsl:otherwise>
      </xsl:choose>
      <h4><xsl:call-template name="cw"><xsl:with-param name="k" select="'unreached'"/></xsl:call-template></h4>
      <xsl:choose>
        <xsl:when test="Unreached">
          <ul class="cov-unreached">
            <xsl:apply-templates select="Unreached/*" mode="cov-unreached"/>
          </ul>
        </xsl:when>
        <xsl:otherwise>
          <p class="cov-all"><xsl:call-template name="cw"><xsl:with-param name="k" select="'allReached'"/></xsl:call-template></p>
        </xsl:otherwise>
      </xsl:choose>
      <h4><xsl:call-template name="cw"><xsl:with-param name="k" select="'model'"/></xsl:call-template></h4>
      <xsl:choose>
        <xsl:when test="@kind = 'sequence'">
          <div class="cov-box" tabindex="0" role="region">
            <xsl:attribute name="aria-label">
              <xsl:call-template name="cw"><xsl:with-param name="k" select="'model'"/></xsl:call-template>
              <xsl:text> </xsl:text>
              <xsl:value-of select="@name"/>
            </xsl:attribute>
            <div class="cov-outline">
              <xsl:apply-templates select="Step | Steps | Fragment" mode="cov"/>
            </div>
          </div>
        </xsl:when>
        <xsl:otherwise>
          <xsl:call-template name="coverage-chart"/>
        </xsl:otherwise>
      </xsl:choose>
    </div>
  </xsl:template>

  <xsl:template name="coverage-members">
    <xsl:for-each select="Member">
      <xsl:if test="position() &gt; 1"><xsl:call-template name="cw"><xsl:with-param name="k" select="'sep'"/></xsl:call-template></xsl:if>
      <span title="{@fullname}"><xsl:value-of select="@name"/></span>
    </xsl:for-each>
  </xsl:template>

  <!-- "This run: steps 4 / 5, operands 1 / 2" and, with a history, the same
       over the runs kept. -->
  <xsl:template name="coverage-totals">
    <xsl:variable name="t" select="Totals"/>
    <ul class="cov-totals">
      <li>
        <strong><xsl:call-template name="cw"><xsl:with-param name="k" select="'thisRun'"/></xsl:call-template></strong>
        <xsl:text>: </xsl:text>
        <xsl:call-template name="coverage-pair"><xsl:with-param name="of" select="$t"/><xsl:with-param name="covered" select="$t"/></xsl:call-template>
      </li>
      <xsl:if test="OverRuns">
        <li>
          <strong>
            <xsl:call-template name="cw"><xsl:with-param name="k" select="'overPre'"/></xsl:call-template>
            <xsl:text> </xsl:text>
            <xsl:value-of select="OverRuns/@runs"/>
            <xsl:text> </xsl:text>
            <xsl:call-template name="cw"><xsl:with-param name="k" select="'overPost'"/></xsl:call-template>
          </strong>
          <xsl:text>: </xsl:text>
          <xsl:call-template name="coverage-pair"><xsl:with-param name="of" select="$t"/><xsl:with-param name="covered" select="OverRuns"/></xsl:call-template>
        </li>
      </xsl:if>
    </ul>
  </xsl:template>

  <xsl:template name="coverage-pair">
    <xsl:param name="of"/>
    <xsl:param name="covered"/>
    <xsl:choose>
      <xsl:when test="$of/@states">
        <xsl:call-template name="coverage-ratio"><xsl:with-param name="k" select="'states'"/><xsl:with-param name="n" select="$covered/@statesCovered"/><xsl:with-param name="all" select="$of/@states"/></xsl:call-template>
        <xsl:call-template name="cw"><xsl:with-param name="k" select="'sep'"/></xsl:call-template>
        <xsl:call-template name="coverage-ratio"><xsl:with-param name="k" select="'transitions'"/><xsl:with-param name="n" select="$covered/@transitionsCovered"/><xsl:with-param name="all" select="$of/@transitions"/></xsl:call-template>
      </xsl:when>
      <xsl:otherwise>
        <xsl:call-template name="coverage-ratio"><xsl:with-param name="k" select="'steps'"/><xsl:with-param name="n" select="$covered/@stepsCovered"/><xsl:with-param name="all" select="$of/@steps"/></xsl:call-template>
        <xsl:call-template name="cw"><xsl:with-param name="k" select="'sep'"/></xsl:call-template>
        <xsl:call-template name="coverage-ratio"><xsl:with-param name="k" select="'operands'"/><xsl:with-param name="n" select="$covered/@operandsCovered"/><xsl:with-param name="all" select="$of/@operands"/></xsl:call-template>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="coverage-ratio">
    <xsl:param name="k"/>
    <xsl:param name="n"/>
    <xsl:param name="all"/>
    <xsl:call-template name="cw"><xsl:with-param name="k" select="$k"/></xsl:call-template>
    <xsl:text> </xsl:text>
    <xsl:call-template name="int"><xsl:with-param name="n" select="$n"/></xsl:call-template>
    <xsl:text> / </xsl:text>
    <xsl:call-template name="int"><xsl:with-param name="n" select="$all"/></xsl:call-template>
  </xsl:template>

  <!-- ===== What no test case reached ===== -->

  <xsl:template match="Step" mode="cov-unreached">
    <li>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'step'"/></xsl:call-template>
      <xsl:text> </xsl:text>
      <strong><xsl:value-of select="@value"/></strong>
      <xsl:call-template name="coverage-line"/>
    </li>
  </xsl:template>

  <xsl:template match="Steps" mode="cov-unreached">
    <li>
      <xsl:value-of select="@steps"/>
      <xsl:text> </xsl:text>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'steps'"/></xsl:call-template>
      <xsl:text> </xsl:text>
      <strong><xsl:value-of select="@first"/></strong>
      <xsl:text> … </xsl:text>
      <strong><xsl:value-of select="@last"/></strong>
      <xsl:call-template name="coverage-line"/>
    </li>
  </xsl:template>

  <xsl:template match="Operand" mode="cov-unreached">
    <li>
      <xsl:value-of select="translate(@operator, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz')"/>
      <xsl:text> </xsl:text>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'operand'"/></xsl:call-template>
      <xsl:if test="string(@id) != ''">
        <xsl:text> </xsl:text>
        <span class="cov-id"><xsl:value-of select="@id"/></span>
      </xsl:if>
      <xsl:call-template name="coverage-line"/>
    </li>
  </xsl:template>

  <xsl:template match="State | Transition" mode="cov-unreached">
    <li>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="translate(local-name(), 'ST', 'st')"/></xsl:call-template>
      <xsl:text> </xsl:text>
      <strong><xsl:value-of select="@name"/></strong>
    </li>
  </xsl:template>

  <xsl:template name="coverage-line">
    <span class="cov-at">
      <xsl:text> (</xsl:text>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'line'"/></xsl:call-template>
      <xsl:text> </xsl:text>
      <xsl:value-of select="@line"/>
      <xsl:if test="@lastLine">
        <xsl:text>–</xsl:text>
        <xsl:value-of select="@lastLine"/>
      </xsl:if>
      <xsl:text>)</xsl:text>
    </span>
  </xsl:template>

  <!-- ===== The sequence diagram ===== -->

  <!-- The shade of a count among the model's test cases: 0 none, 1 up to a
       third, 2 up to two thirds, 3 more. -->
  <xsl:template name="coverage-level">
    <xsl:variable name="all" select="number(ancestor::ModelCoverage/@testCases)"/>
    <xsl:text>cov-l</xsl:text>
    <xsl:choose>
      <xsl:when test="not(@count &gt; 0)">0</xsl:when>
      <xsl:when test="@count * 3 &lt;= $all">1</xsl:when>
      <xsl:when test="@count * 3 &lt;= $all * 2">2</xsl:when>
      <xsl:otherwise>3</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The count as text, and for screen readers what it counts. -->
  <xsl:template name="coverage-count">
    <span class="cov-n">
      <span class="sr">
        <xsl:text> </xsl:text>
        <xsl:call-template name="cw"><xsl:with-param name="k" select="'reachedBy'"/></xsl:call-template>
        <xsl:text> </xsl:text>
      </span>
      <xsl:value-of select="@count"/>
      <span class="sr">
        <xsl:text> </xsl:text>
        <xsl:call-template name="cw"><xsl:with-param name="k" select="'of'"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <xsl:value-of select="ancestor::ModelCoverage/@testCases"/>
      </span>
    </span>
  </xsl:template>

  <xsl:template match="Step" mode="cov">
    <span>
      <xsl:attribute name="class">cov-chip <xsl:call-template name="coverage-level"/></xsl:attribute>
      <xsl:value-of select="@value"/>
      <xsl:call-template name="coverage-count"/>
    </span>
  </xsl:template>

  <xsl:template match="Steps" mode="cov">
    <span>
      <xsl:attribute name="class">cov-chip run <xsl:call-template name="coverage-level"/></xsl:attribute>
      <xsl:value-of select="@first"/>
      <xsl:text> … </xsl:text>
      <xsl:value-of select="@last"/>
      <span class="cov-at">
        <xsl:text> (</xsl:text>
        <xsl:value-of select="@steps"/>
        <xsl:text> </xsl:text>
        <xsl:call-template name="cw"><xsl:with-param name="k" select="'steps'"/></xsl:call-template>
        <xsl:text>)</xsl:text>
      </span>
      <xsl:call-template name="coverage-count"/>
    </span>
  </xsl:template>

  <xsl:template match="Fragment" mode="cov">
    <div class="cov-frag">
      <span class="cov-op">
        <xsl:value-of select="translate(@operator, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz')"/>
        <xsl:if test="string(@id) != ''">
          <span class="cov-id"><xsl:text> </xsl:text><xsl:value-of select="@id"/></span>
        </xsl:if>
      </span>
      <xsl:apply-templates select="Operand" mode="cov"/>
      <xsl:apply-templates select="Loop" mode="cov"/>
    </div>
  </xsl:template>

  <!-- An operand: its count in its corner, its steps and fragments inside. -->
  <xsl:template match="Operand" mode="cov">
    <div>
      <xsl:attribute name="class">cov-operand <xsl:call-template name="coverage-level"/></xsl:attribute>
      <span class="cov-opcount">
        <span class="sr"><xsl:call-template name="cw"><xsl:with-param name="k" select="'operand'"/></xsl:call-template></span>
        <xsl:call-template name="coverage-count"/>
      </span>
      <xsl:apply-templates select="Step | Steps | Fragment" mode="cov"/>
    </div>
  </xsl:template>

  <xsl:template match="Loop" mode="cov">
    <p class="cov-loop">
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'iterations'"/></xsl:call-template>
      <xsl:text>: </xsl:text>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'zero'"/></xsl:call-template>
      <xsl:text> </xsl:text><strong><xsl:value-of select="@zero"/></strong>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'sep'"/></xsl:call-template>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'once'"/></xsl:call-template>
      <xsl:text> </xsl:text><strong><xsl:value-of select="@once"/></strong>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'sep'"/></xsl:call-template>
      <xsl:call-template name="cw"><xsl:with-param name="k" select="'more'"/></xsl:call-template>
      <xsl:text> </xsl:text><strong><xsl:value-of select="@more"/></strong>
    </p>
  </xsl:template>

  <!-- ===== A chart ===== -->

  <!-- Its states and transitions in file order, each with its count. Kept
       to itself: a drawing of the chart may take its place. -->
  <xsl:template name="coverage-chart">
    <xsl:apply-templates select="Drawing" mode="cov"/>
    <div class="cov-box scroll" tabindex="0" role="region">
      <xsl:attribute name="aria-label">
        <xsl:call-template name="cw"><xsl:with-param name="k" select="'chartCaption'"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <xsl:value-of select="@name"/>
      </xsl:attribute>
      <table class="cov-table">
        <caption>
          <xsl:call-template name="cw"><xsl:with-param name="k" select="'chartCaption'"/></xsl:call-template>
          <xsl:text> </xsl:text>
          <xsl:value-of select="@name"/>
        </caption>
        <thead>
          <tr>
            <th scope="col"><xsl:call-template name="cw"><xsl:with-param name="k" select="'kind'"/></xsl:call-template></th>
            <th scope="col"><xsl:call-template name="cw"><xsl:with-param name="k" select="'name'"/></xsl:call-template></th>
            <th scope="col" class="num"><xsl:call-template name="cw"><xsl:with-param name="k" select="'count'"/></xsl:call-template></th>
          </tr>
        </thead>
        <tbody>
          <xsl:for-each select="State | Transition">
            <tr>
              <td><xsl:call-template name="cw"><xsl:with-param name="k" select="translate(local-name(), 'ST', 'st')"/></xsl:call-template></td>
              <th scope="row" class="cov-rowname"><xsl:value-of select="@name"/></th>
              <td>
                <xsl:attribute name="class">num <xsl:call-template name="coverage-level"/></xsl:attribute>
                <xsl:value-of select="@count"/>
                <span class="sr">
                  <xsl:text> </xsl:text>
                  <xsl:call-template name="cw"><xsl:with-param name="k" select="'of'"/></xsl:call-template>
                  <xsl:text> </xsl:text>
                  <xsl:value-of select="ancestor::ModelCoverage/@testCases"/>
                </span>
              </td>
            </tr>
          </xsl:for-each>
        </tbody>
      </table>
    </div>
  </xsl:template>

  <!-- The chart as laid out (the Drawing qendor writes), each state and
       transition shaded by its count with the count written beside its
       name; what no test case reached is dashed. The table after it says
       the same in words. -->
  <xsl:template match="Drawing" mode="cov">
    <xsl:variable name="all" select="number(ancestor::ModelCoverage/@testCases)"/>
    <xsl:if test="@shown = 'neighbourhood'">
      <p class="cov-at">
        <xsl:call-template name="cw"><xsl:with-param name="k" select="'shownPre'"/></xsl:call-template>
        <xsl:value-of select="concat(' ', @shownStates, ' / ', @states, ' ')"/>
        <xsl:call-template name="cw"><xsl:with-param name="k" select="'shownPost'"/></xsl:call-template>
      </p>
    </xsl:if>
    <div class="cov-box cov-drawing">
      <svg class="cov-svg" viewBox="-24 -12 {@width + 48} {@height + 24}" width="{round(1.25 * (@width + 48))}" height="{round(1.25 * (@height + 24))}" aria-hidden="true">
        <xsl:for-each select="Cluster">
          <g>
            <xsl:attribute name="class">cl <xsl:call-template name="coverage-drawn-level"><xsl:with-param name="all" select="$all"/></xsl:call-template></xsl:attribute>
            <rect x="{@x}" y="{@y}" width="{@w}" height="{@h}" rx="6"/>
            <text x="{@x + 6}" y="{@y + 13}"><xsl:value-of select="concat(@name, ' ', sum(@visited))"/></text>
          </g>
        </xsl:for-each>
        <xsl:for-each select="Edge">
          <g>
            <xsl:attribute name="class">ed <xsl:value-of select="@kind"/><xsl:text> </xsl:text><xsl:call-template name="coverage-drawn-level"><xsl:with-param name="all" select="$all"/></xsl:call-template></xsl:attribute>
            <path d="{@path}"/>
            <xsl:if test="@arrow"><polygon points="{@arrow}"/></xsl:if>
            <xsl:if test="@lx">
              <text x="{@lx}" y="{@ly + 3}" text-anchor="middle"><xsl:value-of select="concat(@name, ' ', sum(@visited))"/></text>
            </xsl:if>
          </g>
        </xsl:for-each>
        <xsl:for-each select="Node">
          <g>
            <xsl:attribute name="class">nd <xsl:value-of select="@kind"/><xsl:text> </xsl:text><xsl:call-template name="coverage-drawn-level"><xsl:with-param name="all" select="$all"/></xsl:call-template></xsl:attribute>
            <xsl:choose>
              <xsl:when test="@kind = 'start' or @kind = 'initial'">
                <circle cx="{@x + @w div 2}" cy="{@y + @h div 2}" r="{@w div 2}"/>
              </xsl:when>
              <xsl:otherwise>
                <rect x="{@x}" y="{@y}" width="{@w}" height="{@h}" rx="5"/>
                <xsl:if test="@kind = 'termination'">
                  <rect class="inner" x="{@x + 3}" y="{@y + 3}" width="{@w - 6}" height="{@h - 6}" rx="3"/>
                </xsl:if>
                <text x="{@x + @w div 2}" y="{@y + @h div 2 + 4}" text-anchor="middle"><xsl:value-of select="@name"/></text>
                <rect class="n" x="{@x + @w - 9}" y="{@y - 7}" width="{6 * string-length(sum(@visited)) + 8}" height="14" rx="7"/>
                <text class="n" x="{@x + @w - 5 + 3 * string-length(sum(@visited))}" y="{@y + 3.5}" text-anchor="middle"><xsl:value-of select="sum(@visited)"/></text>
              </xsl:otherwise>
            </xsl:choose>
          </g>
        </xsl:for-each>
      </svg>
    </div>
  </xsl:template>

  <!-- The shade of a drawn element's count ("visited", absent for none). -->
  <xsl:template name="coverage-drawn-level">
    <xsl:param name="all"/>
    <xsl:variable name="n" select="sum(@visited)"/>
    <xsl:text>cov-l</xsl:text>
    <xsl:choose>
      <xsl:when test="@kind = 'start' or @kind = 'initial'">s</xsl:when>
      <xsl:when test="$n = 0">0</xsl:when>
      <xsl:when test="$n * 3 &lt;= $all">1</xsl:when>
      <xsl:when test="$n * 3 &lt;= $all * 2">2</xsl:when>
      <xsl:otherwise>3</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- Written once per page that has a coverage section. The shades have
       the page's text colour on them at 4.5:1 or more in both themes. -->
  <xsl:template name="coverage-css">
    <xsl:text>.cov{--cov1:#e3eefc;--cov2:#c2dafa;--cov3:#9cc3f5;--covline:#57606a;}
:root[data-theme=dark] .cov{--cov1:#142a47;--cov2:#1c3c66;--cov3:#255089;--covline:#9da7b3;}
@media (prefers-color-scheme:dark){:root:not([data-theme=light]) .cov{--cov1:#142a47;--cov2:#1c3c66;--cov3:#255089;--covline:#9da7b3;}}
.cov .sr{position:absolute;width:1px;height:1px;overflow:hidden;clip:rect(0 0 0 0);white-space:nowrap;}
.cov-model{margin:1em 0;padding:.75em 1em;border:1px solid var(--line,#d0d7de);border-radius:8px;background:var(--card,#fff);max-width:100%;box-sizing:border-box;}
.cov-model h3{margin:0 0 .4em;font-size:1.1em;overflow-wrap:anywhere;}
.cov-model h4{margin:.8em 0 .3em;font-size:1em;}
.cov-cases,.cov-at,.cov-id{font-weight:400;color:var(--muted,#57606a);}
.cov-totals{margin:.2em 0;padding-left:1.2em;}
.cov-members{margin:.3em 0;overflow-wrap:anywhere;color:var(--muted,#57606a);}
.cov-unreached{margin:.2em 0;padding-left:1.2em;overflow-wrap:anywhere;}
.cov-box{max-width:100%;overflow-x:auto;}
.cov-outline{display:flex;flex-wrap:wrap;align-items:flex-start;gap:.35em;}
.cov-chip{display:inline-block;padding:.1em .55em;border:2px solid var(--covline);border-radius:999px;font-variant-numeric:tabular-nums;color:var(--fg,#1f2328);overflow-wrap:anywhere;}
.cov-chip .cov-at{color:inherit;}
.cov-n{margin-left:.4em;padding:0 .35em;border-radius:999px;font-size:.85em;font-weight:600;background:var(--card,#fff);color:var(--fg,#1f2328);}
.cov-l0{border-style:dashed;background:transparent;}
.cov-l1{background:var(--cov1);}
.cov-l2{background:var(--cov2);}
.cov-l3{background:var(--cov3);}
.cov-frag{display:inline-flex;flex-direction:column;padding:0 0 .4em;border:1.5px solid var(--covline);border-radius:4px;max-width:100%;box-sizing:border-box;}
.cov-op{align-self:flex-start;margin-bottom:.3em;padding:.05em .5em;font-size:.8em;font-weight:600;border-right:1.5px solid var(--covline);border-bottom:1.5px solid var(--covline);border-bottom-right-radius:6px;background:var(--soft,#f6f8fa);}
.cov-frag>:not(.cov-op){margin:0 .6em;}
.cov-operand{display:flex;flex-wrap:wrap;align-items:flex-start;gap:.35em;padding:.35em;border:1.5px solid transparent;border-radius:4px;}
.cov-operand.cov-l0{border:1.5px dashed var(--covline);}
.cov-operand+.cov-operand{margin-top:.3em;}
.cov-opcount .cov-n{margin-left:0;}
.cov-loop{margin:.3em 0 0;font-size:.9em;}
.cov-table{border-collapse:collapse;width:100%;}
.cov-table caption{text-align:left;font-weight:600;padding:.2em 0;}
.cov-table th,.cov-table td{padding:.2em .6em;border-bottom:1px solid var(--line,#d0d7de);text-align:left;color:var(--fg,#1f2328);}
.cov-table .num{text-align:right;font-variant-numeric:tabular-nums;}
.cov-table td.cov-l0{border-bottom-style:dashed;}
.cov-rowname{font-weight:400;overflow-wrap:anywhere;}
.cov-drawing{margin:.5em 0;max-height:70vh;overflow:auto;border:1px solid var(--line,#d0d7de);border-radius:6px;}
.cov-svg{display:block;font-size:11px;}
.cov-svg text{fill:var(--fg,#1f2328);}
.cov-svg .nd rect,.cov-svg .cl rect{fill:var(--card,#fff);stroke:var(--covline);stroke-width:1.5;}
.cov-svg .nd.cov-l0 rect,.cov-svg .cl.cov-l0 rect{stroke-dasharray:4 3;}
.cov-svg .nd.cov-l1 rect{fill:var(--cov1);}
.cov-svg .nd.cov-l2 rect{fill:var(--cov2);}
.cov-svg .nd.cov-l3 rect{fill:var(--cov3);}
.cov-svg .cl rect{fill:none;}
.cov-svg .nd rect.n{fill:var(--card,#fff);stroke:var(--covline);stroke-width:1;stroke-dasharray:none;}
.cov-svg text.n{font-weight:600;font-size:10px;}
.cov-svg circle{fill:var(--fg,#1f2328);}
.cov-svg .ed path{fill:none;stroke:var(--covline);stroke-width:1.2;}
.cov-svg .ed polygon{fill:var(--covline);}
.cov-svg .ed.cov-l0 path{stroke-dasharray:4 3;}
.cov-svg .ed.cov-l1 path,.cov-svg .ed.cov-l2 path{stroke-width:2.2;}
.cov-svg .ed.cov-l3 path{stroke-width:3.2;}
@media print{.cov-model{break-inside:avoid;}}
</xsl:text>
  </xsl:template>
</xsl:stylesheet>
