// Times the exports of CorvaneSupportKit0100.dll, called as a Visual Basic
// program calls them, against a floor measured in the same run: for a text
// export, SysReAllocString of its answer from a BSTR of the same length,
// which is the least any text answer costs.
#include <windows.h>
#include <oleauto.h>
#include <olectl.h>
#include <shlwapi.h>
#include <shlobj.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "PathAndFileNameModifiers.h"

namespace {

HMODULE library;

double Now() {
    LARGE_INTEGER counter, frequency;
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(counter.QuadPart) / static_cast<double>(frequency.QuadPart);
}

BSTR Make(const char* s) {
    int n = MultiByteToWideChar(CP_ACP, 0, s, -1, nullptr, 0);
    BSTR b = SysAllocStringLen(nullptr, n - 1);
    MultiByteToWideChar(CP_ACP, 0, s, -1, b, n);
    return b;
}

// Nanoseconds per call of body, over enough calls to be stable: the best of
// five rounds of about 40 ms each (at least 3 calls, at most 200,000), so
// that an export that goes to the disk or the wineserver is timed as well as
// one that does not.
template <class Body>
double NanosecondsPerCall(Body body) {
    int probes = 0;
    const double start = Now();
    while (probes < 100 && (probes == 0 || Now() - start < 0.02)) body(), ++probes;
    const double each = (Now() - start) / probes;
    const int calls = each * 200000 < 0.04 ? 200000 : each * 3 > 0.04 ? 3 : static_cast<int>(0.04 / each);
    double best = 1e30;
    for (int round = 0; round < 5; ++round) {
        const double begin = Now();
        for (int i = 0; i < calls; ++i) body();
        best = std::min(best, (Now() - begin) / calls * 1e9);
    }
    return best;
}

// The floor of a text export: replacing a BSTR variable with text of the
// answer's length.
double TextFloor(size_t length) {
    BSTR source = SysAllocStringLen(nullptr, static_cast<UINT>(length));
    for (size_t i = 0; i < length; ++i) source[i] = L'a';
    BSTR variable = nullptr;
    double ns = NanosecondsPerCall([&] { SysReAllocString(&variable, source); });
    SysFreeString(variable);
    SysFreeString(source);
    return ns;
}

void Report(const char* name, const char* what, double ns, double floor) {
    std::printf("%-24s %-34s %8.1f ns %8.1f ns %6.2fx\n", name, what, ns, floor, ns / floor);
}

// An export by its plain name, as a Declare statement finds it.
template <class F>
F Bind(const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

typedef HRESULT(WINAPI* TextToText)(BSTR, BSTR*);
typedef HRESULT(WINAPI* BuildFileName)(BSTR, BSTR, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* BuildFileName2)(BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR*);

void BenchTextToText(const char* name, const char* input) {
    auto f = Bind<TextToText>(name);
    if (!f) return;
    BSTR in = Make(input), out = nullptr;
    f(in, &out);
    size_t answer = out ? SysStringLen(out) : 0;
    double ns = NanosecondsPerCall([&] { f(in, &out); });
    Report(name, (std::to_string(SysStringLen(in)) + " chars").c_str(), ns, TextFloor(answer));
    SysFreeString(in);
    SysFreeString(out);
}

// Path parsing: a typical path of 40 characters.
void PathParsing() {
    const char* path = "C:\\Program Files\\Corvane\\report-2026.txt";
    BenchTextToText("esGetFileRoot", path);
    BenchTextToText("esGetFilePath", path);
    typedef HRESULT(WINAPI * TextFlagToText)(BSTR, VARIANT_BOOL, BSTR*);
    if (auto f = Bind<TextFlagToText>("esGetFileName")) {
        BSTR in = Make(path), out = nullptr;
        f(in, VARIANT_TRUE, &out);
        double ns = NanosecondsPerCall([&] { f(in, VARIANT_TRUE, &out); });
        double floor = TextFloor(SysStringLen(out));
        Report("esGetFileName", (std::to_string(SysStringLen(in)) + " chars").c_str(), ns, floor);
        // What the export must do whatever its own cost: find the name with
        // the shell in a zeroed 1025-byte buffer and hand the answer back.
        char buffer[1025];
        BSTR name = SysAllocString(out), variable = nullptr;
        double platform = NanosecondsPerCall([&] {
            std::memset(buffer, 0, sizeof buffer);
            std::memcpy(buffer, path, std::strlen(path));
            SysReAllocString(&variable, PathFindFileNameA(buffer) == buffer ? nullptr : name);
        });
        Report("  PathFindFileNameA", "+ the hand-back, the platform's share", platform, floor);
        SysFreeString(in), SysFreeString(out), SysFreeString(name), SysFreeString(variable);
    }
    BenchTextToText("esGetFileOnlyName", path);
    BenchTextToText("esGetFileExtension", path);
    typedef HRESULT(WINAPI * TwoTextsToText)(BSTR, BSTR, BSTR*);
    struct {
        const char* name;
        const char* a;
        const char* b;
        const char* what;
    } pairs[] = {
        {"esGetRelativeFileName", "C:\\Program Files\\Corvane\\Data\\report.txt", "C:\\Program Files\\Other",
         "file + base"},
        {"esGetAbsoluteFileName", "..\\Data\\report.txt", "C:\\Program Files\\Corvane", "file + base"},
        {"esReplaceFileExtension", path, "log", "path + extension"},
    };
    for (const auto& pair : pairs) {
        auto f = Bind<TwoTextsToText>(pair.name);
        if (!f) continue;
        BSTR a = Make(pair.a), b = Make(pair.b), out = nullptr;
        f(a, b, &out);
        double ns = NanosecondsPerCall([&] { f(a, b, &out); });
        Report(pair.name, pair.what, ns, TextFloor(SysStringLen(out)));
        SysFreeString(a), SysFreeString(b), SysFreeString(out);
    }
}

// Values: a representative export of each family. For a non-text export the
// floor is an empty __stdcall function with the same arguments, called
// through a pointer as the export is: the cost of the call itself.
HRESULT WINAPI EmptyLongToLong(LONG, LONG*) { return S_OK; }
HRESULT WINAPI EmptyFourLongs(LONG, LONG, LONG, LONG*) { return S_OK; }
HRESULT WINAPI EmptyRnd(LONG, LONG, VARIANT_BOOL, LONG*) { return S_OK; }
HRESULT WINAPI EmptyStringToBool(BSTR, VARIANT_BOOL*) { return S_OK; }

void BenchValues() {
    typedef HRESULT(WINAPI * LongToLong)(LONG, LONG*);
    typedef HRESULT(WINAPI * ThreeLongs)(LONG, LONG, LONG, LONG*);
    typedef HRESULT(WINAPI * GetRnd)(LONG, LONG, VARIANT_BOOL, LONG*);
    typedef HRESULT(WINAPI * LongToText)(LONG, BSTR*);
    typedef HRESULT(WINAPI * BoolToString)(VARIANT_BOOL, BSTR*);
    typedef HRESULT(WINAPI * StringToBool)(BSTR, VARIANT_BOOL*);
    typedef HRESULT(WINAPI * NewGuid)(BSTR*);
    volatile LongToLong emptyLong = EmptyLongToLong;
    volatile ThreeLongs emptyThree = EmptyFourLongs;
    volatile GetRnd emptyRnd = EmptyRnd;
    LONG answer = 0;
    double longFloor = NanosecondsPerCall([&] { emptyLong(0x80000005, &answer); });
    double threeFloor = NanosecondsPerCall([&] { emptyThree(1, 2, 3, &answer); });
    if (auto f = Bind<ThreeLongs>("esRGB"))
        Report("esRGB", "1, 2, 3 (floor: empty call)", NanosecondsPerCall([&] { f(1, 2, 3, &answer); }), threeFloor);
    if (auto f = Bind<LongToLong>("esGetRedRGB")) {
        // Most of it is the platform's translation; that is shown on its own line.
        COLORREF translated;
        double platform = NanosecondsPerCall([&] { OleTranslateColor(0x80000005, nullptr, &translated); });
        Report("esGetRedRGB", "system colour (floor: empty call)",
               NanosecondsPerCall([&] { f(static_cast<LONG>(0x80000005), &answer); }), longFloor);
        Report("  OleTranslateColor", "the same, called directly", platform, longFloor);
    }
    if (auto f = Bind<LongToLong>("esSwapBytes4"))
        Report("esSwapBytes4", "(floor: empty call)", NanosecondsPerCall([&] { f(0x11223344, &answer); }), longFloor);
    BSTR out = nullptr;
    if (auto f = Bind<LongToText>("esHex4"))
        Report("esHex4", "8 digits", NanosecondsPerCall([&] { f(0x12AB34CD, &out); }), TextFloor(8));
    if (auto f = Bind<LongToText>("esBin4"))
        Report("esBin4", "32 digits", NanosecondsPerCall([&] { f(0x12AB34CD, &out); }), TextFloor(32));
    if (auto f = Bind<BoolToString>("esBoolToString"))
        Report("esBoolToString", "True", NanosecondsPerCall([&] { f(VARIANT_TRUE, &out); }), TextFloor(4));
    if (auto f = Bind<StringToBool>("esStringToBool")) {
        BSTR text = Make(" True\r\n");
        VARIANT_BOOL flag = 0;
        volatile StringToBool empty = EmptyStringToBool;
        double floor = NanosecondsPerCall([&] { empty(text, &flag); });
        Report("esStringToBool", "\" True\\r\\n\" (floor: empty call)", NanosecondsPerCall([&] { f(text, &flag); }),
               floor);
        SysFreeString(text);
    }
    if (auto f = Bind<GetRnd>("esGetRnd")) {
        double floor = NanosecondsPerCall([&] { emptyRnd(1, 6, 0, &answer); });
        Report("esGetRnd", "1..6 (floor: empty call)", NanosecondsPerCall([&] { f(1, 6, 0, &answer); }), floor);
    }
    if (auto f = Bind<NewGuid>("esGetNewGUID")) {
        double floor = TextFloor(38);
        Report("esGetNewGUID", "38 chars", NanosecondsPerCall([&] { f(&out); }), floor);
        // ole32 is not linked into the bench: its two functions are found by name.
        HMODULE ole32 = LoadLibraryA("ole32.dll");
        auto create = reinterpret_cast<HRESULT(WINAPI*)(GUID*)>(
            reinterpret_cast<void*>(GetProcAddress(ole32, "CoCreateGuid")));
        auto format = reinterpret_cast<int(WINAPI*)(REFGUID, LPOLESTR, int)>(
            reinterpret_cast<void*>(GetProcAddress(ole32, "StringFromGUID2")));
        GUID guid;
        WCHAR text[100];
        double platform = NanosecondsPerCall([&] {
            create(&guid);
            format(guid, text, 100);
        });
        Report("  CoCreateGuid+StringFromGUID2", "called directly", platform, floor);
    }
    SysFreeString(out);
}

typedef HRESULT(WINAPI* DayNumber)(SYSTEMTIME*, LONG*);
typedef HRESULT(WINAPI* RecordText)(SYSTEMTIME*, VARIANT_BOOL, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* RomanText)(LONG, BSTR*);

// Dates and formats: a value answer against a plain call of the platform's
// calendar, and two text answers against their SysReAllocString floors.
void BenchDatesAndFormats() {
    SYSTEMTIME date = {2024, 10, 1, 14, 15, 7, 9, 0};
    if (auto f = Bind<DayNumber>("esGetDayNumEx")) {
        LONG day = 0;
        FILETIME t;
        double floor = NanosecondsPerCall([&] { SystemTimeToFileTime(&date, &t); });
        double ns = NanosecondsPerCall([&] { f(&date, &day); });
        Report("esGetDayNumEx", "14 Oct 2024 (SystemTimeToFileTime)", ns, floor);
    }
    if (auto f = Bind<RecordText>("esFormatDate")) {
        BSTR out = nullptr;
        f(&date, VARIANT_TRUE, VARIANT_FALSE, &out);
        double ns = NanosecondsPerCall([&] { f(&date, VARIANT_TRUE, VARIANT_FALSE, &out); });
        Report("esFormatDate", "long form", ns, TextFloor(SysStringLen(out)));
        // The two passes of the platform alone, for comparison.
        char text[128];
        double platform = NanosecondsPerCall([&] {
            GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE, &date, nullptr, nullptr, 0);
            GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE, &date, nullptr, text, sizeof text);
        });
        Report("  GetDateFormatA x2", "long form, the platform's share", platform, TextFloor(SysStringLen(out)));
        SysFreeString(out);
    }
    if (auto f = Bind<RomanText>("esFormatRoman")) {
        BSTR out = nullptr;
        f(1994, &out);
        double ns = NanosecondsPerCall([&] { f(1994, &out); });
        Report("esFormatRoman", "1994", ns, TextFloor(SysStringLen(out)));
        SysFreeString(out);
    }
}

HRESULT WINAPI EmptyBoolOut(VARIANT_BOOL*) { return S_OK; }
HRESULT WINAPI EmptyLongOut(LONG*) { return S_OK; }

// Host tests read the record kept since the first call; esIsProcessWin64Ex
// opens the process and asks IsWow64Process twice, which the platform's share
// shows.
void BenchHost() {
    typedef HRESULT(WINAPI * BoolOut)(VARIANT_BOOL*);
    typedef HRESULT(WINAPI * LongOut)(LONG*);
    typedef HRESULT(WINAPI * Bitness)(LONG, LONG*);
    VARIANT_BOOL flag = 0;
    LONG answer = 0;
    volatile BoolOut empty = EmptyBoolOut;
    double floor = NanosecondsPerCall([&] { empty(&flag); });
    if (auto f = Bind<BoolOut>("esIsHostWin2003R2_OrHigher")) {
        f(&flag);
        Report("esIsHostWin2003R2_OrHigher", "record kept (floor: empty call)", NanosecondsPerCall([&] { f(&flag); }),
               floor);
    }
    if (auto f = Bind<LongOut>("esWindowsVersionRevision"))
        Report("esWindowsVersionRevision", "(floor: empty call)", NanosecondsPerCall([&] { f(&answer); }), floor);
    if (auto f = Bind<Bitness>("esIsProcessWin64Ex")) {
        const LONG self = static_cast<LONG>(GetCurrentProcessId());
        Report("esIsProcessWin64Ex", "this process (floor: empty call)", NanosecondsPerCall([&] { f(self, &answer); }),
               floor);
        typedef BOOL(WINAPI * IsWow64)(HANDLE, BOOL*);
        auto isWow64 = reinterpret_cast<IsWow64>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "IsWow64Process")));
        BOOL wow64;
        double platform = NanosecondsPerCall([&] {
            isWow64(GetCurrentProcess(), &wow64);
            HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, static_cast<DWORD>(self));
            isWow64(process, &wow64);
            CloseHandle(process);
        });
        Report("  OpenProcess", "+ 2 IsWow64Process, the platform's share", platform, floor);
    }
}

// File system queries, each against the platform calls it must make, on a
// folder 20 levels deep made under the temporary folder for the run.
void BenchFileSystem() {
    char temp[MAX_PATH];
    GetTempPathA(MAX_PATH, temp);
    std::string deep = std::string(temp) + "CskBench";
    std::vector<std::string> made;
    for (int level = 0; level < 20; ++level) {
        deep += level ? "\\Level " + std::to_string(level) : "";
        CreateDirectoryA(deep.c_str(), nullptr);
        made.push_back(deep);
    }
    const std::string file = deep + "\\Some File.txt";
    CloseHandle(CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    typedef HRESULT(WINAPI * BoolAnswer)(BSTR, VARIANT_BOOL*);
    typedef HRESULT(WINAPI * DoubleAnswer)(BSTR, double*);
    typedef HRESULT(WINAPI * FlagToText)(BSTR, VARIANT_BOOL, BSTR*);
    BSTR path = Make(file.c_str()), out = nullptr;
    VARIANT_BOOL flag;
    double size;
    WIN32_FIND_DATAA record;
    auto attributes = NanosecondsPerCall([&] { GetFileAttributesA(file.c_str()); });
    auto search = NanosecondsPerCall([&] { FindClose(FindFirstFileA(file.c_str(), &record)); });
    if (auto f = Bind<BoolAnswer>("esIsFileExist"))
        Report("esIsFileExist", "(floor: GetFileAttributesA)", NanosecondsPerCall([&] { f(path, &flag); }), attributes);
    if (auto f = Bind<DoubleAnswer>("esGetFileSizeEx"))
        Report("esGetFileSizeEx", "(floor: FindFirstFileA+FindClose)", NanosecondsPerCall([&] { f(path, &size); }),
               search);
    if (auto f = Bind<FlagToText>("esGetFullFileName")) {
        char full[1024], shortForm[1024], longForm[1024];
        double platform = NanosecondsPerCall([&] {
            GetFullPathNameA(file.c_str(), 0, nullptr, nullptr), GetFullPathNameA(file.c_str(), 1024, full, nullptr);
            GetShortPathNameA(full, nullptr, 0), GetShortPathNameA(full, shortForm, 1024);
            GetLongPathNameA(shortForm, nullptr, 0), GetLongPathNameA(shortForm, longForm, 1024);
        });
        Report("esGetFullFileName", "case fixed (floor: its 6 calls)", NanosecondsPerCall([&] { f(path, -1, &out); }),
               platform);
    }
    // The library's own long-name walk, for hosts without GetLongPathNameA:
    // one FindFirstFileA per element, so linear in the depth.
    double twenty = NanosecondsPerCall([&] {
        for (const std::string& folder : made) FindClose(FindFirstFileA(folder.c_str(), &record));
    });
    char longForm[1100];
    Report("PROXY_GETLONGPATHNAMEA", "21 elements (floor: 20 searches)",
           NanosecondsPerCall([&] { PROXY_GETLONGPATHNAMEA(file.c_str(), longForm, 1050); }), twenty);
    SysFreeString(path), SysFreeString(out);
    DeleteFileA(file.c_str());
    for (auto it = made.rbegin(); it != made.rend(); ++it) RemoveDirectoryA(it->c_str());
}

// The registry exports against the open, query or set and close that they
// must make; a special folder against the shell's own three calls.
void BenchRegistry() {
    const char* key = "Software\\CorvaneSupportKitBench";
    typedef HRESULT(WINAPI * ReadString)(LONG, BSTR, BSTR, BSTR, VARIANT_BOOL, VARIANT_BOOL*, BSTR*);
    typedef HRESULT(WINAPI * WriteLong)(LONG, BSTR, BSTR, LONG, VARIANT_BOOL, VARIANT_BOOL*);
    typedef HRESULT(WINAPI * SpecialFolder)(LONG, BSTR*);
    const LONG currentUser = static_cast<LONG>(0x80000001);
    BSTR subkey = Make(key), name = Make("Value"), none = Make(""), out = nullptr;
    VARIANT_BOOL flag;
    HKEY handle;
    RegCreateKeyExA(HKEY_CURRENT_USER, key, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &handle, nullptr);
    RegSetValueExA(handle, "Value", 0, REG_SZ, reinterpret_cast<const BYTE*>("C:\\Program Files\\Corvane"), 26);
    RegCloseKey(handle);
    double reads = NanosecondsPerCall([&] {
        char data[64];
        DWORD type, size = 0;
        RegOpenKeyExA(HKEY_CURRENT_USER, key, 0, KEY_QUERY_VALUE, &handle);
        RegQueryValueExA(handle, "Value", nullptr, &type, nullptr, &size);
        RegQueryValueExA(handle, "Value", nullptr, &type, reinterpret_cast<BYTE*>(data), &size);
        RegCloseKey(handle);
    });
    if (auto f = Bind<ReadString>("esReadStringFromRegistry"))
        Report("esReadStringFromRegistry", "25 chars (floor: open, 2 queries, close)",
               NanosecondsPerCall([&] { f(currentUser, subkey, name, none, 0, &flag, &out); }), reads);
    double writes = NanosecondsPerCall([&] {
        DWORD value = 42;
        RegCreateKeyExA(HKEY_CURRENT_USER, key, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &handle, nullptr);
        RegSetValueExA(handle, "Long", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), 4);
        RegCloseKey(handle);
    });
    BSTR longName = Make("Long");
    if (auto f = Bind<WriteLong>("esWriteLongToRegistry"))
        Report("esWriteLongToRegistry", "(floor: create, set, close)",
               NanosecondsPerCall([&] { f(currentUser, subkey, longName, 42, 0, &flag); }), writes);
    double shell = NanosecondsPerCall([&] {
        LPITEMIDLIST list = nullptr;
        char path[MAX_PATH];
        if (SHGetSpecialFolderLocation(nullptr, 26, &list) == S_OK) SHGetPathFromIDListA(list, path), CoTaskMemFree(list);
    });
    if (auto f = Bind<SpecialFolder>("esGetSpecialFolder"))
        Report("esGetSpecialFolder", "CSIDL_APPDATA (floor: the shell's 3 calls)",
               NanosecondsPerCall([&] { f(26, &out); }), shell);
    SHDeleteKeyA(HKEY_CURRENT_USER, key);
    SysFreeString(subkey), SysFreeString(name), SysFreeString(none), SysFreeString(longName), SysFreeString(out);
}


// The screen factor against the three calls it makes; a window's title
// against the wide read it rests on; a combo box's list to text, at 100 and
// 1,000 items, which must stay linear in the count.
void BenchWindows() {
    typedef HRESULT(WINAPI * SingleOut)(float*);
    typedef HRESULT(WINAPI * WindowText)(LONG, BSTR*);
    typedef HRESULT(WINAPI * ComboText)(LONG, VARIANT_BOOL, BSTR*);
    double caps = NanosecondsPerCall([] {
        HDC screen = GetDC(nullptr);
        GetDeviceCaps(screen, LOGPIXELSX);
        ReleaseDC(nullptr, screen);
    });
    float factor;
    if (auto f = Bind<SingleOut>("esScreenTwipsPerPixelX"))
        Report("esScreenTwipsPerPixelX", "(floor: GetDC, GetDeviceCaps, ReleaseDC)", NanosecondsPerCall([&] { f(&factor); }),
               caps);
    const std::string title(100, 'T');
    HWND form = CreateWindowExA(0, "Static", title.c_str(), 0, 0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    HWND box = CreateWindowExA(0, "ComboBox", "", WS_CHILD | CBS_DROPDOWNLIST | CBS_HASSTRINGS, 0, 0, 100, 100, form,
                               nullptr, nullptr, nullptr);
    BSTR out = nullptr;
    WCHAR wide[128];
    double read = NanosecondsPerCall([&] { GetWindowTextW(form, wide, GetWindowTextLengthW(form) + 10); });
    if (auto f = Bind<WindowText>("esGetWindowText"))
        Report("esGetWindowText", "100 chars (floor: length and text, wide)",
               NanosecondsPerCall([&] { f(static_cast<LONG>(reinterpret_cast<intptr_t>(form)), &out); }), read);
    if (auto f = Bind<ComboText>("esComboBoxToString"))
        for (int items : {100, 1000}) {
            SendMessageA(box, CB_RESETCONTENT, 0, 0);
            for (int i = 0; i < items; ++i) SendMessageA(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("An item of the list"));
            char item[32];
            double reads = NanosecondsPerCall([&] {
                for (int i = 0; i < items; ++i) {
                    SendMessageA(box, CB_GETLBTEXTLEN, i, 0);
                    SendMessageA(box, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(item));
                }
            });
            Report("esComboBoxToString", (std::to_string(items) + " items (floor: their 2 reads each)").c_str(),
                   NanosecondsPerCall([&] { f(static_cast<LONG>(reinterpret_cast<intptr_t>(box)), 0, &out); }), reads);
        }
    SysFreeString(out);
    DestroyWindow(form);
}

// The user's SID after the first call (a copy of the kept bytes into the
// caller's array), against resizing that array and copying the bytes into
// it; its text, against the platform's own ConvertSidToStringSidA.
typedef HRESULT(WINAPI* UserSid)(SAFEARRAY**, VARIANT_BOOL*);
typedef HRESULT(WINAPI* SidToText)(PSID, BSTR*);
typedef BOOL(WINAPI* ConvertSid)(PSID, LPSTR*);
void BenchIdentity() {
    auto getSid = Bind<UserSid>("esGetUserSID");
    auto toText = Bind<SidToText>("esSIDtoStringSID");
    if (!getSid || !toText) return;
    SAFEARRAY* array = nullptr;
    VARIANT_BOOL given;
    getSid(&array, &given);
    if (!array) return;
    const LONG length = static_cast<LONG>(array->rgsabound[0].cElements);
    std::vector<BYTE> sid(static_cast<BYTE*>(array->pvData), static_cast<BYTE*>(array->pvData) + length);
    double copy = NanosecondsPerCall([&] {
        SAFEARRAYBOUND bound = {static_cast<ULONG>(length), 0};
        void* data;
        SafeArrayRedim(array, &bound);
        SafeArrayAccessData(array, &data);
        std::memcpy(data, sid.data(), sid.size());
        SafeArrayUnaccessData(array);
    });
    Report("esGetUserSID", "kept SID (floor: redim and copy)", NanosecondsPerCall([&] { getSid(&array, &given); }), copy);
    auto convert = reinterpret_cast<ConvertSid>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("advapi32.dll"), "ConvertSidToStringSidA")));
    BSTR out = nullptr;
    if (convert) {
        double platform = NanosecondsPerCall([&] {
            char* text = nullptr;
            if (convert(sid.data(), &text)) LocalFree(text);
        });
        Report("esSIDtoStringSID", "user SID (floor: ConvertSidToStringSidA)",
               NanosecondsPerCall([&] { toText(sid.data(), &out); }), platform);
    }
    SysFreeString(out);
    SafeArrayDestroy(array);
}

}  // namespace

// The Thunder windows are enumerated by the first query only; esCLng reads
// its text after the BSTR conversion that every text input costs.
void BenchVbHost() {
    typedef HRESULT(WINAPI * LongOut)(LONG*);
    typedef HRESULT(WINAPI * TextToLong)(BSTR, LONG*);
    LONG answer = 0;
    volatile LongOut empty = EmptyLongOut;
    double floor = NanosecondsPerCall([&] { empty(&answer); });
    if (auto f = Bind<LongOut>("esGetVBVersion")) {
        f(&answer);
        Report("esGetVBVersion", "record kept (floor: empty call)", NanosecondsPerCall([&] { f(&answer); }), floor);
    }
    if (auto f = Bind<TextToLong>("esCLng"))
        for (const char* text : {"&HFF", "12345"}) {
            BSTR in = Make(text);
            char bytes[32];
            double conversion = NanosecondsPerCall([&] {
                WideCharToMultiByte(CP_ACP, 0, in, static_cast<int>(SysStringLen(in)), bytes, sizeof bytes, nullptr,
                                    nullptr);
            });
            Report("esCLng", (std::string(text) + " (floor: BSTR conversion)").c_str(),
                   NanosecondsPerCall([&] { f(in, &answer); }), conversion);
            SysFreeString(in);
        }
}

int main() {
    library = LoadLibraryA("CorvaneSupportKit0100.dll");
    if (!library) {
        std::printf("CorvaneSupportKit0100.dll did not load\n");
        return 1;
    }
    std::printf("%-24s %-34s %11s %11s %7s\n", "export", "input", "per call", "floor", "ratio");
    BenchTextToText("esAddBackslash", "C:\\Program Files\\Corvane\\Data");
    BenchTextToText("esRemoveBackslash", "C:\\Program Files\\Corvane\\Data\\");
    if (auto f = Bind<BuildFileName>("esBuildFileName")) {
        BSTR folder = Make("C:\\Program Files\\Corvane"), file = Make("report.txt"), out = nullptr;
        f(folder, file, VARIANT_FALSE, &out);
        double ns = NanosecondsPerCall([&] { f(folder, file, VARIANT_FALSE, &out); });
        Report("esBuildFileName", "folder + name", ns, TextFloor(SysStringLen(out)));
        SysFreeString(folder), SysFreeString(file), SysFreeString(out);
    }
    if (auto f = Bind<BuildFileName2>("esBuildFileName2")) {
        BSTR a = Make("C:\\"), b = Make("Program Files"), c = Make("Corvane\\"), d = Make("report.txt"), out = nullptr;
        f(a, b, c, d, nullptr, nullptr, nullptr, nullptr, nullptr, &out);
        double ns = NanosecondsPerCall([&] { f(a, b, c, d, nullptr, nullptr, nullptr, nullptr, nullptr, &out); });
        Report("esBuildFileName2", "4 of 9 elements", ns, TextFloor(SysStringLen(out)));
        SysFreeString(a), SysFreeString(b), SysFreeString(c), SysFreeString(d), SysFreeString(out);
    }
    PathParsing();
    BenchValues();
    BenchDatesAndFormats();
    BenchHost();
    BenchFileSystem();
    BenchRegistry();
    BenchVbHost();
    BenchWindows();
    BenchIdentity();
    return 0;
}
