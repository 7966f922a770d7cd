// Paths through the exports: taking them apart (every shape of path, the
// relative and absolute forms, replaced extensions, long paths), closing
// backslashes and joining elements.
#include "VbDeclares.h"

namespace {

Bstr B(const char* text) { return text ? Bstr(text) : Bstr(); }  // nullptr: a null BSTR

// Calls an export into a variable that already holds text and gives back
// what it holds after (kNull: a null BSTR). The same call without a
// variable must be status 1.
template <class F, class... In>
std::string Call(const F& f, In... in) {
    EXPECT_EQ(S_FALSE, f(in..., nullptr)) << f.name;
    Bstr result("stale");
    EXPECT_EQ(S_OK, f(in..., result.out())) << f.name;
    return result.text();
}

// Each row: the path, then what esGetFileRoot, esGetFilePath, esGetFileName
// with and without the stream, esGetFileOnlyName, esGetFileExtension and
// esReplaceFileExtension(path, "log") answer. All six are guarded: a null or
// empty path gets an empty, non-null BSTR; an empty answer from the work
// leaves kNull.
TEST(PathParsing, PartsByShapeOfPath) {
    const struct { const char *path, *parts[7]; } rows[] = {
        {"C:\\é\\é.txt", {"C:\\", "C:\\é\\", "é.txt", "é.txt", "é", "txt", "C:\\é\\é.log"}},
        {"C:\\D\\f.tar.gz", {"C:\\", "C:\\D\\", "f.tar.gz", "f.tar.gz", "f.tar", "gz", "C:\\D\\f.tar.log"}},
        {"C:\\D.d\\f", {"C:\\", "C:\\D.d\\", "f", "f", "f", kNull, "C:\\D.d\\f.log"}},
        {"C:\\D\\\\", {"C:\\", "C:\\", "D\\", "D\\", "D\\", kNull, "C:\\D\\.log"}},  // one backslash goes, not two
        {"C:\\", {"C:\\", kNull, "C:\\", "C:\\", "C:\\", kNull, "C:\\.log"}},
        // Past a leading "X:\", every colon starts a stream.
        {"C:/D/f.txt", {kNull, kNull, "C:/D/f.txt", "C", "C", kNull, "C.log:/D/f.txt"}},
        {"\\\\S\\Sh", {"\\\\S\\Sh\\", "\\\\S\\", "Sh", "Sh", "Sh", kNull, "\\\\S\\Sh.log"}},
        // "\\?\" is nothing special; the replacement splits the name again and finds a drive in it.
        {"\\\\?\\C:\\D\\f.txt", {"\\\\?\\C\\", "\\\\?\\", "C:\\D\\f.txt", "C", "C", kNull, "\\\\?\\C:\\D\\f.log"}},
        {".profile", {kNull, kNull, ".profile", ".profile", ".profile", kNull, ".profile.log"}},
        {"f.", {kNull, kNull, "f.", "f.", "f", kNull, "f.log"}},
        {"C:\\D\\f.txt:s:$DATA", {"C:\\", "C:\\D\\", "f.txt:s:$DATA", "f.txt", "f", "txt", "C:\\D\\f.log:s:$DATA"}},
        {":s", {kNull, kNull, kNull, kNull, kNull, kNull, kNull}},  // a stream alone leaves no name
        {"", {"", "", "", "", "", "", ""}},
        {nullptr, {"", "", "", "", "", "", ""}},
    };
    for (const auto& r : rows) {
        Bstr p = B(r.path);
        const std::vector<std::string> answers = {
            Call(vb::esGetFileRoot, p.get()), Call(vb::esGetFilePath, p.get()),
            Call(vb::esGetFileName, p.get(), VARIANT_FALSE), Call(vb::esGetFileName, p.get(), VARIANT_TRUE),
            Call(vb::esGetFileOnlyName, p.get()), Call(vb::esGetFileExtension, p.get()),
            Call(vb::esReplaceFileExtension, p.get(), B("log").get())};
        EXPECT_EQ(std::vector<std::string>(r.parts, r.parts + 7), answers) << r.path;
    }
    EXPECT_EQ("", Call(vb::esGetFileRoot, Bstr::FromUnits(std::u16string(u"\0x", 2)).get())) << "NUL first: empty";
    // A null extension drops the old one and keeps the stream.
    EXPECT_EQ("C:\\D\\f:s", Call(vb::esReplaceFileExtension, B("C:\\D\\f.txt:s").get(), B(nullptr).get()));
}

// Unguarded: null and empty inputs reach the work as empty text. Only single
// dots are cleaned from an answer.
TEST(PathParsing, RelativeAndAbsolute) {
    const struct { const char *file, *base, *relative, *absolute; } rows[] = {
        {"C:\\A\\C\\f.txt", "C:\\A\\B", "..\\C\\f.txt", "C:\\A\\C\\f.txt"},
        {"C:\\A\\f.txt", "C:\\A\\", "f.txt", "C:\\A\\f.txt"},
        {"C:\\A\\B\\..\\f.txt", "C:\\A", "B\\..\\f.txt", "C:\\A\\f.txt"},
        {"C:\\A\\.\\.\\f.txt", "C:\\X", "..\\A\\f.txt", "C:\\A\\f.txt"},
        {"C:\\D\\.", "C:\\", "D", "C:\\D"},
        {"C:\\A\\.\\f.txt", "", "C:\\A\\f.txt", "C:\\A\\f.txt"},
        {nullptr, "C:\\A\\.\\B", kNull, "C:\\A\\B"},
        {"", nullptr, kNull, kNull},
    };
    for (const auto& r : rows)
        EXPECT_EQ(std::make_pair(std::string(r.relative), std::string(r.absolute)),
                  std::make_pair(Call(vb::esGetRelativeFileName, B(r.file).get(), B(r.base).get()),
                                 Call(vb::esGetAbsoluteFileName, B(r.file).get(), B(r.base).get())))
            << r.file << " from " << r.base;
}

// The parsing work sees the first 1024 characters; the stream comes from
// the whole text, and nothing is written past a buffer at any length.
TEST(PathParsing, LongPathsAreCutAtTheBuffer) {
    const std::string exact = "C:\\" + std::string(1012, 'd') + "\\name.ext", cut = exact + "y:s";  // 1024 + 3
    EXPECT_EQ("name.ext:s", Call(vb::esGetFileName, Bstr(cut).get(), VARIANT_FALSE)) << "the 1025th character is cut";
    // The old name is measured in the cut text but replaced at the end of
    // the whole path: the last 10 characters of "name.exty:s" give way.
    EXPECT_EQ(exact.substr(0, 1016) + "nname.log:s", Call(vb::esReplaceFileExtension, Bstr(cut).get(), B("log").get()));
    for (size_t length : {259u, 260u, 261u, 1023u, 1024u, 1025u, 5000u}) {
        const std::string unc = "\\\\Server\\Share\\" + std::string(length, 'x');
        EXPECT_EQ(std::string(std::min<size_t>(length, 1024 - 15), 'x'), Call(vb::esGetFileName, Bstr(unc).get(), 1));
        EXPECT_EQ(unc, Call(vb::esGetAbsoluteFileName, Bstr(unc).get(), B("C:\\B").get())) << "beyond MAX_PATH";
    }
}

TEST(PathBuilding, AddAndRemoveBackslash) {
    const struct { const char *input, *added, *removed; } rows[] = {
        {"C:\\D\\", "C:\\D\\", "C:\\D"},
        {"C:/D/", "C:/D/\\", "C:/D/"},  // a forward slash is an ordinary character
        {"\\", "\\", "\\"},
        {"\\\\", "\\\\", "\\"},  // one backslash goes, not two
        {"?:\\", "?:\\", "?:\\"},  // a root is known by its length and shape alone
        {"AB:\\", "AB:\\", "AB:"},
        {nullptr, kNull, kNull},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(r.added, Call(vb::esAddBackslash, B(r.input).get())) << r.input;
        EXPECT_EQ(r.removed, Call(vb::esRemoveBackslash, B(r.input).get())) << r.input;
    }
}

// esBuildFileName keeps a leading backslash of the file as it stands and, with
// the flag (any nonzero value), drops the closing one when there is no file;
// esBuildFileName2 puts exactly one backslash at each seam.
TEST(PathBuilding, BuildFileNameAndBuildFileName2) {
    const struct { const char *folder, *file; VARIANT_BOOL strip; const char *built, *built2; } rows[] = {
        {"C:\\D", "f.txt", 0, "C:\\D\\f.txt", "C:\\D\\f.txt"},
        {"C:\\D\\", "\\f.txt", 0, "C:\\D\\\\f.txt", "C:\\D\\f.txt"},
        {"C:\\", "\\\\x", 0, "C:\\\\\\x", "C:\\\\x"},  // one backslash of the seam goes, not two
        {nullptr, "f.txt", -1, "f.txt", "f.txt"},
        {"C:\\D", "", 0, "C:\\D\\", "C:\\D"},
        {"C:\\D\\", nullptr, -1, "C:\\D", "C:\\D\\"},
        {"C:\\D", "", 1, "C:\\D", "C:\\D"},
        {"C:\\D", "", static_cast<VARIANT_BOOL>(0x8000), "C:\\D", "C:\\D"},
        {"", "", -1, kNull, kNull},
    };
    for (const auto& r : rows) {
        Bstr folder = B(r.folder), file = B(r.file);
        EXPECT_EQ(r.built, Call(vb::esBuildFileName, folder.get(), file.get(), r.strip)) << r.folder << " + " << r.file;
        EXPECT_EQ(r.built2, Call(vb::esBuildFileName2, folder.get(), file.get(), nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr, nullptr)) << r.folder << " + " << r.file;
    }
    // All nine elements, and empty and null ones between.
    Bstr e[] = {B("a"), B(nullptr), B(""), B("b\\"), B("c"), B("\\d"), B(""), B("e"), B("f\\")};
    EXPECT_EQ("a\\b\\c\\d\\e\\f\\", Call(vb::esBuildFileName2, e[0].get(), e[1].get(), e[2].get(), e[3].get(),
                                          e[4].get(), e[5].get(), e[6].get(), e[7].get(), e[8].get()));
}

}  // namespace
