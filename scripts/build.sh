#!/usr/bin/env bash
# Configures (once) and builds the named builds under BUILD:
#   native  x86-64 Linux against winsim
#   asan    the same under AddressSanitizer and UndefinedBehaviorSanitizer
#   win32   the product, CorvaneSupportKit0100.dll, with its tests, tour and bench
# Usage: build.sh BUILD JOBS KIND...
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build=$1 jobs=$2
shift 2
for kind in "$@"; do
  dir="$build/$kind"
  case "$kind" in
    native) args=() ;;
    asan) args=(-DCSK_SANITIZE=ON) ;;
    win32) args=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw32.cmake") ;;
    *) echo "build.sh: unknown build $kind" >&2; exit 2 ;;
  esac
  if [ ! -f "$dir/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "${args[@]}" >/dev/null
  fi
  echo "build: $kind" >&2
  cmake --build "$dir" -j "$jobs" -- --no-print-directory >/dev/null
done
