// Module BoolToString: Booleans as text and back.
#include "BoolToString.h"

#include "Frame.h"

static const char kModule[] = "BoolToString";

uint8_t WR_ESSTRINGTOBOOL(std::string text) {
    CSK_ROUTINE("WR_ESSTRINGTOBOOL");
    static const char kBlanks[] = " \t\r\n";
    size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string::npos) return 0;
    size_t length = text.find_last_not_of(kBlanks) + 1 - first;
    // Upper-casing keeps the length, so only four or one characters can
    // match; no locale maps another byte to "1".
    if (length == 1) return text[first] == '1' ? 1 : 0;
    if (length != 4) return 0;
    static const char kTrue[] = "TRUE";
    for (size_t i = 0; i < 4; ++i)
        if (std::toupper(static_cast<unsigned char>(text[first + i])) != kTrue[i]) return 0;
    return 1;
}

std::string WR_ESBOOLTOSTRING(uint8_t value) {
    CSK_ROUTINE("WR_ESBOOLTOSTRING");
    return value ? "True" : "False";
}

CSK_EXPORT HRESULT WINAPI esStringToBool(BSTR text, VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESSTRINGTOBOOL", answer, [&] {
        *answer = VBBOOL(WR_ESSTRINGTOBOOL(BSTRTOSTRING(text)) != 0);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esBoolToString(VARIANT_BOOL value, BSTR* result) {
    return TextExport(kModule, "ESBOOLTOSTRING", result, [&] { return WR_ESBOOLTOSTRING(FLAG(value)); });
}
