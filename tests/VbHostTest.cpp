// The Visual Basic host: the Thunder main windows (one process-wide cache,
// so each scenario starts from an empty one: a fresh copy of the library
// natively, a process of its own under Wine), the UserControl container
// repair, indirect calls, and the input and desktop state exports.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

const LONG kStatusNull = 1;

// A window of this thread, visible, of a class that is registered here
// first unless the platform already has it (a class of our own named
// "Static" would replace the system's in every later message box).
HWND MakeWindow(const char* className, const std::string& title = "", HWND parent = nullptr) {
#ifdef CSK_WINSIM
    return winsim::addWindow(className, title.c_str(), parent);
#else
    WNDCLASSA type = {};
    type.lpfnWndProc = DefWindowProcA;
    type.hInstance = GetModuleHandleA(nullptr);
    type.lpszClassName = className;
    WNDCLASSA system;
    if (!GetClassInfoA(nullptr, className, &system)) RegisterClassA(&type);
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
// The Thunder main windows. Each scenario makes its windows, some before the
// first query and some after it, and starts from an empty cache: a fresh
// copy of the library natively, a process of its own under Wine.

struct Window { const char* className; std::string title; };
struct Scenario {
    const char* name;
    std::vector<Window> before, after;
    LONG version;
    int slots[4];  // the window each slot reports, by index into before; -1 none, -2 the last RT6 enumerated
};

const Scenario kScenarios[] = {
    {"NoThunderWindow", {{"thunderrt6main", "case differs"}, {"ThunderRT6MainForm", "longer"}}, {}, 0, {-1, -1, -1, -1}},
    {"OnlyTheIde", {{"ThunderMain", "Project1 - Microsoft Visual Basic [design]"}}, {}, 0, {0, -1, -1, -1}},
    {"TheOlderRuntimeWins", {{"ThunderRT6Main", "Six"}, {"ThunderRT5Main", "Five"}}, {}, 5, {-1, -1, 1, 0}},
    {"AllFour", {{"ThunderRT6Main", "6"}, {"ThunderRTMain", "4"}, {"ThunderMain", "IDE"}, {"ThunderRT5Main", "5"}}, {},
     4, {2, 1, 3, 0}},
    {"TwoOfOneClass", {{"ThunderRT6Main", "First"}, {"ThunderRT6Main", "Second"}}, {}, 6, {-1, -1, -1, -2}},
    {"LateWindowsUnseen", {{"ThunderRT6Main", std::string(3000, 'T')}}, {{"ThunderMain", ""}, {"ThunderRT5Main", ""}},
     6, {-1, -1, -1, 0}},
};

const char kScenarioVariable[] = "CSK_THUNDER_SCENARIO";

BOOL CALLBACK KeepLastRT6(HWND window, LPARAM last) {
    char name[64] = {};
    GetClassNameA(window, name, sizeof name);
    if (std::string(name) == "ThunderRT6Main") *reinterpret_cast<HWND*>(last) = window;
    return TRUE;
}

void RunScenario(const Scenario& scenario) {
    SCOPED_TRACE(scenario.name);
    // Null pointers touch nothing, not even the cache.
    EXPECT_EQ(kStatusNull, vb::esGetVBVersion(nullptr));
    EXPECT_EQ(kStatusNull, vb::esIsInIDE(nullptr));
    EXPECT_EQ(kStatusNull, vb::esGetThunderMainHandle(nullptr));
    EXPECT_EQ(E_INVALIDARG, vb::esGetThunderMainHandles(nullptr));
    EXPECT_EQ(kStatusNull, vb::esGetThunderMainTitle(nullptr));
    EXPECT_EQ(kStatusNull, vb::esFixUserControlsContainerWindow(nullptr));
    std::vector<HWND> made;
    for (const Window& window : scenario.before) made.push_back(MakeWindow(window.className, window.title));
    HWND container = MakeWindow("Static");  // a UserControl container, left alone in the IDE
    MakeWindow("ThunderRT6UserControlDC", "", MakeWindow("CskPanel", "", container));
    HWND lastRT6 = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), KeepLastRT6, reinterpret_cast<LPARAM>(&lastRT6));
    LONG slots[4], handle = 12345;
    std::string title = "<null>";  // an empty answer is a null BSTR
    for (int slot = 3; slot >= 0; --slot) {
        const int at = scenario.slots[slot];
        HWND window = at == -2 ? lastRT6 : at >= 0 ? made[size_t(at)] : nullptr;
        slots[slot] = AsLong(window);
        if (window) handle = slots[slot], title = scenario.before[size_t(std::find(made.begin(), made.end(), window) - made.begin())].title;
    }
    for (int pass = 0; pass < 2; ++pass) {
        LONG version = -7, got = 12345;
        VARIANT_BOOL ide = 7, fixed = 7;
        vb::ThunderHandles handles = {{-1, -1, -1, -1}};
        Bstr text;
        EXPECT_EQ(S_OK, vb::esGetVBVersion(&version));
        EXPECT_EQ(S_OK, vb::esIsInIDE(&ide));
        EXPECT_EQ(S_OK, vb::esGetThunderMainHandle(&got));
        EXPECT_EQ(S_OK, vb::esGetThunderMainHandles(&handles));
        EXPECT_EQ(S_OK, vb::esGetThunderMainTitle(text.out()));
        EXPECT_EQ(S_OK, vb::esFixUserControlsContainerWindow(&fixed));
        EXPECT_EQ(scenario.version, version);
        EXPECT_EQ(slots[0] ? VARIANT_TRUE : VARIANT_FALSE, ide);
        EXPECT_EQ(handle, got);
        for (int slot = 0; slot < 4; ++slot) EXPECT_EQ(slots[slot], handles.handles[slot]) << "slot " << slot;
        EXPECT_EQ(title, text.text());
        EXPECT_EQ(VARIANT_TRUE, fixed);
        EXPECT_EQ(slots[0] != 0, Visible(container));
        // Windows made after the first query are never seen.
        for (const Window& window : scenario.after) MakeWindow(window.className, window.title);
    }
}

#ifdef CSK_WINSIM
TEST(ThunderMainWindows, EachScenarioFromAnEmptyCache) {
    for (const Scenario& scenario : kScenarios) {
        FreshLibrary fresh;
        winsim::reset();
        RunScenario(scenario);
    }
}
#else
// Run by the test below in a child process, with the scenario's name in
// the environment; skipped in the test program's own run.
TEST(ThunderMainWindows, OneScenario) {
    const char* chosen = std::getenv(kScenarioVariable);
    if (!chosen) GTEST_SKIP() << "runs in a process of its own";
    for (const Scenario& scenario : kScenarios)
        if (scenario.name == std::string(chosen)) RunScenario(scenario);
}

TEST(ThunderMainWindows, EachScenarioInAProcessOfItsOwn) {
    char program[MAX_PATH + 1] = {};
    GetModuleFileNameA(nullptr, program, MAX_PATH);
    for (const Scenario& scenario : kScenarios) {
        std::string command = std::string("\"") + program + "\" --gtest_filter=ThunderMainWindows.OneScenario";
        SetEnvironmentVariableA(kScenarioVariable, scenario.name);
        STARTUPINFOA startup = {sizeof startup};
        PROCESS_INFORMATION process = {};
        ASSERT_TRUE(CreateProcessA(program, &command[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process));
        SetEnvironmentVariableA(kScenarioVariable, nullptr);
        DWORD code = 99;
        if (WaitForSingleObject(process.hProcess, 120000) != WAIT_OBJECT_0) TerminateProcess(process.hProcess, 98);
        GetExitCodeProcess(process.hProcess, &code);
        CloseHandle(process.hProcess), CloseHandle(process.hThread);
        EXPECT_EQ(0u, code) << scenario.name;
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
    const char *container = "sTaTiC", *marker = "THUNDERRT6USERCONTROLDC";  // both compared without case
#else
    const char *container = "Static", *marker = "ThunderRT6UserControlDC";  // the platform's own "Static"
#endif
    // A top-level window and its child (a marker deeper down is in every
    // Thunder scenario).
    struct Case { const char *top, *child; bool hidden; };
    const Case cases[] = {{container, "ThunderRT6UserControlDCX", false}, {"CskPanel", marker, false},
                          {container, marker, true}};
    std::vector<HWND> tops;
    for (const Case& c : cases) {
        VARIANT_BOOL fixed = 7;
        EXPECT_EQ(S_OK, vb::esFixUserControlsContainerWindow(&fixed));
        EXPECT_EQ(VARIANT_FALSE, fixed) << tops.size();  // nothing marked yet
        tops.push_back(MakeWindow(c.top));
        MakeWindow(c.child, "", tops.back());
    }
    for (int call = 0; call < 2; ++call) {  // a second call finds the same windows
        VARIANT_BOOL fixed = 7;
        EXPECT_EQ(S_OK, vb::esFixUserControlsContainerWindow(&fixed));
        EXPECT_EQ(VARIANT_TRUE, fixed);
        for (size_t i = 0; i < tops.size(); ++i) EXPECT_EQ(!cases[i].hidden, Visible(tops[i])) << i;
    }
#ifndef CSK_WINSIM
    for (HWND window : tops) DestroyWindow(window);
#endif
}

// ---------------------------------------------------------------------------
// Indirect calls: targets of zero to four arguments under the exports'
// convention, each recording what it was given.

std::vector<LONG> g_given;

template <class... A>
LONG WINAPI Target(A... arguments) {
    g_given = {arguments...};
    return -1;
}

LONG AddressOf(void* function) {
#ifdef CSK_WINSIM
    return winsim::callableAt32Bits(function);
#else
    return static_cast<LONG>(reinterpret_cast<intptr_t>(function));
#endif
}

// Both exports of one arity, at address 0 and at the target, with the
// arguments 0x11, 0x21, ... in order.
template <size_t... I>
void CheckIndirectCalls(std::index_sequence<I...>) {
    const std::string digits(sizeof...(I), '4'), name = "esCallFunctionEx_i" + digits;
    const std::string r4Name = name + "_r4", r0Name = name + "_r0";
    const VbFunction<LONG, LONG, decltype(LONG(I))...> r4{r4Name.c_str()};
    const VbFunction<void, LONG, decltype(LONG(I))...> r0{r0Name.c_str()};
    const LONG target = AddressOf(reinterpret_cast<void*>(&Target<decltype(LONG(I))...>));
    const std::vector<LONG> expected = {LONG(0x10 * (I + 1) + 1)...};
    g_given = {99};
    EXPECT_EQ(0, r4(0, LONG(0x10 * (I + 1) + 1)...)) << r4Name;
    r0(0, LONG(0x10 * (I + 1) + 1)...);
    EXPECT_EQ(std::vector<LONG>{99}, g_given) << "address 0 calls nothing";
    EXPECT_EQ(-1, r4(target, LONG(0x10 * (I + 1) + 1)...)) << r4Name;
    EXPECT_EQ(expected, g_given) << r4Name;
    g_given = {99};
    r0(target, LONG(0x10 * (I + 1) + 1)...);
    EXPECT_EQ(expected, g_given) << r0Name;
}

template <size_t... N>
void CheckEveryArity(std::index_sequence<N...>) {
    (CheckIndirectCalls(std::make_index_sequence<N>()), ...);
}

TEST(IndirectCalls, ArgumentsInOrderResultsWholeAndAddressZeroCallsNothing) {
    CheckEveryArity(std::make_index_sequence<5>());
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
// The stand-in's clock and input record, wrapped ticks, a host without the
// call and a refusing one: Wine cannot stop its tick count.
TEST(DesktopState, LastInputAndIdleTimeOnTheTickClock) {
    struct Case { DWORD tick, lastInput; int trouble; HRESULT status; double last, idle; };  // trouble: 1 missing, 2 refused
    const Case cases[] = {
        {5000, 4000, 0, S_OK, 4000, 1000},        {0xFFFFFF00u, 0xFFFFFE00u, 0, S_OK, 4294966784.0, 256},
        {4000, 4000, 0, S_OK, 4000, 0},           {100, 0xFFFFFF00u, 0, S_OK, 4294967040.0, 0},  // wrapped since
        {5000, 4000, 1, S_FALSE, 5000, 0},        {5000, 4000, 2, S_FALSE, 5000, 0},
    };
    for (const Case& c : cases) {
        FreshLibrary fresh;
        winsim::reset();
        winsim::setTicks(c.tick, c.lastInput);
        if (c.trouble == 1) winsim::setMissing("GetLastInputInfo");
        double last = -1, idle = -1;
        if (c.trouble == 2) winsim::failNext("GetLastInputInfo");
        EXPECT_EQ(c.status, vb::esGetLastInputTime(&last)) << c.tick;
        if (c.trouble == 2) winsim::failNext("GetLastInputInfo");
        EXPECT_EQ(c.status, vb::esGetIdleTimeInterval(&idle)) << c.tick;
        EXPECT_EQ(c.last, last) << c.tick;
        EXPECT_EQ(c.idle, idle) << c.tick;
    }
}

TEST(DesktopState, KeysLockScreenSaverAndUnicodeAsTheHostTells) {
    winsim::reset();
    struct Key { SHORT async, state; VARIANT_BOOL pressed, toggled; };
    // Only the high bit of the asynchronous state and the low bit of the thread's count.
    for (const Key& k : {Key{SHORT(0x8001), SHORT(0xFF80), -1, 0}, Key{1, SHORT(0xFF81), 0, -1}}) {
        winsim::setKeyState('A', k.async, k.state);
        VARIANT_BOOL pressed = 7, toggled = 7;
        EXPECT_EQ(S_OK, vb::esIsKeyPressed('A', &pressed));
        EXPECT_EQ(S_OK, vb::esIsKeyToggled('A', &toggled));
        EXPECT_EQ(k.pressed, pressed) << k.async;
        EXPECT_EQ(k.toggled, toggled) << k.state;
    }
    // A locked workstation cannot open its input desktop; the 9x line has no
    // lock. The Unicode answer is asked once and kept.
    for (bool nineX : {false, true}) {
        FreshLibrary fresh;
        winsim::reset();
        if (nineX) winsim::setVersion(VER_PLATFORM_WIN32_WINDOWS, 4, 10, 0x040A08AE, " A ", 0, 1);
        winsim::setUnicode(!nineX);
        for (bool on : {false, true}) {
            winsim::setWorkstationLocked(on);
            winsim::setScreenSaverRunning(on);
            VARIANT_BOOL locked = 7, saver = 7, unicode = 7;
            EXPECT_EQ(S_OK, vb::esIsWorkstationLocked(&locked));
            EXPECT_EQ(S_OK, vb::esIsScreenSaverRunning(&saver));
            EXPECT_EQ(S_OK, vb::esIsUnicodeAvailable(&unicode));
            EXPECT_EQ(on && !nineX ? VARIANT_TRUE : VARIANT_FALSE, locked) << nineX << on;
            EXPECT_EQ(on ? VARIANT_TRUE : VARIANT_FALSE, saver);
            EXPECT_EQ(nineX ? VARIANT_FALSE : VARIANT_TRUE, unicode);
            winsim::setUnicode(nineX);
        }
    }
}

// What the shell and the message box are asked, with and without a
// Visual Basic main window to give the caption.
TEST(DesktopState, ReadMeBesideTheProgram) {
    const std::string kText = "\r\n\r\n\xCD\xE5 \xF3\xE4\xE0\xB8\xF2\xF1\xFF \xEE\xF2\xEA\xF0\xFB\xF2\xFC \xF4\xE0\xE9\xEB.";
    const std::string kFile = "C:\\Apps\\Tool\\ReadMe.TXT";
    struct Case { const char* program; intptr_t shell; VARIANT_BOOL silent; const char* title; VARIANT_BOOL opened; std::string box; };
    const Case cases[] = {
        {"C:\\Apps\\Tool\\Prog.exe", 33, 0, "", -1, ""},
        {"C:\\Apps\\Tool\\Prog.exe", 32, 0, "", 0, "0|" + kFile + kText + "|(null)|8208"},
        {"C:\\Apps\\Tool\\Prog.exe", -5, 0, "My App", 0, "0|" + kFile + kText + "|My App|8208"},
        {"Prog.exe", 2, 0, "", 0, "0|ReadMe.TXT" + kText + "|(null)|8208"},
        {"Prog.exe", 2, 1, "", 0, ""},  // any nonzero flag is silent
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
        EXPECT_EQ(std::string("open|") + (c.program[0] == 'C' ? kFile : "ReadMe.TXT") + "|||10", winsim::lastCall("ShellExecuteA"));
        EXPECT_EQ(c.box, winsim::lastCall("MessageBoxA")) << c.program << c.shell;
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

// No read-me stands beside the test program: silent, nothing is shown and
// the call returns at once (the message itself is checked natively).
TEST(DesktopState, ReadMeMissingBesideTheProgram) {
    VARIANT_BOOL opened = 7;
    EXPECT_EQ(S_OK, vb::esOpenReadMeFile(VARIANT_TRUE, &opened));
    EXPECT_EQ(VARIANT_FALSE, opened);
    EXPECT_EQ(nullptr, FindWindowA("#32770", nullptr));
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
        {"&HFF", 255}, {"&hff", 255}, {"&o17", 15}, {"&B101", 5}, {"&b102", 2}, {"&17", 15}, {"&8", 0},
        {"&", 0}, {"&H", 0}, {"&Hxyz", 0}, {" &H10", 16},
        {"&HFFFFFFFF", -1}, {"&H1FFFFFFFF", -1}, {"&H123456789", 0x23456789}, {"&HFFFFFFFFF0", LONG(0xFFFFFFF0)},
        {"&B" + std::string(40, '1'), -1}, {"&O37777777777", -1}, {"&O40000000000", 0},
        {" \t 42", 42}, {"\t&H10", 0}, {"\n\v\f\r9", 9},
        {std::string("1\0" "2", 3), 1}, {std::string("&H1\0F", 5), 1}, {std::string("\0" "5", 2), 0},
        {"\xC2\xB2", 0}, {"7\xC3\xA9", 7},  // a superscript two is no digit, a letter beyond ASCII ends them
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
