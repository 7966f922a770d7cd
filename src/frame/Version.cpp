// Module Version: the library's own version, and the three standard
// entry points of a server, which this library is not: each says so in a
// message box and fails.
#include "Frame.h"
#include "Version.h"

static const char kModule[] = "Version";

namespace {

const DWORD kMajor = CSK_VERSION_MAJOR, kMinor = CSK_VERSION_MINOR, kBuild = CSK_VERSION_BUILD;
const DWORD kPlatformWindows = 1;
const DWORD kVersionRecordSize = 20;  // DLLVERSIONINFO; the longer DLLVERSIONINFO2 is refused

// The failure of the three refusing entry points; no published name.
const HRESULT kRefused = static_cast<HRESULT>(0x80000069);
const UINT kRefusalStyle = MB_TASKMODAL | MB_ICONEXCLAMATION | MB_OK;
const char kCaption[] = "Corvane - Corvane support library KIT";

// The texts, in code page 1251 as they are shown, unconverted:
// "Я не хочу удаляться!"
const char kNotRemoving[] = "\xDF \xED\xE5 \xF5\xEE\xF7\xF3 \xF3\xE4\xE0\xEB\xFF\xF2\xFC\xF1\xFF!";
// "Я не хочу никуда устанавливаться!"
const char kNotInstalling[] =
    "\xDF \xED\xE5 \xF5\xEE\xF7\xF3 \xED\xE8\xEA\xF3\xE4\xE0 \xF3\xF1\xF2\xE0\xED\xE0\xE2\xEB\xE8\xE2\xE0\xF2\xFC\xF1\xFF!";
// "Вообще-то я не ActiveX DLL и не буду регистрироваться в системе!"
const char kNotRegistering[] =
    "\xC2\xEE\xEE\xE1\xF9\xE5-\xF2\xEE \xFF \xED\xE5 ActiveX DLL \xE8 \xED\xE5 \xE1\xF3\xE4\xF3 "
    "\xF0\xE5\xE3\xE8\xF1\xF2\xF0\xE8\xF0\xEE\xE2\xE0\xF2\xFC\xF1\xFF \xE2 \xF1\xE8\xF1\xF2\xE5\xEC\xE5!";
// "Вообще-то я не ActiveX DLL и не буду отменять регистрацию в системе!"
const char kNotUnregistering[] =
    "\xC2\xEE\xEE\xE1\xF9\xE5-\xF2\xEE \xFF \xED\xE5 ActiveX DLL \xE8 \xED\xE5 \xE1\xF3\xE4\xF3 "
    "\xEE\xF2\xEC\xE5\xED\xFF\xF2\xFC \xF0\xE5\xE3\xE8\xF1\xF2\xF0\xE0\xF6\xE8\xFE \xE2 \xF1\xE8\xF1\xF2\xE5\xEC\xE5!";

// The box's answer is of no interest; the refusal stands whatever it was.
HRESULT REFUSE(const char* text) {
    CSK_ROUTINE("REFUSE");
    MessageBoxA(GetActiveWindow(), text, kCaption, kRefusalStyle);
    return kRefused;
}

}  // namespace

CSK_EXPORT HRESULT WINAPI DllGetVersion(DLLVERSIONINFO* info) {
    CSK_ROUTINE("DLLGETVERSION");
    if (!info || info->cbSize != kVersionRecordSize) return E_INVALIDARG;
    info->dwMajorVersion = kMajor;
    info->dwMinorVersion = kMinor;
    info->dwBuildNumber = kBuild;
    info->dwPlatformID = kPlatformWindows;
    return S_OK;
}

// The command line is not looked at.
CSK_EXPORT HRESULT WINAPI DllInstall(BOOL install, LPCWSTR) {
    CSK_ROUTINE("DLLINSTALL");
    return REFUSE(install ? kNotInstalling : kNotRemoving);
}

CSK_EXPORT HRESULT WINAPI DllRegisterServer() {
    CSK_ROUTINE("DLLREGISTERSERVER");
    return REFUSE(kNotRegistering);
}

CSK_EXPORT HRESULT WINAPI DllUnregisterServer() {
    CSK_ROUTINE("DLLUNREGISTERSERVER");
    return REFUSE(kNotUnregistering);
}
