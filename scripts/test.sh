#!/usr/bin/env bash
# Builds all three builds and runs every test: the native tests plain and
# under the sanitizers, then the Win32 tests under Wine with one wineserver
# kept alive for the whole run.
# Usage: test.sh BUILD JOBS
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build=${1:-build} jobs=${2:-2}
bash "$root/scripts/build.sh" "$build" "$jobs" native asan win32

status=0
echo "== native" && ctest --test-dir "$build/native" --output-on-failure || status=1
echo "== native, ASan+UBSan" && ASAN_OPTIONS=detect_leaks=1 ctest --test-dir "$build/asan" --output-on-failure || status=1

source "$root/scripts/wine-env.sh"
csk_wine_start
trap csk_wine_stop EXIT
echo "== win32 under Wine" && ctest --test-dir "$build/win32" --output-on-failure || status=1
echo "== winsim against Wine on the path corpus" && bash "$root/tests/corpus/compare.sh" "$build" || status=1
exit $status
