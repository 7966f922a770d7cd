// Module SafeArrayWorks: byte arrays to and from the caller's SAFEARRAYs.
#include "SafeArrayWorks.h"

#include <cstring>
#include <new>

#include "Tools.h"

static const char kModule[] = "SafeArrayWorks";

// One dimension of bytes: the recorded type must be VT_UI1; an array with
// no type recorded passes on an element size of 1.
static HRESULT testByteArray(SAFEARRAY* array) {
    VARTYPE type = 0;
    if (SafeArrayGetVartype(array, &type) == S_OK) {
        if (type != VT_UI1) return E_INVALIDARG;
    } else if (SafeArrayGetElemsize(array) != 1) {
        return E_INVALIDARG;
    }
    if (SafeArrayGetDim(array) != 1) return E_INVALIDARG;
    return S_OK;
}

// Copies between the array's data and memory, inside one access.
static HRESULT copyWithData(SAFEARRAY* array, void* to, const void* from, size_t count, bool intoArray) {
    void* data = nullptr;
    HRESULT status = SafeArrayAccessData(array, &data);
    if (status != S_OK) return status;
    if (count) {
        CSK_CHECK(data != nullptr, kErrorNullPointer);
        if (intoArray) std::memcpy(data, from, count);
        else std::memcpy(to, data, count);
    }
    return SafeArrayUnaccessData(array);
}

HRESULT ARRAYTOSAFEARRAY_BYTE(const ByteArray& bytes, SAFEARRAY** variable) {
    CSK_ROUTINE("ARRAYTOSAFEARRAY_BYTE");
    if (!variable) return E_INVALIDARG;
    SAFEARRAY* array = *variable;
    if (array) {
        HRESULT shape = testByteArray(array);
        if (shape != S_OK) return shape;
    }
    SAFEARRAYBOUND bound = {static_cast<ULONG>(bytes.size()), 0};
    bool created = false;
    if (!array) {
        array = SafeArrayCreate(VT_UI1, 1, &bound);
        if (!array) return E_OUTOFMEMORY;
        created = true;
    } else {
        HRESULT status = SafeArrayRedim(array, &bound);
        if (status != S_OK) return status;
    }
    HRESULT status = copyWithData(array, nullptr, bytes.data(), bytes.size(), true);
    if (status != S_OK) {
        // The caller's variable stays as it was; an array made here goes.
        if (created) SafeArrayDestroy(array);
        return status;
    }
    *variable = array;
    return S_OK;
}

HRESULT ARRAYTOSAFEARRAY_BYTE_RV(const ByteArray& bytes, SAFEARRAY** variable, VARIANT_BOOL* given) {
    CSK_ROUTINE("ARRAYTOSAFEARRAY_BYTE_RV");
    HRESULT status = ARRAYTOSAFEARRAY_BYTE(bytes, variable);
    if (given) *given = VBBOOL(status == S_OK);
    return status;
}

HRESULT SAFEARRAYTOARRAY_BYTE(SAFEARRAY** variable, ByteArray& bytes) {
    CSK_ROUTINE("SAFEARRAYTOARRAY_BYTE");
    if (!variable || !*variable) return E_INVALIDARG;
    SAFEARRAY* array = *variable;
    HRESULT shape = testByteArray(array);
    if (shape != S_OK) return shape;
    ULONG count = array->rgsabound[0].cElements;
    ByteArray().swap(bytes);
    if (count == 0) return E_OUTOFMEMORY;
    try {
        bytes.resize(count);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
    return copyWithData(array, bytes.data(), nullptr, count, false);
}
