// Host identification through the exports: the 43 host tests and the
// version numbers on every host that winsim can play (each in a fresh copy of
// the library, since the record is kept for the life of the process) and,
// under Wine, on each Windows version that tests/matrix/host-matrix.sh has
// the prefix play; then bitness, the shell version and the bound entry points.
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
const std::string k98Line = "Win9x Win95_OrHigher Win95_OSR2_OrHigher Win98_OrHigher ";
const std::string k98SE = k98Line + "Win98 Win98SE Win98SE_OrHigher", kME = k98Line + "WinME WinME_OrHigher";
const std::string kNT = "WinNT WinNT351_OrHigher ", kNT4 = kNT + "WinNT40_OrHigher ";
const std::string kNT5 = kNT4 + "Win2000_OrHigher ", kXP = kNT5 + "WinXP_OrHigher ";
const std::string k2003 = kXP + "Win2003 Win2003_OrHigher Win2003i";
const std::string kNT6 = kXP + "Win2003_OrHigher Win2003R2_OrHigher ";
const std::string kTo7 = kNT6 + "WinVista_OrHigher Win2008_OrHigher ", kTo8 = kTo7 + "Win7_OrHigher Win2008R2_OrHigher ";
const std::string kVista = kNT6 + "WinVista WinVista_OrHigher", k2008 = kNT6 + "Win2008 Win2008_OrHigher";
const std::string k7 = kTo7 + "Win7 Win7_OrHigher", k2008R2 = kTo7 + "Win2008R2 Win2008R2_OrHigher";
const std::string k8 = kTo8 + "Win8 Win8_OrHigher", k81 = kTo8 + "Win8_OrHigher Win2012_OrHigher";

// accepts: the sizes of record the platform fills (2 both, 1 only 148, 0 none).
struct Host { DWORD platform, major, minor, build; const char* csd; BYTE type; int accepts, serverR2; std::string expected, version; };

const Host kHosts[] = {
    {0, 0, 0, 0, "", 0, 0, 0, "Win32s", "0.0.0"},  // both sizes refused: a record of zeros
    {1, 4, 0, 0x040003B6, "", 0, 1, 0, k95, "4.0.950"},  // a 9x build number's high word never shows
    {1, 4, 0, 0x040003B6, " B", 0, 1, 0, "Win9x Win95 Win95_OSR2 Win95_OrHigher Win95_OSR2_OrHigher", "4.0.950"},
    {1, 4, 0, 0x040003B6, " b", 0, 1, 0, k95, "4.0.950"},  // the letter is compared with its case
    {1, 4, 10, 0x040A07CE, "", 0, 1, 0, k98Line + "Win98 Win98i", "4.10.1998"},
    {1, 4, 10, 0x040A08AE, " A ", 0, 1, 0, k98SE, "4.10.2222"},
    {1, 4, 90, 0x045A0BB8, " ", 0, 1, 0, kME, "4.90.3000"},
    {1, 4, 90, 0x045A0BB8, " A", 0, 1, 0, kME + " Win98SE_OrHigher", "4.90.3000"},  // from 4.10 up the letter decides
    {2, 3, 51, 1057, "", 1, 1, 0, kNT + "WinNT351", "3.51.1057"},
    {2, 4, 0, 1381, "", 1, 1, 0, kNT4 + "WinNT40", "4.0.1381"},
    {2, 5, 0, 2195, "", 1, 2, 0, kNT5 + "Win2000", "5.0.2195"},
    {2, 5, 1, 2600, "", 1, 2, 0, kXP + "WinXP", "5.1.2600"},
    {2, 5, 2, 3790, "", 3, 2, 0, k2003, "5.2.3790"},
    {2, 5, 2, 3790, "", 3, 2, 1, kXP + "Win2003 Win2003_OrHigher Win2003R2 Win2003R2_OrHigher", "5.2.3790"},
    {2, 6, 0, 6002, "", 1, 2, 1, kVista, "6.0.6002"},
    {2, 6, 0, 6002, "", 2, 2, 0, k2008, "6.0.6002"},  // any type but 1 is a server
    {2, 6, 1, 7601, "", 1, 2, 0, k7, "6.1.7601"},
    {2, 6, 1, 0x80001DB1, "", 3, 2, 0, k2008R2, "6.1.-2147476047"},  // on NT all 32 bits show
    {2, 6, 1, 7601, "", 1, 1, 0, k2008R2, "6.1.7601"},  // the short record leaves product type 0
    {2, 6, 2, 9200, "", 1, 2, 0, k8, "6.2.9200"},
    {2, 6, 2, 9200, "", 3, 2, 0, kTo8 + "Win2012 Win2012_OrHigher", "6.2.9200"},
    {2, 6, 3, 9600, "", 3, 2, 0, k81, "6.3.9600"},
    {2, 10, 0, 19045, "", 1, 2, 0, kNT6 + "WinVista_OrHigher", "10.0.19045"},  // no step above 6 from Vista on
    {2, 10, 0, 20348, "", 3, 2, 0, kNT6 + "Win2008_OrHigher", "10.0.20348"},
};

template <class T>
HRESULT Ask(const std::string& name, T* answer) {
    return VbFunction<HRESULT, T*>{name.c_str()}(answer);
}

std::string Sorted(const std::string& names) {
    std::istringstream in(names);
    std::set<std::string> set{std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
    std::string out;
    for (const std::string& name : set) out += name + " ";
    return out;
}

// The tests that answer true (each with status 0 and -1, never 1), and the
// three version numbers.
std::string Observed() {
    std::string names;
    for (const char* test : kTests) {
        VARIANT_BOOL answer = 7;
        EXPECT_EQ(S_OK, Ask(std::string("esIsHost") + test, &answer)) << test;
        EXPECT_TRUE(answer == VARIANT_TRUE || answer == VARIANT_FALSE) << test << " gave " << answer;
        if (answer) names += std::string(test) + " ";
    }
    LONG v[3] = {-1, -1, -1};
    Ask("esWindowsVersionMajor", &v[0]), Ask("esWindowsVersionMinor", &v[1]), Ask("esWindowsVersionRevision", &v[2]);
    return Sorted(names) + "| " + std::to_string(v[0]) + "." + std::to_string(v[1]) + "." + std::to_string(v[2]);
}

// A null answer pointer is status 1 and nothing is asked of the platform;
// esGetVersionEx tests its third argument before its first. This process on
// a 32-bit Windows (winsim's default, Wine's win32 prefix) is 1; an
// identifier that names no process is 0.
TEST(HostTests, NullPointersAndThisProcess) {
#ifdef CSK_WINSIM
    winsim::reset();
    FreshLibrary fresh;
#endif
    for (const char* test : kTests) EXPECT_EQ(S_FALSE, Ask<VARIANT_BOOL>(std::string("esIsHost") + test, nullptr));
    for (const char* name : {"esWindowsVersionMajor", "esWindowsVersionMinor", "esWindowsVersionRevision",
                             "esShellVersionMajor", "esShellVersionMinor", "esShellVersionRevision"})
        EXPECT_EQ(S_FALSE, Ask<LONG>(name, nullptr)) << name;
    VARIANT_BOOL flag = 7;
    const HRESULT statuses[] = {vb::esGetProductName(nullptr), vb::esIsProcessWin64Ex(0, nullptr),
                                vb::esIsProcessWin64(0, nullptr), vb::esGetVersionEx(nullptr, &flag, nullptr),
                                vb::esGetVersionEx(nullptr, &flag, &flag), vb::esGetNativeSystemInfo(nullptr, &flag)};
    EXPECT_EQ(std::vector<HRESULT>({1, 1, 1, 1, E_INVALIDARG, E_INVALIDARG}), std::vector<HRESULT>(statuses, statuses + 6));
    EXPECT_EQ(7, flag);
#ifdef CSK_WINSIM
    EXPECT_EQ(0, winsim::calls("GetVersionExA") + winsim::calls("LoadLibraryA") + winsim::calls("OpenProcess"));
#endif
    OSVERSIONINFOEXA record{};
    SYSTEM_INFO info{};
    LONG self = 7, none = 7;
    EXPECT_EQ(S_OK, vb::esGetVersionEx(&record, nullptr, &flag) | vb::esGetNativeSystemInfo(&info, nullptr) |
                        vb::esIsProcessWin64Ex(LONG(GetCurrentProcessId()), &self) | vb::esIsProcessWin64Ex(0, &none));
    EXPECT_EQ(std::make_tuple(VARIANT_TRUE, 156u, true, 1, 0),
              std::make_tuple(flag, record.dwOSVersionInfoSize, info.dwPageSize > 0, self, none));
#ifdef _WIN32
    // Wine's GetProductName is a stub that ends the process: there it counts as missing.
    Bstr product("stale");
    EXPECT_EQ(S_OK, vb::esIsHostWine(&flag) | vb::esGetProductName(product.out()));
    EXPECT_TRUE(!flag || product.isNull());
#endif
}

#ifdef CSK_WINSIM
TEST(HostTests, EveryHostWinsimPlays) {
    for (const Host& h : kHosts) {
        winsim::reset();
        winsim::setVersion(h.platform, h.major, h.minor, h.build, h.csd, h.type, h.accepts);
        winsim::setSystemMetric(SM_SERVERR2, h.serverR2);
        FreshLibrary fresh;
        EXPECT_EQ(Sorted(h.expected) + "| " + h.version, Observed()) << h.csd;
        // SM_SERVERR2 is asked on 5.2 only, and anew by each of its three tests.
        EXPECT_EQ(h.expected.find("Win2003 ") != std::string::npos ? 3 : 0, winsim::calls("GetSystemMetrics"));
    }
}

// The record is read until the platform answers, then kept; esGetVersionEx
// asks anew each time, in the caller's record.
TEST(HostTests, RecordIsKeptFromTheFirstAnswer) {
    winsim::reset();
    winsim::setVersion(2, 6, 1, 7601, "", 1, 0);
    FreshLibrary fresh;
    OSVERSIONINFOEXA record{};
    VARIANT_BOOL nt = 7, isLong = 7, answered = 7;
    EXPECT_EQ(S_OK, vb::esIsHostWinNT(&nt) | vb::esGetVersionEx(&record, &isLong, &answered));
    EXPECT_EQ(0, nt | isLong | answered);
    winsim::setVersion(2, 6, 1, 7601, "", 1, 1);
    EXPECT_EQ(S_OK, vb::esGetVersionEx(&record, &isLong, &answered) | vb::esIsHostWinNT(&nt));
    EXPECT_EQ(std::make_tuple(VARIANT_FALSE, VARIANT_TRUE, 148u, VARIANT_TRUE),
              std::make_tuple(isLong, answered, record.dwOSVersionInfoSize, nt));
    winsim::setVersion(1, 4, 10, 0, "", 0, 2);
    const int calls = winsim::calls("GetVersionExA");
    EXPECT_EQ(S_OK, vb::esIsHostWinNT(&nt));
    EXPECT_EQ(std::make_pair(VARIANT_TRUE, calls), std::make_pair(nt, winsim::calls("GetVersionExA")));
}

// Bitness by this process under WOW64 or not, IsWow64Process there or not,
// and the process asked about (kNone: no such process).
TEST(HostTests, ProcessBitness) {
    const DWORD kSelf = GetCurrentProcessId(), kOther = 4000, kNone = 4444;
    const struct { bool selfWow64, missing; DWORD id; bool otherWow64; LONG answer; } rows[] = {
        {true, false, kOther, false, 2}, {true, false, kOther, true, 1}, {true, false, kSelf, false, 1},
        {false, false, kOther, false, 1}, {true, true, kOther, false, 1}, {true, false, kNone, false, 0},
        {false, false, 0, false, 0},
    };
    for (const auto& r : rows) {
        winsim::reset();
        winsim::setProcess(kSelf, r.selfWow64);
        winsim::setProcess(kOther, r.otherWow64);
        winsim::setMissing("IsWow64Process", r.missing);
        FreshLibrary fresh;
        LONG answer = 7;
        VARIANT_BOOL is64 = 7, win64 = 7;
        EXPECT_EQ(S_OK, vb::esIsProcessWin64Ex(LONG(r.id), &answer) | vb::esIsProcessWin64(LONG(r.id), &is64) |
                            vb::esIsHostWin64(&win64));
        EXPECT_EQ(std::make_tuple(r.answer, VBBOOL(r.answer == 2), VBBOOL(r.selfWow64 && !r.missing)),
                  std::make_tuple(answer, is64, win64)) << r.id << (r.missing ? " without IsWow64Process" : "");
        EXPECT_EQ(winsim::calls("OpenProcess") - (r.answer ? 0 : 2), winsim::calls("CloseHandle"));
    }
}

// What a missing entry point gives: no product name (on Wine the name is
// not even asked), the facts of GetSystemInfo, a shell of 0.0.0 asked once.
TEST(HostTests, MissingEntryPoints) {
    const char* name = "Windows 7 Professional";
    const WORD k32 = PROCESSOR_ARCHITECTURE_INTEL, k64 = PROCESSOR_ARCHITECTURE_AMD64;
    const struct { const char *missing, *present, *product; WORD architecture; LONG shell; } rows[] = {
        {"", "", name, k64, 6}, {"GetProductName", "", kNull, k64, 6}, {"", "wine_get_version", kNull, k64, 6},
        {"GetNativeSystemInfo", "", name, k32, 6}, {"DllGetVersion", "", name, k64, 0}, {"Shell32.dll", "", name, k64, 0},
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
        EXPECT_EQ(S_OK, vb::esGetProductName(product.out()) | vb::esGetNativeSystemInfo(&info, &native) |
                            vb::esIsHostWine(&wine));
        for (int i = 0; i < 2; ++i)
            Ask("esShellVersionMajor", &shell[0]), Ask("esShellVersionMinor", &shell[1]),
                Ask("esShellVersionRevision", &shell[2]);
        EXPECT_EQ(std::make_tuple(std::string(r.product), r.architecture, VBBOOL(r.architecture == k64),
                                  VBBOOL(*r.present != 0), r.shell, r.shell ? 7601 : 0, r.shell ? 1 : 0, r.product != kNull),
                  std::make_tuple(product.text(), info.wProcessorArchitecture, native, wine, shell[0], shell[2],
                                  winsim::calls("DllGetVersion"), winsim::calls("GetProductName") == 1))
            << r.missing << r.present;
    }
}

// The bound routines themselves: the flag tells of the latest call only, a
// failure is looked up again, a library is loaded once and a name looked up
// until it is found.
TEST(EntryPoints, FlagAndBinding) {
    winsim::reset();
    winsim::setMissing("NTDLL.DLL");
    winsim::setMissing("GetNativeSystemInfo");
    winsim::setProductName("longer than the buffer");
    SYSTEM_INFO info{};
    info.dwPageSize = 77;
    __GETNATIVESYSTEMINFO(&info);
    EXPECT_EQ(std::make_pair(1, 77u), std::make_pair(int(g_missingEntry), info.dwPageSize)) << "record untouched";
    char buffer[8] = {};
    EXPECT_EQ(0, __GETPRODUCTNAME(buffer, 8));
    EXPECT_EQ(0, g_missingEntry) << "a function that answers 0 was still reached";
    EXPECT_EQ(nullptr, __WINE_GET_VERSION());
    EXPECT_EQ(1, g_missingEntry);
    winsim::setMissing("NTDLL.DLL", false);
    winsim::setMissing("wine_get_version", false);
    winsim::setMissing("GetNativeSystemInfo", false);
    EXPECT_STREQ("winsim", __WINE_GET_VERSION()) << "found at the next call";
    BOOL wow64 = 7;
    __GETNATIVESYSTEMINFO(&info), __ISWOW64PROCESS(GetCurrentProcess(), &wow64);
    EXPECT_EQ(4096u, info.dwPageSize);
    const int loads = winsim::calls("LoadLibraryA"), lookups = winsim::calls("GetProcAddress");
    for (int i = 0; i < 3; ++i) __GETNATIVESYSTEMINFO(&info), __ISWOW64PROCESS(GetCurrentProcess(), &wow64);
    EXPECT_EQ(std::make_pair(loads, lookups), std::make_pair(winsim::calls("LoadLibraryA"), winsim::calls("GetProcAddress")));
}
#else
#ifndef CSK_KNOWS_WINDOWS_10
#define CSK_KNOWS_WINDOWS_10 0  // the program's manifest says it knows Windows 10
#endif
// The host tests on the version that host-matrix.sh has the prefix play.
// Wine, like Windows, reports 6.2 for 8.1 and 10 to a program whose manifest
// does not say that it knows them.
TEST(HostMatrix, OnTheVersionWinePlays) {
    const char* version = std::getenv("CSK_WINE_VERSION");
    if (!version) GTEST_SKIP() << "runs in tests/matrix/host-matrix.sh, which sets CSK_WINE_VERSION";
    const bool known = CSK_KNOWS_WINDOWS_10;
    const std::pair<const char*, std::string> rows[] = {
        {"win31", "Win32s | 3.10.0"}, {"win95", k95 + " | 4.0.950"}, {"win98", k98SE + " | 4.10.2222"},
        {"winme", kME + " | 4.90.3000"}, {"nt351", kNT + "WinNT351 | 3.51.1057"}, {"nt40", kNT4 + "WinNT40 | 4.0.1381"},
        {"win2k", kNT5 + "Win2000 | 5.0.2195"}, {"winxp", kXP + "WinXP | 5.1.2600"}, {"win2003", k2003 + " | 5.2.3790"},
        {"vista", kVista + " | 6.0.6002"}, {"win2008", k2008 + " | 6.0.6002"}, {"win7", k7 + " | 6.1.7601"},
        {"win2008r2", k2008R2 + " | 6.1.7601"}, {"win8", k8 + " | 6.2.9200"},
        {"win81", known ? k81 + " | 6.3.9600" : k8 + " | 6.2.9200"},
        {"win10", known ? kNT6 + "WinVista_OrHigher | 10.0.18362" : k8 + " | 6.2.9200"},
    };
    for (const auto& row : rows) {
        if (row.first != std::string(version)) continue;
        const size_t bar = row.second.find('|');
        EXPECT_EQ(Sorted(row.second.substr(0, bar) + " Wine") + row.second.substr(bar), Observed()) << version;
        return;
    }
    FAIL() << "no row for " << version;
}
#endif

}  // namespace
