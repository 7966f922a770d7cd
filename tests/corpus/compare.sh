#!/usr/bin/env bash
# Holds the stand-in against the real platform on the generated path corpus:
# the native build (winsim) and the Win32 build under Wine (SHLWAPI and the
# DLL) each print the shell functions' answers and the exports' answers for
# every path, and the native program compares the two outputs, printing the
# differences it cannot explain and a summary.
# Usage: compare.sh BUILD   (the native and win32 builds must be there)
set -euo pipefail
build=$1 status=0
mkdir -p "$build/corpus"
for mode in shell exports; do
  out="$build/corpus/$mode"
  "$build/native/path_corpus" "$mode" >"$out-native.txt"
  "$(dirname "$0")/../../scripts/wine-run" "$build/win32/path_corpus.exe" "$mode" >"$out-wine.txt"
  "$build/native/path_corpus" compare "$out-native.txt" "$out-wine.txt" | sed "\$s/^/path corpus, $mode: /" || status=1
done
exit $status
