// The windows of the stand-in's desktop, shared by the files that answer
// the window calls (Desktop.cpp, Windows.cpp, Menus.cpp).
#pragma once

#include <string>
#include <vector>

#include "winsim.h"

namespace winsim {

struct Window {
    HWND handle;
    std::string className, title;  // title in the 8-bit code page
    HWND parent;
    DWORD thread;
    bool visible;
    std::u16string wideTitle;      // the title as the wide calls see it
    RECT rect{0, 0, 100, 100};     // screen coordinates
    bool minimized = false;
    LONG exStyle = 0;
    HMENU menu = nullptr;
    std::vector<std::string> items;  // a combo box's list
    int selected = -1;
    DWORD selectionStart = 0, selectionEnd = 0;  // an edit control's
    bool layeredSet = false;
    COLORREF layeredKey = 0;
    BYTE layeredAlpha = 0;
    DWORD layeredFlags = 0;
};

// The window with this handle, or null.
Window* findWindow(HWND handle);
// Every window, in the order they were made.
std::vector<Window>& allWindows();
// Records one call's arguments: lastCall() gives the latest, callLog() all.
void record(const char* function, const std::string& arguments);

}  // namespace winsim
