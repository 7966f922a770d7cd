// Bits, bytes, number text and Boolean text through the exports. Every
// value answer lands between guard bytes, so an export that writes beyond
// its width, or not at all, is caught; every row is called once more with a
// null answer pointer, which is status 1 whatever else is wrong.
#include <cstring>

#include "VbDeclares.h"

namespace {

// A caller's Byte or Integer travels in a 32-bit slot whose high bits are
// whatever they were; only the low bits may be read.
const VbFunction<HRESULT, uint32_t, uint32_t, SHORT*> makeWordWide{"esMakeWord"};
const VbFunction<HRESULT, uint32_t, BSTR*> hex2Wide{"esHex2"};

template <class T> T* As(void* p) { return static_cast<T*>(p); }
HRESULT ToBool(const Bstr& text, void* p) { return vb::esStringToBool(text.get(), As<VARIANT_BOOL>(p)); }

TEST(Bits, ValuesInExactlyTheirWidth) {
    const struct { HRESULT (*call)(void*); size_t width; HRESULT status; uint32_t expected; } rows[] = {
        {[](void* p) { return vb::esMakeLong(-1, 0, As<LONG>(p)); }, 4, S_OK, 0x0000FFFF},  // low first, no sign
        {[](void* p) { return vb::esHiWord(0x12345678, As<SHORT>(p)); }, 2, S_OK, 0x1234},
        {[](void* p) { return vb::esLoWord(0x12345678, As<SHORT>(p)); }, 2, S_OK, 0x5678},
        {[](void* p) { return vb::esHiByte(0x1234, As<BYTE>(p)); }, 1, S_OK, 0x12},
        {[](void* p) { return vb::esLoByte(0x1234, As<BYTE>(p)); }, 1, S_OK, 0x34},
        {[](void* p) { return vb::esSwapBytes2(static_cast<SHORT>(0x8011), As<SHORT>(p)); }, 2, S_OK, 0x1180},
        {[](void* p) { return vb::esSwapBytes4(static_cast<LONG>(0x81223344), As<LONG>(p)); }, 4, S_OK, 0x44332281},
        // Zeros come in from either side. A count outside 1 to 31 is refused
        // with status 1 and the value handed back; past a narrow width it
        // shifts everything out.
        {[](void* p) { return vb::esShiftLeft4(1, 31, As<LONG>(p)); }, 4, S_OK, 0x80000000},
        {[](void* p) { return vb::esShiftLeft4(1, 32, As<LONG>(p)); }, 4, S_FALSE, 1},
        {[](void* p) { return vb::esShiftRight4(static_cast<LONG>(0x80000000), 31, As<LONG>(p)); }, 4, S_OK, 1},
        {[](void* p) { return vb::esShiftRight4(0x12345678, 0, As<LONG>(p)); }, 4, S_FALSE, 0x12345678},
        {[](void* p) { return vb::esShiftLeft1(0x81, 1, As<BYTE>(p)); }, 1, S_OK, 0x02},
        {[](void* p) { return vb::esShiftLeft1(5, -1, As<BYTE>(p)); }, 1, S_FALSE, 5},
        {[](void* p) { return vb::esShiftRight1(0xFF, 8, As<BYTE>(p)); }, 1, S_OK, 0},
        {[](void* p) { return vb::esShiftLeft2(0x4001, 1, As<SHORT>(p)); }, 2, S_OK, 0x8002},
        {[](void* p) { return vb::esShiftRight2(-1, 4, As<SHORT>(p)); }, 2, S_OK, 0x0FFF},
        {[](void* p) { return vb::esShiftRight2(0x1234, 0x7FFFFFFF, As<SHORT>(p)); }, 2, S_FALSE, 0x1234},
        {[](void* p) { return makeWordWide(0xABCD0034, 0xFFFFFF12, As<SHORT>(p)); }, 2, S_OK, 0x1234},
        // Blanks are space, tab, CR and LF; True is -1 in two bytes, never 1.
        {[](void* p) { return ToBool(Bstr("\t\n tRuE \r"), p); }, 2, S_OK, 0xFFFF},
        {[](void* p) { return ToBool(Bstr::FromUnits({u'1', 0, u'x'}), p); }, 2, S_OK, 0xFFFF},  // cut at the NUL
        {[](void* p) { return ToBool(Bstr("True x"), p); }, 2, S_OK, 0},
        {[](void* p) { return ToBool(Bstr("\v1"), p); }, 2, S_OK, 0},
    };
    for (const auto& row : rows) {
        uint32_t guarded[3] = {0xCCCCCCCC, 0xCCCCCCCC, 0xCCCCCCCC}, expected = 0xCCCCCCCC;
        std::memcpy(&expected, &row.expected, row.width);
        EXPECT_EQ(row.status, row.call(&guarded[1])) << "row " << &row - rows;
        EXPECT_EQ(expected, guarded[1]) << "row " << &row - rows << std::hex << ": 0x" << guarded[1];
        EXPECT_TRUE(guarded[0] == 0xCCCCCCCC && guarded[2] == 0xCCCCCCCC) << "row " << &row - rows << " wrote past";
        EXPECT_EQ(S_FALSE, row.call(nullptr)) << "row " << &row - rows;
    }
}

// Fixed width with every leading zero, upper-case digits, a lower-case "0x".
TEST(Bits, Text) {
    const struct { HRESULT (*call)(BSTR*); const char* expected; } rows[] = {
        {[](BSTR* r) { return vb::esHex1(0, r); }, "00"},
        {[](BSTR* r) { return hex2Wide(0xDEAD000A, r); }, "000A"},
        {[](BSTR* r) { return vb::esHex4(0x0ABCDEF0, r); }, "0ABCDEF0"},
        {[](BSTR* r) { return vb::esHexEx1(255, r); }, "0xFF"},
        {[](BSTR* r) { return vb::esHexEx2(-2, r); }, "0xFFFE"},
        {[](BSTR* r) { return vb::esHexEx4(0x1F, r); }, "0x0000001F"},
        {[](BSTR* r) { return vb::esBin1(5, r); }, "00000101"},
        {[](BSTR* r) { return vb::esBin2(static_cast<SHORT>(0x8001), r); }, "1000000000000001"},
        {[](BSTR* r) { return vb::esBin4(static_cast<LONG>(0x80000001), r); }, "10000000000000000000000000000001"},
        {[](BSTR* r) { return vb::esBoolToString(1, r); }, "True"},  // any nonzero
        {[](BSTR* r) { return vb::esBoolToString(0, r); }, "False"},
    };
    for (const auto& row : rows) {
        Bstr text("stale");
        EXPECT_EQ(S_OK, row.call(text.out()));
        EXPECT_EQ(row.expected, text.text());
        EXPECT_EQ(S_FALSE, row.call(nullptr)) << row.expected;
    }
}

}  // namespace
