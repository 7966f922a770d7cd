// Module BoolToString: Booleans as text and back.
#include "BoolToString.h"

#include "Frame.h"

static const char kModule[] = "BoolToString";

uint8_t WR_ESSTRINGTOBOOL(std::string text) {
    CSK_ROUTINE("WR_ESSTRINGTOBOOL");
    static const char kBlanks[] = " \t\r\n";
    size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string::npos) return 0;
    text.erase(text.find_last_not_of(kBlanks) + 1);
    text.erase(0, first);
    text = UCase(std::move(text));
    return text == "TRUE" || text == "1" ? 1 : 0;
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
