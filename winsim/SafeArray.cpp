// SAFEARRAYs as OLEAUT32 lays them out: the descriptor, with the element
// type in the four bytes before it when the array was made with one, and
// the data in a block of its own. Only what the library and its tests use:
// creation, the shape queries, resizing the first dimension, and access.
#include <cstdlib>
#include <cstring>

#include "winsim.h"
#include "winsim_control.h"

namespace {

const USHORT kFadfCreateVector = 0x2000;  // descriptor and data in one block

size_t descriptorSize(UINT dims) { return sizeof(SAFEARRAY) + (dims - 1) * sizeof(SAFEARRAYBOUND); }

ULONG elementCount(const SAFEARRAY* array) {
    ULONG count = 1;
    for (USHORT i = 0; i < array->cDims; ++i) count *= array->rgsabound[i].cElements;
    return count;
}

// A descriptor of dims dimensions, zero-filled, with room for a type tag
// in front; the tag is written only when type is not 0.
SAFEARRAY* newDescriptor(UINT dims, VARTYPE type) {
    auto* block = static_cast<unsigned char*>(std::calloc(1, 16 + descriptorSize(dims)));
    if (!block) return nullptr;
    auto* array = reinterpret_cast<SAFEARRAY*>(block + 16);
    array->cDims = static_cast<USHORT>(dims);
    if (type) {
        DWORD tag = type;
        std::memcpy(block + 12, &tag, sizeof tag);
        array->fFeatures |= FADF_HAVEVARTYPE;
    }
    return array;
}

void freeDescriptor(SAFEARRAY* array) { std::free(reinterpret_cast<unsigned char*>(array) - 16); }

}  // namespace

extern "C" {

HRESULT WINAPI SafeArrayAllocDescriptor(UINT dims, SAFEARRAY** out) {
    if (!out || dims == 0 || dims > 65535) return E_INVALIDARG;
    *out = newDescriptor(dims, 0);
    return *out ? S_OK : E_OUTOFMEMORY;
}

HRESULT WINAPI SafeArrayAllocData(SAFEARRAY* array) {
    if (!array) return E_INVALIDARG;
    size_t bytes = static_cast<size_t>(elementCount(array)) * array->cbElements;
    array->pvData = std::calloc(1, bytes ? bytes : 1);
    return array->pvData ? S_OK : E_OUTOFMEMORY;
}

SAFEARRAY* WINAPI SafeArrayCreate(VARTYPE type, UINT dims, SAFEARRAYBOUND* bounds) {
    if (winsim::refuse("SafeArrayCreate")) return nullptr;
    if (!bounds || dims == 0) return nullptr;
    ULONG size = type == VT_UI1 ? 1 : type == VT_I4 ? 4 : 0;
    if (!size) return nullptr;  // the stand-in knows bytes and Longs
    SAFEARRAY* array = newDescriptor(dims, type);
    if (!array) return nullptr;
    array->cbElements = size;
    // The platform keeps the bounds in reverse order of the dimensions.
    for (UINT i = 0; i < dims; ++i) array->rgsabound[dims - 1 - i] = bounds[i];
    if (SafeArrayAllocData(array) != S_OK) {
        freeDescriptor(array);
        return nullptr;
    }
    return array;
}

SAFEARRAY* WINAPI SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements) {
    SAFEARRAYBOUND bound = {elements, lowerBound};
    return SafeArrayCreate(type, 1, &bound);
}

HRESULT WINAPI SafeArrayDestroy(SAFEARRAY* array) {
    if (!array) return S_OK;
    if (array->cLocks) return DISP_E_ARRAYISLOCKED;
    if (!(array->fFeatures & kFadfCreateVector)) std::free(array->pvData);
    freeDescriptor(array);
    return S_OK;
}

HRESULT WINAPI SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
    if (!array || !type) return E_INVALIDARG;
    if (!(array->fFeatures & FADF_HAVEVARTYPE)) return E_INVALIDARG;
    DWORD tag;
    std::memcpy(&tag, reinterpret_cast<unsigned char*>(array) - 4, sizeof tag);
    *type = static_cast<VARTYPE>(tag);
    return S_OK;
}

UINT WINAPI SafeArrayGetElemsize(SAFEARRAY* array) { return array ? array->cbElements : 0; }

UINT WINAPI SafeArrayGetDim(SAFEARRAY* array) { return array ? array->cDims : 0; }

// Dimension 1 is the first one the caller named: the last in the record.
HRESULT WINAPI SafeArrayGetLBound(SAFEARRAY* array, UINT dim, LONG* bound) {
    if (!array || !bound) return E_INVALIDARG;
    if (dim < 1 || dim > array->cDims) return (HRESULT)0x8002000BL;  // DISP_E_BADINDEX
    *bound = array->rgsabound[array->cDims - dim].lLbound;
    return S_OK;
}

HRESULT WINAPI SafeArrayGetUBound(SAFEARRAY* array, UINT dim, LONG* bound) {
    if (!array || !bound) return E_INVALIDARG;
    if (dim < 1 || dim > array->cDims) return (HRESULT)0x8002000BL;
    const SAFEARRAYBOUND& b = array->rgsabound[array->cDims - dim];
    *bound = b.lLbound + static_cast<LONG>(b.cElements) - 1;
    return S_OK;
}

// Resizes the last dimension the caller named, keeping what fits.
HRESULT WINAPI SafeArrayRedim(SAFEARRAY* array, SAFEARRAYBOUND* bound) {
    if (winsim::refuse("SafeArrayRedim")) return E_OUTOFMEMORY;
    if (!array || !bound) return E_INVALIDARG;
    if (array->cLocks) return DISP_E_ARRAYISLOCKED;
    size_t oldBytes = static_cast<size_t>(elementCount(array)) * array->cbElements;
    SAFEARRAYBOUND saved = array->rgsabound[0];
    array->rgsabound[0] = *bound;
    size_t newBytes = static_cast<size_t>(elementCount(array)) * array->cbElements;
    void* data = std::calloc(1, newBytes ? newBytes : 1);
    if (!data) {
        array->rgsabound[0] = saved;
        return E_OUTOFMEMORY;
    }
    if (array->pvData) std::memcpy(data, array->pvData, oldBytes < newBytes ? oldBytes : newBytes);
    if (!(array->fFeatures & kFadfCreateVector)) std::free(array->pvData);
    array->fFeatures &= static_cast<USHORT>(~kFadfCreateVector);
    array->pvData = data;
    return S_OK;
}

HRESULT WINAPI SafeArrayAccessData(SAFEARRAY* array, void** data) {
    if (winsim::refuse("SafeArrayAccessData")) return E_UNEXPECTED;
    if (!array || !data) return E_INVALIDARG;
    ++array->cLocks;
    *data = array->pvData;
    return S_OK;
}

HRESULT WINAPI SafeArrayUnaccessData(SAFEARRAY* array) {
    if (winsim::refuse("SafeArrayUnaccessData")) return E_UNEXPECTED;
    if (!array) return E_INVALIDARG;
    if (array->cLocks == 0) return E_UNEXPECTED;
    --array->cLocks;
    return S_OK;
}

}  // extern "C"
