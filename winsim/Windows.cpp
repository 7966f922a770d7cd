// Windows by handle: placement, Z order, the foreground and input
// attachments, text in both widths, the messages of combo boxes and edit
// controls, the extended style, monitors and their work areas, message
// boxes and the screen's logical resolution.
#include <strings.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "DesktopState.h"
#include "winsim.h"
#include "winsim_control.h"

namespace winsim {
uintptr_t newHandle();  // Control.cpp
}  // namespace winsim

namespace {

using winsim::Window;
using winsim::findWindow;

struct Monitor {
    RECT area, work;
};

struct Windows {
    std::vector<Monitor> monitors{{{0, 0, 1024, 768}, {0, 0, 1024, 728}}};
    HWND foreground = nullptr;
    int logPixels[2] = {96, 96};
    std::map<std::string, UINT> messages;  // registered, by upper-case name
};

Windows& windows() {
    static Windows state;
    return state;
}

HMONITOR monitorHandle(size_t index) { return reinterpret_cast<HMONITOR>(0x00070000 + 0x10 * (index + 1)); }

std::string number(uintptr_t value) { return std::to_string(value); }
std::string handle(const void* value) { return number(reinterpret_cast<uintptr_t>(value)); }

std::string utf8(const std::u16string& units) {
    std::string text;
    for (char16_t unit : units) {
        if (unit < 0x80) text += static_cast<char>(unit);
        else if (unit < 0x800) text += static_cast<char>(0xC0 | (unit >> 6)), text += static_cast<char>(0x80 | (unit & 0x3F));
        else
            text += static_cast<char>(0xE0 | (unit >> 12)), text += static_cast<char>(0x80 | ((unit >> 6) & 0x3F)),
                text += static_cast<char>(0x80 | (unit & 0x3F));
    }
    return text;
}

std::string shown(LPCSTR text) { return text ? text : "(null)"; }
std::string shown(LPCWSTR text) { return text ? utf8(std::u16string(text)) : "(null)"; }

std::string narrow(const std::u16string& wide) {
    std::string text(wide.size() * 2 + 1, '\0');
    const int length = WideCharToMultiByte(CP_ACP, 0, wide.c_str(), static_cast<int>(wide.size()), &text[0],
                                           static_cast<int>(text.size()), nullptr, nullptr);
    text.resize(length > 0 ? static_cast<size_t>(length) : 0);
    return text;
}

bool isClass(const Window& window, const char* name) { return strcasecmp(window.className.c_str(), name) == 0; }

bool unicode() { return GetWindowsDirectoryW(nullptr, 0) != 0; }

template <class Params>
std::string describe(const Params* p) {
    return number(p->cbSize) + "|" + handle(p->hwndOwner) + "|" + handle(p->hInstance) + "|" + shown(p->lpszText) + "|" +
           shown(p->lpszCaption) + "|" + number(p->dwStyle) + "|" + shown(p->lpszIcon) + "|" +
           number(p->dwContextHelpId) + "|" + (p->lpfnMsgBoxCallback ? "callback" : "0") + "|" +
           number(p->dwLanguageId);
}

// A combo box's messages; a reading message is not recorded.
LRESULT comboMessage(Window& box, UINT message, WPARAM wParam, LPARAM lParam) {
    const size_t index = static_cast<size_t>(wParam);
    switch (message) {
        case CB_ADDSTRING:
            box.items.push_back(reinterpret_cast<LPCSTR>(lParam));
            return static_cast<LRESULT>(box.items.size() - 1);
        case CB_GETCOUNT:
            return static_cast<LRESULT>(box.items.size());
        case CB_GETCURSEL:
            return box.selected;
        case CB_GETLBTEXTLEN:
            return index < box.items.size() ? static_cast<LRESULT>(box.items[index].size()) : CB_ERR;
        case CB_GETLBTEXT:
            if (index >= box.items.size()) return CB_ERR;
            std::strcpy(reinterpret_cast<LPSTR>(lParam), box.items[index].c_str());
            return static_cast<LRESULT>(box.items[index].size());
        case CB_RESETCONTENT:
            box.items.clear(), box.selected = -1;
            return 0;
        case CB_SETCURSEL:
            box.selected = index < box.items.size() ? static_cast<int>(index) : -1;
            return index < box.items.size() ? static_cast<LRESULT>(index) : CB_ERR;
    }
    return 0;
}

// An edit control's, on the 8-bit title; positions are clipped to the text.
LRESULT editMessage(Window& edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const DWORD length = static_cast<DWORD>(edit.title.size());
    switch (message) {
        case EM_GETSEL:
            if (wParam) *reinterpret_cast<DWORD*>(wParam) = edit.selectionStart;
            if (lParam) *reinterpret_cast<DWORD*>(lParam) = edit.selectionEnd;
            return static_cast<LRESULT>(edit.selectionStart | (edit.selectionEnd << 16));
        case EM_SETSEL:
            edit.selectionStart = std::min(static_cast<DWORD>(wParam), length);
            edit.selectionEnd = std::min(static_cast<DWORD>(lParam), length);
            return 0;
        case EM_REPLACESEL: {
            const std::string text = reinterpret_cast<LPCSTR>(lParam);
            const DWORD from = std::min(edit.selectionStart, edit.selectionEnd);
            const DWORD to = std::max(edit.selectionStart, edit.selectionEnd);
            edit.title = edit.title.substr(0, from) + text + edit.title.substr(to);
            edit.wideTitle.assign(edit.title.size(), 0);
            mbstowcs(&edit.wideTitle[0], edit.title.c_str(), edit.title.size());
            edit.selectionStart = edit.selectionEnd = from + static_cast<DWORD>(text.size());
            return 0;
        }
    }
    return 0;
}

// The layered-window call is reached only through GetProcAddress; it needs
// the layered style first, as on the platform.
BOOL WINAPI SetLayeredWindowAttributes(HWND window, COLORREF key, BYTE alpha, DWORD flags) {
    winsim::refuse("SetLayeredWindowAttributes");
    winsim::record("SetLayeredWindowAttributes",
                   handle(window) + "|" + number(key) + "|" + number(alpha) + "|" + number(flags));
    Window* found = findWindow(window);
    if (!found || !(found->exStyle & WS_EX_LAYERED)) return FALSE;
    found->layeredSet = true, found->layeredKey = key, found->layeredAlpha = alpha, found->layeredFlags = flags;
    return TRUE;
}

HRESULT WINAPI SHAutoComplete(HWND window, DWORD flags) {
    if (winsim::refuse("SHAutoComplete")) return E_FAIL;
    winsim::record("SHAutoComplete", handle(window) + "|" + number(flags));
    return findWindow(window) ? S_OK : E_INVALIDARG;
}

HMONITOR WINAPI MonitorFromWindow(HWND window, DWORD flags) {
    winsim::refuse("MonitorFromWindow");
    Window* found = findWindow(window);
    const std::vector<Monitor>& all = windows().monitors;
    if (found)
        for (size_t i = 0; i < all.size(); ++i)
            if (found->rect.left >= all[i].area.left && found->rect.left < all[i].area.right &&
                found->rect.top >= all[i].area.top && found->rect.top < all[i].area.bottom)
                return monitorHandle(i);
    return flags == 1 /* MONITOR_DEFAULTTOPRIMARY */ ? monitorHandle(0) : nullptr;
}

// The record's size must be MONITORINFO's (40) or MONITORINFOEX's (72).
BOOL WINAPI GetMonitorInfoA(HMONITOR monitor, MONITORINFO* info) {
    if (winsim::refuse("GetMonitorInfoA") || !info || (info->cbSize != 40 && info->cbSize != 72)) return FALSE;
    for (size_t i = 0; i < windows().monitors.size(); ++i)
        if (monitorHandle(i) == monitor) {
            info->rcMonitor = windows().monitors[i].area;
            info->rcWork = windows().monitors[i].work;
            info->dwFlags = i == 0 ? 1 : 0;
            return TRUE;
        }
    return FALSE;
}

}  // namespace

namespace winsim {

FARPROC windowsEntry(const char* name) {
    if (!strcasecmp(name, "SetLayeredWindowAttributes"))
        return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(SetLayeredWindowAttributes));
    if (!strcasecmp(name, "SHAutoComplete")) return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(SHAutoComplete));
    if (!strcasecmp(name, "MonitorFromWindow"))
        return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(MonitorFromWindow));
    if (!strcasecmp(name, "GetMonitorInfoA")) return reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(GetMonitorInfoA));
    return nullptr;
}

void resetWindows() {
    windows() = Windows();
    setSystemMetric(SM_CXSCREEN, 1024);
    setSystemMetric(SM_CYSCREEN, 768);
}

BOOL workArea(RECT* area) {
    *area = windows().monitors[0].work;
    return TRUE;
}

void setForegroundWindow(HWND window) { windows().foreground = window; }

void setWindowRect(HWND window, RECT rect, bool minimized) {
    if (Window* found = findWindow(window)) found->rect = rect, found->minimized = minimized;
}

bool windowMinimized(HWND window) { return findWindow(window) && findWindow(window)->minimized; }

void setMonitors(const RECT* monitors, const RECT* workAreas, int count) {
    windows().monitors.clear();
    for (int i = 0; i < count; ++i) windows().monitors.push_back({monitors[i], workAreas[i]});
}

std::string layeredAttributes(HWND window) {
    Window* found = findWindow(window);
    if (!found || !found->layeredSet) return "";
    return number(found->layeredKey) + "|" + number(found->layeredAlpha) + "|" + number(found->layeredFlags);
}

void setLogPixels(int x, int y) { windows().logPixels[0] = x, windows().logPixels[1] = y; }

}  // namespace winsim

extern "C" {

HMODULE WINAPI GetModuleHandleA(LPCSTR name) {
    winsim::refuse("GetModuleHandleA");
    return name ? nullptr : reinterpret_cast<HMODULE>(0x00400000);
}

BOOL WINAPI MessageBeep(UINT type) {
    winsim::refuse("MessageBeep");
    winsim::record("MessageBeep", number(type));
    return TRUE;
}

int WINAPI MessageBoxIndirectA(const MSGBOXPARAMSA* params) {
    if (winsim::refuse("MessageBoxIndirectA")) return 0;
    winsim::record("MessageBoxIndirectA", describe(params));
    return 1;
}

int WINAPI MessageBoxIndirectW(const MSGBOXPARAMSW* params) {
    if (winsim::refuse("MessageBoxIndirectW") || !unicode()) return 0;
    winsim::record("MessageBoxIndirectW", describe(params));
    return 1;
}

BOOL WINAPI IsWindow(HWND window) {
    winsim::refuse("IsWindow");
    return findWindow(window) || (window && window == GetDesktopWindow());
}

BOOL WINAPI IsWindowVisible(HWND window) {
    winsim::refuse("IsWindowVisible");
    return winsim::windowVisible(window);
}

BOOL WINAPI IsRectEmpty(const RECT* rect) { return !rect || rect->right <= rect->left || rect->bottom <= rect->top; }

BOOL WINAPI GetWindowRect(HWND window, RECT* rect) {
    if (winsim::refuse("GetWindowRect")) return FALSE;
    if (window && window == GetDesktopWindow()) {
        *rect = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        return TRUE;
    }
    Window* found = findWindow(window);
    if (!found) return FALSE;
    *rect = found->rect;
    return TRUE;
}

// The next sibling below: the one made just before.
HWND WINAPI GetWindow(HWND window, UINT relation) {
    winsim::refuse("GetWindow");
    Window* found = findWindow(window);
    if (!found || relation != GW_HWNDNEXT) return nullptr;
    HWND below = nullptr;
    for (const Window& other : winsim::allWindows()) {
        if (other.handle == window) break;
        if (other.parent == found->parent) below = other.handle;
    }
    return below;
}

BOOL WINAPI GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement) {
    Window* found = findWindow(window);
    if (winsim::refuse("GetWindowPlacement") || !found || placement->length != sizeof(WINDOWPLACEMENT)) return FALSE;
    placement->flags = 0;
    // The show state, not the visibility: a hidden window reads as normal.
    placement->showCmd = found->minimized ? SW_SHOWMINIMIZED : SW_SHOWNORMAL;
    placement->ptMinPosition = {-1, -1};
    placement->ptMaxPosition = {-1, -1};
    placement->rcNormalPosition = found->rect;
    return TRUE;
}

BOOL WINAPI SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement) {
    Window* found = findWindow(window);
    if (winsim::refuse("SetWindowPlacement") || !found || placement->length != sizeof(WINDOWPLACEMENT)) return FALSE;
    found->rect = placement->rcNormalPosition;
    found->visible = placement->showCmd != SW_HIDE;
    found->minimized = placement->showCmd == SW_SHOWMINIMIZED;
    return TRUE;
}

HWND WINAPI GetForegroundWindow(void) {
    winsim::refuse("GetForegroundWindow");
    return windows().foreground;
}

BOOL WINAPI SetForegroundWindow(HWND window) {
    if (winsim::refuse("SetForegroundWindow") || !findWindow(window)) return FALSE;
    windows().foreground = window;
    return TRUE;
}

DWORD WINAPI GetWindowThreadProcessId(HWND window, LPDWORD processId) {
    winsim::refuse("GetWindowThreadProcessId");
    Window* found = findWindow(window);
    if (!found) return 0;
    if (processId) *processId = GetCurrentProcessId();
    return found->thread;
}

// Attaching to oneself or to no thread fails, as on the platform.
BOOL WINAPI AttachThreadInput(DWORD from, DWORD to, BOOL attach) {
    winsim::refuse("AttachThreadInput");
    winsim::record("AttachThreadInput", number(from) + ">" + number(to) + ":" + number(attach ? 1 : 0));
    return from != to && to != 0;
}

BOOL WINAPI OpenIcon(HWND window) {
    Window* found = findWindow(window);
    if (winsim::refuse("OpenIcon") || !found) return FALSE;
    found->minimized = false, found->visible = true;
    return TRUE;
}

BOOL WINAPI PostMessageA(HWND window, UINT message, WPARAM, LPARAM) {
    winsim::refuse("PostMessageA");
    winsim::record("PostMessageA", handle(window) + "|" + number(message));
    return findWindow(window) != nullptr;
}

LRESULT WINAPI SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    winsim::refuse("SendMessageA");
    Window* found = findWindow(window);
    if (!found) return 0;
    if (message != CB_GETCOUNT && message != CB_GETLBTEXT && message != CB_GETLBTEXTLEN && message != CB_GETCURSEL &&
        message != EM_GETSEL)
        winsim::record("SendMessageA", number(message) + "(" + number(wParam) + "," +
                                           (message == CB_ADDSTRING || message == EM_REPLACESEL
                                                ? std::string(reinterpret_cast<LPCSTR>(lParam))
                                                : std::to_string(lParam)) + ")");
    if (isClass(*found, "ComboBox")) return comboMessage(*found, message, wParam, lParam);
    if (isClass(*found, "Edit")) return editMessage(*found, message, wParam, lParam);
    return 0;
}

// The direct children of parent, in the order they were made.
HWND WINAPI FindWindowExA(HWND parent, HWND after, LPCSTR className, LPCSTR title) {
    winsim::refuse("FindWindowExA");
    bool started = after == nullptr;
    for (const Window& window : winsim::allWindows()) {
        if (window.parent != parent) continue;
        if (!started) {
            started = window.handle == after;
            continue;
        }
        if ((!className || isClass(window, className)) && (!title || window.title == title)) return window.handle;
    }
    return nullptr;
}

LONG WINAPI GetWindowLongA(HWND window, int index) {
    winsim::refuse("GetWindowLongA");
    Window* found = findWindow(window);
    return found && index == GWL_EXSTYLE ? found->exStyle : 0;
}

LONG WINAPI SetWindowLongA(HWND window, int index, LONG value) {
    winsim::refuse("SetWindowLongA");
    Window* found = findWindow(window);
    if (!found || index != GWL_EXSTYLE) return 0;
    const LONG was = found->exStyle;
    found->exStyle = value;
    if (!(value & WS_EX_LAYERED)) found->layeredSet = false;
    return was;
}

// Numbers from 0xC000, one per name whatever its case.
UINT WINAPI RegisterWindowMessageA(LPCSTR name) {
    if (winsim::refuse("RegisterWindowMessageA") || !name || !*name) return 0;
    std::string key(name);
    for (char& c : key) c = static_cast<char>(toupper(static_cast<unsigned char>(c)));
    auto& messages = windows().messages;
    auto it = messages.find(key);
    if (it != messages.end()) return it->second;
    const UINT message = 0xC000 + static_cast<UINT>(messages.size());
    messages[key] = message;
    return message;
}

int WINAPI GetWindowTextLengthW(HWND window) {
    winsim::refuse("GetWindowTextLengthW");
    Window* found = findWindow(window);
    return found && unicode() ? static_cast<int>(found->wideTitle.size()) : 0;
}

int WINAPI GetWindowTextW(HWND window, LPWSTR buffer, int size) {
    Window* found = findWindow(window);
    if (winsim::refuse("GetWindowTextW") || !found || !unicode() || size <= 0) {
        if (buffer && size > 0) buffer[0] = 0;
        return 0;
    }
    const int length = std::min(static_cast<int>(found->wideTitle.size()), size - 1);
    std::copy(found->wideTitle.begin(), found->wideTitle.begin() + length, buffer);
    buffer[length] = 0;
    return length;
}

BOOL WINAPI SetWindowTextW(HWND window, LPCWSTR text) {
    Window* found = findWindow(window);
    if (winsim::refuse("SetWindowTextW") || !found || !unicode()) return FALSE;
    found->wideTitle = text ? text : u"";
    found->title = narrow(found->wideTitle);
    return TRUE;
}

int WINAPI GetClassNameW(HWND window, LPWSTR buffer, int size) {
    Window* found = findWindow(window);
    if (winsim::refuse("GetClassNameW") || !found || !unicode() || size <= 0) return 0;
    const int length = std::min(static_cast<int>(found->className.size()), size - 1);
    for (int i = 0; i < length; ++i) buffer[i] = static_cast<unsigned char>(found->className[static_cast<size_t>(i)]);
    buffer[length] = 0;
    return length;
}

int WINAPI GetDeviceCaps(HDC dc, int index) {
    winsim::refuse("GetDeviceCaps");
    if (!dc) return 0;
    return index == LOGPIXELSX ? windows().logPixels[0] : index == LOGPIXELSY ? windows().logPixels[1] : 0;
}

}  // extern "C"
