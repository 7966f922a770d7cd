// Menu bars: items by position with their type, state, id, submenu, check
// bitmaps, data and text, read and written through MENUITEMINFOA as the
// platform does, in the record's 44-byte form or its full 48-byte one.
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "DesktopState.h"
#include "winsim.h"
#include "winsim_control.h"

namespace winsim {
uintptr_t newHandle();  // Control.cpp
}  // namespace winsim

namespace {

struct Item {
    UINT type = MFT_STRING, state = 0, id = 0;
    HMENU subMenu = nullptr;
    HBITMAP checked = nullptr, unchecked = nullptr;
    ULONG_PTR data = 0;
    std::string text;
};

std::map<HMENU, std::vector<Item>>& menus() {
    static std::map<HMENU, std::vector<Item>> state;
    return state;
}

Item* itemAt(HMENU menu, UINT position, BOOL byPosition) {
    auto it = menus().find(menu);
    if (it == menus().end() || !byPosition || position >= it->second.size()) return nullptr;
    return &it->second[position];
}

// The sizes the platform takes: 44 without hbmpItem, and the whole record
// (48 in the 32-bit product; here the width of the stand-in's record).
bool sizeAccepted(UINT size) { return size == 44 || size == sizeof(MENUITEMINFOA); }

std::string describe(const MENUITEMINFOA* info) {
    return std::to_string(info->cbSize) + "/" + std::to_string(info->fMask);
}

}  // namespace

namespace winsim {

void resetMenus() { menus().clear(); }

HMENU setMenuBar(HWND window, const char* const* texts, int count) {
    HMENU menu = reinterpret_cast<HMENU>(newHandle());
    std::vector<Item>& items = menus()[menu];
    for (int i = 0; i < count; ++i) {
        Item item;
        item.id = 100 + static_cast<UINT>(i);
        if (std::strcmp(texts[i], "-") == 0) item.type = MFT_SEPARATOR;
        else item.text = texts[i];
        items.push_back(item);
    }
    if (Window* found = findWindow(window)) found->menu = menu;
    return menu;
}

}  // namespace winsim

extern "C" {

HMENU WINAPI GetMenu(HWND window) {
    winsim::refuse("GetMenu");
    winsim::Window* found = winsim::findWindow(window);
    return found ? found->menu : nullptr;
}

// MIIM_TYPE gives the length in cch when there is no buffer (or cch is 0),
// else copies what fits and gives the length copied.
BOOL WINAPI GetMenuItemInfoA(HMENU menu, UINT position, BOOL byPosition, MENUITEMINFOA* info) {
    winsim::refuse("GetMenuItemInfoA");
    winsim::record("GetMenuItemInfoA", describe(info));
    Item* item = itemAt(menu, position, byPosition);
    if (!item || !sizeAccepted(info->cbSize)) return FALSE;
    if (info->fMask & MIIM_STATE) info->fState = item->state;
    if (info->fMask & MIIM_ID) info->wID = item->id;
    if (info->fMask & MIIM_SUBMENU) info->hSubMenu = item->subMenu;
    if (info->fMask & MIIM_CHECKMARKS) info->hbmpChecked = item->checked, info->hbmpUnchecked = item->unchecked;
    if (info->fMask & MIIM_DATA) info->dwItemData = item->data;
    if (info->fMask & MIIM_TYPE) {
        info->fType = item->type;
        if (item->type & MFT_SEPARATOR) {
            info->cch = 0;
        } else if (!info->dwTypeData || info->cch == 0) {
            info->cch = static_cast<UINT>(item->text.size());
        } else {
            const size_t length = std::min<size_t>(item->text.size(), info->cch - 1);
            std::memcpy(info->dwTypeData, item->text.data(), length);
            info->dwTypeData[length] = 0;
            info->cch = static_cast<UINT>(length);
        }
    }
    return TRUE;
}

BOOL WINAPI SetMenuItemInfoA(HMENU menu, UINT position, BOOL byPosition, const MENUITEMINFOA* info) {
    winsim::refuse("SetMenuItemInfoA");
    winsim::record("SetMenuItemInfoA", describe(info));
    Item* item = itemAt(menu, position, byPosition);
    if (!item || !sizeAccepted(info->cbSize)) return FALSE;
    if (info->fMask & MIIM_STATE) item->state = info->fState;
    if (info->fMask & MIIM_ID) item->id = info->wID;
    if (info->fMask & MIIM_SUBMENU) item->subMenu = info->hSubMenu;
    if (info->fMask & MIIM_CHECKMARKS) item->checked = info->hbmpChecked, item->unchecked = info->hbmpUnchecked;
    if (info->fMask & MIIM_DATA) item->data = info->dwItemData;
    if (info->fMask & MIIM_TYPE) {
        item->type = info->fType;
        item->text = (item->type & MFT_SEPARATOR) || !info->dwTypeData ? "" : info->dwTypeData;
    }
    return TRUE;
}

BOOL WINAPI DrawMenuBar(HWND window) {
    winsim::refuse("DrawMenuBar");
    return winsim::findWindow(window) != nullptr;
}

}  // extern "C"
