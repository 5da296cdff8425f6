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
# (environment and configuration captions, the user label).
langs="ENU CHS CHT KOR JPN"
lang_of() {
  case $1 in
    ENU) echo en ;; CHS) echo zh-CN ;; CHT) echo zh-TW ;; KOR) echo ko ;; JPN) echo ja ;;
  esac
}
common_words() {
  case $1 in
    ENU) printf '%s\n' 'Environment' 'Configuration' 'User' 'Summary' ;;
    CHS) printf '%s\n' '环境' '配置' '用户' '摘要' ;;
    CHT) printf '%s\n' '環境' '組態' '使用者' '摘要' ;;
    KOR) printf '%s\n' '환경' '구성' '사용자' '요약' ;;
    JPN) printf '%s\n' '環境' '構成' 'ユーザー' '概要' ;;
  esac
}
# Words a sample must show in a language: "sample|word".
sample_words() {
  case $1 in
    ENU) printf '%s\n' \
      'testcase_sd|Passed' 'testcase_sd|Result verification successful' \
      'testcase_sd|Sequence diagram test' 'testcase_sd|Coverage' 'testcase_sd|internal' \
      'testcase_sd|external' 'testcase_code|Failed' 'testcase_code|Code test' \
      'testcase_code|No result verification for Code TestCases' \
      'context|Not terminated' 'context|Error' 'context|Undefined' \
      'context|TestCase did not terminate as expected' 'context|Result verification failed' \
      'context|Result verification switched off' \
      'context|Statechart contains elements that are not supported for result verification' \
      'context|Result verification currently not supported for SDs with interaction operator parallel' \
      'context_empty|This test context has no test cases.' ;;
    CHS) printf '%s\n' \
      'testcase_sd|通过' 'testcase_sd|结果验证成功' 'testcase_sd|序列图测试' 'testcase_sd|覆盖率' \
      'testcase_sd|内部' 'testcase_sd|外部' 'testcase_code|失败' 'testcase_code|代码测试' \
      'testcase_code|代码测试用例不进行结果验证' 'context|未终止' 'context|错误' 'context|未定义' \
      'context|测试用例未按预期终止' 'context|结果验证失败' 'context|结果验证已关闭' \
      'context|状态图包含结果验证不支持的元素' 'context|并行交互运算符' \
      'context_empty|此测试上下文不包含测试用例。' ;;
    CHT) printf '%s\n' \
      'testcase_sd|通過' 'testcase_sd|結果驗證成功' 'testcase_sd|序列圖測試' 'testcase_sd|覆蓋率' \
      'testcase_sd|內部' 'testcase_sd|外部' 'testcase_code|失敗' 'testcase_code|程式碼測試' \
      'testcase_code|程式碼測試案例不進行結果驗證' 'context|未終止' 'context|錯誤' 'context|未定義' \
      'context|測試案例未如預期終止' 'context|結果驗證失敗' 'context|結果驗證已關閉' \
      'context|狀態圖包含結果驗證不支援的元素' 'context|平行互動運算子' \
      'context_empty|此測試上下文不包含測試案例。' ;;
    KOR) printf '%s\n' \
      'testcase_sd|통과' 'testcase_sd|결과 검증 성공' 'testcase_sd|시퀀스 다이어그램 테스트' \
      'testcase_sd|커버리지' 'testcase_sd|내부' 'testcase_sd|외부' 'testcase_code|실패' \
      'testcase_code|코드 테스트' 'testcase_code|코드 테스트 케이스는 결과 검증을 하지 않음' \
      'context|종료되지 않음' 'context|오류' 'context|정의되지 않음' \
      'context|테스트 케이스가 예상대로 종료되지 않음' 'context|결과 검증 실패' \
      'context|결과 검증이 꺼져 있음' 'context|상태 차트에 결과 검증이 지원되지 않는 요소가 있음' \
      'context|병렬 상호작용 연산자' \
      'context_empty|이 테스트 컨텍스트에는 테스트 케이스가 없습니다.' ;;
    JPN) printf '%s\n' \
      'testcase_sd|合格' 'testcase_sd|結果検証に成功しました' 'testcase_sd|シーケンス図テスト' \
      'testcase_sd|カバレッジ' 'testcase_sd|内部' 'testcase_sd|外部' 'testcase_code|不合格' \
      'testcase_code|コードテスト' 'testcase_code|コードテストケースには結果検証はありません' \
      'context|未終了' 'context|エラー' 'context|未定義' \
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
for f in "$sheets"/*.xslt; do
  check "$(basename "$f") has no disable-output-escaping" lacks "$f" 'disable-output-escaping'
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
    if [ "$code" != ENU ]; then
      english_verdicts >"$work/words"
      while IFS= read -r word; do
        check "$what: '$word' is translated" lacks "$html" "$word"
      done <"$work/words"
    fi
    if command -v xmllint >/dev/null 2>&1; then
      if xmllint --html --noout "$html" >"$work/lint" 2>&1 && [ ! -s "$work/lint" ]; then
        ok
      else
        bad "$what: xmllint --html: $(head -5 "$work/lint")"
      fi
    fi
    case $name in
      testcase_sd)
        check "$what: header value" has "$html" 'Shop.Checkout.PlaceOrder'
        check "$what: message escaped" has "$html" 'Cart &lt;3 items&gt; &amp; "gift" wrap'
        check "$what: GUID as it stands" has "$html" 'GUID 1b4e28ba-2fa1-11d2-883f-0016d3cca427'
        check "$what: out number as it stands" has "$html" '2 - [Arbiter ASSERT: internal]'
        check "$what: specification image linked" has "$html" 'src="spec_jpegs/PlaceOrder.jpg"'
        check "$what: result image linked" has "$html" 'href="result_jpegs/PlaceOrder.jpg"'
        check "$what: sequence diagram name" has "$html" 'SdPlaceOrder'
        check "$what: coverage meter" has "$html" 'width:100%'
        check "$what: file and line" has "$html" 'place_order.cpp'
        check "$what: versions" has "$html" '7.5, build 1234'
        check "$what: exit status 0" has "$html" '<td class="num">0</td>'
        ;;
      testcase_code)
        check "$what: statement escaped" has "$html" 'total &lt; 0 &amp;&amp; x &gt; 1'
        check "$what: failed row marked" has "$html" 'class="row-bad"'
        check "$what: exit status 10" has "$html" '<td class="num">10</td>'
        ;;
      context)
        check "$what: every test case listed" has "$html" 'href="#tc9"'
        check "$what: anchor of a test case" has "$html" 'id="tc4"'
        check "$what: unknown verdict kept" has "$html" 'Some future verdict'
        check "$what: non-ASCII value kept" has "$html" 'Gesamtpreis für 3 Artikel – 合计'
        check "$what: status bar" has "$html" 'class="bar"'
        check "$what: exit status 10" has "$html" '<td class="num">10</td>'
        check "$what: not-terminated count" has "$html" 'st-nt'
        ;;
      context_empty)
        check "$what: context name" has "$html" 'Lib::Shop.Empty'
        check "$what: exit status 12" has "$html" '<td class="num">12</td>'
        ;;
    esac
  done
done

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
