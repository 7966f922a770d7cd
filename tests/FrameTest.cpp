// The call frame: text crossing the boundary both ways, what the frame does
// when the work throws, and the working-string operations the exports use.
#include "Frame.h"
#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

// esRemoveBackslash hands back text without a closing backslash as it came,
// so it shows what the boundary does to text in both directions. A first NUL
// ends the text; outside the code page each UTF-16 unit becomes "?".
TEST(Boundary, TextBothWays) {
    const std::u16string big(1 << 20, u'\u00e9');  // far beyond the hand-back's stack buffer
    const std::pair<std::u16string, std::u16string> rows[] = {
        {u"", u"<null>"}, {std::u16string(u"\0abc", 4), u"<null>"}, {std::u16string(u"ab\0cd", 5), u"ab"},
        {big, big}, {u"caf\u00e9 \u20ac", u"caf\u00e9 \u20ac"}, {u"x\u4e2dy", u"x?y"},
        {u"a\U0001F600b", u"a??b"}, {u"a\xD800" u"b", u"a?b"}, {u"a\xDC00", u"a?"},
    };
    for (const auto& row : rows) {
        Bstr result;
        EXPECT_EQ(S_OK, vb::esRemoveBackslash(Bstr::FromUnits(row.first).get(), result.out()));
        EXPECT_EQ(row.second, result.isNull() ? u"<null>" : result.units()) << Utf8(row.first.substr(0, 20));
    }
}

TEST(Boundary, LoadSetsExtendedPrecisionAndLocale) {
    CskProc("esAddBackslash");  // the library is loaded
    EXPECT_EQ(0u, _controlfp(0, 0) & 0x30300u) << "64-bit mantissa, round to nearest";
#ifdef _WIN32
    // msvcrt's locale is process-wide: the DLL set the user's default.
    EXPECT_STRNE("C", std::setlocale(LC_CTYPE, nullptr));
#endif
}

// Nothing thrown crosses the boundary: the call ends with E_OUTOFMEMORY, the
// caller's variable as it was and the caller's error context back.
TEST(Frame, ThrowEndsTheCall) {
    g_errorContext = {"Outer", "OUTER"};
    Bstr result("kept");
    auto work = []() -> std::string { EXPECT_STREQ("INNER", g_errorContext.routine); throw std::bad_alloc(); };
    EXPECT_EQ(E_OUTOFMEMORY, TextExport("Inner", "INNER", result.out(), work));
    EXPECT_EQ("kept OUTER", result.text() + " " + g_errorContext.routine);
}

#ifdef CSK_WINSIM
// Only the stand-in can make the platform's conversions refuse.
TEST(Boundary, ConversionFallbacks) {
    winsim::failNext("WideCharToMultiByte");
    EXPECT_EQ("a\xE9", BSTRTOSTRING(Bstr::FromUnits(u"a\u00e9").get())) << "the C library converts instead";
    winsim::failNext("WideCharToMultiByte");
    winsim::failNext("wcstombs");
    EXPECT_EQ("a???b", BSTRTOSTRING(Bstr::FromUnits(u"a\u00e9\u4e2d\U0001F600b").get())) << "a surrogate pair: one ?";
    Bstr result;
    winsim::failNext("mbstowcs");
    HANDBACK(result.out(), "a\xE9z");
    EXPECT_EQ(u"a?z", result.units()) << "byte by byte";
    winsim::reset();
}
#endif

// Positions are 1-based; every edge is answered with "" or 0. InstrRev
// finds the last occurrence that begins at or before start (-1: the end).
TEST(WorkingString, Operations) {
    const std::string s = "abcabc";
    EXPECT_EQ("cabc|c|ca|ABC1!", Mid(s, 3) + "|" + Mid(s, 6, 5) + "|" + Mid(s, 3, 2) + "|" + UCase("aBc1!"));
    EXPECT_EQ("", Mid(s, 0) + Mid(s, 7) + Mid(s, 2, 0));
    const struct { long start; const char* t; long instr, instrRev; } searches[] = {
        {-1, "bc", 0, 5}, {1, "bc", 2, 0}, {4, "bc", 5, 2}, {6, "bc", 0, 5}, {0, "a", 0, 0}, {7, "a", 0, 0},
        {-2, "a", 0, 0}, {1, "", 0, 0}, {-1, "abcabcx", 0, 0},
    };
    for (const auto& r : searches)
        EXPECT_EQ(std::make_pair(r.instr, r.instrRev),
                  std::make_pair(Instr(r.start, s, r.t), InstrRev(s, r.t, r.start))) << r.t << "@" << r.start;
}

}  // namespace
