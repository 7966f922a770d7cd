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

// Path parsing
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetFileRoot{"esGetFileRoot"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetFilePath{"esGetFilePath"};
inline const VbFunction<HRESULT, BSTR, VARIANT_BOOL, BSTR*> esGetFileName{"esGetFileName"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetFileOnlyName{"esGetFileOnlyName"};
inline const VbFunction<HRESULT, BSTR, BSTR*> esGetFileExtension{"esGetFileExtension"};
inline const VbFunction<HRESULT, BSTR, BSTR, BSTR*> esGetRelativeFileName{"esGetRelativeFileName"};
inline const VbFunction<HRESULT, BSTR, BSTR, BSTR*> esGetAbsoluteFileName{"esGetAbsoluteFileName"};
inline const VbFunction<HRESULT, BSTR, BSTR, BSTR*> esReplaceFileExtension{"esReplaceFileExtension"};

}  // namespace vb
