// File system queries through the exports, on drive T: in both builds: in
// winsim a volume of its own, under Wine a folder of the run mapped as T:
// (scripts/wine-env.sh empties it at every start and stop, and makes there
// what Wine cannot: the folder link LinkDir, the label and serial number).
#include <cstdint>
#include <string>
#include <vector>

#include "FunctionsSupport.h"
#include "PathAndFileNameModifiers.h"
#include "Tools.h"
#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

const uint64_t k2G = 1ull << 31, k4G = 1ull << 32;

void MakeDirectory(const std::string& path) {
#ifdef CSK_WINSIM
    winsim::addDirectory(path.c_str());
#else
    CreateDirectoryA(path.c_str(), nullptr);
#endif
}

// A file of size bytes, sparse where the host can make it so.
void MakeFile(const std::string& path, uint64_t size = 0) {
#ifdef CSK_WINSIM
    winsim::addFile(path.c_str(), size);
#else
    HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    LARGE_INTEGER end;
    end.QuadPart = static_cast<LONGLONG>(size);
    if (size) SetFilePointerEx(file, end, nullptr, FILE_BEGIN), SetEndOfFile(file);
    CloseHandle(file);
#endif
}

class FileSystem : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
#ifdef CSK_WINSIM
        winsim::reset();
        winsim::addVolume("T:", "MyLabel", 0x0A2B03C4, 255, 0x0000000A, "NTFS");
        winsim::addDirectory("T:\\LinkDir", FILE_ATTRIBUTE_REPARSE_POINT);
        winsim::addFile("T:\\LinkFile", 0, FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_REPARSE_POINT);
        winsim::addFile("T:\\Held.txt");
        winsim::refuseAttributes("T:\\Held.txt", ERROR_SHARING_VIOLATION);
        winsim::addFile("T:\\Secret.txt");
        winsim::refuseAttributes("T:\\Secret.txt", ERROR_ACCESS_DENIED);
        winsim::setCurrentDirectory("T:\\");
#else
        SetCurrentDirectoryA("T:\\");
#endif
        MakeDirectory("T:\\Dir");
        MakeFile("T:\\Dir\\Readme.txt", 5);
        MakeDirectory("T:\\Program Files Long");
        MakeFile("T:\\Program Files Long\\Read Me.txt");
        MakeFile("T:\\Max.bin", k2G - 1), MakeFile("T:\\Big2G.bin", k2G), MakeFile("T:\\Big4G.bin", k4G);
        MakeFile("T:\\Empty.txt");
    }
};

Bstr B(const char* text) { return text ? Bstr(text) : Bstr(); }

template <class T>
HRESULT Ask(const char* name, BSTR path, T* answer) {
    return VbFunction<HRESULT, BSTR, T*>{name}(path, answer);
}

// The twelve tests in one string of 1 and 0, in this order, and the word.
const char* const kTests[] = {"esIsFileOrDirectoryExist", "esIsFileExist", "esIsDirectoryExist", "esIsDirectory",
                              "esIsFile", "esIsJunction", "esIsSymlink", "esIsSymlinkToFile", "esIsSymlinkToDirectory",
                              "esIsUnixFileExist", "esIsUnixDirectoryExist", "esIsUnixFileOrDirectoryExist"};

std::string Tests(const char* path) {
    std::string answers;
    for (const char* test : kTests) {
        VARIANT_BOOL answer = 7;
        EXPECT_EQ(S_OK, Ask(test, B(path).get(), &answer)) << test;
        answers += answer == VARIANT_TRUE ? '1' : answer == VARIANT_FALSE ? '0' : '?';
    }
    LONG word = 7;
    EXPECT_EQ(S_OK, vb::esGetFileAttributes(B(path).get(), &word));
    return answers + " " + std::to_string(word);
}

TEST_F(FileSystem, WhatAPathNames) {
    const struct { const char *path, *expected; } rows[] = {
        {"T:\\Dir\\Readme.txt", "110010000101 32"},
        {"t:\\dir\\README.TXT", "110010000000 32"},  // a case-sensitive file system would not find it
        {"T:\\Dir", "101100000011 16"},
        {"T:\\Dir\\", "101100000011 16"},  // the trailing backslash goes to the platform as it is
        {"T:\\LinkDir", "101101101011 1040"},  // a reparse point of any kind counts
        {"T:\\Nothing", "000000000000 -1"},
        {"T:\\D*r", "000000000000 -1"},
        {"T:\\Dir\\Readme.tx?", "000000000000 -1"},
        {"", "000000000000 -1"},
        {nullptr, "000000000000 -1"},
#ifdef CSK_WINSIM  // Wine shows a link to a file as the file, and opens no file exclusively against a look
        {"T:\\LinkFile", "110010110101 1056"},
        {"T:\\Held.txt", "110010000101 32"},  // from the directory entry
        {"T:\\Held.txt\\", "110010000000 32"},
        {"T:\\Secret.txt", "000000000000 -1"},
#endif
    };
    for (const auto& row : rows) EXPECT_EQ(row.expected, Tests(row.path)) << (row.path ? row.path : "null");
#ifdef CSK_WINSIM
    const int searches = winsim::calls("FindFirstFileA"), looks = winsim::calls("GetFileAttributesA");
    Tests("T:\\Secret.txt"), Tests("T:\\*");
    EXPECT_EQ(searches, winsim::calls("FindFirstFileA")) << "no search after a refusal other than sharing";
    EXPECT_EQ(looks + 13, winsim::calls("GetFileAttributesA")) << "no look at all for a wildcard";
    EXPECT_EQ(0, winsim::openSearches());
#endif
}

// A text export with a path (or handle) and a flag, into a variable that
// holds text; with no variable it must be status 1.
std::string Call3(const char* name, const char* path, VARIANT_BOOL flag) {
    const VbFunction<HRESULT, BSTR, VARIANT_BOOL, BSTR*> f{name};
    Bstr answer("stale");
    EXPECT_EQ(S_FALSE, f(B(path).get(), flag, nullptr)) << name;
    EXPECT_EQ(S_OK, f(B(path).get(), flag, answer.out())) << name;
    return answer.text();
}

std::string ModuleFileName(LONG module, VARIANT_BOOL fix) {
    Bstr answer("stale");
    EXPECT_EQ(S_OK, (VbFunction<HRESULT, LONG, VARIANT_BOOL, BSTR*>{"esGetModuleFileName"}(module, fix, answer.out())));
    return answer.text();
}

// Unguarded: null and empty reach the work as empty text, which the
// platform refuses, so that even the fall-back answer is empty.
TEST_F(FileSystem, OtherSpellings) {
    const std::string shortForm = Call3("esGetShortFileName", "T:\\Program Files Long\\Read Me.txt", 0);
    EXPECT_EQ(std::string::npos, shortForm.find(' ')) << shortForm;
    const struct { const char *name, *path; VARIANT_BOOL flag; const char* expected; } rows[] = {
        {"esGetFullFileName", "Dir\\readme.TXT", 0, "T:\\Dir\\readme.TXT"},
        {"esGetFullFileName", "Dir\\readme.TXT", -1, "T:\\Dir\\Readme.txt"},
        {"esGetFullFileName", "T:\\PROGRAM FILES LONG\\.\\read me.txt", 1, "T:\\Program Files Long\\Read Me.txt"},
        {"esGetFullFileName", "Nothing\\..\\nothing.TXT", 1, "T:\\nothing.TXT"},  // the case fix falls back
        {"esGetFullFileName", "", 1, kNull},
        {"esGetLongFileName", shortForm.c_str(), 0, "T:\\Program Files Long\\Read Me.txt"},
        {"esGetLongFileName", "T:\\dir\\", 0, "T:\\Dir\\"},
        {"esGetLongFileName", "T:\\Nothing", 0, "T:\\Nothing"},
        {"esGetLongFileName", "T:\\Nothing", 1, kNull},
        {"esGetLongFileName", nullptr, 0, kNull},
        {"esGetShortFileName", "T:\\Nothing", 0, "T:\\Nothing"},
        {"esGetShortFileName", "T:\\Nothing", 1, kNull},
        {"esGetShortFileName", "", 0, kNull},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.expected, Call3(row.name, row.path, row.flag)) << row.name << " " << (row.path ? row.path : "");
#ifdef CSK_WINSIM  // only the stand-in can take GetLongPathNameA away: then the library's own walk answers
    winsim::setMissing("GetLongPathNameA");
    {
        FreshLibrary fresh;
        EXPECT_EQ("T:\\Program Files Long\\Read Me.txt", Call3("esGetLongFileName", shortForm.c_str(), 0));
        EXPECT_EQ("t:\\Dir\\Readme.txt", Call3("esGetFullFileName", "t:\\DIR\\readme.TXT", 1));
    }
    winsim::setMissing("GetLongPathNameA", false);
#endif
    char program[1025] = {};
    GetModuleFileNameA(nullptr, program, 1024);
    EXPECT_EQ(std::make_tuple(std::string(program), std::string(program), std::string(kNull)),
              std::make_tuple(ModuleFileName(0, 0), ModuleFileName(0, -1), ModuleFileName(0x1234, 0)));
}

// The library's own walk against the platform's GetLongPathNameA over a
// generated tree: the same text for every spelling of every path; asked for
// the size, the walk counts no terminator.
TEST_F(FileSystem, LongNameWalkAgreesWithThePlatform) {
    typedef DWORD(WINAPI * LongPathName)(LPCSTR, LPSTR, DWORD);
    const auto platform = reinterpret_cast<LongPathName>(
        reinterpret_cast<void (*)()>(GetProcAddress(LoadLibraryA("Kernel32.DLL"), "GetLongPathNameA")));
    ASSERT_NE(nullptr, platform);
    const char* const names[] = {"Mixed Case", "with.dots.in", "UPPER", "lower", "x",
                                 "a long folder name that goes on and on and on and on and on"};
    std::vector<std::pair<std::string, bool>> items;  // the path, and whether it is a folder
    MakeDirectory("T:\\Walk");
    for (const char* a : names) {
        const std::string folder = std::string("T:\\Walk\\") + a;
        MakeDirectory(folder);
        items.push_back({folder, true});
        for (const char* b : names) {
            MakeDirectory(folder + "\\" + b);
            MakeFile(folder + "\\" + b + "\\File.Name.TXT");
            items.push_back({folder + "\\" + b, true});
            items.push_back({folder + "\\" + b + "\\File.Name.TXT", false});
        }
    }
    int compared = 0, differences = 0;
    for (const auto& item : items) {
        const std::string& p = item.first;
        std::string shortForm(1024, '\0');
        shortForm.resize(GetShortPathNameA(p.c_str(), &shortForm[0], 1024));
        const size_t cut = p.rfind('\\');
        const std::string head = p.substr(0, cut), name = p.substr(cut + 1);
        // A closing backslash is a folder's only: the walk first asks whether the path exists.
        for (const std::string& path : {p, shortForm, item.second ? p + "\\" : p, head + "\\\\" + name,
                                        head + "\\.\\" + name, p + "\\..\\x", p + "\\nope", p.substr(2)}) {
            char mine[1100] = {}, theirs[1100] = {};
            const LONG length = PROXY_GETLONGPATHNAMEA(path.c_str(), mine, 1050);
            const DWORD platformLength = platform(path.c_str(), theirs, 1050);
            const bool same = std::string(mine) == theirs && DWORD(length) == platformLength &&
                              PROXY_GETLONGPATHNAMEA(path.c_str(), nullptr, 0) + (length ? 1 : 0) ==
                                  LONG(platform(path.c_str(), nullptr, 0));
            ++compared;
            if (!same && ++differences <= 10) ADD_FAILURE() << path << ": walk \"" << mine << "\", platform \"" << theirs << "\"";
        }
    }
    EXPECT_EQ(0, differences) << "of " << compared << " paths";
    // The walk looks every element up; the platform only those that may be
    // short names, so there a long name typed in another case stays so.
    char mine[300] = {};
    EXPECT_EQ(18, PROXY_GETLONGPATHNAMEA("T:\\WALK\\MIXED CASE", mine, 290));
    EXPECT_STREQ("T:\\Walk\\Mixed Case", mine);
}

// Sizes from the directory entry: capped in a Long, whole in a Double.
TEST_F(FileSystem, Sizes) {
    const struct { const char* path; LONG size; double sizeEx; } rows[] = {
        {"T:\\Max.bin", 0x7FFFFFFF, 2147483647.0}, {"T:\\Big2G.bin", 0x7FFFFFFF, 2147483648.0},
        {"T:\\Big4G.bin", 0x7FFFFFFF, 4294967296.0}, {"T:\\Dir\\Readme.txt\\", 5, 5.0},  // one backslash goes
        {"T:\\Empty.txt", 0, 0.0}, {"T:\\Nothing", 0, 0.0}, {"T:\\*.bin", 0, 0.0}, {"T:\\", 0, 0.0}, {"", 0, 0.0},
    };
    for (const auto& row : rows) {
        LONG size = 7;
        double sizeEx = 7;
        EXPECT_EQ(S_OK, vb::esGetFileSize(B(row.path).get(), &size) | vb::esGetFileSizeEx(B(row.path).get(), &sizeEx));
        EXPECT_EQ(std::make_pair(row.size, row.sizeEx), std::make_pair(size, sizeEx)) << row.path;
    }
}

// The disk figures are the platform's, whole; -1.0 where it has none.
TEST_F(FileSystem, DiskSpace) {
    typedef BOOL(WINAPI * FreeSpace)(LPCSTR, ULARGE_INTEGER*, ULARGE_INTEGER*, ULARGE_INTEGER*);
    const auto platform = reinterpret_cast<FreeSpace>(
        reinterpret_cast<void (*)()>(GetProcAddress(LoadLibraryA("Kernel32.DLL"), "GetDiskFreeSpaceExA")));
    ULARGE_INTEGER available, total, free;
    ASSERT_TRUE(platform("T:\\Dir", &available, &total, &free));
    double figures[3] = {7, 7, 7}, one = 7;
    VARIANT_BOOL ok = 7;
    EXPECT_EQ(S_OK, vb::esGetDiskSpace(B("T:\\Dir").get(), &figures[0], &figures[1], &figures[2], &ok));
    EXPECT_EQ(S_OK, vb::esGetDiskSpaceTotal(B("T:\\Dir").get(), &one));
    EXPECT_EQ(std::make_tuple(double(total.QuadPart), double(available.QuadPart), VARIANT_TRUE, double(total.QuadPart)),
              std::make_tuple(figures[0], figures[2], ok, one));
    EXPECT_EQ(S_OK, vb::esGetDiskSpace(B("Q:\\").get(), &figures[0], nullptr, &figures[2], &ok));
    EXPECT_EQ(S_OK, vb::esGetDiskSpaceFree(B("Q:\\").get(), &figures[1]));
    EXPECT_EQ(std::make_tuple(-1.0, -1.0, -1.0, VARIANT_FALSE), std::make_tuple(figures[0], figures[1], figures[2], ok));
    EXPECT_EQ(S_OK, vb::esGetDiskSpace(B("T:\\").get(), nullptr, nullptr, nullptr, &ok));
    EXPECT_EQ(VARIANT_TRUE, ok);
#ifdef CSK_WINSIM  // only the stand-in can take GetDiskFreeSpaceExA away or set the figures
    winsim::setDiskSpace("T:", (1ull << 63) + 4096, 5ull << 32, 3ull << 32, 8, 512);
    const struct { const char* missing; int refusals; double total, free, available; } hosts[] = {
        {"", 0, 9223372036854779904.0, 21474836480.0, 12884901888.0},  // the top bit stays a size
        {"GetDiskFreeSpaceExA", 0, 4096.0, 0.0, 0.0},  // 32-bit products wrap; available is free
        {"", 1, 4096.0, 0.0, 0.0},  // the function is there but refuses
    };
    for (const auto& h : hosts) {
        winsim::setMissing(h.missing);
        winsim::failNext("GetDiskFreeSpaceExA", h.refusals);
        FreshLibrary fresh;
        EXPECT_EQ(S_OK, vb::esGetDiskSpace(B("T:\\").get(), &figures[0], &figures[1], &figures[2], &ok));
        EXPECT_EQ(std::make_tuple(h.total, h.free, h.available, VARIANT_TRUE),
                  std::make_tuple(figures[0], figures[1], figures[2], ok)) << h.missing << h.refusals;
        winsim::setMissing(h.missing, false);
    }
#endif
}

// One platform call per export with the root as given.
TEST_F(FileSystem, Volumes) {
    DWORD serial, longest, flags;
    char fileSystem[64];
    ASSERT_TRUE(GetVolumeInformationA("T:\\", nullptr, 0, &serial, &longest, &flags, fileSystem, 64));
    Bstr label("stale"), name("stale");
    LONG numbers[3] = {7, 7, 7};
    EXPECT_EQ(S_OK, vb::esGetVolumeName(B("T:\\").get(), label.out()) |
                        vb::esGetVolumeFileSystemName(B("T:\\").get(), name.out()) |
                        vb::esGetVolumeSerialNumber(B("T:\\").get(), &numbers[0]) |
                        vb::esGetVolumeMaximumComponentLength(B("T:\\").get(), &numbers[1]) |
                        vb::esGetVolumeFileSystemFlags(B("T:\\").get(), &numbers[2]));
    EXPECT_EQ(std::make_tuple(std::string("MyLabel"), std::string(fileSystem), LONG(0x0A2B03C4), LONG(longest), LONG(flags)),
              std::make_tuple(label.text(), name.text(), numbers[0], numbers[1], numbers[2]));
    // A root that is no root: empty, non-null text with status 0; 0 with status 1.
    EXPECT_EQ(S_OK, vb::esGetVolumeName(B("T:\\Dir\\").get(), label.out()));
    EXPECT_EQ(S_FALSE, vb::esGetVolumeSerialNumber(B("T:\\Dir\\").get(), &numbers[0]));
    EXPECT_EQ(std::make_pair(std::string(""), LONG(0)), std::make_pair(label.text(), numbers[0]));
    const std::pair<LONG, const char*> serials[] = {
        {0, "0000-0000"}, {-1, "FFFF-FFFF"}, {0x0A2B03C4, "0A2B-03C4"}, {LONG(0x80000000u), "8000-0000"}};
    for (const auto& s : serials) {
        Bstr text;
        EXPECT_EQ(S_OK, vb::esFormatVolumeSerialNumber(s.first, text.out()));
        EXPECT_EQ(s.second, text.text());
    }
}

// A null answer pointer is status 1 for every export of the family.
TEST_F(FileSystem, NullAnswerPointers) {
    Bstr path("T:\\Dir");
    for (const char* test : kTests) EXPECT_EQ(S_FALSE, Ask<VARIANT_BOOL>(test, path.get(), nullptr)) << test;
    for (const char* name : {"esGetFileAttributes", "esGetFileSize", "esGetVolumeSerialNumber",
                             "esGetVolumeMaximumComponentLength", "esGetVolumeFileSystemFlags"})
        EXPECT_EQ(S_FALSE, Ask<LONG>(name, path.get(), nullptr)) << name;
    for (const char* name : {"esGetFileSizeEx", "esGetDiskSpaceTotal", "esGetDiskSpaceFree", "esGetDiskSpaceAvailable"})
        EXPECT_EQ(S_FALSE, Ask<double>(name, path.get(), nullptr)) << name;
    for (const char* name : {"esGetVolumeName", "esGetVolumeFileSystemName"})
        EXPECT_EQ(S_FALSE, Ask<BSTR>(name, path.get(), nullptr)) << name;
    double figure = 7;
    EXPECT_EQ(S_FALSE, vb::esGetDiskSpace(path.get(), &figure, &figure, &figure, nullptr));
    EXPECT_EQ(7.0, figure);
}

}  // namespace
