// The registry and the system's folders through the exports, in one table.
// The registry rows work under HKEY_CURRENT_USER\Software\CorvaneTestRegistry,
// removed before and after. What Wine would not do is staged on the library's
// imports: a refused write, a second query of a value that fails, the sources
// of the special-folder search, a Windows folder at a drive root.
#include <algorithm>
#include <deque>

#include "Detour.h"
#include "VbDeclares.h"

namespace {

const LONG kHkcu = LONG(0x80000001);
const char kKey[] = "Software\\CorvaneTestRegistry", kInner[] = "Software\\CorvaneTestRegistry\\Inner";
const std::string kVersion = "Software\\Microsoft\\Windows\\CurrentVersion", kStages[5] = {"U " + kVersion + "\\Explorer\\Shell Folders",
    "U " + kVersion + "\\Explorer\\User Shell Folders", "M " + kVersion + "\\Explorer\\Shell Folders", "M " + kVersion + "\\Explorer\\User Shell Folders", "M " + kVersion};
BSTR B(const char* text) { static std::deque<Bstr> kept; return text ? kept.emplace_back(text).get() : nullptr; }
template <class F> std::string Detoured(const char* name, F fake, const std::function<std::string()>& row) { Detour d(name, fake); return row(); }
std::string Log(const std::string& answer) { const std::string calls = g_calls; return g_calls.clear(), answer + calls; }
std::string Slash(const std::string& path) { return path.empty() || path.back() == '\\' ? path : path + "\\"; }
std::string Env(const char* name) { char value[1024] = ""; return GetEnvironmentVariableA(name, value, sizeof value), value; }

// "status flag" of an export that answers through a VARIANT_BOOL; "status
// text" of one that answers text.
template <class F, class... In> std::string V(const F& f, In... in) { VARIANT_BOOL b = 7; HRESULT s = f(in..., &b); return std::to_string(s) + " " + std::to_string(b); }
template <class F, class... In> std::string T(const F& f, In... in) { Bstr t("stale"); HRESULT s = f(in..., t.out()); return std::to_string(s) + " " + t.text(); }

// What the three readers answer for a value (first put there with exactly
// the bytes given, without the library), text/Long/Boolean (defaults "dflt",
// -7, true), each with "+" when found.
std::string Read(const char* name, VARIANT_BOOL expand = 0, DWORD type = 0, const char* data = nullptr, DWORD size = 0) {
    VARIANT_BOOL found[4] = {7, 7, 7, 7};  // and the Boolean
    LONG number = 0;
    if (data) RegSetKeyValueA(HKEY_CURRENT_USER, kKey, name, type, data, size);
    const std::string text = T(vb::esReadStringFromRegistry, kHkcu, B(kKey), B(name), B("dflt"), expand, &found[0]);
    const HRESULT s = vb::esReadLongFromRegistry(kHkcu, B(kKey), B(name), -7, &found[1], &number) | vb::esReadBoolFromRegistry(kHkcu, B(kKey), B(name), -1, &found[2], &found[3]);
    auto mark = [&](int i) { return found[i] == -1 ? "+" : found[i] ? "?" : ""; };
    return (s || text[0] != '0' ? "status " : "") + text.substr(2) + mark(0) + "/" + std::to_string(number) + mark(1) + "/" + std::to_string(found[3]) + mark(2);
}

// Status flag, the current directory and its drive's variable, after a
// change of directory.
std::string Cd(const std::string& path) {
    const std::string result = V(vb::esSetCurrentDirectory, B(path.c_str())), now = T(vb::esGetCurrentDirectory).substr(2);
    return result + " " + now + " " + Env(("=" + now.substr(0, 2)).c_str());
}

// The special-folder search, staged: what the shell answers (nullptr: it
// knows no such folder; "": one without a path; each list given back is
// logged F), and the value name that the five registry locations hold
// (other keys: not found). Before stage `first` each holds the value empty,
// from it on its own path "C:\S<stage>" ("%CSK_S1%", expanded, in HKCU's User
// Shell Folders), so that the first stage with text answers.
struct { const char* shell; int first; std::string name; } g_search;
std::string Search(LONG csidl, const char* shell, int first, const char* name) {
    Detour a("SHGetSpecialFolderLocation", +[](HWND, int, LPITEMIDLIST* list) WINAPI -> HRESULT { return *list = LPITEMIDLIST(&g_search), g_search.shell ? S_OK : E_FAIL; });
    Detour b("SHGetPathFromIDListA", +[](LPCITEMIDLIST, LPSTR path) WINAPI -> BOOL { return strcpy(path, g_search.shell), *g_search.shell != 0; });
    Detour c("CoTaskMemFree", +[](void*) WINAPI -> void { g_calls += "F"; }), d("RegCloseKey", +[](HKEY) WINAPI -> LONG { return 0; });
    Detour e("RegOpenKeyExA", +[](HKEY root, LPCSTR sub, DWORD, REGSAM, PHKEY key) WINAPI -> LONG {  // the handle is the stage
        return *key = HKEY(std::find(kStages, kStages + 5, (root == HKEY_CURRENT_USER ? "U " : root == HKEY_LOCAL_MACHINE ? "M " : "? ") + std::string(sub)) - kStages),
               *key == HKEY(5) ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS; });
    Detour f("RegQueryValueExA", +[](HKEY at, LPCSTR name, LPDWORD, LPDWORD type, LPBYTE data, LPDWORD size) WINAPI -> LONG {
        const std::string text = INT_PTR(at) < g_search.first ? "" : INT_PTR(at) == 1 ? "%CSK_S1%" : "C:\\S" + std::to_string(INT_PTR(at));
        if (g_search.name != (name ? name : "") || (data && *size <= text.size())) return ERROR_FILE_NOT_FOUND;
        return *type = INT_PTR(at) == 1 ? REG_EXPAND_SZ : REG_SZ, data ? memcpy(data, text.c_str(), text.size() + 1) : nullptr, *size = text.size() + 1, 0; });
    return g_search = {shell, first, name}, Log(T(vb::esGetSpecialFolder, csidl));
}

// Registry: REG_EXPAND_SZ is expanded on request only, REG_SZ never; a value
// of another type, or of another size for a Long, counts as absent; only the
// number 1 is true. The writers store what the readers take back; an empty
// text is one NUL, found. A handle that is no key reads the defaults and
// writes nothing; a refused call gives the defaults or flag 0. Folders end
// in one backslash, also at a root; a refused one is empty. A change of
// directory records the directory in its drive's variable; a failed one
// changes nothing and is status 1. A list is freed only when it has a path
// and the caller asks; one without a path gives empty text, not null.
TEST(Registry, AndFolders) {
    SHDeleteKeyA(HKEY_CURRENT_USER, kKey), SetEnvironmentVariableA("CSK_TEST_FOLDER", "C:\\Data"), SetEnvironmentVariableA("CSK_S1", "C:\\S1\\");
    char buffer[1024];
    const std::string temp = (GetTempPathA(1024, buffer), buffer), was = Slash((GetCurrentDirectoryA(1024, buffer), buffer)), folder = temp + "CorvaneTestFolder";
    LPITEMIDLIST appData = nullptr, drives = nullptr;
    SHGetSpecialFolderLocation(nullptr, CSIDL_APPDATA, &appData), SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &drives), CreateDirectoryA(folder.c_str(), nullptr);
    Detour free("CoTaskMemFree", +[](void* p) WINAPI -> void { g_calls += "F", CoTaskMemFree(p); });
    const auto denySet = +[](HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD) WINAPI -> LONG { return ERROR_ACCESS_DENIED; };
    const auto root = +[](LPSTR b, UINT n) WINAPI -> UINT { return n < 4 ? 4 : (strcpy(b, "C:\\"), 3); };  // the Windows folder at a root
    const auto grown = +[](HKEY k, LPCSTR n, LPDWORD r, LPDWORD t, LPBYTE d, LPDWORD s) WINAPI -> LONG { return d ? ERROR_MORE_DATA : RegQueryValueExA(k, n, r, t, d, s); };
    const auto retyped = +[](HKEY k, LPCSTR n, LPDWORD r, LPDWORD t, LPBYTE d, LPDWORD s) WINAPI -> LONG {  // another type by the second query
        const LONG e = RegQueryValueExA(k, n, r, t, d, s); return d && t ? (*t = REG_BINARY, e) : e; };
    const std::pair<std::string, std::string> rows[] = {
        {Read("text", 0, REG_SZ, " true\r\n", 8), " true\r\n+/-7/-1+"}, {Read("yes", 0, REG_SZ, "Yes", 4), "Yes+/-7/0+"}, {Read("unended", 0, REG_SZ, "abc", 3), "abc+/-7/0+"},
        {Read("empty", 0, REG_SZ, "", 0), "<null>/-7/-1"}, {Read("one", 0, REG_DWORD, "\1\0\0\0", 4), "dflt/1+/-1+"},
        {Read("all", 0, REG_DWORD, "\xFF\xFF\xFF\xFF", 4), "dflt/-1+/0+"}, {Read("big", 0, REG_DWORD_BIG_ENDIAN, "\0\0\0\1", 4), "dflt/1+/-1+"},
        {Read("short", 0, REG_DWORD, "\1\0\0", 3), "dflt/-7/-1"}, {Read("binary", 0, REG_BINARY, "\1\0\0\0", 4), "dflt/-7/-1"}, {Read("missing"), "dflt/-7/-1"},
        {Read("expand", 0, REG_EXPAND_SZ, "%CSK_TEST_FOLDER%\\x", 20), "%CSK_TEST_FOLDER%\\x+/-7/0+"}, {Read("expand", 1), "C:\\Data\\x+/-7/0+"},
        {Read("percent", 1, REG_SZ, "%CSK_TEST_FOLDER%", 18), "%CSK_TEST_FOLDER%+/-7/0+"}, {Detoured("RegQueryValueExA", grown, [] { return Read("yes"); }), "dflt/-7/-1"},
        {Detoured("RegQueryValueExA", retyped, [] { return Read("one"); }), "dflt/-7/-1"},
        {V(vb::esWriteBoolToRegistry, kHkcu, B(kKey), B("bool"), 1), "0 -1"}, {Read("bool"), "True+/-7/-1+"},
        {V(vb::esWriteStringToRegistry, kHkcu, B(kKey), B("written"), B("%CSK_TEST_FOLDER%"), 7), "0 -1"}, {Read("written", 1), "C:\\Data+/-7/0+"},
        {(vb::esWriteStringToRegistry(kHkcu, B(kKey), B("empty"), nullptr, 0, nullptr), Read("empty")), "<null>+/-7/0+"},
        {V(vb::esWriteLongToRegistry, kHkcu, B(kKey), B("long"), 0x11223344, 0), "0 -1"}, {Read("long"), "dflt/287454020+/0+"},
        {V(vb::esWriteLongToRegistry, kHkcu, B(kKey), B("big"), 0x11223344, 1), "0 -1"}, {Read("big"), "dflt/287454020+/0+"},
        {V(vb::esWriteLongToRegistry, kHkcu, B(kInner), B("v"), 5, 0), "0 -1"}, {V(vb::esWriteLongToRegistry, 0x1234, B(kKey), B("v"), 1, 0), "0 0"},
        {Detoured("RegSetValueExA", denySet, [] { return V(vb::esWriteLongToRegistry, kHkcu, B(kKey), B("b"), 0, 0); }), "0 0"},
        {V(vb::esDeleteValueFromRegistry, kHkcu, B(kInner), B("missing")), "0 0"}, {V(vb::esDeleteKeyFromRegistry, kHkcu, B(kKey), 0), "0 0"},
        {V(vb::esDeleteValueFromRegistry, kHkcu, B(kInner), B("v")), "0 -1"}, {V(vb::esDeleteKeyFromRegistry, kHkcu, B(kInner), 0), "0 -1"},
        {V(vb::esDeleteKeyFromRegistry, kHkcu, B(kKey), 1), "0 -1"}, {V(vb::esDeleteKeyFromRegistry, kHkcu, B(kKey), -1), "0 0"},
        {T(vb::esGetWindowsPath), "0 " + Slash((GetWindowsDirectoryA(buffer, 1024), buffer))}, {T(vb::esGetTempPath), "0 " + temp},
        {T(vb::esGetSystemPath), "0 " + Slash((GetSystemDirectoryA(buffer, 1024), buffer))}, {T(vb::esGetCurrentDirectory), "0 " + was},
        {Detoured("GetWindowsDirectoryA", root, [] { return T(vb::esGetWindowsPath); }), "0 C:\\"}, {Cd(folder), "0 -1 " + folder + "\\ " + folder + "\\"},
        {Cd(folder + "\\Nothing"), "1 0 " + folder + "\\ " + folder + "\\"}, {Cd(".."), "0 -1 " + temp + " " + temp},
        {Log(T(vb::esGetPathFromPIDL, LONG(appData), 0)), "0 " + Slash((SHGetPathFromIDListA(appData, buffer), buffer))},
        {Log(T(vb::esGetPathFromPIDL, LONG(drives), -1)), "0 "}, {Log(T(vb::esGetPathFromPIDL, LONG(appData), 1)), "0 " + Slash(buffer) + "F"},
        {Search(26, "C:\\Shell", 0, "AppData"), "0 C:\\Shell\\F"}, {Search(26, "", 0, "AppData"), "0 C:\\S0\\F"}, {Search(26, nullptr, 1, "AppData"), "0 C:\\S1\\"},
        {Search(16, nullptr, 2, "Desktop"), "0 C:\\S2\\"}, {Search(59, nullptr, 3, "CD Burning"), "0 C:\\S3\\"}, {Search(38, nullptr, 4, "ProgramFilesDir"), "0 C:\\S4\\"},
        {Search(38, nullptr, 5, "ProgramFilesDir"), "0 " + Slash(Env("ProgramFiles"))}, {Search(40, nullptr, 0, ""), "0 " + Slash(Env("USERPROFILE"))},
        {Search(36, nullptr, 0, ""), T(vb::esGetWindowsPath)}, {Search(37, nullptr, 0, ""), T(vb::esGetSystemPath)}, {Search(3, nullptr, 0, ""), "0 <null>"},
        {Search(0x8000 | 26, nullptr, 0, "AppData"), "0 <null>"}};
    SHDeleteKeyA(HKEY_CURRENT_USER, kKey), SetCurrentDirectoryA(was.c_str()), RemoveDirectoryA(folder.c_str()), CoTaskMemFree(drives);
    for (const auto& r : rows) EXPECT_EQ(r.second, r.first) << "row " << &r - rows;
}

}  // namespace
