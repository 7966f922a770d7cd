#!/usr/bin/env bash
# Runs the host tests under every Windows version that Wine can play, each
# set with `winecfg -v` in the prefix of the run, which gets its own version
# back at the end. Usage: host-matrix.sh PROGRAM...
set -uo pipefail
source "$(dirname "$0")/../../scripts/wine-env.sh"
[ -n "${CSK_WINE_STARTED:-}" ] || { csk_wine_start; trap csk_wine_stop EXIT; }
version() { wine winecfg -v </dev/null 2>/dev/null | tr -d '\r'; }
was=$(version) status=0
for wanted in win31 win95 win98 winme nt351 nt40 win2k winxp win2003 vista win2008 win7 win2008r2 win8 win81 win10; do
  wine winecfg -v "$wanted" </dev/null >/dev/null 2>&1
  [ "$(version)" = "$wanted" ] || { echo "host matrix: this Wine cannot play $wanted"; continue; }
  for program in "$@"; do
    out=$(CSK_WINE_VERSION=$wanted wine "$program" --gtest_filter='HostMatrix.*' --gtest_brief=1 2>&1) &&
      echo "host matrix: $wanted, $(basename "$program"): as expected" ||
      { echo "$out"; echo "host matrix: $wanted, $(basename "$program"): FAILED"; status=1; }
  done
done
wine winecfg -v "$was" </dev/null >/dev/null 2>&1
exit $status
