// Test-only controls of the stand-in: make a platform function refuse, and
// count how often the library called one. Tests that use these only build
// natively; the real platform offers no such switch.
#pragma once

#include <string>

#include "winsim.h"

namespace winsim {

// The next `times` calls of the stand-in named `function` fail the way the
// platform function reports failure (0, FALSE, an error HRESULT, ...).
void failNext(const char* function, int times = 1);

// Calls of the stand-in named `function` since the last reset().
int calls(const char* function);

// Clears every pending failure and every count.
void reset();

// Used by the stand-ins themselves: counts the call and tells whether it
// should fail.
bool refuse(const char* function);

}  // namespace winsim

namespace winsim {

// The zone that local time follows: minutes that local time is ahead of
// UTC (330 for UTC+5:30), without daylight saving. 0 until set.
void setTimeZone(int minutesAheadOfUtc);

// Stops the clock at a FILETIME count (UTC); 0 lets it run again.
void setClock(unsigned long long fileTime);

}  // namespace winsim

namespace winsim {

// The Windows that the version functions describe. accepts: which sizes of
// the record GetVersionExA fills, 2 both (156 and 148), 1 only 148, 0 none.
// After reset(): Windows 7, workstation, both sizes.
void setVersion(DWORD platform, DWORD major, DWORD minor, DWORD build, const char* csd, BYTE productType,
                int accepts = 2);

// GetSystemMetrics(index) answers value from now on.
void setSystemMetric(int index, int value);

// A library (by its file name) or an entry point (by its name) that
// LoadLibraryA or GetProcAddress does not find. After reset() only
// wine_get_version is missing: winsim is not Wine.
void setMissing(const char* name, bool missing = true);

// A process that OpenProcess finds, and whether it runs under WOW64. This
// process is GetCurrentProcessId(), not under WOW64 after reset().
void setProcess(DWORD processId, bool wow64);

// What the shell's DllGetVersion and kernel32's GetProductName answer.
void setShellVersion(DWORD major, DWORD minor, DWORD build);
void setProductName(const char* name);

}  // namespace winsim

namespace winsim {

// The file system: a tree in memory under drive letters ("C:") and UNC
// shares ("\\Server\Share"). After reset() there is one volume, C:, with
// nothing in it but the system's folders (see setSystemFolders), no file
// open, and the current directory is "C:\".
//
// A volume: its label, serial number, longest name part, flags word, file
// system's name, and whether it makes short 8.3 names for long ones.
void addVolume(const char* root, const char* label, DWORD serial, DWORD maxComponent, DWORD flags,
               const char* fileSystem, bool shortNames = true);

// Its space in bytes, and the geometry that GetDiskFreeSpaceA reports it in
// (the cluster counts are the byte counts divided, cut to 32 bits).
void setDiskSpace(const char* root, ULONGLONG total, ULONGLONG free, ULONGLONG available,
                  DWORD sectorsPerCluster = 8, DWORD bytesPerSector = 512);

// A file or folder, with the folders above it made as needed. The name's
// last element is stored with the case given; attributes get
// FILE_ATTRIBUTE_DIRECTORY added for a folder.
void addFile(const char* path, ULONGLONG size = 0, DWORD attributes = FILE_ATTRIBUTE_ARCHIVE);
void addDirectory(const char* path, DWORD attributes = 0);

// GetFileAttributesA on this item fails with this error code (5: access
// denied, 32: a sharing violation), and so does opening it (CreateFileA
// with CREATE_ALWAYS, SetCurrentDirectoryA); FindFirstFileA still finds it.
void refuseAttributes(const char* path, DWORD error);

// The current directory that relative paths are read against.
void setCurrentDirectory(const char* path);

// What GetModuleFileNameA gives for a handle; handle 0 is the program file
// (after reset(): "C:\Program Files\Corvane\App.exe", not in the tree).
void setModuleFileName(HMODULE module, const char* path);

// Search handles that FindFirstFileA gave out and FindClose has not closed.
int openSearches();

}  // namespace winsim

namespace winsim {

// The registry: after reset() the predefined roots, each empty.
//
// A value with its exact bytes, the keys on the way made as needed.
void setRegistryValue(HKEY root, const char* subkey, const char* name, DWORD type, const void* data, DWORD size);

// A value as stored (false if there is none), and whether a key exists.
bool registryValue(HKEY root, const char* subkey, const char* name, DWORD* type, std::string* bytes);
bool registryKeyExists(HKEY root, const char* subkey);

// Once the next RegQueryValueExA without a data buffer has answered for
// this value, the value becomes the one given: a value that changes between
// a reader's two queries.
void changeAfterNextQuery(HKEY root, const char* subkey, const char* name, DWORD type, const void* data, DWORD size);

// Keys opened or created and not yet closed.
int openKeys();

// The system's folders (after reset(): "C:\Windows", "C:\Windows\System32"
// and "C:\Temp\", which exist on drive C:). The texts are taken as given;
// no folder is made for them.
void setSystemFolders(const char* windows, const char* system, const char* temp);

// The shell's special folders: a CSIDL number that the shell knows, with
// its path (shorter than MAX_PATH), or with none (nullptr: a virtual
// folder). After reset() the shell knows none, and
// SHGetSpecialFolderLocation fails with E_INVALIDARG.
void setSpecialFolder(int csidl, const char* path);

// An item identifier list as the shell would give one (nullptr: a virtual
// folder), and how many lists are alive (made and not yet freed). A list,
// like a handle, fits in 32 bits; reset() frees every list.
LPITEMIDLIST makeItemIdList(const char* path);
int liveItemIdLists();

}  // namespace winsim

namespace winsim {

// A window of the calling thread (or of another thread), a top-level one
// or a child of parent, visible. Handles fit in 32 bits.
HWND addWindow(const char* className, const char* title = "", HWND parent = nullptr, bool otherThread = false);
bool windowVisible(HWND window);

// The tick count stopped at tick (0 lets it run), and the tick of the last
// input that GetLastInputInfo reports.
void setTicks(DWORD tick, DWORD lastInput);

// What GetAsyncKeyState and GetKeyState answer for a key (0 after reset()).
void setKeyState(int key, SHORT async, SHORT state);

// A host without the wide calls, a locked workstation (OpenInputDesktop
// refuses), a running screen saver, and ShellExecuteA's result (2, file
// not found, after reset()).
void setUnicode(bool available);
void setWorkstationLocked(bool locked);
void setScreenSaverRunning(bool running);
void setShellExecuteResult(intptr_t result);

// The arguments of the latest call of ShellExecuteA or MessageBoxA, joined
// by "|" ("" if there was none since reset()).
std::string lastCall(const char* function);

// An address below 2 GiB, in executable memory, that jumps to function:
// for calling a test's function through a 32-bit Long.
LONG callableAt32Bits(void* function);

}  // namespace winsim

namespace winsim {

// Every call of `function` since reset(), each as lastCall() gives it,
// joined by " ; ". The window, menu and message-box calls record:
//   MessageBeep "type"; MessageBoxIndirectW/A "cbSize|owner|instance|text|
//   caption|style|icon|help|callback|language" (text as UTF-8, "(null)" for
//   none); AttachThreadInput "from>to:attach"; GetMenuItemInfoA and
//   SetMenuItemInfoA "cbSize/fMask"; SHAutoComplete "window|flags";
//   SetLayeredWindowAttributes "window|key|alpha|flags"; PostMessageA
//   "window|message"; SendMessageA "message(wParam,lParam)" for all but the
//   reading messages.
std::string callLog(const char* function);

// What GetActiveWindow and GetForegroundWindow answer (null after reset()).
void setActiveWindow(HWND window);
void setForegroundWindow(HWND window);

// A window's rectangle in screen coordinates (after addWindow: 0, 0, 100,
// 100), and whether it is minimised.
void setWindowRect(HWND window, RECT rect, bool minimized = false);
bool windowMinimized(HWND window);

// The monitors: each with its rectangle and work area; the first is the
// primary one. After reset() one monitor of 1024 x 768 with a work area
// 1024 x 728, and the metrics 0 and 1 answer 1024 and 768.
void setMonitors(const RECT* monitors, const RECT* workAreas, int count);

// A menu bar for the window: items by position, each a text ("-" for a
// separator) with its id.
HMENU setMenuBar(HWND window, const char* const* texts, int count);

// The window's layered attributes as "key|alpha|flags", "" before any.
std::string layeredAttributes(HWND window);

// GetDeviceCaps(LOGPIXELSX / LOGPIXELSY); 96 and 96 after reset().
void setLogPixels(int x, int y);

}  // namespace winsim

#include <vector>

namespace winsim {

// Who runs the program: the computer's and the user's names, the user's SID
// (its bytes), and the domain of the account that the SID names (nullptr:
// LookupAccountSidA finds no account). After reset(): "WINSIM-PC", "Tester",
// S-1-5-21-1004336348-1177238915-682003330-1001, "CORVANE".
void setComputerName(const char* name);
void setUserName(const char* name);
void setUserSid(const std::string& bytes);
void setAccountDomain(const char* domain);

// An event that ReportEventW was given, with its one string's text.
struct ReportedEvent {
    HANDLE source;
    WORD type, category;
    DWORD id;
    std::string sid;  // the SID's bytes, empty for none
    WORD strings;
    DWORD dataSize;
    bool rawData;
    std::u16string text;
};
const std::vector<ReportedEvent>& reportedEvents();

// The names that RegisterEventSourceW was asked to open, in order.
std::vector<std::u16string> eventSourcesOpened();

// The token, privilege, shutdown, power and priority calls in order, each
// as its name and arguments ("OpenProcessToken 40", "SetPriorityClass
// 16384"), joined by "|".
std::string securityLog();

// Whether the shutdown privilege is enabled in the process token.
bool shutdownPrivilegeEnabled();

}  // namespace winsim
