// The exports as a Visual Basic program declares them: by plain name, with
// the argument list the caller pushes. Written apart from the library's
// sources on purpose, so that a mismatch between the two fails a test.
#pragma once

#include "Harness.h"

namespace vb {

// Path building
inline const VbFunction<HRESULT, BSTR, BSTR*> esAddBackslash{"esAddBackslash"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esRemoveBackslash{"esRemoveBackslash"};
inline const VbFunction<HRESULT, BSTR, BSTR, VARIANT_BOOL, BSTR*> esBuildFileName{"esBuildFileName"};
inline const VbFunction<HRESULT, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR*> esBuildFileName2{
    "esBuildFileName2"};

// Dates
inline const VbFunction<HRESULT, SYSTEMTIME*, SYSTEMTIME*, LONG*> esCompareSystemTime{"esCompareSystemTime"};
inline const VbFunction<HRESULT, SYSTEMTIME*, SYSTEMTIME*, LONG*> esCompareSystemTimeEx{"esCompareSystemTimeEx"};
inline const VbFunction<HRESULT, SYSTEMTIME*, LONG*> esGetDayNumEx{"esGetDayNumEx"};
inline const VbFunction<HRESULT, double, LONG*> esGetDayNumEx2{"esGetDayNumEx2"};
inline const VbFunction<HRESULT, LONG*> esGetDayNum{"esGetDayNum"};
inline const VbFunction<HRESULT, SYSTEMTIME*, SYSTEMTIME*, VARIANT_BOOL*> esSystemTimeToLocalSystemTime{
    "esSystemTimeToLocalSystemTime"};
inline const VbFunction<HRESULT, SYSTEMTIME*, SYSTEMTIME*, VARIANT_BOOL*> esLocalSystemTimeToSystemTime{
    "esLocalSystemTimeToSystemTime"};
inline const VbFunction<HRESULT, double, double*, VARIANT_BOOL*> esSystemTimeToLocalTime{"esSystemTimeToLocalTime"};
inline const VbFunction<HRESULT, double, double*, VARIANT_BOOL*> esLocalTimeToSystemTime{"esLocalTimeToSystemTime"};
inline const VbFunction<HRESULT, double*> esSysNow{"esSysNow"};

// Date, time and Roman formats
inline const VbFunction<HRESULT, SYSTEMTIME*, VARIANT_BOOL, VARIANT_BOOL, BSTR*> esFormatDate{"esFormatDate"};
inline const VbFunction<HRESULT, SYSTEMTIME*, VARIANT_BOOL, VARIANT_BOOL, BSTR*> esFormatTime{"esFormatTime"};
inline const VbFunction<HRESULT, double, VARIANT_BOOL, VARIANT_BOOL, BSTR*> esFormatDate2{"esFormatDate2"};
inline const VbFunction<HRESULT, double, VARIANT_BOOL, VARIANT_BOOL, BSTR*> esFormatTime2{"esFormatTime2"};
inline const VbFunction<HRESULT, LONG, BSTR*> esFormatRoman{"esFormatRoman"};

}  // namespace vb
