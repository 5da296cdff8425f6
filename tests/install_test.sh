#!/bin/sh
# Installs the built tree into temporary prefixes and checks that the
# installed launcher, typed by bare name from another directory, reports the
# bundled example with the installed stylesheets; that a DESTDIR-staged and a
# symlinked install work as well; that a prefix holding "qendor" is refused;
# and that the installed man page renders without warnings.
#
# Usage: sh tests/install_test.sh BUILD_DIR SOURCE_DIR

set -u
if [ $# -ne 2 ]; then
  echo "usage: sh tests/install_test.sh BUILD_DIR SOURCE_DIR"
  exit 2
fi
build=$(cd "$1" && pwd) || exit 2
src=$(cd "$2" && pwd) || exit 2

# The temporary folder must not hold "qendor" itself, or no install in it
# could find its stylesheets.
work=$(mktemp -d "${TMPDIR:-/tmp}/install-test.XXXXXX") || exit 2
case $work in
  *qendor*)
    rm -rf "$work"
    work=$(mktemp -d /tmp/install-test.XXXXXX) || exit 2
    ;;
esac
trap 'rm -rf "$work"' EXIT
failures=0
fail() {
  echo "FAIL: $*"
  failures=$((failures + 1))
}
expect_file() {
  [ -f "$1" ] || fail "$1 is missing"
}

# run_example LABEL PATH_DIR OUT_DIR EXPECTED_STATUS [ARGS...]: runs "qendor"
# found through PATH_DIR alone (plus the system folders for xsltproc), by bare
# name, from a copy of the example, with the verification files and images in
# OUT_DIR.
example=$work/example
cp -R "$src/examples" "$example"
run_example() {
  label=$1 path_dir=$2 out=$3 expected=$4
  shift 4
  mkdir -p "$out"
  cp "$example"/verification/*.ver "$out"/
  cp -R "$example/images/spec_jpegs" "$example/images/result_jpegs" "$out"/
  (cd "$example" && env PATH="$path_dir:/usr/bin:/bin" qendor -infofile shop.info \
    -resultfile results.log -outdirectory "$out" "$@" >"$work/stdout" 2>"$work/stderr")
  status=$?
  [ "$status" = "$expected" ] || fail "$label: exit status $status, expected $expected"
  [ -s "$work/stdout" ] && fail "$label: printed $(cat "$work/stdout")"
  [ -s "$work/stderr" ] && fail "$label: warned $(cat "$work/stderr")"
}

# 1. make install into a prefix.
prefix=$work/prefix
cmake --install "$build" --prefix "$prefix" >"$work/install.log" 2>&1 ||
  { cat "$work/install.log"; fail "cmake --install --prefix failed"; }
[ -x "$prefix/bin/qendor" ] || fail "launcher $prefix/bin/qendor is missing"
[ -x "$prefix/libexec/qreport/qendor" ] || fail "program $prefix/libexec/qreport/qendor is missing"
for sheet in "$src"/stylesheets/*.xslt; do
  expect_file "$prefix/libexec/qreport/$(basename "$sheet")"
done
expect_file "$prefix/share/man/man1/qendor.1.gz"
for doc in README.md formats.md TestResult.xsd; do
  expect_file "$prefix/share/doc/qendor/$doc"
done
head -n 1 "$prefix/bin/qendor" | grep -qx '#!/bin/sh' || fail "the launcher is no shell script"
grep -q "$work" "$prefix/bin/qendor" && fail "the launcher names the install folder"

run_example "installed, context" "$prefix/bin" "$work/out" 10 -tcontext Shop.Checkout
for report in Checkout PlaceOrder TotalPrice; do
  expect_file "$work/out/$report.xml"
  expect_file "$work/out/$report.html"
done
grep -q 'lang="en"' "$work/out/Checkout.html" || fail "Checkout.html is not the English report"
grep -q 'PlaceOrder' "$work/out/Checkout.html" || fail "Checkout.html does not list PlaceOrder"
[ -e "$example/TestResult2ENU.xslt" ] && fail "a stylesheet lies in the working directory"

run_example "installed, one test case in Japanese" "$prefix/bin" "$work/out-jpn" 13 \
  -tcase Shop.Checkout.CancelOrder -language JPN
grep -q 'lang="ja"' "$work/out-jpn/CancelOrder.html" ||
  fail "CancelOrder.html is not the Japanese report"

# 2. A symlink to the launcher on the PATH.
mkdir "$work/links"
ln -s "$prefix/bin/qendor" "$work/links/qendor"
run_example "symlinked launcher" "$work/links" "$work/out-link" 0 -tcase Shop.Checkout.PlaceOrder
expect_file "$work/out-link/PlaceOrder.html"

# 3. DESTDIR stages the tree; the launcher still finds the program in it.
DESTDIR=$work/stage cmake --install "$build" --prefix /opt/tools >"$work/install.log" 2>&1 ||
  { cat "$work/install.log"; fail "DESTDIR install failed"; }
[ -x "$work/stage/opt/tools/libexec/qreport/qendor" ] || fail "DESTDIR install misplaced"
[ -e /opt/tools/libexec/qreport/qendor ] && [ ! -e "$work/stage/opt/tools/bin/qendor" ] &&
  fail "DESTDIR was not honoured"
run_example "staged launcher" "$work/stage/opt/tools/bin" "$work/out-stage" 0 \
  -tcase Shop.Checkout.PlaceOrder
expect_file "$work/out-stage/PlaceOrder.html"

# 4. A prefix holding "qendor" is refused before anything is installed.
if cmake --install "$build" --prefix "$work/qendor-tools" >"$work/install.log" 2>&1; then
  fail "the prefix $work/qendor-tools was accepted"
fi
grep -q 'contains "qendor"' "$work/install.log" || fail "no reason given for refusing the prefix"
[ -e "$work/qendor-tools" ] && fail "files were installed into the refused prefix"

# 5. The installed man page renders without warnings.
if command -v groff >/dev/null 2>&1; then
  gzip -dc "$prefix/share/man/man1/qendor.1.gz" >"$work/qendor.1"
  groff -ww -man -Tutf8 -P-cbou "$work/qendor.1" >"$work/man.txt" 2>"$work/man.err" ||
    fail "groff failed on the man page"
  [ -s "$work/man.err" ] && fail "groff warns: $(cat "$work/man.err")"
  grep -q 'EXIT STATUS' "$work/man.txt" || fail "the man page has no EXIT STATUS section"
else
  echo "groff is missing (Debian package groff-base): man page not rendered"
fi
if command -v man >/dev/null 2>&1; then
  MANWIDTH=80 man -l "$prefix/share/man/man1/qendor.1.gz" >"$work/man.txt" 2>"$work/man.err" ||
    fail "man -l failed"
  [ -s "$work/man.err" ] && fail "man -l warns: $(cat "$work/man.err")"
  grep -q -- '-outdirectory' "$work/man.txt" || fail "man -l shows no options"
fi

if [ "$failures" -ne 0 ]; then
  echo "$failures failure(s)"
  exit 1
fi
echo "install test passed"
