// Module SystemFolder: the Windows, system and temporary folders and the
// current directory, each ending in exactly one backslash; empty when the
// platform gives nothing.
#pragma once

#include <string>

std::string WR_ESGETWINDOWSPATH();
std::string WR_ESGETSYSTEMPATH();
std::string WR_ESGETTEMPPATH();
std::string WR_ESGETCURRENTDIRECTORY();
