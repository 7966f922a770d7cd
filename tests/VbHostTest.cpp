// The Visual Basic host: the Thunder main windows (one process-wide cache,
// so each scenario starts from an empty one: a fresh copy of the library
// natively, a process of its own under Wine), the UserControl container
// repair, indirect calls, and the input and desktop state exports.
#include <cstdlib>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

const LONG kStatusNull = 1;

// A window of this thread, visible, of a class that is registered here
// first unless the platform already has it.
HWND MakeWindow(const char* className, const std::string& title = "", HWND parent = nullptr) {
#ifdef CSK_WINSIM
    return winsim::addWindow(className, title.c_str(), parent);
#else
    WNDCLASSA type = {};
    type.lpfnWndProc = DefWindowProcA;
    type.hInstance = GetModuleHandleA(nullptr);
    type.lpszClassName = className;
    RegisterClassA(&type);
    HWND window = CreateWindowExA(0, className, title.c_str(), (parent ? WS_CHILD : WS_POPUP) | WS_VISIBLE, 0, 0, 50,
                                  50, parent, nullptr, type.hInstance, nullptr);
    EXPECT_NE(nullptr, window) << className;
    return window;
#endif
}

bool Visible(HWND window) {
#ifdef CSK_WINSIM
    return winsim::windowVisible(window);
#else
    return IsWindowVisible(window) != FALSE;
#endif
}

LONG AsLong(HWND window) { return static_cast<LONG>(reinterpret_cast<intptr_t>(window)); }

// ---------------------------------------------------------------------------
// The Thunder main windows. Each scenario is a test that, natively, runs in a
// fresh copy of the library; under Wine it runs only in the child process
// that ThunderMainWindows.EachScenarioInAProcessOfItsOwn starts for it.

const char kScenarioVariable[] = "CSK_THUNDER_SCENARIO";

#ifndef CSK_WINSIM
bool ScenarioRunsHere() {
    const char* chosen = std::getenv(kScenarioVariable);
    return chosen && ::testing::UnitTest::GetInstance()->current_test_info()->name() == std::string(chosen);
}
#endif

#ifdef CSK_WINSIM
#define THUNDER_SCENARIO(name) \
    FreshLibrary fresh;        \
    winsim::reset();
#else
#define THUNDER_SCENARIO(name) \
    if (!ScenarioRunsHere()) GTEST_SKIP() << "runs in a process of its own";
#endif

// What the five exports answer, as one line.
struct Thunder {
    LONG version = -7, handle = 12345;
    VARIANT_BOOL ide = 7;
    vb::ThunderHandles handles = {{-1, -1, -1, -1}};
    std::string title;
};

Thunder Ask() {
    Thunder answer;
    Bstr title;
    EXPECT_EQ(S_OK, vb::esGetVBVersion(&answer.version));
    EXPECT_EQ(S_OK, vb::esIsInIDE(&answer.ide));
    EXPECT_EQ(S_OK, vb::esGetThunderMainHandle(&answer.handle));
    EXPECT_EQ(S_OK, vb::esGetThunderMainHandles(&answer.handles));
    EXPECT_EQ(S_OK, vb::esGetThunderMainTitle(title.out()));
    answer.title = title.text();
    return answer;
}

void Expect(const Thunder& got, LONG version, VARIANT_BOOL ide, LONG handle, const LONG (&handles)[4],
            const std::string& title) {
    EXPECT_EQ(version, got.version);
    EXPECT_EQ(ide, got.ide);
    EXPECT_EQ(handle, got.handle);
    for (int slot = 0; slot < 4; ++slot) EXPECT_EQ(handles[slot], got.handles.handles[slot]) << "slot " << slot;
    EXPECT_EQ(title, got.title);
}

TEST(ThunderScenario, NoThunderWindow) {
    THUNDER_SCENARIO(NoThunderWindow);
    MakeWindow("thunderrt6main", "case differs");  // names are compared with their case
    MakeWindow("ThunderRT6MainForm", "longer name");
    Expect(Ask(), 0, VARIANT_FALSE, 12345, {0, 0, 0, 0}, "<null>");  // an empty answer is a null BSTR
}

TEST(ThunderScenario, OnlyTheDevelopmentEnvironment) {
    THUNDER_SCENARIO(OnlyTheDevelopmentEnvironment);
    HWND ide = MakeWindow("ThunderMain", "Project1 - Microsoft Visual Basic [design]");
    HWND container = MakeWindow("Static");
    MakeWindow("ThunderRT6UserControlDC", "", MakeWindow("CskPanel", "", container));
    Expect(Ask(), 0, VARIANT_TRUE, AsLong(ide), {AsLong(ide), 0, 0, 0}, "Project1 - Microsoft Visual Basic [design]");
    // The repair leaves the development environment alone.
    VARIANT_BOOL fixed = 0;
    EXPECT_EQ(S_OK, vb::esFixUserControlsContainerWindow(&fixed));
    EXPECT_EQ(VARIANT_TRUE, fixed);
    EXPECT_TRUE(Visible(container));
}

TEST(ThunderScenario, TwoRuntimesTheOlderWins) {
    THUNDER_SCENARIO(TwoRuntimesTheOlderWins);
    HWND six = MakeWindow("ThunderRT6Main", "Six"), five = MakeWindow("ThunderRT5Main", "Five");
    Expect(Ask(), 5, VARIANT_FALSE, AsLong(five), {0, 0, AsLong(five), AsLong(six)}, "Five");
}

TEST(ThunderScenario, AllFourClasses) {
    THUNDER_SCENARIO(AllFourClasses);
    HWND six = MakeWindow("ThunderRT6Main", "Six"), four = MakeWindow("ThunderRTMain", "Four");
    HWND ide = MakeWindow("ThunderMain", "IDE"), five = MakeWindow("ThunderRT5Main", "Five");
    Expect(Ask(), 4, VARIANT_TRUE, AsLong(ide), {AsLong(ide), AsLong(four), AsLong(five), AsLong(six)}, "IDE");
}

BOOL CALLBACK KeepLastOfClass(HWND window, LPARAM last) {
    char name[64] = {};
    GetClassNameA(window, name, sizeof name);
    if (std::string(name) == "ThunderRT6Main") *reinterpret_cast<HWND*>(last) = window;
    return TRUE;
}

TEST(ThunderScenario, TwoWindowsOfOneClassTheLastEnumeratedWins) {
    THUNDER_SCENARIO(TwoWindowsOfOneClassTheLastEnumeratedWins);
    HWND first = MakeWindow("ThunderRT6Main", "First"), second = MakeWindow("ThunderRT6Main", "Second");
    HWND last = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), KeepLastOfClass, reinterpret_cast<LPARAM>(&last));
    ASSERT_TRUE(last == first || last == second);
    Expect(Ask(), 6, VARIANT_FALSE, AsLong(last), {0, 0, 0, AsLong(last)}, last == first ? "First" : "Second");
}

// Null pointers touch nothing, not even the cache; the first real query
// fixes what every later one reports. A long title comes back whole.
TEST(ThunderScenario, TheFirstQueryFixesTheAnswer) {
    THUNDER_SCENARIO(TheFirstQueryFixesTheAnswer);
    EXPECT_EQ(kStatusNull, vb::esGetVBVersion(nullptr));
    EXPECT_EQ(kStatusNull, vb::esIsInIDE(nullptr));
    EXPECT_EQ(kStatusNull, vb::esGetThunderMainHandle(nullptr));
    EXPECT_EQ(E_INVALIDARG, vb::esGetThunderMainHandles(nullptr));
    EXPECT_EQ(kStatusNull, vb::esGetThunderMainTitle(nullptr));
    EXPECT_EQ(kStatusNull, vb::esFixUserControlsContainerWindow(nullptr));
    const std::string title(3000, 'T');
    HWND six = MakeWindow("ThunderRT6Main", title);
    Expect(Ask(), 6, VARIANT_FALSE, AsLong(six), {0, 0, 0, AsLong(six)}, title);
    MakeWindow("ThunderMain", "Too late");
    MakeWindow("ThunderRT5Main", "Too late");
    Expect(Ask(), 6, VARIANT_FALSE, AsLong(six), {0, 0, 0, AsLong(six)}, title);
}

#ifndef CSK_WINSIM
// Each scenario in a process of its own, this same test program.
TEST(ThunderMainWindows, EachScenarioInAProcessOfItsOwn) {
    char program[MAX_PATH + 1] = {};
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    for (const char* scenario : {"NoThunderWindow", "OnlyTheDevelopmentEnvironment", "TwoRuntimesTheOlderWins",
                                 "AllFourClasses", "TwoWindowsOfOneClassTheLastEnumeratedWins",
                                 "TheFirstQueryFixesTheAnswer"}) {
        std::string command = std::string("\"") + program + "\" --gtest_filter=ThunderScenario." + scenario;
        SetEnvironmentVariableA(kScenarioVariable, scenario);
        STARTUPINFOA startup = {};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process = {};
        ASSERT_TRUE(CreateProcessA(program, &command[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process));
        SetEnvironmentVariableA(kScenarioVariable, nullptr);
        DWORD code = 99;
        if (WaitForSingleObject(process.hProcess, 120000) != WAIT_OBJECT_0) TerminateProcess(process.hProcess, 98);
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hProcess);
        CloseHandle(process.hThread);
        EXPECT_EQ(0u, code) << scenario;
    }
}
#endif

// ---------------------------------------------------------------------------
// The UserControl container repair, outside the development environment
// (this process has no Thunder window).

TEST(UserControlContainers, EveryMarkedStaticWindowOfTheThreadIsHidden) {
#ifdef CSK_WINSIM
    FreshLibrary fresh;
    winsim::reset();
    const char* staticClass = "sTaTiC";  // the platform's own class reads "Static" under Wine
    const char* marker = "THUNDERRT6USERCONTROLDC";
#else
    const char* staticClass = "Static";
    const char* marker = "ThunderRT6UserControlDC";
#endif
    HWND grandparent = MakeWindow(staticClass);
    MakeWindow(marker, "", MakeWindow("CskPanel", "", grandparent));
    HWND direct = MakeWindow(staticClass);
    MakeWindow(marker, "", direct);
    HWND unmarked = MakeWindow(staticClass), lookalike = MakeWindow(staticClass);
    MakeWindow("CskPanel", "", unmarked);
    MakeWindow("ThunderRT6UserControlDCX", "", lookalike);
    HWND otherClass = MakeWindow("CskPanel");
    MakeWindow(marker, "", otherClass);
    for (int call = 0; call < 2; ++call) {  // a second call finds the same windows
        VARIANT_BOOL fixed = 0;
        EXPECT_EQ(S_OK, vb::esFixUserControlsContainerWindow(&fixed));
        EXPECT_EQ(VARIANT_TRUE, fixed);
        EXPECT_FALSE(Visible(grandparent));
        EXPECT_FALSE(Visible(direct));
        EXPECT_TRUE(Visible(unmarked));
        EXPECT_TRUE(Visible(lookalike));
        EXPECT_TRUE(Visible(otherClass));
    }
#ifndef CSK_WINSIM
    DestroyWindow(grandparent);
    DestroyWindow(direct);
#else
    winsim::reset();
    MakeWindow("CskPanel");
#endif
    VARIANT_BOOL fixed = 7;
    EXPECT_EQ(S_OK, vb::esFixUserControlsContainerWindow(&fixed));
    EXPECT_EQ(VARIANT_FALSE, fixed);
#ifndef CSK_WINSIM
    for (HWND window : {unmarked, lookalike, otherClass}) DestroyWindow(window);
#endif
}

// ---------------------------------------------------------------------------
// Indirect calls: targets of zero to four arguments under the exports'
// convention, each recording what it was given.

std::vector<LONG> g_given;
int g_calls = 0;

LONG WINAPI Target0() { return ++g_calls, g_given = {}, -1; }
LONG WINAPI Target1(LONG a) { return ++g_calls, g_given = {a}, -1; }
LONG WINAPI Target2(LONG a, LONG b) { return ++g_calls, g_given = {a, b}, -1; }
LONG WINAPI Target3(LONG a, LONG b, LONG c) { return ++g_calls, g_given = {a, b, c}, -1; }
LONG WINAPI Target4(LONG a, LONG b, LONG c, LONG d) { return ++g_calls, g_given = {a, b, c, d}, -1; }

LONG AddressOf(void* function) {
#ifdef CSK_WINSIM
    return winsim::callableAt32Bits(function);
#else
    return static_cast<LONG>(reinterpret_cast<intptr_t>(function));
#endif
}

template <class R, size_t... I>
R CallThrough(const std::string& name, LONG address, std::index_sequence<I...>) {
    return VbFunction<R, LONG, decltype(LONG(I))...>{name.c_str()}(address, LONG(0x10 * (I + 1) + 1)...);
}

template <size_t N>
void CheckIndirectCalls(const std::string& digits, void* target) {
    const std::vector<LONG> expected = [] {
        std::vector<LONG> values;
        for (size_t i = 0; i < N; ++i) values.push_back(LONG(0x10 * (i + 1) + 1));
        return values;
    }();
    const std::string r4 = "esCallFunctionEx_i" + digits + "_r4", r0 = "esCallFunctionEx_i" + digits + "_r0";
    g_calls = 0;
    EXPECT_EQ(0, CallThrough<LONG>(r4, 0, std::make_index_sequence<N>()));
    CallThrough<void>(r0, 0, std::make_index_sequence<N>());
    EXPECT_EQ(0, g_calls) << "address 0 calls nothing";
    g_given = {99};
    EXPECT_EQ(-1, CallThrough<LONG>(r4, AddressOf(target), std::make_index_sequence<N>())) << r4;
    EXPECT_EQ(expected, g_given) << r4;
    g_given = {99};
    CallThrough<void>(r0, AddressOf(target), std::make_index_sequence<N>());
    EXPECT_EQ(expected, g_given) << r0;
    EXPECT_EQ(2, g_calls);
}

TEST(IndirectCalls, ArgumentsInOrderResultsWholeAndAddressZeroCallsNothing) {
    CheckIndirectCalls<0>("", reinterpret_cast<void*>(Target0));
    CheckIndirectCalls<1>("4", reinterpret_cast<void*>(Target1));
    CheckIndirectCalls<2>("44", reinterpret_cast<void*>(Target2));
    CheckIndirectCalls<3>("444", reinterpret_cast<void*>(Target3));
    CheckIndirectCalls<4>("4444", reinterpret_cast<void*>(Target4));
}

// ---------------------------------------------------------------------------
// Input and desktop state.

TEST(DesktopState, NullOutPointersGiveStatusOne) {
    EXPECT_EQ(kStatusNull, vb::esGetLastInputTime(nullptr));
    EXPECT_EQ(kStatusNull, vb::esGetIdleTimeInterval(nullptr));
    EXPECT_EQ(kStatusNull, vb::esIsKeyPressed(0x10 /* shift */, nullptr));
    EXPECT_EQ(kStatusNull, vb::esIsKeyToggled(0x14 /* caps lock */, nullptr));
    EXPECT_EQ(kStatusNull, vb::esIsUnicodeAvailable(nullptr));
    EXPECT_EQ(kStatusNull, vb::esGetErrorMode(nullptr));
    EXPECT_EQ(kStatusNull, vb::esIsWorkstationLocked(nullptr));
    EXPECT_EQ(kStatusNull, vb::esIsScreenSaverRunning(nullptr));
    EXPECT_EQ(kStatusNull, vb::esCLng(Bstr("12").get(), nullptr));
#ifdef CSK_WINSIM
    winsim::reset();
#endif
    EXPECT_EQ(kStatusNull, vb::esOpenReadMeFile(VARIANT_TRUE, nullptr));
#ifdef CSK_WINSIM
    EXPECT_EQ("", winsim::lastCall("ShellExecuteA")) << "nothing is opened";
#endif
}

TEST(DesktopState, ErrorModeIsReadAndPutBack) {
    const UINT kMode = 0x8001;  // no critical-error and no open-file boxes
    const UINT before = SetErrorMode(kMode);
    LONG mode = -1;
    EXPECT_EQ(S_OK, vb::esGetErrorMode(&mode));
    EXPECT_EQ(LONG(kMode), mode);
    EXPECT_EQ(kMode, SetErrorMode(before));
}

#ifdef CSK_WINSIM
// The stand-in's clock and input record, wrapped ticks and refusals
// included: Wine cannot stop its tick count.
TEST(DesktopState, LastInputAndIdleTimeOnTheTickClock) {
    struct Case { DWORD tick, lastInput; bool missing; HRESULT status; double last, idle; };
    const Case cases[] = {
        {5000, 4000, false, S_OK, 4000, 1000},
        {0xFFFFFF00u, 0xFFFFFE00u, false, S_OK, 4294966784.0, 256},  // unsigned, never negative
        {4000, 4000, false, S_OK, 4000, 0},
        {100, 0xFFFFFF00u, false, S_OK, 4294967040.0, 0},  // the tick wrapped since the input
        {5000, 4000, true, S_FALSE, 5000, 0},               // no GetLastInputInfo: the current tick
    };
    for (const Case& c : cases) {
        FreshLibrary fresh;
        winsim::reset();
        winsim::setTicks(c.tick, c.lastInput);
        if (c.missing) winsim::setMissing("GetLastInputInfo");
        double last = -1, idle = -1;
        EXPECT_EQ(c.status, vb::esGetLastInputTime(&last)) << c.tick;
        EXPECT_EQ(c.last, last) << c.tick;
        EXPECT_EQ(c.status, vb::esGetIdleTimeInterval(&idle)) << c.tick;
        EXPECT_EQ(c.idle, idle) << c.tick;
    }
    winsim::reset();
    winsim::setTicks(5000, 4000);
    winsim::failNext("GetLastInputInfo");
    double idle = -1;
    EXPECT_EQ(S_FALSE, vb::esGetIdleTimeInterval(&idle));
    EXPECT_EQ(0.0, idle);
}

TEST(DesktopState, KeysLockScreenSaverAndUnicodeAsTheHostTells) {
    winsim::reset();
    struct Key { SHORT async, state; VARIANT_BOOL pressed, toggled; };
    for (const Key& k : {Key{SHORT(0x8000), 0, VARIANT_TRUE, VARIANT_FALSE}, Key{0, 1, VARIANT_FALSE, VARIANT_TRUE},
                         Key{SHORT(0x8001), SHORT(0xFF80), VARIANT_TRUE, VARIANT_FALSE}, Key{1, SHORT(0xFF81), VARIANT_FALSE, VARIANT_TRUE}}) {
        winsim::setKeyState('A', k.async, k.state);
        VARIANT_BOOL pressed = 7, toggled = 7;
        EXPECT_EQ(S_OK, vb::esIsKeyPressed('A', &pressed));
        EXPECT_EQ(S_OK, vb::esIsKeyToggled('A', &toggled));
        EXPECT_EQ(k.pressed, pressed) << k.async;
        EXPECT_EQ(k.toggled, toggled) << k.state;
    }
    // A locked workstation cannot open its input desktop; the 9x line has no lock.
    for (bool nineX : {false, true}) {
        FreshLibrary fresh;
        winsim::reset();
        if (nineX) winsim::setVersion(VER_PLATFORM_WIN32_WINDOWS, 4, 10, 0x040A08AE, " A ", 0, 1);
        for (bool locked : {false, true}) {
            winsim::setWorkstationLocked(locked);
            VARIANT_BOOL answer = 7;
            EXPECT_EQ(S_OK, vb::esIsWorkstationLocked(&answer));
            EXPECT_EQ(locked && !nineX ? VARIANT_TRUE : VARIANT_FALSE, answer) << nineX << locked;
        }
    }
    for (bool running : {false, true}) {
        winsim::setScreenSaverRunning(running);
        VARIANT_BOOL answer = 7;
        EXPECT_EQ(S_OK, vb::esIsScreenSaverRunning(&answer));
        EXPECT_EQ(running ? VARIANT_TRUE : VARIANT_FALSE, answer);
    }
    // The Unicode answer is asked once and kept.
    for (bool unicode : {false, true}) {
        FreshLibrary fresh;
        winsim::reset();
        winsim::setUnicode(unicode);
        VARIANT_BOOL answer = 7;
        EXPECT_EQ(S_OK, vb::esIsUnicodeAvailable(&answer));
        EXPECT_EQ(unicode ? VARIANT_TRUE : VARIANT_FALSE, answer);
        winsim::setUnicode(!unicode);
        EXPECT_EQ(S_OK, vb::esIsUnicodeAvailable(&answer));
        EXPECT_EQ(unicode ? VARIANT_TRUE : VARIANT_FALSE, answer);
    }
}

// What the shell and the message box are asked, with and without a
// Visual Basic main window to give the caption.
TEST(DesktopState, ReadMeBesideTheProgram) {
    const std::string kText = "\r\n\r\n\xCD\xE5 \xF3\xE4\xE0\xB8\xF2\xF1\xFF \xEE\xF2\xEA\xF0\xFB\xF2\xFC \xF4\xE0\xE9\xEB.";
    struct Case { const char* program; intptr_t shell; VARIANT_BOOL silent; const char* title; VARIANT_BOOL opened; std::string box; };
    const Case cases[] = {
        {"C:\\Apps\\Tool\\Prog.exe", 42, VARIANT_FALSE, "", VARIANT_TRUE, ""},
        {"C:\\Apps\\Tool\\Prog.exe", 33, VARIANT_FALSE, "", VARIANT_TRUE, ""},
        {"C:\\Apps\\Tool\\Prog.exe", 32, VARIANT_TRUE, "", VARIANT_FALSE, ""},
        {"C:\\Apps\\Tool\\Prog.exe", 2, VARIANT_FALSE, "", VARIANT_FALSE, "0|C:\\Apps\\Tool\\ReadMe.TXT" + kText + "|(null)|8208"},
        {"C:\\Apps\\Tool\\Prog.exe", -5, VARIANT_FALSE, "My App", VARIANT_FALSE, "0|C:\\Apps\\Tool\\ReadMe.TXT" + kText + "|My App|8208"},
        {"Prog.exe", 2, VARIANT_FALSE, "", VARIANT_FALSE, "0|ReadMe.TXT" + kText + "|(null)|8208"},
        {"Prog.exe", 2, 1, "", VARIANT_FALSE, ""},  // any nonzero flag is silent
    };
    for (const Case& c : cases) {
        FreshLibrary fresh;
        winsim::reset();
        winsim::setModuleFileName(nullptr, c.program);
        winsim::setShellExecuteResult(c.shell);
        if (*c.title) MakeWindow("ThunderRT6Main", c.title);
        VARIANT_BOOL opened = 7;
        EXPECT_EQ(S_OK, vb::esOpenReadMeFile(c.silent, &opened));
        EXPECT_EQ(c.opened, opened) << c.program << c.shell;
        const std::string file = std::string(c.program).rfind('\\') == std::string::npos
                                     ? "ReadMe.TXT"
                                     : std::string(c.program).substr(0, std::string(c.program).rfind('\\') + 1) + "ReadMe.TXT";
        EXPECT_EQ("open|" + file + "|||10", winsim::lastCall("ShellExecuteA"));
        EXPECT_EQ(c.silent ? std::string() : c.box, winsim::lastCall("MessageBoxA")) << c.program << c.shell;
    }
}
#else
// Wine has a real clock, keyboard state, desktop and shell: what can be
// provoked there is checked against the platform.
TEST(DesktopState, OnTheRealHost) {
    double last = -1, idle = -1;
    EXPECT_EQ(S_OK, vb::esGetLastInputTime(&last));
    EXPECT_LE(last, double(GetTickCount()));
    EXPECT_EQ(S_OK, vb::esGetIdleTimeInterval(&idle));
    EXPECT_GE(idle, 0.0);
    // The calling thread's toggle state, set through the platform.
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    for (BYTE state : {BYTE(0x01), BYTE(0x00)}) {
        keys[VK_SCROLL] = state;
        SetKeyboardState(keys);
        VARIANT_BOOL toggled = 7;
        EXPECT_EQ(S_OK, vb::esIsKeyToggled(VK_SCROLL, &toggled));
        EXPECT_EQ(state ? VARIANT_TRUE : VARIANT_FALSE, toggled);
    }
    VARIANT_BOOL answer = 7;
    EXPECT_EQ(S_OK, vb::esIsUnicodeAvailable(&answer));
    EXPECT_EQ(VARIANT_TRUE, answer);
    EXPECT_EQ(S_OK, vb::esIsWorkstationLocked(&answer));
    EXPECT_EQ(VARIANT_FALSE, answer);
    EXPECT_EQ(S_OK, vb::esIsScreenSaverRunning(&answer));
    EXPECT_EQ(VARIANT_FALSE, answer);
}

// Closes the first message box of this process that shows up within the
// wait, after reading its caption and text.
struct BoxWatcher {
    std::wstring caption, text;
    bool seen = false;
    volatile bool stop = false;
    std::thread thread{[this] {
        for (int waited = 0; waited < 20000 && !stop; waited += 20) {
            HWND box = FindWindowA("#32770", nullptr);
            DWORD process = 0;
            if (box) GetWindowThreadProcessId(box, &process);
            if (box && process == GetCurrentProcessId()) {
                wchar_t buffer[2048] = {};
                GetWindowTextW(box, buffer, 2048);
                caption = buffer;
                GetWindowTextW(GetDlgItem(box, 0xFFFF), buffer, 2048);
                text = buffer;
                seen = true;
                PostMessageA(box, WM_COMMAND, IDOK, 0);
                return;
            }
            Sleep(20);
        }
    }};
    ~BoxWatcher() { Finish(); }
    void Finish() {
        stop = true;
        if (thread.joinable()) thread.join();
    }
};

TEST(DesktopState, ReadMeMissingBesideTheProgram) {
    char program[MAX_PATH + 1] = {};
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    std::string file = program;
    file = file.substr(0, file.rfind('\\') + 1) + "ReadMe.TXT";
    ASSERT_EQ(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(file.c_str()));
    for (VARIANT_BOOL silent : {VARIANT_TRUE, VARIANT_FALSE}) {
        BoxWatcher watcher;
        VARIANT_BOOL opened = 7;
        EXPECT_EQ(S_OK, vb::esOpenReadMeFile(silent, &opened));
        watcher.Finish();
        EXPECT_EQ(VARIANT_FALSE, opened);
        EXPECT_EQ(!silent, watcher.seen);
        if (silent) continue;
        const std::wstring start(file.begin(), file.end());
        EXPECT_EQ(start + L"\r\n\r\n", watcher.text.substr(0, start.size() + 4));
        BoxWatcher platform;  // no Visual Basic window: the platform's own caption
        MessageBoxA(nullptr, "", nullptr, MB_TASKMODAL);
        platform.Finish();
        EXPECT_EQ(platform.caption, watcher.caption);
    }
}
#endif

// ---------------------------------------------------------------------------
// Text to Long.

TEST(CLng, EveryShapeOfText) {
    struct Case { std::string text; LONG value; };
    const Case cases[] = {
        {"  12", 12}, {"12abc", 12}, {"abc", 0}, {"", 0}, {"   ", 0}, {"3.7", 3}, {"-5", -5}, {"+7", 7}, {"- 5", 0},
        {"0x1A", 0}, {"2147483648", LONG(0x80000000)}, {"4294967295", -1}, {"4294967296", -1},
        {"99999999999999999999999", -1}, {"-4294967295", 1}, {"-4294967296", -1}, {"-2147483649", 2147483647},
        {"&HFF", 255}, {"&hff", 255}, {"&HfF", 255}, {"&O17", 15}, {"&o17", 15}, {"&B101", 5}, {"&b102", 2},
        {"&17", 15}, {"&8", 0}, {"&", 0}, {"&H", 0}, {"&Hxyz", 0}, {"&O", 0}, {" &H10", 16},
        {"&HFFFFFFFF", -1}, {"&H1FFFFFFFF", -1}, {"&H123456789", 0x23456789}, {"&HFFFFFFFFF0", LONG(0xFFFFFFF0)},
        {"&B" + std::string(40, '1'), -1}, {"&O37777777777", -1}, {"&O40000000000", 0},
        {"\t42", 42}, {" \t 42", 42}, {"\t&H10", 0}, {"\n\v\f\r9", 9},
        {std::string("1\0" "2", 3), 1}, {std::string("&H1\0F", 5), 1}, {std::string("\0" "5", 2), 0},
        {"\xC2\xB2", 0},          // nor is a superscript two
        {"7\xC3\xA9", 7},         // a letter beyond ASCII ends the digits
    };
    for (const Case& c : cases) {
        LONG value = 12345;
        EXPECT_EQ(S_OK, vb::esCLng(Bstr(c.text).get(), &value)) << c.text;
        EXPECT_EQ(c.value, value) << "\"" << c.text << "\"";
    }
    LONG value = 12345;
    EXPECT_EQ(S_OK, vb::esCLng(nullptr, &value));
    EXPECT_EQ(0, value);
}

}  // namespace
