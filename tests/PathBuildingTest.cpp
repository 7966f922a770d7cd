// Closing backslashes and joining path elements, through the exports.
#include "VbDeclares.h"

namespace {

struct OneArgRow {
    const char* input;
    const char* expected;  // kNull: the export left a null BSTR
};

TEST(PathBuilding, AddBackslash) {
    const OneArgRow rows[] = {
        {"C:\\Dir", "C:\\Dir\\"}, {"C:\\Dir\\", "C:\\Dir\\"}, {"", kNull}, {"\\", "\\"},
        {"C:/Dir/", "C:/Dir/\\"},  // a forward slash is an ordinary character
    };
    for (const auto& row : rows) {
        Bstr result;
        EXPECT_EQ(S_OK, vb::esAddBackslash(Bstr(row.input).get(), result.out()));
        EXPECT_EQ(row.expected, result.text()) << row.input;
    }
}

TEST(PathBuilding, RemoveBackslash) {
    const OneArgRow rows[] = {
        {"C:\\Dir\\", "C:\\Dir"}, {"C:\\Dir\\\\", "C:\\Dir\\"}, {"C:\\", "C:\\"}, {"\\", "\\"},
        {"\\\\", "\\"},           {"X\\", "X"},                 {"?:\\", "?:\\"}, {"AB:\\", "AB:"},
        {"C:\\Dir", "C:\\Dir"},   {"", kNull},                  {"C:", "C:"},
    };
    for (const auto& row : rows) {
        Bstr result;
        EXPECT_EQ(S_OK, vb::esRemoveBackslash(Bstr(row.input).get(), result.out()));
        EXPECT_EQ(row.expected, result.text()) << row.input;
    }
}

TEST(PathBuilding, BuildFileName) {
    struct Row {
        const char* folder;
        const char* file;
        VARIANT_BOOL strip;
        const char* expected;
    } rows[] = {
        {"C:\\Dir", "f.txt", 0, "C:\\Dir\\f.txt"},
        {"C:\\Dir\\", "f.txt", 0, "C:\\Dir\\f.txt"},
        {"C:\\Dir\\", "\\f.txt", 0, "C:\\Dir\\\\f.txt"},
        {"", "f.txt", -1, "f.txt"},
        {"C:\\Dir", "", 0, "C:\\Dir\\"},
        {"C:\\Dir", "", -1, "C:\\Dir"},
        {"C:\\", "", -1, "C:\\"},
        {"", "", 0, kNull},
        {"", "", -1, kNull},
        // Any nonzero VARIANT_BOOL is true, not only -1.
        {"C:\\Dir", "", 1, "C:\\Dir"},
        {"C:\\Dir", "", 0x7FFF, "C:\\Dir"},
        {"C:\\Dir", "", static_cast<VARIANT_BOOL>(0x8000), "C:\\Dir"},
    };
    for (const auto& row : rows) {
        Bstr result;
        EXPECT_EQ(S_OK, vb::esBuildFileName(Bstr(row.folder).get(), Bstr(row.file).get(), row.strip, result.out()));
        EXPECT_EQ(row.expected, result.text()) << row.folder << " + " << row.file << " flag " << row.strip;
    }
}

TEST(PathBuilding, BuildFileName2) {
    struct Row {
        std::vector<const char*> elements;  // the rest are empty
        const char* expected;
    } rows[] = {
        {{"C:", "Dir", "f.txt"}, "C:\\Dir\\f.txt"},
        {{"C:\\", "\\Dir\\", "\\f.txt"}, "C:\\Dir\\f.txt"},
        {{"", "Dir", "", "f.txt"}, "Dir\\f.txt"},
        {{"\\\\Server", "Share", "f.txt"}, "\\\\Server\\Share\\f.txt"},
        {{"C:\\", "\\\\x"}, "C:\\\\x"},
        {{"Dir\\", "\\"}, "Dir\\"},
        {{"\\", "Dir"}, "\\Dir"},
        {{"", "\\"}, "\\"},
        {{"a", "b", "c", "d", "e", "f", "g", "h", "i\\"}, "a\\b\\c\\d\\e\\f\\g\\h\\i\\"},
        {{"", "", "", "", "", "", "", "", "last"}, "last"},
        {{}, kNull},
    };
    for (const auto& row : rows) {
        Bstr e[9];
        for (size_t i = 0; i < row.elements.size(); ++i) e[i] = Bstr(row.elements[i]);
        Bstr result;
        EXPECT_EQ(S_OK, vb::esBuildFileName2(e[0].get(), e[1].get(), e[2].get(), e[3].get(), e[4].get(), e[5].get(),
                                             e[6].get(), e[7].get(), e[8].get(), result.out()));
        EXPECT_EQ(row.expected, result.text()) << row.expected;
    }
}

TEST(PathBuilding, NullOutPointerIsStatusOne) {
    Bstr path("C:\\Dir");
    EXPECT_EQ(S_FALSE, vb::esAddBackslash(path.get(), nullptr));
    EXPECT_EQ(S_FALSE, vb::esRemoveBackslash(nullptr, nullptr));
    EXPECT_EQ(S_FALSE, vb::esBuildFileName(path.get(), path.get(), -1, nullptr));
    EXPECT_EQ(S_FALSE, vb::esBuildFileName2(path.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                            nullptr, nullptr));
}

TEST(PathBuilding, NullInputsActAsEmpty) {
    Bstr result(std::string("stale"));
    EXPECT_EQ(S_OK, vb::esBuildFileName(nullptr, Bstr("f.txt").get(), 0, result.out()));
    EXPECT_EQ("f.txt", result.text());
    EXPECT_EQ(S_OK, vb::esBuildFileName2(nullptr, Bstr("a").get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                         Bstr("b").get(), result.out()));
    EXPECT_EQ("a\\b", result.text());
    // An empty answer replaces what the variable held with a null BSTR.
    EXPECT_EQ(S_OK, vb::esAddBackslash(nullptr, result.out()));
    EXPECT_EQ(kNull, result.text());
}

}  // namespace
