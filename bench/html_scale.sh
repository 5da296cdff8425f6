#!/bin/sh
# Times the HTML report of a large test context: ASSERTS assertions (default
# 100000) spread over CASES test cases (default 200), every 97th failed, a few
# test cases not terminated. Prints the sizes and the seconds xsltproc takes
# with the English stylesheet (and, for comparison, with the JUnit export).
# Then the cost per document of small reports, where starting xsltproc and
# compiling the stylesheet weigh most: a test case of 100 assertions and one
# of a single assertion, each the mean of 20 runs, beside xsltproc with an
# empty stylesheet.
#
# Usage: sh bench/html_scale.sh [STYLESHEET_DIR] [ASSERTS] [CASES]

here=$(cd "$(dirname "$0")" && pwd)
sheets=${1:-$here/../stylesheets}
asserts=${2:-100000}
cases=${3:-200}
work=$(mktemp -d "${TMPDIR:-/tmp}/qendor-html-scale.XXXXXX") || exit 1
trap 'rm -rf "$work"' EXIT INT TERM

generate() { sh "$here/../tests/generate_context.sh" "$@"; }
generate "$asserts" "$cases" >"$work/big.xml"
generate 100 1 >"$work/case100.xml"
generate 1 1 >"$work/case1.xml"
cat >"$work/empty.xslt" <<'EOF'
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform"><xsl:template match="/"><p/></xsl:template></xsl:stylesheet>
EOF

seconds() { # command...; prints the wall-clock seconds it took
  start=$(date +%s.%N)
  "$@" || echo "command failed: $*" >&2
  end=$(date +%s.%N)
  echo "$start $end" | awk '{ printf "%.2f", $2 - $1 }'
}

echo "document: $(grep -c '<AssertionInfo' "$work/big.xml") assertions in $cases test cases, $(du -h "$work/big.xml" | cut -f1)"
t=$(seconds xsltproc -o "$work/big.html" "$sheets/TestResult2ENU.xslt" "$work/big.xml")
echo "HTML (ENU):  ${t} s, $(du -h "$work/big.html" | cut -f1)"
t=$(seconds xsltproc -o "$work/big.junit.xml" "$sheets/TestResult2JUnit.xslt" "$work/big.xml")
echo "JUnit XML:   ${t} s, $(du -h "$work/big.junit.xml" | cut -f1)"

per_run() { # runs, sheet, document; prints the milliseconds per xsltproc run
  runs=$1
  start=$(date +%s.%N)
  i=0
  while [ "$i" -lt "$runs" ]; do
    xsltproc -o "$work/small.html" "$2" "$3" || echo "xsltproc failed on $3" >&2
    i=$((i + 1))
  done
  end=$(date +%s.%N)
  echo "$start $end $runs" | awk '{ printf "%.1f", ($2 - $1) * 1000 / $3 }'
}
echo "test case of 100 assertions (ENU): $(per_run 20 "$sheets/TestResult2ENU.xslt" "$work/case100.xml") ms"
echo "test case of 1 assertion (ENU):    $(per_run 20 "$sheets/TestResult2ENU.xslt" "$work/case1.xml") ms"
echo "xsltproc alone (empty stylesheet): $(per_run 20 "$work/empty.xslt" "$work/case1.xml") ms"
