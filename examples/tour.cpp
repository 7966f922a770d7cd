// A tour of CorvaneSupportKit0100.dll: loads it the way a Visual Basic
// program does (LoadLibrary, then each export by its plain name), calls the
// exports and prints what they answer.
#include <windows.h>
#include <oleauto.h>
#include <shlwapi.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace {

HMODULE library;

template <class F>
F Export(const char* name) {
    F f = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(library, name)));
    if (!f) std::printf("  (%s is not exported)\n", name);
    return f;
}

// A BSTR made from text, freed at the end of the statement that made it.
struct Text {
    BSTR b;
    explicit Text(const char* s) {
        int n = MultiByteToWideChar(CP_ACP, 0, s, -1, nullptr, 0);
        b = SysAllocStringLen(nullptr, n - 1);
        MultiByteToWideChar(CP_ACP, 0, s, -1, b, n);
    }
    ~Text() { SysFreeString(b); }
};

std::string Show(BSTR b) {
    if (!b) return "(null)";
    int n = WideCharToMultiByte(CP_ACP, 0, b, -1, nullptr, 0, nullptr, nullptr);
    std::string s(n, '\0');
    WideCharToMultiByte(CP_ACP, 0, b, -1, &s[0], n, nullptr, nullptr);
    s.resize(n - 1);
    return "\"" + s + "\"";
}

typedef HRESULT(WINAPI* TextToText)(BSTR, BSTR*);
typedef HRESULT(WINAPI* BuildFileName)(BSTR, BSTR, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* BuildFileName2)(BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR*);

void ShowTextToText(const char* name, const char* input) {
    TextToText f = Export<TextToText>(name);
    if (!f) return;
    BSTR out = nullptr;
    HRESULT status = f(Text(input).b, &out);
    std::printf("  %-22s(\"%s\") = %s, status %ld\n", name, input, Show(out).c_str(), status);
    SysFreeString(out);
}

void PathBuilding() {
    std::printf("Path building\n");
    ShowTextToText("esAddBackslash", "C:\\Program Files\\Corvane");
    ShowTextToText("esRemoveBackslash", "C:\\Program Files\\Corvane\\");
    ShowTextToText("esRemoveBackslash", "C:\\");
    if (auto f = Export<BuildFileName>("esBuildFileName")) {
        BSTR out = nullptr;
        f(Text("C:\\Data").b, Text("report.txt").b, VARIANT_FALSE, &out);
        std::printf("  %-22s(\"C:\\Data\", \"report.txt\") = %s\n", "esBuildFileName", Show(out).c_str());
        SysFreeString(out);
    }
    if (auto f = Export<BuildFileName2>("esBuildFileName2")) {
        BSTR out = nullptr;
        f(Text("\\\\Server").b, Text("Share\\").b, Text("\\Reports").b, Text("2026").b, Text("nov.txt").b, nullptr,
          nullptr, nullptr, nullptr, &out);
        std::printf("  %-22s(\"\\\\Server\", \"Share\\\", \"\\Reports\", \"2026\", \"nov.txt\") = %s\n",
                    "esBuildFileName2", Show(out).c_str());
        SysFreeString(out);
    }
}

// One path taken apart, then a relative and an absolute path and a new
// extension.
void PathParsing() {
    std::printf("\nPath parsing\n");
    const char* path = "\\\\Server\\Share\\Reports\\2026\\nov.tar.gz:summary";
    std::printf("  the path: \"%s\"\n", path);
    ShowTextToText("esGetFileRoot", path);
    ShowTextToText("esGetFilePath", path);
    typedef HRESULT(WINAPI * TextFlagToText)(BSTR, VARIANT_BOOL, BSTR*);
    if (auto f = Export<TextFlagToText>("esGetFileName")) {
        for (VARIANT_BOOL withoutStream : {VARIANT_FALSE, VARIANT_TRUE}) {
            BSTR out = nullptr;
            f(Text(path).b, withoutStream, &out);
            std::printf("  %-22s(path, %s) = %s\n", "esGetFileName", withoutStream ? "True" : "False",
                        Show(out).c_str());
            SysFreeString(out);
        }
    }
    ShowTextToText("esGetFileOnlyName", path);
    ShowTextToText("esGetFileExtension", path);
    typedef HRESULT(WINAPI * TwoTextsToText)(BSTR, BSTR, BSTR*);
    struct {
        const char* name;
        const char* a;
        const char* b;
    } pairs[] = {
        {"esReplaceFileExtension", path, "bak"},
        {"esGetRelativeFileName", "C:\\Data\\2026\\.\\nov.txt", "C:\\Data\\Archive"},
        {"esGetAbsoluteFileName", "..\\2026\\nov.txt", "C:\\Data\\Archive"},
    };
    for (const auto& pair : pairs) {
        auto f = Export<TwoTextsToText>(pair.name);
        if (!f) continue;
        BSTR out = nullptr;
        f(Text(pair.a).b, Text(pair.b).b, &out);
        std::printf("  %-22s(\"%s\", \"%s\") = %s\n", pair.name, pair.a, pair.b, Show(out).c_str());
        SysFreeString(out);
    }
}

typedef HRESULT(WINAPI* LongToLong)(LONG, LONG*);
typedef HRESULT(WINAPI* ThreeLongs)(LONG, LONG, LONG, LONG*);
typedef HRESULT(WINAPI* LongToText)(LONG, BSTR*);

void Values() {
    std::printf("\nColours, bits, random numbers and GUIDs\n");
    LONG answer = 0;
    if (auto f = Export<ThreeLongs>("esRGB")) {
        HRESULT status = f(255, 128, 0, &answer);
        std::printf("  %-22s(255, 128, 0) = &H%06lX, status %ld\n", "esRGB", answer, status);
        status = f(256, 0, 0, &answer);
        std::printf("  %-22s(256, 0, 0): status &H%08lX (out of range)\n", "esRGB", status);
    }
    if (auto f = Export<LongToLong>("esGetBlueRGB")) {
        f(static_cast<LONG>(0x8000000D), &answer);
        std::printf("  %-22s(&H8000000D, the highlight colour) = %ld\n", "esGetBlueRGB", answer);
    }
    if (auto f = Export<LongToLong>("esRGBtoD3DRGBA")) {
        f(0x0080FF, &answer);
        std::printf("  %-22s(&H0080FF) = &H%08lX\n", "esRGBtoD3DRGBA", answer);
    }
    if (auto f = Export<LongToLong>("esSwapBytes4")) {
        f(0x11223344, &answer);
        std::printf("  %-22s(&H11223344) = &H%08lX\n", "esSwapBytes4", answer);
    }
    BSTR out = nullptr;
    if (auto f = Export<LongToText>("esHexEx4")) {
        f(-2, &out);
        std::printf("  %-22s(-2) = %s\n", "esHexEx4", Show(out).c_str());
    }
    if (auto f = Export<LongToText>("esBin2")) {
        f(0x2A, &out);
        std::printf("  %-22s(42) = %s\n", "esBin2", Show(out).c_str());
    }
    typedef HRESULT(WINAPI * GetRnd)(LONG, LONG, VARIANT_BOOL, LONG*);
    if (auto f = Export<GetRnd>("esGetRnd")) {
        std::printf("  %-22s(1, 6) ten times:", "esGetRnd");
        for (int i = 0; i < 10; ++i) {
            f(1, 6, VARIANT_FALSE, &answer);
            std::printf(" %ld", answer);
        }
        std::printf("\n");
    }
    typedef HRESULT(WINAPI * NewGuid)(BSTR*);
    if (auto f = Export<NewGuid>("esGetNewGUID")) {
        HRESULT status = f(&out);
        std::printf("  %-22s() = %s, status %ld\n", "esGetNewGUID", Show(out).c_str(), status);
    }
    SysFreeString(out);
}

typedef HRESULT(WINAPI* DayNumToday)(LONG*);
typedef HRESULT(WINAPI* DateNow)(double*);
typedef HRESULT(WINAPI* DateToLocal)(double, double*, VARIANT_BOOL*);
typedef HRESULT(WINAPI* FormatDate2)(double, VARIANT_BOOL, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* FormatRoman)(LONG, BSTR*);

void DatesAndFormats() {
    std::printf("\nDates, times and Roman numerals\n");
    if (auto f = Export<DayNumToday>("esGetDayNum")) {
        LONG day = 0;
        HRESULT status = f(&day);
        std::printf("  %-24s = day %ld since 27 July 2000 (day 1), status %ld\n", "esGetDayNum", day, status);
    }
    double utc = 0, local = 0;
    VARIANT_BOOL done = 0;
    auto now = Export<DateNow>("esSysNow");
    auto toLocal = Export<DateToLocal>("esSystemTimeToLocalTime");
    auto formatDate = Export<FormatDate2>("esFormatDate2");
    auto formatTime = Export<FormatDate2>("esFormatTime2");
    if (!now || !toLocal || !formatDate || !formatTime) return;
    now(&utc);
    toLocal(utc, &local, &done);
    BSTR text = nullptr;
    formatTime(utc, VARIANT_FALSE, VARIANT_FALSE, &text);
    std::printf("  %-24s = %.6f, %s UTC\n", "esSysNow", utc, Show(text).c_str());
    formatTime(local, VARIANT_FALSE, VARIANT_FALSE, &text);
    std::printf("  %-24s = %.6f, %s local (converted: %d)\n", "esSystemTimeToLocalTime", local, Show(text).c_str(),
                done);
    formatDate(local, VARIANT_TRUE, VARIANT_FALSE, &text);
    std::printf("  %-24s = %s, the locale's long form\n", "esFormatDate2", Show(text).c_str());
    SysFreeString(text);
    if (auto f = Export<FormatRoman>("esFormatRoman")) {
        SYSTEMTIME today;
        GetLocalTime(&today);
        BSTR roman = nullptr;
        f(today.wYear, &roman);
        std::printf("  %-24s = %s\n", ("esFormatRoman(" + std::to_string(today.wYear) + ")").c_str(),
                    Show(roman).c_str());
        SysFreeString(roman);
    }
}

typedef HRESULT(WINAPI* LongOut)(LONG*);
typedef HRESULT(WINAPI* BoolOut)(VARIANT_BOOL*);
typedef HRESULT(WINAPI* TextAnswer)(BSTR*);
typedef HRESULT(WINAPI* ProcessBitness)(LONG, LONG*);

LONG AskLong(const char* name) {
    LONG answer = -1;
    if (auto f = Export<LongOut>(name)) f(&answer);
    return answer;
}

bool AskBool(const char* name) {
    VARIANT_BOOL answer = 0;
    if (auto f = Export<BoolOut>(name)) f(&answer);
    return answer != 0;
}

void Host() {
    std::printf("\nThe host\n");
    std::printf("  Windows %ld.%ld, build %ld; shell %ld.%ld.%ld\n", AskLong("esWindowsVersionMajor"),
                AskLong("esWindowsVersionMinor"), AskLong("esWindowsVersionRevision"), AskLong("esShellVersionMajor"),
                AskLong("esShellVersionMinor"), AskLong("esShellVersionRevision"));
    if (auto f = Export<TextAnswer>("esGetProductName")) {
        BSTR name = nullptr;
        f(&name);
        std::printf("  %-22s= %s\n", "esGetProductName", name ? Show(name).c_str() : "(the host has no such name)");
        SysFreeString(name);
    }
    std::printf("  %-22s= %s\n  %-22s= %s\n", "esIsHostWine", AskBool("esIsHostWine") ? "True" : "False",
                "esIsHostWin64", AskBool("esIsHostWin64") ? "True" : "False");
    if (auto f = Export<ProcessBitness>("esIsProcessWin64Ex")) {
        LONG bitness = 0;
        f(static_cast<LONG>(GetCurrentProcessId()), &bitness);
        std::printf("  %-22s= %ld (1: 32-bit, 2: 64-bit)\n", "esIsProcessWin64Ex(me)", bitness);
    }
    static const char* const tests[] = {
        "Win9x", "Win32s", "WinNT", "WinNT351", "WinNT40", "Win2000", "WinXP", "Win2003", "Win2003i", "Win2003R2",
        "WinVista", "Win2008", "Win7", "Win2008R2", "Win8", "Win2012", "Win95", "Win95_OSR2", "Win95i", "Win98",
        "Win98SE", "Win98i", "WinME", "WinNT351_OrHigher", "WinNT40_OrHigher", "Win2000_OrHigher", "WinXP_OrHigher",
        "Win2003_OrHigher", "Win2003R2_OrHigher", "WinVista_OrHigher", "Win2008_OrHigher", "Win7_OrHigher",
        "Win2008R2_OrHigher", "Win8_OrHigher", "Win2012_OrHigher", "Win95_OrHigher", "Win95_OSR2_OrHigher",
        "Win98_OrHigher", "Win98SE_OrHigher", "WinME_OrHigher", "Win64", "Wine", "Win16"};
    std::printf("  true here:");
    for (const char* test : tests)
        if (AskBool(("esIsHost" + std::string(test)).c_str())) std::printf(" esIsHost%s", test);
    std::printf("\n");
}

typedef HRESULT(WINAPI* ModuleName)(LONG, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* PathFlagToText)(BSTR, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* PathToBool)(BSTR, VARIANT_BOOL*);
typedef HRESULT(WINAPI* PathToDouble)(BSTR, double*);
typedef HRESULT(WINAPI* PathToLong)(BSTR, LONG*);
typedef HRESULT(WINAPI* LongToText)(LONG, BSTR*);

// This program's own file: tested, in its long and short forms, measured,
// and the volume it lies on.
void Files() {
    std::printf("\nFiles and volumes\n");
    auto module = Export<ModuleName>("esGetModuleFileName");
    auto exists = Export<PathToBool>("esIsFileExist");
    auto longName = Export<PathFlagToText>("esGetLongFileName");
    auto shortName = Export<PathFlagToText>("esGetShortFileName");
    auto size = Export<PathToDouble>("esGetFileSizeEx");
    auto root = Export<TextToText>("esGetFileRoot");
    auto label = Export<TextToText>("esGetVolumeName");
    auto serial = Export<PathToLong>("esGetVolumeSerialNumber");
    auto format = Export<LongToText>("esFormatVolumeSerialNumber");
    if (!module || !exists || !longName || !shortName || !size || !root || !label || !serial || !format) return;
    BSTR me = nullptr, text = nullptr, volume = nullptr;
    VARIANT_BOOL found = 0;
    double bytes = 0;
    LONG number = 0;
    module(0, VARIANT_TRUE, &me);
    exists(me, &found);
    std::printf("  %-24s = %s, esIsFileExist: %s\n", "esGetModuleFileName(0)", Show(me).c_str(), found ? "True" : "False");
    shortName(me, VARIANT_FALSE, &text);
    std::printf("  %-24s = %s\n", "esGetShortFileName", Show(text).c_str());
    longName(text, VARIANT_FALSE, &text);
    std::printf("  %-24s = %s\n", "esGetLongFileName", Show(text).c_str());
    size(me, &bytes);
    std::printf("  %-24s = %.0f bytes\n", "esGetFileSizeEx", bytes);
    root(me, &volume);
    label(volume, &text);
    serial(volume, &number);
    std::printf("  %-24s = %s, label %s", "esGetFileRoot", Show(volume).c_str(), Show(text).c_str());
    format(number, &text);
    std::printf(", serial number %s\n", Show(text).c_str());
    SysFreeString(me), SysFreeString(text), SysFreeString(volume);
}

typedef HRESULT(WINAPI* WriteString)(LONG, BSTR, BSTR, BSTR, VARIANT_BOOL, VARIANT_BOOL*);
typedef HRESULT(WINAPI* ReadString)(LONG, BSTR, BSTR, BSTR, VARIANT_BOOL, VARIANT_BOOL*, BSTR*);
typedef HRESULT(WINAPI* DeleteKey)(LONG, BSTR, VARIANT_BOOL, VARIANT_BOOL*);
typedef HRESULT(WINAPI* NoInputText)(BSTR*);
typedef HRESULT(WINAPI* SpecialFolder)(LONG, BSTR*);
typedef HRESULT(WINAPI* TempFile)(BSTR, BSTR, BSTR*);

// A value written, read back and deleted with its key; the system's folders
// and a few special ones; a temporary file made and removed.
void RegistryAndFolders() {
    std::printf("\nRegistry and folders\n");
    auto write = Export<WriteString>("esWriteStringToRegistry");
    auto read = Export<ReadString>("esReadStringFromRegistry");
    auto remove = Export<DeleteKey>("esDeleteKeyFromRegistry");
    if (write && read && remove) {
        const LONG currentUser = static_cast<LONG>(0x80000001);
        Text key("Software\\CorvaneSupportKitTour"), name("Greeting"), value("Hello from the tour"), fallback("");
        VARIANT_BOOL done = 0, found = 0;
        BSTR text = nullptr;
        write(currentUser, key.b, name.b, value.b, VARIANT_FALSE, &done);
        read(currentUser, key.b, name.b, fallback.b, VARIANT_FALSE, &found, &text);
        std::printf("  HKCU\\Software\\CorvaneSupportKitTour: written %d, read %s (found %d)", done, Show(text).c_str(), found);
        remove(currentUser, key.b, VARIANT_TRUE, &done);
        std::printf(", key deleted %d\n", done);
        SysFreeString(text);
    }
    for (const char* name : {"esGetWindowsPath", "esGetSystemPath", "esGetTempPath", "esGetCurrentDirectory"})
        if (auto f = Export<NoInputText>(name)) {
            BSTR text = nullptr;
            f(&text);
            std::printf("  %-24s = %s\n", name, Show(text).c_str());
            SysFreeString(text);
        }
    if (auto f = Export<SpecialFolder>("esGetSpecialFolder"))
        for (LONG csidl : {5, 26, 38, 40}) {
            BSTR text = nullptr;
            f(csidl, &text);
            std::printf("  esGetSpecialFolder(%2ld)  = %s\n", csidl, Show(text).c_str());
            SysFreeString(text);
        }
    if (auto f = Export<TempFile>("esGetTempFileName2")) {
        BSTR text = nullptr;
        f(nullptr, Text("tmp").b, &text);
        std::printf("  %-24s = %s", "esGetTempFileName2", Show(text).c_str());
        std::printf(", deleted %d\n", text ? DeleteFileW(text) : 0);
        SysFreeString(text);
    }
}

typedef HRESULT(WINAPI* TextToLong)(BSTR, LONG*);
typedef HRESULT(WINAPI* DoubleAnswer)(double*);

// What hosts this program: a console program has no Visual Basic runtime
// window, so the version is 0 and there is no main window title.
void VisualBasicHost() {
    std::printf("\nThe Visual Basic host and the desktop\n");
    const LONG runtime = AskLong("esGetVBVersion");
    std::printf("  %-22s= %ld (%s)\n", "esGetVBVersion", runtime, runtime ? "a Visual Basic runtime" : "none: a console program");
    std::printf("  %-22s= %s\n", "esIsInIDE", AskBool("esIsInIDE") ? "True" : "False");
    std::printf("  %-22s= %s\n", "esIsUnicodeAvailable", AskBool("esIsUnicodeAvailable") ? "True" : "False");
    if (auto f = Export<DoubleAnswer>("esGetIdleTimeInterval")) {
        double idle = 0;
        const HRESULT status = f(&idle);
        std::printf("  %-22s= %.0f ms%s\n", "esGetIdleTimeInterval", idle, status ? " (the host cannot tell)" : "");
    }
    std::printf("  %-22s= 0x%lX\n", "esGetErrorMode", AskLong("esGetErrorMode"));
    std::printf("  %-22s= %s\n", "esIsWorkstationLocked", AskBool("esIsWorkstationLocked") ? "True" : "False");
    if (auto f = Export<TextToLong>("esCLng"))
        for (const char* text : {"  42", "&HFF", "&O17", "&B101", "3.7", "4294967295", "12abc"}) {
            LONG value = 0;
            f(Text(text).b, &value);
            std::printf("  esCLng(\"%s\")%*s= %ld\n", text, int(12 - std::strlen(text)), "", value);
        }
}

void CALLBACK CloseTourBox(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    if (HWND box = FindWindowA("#32770", "Corvane tour")) PostMessageA(box, WM_COMMAND, IDOK, 0);
}

// The screen in pixels and twips and the factors between the units; a
// message box that a timer closes after two seconds.
void ScreenAndMessageBox() {
    std::printf("\nScreen and a message box\n");
    typedef HRESULT(WINAPI * LongOut)(LONG*);
    typedef HRESULT(WINAPI * SingleOut)(float*);
    for (const char* name : {"esScreenWidthPx", "esScreenHeightPx", "esVirtualScreenWidthPx", "esVirtualScreenLeftPx"})
        if (auto f = Export<LongOut>(name)) {
            LONG value = 0;
            f(&value);
            std::printf("  %-26s = %ld pixels\n", name, value);
        }
    for (const char* name : {"esScreenWidth", "esScreenHeight", "esScreenTwipsPerPixelX", "esScreenTwipsPerPixelY",
                             "esScreenHimetricPerPixelX"})
        if (auto f = Export<SingleOut>(name)) {
            float value = 0;
            f(&value);
            std::printf("  %-26s = %g\n", name, value);
        }
    typedef HRESULT(WINAPI * MsgBox2)(BSTR, LONG, BSTR, LONG*);
    if (auto f = Export<MsgBox2>("esMsgBox2")) {
        // The box runs its own message loop on this thread, which delivers
        // the timer that closes it.
        const UINT_PTR timer = SetTimer(nullptr, 0, 2000, CloseTourBox);
        LONG result = 0;
        f(Text("This box closes itself in two seconds.").b, 0x40, Text("Corvane tour").b, &result);
        KillTimer(nullptr, timer);
        std::printf("  esMsgBox2 returned %ld (IDOK)\n", result);
    }
}

// Who runs the tour, the library's own version and version record, and one
// information event.
typedef HRESULT(WINAPI* FullUserName)(VARIANT_BOOL, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* UserSid)(SAFEARRAY**, VARIANT_BOOL*);
typedef HRESULT(WINAPI* SidText)(SAFEARRAY**, BSTR*);
typedef HRESULT(WINAPI* LibraryVersion)(DLLVERSIONINFO*);
typedef HRESULT(WINAPI* LogText)(BSTR, VARIANT_BOOL*);

void Identity() {
    std::printf("\nIdentity and the library\n");
    for (const char* name : {"esGetComputerName", "esGetUserName", "esGetDomainName"})
        if (auto f = Export<NoInputText>(name)) {
            BSTR text = nullptr;
            f(&text);
            std::printf("  %-24s = %s\n", name, Show(text).c_str());
            SysFreeString(text);
        }
    if (auto f = Export<FullUserName>("esGetFullUserName")) {
        BSTR text = nullptr;
        f(VARIANT_TRUE, VARIANT_TRUE, &text);
        std::printf("  %-24s = %s\n", "esGetFullUserName(mail, computer)", Show(text).c_str());
        SysFreeString(text);
    }
    auto sid = Export<UserSid>("esGetUserSID");
    auto text = Export<SidText>("esSIDtoStringSID2");
    if (sid && text) {
        SAFEARRAY* bytes = nullptr;
        VARIANT_BOOL given = 0;
        BSTR shown = nullptr;
        sid(&bytes, &given);
        if (given) text(&bytes, &shown);
        std::printf("  %-24s = %s\n", "esGetUserSID, as text", Show(shown).c_str());
        SysFreeString(shown);
        if (bytes) SafeArrayDestroy(bytes);
    }
    if (auto f = Export<LibraryVersion>("DllGetVersion")) {
        DLLVERSIONINFO info = {sizeof info, 0, 0, 0, 0};
        HRESULT status = f(&info);
        std::printf("  %-24s = %lu.%lu.%lu, platform %lu (status 0x%08lX)\n", "DllGetVersion", info.dwMajorVersion,
                    info.dwMinorVersion, info.dwBuildNumber, info.dwPlatformID, static_cast<unsigned long>(status));
    }
    char path[MAX_PATH];
    GetModuleFileNameA(library, path, MAX_PATH);
    std::vector<char> record(GetFileVersionInfoSizeA(path, nullptr) + 1);
    char* value = nullptr;
    UINT size = 0;
    if (GetFileVersionInfoA(path, 0, static_cast<DWORD>(record.size()), record.data()))
        for (const char* key : {"FileDescription", "FileVersion", "InternalName", "OriginalFilename"})
            if (VerQueryValueA(record.data(), (std::string("\\StringFileInfo\\041904E3\\") + key).c_str(),
                               reinterpret_cast<void**>(&value), &size))
                std::printf("  version record %-16s = %s\n", key, value);
    if (auto f = Export<LogText>("esLogInfo")) {
        VARIANT_BOOL logged = 0;
        BSTR message = SysAllocString(L"The tour of CorvaneSupportKit0100 ran.");
        f(message, &logged);
        std::printf("  %-24s = %s\n", "esLogInfo", logged ? "reported" : "not reported");
        SysFreeString(message);
    }
}

}  // namespace

int main() {
    library = LoadLibraryA("CorvaneSupportKit0100.dll");
    if (!library) {
        std::printf("CorvaneSupportKit0100.dll did not load (error %lu)\n", GetLastError());
        return 1;
    }
    std::printf("CorvaneSupportKit0100.dll loaded at %p\n\n", static_cast<void*>(library));
    PathBuilding();
    PathParsing();
    Values();
    DatesAndFormats();
    Host();
    Files();
    RegistryAndFolders();
    VisualBasicHost();
    ScreenAndMessageBox();
    Identity();
    return 0;
}
