// The platform the library is built against: the real Win32 headers in the
// product, winsim in the native build. Everything else includes this.
#pragma once

#ifdef _WIN32
#include <windows.h>
#include <oleauto.h>
#include <shlwapi.h>
#include <shlobj.h>
#include <float.h>
#include <olectl.h>
#else
#include "winsim.h"
#endif

#include <cstdint>
#include <string>
#include <vector>

// An export: C linkage and undecorated in the export table (the .def and the
// version script list them), __stdcall so that the callee pops its
// arguments, as a Visual Basic Declare expects.
#define CSK_EXPORT extern "C"

// The library's byte array: one dimension, lower bound 0.
typedef std::vector<uint8_t> ByteArray;
