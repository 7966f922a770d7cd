// Module ComboBoxAndString: a combo box's items as one text, an item to a
// line, and the items rebuilt from such a text. The control is spoken to
// in 8-bit text only.
#include "Frame.h"
#include "VBStringFunctions.h"

static const char kModule[] = "ComboBoxAndString";

namespace {

const UINT kAddString = 0x143, kGetCount = 0x146, kGetText = 0x148, kGetTextLength = 0x149, kReset = 0x14B,
           kSetSelection = 0x14E;
const char kLineBreak[] = "\r\n";

// Spaces and tabs off both ends, nothing else.
std::string TRIMITEM(const std::string& text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return std::string();
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string GETCOMBOBOXITEMTEXT(HWND box, LONG index) {
    CSK_ROUTINE("GETCOMBOBOXITEMTEXT");
    const LRESULT length = SendMessageA(box, kGetTextLength, static_cast<WPARAM>(index), 0);
    if (length == -1 || length == 0) return std::string();
    std::string buffer(static_cast<size_t>(length) + 10, '\0');
    if (SendMessageA(box, kGetText, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&buffer[0])) == -1)
        return std::string();
    return TRIMNULLBUFFER(buffer);
}

}  // namespace

// One pass, appending to one text: the separator stands between items only.
CSK_EXPORT HRESULT WINAPI esComboBoxToString(LONG window, VARIANT_BOOL trim, BSTR* result) {
    return ValueExport(kModule, "ESCOMBOBOXTOSTRING", result, [&] {
        HWND box = HANDLEFROMLONG<HWND>(window);
        if (!IsWindow(box)) {
            HANDBACKEMPTY(result);
            return S_OK;
        }
        const LONG count = static_cast<LONG>(SendMessageA(box, kGetCount, 0, 0));
        std::string text;
        for (LONG index = 0; index < count; ++index) {
            const std::string item = GETCOMBOBOXITEMTEXT(box, index);
            text += FLAG(trim) ? TRIMITEM(item) : item;
            if (index < count - 1) text += kLineBreak;
        }
        HANDBACK(result, text);
        return S_OK;
    });
}

// An empty text empties the list and reports 1; otherwise each line is an
// item, empty lines included, and the first is selected.
CSK_EXPORT HRESULT WINAPI esComboBoxFromString(BSTR text, LONG window, VARIANT_BOOL trim) {
    CSK_ROUTINE("ESCOMBOBOXFROMSTRING");
    HWND box = HANDLEFROMLONG<HWND>(window);
    if (!IsWindow(box)) return S_FALSE;
    return Shielded([&] {
        SendMessageA(box, kReset, 0, 0);
        const std::string lines = BSTRTOSTRING(text);
        if (lines.empty()) return S_FALSE;
        StringArray items;
        SPLIT(lines, kLineBreak, items);
        for (const std::string& item : items) {
            const std::string added = FLAG(trim) ? TRIMITEM(item) : item;
            SendMessageA(box, kAddString, 0, reinterpret_cast<LPARAM>(added.c_str()));
        }
        if (SendMessageA(box, kGetCount, 0, 0) > 0) SendMessageA(box, kSetSelection, 0, 0);
        return S_OK;
    });
}
