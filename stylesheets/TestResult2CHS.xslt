<?xml version="1.0" encoding="UTF-8"?>
<!--
  HTML report in Simplified Chinese. The page itself is built by TestResultCore.xslt;
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

  <xsl:variable name="lang" select="'zh-CN'"/>
  <xsl:variable name="fonts" select="'&quot;PingFang SC&quot;, &quot;Microsoft YaHei&quot;, &quot;Noto Sans CJK SC&quot;, &quot;Source Han Sans SC&quot;, system-ui, sans-serif'"/>
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
    <l:s k="hist.strip">最近的运行（从旧到新）</l:s>
    <l:s k="hist.run">运行</l:s>
    <l:s k="hist.now">本次运行</l:s>
    <l:s k="hist.trend">最近运行的趋势</l:s>
    <l:s k="hist.above">通过（线上方）</l:s>
    <l:s k="hist.below">未通过（线下方）</l:s>
    <l:s k="hist.numbers">各次运行的数据</l:s>
    <l:s k="hist.time">时间</l:s>
    <l:s k="hist.problemsCaption">未通过的测试用例：新失败在前，其余按执行顺序</l:s>
    <l:s k="hist.nNew">新失败：{n}</l:s>
    <l:s k="hist.nFixed">已修复：{n}</l:s>
    <l:s k="hist.nFlaky">不稳定：{n}</l:s>
    <l:s k="hist.changes">与上次运行相比</l:s>
    <l:s k="hist.only">仅显示</l:s>
    <l:s k="hist.runsOrder">最新的在前</l:s>
    <l:s k="hc" src="new">新失败</l:s>
    <l:s k="hc" src="fixed">已修复</l:s>
    <l:s k="hc" src="flaky">不稳定</l:s>
    <l:s k="hc" src="still failing">仍然失败</l:s>
    <l:s k="hc" src="stable">稳定</l:s>
  </l:strings>

  <l:strings>
    <l:s k="title.case">测试用例报告</l:s>
    <l:s k="title.context">测试上下文报告</l:s>
    <l:s k="sec.report">报告</l:s>
    <l:s k="sec.env">环境</l:s>
    <l:s k="sec.config">配置</l:s>
    <l:s k="sec.summary">摘要</l:s>
    <l:s k="sec.cases">测试用例</l:s>
    <l:s k="sec.assertions">断言</l:s>
    <l:s k="sec.coverage">序列图覆盖率</l:s>
    <l:s k="name">名称</l:s>
    <l:s k="fullname">全名</l:s>
    <l:s k="time">创建时间</l:s>
    <l:s k="userName">用户</l:s>
    <l:s k="machineName">计算机</l:s>
    <l:s k="osVersion">操作系统</l:s>
    <l:s k="korvanVersion">Korvan 版本</l:s>
    <l:s k="ostraVersion">Ostra 版本</l:s>
    <l:s k="projectName">项目</l:s>
    <l:s k="componentName">组件</l:s>
    <l:s k="configurationName">配置</l:s>
    <l:s k="contextStatus">上下文状态</l:s>
    <l:s k="caseStatus">测试用例状态</l:s>
    <l:s k="exitStatus">退出状态</l:s>
    <l:s k="testCases">测试用例数</l:s>
    <l:s k="passRate">通过率</l:s>
    <l:s k="assertions">断言</l:s>
    <l:s k="countsByStatus">按状态统计的测试用例</l:s>
    <l:s k="testCase">测试用例</l:s>
    <l:s k="testType">测试类型</l:s>
    <l:s k="status">状态</l:s>
    <l:s k="verificationResult">验证结果</l:s>
    <l:s k="cov.name">SD 实例</l:s>
    <l:s k="cov.sdname">序列图</l:s>
    <l:s k="cov.value">已达步骤</l:s>
    <l:s k="cov.max">总步骤</l:s>
    <l:s k="cov.coverage">覆盖率</l:s>
    <l:s k="img.model">规格图</l:s>
    <l:s k="img.result">结果图</l:s>
    <l:s k="none.cases">此测试上下文不包含测试用例。</l:s>
    <l:s k="none.assertions">此测试用例没有记录任何断言。</l:s>
    <l:s k="col.sdiname">SD 实例</l:s>
    <l:s k="col.msgid">消息 ID</l:s>
    <l:s k="col.usermsg">用户消息</l:s>
    <l:s k="col.inr">输入编号</l:s>
    <l:s k="col.onr">输出编号</l:s>
    <l:s k="col.arbiter">仲裁</l:s>
    <l:s k="col.guid">GUID</l:s>
    <l:s k="col.name">断言</l:s>
    <l:s k="col.dir">目录</l:s>
    <l:s k="skip">跳到测试用例</l:s>
    <l:s k="sec.problems">问题</l:s>
    <l:s k="problems.caption">未通过的测试用例（按执行顺序）</l:s>
    <l:s k="firstFailure">第一个失败的断言</l:s>
    <l:s k="lastAssertion">最后到达的断言</l:s>
    <l:s k="none.problems">没有问题：所有测试用例均已通过。</l:s>
    <l:s k="none.match">没有与筛选条件匹配的测试用例。</l:s>
    <l:s k="ctl.show">显示</l:s>
    <l:s k="ctl.search">搜索</l:s>
    <l:s k="ctl.searchHint">名称、消息、文件</l:s>
    <l:s k="ctl.expand">全部展开</l:s>
    <l:s k="ctl.collapse">全部折叠</l:s>
    <l:s k="ctl.dark">深色模式</l:s>
    <l:s k="ctl.keys">快捷键：/ 搜索，j 下一个问题，k 上一个问题</l:s>
    <l:s k="total">总计</l:s>
    <l:s k="notPassed">未通过</l:s>
    <l:s k="col.fileLine">文件:行</l:s>
    <l:s k="generated">报告由 qendor 生成。</l:s>
    <l:s k="st" src="PASSED">通过</l:s>
    <l:s k="st" src="FAILED">失败</l:s>
    <l:s k="st" src="ERROR">错误</l:s>
    <l:s k="st" src="UNDEFINED">未定义</l:s>
    <l:s k="tt" src="tt_SD">序列图测试</l:s>
    <l:s k="tt" src="tt_Code">代码测试</l:s>
    <l:s k="kind" src="rk_testcase">测试用例报告</l:s>
    <l:s k="kind" src="rk_testcontext">测试上下文报告</l:s>
    <l:s k="arb" src="internal">内部</l:s>
    <l:s k="arb" src="external">外部</l:s>
    <l:s k="vr" src="Result verification successful">结果验证成功</l:s>
    <l:s k="vr" src="Result verification failed">结果验证失败</l:s>
    <l:s k="vr" src="Result verification switched off">结果验证已关闭</l:s>
    <l:s k="vr" src="Statechart contains elements that are not supported for result verification">状态图包含结果验证不支持的元素</l:s>
    <l:s k="vr" src="No result verification for Code TestCases">代码测试用例不进行结果验证</l:s>
    <l:s k="vr" src="Result verification currently not supported for SDs with interaction operator parallel">目前不支持对含并行交互运算符（par）的序列图进行结果验证</l:s>
    <l:s k="vr" src="TestCase did not terminate as expected">测试用例未按预期终止</l:s>
    <l:s k="colon" xml:space="preserve">：</l:s>
    <l:s k="sep" xml:space="preserve">，</l:s>
    <l:s k="line.allPassed">全部 {m} 个测试用例均通过</l:s>
    <l:s k="line.failed.first">{m} 个测试用例中 {n} 个失败</l:s>
    <l:s k="line.error.first">{m} 个测试用例中 {n} 个以错误结束</l:s>
    <l:s k="line.error">{n} 个以错误结束</l:s>
    <l:s k="line.other.first">{m} 个测试用例中 {n} 个没有结论</l:s>
    <l:s k="line.other">{n} 个没有结论</l:s>
    <l:s k="firstProblem">第一个问题</l:s>
    <l:s k="mp.label">模型路径</l:s>
    <l:s k="as.failed">{n} 个失败</l:s>
    <l:s k="as.passed">全部 {m} 个通过</l:s>
    <l:s k="as.none">无</l:s>
    <l:s k="ctl.shown">显示 {m} 个测试用例中的 {n} 个</l:s>
    <l:s k="img.of">测试用例 {m} 的序列图 {n}</l:s>
    <l:s k="mp" src="Result verification successful">已遵循</l:s>
    <l:s k="mp" src="Result verification failed">未遵循</l:s>
    <l:s k="mp" src="Result verification switched off">未检查（无验证文件）</l:s>
    <l:s k="mp" src="Statechart contains elements that are not supported for result verification">未检查（状态图含不支持的元素）</l:s>
    <l:s k="mp" src="No result verification for Code TestCases">无（代码测试）</l:s>
    <l:s k="mp" src="Result verification currently not supported for SDs with interaction operator parallel">未检查（并行片段）</l:s>
    <l:s k="mp" src="TestCase did not terminate as expected">未终止</l:s>
  </l:strings>
  <!-- Strings of the problems list of a large context. -->
  <l:strings>
    <l:s k="problems.grouped">未通过的测试用例，按状态、判定和第一个失败的断言分组</l:s>
    <l:s k="problems.more">另外 {n} 个</l:s>
    <l:s k="none.failing">没有失败的断言</l:s>
  </l:strings>
</xsl:stylesheet>
