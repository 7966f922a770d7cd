// Module PathAndFileNameParse: closing backslashes and joining path elements.
// Pure text work, no length limit, no platform call. Workers take their
// strings by value and work on their own copy, so that a caller that hands
// over a temporary pays for no copy.
#pragma once

#include <cstdint>
#include <string>

// path with one closing backslash; the empty path stays empty.
std::string WR_ESADDBACKSLASH(std::string path);

// path with one closing backslash removed; "X:\" and "\" keep theirs.
std::string WR_ESREMOVEBACKSLASH(std::string path);

// folder + "\" + file name. With no file name, the flag takes the closing
// backslash away again (a drive root keeps it).
std::string WR_ESBUILDFILENAME(std::string folder, std::string fileName, uint8_t stripFolder);

// Up to nine elements joined with exactly one backslash at each seam;
// empty elements are skipped.
std::string WR_ESBUILDFILENAME2(std::string e1, std::string e2, std::string e3, std::string e4, std::string e5,
                                std::string e6, std::string e7, std::string e8, std::string e9);
