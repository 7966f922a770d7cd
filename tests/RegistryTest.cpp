// The registry through the exports. Each test works under a key of its own,
// HKEY_CURRENT_USER\Software\CorvaneSupportKitTests\<random>, which it
// removes on every exit; the App Paths tests use names no program has.
#include <cstring>
#include <random>
#include <vector>

#include "Tools.h"
#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

const LONG kCurrentUser = LONG(0x80000001), kLocalMachine = LONG(0x80000002);
const char kAppPaths[] = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";

Bstr B(const std::string& text) { return Bstr(text); }

class Registry : public ::testing::Test {
  protected:
    std::string key = "Software\\CorvaneSupportKitTests\\" + std::to_string(std::random_device()());
    Bstr sub = B(key);

    void TearDown() override {
        SHDeleteKeyA(HKEY_CURRENT_USER, key.c_str());
        SHDeleteEmptyKeyA(HKEY_CURRENT_USER, "Software\\CorvaneSupportKitTests");
#ifdef CSK_WINSIM
        EXPECT_EQ(0, winsim::openKeys());
#endif
    }

    // A value with exactly these bytes, put there without the library.
    void Raw(const char* name, DWORD type, const void* data, DWORD size) {
        HKEY handle;
        ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                                                 &handle, nullptr));
        EXPECT_EQ(ERROR_SUCCESS, RegSetValueExA(handle, name, 0, type, static_cast<const BYTE*>(data), size));
        RegCloseKey(handle);
    }

    // A value as stored: its type, then its bytes in hexadecimal.
    std::string Stored(const char* name) {
        HKEY handle;
        BYTE data[64];
        DWORD type = 0, size = sizeof data;
        if (RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_QUERY_VALUE, &handle) != ERROR_SUCCESS) return "no key";
        LONG status = RegQueryValueExA(handle, name, nullptr, &type, data, &size);
        RegCloseKey(handle);
        if (status != ERROR_SUCCESS) return "none";
        std::string text = std::to_string(type) + ":";
        for (DWORD i = 0; i < size; ++i) text += "0123456789ABCDEF"[data[i] >> 4], text += "0123456789ABCDEF"[data[i] & 15];
        return text;
    }

    // What each reader answers for a value, as "text/Long/Boolean" with a
    // "+" behind each that was found.
    std::string Read(const char* name, const char* textDefault = "dflt", LONG longDefault = -7,
                     VARIANT_BOOL boolDefault = 0, VARIANT_BOOL expand = 0) {
        Bstr text("stale");
        LONG number = 0;
        VARIANT_BOOL flag = 7, found[3] = {7, 7, 7};
        EXPECT_EQ(S_OK, vb::esReadStringFromRegistry(kCurrentUser, sub.get(), B(name).get(), B(textDefault).get(), expand,
                                                     &found[0], text.out()) |
                            vb::esReadLongFromRegistry(kCurrentUser, sub.get(), B(name).get(), longDefault, &found[1],
                                                       &number) |
                            vb::esReadBoolFromRegistry(kCurrentUser, sub.get(), B(name).get(), boolDefault, &found[2],
                                                       &flag));
        const char* marks[3];
        for (int i = 0; i < 3; ++i) marks[i] = found[i] == VARIANT_TRUE ? "+" : found[i] == 0 ? "" : "?";
        return text.text() + marks[0] + "/" + std::to_string(number) + marks[1] + "/" +
               (flag == VARIANT_TRUE ? "T" : flag == 0 ? "F" : "?") + marks[2];
    }
};

// Every reader on values of every type; a value of another type counts as
// absent, never converted.
TEST_F(Registry, ReadersOnEveryType) {
    // Each row: a value's type and bytes (REG_NONE: no value at all), then
    // what the three readers answer.
    const struct { const char* name; DWORD type; const char* bytes; DWORD size; const char* expected; } rows[] = {
        {"text true", REG_SZ, " true\r\n", 8, " true\r\n+/-7/T+"},
        {"yes", REG_SZ, "Yes", 4, "Yes+/-7/F+"},
        {"five", REG_SZ, "5", 2, "5+/-7/F+"},  // text is never read as a number
        {"unended", REG_SZ, "abc", 3, "abc+/-7/F+"},
        {"empty", REG_SZ, "", 0, "<null>/-7/F"},  // no text, and no number: the default
        {"one", REG_DWORD, "\1\0\0\0", 4, "dflt/1+/T+"},
        {"all", REG_DWORD, "\xFF\xFF\xFF\xFF", 4, "dflt/-1+/F+"},  // only the number 1 is true
        {"big one", REG_DWORD_BIG_ENDIAN, "\0\0\0\1", 4, "dflt/1+/T+"},
        {"short", REG_DWORD, "\1\0\0", 3, "dflt/-7/F"},
        {"binary", REG_BINARY, "\1\0\0\0", 4, "dflt/-7/F"},
        {"", REG_SZ, "default value", 14, "default value+/-7/F+"},  // the empty name: the key's default value
        {"missing", REG_NONE, "", 0, "dflt/-7/F"},
    };
    for (const auto& row : rows) {
        if (row.type != REG_NONE) Raw(row.name, row.type, row.bytes, row.size);
        EXPECT_EQ(row.expected, Read(row.name)) << row.name;
    }
    EXPECT_EQ("dflt/5/T", Read("missing", "dflt", 5, -1)) << "the defaults come back";
    // REG_EXPAND_SZ is expanded on request only; REG_SZ never.
    SetEnvironmentVariableA("CSK_TEST_FOLDER", "C:\\Data");
    Raw("expand", REG_EXPAND_SZ, "%CSK_TEST_FOLDER%\\x", 20);
    Raw("percent", REG_SZ, "%CSK_TEST_FOLDER%", 18);
    EXPECT_EQ("%CSK_TEST_FOLDER%\\x+/-7/F+", Read("expand"));
    EXPECT_EQ("C:\\Data\\x+/-7/F+", Read("expand", "dflt", -7, 0, 1));
    EXPECT_EQ("%CSK_TEST_FOLDER%+/-7/F+", Read("percent", "dflt", -7, 0, 1));
}

// What the writers store, byte for byte.
TEST_F(Registry, WritersStoreExactly) {
    VARIANT_BOOL done = 7;
    const struct { const char* name; HRESULT status; const char* stored; } rows[] = {
        {"bool", vb::esWriteBoolToRegistry(kCurrentUser, sub.get(), B("bool").get(), 1, &done), "1:5472756500"},
        {"empty", vb::esWriteStringToRegistry(kCurrentUser, sub.get(), B("empty").get(), Bstr().get(), 0, nullptr), "1:00"},
        {"expand", vb::esWriteStringToRegistry(kCurrentUser, sub.get(), B("expand").get(), B("%A%").get(), -1, &done),
         "2:25412500"},
        {"long", vb::esWriteLongToRegistry(kCurrentUser, sub.get(), B("long").get(), 0x11223344, 0, &done), "4:44332211"},
        {"big", vb::esWriteLongToRegistry(kCurrentUser, sub.get(), B("big").get(), 0x11223344, 1, &done), "5:11223344"},
    };
    for (const auto& row : rows) EXPECT_EQ(std::make_pair(S_OK, std::string(row.stored)), std::make_pair(row.status, Stored(row.name))) << row.name;
    EXPECT_EQ(VARIANT_TRUE, done);
    EXPECT_EQ("<null>+/-7/F+", Read("empty")) << "stored as one NUL: found, empty";
}

// Keys: an empty subkey is the handle's own key; deletes report through a
// required flag; a handle that is no key reads the default and writes nothing.
TEST_F(Registry, KeysAndHandles) {
    VARIANT_BOOL done = 7;
    vb::esWriteLongToRegistry(kCurrentUser, B(key + "\\Inner").get(), B("v").get(), 5, 0, &done);
    HKEY handle;
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExA(HKEY_CURRENT_USER, (key + "\\Inner").c_str(), 0, KEY_QUERY_VALUE, &handle));
    LONG number = 0;
    EXPECT_EQ(S_OK, vb::esReadLongFromRegistry(LONGFROMHANDLE(handle), Bstr().get(), B("v").get(), 0, nullptr, &number));
    RegCloseKey(handle);
    EXPECT_EQ(5, number);
    const LONG noKey = 0x1234;
    EXPECT_EQ(S_OK, vb::esReadLongFromRegistry(noKey, sub.get(), B("v").get(), 9, nullptr, &number));
    EXPECT_EQ(S_OK, vb::esWriteLongToRegistry(noKey, sub.get(), B("v").get(), 1, 0, &done));
    EXPECT_EQ(std::make_pair(LONG(9), VARIANT_FALSE), std::make_pair(number, done));
    // No value, a key with a subkey kept, a value, the whole key, a key gone already.
    VARIANT_BOOL flags[5] = {7, 7, 7, 7, 7};
    const HRESULT statuses[] = {
        vb::esDeleteValueFromRegistry(kCurrentUser, B(key + "\\Inner").get(), B("missing").get(), &flags[0]),
        vb::esDeleteKeyFromRegistry(kCurrentUser, sub.get(), 0, &flags[1]),
        vb::esDeleteValueFromRegistry(kCurrentUser, B(key + "\\Inner").get(), B("v").get(), &flags[2]),
        vb::esDeleteKeyFromRegistry(kCurrentUser, sub.get(), -1, &flags[3]),
        vb::esDeleteKeyFromRegistry(kCurrentUser, sub.get(), -1, &flags[4])};
    EXPECT_EQ(std::vector<HRESULT>(5, S_OK), std::vector<HRESULT>(statuses, statuses + 5));
    EXPECT_EQ(std::vector<VARIANT_BOOL>({0, 0, -1, -1, 0}), std::vector<VARIANT_BOOL>(flags, flags + 5));
    EXPECT_EQ("no key", Stored("v"));
}

// A null required pointer: status 1, nothing read, written or created.
TEST_F(Registry, NullPointers) {
    VARIANT_BOOL found = 7;
    const HRESULT statuses[] = {
        vb::esReadStringFromRegistry(kCurrentUser, sub.get(), Bstr().get(), Bstr().get(), 0, &found, nullptr),
        vb::esReadLongFromRegistry(kCurrentUser, sub.get(), Bstr().get(), 0, &found, nullptr),
        vb::esReadBoolFromRegistry(kCurrentUser, sub.get(), Bstr().get(), 0, &found, nullptr),
        vb::esDeleteValueFromRegistry(kCurrentUser, sub.get(), Bstr().get(), nullptr),
        vb::esDeleteKeyFromRegistry(kCurrentUser, sub.get(), -1, nullptr),
        vb::esGetFileAppPath(Bstr().get(), nullptr), vb::esRegisterAppPath(nullptr), vb::esUnRegisterAppPath(nullptr)};
    for (HRESULT status : statuses) EXPECT_EQ(S_FALSE, status);
    EXPECT_EQ(7, found);
    EXPECT_EQ("no key", Stored(""));
}

#ifdef CSK_WINSIM
// Only the stand-in can change a value between a reader's two queries: a
// value that grew makes the second fail, one that changed type is absent.
TEST_F(Registry, ValueChangesBetweenTheQueries) {
    Raw("v", REG_SZ, "ab", 3);
    winsim::changeAfterNextQuery(HKEY_CURRENT_USER, key.c_str(), "v", REG_SZ, "abcdef", 7);
    EXPECT_EQ("dflt/-7/F+", Read("v"));
    winsim::changeAfterNextQuery(HKEY_CURRENT_USER, key.c_str(), "v", REG_BINARY, "ab", 2);
    EXPECT_EQ("dflt/-7/F", Read("v"));
    // An expansion that fails gives no text, but the value was found.
    Raw("expand", REG_EXPAND_SZ, "%PATH%", 7);
    winsim::failNext("ExpandEnvironmentStringsA");
    EXPECT_EQ("<null>+/-7/F+", Read("expand", "dflt", -7, 0, 1));
}
#endif

// App Paths in HKEY_LOCAL_MACHINE: this program registers itself; a name is
// answered with the registered path only where a file stands there.
TEST_F(Registry, AppPaths) {
    char program[1025] = {};
    GetModuleFileNameA(nullptr, program, 1024);
    const std::string name = std::strrchr(program, '\\') + 1, gone = "CskNoSuchProgram" + key.substr(key.size() - 6) + ".exe";
#ifdef CSK_WINSIM
    winsim::addFile(program);
#endif
    VARIANT_BOOL done = 7;
    const HRESULT nothingThere = vb::esUnRegisterAppPath(&done);
    EXPECT_EQ(std::make_pair(S_FALSE, VARIANT_FALSE), std::make_pair(nothingThere, done));
    EXPECT_EQ(S_OK, vb::esRegisterAppPath(&done) | vb::esRegisterAppPath(&done));
    EXPECT_EQ(VARIANT_TRUE, done);
    vb::esWriteStringToRegistry(kLocalMachine, B(kAppPaths + gone).get(), Bstr().get(), B("C:\\Nowhere\\x.exe").get(), 0,
                                &done);
    SetEnvironmentVariableA("CSK_TEST_PROGRAM", program);
    vb::esWriteStringToRegistry(kLocalMachine, B(kAppPaths + std::string("CskExpand.exe")).get(), Bstr().get(),
                                B("%CSK_TEST_PROGRAM%").get(), -1, &done);
    const std::pair<const char*, std::string> rows[] = {
        {name.c_str(), program}, {"CskExpand.exe", program}, {gone.c_str(), gone},
        {"CskNotRegistered.exe", "CskNotRegistered.exe"}, {nullptr, kNull},  // the caller's own null comes back
    };
    for (const auto& row : rows) {
        Bstr answer("stale");
        EXPECT_EQ(S_OK, vb::esGetFileAppPath(row.first ? B(row.first).get() : nullptr, answer.out()));
        EXPECT_EQ(row.second, answer.text()) << (row.first ? row.first : "null");
    }
    SHDeleteKeyA(HKEY_LOCAL_MACHINE, (kAppPaths + gone).c_str());
    SHDeleteKeyA(HKEY_LOCAL_MACHINE, (kAppPaths + std::string("CskExpand.exe")).c_str());
    EXPECT_EQ(S_OK, vb::esUnRegisterAppPath(&done));
    EXPECT_EQ(VARIANT_TRUE, done);
}

}  // namespace
