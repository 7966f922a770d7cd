// Module PathAndFileNameParse2: taking a path apart by its text alone. The
// library removes one trailing backslash and splits off an alternate
// stream ("file.txt:stream") itself; what a root is and where a file name
// begins are asked of the shell, through a fixed text buffer of 1024
// characters. Workers take their strings by value and work on their copy.
#pragma once

#include <cstdint>
#include <string>

// Cuts an alternate stream off path into stream (with its colon). The colon
// of a drive at the head of a rooted path ("C:\") is not a stream separator.
void SPLITALTSTREAM(std::string& path, std::string& stream);

// The root with its closing backslash ("C:\", "\\Server\Share\"); empty
// when the path has none.
std::string WR_ESGETFILEROOT(std::string path);

// The folder part with its closing backslash; empty for a bare name.
std::string WR_ESGETFILEPATH(std::string path);

// The name part; with withoutStream clear, followed by the stream (which
// is dropped when the name is empty).
std::string WR_ESGETFILENAME(std::string path, uint8_t withoutStream);

// The name without its extension, and the extension without its dot: the
// last dot counts unless it is the name's first character.
std::string WR_ESGETFILEONLYNAME(std::string path);
std::string WR_ESGETFILEEXTENSION(std::string path);

// The path with its "." pieces removed ("\.\" inside, ".\" at the head,
// "\." at the end); ".." is left alone.
std::string MYCAMONICALIZEPATH(std::string path);

// file relative to the folder base ("..\C\f.txt"); the cleaned file when
// the two have no common root.
std::string WR_ESGETRELATIVEFILENAME(std::string file, std::string base);

// file joined to the folder base, "." and ".." worked out; file itself
// when the shell cannot join them.
std::string WR_ESGETABSOLUTEFILENAME(std::string file, std::string base);

// The path with the extension of its name replaced (an empty extension
// removes it, the stream stays behind the name).
std::string WR_ESREPLACEFILEEXTENSION(std::string path, std::string extension);
