// The system's folders, the current directory, special folders and new
// temporary files, through the exports.
#include <cstring>
#include <random>
#include <vector>

#include "Tools.h"
#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

Bstr B(const std::string& text) { return Bstr(text); }

// A text export without input, into a variable that holds text; with no
// variable it must be status 1.
std::string Text(const char* name) {
    Bstr answer("stale");
    EXPECT_EQ(S_OK, (VbFunction<HRESULT, BSTR*>{name}(answer.out()))) << name;
    EXPECT_EQ(S_FALSE, (VbFunction<HRESULT, BSTR*>{name}(nullptr))) << name;
    return answer.text();
}

// What the platform itself gives, with one closing backslash.
template <class Call>
std::string Platform(Call call) {
    char buffer[1024] = {};
    call(buffer);
    std::string text = buffer;
    return text.empty() || text.back() == '\\' ? text : text + "\\";
}

void MakeDirectory(const std::string& path) {
#ifdef CSK_WINSIM
    winsim::addDirectory(path.c_str());
#else
    CreateDirectoryA(path.c_str(), nullptr);
#endif
}

TEST(Folders, SystemFoldersEndInOneBackslash) {
#ifdef CSK_WINSIM
    winsim::reset();
#endif
    EXPECT_EQ(Platform([](char* b) { GetWindowsDirectoryA(b, 1024); }), Text("esGetWindowsPath"));
    EXPECT_EQ(Platform([](char* b) { GetSystemDirectoryA(b, 1024); }), Text("esGetSystemPath"));
    EXPECT_EQ(Platform([](char* b) { GetTempPathA(1024, b); }), Text("esGetTempPath"));
    EXPECT_EQ(Platform([](char* b) { GetCurrentDirectoryA(1024, b); }), Text("esGetCurrentDirectory"));
#ifdef CSK_WINSIM  // only the stand-in can put the Windows folder at a root, or refuse it
    winsim::setSystemFolders("C:\\", "C:\\Windows\\System32", "C:\\Temp\\");
    EXPECT_EQ("C:\\", Text("esGetWindowsPath"));
    winsim::failNext("GetSystemDirectoryA");
    EXPECT_EQ(kNull, Text("esGetSystemPath"));
#endif
}

// A change of directory records it in the per-drive variable ("=C:"); a
// failed one changes nothing and is status 1.
TEST(Folders, SetCurrentDirectory) {
#ifdef CSK_WINSIM
    winsim::reset();
#endif
    const std::string was = Text("esGetCurrentDirectory"), temp = Text("esGetTempPath");
    const std::string folder = temp + "CskFolder" + std::to_string(std::random_device()() % 100000);
    MakeDirectory(folder);
    const std::string variable = "=" + temp.substr(0, 2);
    auto changeTo = [&](const std::string& path) {
        VARIANT_BOOL done = 7;
        HRESULT status = vb::esSetCurrentDirectory(B(path).get(), &done);
        char value[1024] = {};
        GetEnvironmentVariableA(variable.c_str(), value, 1024);
        return std::to_string(status) + " " + std::to_string(done) + " " + Text("esGetCurrentDirectory") + " " + value;
    };
    EXPECT_EQ("0 -1 " + folder + "\\ " + folder + "\\", changeTo(folder));
    EXPECT_EQ("1 0 " + folder + "\\ " + folder + "\\", changeTo(folder + "\\Nothing"));
    EXPECT_EQ("0 -1 " + temp + " " + temp, changeTo(".."));
    EXPECT_EQ(S_FALSE, vb::esSetCurrentDirectory(B(folder).get(), nullptr));
    EXPECT_EQ(temp, Text("esGetCurrentDirectory"));
    changeTo(was);
#ifdef _WIN32
    RemoveDirectoryA(folder.c_str());
#endif
}

#ifdef CSK_WINSIM
// The eight sources, each answering alone (shell: nullptr, the shell does
// not know the number; "", a virtual folder). Before a registry stage, every
// earlier registry location holds the value empty, which does not end the
// walk.
TEST(Folders, SpecialFolderSources) {
    const char* const kKeys[] = {
        "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
        "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders",
        "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
        "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders",
        "Software\\Microsoft\\Windows\\CurrentVersion"};
    // The registry value of 26 is "AppData", of 0 and 16 "Desktop", of 38 "ProgramFilesDir".
    const struct { LONG csidl; const char* shell; int stage; const char *value, *variable, *expected; } rows[] = {
        {26, "C:\\Users\\U\\AppData", -1, "", "", "C:\\Users\\U\\AppData\\"},
        {26, "", 0, "C:\\A0", "", "C:\\A0\\"},
        {26, nullptr, 1, "%CSK_ROOT%\\A1", "", "C:\\Root\\A1\\"},  // REG_EXPAND_SZ arrives expanded
        {26, nullptr, 2, "C:\\A2\\", "", "C:\\A2\\"},  // one backslash, not two
        {26, nullptr, 3, "C:\\A3", "", "C:\\A3\\"},
        {0, nullptr, 0, "C:\\Desk", "", "C:\\Desk\\"}, {16, nullptr, 0, "C:\\Desk", "", "C:\\Desk\\"},
        {38, nullptr, 4, "C:\\PF", "ProgramFiles", "C:\\PF\\"},  // the registry before the environment
        {38, nullptr, -1, "", "ProgramFiles", "C:\\Env\\"},
        {44, nullptr, -1, "", "CommonProgramFiles(x86)", "C:\\Env\\"},
        {40, nullptr, -1, "", "USERPROFILE", "C:\\Env\\"},
        {36, nullptr, -1, "", "", "C:\\Windows\\"}, {37, nullptr, -1, "", "", "C:\\Windows\\System32\\"},
        {3, nullptr, -1, "", "", kNull}, {0x8000 | 26, nullptr, 0, "C:\\A0", "", kNull},  // a flag bit matches no row
        {0x8000 | 26, "C:\\Flagged", -1, "", "", "C:\\Flagged\\"},
    };
    SetEnvironmentVariableA("CSK_ROOT", "C:\\Root");
    for (const auto& r : rows) {
        winsim::reset();
        if (r.shell) winsim::setSpecialFolder(r.csidl, *r.shell ? r.shell : nullptr);
        const char* name = (r.csidl & 0xFF) == 26 ? "AppData" : r.csidl == 38 ? "ProgramFilesDir" : "Desktop";
        for (int stage = 0; stage <= r.stage; ++stage) {
            const std::string value = stage == r.stage ? r.value : "";
            winsim::setRegistryValue(stage < 2 ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE, kKeys[stage], name,
                                     stage == 1 ? REG_EXPAND_SZ : REG_SZ, value.c_str(), DWORD(value.size() + 1));
        }
        if (*r.variable) SetEnvironmentVariableA(r.variable, "C:\\Env");
        Bstr answer("stale");
        EXPECT_EQ(S_OK, vb::esGetSpecialFolder(r.csidl, answer.out()));
        EXPECT_EQ(r.expected, answer.text()) << r.csidl << " from stage " << r.stage;
        if (*r.variable) SetEnvironmentVariableA(r.variable, nullptr);
        EXPECT_EQ(0, winsim::liveItemIdLists() + winsim::openKeys());
    }
}

// The caller's list is freed only if it has a path and the caller asks.
TEST(Folders, PathFromItemIdList) {
    winsim::reset();
    const struct { const char* path; VARIANT_BOOL free; const char* expected; int alive; } rows[] = {
        {"C:\\Data", -1, "C:\\Data\\", 0}, {"C:\\Data\\", 0, "C:\\Data\\", 1}, {nullptr, -1, "", 1}};
    for (const auto& r : rows) {
        LPITEMIDLIST list = winsim::makeItemIdList(r.path);
        Bstr answer("stale");
        EXPECT_EQ(S_FALSE, vb::esGetPathFromPIDL(LONGFROMHANDLE(list), r.free, nullptr));
        EXPECT_EQ(S_OK, vb::esGetPathFromPIDL(LONGFROMHANDLE(list), r.free, answer.out()));
        EXPECT_EQ(std::make_pair(std::string(r.expected), r.alive), std::make_pair(answer.text(), winsim::liveItemIdLists()));
        if (r.alive) CoTaskMemFree(list);
    }
}
#else
// The shell's own answer wherever it has one; the chain's later sources
// where it has none, each ending in one backslash.
TEST(Folders, SpecialFoldersAsTheShellAnswers) {
    for (LONG csidl = 0; csidl <= 59; ++csidl) {
        LPITEMIDLIST list = nullptr;
        char path[MAX_PATH] = {};
        if (SHGetSpecialFolderLocation(nullptr, int(csidl), &list) == S_OK) SHGetPathFromIDListA(list, path), CoTaskMemFree(list);
        Bstr answer("stale");
        EXPECT_EQ(S_OK, vb::esGetSpecialFolder(csidl, answer.out()));
        const std::string text = answer.isNull() ? "" : answer.text();
        if (*path) EXPECT_EQ(Platform([&](char* b) { strcpy(b, path); }), text) << csidl;
        else EXPECT_TRUE(text.empty() || (text.back() == '\\' && text[text.size() - 2] != '\\')) << csidl << " " << text;
    }
    Bstr none("stale");
    EXPECT_EQ(S_OK, vb::esGetSpecialFolder(3, none.out()));
    EXPECT_TRUE(none.isNull()) << "the Control Panel has no path";
    // A list with a path, freed by the library; a virtual one kept for the caller.
    LPITEMIDLIST appData = nullptr, drives = nullptr;
    ASSERT_EQ(S_OK, SHGetSpecialFolderLocation(nullptr, 26, &appData));
    ASSERT_EQ(S_OK, SHGetSpecialFolderLocation(nullptr, 17, &drives));
    Bstr fromList("stale"), fromVirtual("stale"), appDataPath("stale");
    EXPECT_EQ(S_OK, vb::esGetPathFromPIDL(LONGFROMHANDLE(appData), -1, fromList.out()) |
                        vb::esGetPathFromPIDL(LONGFROMHANDLE(drives), -1, fromVirtual.out()) |
                        vb::esGetSpecialFolder(26, appDataPath.out()));
    EXPECT_EQ(std::make_pair(appDataPath.text(), std::string("")), std::make_pair(fromList.text(), fromVirtual.text()));
    CoTaskMemFree(drives);
}
#endif

// A new empty file named by an upper-case GUID, in the folder given or the
// temporary folder; nothing is made where the folder does not exist.
TEST(Folders, TemporaryFiles) {
#ifdef CSK_WINSIM
    winsim::reset();
#endif
    const std::string temp = Text("esGetTempPath");
    const std::string folder = temp.substr(0, temp.size() - 1);
    const struct { std::string folder, extension, head, tail; } rows[] = {
        {folder, "tmp", temp, ".tmp"}, {temp, "", temp, ""}, {"", ".x", temp, "..x"},
        {folder + "\\Nothing", "tmp", kNull, ""},
    };
    std::vector<std::string> made;
    for (const auto& r : rows) {
        Bstr answer("stale");
        EXPECT_EQ(S_OK, vb::esGetTempFileName2(B(r.folder).get(), B(r.extension).get(), answer.out()));
        const std::string name = answer.text();
        if (r.head == kNull) {
            EXPECT_EQ(kNull, name);
            continue;
        }
        made.push_back(name);
        const std::string guid = name.substr(r.head.size(), 36);
        EXPECT_EQ(r.head + guid + r.tail, name);
        EXPECT_EQ(std::string::npos, guid.find_first_not_of("0123456789ABCDEF-")) << guid;
        double size = -1;
        vb::esGetFileSizeEx(B(name).get(), &size);
        EXPECT_EQ(0.0, size) << name;
    }
    EXPECT_NE(made[0].substr(0, 40), made[1].substr(0, 40));
#ifdef CSK_WINSIM  // only the stand-in can refuse to make the file
    winsim::failNext("CreateFileA");
    Bstr refused("stale");
    EXPECT_EQ(S_OK, vb::esGetTempFileName2(B(folder).get(), Bstr().get(), refused.out()));
    EXPECT_TRUE(refused.isNull());
#else
    for (const std::string& name : made) DeleteFileA(name.c_str());
#endif
}

}  // namespace
