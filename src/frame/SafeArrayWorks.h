// Module SafeArrayWorks: the boundary for binary data. Bytes move between
// the library's byte array (lower bound 0) and the caller's SAFEARRAY of
// bytes, reached through the address of the caller's variable.
#pragma once

#include "Platform.h"

// Gives the caller the bytes: creates an array when the variable holds
// none, or resizes the caller's own (lower bound 0). Status 0, or
// E_INVALIDARG for a missing variable or an array that is not one
// dimension of bytes, E_OUTOFMEMORY when no array could be made, or the
// platform's failure code.
HRESULT ARRAYTOSAFEARRAY_BYTE(const ByteArray& bytes, SAFEARRAY** variable);

// The same, and when `given` is not null, -1 there for status 0 and 0 for
// any other.
HRESULT ARRAYTOSAFEARRAY_BYTE_RV(const ByteArray& bytes, SAFEARRAY** variable, VARIANT_BOOL* given);

// Takes the caller's bytes into `bytes` (bounds 0 to count - 1, whatever
// the caller's lower bound). E_INVALIDARG for a missing variable or array
// or one of the wrong shape, E_OUTOFMEMORY for an array of no elements.
// The caller's array is never freed here.
HRESULT SAFEARRAYTOARRAY_BYTE(SAFEARRAY** variable, ByteArray& bytes);
