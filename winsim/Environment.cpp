// The process environment as the platform keeps it: names compared without
// regard to case, values that may be empty. Seeded from the real
// environment at first use, and changed only through SetEnvironmentVariableA.
#include <cctype>
#include <cstring>
#include <map>
#include <string>

#include "winsim.h"
#include "winsim_control.h"

extern char** environ;

namespace {

struct NoCase {
    bool operator()(const std::string& a, const std::string& b) const {
        return strcasecmp(a.c_str(), b.c_str()) < 0;
    }
};

std::map<std::string, std::string, NoCase>& variables() {
    static std::map<std::string, std::string, NoCase> table = [] {
        std::map<std::string, std::string, NoCase> seeded;
        for (char** entry = environ; entry && *entry; ++entry) {
            const char* equals = std::strchr(*entry, '=');
            if (equals) seeded[std::string(static_cast<const char*>(*entry), equals)] = equals + 1;
        }
        return seeded;
    }();
    return table;
}

DWORD lastError = 0;

}  // namespace

extern "C" {

DWORD WINAPI GetLastError(void) { return lastError; }
void WINAPI SetLastError(DWORD code) { lastError = code; }

DWORD WINAPI GetEnvironmentVariableA(LPCSTR name, LPSTR buffer, DWORD size) {
    if (winsim::refuse("GetEnvironmentVariableA") || !name) return 0;
    auto it = variables().find(name);
    if (it == variables().end()) {
        SetLastError(203);  // ERROR_ENVVAR_NOT_FOUND
        return 0;
    }
    const std::string& value = it->second;
    if (!buffer || size <= value.size()) return static_cast<DWORD>(value.size() + 1);
    std::memcpy(buffer, value.c_str(), value.size() + 1);
    return static_cast<DWORD>(value.size());
}

BOOL WINAPI SetEnvironmentVariableA(LPCSTR name, LPCSTR value) {
    if (!name || !*name) return FALSE;
    if (value) variables()[name] = value;
    else variables().erase(name);
    return TRUE;
}

// %NAME% is replaced where NAME is set; anything else stays as it is. The
// answer counts the whole expansion with its terminator, also when only
// part of it fitted.
DWORD WINAPI ExpandEnvironmentStringsA(LPCSTR source, LPSTR destination, DWORD size) {
    if (winsim::refuse("ExpandEnvironmentStringsA")) return 0;
    std::string text = source ? source : "";
    std::string out;
    for (size_t i = 0; i < text.size();) {
        size_t close = text[i] == '%' ? text.find('%', i + 1) : std::string::npos;
        if (close != std::string::npos && close > i + 1) {
            auto it = variables().find(text.substr(i + 1, close - i - 1));
            if (it != variables().end()) {
                out += it->second;
                i = close + 1;
                continue;
            }
            out.append(text, i, close - i);
            i = close;
            continue;
        }
        out += text[i++];
    }
    if (destination && size > 0) {
        size_t copied = out.size() < size ? out.size() : size - 1;
        std::memcpy(destination, out.data(), copied);
        destination[copied] = 0;
    }
    return static_cast<DWORD>(out.size() + 1);
}

}  // extern "C"
