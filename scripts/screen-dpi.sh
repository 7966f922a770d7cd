#!/usr/bin/env bash
# Runs the screen tests at 120 logical pixels per inch. Wine takes the
# display's resolution, when a program starts, from LogPixels under the
# current hardware profile's fonts key of its prefix; the value the prefix
# had is put back on every exit, so the prefix is never left at 120.
# Usage: screen-dpi.sh PROGRAM
set -uo pipefail
source "$(dirname "$0")/wine-env.sh"
started_here=
[ -n "${CSK_WINE_STARTED:-}" ] || { csk_wine_start; started_here=1; }
key='HKLM\System\CurrentControlSet\Hardware Profiles\Current\Software\Fonts'
was=$(wine reg query "$key" /v LogPixels </dev/null 2>/dev/null | tr -d '\r' | awk '$1 == "LogPixels" {print $3}')
finish() {
  wine reg add "$key" /v LogPixels /t REG_DWORD /d $((${was:-0x60})) /f </dev/null >/dev/null 2>&1
  [ -z "$started_here" ] || csk_wine_stop
}
trap finish EXIT
wine reg add "$key" /v LogPixels /t REG_DWORD /d 120 /f </dev/null >/dev/null 2>&1 || exit 1
out=$(wine "$1" --gtest_filter='Screen*' 2>&1)
status=$?
echo "$out"
grep -q "screen tests at 120 x 120" <<<"$out" || { echo "screen-dpi: the run was not at 120 logical pixels per inch"; status=1; }
exit $status
