// The library's own version and refusing registration entry points, who runs
// the program, the event log, the input state, shutdown, power and priority.
// What must never really run (boxes, the event log, shutdown, power) and
// what Wine cannot produce (a wrapped tick count, key states, a host without
// an entry point) is staged on the library's imports. Each row's answers are
// joined into one text, so that a failure shows them all.
#include "Detour.h"
#include "VbDeclares.h"

using namespace std::string_literals;

namespace {

// What the staged calls compare with and answer: the tick count, the last
// input, the keys' states, a bit for each call to fail, the user's SID.
struct { DWORD tick, last; SHORT keys[2]; DWORD fails; std::string sid; } g;

}  // namespace

// Only the 20-byte record is filled; the three others refuse in a task-modal
// box with the exclamation icon, its text (in code page 1251) telling which.
TEST(Library, VersionAndRefusals) {
    DWORD r[2][5] = {{20, 7, 7, 7, 7}, {32, 7, 7, 7, 7}};
    EXPECT_EQ("-2147024809 0 -2147024809 20 1 0 81 1 32 7 ", (J{vb::DllGetVersion(nullptr), vb::DllGetVersion(reinterpret_cast<DLLVERSIONINFO*>(r[0])),
              vb::DllGetVersion(reinterpret_cast<DLLVERSIONINFO*>(r[1])), r[0][0], r[0][1], r[0][2], r[0][3], r[0][4], r[1][0], r[1][1]}));
    Detour box("MessageBoxA", +[](HWND owner, LPCSTR text, LPCSTR caption, UINT style) WINAPI {
        WCHAR wide[128] = {}; return g_calls += J{owner == GetActiveWindow(), (MultiByteToWideChar(1251, 0, text, -1, wide, 128), static_cast<LPCWSTR>(wide)), caption, style}, IDCANCEL; });
    // The resources: the version record's Russian block, message 1 (its one insertion and a line end), icons 1 to 3.
    char path[MAX_PATH] = {}, record[4096] = {}, *version = nullptr;
    WCHAR message[32] = {};
    const DWORD_PTR insert[] = {reinterpret_cast<DWORD_PTR>(L"text")};
    UINT size = GetModuleFileNameA(CskLibrary(), path, MAX_PATH) + GetFileVersionInfoA(path, 0, sizeof record, record);
    FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_ARGUMENT_ARRAY, CskLibrary(), 1, 0x419, message, 32, (va_list*)insert);
    EXPECT_EQ("1 1.00.0081 text\r\n 1 1 1 0 ", (J{VerQueryValueA(record, "\\StringFileInfo\\041904E3\\FileVersion", (void**)&version, &size), version, message,
              !!FindResourceExA(CskLibrary(), RT_ICON, MAKEINTRESOURCEA(1), 0x419), !!FindResourceExA(CskLibrary(), RT_ICON, MAKEINTRESOURCEA(3), 0x419),
              !!FindResourceExA(CskLibrary(), RT_MESSAGETABLE, MAKEINTRESOURCEA(1), 0x419), !!FindResourceExA(CskLibrary(), RT_ICON, MAKEINTRESOURCEA(4), 0x419)}));
    const J refused{(g_calls.clear(), vb::DllInstall(0, nullptr)), vb::DllInstall(-7, L"/i"), vb::DllRegisterServer(), vb::DllUnregisterServer()};
    const std::string not_ = "Вообще-то я не ActiveX DLL и не буду ", box_ = " Corvane - Corvane support library KIT 8240 1 ";
    EXPECT_EQ("1 Я не хочу удаляться!" + box_ + "Я не хочу никуда устанавливаться!" + box_ + not_ + "регистрироваться в системе!" + box_ + not_ +
              "отменять регистрацию в системе! Corvane - Corvane support library KIT 8240 -2147483543 -2147483543 -2147483543 -2147483543 ", g_calls + refused);
}

// The names as the platform tells them (a local account has no domain), the
// SID of the account, and the text of a SID in memory and in an array alike:
// an authority whose second byte is set in hexadecimal, sub-authorities
// unsigned. Then each kind of event with its type, event 1, that SID and one
// string: the header and the message as it came, up to a NUL. One source,
// "Corvane application" with no main window, opened once.
TEST(UserAndProcess, IdentityAndEventLog) {
    char ids[80], computer[64], user[300], account[64], domain[64], exe[MAX_PATH] = {};
    DWORD sizes[4] = {64, 300, 64, 64}, platform = GetComputerNameA(computer, &sizes[0]) + GetUserNameA(user, &sizes[1]); const std::string odd = "\1\2\0\1\0\xAB\0\0\xFF\xFF\xFF\xFF\x20\0\0\0"s;
    TestSafeArray sid, empty(""), oddArray(odd); Bstr names[6], untouched("stale"); SID_NAME_USE use; VARIANT_BOOL done[3] = {7, 7, 7};
    EXPECT_EQ((J{2, 0, 0, 0, 0, computer, user, "<null>", S(user) + " at " + computer, 0, -1, 1, user, -2147024809, -2147024882, "stale", 0, 0,
                 "S-1-0x000100ab0000-4294967295-32 S-1-0x000100ab0000-4294967295-32"}),
              (J{platform, vb::esGetComputerName(names[0].out()), vb::esGetUserName(names[1].out()), vb::esGetDomainName(names[2].out()), vb::esGetFullUserName(-1, 1, names[3].out()),
                 names[0].text(), names[1].text(), names[2].text(), names[3].text(), vb::esGetUserSID(&sid.array, &done[0]), done[0],
                 LookupAccountSidA(nullptr, (g.sid = sid.bytes(), &g.sid[0]), account, &sizes[2], domain, &sizes[3], &use), account, vb::esGetUserSID(nullptr, &done[1]),
                 vb::esSIDtoStringSID2(&empty.array, untouched.out()), untouched.text(), vb::esSIDtoStringSID(LONG(intptr_t(odd.data())), names[4].out()),
                 vb::esSIDtoStringSID2(&oddArray.array, names[5].out()), names[4].text() + " " + names[5].text()}));
    std::snprintf(ids, sizeof ids, "\r\nProcess ID: 0x000001A4\r\nThread ID: 0x%08lX\r\n\r\n", GetCurrentThreadId());  // the process id staged
    FreshLibrary fresh; const std::string header = "Module: " + S((GetModuleFileNameA(nullptr, exe, MAX_PATH), exe)) + ids;
    Detour source("RegisterEventSourceW", +[](LPCWSTR server, LPCWSTR name) WINAPI { return g_calls += J{server, name}, HANDLE(0x4C0C); }), pid("GetCurrentProcessId", +[]() WINAPI -> DWORD { return 0x1A4; });
    Detour report("ReportEventW", +[](HANDLE h, WORD type, WORD category, DWORD id, PSID sid, WORD count, DWORD size, LPCWSTR* strings, LPVOID data) WINAPI -> BOOL {
        return g_calls += J{intptr_t(h), type, category, id, sid && std::string(static_cast<char*>(sid), GetLengthSid(sid)) == g.sid, count, size, strings[0], !data}, TRUE; });
    const Bstr russian("Сохранено"), nul = Bstr::FromUnits(u"Saved\0tail"s);
    const J answers{(g_calls.clear(), vb::esLogInfo(russian.get(), &done[0])), vb::esLogWarning(nul.get(), &done[1]), vb::esLogError(nullptr, &done[2]), done[0], done[1], done[2]};
    EXPECT_EQ("<null> Corvane application 19468 4 0 1 1 1 0 " + header + "Сохранено 1 19468 2 0 1 1 1 0 " + header + "Saved 1 19468 1 0 1 1 1 0 " + header + " 1 0 0 0 -1 -1 -1 ",
              g_calls + answers);
}

// The last input on the tick clock, also after the tick wrapped, and a host
// that cannot tell; the keys' high and low bits; the Unicode test asked once;
// the error mode put back; the real host's unlocked desktop, no screen saver
// and no read-me (asked silently); text to a Long.
TEST(UserAndProcess, InputState) {
    FreshLibrary fresh; std::string answers;
    Detour tick("GetTickCount", +[]() WINAPI { return g.tick; }), unicode("GetWindowsDirectoryW", +[](LPWSTR, UINT) WINAPI -> UINT { return g.fails ? 0 : 260; });
    Detour keys("GetAsyncKeyState", +[](int key) WINAPI -> SHORT { return key == 'K' ? g.keys[0] : 0; }), state("GetKeyState", +[](int key) WINAPI -> SHORT { return key == 'K' ? g.keys[1] : 0; });
    for (auto [tick, last, async, toggle, fails, missing] : {std::tuple(5000u, 4000u, 0x8001, 0xFF80, 0u, true), {5000u, 4000u, 0x0001, 0xFF81, 0u, false},
                                                            {0xFFFFFF00u, 0xFFFFFE00u, 0x8000, 0, 0u, false}, {100u, 0xFFFFFF00u, 0, 1, 0u, false}, {5000u, 4000u, 0, 0, 1u, false}}) {
        ProcDetour input("GetLastInputInfo", missing ? nullptr : +[](PLASTINPUTINFO i) WINAPI -> BOOL { return i->dwTime = g.last, i->cbSize == 8 && !g.fails; });
        double times[2] = {-1, -1}; VARIANT_BOOL answer[3] = {7, 7, 7};
        answers += J{(g = {tick, last, {SHORT(async), SHORT(toggle)}, fails, g.sid}, vb::esGetLastInputTime(&times[0])), times[0], vb::esGetIdleTimeInterval(&times[1]), times[1],
                     vb::esIsKeyPressed('K', &answer[0]), answer[0], vb::esIsKeyToggled('K', &answer[1]), answer[1], vb::esIsUnicodeAvailable(&answer[2]), answer[2]} + "| ";
    }
    EXPECT_EQ("1 5000 1 0 0 -1 0 0 0 -1 | 0 4000 0 1000 0 0 0 -1 0 -1 | 0 4294966784 0 256 0 -1 0 0 0 -1 | 0 4294967040 0 0 0 0 0 -1 0 -1 | 1 5000 1 0 0 0 0 0 0 -1 | ", answers);
    LONG mode = 7; const UINT before = SetErrorMode(0x8001); VARIANT_BOOL v[3] = {7, 7, 7};
    const auto number = [](const std::string& text) { LONG value = 12345; return J{vb::esCLng(Bstr(text).get(), &value) ? -12345 : value}; };
    EXPECT_EQ("0 32769 32769 0 0 0 0 0 0 12 12 0 0 3 -5 -1 -1 255 255 15 15 5 15 0 0 -1 591751049 16 42 0 1 ", (J{vb::esGetErrorMode(&mode), mode, SetErrorMode(before),
              vb::esIsWorkstationLocked(&v[0]), v[0], vb::esIsScreenSaverRunning(&v[1]), v[1], vb::esOpenReadMeFile(-1, &v[2]), v[2]}) + number("  12") + number("12abc") + number("abc") +
              number("") + number("3.7") + number("-5") + number("4294967295") + number("99999999999") + number("&HFF") + number("&hff") + number("&O17") + number("&o17") + number("&B101") +
              number("&17") + number("&") + number("&8") + number("&HFFFFFFFF") + number("&H1123456789") + number(" &H10") + number(" \t 42") + number("\t&H10") + number("1\0"s "2"));
}

// The shutdown privilege enabled first (token, look-up, enabling), then the
// call with the caller's arguments; a failed step is passed over and a
// refusal is the answer. The priority classes, read back.
TEST(UserAndProcess, ShutdownPowerAndPriority) {
    Detour open("OpenProcessToken", +[](HANDLE process, DWORD access, PHANDLE token) WINAPI -> BOOL { return g_calls += J{process == GetCurrentProcess(), access}, *token = process, !(g.fails & 1); });
    Detour look("LookupPrivilegeValueA", +[](LPCSTR system, LPCSTR name, PLUID luid) WINAPI -> BOOL { return g_calls += J{system, name}, *luid = {5, 0}, TRUE; });
    Detour adjust("AdjustTokenPrivileges", +[](HANDLE token, BOOL none, PTOKEN_PRIVILEGES p, DWORD size, PTOKEN_PRIVILEGES old, PDWORD length) WINAPI -> BOOL {
        return g_calls += J{token == GetCurrentProcess(), none, p->PrivilegeCount, p->Privileges[0].Luid.LowPart, p->Privileges[0].Attributes, size, !old && !length}, TRUE; });
    Detour exit("ExitWindowsEx", +[](UINT flags, DWORD reason) WINAPI -> BOOL { return g_calls += J{"exit", flags, reason}, !(g.fails & 2); }),
        power("SetSystemPowerState", +[](BOOL suspend, BOOL force) WINAPI -> BOOL { return g_calls += J{"power", suspend, force}, !(g.fails & 2); });
    const std::string privilege = "1 40 <null> SeShutdownPrivilege 1 0 1 5 2 0 1 "; VARIANT_BOOL done[2] = {7, 7};
    for (auto [fails, calls] : {std::pair<DWORD, std::string>(0, "0 -1 0 -1 " + privilege + "exit 2 2147614723 " + privilege + "power -1 0  "), {3, "0 0 0 0 1 40 exit 2 2147614723 1 40 power -1 0  "}})
        EXPECT_EQ(calls, (J{(g.fails = fails, g_calls.clear(), vb::esExitWindowsEx(EWX_REBOOT, LONG(0x80020003), &done[0])), done[0], vb::esSetSystemPowerState(5, 0, &done[1]), done[1], g_calls}));
    const auto now = [] { return GetPriorityClass(GetCurrentProcess()); };
    EXPECT_EQ("0 16384 0 64 0 32 ", (J{vb::esSetBackgroundProcessPriority(), now(), vb::esSetIdleProcessPriority(), now(), vb::esSetForegroundProcessPriority(), now()}));
    // A host without the below-normal class (before 2000) refuses it: the idle one is asked instead.
    Detour priority("SetPriorityClass", +[](HANDLE process, DWORD wanted) WINAPI -> BOOL {
        return g_calls += J{process == GetCurrentProcess(), wanted}, wanted != BELOW_NORMAL_PRIORITY_CLASS; });
    const J background{(g_calls.clear(), vb::esSetBackgroundProcessPriority())};
    EXPECT_EQ("0 1 16384 1 64 ", background + g_calls);
}
