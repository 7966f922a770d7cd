#!/usr/bin/env bash
# Checks the built DLL's image; `make test` runs it, and scripts/dist.sh
# will not ship a DLL that fails it.
#  - Exports: the list and the .def (both made from src/frame/ExportTable.txt)
#    hold the same 267 undecorated names, each once; the DLL exports those
#    names and no others, each at the .def's ordinal (the type library calls
#    by ordinal).
#  - Imports: system DLLs only, and only functions that every host has:
#    those the library's own objects import (measured from the objects, so
#    the list follows the code), each of which the Win32 headers must still
#    declare for the oldest hosts, and those the compiler's runtime adds
#    (scripts/runtime-imports.txt, reviewed by hand). The fourteen functions
#    bound at run time are never imported.
#  - ASLR, DEP and NO_SEH set; no debug information, but a .gnu_debuglink
#    naming the debug file beside the DLL with that file's checksum.
# Usage: check-image.sh DEF LIST DLL OBJECT...
set -uo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
def=$1 list=$2 binary=$3
shift 3
# The objects come one to an argument, or as one CMake list (a;b;c).
objects=()
for argument in "$@"; do
  IFS=';' read -ra parts <<<"$argument"
  objects+=("${parts[@]}")
done
runtime_list="$here/runtime-imports.txt"
failures=0
fail() { echo "FAIL: $*"; failures=$((failures + 1)); }

def_names=$(sed -n '/^EXPORTS/,$p' "$def" | sed 's/;.*//' | awk 'NF && $1 != "EXPORTS" {print $1}')
list_names=$(grep -v '^#' "$list" | awk 'NF {print $1}')

[ "$(echo "$list_names" | sort -u | wc -l)" -eq 267 ] || fail "the list holds $(echo "$list_names" | sort -u | wc -l) names, not 267"
dups=$(echo "$def_names" | sort | uniq -d)
[ -z "$dups" ] || fail "exported twice in the .def: $dups"
decorated=$(grep -E '@|^_' <<<"$def_names" | tr '\n' ' ')
[ -z "$decorated" ] || fail "decorated names in the .def: $decorated"
not_listed=$(comm -13 <(echo "$list_names" | sort -u) <(echo "$def_names" | sort -u))
[ -z "$not_listed" ] || fail "not on the list of exports: $not_listed"
unlisted=$(comm -23 <(echo "$list_names" | sort -u) <(echo "$def_names" | sort -u))
[ -z "$unlisted" ] || fail "on the list but not in the .def: $unlisted"

dump=$(i686-w64-mingw32-objdump -p "$binary") || { fail "objdump failed on $binary"; exit 1; }
headers=$(i686-w64-mingw32-objdump -h "$binary") || { fail "objdump -h failed on $binary"; exit 1; }

# Exports, both ways, each at the .def's ordinal.
exported=$(echo "$dump" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' | grep -o '[A-Za-z_][A-Za-z0-9_@]*$' | grep -v '^Table$')
missing=$(comm -23 <(echo "$def_names" | sort) <(echo "$exported" | sort))
extra=$(comm -13 <(echo "$def_names" | sort) <(echo "$exported" | sort))
[ -z "$missing" ] || fail "named in the .def but not exported: $missing"
[ -z "$extra" ] || fail "exported but not named in the .def: $extra"
base=$(echo "$dump" | awk '/^Ordinal Base/ {print $3; exit}')
actual=$(echo "$dump" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' |
  sed -n 's/^[[:space:]]*\[ *\([0-9]*\)\] \([A-Za-z_][A-Za-z0-9_]*\)$/\2 \1/p' | awk -v base="$base" '{print $1, $2 + base}' | sort)
wanted=$(sed -n '/^EXPORTS/,$p' "$def" | awk '$2 ~ /^@[0-9]+$/ {print $1, substr($2, 2)}' | sort)
[ "$actual" = "$wanted" ] || fail "ordinals differ from the .def: $(diff <(echo "$wanted") <(echo "$actual") | grep '^[<>]' | head -5 | tr '\n' ' ')"

# The import table as "dll function" lines.
imports=$(echo "$dump" | sed -n '/The Import Tables/,/^The Export Tables/p' | awk '
  /DLL Name:/ {dll = tolower($3); next}
  dll != "" && $1 ~ /^[0-9a-f]+$/ && $2 ~ /^[0-9]+$/ && NF == 3 {print dll, $3}')
[ "$(grep -c . <<<"$imports")" -gt 20 ] || fail "could not read the import table"
for dll in $(awk '{print $1}' <<<"$imports" | sort -u); do
  case "$dll" in
    kernel32.dll|user32.dll|gdi32.dll|advapi32.dll|oleaut32.dll|ole32.dll|shell32.dll|shlwapi.dll|msvcrt.dll) ;;
    *) fail "imports a DLL that is not a system DLL: $dll" ;;
  esac
done

# What not every host has is bound by name at run time, never imported.
for name in SHAutoComplete IsWow64Process GetNativeSystemInfo GetProductName wine_get_version GetLongPathNameA \
    SetLayeredWindowAttributes MonitorFromWindow GetMonitorInfoA GetMonitorInfoW DllGetVersion GetLastInputInfo \
    GetDiskFreeSpaceExA GetDiskFreeSpaceExW; do
  awk '{print $2}' <<<"$imports" | grep -qx "$name" && fail "imports $name, which not every host has"
done

# The library's own imports: the symbols its objects leave undefined, without
# the import prefix and the decoration (__imp__GetVersionExA@4, _memcpy).
[ "${#objects[@]}" -gt 0 ] || fail "no objects of the library given"
own=$(i686-w64-mingw32-nm -u "${objects[@]}" | awk '$1 == "U" {print $2}' |
  sed -E 's/^__imp_//; s/^_//; s/@[0-9]+$//' | sort -u)
[ "$(grep -c . <<<"$own")" -gt 20 ] || fail "could not read the undefined symbols of the objects"
runtime=$(grep -v '^#' "$runtime_list" | awk 'NF {print tolower($1), $2}' | sort -u)
classified=$(awk -v runtime="$runtime" -v own="$own" '
  BEGIN { split(runtime, r, "\n"); for (i in r) R[r[i]]; split(own, o, "\n"); for (i in o) O[o[i]] }
  ($1 " " $2) in R { next }
  $2 in O { print "own", $1, $2; next }
  { print "neither", $1, $2 }' <<<"$imports")
mapfile -t own_imported < <(awk '$1 == "own" {print $3}' <<<"$classified")
while read -r _ dll name; do
  fail "imports $dll $name, which neither the library's objects nor scripts/runtime-imports.txt name"
done < <(grep '^neither ' <<<"$classified")

# Each function the library imports itself must be one that the Win32
# headers declare for the oldest hosts they know (Windows 95 and NT 4, with
# the shell library of Internet Explorer 4): they declare many functions of
# later Windows only for those, GetTickCount64 only for Vista and later.
# Not all (the headers leave some unguarded), so a new import still wants a
# look at which Windows first exported it.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
{
  printf '#include <%s>\n' windows.h oleauto.h olectl.h shlwapi.h shlobj.h ctype.h float.h stdio.h stdlib.h string.h wchar.h locale.h math.h
  echo 'void csk_imports(void) {'
  for name in "${own_imported[@]}"; do echo "  (void)&$name;"; done
  echo '}'
} >"$work/imports.c"
LC_ALL=C i686-w64-mingw32-gcc -fsyntax-only -D_WIN32_WINNT=0x0400 -DWINVER=0x0400 -D_WIN32_IE=0x0400 \
  "$work/imports.c" >"$work/errors" 2>&1
undeclared=$(grep -o "'[A-Za-z0-9_]*' undeclared" "$work/errors" | tr -d "'" | awk '{print $1}' | sort -u)
for name in $undeclared; do
  fail "imports $name, which the Win32 headers declare only for a later Windows than 95 and NT 4"
done
if [ -z "$undeclared" ] && grep -q 'error' "$work/errors"; then
  fail "the headers' check of the imports did not compile: $(grep -m3 error "$work/errors" | tr '\n' ' ')"
fi

characteristics=$(echo "$dump" | sed -n '/^DllCharacteristics/,/^SizeOfStackReserve/p')
for flag in DYNAMIC_BASE NX_COMPAT NO_SEH; do
  echo "$characteristics" | grep -q "$flag" || fail "DllCharacteristics lacks $flag"
done

# No debug information in what ships; the link to the file that holds it.
debug_sections=$(awk '$2 ~ /^\.(debug|zdebug)/ {print $2}' <<<"$headers" | tr '\n' ' ')
[ -z "$debug_sections" ] || fail "carries debug information: $debug_sections"
i686-w64-mingw32-objcopy --dump-section .gnu_debuglink="$work/debuglink" "$binary" "$work/copy.dll" 2>/dev/null
python3 - "$binary" "$work/debuglink" 2>/dev/null <<'EOF' || fail "the .gnu_debuglink does not name the debug file beside the DLL with its checksum"
import os, struct, sys, zlib
dll, link = sys.argv[1], open(sys.argv[2], "rb").read()
name = link[:link.index(b"\0")].decode()
crc, = struct.unpack("<I", link[-4:])
with open(os.path.join(os.path.dirname(dll), name), "rb") as f:
    sys.exit(0 if name == os.path.basename(dll) + ".debug" and zlib.crc32(f.read()) == crc else 1)
EOF

count=$(echo "$def_names" | grep -c .)
if [ "$failures" -eq 0 ]; then
  echo "$(basename "$binary"): $count exports, the list's names both ways, undecorated, at the .def's ordinals;" \
    "$(grep -c . <<<"$imports") imports (${#own_imported[@]} the library's own, the rest the runtime's), all old enough; image checks passed"
  exit 0
fi
exit 1
