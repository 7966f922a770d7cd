// The call frame: text crossing the boundary both ways, the guarded and
// unguarded frames, the working-string operations, the environment helpers
// and the byte-array helpers.
#include <cfloat>
#include <clocale>
#include <cstring>

#include "Frame.h"
#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

// esRemoveBackslash hands back any text without a closing backslash as it
// came, so it shows what the boundary does to text in both directions.
std::u16string RoundTrip(const std::u16string& units) {
    Bstr input = Bstr::FromUnits(units);
    Bstr result;
    EXPECT_EQ(S_OK, vb::esRemoveBackslash(input.get(), result.out()));
    return result.isNull() ? u"<null>" : result.units();
}

TEST(Boundary, TextBothWays) {
    struct Row {
        std::u16string input;
        std::u16string expected;
    } rows[] = {
        {u"plain", u"plain"},
        {u"", u"<null>"},
        {std::u16string(u"\0abc", 4), u"<null>"},      // a first NUL makes it empty
        {std::u16string(u"ab\0cd", 5), u"ab"},         // cut at the embedded NUL
        {u"caf\u00e9 \u20ac", u"caf\u00e9 \u20ac"},    // in the code page: kept
        {u"x\u4e2dy", u"x?y"},                         // outside it: the platform's "?"
        {u"a\U0001F600b", u"a??b"},                    // a surrogate pair: one "?" per unit
        {std::u16string(u"a\xD800" u"b"), u"a?b"},     // unpaired surrogates
        {std::u16string(u"a\xDC00"), u"a?"},
    };
    for (const auto& row : rows) EXPECT_EQ(row.expected, RoundTrip(row.input)) << Utf8(row.input);
}

TEST(Boundary, MegabyteTextCrossesWhole) {
    std::u16string big(1 << 20, u'x');
    big[12345] = u'\u00e9';
    EXPECT_EQ(big, RoundTrip(big));
}

TEST(Boundary, AnswerReplacesTheCallersString) {
    Bstr result("previous");
    EXPECT_EQ(S_OK, vb::esAddBackslash(Bstr("a").get(), result.out()));
    EXPECT_EQ("a\\", result.text());
    EXPECT_EQ(S_OK, vb::esAddBackslash(Bstr("").get(), result.out()));
    EXPECT_EQ(kNull, result.text());
}

TEST(Boundary, NullOutPointerWritesNothingAndIsStatusOne) {
    for (BSTR input : {static_cast<BSTR>(nullptr), Bstr("x").get()})
        EXPECT_EQ(S_FALSE, vb::esAddBackslash(input, nullptr));
}

TEST(Boundary, LoadSetsLocaleAndExtendedPrecision) {
    CskProc("esAddBackslash");  // the library is loaded
    EXPECT_EQ(0u, _controlfp(0, 0) & 0x30300u) << "64-bit mantissa, round to nearest";
#ifdef _WIN32
    // msvcrt's locale is process-wide: the DLL set the user's default.
    EXPECT_STRNE("C", std::setlocale(LC_CTYPE, nullptr));
#endif
}

// The frames, driven with a worker that records whether it ran.
TEST(Frame, GuardedAnswersEmptyInputItself) {
    struct Row {
        Bstr input;
        bool workerRuns;
        const char* expected;
    };
    Row rows[] = {
        {Bstr(), false, ""},
        {Bstr(""), false, ""},
        {Bstr::FromUnits(std::u16string(u"\0x", 2)), false, ""},
        {Bstr("abc"), true, "ABC"},
    };
    for (auto& row : rows) {
        bool ran = false;
        Bstr result("stale");
        HRESULT status = GuardedTextExport("Test", "GUARDED", result.out(), row.input.get(), [&] {
            ran = true;
            return UCase(BSTRTOSTRING(row.input.get()));
        });
        EXPECT_EQ(S_OK, status);
        EXPECT_EQ(row.workerRuns, ran);
        EXPECT_FALSE(result.isNull()) << "a guarded export never leaves a null BSTR here";
        EXPECT_EQ(row.expected, result.text());
    }
    EXPECT_EQ(S_FALSE, GuardedTextExport("Test", "GUARDED", nullptr, nullptr, [] { return std::string("x"); }));
}

TEST(Frame, UnguardedHandsEmptyBackAsNull) {
    Bstr result("stale");
    EXPECT_EQ(S_OK, TextExport("Test", "UNGUARDED", result.out(), [] { return std::string(); }));
    EXPECT_TRUE(result.isNull());
}

TEST(Frame, NothingThrownCrossesTheBoundary) {
    Bstr result("kept");
    EXPECT_EQ(E_OUTOFMEMORY, TextExport("Test", "THROWS", result.out(), []() -> std::string { throw std::bad_alloc(); }));
    EXPECT_EQ("kept", result.text());
}

TEST(Frame, ErrorContextIsRestored) {
    g_errorContext = {"Outer", "OUTER"};
    Bstr result;
    TextExport("Inner", "INNER", result.out(), [] {
        EXPECT_STREQ("INNER", g_errorContext.routine);
        return BSTRTOSTRING(nullptr);
    });
    EXPECT_STREQ("Outer", g_errorContext.module);
    EXPECT_STREQ("OUTER", g_errorContext.routine);
}

#ifdef CSK_WINSIM
// Only the stand-in can make the platform's conversions refuse.
TEST(Boundary, ConversionFallbacks) {
    Bstr text = Bstr::FromUnits(u"a\u00e9\u4e2d\U0001F600b");
    winsim::reset();
    winsim::failNext("WideCharToMultiByte");
    EXPECT_EQ("a\xE9", BSTRTOSTRING(Bstr::FromUnits(u"a\u00e9").get())) << "the C library converts instead";
    winsim::failNext("WideCharToMultiByte");
    winsim::failNext("wcstombs");
    EXPECT_EQ("a???b", BSTRTOSTRING(text.get())) << "unit by unit, a surrogate pair as one ?";

    Bstr result;
    winsim::failNext("mbstowcs");
    HANDBACK(result.out(), "a\xE9z");
    EXPECT_EQ(u"a?z", result.units()) << "byte by byte";
    winsim::reset();
}

TEST(Frame, FatalStopNamesTheRoutine) {
    EXPECT_EXIT(
        {
            RoutineScope scope("SomeModule", "SOMEROUTINE");
            FATALSTOP(kErrorNullPointer, 42);
        },
        ::testing::ExitedWithCode(7),
        "\nAborting due to runtime error 7 \\(null pointer access\\) at line 42 of SomeModule::SOMEROUTINE\\(\\)");
}
#endif

TEST(WorkingString, Operations) {
    const std::string s = "abcabc";
    struct PieceRow {
        std::string got, expected;
    } pieces[] = {
        {Left(s, -3), ""}, {Left(s, 2), "ab"},   {Left(s, 99), s},      {Left("", 2), ""},
        {Right(s, 2), "bc"}, {Right(s, 99), s},  {Right(s, 0), ""},     {Mid(s, 3, 3), "cab"},
        {Mid(s, 3), "cabc"}, {Mid(s, 6, 5), "c"}, {Mid(s, 7), ""},      {Mid(s, 0), ""},
        {Mid(s, 2, 0), ""},  {UCase("aBc1!"), "ABC1!"}, {LCase("aBc1!"), "abc1!"},
    };
    for (const auto& row : pieces) EXPECT_EQ(row.expected, row.got);

    struct InstrRow {
        long start;
        const char* t;
        long expected;
    } instr[] = {{1, "bc", 2}, {3, "bc", 5}, {6, "bc", 0}, {0, "a", 0}, {7, "a", 0}, {1, "", 0}, {1, "abcabcx", 0}};
    for (const auto& row : instr) EXPECT_EQ(row.expected, Instr(row.start, s, row.t)) << row.t << "@" << row.start;
    EXPECT_EQ(0, Instr(1, "", "a"));

    struct InstrRevRow {
        const char* t;
        long start;
        long expected;
    } instrRev[] = {{"bc", -1, 5}, {"bc", 4, 2}, {"bc", 5, 5}, {"a", 0, 0}, {"a", 7, 0}, {"", -1, 0}, {"abcabcx", -1, 0}};
    for (const auto& row : instrRev)
        EXPECT_EQ(row.expected, InstrRev(s, row.t, row.start)) << row.t << "@" << row.start;
}

TEST(Tools, TrimNullBuffer) {
    struct Row {
        std::string in;
        std::string out;
    } rows[] = {{std::string("\0abc", 4), ""}, {"abc", "abc"}, {std::string("ab\0\0", 4), "ab"}, {"", ""}};
    for (auto& row : rows) {
        std::string s = row.in;
        EXPECT_EQ(row.out, TRIMNULLBUFFER(s));
        EXPECT_EQ(row.out, s) << "the argument itself is cut too";
    }
}

TEST(Tools, Environment) {
    SetEnvironmentVariableA("CSK_TEST_VALUE", "hello");
    SetEnvironmentVariableA("CSK_TEST_EMPTY", "");
    SetEnvironmentVariableA("CSK_TEST_UNSET", nullptr);
    EXPECT_EQ("hello", GETENVIRON("CSK_TEST_VALUE"));
    EXPECT_EQ("hello", GETENVIRON("csk_test_value")) << "names ignore case";
    EXPECT_EQ("", GETENVIRON("CSK_TEST_EMPTY"));
    EXPECT_EQ("", GETENVIRON("CSK_TEST_UNSET"));
    EXPECT_EQ("", GETENVIRON(""));
    EXPECT_EQ("<hello>", EXPANDENVIRON("<%CSK_TEST_VALUE%>"));
    EXPECT_EQ("x%CSK_TEST_UNSET%y", EXPANDENVIRON("x%CSK_TEST_UNSET%y"));
    EXPECT_EQ("xy", EXPANDENVIRON("x%CSK_TEST_EMPTY%y"));
    EXPECT_EQ("no references", EXPANDENVIRON("no references"));
    EXPECT_EQ("", EXPANDENVIRON(""));
    std::string longValue(5000, 'v');
    SetEnvironmentVariableA("CSK_TEST_LONG", longValue.c_str());
    EXPECT_EQ(longValue, GETENVIRON("CSK_TEST_LONG"));
    EXPECT_EQ(longValue + longValue, EXPANDENVIRON("%CSK_TEST_LONG%%CSK_TEST_LONG%"));
}

TEST(Tools, ByteBuffers) {
    ByteArray withNul = {'a', 'b', 0, 'c'};
    EXPECT_EQ("ab", BYTEBUFFTOSTRINGA(withNul));
    EXPECT_EQ(4u, withNul.size());
    ByteArray without = {'x', 'y'};
    EXPECT_EQ("xy", BYTEBUFFTOSTRINGA(without));
    EXPECT_EQ((ByteArray{'x', 'y', 0}), without) << "a terminator is added";
    ByteArray none;
    EXPECT_EQ("", BYTEBUFFTOSTRINGA(none));

    ByteArray destination = {1, 2, 3};
    COPYBYTEBUFFER(destination, ByteArray{9, 8});
    EXPECT_EQ((ByteArray{9, 8}), destination);
    COPYBYTEBUFFER(destination, ByteArray{});
    EXPECT_TRUE(destination.empty());
}

}  // namespace
