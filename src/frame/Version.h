// The library's version, in one place: the version record of the resource
// script, DllGetVersion and the release's name all come from these.
#pragma once

#define CSK_VERSION_MAJOR 1
#define CSK_VERSION_MINOR 0
#define CSK_VERSION_BUILD 81
#define CSK_VERSION_TEXT "1.00.0081"
