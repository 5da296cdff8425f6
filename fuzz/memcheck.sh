#!/bin/sh
# Runs the built program under valgrind's memcheck on the bundled examples
# (both record forms) and on the shop scenario of the end-to-end tests (the
# context and each test case alone). Fails on any memory error and on any
# definite leak; the exit statuses must be the ones the runs always give.
# usage: memcheck.sh <build folder>
set -u
build=$(cd "$1" && pwd)
source=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d "${TMPDIR:-/tmp}/qendor-memcheck.XXXXXX")
trap 'rm -rf "$work"' EXIT
failed=0

# check TITLE EXPECTED_STATUS FOLDER ARGUMENTS...
check() {
  title=$1 expected=$2 folder=$3
  shift 3
  log="$work/valgrind.log"
  (cd "$folder" && valgrind --quiet --error-exitcode=99 --leak-check=full \
    --errors-for-leak-kinds=definite --show-leak-kinds=definite --log-file="$log" \
    "$build/qendor" "$@" >/dev/null 2>&1)
  status=$?
  if [ "$status" = "$expected" ] && [ ! -s "$log" ]; then
    echo "memcheck: $title: clean"
  else
    echo "memcheck: $title: exit status $status (expected $expected)"
    cat "$log"
    failed=1
  fi
}

# The bundled examples, with their verification files and images.
mkdir -p "$work/full/out" "$work/short/out"
cp -R "$source/examples/." "$work/full/"
cp "$source"/examples/verification/*.ver "$work/full/out/"
cp -R "$source/examples/images/spec_jpegs" "$source/examples/images/result_jpegs" "$work/full/out/"
cp "$source"/examples/short/verification/*.ver "$work/short/out/"
cp -R "$source/examples/short/." "$work/short/"
check "example, full form" 10 "$work/full" -infofile shop.info -resultfile results.log \
  -outdirectory out -tcontext Shop.Checkout
check "example, short form" 0 "$work/short" -infofile short.info -resultfile results.log \
  -outdirectory out -tcontext Shop.Cart
# With a history: the first run writes it, the second reads and adds to it.
for round in 1 2; do
  check "example, history run $round" 10 "$work/full" -infofile shop.info \
    -resultfile results.log -outdirectory out -tcontext Shop.Checkout -history history
done

# The explained example with its model coverage and an index: the charts
# laid out by the layout library, the diagnoses and the coverage views.
mkdir -p "$work/explain/out"
cp -R "$source/examples/explain/." "$work/explain/"
cp "$source"/examples/explain/verification/*.ver "$work/explain/out/"
check "explained example with -coverage and -index" 10 "$work/explain" -infofile explain.info \
  -resultfile results.log -outdirectory out -tcontext Shop.Returns -explain -coverage -index

# The shop scenario: the context and each test case alone.
cp -R "$source/tests/scenarios/shop" "$work/shop"
check "shop, context" 10 "$work/shop" -infofile shop.info -resultfile results.log \
  -outdirectory out -tcontext Pkg.Ctx
# With its JUnit file, made in process, and with one that cannot be written.
check "shop, context with -junit" 10 "$work/shop" -infofile shop.info -resultfile results.log \
  -outdirectory out -tcontext Pkg.Ctx -junit junit.xml
check "shop, -junit into a missing folder" 10 "$work/shop" -infofile shop.info \
  -resultfile results.log -outdirectory out -tcontext Pkg.Ctx -junit none/junit.xml
for case in SdPass:0 CodeFail:10 Missing:11 Undef:12 NoEnd:13; do
  check "shop, ${case%%:*}" "${case##*:}" "$work/shop" -infofile shop.info \
    -resultfile results.log -outdirectory out -tcase "Pkg.Ctx.${case%%:*}"
done
# An unexpected error on the way (an unclosed fragment).
printf 'SD_TEST\nALT_BEGIN(1)\nALT_OPERAND_BEGIN(1)\n7\n' >"$work/shop/out/SdPass.ver"
check "shop, unexpected error" 30 "$work/shop" -infofile shop.info -resultfile results.log \
  -outdirectory out -tcase Pkg.Ctx.SdPass

exit $failed
