#!/bin/sh
# Differential check of two qendor binaries on generated scenarios.
#
#   bench/differential/run.sh BEFORE_BINARY AFTER_BINARY [COUNT] [SEED]
#
# The work is done by compare.py beside this script (python3: a developer
# tool, not run in CI). See README.md beside it for the environment knobs.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
if [ $# -lt 2 ] || [ $# -gt 4 ]; then
  echo "usage: $0 BEFORE_BINARY AFTER_BINARY [COUNT] [SEED]" >&2
  exit 2
fi
exec python3 "$here/compare.py" "$@"
