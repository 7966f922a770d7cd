// Windows, controls and the screen through the exports: real windows, combo
// boxes and edit controls, read back through the platform; what Wine cannot
// show (monitors, the record a message box is given, other resolutions)
// staged on the library's imports. Each row's answers are joined into one
// text, so that a failure shows them all.
#include "Detour.h"
#include "VbDeclares.h"

namespace {

// A handle that is no window's, and text that no 8-bit code page holds ("При 世").
const LONG kNoWindow = 0x7FFF0; const char kWide[] = "\xD0\x9F\xD1\x80\xD0\xB8 \xE4\xB8\x96";

// A window of this thread at (10, 20), 100 pixels high, destroyed at the end of its scope; its handle as a Long.
using Window = std::unique_ptr<HWND__, BOOL(WINAPI*)(HWND)>; LONG L(const Window& w) { return LONG(reinterpret_cast<intptr_t>(w.get())); }
Window Make(const char* cls, DWORD style = WS_POPUP, HWND parent = nullptr, int width = 200, const char* title = "Ledger") {
    return Window(CreateWindowExA(0, cls, title, style, 10, 20, width, 100, parent, nullptr, nullptr, nullptr), DestroyWindow);
}

// What the staged calls compare with and answer: the window expected, a work area, a bit for each call to fail.
struct { HWND guide; RECT work; DWORD fails; } g;

// The record a message box is given, as text.
template <class P> int WINAPI Record(const P* p) {
    return g_calls += J{sizeof(*p->lpszText) == 2 ? "W" : "A", p->cbSize, p->hwndOwner != GetActiveWindow(), intptr_t(p->hInstance), p->lpszText, p->lpszCaption, p->dwStyle,
                        p->lpszIcon, p->dwContextHelpId + p->dwLanguageId + !!p->lpfnMsgBoxCallback}, IDRETRY;
}

}  // namespace

// Rectangles. Centring on the desktop (esCenterForm, the first two rows) or
// on the work area of the monitor of the window below the form, else of the
// work-area query, else the desktop (esCenterFormEx); halves go to the even
// pixel, a hidden form stays hidden unless shown, a form wider than the area
// overhangs both sides alike, an empty area moves nothing.
TEST(Windows, RectanglesAndCentring) {
    RECT rev{30, 4, 10, 8}, both{10, 8, 5, 4}, back{}; NewRect n{}, sizes{2, 7, -4, 0};
    EXPECT_EQ("0 0 0 -2147024809 10 4 30 8 5 4 10 8 5 4 5 4 2 7 -2 7 ", (J{vb::esNormalizeRect(&rev), vb::esRectToNewRect(&both, &n), vb::esNewRectToRect(&sizes, &back),
              vb::esNormalizeRect(nullptr), rev.left, rev.top, rev.right, rev.bottom, both.left, both.top, both.right, both.bottom, n.Left, n.Top, n.Width, n.Height, back.left, back.top, back.right, back.bottom}));
    VARIANT_BOOL done = 7; WINDOWPLACEMENT p{sizeof p, 0, 0, {}, {}, {}};
    for (auto [ex, work, missing, fails, width, show, answers] : {std::tuple(0, RECT{}, 0, 0u, 201, 0, "0 -1 412 334 201 0 "), {0, {}, 0, 0u, 203, -1, "0 -1 410 334 203 1 "},
             {1, {-1280, -200, 0, 824}, 0, 0u, 1380, 2, "1 72 0 -1 -1330 262 1380 1 "}, {1, {}, 0, 2u, 201, 0, "1 72 48 0 -1 412 314 201 0 "}, {1, {}, 2, 0u, 201, 0, "1 48 0 -1 412 314 201 0 "},
             {1, {}, 1, 4u, 201, 0, "48 0 -1 412 334 201 0 "}, {1, {5, 5, 5, 90}, 0, 0u, 201, 0, "1 72 0 0 10 20 201 0 "}}) {
        FreshLibrary fresh; const Window below = Make("Static"), form = Make("Static", WS_POPUP | (show == 2 ? WS_VISIBLE : 0), nullptr, width);
        Detour query("SystemParametersInfoA", +[](UINT a, UINT, PVOID r, UINT) WINAPI -> BOOL { return g_calls += J{a}, *static_cast<RECT*>(r) = {0, 0, 1024, 728}, !(g.fails & 4); });
        ProcDetour monitor("MonitorFromWindow", missing == 1 ? nullptr : +[](HWND w, DWORD flags) WINAPI { return g_calls += J{w == g.guide ? flags : 9}, HMONITOR(1); }),
            info("GetMonitorInfoA", missing == 2 ? nullptr : +[](HMONITOR, LPMONITORINFO i) WINAPI -> BOOL { return g_calls += J{i->cbSize}, i->rcWork = g.work, !(g.fails & 2); });
        const J placed{(g = {below.get(), work, fails}, g_calls.clear(), (ex ? vb::esCenterFormEx : vb::esCenterForm)(L(form), VARIANT_BOOL(show & 1 ? -1 : 0), &done)), done,
                       (GetWindowPlacement(form.get(), &p), p.rcNormalPosition.left), p.rcNormalPosition.top, p.rcNormalPosition.right - p.rcNormalPosition.left, IsWindowVisible(form.get())};
        EXPECT_EQ(answers, g_calls + placed);
    }
}

// Titles whole in UTF-16, the empty text (not null) for none. Combo-box
// lines to items and back, trimmed (first row) or not: CR LF between items
// only, empty items kept, the first selected; an empty text empties the
// list. The edit exports one after another, with the text and selection
// each leaves: an empty control counts as a fresh line, a lone LF does
// not. Opacity by value and by percent, clamped, rounded to even, the other
// style bits kept. A handle that is no window; the taskbar message; then the
// form activated, restored from its icon and closed by a posted message.
TEST(Windows, TextControlsAndStyles) {
    const Window form = Make("Static", WS_POPUP | WS_VISIBLE), box = Make("ComboBox", WS_CHILD | CBS_DROPDOWNLIST | CBS_HASSTRINGS, form.get()),
                 edit = Make("Edit", WS_CHILD | ES_MULTILINE, form.get(), 300, "");
    Bstr text("stale"), cls("stale"), empty("stale"), none("stale"), noClass("stale"), back("stale"), trimmed("stale"); char now[64] = {}; BYTE alpha = 9;

    EXPECT_EQ((J{0, 0, 0, 0, kWide, "Static", ""}), (J{vb::esSetWindowText(L(form), Bstr(kWide).get()), vb::esGetWindowText(L(form), text.out()),
              vb::esGetWindowClassName(L(form), cls.out()), vb::esGetWindowText(L(edit), empty.out()), text.text(), cls.text(), empty.text()}));
    for (auto [lines, answers] : {std::pair("a\r\n \tb\t\r\n\r\nc\r\n", "0 0 0 5 0 a\r\nb\r\n\r\nc\r\n a\r\nb\r\n\r\nc\r\n "),
                                  std::pair(" a \r\nb\nc\r", "0 0 0 2 0  a \r\nb\nc\r a\r\nb\nc\r "), std::pair("", "1 0 0 0 -1 <null> <null> ")})
        EXPECT_EQ(answers, (J{vb::esComboBoxFromString(Bstr(lines).get(), L(box), lines[0] == 'a'), vb::esComboBoxToString(L(box), 0, back.out()),
                              vb::esComboBoxToString(L(box), -1, trimmed.out()), SendMessageA(box.get(), CB_GETCOUNT, 0, 0), SendMessageA(box.get(), CB_GETCURSEL, 0, 0), back.text(), trimmed.text()}));
    DWORD from = 9, to = 9, key = 9, flags = 9; const auto state = [&] { return GetWindowTextA(edit.get(), now, sizeof now), SendMessageA(edit.get(), EM_GETSEL, WPARAM(&from), LPARAM(&to)), J{now, from, to}; };
    const Bstr x("x"), y("y"), lf("\n");
    EXPECT_EQ("0 x 1 1  0 xy\r\n 4 4  0 xy\r\nx 5 5  0 xy\r\nx\n 6 6  0 xy\r\nx\n\r\nx 9 9  0 xy\r\nx\n\r\nx 0 9  0 xy\r\nx\n\r\nx 0 0  0 xy\r\nx\n\r\nx 9 9  ",
              (J{vb::esTextBox_AddLine2(L(edit), x.get()), state(), vb::esTextBox_AddLine(L(edit), y.get()), state(), vb::esTextBox_AddLine2(L(edit), x.get()), state(),
                 vb::esTextBox_AddText(L(edit), lf.get()), state(), vb::esTextBox_AddLine2(L(edit), x.get()), state(), vb::esTextBox_SelectAll(L(edit)), state(),
                 vb::esTextBox_SelectStart(L(edit)), state(), vb::esTextBox_SelectEnd(L(edit)), state()}));
    SetWindowLongA(form.get(), GWL_EXSTYLE, WS_EX_TOOLWINDOW);
    for (auto [amount, percent, shown] : {std::tuple(-5, -1, 0), {1, 1, 3}, {50, 1, 128}, {101, 1, 255}, {-5, 0, 0}, {128, 0, 128}, {256, 0, 255}})
        EXPECT_EQ((J{0, 1, 0, shown, 2, WS_EX_TOOLWINDOW | WS_EX_LAYERED}), (J{vb::esSetWindowTransparecny(L(form), amount, VARIANT_BOOL(percent)),
                  GetLayeredWindowAttributes(form.get(), &key, &alpha, &flags), key, alpha, flags, GetWindowLongA(form.get(), GWL_EXSTYLE)})) << amount;
    LONG first = 0, second = 0; VARIANT_BOOL done[3] = {7, 7, 7}; const auto pump = [] { for (MSG m; PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE);) DispatchMessageA(&m); return 0; };
    EXPECT_EQ("1 1 1 1 1 1 1 1 1 1 0 0 0 0 0 0 0 0 0 0    128 1 -1 1 1 0 0 0 1 0 0 ", (J{vb::esTextBox_SelectAll(kNoWindow), vb::esTextBox_SelectStart(kNoWindow),
              vb::esTextBox_SelectEnd(kNoWindow), vb::esTextBox_AddText(kNoWindow, x.get()), vb::esTextBox_AddLine(kNoWindow, x.get()), vb::esTextBox_AddLine2(kNoWindow, x.get()),
              vb::esSetWindowText(kNoWindow, x.get()), vb::esComboBoxFromString(x.get(), kNoWindow, 0), vb::esRestoreWindow(kNoWindow), vb::esUnloadForm(kNoWindow),
              vb::esSetForegroundWindowEx(kNoWindow, &done[0]), vb::esSetMenuJustify(kNoWindow, 0, -1, &done[1]), vb::esGetWindowText(kNoWindow, none.out()),
              vb::esGetWindowClassName(kNoWindow, noClass.out()), vb::esComboBoxToString(kNoWindow, 0, back.out()), vb::esDisableWindowTransparecny(L(form)),
              vb::esGet_WM_TASKBAR_CREATED(&first), vb::esGet_WM_TASKBAR_CREATED(&second), done[0], done[1], none.text(), noClass.text(), back.text(), GetWindowLongA(form.get(), GWL_EXSTYLE),
              first == second && first == LONG(RegisterWindowMessageA("TaskbarCreated")), (vb::esSetForegroundWindowEx(L(form), &done[2]), done[2]), GetForegroundWindow() == form.get(),
              ShowWindow(form.get(), SW_MINIMIZE), vb::esRestoreWindow(L(form)), IsIconic(form.get()), vb::esUnloadForm(L(form)), IsWindow(form.get()), pump(), IsWindow(form.get())}));
}

// The record a box is given: task-modal; a resource icon in place of the
// standard one, whose sound plays first; the caller's module, else the
// program's; the caption given, else the main window's title; the 8-bit
// call on a host without Unicode. The short forms fill in the rest.
// A menu bar item moved right and back keeps its text and state; a position
// past the end, or a window without a menu, is refused. Auto-completion goes
// to the window's first edit child, else to the window; without the shell's
// entry point nothing is asked.
TEST(Windows, MenusAndAutoCompletion) {
    Window form = Make("STATIC"), edit = Make("EDIT", WS_CHILD, form.get()), lone = Make("STATIC");
    HMENU bar = CreateMenu();
    AppendMenuA(bar, MF_STRING, 1, "&File"), AppendMenuA(bar, MF_STRING | MF_GRAYED, 2, "&Help"), SetMenu(form.get(), bar);
    auto item = [bar] { char text[16] = {}; MENUITEMINFOA i = {}; i.cbSize = sizeof i, i.fMask = MIIM_FTYPE | MIIM_STRING | MIIM_STATE;
                        return i.dwTypeData = text, i.cch = 16, GetMenuItemInfoA(bar, 1, TRUE, &i), J{i.fType, i.fState, text}; };
    VARIANT_BOOL done[6] = {7, 7, 7, 7, 7, 7};
    EXPECT_EQ("0 16384 1 &Help  0 0 1 &Help  0 0 -1 -1 0 0 ", (J{vb::esSetMenuJustify(L(form), 1, -1, &done[0]), item(), vb::esSetMenuJustify(L(form), 1, 0, &done[1]), item(),
              vb::esSetMenuJustify(L(form), 2, -1, &done[2]), vb::esSetMenuJustify(L(lone), 0, -1, &done[3]), done[0], done[1], done[2], done[3]}));
    for (bool present : {true, false}) {
        FreshLibrary fresh;
        ProcDetour shell("SHAutoComplete", present ? reinterpret_cast<const void*>(+[](HWND w, DWORD flags) WINAPI -> HRESULT {
            char name[16] = {}; return GetClassNameA(w, name, 16), g_calls += J{name, flags}, S_OK; }) : nullptr);
        g_calls.clear();
        const J statuses{vb::esAddAutoComplete(L(form), 5, &done[4]), vb::esAddAutoComplete(L(lone), 5, &done[5])};
        EXPECT_EQ(present ? "0 0 Edit 5 Static 5 -1 -1 " : "0 0 0 0 ", statuses + g_calls + (J{done[4], done[5]}));
    }
}

TEST(Windows, MessageBoxes) {
    WNDCLASSA thunder{0, DefWindowProcA, 0, 0, nullptr, nullptr, nullptr, nullptr, nullptr, "ThunderRT6Main"}; const std::string exe = J{RegisterClassA(&thunder) * 0 + intptr_t(GetModuleHandleA(nullptr)), "x"};
    for (auto [form, style, module, title, icon, ansi, record] : {std::tuple(0, 0x30, 0, "T", "ICON", 0u, "48 W 40 0 " + exe + "T 8320 ICON 0 "),
             {0, 0x50, 0x10000000, "T", "ICON", 0u, "W 40 0 268435456 x T 8320 ICON 0 "}, {0, 0x31, 0, kWide, nullptr, 0u, "W 40 0 " + exe + kWide + " 8241 <null> 0 "},
             {0, 0x2010, 0, "", "", 0u, "W 40 0 " + exe + "Ledger 8208  0 "}, {0, 0x20, 0, "", "I", 1u, "32 A 40 0 " + exe + "Ledger 8320 I 0 "},
             {1, 0, 0, nullptr, "ICON", 0u, "64 W 40 0 " + exe + "Ledger 8320 ICON 0 "}, {2, 0x31, 0, "T", nullptr, 0u, "W 40 0 " + exe + "T 8241 <null> 0 "}}) {
        FreshLibrary fresh;
        Detour host("GetWindowsDirectoryW", +[](LPWSTR, UINT) WINAPI -> UINT { return g.fails ? 0 : 260; }), beep("MessageBeep", +[](UINT sound) WINAPI -> BOOL { return g_calls += J{sound}, TRUE; });
        Detour wide("MessageBoxIndirectW", Record<MSGBOXPARAMSW>), narrow("MessageBoxIndirectA", Record<MSGBOXPARAMSA>);
        const Bstr x("x"), caption = title ? Bstr(title) : Bstr(), named = icon ? Bstr(icon) : Bstr();
        const Window main = Make("ThunderRT6Main", WS_POPUP | WS_VISIBLE); LONG result = 7;
        const J status{(g.fails = ansi, g_calls.clear(), form) == 0 ? vb::esMsgBoxEx(x.get(), style, caption.get(), named.get(), module, &result)
                       : form == 1 ? vb::esMsgBox(x.get(), named.get(), &result) : vb::esMsgBox2(x.get(), style, caption.get(), &result), result};
        EXPECT_EQ(record + "0 4 ", g_calls + status) << record;
    }
}

// Printed for scripts/screen-dpi.sh: the display's resolution (96 in the
// main run, 120 in that script's). Then resolutions on each axis and
// monitors, staged: a virtual screen left of and above the primary one, a
// host without the virtual-screen metrics. Halves go away from zero.
TEST(Screen, ResolutionsMonitorsAndRounding) {
    static int metrics[80] = {1024, 768}, dpi[2]; HDC screen = GetDC(nullptr);
    std::printf("screen tests at %d x %d logical pixels per inch\n", GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)), ReleaseDC(nullptr, screen);
    union { float f; LONG l; VARIANT_BOOL b; } v{}; std::string got;
    for (auto [resolution, edges, convert, answers] : {std::tuple(std::array{96, 120}, std::array{-1280, -200, 2304, 0}, std::array{37.5f, -30.0f, 2540.0f, -1270.0f},
             "15 12 26.458334 21.166666 15360 9216 34560 9216 -19200 -2400 1024 768 2304 768 -1280 -200 3 -3 96 -60 -1 "), {{120, 96}, {0, 0, 0, 500},
             {-30.0f, 22.5f, 1270.0f, -2540.0f}, "12 15 21.166666 26.458334 12288 11520 12288 7500 0 0 1024 768 1024 500 0 0 -3 2 60 -96 0 "}}) {
        std::copy(resolution.begin(), resolution.end(), dpi), std::copy(edges.begin(), edges.end(), metrics + 76), got.clear();
        Detour caps("GetDeviceCaps", +[](HDC, int index) WINAPI -> int { return index == LOGPIXELSX ? dpi[0] : index == LOGPIXELSY ? dpi[1] : 0; }),
            metric("GetSystemMetrics", +[](int index) WINAPI -> int { return index < 80 ? metrics[index] : 0; });
        for (std::string name : {"TwipsPerPixelX", "TwipsPerPixelY", "HimetricPerPixelX", "HimetricPerPixelY", "Width", "Height", "VirtualWidth", "VirtualHeight", "VirtualLeft",
                                 "VirtualTop", "WidthPx", "HeightPx", "VirtualWidthPx", "VirtualHeightPx", "VirtualLeftPx", "VirtualTopPx"})
            got += J{VbFunction<HRESULT, void*>{(name.find("Virtual") ? "esScreen" + name : "esVirtualScreen" + name.substr(7)).c_str()}(&v) ? "!" : "", name.back() == 'x' ? v.l : v.f}.substr(1);
        for (int i = 0; i < 4; ++i)
            got += J{VbFunction<HRESULT, float, LONG*>{(std::string(i < 2 ? "esScreenTwipsToPixels" : "esScreenHimetricToPixels") + "XY"[i % 2]).c_str()}(convert[i], &v.l) ? "!" : "", v.l}.substr(1);
        EXPECT_EQ(answers, got + (J{vb::esIsMultiMonitorSupported(&v.b) ? "!" : "", v.b}.substr(1))) << resolution[0];
    }
}
