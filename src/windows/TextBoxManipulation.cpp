// Module TextBoxManipulation: the selection and caret of an edit control,
// and text added at its end, through 8-bit messages.
#include "Frame.h"

static const char kModule[] = "TextBoxManipulation";

namespace {

const UINT kSetSelection = 0xB1, kScrollCaret = 0xB7, kReplaceSelection = 0xC2;
const char kLineBreak[] = "\r\n";

void Select(HWND box, int from, int to) {
    SendMessageA(box, kSetSelection, static_cast<WPARAM>(from), static_cast<LPARAM>(to));
}

void Replace(HWND box, const std::string& text) {
    SendMessageA(box, kReplaceSelection, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void ScrollCaret(HWND box) { SendMessageA(box, kScrollCaret, 0, 0); }

// The frame the six share: 1 for a handle that is no window, else the work.
template <class Work>
HRESULT OnEdit(const char* routine, LONG window, Work&& work) {
    RoutineScope scope(kModule, routine);
    HWND box = HANDLEFROMLONG<HWND>(window);
    if (!IsWindow(box)) return S_FALSE;
    return Shielded([&] {
        work(box);
        return S_OK;
    });
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esTextBox_SelectAll(LONG window) {
    return OnEdit("ESTEXTBOX_SELECTALL", window, [](HWND box) {
        Select(box, 0, GetWindowTextLengthA(box));
        ScrollCaret(box);
    });
}

CSK_EXPORT HRESULT WINAPI esTextBox_SelectStart(LONG window) {
    return OnEdit("ESTEXTBOX_SELECTSTART", window, [](HWND box) {
        Select(box, 0, 0);
        ScrollCaret(box);
    });
}

CSK_EXPORT HRESULT WINAPI esTextBox_SelectEnd(LONG window) {
    return OnEdit("ESTEXTBOX_SELECTEND", window, [](HWND box) {
        const int end = GetWindowTextLengthA(box);
        Select(box, end, end);
        ScrollCaret(box);
    });
}

CSK_EXPORT HRESULT WINAPI esTextBox_AddText(LONG window, BSTR text) {
    return OnEdit("ESTEXTBOX_ADDTEXT", window, [&](HWND box) {
        const int end = GetWindowTextLengthA(box);
        Select(box, end, end);
        Replace(box, BSTRTOSTRING(text));
        ScrollCaret(box);
    });
}

CSK_EXPORT HRESULT WINAPI esTextBox_AddLine(LONG window, BSTR text) {
    return OnEdit("ESTEXTBOX_ADDLINE", window, [&](HWND box) {
        const int end = GetWindowTextLengthA(box);
        Select(box, end, end);
        Replace(box, BSTRTOSTRING(text) + kLineBreak);
        ScrollCaret(box);
    });
}

// A break goes before the text only when the control does not already end
// in one; an empty control counts as ending in one.
CSK_EXPORT HRESULT WINAPI esTextBox_AddLine2(LONG window, BSTR text) {
    return OnEdit("ESTEXTBOX_ADDLINE2", window, [&](HWND box) {
        const int length = GetWindowTextLengthA(box);
        std::string current(static_cast<size_t>(length < 0 ? 0 : length) + 20, '\0');
        if (GetWindowTextA(box, &current[0], length + 10) >= 1) TRIMNULLBUFFER(current);
        else current = kLineBreak;
        Select(box, length, length);
        const std::string line = BSTRTOSTRING(text);
        Replace(box, Right(current, 2) == kLineBreak ? line : kLineBreak + line);
        ScrollCaret(box);
    });
}
