// The platform the library is built against: the Win32 headers. Everything
// else includes this.
#pragma once

#include <windows.h>
#include <oleauto.h>
#include <shlwapi.h>
#include <shlobj.h>
#include <float.h>
#include <olectl.h>

#include <cstdint>
#include <string>
#include <vector>

// An export: C linkage and undecorated in the export table (the .def lists
// them), __stdcall so that the callee pops its arguments, as a Visual Basic
// Declare expects.
#define CSK_EXPORT extern "C"

// The library's byte array: one dimension, lower bound 0.
typedef std::vector<uint8_t> ByteArray;
