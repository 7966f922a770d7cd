// Module VBStringFunctions: the two text operations of the caller's
// language that the working string lacks, with the same parameters and the
// same answers at the edges.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The library's string array: lower bound 0.
typedef std::vector<std::string> StringArray;

// Replaces find by replacement in text. What stands before start is not
// part of the result; count 0 replaces nothing, a negative count replaces
// all; a replacement is never searched again. binary 0 compares without
// regard to case.
std::string REPLACE(std::string text, const std::string& find, const std::string& replacement, long start,
                    long count, uint8_t binary);

// The pieces of text between delimiters, empty ones included: n delimiters
// give n + 1 pieces. Empty text or delimiter gives one piece, the text.
void SPLIT(const std::string& text, const std::string& delimiter, StringArray& result);
