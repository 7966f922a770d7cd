// Module GUID: new GUIDs as text.
#include "GUID.h"

#include "Frame.h"

static const char kModule[] = "GUID";

std::string WR_ESGETNEWGUID() {
    CSK_ROUTINE("WR_ESGETNEWGUID");
    GUID guid;
    if (CoCreateGuid(&guid) != S_OK) return std::string();
    OLECHAR buffer[100] = {};
    if (StringFromGUID2(guid, buffer, 100) <= 0) return std::string();
    // The registry form is ASCII: each unit is its own ANSI byte.
    std::string text;
    text.reserve(38);
    for (const OLECHAR* unit = buffer; *unit; ++unit) text += *unit < 0x80 ? static_cast<char>(*unit) : '?';
    return text;
}

CSK_EXPORT HRESULT WINAPI esGetNewGUID(BSTR* result) {
    return TextExport(kModule, "ESGETNEWGUID", result, [&] { return WR_ESGETNEWGUID(); });
}
