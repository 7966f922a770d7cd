// Module Rects: the two forms of a rectangle, edges (RECT) and size
// (NewRect), and the conversions between them.
#pragma once

#include "Platform.h"

// left, top, width, height: 16 bytes, as the caller declares it.
struct NewRect {
    LONG left, top, width, height;
};

// Swaps the edges that stand the wrong way round (signed comparisons).
void WR_ESNORMALIZERECT(RECT* rect);
// Normalises source in place first.
void WR_ESRECTTONEWRECT(RECT* source, NewRect* target);
// No normalising: a negative size gives a reversed RECT.
void WR_ESNEWRECTTORECT(const NewRect* source, RECT* target);
