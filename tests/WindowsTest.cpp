// Windows and controls through the exports: real windows, controls and menus
// under Wine, read back through the platform; the stand-in's records for
// what only it can show (call order, record fields, older hosts).
#include <tuple>
#include <vector>

#include "VbDeclares.h"
#include "WindowsHarness.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

const char kCyrillicCjk[] = "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82 \xE4\xB8\x96\xE7\x95\x8C";  // Привет 世界

const DWORD kDropDown = 2, kDropDownList = 3, kHasStrings = 0x200, kMultiline = 4;  // CBS_, ES_ styles

const char kTitle[] = "\xD0\x97\xD0\xB0\xD0\xB3 \xE6\xA0\x87\xE9\xA2\x98";  // Заг 标题

class Windows : public DesktopTest {};

}  // namespace

// Each conversion on ordinary, reversed and empty records; a null record is
// invalid input, not a missing answer.
TEST_F(Windows, Rectangles) {
    RECT r{10, 4, 5, 8};
    EXPECT_EQ(S_OK, vb::esNormalizeRect(&r));
    EXPECT_EQ(std::make_tuple(5, 4, 10, 8), std::make_tuple(r.left, r.top, r.right, r.bottom));
    RECT reversed{30, 40, 10, -10};
    vb::NewRect n{};
    EXPECT_EQ(S_OK, vb::esRectToNewRect(&reversed, &n));
    EXPECT_EQ(std::make_tuple(10, -10, 20, 50, 10, -10, 30, 40), std::make_tuple(n.left, n.top, n.width, n.height, reversed.left,
                                                                                 reversed.top, reversed.right, reversed.bottom));
    vb::NewRect sizes[] = {{-5, 7, 0, 3}, {2, 2, -4, 6}};
    RECT b[2];
    EXPECT_EQ(S_OK, vb::esNewRectToRect(&sizes[0], &b[0]) | vb::esNewRectToRect(&sizes[1], &b[1]));
    EXPECT_EQ(std::make_tuple(-5, 7, -5, 10, 2, -2, 8),
              std::make_tuple(b[0].left, b[0].top, b[0].right, b[0].bottom, b[1].left, b[1].right, b[1].bottom));
    EXPECT_EQ(std::vector<HRESULT>(5, E_INVALIDARG),
              std::vector<HRESULT>({vb::esNormalizeRect(nullptr), vb::esRectToNewRect(nullptr, &n),
                                    vb::esRectToNewRect(&r, nullptr), vb::esNewRectToRect(nullptr, &r),
                                    vb::esNewRectToRect(&n, nullptr)}));
}

// Centred on the desktop window: odd differences tie to the even pixel, the
// size stays, a hidden form stays hidden unless asked to show.
TEST_F(Windows, CenterFormOnTheDesktop) {
    struct Row { int width, height; VARIANT_BOOL show; bool visible; LONG left, top, visibleAfter; } rows[] = {
        {201, 101, 0, false, 412, 334, 0},    // 823 / 2 and 667 / 2 end in .5: to 412 and 334
        {203, 99, -1, false, 410, 334, 1},    // 821 / 2 to 410; shown as asked
        {1030, 100, 0, true, -3, 334, 1},     // wider than the screen: overhangs by 3 on each side
    };
    for (const Row& row : rows) {
        Win form("Static", "form", nullptr, row.visible ? kVisible : 0, row.width, row.height);
        VARIANT_BOOL done = 7;
        EXPECT_EQ(S_OK, vb::esCenterForm(form.L(), row.show, &done));
        const RECT r = Placed(form.h);
        EXPECT_EQ(std::make_tuple(VARIANT_TRUE, row.left, row.top, row.width, row.height, row.visibleAfter),
                  std::make_tuple(done, r.left, r.top, r.right - r.left, r.bottom - r.top, LONG(IsWindowVisible(form.h) != 0)))
            << row.width;
    }
    VARIANT_BOOL done = 7;
    EXPECT_EQ(S_OK, vb::esCenterForm(NoWindow(), -1, &done) | vb::esCenterFormEx(NoWindow(), -1, &done));
    EXPECT_EQ(0, done);
    EXPECT_EQ(S_FALSE, vb::esCenterForm(0, 0, nullptr) | vb::esCenterFormEx(0, 0, nullptr));
}

#ifdef CSK_WINSIM
// The stand-in's monitors: the window below the form picks the monitor (the
// form's own with none below), then each fallback; a monitor left of and
// above the primary one; an area of zero size.
TEST_F(Windows, CenterFormExAreas) {
    struct Row { const char* missing; int refuse; bool formFirst; RECT work; LONG left, top; VARIANT_BOOL done; } rows[] = {
        {"", 0, true, {-1280, -200, 0, 784}, -740, 242, -1},                    // -740.5 and 242
        {"", 0, false, {-1280, -200, 0, 784}, 412, 314, -1},                    // the primary's work area
        {"GetMonitorInfoA", 0, true, {-1280, -200, 0, 784}, 412, 314, -1},      // the work-area query
        {"MonitorFromWindow", 1, true, {-1280, -200, 0, 784}, 412, 334, -1},    // the desktop window
        {"", 0, true, {-1280, -200, -1280, 784}, -900, 100, 0},                 // zero width: nothing moves
    };
    for (const Row& row : rows) {
        winsim::reset();
        FreshLibrary fresh;
        winsim::setMissing(row.missing);
        const RECT monitors[] = {{0, 0, 1024, 768}, {-1280, -200, 0, 824}}, works[] = {{0, 0, 1024, 728}, row.work};
        winsim::setMonitors(monitors, works, 2);
        winsim::failNext("SystemParametersInfoA", row.refuse);
        HWND first = winsim::addWindow("Static", "first"), second = winsim::addWindow("Static", "second");
        HWND form = row.formFirst ? first : second;
        for (HWND w : {first, second}) winsim::setWindowRect(w, w == form || row.formFirst ? RECT{-900, 100, -699, 200} : RECT{10, 10, 20, 20});
        VARIANT_BOOL done = 7;
        EXPECT_EQ(S_OK, vb::esCenterFormEx(LONGFROMHANDLE(form), 0, &done));
        const RECT r = Placed(form);
        EXPECT_EQ(std::make_tuple(row.done, row.left, row.top, 201L, 100L),
                  std::make_tuple(done, r.left, r.top, long(r.right - r.left), long(r.bottom - r.top)))
            << row.missing << row.formFirst;
    }
}
#endif

// Activation of the caller's own window; a handle that is no window.
TEST_F(Windows, ForegroundRestoreAndUnload) {
    Win form("Static", "form", nullptr, kVisible);
    VARIANT_BOOL done = 7;
    EXPECT_EQ(S_OK, vb::esSetForegroundWindowEx(form.L(), &done));
    EXPECT_EQ(std::make_tuple(VARIANT_TRUE, form.h), std::make_tuple(done, GetForegroundWindow()));
    ShowWindow(form.h, SW_MINIMIZE);
    EXPECT_EQ(S_OK, vb::esRestoreWindow(form.L()));
    WINDOWPLACEMENT placement{sizeof placement, 0, 0, {}, {}, {}};
    EXPECT_EQ(UINT(SW_SHOWNORMAL), GetWindowPlacement(form.h, &placement) ? placement.showCmd : 99);
    EXPECT_EQ(S_OK, vb::esSetForegroundWindowEx(NoWindow(), &done));
    EXPECT_EQ(std::make_tuple(VARIANT_FALSE, S_FALSE, S_FALSE, S_FALSE),
              std::make_tuple(done, vb::esSetForegroundWindowEx(form.L(), nullptr), vb::esRestoreWindow(NoWindow()),
                              vb::esUnloadForm(NoWindow())));
    EXPECT_EQ(S_OK, vb::esUnloadForm(form.L()));
#ifndef CSK_WINSIM
    EXPECT_TRUE(IsWindow(form.h)) << "posted, not sent";
    Pump();
    EXPECT_FALSE(IsWindow(form.h));
#else
    EXPECT_EQ(std::to_string(reinterpret_cast<uintptr_t>(form.h)) + "|16", winsim::lastCall("PostMessageA"));
#endif
}

#ifdef CSK_WINSIM
// The attachments, in the exact order: the foreground thread's first, on and
// off; none for the caller's own thread; thread 0 with no foreground window.
TEST_F(Windows, AttachThreadInputOrder) {
    const std::string self = std::to_string(GetCurrentThreadId()), other = std::to_string(0x7FFF0001);
    // foreground and target: 0 none, 1 the caller's window, 2 another thread's.
    struct Row { int foreground, target; std::string log; } rows[] = {
        {1, 1, ""},
        {2, 1, self + ">" + other + ":1 ; " + self + ">" + other + ":0"},
        {1, 2, self + ">" + other + ":1 ; " + self + ">" + other + ":0"},
        {2, 2, self + ">" + other + ":1 ; " + self + ">" + other + ":1 ; " + self + ">" + other + ":0 ; " +
                             self + ">" + other + ":0"},
        {0, 1, self + ">0:1 ; " + self + ">0:0"},
    };
    for (const Row& row : rows) {
        winsim::reset();
        HWND windows[] = {nullptr, winsim::addWindow("Static"), winsim::addWindow("Static", "", nullptr, true)};
        winsim::setForegroundWindow(windows[row.foreground]);
        VARIANT_BOOL done = 7;
        EXPECT_EQ(S_OK, vb::esSetForegroundWindowEx(LONGFROMHANDLE(windows[row.target]), &done));
        EXPECT_EQ(row.log, winsim::callLog("AttachThreadInput"));
    }
}
#endif

// Titles with text outside the code page, an empty title, the class name.
TEST_F(Windows, TextAndClass) {
    Win form("Static", "old"), blank("Static", "");
    Bstr text("stale"), cls("stale"), empty("stale"), none("stale"), noneClass("stale");
    EXPECT_EQ(S_OK, vb::esSetWindowText(form.L(), Bstr(kCyrillicCjk).get()));
    EXPECT_EQ(kCyrillicCjk, Title(form.h));
    EXPECT_EQ(S_OK, vb::esGetWindowText(form.L(), text.out()) | vb::esGetWindowClassName(form.L(), cls.out()) |
                        vb::esGetWindowText(blank.L(), empty.out()) | vb::esGetWindowText(NoWindow(), none.out()) |
                        vb::esGetWindowClassName(NoWindow(), noneClass.out()));
    EXPECT_EQ(std::string(kCyrillicCjk) + "|Static|||", text.text() + "|" + cls.text() + "|" + empty.text() + "|" +
                                                            none.text() + "|" + noneClass.text());
    EXPECT_EQ(std::make_tuple(S_FALSE, S_FALSE, S_FALSE),
              std::make_tuple(vb::esGetWindowText(form.L(), nullptr), vb::esGetWindowClassName(form.L(), nullptr),
                              vb::esSetWindowText(NoWindow(), Bstr("x").get())));
}

// Lines to items and back, trimmed or not; an empty text; no window.
TEST_F(Windows, ComboBox) {
    Win form("Static", "form"), box("ComboBox", "", form.h, kVisible | kDropDownList | kHasStrings, 200, 200);
    struct Row { const char* text; VARIANT_BOOL trim; const char *items, *back; HRESULT status; } rows[] = {
        {"a\r\n  b\t\r\n\r\nc\r\n", -1, "a|b||c|@0", "a\r\nb\r\n\r\nc\r\n", S_OK},
        {" a \r\nb\nc\r", 0, " a |b\nc\r@0", " a \r\nb\nc\r", S_OK},
        {"", 0, "@-1", kNull, S_FALSE},
    };
    for (const Row& row : rows) {
        Bstr back("stale");
        EXPECT_EQ(row.status, vb::esComboBoxFromString(Bstr(row.text).get(), box.L(), row.trim));
        EXPECT_EQ(S_OK, vb::esComboBoxToString(box.L(), 0, back.out()));
        EXPECT_EQ(std::make_tuple(std::string(row.items), std::string(row.back)), std::make_tuple(Items(box.h), back.text()));
    }
    SendMessageA(box.h, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("  "));
    SendMessageA(box.h, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("\tx "));
    Bstr trimmed, none("stale");
    EXPECT_EQ(S_OK, vb::esComboBoxToString(box.L(), 1, trimmed.out()) | vb::esComboBoxToString(NoWindow(), 1, none.out()));
    EXPECT_EQ(std::make_tuple(std::string("\r\nx"), std::string("")), std::make_tuple(trimmed.text(), none.text()));
    EXPECT_EQ(std::make_tuple(S_FALSE, S_FALSE),
              std::make_tuple(vb::esComboBoxToString(box.L(), 0, nullptr),
                              vb::esComboBoxFromString(Bstr("a").get(), NoWindow(), 0)));
}

// Each edit export on the text it finds, with the selection it leaves.
TEST_F(Windows, TextBox) {
    Win form("Static", "form"), edit("Edit", "", form.h, kVisible | kMultiline, 300, 200);
    typedef const VbFunction<HRESULT, LONG, BSTR>* Add;
    typedef const VbFunction<HRESULT, LONG>* Select;
    struct Row { const char* before; Add add; Select select; const char *text, *after; } rows[] = {
        {"", &vb::esTextBox_AddLine2, nullptr, "x", "x[1,1]"},           // an empty control counts as a fresh line
        {"x", &vb::esTextBox_AddLine2, nullptr, "y", "x\r\ny[4,4]"},
        {"a\r\n", &vb::esTextBox_AddLine2, nullptr, "b", "a\r\nb[4,4]"},
        {"a\n", &vb::esTextBox_AddLine2, nullptr, "b", "a\n\r\nb[5,5]"},   // a lone LF is no line break
        {"a", &vb::esTextBox_AddLine, nullptr, "", "a\r\n[3,3]"},
        {"a", &vb::esTextBox_AddLine, nullptr, "b", "ab\r\n[4,4]"},
        {"ab", &vb::esTextBox_AddText, nullptr, "c", "abc[3,3]"},
        {"hello", nullptr, &vb::esTextBox_SelectAll, "", "hello[0,5]"},
        {"hello", nullptr, &vb::esTextBox_SelectStart, "", "hello[0,0]"},
        {"hello", nullptr, &vb::esTextBox_SelectEnd, "", "hello[5,5]"},
    };
    for (const Row& row : rows) {
        SetWindowTextW(edit.h, reinterpret_cast<LPCWSTR>(Utf16(row.before).c_str()));
        EXPECT_EQ(S_OK, row.add ? (*row.add)(edit.L(), Bstr(row.text).get()) : (*row.select)(edit.L()));
        EXPECT_EQ(row.after, EditState(edit.h)) << row.before << "+" << row.text;
    }
    for (Select select : {&vb::esTextBox_SelectAll, &vb::esTextBox_SelectStart, &vb::esTextBox_SelectEnd})
        EXPECT_EQ(S_FALSE, (*select)(NoWindow()));
    for (Add add : {&vb::esTextBox_AddText, &vb::esTextBox_AddLine, &vb::esTextBox_AddLine2})
        EXPECT_EQ(S_FALSE, (*add)(NoWindow(), Bstr("x").get()));
}

// Right justification on and off, the whole item kept; an item without
// text; a position past the end; no menu.
TEST_F(Windows, MenuJustify) {
    Win form("Static", "form");
    HMENU bar = MakeMenuBar(form.h);
    MENUITEMINFOA data{};
    data.cbSize = 44, data.fMask = MIIM_DATA, data.dwItemData = 0x5A5A;
    SetMenuItemInfoA(bar, 2, TRUE, &data);
    Win plain("Static", "no menu");
    const std::string help = MenuItem(bar, 2), separator = MenuItem(bar, 1);
    // Each call, then the item as it reads afterwards ("": the result is 0).
    struct Row { LONG window, position; VARIANT_BOOL right; std::string after; } rows[] = {
        {form.L(), 2, 1, "16384" + help.substr(1)}, {form.L(), 2, 0, help},  // set, then cleared: as it was
        {form.L(), 1, -1, "18432" + separator.substr(4)},                  // a separator: no text
        {form.L(), 3, -1, ""}, {plain.L(), 0, -1, ""}, {NoWindow(), 0, -1, ""}};
    for (const Row& row : rows) {
        VARIANT_BOOL done = 7;
        EXPECT_EQ(S_OK, vb::esSetMenuJustify(row.window, row.position, row.right, &done));
        EXPECT_EQ(std::make_tuple(VBBOOL(!row.after.empty()), row.after),
                  std::make_tuple(done, row.after.empty() ? "" : MenuItem(bar, UINT(row.position))));
    }
    EXPECT_EQ(S_FALSE, vb::esSetMenuJustify(form.L(), 0, -1, nullptr));
#ifdef CSK_WINSIM
    winsim::reset();
    HWND w = winsim::addWindow("Static");
    MakeMenuBar(w);
    VARIANT_BOOL done;
    EXPECT_EQ(S_OK, vb::esSetMenuJustify(LONGFROMHANDLE(w), 0, -1, &done) |
                        vb::esSetMenuJustify(LONGFROMHANDLE(w), 5, -1, &done));
    EXPECT_EQ("44/16 ; 44/63 ; 44/16", winsim::callLog("GetMenuItemInfoA"));
    EXPECT_EQ("44/63 1", winsim::callLog("SetMenuItemInfoA") + " " + std::to_string(winsim::calls("DrawMenuBar")));
#endif
}

// Opacity by value and by percent, clamped; the other style bits kept.
TEST_F(Windows, Transparency) {
    Win form("Static", "form", nullptr, kVisible);
    const LONG others = 0x00000100;  // WS_EX_WINDOWEDGE
    SetWindowLongA(form.h, GWL_EXSTYLE, others);
    struct Row { LONG amount; VARIANT_BOOL percent; int alpha; } rows[] = {
        {-5, -1, 0}, {0, 1, 0}, {1, 1, 3}, {50, 1, 128}, {100, 1, 255}, {101, 1, 255}, {300, 1, 255},
        {-5, 0, 0}, {128, 0, 128}, {300, 0, 255}};
    for (const Row& row : rows) {
        EXPECT_EQ(S_OK, vb::esSetWindowTransparecny(form.L(), row.amount, row.percent));
        EXPECT_EQ(std::make_tuple("0|" + std::to_string(row.alpha) + "|2", others | WS_EX_LAYERED),
                  std::make_tuple(Layered(form.h), GetWindowLongA(form.h, GWL_EXSTYLE))) << row.amount << " " << row.percent;
    }
    EXPECT_EQ(S_OK, vb::esDisableWindowTransparecny(form.L()) | vb::esSetWindowTransparecny(NoWindow(), 50, 1) |
                        vb::esDisableWindowTransparecny(NoWindow()));
    EXPECT_EQ(others, GetWindowLongA(form.h, GWL_EXSTYLE));
#ifdef CSK_WINSIM
    // Before Windows 2000 nothing is done; without the layered call the style
    // is still set.
    for (bool old : {true, false}) {
        winsim::reset();
        if (old) winsim::setVersion(VER_PLATFORM_WIN32_NT, 4, 0, 1381, "Service Pack 6", VER_NT_WORKSTATION);
        winsim::setMissing("SetLayeredWindowAttributes", !old);
        FreshLibrary fresh;
        HWND w = winsim::addWindow("Static");
        EXPECT_EQ(S_OK, vb::esSetWindowTransparecny(LONGFROMHANDLE(w), 50, 1));
        const int calls = winsim::calls("SetWindowLongA") + winsim::calls("GetWindowLongA");
        EXPECT_EQ(std::make_tuple(old ? 0 : 2, LONG(old ? 0 : WS_EX_LAYERED), std::string("")),
                  std::make_tuple(calls, GetWindowLongA(w, GWL_EXSTYLE), winsim::layeredAttributes(w)));
    }
#endif
}

// The taskbar message is the platform's, registered once.
TEST_F(Windows, TaskbarCreatedAndAutoComplete) {
    {
#ifdef CSK_WINSIM
        FreshLibrary fresh;
#endif
        LONG first = 0, second = 0;
        EXPECT_EQ(S_OK, vb::esGet_WM_TASKBAR_CREATED(&first) | vb::esGet_WM_TASKBAR_CREATED(&second));
        EXPECT_EQ(std::make_tuple(LONG(RegisterWindowMessageA("TaskbarCreated")), first, S_FALSE),
                  std::make_tuple(second, first, vb::esGet_WM_TASKBAR_CREATED(nullptr)));
#ifdef CSK_WINSIM
        EXPECT_EQ(2, winsim::calls("RegisterWindowMessageA"));  // the library's one and the test's
#endif
    }
    Win form("Static", "form"), box("ComboBox", "", form.h, kVisible | kDropDown, 200, 200);
#ifdef CSK_WINSIM
    Win field("Edit", "", box.h, kVisible);
#else
    CoInitialize(nullptr);
    ASSERT_TRUE(FindWindowExA(box.h, nullptr, "Edit", nullptr));
#endif
    VARIANT_BOOL done = 7, plain = 7;
    EXPECT_EQ(S_OK, vb::esAddAutoComplete(box.L(), 0, &done) | vb::esAddAutoComplete(form.L(), 0x10000000, &plain));
#ifdef CSK_WINSIM
    EXPECT_EQ(std::make_tuple(VARIANT_TRUE, S_FALSE), std::make_tuple(done, vb::esAddAutoComplete(box.L(), 0, nullptr)));
    // The field inside the combo box, then the form itself, flags unchanged.
    EXPECT_EQ(std::to_string(reinterpret_cast<uintptr_t>(field.h)) + "|0 ; " +
                  std::to_string(reinterpret_cast<uintptr_t>(form.h)) + "|268435456",
              winsim::callLog("SHAutoComplete"));
    winsim::setMissing("SHAutoComplete");
    FreshLibrary fresh;
    EXPECT_EQ(S_OK, vb::esAddAutoComplete(box.L(), 0, &done));
    EXPECT_EQ(0, done);
#else
    // Wine's answer for the field, whatever it is, is the one passed on.
    const HRESULT platform = SHAutoComplete(FindWindowExA(box.h, nullptr, "Edit", nullptr), 0);
    EXPECT_EQ(std::make_tuple(VBBOOL(platform == S_OK), S_FALSE),
              std::make_tuple(done, vb::esAddAutoComplete(box.L(), 0, nullptr)));
    CoUninitialize();
#endif
}

#ifndef CSK_WINSIM
// The real box: the caller's UTF-16 text and caption, an empty caption kept
// empty, the platform's own caption for none, a resource icon not there.
TEST_F(Windows, MessageBoxes) {
    struct Row { LONG style; const char *title, *icon, *prompt, *caption; } rows[] = {
        {0, kTitle, nullptr, kCyrillicCjk, kTitle}, {0x30, "", nullptr, "a", ""},
        {0x30, "Icon", "NOSUCHICON", "b", "Icon"}, {0x40, nullptr, nullptr, "c", "Error"}};
    for (const Row& row : rows) {
        LONG result = 7;
        const ShownBox shown = CloseNextBox([&] {
            EXPECT_EQ(S_OK, row.title ? vb::esMsgBoxEx(Bstr(row.prompt).get(), row.style, Bstr(row.title).get(),
                                                       row.icon ? Bstr(row.icon).get() : nullptr, 0, &result)
                                      : vb::esMsgBox(Bstr(row.prompt).get(), nullptr, &result));
        });
        EXPECT_EQ(std::make_tuple(1L, std::string(row.caption), std::string(row.prompt)),
                  std::make_tuple(long(result), shown.caption, shown.text));
    }
    EXPECT_EQ(std::make_tuple(S_FALSE, S_FALSE, S_FALSE),
              std::make_tuple(vb::esMsgBoxEx(nullptr, 0, nullptr, nullptr, 0, nullptr), vb::esMsgBox(nullptr, nullptr, nullptr),
                              vb::esMsgBox2(nullptr, 0, nullptr, nullptr)));
}
#else
// What the box is given: the beep and the style bits for each icon, the
// owner, the module, the caption rule, and the 8-bit path.
TEST_F(Windows, MessageBoxRecords) {
    struct Row { LONG style, module; const char *title, *icon, *beep, *record; } rows[] = {
        {0x30, 0, "T", "ICON", "48", "|4194304|x|T|8320|ICON|0|0|0"},
        {0x41, 0, "T", "ICON", "64", "|4194304|x|T|8321|ICON|0|0|0"},
        {0x50, 0x10000000, "T", "ICON", "", "|268435456|x|T|8320|ICON|0|0|0"},
        {0x31, 0, "T", nullptr, "", "|4194304|x|T|8241|(null)|0|0|0"},
        {0x2010, 0, "", "", "", "|4194304|x||8208||0|0|0"},
    };
    HWND owner = winsim::addWindow("Static");
    for (const Row& row : rows) {
        winsim::reset();
        winsim::setActiveWindow(owner);
        LONG result = 7;
        EXPECT_EQ(S_OK, vb::esMsgBoxEx(Bstr("x").get(), row.style, Bstr(row.title).get(),
                                       row.icon ? Bstr(row.icon).get() : nullptr, row.module, &result));
        const std::string record = "40|" + std::to_string(reinterpret_cast<uintptr_t>(owner)) + row.record;
        EXPECT_EQ(std::make_tuple(1L, std::string(row.beep), record),
                  std::make_tuple(long(result), winsim::callLog("MessageBeep"), winsim::lastCall("MessageBoxIndirectW")));
    }
    winsim::reset();
    LONG result = 7;
    EXPECT_EQ(S_FALSE, vb::esMsgBox(nullptr, Bstr("ICON").get(), nullptr));
    EXPECT_EQ(0, winsim::calls("MessageBeep") + winsim::calls("MessageBoxIndirectW"));
    // The Thunder main window's title when no caption is given, read only
    // then; its text and class by the wide calls or through the code page.
    for (bool unicode : {true, false}) {
        winsim::reset();
        winsim::setUnicode(unicode);
        const LONG main = LONGFROMHANDLE(winsim::addWindow("ThunderRT6Main", "caf\xE9"));
        FreshLibrary fresh;
        Bstr text, cls;
        EXPECT_EQ(S_OK, vb::esGetWindowText(main, text.out()) | vb::esGetWindowClassName(main, cls.out()) |
                            vb::esSetWindowText(main, Bstr(kTitle).get()));
        EXPECT_EQ(std::make_tuple(std::string("caf\xC3\xA9 ThunderRT6Main"), unicode ? 1 : 0, 1),
                  std::make_tuple(text.text() + " " + cls.text(), winsim::calls("GetWindowTextW"), winsim::calls("SetWindowTextW")));
        winsim::reset();
        winsim::setUnicode(unicode);
        winsim::addWindow("ThunderRT6Main", "caf\xE9");
        EXPECT_EQ(S_OK, vb::esMsgBox2(Bstr(kCyrillicCjk).get(), 0, Bstr(kTitle).get(), &result));
        EXPECT_EQ(0, winsim::calls("EnumThreadWindows"));
        EXPECT_EQ(S_OK, vb::esMsgBox(Bstr(kCyrillicCjk).get(), Bstr("ICON").get(), &result));
        const std::string prompt = unicode ? kCyrillicCjk : "?????? ??", given = unicode ? kTitle : "??? ??";
        const std::string app = unicode ? "caf\xC3\xA9" : "caf\xE9";
        EXPECT_EQ("40|0|4194304|" + prompt + "|" + given + "|8192|(null)|0|0|0 ; 40|0|4194304|" + prompt + "|" + app +
                      "|8320|ICON|0|0|0",
                  winsim::callLog(unicode ? "MessageBoxIndirectW" : "MessageBoxIndirectA"));
    }
}
#endif
