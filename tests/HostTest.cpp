// Host identification on staged hosts: each row is a host that the library's
// GetVersionExA, GetSystemMetrics(SM_SERVERR2) and the entry points it binds
// at run time play, in a fresh copy of the library (which keeps the version
// record, the shell version and the bound entry points for the life of the
// process). Under tests/matrix/host-matrix.sh, which sets CSK_WINE_VERSION,
// the row of the Windows version that Wine plays is checked on Wine itself.
#include <regex>

#include "Detour.h"
#include "VbDeclares.h"

namespace {

// The host tests true on each kind of host, by their names behind "esIsHostWin", "+" for "_OrHigher" ("e" is Wine).
const std::string k95 = "9x 95 95i 95+", kOSR2 = "9x 95 95_OSR2 95+ 95_OSR2+", k98 = "9x 95+ 95_OSR2+ 98+ ";
const std::string kME = k98 + "ME ME+", kNT4 = "NT NT351+ NT40+ ", kXP = kNT4 + "2000+ XP+ ", k2003 = kXP + "2003 2003+ ";
const std::string kNT6 = kXP + "2003+ 2003R2+ ", kTo7 = kNT6 + "Vista+ 2008+ ", kTo8 = kTo7 + "7+ 2008R2+ ";

// A host: the tests true there (Wine's apart); its version numbers, platform, product type and szCSDVersion; the
// winecfg version that plays it; the record sizes it fills (2 both, 1 only the 148 bytes, 0 none); its SM_SERVERR2
// mark. `stage`: the entry points it lacks ("-wine", "-shell", "-wow"), "64bit" when this process runs under WOW64,
// "other32" when the process asked about does, "selffails" and "otherfails" when IsWow64Process fails for either.
// `extra`: esIsProcessWin64Ex and esIsProcessWin64 of this process, esIsProcessWin64Ex of process 0, the shell
// version (its DllGetVersion gives 6.1.7601) and the calls made.
struct Host { std::string want, version; DWORD platform; BYTE type; const char *csd, *wine; int accepts = 2, r2 = 0;
              const char *stage = "", *extra = "1 0 0 6.1.7601. shell20 "; };
const Host kHosts[] = {
    {"32s", "0.0.0", 0, 0, "", "", 0}, {"32s", "3.10.0", 0, 0, "", "win31", 1},  // both sizes refused: zeros
    {k95, "4.0.950", 1, 0, "", "win95", 1}, {kOSR2, "4.0.950", 1, 0, " C", "", 1, 0, "-wine"},
    {kOSR2, "4.0.950", 1, 0, " B", "", 1, 0, "-wine -shell -wow", "1 0 0 0.0.0. "},
    {k95, "4.0.950", 1, 0, "Bb", "", 1}, {kME, "4.90.3000", 1, 0, " ", "winme"},  // "Bb": the second letter, its case
    {k98 + "98 98i 64", "4.10.1998", 1, 0, "", "", 2, 0, "64bit", "2 -1 0 6.1.7601. shell20 "},
    {k98 + "98 98SE 98SE+", "4.10.2222", 1, 0, " A ", "win98"}, {kNT4 + "NT40", "4.0.1381", 2, 1, "", "nt40", 1},
    {kME + " 98SE+ 64", "4.90.3000", 1, 0, " A", "", 2, 0, "64bit other32"},  // from 4.10 up the letter decides
    {"9x 95+ 98+ 98SE+ ME+ 64", "5.0.0", 1, 0, "", "", 2, 0, "64bit otherfails"},
    {"NT NT351+ NT351", "3.51.1057", 2, 1, "", "nt351", 1, 0, "64bit selffails"},
    {kNT4 + "2000+ 2000", "5.0.2195", 2, 1, "", "win2k", 2, 0, "64bit -wow"},
    {kXP + "XP", "5.1.2600", 2, 1, "", "winxp"}, {k2003 + "2003i", "5.2.3790", 2, 3, "", "win2003"},
    {k2003 + "2003R2 2003R2+", "5.2.3790", 2, 3, "", "", 2, 1}, {kTo7 + "7 7+", "6.1.7601", 2, 1, "", "win7"},
    {kNT6 + "Vista Vista+", "6.0.6002", 2, 1, "", "vista", 2, 1}, {kNT6 + "2008 2008+", "6.0.6002", 2, 2, "", "win2008"},
    {kTo7 + "2008R2 2008R2+", "6.1.7601", 2, 3, "", "win2008r2"}, {kTo8 + "8 8+", "6.2.9200", 2, 1, "", "win8"},
    {kTo8 + "2012 2012+", "6.2.9200", 2, 3, "", ""}, {kTo8 + "8+ 2012+", "6.3.9600", 2, 1, "", "win81"},
    {kNT6 + "Vista+", "10.0.18362", 2, 1, "", "win10"}, {kNT6 + "2008+", "10.0.-2147463300", 2, 3, "", ""},
};  // Vista: the R2 mark counts on 5.2 only; 2008: any type but 1 is a server; 10.0: all 32 bits, no step above 6

const Host *g_host = nullptr, *g_record = nullptr;  // the staged host, and the one whose record it gives
bool Has(const char* flag) { return std::strstr(g_host->stage, flag) != nullptr; }
// What the library finds for an entry point: nothing where the host lacks it. Any function of no arguments stands
// for wine_get_version, whose answer is not read.
template <class F> void* Unless(const char* lacks, F* fake) { return Has(lacks) ? nullptr : (void*)fake; }

// What the exports whose names begin with `prefix` answer: the numbers, then the tests that answer true (another
// answer than -1 or 0 shows as "=?").
std::string Answers(const std::string& prefix) {
    std::string numbers, names;
    for (const ExportShape& shape : kExportShapes) {
        LONG answer = 0x70007;  // a test writes the low half
        if (std::string(shape.name).rfind(prefix, 0)) continue;
        EXPECT_EQ(S_OK, (VbFunction<HRESULT, LONG*>{shape.name}(&answer))) << shape.name;
        if (shape.arguments[1] == 'L') numbers += std::to_string(answer) + ".";
        else if (answer != 0x70000) names += std::string(shape.name + prefix.size()) + (answer == 0x7FFFF ? " " : "=? ");
    }
    return numbers + " " + std::regex_replace(names, std::regex("_OrHigher"), "+");
}

void ExpectHost(const Host& host, const std::string& row) {
    std::istringstream want(host.version + ". " + host.want + (Has("-wine") ? "" : " e"));
    std::istringstream got(Answers("esWindowsVersion") + Answers("esIsHostWin"));
    using Words = std::set<std::string>;
    EXPECT_EQ(Words(std::istream_iterator<std::string>(want), {}), Words(std::istream_iterator<std::string>(got), {})) << row;
}

// The 9x family keeps its version in the high word of the build number too.
BOOL WINAPI StagedVersion(OSVERSIONINFOA* info) {
    if (g_record->accepts < (info->dwOSVersionInfoSize == 156 ? 2 : 1)) return FALSE;
    std::sscanf(g_record->version.c_str(), "%lu.%lu.%ld", &info->dwMajorVersion, &info->dwMinorVersion, &info->dwBuildNumber);
    if (g_record->platform == 1) info->dwBuildNumber |= info->dwMajorVersion << 24 | info->dwMinorVersion << 16;
    info->dwPlatformId = g_record->platform, std::strcpy(info->szCSDVersion, g_record->csd);
    if (info->dwOSVersionInfoSize == 156) reinterpret_cast<OSVERSIONINFOEXA*>(info)->wProductType = g_record->type;
    return TRUE;
}
// An R2 host answers its build number for the metric, not 1.
int WINAPI StagedMetrics(int index) { return index == SM_SERVERR2 ? g_host->r2 * 3790 : GetSystemMetrics(index); }
BOOL WINAPI Wow64(HANDLE process, BOOL* wow64) {
    const bool self = process == GetCurrentProcess();
    return *wow64 = Has(self ? "64bit" : "other32"), !Has(self ? "selffails" : "otherfails");
}
void WINAPI NativeInfo(SYSTEM_INFO* info) { GetSystemInfo(info), info->wProcessorArchitecture = 9; }
BOOL WINAPI ProductName(char* buffer, DWORD size) { return std::sprintf(buffer, "Staged Windows %lu", size) > 0; }
HRESULT WINAPI Shell(DLLVERSIONINFO* info) {
    return g_calls += "shell" + std::to_string(info->cbSize) + " ", *info = {info->cbSize, 6, 1, 7601, 2}, S_OK;
}

// Each host's answers, and esGetVersionEx's, which asks anew: whether it filled the long record, whether it answered,
// the size it asked last. Then the module's record, once answered, is kept, and a refused one is asked for again (the
// first row refuses both sizes).
// Wine, like Windows, reports 6.2 for 8.1 and 10 to a program whose manifest does not say that it knows them.
TEST(HostMatrix, EveryHost) {
    if (const char* version = std::getenv("CSK_WINE_VERSION")) {
        std::string wanted = version;
#ifndef CSK_KNOWS_WINDOWS_10
        if (wanted == "win81" || wanted == "win10") wanted = "win8";
#endif
        g_host = std::find_if(std::begin(kHosts), std::end(kHosts) - 1, [&](const Host& h) { return wanted == h.wine; });
        ExpectHost(*g_host, version);  // a version without a row is checked against the last, which no Wine plays
    }
    for (const Host& h : kHosts) {
        g_host = g_record = &h, g_calls.clear();
        FreshLibrary fresh;
        Detour version("GetVersionExA", StagedVersion), metrics("GetSystemMetrics", StagedMetrics);
        ProcDetour a("wine_get_version", Unless("-wine", GetTickCount)), b("DllGetVersion", Unless("-shell", Shell));
        ProcDetour c("IsWow64Process", Unless("-wow", Wow64)), d("GetProductName", ProductName),
            e("GetNativeSystemInfo", Unless("-wow", NativeInfo));
        const std::string row = "row " + std::to_string(&h - kHosts);
        ExpectHost(h, row);
        OSVERSIONINFOEXA record;
        VARIANT_BOOL v[3] = {7, 7, 7};
        LONG bits[2] = {7, 7}, self = LONG(GetCurrentProcessId());
        EXPECT_EQ(S_OK, vb::esIsProcessWin64Ex(self, &bits[0]) | vb::esIsProcessWin64(self, &v[0]) |
                            vb::esIsProcessWin64Ex(0, &bits[1]) | vb::esGetVersionEx(&record, &v[1], &v[2]) |
                            vb::esGetVersionEx(&record, nullptr, &v[2]));
        const std::string shell = (Answers("esShellVersion"), Answers("esShellVersion"));  // asked once
        auto n = [](long value) { return std::to_string(value) + " "; };
        EXPECT_EQ(h.extra + std::string(h.accepts == 2 ? "-1 -1 156 " : h.accepts ? "0 -1 148 " : "0 0 148 "),
                  n(bits[0]) + n(v[0]) + n(bits[1]) + shell + g_calls + n(v[1]) + n(v[2]) +
                      n(record.dwOSVersionInfoSize)) << row;
        SYSTEM_INFO native = {};  // the record of the platform's own call, or of GetSystemInfo where there is none
        EXPECT_EQ(S_OK, vb::esGetNativeSystemInfo(&native, &v[0]));
        EXPECT_EQ(Has("-wow") ? "0 0" : "-1 9", n(v[0]) + std::to_string(native.wProcessorArchitecture)) << row;
        Bstr product("stale");  // never asked of Wine, whose stub ends the process
        EXPECT_EQ(S_OK, vb::esGetProductName(product.out()));
        EXPECT_EQ(Has("-wine") ? "Staged Windows 1024" : kNull, product.text()) << row;
        g_record = &kHosts[h.accepts ? 0 : 1], ExpectHost(h.accepts ? h : kHosts[1], row + ", the host's answer changed");
    }
}

}  // namespace
