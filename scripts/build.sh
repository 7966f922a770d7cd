#!/usr/bin/env bash
# Configures (once) and builds the named builds under BUILD:
#   win32    the product, CorvaneSupportKit0100.dll, with its tests, tour and bench
#   checked  the same sources with undefined-behaviour traps, the stack
#            protector and fortified string functions, with the fuzz driver
# Usage: build.sh BUILD JOBS KIND...
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build=$1 jobs=$2
shift 2
for kind in "$@"; do
  dir="$build/$kind"
  case "$kind" in
    win32) args=() ;;
    checked) args=(-DCSK_CHECKED=ON) ;;
    *) echo "build.sh: unknown build $kind" >&2; exit 2 ;;
  esac
  if [ ! -f "$dir/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "${args[@]}" >/dev/null
  fi
  echo "build: $kind" >&2
  cmake --build "$dir" -j "$jobs" -- --no-print-directory >/dev/null
done
