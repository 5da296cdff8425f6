<?xml version="1.0" encoding="UTF-8"?>
<!--
  The "Diagnosis" of a test case (written by qendor -explain), drawn on the
  model: a sequence diagram as nested boxes in the manner of combined
  fragments, steps as chips (filled when the run reached them, hollow when it
  did not, with how often), the rejected message in red where the diagram
  expected something else; a chart as the row of states and transitions the
  searches followed, ending where one found nothing.
  Included by TestResultCore.xslt. Its words are below, per language ($lang
  of the language file); a language without them gets the English ones.
  Everything is plain HTML and CSS: it reads without scripts, prints and
  follows the page's dark mode.
-->
<xsl:stylesheet version="1.0"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:d="urn:qendor:diagnosis"
    exclude-result-prefixes="d">

  <d:strings>
    <d:s lang="en" k="title">Where the run left the model</d:s>
    <d:s lang="en" k="expected">Expected step</d:s>
    <d:s lang="en" k="or">or</d:s>
    <d:s lang="en" k="recorded">the run recorded step</d:s>
    <d:s lang="en" k="nothing">Expected nothing more</d:s>
    <d:s lang="en" k="ended">The run ended here; expected step</d:s>
    <d:s lang="en" k="endedAtEnd">The run ended at the diagram's end.</d:s>
    <d:s lang="en" k="reached">reached</d:s>
    <d:s lang="en" k="times">times</d:s>
    <d:s lang="en" k="notReached">not reached</d:s>
    <d:s lang="en" k="steps">steps</d:s>
    <d:s lang="en" k="rejected">rejected</d:s>
    <d:s lang="en" k="path">Path the verification followed</d:s>
    <d:s lang="en" k="omitted">earlier steps not shown:</d:s>
    <d:s lang="en" k="noMatch">No state or transition reachable from here performs assertion</d:s>
    <d:s lang="en" k="noEnd">No way leads from here to the end of the chart.</d:s>
    <d:s lang="en" k="tried">Transitions tried:</d:s>
    <d:s lang="en" k="assertion">assertion</d:s>
    <d:s lang="en" k="state">state</d:s>
    <d:s lang="en" k="transition">transition</d:s>
    <d:s lang="en" k="sep">; </d:s>
    <d:s lang="en" k="comma">, </d:s>
    <d:s lang="en" k="otherCase">recorded by another test case of this context</d:s>
    <d:s lang="en" k="modelRejected">rejected by the model</d:s>
    <d:s lang="en" k="toDiagram">show in the diagram</d:s>
    <d:s lang="en" k="notJudged">not judged</d:s>
    <d:s lang="en" k="moreNotJudged">more records not judged:</d:s>
    <d:s lang="en" k="pos.insideBare">inside {a}</d:s>
    <d:s lang="en" k="pos.insideBare^">Inside {a}</d:s>
    <d:s lang="en" k="pos.passed">the run passed over {a}</d:s>
    <d:s lang="en" k="pos.passed^">The run passed over {a}</d:s>
    <d:s lang="en" k="pos.inside">inside {a}, operand {b} was taken at step {c}</d:s>
    <d:s lang="en" k="pos.inside^">Inside {a}, operand {b} was taken at step {c}</d:s>
    <d:s lang="en" k="pos.after">after step {a} the diagram expects {b}</d:s>
    <d:s lang="en" k="pos.after^">After step {a} the diagram expects {b}</d:s>
    <d:s lang="en" k="pos.start">at its start the diagram expects {b}</d:s>
    <d:s lang="en" k="pos.start^">At its start the diagram expects {b}</d:s>
    <d:s lang="en" k="pos.afterNone">after step {a} the diagram expects nothing more</d:s>
    <d:s lang="en" k="pos.afterNone^">After step {a} the diagram expects nothing more</d:s>
    <d:s lang="en" k="pos.startNone">at its start the diagram expects nothing</d:s>
    <d:s lang="en" k="pos.startNone^">At its start the diagram expects nothing</d:s>
    <d:s lang="en" k="pos.more">{a} more</d:s>
    <d:s lang="en" k="pos.behindIn">the run recorded step {a}, which lies behind, in {b}</d:s>
    <d:s lang="en" k="pos.behind">the run recorded step {a}, which lies behind</d:s>
    <d:s lang="en" k="pos.aheadIn">the run recorded step {a}, which lies ahead in {b}, out of reach from here</d:s>
    <d:s lang="en" k="pos.ahead">the run recorded step {a}, which lies ahead, out of reach from here</d:s>
    <d:s lang="en" k="pos.nowhere">the run recorded step {a}, which the diagram does not have</d:s>
    <d:s lang="en" k="pos.ended">the run ended here</d:s>
    <d:s lang="en" k="pos.and" xml:space="preserve">, </d:s>
    <d:s lang="en" k="pos.stop">.</d:s>
    <d:s lang="en" k="performedIn">Assertion {1} is performed in {2}.</d:s>
    <d:s lang="en" k="performedUnreachable">Assertion {1} is performed in {2}, but no way through the chart leads there from where the search stood.</d:s>
    <d:s lang="en" k="performedNowhere">No state or transition of the chart performs assertion {1}.</d:s>
    <d:s lang="en" k="blockedAsserts">On the shortest way from where the search stood, {1} asserts {2}, which the run never recorded.</d:s>
    <d:s lang="en" k="blockedRecorded">On the shortest way from where the search stood, {1} asserts {2}, which the run recorded, but not at this point.</d:s>
    <d:s lang="en" k="blockedNotTaken">On the shortest way from where the search stood, {1} was not taken.</d:s>
    <d:s lang="en" k="shown">Showing {1} of {2} states around the run's path.</d:s>
    <d:s lang="en" k="drawingTitle">Chart of {1} states and {2} transitions; the path is numbered in order.</d:s>
    <d:s lang="en" k="stopMark">stopped here</d:s>

    <d:s lang="zh-CN" k="title">运行偏离模型的位置</d:s>
    <d:s lang="zh-CN" k="expected">预期步骤</d:s>
    <d:s lang="zh-CN" k="or">或</d:s>
    <d:s lang="zh-CN" k="recorded">运行记录的步骤为</d:s>
    <d:s lang="zh-CN" k="nothing">预期不再有步骤</d:s>
    <d:s lang="zh-CN" k="ended">运行在此结束；预期步骤</d:s>
    <d:s lang="zh-CN" k="endedAtEnd">运行在图的末尾结束。</d:s>
    <d:s lang="zh-CN" k="reached">已到达</d:s>
    <d:s lang="zh-CN" k="times">次</d:s>
    <d:s lang="zh-CN" k="notReached">未到达</d:s>
    <d:s lang="zh-CN" k="steps">个步骤</d:s>
    <d:s lang="zh-CN" k="rejected">被拒绝</d:s>
    <d:s lang="zh-CN" k="path">验证所经过的路径</d:s>
    <d:s lang="zh-CN" k="omitted">未显示的先前步骤：</d:s>
    <d:s lang="zh-CN" k="noMatch">从此处可到达的状态或转换均不执行断言</d:s>
    <d:s lang="zh-CN" k="noEnd">从此处无法到达图的结束。</d:s>
    <d:s lang="zh-CN" k="tried">尝试过的转换：</d:s>
    <d:s lang="zh-CN" k="assertion">断言</d:s>
    <d:s lang="zh-CN" k="state">状态</d:s>
    <d:s lang="zh-CN" k="transition">转换</d:s>
    <d:s lang="zh-CN" k="sep">；</d:s>
    <d:s lang="zh-CN" k="comma">、</d:s>
    <d:s lang="zh-CN" k="otherCase">由本上下文的另一个测试用例记录</d:s>
    <d:s lang="zh-CN" k="modelRejected">被模型拒绝</d:s>
    <d:s lang="zh-CN" k="toDiagram">在图中显示</d:s>
    <d:s lang="zh-CN" k="notJudged">未评判</d:s>
    <d:s lang="zh-CN" k="moreNotJudged">其余未评判的记录：</d:s>
    <d:s lang="zh-CN" k="pos.insideBare">在 {a} 内</d:s>
    <d:s lang="zh-CN" k="pos.passed">运行越过了 {a}</d:s>
    <d:s lang="zh-CN" k="pos.inside">在 {a} 内，于步骤 {c} 进入了操作数 {b}</d:s>
    <d:s lang="zh-CN" k="pos.after">步骤 {a} 之后，图预期 {b}</d:s>
    <d:s lang="zh-CN" k="pos.start">图在开始处预期 {b}</d:s>
    <d:s lang="zh-CN" k="pos.afterNone">步骤 {a} 之后，图不再预期任何步骤</d:s>
    <d:s lang="zh-CN" k="pos.startNone">图在开始处不预期任何步骤</d:s>
    <d:s lang="zh-CN" k="pos.more">另外 {a} 个</d:s>
    <d:s lang="zh-CN" k="pos.behindIn">运行记录了步骤 {a}，它位于后方的 {b} 中</d:s>
    <d:s lang="zh-CN" k="pos.behind">运行记录了步骤 {a}，它位于后方</d:s>
    <d:s lang="zh-CN" k="pos.aheadIn">运行记录了步骤 {a}，它位于前方的 {b} 中，从此处无法到达</d:s>
    <d:s lang="zh-CN" k="pos.ahead">运行记录了步骤 {a}，它位于前方，从此处无法到达</d:s>
    <d:s lang="zh-CN" k="pos.nowhere">运行记录了步骤 {a}，图中没有该步骤</d:s>
    <d:s lang="zh-CN" k="pos.ended">运行在此结束</d:s>
    <d:s lang="zh-CN" k="pos.and">，</d:s>
    <d:s lang="zh-CN" k="pos.stop">。</d:s>
    <d:s lang="zh-CN" k="performedIn">断言 {1} 在{2}中执行。</d:s>
    <d:s lang="zh-CN" k="performedUnreachable">断言 {1} 在{2}中执行，但从搜索停留处没有路径通往那里。</d:s>
    <d:s lang="zh-CN" k="performedNowhere">图中没有任何状态或转换执行断言 {1}。</d:s>
    <d:s lang="zh-CN" k="blockedAsserts">在从搜索停留处出发的最短路径上，{1} 断言 {2}，而运行从未记录该断言。</d:s>
    <d:s lang="zh-CN" k="blockedRecorded">在从搜索停留处出发的最短路径上，{1} 断言 {2}，运行记录了该断言，但不在此处。</d:s>
    <d:s lang="zh-CN" k="blockedNotTaken">在从搜索停留处出发的最短路径上，未经过{1}。</d:s>
    <d:s lang="zh-CN" k="shown">显示运行路径周围 {2} 个状态中的 {1} 个。</d:s>
    <d:s lang="zh-CN" k="drawingTitle">图：{1} 个状态，{2} 个转换；路径按顺序编号。</d:s>
    <d:s lang="zh-CN" k="stopMark">在此停止</d:s>

    <d:s lang="zh-TW" k="title">執行偏離模型的位置</d:s>
    <d:s lang="zh-TW" k="expected">預期步驟</d:s>
    <d:s lang="zh-TW" k="or">或</d:s>
    <d:s lang="zh-TW" k="recorded">執行記錄的步驟為</d:s>
    <d:s lang="zh-TW" k="nothing">預期不再有步驟</d:s>
    <d:s lang="zh-TW" k="ended">執行在此結束；預期步驟</d:s>
    <d:s lang="zh-TW" k="endedAtEnd">執行在圖的結尾結束。</d:s>
    <d:s lang="zh-TW" k="reached">已到達</d:s>
    <d:s lang="zh-TW" k="times">次</d:s>
    <d:s lang="zh-TW" k="notReached">未到達</d:s>
    <d:s lang="zh-TW" k="steps">個步驟</d:s>
    <d:s lang="zh-TW" k="rejected">被拒絕</d:s>
    <d:s lang="zh-TW" k="path">驗證所經過的路徑</d:s>
    <d:s lang="zh-TW" k="omitted">未顯示的先前步驟：</d:s>
    <d:s lang="zh-TW" k="noMatch">從此處可到達的狀態或轉換均不執行斷言</d:s>
    <d:s lang="zh-TW" k="noEnd">從此處無法到達圖的結束。</d:s>
    <d:s lang="zh-TW" k="tried">嘗試過的轉換：</d:s>
    <d:s lang="zh-TW" k="assertion">斷言</d:s>
    <d:s lang="zh-TW" k="state">狀態</d:s>
    <d:s lang="zh-TW" k="transition">轉換</d:s>
    <d:s lang="zh-TW" k="sep">；</d:s>
    <d:s lang="zh-TW" k="comma">、</d:s>
    <d:s lang="zh-TW" k="otherCase">由本上下文的另一個測試案例記錄</d:s>
    <d:s lang="zh-TW" k="modelRejected">被模型拒絕</d:s>
    <d:s lang="zh-TW" k="toDiagram">在圖中顯示</d:s>
    <d:s lang="zh-TW" k="notJudged">未評判</d:s>
    <d:s lang="zh-TW" k="moreNotJudged">其餘未評判的記錄：</d:s>
    <d:s lang="zh-TW" k="pos.insideBare">在 {a} 內</d:s>
    <d:s lang="zh-TW" k="pos.passed">執行越過了 {a}</d:s>
    <d:s lang="zh-TW" k="pos.inside">在 {a} 內，於步驟 {c} 進入了運算元 {b}</d:s>
    <d:s lang="zh-TW" k="pos.after">步驟 {a} 之後，圖預期 {b}</d:s>
    <d:s lang="zh-TW" k="pos.start">圖在開始處預期 {b}</d:s>
    <d:s lang="zh-TW" k="pos.afterNone">步驟 {a} 之後，圖不再預期任何步驟</d:s>
    <d:s lang="zh-TW" k="pos.startNone">圖在開始處不預期任何步驟</d:s>
    <d:s lang="zh-TW" k="pos.more">另外 {a} 個</d:s>
    <d:s lang="zh-TW" k="pos.behindIn">執行記錄了步驟 {a}，它位於後方的 {b} 中</d:s>
    <d:s lang="zh-TW" k="pos.behind">執行記錄了步驟 {a}，它位於後方</d:s>
    <d:s lang="zh-TW" k="pos.aheadIn">執行記錄了步驟 {a}，它位於前方的 {b} 中，從此處無法到達</d:s>
    <d:s lang="zh-TW" k="pos.ahead">執行記錄了步驟 {a}，它位於前方，從此處無法到達</d:s>
    <d:s lang="zh-TW" k="pos.nowhere">執行記錄了步驟 {a}，圖中沒有該步驟</d:s>
    <d:s lang="zh-TW" k="pos.ended">執行在此結束</d:s>
    <d:s lang="zh-TW" k="pos.and">，</d:s>
    <d:s lang="zh-TW" k="pos.stop">。</d:s>
    <d:s lang="zh-TW" k="performedIn">斷言 {1} 在{2}中執行。</d:s>
    <d:s lang="zh-TW" k="performedUnreachable">斷言 {1} 在{2}中執行，但從搜尋停留處沒有路徑通往那裡。</d:s>
    <d:s lang="zh-TW" k="performedNowhere">圖中沒有任何狀態或轉換執行斷言 {1}。</d:s>
    <d:s lang="zh-TW" k="blockedAsserts">在從搜尋停留處出發的最短路徑上，{1} 斷言 {2}，而執行從未記錄該斷言。</d:s>
    <d:s lang="zh-TW" k="blockedRecorded">在從搜尋停留處出發的最短路徑上，{1} 斷言 {2}，執行記錄了該斷言，但不在此處。</d:s>
    <d:s lang="zh-TW" k="blockedNotTaken">在從搜尋停留處出發的最短路徑上，未經過{1}。</d:s>
    <d:s lang="zh-TW" k="shown">顯示執行路徑周圍 {2} 個狀態中的 {1} 個。</d:s>
    <d:s lang="zh-TW" k="drawingTitle">圖：{1} 個狀態，{2} 個轉換；路徑依序編號。</d:s>
    <d:s lang="zh-TW" k="stopMark">在此停止</d:s>

    <d:s lang="ko" k="title">실행이 모델을 벗어난 위치</d:s>
    <d:s lang="ko" k="expected">예상 단계</d:s>
    <d:s lang="ko" k="or">또는</d:s>
    <d:s lang="ko" k="recorded">실행이 기록한 단계</d:s>
    <d:s lang="ko" k="nothing">더 이상 예상되는 단계 없음</d:s>
    <d:s lang="ko" k="ended">실행이 여기서 끝남; 예상 단계</d:s>
    <d:s lang="ko" k="endedAtEnd">실행이 다이어그램 끝에서 끝났습니다.</d:s>
    <d:s lang="ko" k="reached">도달</d:s>
    <d:s lang="ko" k="times">회</d:s>
    <d:s lang="ko" k="notReached">도달하지 않음</d:s>
    <d:s lang="ko" k="steps">단계</d:s>
    <d:s lang="ko" k="rejected">거부됨</d:s>
    <d:s lang="ko" k="path">검증이 따라간 경로</d:s>
    <d:s lang="ko" k="omitted">표시하지 않은 이전 단계:</d:s>
    <d:s lang="ko" k="noMatch">여기서 도달할 수 있는 상태나 전이 중 어설션을 수행하는 것이 없음</d:s>
    <d:s lang="ko" k="noEnd">여기서 차트의 끝으로 가는 길이 없습니다.</d:s>
    <d:s lang="ko" k="tried">시도한 전이:</d:s>
    <d:s lang="ko" k="assertion">어설션</d:s>
    <d:s lang="ko" k="state">상태</d:s>
    <d:s lang="ko" k="transition">전이</d:s>
    <d:s lang="ko" k="sep">; </d:s>
    <d:s lang="ko" k="comma">, </d:s>
    <d:s lang="ko" k="otherCase">이 컨텍스트의 다른 테스트 케이스가 기록함</d:s>
    <d:s lang="ko" k="modelRejected">모델이 거부함</d:s>
    <d:s lang="ko" k="toDiagram">다이어그램에서 보기</d:s>
    <d:s lang="ko" k="notJudged">판정하지 않음</d:s>
    <d:s lang="ko" k="moreNotJudged">판정하지 않은 나머지 기록:</d:s>
    <d:s lang="ko" k="pos.insideBare">{a} 안에 있었습니다</d:s>
    <d:s lang="ko" k="pos.passed">실행이 {a}을(를) 건너뛰었습니다</d:s>
    <d:s lang="ko" k="pos.inside">{a} 안에서 단계 {c}에 피연산자 {b}을(를) 택했습니다</d:s>
    <d:s lang="ko" k="pos.after">단계 {a} 다음에 다이어그램은 {b}을(를) 예상합니다</d:s>
    <d:s lang="ko" k="pos.start">시작에서 다이어그램은 {b}을(를) 예상합니다</d:s>
    <d:s lang="ko" k="pos.afterNone">단계 {a} 다음에 다이어그램은 더 이상 예상하는 단계가 없습니다</d:s>
    <d:s lang="ko" k="pos.startNone">시작에서 다이어그램은 아무 단계도 예상하지 않습니다</d:s>
    <d:s lang="ko" k="pos.more">그 밖에 {a}개</d:s>
    <d:s lang="ko" k="pos.behindIn">실행이 기록한 단계 {a}은(는) 뒤쪽 {b} 안에 있습니다</d:s>
    <d:s lang="ko" k="pos.behind">실행이 기록한 단계 {a}은(는) 뒤쪽에 있습니다</d:s>
    <d:s lang="ko" k="pos.aheadIn">실행이 기록한 단계 {a}은(는) 앞쪽 {b} 안에 있으며 여기서 도달할 수 없습니다</d:s>
    <d:s lang="ko" k="pos.ahead">실행이 기록한 단계 {a}은(는) 앞쪽에 있으며 여기서 도달할 수 없습니다</d:s>
    <d:s lang="ko" k="pos.nowhere">실행이 기록한 단계 {a}은(는) 다이어그램에 없습니다</d:s>
    <d:s lang="ko" k="pos.ended">실행이 여기서 끝났습니다</d:s>
    <d:s lang="ko" k="pos.and" xml:space="preserve">, </d:s>
    <d:s lang="ko" k="pos.stop">.</d:s>
    <d:s lang="ko" k="performedIn">어설션 {1}은(는) {2}에서 수행됩니다.</d:s>
    <d:s lang="ko" k="performedUnreachable">어설션 {1}은(는) {2}에서 수행되지만, 검색이 멈춘 곳에서 그곳으로 가는 길이 없습니다.</d:s>
    <d:s lang="ko" k="performedNowhere">차트의 어떤 상태나 전이도 어설션 {1}을(를) 수행하지 않습니다.</d:s>
    <d:s lang="ko" k="blockedAsserts">검색이 멈춘 곳에서 가는 최단 경로에서 {1}이(가) {2}을(를) 어설션하지만, 실행은 이를 기록하지 않았습니다.</d:s>
    <d:s lang="ko" k="blockedRecorded">검색이 멈춘 곳에서 가는 최단 경로에서 {1}이(가) {2}을(를) 어설션하며, 실행은 이를 기록했지만 이 지점에서는 아닙니다.</d:s>
    <d:s lang="ko" k="blockedNotTaken">검색이 멈춘 곳에서 가는 최단 경로에서 {1}을(를) 지나지 않았습니다.</d:s>
    <d:s lang="ko" k="shown">실행 경로 주변의 상태 {2}개 중 {1}개를 표시합니다.</d:s>
    <d:s lang="ko" k="drawingTitle">상태 {1}개와 전이 {2}개의 차트; 경로에 순서대로 번호가 매겨져 있습니다.</d:s>
    <d:s lang="ko" k="stopMark">여기서 멈춤</d:s>

    <d:s lang="ja" k="title">実行がモデルから外れた箇所</d:s>
    <d:s lang="ja" k="expected">期待されたステップ</d:s>
    <d:s lang="ja" k="or">または</d:s>
    <d:s lang="ja" k="recorded">実行が記録したステップ</d:s>
    <d:s lang="ja" k="nothing">これ以上のステップは期待されていません</d:s>
    <d:s lang="ja" k="ended">実行はここで終了。期待されたステップ</d:s>
    <d:s lang="ja" k="endedAtEnd">実行は図の最後で終了しました。</d:s>
    <d:s lang="ja" k="reached">到達</d:s>
    <d:s lang="ja" k="times">回</d:s>
    <d:s lang="ja" k="notReached">未到達</d:s>
    <d:s lang="ja" k="steps">ステップ</d:s>
    <d:s lang="ja" k="rejected">拒否</d:s>
    <d:s lang="ja" k="path">検証がたどった経路</d:s>
    <d:s lang="ja" k="omitted">表示していない以前のステップ:</d:s>
    <d:s lang="ja" k="noMatch">ここから到達できる状態や遷移のどれもアサーションを実行しません</d:s>
    <d:s lang="ja" k="noEnd">ここからチャートの終わりへ至る道はありません。</d:s>
    <d:s lang="ja" k="tried">試した遷移:</d:s>
    <d:s lang="ja" k="assertion">アサーション</d:s>
    <d:s lang="ja" k="state">状態</d:s>
    <d:s lang="ja" k="transition">遷移</d:s>
    <d:s lang="ja" k="sep">。</d:s>
    <d:s lang="ja" k="comma">、</d:s>
    <d:s lang="ja" k="otherCase">このコンテキストの別のテストケースが記録</d:s>
    <d:s lang="ja" k="modelRejected">モデルが拒否</d:s>
    <d:s lang="ja" k="toDiagram">図で表示</d:s>
    <d:s lang="ja" k="notJudged">未判定</d:s>
    <d:s lang="ja" k="moreNotJudged">判定していない残りの記録:</d:s>
    <d:s lang="ja" k="pos.insideBare">{a} の中にいました</d:s>
    <d:s lang="ja" k="pos.passed">実行は {a} を通り過ぎました</d:s>
    <d:s lang="ja" k="pos.inside">{a} の中で、ステップ {c} でオペランド {b} に入りました</d:s>
    <d:s lang="ja" k="pos.after">ステップ {a} の後、図は {b} を期待します</d:s>
    <d:s lang="ja" k="pos.start">図は最初に {b} を期待します</d:s>
    <d:s lang="ja" k="pos.afterNone">ステップ {a} の後、図はこれ以上のステップを期待しません</d:s>
    <d:s lang="ja" k="pos.startNone">図は最初に何も期待しません</d:s>
    <d:s lang="ja" k="pos.more">ほか {a} 件</d:s>
    <d:s lang="ja" k="pos.behindIn">実行が記録したステップ {a} は後方の {b} の中にあります</d:s>
    <d:s lang="ja" k="pos.behind">実行が記録したステップ {a} は後方にあります</d:s>
    <d:s lang="ja" k="pos.aheadIn">実行が記録したステップ {a} は前方の {b} の中にあり、ここからは到達できません</d:s>
    <d:s lang="ja" k="pos.ahead">実行が記録したステップ {a} は前方にあり、ここからは到達できません</d:s>
    <d:s lang="ja" k="pos.nowhere">実行が記録したステップ {a} は図にありません</d:s>
    <d:s lang="ja" k="pos.ended">実行はここで終了しました</d:s>
    <d:s lang="ja" k="pos.and">、</d:s>
    <d:s lang="ja" k="pos.stop">。</d:s>
    <d:s lang="ja" k="performedIn">アサーション {1} は{2}で実行されます。</d:s>
    <d:s lang="ja" k="performedUnreachable">アサーション {1} は{2}で実行されますが、探索が止まった場所からそこへ至る経路はありません。</d:s>
    <d:s lang="ja" k="performedNowhere">チャートのどの状態や遷移もアサーション {1} を実行しません。</d:s>
    <d:s lang="ja" k="blockedAsserts">探索が止まった場所からの最短経路上で、{1} が {2} をアサートしていますが、実行はそれを記録していません。</d:s>
    <d:s lang="ja" k="blockedRecorded">探索が止まった場所からの最短経路上で、{1} が {2} をアサートしています。実行はそれを記録しましたが、この時点ではありません。</d:s>
    <d:s lang="ja" k="blockedNotTaken">探索が止まった場所からの最短経路上で、{1} を通りませんでした。</d:s>
    <d:s lang="ja" k="shown">実行の経路の周りの状態 {2} 個のうち {1} 個を表示しています。</d:s>
    <d:s lang="ja" k="drawingTitle">状態 {1} 個と遷移 {2} 個のチャート。経路には順に番号が付いています。</d:s>
    <d:s lang="ja" k="stopMark">ここで停止</d:s>
  </d:strings>

  <xsl:variable name="diagnosisWords" select="document('')/*/d:strings/d:s"/>

  <!-- A word of the diagnosis in the page's language, else in English. -->
  <xsl:template name="dw">
    <xsl:param name="k"/>
    <xsl:variable name="own" select="$diagnosisWords[@lang = $lang][@k = $k]"/>
    <xsl:choose>
      <xsl:when test="$own"><xsl:value-of select="$own"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="$diagnosisWords[@lang = 'en'][@k = $k]"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- `heading`: h3 in a test case report, whose test case is the h2; h4
       below a context's test case. The region is named after its test case
       too, so that each of a context's regions has a name of its own. -->
  <xsl:template match="Diagnosis">
    <xsl:param name="cid"/>
    <xsl:param name="heading" select="'h4'"/>
    <div class="diag" role="region" aria-labelledby="{$cid}-diag">
      <style>
        <xsl:call-template name="diagnosis-css"/>
      </style>
      <xsl:element name="{$heading}">
        <xsl:attribute name="id"><xsl:value-of select="concat($cid, '-diag')"/></xsl:attribute>
        <xsl:call-template name="dw"><xsl:with-param name="k" select="'title'"/></xsl:call-template>
        <span class="vh"><xsl:value-of select="concat(' &#8211; ', ../@name)"/></span>
      </xsl:element>
      <xsl:choose>
        <xsl:when test="@kind = 'sequence'"><xsl:call-template name="diag-sequence"/></xsl:when>
        <xsl:otherwise><xsl:call-template name="diag-chart"/></xsl:otherwise>
      </xsl:choose>
    </div>
  </xsl:template>

  <!-- ===== Sequence diagram ===== -->

  <xsl:template name="diag-sequence">
    <xsl:variable name="eline" select="number(Expected/@line)"/>
    <!-- The step the rejected message stands before: the first at or after
         the line where the diagram expected something else. -->
    <xsl:variable name="before" select="(Outline//*[self::Step or self::Steps][@line &gt;= $eline])[1]"/>
    <p class="diag-sentence">
      <xsl:choose>
        <xsl:when test="Position"><xsl:apply-templates select="Position" mode="sentence"/></xsl:when>
        <xsl:otherwise><xsl:call-template name="diag-sentence"/></xsl:otherwise>
      </xsl:choose>
    </p>
    <div class="sd-outline">
      <xsl:apply-templates select="Outline/*" mode="diag">
        <xsl:with-param name="before" select="generate-id($before)"/>
      </xsl:apply-templates>
      <xsl:if test="Rejected and not($before)">
        <xsl:call-template name="diag-rejected-chip"/>
      </xsl:if>
    </div>
  </xsl:template>

  <!-- One sentence of where the run stood: the fragments its last step
       passed over, the operands it was inside, what the diagram expected
       there and where the recorded step lies. "The run passed over alt
       Returns.refund; inside opt Returns.mail, operand 1 was taken at step 4;
       after step 4 the diagram expects 5; the run recorded step 2
       (refundToCard), which lies behind, in alt Returns.refund." -->
  <xsl:template match="Position" mode="sentence">
    <xsl:variable name="lead">
      <xsl:choose>
        <xsl:when test="PassedOver">passed</xsl:when>
        <xsl:when test="Inside">inside</xsl:when>
        <xsl:otherwise>after</xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:if test="PassedOver">
      <xsl:call-template name="pos-clause">
        <xsl:with-param name="k" select="'pos.passed'"/>
        <xsl:with-param name="first" select="true()"/>
        <xsl:with-param name="a">
          <xsl:for-each select="PassedOver">
            <xsl:if test="position() &gt; 1"><xsl:call-template name="dw"><xsl:with-param name="k" select="'comma'"/></xsl:call-template></xsl:if>
            <xsl:call-template name="pos-fragment"/>
          </xsl:for-each>
        </xsl:with-param>
      </xsl:call-template>
      <xsl:call-template name="dw"><xsl:with-param name="k" select="'sep'"/></xsl:call-template>
    </xsl:if>
    <xsl:for-each select="Inside">
      <xsl:call-template name="pos-clause">
        <xsl:with-param name="k">
          <xsl:choose>
            <xsl:when test="@operand">pos.inside</xsl:when>
            <xsl:otherwise>pos.insideBare</xsl:otherwise>
          </xsl:choose>
        </xsl:with-param>
        <xsl:with-param name="first" select="$lead = 'inside' and position() = 1"/>
        <xsl:with-param name="a"><xsl:call-template name="pos-fragment"/></xsl:with-param>
        <xsl:with-param name="b" select="string(@operand)"/>
        <xsl:with-param name="c"><strong><xsl:value-of select="@enteredAt"/></strong></xsl:with-param>
      </xsl:call-template>
      <xsl:call-template name="dw"><xsl:with-param name="k" select="'sep'"/></xsl:call-template>
    </xsl:for-each>
    <xsl:call-template name="pos-clause">
      <xsl:with-param name="k">
        <xsl:choose>
          <xsl:when test="@last and Option">pos.after</xsl:when>
          <xsl:when test="@last">pos.afterNone</xsl:when>
          <xsl:when test="Option">pos.start</xsl:when>
          <xsl:otherwise>pos.startNone</xsl:otherwise>
        </xsl:choose>
      </xsl:with-param>
      <xsl:with-param name="first" select="$lead = 'after'"/>
      <xsl:with-param name="a"><strong><xsl:value-of select="@lastValue"/></strong></xsl:with-param>
      <xsl:with-param name="b">
        <xsl:for-each select="Option">
          <xsl:if test="position() &gt; 1">
            <xsl:choose>
              <xsl:when test="position() = last() and ../@moreOptions = 0">
                <xsl:text> </xsl:text>
                <xsl:call-template name="dw"><xsl:with-param name="k" select="'or'"/></xsl:call-template>
                <xsl:text> </xsl:text>
              </xsl:when>
              <xsl:otherwise><xsl:call-template name="dw"><xsl:with-param name="k" select="'comma'"/></xsl:call-template></xsl:otherwise>
            </xsl:choose>
          </xsl:if>
          <strong><xsl:value-of select="@value"/></strong>
          <xsl:if test="@operator">
            <xsl:text> (</xsl:text>
            <xsl:call-template name="pos-fragment"/>
            <xsl:text>)</xsl:text>
          </xsl:if>
        </xsl:for-each>
        <xsl:if test="@moreOptions &gt; 0">
          <xsl:text> </xsl:text>
          <xsl:call-template name="dw"><xsl:with-param name="k" select="'or'"/></xsl:call-template>
          <xsl:text> </xsl:text>
          <xsl:call-template name="pos-clause">
            <xsl:with-param name="k" select="'pos.more'"/>
            <xsl:with-param name="a" select="string(@moreOptions)"/>
          </xsl:call-template>
        </xsl:if>
      </xsl:with-param>
    </xsl:call-template>
    <xsl:call-template name="dw"><xsl:with-param name="k" select="'sep'"/></xsl:call-template>
    <xsl:variable name="r" select="Recorded"/>
    <xsl:choose>
      <xsl:when test="$r">
        <xsl:call-template name="pos-clause">
          <xsl:with-param name="k">
            <xsl:choose>
              <xsl:when test="$r/@where = 'behind' and $r/@operator">pos.behindIn</xsl:when>
              <xsl:when test="$r/@where = 'behind'">pos.behind</xsl:when>
              <xsl:when test="$r/@where = 'ahead' and $r/@operator">pos.aheadIn</xsl:when>
              <xsl:when test="$r/@where = 'ahead'">pos.ahead</xsl:when>
              <xsl:otherwise>pos.nowhere</xsl:otherwise>
            </xsl:choose>
          </xsl:with-param>
          <xsl:with-param name="a">
            <strong class="bad"><xsl:value-of select="../Rejected/@value"/></strong>
            <xsl:if test="string(../Rejected/@msgid) != ''">
              <xsl:text> (</xsl:text>
              <xsl:value-of select="../Rejected/@msgid"/>
              <xsl:text>)</xsl:text>
            </xsl:if>
          </xsl:with-param>
          <xsl:with-param name="b"><xsl:for-each select="$r"><xsl:call-template name="pos-fragment"/></xsl:for-each></xsl:with-param>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise>
        <xsl:call-template name="dw"><xsl:with-param name="k" select="'pos.ended'"/></xsl:call-template>
      </xsl:otherwise>
    </xsl:choose>
    <xsl:call-template name="dw"><xsl:with-param name="k" select="'pos.stop'"/></xsl:call-template>
  </xsl:template>

  <!-- "alt Returns.refund", as the outline labels fragments. -->
  <xsl:template name="pos-fragment">
    <span class="fragname">
      <xsl:value-of select="translate(@operator, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz')"/>
      <xsl:if test="string(@id) != ''">
        <xsl:text> </xsl:text>
        <xsl:value-of select="@id"/>
      </xsl:if>
    </span>
  </xsl:template>

  <!-- A clause of the sentence with {a}, {b} and {c} filled in; the first
       clause takes the language's capitalised form when it has one. -->
  <xsl:template name="pos-clause">
    <xsl:param name="k"/>
    <xsl:param name="first" select="false()"/>
    <xsl:param name="a"/>
    <xsl:param name="b"/>
    <xsl:param name="c"/>
    <xsl:variable name="capital" select="$diagnosisWords[@lang = $lang][@k = concat($k, '^')]"/>
    <xsl:call-template name="pos-fill">
      <xsl:with-param name="s">
        <xsl:choose>
          <xsl:when test="$first and $capital"><xsl:value-of select="$capital"/></xsl:when>
          <xsl:otherwise><xsl:call-template name="dw"><xsl:with-param name="k" select="$k"/></xsl:call-template></xsl:otherwise>
        </xsl:choose>
      </xsl:with-param>
      <xsl:with-param name="a" select="$a"/>
      <xsl:with-param name="b" select="$b"/>
      <xsl:with-param name="c" select="$c"/>
    </xsl:call-template>
  </xsl:template>

  <xsl:template name="pos-fill">
    <xsl:param name="s"/>
    <xsl:param name="a"/>
    <xsl:param name="b"/>
    <xsl:param name="c"/>
    <xsl:choose>
      <xsl:when test="contains($s, '{')">
        <xsl:value-of select="substring-before($s, '{')"/>
        <xsl:variable name="key" select="substring(substring-after($s, '{'), 1, 1)"/>
        <xsl:choose>
          <xsl:when test="$key = 'a'"><xsl:copy-of select="$a"/></xsl:when>
          <xsl:when test="$key = 'b'"><xsl:copy-of select="$b"/></xsl:when>
          <xsl:when test="$key = 'c'"><xsl:copy-of select="$c"/></xsl:when>
        </xsl:choose>
        <xsl:call-template name="pos-fill">
          <xsl:with-param name="s" select="substring-after($s, '}')"/>
          <xsl:with-param name="a" select="$a"/>
          <xsl:with-param name="b" select="$b"/>
          <xsl:with-param name="c" select="$c"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$s"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- "Expected step 3 or 4; the run recorded step 7 (payByCard)." -->
  <xsl:template name="diag-sentence">
    <xsl:variable name="values" select="Expected/Value"/>
    <xsl:choose>
      <xsl:when test="Rejected and $values">
        <xsl:call-template name="dw"><xsl:with-param name="k" select="'expected'"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <xsl:call-template name="diag-values"/>
      </xsl:when>
      <xsl:when test="Rejected">
        <xsl:call-template name="dw"><xsl:with-param name="k" select="'nothing'"/></xsl:call-template>
      </xsl:when>
      <xsl:when test="Expected and $values">
        <xsl:call-template name="dw"><xsl:with-param name="k" select="'ended'"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <xsl:call-template name="diag-values"/>
        <xsl:text>.</xsl:text>
      </xsl:when>
      <xsl:when test="Expected">
        <xsl:call-template name="dw"><xsl:with-param name="k" select="'endedAtEnd'"/></xsl:call-template>
      </xsl:when>
    </xsl:choose>
    <xsl:if test="Rejected">
      <xsl:call-template name="dw"><xsl:with-param name="k" select="'sep'"/></xsl:call-template>
      <xsl:call-template name="dw"><xsl:with-param name="k" select="'recorded'"/></xsl:call-template>
      <xsl:text> </xsl:text>
      <strong class="bad"><xsl:value-of select="Rejected/@value"/></strong>
      <xsl:if test="string(Rejected/@msgid) != ''">
        <xsl:text> (</xsl:text>
        <xsl:value-of select="Rejected/@msgid"/>
        <xsl:text>)</xsl:text>
      </xsl:if>
    </xsl:if>
  </xsl:template>

  <xsl:template name="diag-values">
    <xsl:for-each select="Expected/Value">
      <xsl:if test="position() &gt; 1">
        <xsl:choose>
          <xsl:when test="position() = last()">
            <xsl:text> </xsl:text>
            <xsl:call-template name="dw"><xsl:with-param name="k" select="'or'"/></xsl:call-template>
            <xsl:text> </xsl:text>
          </xsl:when>
          <xsl:otherwise><xsl:call-template name="dw"><xsl:with-param name="k" select="'comma'"/></xsl:call-template></xsl:otherwise>
        </xsl:choose>
      </xsl:if>
      <strong><xsl:value-of select="@value"/></strong>
    </xsl:for-each>
  </xsl:template>

  <!-- The rejected message links to its row of the assertion table, which
       links back here. -->
  <xsl:template name="diag-rejected-chip">
    <xsl:variable name="r" select="ancestor-or-self::Diagnosis/Rejected"/>
    <xsl:variable name="cid"><xsl:call-template name="case-id"><xsl:with-param name="tc" select="ancestor::TestCaseResult[1]"/></xsl:call-template></xsl:variable>
    <a class="chip rejected" id="{$cid}-rej" href="#{$cid}-a{$r/@assertion}">
      <span aria-hidden="true">&#10007; </span>
      <xsl:value-of select="$r/@value"/>
      <xsl:if test="string($r/@msgid) != ''">
        <span class="msg"><xsl:value-of select="$r/@msgid"/></span>
      </xsl:if>
      <span class="sr"><xsl:text> </xsl:text><xsl:call-template name="dw"><xsl:with-param name="k" select="'rejected'"/></xsl:call-template></span>
      <span class="times"><xsl:text> #</xsl:text><xsl:value-of select="$r/@assertion"/></span>
    </a>
  </xsl:template>

  <!-- In the assertion table: the class and the mark of the row the model
       rejected, beside its own status, which stays as recorded. -->
  <xsl:template name="rejected-row-class">
    <xsl:attribute name="class">
      <xsl:if test="not(@status = 'PASSED')">
        <xsl:call-template name="row-class-text"/>
        <xsl:text> </xsl:text>
      </xsl:if>
      <xsl:text>model-rejected</xsl:text>
    </xsl:attribute>
  </xsl:template>

  <xsl:template name="rejected-row-mark">
    <xsl:param name="cid"/>
    <a class="model-mark" href="#{$cid}-rej">
      <xsl:attribute name="title"><xsl:call-template name="dw"><xsl:with-param name="k" select="'toDiagram'"/></xsl:call-template></xsl:attribute>
      <span aria-hidden="true">&#10007; </span>
      <xsl:call-template name="dw"><xsl:with-param name="k" select="'modelRejected'"/></xsl:call-template>
    </a>
  </xsl:template>

  <!-- How often a step was reached, for the eye (×2) and for screen readers. -->
  <xsl:template name="diag-count">
    <xsl:choose>
      <xsl:when test="@accepted = 0">
        <span class="sr"><xsl:text> </xsl:text><xsl:call-template name="dw"><xsl:with-param name="k" select="'notReached'"/></xsl:call-template></span>
      </xsl:when>
      <xsl:otherwise>
        <xsl:if test="@accepted &gt; 1">
          <span class="times" aria-hidden="true">&#215;<xsl:value-of select="@accepted"/></span>
        </xsl:if>
        <span class="sr">
          <xsl:text> </xsl:text>
          <xsl:call-template name="dw"><xsl:with-param name="k" select="'reached'"/></xsl:call-template>
          <xsl:text> </xsl:text>
          <xsl:value-of select="@accepted"/>
          <xsl:text> </xsl:text>
          <xsl:call-template name="dw"><xsl:with-param name="k" select="'times'"/></xsl:call-template>
        </span>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template match="Step" mode="diag">
    <xsl:param name="before"/>
    <xsl:if test="generate-id() = $before and ancestor::Diagnosis/Rejected">
      <xsl:call-template name="diag-rejected-chip"/>
    </xsl:if>
    <span>
      <xsl:attribute name="class">
        <xsl:text>chip</xsl:text>
        <xsl:if test="@accepted &gt; 0"> reached</xsl:if>
      </xsl:attribute>
      <xsl:value-of select="@value"/>
      <xsl:call-template name="diag-count"/>
      <xsl:apply-templates select="Name" mode="diag"/>
    </span>
  </xsl:template>

  <!-- A message the step's value was recorded under: instance.message; one
       only another test case of the context recorded is pale. -->
  <xsl:template match="Name" mode="diag">
    <span>
      <xsl:attribute name="class">
        <xsl:text>msg name</xsl:text>
        <xsl:if test="@from = 'other'"> other</xsl:if>
      </xsl:attribute>
      <xsl:if test="string(@instance) != ''">
        <xsl:value-of select="@instance"/>
        <xsl:text>.</xsl:text>
      </xsl:if>
      <xsl:value-of select="@message"/>
      <xsl:if test="@from = 'other'">
        <span class="sr"><xsl:text> (</xsl:text><xsl:call-template name="dw"><xsl:with-param name="k" select="'otherCase'"/></xsl:call-template><xsl:text>)</xsl:text></span>
      </xsl:if>
    </span>
  </xsl:template>

  <xsl:template match="Steps" mode="diag">
    <xsl:param name="before"/>
    <xsl:if test="generate-id() = $before and ancestor::Diagnosis/Rejected">
      <xsl:call-template name="diag-rejected-chip"/>
    </xsl:if>
    <span>
      <xsl:attribute name="class">
        <xsl:text>chip run</xsl:text>
        <xsl:if test="@accepted &gt; 0"> reached</xsl:if>
      </xsl:attribute>
      <xsl:value-of select="@first"/>
      <xsl:text> … </xsl:text>
      <xsl:value-of select="@last"/>
      <span class="count">
        <xsl:text> (</xsl:text>
        <xsl:value-of select="@count"/>
        <xsl:text> </xsl:text>
        <xsl:call-template name="dw"><xsl:with-param name="k" select="'steps'"/></xsl:call-template>
        <xsl:text>)</xsl:text>
      </span>
      <xsl:call-template name="diag-count"/>
    </span>
  </xsl:template>

  <xsl:template match="Fragment" mode="diag">
    <xsl:param name="before"/>
    <div class="frag">
      <span class="op">
        <xsl:value-of select="translate(@operator, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', 'abcdefghijklmnopqrstuvwxyz')"/>
        <xsl:if test="string(@id) != ''">
          <span class="fid"><xsl:text> </xsl:text><xsl:value-of select="@id"/></span>
        </xsl:if>
      </span>
      <xsl:apply-templates select="*" mode="diag">
        <xsl:with-param name="before" select="$before"/>
      </xsl:apply-templates>
    </div>
  </xsl:template>

  <xsl:template match="Operand" mode="diag">
    <xsl:param name="before"/>
    <div class="operand">
      <xsl:apply-templates select="*" mode="diag">
        <xsl:with-param name="before" select="$before"/>
      </xsl:apply-templates>
    </div>
  </xsl:template>

  <!-- The records after the rejected one, which the model never judged:
       greyed rows after the table's own, shaped like them, each with its
       own status and the words "not judged". -->
  <xsl:template match="NotJudged" mode="rows">
    <xsl:param name="sd"/>
    <xsl:param name="cid"/>
    <xsl:for-each select="Entry">
      <tr ID="{$cid}-a{@assertion}" class="not-judged">
        <th><a href="#{$cid}-a{@assertion}"><xsl:value-of select="@assertion"/></a></th>
        <td>
          <xsl:choose>
            <xsl:when test="@status = 'PASSED'"><xsl:value-of select="$w.PASSED"/></xsl:when>
            <xsl:otherwise><xsl:call-template name="row-status"/></xsl:otherwise>
          </xsl:choose>
          <span class="nj-mark"><xsl:call-template name="dw"><xsl:with-param name="k" select="'notJudged'"/></xsl:call-template></span>
        </td>
        <xsl:choose>
          <xsl:when test="$sd">
            <td><xsl:value-of select="concat(@sdiname, ' / ', @msgid)"/></td>
            <td><xsl:value-of select="@usermsg"/></td>
            <td>
              <xsl:if test="string(@inr) or string(@onr)">
                <xsl:value-of select="concat(substring-before(concat(@inr, ' '), ' '), ' / ', substring-before(concat(@onr, ' '), ' '))"/>
              </xsl:if>
            </td>
            <td><xsl:value-of select="@arbiterAssert"/></td>
            <td><xsl:value-of select="@guid"/></td>
          </xsl:when>
          <xsl:otherwise>
            <td><xsl:value-of select="@name"/></td>
          </xsl:otherwise>
        </xsl:choose>
        <td><xsl:call-template name="path"><xsl:with-param name="p" select="@dir"/></xsl:call-template></td>
        <td title="{@fnr}"><xsl:value-of select="concat(@filename, ':', @lnr)"/></td>
      </tr>
    </xsl:for-each>
    <xsl:if test="@more &gt; 0">
      <tr class="not-judged">
        <th></th>
        <td>
          <xsl:attribute name="colspan">
            <xsl:choose>
              <xsl:when test="$sd">8</xsl:when>
              <xsl:otherwise>4</xsl:otherwise>
            </xsl:choose>
          </xsl:attribute>
          <xsl:call-template name="dw"><xsl:with-param name="k" select="'moreNotJudged'"/></xsl:call-template>
          <xsl:text> </xsl:text>
          <xsl:value-of select="@more"/>
        </td>
      </tr>
    </xsl:if>
  </xsl:template>

  <!-- ===== Charts ===== -->

  <xsl:template name="diag-chart">
    <xsl:variable name="stop" select="NoMatch | NoEnd"/>
    <xsl:if test="$stop">
      <p class="diag-sentence">
        <xsl:choose>
          <xsl:when test="NoMatch">
            <xsl:call-template name="dw"><xsl:with-param name="k" select="'noMatch'"/></xsl:call-template>
            <xsl:text> </xsl:text>
            <xsl:value-of select="NoMatch/@assertion"/>
            <xsl:text>: </xsl:text>
            <code class="bad"><xsl:value-of select="NoMatch/@statement"/></code>
          </xsl:when>
          <xsl:otherwise>
            <xsl:call-template name="dw"><xsl:with-param name="k" select="'noEnd'"/></xsl:call-template>
          </xsl:otherwise>
        </xsl:choose>
      </p>
      <xsl:call-template name="diag-chart-why"/>
    </xsl:if>
    <p class="path-title">
      <xsl:call-template name="dw"><xsl:with-param name="k" select="'path'"/></xsl:call-template>
      <xsl:if test="Path/@omitted &gt; 0">
        <xsl:text> (</xsl:text>
        <xsl:call-template name="dw"><xsl:with-param name="k" select="'omitted'"/></xsl:call-template>
        <xsl:text> </xsl:text>
        <xsl:value-of select="Path/@omitted"/>
        <xsl:text>)</xsl:text>
      </xsl:if>
    </p>
    <ol class="chart-path">
      <xsl:for-each select="Path/*">
        <li>
          <span>
            <xsl:attribute name="class">
              <xsl:choose>
                <xsl:when test="self::State">chip state</xsl:when>
                <xsl:otherwise>chip transition</xsl:otherwise>
              </xsl:choose>
              <xsl:if test="@assertion"> reached</xsl:if>
            </xsl:attribute>
            <span class="sr">
              <xsl:call-template name="dw">
                <xsl:with-param name="k">
                  <xsl:choose>
                    <xsl:when test="self::State">state</xsl:when>
                    <xsl:otherwise>transition</xsl:otherwise>
                  </xsl:choose>
                </xsl:with-param>
              </xsl:call-template>
              <xsl:text> </xsl:text>
            </span>
            <span title="{@guid}"><xsl:value-of select="@name"/></span>
            <xsl:if test="@assertion">
              <span class="times">
                <span class="sr"><xsl:text> </xsl:text><xsl:call-template name="dw"><xsl:with-param name="k" select="'assertion'"/></xsl:call-template></span>
                <xsl:text> #</xsl:text>
                <xsl:value-of select="@assertion"/>
              </span>
            </xsl:if>
          </span>
        </li>
      </xsl:for-each>
      <xsl:if test="$stop">
        <li>
          <xsl:choose>
            <xsl:when test="NoMatch">
              <xsl:variable name="cid"><xsl:call-template name="case-id"><xsl:with-param name="tc" select="ancestor::TestCaseResult[1]"/></xsl:call-template></xsl:variable>
              <a class="chip rejected" id="{$cid}-rej" href="#{$cid}-a{NoMatch/@assertion}">
                <span aria-hidden="true">&#10007; </span>
                <xsl:text>#</xsl:text>
                <xsl:value-of select="NoMatch/@assertion"/>
                <xsl:text> </xsl:text>
                <code><xsl:value-of select="NoMatch/@statement"/></code>
              </a>
            </xsl:when>
            <xsl:otherwise>
              <span class="chip rejected">
                <span aria-hidden="true">&#10007; </span>
                <xsl:call-template name="dw"><xsl:with-param name="k" select="'noEnd'"/></xsl:call-template>
              </span>
            </xsl:otherwise>
          </xsl:choose>
        </li>
      </xsl:if>
    </ol>
    <xsl:if test="$stop/Tried">
      <p class="tried">
        <xsl:call-template name="dw"><xsl:with-param name="k" select="'tried'"/></xsl:call-template>
        <xsl:for-each select="$stop/Tried">
          <xsl:text> </xsl:text>
          <span class="chip transition"><xsl:value-of select="@name"/></span>
        </xsl:for-each>
      </p>
    </xsl:if>
    <xsl:apply-templates select="Drawing" mode="diag"/>
  </xsl:template>

  <!-- A word of the diagnosis with {1} and {2} in it replaced by the
       fragments $a1 and $a2, so that each language orders its sentence. -->
  <xsl:template name="diag-fill">
    <xsl:param name="k"/>
    <xsl:param name="text"><xsl:call-template name="dw"><xsl:with-param name="k" select="$k"/></xsl:call-template></xsl:param>
    <xsl:param name="a1"/>
    <xsl:param name="a2"/>
    <xsl:choose>
      <xsl:when test="contains($text, '{')">
        <xsl:variable name="rest" select="substring-after($text, '{')"/>
        <xsl:value-of select="substring-before($text, '{')"/>
        <xsl:choose>
          <xsl:when test="starts-with($rest, '1}')"><xsl:copy-of select="$a1"/></xsl:when>
          <xsl:when test="starts-with($rest, '2}')"><xsl:copy-of select="$a2"/></xsl:when>
          <xsl:otherwise><xsl:text>{</xsl:text><xsl:value-of select="substring($rest, 1, 2)"/></xsl:otherwise>
        </xsl:choose>
        <xsl:call-template name="diag-fill">
          <xsl:with-param name="text" select="substring($rest, 3)"/>
          <xsl:with-param name="a1" select="$a1"/>
          <xsl:with-param name="a2" select="$a2"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$text"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- "state Paid": a PerformedIn or Blocked element's record. -->
  <xsl:template name="diag-place">
    <xsl:call-template name="dw"><xsl:with-param name="k" select="@kind"/></xsl:call-template>
    <xsl:text> </xsl:text>
    <strong title="{@guid}"><xsl:value-of select="@name"/></strong>
  </xsl:template>

  <!-- Where the chart performs the missed assertion, and what on the way
       there the run did not pass. -->
  <xsl:template name="diag-chart-why">
    <xsl:variable name="stop" select="NoMatch | NoEnd"/>
    <xsl:if test="NoMatch">
      <p class="diag-sentence why">
        <xsl:choose>
          <xsl:when test="NoMatch/PerformedIn">
            <xsl:call-template name="diag-fill">
              <xsl:with-param name="k">
                <xsl:choose>
                  <xsl:when test="NoMatch/PerformedIn/@reachable = 'no'">performedUnreachable</xsl:when>
                  <xsl:otherwise>performedIn</xsl:otherwise>
                </xsl:choose>
              </xsl:with-param>
              <xsl:with-param name="a1" select="string(NoMatch/@assertion)"/>
              <xsl:with-param name="a2"><xsl:for-each select="NoMatch/PerformedIn"><xsl:call-template name="diag-place"/></xsl:for-each></xsl:with-param>
            </xsl:call-template>
          </xsl:when>
          <xsl:otherwise>
            <xsl:call-template name="diag-fill">
              <xsl:with-param name="k" select="'performedNowhere'"/>
              <xsl:with-param name="a1" select="string(NoMatch/@assertion)"/>
            </xsl:call-template>
          </xsl:otherwise>
        </xsl:choose>
      </p>
    </xsl:if>
    <xsl:for-each select="$stop/Blocked">
      <p class="diag-sentence why">
        <xsl:call-template name="diag-fill">
          <xsl:with-param name="k">
            <xsl:choose>
              <xsl:when test="not(@statement)">blockedNotTaken</xsl:when>
              <xsl:when test="@recorded = 'yes'">blockedRecorded</xsl:when>
              <xsl:otherwise>blockedAsserts</xsl:otherwise>
            </xsl:choose>
          </xsl:with-param>
          <xsl:with-param name="a1"><xsl:call-template name="diag-place"/></xsl:with-param>
          <xsl:with-param name="a2"><code><xsl:value-of select="@statement"/></code></xsl:with-param>
        </xsl:call-template>
      </p>
    </xsl:for-each>
  </xsl:template>

  <!-- The chart as Graphviz laid it out: clusters, then states, then
       transitions, each marked with its places on the path. Drawn as inline
       SVG in its own scrolling box; the chips above are its text. -->
  <xsl:template match="Drawing" mode="diag">
    <xsl:variable name="cid"><xsl:call-template name="case-id"><xsl:with-param name="tc" select="ancestor::TestCaseResult[1]"/></xsl:call-template></xsl:variable>
    <xsl:variable name="stopAssertion" select="../NoMatch/@assertion"/>
    <xsl:if test="@shown = 'neighbourhood'">
      <p class="drawing-note">
        <xsl:call-template name="diag-fill">
          <xsl:with-param name="k" select="'shown'"/>
          <xsl:with-param name="a1" select="string(@shownStates)"/>
          <xsl:with-param name="a2" select="string(@states)"/>
        </xsl:call-template>
      </p>
    </xsl:if>
    <xsl:variable name="label">
      <xsl:call-template name="diag-fill">
        <xsl:with-param name="k" select="'drawingTitle'"/>
        <xsl:with-param name="a1" select="string(@shownStates)"/>
        <xsl:with-param name="a2" select="string(@shownTransitions)"/>
      </xsl:call-template>
    </xsl:variable>
    <div class="chart-drawing">
      <svg class="chart-svg" viewBox="-24 -12 {@width + 48} {@height + 24}" width="{round(1.25 * (@width + 48))}" height="{round(1.25 * (@height + 24))}" role="group" aria-label="{normalize-space($label)}">
        <xsl:for-each select="Cluster">
          <g class="cl {@kind}">
            <xsl:call-template name="diag-mark-class"/>
            <rect x="{@x}" y="{@y}" width="{@w}" height="{@h}" rx="6"/>
            <text x="{@x + 6}" y="{@y + 13}"><xsl:value-of select="@name"/></text>
            <xsl:call-template name="diag-badge"><xsl:with-param name="cid" select="$cid"/><xsl:with-param name="n" select="$stopAssertion"/></xsl:call-template>
          </g>
        </xsl:for-each>
        <xsl:for-each select="Edge">
          <g class="ed {@kind}">
            <xsl:call-template name="diag-mark-class"/>
            <path d="{@path}"/>
            <xsl:if test="@arrow"><polygon points="{@arrow}"/></xsl:if>
            <xsl:if test="@lx">
              <text x="{@lx}" y="{@ly + 3}" text-anchor="middle"><xsl:value-of select="@name"/></text>
            </xsl:if>
            <xsl:call-template name="diag-badge"><xsl:with-param name="cid" select="$cid"/><xsl:with-param name="n" select="$stopAssertion"/></xsl:call-template>
          </g>
        </xsl:for-each>
        <xsl:for-each select="Node">
          <g class="nd {@kind}">
            <xsl:call-template name="diag-mark-class"/>
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
                <xsl:call-template name="diag-badge"><xsl:with-param name="cid" select="$cid"/><xsl:with-param name="n" select="$stopAssertion"/></xsl:call-template>
              </xsl:otherwise>
            </xsl:choose>
          </g>
        </xsl:for-each>
      </svg>
    </div>
  </xsl:template>

  <!-- The marks of a drawn state or transition as classes: on the path or
       pale, and where the run stopped. -->
  <xsl:template name="diag-mark-class">
    <xsl:attribute name="class">
      <xsl:value-of select="concat(local-name(), ' ', @kind)"/>
      <xsl:choose>
        <xsl:when test="@visited"> on</xsl:when>
        <xsl:when test="@kind = 'start' or @kind = 'initial'"/>
        <xsl:otherwise> pale</xsl:otherwise>
      </xsl:choose>
      <xsl:if test="@stop"> stop</xsl:if>
      <xsl:if test="@performs"> performs</xsl:if>
      <xsl:if test="@blocked"> blocked</xsl:if>
      <xsl:if test="@way"> way</xsl:if>
    </xsl:attribute>
  </xsl:template>

  <!-- The step numbers beside a drawn record (above a transition's label),
       and on the record where the run stopped the red mark that leads to
       the assertion's row. -->
  <xsl:template name="diag-badge">
    <xsl:param name="cid"/>
    <xsl:param name="n"/>
    <xsl:variable name="bx">
      <xsl:choose>
        <xsl:when test="self::Edge"><xsl:value-of select="@lx"/></xsl:when>
        <xsl:otherwise><xsl:value-of select="@x + @w"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="by">
      <xsl:choose>
        <xsl:when test="self::Edge"><xsl:value-of select="@ly - 9"/></xsl:when>
        <xsl:otherwise><xsl:value-of select="@y"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:if test="@steps and string($bx) != ''">
      <xsl:variable name="numbers" select="translate(@steps, ' ', ',')"/>
      <xsl:variable name="more"><xsl:if test="@visited &gt; string-length(translate(@steps, '0123456789', '')) + 1">+</xsl:if></xsl:variable>
      <xsl:variable name="bw" select="6 * string-length(concat($numbers, $more)) + 8"/>
      <rect class="badge" x="{$bx - $bw div 2}" y="{$by - 7}" width="{$bw}" height="14" rx="7"/>
      <text class="badge" x="{$bx}" y="{$by + 3.5}" text-anchor="middle"><xsl:value-of select="concat($numbers, $more)"/></text>
    </xsl:if>
    <xsl:if test="(@stop or @performs) and string($bx) != ''">
      <!-- Beside the step numbers: at a state's top left corner, below a
           transition's label. -->
      <xsl:variable name="sx">
        <xsl:choose>
          <xsl:when test="self::Edge"><xsl:value-of select="@lx"/></xsl:when>
          <xsl:otherwise><xsl:value-of select="@x"/></xsl:otherwise>
        </xsl:choose>
      </xsl:variable>
      <xsl:variable name="sy">
        <xsl:choose>
          <xsl:when test="self::Edge"><xsl:value-of select="@ly + 14"/></xsl:when>
          <xsl:otherwise><xsl:value-of select="@y"/></xsl:otherwise>
        </xsl:choose>
      </xsl:variable>
      <xsl:variable name="text">
        <xsl:choose>
          <xsl:when test="$n and @stop">&#10007; #<xsl:value-of select="$n"/></xsl:when>
          <xsl:when test="$n">#<xsl:value-of select="$n"/></xsl:when>
          <xsl:otherwise>&#10007; <xsl:call-template name="dw"><xsl:with-param name="k" select="'stopMark'"/></xsl:call-template></xsl:otherwise>
        </xsl:choose>
      </xsl:variable>
      <xsl:variable name="mw" select="6.5 * string-length($text) + 8"/>
      <xsl:variable name="mark">
        <rect class="mark" x="{$sx - $mw div 2}" y="{$sy - 8}" width="{$mw}" height="16" rx="8"/>
        <text class="mark" x="{$sx}" y="{$sy + 4}" text-anchor="middle"><xsl:value-of select="$text"/></text>
      </xsl:variable>
      <xsl:choose>
        <xsl:when test="$n">
          <a class="stop-mark" href="#{$cid}-a{$n}" tabindex="-1"><xsl:copy-of select="$mark"/></a>
        </xsl:when>
        <xsl:otherwise><g class="stop-mark"><xsl:copy-of select="$mark"/></g></xsl:otherwise>
      </xsl:choose>
    </xsl:if>
  </xsl:template>

  <!-- Written once per diagnosis: the sections stand apart and a page
       without one carries none of it. Colours fall back for a page whose
       variables are missing. -->
  <xsl:template name="diagnosis-css">
    <xsl:text>.diag{margin:1em 0;padding:.75em 1em;border:1px solid var(--line,#d0d7de);border-radius:8px;background:var(--card,#fff);max-width:100%;box-sizing:border-box;overflow-x:auto;}
.diag h3,.diag h4{margin:0 0 .5em;font-size:1em;}
.diag-sentence{margin:.25em 0 .75em;}
.diag .bad{color:var(--fail,#b01c0c);}
.diag .sr{position:absolute;width:1px;height:1px;overflow:hidden;clip:rect(0 0 0 0);white-space:nowrap;}
.sd-outline{display:flex;flex-wrap:wrap;align-items:flex-start;gap:.35em;}
.diag .chip{display:inline-block;padding:.1em .55em;border:2px solid var(--muted,#57606a);border-radius:999px;font-variant-numeric:tabular-nums;background:transparent;color:var(--fg,#1f2328);overflow-wrap:anywhere;}
.diag .chip.reached{background:var(--pass-bg,#dcf5e6);border-color:var(--pass,#0f6b3a);}
.diag .chip.rejected{border-color:var(--fail,#b01c0c);background:var(--fail-bg,#ffe8e3);color:var(--fail,#b01c0c);font-weight:600;}
a.chip.rejected{text-decoration:none;}
a.chip.rejected:hover{text-decoration:underline;}
.diag .chip .msg{margin-left:.4em;font-weight:400;}
.diag .chip .name{font-size:.85em;}
.diag .chip .name.other{font-style:italic;color:var(--muted,#57606a);}
.diag .times,.diag .count{margin-left:.3em;font-size:.85em;color:var(--muted,#57606a);}
.diag .frag{display:inline-flex;flex-direction:column;padding:0 0 .4em;border:1.5px solid var(--muted,#57606a);border-radius:4px;max-width:100%;box-sizing:border-box;}
.diag .frag>.op{align-self:flex-start;margin-bottom:.3em;padding:.05em .5em;font-size:.8em;font-weight:600;border-right:1.5px solid var(--muted,#57606a);border-bottom:1.5px solid var(--muted,#57606a);border-bottom-right-radius:6px;background:var(--soft,#f6f8fa);}
.diag .frag>:not(.op){margin:0 .6em;}
.diag .frag .fid{font-weight:400;color:var(--muted,#57606a);}
.diag .operand{display:flex;flex-wrap:wrap;align-items:flex-start;gap:.35em;padding:.35em 0;}
.diag .operand+.operand{border-top:1.5px dashed var(--muted,#57606a);}
.chart-path{display:flex;flex-wrap:wrap;gap:.35em;align-items:center;list-style:none;margin:0;padding:0;}
.chart-path .chip.state{border-radius:6px;}
.chart-path .chip.transition{border-style:dashed;}
.chart-path li{display:flex;align-items:center;gap:.35em;}
.chart-path li+li::before{content:"\2192";color:var(--muted,#57606a);}
.diag .tried .chip{border-style:dashed;}
.diag code{overflow-wrap:anywhere;}
.asserts tr.model-rejected:not(.bad){--c:var(--pass);}
.asserts tr.model-rejected>*{background:var(--fail-bg,#ffe8e3);}
.asserts tr.model-rejected>th{box-shadow:inset 4px 0 var(--fail,#b01c0c);}
.asserts .model-mark{display:block;white-space:normal;color:var(--fail,#b01c0c);font-weight:600;}
.asserts .model-mark:target,.diag .chip:target{outline:3px solid var(--focus,#0969da);}
.asserts tr.not-judged{--c:var(--muted,#57606a);}
.asserts tr.not-judged>*{color:var(--muted,#57606a);background:var(--soft,#f6f8fa);}
.asserts tr.not-judged td:nth-child(2)::before{content:"\2013\a0";content:"\2013\a0"/"";}
.asserts .nj-mark{display:block;white-space:normal;font-style:italic;font-weight:400;}
.diag .why code{color:var(--fg,#1f2328);}
.drawing-note{margin:.5em 0 .25em;color:var(--muted,#57606a);}
.chart-drawing{margin:.5em 0 0;max-width:100%;max-height:70vh;overflow:auto;border:1px solid var(--line,#d0d7de);border-radius:6px;background:var(--card,#fff);}
.chart-drawing svg{display:block;font-size:11px;}
.chart-drawing text{fill:var(--fg,#1f2328);stroke:none;}
.chart-drawing .pale text{fill:var(--muted,#57606a);}
.chart-drawing .Cluster rect{fill:var(--soft,#eef1f4);stroke:var(--muted,#57606a);stroke-width:1;}
.chart-drawing .Cluster.pale rect{fill:none;stroke-dasharray:3 2;}
.chart-drawing .Cluster text{font-weight:600;}
.chart-drawing .Node rect{fill:var(--card,#fff);stroke:var(--muted,#57606a);stroke-width:1.5;}
.chart-drawing .Node.pale rect{stroke-dasharray:3 2;}
.chart-drawing .Node.on rect{fill:var(--pass-bg,#dcf5e6);stroke:var(--pass,#0f6b3a);stroke-width:2;}
.chart-drawing .Node circle{fill:var(--fg,#1f2328);}
.chart-drawing .Edge path{fill:none;stroke:var(--muted,#57606a);stroke-width:1.2;}
.chart-drawing .Edge polygon{fill:var(--muted,#57606a);}
.chart-drawing .Edge.pale path{stroke-dasharray:4 3;}
.chart-drawing .Edge.on path{stroke:var(--pass,#0f6b3a);stroke-width:2.2;}
.chart-drawing .Edge.on polygon{fill:var(--pass,#0f6b3a);}
.chart-drawing .Edge text{font-size:10px;}
.chart-drawing .way path{stroke:var(--error,#8a4b00);stroke-dasharray:6 3;}
.chart-drawing .performs rect{stroke:var(--fail,#b01c0c);stroke-width:2;stroke-dasharray:5 3;}
.chart-drawing .blocked rect,.chart-drawing .blocked path{stroke:var(--error,#8a4b00);stroke-width:3;}
.chart-drawing .blocked polygon{fill:var(--error,#8a4b00);}
.chart-drawing .stop rect,.chart-drawing .stop path{stroke:var(--fail,#b01c0c);stroke-width:3;}
.chart-drawing rect.mark,.chart-drawing .performs rect.mark{fill:var(--fail-bg,#ffe8e3);stroke:var(--fail,#b01c0c);stroke-width:1.5;stroke-dasharray:none;}
.chart-drawing text.mark,.chart-drawing .pale text.mark{fill:var(--fail,#b01c0c);font-weight:700;font-size:10px;}
.chart-drawing a.stop-mark:hover text,.chart-drawing a.stop-mark:focus text{text-decoration:underline;}
.chart-drawing rect.badge{fill:var(--card,#fff);stroke:var(--pass,#0f6b3a);stroke-width:1.2;stroke-dasharray:none;}
.chart-drawing text.badge{font-size:10px;font-weight:600;fill:var(--pass,#0f6b3a);}
.chart-drawing .pale text.badge{fill:var(--pass,#0f6b3a);}
@media print{.diag{break-inside:avoid;}}
</xsl:text>
  </xsl:template>
</xsl:stylesheet>
