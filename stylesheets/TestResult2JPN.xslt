<?xml version="1.0" encoding="UTF-8"?>
<!--
  HTML report in Japanese. The page itself is built by TestResultCore.xslt;
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

  <xsl:variable name="lang" select="'ja'"/>
  <xsl:variable name="fonts" select="'&quot;Hiragino Sans&quot;, &quot;Yu Gothic&quot;, Meiryo, &quot;Noto Sans CJK JP&quot;, &quot;Source Han Sans&quot;, system-ui, sans-serif'"/>
  <xsl:variable name="intFormat" select="'#,##0'"/>
  <xsl:variable name="pctFormat" select="'0.#'"/>
  <xsl:variable name="pctSign" select="'%'"/>
  <xsl:variable name="headingBreak" select="'keep-all'"/>
  <xsl:variable name="T" select="document('')/*/l:strings/l:s"/>

  <!-- Header values: the pattern of the header's time ({Y}, {M}, {D}, {W}
       the weekday's word, {T} the clock; empty keeps the time as written),
       the weekdays, and the word for a user or machine the run did not know. -->
  <l:strings>
    <l:s k="date">{Y}年{M}月{D}日({W}) {T}</l:s>
    <l:s k="wd" src="Mon">月</l:s>
    <l:s k="wd" src="Tue">火</l:s>
    <l:s k="wd" src="Wed">水</l:s>
    <l:s k="wd" src="Thu">木</l:s>
    <l:s k="wd" src="Fri">金</l:s>
    <l:s k="wd" src="Sat">土</l:s>
    <l:s k="wd" src="Sun">日</l:s>
    <l:s k="unknown">不明</l:s>
  </l:strings>

  <!-- Strings of the earlier runs (TestResultHistory.xslt). -->
  <l:strings>
    <l:s k="hist.strip">直近の実行（古い順）</l:s>
    <l:s k="hist.run">実行</l:s>
    <l:s k="hist.now">今回の実行</l:s>
    <l:s k="hist.trend">直近の実行の推移</l:s>
    <l:s k="hist.above">合格（線の上）</l:s>
    <l:s k="hist.below">未合格（線の下）</l:s>
    <l:s k="hist.numbers">実行ごとの数値</l:s>
    <l:s k="hist.time">時刻</l:s>
    <l:s k="hist.problemsCaption">合格しなかったテストケース：新しい失敗が先、残りは実行順</l:s>
    <l:s k="hist.nNew">新しい失敗：{n}</l:s>
    <l:s k="hist.nFixed">修正済み：{n}</l:s>
    <l:s k="hist.nFlaky">不安定：{n}</l:s>
    <l:s k="hist.changes">前回の実行から</l:s>
    <l:s k="hist.only">次のみ</l:s>
    <l:s k="hist.runsOrder">新しい順</l:s>
    <l:s k="hc" src="new">新しい失敗</l:s>
    <l:s k="hc" src="fixed">修正済み</l:s>
    <l:s k="hc" src="flaky">不安定</l:s>
    <l:s k="hc" src="still failing">失敗が継続</l:s>
    <l:s k="hc" src="stable">安定</l:s>
  </l:strings>

  <l:strings>
    <l:s k="title.case">テストケースレポート</l:s>
    <l:s k="title.context">テストコンテキストレポート</l:s>
    <l:s k="sec.report">レポート</l:s>
    <l:s k="sec.env">環境</l:s>
    <l:s k="sec.config">構成</l:s>
    <l:s k="sec.summary">概要</l:s>
    <l:s k="sec.cases">テストケース</l:s>
    <l:s k="sec.assertions">アサーション</l:s>
    <l:s k="sec.coverage">シーケンス図カバレッジ</l:s>
    <l:s k="name">名前</l:s>
    <l:s k="fullname">完全名</l:s>
    <l:s k="time">作成日時</l:s>
    <l:s k="userName">ユーザー</l:s>
    <l:s k="machineName">マシン</l:s>
    <l:s k="osVersion">オペレーティングシステム</l:s>
    <l:s k="korvanVersion">Korvan バージョン</l:s>
    <l:s k="ostraVersion">Ostra バージョン</l:s>
    <l:s k="projectName">プロジェクト</l:s>
    <l:s k="componentName">コンポーネント</l:s>
    <l:s k="configurationName">構成</l:s>
    <l:s k="contextStatus">コンテキストの状態</l:s>
    <l:s k="caseStatus">テストケースの状態</l:s>
    <l:s k="exitStatus">終了ステータス</l:s>
    <l:s k="testCases">テストケース数</l:s>
    <l:s k="passRate">合格率</l:s>
    <l:s k="assertions">アサーション</l:s>
    <l:s k="countsByStatus">状態別テストケース</l:s>
    <l:s k="testCase">テストケース</l:s>
    <l:s k="testType">テスト種別</l:s>
    <l:s k="status">状態</l:s>
    <l:s k="verificationResult">検証結果</l:s>
    <l:s k="cov.name">SD インスタンス</l:s>
    <l:s k="cov.sdname">シーケンス図</l:s>
    <l:s k="cov.value">到達ステップ</l:s>
    <l:s k="cov.max">総ステップ数</l:s>
    <l:s k="cov.coverage">カバレッジ</l:s>
    <l:s k="img.model">仕様図</l:s>
    <l:s k="img.result">結果図</l:s>
    <l:s k="none.cases">このテストコンテキストにはテストケースがありません。</l:s>
    <l:s k="none.assertions">このテストケースにはアサーションが記録されていません。</l:s>
    <l:s k="col.sdiname">SD インスタンス</l:s>
    <l:s k="col.msgid">メッセージ ID</l:s>
    <l:s k="col.usermsg">ユーザーメッセージ</l:s>
    <l:s k="col.inr">入力番号</l:s>
    <l:s k="col.onr">出力番号</l:s>
    <l:s k="col.arbiter">アービター</l:s>
    <l:s k="col.guid">GUID</l:s>
    <l:s k="col.name">アサーション</l:s>
    <l:s k="col.dir">ディレクトリ</l:s>
    <l:s k="skip">テストケースへ移動</l:s>
    <l:s k="sec.problems">問題</l:s>
    <l:s k="problems.caption">合格しなかったテストケース（実行順）</l:s>
    <l:s k="firstFailure">最初に失敗したアサーション</l:s>
    <l:s k="lastAssertion">最後に到達したアサーション</l:s>
    <l:s k="none.problems">問題はありません：すべてのテストケースが合格しました。</l:s>
    <l:s k="none.match">フィルターに一致するテストケースはありません。</l:s>
    <l:s k="ctl.show">表示</l:s>
    <l:s k="ctl.search">検索</l:s>
    <l:s k="ctl.searchHint">名前、メッセージ、ファイル</l:s>
    <l:s k="ctl.expand">すべて展開</l:s>
    <l:s k="ctl.collapse">すべて折りたたむ</l:s>
    <l:s k="ctl.dark">ダークモード</l:s>
    <l:s k="ctl.keys">キー：/ 検索、j 次の問題、k 前の問題</l:s>
    <l:s k="total">合計</l:s>
    <l:s k="notPassed">未合格</l:s>
    <l:s k="col.fileLine">ファイル:行</l:s>
    <l:s k="generated">このレポートは qendor によって生成されました。</l:s>
    <l:s k="st" src="PASSED">合格</l:s>
    <l:s k="st" src="FAILED">不合格</l:s>
    <l:s k="st" src="ERROR">エラー</l:s>
    <l:s k="st" src="UNDEFINED">未定義</l:s>
    <l:s k="tt" src="tt_SD">シーケンス図テスト</l:s>
    <l:s k="tt" src="tt_Code">コードテスト</l:s>
    <l:s k="kind" src="rk_testcase">テストケースレポート</l:s>
    <l:s k="kind" src="rk_testcontext">テストコンテキストレポート</l:s>
    <l:s k="arb" src="internal">内部</l:s>
    <l:s k="arb" src="external">外部</l:s>
    <l:s k="vr" src="Result verification successful">結果検証に成功しました</l:s>
    <l:s k="vr" src="Result verification failed">結果検証に失敗しました</l:s>
    <l:s k="vr" src="Result verification switched off">結果検証はオフです</l:s>
    <l:s k="vr" src="Statechart contains elements that are not supported for result verification">ステートチャートに結果検証でサポートされない要素が含まれています</l:s>
    <l:s k="vr" src="No result verification for Code TestCases">コードテストケースには結果検証はありません</l:s>
    <l:s k="vr" src="Result verification currently not supported for SDs with interaction operator parallel">並行相互作用演算子（par）を含む SD の結果検証は現在サポートされていません</l:s>
    <l:s k="vr" src="TestCase did not terminate as expected">テストケースは想定どおりに終了しませんでした</l:s>
    <l:s k="colon" xml:space="preserve">：</l:s>
    <l:s k="sep" xml:space="preserve">、</l:s>
    <l:s k="line.allPassed">{m} 件のテストケースすべてが合格</l:s>
    <l:s k="line.failed.first">{m} 件中 {n} 件のテストケースが不合格</l:s>
    <l:s k="line.error.first">{m} 件中 {n} 件のテストケースがエラーで終了</l:s>
    <l:s k="line.error">{n} 件がエラーで終了</l:s>
    <l:s k="line.other.first">{m} 件中 {n} 件のテストケースに判定なし</l:s>
    <l:s k="line.other">{n} 件に判定なし</l:s>
    <l:s k="firstProblem">最初の問題</l:s>
    <l:s k="mp.label">モデルパス</l:s>
    <l:s k="as.failed">{n} 件が不合格</l:s>
    <l:s k="as.passed">{m} 件すべて合格</l:s>
    <l:s k="as.none">なし</l:s>
    <l:s k="ctl.shown">{m} 件中 {n} 件のテストケースを表示</l:s>
    <l:s k="img.of">テストケース {m} のシーケンス図 {n}</l:s>
    <l:s k="mp" src="Result verification successful">沿っている</l:s>
    <l:s k="mp" src="Result verification failed">沿っていない</l:s>
    <l:s k="mp" src="Result verification switched off">未検査（検証ファイルなし）</l:s>
    <l:s k="mp" src="Statechart contains elements that are not supported for result verification">未検査（未対応のステートチャート要素）</l:s>
    <l:s k="mp" src="No result verification for Code TestCases">なし（コードテスト）</l:s>
    <l:s k="mp" src="Result verification currently not supported for SDs with interaction operator parallel">未検査（par フラグメント）</l:s>
    <l:s k="mp" src="TestCase did not terminate as expected">終了せず</l:s>
  </l:strings>
  <!-- Strings of the problems list of a large context. -->
  <l:strings>
    <l:s k="problems.grouped">合格しなかったテストケース（状態、判定、最初に失敗したアサーションごと）</l:s>
    <l:s k="problems.more">ほか {n} 件</l:s>
    <l:s k="none.failing">失敗したアサーションなし</l:s>
  </l:strings>
</xsl:stylesheet>
