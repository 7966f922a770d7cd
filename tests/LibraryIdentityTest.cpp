// The library's own identity (its version, the refusing registration entry
// points, its resources), shutdown, power states and the priority class.
// Nothing here may end the session: ExitWindowsEx and SetSystemPowerState
// are reached in winsim only; under Wine only their null-pointer refusals.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <tuple>
#include <vector>

#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

const char kCaption[] = "Corvane - Corvane support library KIT";

// What a box shows of Russian text passed to MessageBoxA in code page 1251
// (А to я, U+0410 to U+044F, are 0xC0 to 0xFF), unconverted.
std::string AsShown(const char* utf8) {
    std::string bytes;
    for (char16_t unit : Utf16(utf8)) bytes += static_cast<char>(unit < 0x80 ? unit : unit - 0x410 + 0xC0);
#ifndef CSK_WINSIM
    WCHAR wide[256] = {};
    MultiByteToWideChar(CP_ACP, 0, bytes.c_str(), -1, wide, 256);
    bytes = Utf8(reinterpret_cast<const char16_t*>(wide));
#endif
    return bytes;
}

}  // namespace

// Only the 20-byte record is filled; any other is refused untouched.
TEST(Version, DllGetVersion) {
    EXPECT_EQ(E_INVALIDARG, vb::DllGetVersion(nullptr));
    for (DWORD size : {0u, 19u, 32u, 20u}) {
        DWORD info[5] = {size, 7, 7, 7, 7}, expected[5] = {size, 1, 0, 81, 1};
        if (size != 20) std::memcpy(expected, info, sizeof info);
        EXPECT_EQ(size == 20 ? S_OK : E_INVALIDARG, vb::DllGetVersion(reinterpret_cast<DLLVERSIONINFO*>(info)));
        EXPECT_EQ(0, std::memcmp(expected, info, sizeof info)) << size;
    }
}

// Each refuses with its own text in a task-modal box with the exclamation
// icon and OK; the second argument of DllInstall is not looked at.
TEST(Version, RegistrationIsRefused) {
    const std::pair<HRESULT (*)(), const char*> rows[] = {
        {[] { return vb::DllInstall(FALSE, nullptr); }, "Я не хочу удаляться!"},
        {[] { return vb::DllInstall(-7, reinterpret_cast<LPCWSTR>(u"/i")); }, "Я не хочу никуда устанавливаться!"},
        {[] { return vb::DllRegisterServer(); }, "Вообще-то я не ActiveX DLL и не буду регистрироваться в системе!"},
        {[] { return vb::DllUnregisterServer(); }, "Вообще-то я не ActiveX DLL и не буду отменять регистрацию в системе!"}};
    for (const auto& row : rows) {
        HRESULT status = 0;
#ifdef CSK_WINSIM
        winsim::failNext("MessageBoxA");
        EXPECT_EQ(HRESULT(0x80000069), row.first());
        status = row.first();
        EXPECT_EQ("0|" + AsShown(row.second) + "|" + kCaption + "|8240", winsim::lastCall("MessageBoxA"));
#else
        const ShownBox shown = CloseNextBox([&] { status = row.first(); }, kCaption);
        EXPECT_EQ(std::make_tuple(std::string(kCaption), AsShown(row.second), true, true),
                  std::make_tuple(shown.caption, shown.text, shown.exclamation, shown.okOnly));
#endif
        EXPECT_EQ(HRESULT(0x80000069), status);
    }
}

// The classes as the platform reads them back; below normal falls back to
// idle where the host lacks it (winsim: NT 4).
TEST(Priority, ClassesReadBack) {
    FreshHost host;
    const std::pair<VbFunction<HRESULT>, DWORD> rows[] = {
        {vb::esSetBackgroundProcessPriority, BELOW_NORMAL_PRIORITY_CLASS},
        {vb::esSetIdleProcessPriority, IDLE_PRIORITY_CLASS},
        {vb::esSetForegroundProcessPriority, NORMAL_PRIORITY_CLASS}};
    for (const auto& row : rows) {
        EXPECT_EQ(S_OK, row.first());
        EXPECT_EQ(row.second, GetPriorityClass(GetCurrentProcess())) << row.first.name;
    }
#ifdef CSK_WINSIM
    winsim::setVersion(VER_PLATFORM_WIN32_NT, 4, 0, 1381, "Service Pack 6", VER_NT_WORKSTATION);
    EXPECT_EQ(S_OK, vb::esSetBackgroundProcessPriority());
    EXPECT_EQ("SetPriorityClass 16384|SetPriorityClass 64|SetPriorityClass 32|SetPriorityClass 16384|SetPriorityClass 64 64",
              winsim::securityLog() + " " + std::to_string(GetPriorityClass(GetCurrentProcess())));
    winsim::reset();
#endif
}

#ifdef CSK_WINSIM
// The privilege first (token, look-up, enabling, close), then the call with
// the caller's arguments; a failed step is passed over and the call's own
// refusal is the answer. A 9x host has no privileges to enable.
TEST(Shutdown, PrivilegeThenCall) {
    const std::string exits = "ExitWindowsEx 2 " + std::to_string(0x80020003u) + "|", power = "SetSystemPowerState -1 0";
    const std::string privilege =
        "OpenProcessToken 40|LookupPrivilegeValueA SeShutdownPrivilege|AdjustTokenPrivileges 0 1 19 2 0|CloseHandle token|";
    const struct {
        DWORD platform;
        const char* refuse;
        VARIANT_BOOL done;
        std::string log;
    } rows[] = {{VER_PLATFORM_WIN32_NT, "", -1, privilege + exits + privilege + power},
                {VER_PLATFORM_WIN32_NT, "ExitWindowsEx", 0, privilege + exits + privilege + power},
                {VER_PLATFORM_WIN32_NT, "OpenProcessToken", 0, "OpenProcessToken 40|" + exits + privilege + power},
                {VER_PLATFORM_WIN32_WINDOWS, "", -1, exits + power}};
    for (const auto& row : rows) {
        winsim::reset();
        winsim::setVersion(row.platform, 5, 1, 2600, "", VER_NT_WORKSTATION);
        FreshLibrary fresh;
        winsim::failNext(row.refuse);
        VARIANT_BOOL exited = 7, suspended = 7;
        EXPECT_EQ(S_OK, vb::esExitWindowsEx(EWX_REBOOT, LONG(0x80020003), &exited));
        EXPECT_EQ(S_OK, vb::esSetSystemPowerState(5, 0, &suspended));
        EXPECT_EQ(std::to_string(row.done) + " -1 " + row.log,
                  std::to_string(exited) + " " + std::to_string(suspended) + " " + winsim::securityLog());
    }
}
#else
// The version record, the message table and the icons, read back from the
// DLL with the platform's own functions.
TEST(Resources, ReadBack) {
    char path[MAX_PATH];
    vb::DllGetVersion(nullptr);
    HMODULE module = GetModuleHandleA("CorvaneSupportKit0100.dll");
    ASSERT_TRUE(GetModuleFileNameA(module, path, MAX_PATH));
    std::vector<char> record(GetFileVersionInfoSizeA(path, nullptr));
    ASSERT_TRUE(GetFileVersionInfoA(path, 0, static_cast<DWORD>(record.size()), record.data()));
    void* value;
    UINT size;
    const DWORD fixed[] = {0x00010000, 0x51, 0x00010000, 0x51, 0x3F, 2, 4, 1, 0, 0, 0}, translation = 0x04E30419;
    ASSERT_TRUE(VerQueryValueA(record.data(), "\\", &value, &size));
    EXPECT_EQ(0, std::memcmp(fixed, &static_cast<VS_FIXEDFILEINFO*>(value)->dwFileVersionMS, sizeof fixed));
    ASSERT_TRUE(VerQueryValueA(record.data(), "\\VarFileInfo\\Translation", &value, &size));
    EXPECT_EQ(0, std::memcmp(&translation, value, 4));
    const char* const values[] = {"Comments=Corvane - Corvane support library KIT 1.00",
                                  "FileDescription=Corvane - Corvane support library KIT 1.00",
                                  "FileVersion=1.00.0081", "InternalName=CorvaneSupportKit0100",
                                  "OriginalFilename=CorvaneSupportKit0100.DLL", "ProductName=Corvane",
                                  "ProductVersion=1.00.0081", "CompanyName", "LegalCopyright", "LegalTrademarks"};
    for (std::string pair : values) {
        const size_t equals = std::min(pair.find('='), pair.size());
        const bool found = VerQueryValueA(record.data(), ("\\StringFileInfo\\041904E3\\" + pair.substr(0, equals)).c_str(), &value, &size);
        EXPECT_EQ(pair, found ? equals == pair.size() ? pair : pair.substr(0, equals + 1) + static_cast<char*>(value) : "");
    }
    // The one key in Cyrillic, asked in UTF-16.
    const std::u16string key = u"\\StringFileInfo\\041904E3\\Статус проекта";
    ASSERT_TRUE(VerQueryValueW(record.data(), reinterpret_cast<LPCWSTR>(key.c_str()), &value, &size));
    EXPECT_EQ(u"Retail build", std::u16string(static_cast<const char16_t*>(value)));
    // Message 1 is its one insertion string and a line end; 2 a template of
    // 200 characters around fourteen.
    DWORD_PTR insertions[14];
    std::fill(insertions, insertions + 14, DWORD_PTR(L"x"));
    for (DWORD id = 1; id <= 2; ++id) {
        WCHAR text[1024] = {};
        EXPECT_EQ(id == 1 ? 3u : 224u, FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_ARGUMENT_ARRAY, module,
                                                      id, 0x419, text, 1024, reinterpret_cast<va_list*>(insertions)));
        EXPECT_EQ(u"x\r\n", std::u16string(reinterpret_cast<const char16_t*>(text)).substr(id == 1 ? 0 : 221));
    }
    // Each group names one image of 16 colours: its size and its number.
    const std::pair<const char*, BYTE> icons[] = {{"IDI_IDE_16", 2}, {"IDI_IDE_32", 1}, {"IDI_IDE_48", 3}};
    for (const auto& icon : icons) {
        const BYTE pixels = static_cast<BYTE>(std::atoi(icon.first + 8));
        HRSRC group = FindResourceExA(module, MAKEINTRESOURCEA(14), icon.first, 0x419);
        HRSRC image = FindResourceExA(module, MAKEINTRESOURCEA(3), MAKEINTRESOURCEA(icon.second), 0x419);
        ASSERT_TRUE(group && image) << icon.first;
        const BYTE* entry = static_cast<const BYTE*>(LockResource(LoadResource(module, group)));
        const BYTE expected[] = {1, 0, pixels, pixels, 16, 0, 1, 0, 4, 0};
        EXPECT_EQ(0, std::memcmp(expected, entry + 4, sizeof expected) + entry[18] - icon.second);
        const auto* header = static_cast<const BITMAPINFOHEADER*>(LockResource(LoadResource(module, image)));
        EXPECT_EQ(pixels * 100 + 4, header->biWidth * 100 + header->biBitCount);
    }
}
#endif
