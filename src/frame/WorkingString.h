// The operations the library's logic uses on its working string, an 8-bit
// std::string in the ANSI code page. Positions are 1-based, and each
// operation answers its edge cases with the empty string or 0 rather than
// failing, so that callers can chain them freely.
#pragma once

#include <cctype>
#include <string>

inline std::string Left(const std::string& s, long n) {
    if (n < 1) return std::string();
    return s.substr(0, static_cast<size_t>(n));
}

inline std::string Right(const std::string& s, long n) {
    if (n < 1) return std::string();
    size_t count = static_cast<size_t>(n);
    return count >= s.size() ? s : s.substr(s.size() - count);
}

// n = -1 (or any negative count) takes everything to the end.
inline std::string Mid(const std::string& s, long start, long n = -1) {
    if (start < 1 || static_cast<size_t>(start) > s.size() || n == 0) return std::string();
    size_t from = static_cast<size_t>(start) - 1;
    return n < 0 ? s.substr(from) : s.substr(from, static_cast<size_t>(n));
}

inline long Instr(long start, const std::string& s, const std::string& t) {
    if (s.empty() || t.empty() || start < 1 || static_cast<size_t>(start) > s.size() || t.size() > s.size())
        return 0;
    size_t p = s.find(t, static_cast<size_t>(start) - 1);
    return p == std::string::npos ? 0 : static_cast<long>(p) + 1;
}

// The last occurrence that begins at or before start; start = -1 searches
// from the end.
inline long InstrRev(const std::string& s, const std::string& t, long start = -1) {
    if (s.empty() || t.empty() || t.size() > s.size() || start == 0 || start < -1 ||
        (start > 0 && static_cast<size_t>(start) > s.size()))
        return 0;
    size_t from = start == -1 ? std::string::npos : static_cast<size_t>(start) - 1;
    size_t p = s.rfind(t, from);
    return p == std::string::npos ? 0 : static_cast<long>(p) + 1;
}

// Per byte, under the process locale that the library sets at load.
inline std::string UCase(std::string s) {
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

inline std::string LCase(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}
