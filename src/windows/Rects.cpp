// Module Rects: RECT and NewRect.
#include "Rects.h"

#include <utility>

#include "Tools.h"

static const char kModule[] = "Rects";

namespace {

// 32-bit sums and differences wrap, as the caller's Long arithmetic does in
// the machine.
LONG Plus(LONG a, LONG b) { return static_cast<LONG>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b)); }
LONG Minus(LONG a, LONG b) { return static_cast<LONG>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b)); }

}  // namespace

void WR_ESNORMALIZERECT(RECT* rect) {
    CSK_ROUTINE("WR_ESNORMALIZERECT");
    if (rect->right < rect->left) std::swap(rect->left, rect->right);
    if (rect->bottom < rect->top) std::swap(rect->top, rect->bottom);
}

void WR_ESRECTTONEWRECT(RECT* source, NewRect* target) {
    CSK_ROUTINE("WR_ESRECTTONEWRECT");
    WR_ESNORMALIZERECT(source);
    target->left = source->left;
    target->top = source->top;
    target->width = Minus(source->right, source->left);
    target->height = Minus(source->bottom, source->top);
}

void WR_ESNEWRECTTORECT(const NewRect* source, RECT* target) {
    CSK_ROUTINE("WR_ESNEWRECTTORECT");
    target->left = source->left;
    target->top = source->top;
    target->right = Plus(source->left, source->width);
    target->bottom = Plus(source->top, source->height);
}

// A null record is invalid input here, not a missing answer.
CSK_EXPORT HRESULT WINAPI esNormalizeRect(RECT* rect) {
    CSK_ROUTINE("ESNORMALIZERECT");
    if (!rect) return E_INVALIDARG;
    WR_ESNORMALIZERECT(rect);
    return S_OK;
}

CSK_EXPORT HRESULT WINAPI esRectToNewRect(RECT* source, NewRect* target) {
    CSK_ROUTINE("ESRECTTONEWRECT");
    if (!source || !target) return E_INVALIDARG;
    WR_ESRECTTONEWRECT(source, target);
    return S_OK;
}

CSK_EXPORT HRESULT WINAPI esNewRectToRect(NewRect* source, RECT* target) {
    CSK_ROUTINE("ESNEWRECTTORECT");
    if (!source || !target) return E_INVALIDARG;
    WR_ESNEWRECTTORECT(source, target);
    return S_OK;
}
