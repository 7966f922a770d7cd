// Module Autocomplete: the shell's auto-completion for an edit field.
#include "FunctionsSupport.h"
#include "Frame.h"

static const char kModule[] = "Autocomplete";

// A window that holds an edit field (a combo box) hands the call to its
// first one; flags go to the shell unchanged.
CSK_EXPORT HRESULT WINAPI esAddAutoComplete(LONG window, LONG flags, VARIANT_BOOL* done) {
    return ValueExport(kModule, "ESADDAUTOCOMPLETE", done, [&] {
        HWND handle = HANDLEFROMLONG<HWND>(window);
        HWND field = FindWindowExA(handle, nullptr, "EDIT", nullptr);
        const HRESULT result = __SHAUTOCOMPLETE(field ? field : handle, static_cast<DWORD>(flags));
        *done = VBBOOL(!g_missingEntry && result == S_OK);
        return S_OK;
    });
}
