<?xml version="1.0" encoding="UTF-8"?>
<!--
  HTML report in Traditional Chinese. The page itself is built by TestResultCore.xslt;
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

  <xsl:variable name="lang" select="'zh-TW'"/>
  <xsl:variable name="fonts" select="'&quot;PingFang TC&quot;, &quot;Microsoft JhengHei&quot;, &quot;Noto Sans CJK TC&quot;, &quot;Source Han Sans TC&quot;, system-ui, sans-serif'"/>
  <xsl:variable name="intFormat" select="'#,##0'"/>
  <xsl:variable name="pctFormat" select="'0.#'"/>
  <xsl:variable name="pctSign" select="'%'"/>
  <xsl:variable name="headingBreak" select="'keep-all'"/>
  <xsl:variable name="T" select="document('')/*/l:strings/l:s"/>

  <!-- Header values: the pattern of the header's time ({Y}, {M}, {D}, {W}
       the weekday's word, {T} the clock; empty keeps the time as written),
       the weekdays, and the word for a user or machine the run did not know. -->
  <l:strings>
    <l:s k="date">{Y}年{M}月{D}日 {W} {T}</l:s>
    <l:s k="wd" src="Mon">星期一</l:s>
    <l:s k="wd" src="Tue">星期二</l:s>
    <l:s k="wd" src="Wed">星期三</l:s>
    <l:s k="wd" src="Thu">星期四</l:s>
    <l:s k="wd" src="Fri">星期五</l:s>
    <l:s k="wd" src="Sat">星期六</l:s>
    <l:s k="wd" src="Sun">星期日</l:s>
    <l:s k="unknown">未知</l:s>
  </l:strings>

  <!-- Strings of the earlier runs (TestResultHistory.xslt). -->
  <l:strings>
    <l:s k="hist.strip">最近的執行（由舊到新）</l:s>
    <l:s k="hist.run">執行</l:s>
    <l:s k="hist.now">本次執行</l:s>
    <l:s k="hist.trend">最近執行的趨勢</l:s>
    <l:s k="hist.above">通過（線上方）</l:s>
    <l:s k="hist.below">未通過（線下方）</l:s>
    <l:s k="hist.numbers">各次執行的數據</l:s>
    <l:s k="hist.time">時間</l:s>
    <l:s k="hist.problemsCaption">未通過的測試案例：新失敗在前，其餘依執行順序</l:s>
    <l:s k="hist.nNew">新失敗：{n}</l:s>
    <l:s k="hist.nFixed">已修復：{n}</l:s>
    <l:s k="hist.nFlaky">不穩定：{n}</l:s>
    <l:s k="hist.changes">與上次執行相比</l:s>
    <l:s k="hist.only">僅顯示</l:s>
    <l:s k="hist.runsOrder">最新的在前</l:s>
    <l:s k="hc" src="new">新失敗</l:s>
    <l:s k="hc" src="fixed">已修復</l:s>
    <l:s k="hc" src="flaky">不穩定</l:s>
    <l:s k="hc" src="still failing">仍然失敗</l:s>
    <l:s k="hc" src="stable">穩定</l:s>
  </l:strings>

  <l:strings>
    <l:s k="title.case">測試案例報告</l:s>
    <l:s k="title.context">測試上下文報告</l:s>
    <l:s k="sec.report">報告</l:s>
    <l:s k="sec.env">環境</l:s>
    <l:s k="sec.config">組態</l:s>
    <l:s k="sec.summary">摘要</l:s>
    <l:s k="sec.cases">測試案例</l:s>
    <l:s k="sec.assertions">斷言</l:s>
    <l:s k="sec.coverage">序列圖覆蓋率</l:s>
    <l:s k="name">名稱</l:s>
    <l:s k="fullname">全名</l:s>
    <l:s k="time">建立時間</l:s>
    <l:s k="userName">使用者</l:s>
    <l:s k="machineName">電腦</l:s>
    <l:s k="osVersion">作業系統</l:s>
    <l:s k="korvanVersion">Korvan 版本</l:s>
    <l:s k="ostraVersion">Ostra 版本</l:s>
    <l:s k="projectName">專案</l:s>
    <l:s k="componentName">元件</l:s>
    <l:s k="configurationName">組態</l:s>
    <l:s k="contextStatus">上下文狀態</l:s>
    <l:s k="caseStatus">測試案例狀態</l:s>
    <l:s k="exitStatus">結束狀態</l:s>
    <l:s k="testCases">測試案例數</l:s>
    <l:s k="passRate">通過率</l:s>
    <l:s k="assertions">斷言</l:s>
    <l:s k="countsByStatus">依狀態統計的測試案例</l:s>
    <l:s k="testCase">測試案例</l:s>
    <l:s k="testType">測試類型</l:s>
    <l:s k="status">狀態</l:s>
    <l:s k="verificationResult">驗證結果</l:s>
    <l:s k="cov.name">SD 執行個體</l:s>
    <l:s k="cov.sdname">序列圖</l:s>
    <l:s k="cov.value">已達步驟</l:s>
    <l:s k="cov.max">總步驟</l:s>
    <l:s k="cov.coverage">覆蓋率</l:s>
    <l:s k="img.model">規格圖</l:s>
    <l:s k="img.result">結果圖</l:s>
    <l:s k="none.cases">此測試上下文不包含測試案例。</l:s>
    <l:s k="none.assertions">此測試案例沒有記錄任何斷言。</l:s>
    <l:s k="col.sdiname">SD 執行個體</l:s>
    <l:s k="col.msgid">訊息 ID</l:s>
    <l:s k="col.usermsg">使用者訊息</l:s>
    <l:s k="col.inr">輸入編號</l:s>
    <l:s k="col.onr">輸出編號</l:s>
    <l:s k="col.arbiter">仲裁</l:s>
    <l:s k="col.guid">GUID</l:s>
    <l:s k="col.name">斷言</l:s>
    <l:s k="col.dir">目錄</l:s>
    <l:s k="skip">跳到測試案例</l:s>
    <l:s k="sec.problems">問題</l:s>
    <l:s k="problems.caption">未通過的測試案例（依執行順序）</l:s>
    <l:s k="firstFailure">第一個失敗的斷言</l:s>
    <l:s k="lastAssertion">最後到達的斷言</l:s>
    <l:s k="none.problems">沒有問題：所有測試案例皆已通過。</l:s>
    <l:s k="none.match">沒有符合篩選條件的測試案例。</l:s>
    <l:s k="ctl.show">顯示</l:s>
    <l:s k="ctl.search">搜尋</l:s>
    <l:s k="ctl.searchHint">名稱、訊息、檔案</l:s>
    <l:s k="ctl.expand">全部展開</l:s>
    <l:s k="ctl.collapse">全部摺疊</l:s>
    <l:s k="ctl.dark">深色模式</l:s>
    <l:s k="ctl.keys">快速鍵：/ 搜尋，j 下一個問題，k 上一個問題</l:s>
    <l:s k="total">總計</l:s>
    <l:s k="notPassed">未通過</l:s>
    <l:s k="col.fileLine">檔案:行</l:s>
    <l:s k="generated">報告由 qendor 產生。</l:s>
    <l:s k="st" src="PASSED">通過</l:s>
    <l:s k="st" src="FAILED">失敗</l:s>
    <l:s k="st" src="ERROR">錯誤</l:s>
    <l:s k="st" src="UNDEFINED">未定義</l:s>
    <l:s k="tt" src="tt_SD">序列圖測試</l:s>
    <l:s k="tt" src="tt_Code">程式碼測試</l:s>
    <l:s k="kind" src="rk_testcase">測試案例報告</l:s>
    <l:s k="kind" src="rk_testcontext">測試上下文報告</l:s>
    <l:s k="arb" src="internal">內部</l:s>
    <l:s k="arb" src="external">外部</l:s>
    <l:s k="vr" src="Result verification successful">結果驗證成功</l:s>
    <l:s k="vr" src="Result verification failed">結果驗證失敗</l:s>
    <l:s k="vr" src="Result verification switched off">結果驗證已關閉</l:s>
    <l:s k="vr" src="Statechart contains elements that are not supported for result verification">狀態圖包含結果驗證不支援的元素</l:s>
    <l:s k="vr" src="No result verification for Code TestCases">程式碼測試案例不進行結果驗證</l:s>
    <l:s k="vr" src="Result verification currently not supported for SDs with interaction operator parallel">目前不支援對含平行互動運算子（par）的序列圖進行結果驗證</l:s>
    <l:s k="vr" src="TestCase did not terminate as expected">測試案例未如預期終止</l:s>
    <l:s k="colon" xml:space="preserve">：</l:s>
    <l:s k="sep" xml:space="preserve">，</l:s>
    <l:s k="line.allPassed">全部 {m} 個測試案例均通過</l:s>
    <l:s k="line.failed.first">{m} 個測試案例中 {n} 個失敗</l:s>
    <l:s k="line.error.first">{m} 個測試案例中 {n} 個以錯誤結束</l:s>
    <l:s k="line.error">{n} 個以錯誤結束</l:s>
    <l:s k="line.other.first">{m} 個測試案例中 {n} 個沒有結論</l:s>
    <l:s k="line.other">{n} 個沒有結論</l:s>
    <l:s k="firstProblem">第一個問題</l:s>
    <l:s k="mp.label">模型路徑</l:s>
    <l:s k="as.failed">{n} 個失敗</l:s>
    <l:s k="as.passed">全部 {m} 個通過</l:s>
    <l:s k="as.none">無</l:s>
    <l:s k="ctl.shown">顯示 {m} 個測試案例中的 {n} 個</l:s>
    <l:s k="img.of">測試案例 {m} 的循序圖 {n}</l:s>
    <l:s k="mp" src="Result verification successful">已遵循</l:s>
    <l:s k="mp" src="Result verification failed">未遵循</l:s>
    <l:s k="mp" src="Result verification switched off">未檢查（無驗證檔案）</l:s>
    <l:s k="mp" src="Statechart contains elements that are not supported for result verification">未檢查（狀態圖含不支援的元素）</l:s>
    <l:s k="mp" src="No result verification for Code TestCases">無（程式碼測試）</l:s>
    <l:s k="mp" src="Result verification currently not supported for SDs with interaction operator parallel">未檢查（平行片段）</l:s>
    <l:s k="mp" src="TestCase did not terminate as expected">未終止</l:s>
  </l:strings>
  <!-- Strings of the problems list of a large context. -->
  <l:strings>
    <l:s k="problems.grouped">未通過的測試案例，依狀態、判定與第一個失敗的斷言分組</l:s>
    <l:s k="problems.more">另外 {n} 個</l:s>
    <l:s k="none.failing">沒有失敗的斷言</l:s>
  </l:strings>
</xsl:stylesheet>
