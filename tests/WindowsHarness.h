// Windows for the tests of the window exports: real ones under Wine, the
// stand-in's natively, read back through the platform's own calls.
#pragma once

#include <string>

#include "Harness.h"
#include "Tools.h"

const DWORD kVisible = 0x10000000;

// Each test starts from the stand-in's own desktop: one screen of 1024 x 768
// at 96 logical pixels per inch, or at CSK_SCREEN_DPI when that is set.
struct DesktopTest : ::testing::Test {
    void SetUp() override;
};

// A window made for one test at (10, 20), width by height, hidden unless
// style has kVisible, a child when it has a parent; destroyed at the end.
struct Win {
    HWND h;
    explicit Win(const char* cls, const char* title = "", HWND parent = nullptr, DWORD style = 0, int width = 200,
                 int height = 100);
    ~Win();
    Win(const Win&) = delete;
    Win& operator=(const Win&) = delete;
    LONG L() const { return LONGFROMHANDLE(h); }
};

// A handle that is no window.
inline LONG NoWindow() { return 0x7FFF0; }

// Dispatches what is waiting in the thread's queue (nothing to do natively).
void Pump();

// A window's text as UTF-8, read with GetWindowTextW.
std::string Title(HWND window);

// rcNormalPosition from GetWindowPlacement.
RECT Placed(HWND window);

// A combo box's items joined by "|", then "@" and the selected index.
std::string Items(HWND box);

// A menu bar for the window: "&File" (id 100), a separator, "&Help" (id 102,
// greyed under Wine).
HMENU MakeMenuBar(HWND window);

// An item read whole by position: "fType:text:wID:fState:dwItemData".
std::string MenuItem(HMENU bar, UINT position);

// A layered window's attributes: "key|alpha|flags".
std::string Layered(HWND window);

// An edit control's text and selection: "text[start,end]".
std::string EditState(HWND edit);

// The screen's logical pixels per inch on an axis (LOGPIXELSX, LOGPIXELSY).
int LogPixels(int axis);
