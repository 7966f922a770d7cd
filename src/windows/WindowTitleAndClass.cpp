// Module WindowTitleAndClass: a window's text and its class name, in UTF-16
// where the host has the wide calls, else through the 8-bit code page.
#include "Frame.h"
#include "Misc.h"
#include "Widen.h"

static const char kModule[] = "WindowTitleAndClass";

namespace {

// The caller's variable when the answer is no text: empty, not null.
HRESULT Empty(BSTR* result) {
    HANDBACKEMPTY(result);
    return S_OK;
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esGetWindowText(LONG window, BSTR* result) {
    return ValueExport(kModule, "ESGETWINDOWTEXT", result, [&] {
        HWND handle = HANDLEFROMLONG<HWND>(window);
        if (!IsWindow(handle)) return Empty(result);
        if (WR_ESISUNICODEAVAILABLE()) {
            const int length = GetWindowTextLengthW(handle);
            std::vector<WCHAR> buffer(static_cast<size_t>(length < 0 ? 0 : length) + 20, 0);
            if (GetWindowTextW(handle, buffer.data(), length + 10) < 1) return Empty(result);
            SysReAllocString(result, buffer.data());
            return S_OK;
        }
        const int length = GetWindowTextLengthA(handle);
        std::string buffer(static_cast<size_t>(length < 0 ? 0 : length) + 20, '\0');
        if (GetWindowTextA(handle, &buffer[0], length + 10) < 1) return Empty(result);
        HANDBACK(result, TRIMNULLBUFFER(buffer));
        return S_OK;
    });
}

// The library has no 8-bit call for a title: without Unicode the text goes
// through the code page and reaches the wide call all the same.
CSK_EXPORT HRESULT WINAPI esSetWindowText(LONG window, BSTR text) {
    CSK_ROUTINE("ESSETWINDOWTEXT");
    HWND handle = HANDLEFROMLONG<HWND>(window);
    if (!IsWindow(handle)) return S_FALSE;
    return Shielded([&] {
        if (WR_ESISUNICODEAVAILABLE()) {
            SetWindowTextW(handle, text);
        } else {
            const std::string narrow = BSTRTOSTRING(text);
            SetWindowTextW(handle, WIDENTOBUFFER(narrow, narrow.size() + 10).data());
        }
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esGetWindowClassName(LONG window, BSTR* result) {
    return ValueExport(kModule, "ESGETWINDOWCLASSNAME", result, [&] {
        HWND handle = HANDLEFROMLONG<HWND>(window);
        if (!IsWindow(handle)) return Empty(result);
        if (WR_ESISUNICODEAVAILABLE()) {
            WCHAR buffer[1026] = {0};
            GetClassNameW(handle, buffer, 1024);
            SysReAllocString(result, buffer);
            return S_OK;
        }
        char buffer[1026] = {0};
        GetClassNameA(handle, buffer, 1024);
        HANDBACK(result, buffer);
        return S_OK;
    });
}
