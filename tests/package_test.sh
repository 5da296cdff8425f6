#!/bin/sh
# Checks the Debian package that `make package` built: its control fields and
# contents (dpkg-deb -I, -c); then installs it with dpkg, runs the bundled
# example with "qendor" typed by bare name from another directory, removes and
# purges the package again and checks that nothing of it is left. The machine
# is left as it was: the test refuses to start when qendor is installed
# already, and purges its own install on every way out.
#
# Usage (as root): sh tests/package_test.sh BUILD_DIR SOURCE_DIR

set -u
if [ $# -ne 2 ]; then
  echo "usage: sh tests/package_test.sh BUILD_DIR SOURCE_DIR"
  exit 2
fi
build=$(cd "$1" && pwd) || exit 2
src=$(cd "$2" && pwd) || exit 2

failures=0
fail() {
  echo "FAIL: $*"
  failures=$((failures + 1))
}
finish() {
  if [ "$failures" -ne 0 ]; then
    echo "$failures failure(s)"
    exit 1
  fi
  echo "package test passed"
  exit 0
}
installed_state() {
  dpkg-query -W -f='${Status}' qendor 2>/dev/null
}

set -- "$build"/qendor_*.deb
[ $# -eq 1 ] && [ -f "$1" ] || { echo "expected one $build/qendor_*.deb: run make package"; exit 2; }
deb=$1
version=$(sed -n 's/^project(qendor VERSION \([0-9.]*\).*/\1/p' "$src/CMakeLists.txt")

# Control fields.
info=$(dpkg-deb -I "$deb") || { echo "dpkg-deb -I failed on $deb"; exit 1; }
field() {
  echo "$info" | sed -n "s/^ $1: //p"
}
[ "$(field Package)" = qendor ] || fail "Package is '$(field Package)'"
[ -n "$version" ] && [ "$(field Version)" = "$version" ] ||
  fail "Version is '$(field Version)', the project's is '$version'"
depends=$(field Depends)
for needed in libxml2 xsltproc libc6; do
  echo "$depends" | tr ',' '\n' | sed 's/^ *//' | grep -q "^$needed\b" ||
    fail "Depends does not name $needed: $depends"
done
[ -n "$(field Maintainer)" ] || fail "no Maintainer"
[ -n "$(field Description)" ] || fail "no Description"

# Contents.
contents=$(dpkg-deb -c "$deb" | awk '{print $1, $6}') || { echo "dpkg-deb -c failed"; exit 1; }
expect_entry() {
  echo "$contents" | grep -qx -e "$1 $2" || fail "the package lacks $2 with mode $1"
}
expect_entry -rwxr-xr-x ./usr/bin/qendor
expect_entry -rwxr-xr-x ./usr/libexec/qreport/qendor
for sheet in "$src"/stylesheets/*.xslt; do
  expect_entry -rw-r--r-- "./usr/libexec/qreport/$(basename "$sheet")"
done
expect_entry -rw-r--r-- ./usr/share/man/man1/qendor.1.gz
for doc in README.md formats.md TestResult.xsd; do
  expect_entry -rw-r--r-- "./usr/share/doc/qendor/$doc"
done
stray=$(echo "$contents" | awk '{print $2}' | grep -v '^\./usr/' | grep -vx '\./')
[ -z "$stray" ] && [ -z "$(echo "$contents" | grep -e CPack -e "$build")" ] ||
  fail "the package holds stray paths: $stray"

# Install, run, remove.
if [ "$(id -u)" != 0 ]; then
  echo "not root: the package is not installed (contents checked only)"
  failures=$((failures + 1))
  finish
fi
if [ -n "$(installed_state)" ] && [ "$(installed_state)" != "unknown ok not-installed" ]; then
  echo "qendor is already known to dpkg ($(installed_state)): remove it first"
  exit 2
fi
for path in /usr/bin/qendor /usr/libexec/qreport; do
  [ -e "$path" ] && { echo "$path exists already: not installing over it"; exit 2; }
done

work=$(mktemp -d /tmp/package-test.XXXXXX) || exit 2
cleanup() {
  dpkg --purge qendor >/dev/null 2>&1
  rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 1' INT TERM

dpkg -i "$deb" >"$work/dpkg.log" 2>&1 || { cat "$work/dpkg.log"; fail "dpkg -i failed"; finish; }
[ "$(installed_state)" = "install ok installed" ] || fail "dpkg says: $(installed_state)"
[ "$(command -v qendor)" = /usr/bin/qendor ] || fail "qendor on the PATH is '$(command -v qendor)'"

cp -R "$src/examples" "$work/example"
mkdir "$work/out"
cp "$work"/example/verification/*.ver "$work/out"/
cp -R "$work/example/images/spec_jpegs" "$work/example/images/result_jpegs" "$work/out"/
(cd "$work/example" && qendor -infofile shop.info -resultfile results.log \
  -outdirectory "$work/out" -tcontext Shop.Checkout >"$work/stdout" 2>"$work/stderr")
status=$?
[ "$status" = 10 ] || fail "the example ended with $status, expected 10 (context failed)"
[ -s "$work/stdout" ] && fail "qendor printed: $(cat "$work/stdout")"
[ -s "$work/stderr" ] && fail "qendor warned: $(cat "$work/stderr")"
for report in Checkout PlaceOrder CartStates TotalPrice; do
  [ -f "$work/out/$report.xml" ] || fail "$report.xml was not written"
  [ -f "$work/out/$report.html" ] || fail "$report.html was not written"
done
grep -q 'lang="en"' "$work/out/Checkout.html" 2>/dev/null || fail "Checkout.html is no English report"
grep -q 'PlaceOrder' "$work/out/Checkout.html" 2>/dev/null || fail "Checkout.html lacks PlaceOrder"
if command -v xmllint >/dev/null 2>&1 && [ -f /usr/share/doc/qendor/TestResult.xsd ]; then
  xmllint --noout --schema /usr/share/doc/qendor/TestResult.xsd "$work/out/Checkout.xml" \
    2>"$work/xmllint.err" || fail "Checkout.xml does not validate: $(cat "$work/xmllint.err")"
fi

dpkg -r qendor >"$work/dpkg.log" 2>&1 || { cat "$work/dpkg.log"; fail "dpkg -r failed"; }
dpkg --purge qendor >"$work/dpkg.log" 2>&1 || { cat "$work/dpkg.log"; fail "dpkg --purge failed"; }
state=$(installed_state)
[ -z "$state" ] || [ "$state" = "unknown ok not-installed" ] || fail "after purging dpkg says: $state"
for path in /usr/bin/qendor /usr/libexec/qreport /usr/share/doc/qendor \
  /usr/share/man/man1/qendor.1.gz; do
  [ -e "$path" ] && fail "$path is left after purging"
done
command -v qendor >/dev/null 2>&1 && fail "qendor is still on the PATH"
finish
