#!/usr/bin/env bash
# Checks the built library's image against the .def and the list of all
# export names (both made from src/frame/ExportTable.txt): the list and the
# .def hold the same 267 undecorated names, each once; the binary exports
# those names and no others. For the DLL also: each export at the .def's
# ordinal (the type library calls by ordinal), only system DLLs imported,
# and ASLR, DEP and NO_SEH set.
# Usage: check-exports.sh DEF LIST BINARY
set -uo pipefail
def=$1 list=$2 binary=$3
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

def_names=$(sed -n '/^EXPORTS/,$p' "$def" | sed 's/;.*//' | awk 'NF && $1 != "EXPORTS" {print $1}')
list_names=$(grep -v '^#' "$list" | awk 'NF {print $1}')

[ "$(echo "$list_names" | sort -u | wc -l)" -eq 267 ] || fail "the list holds $(echo "$list_names" | sort -u | wc -l) names, not 267"
dups=$(echo "$def_names" | sort | uniq -d)
[ -z "$dups" ] || fail "exported twice in the .def: $dups"
for name in $def_names; do
  case "$name" in *@*|_*) fail "decorated name in the .def: $name" ;; esac
  grep -qx "$name" <<<"$list_names" || fail "not on the list of exports: $name"
done
unlisted=$(comm -23 <(echo "$list_names" | sort -u) <(echo "$def_names" | sort -u))
[ -z "$unlisted" ] || fail "on the list but not in the .def: $unlisted"

case "$binary" in
  *.dll)
    dump=$(i686-w64-mingw32-objdump -p "$binary") || { fail "objdump failed"; exit 1; }
    exported=$(echo "$dump" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' | grep -o '[A-Za-z_][A-Za-z0-9_@]*$' | grep -v '^Table$')
    # The type library calls each export by its ordinal: the DLL's must be the .def's.
    base=$(echo "$dump" | awk '/^Ordinal Base/ {print $3; exit}')
    actual=$(echo "$dump" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' |
      sed -n 's/^[[:space:]]*\[ *\([0-9]*\)\] \([A-Za-z_][A-Za-z0-9_]*\)$/\2 \1/p' | awk -v base="$base" '{print $1, $2 + base}' | sort)
    wanted=$(sed -n '/^EXPORTS/,$p' "$def" | awk '$2 ~ /^@[0-9]+$/ {print $1, substr($2, 2)}' | sort)
    [ "$actual" = "$wanted" ] || fail "ordinals differ from the .def: $(diff <(echo "$wanted") <(echo "$actual") | grep '^[<>]' | head -5 | tr '\n' ' ')"
    imports=$(echo "$dump" | awk '/DLL Name:/ {print tolower($3)}' | sort -u)
    for dll in $imports; do
      case "$dll" in
        kernel32.dll|user32.dll|gdi32.dll|advapi32.dll|oleaut32.dll|ole32.dll|shell32.dll|shlwapi.dll|msvcrt.dll) ;;
        *) fail "imports a DLL that is not a system DLL: $dll" ;;
      esac
    done
    # What not every host has is bound by name at run time, never imported.
    imported=$(echo "$dump" | sed -n '/The Import Tables/,/^The Export Tables/p' | awk '$1 ~ /^[0-9a-f]+$/ && $2 ~ /^[0-9]+$/ {print $3}')
    for name in SHAutoComplete IsWow64Process GetNativeSystemInfo GetProductName wine_get_version GetLongPathNameA \
        SetLayeredWindowAttributes MonitorFromWindow GetMonitorInfoA GetMonitorInfoW DllGetVersion GetLastInputInfo \
        GetDiskFreeSpaceExA GetDiskFreeSpaceExW; do
      grep -qx "$name" <<<"$imported" && fail "imports $name, which not every host has"
    done
    [ "$(grep -c . <<<"$imported")" -gt 20 ] || fail "could not read the import table"
    characteristics=$(echo "$dump" | sed -n '/^DllCharacteristics/,/^SizeOfStackReserve/p')
    for flag in DYNAMIC_BASE NX_COMPAT NO_SEH; do
      echo "$characteristics" | grep -q "$flag" || fail "DllCharacteristics lacks $flag"
    done
    ;;
  *.so)
    exported=$(nm -D --defined-only "$binary" | awk '$2 == "T" {print $3}')
    ;;
  *) fail "unknown kind of binary: $binary"; exit 1 ;;
esac

missing=$(comm -23 <(echo "$def_names" | sort) <(echo "$exported" | sort))
extra=$(comm -13 <(echo "$def_names" | sort) <(echo "$exported" | sort))
[ -z "$missing" ] || fail "named in the .def but not exported: $missing"
[ -z "$extra" ] || fail "exported but not named in the .def: $extra"

count=$(echo "$def_names" | grep -c .)
if [ "$failures" -eq 0 ]; then
  echo "$(basename "$binary"): $count exports, the list's names both ways, undecorated; image checks passed"
  exit 0
fi
exit 1
