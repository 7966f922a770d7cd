// Host identification through the exports: the 43 host tests and the
// version numbers on every host that winsim can play (each in a fresh copy of
// the library, since the record is kept for the life of the process), and,
// under Wine, on the Windows version that the prefix plays (the version
// matrix of tests/host-matrix.sh); then the shell version, bitness, and the
// bound entry points themselves.
#include <cstdlib>
#include <iterator>
#include <set>
#include <sstream>

#include "FunctionsSupport.h"
#include "Tools.h"
#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

// The tests, by their names behind "esIsHost".
const char* const kTests[] = {
    "Win9x", "Win32s", "WinNT", "WinNT351", "WinNT40", "Win2000", "WinXP", "Win2003", "Win2003i", "Win2003R2",
    "WinVista", "Win2008", "Win7", "Win2008R2", "Win8", "Win2012", "Win95", "Win95_OSR2", "Win95i", "Win98",
    "Win98SE", "Win98i", "WinME", "WinNT351_OrHigher", "WinNT40_OrHigher", "Win2000_OrHigher", "WinXP_OrHigher",
    "Win2003_OrHigher", "Win2003R2_OrHigher", "WinVista_OrHigher", "Win2008_OrHigher", "Win7_OrHigher",
    "Win2008R2_OrHigher", "Win8_OrHigher", "Win2012_OrHigher", "Win95_OrHigher", "Win95_OSR2_OrHigher",
    "Win98_OrHigher", "Win98SE_OrHigher", "WinME_OrHigher", "Win64", "Wine", "Win16"};

// Which tests answer true on each kind of host, read off the rows of the
// tests one by one.
const std::string k95 = "Win9x Win95 Win95i Win95_OrHigher";
const std::string k95Osr2 = "Win9x Win95 Win95_OSR2 Win95_OrHigher Win95_OSR2_OrHigher";
const std::string k98Line = "Win9x Win95_OrHigher Win95_OSR2_OrHigher Win98_OrHigher ";
const std::string k98 = k98Line + "Win98 Win98i", k98SE = k98Line + "Win98 Win98SE Win98SE_OrHigher";
const std::string kME = k98Line + "WinME WinME_OrHigher";
const std::string kNT = "WinNT WinNT351_OrHigher ", kNT4 = kNT + "WinNT40_OrHigher ";
const std::string kNT5 = kNT4 + "Win2000_OrHigher ", kXP = kNT5 + "WinXP_OrHigher ";
const std::string k2003 = kXP + "Win2003 Win2003_OrHigher Win2003i";
const std::string kNT6 = kXP + "Win2003_OrHigher Win2003R2_OrHigher ";
const std::string kTo7 = kNT6 + "WinVista_OrHigher Win2008_OrHigher ";
const std::string kTo8 = kTo7 + "Win7_OrHigher Win2008R2_OrHigher ";
const std::string kVista = kNT6 + "WinVista WinVista_OrHigher", k2008 = kNT6 + "Win2008 Win2008_OrHigher";
const std::string k7 = kTo7 + "Win7 Win7_OrHigher", k2008R2 = kTo7 + "Win2008R2 Win2008R2_OrHigher";
const std::string k8 = kTo8 + "Win8 Win8_OrHigher", k81 = kTo8 + "Win8_OrHigher Win2012_OrHigher";

struct Host {
    DWORD platform, major, minor, build;
    const char* csd;
    BYTE type;
    int accepts, serverR2;
    std::string expected;
    LONG revision;
};

const Host kHosts[] = {
    {0, 0, 0, 0, "", 0, 0, 0, "Win32s", 0},  // the platform refuses both sizes: a record of zeros
    {0, 3, 10, 0, "Win32s 1.3", 0, 2, 0, "Win32s", 0},
    {1, 4, 0, 0x040003B6, "", 0, 1, 0, k95, 950},  // the 9x build number's high word never shows
    {1, 4, 0, 0x040003B6, " B", 0, 1, 0, k95Osr2, 950},
    {1, 4, 0, 0x040003B6, " C", 0, 1, 0, k95Osr2, 950},
    {1, 4, 0, 0x040003B6, " b", 0, 1, 0, k95, 950},  // the letter is compared with its case
    {1, 4, 10, 0x040A07CE, "", 0, 1, 0, k98, 1998},
    {1, 4, 10, 0x040A08AE, " A ", 0, 1, 0, k98SE, 2222},
    {1, 4, 90, 0x045A0BB8, " ", 0, 1, 0, kME, 3000},
    {1, 4, 90, 0x045A0BB8, " A", 0, 1, 0, kME + " Win98SE_OrHigher", 3000},  // from 4.10 up the letter decides
    {2, 3, 51, 1057, "Service Pack 5", 1, 1, 0, kNT + "WinNT351", 1057},
    {2, 4, 0, 1381, "Service Pack 5", 1, 1, 0, kNT4 + "WinNT40", 1381},
    {2, 5, 0, 2195, "", 1, 2, 0, kNT5 + "Win2000", 2195},
    {2, 5, 1, 2600, "", 1, 2, 0, kXP + "WinXP", 2600},
    {2, 5, 2, 3790, "", 3, 2, 0, k2003, 3790},
    {2, 5, 2, 3790, "", 3, 2, 1, kXP + "Win2003 Win2003_OrHigher Win2003R2 Win2003R2_OrHigher", 3790},
    {2, 6, 0, 6002, "", 1, 2, 1, kVista, 6002},
    {2, 6, 0, 6002, "", 3, 2, 0, k2008, 6002},
    {2, 6, 0, 6002, "", 2, 2, 0, k2008, 6002},
    {2, 6, 1, 7601, "", 1, 2, 0, k7, 7601},
    {2, 6, 1, 0x80001DB1, "", 3, 2, 0, k2008R2, LONG(0x80001DB1)},  // on NT all 32 bits show
    {2, 6, 1, 7601, "", 1, 1, 0, k2008R2, 7601},  // the short record leaves product type 0
    {2, 6, 2, 9200, "", 1, 2, 0, k8, 9200},
    {2, 6, 2, 9200, "", 3, 2, 0, kTo8 + "Win2012 Win2012_OrHigher", 9200},
    {2, 6, 3, 9600, "", 1, 2, 0, k81, 9600},
    {2, 6, 3, 9600, "", 3, 2, 0, k81, 9600},
    {2, 10, 0, 19045, "", 1, 2, 0, kNT6 + "WinVista_OrHigher", 19045},  // no step above major 6 from Vista on
    {2, 10, 0, 20348, "", 3, 2, 0, kNT6 + "Win2008_OrHigher", 20348},
};

std::string Sorted(const std::string& names) {
    std::istringstream in(names);
    std::set<std::string> set{std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
    std::string out;
    for (const std::string& name : set) out += name + " ";
    return out;
}

// The tests that answer true, and the three version numbers.
std::string Observed() {
    std::string names;
    for (const char* test : kTests) {
        const std::string name = std::string("esIsHost") + test;
        VARIANT_BOOL answer = 7;
        EXPECT_EQ(S_OK, (VbFunction<HRESULT, VARIANT_BOOL*>{name.c_str()}(&answer))) << name;
        EXPECT_TRUE(answer == VARIANT_TRUE || answer == VARIANT_FALSE) << name << " gave " << answer;
        if (answer) names += std::string(test) + " ";
    }
    LONG major = -1, minor = -1, revision = -1;
    vb::esWindowsVersionMajor(&major), vb::esWindowsVersionMinor(&minor), vb::esWindowsVersionRevision(&revision);
    return Sorted(names) + "| " + std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(revision);
}

std::string Expected(const Host& h, const char* extra = "") {
    return Sorted(h.expected + " " + extra) + "| " + std::to_string(h.major) + "." + std::to_string(h.minor) + "." +
           std::to_string(h.revision);
}

// Every export with one answer pointer: a null one is status 1, and the
// record is not read for it.
TEST(HostTests, NullAnswerPointer) {
#ifdef CSK_WINSIM
    winsim::reset();
    FreshLibrary fresh;
#endif
    for (const char* test : kTests) {
        const std::string name = std::string("esIsHost") + test;
        EXPECT_EQ(S_FALSE, (VbFunction<HRESULT, VARIANT_BOOL*>{name.c_str()}(nullptr))) << name;
    }
    for (auto f : {vb::esWindowsVersionMajor, vb::esWindowsVersionMinor, vb::esWindowsVersionRevision,
                   vb::esShellVersionMajor, vb::esShellVersionMinor, vb::esShellVersionRevision})
        EXPECT_EQ(S_FALSE, f(nullptr)) << f.name;
    EXPECT_EQ(S_FALSE, vb::esGetProductName(nullptr));
    EXPECT_EQ(S_FALSE, vb::esIsProcessWin64Ex(0, nullptr));
    EXPECT_EQ(S_FALSE, vb::esIsProcessWin64(0, nullptr));
    // esGetVersionEx tests its third argument first, then the record.
    OSVERSIONINFOEXA record{};
    VARIANT_BOOL isLong = 7, answered = 7;
    EXPECT_EQ(S_FALSE, vb::esGetVersionEx(nullptr, &isLong, nullptr));
    EXPECT_EQ(E_INVALIDARG, vb::esGetVersionEx(nullptr, &isLong, &answered));
    EXPECT_EQ(E_INVALIDARG, vb::esGetNativeSystemInfo(nullptr, &isLong));
    EXPECT_EQ(7, isLong);
    EXPECT_EQ(7, answered);
#ifdef CSK_WINSIM
    EXPECT_EQ(0, winsim::calls("GetVersionExA") + winsim::calls("LoadLibraryA") + winsim::calls("OpenProcess"));
#endif
    // The second argument may be null.
    EXPECT_EQ(S_OK, vb::esGetVersionEx(&record, nullptr, &answered));
    EXPECT_EQ(VARIANT_TRUE, answered);
    EXPECT_EQ(156u, record.dwOSVersionInfoSize);
    SYSTEM_INFO info{};
    EXPECT_EQ(S_OK, vb::esGetNativeSystemInfo(&info, nullptr));
    EXPECT_NE(0u, info.dwPageSize);
}

// This process on a 32-bit Windows (winsim's default and Wine's win32
// prefix), and a process identifier that names none.
TEST(HostTests, ThisProcess) {
#ifdef CSK_WINSIM
    winsim::reset();
    FreshLibrary fresh;
#endif
    LONG answer = 7, none = 7;
    EXPECT_EQ(S_OK, vb::esIsProcessWin64Ex(LONG(GetCurrentProcessId()), &answer));
    EXPECT_EQ(S_OK, vb::esIsProcessWin64Ex(0, &none));
    EXPECT_EQ(10, answer * 10 + none);
#ifdef _WIN32
    // Wine's GetProductName is a stub that ends the process; the library
    // takes it for missing there.
    Bstr product("stale");
    VARIANT_BOOL wine = 0;
    EXPECT_EQ(S_OK, vb::esIsHostWine(&wine));
    EXPECT_EQ(S_OK, vb::esGetProductName(product.out()));
    if (wine) {
        EXPECT_TRUE(product.isNull());
    }
#endif
}

#ifdef CSK_WINSIM
// Every host of the table, each in a fresh library.
TEST(HostTests, EveryHostWinsimPlays) {
    for (const Host& h : kHosts) {
        winsim::reset();
        winsim::setVersion(h.platform, h.major, h.minor, h.build, h.csd, h.type, h.accepts);
        winsim::setSystemMetric(SM_SERVERR2, h.serverR2);
        FreshLibrary fresh;
        EXPECT_EQ(Expected(h), Observed()) << h.platform << " " << h.major << "." << h.minor << " " << h.csd;
        // SM_SERVERR2 is asked on 5.2 only, and anew each time.
        EXPECT_EQ(h.platform == 2 && h.major == 5 && h.minor == 2 ? 3 : 0, winsim::calls("GetSystemMetrics"));
    }
}

// The record is read until the platform answers, then kept.
TEST(HostTests, RecordIsKeptFromTheFirstAnswer) {
    winsim::reset();
    winsim::setVersion(2, 6, 1, 7601, "", 1, 0);
    FreshLibrary fresh;
    VARIANT_BOOL answer = 7, isLong = 7;
    EXPECT_EQ(S_OK, vb::esIsHostWinNT(&answer));
    EXPECT_EQ(VARIANT_FALSE, answer);
    OSVERSIONINFOEXA record{};
    EXPECT_EQ(S_OK, vb::esGetVersionEx(&record, &isLong, &answer));
    EXPECT_EQ(0, isLong | answer);
    winsim::setVersion(2, 6, 1, 7601, "", 1, 1);  // the short form only
    EXPECT_EQ(S_OK, vb::esGetVersionEx(&record, &isLong, &answer));
    EXPECT_EQ(VARIANT_FALSE, isLong);
    EXPECT_EQ(VARIANT_TRUE, answer);
    EXPECT_EQ(148u, record.dwOSVersionInfoSize);
    EXPECT_EQ(S_OK, vb::esIsHostWinNT(&answer));
    EXPECT_EQ(VARIANT_TRUE, answer);
    winsim::setVersion(1, 4, 10, 0, "", 0, 2);
    const int calls = winsim::calls("GetVersionExA");
    EXPECT_EQ(S_OK, vb::esIsHostWinNT(&answer));
    EXPECT_EQ(VARIANT_TRUE, answer) << "never refreshed";
    EXPECT_EQ(calls, winsim::calls("GetVersionExA"));
}
// Bitness: this process under WOW64 or not, IsWow64Process there or not,
// and the process asked about (kNone: no such process).
TEST(HostTests, ProcessBitness) {
    const DWORD kSelf = GetCurrentProcessId(), kOther = 4000, kNone = 4444;
    const struct { bool selfWow64, missing; DWORD id; bool otherWow64; LONG answer; bool win64; } rows[] = {
        {true, false, kOther, false, 2, true}, {true, false, kOther, true, 1, true}, {true, false, kSelf, false, 1, true},
        {false, false, kOther, false, 1, false}, {true, true, kOther, false, 1, false}, {true, false, kNone, false, 0, true},
        {false, false, 0, false, 0, false},
    };
    for (const auto& r : rows) {
        winsim::reset();
        winsim::setProcess(kSelf, r.selfWow64);
        winsim::setProcess(kOther, r.otherWow64);
        winsim::setMissing("IsWow64Process", r.missing);
        FreshLibrary fresh;
        LONG answer = 7;
        VARIANT_BOOL is64 = 7, win64 = 7;
        EXPECT_EQ(S_OK, vb::esIsProcessWin64Ex(LONG(r.id), &answer));
        EXPECT_EQ(S_OK, vb::esIsProcessWin64(LONG(r.id), &is64));
        EXPECT_EQ(S_OK, vb::esIsHostWin64(&win64));
        EXPECT_EQ(std::make_tuple(r.answer, VBBOOL(r.answer == 2), VBBOOL(r.win64)), std::make_tuple(answer, is64, win64))
            << r.id << (r.missing ? " without IsWow64Process" : "");
        EXPECT_EQ(winsim::calls("OpenProcess") - (r.answer ? 0 : 2), winsim::calls("CloseHandle"));
    }
    winsim::reset();
    winsim::failNext("IsWow64Process");
    FreshLibrary fresh;
    VARIANT_BOOL win64 = 7;
    EXPECT_EQ(S_OK, vb::esIsHostWin64(&win64));
    EXPECT_EQ(VARIANT_FALSE, win64) << "a refusal is no answer";
}

// What stands in for an entry point that is missing: the product name is
// empty (and on Wine, whose GetProductName ends the process, never asked);
// the system facts come from GetSystemInfo; the shell is 0.0.0, asked once.
TEST(HostTests, MissingEntryPoints) {
    const struct { const char *missing, *present, *product; WORD architecture; VARIANT_BOOL native; LONG shell; } rows[] = {
        {"", "", "Windows 7 Professional", PROCESSOR_ARCHITECTURE_AMD64, VARIANT_TRUE, 6},
        {"GetProductName", "", kNull, PROCESSOR_ARCHITECTURE_AMD64, VARIANT_TRUE, 6},
        {"", "wine_get_version", kNull, PROCESSOR_ARCHITECTURE_AMD64, VARIANT_TRUE, 6},
        {"GetNativeSystemInfo", "", "Windows 7 Professional", PROCESSOR_ARCHITECTURE_INTEL, VARIANT_FALSE, 6},
        {"DllGetVersion", "", "Windows 7 Professional", PROCESSOR_ARCHITECTURE_AMD64, VARIANT_TRUE, 0},
        {"Shell32.dll", "", "Windows 7 Professional", PROCESSOR_ARCHITECTURE_AMD64, VARIANT_TRUE, 0},
    };
    for (const auto& r : rows) {
        winsim::reset();
        winsim::setProcess(GetCurrentProcessId(), true);
        winsim::setMissing(r.missing);
        winsim::setMissing(r.present, false);
        FreshLibrary fresh;
        Bstr product("stale");
        SYSTEM_INFO info{};
        VARIANT_BOOL native = 7, wine = 7;
        LONG shell[3] = {-1, -1, -1};
        EXPECT_EQ(S_OK, vb::esGetProductName(product.out()));
        EXPECT_EQ(S_OK, vb::esGetNativeSystemInfo(&info, &native));
        EXPECT_EQ(S_OK, vb::esIsHostWine(&wine));
        for (int i = 0; i < 2; ++i)
            vb::esShellVersionMajor(&shell[0]), vb::esShellVersionMinor(&shell[1]), vb::esShellVersionRevision(&shell[2]);
        EXPECT_EQ(std::make_tuple(std::string(r.product), r.architecture, r.native, VBBOOL(*r.present != 0)),
                  std::make_tuple(product.text(), info.wProcessorArchitecture, native, wine)) << r.missing << r.present;
        EXPECT_EQ(r.shell, shell[0]);
        EXPECT_EQ(r.shell ? 7601 : 0, shell[2]);
        EXPECT_EQ(r.shell ? 1 : 0, winsim::calls("DllGetVersion")) << "the shell is asked once";
        EXPECT_EQ(r.product != kNull ? 1 : 0, winsim::calls("GetProductName"));
    }
}

// The bound routines themselves: the flag tells of the latest call only, a
// failure is looked up again, a library is loaded once and each name looked
// up once it is found.
TEST(EntryPoints, FlagAndBinding) {
    winsim::reset();
    winsim::setMissing("NTDLL.DLL");
    winsim::setProductName("longer than the buffer");
    SYSTEM_INFO info{};
    info.dwPageSize = 77;
    winsim::setMissing("GetNativeSystemInfo");
    __GETNATIVESYSTEMINFO(&info);
    EXPECT_EQ(1, g_missingEntry);
    EXPECT_EQ(77u, info.dwPageSize) << "the record stays as it was";
    char buffer[8] = {};
    EXPECT_EQ(0, __GETPRODUCTNAME(buffer, 8));
    EXPECT_EQ(0, g_missingEntry) << "a function that answers 0 was still reached";
    EXPECT_EQ(nullptr, __WINE_GET_VERSION());
    EXPECT_EQ(1, g_missingEntry);
    BOOL wow64 = 7;
    EXPECT_EQ(TRUE, __ISWOW64PROCESS(GetCurrentProcess(), &wow64));
    EXPECT_EQ(0, g_missingEntry);
    winsim::setMissing("NTDLL.DLL", false);
    winsim::setMissing("wine_get_version", false);
    EXPECT_STREQ("winsim", __WINE_GET_VERSION()) << "found at the next call";
    winsim::setMissing("GetNativeSystemInfo", false);
    __GETNATIVESYSTEMINFO(&info);
    EXPECT_EQ(4096u, info.dwPageSize);
    const int loads = winsim::calls("LoadLibraryA"), lookups = winsim::calls("GetProcAddress");
    for (int i = 0; i < 3; ++i) __GETNATIVESYSTEMINFO(&info), __ISWOW64PROCESS(GetCurrentProcess(), &wow64);
    EXPECT_EQ(loads, winsim::calls("LoadLibraryA"));
    EXPECT_EQ(lookups, winsim::calls("GetProcAddress"));
}
#else
// The host tests on the version that the prefix plays, as
// tests/host-matrix.sh sets it; Wine reports 6.2 for 8.1 and 10 to a program
// that does not say in its manifest that it knows them.
TEST(HostMatrix, OnTheVersionWinePlays) {
    const char* version = std::getenv("CSK_WINE_VERSION");
    if (!version) GTEST_SKIP() << "runs in tests/host-matrix.sh, which sets CSK_WINE_VERSION";
#ifdef CSK_KNOWS_WINDOWS_10
    const bool manifest = true;
#else
    const bool manifest = false;
#endif
    const struct { const char* name; std::string expected; DWORD major, minor; LONG revision; } rows[] = {
        {"win31", "Win32s", 3, 10, 0}, {"win95", k95, 4, 0, 950}, {"win98", k98SE, 4, 10, 2222},
        {"winme", kME, 4, 90, 3000}, {"nt351", kNT + "WinNT351", 3, 51, 1057}, {"nt40", kNT4 + "WinNT40", 4, 0, 1381},
        {"win2k", kNT5 + "Win2000", 5, 0, 2195}, {"winxp", kXP + "WinXP", 5, 1, 2600}, {"win2003", k2003, 5, 2, 3790},
        {"vista", kVista, 6, 0, 6002}, {"win2008", k2008, 6, 0, 6002}, {"win7", k7, 6, 1, 7601},
        {"win2008r2", k2008R2, 6, 1, 7601}, {"win8", k8, 6, 2, 9200},
        {"win81", manifest ? k81 : k8, 6, manifest ? 3u : 2u, manifest ? 9600 : 9200},
        {"win10", manifest ? kNT6 + "WinVista_OrHigher" : k8, manifest ? 10u : 6u, manifest ? 0u : 2u,
         manifest ? 18362 : 9200},
    };
    for (const auto& r : rows) {
        if (std::string(version) != r.name) continue;
        EXPECT_EQ(Expected({0, r.major, r.minor, 0, "", 0, 0, 0, r.expected, r.revision}, "Wine"), Observed())
            << version;
        return;
    }
    FAIL() << "no row for " << version;
}
#endif

}  // namespace
