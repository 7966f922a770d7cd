// The random source and GUIDs. The Twister is held word for word against the
// standard library's engine; the provider's batches and the fall back to the
// Twister are watched through the stand-in's call counts.
#include <random>
#include <sstream>

#include "RandomSupport.h"
#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

// This runs first in the file: before anything is drawn, repeat gives 0.
// Every draw is a new multiple of 2^-32 in [0, 1), and repeat (any nonzero)
// hands it to esGetRnd again; neither a null answer pointer nor re-seeding
// disturbs it.
TEST(Random, DrawsAndRepeats) {
    double v = -1, previous = -1, again = -1;
    EXPECT_TRUE(vb::esRnd(-1, &v) == S_OK && v == 0.0) << v;
    for (int draw = 0; draw < 1000; ++draw, previous = v) {
        LONG whole = 0;
        ASSERT_EQ(S_OK, vb::esRnd(0, &v));
        ASSERT_TRUE(v >= 0 && v < 1 && static_cast<uint32_t>(v * 4294967296.0) * 0x1p-32 == v && v != previous) << v;
        ASSERT_TRUE(vb::esGetRnd(-100, 100, 0x7FFF, &whole) == S_OK && whole == RNDINRANGE(v, -100, 100)) << v;
    }
    EXPECT_EQ(S_FALSE, vb::esRnd(0, nullptr));
    EXPECT_EQ(S_FALSE, vb::esGetRnd(1, 6, 0, nullptr));
    EXPECT_EQ(S_OK, vb::esRandomize(0));
    EXPECT_TRUE(vb::esRnd(-1, &again) == S_OK && again == v) << again;
}

// std::mt19937 given the library's seeded table as its state (its textual
// form is the 624 words) renews them all before its first output, as the
// library does. The table is written here from the seeding rule: word i is
// word i-1 times 1664525 plus 1013904223, from a seed with every bit set.
TEST(Random, TwisterMatchesTheStandardEngine) {
    std::stringstream state;
    for (uint32_t k = 0, w = 0xFFFFFFFF; k < 624; ++k, w = w * 1664525u + 1013904223u) state << w << ' ';
    std::mt19937 reference;
    state >> reference;
    SEEDGENERATOR(0xFFFFFFFF, 1);
    for (int k = 0; k < 2000; ++k) ASSERT_EQ(reference() * 0x1p-32, RNDIT(0)) << "word " << k;
}

// span * v + low to the nearest whole number, a tie to the even one, held
// within low and high.
TEST(Random, RangeMapping) {
    const struct { uint32_t word; LONG low, high, expected; } rows[] = {
        {0x80000000, 1, 8, 4},                          // 4.5: the parity is that of the sum
        {0x80000000, 10, 1, 1},                         // high below low: high
        {0x80000000, 0, 2147483647, 1073741824},        // 1073741823.5 goes to the even
        // 2147483646.5 + 2^-32: only a 64-bit mantissa keeps the 2^-32 that
        // lifts it above the tie (a double would round it to ...46).
        {0xFFFFFFFF, 0, 2147483647, 2147483647},
        {0x80000000, -2147483647 - 1, -1, -1073741824},
    };
    for (const auto& row : rows) EXPECT_EQ(row.expected, RNDINRANGE(row.word * 0x1p-32, row.low, row.high));
}

#ifdef CSK_WINSIM  // the provider's calls are counted and refused through the stand-in
// From a provider that answers, 625 draws take two batches of 624 and the
// draw after a new seeding a third. One that refuses, or a missing counter,
// hands the source to the Twister until the next seeding; an acquired
// provider is always released.
TEST(Random, ProviderBatchesAndTheFallBackToTheTwister) {
    const struct { const char* refusing; int times, acquired, released; } rows[] = {
        {"CryptGenRandom", 0, 3, 3},
        {"CryptAcquireContextA", 1, 2, 1},
        {"CryptGenRandom", 1, 2, 2},
        {"QueryPerformanceCounter", 1, 1, 1},
    };
    for (const auto& row : rows) {
        double v;
        winsim::reset();
        winsim::failNext(row.refusing, row.times);
        EXPECT_EQ(S_OK, vb::esRandomize(0));
        for (int k = 0; k < 625; ++k) vb::esRnd(0, &v);
        EXPECT_EQ(S_OK, vb::esRandomize(0));  // back to the provider: one more batch
        vb::esRnd(0, &v);
        EXPECT_EQ(row.acquired, winsim::calls("CryptAcquireContextA")) << row.refusing << " " << row.times;
        EXPECT_EQ(row.released, winsim::calls("CryptReleaseContext")) << row.refusing << " " << row.times;
    }
}
#endif

TEST(Guid, NewGuidsAreDistinctRegistryForms) {
    Bstr a("previous"), b;
    EXPECT_TRUE(vb::esGetNewGUID(a.out()) == S_OK && vb::esGetNewGUID(b.out()) == S_OK);
    std::string shape = a.text() + b.text();  // upper-case hexadecimal digits become #
    for (char& c : shape) c = std::string("0123456789ABCDEF").find(c) == std::string::npos ? c : '#';
    EXPECT_EQ("{########-####-####-####-############}{########-####-####-####-############}", shape);
    EXPECT_NE(a.text(), b.text());
    EXPECT_EQ(S_FALSE, vb::esGetNewGUID(nullptr));
#ifdef CSK_WINSIM  // the stand-in refuses: no GUID, no text
    for (const char* refusing : {"CoCreateGuid", "StringFromGUID2"}) {
        winsim::failNext(refusing);
        EXPECT_EQ(S_OK, vb::esGetNewGUID(a.out()));
        EXPECT_EQ(kNull, a.text()) << refusing;
    }
#endif
}

}  // namespace
