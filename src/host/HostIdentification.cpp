// Module HostIdentification: the platform's version record, read once and
// kept; the exports that hand out its fields; the host tests.
#include "HostIdentification.h"

#include <cstring>

#include "Frame.h"
#include "FunctionsSupport.h"

static const char kModule[] = "HostIdentification";

namespace {

// The version record of the process, filled by the first read that the
// platform answers and never refreshed.
OSVERSIONINFOEXA g_osvi;
uint8_t g_osviFilled = 0;

// Asks the platform for the record; a refused read leaves it zero but for
// its size field, and the next reader asks again.
__attribute__((noinline)) void READOSVI() {
    CSK_ROUTINE("INITOSVI");
    uint8_t isLong;
    if (MYGETVERSIONEX(&g_osvi, &isLong)) g_osviFilled = 1;
}

// Every reader calls this first: once the record is kept it costs one test.
inline void INITOSVI() {
    if (g_osviFilled != 1) READOSVI();
}

}  // namespace

uint8_t MYGETVERSIONEX(OSVERSIONINFOEXA* record, uint8_t* isLong) {
    CSK_ROUTINE("MYGETVERSIONEX");
    record->dwOSVersionInfoSize = sizeof(OSVERSIONINFOEXA);
    record->dwMajorVersion = record->dwMinorVersion = record->dwBuildNumber = record->dwPlatformId = 0;
    record->szCSDVersion[0] = 0;
    record->wServicePackMajor = record->wServicePackMinor = record->wSuiteMask = 0;
    record->wProductType = record->wReserved = 0;
    if (GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(record))) {
        *isLong = 1;
        return 1;
    }
    // Windows 95 and NT 4 before its sixth service pack know only the short
    // form; the fields behind szCSDVersion then stay 0.
    record->dwOSVersionInfoSize = sizeof(OSVERSIONINFOA);
    *isLong = 0;
    return GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(record)) ? 1 : 0;
}

void MYGETNATIVESYSTEMINFO(SYSTEM_INFO* info, uint8_t* native) {
    CSK_ROUTINE("MYGETNATIVESYSTEMINFO");
    __GETNATIVESYSTEMINFO(info);
    if (g_missingEntry) {
        GetSystemInfo(info);
        *native = 0;
    } else {
        *native = 1;
    }
}

// A fresh answer of the platform on each call, in the caller's record; the
// third argument is the out-pointer and is tested first.
CSK_EXPORT HRESULT WINAPI esGetVersionEx(OSVERSIONINFOEXA* record, VARIANT_BOOL* isLong, VARIANT_BOOL* answered) {
    return ValueExport(kModule, "ESGETVERSIONEX", answered, [&] {
        if (!record) return E_INVALIDARG;
        uint8_t filledLong;
        uint8_t ok = MYGETVERSIONEX(record, &filledLong);
        if (isLong) *isLong = VBBOOL(filledLong);
        *answered = VBBOOL(ok);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esGetNativeSystemInfo(SYSTEM_INFO* info, VARIANT_BOOL* native) {
    RoutineScope scope(kModule, "ESGETNATIVESYSTEMINFO");
    if (!info) return E_INVALIDARG;
    uint8_t answeredNatively;
    MYGETNATIVESYSTEMINFO(info, &answeredNatively);
    if (native) *native = VBBOOL(answeredNatively);
    return S_OK;
}

// What the platform calls itself, where it has such a name; a null BSTR
// where it has not.
CSK_EXPORT HRESULT WINAPI esGetProductName(BSTR* result) {
    return TextExport(kModule, "ESGETPRODUCTNAME", result, [&] {
        char buffer[1025] = {};
        __GETPRODUCTNAME(buffer, 1024);
        return std::string(buffer);
    });
}

CSK_EXPORT HRESULT WINAPI esWindowsVersionMajor(LONG* answer) {
    return ValueExport(kModule, "ESWINDOWSVERSIONMAJOR", answer, [&] {
        INITOSVI();
        *answer = static_cast<LONG>(g_osvi.dwMajorVersion);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esWindowsVersionMinor(LONG* answer) {
    return ValueExport(kModule, "ESWINDOWSVERSIONMINOR", answer, [&] {
        INITOSVI();
        *answer = static_cast<LONG>(g_osvi.dwMinorVersion);
        return S_OK;
    });
}

// The 9x family keeps its version in the high word of the build number.
CSK_EXPORT HRESULT WINAPI esWindowsVersionRevision(LONG* answer) {
    return ValueExport(kModule, "ESWINDOWSVERSIONREVISION", answer, [&] {
        INITOSVI();
        DWORD build = g_osvi.dwBuildNumber;
        *answer = static_cast<LONG>(g_osvi.dwPlatformId == VER_PLATFORM_WIN32_WINDOWS ? build & 0xFFFF : build);
        return S_OK;
    });
}

// The library is 32-bit code, so it runs under WOW64 exactly on a 64-bit
// Windows.
CSK_EXPORT HRESULT WINAPI esIsHostWin64(VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISHOSTWIN64", answer, [&] {
        *answer = VARIANT_FALSE;
        BOOL wow64 = FALSE;
        if (__ISWOW64PROCESS(GetCurrentProcess(), &wow64) && !g_missingEntry) *answer = VBBOOL(wow64 != 0);
        return S_OK;
    });
}

// Wine's NTDLL has wine_get_version; the entry point alone decides.
CSK_EXPORT HRESULT WINAPI esIsHostWine(VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISHOSTWINE", answer, [&] {
        __WINE_GET_VERSION();
        *answer = VBBOOL(g_missingEntry == 0);
        return S_OK;
    });
}

// A 32-bit library never runs on a 16-bit Windows.
CSK_EXPORT HRESULT WINAPI esIsHostWin16(VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISHOSTWIN16", answer, [&] {
        *answer = VARIANT_FALSE;
        return S_OK;
    });
}

// ---- The host tests: each reads the record and answers -1 or 0 ----

namespace {

// The frame of every host test.
template <class Test>
HRESULT HostTest(const char* routine, VARIANT_BOOL* answer, Test test) {
    return ValueExport(kModule, routine, answer, [&] {
        INITOSVI();
        *answer = VBBOOL(test());
        return S_OK;
    });
}

enum : DWORD { kWin32s = VER_PLATFORM_WIN32s, k9x = VER_PLATFORM_WIN32_WINDOWS, kNT = VER_PLATFORM_WIN32_NT };

bool on(DWORD platform) { return g_osvi.dwPlatformId == platform; }
bool is(DWORD platform, DWORD major, DWORD minor) {
    return on(platform) && g_osvi.dwMajorVersion == major && g_osvi.dwMinorVersion == minor;
}
DWORD major() { return g_osvi.dwMajorVersion; }
DWORD minor() { return g_osvi.dwMinorVersion; }
bool workstation() { return g_osvi.wProductType == VER_NT_WORKSTATION; }
bool serverR2() { return GetSystemMetrics(SM_SERVERR2) != 0; }

// The release letter of the 9x family: the second character of
// szCSDVersion, case included; 0 when the text is shorter.
char mark() { return g_osvi.szCSDVersion[0] ? g_osvi.szCSDVersion[1] : 0; }
bool osr2() { return mark() == 'B' || mark() == 'C'; }
bool secondEdition() { return mark() == 'A'; }

// The _OrHigher tests on one platform: false below major, true above it
// (unless the row has no such step), the minor test at major.
template <class AtMajor>
bool from(DWORD platform, DWORD wanted, bool trueAbove, AtMajor atMajor) {
    if (!on(platform) || major() < wanted) return false;
    if (trueAbove && major() > wanted) return true;
    return atMajor();
}

}  // namespace

#define CSK_HOST_TEST(name, ROUTINE, condition)                                     \
    CSK_EXPORT HRESULT WINAPI name(VARIANT_BOOL* answer) {                          \
        return HostTest(ROUTINE, answer, [] { return static_cast<bool>(condition); }); \
    }

CSK_HOST_TEST(esIsHostWin9x, "ESISHOSTWIN9X", on(k9x))
CSK_HOST_TEST(esIsHostWin32s, "ESISHOSTWIN32S", on(kWin32s))
CSK_HOST_TEST(esIsHostWinNT, "ESISHOSTWINNT", on(kNT))
CSK_HOST_TEST(esIsHostWinNT351, "ESISHOSTWINNT351", is(kNT, 3, 51))
CSK_HOST_TEST(esIsHostWinNT40, "ESISHOSTWINNT40", is(kNT, 4, 0))
CSK_HOST_TEST(esIsHostWin2000, "ESISHOSTWIN2000", is(kNT, 5, 0))
CSK_HOST_TEST(esIsHostWinXP, "ESISHOSTWINXP", is(kNT, 5, 1))
CSK_HOST_TEST(esIsHostWin2003, "ESISHOSTWIN2003", is(kNT, 5, 2))
CSK_HOST_TEST(esIsHostWin2003i, "ESISHOSTWIN2003I", is(kNT, 5, 2) && !serverR2())
CSK_HOST_TEST(esIsHostWin2003R2, "ESISHOSTWIN2003R2", is(kNT, 5, 2) && serverR2())
CSK_HOST_TEST(esIsHostWinVista, "ESISHOSTWINVISTA", is(kNT, 6, 0) && workstation())
CSK_HOST_TEST(esIsHostWin2008, "ESISHOSTWIN2008", is(kNT, 6, 0) && !workstation())
CSK_HOST_TEST(esIsHostWin7, "ESISHOSTWIN7", is(kNT, 6, 1) && workstation())
CSK_HOST_TEST(esIsHostWin2008R2, "ESISHOSTWIN2008R2", is(kNT, 6, 1) && !workstation())
CSK_HOST_TEST(esIsHostWin8, "ESISHOSTWIN8", is(kNT, 6, 2) && workstation())
CSK_HOST_TEST(esIsHostWin2012, "ESISHOSTWIN2012", is(kNT, 6, 2) && !workstation())
CSK_HOST_TEST(esIsHostWin95, "ESISHOSTWIN95", is(k9x, 4, 0))
CSK_HOST_TEST(esIsHostWin95_OSR2, "ESISHOSTWIN95_OSR2", is(k9x, 4, 0) && osr2())
CSK_HOST_TEST(esIsHostWin95i, "ESISHOSTWIN95I", is(k9x, 4, 0) && !osr2())
CSK_HOST_TEST(esIsHostWin98, "ESISHOSTWIN98", is(k9x, 4, 10))
CSK_HOST_TEST(esIsHostWin98SE, "ESISHOSTWIN98SE", is(k9x, 4, 10) && secondEdition())
CSK_HOST_TEST(esIsHostWin98i, "ESISHOSTWIN98I", is(k9x, 4, 10) && !secondEdition())
CSK_HOST_TEST(esIsHostWinME, "ESISHOSTWINME", is(k9x, 4, 90))

// _OrHigher stays inside its platform. The rows from Vista on have no step
// for a major above 6: their minor test runs on whatever major is reported.
CSK_HOST_TEST(esIsHostWinNT351_OrHigher, "ESISHOSTWINNT351_ORHIGHER", from(kNT, 3, true, [] { return minor() >= 51; }))
CSK_HOST_TEST(esIsHostWinNT40_OrHigher, "ESISHOSTWINNT40_ORHIGHER", from(kNT, 4, false, [] { return true; }))
CSK_HOST_TEST(esIsHostWin2000_OrHigher, "ESISHOSTWIN2000_ORHIGHER", from(kNT, 5, false, [] { return true; }))
CSK_HOST_TEST(esIsHostWinXP_OrHigher, "ESISHOSTWINXP_ORHIGHER", from(kNT, 5, true, [] { return minor() >= 1; }))
CSK_HOST_TEST(esIsHostWin2003_OrHigher, "ESISHOSTWIN2003_ORHIGHER", from(kNT, 5, true, [] { return minor() >= 2; }))
CSK_HOST_TEST(esIsHostWin2003R2_OrHigher, "ESISHOSTWIN2003R2_ORHIGHER",
              from(kNT, 5, true, [] { return minor() > 2 || (minor() == 2 && serverR2()); }))
CSK_HOST_TEST(esIsHostWinVista_OrHigher, "ESISHOSTWINVISTA_ORHIGHER",
              from(kNT, 6, false, [] { return minor() != 0 || workstation(); }))
CSK_HOST_TEST(esIsHostWin2008_OrHigher, "ESISHOSTWIN2008_ORHIGHER",
              from(kNT, 6, false, [] { return minor() != 0 || !workstation(); }))
CSK_HOST_TEST(esIsHostWin7_OrHigher, "ESISHOSTWIN7_ORHIGHER",
              from(kNT, 6, false, [] { return minor() > 1 || (minor() == 1 && workstation()); }))
CSK_HOST_TEST(esIsHostWin2008R2_OrHigher, "ESISHOSTWIN2008R2_ORHIGHER",
              from(kNT, 6, false, [] { return minor() > 1 || (minor() == 1 && !workstation()); }))
CSK_HOST_TEST(esIsHostWin8_OrHigher, "ESISHOSTWIN8_ORHIGHER",
              from(kNT, 6, false, [] { return minor() > 2 || (minor() == 2 && workstation()); }))
CSK_HOST_TEST(esIsHostWin2012_OrHigher, "ESISHOSTWIN2012_ORHIGHER",
              from(kNT, 6, false, [] { return minor() > 2 || (minor() == 2 && !workstation()); }))
CSK_HOST_TEST(esIsHostWin95_OrHigher, "ESISHOSTWIN95_ORHIGHER", from(k9x, 4, false, [] { return true; }))
// No step above major 4: at minor 0 the release letter decides on any major.
CSK_HOST_TEST(esIsHostWin95_OSR2_OrHigher, "ESISHOSTWIN95_OSR2_ORHIGHER",
              from(k9x, 4, false, [] { return minor() > 0 || osr2(); }))
CSK_HOST_TEST(esIsHostWin98_OrHigher, "ESISHOSTWIN98_ORHIGHER", from(k9x, 4, true, [] { return minor() >= 10; }))
// From minor 10 up the letter decides, on 4.90 too.
CSK_HOST_TEST(esIsHostWin98SE_OrHigher, "ESISHOSTWIN98SE_ORHIGHER",
              from(k9x, 4, true, [] { return minor() >= 10 && secondEdition(); }))
CSK_HOST_TEST(esIsHostWinME_OrHigher, "ESISHOSTWINME_ORHIGHER", from(k9x, 4, true, [] { return minor() >= 90; }))

#undef CSK_HOST_TEST

// Other families ask through the exports, as a caller would.
uint8_t WR_ESISHOSTWINNT() {
    CSK_ROUTINE("WR_ESISHOSTWINNT");
    VARIANT_BOOL answer = 0;
    return esIsHostWinNT(&answer) == S_OK && answer != 0 ? 1 : 0;
}

uint8_t WR_ESISHOSTWIN2000_ORHIGHER() {
    CSK_ROUTINE("WR_ESISHOSTWIN2000_ORHIGHER");
    VARIANT_BOOL answer = 0;
    return esIsHostWin2000_OrHigher(&answer) == S_OK && answer != 0 ? 1 : 0;
}
