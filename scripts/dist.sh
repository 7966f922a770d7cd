#!/usr/bin/env bash
# Makes the release from the DLL built in BUILD/win32: the folder
# BUILD/dist/CorvaneSupportKit0100-<version>/ and a .zip of it. The version
# is read from the DLL's own version record. A DLL that fails the image
# check (scripts/check-image.sh) is not shipped. The .zip holds its entries
# in a fixed order, with fixed permissions and the time of the last commit,
# so that the same commit gives the same bytes.
# Usage: dist.sh BUILD
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="$(cd "${1:-build}" && pwd)"
dir="$build/win32"
dll="$dir/CorvaneSupportKit0100.dll"
for file in "$dll" "$dll.debug" "$dir/CorvaneSupportKit0100.tlb"; do
  [ -f "$file" ] || { echo "dist: $file is missing; build first (make dist builds)" >&2; exit 1; }
done

mapfile -t objects < <(find "$dir/CMakeFiles/csk_objects.dir" -name '*.obj' | LC_ALL=C sort)
if ! bash "$root/scripts/check-image.sh" "$dir/interface/CorvaneSupportKit0100.def" \
    "$dir/interface/ExportList.txt" "$dll" "${objects[@]}"; then
  echo "dist: the DLL fails the image check; nothing shipped" >&2
  exit 1
fi

# The version: the FileVersion text of the DLL's version record, which must
# agree with the record's numbers (1.00.0081 is 1.0.0.81).
version=$(python3 - "$dll" <<'EOF'
import struct, sys
data = open(sys.argv[1], "rb").read()
record = data.index("VS_VERSION_INFO".encode("utf-16-le")) - 6
fixed = data.index(struct.pack("<I", 0xFEEF04BD), record)
ms, ls = struct.unpack_from("<II", data, fixed + 8)
key = data.index("FileVersion\0".encode("utf-16-le"), fixed)
length, = struct.unpack_from("<H", data, key - 4)  # in characters, with the ending zero
start = key + len("FileVersion\0") * 2
start += -(start - record) % 4  # aligned to 4 from the record's start
text = data[start:start + 2 * length].decode("utf-16-le").rstrip("\0")
parts = [int(part) for part in text.split(".")]
if parts != [ms >> 16, ms & 0xFFFF, ls & 0xFFFF] or ls >> 16 != 0:
    sys.exit(f"FileVersion {text} differs from the record's numbers {ms >> 16}.{ms & 0xFFFF}.{ls >> 16}.{ls & 0xFFFF}")
print(text)
EOF
)
name="CorvaneSupportKit0100-$version"

if ! epoch=$(git -C "$root" log -1 --format=%ct 2>/dev/null); then
  epoch=${SOURCE_DATE_EPOCH:?"dist: not a git checkout; set SOURCE_DATE_EPOCH to the release's time"}
fi
if [ -n "$(git -C "$root" status --porcelain -- src scripts cmake CMakeLists.txt vb6 docs examples 2>/dev/null)" ]; then
  echo "dist: warning: the sources differ from the last commit; this release is not of a commit" >&2
fi

out="$build/dist/$name"
rm -rf "$out" "$out.zip"
mkdir -p "$out"
cp "$dll" "$dll.debug" "$dir/CorvaneSupportKit0100.tlb" "$root/vb6/CorvaneSupportKit0100.bas" "$out/"
cp -r "$root/docs/reference" "$out/reference"
cp -r "$root/examples/vb6" "$out/sample"
# The sample's reference to the type library: in the release, one folder up.
sed -i 's|#[^#]*CorvaneSupportKit0100\.tlb#|#..\\CorvaneSupportKit0100.tlb#|' "$out/sample/CorvaneSample.vbp"
grep -qF '#..\CorvaneSupportKit0100.tlb#' "$out/sample/CorvaneSample.vbp" ||
  { echo "dist: the sample project does not reference the type library" >&2; exit 1; }
# The read-me in the line ends that Notepad shows.
sed "s/@VERSION@/$version/; s/\$/\r/" "$root/scripts/dist-readme.txt" >"$out/README.txt"
(cd "$out" && find . -type f ! -name SHA256SUMS | sed 's|^\./||' | LC_ALL=C sort | xargs sha256sum >SHA256SUMS)
find "$out" -exec touch -h -d "@$epoch" {} +

python3 - "$out" "$epoch" <<'EOF'
import os, sys, time, zipfile
folder, epoch = sys.argv[1], int(sys.argv[2])
base = os.path.basename(folder)
stamp = time.gmtime(max(epoch, 315532800))[:6]  # a .zip cannot date before 1980
files = sorted(os.path.relpath(os.path.join(top, name), folder).replace(os.sep, "/")
               for top, _, names in os.walk(folder) for name in names)
with zipfile.ZipFile(folder + ".zip", "w") as archive:
    for path in files:
        entry = zipfile.ZipInfo(f"{base}/{path}", date_time=stamp)
        entry.create_system = 3
        entry.external_attr = 0o100644 << 16
        entry.compress_type = zipfile.ZIP_DEFLATED
        with open(os.path.join(folder, path), "rb") as f:
            archive.writestr(entry, f.read(), compresslevel=9)
EOF

(cd "$out" && sha256sum --quiet -c SHA256SUMS)
echo "dist: $out/ ($(find "$out" -type f | wc -l) files)"
echo "dist: $out.zip ($(stat -c %s "$out.zip") bytes, sha256 $(sha256sum "$out.zip" | cut -d' ' -f1))"
