#!/bin/sh
# Runs the benchmarks: generates scenarios into a temporary folder under /tmp,
# runs every case three times and prints, per figure, the median, the
# baseline measured in the same run, their ratio, the target and PASS or MISS.
#
#   sh bench/bench.sh BUILD_DIR
#
# QENDOR_BENCH_RECORDS (default 10000000) sets the records of the input logs;
# the other cases have fixed sizes. QENDOR_BENCH_BEFORE, the path of an earlier
# build's program, adds the rows that compare the context's own work with it.
set -eu

build=$(cd "${1:-build}" && pwd)
qendor=$build/qendor
generate=$build/bench/qendor_bench_generate
getline=$build/bench/qendor_bench_getline
measure=$build/bench/qendor_bench_measure
records=${QENDOR_BENCH_RECORDS:-10000000}
cases=1000
per_case=$((records / cases))
sheet=$build/TestResult2ENU.xslt

for tool in "$qendor" "$generate" "$getline" "$measure"; do
  [ -x "$tool" ] || { echo "bench: $tool is missing; build first" >&2; exit 1; }
done
command -v xsltproc >/dev/null || { echo "bench: xsltproc is missing" >&2; exit 1; }

# Two logs of about 100 bytes per record, a tenth of one, and small cases;
# the coverage context's 240 MB too.
need_kb=$((records / 1000 * 230 + 600000))
free_kb=$(df -Pk /tmp | awk 'NR == 2 { print $4 }')
if [ "$free_kb" -lt "$need_kb" ]; then
  echo "bench: /tmp has ${free_kb} KB free, ${need_kb} KB are needed" >&2
  exit 1
fi
work=$(mktemp -d /tmp/qendor-bench.XXXXXX)
trap 'rm -rf "$work"' EXIT INT TERM

# Figures compared with each other are measured in turns, a run of each per
# round, so that a neighbour's load on this shared machine weighs on all of
# them: `measure_into FILE COMMAND...` adds one run ("SECONDS KB") to FILE,
# `median_of FILE` reads the median (by time) back.
measure_into() {
  file=$1
  shift
  "$measure" "$@" >>"$file"
}
median_of() { sort -n "$1" | awk '{ line[NR] = $0 } END { print line[int((NR + 1) / 2)] }'; }
seconds() { echo "$1" | cut -d' ' -f1; }
kilobytes() { echo "$1" | cut -d' ' -f2; }

failures=0
# figure, measured, baseline, ratio, target (ratio at most)
row() {
  verdict=$(awk -v r="$4" -v t="$5" 'BEGIN { print (r <= t) ? "PASS" : "MISS" }')
  [ "$verdict" = PASS ] || failures=$((failures + 1))
  printf '| %-44s | %10s | %10s | %6s | %6s | %-4s |\n' "$1" "$2" "$3" "$4" "<= $5" "$verdict"
}
# A figure without a target: what the machine itself gives.
note() {
  printf '| %-44s | %10s | %10s | %6s | %6s | %-4s |\n' "$1" "$2" "$3" "$4" "" ""
}
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", (b > 0) ? a / b : 0 }'; }
# A row of the seconds of two medians: figure, measured, baseline, target.
seconds_row() {
  row "$1" "$(seconds "$2")" "$(seconds "$3")" "$(ratio "$(seconds "$2")" "$(seconds "$3")")" "$4"
}

echo "bench: generating into $work" >&2
"$generate" "$work/full" --cases $cases --records $per_case --first-records 10 \
  --files 10 --used-files 10 --steps 100
"$generate" "$work/full" --cases $cases --files 10000 --used-files 10 --info run10k.info
"$generate" "$work/short" --form short --cases $cases --records $per_case --first-records 10 \
  --files 1000 --used-files 1000 --steps 100
"$generate" "$work/tenth" --cases $((cases / 10)) --records $per_case --first-records 10 \
  --files 10 --used-files 10 --steps 100
"$generate" "$work/ctx" --cases 1000 --records 100 --files 10 --used-files 10 --steps 98
"$generate" "$work/ctx100" --cases 100 --records 100 --files 10 --used-files 10 --steps 98
"$generate" "$work/sd" --cases 1 --records 100002 --steps 100000 --pad 9
"$generate" "$work/sd10" --cases 1 --records 10002 --steps 10000 --pad 9
for kind in state flow; do
  "$generate" "$work/$kind" --chart $kind --cases 1 --records 100002 --steps 50000
  "$generate" "$work/${kind}10" --chart $kind --cases 1 --records 10002 --steps 5000
done

report_into() {  # FILE DIR INFO: qendor -tcase on the small test case 1
  measure_into "$1" sh -c "cd '$2' && exec '$qendor' -infofile $3 -resultfile run.log -outdirectory out -tcase Bench.Ctx.T1"
}
size_kb() { echo $(($(wc -c <"$1") / 1024)); }

printf '| %-44s | %10s | %10s | %6s | %6s | %-4s |\n' figure measured baseline ratio target ""
printf '|%s|%s|%s|%s|%s|%s|\n' ---------------------------------------------- ------------ \
  ------------ -------- -------- ------

echo "bench: input" >&2
for round in 1 2 3; do
  measure_into "$work/getline.txt" "$getline" "$work/full/run.log"
  report_into "$work/full.txt" "$work/full" run.info
  report_into "$work/files.txt" "$work/full" run10k.info
  measure_into "$work/sgetline.txt" "$getline" "$work/short/run.log"
  report_into "$work/short.txt" "$work/short" run.info
  report_into "$work/tenth.txt" "$work/tenth" run.info
done
base=$(median_of "$work/getline.txt")
full=$(median_of "$work/full.txt")
row "full form ${records} records, time (s) vs getline" "$(seconds "$full")" "$(seconds "$base")" \
  "$(ratio "$(seconds "$full")" "$(seconds "$base")")" 3
log_kb=$(size_kb "$work/full/run.log")
row "full form peak memory (MB) vs log size" "$(($(kilobytes "$full") / 1024))" \
  "$((log_kb / 1024))" "$(ratio "$(kilobytes "$full")" "$log_kb")" 1.5

files=$(median_of "$work/files.txt")
row "full form, 10000 FILE entries vs 10 (s)" "$(seconds "$files")" "$(seconds "$full")" \
  "$(ratio "$(seconds "$files")" "$(seconds "$full")")" 1.1

sbase=$(median_of "$work/sgetline.txt")
short=$(median_of "$work/short.txt")
row "short form, 1000 files, time (s) vs getline" "$(seconds "$short")" "$(seconds "$sbase")" \
  "$(ratio "$(seconds "$short")" "$(seconds "$sbase")")" 3
slog_kb=$(size_kb "$work/short/run.log")
row "short form peak memory (MB) vs log size" "$(($(kilobytes "$short") / 1024))" \
  "$((slog_kb / 1024))" "$(ratio "$(kilobytes "$short")" "$slog_kb")" 1.5

tenth=$(median_of "$work/tenth.txt")
row "10x the records (s) vs a tenth" "$(seconds "$full")" "$(seconds "$tenth")" \
  "$(ratio "$(seconds "$full")" "$(seconds "$tenth")")" 11

echo "bench: context of 1000 test cases x 100 records" >&2
nopath=$work/empty-path
mkdir "$nopath"
mkdir "$work/ctx/html"
run_context() {  # PATH for qendor
  echo "cd '$work/ctx' && PATH='$1' exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx"
}
# The XML files of the run before, turned into HTML one after the other.
serial_xsltproc="cd '$work/ctx/out' && for f in *.xml; do xsltproc -o ../html/\${f%.xml}.html '$sheet' \$f; done"
# The same renders in two streams at once, odd and even files: what running
# xsltproc side by side gives on this machine at all.
stream() {  # 0 or 1
  echo "n=0; for f in *.xml; do n=\$((n + 1)); [ \$((n % 2)) -eq $1 ] || continue; xsltproc -o ../html/\${f%.xml}.html '$sheet' \$f; done"
}
two_streams="cd '$work/ctx/out' && { { $(stream 0); } & { $(stream 1); } & wait; }"
# The serial renders again with huge-page malloc tunables for xsltproc, which
# qendor does not set (measured in pairs, they lost on a large report and
# gained nothing on a small one): what they give on this machine.
tuned_xsltproc="GLIBC_TUNABLES=glibc.malloc.hugetlb=1:glibc.malloc.top_pad=4194304; export GLIBC_TUNABLES; $serial_xsltproc"
for round in 1 2 3; do
  measure_into "$work/own.txt" sh -c "$(run_context "$nopath")"
  measure_into "$work/xslt.txt" sh -c "$serial_xsltproc"
  measure_into "$work/two.txt" sh -c "$two_streams"
  measure_into "$work/tuned.txt" sh -c "$tuned_xsltproc"
  measure_into "$work/whole.txt" sh -c "$(run_context "$PATH")"
done
own=$(median_of "$work/own.txt")
xslt=$(median_of "$work/xslt.txt")
whole=$(median_of "$work/whole.txt")
row "own work without xsltproc (s) vs xsltproc" "$(seconds "$own")" "$(seconds "$xslt")" \
  "$(ratio "$(seconds "$own")" "$(seconds "$xslt")")" 0.2
serial=$(awk -v a="$(seconds "$own")" -v b="$(seconds "$xslt")" 'BEGIN { printf "%.4f", a + b }')
row "whole run (s) vs own work + serial xsltproc" "$(seconds "$whole")" "$serial" \
  "$(ratio "$(seconds "$whole")" "$serial")" 0.75
two=$(median_of "$work/two.txt")
note "machine: xsltproc in two streams vs serial (s)" "$(seconds "$two")" "$(seconds "$xslt")" \
  "$(ratio "$(seconds "$two")" "$(seconds "$xslt")")"
tuned=$(median_of "$work/tuned.txt")
note "machine: xsltproc with huge pages vs without (s)" "$(seconds "$tuned")" "$(seconds "$xslt")" \
  "$(ratio "$(seconds "$tuned")" "$(seconds "$xslt")")"
# With QENDOR_BENCH_BEFORE naming an earlier build's program, the same
# context's own work with both programs, in turns: what a change did to it.
if [ -n "${QENDOR_BENCH_BEFORE:-}" ]; then
  echo "bench: the context's own work against $QENDOR_BENCH_BEFORE" >&2
  cp -r "$work/ctx" "$work/ctx-before"
  for round in 1 2 3 4 5; do
    measure_into "$work/own-now.txt" sh -c "$(run_context "$nopath") 2>/dev/null"
    measure_into "$work/own-before.txt" sh -c "cd '$work/ctx-before' && PATH='$nopath' exec '$QENDOR_BENCH_BEFORE' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx 2>/dev/null"
  done
  now=$(median_of "$work/own-now.txt")
  before=$(median_of "$work/own-before.txt")
  seconds_row "context 1000x100 own work (s) vs earlier build" "$now" "$before" 1.1
  note "context 1000x100 peak (MB) vs earlier build" "$(($(kilobytes "$now") / 1024))" \
    "$(($(kilobytes "$before") / 1024))" "$(ratio "$(kilobytes "$now")" "$(kilobytes "$before")")"
fi
echo "bench: renders in process (-render builtin)" >&2
# A context of 1,000 test cases of 24 records each: small reports, where
# starting xsltproc and reading the stylesheet weigh most. The whole run
# with each renderer and the run without HTML, in turns; then a single small
# test case with each renderer, five rounds.
"$generate" "$work/ctx24" --cases 1000 --records 24 --files 10 --used-files 10 --steps 22
run_context24() {  # PATH RENDERER
  echo "cd '$work/ctx24' && PATH='$1' exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx -render $2"
}
run_small24() {  # RENDERER
  echo "cd '$work/ctx24' && exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcase Bench.Ctx.T1 -render $1"
}
for round in 1 2 3; do
  measure_into "$work/builtin24.txt" sh -c "$(run_context24 "$PATH" builtin)"
  measure_into "$work/xslt24.txt" sh -c "$(run_context24 "$PATH" xsltproc)"
  measure_into "$work/own24.txt" sh -c "$(run_context24 "$nopath" xsltproc)"
done
for round in 1 2 3 4 5; do
  measure_into "$work/builtin1.txt" sh -c "$(run_small24 builtin)"
  measure_into "$work/xslt1.txt" sh -c "$(run_small24 xsltproc)"
done
builtin24=$(median_of "$work/builtin24.txt")
xslt24=$(median_of "$work/xslt24.txt")
own24=$(median_of "$work/own24.txt")
seconds_row "context 1000x24, builtin vs xsltproc (s)" "$builtin24" "$xslt24" 0.25
seconds_row "context 1000x24, builtin vs own work (s)" "$builtin24" "$own24" 1.6
seconds_row "small -tcase, builtin vs xsltproc (s)" "$(median_of "$work/builtin1.txt")" \
  "$(median_of "$work/xslt1.txt")" 0.5
# Memory: the context of 4,000 test cases, whose own report is the largest
# document. The builtin run's peak, everything included, against the peak of
# the xsltproc child that renders that report in a default run.
"$generate" "$work/ctx4k" --cases 4000 --records 24 --files 10 --used-files 10 --steps 22
for round in 1 2 3; do
  measure_into "$work/builtin4k.txt" sh -c "cd '$work/ctx4k' && exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx -render builtin"
  measure_into "$work/child4k.txt" xsltproc -o "$work/ctx4k/child.html" "$sheet" "$work/ctx4k/out/Ctx.xml"
done
cmp -s "$work/ctx4k/child.html" "$work/ctx4k/out/Ctx.html" ||
  { echo "bench: the builtin page of the large context is not xsltproc's" >&2; failures=$((failures + 1)); }
builtin4k=$(median_of "$work/builtin4k.txt")
child4k=$(median_of "$work/child4k.txt")
row "context 4000x24 peak memory (MB), builtin vs child" "$(($(kilobytes "$builtin4k") / 1024))" \
  "$(($(kilobytes "$child4k") / 1024))" "$(ratio "$(kilobytes "$builtin4k")" "$(kilobytes "$child4k")")" 1
# The same run with -junit: the JUnit file is made after the renders, from
# the context's document read again, in the memory the renders gave back.
for round in 1 2 3; do
  measure_into "$work/junit4k.txt" sh -c "cd '$work/ctx4k' && exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx -render builtin -junit junit.xml"
  measure_into "$work/plain4k.txt" sh -c "cd '$work/ctx4k' && exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx -render builtin"
done
[ -s "$work/ctx4k/junit.xml" ] ||
  { echo "bench: the large context's JUnit file is missing" >&2; failures=$((failures + 1)); }
junit4k=$(median_of "$work/junit4k.txt")
plain4k=$(median_of "$work/plain4k.txt")
seconds_row "context 4000x24 with -junit vs without (s)" "$junit4k" "$plain4k" 1.5
row "context 4000x24 -junit peak memory vs without" "$(($(kilobytes "$junit4k") / 1024))" \
  "$(($(kilobytes "$plain4k") / 1024))" "$(ratio "$(kilobytes "$junit4k")" "$(kilobytes "$plain4k")")" 1.05

echo "bench: the model coverage of a context of 4000 test cases" >&2
# The same context as above, its records carrying their progress where the
# sequence step reads it, so that every test case walks its diagram; the
# run's own work with -coverage against without, in turns.
"$generate" "$work/cov4k" --cases 4000 --records 24 --files 10 --used-files 10 --steps 22 \
  --progress yes
for round in 1 2 3; do
  measure_into "$work/plain4k.txt" sh -c "cd '$work/cov4k' && PATH='$nopath' exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx 2>/dev/null"
  measure_into "$work/cov4k.txt" sh -c "cd '$work/cov4k' && PATH='$nopath' exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx -coverage 2>/dev/null"
done
grep -q '<Totals steps="22" stepsCovered="22"' "$work/cov4k/out/Ctx.xml" ||
  { echo "bench: the context's model coverage is missing" >&2; failures=$((failures + 1)); }
seconds_row "context 4000x24 with -coverage (s) vs without" "$(median_of "$work/cov4k.txt")" \
  "$(median_of "$work/plain4k.txt")" 1.3
rm -rf "$work/cov4k"

echo "bench: the large context's page in Chromium" >&2
# The page of those 4,000 test cases (all of them not terminated, so every
# one is a problem) opened in Chromium: load, elements, the search and the
# status filter (bench/browser_bench.js, medians of three fresh loads). The
# targets are absolute: the baseline column holds them and the ratio is the
# share of it used. Skipped when node, Chromium or the npm packages are missing.
browser_rows() {  # the output of browser_bench.js
  figure() { echo "$1" | awk -v k="$2" '$1 == k { print $2 }'; }
  for figure_row in "load_ms:load event (ms):1500" "elements:elements at load:150000" \
                    "search_ms:search typed (ms):200" "clear_ms:search cleared (ms):200" \
                    "filter_ms:status filter off (ms):200" "unfilter_ms:status filter on (ms):200"; do
    key=${figure_row%%:*}
    rest=${figure_row#*:}
    value=$(figure "$1" "$key")
    row "Chromium 4000x24: ${rest%:*}" "$value" "${rest##*:}" "$(ratio "$value" "${rest##*:}")" 1
  done
}
if command -v node >/dev/null 2>&1; then
  set +e
  browser=$(node "$(dirname "$0")/browser_bench.js" "$work/ctx4k/out/Ctx.html" T3999 ERROR)
  status=$?
  set -e
  case $status in
    0) browser_rows "$browser" ;;
    77) echo "bench: $browser" >&2 ;;
    *) echo "bench: browser_bench.js failed" >&2; failures=$((failures + 1)) ;;
  esac
else
  echo "bench: browser rows skipped: node is missing (Debian package nodejs)" >&2
fi

echo "bench: a context against its test cases one by one" >&2
# A context run judges each test case once and writes its document and the
# context's; the test cases reported one run each cost at least as much.
members_one_by_one="cd '$work/ctx100' && for n in \$(seq 1 100); do PATH='$nopath' '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcase Bench.Ctx.T\$n 2>/dev/null; done"
for round in 1 2 3; do
  measure_into "$work/ctx100.txt" sh -c "cd '$work/ctx100' && PATH='$nopath' exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx 2>/dev/null"
  measure_into "$work/members.txt" sh -c "$members_one_by_one"
done
ctx100=$(median_of "$work/ctx100.txt")
members=$(median_of "$work/members.txt")
row "context of 100, own work vs its 100 -tcase runs" "$(seconds "$ctx100")" \
  "$(seconds "$members")" "$(ratio "$(seconds "$ctx100")" "$(seconds "$members")")" 1

echo "bench: sequence diagrams" >&2
# One run of DIR's case into FILE; a small stack proves that the depth does
# not grow. A case and its tenth are measured in turns, five rounds, since the
# tenth takes a tenth of a second and a neighbour's burst would weigh on it.
diagram_into() {  # FILE DIR
  measure_into "$1" sh -c "ulimit -s 1024; cd '$2' && PATH='$nopath' exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcase Bench.Ctx.T1"
}
diagram_pair() {  # NAME: sets big and small from NAME and NAME10
  for round in 1 2 3 4 5; do
    diagram_into "$work/$1.txt" "$work/$1"
    diagram_into "$work/${1}10.txt" "$work/${1}10"
  done
  big=$(median_of "$work/$1.txt")
  small=$(median_of "$work/${1}10.txt")
}
diagram_pair sd
sd=$big
sd10=$small
row "1M-line diagram, 100k messages (s) vs a tenth" "$(seconds "$sd")" "$(seconds "$sd10")" \
  "$(ratio "$(seconds "$sd")" "$(seconds "$sd10")")" 11
# The same case explained: the diagram's outline and the accepted counts.
# The explained run goes last in each round, so its document is the one left.
for round in 1 2 3 4 5; do
  diagram_into "$work/sdplain.txt" "$work/sd"
  measure_into "$work/sdx.txt" sh -c "ulimit -s 1024; cd '$work/sd' && PATH='$nopath' exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcase Bench.Ctx.T1 -explain"
done
sdx=$(median_of "$work/sdx.txt")
sdplain=$(median_of "$work/sdplain.txt")
seconds_row "1M-line diagram with -explain (s) vs without" "$sdx" "$sdplain" 1.5
grep -q '<Diagnosis kind="sequence">' "$work/sd/out/T1.xml" ||
  { echo "bench: the explained diagram has no diagnosis" >&2; failures=$((failures + 1)); }
# Every message was accepted: the verification succeeded on the whole diagram.
grep -q 'verificationResult="Result verification successful"' "$work/sd/out/T1.xml" ||
  { echo "bench: the long diagram was not verified" >&2; failures=$((failures + 1)); }

echo "bench: charts" >&2
for kind in state flow; do
  diagram_pair "$kind"
  chart=$big
  chart10=$small
  row "${kind}chart of 100k records, 100k messages vs a tenth" "$(seconds "$chart")" \
    "$(seconds "$chart10")" "$(ratio "$(seconds "$chart")" "$(seconds "$chart10")")" 11
  grep -q 'verificationResult="Result verification successful"' "$work/$kind/out/T1.xml" ||
    { echo "bench: the long ${kind}chart was not verified" >&2; failures=$((failures + 1)); }
done

echo "bench: the index of an output folder (-index)" >&2
# A context run of 100 test cases into a folder that already holds 500
# context documents of 40 test cases (about 120 KB each), with -index and
# without, in turns: the index reads each document once, streaming, and
# renders one page of 500 entries. Then the same with one context document of
# about 50 MB beside them: the run's peak memory must not grow with it.
idx=$work/index
mkdir -p "$idx/out"
cp "$work/ctx100/run.info" "$work/ctx100/run.log" "$idx/"
sh "$(dirname "$0")/../tests/generate_context.sh" 400 40 >"$idx/one.xml"
for n in $(seq 1 500); do cp "$idx/one.xml" "$idx/out/Ctx$n.xml"; done
run_index() {  # extra options
  echo "cd '$idx' && exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcontext Bench.Ctx $1"
}
for round in 1 2 3; do
  measure_into "$work/indexed.txt" sh -c "$(run_index -index)"
  measure_into "$work/unindexed.txt" sh -c "$(run_index '')"
done
[ "$(grep -c '<Context ' "$idx/out/index.xml")" -eq 501 ] ||
  { echo "bench: the index does not list 501 contexts" >&2; failures=$((failures + 1)); }
seconds_row "run with -index of 500 contexts vs without (s)" "$(median_of "$work/indexed.txt")" \
  "$(median_of "$work/unindexed.txt")" 1.5
sh "$(dirname "$0")/../tests/generate_context.sh" 220000 1000 >"$idx/out/Huge.xml"
for round in 1 2 3; do
  measure_into "$work/indexhuge.txt" sh -c "$(run_index -index)"
done
indexed=$(median_of "$work/indexed.txt")
indexhuge=$(median_of "$work/indexhuge.txt")
row "-index peak memory (MB), 50 MB document more vs not" "$(($(kilobytes "$indexhuge") / 1024))" \
  "$(($(kilobytes "$indexed") / 1024))" "$(ratio "$(kilobytes "$indexhuge")" "$(kilobytes "$indexed")")" 1.2

# The charts -explain draws with Graphviz dot. Dot's time grows far faster
# than a chart (the whole layout of a ring of N states, each left by three
# transitions: below), so a chart of more than 30 states or 90 transitions
# is drawn only around the run's path. A 1,000-state chart explained may take
# at most a second more than without; the 100,000-record chart of 50,000
# states at most 1.5 times as long.
echo "bench: chart drawings" >&2
"$generate" "$work/fan" --chart state --cases 1 --records 1002 --steps 1000 --fan 3
for states in 20 30 40 100; do
  "$generate" "$work/fan$states" --chart state --cases 1 --records 22 --steps $states --fan 3
  whole=$("$build/bench/qendor_bench_layout" "$work/fan$states/out/T1.ver" 100000 | cut -d' ' -f1)
  note "dot on a whole ring of $states states (s)" "$whole" "" ""
done
for round in 1 2 3; do
  diagram_into "$work/fanplain.txt" "$work/fan"
  measure_into "$work/fanx.txt" sh -c "cd '$work/fan' && PATH='$nopath' exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcase Bench.Ctx.T1 -explain"
done
fanx=$(seconds "$(median_of "$work/fanx.txt")")
fanplain=$(seconds "$(median_of "$work/fanplain.txt")")
row "1k states, 3k transitions: -explain (s) minus" "$fanx" "$fanplain" \
  "$(awk -v a="$fanx" -v b="$fanplain" 'BEGIN { printf "%.2f", a - b }')" 1.0
grep -q '<Drawing [^>]*shown="neighbourhood" states="1002" transitions="3002"' "$work/fan/out/T1.xml" ||
  { echo "bench: the 1k-state chart was not drawn" >&2; failures=$((failures + 1)); }
for round in 1 2 3; do
  diagram_into "$work/stateplain.txt" "$work/state"
  measure_into "$work/statex.txt" sh -c "ulimit -s 1024; cd '$work/state' && PATH='$nopath' exec '$qendor' -infofile run.info -resultfile run.log -outdirectory out -tcase Bench.Ctx.T1 -explain"
done
seconds_row "100k-record chart with -explain (s) vs without" "$(median_of "$work/statex.txt")" \
  "$(median_of "$work/stateplain.txt")" 1.5
grep -q '<Drawing [^>]*shown="neighbourhood"' "$work/state/out/T1.xml" ||
  { echo "bench: the 100k-record chart was not drawn" >&2; failures=$((failures + 1)); }

if [ "$failures" -ne 0 ]; then
  echo "bench: $failures figure(s) missed" >&2
  exit 1
fi
