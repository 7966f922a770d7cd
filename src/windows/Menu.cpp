// Module Menu: a top-level menu item moved to the right edge of the menu bar,
// or back.
#include <memory>

#include "Frame.h"

static const char kModule[] = "Menu";

namespace {

const UINT kItemSize = 44;  // the record without its bitmap handle
const UINT kTypeOnly = 0x10, kWholeItem = 0x3F, kRightJustify = 0x4000;

}  // namespace

// The item is read whole, text included, and written back whole with only
// the one type bit changed, so that nothing else about it is lost.
CSK_EXPORT HRESULT WINAPI esSetMenuJustify(LONG window, LONG position, VARIANT_BOOL right, VARIANT_BOOL* done) {
    return ValueExport(kModule, "ESSETMENUJUSTIFY", done, [&] {
        *done = VARIANT_FALSE;
        HWND handle = HANDLEFROMLONG<HWND>(window);
        if (!IsWindow(handle)) return S_OK;
        HMENU menu = GetMenu(handle);
        if (!menu) return S_OK;
        const UINT item = static_cast<UINT>(position);
        MENUITEMINFOA info{};
        info.cbSize = kItemSize;
        info.fMask = kTypeOnly;
        if (!GetMenuItemInfoA(menu, item, TRUE, &info)) return S_OK;
        std::unique_ptr<char[]> text;
        if (info.cch > 0) {
            const UINT length = info.cch;
            info.cch = length + 10;
            text.reset(new (std::nothrow) char[length + 20]());
            if (!text) return S_OK;
            info.dwTypeData = text.get();
        }
        info.cbSize = kItemSize;
        info.fMask = kWholeItem;
        if (!GetMenuItemInfoA(menu, item, TRUE, &info)) return S_OK;
        info.cbSize = kItemSize;
        info.fMask = kWholeItem;
        if (FLAG(right)) info.fType |= kRightJustify;
        else info.fType &= ~kRightJustify;
        if (!SetMenuItemInfoA(menu, item, TRUE, &info)) return S_OK;
        DrawMenuBar(handle);
        *done = VARIANT_TRUE;
        return S_OK;
    });
}
