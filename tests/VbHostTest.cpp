// The Visual Basic host: the Thunder main windows and the UserControl
// container repair (the windows found are kept for the life of the process,
// so each scenario runs in a process of its own), and indirect calls.
#include <process.h>

#include "VbDeclares.h"

namespace {

// A visible window of this thread, of a class registered here unless the system has it ("Static").
HWND MakeWindow(const char* type, const std::string& title = "", HWND parent = nullptr) {
    WNDCLASSA kind = {0, DefWindowProcA, 0, 0, GetModuleHandleA(nullptr), nullptr, nullptr, nullptr, nullptr, type}, system;
    if (!GetClassInfoA(nullptr, type, &system)) RegisterClassA(&kind);
    return CreateWindowExA(0, type, title.c_str(), (parent ? WS_CHILD : WS_POPUP) | WS_VISIBLE, 0, 0, 9, 9, parent, 0, 0, 0);
}

// A scenario: its windows, and a class whose window is made after the first query; the version it reports and the
// window (by index, -1 none) in each slot. Windows come newest first: of two of one class the first made is the last
// enumerated.
struct Scene { std::vector<std::pair<const char*, std::string>> windows; const char* late; LONG version; int slots[4]; };
const Scene kScenes[] = {
    {{{"thunderrt6main", "case differs"}, {"ThunderRT6MainForm", "longer"}}, "", 0, {-1, -1, -1, -1}},
    {{{"ThunderMain", "Project1 - Microsoft Visual Basic [design]"}}, "", 0, {0, -1, -1, -1}},
    {{{"ThunderRT6Main", "Six"}, {"ThunderRT5Main", "Five"}}, "", 5, {-1, -1, 1, 0}},  // the older runtime wins
    {{{"ThunderRT6Main", "6"}, {"ThunderRTMain", "4"}, {"ThunderMain", "IDE"}, {"ThunderRT5Main", "5"}}, "", 4, {2, 1, 3, 0}},
    {{{"ThunderRT6Main", "First"}, {"ThunderRT6Main", "Second"}}, "", 6, {-1, -1, -1, 0}},
    {{{"ThunderRT6Main", std::string(3000, 'T')}}, "ThunderMain", 6, {-1, -1, -1, 0}},
};

// The answers with the scenario's windows, and the containers: the "Static" windows with a ThunderRT6UserControlDC
// below them are hidden (but in the IDE); a window of another class with one below it is left alone.
void Play(const Scene& s) {
    EXPECT_EQ(E_INVALIDARG, vb::esGetThunderMainHandles(nullptr));  // and the windows are not looked for yet
    LONG made[4] = {}, want[4] = {}, got[4] = {-1, -1, -1, -1}, first = 12345, version = -7, handle = 12345;
    std::string title = kNull, shown;
    for (size_t i = 0; i < s.windows.size(); ++i) made[i] = LONG(intptr_t(MakeWindow(s.windows[i].first, s.windows[i].second)));
    for (int slot = 3; slot >= 0; --slot)
        if (s.slots[slot] >= 0) want[slot] = first = made[s.slots[slot]], title = s.windows[s.slots[slot]].second;
    VARIANT_BOOL fixed[2] = {7, 7}, ide = 7;
    if (vb::esFixUserControlsContainerWindow(&fixed[0]) == S_OK && *s.late) MakeWindow(s.late);  // after the first query
    HWND tops[3] = {MakeWindow("Static"), MakeWindow("Static"), MakeWindow("CskPanel")};
    MakeWindow("ThunderRT6UserControlDC", "", MakeWindow("CskPanel", "", tops[0]));
    MakeWindow("ThunderRT6UserControlDC", "", tops[1]), MakeWindow("ThunderRT6UserControlDC", "", tops[2]);
    EXPECT_EQ(S_OK, vb::esGetVBVersion(&version) | vb::esIsInIDE(&ide) | vb::esGetThunderMainHandle(&handle) |
                        vb::esGetThunderMainHandles((TMFI*)got) | vb::esFixUserControlsContainerWindow(&fixed[1]));
    for (HWND top : tops) shown += IsWindowVisible(top) ? "1" : "0";
    EXPECT_EQ(std::make_tuple(s.version, -!!want[0], first, std::vector<LONG>(want, want + 4), title, -!!want[0], -1,
                              want[0] ? "111" : "001"),
              std::make_tuple(version, ide, handle, std::vector<LONG>(got, got + 4), ExportText(vb::esGetThunderMainTitle),
                              fixed[0], fixed[1], shown));
}

TEST(ThunderWindows, EachScenarioInAProcessOfItsOwn) {
    if (const char* chosen = std::getenv("CSK_THUNDER_SCENARIO")) return Play(kScenes[std::atoi(chosen)]);
    // Each scenario in a child, which finds it in its environment.
    for (auto i = 0u; i < std::size(kScenes) && SetEnvironmentVariableA("CSK_THUNDER_SCENARIO", std::to_string(i).c_str()); ++i)
        EXPECT_EQ(0, _spawnl(_P_WAIT, _pgmptr, _pgmptr, "--gtest_filter=ThunderWindows.*", "--gtest_brief=1", nullptr)) << i;
}

// Targets of zero to four arguments under the exports' convention, each keeping what it was given and answering -1
// (0xFFFFFFFF) for none, -2 for one and so on; address 0 calls nothing (and answers 0).
std::vector<LONG> g_given;
template <class... A> LONG WINAPI Target(A... arguments) { return g_given = {arguments...}, ~LONG(sizeof...(A)); }

TEST(IndirectCalls, ArgumentsInOrderAndTheWholeResult) {
    auto expect = [](const auto& withResult, const auto& without, auto... arguments) {
        const LONG target = LONG(intptr_t(&Target<decltype(arguments)...>));
        const LONG zero = (without(0, arguments...), withResult(0, arguments...)), answer = withResult(target, arguments...);
        const std::vector<LONG> given = std::exchange(g_given, {99});
        without(target, arguments...);
        EXPECT_EQ(std::make_tuple(0, ~LONG(sizeof...(arguments)), given, given),
                  std::make_tuple(zero, answer, std::vector<LONG>{arguments...}, g_given)) << withResult.name;
    };
    expect(vb::esCallFunctionEx_i_r4, vb::esCallFunctionEx_i_r0);
    expect(vb::esCallFunctionEx_i4_r4, vb::esCallFunctionEx_i4_r0, LONG(0x80000001));
    expect(vb::esCallFunctionEx_i44_r4, vb::esCallFunctionEx_i44_r0, 1L, 2L);
    expect(vb::esCallFunctionEx_i444_r4, vb::esCallFunctionEx_i444_r0, -1L, 0x7FFFFFFFL, 3L);
    expect(vb::esCallFunctionEx_i4444_r4, vb::esCallFunctionEx_i4444_r0, 4L, 3L, 2L, 1L);
}

}  // namespace
