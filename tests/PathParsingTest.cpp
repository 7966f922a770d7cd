// Taking paths apart, through the exports: every shape of path, the
// relative and absolute forms, replaced extensions, and the frame's edges.
#include "VbDeclares.h"

namespace {

// Calls a one-path export and gives back what the caller's variable holds.
std::string Call(const VbFunction<HRESULT, BSTR, BSTR*>& f, const std::string& path) {
    Bstr result;
    EXPECT_EQ(S_OK, f(Bstr(path).get(), result.out())) << f.name;
    return result.text();
}

std::string Name(const std::string& path, VARIANT_BOOL withoutStream) {
    Bstr result;
    EXPECT_EQ(S_OK, vb::esGetFileName(Bstr(path).get(), withoutStream, result.out()));
    return result.text();
}

std::string Two(const VbFunction<HRESULT, BSTR, BSTR, BSTR*>& f, const char* a, const char* b) {
    Bstr first = a ? Bstr(a) : Bstr(), second = b ? Bstr(b) : Bstr(), result;
    EXPECT_EQ(S_OK, f(first.get(), second.get(), result.out())) << f.name;
    return result.text();
}

std::string Call2Replace(const std::string& path) { return Two(vb::esReplaceFileExtension, path.c_str(), "log"); }

// kNull: the worker answered empty, so the variable holds a null BSTR.
TEST(PathParsing, PartsByShapeOfPath) {
    struct Row {
        const char* path;
        const char* root;
        const char* folder;
        const char* nameWithStream;
        const char* nameWithoutStream;
        const char* onlyName;
        const char* extension;
    } rows[] = {
        {"C:\\Dir\\File.txt", "C:\\", "C:\\Dir\\", "File.txt", "File.txt", "File", "txt"},
        {"C:\\Dir\\File.tar.gz", "C:\\", "C:\\Dir\\", "File.tar.gz", "File.tar.gz", "File.tar", "gz"},
        {"C:\\Dir\\", "C:\\", "C:\\", "Dir", "Dir", "Dir", kNull},
        {"C:\\Dir", "C:\\", "C:\\", "Dir", "Dir", "Dir", kNull},
        {"C:\\", "C:\\", kNull, "C:\\", "C:\\", "C:\\", kNull},
        {"C:", kNull, kNull, "C:", "C", "C", kNull},
        {"C:File.txt", kNull, kNull, "C:File.txt", "C", "C", kNull},
        {"\\Dir\\File.txt", "\\", "\\Dir\\", "File.txt", "File.txt", "File", "txt"},
        {"\\", "\\", kNull, "\\", "\\", "\\", kNull},
        {"\\\\Server\\Share\\Dir\\File.txt", "\\\\Server\\Share\\", "\\\\Server\\Share\\Dir\\", "File.txt", "File.txt",
         "File", "txt"},
        {"\\\\Server\\Share", "\\\\Server\\Share\\", "\\\\Server\\", "Share", "Share", "Share", kNull},
        {"Dir\\File.txt", kNull, "Dir\\", "File.txt", "File.txt", "File", "txt"},
        {"File.txt", kNull, kNull, "File.txt", "File.txt", "File", "txt"},
        {".profile", kNull, kNull, ".profile", ".profile", ".profile", kNull},
        {"File.", kNull, kNull, "File.", "File.", "File", kNull},
        {"C:\\Dir\\File.txt:stream", "C:\\", "C:\\Dir\\", "File.txt:stream", "File.txt", "File", "txt"},
        {"C:\\Dir\\File.txt:stream:$DATA", "C:\\", "C:\\Dir\\", "File.txt:stream:$DATA", "File.txt", "File", "txt"},
        {"C:/Dir/File.txt", kNull, kNull, "C:/Dir/File.txt", "C", "C", kNull},
        {"Dir/File.txt", kNull, "Dir/", "File.txt", "File.txt", "File", "txt"},
        // One trailing backslash goes, not two.
        {"C:\\Dir\\\\", "C:\\", "C:\\", "Dir\\", "Dir\\", "Dir\\", kNull},
        // A stream alone leaves no name, and the stream is dropped with it.
        {":stream", kNull, kNull, kNull, kNull, kNull, kNull},
        // "\\?\" is nothing special: the drive's colon starts a stream.
        {"\\\\?\\C:\\Dir\\File.txt", "\\\\?\\C\\", "\\\\?\\", "C:\\Dir\\File.txt", "C", "C", kNull},
        {"C:\\Dir.d\\File", "C:\\", "C:\\Dir.d\\", "File", "File", "File", kNull},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(row.root, Call(vb::esGetFileRoot, row.path));
        EXPECT_EQ(row.folder, Call(vb::esGetFilePath, row.path));
        EXPECT_EQ(row.nameWithStream, Name(row.path, VARIANT_FALSE));
        EXPECT_EQ(row.nameWithoutStream, Name(row.path, VARIANT_TRUE));
        EXPECT_EQ(row.nameWithoutStream, Name(row.path, 1)) << "any nonzero flag is true";
        EXPECT_EQ(row.onlyName, Call(vb::esGetFileOnlyName, row.path));
        EXPECT_EQ(row.extension, Call(vb::esGetFileExtension, row.path));
    }
}

TEST(PathParsing, ReplaceFileExtension) {
    struct Row {
        const char* path;
        const char* extension;  // nullptr: a null BSTR
        const char* expected;
    } rows[] = {
        {"C:\\Dir\\File.txt", "log", "C:\\Dir\\File.log"},
        {"C:\\Dir\\File.txt", "", "C:\\Dir\\File"},
        {"C:\\Dir\\File.txt", nullptr, "C:\\Dir\\File"},
        {"C:\\Dir\\File", "log", "C:\\Dir\\File.log"},
        {"C:\\Dir\\File", "", "C:\\Dir\\File"},
        {"C:\\Dir\\File.tar.gz", "log", "C:\\Dir\\File.tar.log"},
        {"C:\\Dir\\.profile", "log", "C:\\Dir\\.profile.log"},
        {"C:\\Dir\\File.txt:stream", "log", "C:\\Dir\\File.log:stream"},
        {"C:\\Dir\\", "log", "C:\\Dir.log"},
        {"File.txt", ".log", "File..log"},  // the extension is used as given
        {":stream", "log", kNull},
        {"C:\\", "log", "C:\\.log"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.expected, Two(vb::esReplaceFileExtension, row.path, row.extension))
            << row.path << " + " << (row.extension ? row.extension : "<null>");
}

TEST(PathParsing, RelativeAndAbsolute) {
    struct Row {
        const char* file;  // nullptr: a null BSTR
        const char* base;
        const char* relative;
        const char* absolute;
    } rows[] = {
        {"C:\\A\\C\\f.txt", "C:\\A\\B", "..\\C\\f.txt", "C:\\A\\C\\f.txt"},
        {"C:\\A\\f.txt", "C:\\A\\", "f.txt", "C:\\A\\f.txt"},
        {"C:\\A\\.\\f.txt", "C:\\A", "f.txt", "C:\\A\\f.txt"},
        {"D:\\f.txt", "C:\\A", "D:\\f.txt", "D:\\f.txt"},
        {"..\\x\\f.txt", "C:\\A\\B", "..\\x\\f.txt", "C:\\A\\x\\f.txt"},
        {"f.txt", "C:\\A\\", "f.txt", "C:\\A\\f.txt"},
        {"\\f.txt", "C:\\A\\B", "\\f.txt", "C:\\f.txt"},
        // ".." stays in a relative answer; only single dots are cleaned.
        {"C:\\A\\B\\..\\f.txt", "C:\\A", "B\\..\\f.txt", "C:\\A\\f.txt"},
        {"C:\\A\\.\\.\\f.txt", "C:\\X", "..\\A\\f.txt", "C:\\A\\f.txt"},
        {"C:\\Dir\\.", "C:\\", "Dir", "C:\\Dir"},
        {"C:\\A\\.profile", "C:\\A", ".profile", "C:\\A\\.profile"},
        {"\\\\Server\\Share\\Dir\\f.txt", "\\\\Server\\Share", "Dir\\f.txt", "\\\\Server\\Share\\Dir\\f.txt"},
        {"c:\\a\\F.TXT", "C:\\A", "F.TXT", "c:\\a\\F.TXT"},  // the common part is found without regard to case
        // Empty and null strings.
        {"", "", kNull, kNull},
        {nullptr, nullptr, kNull, kNull},
        {"C:\\A\\.\\f.txt", "", "C:\\A\\f.txt", "C:\\A\\f.txt"},
        {"", "C:\\A\\.\\B", kNull, "C:\\A\\B"},
        {nullptr, "C:\\A", kNull, "C:\\A"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.file ? row.file : "<null>") + " from " + (row.base ? row.base : "<null>"));
        EXPECT_EQ(row.relative, Two(vb::esGetRelativeFileName, row.file, row.base));
        EXPECT_EQ(row.absolute, Two(vb::esGetAbsoluteFileName, row.file, row.base));
    }
}

TEST(PathParsing, GuardedExportsAnswerEmptyInputThemselves) {
    const VbFunction<HRESULT, BSTR, BSTR*>* guarded[] = {&vb::esGetFileRoot, &vb::esGetFilePath,
                                                         &vb::esGetFileOnlyName, &vb::esGetFileExtension};
    Bstr inputs[] = {Bstr(), Bstr(""), Bstr::FromUnits(std::u16string(u"\0x", 2))};
    for (const Bstr& input : inputs) {
        for (auto* f : guarded) {
            Bstr result("stale");
            EXPECT_EQ(S_OK, (*f)(input.get(), result.out())) << f->name;
            EXPECT_EQ("", result.text()) << f->name << ": an empty, non-null BSTR";
        }
        Bstr result("stale");
        EXPECT_EQ(S_OK, vb::esGetFileName(input.get(), VARIANT_TRUE, result.out()));
        EXPECT_EQ("", result.text());
        EXPECT_EQ(S_OK, vb::esReplaceFileExtension(input.get(), Bstr("log").get(), result.out()));
        EXPECT_EQ("", result.text());
    }
}

TEST(PathParsing, NullOutPointerIsStatusOne) {
    Bstr path("C:\\Dir\\File.txt");
    for (BSTR input : {static_cast<BSTR>(nullptr), path.get()}) {
        EXPECT_EQ(S_FALSE, vb::esGetFileRoot(input, nullptr));
        EXPECT_EQ(S_FALSE, vb::esGetFilePath(input, nullptr));
        EXPECT_EQ(S_FALSE, vb::esGetFileName(input, VARIANT_TRUE, nullptr));
        EXPECT_EQ(S_FALSE, vb::esGetFileOnlyName(input, nullptr));
        EXPECT_EQ(S_FALSE, vb::esGetFileExtension(input, nullptr));
        EXPECT_EQ(S_FALSE, vb::esGetRelativeFileName(input, input, nullptr));
        EXPECT_EQ(S_FALSE, vb::esGetAbsoluteFileName(input, input, nullptr));
        EXPECT_EQ(S_FALSE, vb::esReplaceFileExtension(input, input, nullptr));
    }
}

// The parsing workers see at most 1024 characters; the stream comes from
// the whole text, and nothing is written past a buffer at any length.
TEST(PathParsing, LongPathsAreCutAtTheBuffer) {
    std::string folder = "C:\\" + std::string(1100, 'd') + "\\";
    EXPECT_EQ(std::string(1024 - 3, 'd'), Name(folder + "File.txt", VARIANT_TRUE));
    EXPECT_EQ(std::string(1024 - 3, 'd') + ":stream", Name(folder + "File.txt:stream", VARIANT_FALSE));
    EXPECT_EQ("C:\\", Call(vb::esGetFileRoot, folder + "File.txt"));
    EXPECT_EQ("C:\\", Call(vb::esGetFilePath, folder + "File.txt"));

    std::string exact = "C:\\" + std::string(1012, 'd') + "\\name.ext";  // 1024 characters
    ASSERT_EQ(1024u, exact.size());
    EXPECT_EQ("name.ext", Name(exact, VARIANT_TRUE));
    EXPECT_EQ("name.ext", Name(exact + "y", VARIANT_TRUE)) << "the 1025th character is cut";
    EXPECT_EQ("ext", Call(vb::esGetFileExtension, exact + "y"));
    // The old name is measured in the cut text but replaced at the end of
    // the whole path: the last 8 characters of "name.exty" give way.
    EXPECT_EQ("C:\\" + std::string(1012, 'd') + "\\nname.log", Call2Replace(exact + "y"));

    for (size_t length : {259u, 260u, 261u, 1023u, 1024u, 1025u, 5000u}) {
        std::string path = "\\\\Server\\Share\\" + std::string(length, 'x');
        EXPECT_EQ("\\\\Server\\Share\\", Call(vb::esGetFileRoot, path)) << length;
        EXPECT_EQ(std::string(length < 1024 - 15 ? length : 1024 - 15, 'x'), Name(path, VARIANT_TRUE)) << length;
        // Too long for the shell's MAX_PATH: the file comes back.
        EXPECT_EQ(length < 240 ? "" : path, Two(vb::esGetAbsoluteFileName, path.c_str(), "C:\\Base")) << length;
    }
}

TEST(PathParsing, TextOutsideAsciiCrossesBothWays) {
    EXPECT_EQ("R\u00e9sum\u00e9", Call(vb::esGetFileOnlyName, "C:\\Caf\u00e9\\R\u00e9sum\u00e9.doc"));
    EXPECT_EQ("C:\\Caf\u00e9\\", Call(vb::esGetFilePath, "C:\\Caf\u00e9\\R\u00e9sum\u00e9.doc"));
}

}  // namespace
