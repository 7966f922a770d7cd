// Module Identification: the computer's name, the user's name and logon
// domain, and the full user name composed of them.
#include <vector>

#include "Frame.h"
#include "HostIdentification.h"
#include "UserSID.h"

static const char kModule[] = "Identification";

namespace {

std::string WR_ESGETCOMPUTERNAME() {
    CSK_ROUTINE("WR_ESGETCOMPUTERNAME");
    TextBuffer buffer;
    DWORD size = kTextLimit;
    if (!GetComputerNameA(buffer.bytes, &size)) return std::string();
    return buffer.bytes;
}

// A probe with size 0 first; the second try gets the size the probe told,
// or 2048 when it told none.
std::string WR_ESGETUSERNAME() {
    CSK_ROUTINE("WR_ESGETUSERNAME");
    std::vector<char> buffer(2049, 0);
    DWORD size = 0;
    if (!GetUserNameA(buffer.data(), &size)) {
        const DWORD error = GetLastError();
        if (error == ERROR_INSUFFICIENT_BUFFER || error == ERROR_NOT_LOGGED_ON) {
            if (size == 0) size = 2048;
            if (size > 2048) size = 2048;  // the buffer's room, terminator aside
            std::fill(buffer.begin(), buffer.end(), 0);
            if (!GetUserNameA(buffer.data(), &size)) std::fill(buffer.begin(), buffer.end(), 0);
        }
    }
    return buffer.data();
}

std::string GETDOMAINNAMEENV() {
    CSK_ROUTINE("GETDOMAINNAMEENV");
    return GETENVIRON("USERDOMAIN");
}

// The domain of the account that the user's SID names.
std::string GETDOMAINNAMENT() {
    CSK_ROUTINE("GETDOMAINNAMENT");
    ByteArray sid;
    if (!WR_GETUSERSID(sid)) return std::string();
    DWORD nameSize = 0, domainSize = 0;
    SID_NAME_USE use;
    if (LookupAccountSidA(nullptr, sid.data(), nullptr, &nameSize, nullptr, &domainSize, &use) ||
        GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return std::string();
    std::vector<char> name(static_cast<size_t>(nameSize) + 10, 0), domain(static_cast<size_t>(domainSize) + 10, 0);
    if (!LookupAccountSidA(nullptr, sid.data(), name.data(), &nameSize, domain.data(), &domainSize, &use))
        return std::string();
    return domain.data();
}

std::string WR_ESGETDOMAINNAME() {
    CSK_ROUTINE("WR_ESGETDOMAINNAME");
    std::string name;
    if (WR_ESISHOSTWINNT()) name = GETDOMAINNAMENT();
    if (name.empty()) name = GETDOMAINNAMEENV();
    // A local account: the "domain" is the computer itself.
    if (!name.empty() && LCase(name) == LCase(WR_ESGETCOMPUTERNAME())) return std::string();
    return name;
}

std::string WR_ESGETFULLUSERNAME(uint8_t mailForm, uint8_t withComputer) {
    CSK_ROUTINE("WR_ESGETFULLUSERNAME");
    std::string user = WR_ESGETUSERNAME();
    if (user.empty()) user = "NONE";
    const std::string domain = WR_ESGETDOMAINNAME();
    std::string full = domain.empty() ? user : mailForm ? user + "@" + domain : domain + "\\" + user;
    if (withComputer) {
        const std::string computer = WR_ESGETCOMPUTERNAME();
        if (!computer.empty()) full += " at " + computer;
    }
    return full;
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esGetComputerName(BSTR* result) {
    return TextExport(kModule, "ESGETCOMPUTERNAME", result, [] { return WR_ESGETCOMPUTERNAME(); });
}

CSK_EXPORT HRESULT WINAPI esGetUserName(BSTR* result) {
    return TextExport(kModule, "ESGETUSERNAME", result, [] { return WR_ESGETUSERNAME(); });
}

CSK_EXPORT HRESULT WINAPI esGetDomainName(BSTR* result) {
    return TextExport(kModule, "ESGETDOMAINNAME", result, [] { return WR_ESGETDOMAINNAME(); });
}

CSK_EXPORT HRESULT WINAPI esGetFullUserName(VARIANT_BOOL mailForm, VARIANT_BOOL withComputer, BSTR* result) {
    return TextExport(kModule, "ESGETFULLUSERNAME", result,
                      [&] { return WR_ESGETFULLUSERNAME(FLAG(mailForm), FLAG(withComputer)); });
}
