#!/usr/bin/env bash
# Builds the DLL and the checked DLL and runs every test under Wine, with one
# wineserver kept alive for the whole run.
# Usage: test.sh BUILD JOBS
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build=${1:-build} jobs=${2:-2}
bash "$root/scripts/build.sh" "$build" "$jobs" win32 checked

source "$root/scripts/wine-env.sh"
csk_wine_start
trap csk_wine_stop EXIT
status=0
echo "== the DLL under Wine" && ctest --test-dir "$build/win32" --output-on-failure || status=1
echo "== the checked DLL under Wine" && ctest --test-dir "$build/checked" --output-on-failure || status=1
exit $status
