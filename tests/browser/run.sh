#!/bin/sh
# Runs the browser test when what it needs is there. Otherwise it says on one
# line what is missing and ends with 77, which CTest reports as skipped: a
# build folder made by `make build` has none of it; `make test` installs it.
#
# Usage: sh tests/browser/run.sh TEST_SCRIPT QENDOR_BINARY SOURCE_DIR OUTPUT_DIR
here=$(cd "$(dirname "$0")" && pwd)
script=$1
shift
skip() {
  echo "browser test skipped: $1 is missing (make test installs it)"
  exit 77
}
command -v node >/dev/null 2>&1 || skip "node (Debian package nodejs)"
[ -x /usr/bin/chromium ] || skip "/usr/bin/chromium (Debian package chromium)"
for module in playwright-core axe-core; do
  [ -f "$here/node_modules/$module/package.json" ] || skip "the npm package $module (make browser-deps)"
done
exec node "$here/$script" "$@"
