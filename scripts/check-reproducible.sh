#!/usr/bin/env bash
# Builds the DLL and the type library a second time, from a copy of the
# sources in another folder, and compares them, and the DLL's debug file,
# byte for byte with the first build's: the same sources must give the same
# bytes wherever and whenever they are built.
# The copy keeps its files' times, so after the first run only what changed
# since is compiled again; CSK_REPRODUCIBLE_FRESH=1 starts from nothing.
# Usage: check-reproducible.sh SOURCE_DIR WORK_DIR DLL TLB [BUILD_TYPE]
set -euo pipefail
root=$1 work=$2 dll=$3 tlb=$4 build_type=${5:-RelWithDebInfo}
[ "${CSK_REPRODUCIBLE_FRESH:-0}" = 1 ] && rm -rf "$work"

# The first build brought up to date (nothing to do after `make test`'s
# build), so that both are of the sources as they are now.
cmake --build "$(dirname "$dll")" --target CorvaneSupportKit0100 typelib -- --no-print-directory >/dev/null

# What the DLL and the type library are made from, and nothing else.
rm -rf "$work/sources"
mkdir -p "$work/sources"
cp -a "$root/CMakeLists.txt" "$root/cmake" "$root/src" "$root/scripts" "$work/sources/"

if [ ! -f "$work/build/CMakeCache.txt" ]; then
  cmake -S "$work/sources" -B "$work/build" -DCSK_LIBRARY_ONLY=ON -DCMAKE_BUILD_TYPE="$build_type" >/dev/null
fi
cmake --build "$work/build" -j "$(nproc)" --target CorvaneSupportKit0100 typelib -- --no-print-directory >/dev/null

status=0
for first in "$dll" "$dll.debug" "$tlb"; do
  second="$work/build/$(basename "$first")"
  if cmp -s "$first" "$second"; then
    echo "same bytes: $(basename "$first") ($(stat -c %s "$first") bytes, sha256 $(sha256sum "$first" | cut -c1-16)...)"
  else
    echo "FAIL: $(basename "$first") differs between $first and $second:"
    cmp -l "$first" "$second" 2>&1 | head -5 || true
    status=1
  fi
done
exit $status
