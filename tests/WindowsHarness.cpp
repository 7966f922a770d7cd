#include "WindowsHarness.h"

#include <cstdlib>

#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

void DesktopTest::SetUp() {
#ifdef CSK_WINSIM
    winsim::reset();
    if (const char* dpi = std::getenv("CSK_SCREEN_DPI")) winsim::setLogPixels(std::atoi(dpi), std::atoi(dpi));
#endif
}

Win::Win(const char* cls, const char* title, HWND parent, DWORD style, int width, int height) {
#ifdef CSK_WINSIM
    h = winsim::addWindow(cls, title, parent);
    winsim::setWindowRect(h, {10, 20, 10 + width, 20 + height});
    if (!(style & kVisible)) ShowWindow(h, SW_HIDE);
#else
    h = CreateWindowExA(0, cls, title, style | (parent ? WS_CHILD : 0), 10, 20, width, height, parent, nullptr,
                        GetModuleHandleA(nullptr), nullptr);
#endif
}

Win::~Win() {
#ifndef CSK_WINSIM
    DestroyWindow(h);
#endif
}

void Pump() {
#ifndef CSK_WINSIM
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) TranslateMessage(&message), DispatchMessageA(&message);
#endif
}

std::string Title(HWND window) {
    WCHAR buffer[256] = {0};
    GetWindowTextW(window, buffer, 256);
    return Utf8(reinterpret_cast<const char16_t*>(buffer));
}

RECT Placed(HWND window) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    return placement.rcNormalPosition;
}

std::string Items(HWND box) {
    std::string text;
    const LRESULT count = SendMessageA(box, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        char item[64] = {0};
        SendMessageA(box, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(item));
        text += std::string(i ? "|" : "") + item;
    }
    return text + "@" + std::to_string(SendMessageA(box, CB_GETCURSEL, 0, 0));
}

HMENU MakeMenuBar(HWND window) {
#ifdef CSK_WINSIM
    const char* const texts[] = {"&File", "-", "&Help"};
    return winsim::setMenuBar(window, texts, 3);
#else
    HMENU bar = CreateMenu();
    AppendMenuA(bar, MF_STRING, 100, "&File");
    AppendMenuA(bar, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(bar, MF_STRING | MF_GRAYED, 102, "&Help");
    SetMenu(window, bar);
    return bar;
#endif
}

std::string MenuItem(HMENU bar, UINT position) {
    char text[32] = {0};
    MENUITEMINFOA info{};
    info.cbSize = 44, info.fMask = 0x3F, info.dwTypeData = text, info.cch = sizeof text;
    GetMenuItemInfoA(bar, position, TRUE, &info);
    return std::to_string(info.fType) + ":" + text + ":" + std::to_string(info.wID) + ":" + std::to_string(info.fState) +
           ":" + std::to_string(info.dwItemData);
}

std::string Layered(HWND window) {
#ifdef CSK_WINSIM
    return winsim::layeredAttributes(window);
#else
    COLORREF key = 9;
    BYTE alpha = 9;
    DWORD flags = 9;
    GetLayeredWindowAttributes(window, &key, &alpha, &flags);
    return std::to_string(key) + "|" + std::to_string(alpha) + "|" + std::to_string(flags);
#endif
}

std::string EditState(HWND edit) {
    char text[64] = {0};
    GetWindowTextA(edit, text, sizeof text);
    DWORD start = 9, end = 9;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return std::string(text) + "[" + std::to_string(start) + "," + std::to_string(end) + "]";
}

int LogPixels(int axis) {
    HDC screen = GetDC(nullptr);
    const int pixels = GetDeviceCaps(screen, axis);
    ReleaseDC(nullptr, screen);
    return pixels;
}
