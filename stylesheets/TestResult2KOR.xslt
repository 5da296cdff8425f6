<?xml version="1.0" encoding="UTF-8"?>
<!--
  HTML report in Korean. The page itself is built by TestResultCore.xslt;
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

  <xsl:variable name="lang" select="'ko'"/>
  <xsl:variable name="fonts" select="'&quot;Apple SD Gothic Neo&quot;, &quot;Malgun Gothic&quot;, &quot;Noto Sans CJK KR&quot;, &quot;NanumGothic&quot;, &quot;Source Han Sans K&quot;, system-ui, sans-serif'"/>
  <xsl:variable name="intFormat" select="'#,##0'"/>
  <xsl:variable name="pctFormat" select="'0.#'"/>
  <xsl:variable name="pctSign" select="'%'"/>
  <xsl:variable name="headingBreak" select="'keep-all'"/>
  <xsl:variable name="T" select="document('')/*/l:strings/l:s"/>

  <!-- Header values: the pattern of the header's time ({Y}, {M}, {D}, {W}
       the weekday's word, {T} the clock; empty keeps the time as written),
       the weekdays, and the word for a user or machine the run did not know. -->
  <l:strings>
    <l:s k="date">{Y}년 {M}월 {D}일 ({W}) {T}</l:s>
    <l:s k="wd" src="Mon">월</l:s>
    <l:s k="wd" src="Tue">화</l:s>
    <l:s k="wd" src="Wed">수</l:s>
    <l:s k="wd" src="Thu">목</l:s>
    <l:s k="wd" src="Fri">금</l:s>
    <l:s k="wd" src="Sat">토</l:s>
    <l:s k="wd" src="Sun">일</l:s>
    <l:s k="unknown">알 수 없음</l:s>
  </l:strings>

  <!-- Strings of the earlier runs (TestResultHistory.xslt). -->
  <l:strings>
    <l:s k="hist.strip">최근 실행(오래된 순)</l:s>
    <l:s k="hist.run">실행</l:s>
    <l:s k="hist.now">이번 실행</l:s>
    <l:s k="hist.trend">최근 실행 추이</l:s>
    <l:s k="hist.above">통과(선 위)</l:s>
    <l:s k="hist.below">통과하지 못함(선 아래)</l:s>
    <l:s k="hist.numbers">실행별 수치</l:s>
    <l:s k="hist.time">시간</l:s>
    <l:s k="hist.problemsCaption">통과하지 못한 테스트 케이스: 새 실패가 먼저, 나머지는 실행 순서</l:s>
    <l:s k="hist.nNew">새 실패: {n}</l:s>
    <l:s k="hist.nFixed">수정됨: {n}</l:s>
    <l:s k="hist.nFlaky">불안정: {n}</l:s>
    <l:s k="hist.changes">이전 실행 대비</l:s>
    <l:s k="hist.only">다음만</l:s>
    <l:s k="hist.runsOrder">최신 순</l:s>
    <l:s k="hc" src="new">새 실패</l:s>
    <l:s k="hc" src="fixed">수정됨</l:s>
    <l:s k="hc" src="flaky">불안정</l:s>
    <l:s k="hc" src="still failing">계속 실패</l:s>
    <l:s k="hc" src="stable">안정</l:s>
  </l:strings>

  <l:strings>
    <l:s k="title.case">테스트 케이스 보고서</l:s>
    <l:s k="title.context">테스트 컨텍스트 보고서</l:s>
    <l:s k="sec.report">보고서</l:s>
    <l:s k="sec.env">환경</l:s>
    <l:s k="sec.config">구성</l:s>
    <l:s k="sec.summary">요약</l:s>
    <l:s k="sec.cases">테스트 케이스</l:s>
    <l:s k="sec.assertions">어설션</l:s>
    <l:s k="sec.coverage">시퀀스 다이어그램 커버리지</l:s>
    <l:s k="name">이름</l:s>
    <l:s k="fullname">전체 이름</l:s>
    <l:s k="time">생성 시간</l:s>
    <l:s k="userName">사용자</l:s>
    <l:s k="machineName">컴퓨터</l:s>
    <l:s k="osVersion">운영 체제</l:s>
    <l:s k="korvanVersion">Korvan 버전</l:s>
    <l:s k="ostraVersion">Ostra 버전</l:s>
    <l:s k="projectName">프로젝트</l:s>
    <l:s k="componentName">구성 요소</l:s>
    <l:s k="configurationName">구성</l:s>
    <l:s k="contextStatus">컨텍스트 상태</l:s>
    <l:s k="caseStatus">테스트 케이스 상태</l:s>
    <l:s k="exitStatus">종료 상태</l:s>
    <l:s k="testCases">테스트 케이스 수</l:s>
    <l:s k="passRate">통과율</l:s>
    <l:s k="assertions">어설션</l:s>
    <l:s k="countsByStatus">상태별 테스트 케이스</l:s>
    <l:s k="testCase">테스트 케이스</l:s>
    <l:s k="testType">테스트 유형</l:s>
    <l:s k="status">상태</l:s>
    <l:s k="verificationResult">검증 결과</l:s>
    <l:s k="cov.name">SD 인스턴스</l:s>
    <l:s k="cov.sdname">시퀀스 다이어그램</l:s>
    <l:s k="cov.value">도달한 단계</l:s>
    <l:s k="cov.max">전체 단계</l:s>
    <l:s k="cov.coverage">커버리지</l:s>
    <l:s k="img.model">명세 다이어그램</l:s>
    <l:s k="img.result">결과 다이어그램</l:s>
    <l:s k="none.cases">이 테스트 컨텍스트에는 테스트 케이스가 없습니다.</l:s>
    <l:s k="none.assertions">이 테스트 케이스에 기록된 어설션이 없습니다.</l:s>
    <l:s k="col.sdiname">SD 인스턴스</l:s>
    <l:s k="col.msgid">메시지 ID</l:s>
    <l:s k="col.usermsg">사용자 메시지</l:s>
    <l:s k="col.inr">입력 번호</l:s>
    <l:s k="col.onr">출력 번호</l:s>
    <l:s k="col.arbiter">중재자</l:s>
    <l:s k="col.guid">GUID</l:s>
    <l:s k="col.name">어설션</l:s>
    <l:s k="col.dir">디렉터리</l:s>
    <l:s k="skip">테스트 케이스로 건너뛰기</l:s>
    <l:s k="sec.problems">문제</l:s>
    <l:s k="problems.caption">통과하지 못한 테스트 케이스(실행 순서)</l:s>
    <l:s k="firstFailure">첫 번째 실패한 어설션</l:s>
    <l:s k="lastAssertion">마지막으로 도달한 어설션</l:s>
    <l:s k="none.problems">문제 없음: 모든 테스트 케이스가 통과했습니다.</l:s>
    <l:s k="none.match">필터와 일치하는 테스트 케이스가 없습니다.</l:s>
    <l:s k="ctl.show">표시</l:s>
    <l:s k="ctl.search">검색</l:s>
    <l:s k="ctl.searchHint">이름, 메시지, 파일</l:s>
    <l:s k="ctl.expand">모두 펼치기</l:s>
    <l:s k="ctl.collapse">모두 접기</l:s>
    <l:s k="ctl.dark">다크 모드</l:s>
    <l:s k="ctl.keys">단축키: / 검색, j 다음 문제, k 이전 문제</l:s>
    <l:s k="total">합계</l:s>
    <l:s k="notPassed">통과하지 못함</l:s>
    <l:s k="col.fileLine">파일:줄</l:s>
    <l:s k="generated">qendor에서 생성한 보고서입니다.</l:s>
    <l:s k="st" src="PASSED">통과</l:s>
    <l:s k="st" src="FAILED">실패</l:s>
    <l:s k="st" src="ERROR">오류</l:s>
    <l:s k="st" src="UNDEFINED">정의되지 않음</l:s>
    <l:s k="tt" src="tt_SD">시퀀스 다이어그램 테스트</l:s>
    <l:s k="tt" src="tt_Code">코드 테스트</l:s>
    <l:s k="kind" src="rk_testcase">테스트 케이스 보고서</l:s>
    <l:s k="kind" src="rk_testcontext">테스트 컨텍스트 보고서</l:s>
    <l:s k="arb" src="internal">내부</l:s>
    <l:s k="arb" src="external">외부</l:s>
    <l:s k="vr" src="Result verification successful">결과 검증 성공</l:s>
    <l:s k="vr" src="Result verification failed">결과 검증 실패</l:s>
    <l:s k="vr" src="Result verification switched off">결과 검증이 꺼져 있음</l:s>
    <l:s k="vr" src="Statechart contains elements that are not supported for result verification">상태 차트에 결과 검증이 지원되지 않는 요소가 있음</l:s>
    <l:s k="vr" src="No result verification for Code TestCases">코드 테스트 케이스는 결과 검증을 하지 않음</l:s>
    <l:s k="vr" src="Result verification currently not supported for SDs with interaction operator parallel">병렬 상호작용 연산자(par)가 있는 SD는 현재 결과 검증이 지원되지 않음</l:s>
    <l:s k="vr" src="TestCase did not terminate as expected">테스트 케이스가 예상대로 종료되지 않음</l:s>
    <l:s k="colon" xml:space="preserve">: </l:s>
    <l:s k="sep" xml:space="preserve">, </l:s>
    <l:s k="line.allPassed">테스트 케이스 {m}개 모두 통과</l:s>
    <l:s k="line.failed.first">테스트 케이스 {m}개 중 {n}개 실패</l:s>
    <l:s k="line.error.first">테스트 케이스 {m}개 중 {n}개 오류로 종료</l:s>
    <l:s k="line.error">{n}개 오류로 종료</l:s>
    <l:s k="line.other.first">테스트 케이스 {m}개 중 {n}개 판정 없음</l:s>
    <l:s k="line.other">{n}개 판정 없음</l:s>
    <l:s k="firstProblem">첫 번째 문제</l:s>
    <l:s k="mp.label">모델 경로</l:s>
    <l:s k="as.failed">{n}개 실패</l:s>
    <l:s k="as.passed">{m}개 모두 통과</l:s>
    <l:s k="as.none">없음</l:s>
    <l:s k="ctl.shown">테스트 케이스 {m}개 중 {n}개 표시</l:s>
    <l:s k="img.of">테스트 케이스 {m}의 시퀀스 다이어그램 {n}</l:s>
    <l:s k="mp" src="Result verification successful">따름</l:s>
    <l:s k="mp" src="Result verification failed">따르지 않음</l:s>
    <l:s k="mp" src="Result verification switched off">검사 안 함(검증 파일 없음)</l:s>
    <l:s k="mp" src="Statechart contains elements that are not supported for result verification">검사 안 함(지원되지 않는 상태 차트 요소)</l:s>
    <l:s k="mp" src="No result verification for Code TestCases">없음(코드 테스트)</l:s>
    <l:s k="mp" src="Result verification currently not supported for SDs with interaction operator parallel">검사 안 함(병렬 프래그먼트)</l:s>
    <l:s k="mp" src="TestCase did not terminate as expected">종료되지 않음</l:s>
  </l:strings>
  <!-- Strings of the problems list of a large context. -->
  <l:strings>
    <l:s k="problems.grouped">통과하지 못한 테스트 케이스(상태, 판정, 첫 번째 실패한 어설션별 묶음)</l:s>
    <l:s k="problems.more">{n}개 더</l:s>
    <l:s k="none.failing">실패한 어설션 없음</l:s>
  </l:strings>
</xsl:stylesheet>
