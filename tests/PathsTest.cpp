// Paths through the exports: their parts, closing backslashes and joined
// elements (text alone), the spellings that the file system gives on drive
// T: (also on a host without GetLongPathNameA, where the library walks the
// path itself), and new temporary files. A failing row is named by its index.
#include <optional>

#include "Detour.h"
#include "VbDeclares.h"

namespace {

Bstr B(const char* text) { return text ? Bstr(text) : Bstr(); }  // nullptr: a null BSTR

// What an export leaves in a variable that held text (kNull: a null BSTR),
// and answers joined by "|".
template <class F, class... In> std::string Call(const F& f, In... in) { Bstr result("stale"); return f(in..., result.out()) == S_OK ? result.text() : "(status not 0)"; }
template <class... S> std::string Piped(const S&... answers) { return (... + ("|" + std::string(answers))).substr(1); }

// Root | folder | name with stream | name without (flag 1: any nonzero is
// true) | name without extension | extension | extension replaced by "log".
// Guarded: a null or empty path gives empty text; an empty answer of the
// work leaves a null BSTR. Past a leading "X:\" every colon starts a stream;
// one closing backslash goes before the parsing, not two.
TEST(PathsText, PartsAndBuilding) {
    const struct { const char *path, *parts; } rows[] = {
        {"C:\\D\\f.tar.gz", "C:\\|C:\\D\\|f.tar.gz|f.tar.gz|f.tar|gz|C:\\D\\f.tar.log"}, {"f.", "<null>|<null>|f.|f.|f|<null>|f.log"}, {"", "||||||"},
        {"C:\\D.d\\f", "C:\\|C:\\D.d\\|f|f|f|<null>|C:\\D.d\\f.log"}, {"C:\\D\\\\", "C:\\|C:\\|D\\|D\\|D\\|<null>|C:\\D\\.log"}, {nullptr, "||||||"},
        {"C:\\", "C:\\|<null>|C:\\|C:\\|C:\\|<null>|C:\\.log"}, {"\\", "\\|<null>|\\|\\|\\|<null>|\\.log"}, {":s", "<null>|<null>|<null>|<null>|<null>|<null>|<null>"},
        {"\\\\S\\Sh", "\\\\S\\Sh\\|\\\\S\\|Sh|Sh|Sh|<null>|\\\\S\\Sh.log"}, {".profile", "<null>|<null>|.profile|.profile|.profile|<null>|.profile.log"},
        {"C:/D/f.txt", "<null>|<null>|C:/D/f.txt|C|C|<null>|C.log:/D/f.txt"}, {"C:\\D\\f.txt:s:$DATA", "C:\\|C:\\D\\|f.txt:s:$DATA|f.txt|f|txt|C:\\D\\f.log:s:$DATA"}};
    for (const auto& r : rows)
        EXPECT_EQ(r.parts, Piped(Call(vb::esGetFileRoot, B(r.path).get()), Call(vb::esGetFilePath, B(r.path).get()), Call(vb::esGetFileName, B(r.path).get(), 0),
                             Call(vb::esGetFileName, B(r.path).get(), 1), Call(vb::esGetFileOnlyName, B(r.path).get()), Call(vb::esGetFileExtension, B(r.path).get()),
                             Call(vb::esReplaceFileExtension, B(r.path).get(), B("log").get()))) << "row " << &r - rows;
    // A null extension drops the old one. The parsing sees the first 1024
    // characters, the stream comes from the whole text; the old name,
    // measured in the cut text, is replaced at the end of the whole path:
    // the last 10 characters of "name.exty:s" go.
    const std::string exact = "C:\\" + std::string(1012, 'd') + "\\name.ext", cut = exact + "y:s";  // 1024 + 3
    EXPECT_EQ(Piped("C:\\D\\f:s", "name.ext:s", exact.substr(0, 1016) + "nname.log:s"), Piped(Call(vb::esReplaceFileExtension, B("C:\\D\\f.txt:s").get(), nullptr),
              Call(vb::esGetFileName, Bstr(cut).get(), 0), Call(vb::esReplaceFileExtension, Bstr(cut).get(), B("log").get())));
    // Relative | absolute. Unguarded: null and empty reach the work as empty
    // text. Only single dots are cleaned from an answer; a file with no
    // common root with the base, or too long for the shell, comes back cleaned.
    const struct { const char *file, *base; std::string both; } pairs[] = {
        {"C:\\A\\C\\f.txt", "C:\\A\\B", "..\\C\\f.txt|C:\\A\\C\\f.txt"}, {"C:\\A\\f.txt", "C:\\A\\", "f.txt|C:\\A\\f.txt"}, {"C:\\D\\.", "C:\\", "D|C:\\D"},
        {"C:\\A\\.\\.\\f.txt", "C:\\X", "..\\A\\f.txt|C:\\A\\f.txt"}, {"D:\\.\\.\\f.txt", "C:\\A", "D:\\f.txt|D:\\f.txt"}, {"", nullptr, "<null>|<null>"},
        {"C:\\A\\.\\f.txt", "", "C:\\A\\f.txt|C:\\A\\f.txt"}, {nullptr, "C:\\A\\.\\B", "<null>|C:\\A\\B"}, {exact.c_str(), "C:\\B", exact + "|" + exact}};
    for (const auto& r : pairs)
        EXPECT_EQ(r.both, Piped(Call(vb::esGetRelativeFileName, B(r.file).get(), B(r.base).get()), Call(vb::esGetAbsoluteFileName, B(r.file).get(), B(r.base).get())))
            << "pair " << &r - pairs;
    // esBuildFileName | esBuildFileName2 of the two | esAddBackslash and
    // esRemoveBackslash of the first. The first keeps a leading backslash of the
    // file and, with the flag (any nonzero value), drops the closing one when
    // there is no file; the second puts exactly one backslash at each seam, of
    // all nine elements. A root is known by its length and shape alone.
    const struct { const char *folder, *file; VARIANT_BOOL strip; const char* all; } builds[] = {
        {"C:\\D", "f.txt", 0, "C:\\D\\f.txt|C:\\D\\f.txt|C:\\D\\|C:\\D"}, {"C:\\", "\\\\x", 0, "C:\\\\\\x|C:\\\\x|C:\\|C:\\"}, {"\\", "", 1, "\\|\\|\\|\\"},
        {"C:\\D\\", "\\f.txt", 0, "C:\\D\\\\f.txt|C:\\D\\f.txt|C:\\D\\|C:\\D"}, {"", "", -1, "<null>|<null>|<null>|<null>"},
        {nullptr, "f.txt", -1, "f.txt|f.txt|<null>|<null>"}, {"C:\\D\\", nullptr, -1, "C:\\D|C:\\D\\|C:\\D\\|C:\\D"},
        {"C:\\D", "", static_cast<VARIANT_BOOL>(0x8000), "C:\\D|C:\\D|C:\\D\\|C:\\D"}, {"?:\\", "", 1, "?:\\|?:\\|?:\\|?:\\"}, {"AB:\\", "", 1, "AB:|AB:\\|AB:\\|AB:"}};
    for (const auto& r : builds)
        EXPECT_EQ(r.all, Piped(Call(vb::esBuildFileName, B(r.folder).get(), B(r.file).get(), r.strip),
                           Call(vb::esBuildFileName2, B(r.folder).get(), B(r.file).get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr),
                           Call(vb::esAddBackslash, B(r.folder).get()), Call(vb::esRemoveBackslash, B(r.folder).get()))) << "build " << &r - builds;
    EXPECT_EQ("a\\b\\c\\d\\e\\f\\", Call(vb::esBuildFileName2, B("a").get(), nullptr, B("").get(), B("b\\").get(), B("c").get(), B("\\d").get(),
                                          B("\\").get(), B("e").get(), B("f\\").get()));
}

// Spellings from the file system; on a host without GetLongPathNameA (a
// fresh library) the library's own walk looks every element up, keeps "."
// and "..", doubled and closing backslashes, and the drive as typed. A
// module handle that is no module gives nothing. Then new temporary files:
// named by an upper-case GUID, one backslash after the folder (the temporary
// folder when none is given), the extension as given; empty, created for
// writing, unshared, always, and closed (so that they can be deleted). A
// folder that is not there is not made.
TEST(PathsOnDisk, SpellingsAndTemporaryFiles) {
    CreateDirectoryA("T:\\Long Dir", nullptr), CreateDirectoryA("T:\\Tmp", nullptr), SetCurrentDirectoryA("T:\\");
    CloseHandle(CreateFileA("T:\\Long Dir\\Read Me.txt", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    const char *longForm = "T:\\Long Dir\\Read Me.txt", *typed = "long dir\\read me.TXT";
    const std::string shortForm = Call(vb::esGetShortFileName, B(longForm).get(), 1), module = Call(vb::esGetModuleFileName, LONG(CskLibrary()), 0);
    EXPECT_EQ(Piped("0 spaces", "CorvaneSupportKit0100.dll", kNull),
              Piped(std::to_string(shortForm.find(' ') + 1) + " spaces", module.substr(module.rfind('\\') + 1), Call(vb::esGetModuleFileName, 0x1234, 0)));
    const auto &full = vb::esGetFullFileName, &lng = vb::esGetLongFileName, &shrt = vb::esGetShortFileName;
    const struct { bool walk; const VbFunction<HRESULT, BSTR, VARIANT_BOOL, BSTR*>& f; const char *path; VARIANT_BOOL flag; const char* expected; } rows[] = {
        {0, full, typed, 0, "T:\\long dir\\read me.TXT"}, {0, full, typed, 1, longForm}, {0, full, "No\\..\\no.TXT", 1, "T:\\no.TXT"}, {0, full, "", 1, kNull},
        {0, lng, shortForm.c_str(), 0, longForm}, {0, lng, "T:\\No", 0, "T:\\No"}, {0, lng, "T:\\No", -1, kNull}, {0, shrt, "T:\\No", 0, "T:\\No"},
        {0, shrt, "T:\\No", 1, kNull}, {1, lng, shortForm.c_str(), 1, longForm}, {1, full, typed, 1, longForm}, {1, lng, "T:\\No", 1, kNull},
        {1, lng, "t:\\LONG DIR\\read me.TXT", 1, "t:\\Long Dir\\Read Me.txt"}, {1, lng, "T:\\long dir\\\\read me.txt", 1, "T:\\Long Dir\\\\Read Me.txt"},
        {1, lng, "\\long dir\\.\\..\\LONG DIR\\", 1, "\\Long Dir\\.\\..\\Long Dir\\"}};
    std::optional<FreshLibrary> fresh;  // then a host without GetLongPathNameA
    std::optional<ProcDetour> missing;
    for (const auto& r : rows) {
        if (r.walk && !fresh) fresh.emplace(), missing.emplace("GetLongPathNameA", static_cast<const void*>(nullptr));
        EXPECT_EQ(r.expected, Call(r.f, B(r.path).get(), r.flag)) << "row " << &r - rows;
    }
    const std::string guid = "hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh";
    const struct { const char *folder, *extension; std::string expected; } temps[] = {
        {"T:\\Tmp", "tmp", "T:\\Tmp\\" + guid + ".tmp"}, {"T:\\Tmp\\", ".x", "T:\\Tmp\\" + guid + "..x"},
        {nullptr, "", getenv("TMP") + ("\\" + guid)}, {"T:\\NoSuch", "x", "<null>, not made"}};
    for (const auto& r : temps) {
        std::string name = Call(vb::esGetTempFileName2, B(r.folder).get(), B(r.extension).get()), shape = name;
        for (size_t i = shape.rfind('\\') + 1; i < shape.size(); ++i) shape[i] = std::isxdigit(shape[i]) && !std::islower(shape[i]) ? 'h' : shape[i];
        EXPECT_EQ(r.expected, shape + (GetFileAttributesA(name.c_str()) != ~0u && DeleteFileA(name.c_str()) ? "" : ", not made") +
                                  (GetFileAttributesA("T:\\NoSuch") == ~0u ? "" : ", NoSuch made")) << "temporary file " << &r - temps;
    }
    Detour refuse("CreateFileA", +[](LPCSTR, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES, DWORD how, DWORD flags, HANDLE) WINAPI -> HANDLE {
        return g_calls = std::to_string(access) + " " + std::to_string(share) + " " + std::to_string(how) + " " + std::to_string(flags), INVALID_HANDLE_VALUE; });
    EXPECT_EQ(Piped(kNull, "1073741824 0 2 0"), Piped(Call(vb::esGetTempFileName2, B("T:\\Tmp").get(), nullptr), g_calls));
}

}  // namespace
