// The byte-array boundary against real SAFEARRAYs (OLEAUT32 in the Win32
// build), and REPLACE at its edges.
#include <gtest/gtest.h>

#include "SafeArrayWorks.h"
#include "VBStringFunctions.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

struct Owned { SAFEARRAY* array = nullptr; ~Owned() { SafeArrayDestroy(array); } };  // destroyed with the test

// What a byte array holds: its lower bound and its bytes.
std::pair<LONG, ByteArray> Held(const SAFEARRAY* array) {
    const uint8_t* data = static_cast<const uint8_t*>(array->pvData);
    return {array->rgsabound[0].lLbound, ByteArray(data, data + array->rgsabound[0].cElements)};
}

// To the caller: a new array, or the caller's own resized in place, at lower
// bound 0 either way. Back: whatever the lower bound; an empty array is
// refused with E_OUTOFMEMORY and not freed.
TEST(SafeArrayWorks, BothWays) {
    const ByteArray bytes = {1, 2, 3};
    Owned made, empty, callers{SafeArrayCreateVector(VT_UI1, 5, 7)};
    SAFEARRAY* before = callers.array;
    VARIANT_BOOL given = 5;
    EXPECT_EQ(S_OK, ARRAYTOSAFEARRAY_BYTE_RV(bytes, &made.array, &given));
    EXPECT_EQ(S_OK, ARRAYTOSAFEARRAY_BYTE(bytes, &callers.array));
    EXPECT_EQ(S_OK, ARRAYTOSAFEARRAY_BYTE(ByteArray(), &empty.array));
    EXPECT_TRUE(given == VARIANT_TRUE && callers.array == before);
    for (SAFEARRAY* array : {made.array, callers.array}) EXPECT_EQ(std::make_pair(LONG(0), bytes), Held(array));
    EXPECT_EQ(std::make_pair(LONG(0), ByteArray()), Held(empty.array));
    ByteArray back = {9, 9, 9, 9, 9, 9};
    callers.array->rgsabound[0].lLbound = 5;
    EXPECT_EQ(S_OK, SAFEARRAYTOARRAY_BYTE(&callers.array, back));
    EXPECT_EQ(bytes, back);
    EXPECT_EQ(E_OUTOFMEMORY, SAFEARRAYTOARRAY_BYTE(&empty.array, back));
    EXPECT_NE(nullptr, empty.array);
}

// Not one dimension of bytes: refused both ways (the Boolean answer 0), the
// variable untouched. With no type recorded, an element size of 1 passes.
TEST(SafeArrayWorks, RefusesWhatIsNotOneDimensionOfBytes) {
    SAFEARRAYBOUND two[2] = {{2, 0}, {3, 0}};
    Owned longs{SafeArrayCreateVector(VT_I4, 0, 3)}, square{SafeArrayCreate(VT_UI1, 2, two)},
        untyped{SafeArrayCreateVector(VT_I4, 0, 3)}, untypedBytes{SafeArrayCreateVector(VT_UI1, 0, 3)};
    for (SAFEARRAY* array : {untyped.array, untypedBytes.array}) array->fFeatures &= ~FADF_HAVEVARTYPE;
    ByteArray bytes;
    for (SAFEARRAY* wrong : {longs.array, square.array, untyped.array}) {
        SAFEARRAY* variable = wrong;
        VARIANT_BOOL given = 5;
        EXPECT_EQ(E_INVALIDARG, ARRAYTOSAFEARRAY_BYTE_RV(ByteArray{7}, &variable, &given));
        EXPECT_EQ(E_INVALIDARG, SAFEARRAYTOARRAY_BYTE(&variable, bytes));
        EXPECT_TRUE(variable == wrong && given == VARIANT_FALSE);
    }
    EXPECT_EQ(S_OK, SAFEARRAYTOARRAY_BYTE(&untypedBytes.array, bytes));
    SAFEARRAY* none = nullptr;
    EXPECT_EQ(E_INVALIDARG, SAFEARRAYTOARRAY_BYTE(&none, bytes));
    EXPECT_EQ(E_INVALIDARG, ARRAYTOSAFEARRAY_BYTE(bytes, nullptr));
}

#ifdef CSK_WINSIM
// Refusals only the stand-in can stage leave the variable as it was, and an
// array made for the caller is not left behind (LSan would see it).
TEST(SafeArrayWorks, PlatformRefusalsLeaveTheVariableAlone) {
    SAFEARRAY* variable = nullptr;
    Owned callers{SafeArrayCreateVector(VT_UI1, 0, 2)};
    winsim::failNext("SafeArrayAccessData");
    EXPECT_EQ(E_UNEXPECTED, ARRAYTOSAFEARRAY_BYTE(ByteArray{1}, &variable));
    winsim::failNext("SafeArrayRedim");
    EXPECT_EQ(E_OUTOFMEMORY, ARRAYTOSAFEARRAY_BYTE(ByteArray{1, 2, 3}, &callers.array));
    EXPECT_TRUE(variable == nullptr && callers.array->rgsabound[0].cElements == 2);
    winsim::reset();
}
#endif

// REPLACE searches on after each replacement, so a replacement is never
// searched again; what stands before start is gone from the answer.
TEST(VBStringFunctions, Replace) {
    const struct { const char *text, *find, *with; long start, count; uint8_t binary; const char* expected; } rows[] = {
        {"aaa", "a", "aa", 1, -1, 1, "aaaaaa"}, {"abcabc", "a", "x", 3, -1, 1, "cxbc"},
        {"abcabc", "a", "x", 0, -1, 1, "xbcxbc"}, {"abcabc", "a", "x", 7, -1, 1, ""},
        {"abcabc", "a", "x", 1, 1, 1, "xbcabc"}, {"abcabc", "a", "x", 1, 0, 1, "abcabc"},
        {"abcabc", "", "x", 1, -1, 1, "abcabc"}, {"abab", "ab", "", 1, -1, 1, ""},
        {"aAbA", "a", "-", 1, -1, 1, "-AbA"}, {"aAbA", "a", "-", 1, -1, 0, "--b-"},  // binary, or case ignored
        {"a\\.\\.\\b", "\\.\\", "\\", 1, -1, 1, "a\\.\\b"},  // overlapping: only the first goes
    };
    for (const auto& r : rows)
        EXPECT_EQ(r.expected, REPLACE(r.text, r.find, r.with, r.start, r.count, r.binary))
            << r.text << " " << r.find << " " << r.with << " " << r.start << " " << r.count;
}

}  // namespace
