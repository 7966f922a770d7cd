// Modules PathAndFileNameModifiers, PathAndFileNameModifiers2 and
// MyGetLongPathName: other spellings of a path, asked of the file system.
#pragma once

#include <cstdint>
#include <string>

#include "Platform.h"

// The path with the case that is on the disk: the path's short form, then
// that form's long form. On a failure: empty with emptyOnFailure set, else
// the path as given.
std::string FIXFILENAMECASE(std::string path, uint8_t emptyOnFailure);

// GetLongPathNameA where the host has it, else the library's own walk. The
// walk answers the length without terminator also when asked for room, so a
// caller gives the buffer two bytes more than it states.
LONG GETLONGPATHNAMEA(LPCSTR shortPath, LPSTR buffer, DWORD size);
LONG PROXY_GETLONGPATHNAMEA(LPCSTR shortPath, LPSTR buffer, DWORD size);

// Each element of an existing path spelled as on the disk; empty when the
// path does not exist. A UNC server and share are kept as given, "." and
// ".." are never looked up.
std::string MYGETLONGPATHNAME(std::string path);

// The file name of a loaded module (0: the program), cut at 1024
// characters; empty for a handle that is no module.
std::string WR_ESGETMODULEFILENAME(HMODULE module, uint8_t fixCase);
