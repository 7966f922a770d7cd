// The frame every export runs in. An export reads as: its tests, the
// conversion of its inputs, the worker call, the hand-back:
//
//   CSK_EXPORT HRESULT WINAPI esAddBackslash(BSTR path, BSTR* result) {
//       return TextExport(kModule, "ESADDBACKSLASH", result,
//                         [&] { return WR_ESADDBACKSLASH(BSTRTOSTRING(path)); });
//   }
//
// The out-pointer is tested first (status 1), then the export's own input
// tests run, then the work. Nothing thrown inside ever reaches the caller: a
// failed allocation ends the call with E_OUTOFMEMORY and the caller's
// variable as it was.
#pragma once

#include <new>

#include "Tools.h"

// Runs the work of an export; it gives back the status.
template <class Work>
HRESULT Shielded(Work&& work) noexcept {
    try {
        return work();
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

// Text answer, unguarded: null and empty inputs reach the worker as the
// empty string. The worker's empty answer leaves a null BSTR.
template <class Work>
HRESULT TextExport(const char* module, const char* routine, BSTR* result, Work&& work) noexcept {
    RoutineScope scope(module, routine);
    if (!result) return S_FALSE;
    return Shielded([&] {
        HANDBACK(result, work());
        return S_OK;
    });
}

// Text answer, guarded: a null or empty input is answered here with an
// empty, non-null BSTR, and the worker is not called.
template <class Work>
HRESULT GuardedTextExport(const char* module, const char* routine, BSTR* result, BSTR input,
                          Work&& work) noexcept {
    RoutineScope scope(module, routine);
    if (!result) return S_FALSE;
    if (ISEMPTYBSTR(input)) {
        HANDBACKEMPTY(result);
        return S_OK;
    }
    return Shielded([&] {
        HANDBACK(result, work());
        return S_OK;
    });
}

// Any other answer (Long, Integer, Byte, VARIANT_BOOL, Double, a record):
// the work tests its inputs, stores through the answer pointer itself and
// gives back the status.
template <class Answer, class Work>
HRESULT ValueExport(const char* module, const char* routine, Answer* answer, Work&& work) noexcept {
    RoutineScope scope(module, routine);
    if (!answer) return S_FALSE;
    return Shielded(work);
}
