// Module MessageBoxes: a task-modal message box that can show an icon from
// the program's resources, captioned by the program's main window unless
// the caller names a caption, with the caller's own UTF-16 text wherever the
// host has the wide call.
#include "Frame.h"
#include "Misc.h"
#include "ThunderRTMainFunctions.h"
#include "Widen.h"

static const char kModule[] = "MessageBoxes";

namespace {

const UINT kTaskModal = 0x2000, kIconMask = 0xF0, kUserIcon = 0x80;

}  // namespace

CSK_EXPORT HRESULT WINAPI esMsgBoxEx(BSTR prompt, LONG style, BSTR title, BSTR icon, LONG module, LONG* result) {
    return ValueExport(kModule, "ESMSGBOXEX", result, [&] {
        const std::string givenTitle = BSTRTOSTRING(title);
        std::string defaultTitle;
        if (givenTitle.empty()) defaultTitle = WR_ESGETTHUNDERMAINTITLE();
        HINSTANCE instance = module ? HANDLEFROMLONG<HINSTANCE>(module) : GetModuleHandleA(nullptr);
        UINT boxStyle = static_cast<UINT>(style) | kTaskModal;
        const std::string iconName = BSTRTOSTRING(icon);
        if (!iconName.empty()) {
            // The four standard icons sound their own beep; a resource icon
            // would otherwise be shown in silence.
            const UINT bits = boxStyle & kIconMask;
            if (bits == 0x10 || bits == 0x20 || bits == 0x30 || bits == 0x40) MessageBeep(bits);
            boxStyle = (boxStyle & 0xFFFFFF0Fu) | kUserIcon;
        }
        if (WR_ESISUNICODEAVAILABLE()) {
            MSGBOXPARAMSW params{};
            params.cbSize = 40;
            params.hwndOwner = GetActiveWindow();
            params.hInstance = instance;
            params.lpszText = prompt;
            params.dwStyle = boxStyle;
            params.lpszIcon = icon;
            std::vector<WCHAR> caption;
            if (defaultTitle.empty()) {
                params.lpszCaption = title;
            } else {
                caption = WIDENTOBUFFER(defaultTitle, defaultTitle.size() + 10);
                params.lpszCaption = caption.data();
            }
            *result = MessageBoxIndirectW(&params);
            return S_OK;
        }
        const std::string text = BSTRTOSTRING(prompt);
        MSGBOXPARAMSA params{};
        params.cbSize = 40;
        params.hwndOwner = GetActiveWindow();
        params.hInstance = instance;
        params.lpszText = text.c_str();
        params.lpszCaption = TextBuffer::Argument(defaultTitle.empty() ? givenTitle : defaultTitle);
        params.dwStyle = boxStyle;
        params.lpszIcon = TextBuffer::Argument(iconName);
        *result = MessageBoxIndirectA(&params);
        return S_OK;
    });
}

// The information style and the named icon, always under the default
// caption: the second argument names an icon, not a caption.
CSK_EXPORT HRESULT WINAPI esMsgBox(BSTR prompt, BSTR icon, LONG* result) {
    return esMsgBoxEx(prompt, 0x40, nullptr, icon, 0, result);
}

CSK_EXPORT HRESULT WINAPI esMsgBox2(BSTR prompt, LONG style, BSTR title, LONG* result) {
    return esMsgBoxEx(prompt, style, title, nullptr, 0, result);
}
