// File system queries through the exports on drive T: (the test scripts make
// there the folder link LinkDir, which Wine shows as a reparse point, the
// label MyLabel and the serial number 0A2B03C4), and the App Paths entries,
// with what Wine cannot do staged on the library's imports: refusals, a
// sharing violation, other disk figures, a host without GetDiskFreeSpaceExA.
// A failing row is named by its index; answers are joined by "|".
#include <fstream>

#include "Detour.h"
#include "VbDeclares.h"

namespace {

Bstr B(const char* text) { return text ? Bstr(text) : Bstr(); }  // nullptr: a null BSTR
std::string S(double value) { char text[40]; return snprintf(text, sizeof text, "%.0f", value), text; }  // a whole number
// Answers in the order given: the elements of a braced list are sequenced.
std::string Piped(std::initializer_list<std::string> answers) { std::string joined; for (const auto& a : answers) joined += "|" + a; return joined.substr(1); }

// The staged platform: an attribute word and error (word 0: the platform's
// own answer), disk queries that refuse or are missing (the ANSI one fills
// its figures also when it refuses; the old one has clusters of 4096 bytes,
// so that the total wraps to 4096), a value name whose writing is refused.
// The test's own calls are not staged.
DWORD g_word, g_error, g_exRefuses, g_oldRefuses;
std::string g_refusedValue;
DWORD WINAPI Look(LPCSTR path) { return g_calls += "look ", g_word ? (SetLastError(g_error), g_word) : GetFileAttributesA(path); }
BOOL WINAPI FreeEx(LPCSTR, PULARGE_INTEGER available, PULARGE_INTEGER total, PULARGE_INTEGER free) {
    return available->QuadPart = 3ull << 32, total->QuadPart = (1ull << 63) + 4096, free->QuadPart = 5ull << 32, !g_exRefuses; }
BOOL WINAPI FreeOld(LPCSTR, LPDWORD sectors, LPDWORD bytes, LPDWORD freeClusters, LPDWORD clusters) {
    return *sectors = 8, *bytes = 512, *freeClusters = 3, *clusters = 0x100001, !g_oldRefuses; }
LONG WINAPI SetValue(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
    return (name ? name : "") == g_refusedValue ? ERROR_ACCESS_DENIED : RegSetValueExA(key, name, reserved, type, data, size); }

// Disk figures: status | total | free | available | success | each single
// figure. The ANSI query where the host has it and it answers (its three
// numbers in their order, unsigned), else the old one's 32-bit products with
// available equal to free; -1 when neither answers.
TEST(Files, SpaceExistenceSizesAppPathsAndVolumes) {
    const struct { bool ex; DWORD exRefuses, oldRefuses; const char *figures, *ok; } disks[] = {{1, 0, 0, "9223372036854779904|21474836480|12884901888", "|-1|"},
        {0, 0, 0, "4096|12288|12288", "|-1|"}, {1, 1, 0, "4096|12288|12288", "|-1|"}, {1, 1, 1, "-1|-1|-1", "|0|"}};
    auto all = [] { double f[] = {7, 7, 7}; VARIANT_BOOL ok = 7; return Piped({S(vb::esGetDiskSpace(B("T:\\").get(), f, f + 1, f + 2, &ok)), S(f[0]), S(f[1]), S(f[2]), S(ok)}); };
    auto one = [](const auto& f) { double figure = 7; return f(B("T:\\").get(), &figure) ? "!" : S(figure); };
    for (const auto& r : disks) {
        FreshLibrary fresh;
        ProcDetour missing("GetDiskFreeSpaceExA", r.ex ? reinterpret_cast<const void*>(&FreeEx) : nullptr);
        Detour old("GetDiskFreeSpaceA", &FreeOld);
        EXPECT_EQ("0|" + std::string(r.figures) + r.ok + r.figures, Piped({(g_exRefuses = r.exRefuses, g_oldRefuses = r.oldRefuses, all()), one(vb::esGetDiskSpaceTotal),
                                                                        one(vb::esGetDiskSpaceFree), one(vb::esGetDiskSpaceAvailable)})) << "disk " << &r - disks;
    }
    // The twelve tests as 1 and 0 (! for a status other than 0) | the
    // attribute word | size in a Long, capped | in a Double, whole | "-" where
    // GetFileAttributesA was not asked. A wildcard is never looked up. Refused
    // with a sharing violation, the word comes from the directory entry, found
    // without one closing backslash; other refusals are final. Reparse points
    // of every kind count; the Unix tests want the exact spelling. Sizes come
    // from the directory entry, one closing backslash off; a root fails;
    // failures are 0.
    CreateDirectoryA("T:\\Dir", nullptr), SetCurrentDirectoryA("T:\\");
    for (LONGLONG size : {5ll, 0x7FFFFFFFll, 1ll << 31, 1ll << 32})  // sparse files named by their sizes
        std::ofstream("T:\\Dir\\" + S(size), std::ios::binary).seekp(size - 1).put(0);
    const struct { const char* path; DWORD word, error; const char* expected; } rows[] = {
        {"T:\\Dir\\5", 0, 0, "110010000101|32|5|5"}, {"t:\\dir\\5", 0, 0, "110010000000|32|5|5"}, {"T:\\", 0, 0, "101100000011|16|0|0"},
        {"T:\\LinkDir", 0, 0, "101101101011|1040|0|0"}, {nullptr, 0, 0, "000000000000|-1|0|0"}, {"T:\\Dir\\4*", 0, 0, "000000000000|-1|0|0|-"},
        {"T:\\Dir\\429496729?", 0, 0, "000000000000|-1|0|0|-"}, {"T:\\Dir\\5", ~0u, 32, "110010000101|32|5|5"}, {"T:\\Dir\\5\\", ~0u, 32, "110010000101|32|5|5"},
        {"T:\\Dir\\5", ~0u, 5, "000000000000|-1|5|5"}, {"T:\\Dir\\5", 0x420, 0, "110010110101|1056|5|5"},
        {"T:\\Dir\\2147483647", 0, 0, "110010000101|32|2147483647|2147483647"}, {"T:\\Dir\\2147483648", 0, 0, "110010000101|32|2147483647|2147483648"},
        {"T:\\Dir\\4294967296", 0, 0, "110010000101|32|2147483647|4294967296"}};
    Detour attributes("GetFileAttributesA", &Look);
    for (const auto& r : rows) {
        struct { std::string tests; VARIANT_BOOL test; LONG word = 7, size = 7; double sizeEx = 7; } a;
        g_word = r.word, g_error = r.error, g_calls.clear();
        for (std::string test : {"FileOrDirectoryExist", "FileExist", "DirectoryExist", "Directory", "File", "Junction", "Symlink", "SymlinkToFile",
                                 "SymlinkToDirectory", "UnixFileExist", "UnixDirectoryExist", "UnixFileOrDirectoryExist"})
            a.tests += decltype(vb::esIsFile){(test = "esIs" + test).c_str()}(B(r.path).get(), &(a.test = 7)) ? '!' : a.test == -1 ? '1' : a.test ? '?' : '0';
        EXPECT_EQ(r.expected, Piped({a.tests, vb::esGetFileAttributes(B(r.path).get(), &a.word) ? "!" : S(a.word), vb::esGetFileSize(B(r.path).get(), &a.size) ? "!" : S(a.size),
                                 vb::esGetFileSizeEx(B(r.path).get(), &a.sizeEx) ? "!" : S(a.sizeEx)}) + (g_calls.empty() ? "|-" : "")) << "row " << &r - rows;
    }
    // This program registers itself in HKEY_LOCAL_MACHINE: status | success |
    // the entry's path | its folder | what a look-up of the name answers: the
    // registered path (expanded) only where a file stands there (a preset
    // value that the refused write leaves), else the caller's own text. A
    // refused write of the path is false with status 0, the folder's is not
    // looked at. A delete takes the entry with all under it; one that fails
    // (no such entry) is false with status 1. A null name comes back null,
    // any name untouched by the code page. Then the volume:
    // status | answer for the label (the empty root goes as null: the current
    // directory's root), the serial number; for a folder, which the platform
    // refuses, label, file system, longest name, flags: empty non-null text
    // with status 0, 0 with status 1. Then serial numbers as text.
    const std::string p = (SetEnvironmentVariableA("CSK_PROGRAM", _pgmptr), _pgmptr), name = strrchr(_pgmptr, '\\') + 1,
                      key = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\" + name, folder = p.substr(0, p.size() - name.size());
    auto stored = [&](const char* value) { char data[MAX_PATH] = {}; DWORD size = MAX_PATH;
        return SHGetValueA(HKEY_LOCAL_MACHINE, key.c_str(), value, nullptr, data, &size) ? "none" : std::string(data); };
    auto look = [](const char* in) { Bstr out("stale"); return vb::esGetFileAppPath(B(in).get(), out.out()) ? "!" : out.text(); };
    const struct { const char *preset, *refused; bool registers; std::string expected; } steps[] = {{"%CSK_PROGRAM%", "", true, "0|0|" + p + "|none|" + p},
        {"T:\\", "", true, "0|0|T:\\|none|" + name}, {nullptr, "Path", true, "0|-1|" + p + "|none|" + p}, {nullptr, "-", true, "0|-1|" + p + "|" + folder + "|" + p},
        {nullptr, "-", false, "0|-1|none|none|" + name}, {nullptr, "-", false, "1|0|none|none|" + name}};
    SHDeleteKeyA(HKEY_LOCAL_MACHINE, key.c_str()), SHSetValueA(HKEY_LOCAL_MACHINE, (key + "\\Sub").c_str(), "x", REG_SZ, "x", 2);
    Detour set("RegSetValueExA", &SetValue);
    auto act = [](bool registers) { VARIANT_BOOL done = 7; return Piped({S((registers ? vb::esRegisterAppPath : vb::esUnRegisterAppPath)(&done)), S(done)}); };
    for (const auto& s : steps)
        EXPECT_EQ(s.expected, Piped({(g_refusedValue = s.refused, s.preset && SHSetValueA(HKEY_LOCAL_MACHINE, key.c_str(), nullptr, REG_EXPAND_SZ, s.preset, strlen(s.preset) + 1),
                                  act(s.registers)), stored(nullptr), stored("Path"), look(name.c_str())})) << "step " << &s - steps;
    auto text = [](const auto& f, auto in) { Bstr answer("stale"); return Piped({S(f(in, answer.out())), answer.text()}); };
    auto number = [](const auto& f, const char* root = "T:\\Dir\\") { LONG answer = 7; return Piped({S(f(B(root).get(), &answer)), S(answer)}); };
    EXPECT_EQ(Piped({kNull, "\u2713", "0|MyLabel|0|170591172|0||0||1|0|1|0|0|0000-0000|0|FFFF-FFFF|0|FEDC-BA98"}), Piped({look(nullptr), look("\u2713"),
        text(vb::esGetVolumeName, nullptr), number(vb::esGetVolumeSerialNumber, "T:\\"), text(vb::esGetVolumeName, B("T:\\Dir\\").get()),
        text(vb::esGetVolumeFileSystemName, B("T:\\Dir\\").get()), number(vb::esGetVolumeMaximumComponentLength), number(vb::esGetVolumeFileSystemFlags),
        text(vb::esFormatVolumeSerialNumber, 0), text(vb::esFormatVolumeSerialNumber, -1), text(vb::esFormatVolumeSerialNumber, LONG(0xFEDCBA98))}));
}

}  // namespace
