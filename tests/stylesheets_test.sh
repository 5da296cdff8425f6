#!/bin/sh
# Renders the hand-made result documents in tests/stylesheet_samples with each
# of the five report stylesheets and checks the HTML: xsltproc succeeds, the
# page is HTML with the language's lang attribute, labels, status words and
# verification texts are translated, the run's own values are escaped and kept
# as they stand, image links are relative, and (when xmllint is there) a strict
# HTML parser finds no error.
#
# Usage: sh tests/stylesheets_test.sh [STYLESHEET_DIR]
# Prints "N passed, M failed" last; exits non-zero when a check failed.

here=$(cd "$(dirname "$0")" && pwd)
sheets=${1:-$here/../stylesheets}
samples=$here/stylesheet_samples
LC_ALL=C
export LC_ALL

passed=0
failed=0
work=$(mktemp -d "${TMPDIR:-/tmp}/qendor-sheets.XXXXXX") || exit 1
trap 'rm -rf "$work"' EXIT INT TERM

ok() { passed=$((passed + 1)); }
bad() {
  failed=$((failed + 1))
  echo "FAIL: $*"
}
check() { # description, then a command that must succeed
  desc=$1
  shift
  if "$@"; then ok; else bad "$desc"; fi
}
has() { grep -F -q -- "$2" "$1"; }
lacks() { ! grep -F -q -- "$2" "$1"; }

if ! command -v xsltproc >/dev/null 2>&1; then
  echo "xsltproc is not installed"
  echo "0 passed, 1 failed"
  exit 1
fi

# Per language: lang value, then words that must appear in every page
# (environment and configuration captions, the user label, the exit status
# of the verdict banner).
langs="ENU CHS CHT KOR JPN"
lang_of() {
  case $1 in
    ENU) echo en ;; CHS) echo zh-CN ;; CHT) echo zh-TW ;; KOR) echo ko ;; JPN) echo ja ;;
  esac
}
common_words() {
  case $1 in
    ENU) printf '%s\n' 'Environment' 'Configuration' 'User' 'Exit status' ;;
    CHS) printf '%s\n' '环境' '配置' '用户' '退出状态' ;;
    CHT) printf '%s\n' '環境' '組態' '使用者' '結束狀態' ;;
    KOR) printf '%s\n' '환경' '구성' '사용자' '종료 상태' ;;
    JPN) printf '%s\n' '環境' '構成' 'ユーザー' '終了ステータス' ;;
  esac
}
# Words a sample must show in a language: "sample|word".
sample_words() {
  case $1 in
    ENU) printf '%s\n' \
      'context_diagnosis|Assertion 3 is performed in state <strong' 'context_diagnosis|On the shortest way from where the search stood, transition <strong' 'context_diagnosis|, which the run never recorded.' 'context_diagnosis|Chart of 4 states and 4 transitions; the path is numbered in order.' \
      'context_diagnosis|not judged' 'context_diagnosis|more records not judged: 2' \
      'context_diagnosis|rejected by the model' 'context_diagnosis|Returns.refundToCard' 'context_diagnosis|recorded by another test case of this context' \
      'context_diagnosis|Where the run left the model' 'context_diagnosis|Expected step' 'context_diagnosis|the run recorded step' 'context_diagnosis|Path the verification followed' 'context_diagnosis|Transitions tried:' \
      'testcase_sd|Passed' 'testcase_sd|Result verification successful' \
      'testcase_sd|Sequence diagram test' 'testcase_sd|Coverage' 'testcase_sd|internal' \
      'testcase_sd|external' 'testcase_code|Failed' 'testcase_code|Code test' \
      'testcase_code|No result verification for Code TestCases' \
      'context|Model path: did not terminate' 'context|Error' 'context|Undefined' \
      'context|Summary' 'context|1 of 9 test cases failed, 3 ended in error, 1 have no verdict' \
      'testcase_code|Assertions: 1 failed' 'testcase_sd|Model path: followed' \
      'context|TestCase did not terminate as expected' 'context|Result verification failed' \
      'context|Result verification switched off' \
      'context|Statechart contains elements that are not supported for result verification' \
      'context|Result verification currently not supported for SDs with interaction operator parallel' \
      'context_empty|This test context has no test cases.' ;;
    CHS) printf '%s\n' \
      'context_diagnosis|断言 3 在状态 <strong' 'context_diagnosis|，而运行从未记录该断言。' 'context_diagnosis|图：4 个状态，4 个转换；路径按顺序编号。' \
      'context_diagnosis|未评判' \
      'context_diagnosis|被模型拒绝' 'context_diagnosis|由本上下文的另一个测试用例记录' \
      'context_diagnosis|运行偏离模型的位置' 'context_diagnosis|预期步骤' 'context_diagnosis|运行记录的步骤为' 'context_diagnosis|验证所经过的路径' \
      'testcase_sd|通过' 'testcase_sd|结果验证成功' 'testcase_sd|序列图测试' 'testcase_sd|覆盖率' \
      'testcase_sd|内部' 'testcase_sd|外部' 'testcase_code|失败' 'testcase_code|代码测试' \
      'testcase_code|代码测试用例不进行结果验证' 'context|模型路径：未终止' 'context|错误' 'context|未定义' \
      'context|摘要' 'context|9 个测试用例中 1 个失败，3 个以错误结束，1 个没有结论' \
      'context|测试用例未按预期终止' 'context|结果验证失败' 'context|结果验证已关闭' \
      'context|状态图包含结果验证不支持的元素' 'context|并行交互运算符' \
      'context_empty|此测试上下文不包含测试用例。' ;;
    CHT) printf '%s\n' \
      'context_diagnosis|斷言 3 在狀態 <strong' 'context_diagnosis|，而執行從未記錄該斷言。' 'context_diagnosis|圖：4 個狀態，4 個轉換；路徑依序編號。' \
      'context_diagnosis|未評判' \
      'context_diagnosis|被模型拒絕' 'context_diagnosis|由本上下文的另一個測試案例記錄' \
      'context_diagnosis|執行偏離模型的位置' 'context_diagnosis|預期步驟' 'context_diagnosis|執行記錄的步驟為' 'context_diagnosis|驗證所經過的路徑' \
      'testcase_sd|通過' 'testcase_sd|結果驗證成功' 'testcase_sd|序列圖測試' 'testcase_sd|覆蓋率' \
      'testcase_sd|內部' 'testcase_sd|外部' 'testcase_code|失敗' 'testcase_code|程式碼測試' \
      'testcase_code|程式碼測試案例不進行結果驗證' 'context|模型路徑：未終止' 'context|錯誤' 'context|未定義' \
      'context|摘要' 'context|9 個測試案例中 1 個失敗，3 個以錯誤結束，1 個沒有結論' \
      'context|測試案例未如預期終止' 'context|結果驗證失敗' 'context|結果驗證已關閉' \
      'context|狀態圖包含結果驗證不支援的元素' 'context|平行互動運算子' \
      'context_empty|此測試上下文不包含測試案例。' ;;
    KOR) printf '%s\n' \
      'context_diagnosis|어설션 3은(는) 상태 <strong' 'context_diagnosis|실행은 이를 기록하지 않았습니다.' 'context_diagnosis|상태 4개와 전이 4개의 차트' \
      'context_diagnosis|판정하지 않음' \
      'context_diagnosis|모델이 거부함' 'context_diagnosis|이 컨텍스트의 다른 테스트 케이스가 기록함' \
      'context_diagnosis|실행이 모델을 벗어난 위치' 'context_diagnosis|예상 단계' 'context_diagnosis|실행이 기록한 단계' 'context_diagnosis|검증이 따라간 경로' \
      'testcase_sd|통과' 'testcase_sd|결과 검증 성공' 'testcase_sd|시퀀스 다이어그램 테스트' \
      'testcase_sd|커버리지' 'testcase_sd|내부' 'testcase_sd|외부' 'testcase_code|실패' \
      'testcase_code|코드 테스트' 'testcase_code|코드 테스트 케이스는 결과 검증을 하지 않음' \
      'context|모델 경로: 종료되지 않음' 'context|오류' 'context|정의되지 않음' 'context|요약' \
      'context|테스트 케이스 9개 중 1개 실패, 3개 오류로 종료, 1개 판정 없음' \
      'context|테스트 케이스가 예상대로 종료되지 않음' 'context|결과 검증 실패' \
      'context|결과 검증이 꺼져 있음' 'context|상태 차트에 결과 검증이 지원되지 않는 요소가 있음' \
      'context|병렬 상호작용 연산자' \
      'context_empty|이 테스트 컨텍스트에는 테스트 케이스가 없습니다.' ;;
    JPN) printf '%s\n' \
      'context_diagnosis|アサーション 3 は状態 <strong' 'context_diagnosis|実行はそれを記録していません。' 'context_diagnosis|状態 4 個と遷移 4 個のチャート。' \
      'context_diagnosis|未判定' \
      'context_diagnosis|モデルが拒否' 'context_diagnosis|このコンテキストの別のテストケースが記録' \
      'context_diagnosis|実行がモデルから外れた箇所' 'context_diagnosis|期待されたステップ' 'context_diagnosis|実行が記録したステップ' 'context_diagnosis|検証がたどった経路' \
      'testcase_sd|合格' 'testcase_sd|結果検証に成功しました' 'testcase_sd|シーケンス図テスト' \
      'testcase_sd|カバレッジ' 'testcase_sd|内部' 'testcase_sd|外部' 'testcase_code|不合格' \
      'testcase_code|コードテスト' 'testcase_code|コードテストケースには結果検証はありません' \
      'context|モデルパス：終了せず' 'context|エラー' 'context|未定義' 'context|概要' \
      'context|9 件中 1 件のテストケースが不合格、3 件がエラーで終了、1 件に判定なし' \
      'testcase_code|アサーション：1 件が不合格' \
      'context|テストケースは想定どおりに終了しませんでした' 'context|結果検証に失敗しました' \
      'context|結果検証はオフです' 'context|ステートチャートに結果検証でサポートされない要素が含まれています' \
      'context|並行相互作用演算子' \
      'context_empty|このテストコンテキストにはテストケースがありません。' ;;
  esac
}
# The system's verification texts, which a translated page shows only in its
# own language (an unknown text is kept as it stands, "Some future verdict").
english_verdicts() {
  printf '%s\n' 'Result verification successful' 'Result verification failed' \
    'Result verification switched off' 'No result verification for Code TestCases' \
    'TestCase did not terminate as expected' \
    'Statechart contains elements that are not supported for result verification' \
    'Result verification currently not supported for SDs with interaction operator parallel'
}

# Each language file knows the same keys as the English one.
keys_of() { grep -o '<l:s k="[^"]*"\( src="[^"]*"\)\?' "$1" | sort; }
keys_of "$sheets/TestResult2ENU.xslt" >"$work/keys.ENU"
check "English strings found" test -s "$work/keys.ENU"
for code in CHS CHT KOR JPN; do
  keys_of "$sheets/TestResult2$code.xslt" >"$work/keys.$code"
  check "$code has the same string keys as ENU" cmp -s "$work/keys.ENU" "$work/keys.$code"
done
# The diagnosis knows the same words in every language; a key ending in "^"
# is the capitalised form a sentence starts with, which only languages with
# capitals have.
diagnosis_keys() { grep -o "<d:s lang=\"$1\" k=\"[^\"]*\"" "$sheets/TestResultDiagnosis.xslt" | sed 's/lang="[^"]*"//' | grep -v '\^"$'; }
diagnosis_keys en >"$work/dkeys.en"
check "English diagnosis words found" test -s "$work/dkeys.en"
for lang in zh-CN zh-TW ko ja; do
  diagnosis_keys "$lang" >"$work/dkeys.$lang"
  check "diagnosis words of $lang match English" cmp -s "$work/dkeys.en" "$work/dkeys.$lang"
done
# So does the model coverage view.
coverage_keys() { grep -o "<c:s lang=\"$1\" k=\"[^\"]*\"" "$sheets/TestResultCoverage.xslt" | sed 's/lang="[^"]*"//'; }
coverage_keys en >"$work/ckeys.en"
check "English coverage words found" test -s "$work/ckeys.en"
for lang in zh-CN zh-TW ko ja; do
  coverage_keys "$lang" >"$work/ckeys.$lang"
  check "coverage words of $lang match English" cmp -s "$work/ckeys.en" "$work/ckeys.$lang"
done
# Words the coverage sample shows per language: the section, what no test
# case reached, the loop's iterations, the chart's table.
coverage_words() {
  case $1 in
    ENU) printf '%s\n' 'Model coverage' 'Not reached by any test case' 'Iterations per test case' 'States and transitions of' 'Over the last' ;;
    CHS) printf '%s\n' '模型覆盖率' '没有测试用例到达' '每个测试用例的迭代次数' '状态和转换：' '最近' ;;
    CHT) printf '%s\n' '模型覆蓋率' '沒有測試案例到達' '每個測試案例的迭代次數' '狀態和轉換：' '最近' ;;
    KOR) printf '%s\n' '모델 커버리지' '어떤 테스트 케이스도 도달하지 않음' '테스트 케이스별 반복 횟수' '상태와 전이:' '최근' ;;
    JPN) printf '%s\n' 'モデルカバレッジ' 'どのテストケースも到達していない' 'テストケースごとの反復回数' '状態と遷移:' '直近' ;;
  esac
}
for f in "$sheets"/*.xslt; do
  check "$(basename "$f") has no disable-output-escaping" lacks "$f" 'disable-output-escaping'
  check "$(basename "$f") groups with keys, not sibling axes" lacks "$f" 'preceding-sibling'
  check "$(basename "$f") is XSLT 1.0" has "$f" '<xsl:stylesheet version="1.0"'
done

for code in $langs; do
  sheet=$sheets/TestResult2$code.xslt
  lang=$(lang_of "$code")
  for xml in "$samples"/*.xml; do
    name=$(basename "$xml" .xml)
    html=$work/$name.$code.html
    what="$code/$name"
    if ! xsltproc -o "$html" "$sheet" "$xml" 2>"$work/err"; then
      bad "$what: xsltproc failed: $(cat "$work/err")"
      continue
    fi
    ok
    check "$what: xsltproc wrote no warnings" test ! -s "$work/err"
    check "$what: output is not empty" test -s "$html"
    check "$what: doctype" has "$html" '<!DOCTYPE html>'
    check "$what: lang attribute $lang" has "$html" "<html lang=\"$lang\">"
    check "$what: UTF-8 declared" has "$html" 'charset=UTF-8'
    check "$what: page closes" has "$html" '</html>'
    check "$what: inline style" has "$html" '<style'
    check "$what: no external assets" lacks "$html" 'http://'
    check "$what: no external assets (https)" lacks "$html" 'https://'
    common_words "$code" >"$work/words"
    while IFS= read -r word; do
      check "$what: shows '$word'" has "$html" "$word"
    done <"$work/words"
    sample_words "$code" | grep "^$name|" | cut -d'|' -f2- >"$work/words"
    while IFS= read -r word; do
      check "$what: shows '$word'" has "$html" "$word"
    done <"$work/words"
    if [ "$name" = context_coverage ]; then
      coverage_words "$code" >"$work/words"
      while IFS= read -r word; do
        check "$what: shows '$word'" has "$html" "$word"
      done <"$work/words"
      check "$what: one section, headed" has "$html" '<section class="cov" aria-labelledby="coverage"><style>'
      check "$what: each model a region with its heading" has "$html" '<div class="cov-model" role="region" aria-labelledby="cov-2"><h3 id="cov-2">'
      check "$what: model name escaped" has "$html" 'SdOrder &lt;v2&gt;'
      check "$what: counts as text on the shades" has "$html" '<span class="cov-chip cov-l3">1<span class="cov-n"><span class="sr">'
      check "$what: unreached step dashed" has "$html" '<span class="cov-chip cov-l0">4<span class="cov-n">'
      check "$what: folded steps" has "$html" '<span class="cov-chip run cov-l0">5 … 22'
      check "$what: loop iterations" has "$html" '<strong>1</strong>'
      check "$what: chart table with caption" has "$html" '<table class="cov-table"><caption>'
      check "$what: chart counts" has "$html" '<td class="num cov-l3">1<span class="sr">'
    fi
    if [ "$name" != context_coverage ]; then
      check "$what: no coverage section without ModelCoverage" lacks "$html" 'class="cov"'
    fi
    if [ "$name" = context_diagnosis ]; then
      # The rows the models rejected are marked, beside their own status, and
      # linked both ways with the red marks of the pictures.
      check "$what: rejected diagram row marked" has "$html" '<tr ID="tc-RefundOrder-a4" class="model-rejected">'
      check "$what: diagram mark links to the row" has "$html" '<a class="chip rejected" id="tc-RefundOrder-rej" href="#tc-RefundOrder-a4">'
      check "$what: row links to the diagram mark" has "$html" '<a class="model-mark" href="#tc-RefundOrder-rej"'
      check "$what: rejected chart row marked" has "$html" '<tr ID="tc-ReturnParcel-a3" class="model-rejected">'
      check "$what: chart mark links to the row" has "$html" '<a class="chip rejected" id="tc-ReturnParcel-rej" href="#tc-ReturnParcel-a3">'
      check "$what: other rows unmarked" lacks "$html" '<tr ID="tc-RefundOrder-a3" class'
      # The chart drawn from its layout: an image with a text label, the
      # path numbered, unvisited records pale, the stop's mark linked to the
      # row without a second id.
      check "$what: chart drawn" has "$html" '<div class="chart-drawing"><svg class="chart-svg" viewBox="-24 -12 133.7 328.4" width="167" height="411" role="group" aria-label="'
      check "$what: stop drawn" has "$html" '<g class="Node state on stop way"><rect x="7.8" y="119.2" width="62" height="30" rx="5"></rect><text x="38.8" y="138.2" text-anchor="middle">Filled</text>'
      check "$what: step numbers drawn" has "$html" '<text class="badge" x="69.8" y="122.7" text-anchor="middle">3</text>'
      check "$what: stop mark links to the row" has "$html" '<a class="stop-mark" href="#tc-ReturnParcel-a3" tabindex="-1">'
      check "$what: performer drawn" has "$html" '<g class="Node state pale performs way">'
      check "$what: blocked transition drawn" has "$html" '<g class="Edge transition pale blocked way"><path d="M 38.8,149.5'
      check "$what: one element has the stop id" test "$(grep -o 'id="tc-ReturnParcel-rej"' "$html" | wc -l)" -eq 1
      check "$what: records after the rejection listed greyed" has "$html" '<tr ID="tc-RefundOrder-a5" class="not-judged">'
    fi
    if [ "$code" != ENU ]; then
      english_verdicts >"$work/words"
      while IFS= read -r word; do
        check "$what: '$word' is translated" lacks "$html" "$word"
      done <"$work/words"
    fi
    if command -v xmllint >/dev/null 2>&1; then
      # The HTML parser of xmllint knows HTML 4 elements only: it calls the
      # HTML 5 and SVG elements that the page uses on purpose ("Tag details invalid")
      # unknown. Every other message is an error of the page.
      xmllint --html --noout "$html" >"$work/lint" 2>&1
      lint_status=$?
      grep 'parser error' "$work/lint" |
        grep -v -E ': Tag (details|summary|svg|rect|g|path|polygon|circle|text|header|section|main|footer|wbr) invalid$' >"$work/lint.bad"
      if [ "$lint_status" -eq 0 ] && [ ! -s "$work/lint.bad" ]; then
        ok
      else
        bad "$what: xmllint --html: $(head -5 "$work/lint.bad")"
      fi
    fi
    check "$what: no scripted handlers in markup" lacks "$html" 'onclick='
    check "$what: controls hidden until the script runs" has "$html" '<div class="controls" id="controls" hidden="hidden" role="search">'
    check "$what: script inline" has "$html" '<script>'
    check "$what: skip link" has "$html" '<a class="skip" href="#main">'
    check "$what: landmarks" has "$html" '<header class="head">'
    check "$what: main landmark" has "$html" '<main id="main" tabindex="-1">'
    check "$what: footer landmark" has "$html" '<footer class="foot">'
    check "$what: verdict banner first in the header" has "$html" '</h1><section id="banner" aria-labelledby="verdict" class="banner'
    check "$what: dark scheme follows the system" has "$html" '@media (prefers-color-scheme:dark)'
    check "$what: print stylesheet" has "$html" '@media print'
    filters=$(grep -o '<input type="checkbox" checked value="[A-Z_]*">' "$html" | wc -l)
    case $name in
      context*)
        check "$what: four status filters" test "$filters" -eq 4
        check "$what: test case heading target" has "$html" '<h2 id="cases" tabindex="-1">'
        check "$what: filter count announced" has "$html" 'id="shown" aria-live="polite"'
        ;;
      *)
        check "$what: a test case report has no filters" test "$filters" -eq 0
        check "$what: a test case report has no problems list" lacks "$html" 'id="problems"'
        check "$what: a test case report has no pass rate" lacks "$html" 'id="passrate"'
        check "$what: a test case report has no counts by status" lacks "$html" 'data-count='
        ;;
    esac
    case $name in
      testcase_sd)
        check "$what: header value" has "$html" 'Shop.Checkout.PlaceOrder'
        check "$what: message escaped" has "$html" 'Cart &lt;3 items&gt; &amp; "gift" wrap'
        check "$what: GUID without its prefix" has "$html" '<td>1b4e28ba-2fa1-11d2-883f-0016d3cca427</td>'
        check "$what: no GUID prefix" lacks "$html" 'GUID 1b4e28ba'
        check "$what: in and out numbers only" has "$html" '<td>1 / 2</td>'
        check "$what: no arbiter text in the out number" lacks "$html" '[Arbiter ASSERT'
        check "$what: diagram described by its name and test case" \
          grep -q 'alt="[^"]*SdPlaceOrder[^"]*PlaceOrder[^"]*"\|alt="[^"]*PlaceOrder[^"]*SdPlaceOrder[^"]*"' "$html"
        check "$what: path breaks only after its separators" has "$html" '<div class="path">spec_jpegs/<wbr>'
        if [ "$code" = ENU ]; then
          check "$what: alt text" has "$html" 'alt="Specified diagram: sequence diagram SdPlaceOrder of test case PlaceOrder"'
        fi
        check "$what: diagram image of the model linked" has "$html" 'src="spec_jpegs/PlaceOrder.jpg"'
        check "$what: result image linked" has "$html" 'href="result_jpegs/PlaceOrder.jpg"'
        check "$what: sequence diagram name" has "$html" 'SdPlaceOrder'
        check "$what: coverage meter" has "$html" 'role="meter" aria-valuemin="0" aria-valuemax="100" aria-valuenow="100"'
        check "$what: coverage meter filled" has "$html" 'style="width:100%"'
        check "$what: coverage steps" has "$html" '(2/2)'
        check "$what: file and line" has "$html" 'place_order.cpp:14'
        check "$what: versions" has "$html" '7.5, build 1234'
        check "$what: exit status 0" has "$html" '<b id="exit">0</b>'
        check "$what: the one test case open" has "$html" '<details id="tc-PlaceOrder" data-status="PASSED" class="case st-pass" open="open">'
        check "$what: test case name a heading" has "$html" '<h2 class="name">PlaceOrder</h2>'
        check "$what: assertion anchor" has "$html" '<tr ID="tc-PlaceOrder-a1"><th><a href="#tc-PlaceOrder-a1">1</a></th>'
        ;;
      testcase_code)
        check "$what: statement escaped" has "$html" 'total &lt; 0 &amp;&amp; x &gt; 1'
        check "$what: failed row marked" has "$html" '<tr ID="tc-TotalPrice-a2" class="bad st-fail">'
        check "$what: symbol of a failed row drawn beside its word" has "$html" '.asserts tr.st-fail td:nth-child(2)::before{content:"\2718\a0"'
        check "$what: symbol of a passed row drawn beside its word" has "$html" '.asserts td:nth-child(2)::before{content:"\2714\a0"'
        if [ "$code" = ENU ]; then
          check "$what: failed row shows its status word" has "$html" '<th><a href="#tc-TotalPrice-a2">2</a></th><td>Failed</td>'
          check "$what: passed row shows its status word" has "$html" '<th><a href="#tc-TotalPrice-a1">1</a></th><td>Passed</td>'
        fi
        check "$what: exit status 10" has "$html" '<b id="exit">10</b>'
        check "$what: failed test case open" has "$html" '<details id="tc-TotalPrice" data-status="FAILED" class="case st-fail problem" open="open">'
        check "$what: banner links the first failing assertion" has "$html" '<a id="first-problem" href="#tc-TotalPrice-a2">'
        check "$what: banner names it" has "$html" '<code>total &lt; 0 &amp;&amp; x &gt; 1</code></a>'
        ;;
      context)
        check "$what: problem links a test case" has "$html" '<a href="#tc-Odd">Odd</a>'
        check "$what: anchor of a test case" has "$html" 'id="tc-Stalls"'
        check "$what: test case names are headings below the section's" has "$html" '<h3 class="name">Stalls</h3>'
        check "$what: unknown verdict kept" has "$html" 'Some future verdict'
        check "$what: non-ASCII value kept" has "$html" 'Gesamtpreis für 3 Artikel – 合计'
        check "$what: status bar" has "$html" '<svg class="bar" viewBox="0 0 9 1"'
        check "$what: bar segments" test "$(grep -o '<rect ' "$html" | wc -l)" -eq 4
        check "$what: exit status 10" has "$html" '<b id="exit">10</b>'
        check "$what: banner links the first problem" has "$html" '<a id="first-problem" href="#tc-PayTwice">'
        check "$what: passed count" has "$html" '<td class="num" data-count="PASSED">4</td>'
        check "$what: failed count" has "$html" '<td class="num" data-count="FAILED">1</td>'
        check "$what: error count, not terminated included" has "$html" '<td class="num" data-count="ERROR">3</td>'
        check "$what: no status of its own for not terminated" lacks "$html" 'NOT_TERMINATED'
        check "$what: undefined count" has "$html" '<td class="num" data-count="UNDEFINED">1</td>'
        check "$what: pass rate" has "$html" '<td class="num" id="passrate">44.4%</td>'
        check "$what: not-terminated case shows its status ERROR" has "$html" '<details id="tc-Stalls" data-status="ERROR" class="case st-error problem" open="open">'
        check "$what: five problems" has "$html" '<h2 id="problems">'
        check "$what: five problem rows" test "$(grep -o '<tr data-case="tc-[A-Za-z]*"><th scope="row"><a href="#tc-' "$html" | wc -l)" -eq 5
        check "$what: problem with no assertion failing points at the last one" has "$html" '<a href="#tc-Stalls-a1">'
        check "$what: first failing assertion of a failed case" has "$html" '<a href="#tc-ReturnItem-a1"><code>refund == price</code></a>'
        check "$what: nine test cases" test "$(grep -o '<details id="tc-' "$html" | wc -l)" -eq 9
        ;;
      context_empty)
        check "$what: context name" has "$html" 'Lib::Shop.Empty'
        check "$what: exit status 12" has "$html" '<b id="exit">12</b>'
        check "$what: no test case blocks" lacks "$html" '<details'
        check "$what: no bar" lacks "$html" '<svg'
        ;;
    esac
  done
done

# Header values in the report's language: the header's time in the
# language's order, "unknown" in its word, a version without a build number
# without ", build"; the document keeps them as the program wrote them.
header_of() { # language, document: the three header cards as "label=value" lines
  xsltproc "$sheets/TestResult2$1.xslt" "$2" |
    grep -o '<tr><th scope="row">[^<]*</th><td>[^<]*</td></tr>' |
    sed 's|<tr><th scope="row">\([^<]*\)</th><td>\([^<]*\)</td></tr>|\1=\2|'
}
header_has() { # description, language, document, expected line
  if header_of "$2" "$3" | grep -F -x -q -- "$4"; then ok; else bad "$1: no line '$4' in: $(header_of "$2" "$3" | tr '\n' '|')"; fi
}
sed 's/korvanVersion="[^"]*"/korvanVersion="3.1, build "/;s/ostraVersion="[^"]*"/ostraVersion=", build 7"/;s/userName="[^"]*"/userName="unknown"/;s/time="[^"]*"/time="Sun Nov  2 07:05:09 2025"/' \
  "$samples/testcase_code.xml" >"$work/header.xml"
header_has "ENU: time in one form" ENU "$work/header.xml" 'Created=Sun Nov 2 07:05:09 2025'
header_has "ENU: unknown user" ENU "$work/header.xml" 'User=unknown'
# The history's UTC times in the same form, with their weekday worked out:
# across a leap day, a century and the turn of a year.
for pair in '2024-02-29T23:59:59Z|Thu Feb 29 23:59:59 2024 UTC' '2000-01-01T00:00:00Z|Sat Jan 1 00:00:00 2000 UTC' \
            '2026-11-25T12:00:00Z|Wed Nov 25 12:00:00 2026 UTC' '1900-03-01T08:30:00Z|Thu Mar 1 08:30:00 1900 UTC'; do
  iso=${pair%%|*}
  sed "s/<Run number=\"2\" time=\"[^\"]*\"/<Run number=\"2\" time=\"$iso\"/" "$samples/context_history.xml" >"$work/when.xml"
  xsltproc "$sheets/TestResult2ENU.xslt" "$work/when.xml" >"$work/when.html" 2>/dev/null
  check "ENU: history time $iso" has "$work/when.html" "<td>${pair#*|}</td>"
done

header_has "ENU: unknown machine" ENU "$work/header.xml" 'Machine=unknown'
header_has "ENU: version without build" ENU "$work/header.xml" 'Korvan version=3.1'
header_has "ENU: build without version" ENU "$work/header.xml" 'Ostra version=, build 7'
header_has "ENU: neither" ENU "$samples/testcase_code.xml" 'Korvan version='
header_has "ENU: both" ENU "$samples/context.xml" 'Korvan version=3.1, build 88'
header_has "CHS: time" CHS "$work/header.xml" '创建时间=2025年11月2日 星期日 07:05:09'
header_has "CHS: unknown" CHS "$work/header.xml" '用户=未知'
header_has "CHS: version without build" CHS "$work/header.xml" 'Korvan 版本=3.1'
header_has "CHT: time" CHT "$samples/context.xml" '建立時間=2025年11月22日 星期六 10:15:42'
header_has "CHT: unknown" CHT "$work/header.xml" '電腦=未知'
header_has "JPN: time" JPN "$samples/context.xml" '作成日時=2025年11月22日(土) 10:15:42'
header_has "JPN: unknown" JPN "$work/header.xml" 'ユーザー=不明'
header_has "KOR: time" KOR "$work/header.xml" '생성 시간=2025년 11월 2일 (일) 07:05:09'
header_has "KOR: unknown" KOR "$work/header.xml" '컴퓨터=알 수 없음'
header_has "KOR: known names as they stand" KOR "$samples/context.xml" '사용자=tester'
sed 's/time="[^"]*"/time="2025年11月22日 10時15分42秒"/' "$samples/context.xml" >"$work/localtime.xml"
header_has "JPN: a time in another form as it stands" JPN "$work/localtime.xml" '作成日時=2025年11月22日 10時15分42秒'
check "the document keeps its header" grep -q 'korvanVersion="3.1, build " ostraVersion=", build 7"' "$work/header.xml"

# The pass rate is never rounded to none or all of the test cases.
context_of() { # passed, failed: a context document with that many test cases
  awk -v p="$1" -v f="$2" 'BEGIN {
    print "<?xml version=\"1.0\"?>"
    print "<TestResult kind=\"rk_testcontext\"><ResultHeader name=\"C\" fullname=\"P.C\" time=\"Sat Nov 22 10:15:42 2025\"/><TestContextResult status=\"FAILED\">"
    for (i = 0; i < p + f; i++)
      printf "<TestCaseResult name=\"T%d\" fullname=\"P.C.T%d\" testType=\"tt_Code\" status=\"%s\" verificationResult=\"No result verification for Code TestCases\"><ResultForCode/></TestCaseResult>\n", i, i, i < p ? "PASSED" : "FAILED"
    print "</TestContextResult></TestResult>"
  }'
}
pass_rate() { # language, passed, failed
  context_of "$2" "$3" >"$work/rate.xml"
  xsltproc "$sheets/TestResult2$1.xslt" "$work/rate.xml" | grep -o '<td class="num" id="passrate">[^<]*</td>' |
    sed 's/<[^>]*>//g'
}
is_rate() { # description, expected, language, passed, failed
  got=$(pass_rate "$3" "$4" "$5")
  if [ "$got" = "$2" ]; then ok; else bad "$1: expected '$2', got '$got'"; fi
}
is_rate "1 of 1001 passed" '&lt; 0.1%' ENU 1 1000
is_rate "1 of 1001 passed, Japanese" '&lt; 0.1%' JPN 1 1000
is_rate "1000 of 1001 passed" '&gt; 99.9%' ENU 1000 1
is_rate "none passed" '0%' ENU 0 3
is_rate "all passed" '100%' ENU 3 0
is_rate "1 of 3 passed" '33.3%' ENU 1 2
is_rate "1 of 1000 passed" '0.1%' ENU 1 999

# The index page of an output folder (qendor -index) in every language: its
# own words, the status words and labels of the reports, the contexts in the
# document's order with their links, the four filters and the notes.
index_words() {
  case $1 in
    ENU) printf '%s\n' 'Test contexts' '3 of 4 test contexts did not pass' 'Files not indexed' \
      'is not well-formed' 'could not be read' 'Failed' 'Project' '4 of 4 test contexts shown' ;;
    CHS) printf '%s\n' '测试上下文' '4 个测试上下文中 3 个未通过' '未编入索引的文件' '格式不正确' \
      '无法读取' '失败' '显示 4 个测试上下文中的 4 个' ;;
    CHT) printf '%s\n' '測試情境' '4 個測試情境中 3 個未通過' '未編入索引的檔案' '格式不正確' \
      '無法讀取' '失敗' '顯示 4 個測試情境中的 4 個' ;;
    KOR) printf '%s\n' '테스트 컨텍스트' '테스트 컨텍스트 4개 중 3개 통과하지 못함' '색인되지 않은 파일' \
      '올바른 형식이 아님' '읽을 수 없음' '실패' '테스트 컨텍스트 4개 중 4개 표시' ;;
    JPN) printf '%s\n' 'テストコンテキスト' '4 件中 3 件のテストコンテキストが合格せず' '索引に含まれないファイル' \
      '整形式ではありません' '読み込めません' '不合格' '4 件中 4 件のテストコンテキストを表示' ;;
  esac
}
index_keys() { grep -o "<x:s lang=\"$1\" k=\"[^\"]*\"" "$sheets/TestResultIndex.xslt" | sed 's/lang="[^"]*"//'; }
index_keys en >"$work/xkeys.en"
check "English index words found" test -s "$work/xkeys.en"
for lang in zh-CN zh-TW ko ja; do
  index_keys "$lang" >"$work/xkeys.$lang"
  check "index words of $lang match English" cmp -s "$work/xkeys.en" "$work/xkeys.$lang"
done
for code in $langs; do
  html=$work/index.$code.html
  what="$code/index"
  if ! xsltproc -o "$html" "$sheets/TestResult2$code.xslt" "$here/index_samples/index.xml" 2>"$work/err"; then
    bad "$what: xsltproc failed: $(cat "$work/err")"
    continue
  fi
  ok
  check "$what: xsltproc wrote no warnings" test ! -s "$work/err"
  check "$what: lang attribute" has "$html" "<html lang=\"$(lang_of "$code")\">"
  check "$what: doctype" has "$html" '<!DOCTYPE html>'
  index_words "$code" >"$work/words"
  while IFS= read -r word; do
    check "$what: shows '$word'" has "$html" "$word"
  done <"$work/words"
  filters=$(grep -o '<input type="checkbox" checked value="[A-Z_]*">' "$html" | wc -l)
  check "$what: four status filters" test "$filters" -eq 4
  check "$what: controls hidden until the script runs" has "$html" '<div class="controls" id="controls" hidden="hidden" role="search">'
  check "$what: skip link" has "$html" '<a class="skip" href="#main">'
  check "$what: link to a report" has "$html" '<a class="name" href="Pay.html">Pay</a>'
  check "$what: encoded link, escaped name" has "$html" '<a class="name" href="Ship%20%26%20%3CCo%3E.html">Ship &amp; &lt;Co&gt;</a>'
  check "$what: contexts in the document's order" test \
    "$(grep -o 'data-status="[A-Z]*"' "$html" | tr '\n' ' ')" = 'data-status="FAILED" data-status="ERROR" data-status="UNDEFINED" data-status="PASSED" '
  check "$what: counts grouped" has "$html" '1,234'
  check "$what: skipped file named" has "$html" '<span class="mono">Broken.xml</span>'
  if command -v xmllint >/dev/null 2>&1; then
    xmllint --html --noout "$html" >"$work/lint" 2>&1
    grep 'parser error' "$work/lint" | grep -v -E ': Tag (header|main|footer) invalid$' >"$work/lint.bad"
    check "$what: xmllint --html finds no error" test ! -s "$work/lint.bad"
  fi
done

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
