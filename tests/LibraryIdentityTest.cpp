// The library's own identity (its version, the refusing registration entry
// points, its resources), shutting down, power states and the priority
// class. Nothing here may end the session: ExitWindowsEx and
// SetSystemPowerState are reached in winsim only; under Wine only their
// null-pointer refusals run.
#include <cstring>

#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#else
#include <thread>
#endif

namespace {

const HRESULT kRefused = static_cast<HRESULT>(0x80000069);
const char kCaption[] = "Corvane - Corvane support library KIT";
// The texts in code page 1251, as the boxes get them.
const char kRemove[] = "\xDF \xED\xE5 \xF5\xEE\xF7\xF3 \xF3\xE4\xE0\xEB\xFF\xF2\xFC\xF1\xFF!";
const char kInstall[] =
    "\xDF \xED\xE5 \xF5\xEE\xF7\xF3 \xED\xE8\xEA\xF3\xE4\xE0 \xF3\xF1\xF2\xE0\xED\xE0\xE2\xEB\xE8\xE2\xE0\xF2\xFC\xF1\xFF!";
const char kRegister[] =
    "\xC2\xEE\xEE\xE1\xF9\xE5-\xF2\xEE \xFF \xED\xE5 ActiveX DLL \xE8 \xED\xE5 \xE1\xF3\xE4\xF3 "
    "\xF0\xE5\xE3\xE8\xF1\xF2\xF0\xE8\xF0\xEE\xE2\xE0\xF2\xFC\xF1\xFF \xE2 \xF1\xE8\xF1\xF2\xE5\xEC\xE5!";
const char kUnregister[] =
    "\xC2\xEE\xEE\xE1\xF9\xE5-\xF2\xEE \xFF \xED\xE5 ActiveX DLL \xE8 \xED\xE5 \xE1\xF3\xE4\xF3 "
    "\xEE\xF2\xEC\xE5\xED\xFF\xF2\xFC \xF0\xE5\xE3\xE8\xF1\xF2\xF0\xE0\xF6\xE8\xFE \xE2 \xF1\xE8\xF1\xF2\xE5\xEC\xE5!";

#ifndef CSK_WINSIM
// Shows the box of call() and reads it from a second thread: its text, and
// whether it has the exclamation icon and an OK button alone. The watcher
// closes the box; it gives up after 30 s, and so never leaves a box open
// nor waits forever.
std::string ShownBox(HRESULT (*call)(), HRESULT& status) {
    std::string seen = "no box";
    std::thread watcher([&seen] {
        for (int tries = 0; tries < 600; ++tries, Sleep(50)) {
            HWND box = FindWindowA("#32770", kCaption);
            if (!box) continue;
            WCHAR text[256] = {};
            GetDlgItemTextW(box, 0xFFFF, text, 256);
            HICON icon = reinterpret_cast<HICON>(SendDlgItemMessageW(box, 1088, STM_GETICON, 0, 0));
            const bool exclamation = icon && icon == LoadIconW(nullptr, MAKEINTRESOURCEW(32515));
            const bool okOnly = GetDlgItem(box, IDOK) && !GetDlgItem(box, IDCANCEL);
            seen = Utf8(reinterpret_cast<const char16_t*>(text)) + (exclamation ? " !" : " -") + (okOnly ? " OK" : " ?");
            for (int wait = 0; wait < 100 && IsWindow(box); ++wait, Sleep(50)) PostMessageW(box, WM_COMMAND, IDOK, 0);
            return;
        }
    });
    status = call();
    watcher.join();
    return seen;
}
#endif

// What a box shows of 8-bit text passed to MessageBoxA unconverted.
std::string AsShown(const char* text) {
#ifdef CSK_WINSIM
    return text;
#else
    WCHAR wide[256] = {};
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide, 256);
    return Utf8(reinterpret_cast<const char16_t*>(wide));
#endif
}

}  // namespace

// Only the 20-byte record is filled; everything else is refused untouched.
TEST(Version, DllGetVersion) {
    EXPECT_EQ(E_INVALIDARG, vb::DllGetVersion(nullptr));
    for (DWORD size : {0u, 19u, 32u, 20u}) {
        DLLVERSIONINFO info;
        std::memset(&info, 0xAB, sizeof info);
        info.cbSize = size;
        EXPECT_EQ(size == 20 ? S_OK : E_INVALIDARG, vb::DllGetVersion(&info)) << size;
        const DWORD untouched = 0xABABABAB;
        const DWORD expected[5] = {size, size == 20 ? 1 : untouched, size == 20 ? 0 : untouched,
                                   size == 20 ? 81 : untouched, size == 20 ? 1 : untouched};
        EXPECT_EQ(0, std::memcmp(expected, &info, sizeof info)) << size;
    }
}

// Each refuses with its own text in a task-modal box with the exclamation
// icon and OK; the second argument of DllInstall is not looked at.
TEST(Version, RegistrationIsRefused) {
    const struct {
        HRESULT (*call)();
        const char* text;
    } rows[] = {
        {[] { return vb::DllInstall(FALSE, nullptr); }, kRemove},
        {[] { return vb::DllInstall(TRUE, nullptr); }, kInstall},
        {[] { return vb::DllInstall(-7, reinterpret_cast<LPCWSTR>(u"/i")); }, kInstall},
        {[] { return vb::DllRegisterServer(); }, kRegister},
        {[] { return vb::DllUnregisterServer(); }, kUnregister},
    };
    for (const auto& row : rows) {
        HRESULT status = 0;
#ifdef CSK_WINSIM
        winsim::reset();
        status = row.call();
        EXPECT_EQ("0|" + AsShown(row.text) + "|" + kCaption + "|8240", winsim::lastCall("MessageBoxA"));
        winsim::failNext("MessageBoxA");
        EXPECT_EQ(kRefused, row.call());
#else
        EXPECT_EQ(AsShown(row.text) + " ! OK", ShownBox(row.call, status));
#endif
        EXPECT_EQ(kRefused, status);
    }
}

// Priority classes as the platform reads them back; below normal falls
// back to idle where the host lacks it (winsim: NT 4).
TEST(Priority, ClassesReadBack) {
    const struct {
        VbFunction<HRESULT> set;
        DWORD priorityClass;
    } rows[] = {{vb::esSetBackgroundProcessPriority, BELOW_NORMAL_PRIORITY_CLASS},
                {vb::esSetIdleProcessPriority, IDLE_PRIORITY_CLASS},
                {vb::esSetForegroundProcessPriority, NORMAL_PRIORITY_CLASS}};
    for (const auto& row : rows) {
        EXPECT_EQ(S_OK, row.set());
        EXPECT_EQ(row.priorityClass, GetPriorityClass(GetCurrentProcess())) << row.set.name;
    }
#ifdef CSK_WINSIM
    winsim::reset();
    winsim::setVersion(VER_PLATFORM_WIN32_NT, 4, 0, 1381, "Service Pack 6", VER_NT_WORKSTATION);
    EXPECT_EQ(S_OK, vb::esSetBackgroundProcessPriority());
    EXPECT_EQ(DWORD(IDLE_PRIORITY_CLASS), GetPriorityClass(GetCurrentProcess()));
    EXPECT_EQ("SetPriorityClass 16384|SetPriorityClass 64", winsim::securityLog());
    winsim::failNext("SetPriorityClass");
    EXPECT_EQ(S_OK, vb::esSetForegroundProcessPriority());
    winsim::reset();
#endif
    vb::esSetForegroundProcessPriority();
}

TEST(Shutdown, NullResultActsOnNothing) {
#ifdef CSK_WINSIM
    winsim::reset();
#endif
    EXPECT_EQ(S_FALSE, vb::esExitWindowsEx(EWX_LOGOFF, 0, nullptr));
    EXPECT_EQ(S_FALSE, vb::esSetSystemPowerState(-1, -1, nullptr));
#ifdef CSK_WINSIM
    EXPECT_EQ("", winsim::securityLog());
#endif
}

#ifdef CSK_WINSIM
// The privilege first (token, look-up, enabling, close), then the call with
// the caller's arguments; a failed step is passed over and the call's own
// refusal is the answer. A 9x host has no privileges to enable.
TEST(Shutdown, PrivilegeThenCall) {
    const std::string calls = "ExitWindowsEx 2 " + std::to_string(0x80020003u) + "|";
    const std::string privilege =
        "OpenProcessToken 40|LookupPrivilegeValueA SeShutdownPrivilege|AdjustTokenPrivileges 0 1 19 2 0|CloseHandle token|";
    const struct {
        bool nt;
        const char* refuse;
        VARIANT_BOOL done;
        std::string log;
    } rows[] = {
        {true, "", -1, privilege + calls + privilege + "SetSystemPowerState -1 0"},
        {true, "ExitWindowsEx", 0, privilege + calls + privilege + "SetSystemPowerState -1 0"},
        {true, "OpenProcessToken", 0, "OpenProcessToken 40|" + calls + privilege + "SetSystemPowerState -1 0"},
        {false, "", -1, calls + "SetSystemPowerState -1 0"},
    };
    for (const auto& row : rows) {
        winsim::reset();
        if (!row.nt) winsim::setVersion(VER_PLATFORM_WIN32_WINDOWS, 4, 10, 2222, " A ", 0);
        FreshLibrary fresh;
        winsim::failNext(row.refuse);
        VARIANT_BOOL exited = 7, suspended = 7;
        EXPECT_EQ(S_OK, vb::esExitWindowsEx(EWX_REBOOT, LONG(0x80020003), &exited));
        EXPECT_EQ(S_OK, vb::esSetSystemPowerState(5, 0, &suspended));
        EXPECT_EQ(row.done, exited) << row.refuse;
        EXPECT_EQ(VARIANT_TRUE, suspended);
        EXPECT_EQ(row.log, winsim::securityLog());
    }
}
#else
// The version record, the message table and the icons, read back from the
// DLL with the platform's own functions.
TEST(Resources, VersionRecord) {
    vb::DllGetVersion(nullptr);
    HMODULE module = GetModuleHandleA("CorvaneSupportKit0100.dll");
    char path[MAX_PATH];
    ASSERT_TRUE(GetModuleFileNameA(module, path, MAX_PATH));
    std::vector<char> record(GetFileVersionInfoSizeA(path, nullptr));
    ASSERT_TRUE(GetFileVersionInfoA(path, 0, static_cast<DWORD>(record.size()), record.data()));
    VS_FIXEDFILEINFO* fixed;
    UINT size;
    ASSERT_TRUE(VerQueryValueA(record.data(), "\\", reinterpret_cast<void**>(&fixed), &size));
    const DWORD expected[] = {0x00010000, 0x51, 0x00010000, 0x51, 0x3F, 2, 4, 1, 0, 0, 0};
    EXPECT_EQ(0, std::memcmp(expected, &fixed->dwFileVersionMS, sizeof expected));
    WORD* translation;
    ASSERT_TRUE(VerQueryValueA(record.data(), "\\VarFileInfo\\Translation", reinterpret_cast<void**>(&translation), &size));
    EXPECT_EQ(0x419, translation[0]);
    EXPECT_EQ(1251, translation[1]);
    const char* const values[][2] = {
        {"Comments", "Corvane - Corvane support library KIT 1.00"},
        {"FileDescription", "Corvane - Corvane support library KIT 1.00"},
        {"FileVersion", "1.00.0081"}, {"InternalName", "CorvaneSupportKit0100"},
        {"OriginalFilename", "CorvaneSupportKit0100.DLL"}, {"ProductName", "Corvane"},
        {"ProductVersion", "1.00.0081"}, {"CompanyName", nullptr}, {"LegalCopyright", nullptr},
        {"LegalTrademarks", nullptr}};
    for (const auto& value : values) {
        char* text = nullptr;
        ASSERT_TRUE(VerQueryValueA(record.data(), ("\\StringFileInfo\\041904E3\\" + std::string(value[0])).c_str(),
                                   reinterpret_cast<void**>(&text), &size)) << value[0];
        if (value[1]) {
            EXPECT_STREQ(value[1], text);
        }
    }
    // The one key in Cyrillic, asked in UTF-16.
    const std::u16string widePath = Utf16(path);
    const LPCWSTR wpath = reinterpret_cast<LPCWSTR>(widePath.c_str());
    std::vector<char> wide(GetFileVersionInfoSizeW(wpath, nullptr));
    ASSERT_TRUE(GetFileVersionInfoW(wpath, 0, DWORD(wide.size()), wide.data()));
    WCHAR* status = nullptr;
    const std::u16string key = u"\\StringFileInfo\\041904E3\\Статус проекта";
    ASSERT_TRUE(VerQueryValueW(wide.data(), reinterpret_cast<LPCWSTR>(key.c_str()), reinterpret_cast<void**>(&status), &size));
    EXPECT_EQ(u"Retail build", std::u16string(reinterpret_cast<const char16_t*>(status)));
}

TEST(Resources, MessagesAndIcons) {
    vb::DllGetVersion(nullptr);
    HMODULE module = GetModuleHandleA("CorvaneSupportKit0100.dll");
    std::u16string insertions[14];
    DWORD_PTR arguments[14];
    for (int i = 0; i < 14; ++i) insertions[i] = u"<" + Utf16(std::to_string(i + 1)) + u">", arguments[i] = reinterpret_cast<DWORD_PTR>(insertions[i].c_str());
    const struct {
        DWORD id;
        const char* text;
    } messages[] = {
        {1, "<1>\r\n"},
        {2, "Event type: <1>\r\nEvent category: <2>\r\nEvent ID: <3>\r\n\r\nTime generated: <4>\r\nTime received: "
            "<5>\r\nTime written: <6>\r\n\r\nSource name: <7>\r\nVersion: <8>\r\nModule file name: <9>\r\n\r\nProcess "
            "ID: <10>\r\nThread ID: <11>\r\n\r\nComputer name: <12>\r\nUser name: <13>\r\n\r\n<14>\r\n"},
    };
    for (const auto& message : messages) {
        WCHAR text[1024] = {};
        ASSERT_NE(0u, FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_ARGUMENT_ARRAY, module, message.id, 0x419,
                                     text, 1024, reinterpret_cast<va_list*>(arguments)));
        EXPECT_EQ(message.text, Utf8(reinterpret_cast<const char16_t*>(text)));
    }
    // Each group names one image: its size and its icon's number.
    const struct {
        const char* group;
        WORD icon, pixels;
    } icons[] = {{"IDI_IDE_16", 2, 16}, {"IDI_IDE_32", 1, 32}, {"IDI_IDE_48", 3, 48}};
    for (const auto& icon : icons) {
        HRSRC group = FindResourceExA(module, MAKEINTRESOURCEA(14), icon.group, 0x419);
        ASSERT_TRUE(group) << icon.group;
        const BYTE* entry = static_cast<const BYTE*>(LockResource(LoadResource(module, group)));
        EXPECT_EQ(1, entry[4]);  // one image
        EXPECT_EQ(icon.pixels, entry[6]);
        WORD id;
        std::memcpy(&id, entry + 6 + 12, 2);
        EXPECT_EQ(icon.icon, id);
        HRSRC image = FindResourceExA(module, MAKEINTRESOURCEA(3), MAKEINTRESOURCEA(icon.icon), 0x419);
        ASSERT_TRUE(image);
        const BITMAPINFOHEADER* header = static_cast<const BITMAPINFOHEADER*>(LockResource(LoadResource(module, image)));
        EXPECT_EQ(icon.pixels, header->biWidth);
        EXPECT_EQ(4, header->biBitCount);  // 16 colours
    }
    EXPECT_TRUE(FindResourceExA(module, MAKEINTRESOURCEA(11), MAKEINTRESOURCEA(1), 0x419));
}
#endif
