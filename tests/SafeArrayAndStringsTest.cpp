// The byte-array boundary against real SAFEARRAYs (OLEAUT32 in the Win32
// build), and REPLACE and SPLIT at their edges.
#include <gtest/gtest.h>

#include "SafeArrayWorks.h"
#include "VBStringFunctions.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

// A SAFEARRAY the test owns: destroyed at the end of the test.
struct Owned {
    SAFEARRAY* array = nullptr;
    ~Owned() { SafeArrayDestroy(array); }
};

SAFEARRAY* Bytes(LONG lowerBound, std::initializer_list<uint8_t> values) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, lowerBound, static_cast<ULONG>(values.size()));
    void* data = nullptr;
    EXPECT_EQ(S_OK, SafeArrayAccessData(array, &data));
    std::copy(values.begin(), values.end(), static_cast<uint8_t*>(data));
    SafeArrayUnaccessData(array);
    return array;
}

// What a byte SAFEARRAY holds, with its bounds.
struct Held {
    LONG lower, upper;
    ByteArray bytes;
};

Held Read(SAFEARRAY* array) {
    Held held{};
    SafeArrayGetLBound(array, 1, &held.lower);
    SafeArrayGetUBound(array, 1, &held.upper);
    void* data = nullptr;
    EXPECT_EQ(S_OK, SafeArrayAccessData(array, &data));
    const uint8_t* begin = static_cast<const uint8_t*>(data);
    held.bytes.assign(begin, begin + (held.upper - held.lower + 1));
    SafeArrayUnaccessData(array);
    return held;
}

TEST(SafeArrayWorks, ToCallerCreatesOrResizes) {
    const ByteArray bytes = {1, 2, 3, 4};
    Owned made;
    EXPECT_EQ(S_OK, ARRAYTOSAFEARRAY_BYTE(bytes, &made.array));
    ASSERT_NE(nullptr, made.array);
    Held held = Read(made.array);
    EXPECT_EQ(0, held.lower);
    EXPECT_EQ(3, held.upper);
    EXPECT_EQ(bytes, held.bytes);

    // The caller's own array is reused and resized, its lower bound set to 0.
    Owned callers{Bytes(5, {9, 9, 9, 9, 9, 9, 9})};
    SAFEARRAY* before = callers.array;
    EXPECT_EQ(S_OK, ARRAYTOSAFEARRAY_BYTE(bytes, &callers.array));
    EXPECT_EQ(before, callers.array);
    held = Read(callers.array);
    EXPECT_EQ(0, held.lower);
    EXPECT_EQ(bytes, held.bytes);

    // An empty byte array gives an array of no elements.
    Owned empty;
    EXPECT_EQ(S_OK, ARRAYTOSAFEARRAY_BYTE(ByteArray(), &empty.array));
    ASSERT_NE(nullptr, empty.array);
    LONG upper = 0;
    SafeArrayGetUBound(empty.array, 1, &upper);
    EXPECT_EQ(-1, upper);
}

TEST(SafeArrayWorks, ShapeTestRefusesWhatIsNotOneDimensionOfBytes) {
    Owned longs{SafeArrayCreateVector(VT_I4, 0, 3)};
    SAFEARRAYBOUND two[2] = {{2, 0}, {3, 0}};
    Owned square{SafeArrayCreate(VT_UI1, 2, two)};
    for (SAFEARRAY* wrong : {longs.array, square.array}) {
        SAFEARRAY* variable = wrong;
        ByteArray bytes = {7};
        EXPECT_EQ(E_INVALIDARG, ARRAYTOSAFEARRAY_BYTE(bytes, &variable));
        EXPECT_EQ(wrong, variable);
        EXPECT_EQ(E_INVALIDARG, SAFEARRAYTOARRAY_BYTE(&variable, bytes));
    }
    ByteArray bytes;
    EXPECT_EQ(E_INVALIDARG, ARRAYTOSAFEARRAY_BYTE(bytes, nullptr));
    EXPECT_EQ(E_INVALIDARG, SAFEARRAYTOARRAY_BYTE(nullptr, bytes));
    SAFEARRAY* none = nullptr;
    EXPECT_EQ(E_INVALIDARG, SAFEARRAYTOARRAY_BYTE(&none, bytes));
}

// An array made from a bare descriptor records no type; an element size of
// 1 is enough then, and 4 is not.
TEST(SafeArrayWorks, ArrayWithoutRecordedTypePassesOnElementSize) {
    for (ULONG size : {1u, 4u}) {
        Owned bare;
        ASSERT_EQ(S_OK, SafeArrayAllocDescriptor(1, &bare.array));
        bare.array->cbElements = size;
        bare.array->rgsabound[0].cElements = 3;
        bare.array->rgsabound[0].lLbound = 0;
        ASSERT_EQ(S_OK, SafeArrayAllocData(bare.array));
        VARTYPE type = 0;
        EXPECT_NE(S_OK, SafeArrayGetVartype(bare.array, &type)) << "no type recorded";
        ByteArray bytes;
        EXPECT_EQ(size == 1 ? S_OK : E_INVALIDARG, SAFEARRAYTOARRAY_BYTE(&bare.array, bytes)) << size;
        EXPECT_EQ(size == 1 ? 3u : 0u, bytes.size());
    }
}

TEST(SafeArrayWorks, FromCallerIgnoresLowerBound) {
    Owned callers{Bytes(5, {10, 20, 30})};
    ByteArray bytes = {1, 1, 1, 1, 1, 1};
    EXPECT_EQ(S_OK, SAFEARRAYTOARRAY_BYTE(&callers.array, bytes));
    EXPECT_EQ(ByteArray({10, 20, 30}), bytes);

    Owned empty{SafeArrayCreateVector(VT_UI1, 0, 0)};
    EXPECT_EQ(E_OUTOFMEMORY, SAFEARRAYTOARRAY_BYTE(&empty.array, bytes));
    EXPECT_NE(nullptr, empty.array) << "the caller's array is never freed here";
}

TEST(SafeArrayWorks, ReturnValueFormTellsWhetherAnArrayCameBack) {
    Owned made;
    VARIANT_BOOL given = 5;
    EXPECT_EQ(S_OK, ARRAYTOSAFEARRAY_BYTE_RV(ByteArray{1}, &made.array, &given));
    EXPECT_EQ(VARIANT_TRUE, given);
    Owned longs{SafeArrayCreateVector(VT_I4, 0, 1)};
    EXPECT_EQ(E_INVALIDARG, ARRAYTOSAFEARRAY_BYTE_RV(ByteArray{1}, &longs.array, &given));
    EXPECT_EQ(VARIANT_FALSE, given);
    Owned again;
    EXPECT_EQ(S_OK, ARRAYTOSAFEARRAY_BYTE_RV(ByteArray{1}, &again.array, nullptr));
}

#ifdef CSK_WINSIM
// Refusals only the stand-in can stage: the variable is left as it was, and
// an array made for the caller is not left behind (LSan would see it).
TEST(SafeArrayWorks, PlatformRefusalsLeaveTheVariableAlone) {
    SAFEARRAY* variable = nullptr;
    winsim::failNext("SafeArrayCreate");
    EXPECT_EQ(E_OUTOFMEMORY, ARRAYTOSAFEARRAY_BYTE(ByteArray{1}, &variable));
    EXPECT_EQ(nullptr, variable);
    winsim::failNext("SafeArrayAccessData");
    EXPECT_EQ(E_UNEXPECTED, ARRAYTOSAFEARRAY_BYTE(ByteArray{1}, &variable));
    EXPECT_EQ(nullptr, variable);
    Owned callers{Bytes(0, {1, 2})};
    winsim::failNext("SafeArrayRedim");
    EXPECT_EQ(E_OUTOFMEMORY, ARRAYTOSAFEARRAY_BYTE(ByteArray{1, 2, 3}, &callers.array));
    EXPECT_EQ(ByteArray({1, 2}), Read(callers.array).bytes);
    winsim::reset();
}
#endif

TEST(VBStringFunctions, Replace) {
    struct Row {
        const char* text;
        const char* find;
        const char* replacement;
        long start, count;
        uint8_t binary;
        const char* expected;
    } rows[] = {
        {"aaa", "a", "aa", 1, -1, 1, "aaaaaa"},  // a replacement is not searched again
        {"abcabc", "a", "x", 3, -1, 1, "cxbc"},  // what stands before start is gone
        {"abcabc", "", "x", 1, -1, 1, "abcabc"},
        {"abcabc", "a", "x", 1, 1, 1, "xbcabc"},
        {"abcabc", "a", "x", 1, 0, 1, "abcabc"},
        {"abcabc", "a", "x", 0, -1, 1, "xbcxbc"},
        {"abcabc", "a", "x", 7, -1, 1, ""},  // start beyond the text
        {"aAbA", "a", "-", 1, -1, 1, "-AbA"},
        {"aAbA", "a", "-", 1, -1, 0, "--b-"},  // without the binary flag case is ignored
        {"a\\.\\.\\b", "\\.\\", "\\", 1, -1, 1, "a\\.\\b"},
        {"abab", "ab", "", 1, -1, 1, ""},
        {"", "a", "b", 1, -1, 1, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.expected, REPLACE(row.text, row.find, row.replacement, row.start, row.count, row.binary))
            << row.text << " " << row.find << " " << row.replacement << " " << row.start << " " << row.count;
}

TEST(VBStringFunctions, Split) {
    struct Row {
        const char* text;
        const char* delimiter;
        StringArray expected;
    } rows[] = {
        {"a;b;", ";", {"a", "b", ""}},
        {";", ";", {"", ""}},
        {"", ";", {""}},
        {"abc", "", {"abc"}},
        {"abc", ";", {"abc"}},
        {"a<>b<><>c", "<>", {"a", "b", "", "c"}},
        {"aXbxc", "x", {"aXb", "c"}},  // the search is binary
    };
    for (const auto& row : rows) {
        StringArray result = {"left over"};
        SPLIT(row.text, row.delimiter, result);
        EXPECT_EQ(row.expected, result) << row.text << " by " << row.delimiter;
    }
}

}  // namespace
