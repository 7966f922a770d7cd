// Bits, bytes, number text and Boolean text through the exports. Every
// answer lands in a variable with guard bytes on both sides, so an export
// that writes beyond its width, or not at all, is caught.
#include <cstring>
#include <functional>

#include "VbDeclares.h"

namespace {

struct Guarded {
    alignas(4) unsigned char bytes[12];
    Guarded() { std::memset(bytes, 0xCC, sizeof bytes); }
    template <class T>
    T* at() {
        return reinterpret_cast<T*>(bytes + 4);
    }
    uint32_t value(size_t width) const {
        uint32_t v = 0;
        std::memcpy(&v, bytes + 4, width);
        return v;
    }
    bool guardsIntact(size_t width) const {
        for (size_t i = 0; i < sizeof bytes; ++i)
            if ((i < 4 || i >= 4 + width) && bytes[i] != 0xCC) return false;
        return true;
    }
};

struct ValueRow {
    const char* what;
    std::function<HRESULT(Guarded&)> call;
    size_t width;
    HRESULT status;
    uint32_t expected;
};

void CheckRows(const std::vector<ValueRow>& rows) {
    for (const auto& row : rows) {
        Guarded g;
        EXPECT_EQ(row.status, row.call(g)) << row.what;
        EXPECT_EQ(row.expected, g.value(row.width)) << row.what;
        EXPECT_TRUE(g.guardsIntact(row.width)) << row.what << " wrote beyond its " << row.width << " bytes";
    }
}

TEST(Bits, PackAndUnpack) {
    CheckRows({
        {"MakeWord 34,12", [](Guarded& g) { return vb::esMakeWord(0x34, 0x12, g.at<SHORT>()); }, 2, S_OK, 0x1234},
        {"MakeWord FF,FF", [](Guarded& g) { return vb::esMakeWord(0xFF, 0xFF, g.at<SHORT>()); }, 2, S_OK, 0xFFFF},
        {"MakeLong -1,0", [](Guarded& g) { return vb::esMakeLong(-1, 0, g.at<LONG>()); }, 4, S_OK, 0x0000FFFF},
        {"MakeLong 0,-1", [](Guarded& g) { return vb::esMakeLong(0, -1, g.at<LONG>()); }, 4, S_OK, 0xFFFF0000},
        {"MakeLong", [](Guarded& g) { return vb::esMakeLong(0x5678, 0x1234, g.at<LONG>()); }, 4, S_OK, 0x12345678},
        {"HiWord 80000000", [](Guarded& g) { return vb::esHiWord(static_cast<LONG>(0x80000000), g.at<SHORT>()); }, 2,
         S_OK, 0x8000},
        {"HiWord", [](Guarded& g) { return vb::esHiWord(0x12345678, g.at<SHORT>()); }, 2, S_OK, 0x1234},
        {"LoWord", [](Guarded& g) { return vb::esLoWord(0x12345678, g.at<SHORT>()); }, 2, S_OK, 0x5678},
        {"LoWord -1", [](Guarded& g) { return vb::esLoWord(-1, g.at<SHORT>()); }, 2, S_OK, 0xFFFF},
        {"HiByte", [](Guarded& g) { return vb::esHiByte(0x1234, g.at<BYTE>()); }, 1, S_OK, 0x12},
        {"LoByte", [](Guarded& g) { return vb::esLoByte(0x1234, g.at<BYTE>()); }, 1, S_OK, 0x34},
        {"HiByte -1", [](Guarded& g) { return vb::esHiByte(-1, g.at<BYTE>()); }, 1, S_OK, 0xFF},
        {"SwapBytes2", [](Guarded& g) { return vb::esSwapBytes2(0x1122, g.at<SHORT>()); }, 2, S_OK, 0x2211},
        {"SwapBytes2 00FF", [](Guarded& g) { return vb::esSwapBytes2(0x00FF, g.at<SHORT>()); }, 2, S_OK, 0xFF00},
        {"SwapBytes4", [](Guarded& g) { return vb::esSwapBytes4(0x11223344, g.at<LONG>()); }, 4, S_OK, 0x44332211},
        {"SwapBytes4 sign", [](Guarded& g) { return vb::esSwapBytes4(static_cast<LONG>(0x80000001), g.at<LONG>()); },
         4, S_OK, 0x01000080},
    });
}

// A count outside 1 to 31 is refused with status 1 and the value written
// back unchanged; a count at or past a narrow width shifts everything out.
TEST(Bits, Shifts) {
    CheckRows({
        {"L4 1<<31", [](Guarded& g) { return vb::esShiftLeft4(1, 31, g.at<LONG>()); }, 4, S_OK, 0x80000000},
        {"L4 by 32", [](Guarded& g) { return vb::esShiftLeft4(1, 32, g.at<LONG>()); }, 4, S_FALSE, 1},
        {"L4 by 0", [](Guarded& g) { return vb::esShiftLeft4(1, 0, g.at<LONG>()); }, 4, S_FALSE, 1},
        {"L4 by -1", [](Guarded& g) { return vb::esShiftLeft4(1, -1, g.at<LONG>()); }, 4, S_FALSE, 1},
        {"R4 no sign fill", [](Guarded& g) { return vb::esShiftRight4(static_cast<LONG>(0x80000000), 31, g.at<LONG>()); },
         4, S_OK, 1},
        {"R4 by 1", [](Guarded& g) { return vb::esShiftRight4(static_cast<LONG>(0x80000000), 1, g.at<LONG>()); }, 4,
         S_OK, 0x40000000},
        {"L1 81<<1", [](Guarded& g) { return vb::esShiftLeft1(0x81, 1, g.at<BYTE>()); }, 1, S_OK, 0x02},
        {"L1 by 31", [](Guarded& g) { return vb::esShiftLeft1(0xFF, 31, g.at<BYTE>()); }, 1, S_OK, 0},
        {"L1 by 0", [](Guarded& g) { return vb::esShiftLeft1(5, 0, g.at<BYTE>()); }, 1, S_FALSE, 5},
        {"R1 FF by 8", [](Guarded& g) { return vb::esShiftRight1(0xFF, 8, g.at<BYTE>()); }, 1, S_OK, 0},
        {"R1 80 by 7", [](Guarded& g) { return vb::esShiftRight1(0x80, 7, g.at<BYTE>()); }, 1, S_OK, 1},
        {"L2 FFFF by 16", [](Guarded& g) { return vb::esShiftLeft2(-1, 16, g.at<SHORT>()); }, 2, S_OK, 0},
        {"L2 4001<<1", [](Guarded& g) { return vb::esShiftLeft2(0x4001, 1, g.at<SHORT>()); }, 2, S_OK, 0x8002},
        {"R2 8000 by 15", [](Guarded& g) { return vb::esShiftRight2(-32768, 15, g.at<SHORT>()); }, 2, S_OK, 1},
        {"R2 FFFF by 4", [](Guarded& g) { return vb::esShiftRight2(-1, 4, g.at<SHORT>()); }, 2, S_OK, 0x0FFF},
        {"R2 by 32", [](Guarded& g) { return vb::esShiftRight2(0x1234, 32, g.at<SHORT>()); }, 2, S_FALSE, 0x1234},
        {"R4 by huge", [](Guarded& g) { return vb::esShiftRight4(0x12345678, 0x7FFFFFFF, g.at<LONG>()); }, 4, S_FALSE,
         0x12345678},
    });
}

// A caller's Byte or Integer travels in a 32-bit slot whose high bits are
// whatever they were; only the low bits are read.
TEST(Bits, NarrowArgumentsReadOnlyTheirLowBits) {
    const VbFunction<HRESULT, uint32_t, uint32_t, SHORT*> makeWord{"esMakeWord"};
    const VbFunction<HRESULT, uint32_t, uint32_t, LONG*> makeLong{"esMakeLong"};
    const VbFunction<HRESULT, uint32_t, LONG, BYTE*> shiftRight1{"esShiftRight1"};
    const VbFunction<HRESULT, uint32_t, LONG, SHORT*> shiftRight2{"esShiftRight2"};
    const VbFunction<HRESULT, uint32_t, BYTE*> hiByte{"esHiByte"};
    const VbFunction<HRESULT, uint32_t, BSTR*> hex2{"esHex2"};
    CheckRows({
        {"MakeWord", [&](Guarded& g) { return makeWord(0xABCD0034, 0xFFFFFF12, g.at<SHORT>()); }, 2, S_OK, 0x1234},
        {"MakeLong", [&](Guarded& g) { return makeLong(0xFFFFFFFF, 0x77770000, g.at<LONG>()); }, 4, S_OK, 0x0000FFFF},
        {"ShiftRight1", [&](Guarded& g) { return shiftRight1(0xFFFFFF80, 7, g.at<BYTE>()); }, 1, S_OK, 1},
        {"ShiftRight2", [&](Guarded& g) { return shiftRight2(0xFFFF8000, 15, g.at<SHORT>()); }, 2, S_OK, 1},
        {"HiByte", [&](Guarded& g) { return hiByte(0xFFFF1234, g.at<BYTE>()); }, 1, S_OK, 0x12},
    });
    Bstr text;
    EXPECT_EQ(S_OK, hex2(0xDEAD000A, text.out()));
    EXPECT_EQ("000A", text.text());
}

TEST(Bits, NumberText) {
    struct Row {
        std::function<HRESULT(BSTR*)> call;
        const char* expected;
    } rows[] = {
        {[](BSTR* r) { return vb::esHex4(-1, r); }, "FFFFFFFF"},
        {[](BSTR* r) { return vb::esHex4(0x0ABCDEF0, r); }, "0ABCDEF0"},
        {[](BSTR* r) { return vb::esHex2(10, r); }, "000A"},
        {[](BSTR* r) { return vb::esHex1(0, r); }, "00"},
        {[](BSTR* r) { return vb::esHexEx1(255, r); }, "0xFF"},
        {[](BSTR* r) { return vb::esHexEx2(-2, r); }, "0xFFFE"},
        {[](BSTR* r) { return vb::esHexEx4(0x1F, r); }, "0x0000001F"},
        {[](BSTR* r) { return vb::esBin1(5, r); }, "00000101"},
        {[](BSTR* r) { return vb::esBin2(static_cast<SHORT>(0x8001), r); }, "1000000000000001"},
        {[](BSTR* r) { return vb::esBin4(0, r); }, "00000000000000000000000000000000"},
        {[](BSTR* r) { return vb::esBin4(-1, r); }, "11111111111111111111111111111111"},
        {[](BSTR* r) { return vb::esBin4(static_cast<LONG>(0x80000000), r); }, "10000000000000000000000000000000"},
    };
    for (const auto& row : rows) {
        Bstr text("stale");
        EXPECT_EQ(S_OK, row.call(text.out()));
        EXPECT_EQ(row.expected, text.text());
    }
}

TEST(Bits, StringToBool) {
    struct Row {
        Bstr text;
        VARIANT_BOOL expected;
    };
    Row rows[] = {
        {Bstr("true"), -1},       {Bstr(" True\r\n"), -1}, {Bstr("1"), -1},     {Bstr("\t\n tRuE \r"), -1},
        {Bstr(" 1 "), -1},        {Bstr("TRUE"), -1},      {Bstr("Yes"), 0},    {Bstr("T"), 0},
        {Bstr("-1"), 0},          {Bstr("2"), 0},          {Bstr("01"), 0},     {Bstr(""), 0},
        {Bstr(" \t\r\n"), 0},     {Bstr("True x"), 0},     {Bstr("\v1"), 0},    {Bstr("False"), 0},
        {Bstr(), 0},                                                              // null: the empty string
        {Bstr::FromUnits(std::u16string(u"1\0x", 3)), -1},                       // cut at the NUL
    };
    for (auto& row : rows) {
        Guarded g;
        EXPECT_EQ(S_OK, vb::esStringToBool(row.text.get(), g.at<VARIANT_BOOL>())) << row.text.text();
        EXPECT_EQ(static_cast<uint16_t>(row.expected), g.value(2)) << row.text.text();
        EXPECT_TRUE(g.guardsIntact(2));
    }
}

TEST(Bits, BoolToString) {
    const struct {
        VARIANT_BOOL value;
        const char* expected;
    } rows[] = {{-1, "True"}, {1, "True"}, {0x7FFF, "True"}, {static_cast<VARIANT_BOOL>(0x8000), "True"}, {0, "False"}};
    for (const auto& row : rows) {
        Bstr text("previous");
        EXPECT_EQ(S_OK, vb::esBoolToString(row.value, text.out()));
        EXPECT_EQ(row.expected, text.text()) << row.value;
    }
}

TEST(Bits, NullAnswerPointerIsStatusOne) {
    EXPECT_EQ(S_FALSE, vb::esMakeWord(1, 2, nullptr));
    EXPECT_EQ(S_FALSE, vb::esMakeLong(1, 2, nullptr));
    EXPECT_EQ(S_FALSE, vb::esHiWord(1, nullptr));
    EXPECT_EQ(S_FALSE, vb::esLoWord(1, nullptr));
    EXPECT_EQ(S_FALSE, vb::esHiByte(1, nullptr));
    EXPECT_EQ(S_FALSE, vb::esLoByte(1, nullptr));
    for (LONG count : {1, 0, 40}) {
        EXPECT_EQ(S_FALSE, vb::esShiftLeft1(1, count, nullptr));
        EXPECT_EQ(S_FALSE, vb::esShiftLeft2(1, count, nullptr));
        EXPECT_EQ(S_FALSE, vb::esShiftLeft4(1, count, nullptr));
        EXPECT_EQ(S_FALSE, vb::esShiftRight1(1, count, nullptr));
        EXPECT_EQ(S_FALSE, vb::esShiftRight2(1, count, nullptr));
        EXPECT_EQ(S_FALSE, vb::esShiftRight4(1, count, nullptr));
    }
    EXPECT_EQ(S_FALSE, vb::esSwapBytes2(1, nullptr));
    EXPECT_EQ(S_FALSE, vb::esSwapBytes4(1, nullptr));
    for (const auto* f : {&vb::esHex1, &vb::esHexEx1, &vb::esBin1}) EXPECT_EQ(S_FALSE, (*f)(1, nullptr)) << f->name;
    for (const auto* f : {&vb::esHex2, &vb::esHexEx2, &vb::esBin2}) EXPECT_EQ(S_FALSE, (*f)(1, nullptr)) << f->name;
    for (const auto* f : {&vb::esHex4, &vb::esHexEx4, &vb::esBin4}) EXPECT_EQ(S_FALSE, (*f)(1, nullptr)) << f->name;
    EXPECT_EQ(S_FALSE, vb::esStringToBool(Bstr("True").get(), nullptr));
    EXPECT_EQ(S_FALSE, vb::esStringToBool(nullptr, nullptr));
    EXPECT_EQ(S_FALSE, vb::esBoolToString(-1, nullptr));
}

}  // namespace
