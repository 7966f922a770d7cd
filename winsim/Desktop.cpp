// Windows of the calling thread, the keyboard, the input desktop, the
// screen saver, the error mode, and what the shell and message boxes were
// asked. The tick count and last input live with the counters.
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "DesktopState.h"
#include "winsim.h"
#include "winsim_control.h"

namespace winsim {
uintptr_t newHandle();    // Control.cpp
BOOL workArea(RECT* area);  // Windows.cpp
DWORD lastInputTick();    // Counters.cpp
}  // namespace winsim

namespace {

const DWORD kOtherThread = 0x7FFF0001;

using winsim::Window;

struct Desktop {
    std::vector<Window> windows;  // in the order they were made
    std::map<int, std::pair<SHORT, SHORT>> keys;
    bool unicode = true, locked = false, screenSaver = false;
    UINT errorMode = 0;
    intptr_t shellExecuteResult = 2;
    std::map<std::string, std::string> calls;
    std::map<std::string, std::vector<std::string>> log;
    HWND active = nullptr;
};

Desktop& desktop() {
    static Desktop state;
    return state;
}

Window* find(HWND handle) {
    for (Window& window : desktop().windows)
        if (window.handle == handle) return &window;
    return nullptr;
}

bool descendsFrom(const Window& window, HWND ancestor) {
    for (HWND up = window.parent; up; up = find(up) ? find(up)->parent : nullptr)
        if (up == ancestor) return true;
    return false;
}

// Copies text into a caller's buffer of size bytes, cut to fit with its
// terminator; gives the length copied.
int copyOut(const std::string& text, LPSTR buffer, int size) {
    if (!buffer || size <= 0) return 0;
    const int length = std::min(static_cast<int>(text.size()), size - 1);
    std::memcpy(buffer, text.data(), static_cast<size_t>(length));
    buffer[length] = 0;
    return length;
}

std::string orEmpty(LPCSTR text) { return text ? text : "(null)"; }

// GetLastInputInfo is reached through GetProcAddress (Host.cpp).
}  // namespace

namespace winsim {

void resetDesktop() { desktop() = Desktop(); }

Window* findWindow(HWND handle) { return find(handle); }
std::vector<Window>& allWindows() { return desktop().windows; }

void record(const char* function, const std::string& arguments) {
    desktop().calls[function] = arguments;
    desktop().log[function].push_back(arguments);
}

std::string callLog(const char* function) {
    std::string text;
    for (const std::string& call : desktop().log[function]) text += (text.empty() ? "" : " ; ") + call;
    return text;
}

void setActiveWindow(HWND window) { desktop().active = window; }

// A new window lies on top of its older siblings.
HWND addWindow(const char* className, const char* title, HWND parent, bool otherThread) {
    Window window;
    window.handle = reinterpret_cast<HWND>(newHandle());
    window.className = className, window.title = title, window.parent = parent;
    window.thread = otherThread ? kOtherThread : GetCurrentThreadId();
    window.visible = true;
    window.wideTitle.resize(std::strlen(title));
    mbstowcs(&window.wideTitle[0], title, window.wideTitle.size());
    desktop().windows.push_back(window);
    return window.handle;
}

bool windowVisible(HWND window) { return find(window) && find(window)->visible; }

void setKeyState(int key, SHORT async, SHORT state) { desktop().keys[key] = {async, state}; }
void setUnicode(bool available) { desktop().unicode = available; }
void setWorkstationLocked(bool locked) { desktop().locked = locked; }
void setScreenSaverRunning(bool running) { desktop().screenSaver = running; }
void setShellExecuteResult(intptr_t result) { desktop().shellExecuteResult = result; }

std::string lastCall(const char* function) {
    auto it = desktop().calls.find(function);
    return it == desktop().calls.end() ? "" : it->second;
}

// movabs rax, function; jmp rax: twelve bytes in a page mapped below 2 GiB.
LONG callableAt32Bits(void* function) {
    static unsigned char* page = nullptr;
    static size_t used = 0;
    if (!page) {
        void* mapped = mmap(nullptr, 4096, PROT_READ | PROT_WRITE | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS | MAP_32BIT, -1, 0);
        if (mapped == MAP_FAILED) std::fputs("winsim: no executable memory below 2 GiB\n", stderr), std::abort();
        page = static_cast<unsigned char*>(mapped);
    }
    if (used + 16 > 4096) std::fputs("winsim: too many 32-bit call addresses\n", stderr), std::abort();
    unsigned char* thunk = page + used;
    const uint64_t target = reinterpret_cast<uint64_t>(function);
    thunk[0] = 0x48, thunk[1] = 0xB8;
    std::memcpy(thunk + 2, &target, 8);
    thunk[10] = 0xFF, thunk[11] = 0xE0;
    used += 16;
    return static_cast<LONG>(reinterpret_cast<intptr_t>(thunk));
}

}  // namespace winsim

extern "C" {

DWORD WINAPI GetCurrentThreadId(void) { return static_cast<DWORD>(syscall(SYS_gettid)); }

BOOL WINAPI EnumThreadWindows(DWORD thread, WNDENUMPROC callback, LPARAM parameter) {
    if (winsim::refuse("EnumThreadWindows")) return FALSE;
    const std::vector<Window> windows = desktop().windows;  // the callback may change the list
    bool any = false;
    for (const Window& window : windows)
        if (window.thread == thread && !window.parent) {
            any = true;
            if (!callback(window.handle, parameter)) break;
        }
    return any ? TRUE : FALSE;
}

// Every descendant, each before its own children's later siblings: the
// order in which they were made.
BOOL WINAPI EnumChildWindows(HWND parent, WNDENUMPROC callback, LPARAM parameter) {
    if (winsim::refuse("EnumChildWindows")) return FALSE;
    const std::vector<Window> windows = desktop().windows;
    for (const Window& window : windows)
        if (descendsFrom(window, parent) && !callback(window.handle, parameter)) break;
    return TRUE;
}

int WINAPI GetClassNameA(HWND window, LPSTR buffer, int size) {
    Window* found = find(window);
    if (winsim::refuse("GetClassNameA") || !found) {
        SetLastError(1400 /* ERROR_INVALID_WINDOW_HANDLE */);
        return 0;
    }
    return copyOut(found->className, buffer, size);
}

int WINAPI GetWindowTextLengthA(HWND window) {
    Window* found = find(window);
    winsim::refuse("GetWindowTextLengthA");
    return found ? static_cast<int>(found->title.size()) : 0;
}

int WINAPI GetWindowTextA(HWND window, LPSTR buffer, int size) {
    Window* found = find(window);
    if (winsim::refuse("GetWindowTextA") || !found) {
        if (buffer && size > 0) buffer[0] = 0;
        return 0;
    }
    return copyOut(found->title, buffer, size);
}

BOOL WINAPI ShowWindow(HWND window, int command) {
    Window* found = find(window);
    winsim::refuse("ShowWindow");
    if (!found) return FALSE;
    const bool was = found->visible;
    found->visible = command != SW_HIDE;
    found->minimized = command == SW_MINIMIZE || (found->minimized && command != SW_RESTORE && command != SW_SHOWNORMAL);
    return was ? TRUE : FALSE;
}

HWND WINAPI GetActiveWindow(void) {
    winsim::refuse("GetActiveWindow");
    return desktop().active;
}

SHORT WINAPI GetAsyncKeyState(int key) {
    winsim::refuse("GetAsyncKeyState");
    auto it = desktop().keys.find(key);
    return it == desktop().keys.end() ? 0 : it->second.first;
}

SHORT WINAPI GetKeyState(int key) {
    winsim::refuse("GetKeyState");
    auto it = desktop().keys.find(key);
    return it == desktop().keys.end() ? 0 : it->second.second;
}

HDESK WINAPI OpenInputDesktop(DWORD, BOOL, DWORD access) {
    if (winsim::refuse("OpenInputDesktop") || desktop().locked || access != DESKTOP_SWITCHDESKTOP) {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    return reinterpret_cast<HDESK>(winsim::newHandle());
}

BOOL WINAPI CloseDesktop(HDESK desktopHandle) {
    winsim::refuse("CloseDesktop");
    return desktopHandle ? TRUE : FALSE;
}

// The screen saver's state and the primary monitor's work area.
BOOL WINAPI SystemParametersInfoA(UINT action, UINT, LPVOID data, UINT) {
    const bool refused = winsim::refuse("SystemParametersInfoA");
    if (!refused && action == SPI_GETWORKAREA && data) return winsim::workArea(static_cast<RECT*>(data));
    if (refused || action != SPI_GETSCREENSAVERRUNNING || !data) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *static_cast<BOOL*>(data) = desktop().screenSaver ? TRUE : FALSE;
    return TRUE;
}

UINT WINAPI GetWindowsDirectoryW(LPWSTR buffer, UINT size) {
    winsim::refuse("GetWindowsDirectoryW");
    if (!desktop().unicode) return 0;
    static const char16_t kFolder[] = u"C:\\Windows";
    const UINT length = sizeof kFolder / 2 - 1;
    if (!buffer || size <= length) return length + 1;
    std::memcpy(buffer, kFolder, sizeof kFolder);
    return length;
}

UINT WINAPI SetErrorMode(UINT mode) {
    winsim::refuse("SetErrorMode");
    const UINT was = desktop().errorMode;
    desktop().errorMode = mode;
    return was;
}

HINSTANCE WINAPI ShellExecuteA(HWND, LPCSTR verb, LPCSTR file, LPCSTR parameters, LPCSTR directory, INT show) {
    winsim::refuse("ShellExecuteA");
    winsim::record("ShellExecuteA", orEmpty(verb) + "|" + orEmpty(file) + "|" + orEmpty(parameters) + "|" +
                                        orEmpty(directory) + "|" + std::to_string(show));
    return reinterpret_cast<HINSTANCE>(desktop().shellExecuteResult);
}

int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT style) {
    winsim::refuse("MessageBoxA");
    winsim::record("MessageBoxA", std::to_string(reinterpret_cast<uintptr_t>(owner)) + "|" + orEmpty(text) + "|" +
                                     orEmpty(caption) + "|" + std::to_string(style));
    return 1;  // IDOK: the box was closed at once
}

}  // extern "C"
