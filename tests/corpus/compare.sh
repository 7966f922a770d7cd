#!/usr/bin/env bash
# Holds the stand-in against the real platform on the generated path corpus:
# the native build (winsim) and the Win32 build under Wine (SHLWAPI and the
# DLL) each print the shell functions' answers and the exports' answers for
# every path, and the native program compares the two outputs.
# Usage: compare.sh BUILD   (the native and win32 builds must be there)
set -euo pipefail
root="$(cd "$(dirname "$0")/../.." && pwd)"
build=$1
out="$build/corpus"
mkdir -p "$out"
status=0
for mode in shell exports; do
  "$build/native/path_corpus" "$mode" >"$out/$mode-native.txt"
  "$root/scripts/wine-run" "$build/win32/path_corpus.exe" "$mode" >"$out/$mode-wine.txt"
  if ! "$build/native/path_corpus" compare "$out/$mode-native.txt" "$out/$mode-wine.txt" >"$out/$mode-diff.txt"; then
    status=1
    head -n 120 "$out/$mode-diff.txt"
  fi
  echo "path corpus, $mode: $(tail -n 1 "$out/$mode-diff.txt")"
done
exit $status
