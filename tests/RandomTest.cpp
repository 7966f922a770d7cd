// The random source and GUIDs. The Twister is checked word for word against
// a separate implementation; the provider's batches and the fall back to
// the Twister are watched through the stand-in's call counts.
#include <cmath>
#include <set>

#include "GUID.h"
#include "RandomSupport.h"
#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

const double kWordToFloat = 1.0 / 4294967296.0;

// MT19937 with the library's seeding, written the other way round: one
// word of the state is renewed per draw instead of the whole table at once.
struct ReferenceTwister {
    uint32_t mt[624];
    int i = 0;
    explicit ReferenceTwister(uint32_t seed) {
        mt[0] = seed;
        for (int k = 1; k < 624; ++k) mt[k] = mt[k - 1] * 1664525u + 1013904223u;
    }
    uint32_t next() {
        int j = i + 1 == 624 ? 0 : i + 1, m = i + 397 >= 624 ? i + 397 - 624 : i + 397;
        uint32_t y = (mt[i] & 0x80000000u) | (mt[j] & 0x7FFFFFFFu);
        mt[i] = mt[m] ^ (y >> 1) ^ ((0u - (y & 1u)) & 0x9908B0DFu);
        y = mt[i];
        i = j;
        y ^= y >> 11;
        y ^= y << 7 & 0x9D2C5680u;
        y ^= y << 15 & 0xEFC60000u;
        return y ^ y >> 18;
    }
};

// What the exports hold before anything is drawn; this runs first in the
// file, while the library's generator is still unseeded.
TEST(Random, RepeatBeforeAnyDrawIsZero) {
    double answer = -1;
    EXPECT_EQ(S_OK, vb::esRnd(-1, &answer));
    EXPECT_EQ(0.0, answer);
    LONG whole = -1;
    EXPECT_EQ(S_OK, vb::esGetRnd(7, 9, 1, &whole));
    EXPECT_EQ(7, whole);
}

TEST(Random, TwisterSeededWithOne) {
    SEEDGENERATOR(1, 1);
    const uint32_t first[] = {0x795F26A8, 0x88418262, 0xA40CFB36};
    const double floats[] = {0.4741081390529871, 0.5322495927102864, 0.6408230788074434};
    for (int k = 0; k < 3; ++k) {
        double v = RNDIT(0);
        EXPECT_EQ(first[k] * kWordToFloat, v);
        EXPECT_NEAR(floats[k], v, 1e-16);
    }
    for (uint32_t seed : {1u, 0u, 5489u, 0xFFFFFFFFu}) {
        SEEDGENERATOR(seed, 1);
        ReferenceTwister reference(seed);
        for (int k = 0; k < 5000; ++k) ASSERT_EQ(reference.next() * kWordToFloat, RNDIT(0)) << seed << " word " << k;
    }
}

TEST(Random, RepeatGivesTheLastValue) {
    double a = -1, b = -1, c = -1, d = -1;
    EXPECT_EQ(S_OK, vb::esRnd(0, &a));
    EXPECT_EQ(S_OK, vb::esRnd(-1, &b));
    EXPECT_EQ(a, b);
    EXPECT_EQ(S_OK, vb::esRnd(0, &c));
    EXPECT_NE(a, c);
    EXPECT_EQ(S_OK, vb::esRandomize(0));
    EXPECT_EQ(S_OK, vb::esRnd(0x7FFF, &d));  // re-seeding keeps the last value
    EXPECT_EQ(c, d);
    EXPECT_TRUE(c >= 0 && c < 1 && std::floor(c * 4294967296.0) == c * 4294967296.0);
}

// The word behind v, and the expected whole number computed in the
// extended precision the library sets at load, where span * v + low is
// exact; nearbyint rounds ties to even.
LONG Expected(double v, LONG low, LONG high) {
    long double span = static_cast<int32_t>(static_cast<uint32_t>(high) - static_cast<uint32_t>(low));
    long double x = std::nearbyint(span * static_cast<long double>(v) + static_cast<long double>(low));
    if (x < low) x = low;
    if (x > high) x = high;
    return static_cast<LONG>(x);
}

TEST(Random, RangeMapping) {
    const struct {
        uint32_t word;
        LONG low, high, expected;
    } rows[] = {
        {0x19999999, 1, 6, 1},                          // v just below 0.1
        {0xE6666667, 1, 6, 6},                          // v just above 0.9
        {0x80000000, 1, 6, 4},                          // 3.5 goes to the even 4
        {0x80000000, 0, 5, 2},                          // 2.5 goes to the even 2
        {0x80000000, 1, 8, 4},                          // 4.5: the parity is that of the sum
        {0x40000000, 0, 2, 0},                          // 0.5 -> 0
        {0xC0000000, 0, 2, 2},                          // 1.5 -> 2
        {0, 1, 6, 1},
        {0xFFFFFFFF, 5, 5, 5},
        {0x80000000, 10, 1, 1},                         // high below low: high
        {0, 10, 1, 1},
        {0x80000000, 0, 2147483647, 1073741824},        // 1073741823.5 -> even
        // 2147483646.5 + 2^-32: only a 64-bit mantissa keeps the 2^-32
        // that lifts it above the tie (a double would round it to ...46).
        {0xFFFFFFFF, 0, 2147483647, 2147483647},
        {0xFFFFFFFF, -2147483647 - 1, -1, -1},
        {0x80000000, -2147483647 - 1, -1, -1073741824},
        {0x80000000, -3, 0, -2},                        // -1.5 -> even -2
    };
    for (const auto& row : rows) {
        double v = row.word * kWordToFloat;
        EXPECT_EQ(row.expected, RNDINRANGE(v, row.low, row.high)) << std::hex << row.word << std::dec << " " << row.low
                                                                 << ".." << row.high;
        EXPECT_EQ(row.expected, Expected(v, row.low, row.high)) << "the reference disagrees";
    }
}

// With repeat set, esGetRnd maps the one v into every range asked for.
TEST(Random, RepeatMapsTheSameValueIntoAnyRange) {
    const LONG ranges[][2] = {{1, 6}, {0, 1}, {-100, 100}, {0, 2147483647}, {-2147483647 - 1, -1}, {-5, 1000000}};
    for (int draw = 0; draw < 2000; ++draw) {
        double v;
        ASSERT_EQ(S_OK, vb::esRnd(0, &v));
        for (const auto& range : ranges) {
            LONG whole = 0;
            ASSERT_EQ(S_OK, vb::esGetRnd(range[0], range[1], -1, &whole));
            ASSERT_EQ(Expected(v, range[0], range[1]), whole) << v << " into " << range[0] << ".." << range[1];
        }
    }
}

// The rounding makes both ends reachable, each half as often as an inner
// value: 1/10 against 1/5 of the draws.
TEST(Random, EndsComeHalfAsOftenAsInnerValues) {
    for (VARIANT_BOOL twister : {VARIANT_TRUE, VARIANT_FALSE}) {
        EXPECT_EQ(S_OK, vb::esRandomize(twister));
        const int draws = 200000;
        int count[7] = {};
        for (int k = 0; k < draws; ++k) {
            LONG whole = 0;
            ASSERT_EQ(S_OK, vb::esGetRnd(1, 6, 0, &whole));
            ASSERT_TRUE(whole >= 1 && whole <= 6) << whole;
            ++count[whole];
        }
        // Six standard deviations either side.
        for (int face = 1; face <= 6; ++face) {
            double expected = draws * (face == 1 || face == 6 ? 0.1 : 0.2);
            EXPECT_NEAR(expected, count[face], 6 * std::sqrt(expected)) << "face " << face << " twister " << twister;
        }
    }
}

#ifdef CSK_WINSIM  // the provider's calls are counted and refused through the stand-in
TEST(Random, ProviderIsOpenedOncePerBatch) {
    winsim::reset();
    EXPECT_EQ(S_OK, vb::esRandomize(0));
    double v;
    for (int k = 0; k < 624; ++k) vb::esRnd(0, &v);
    EXPECT_EQ(1, winsim::calls("CryptAcquireContextA"));
    EXPECT_EQ(1, winsim::calls("CryptGenRandom"));
    EXPECT_EQ(1, winsim::calls("CryptReleaseContext"));
    vb::esRnd(0, &v);
    EXPECT_EQ(2, winsim::calls("CryptAcquireContextA"));
    EXPECT_EQ(2, winsim::calls("CryptReleaseContext"));
}

TEST(Random, RefusingProviderHandsOverToTheTwisterUntilReseeded) {
    for (const char* refusing : {"CryptAcquireContextA", "CryptGenRandom"}) {
        winsim::reset();
        EXPECT_EQ(S_OK, vb::esRandomize(0));
        winsim::failNext(refusing);
        double v;
        for (int k = 0; k < 3000; ++k) vb::esRnd(0, &v);
        EXPECT_EQ(1, winsim::calls("CryptAcquireContextA")) << refusing;
        EXPECT_EQ(winsim::calls("CryptAcquireContextA") - (refusing[5] == 'A' ? 1 : 0),
                  winsim::calls("CryptReleaseContext"))
            << "an acquired provider is released";
        EXPECT_EQ(S_OK, vb::esRandomize(0));
        vb::esRnd(0, &v);
        EXPECT_EQ(2, winsim::calls("CryptAcquireContextA")) << refusing;
    }
    // The same inside: the fall back makes the Twister the active generator.
    SEEDGENERATOR(99, 0);
    EXPECT_EQ(0, ISTWISTERACTIVE());
    winsim::failNext("CryptAcquireContextA");
    RNDIT(0);
    EXPECT_EQ(1, ISTWISTERACTIVE());
}

TEST(Random, WithoutCounterTheTwisterIsTaken) {
    winsim::reset();
    winsim::failNext("QueryPerformanceCounter");
    EXPECT_EQ(S_OK, vb::esRandomize(0));
    EXPECT_EQ(1, winsim::calls("GetTickCount"));
    double v;
    for (int k = 0; k < 1000; ++k) vb::esRnd(0, &v);
    EXPECT_EQ(0, winsim::calls("CryptAcquireContextA"));
}
#endif

TEST(Random, NullAnswerPointerDrawsNothing) {
    double before = -1, after = -1;
    vb::esRnd(0, &before);
    EXPECT_EQ(S_FALSE, vb::esRnd(0, nullptr));
    EXPECT_EQ(S_FALSE, vb::esGetRnd(1, 6, 0, nullptr));
    vb::esRnd(-1, &after);
    EXPECT_EQ(before, after);
}

bool IsRegistryForm(const std::string& text) {
    if (text.size() != 38 || text.front() != '{' || text.back() != '}') return false;
    for (size_t i = 1; i < 37; ++i) {
        char c = text[i];
        bool hyphen = i == 9 || i == 14 || i == 19 || i == 24;
        if (hyphen ? c != '-' : !((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'))) return false;
    }
    return true;
}

TEST(Guid, NewGuidsAreDistinctRegistryForms) {
    Bstr a("previous"), b;
    EXPECT_EQ(S_OK, vb::esGetNewGUID(a.out()));
    EXPECT_EQ(S_OK, vb::esGetNewGUID(b.out()));
    EXPECT_TRUE(IsRegistryForm(a.text())) << a.text();
    EXPECT_TRUE(IsRegistryForm(b.text())) << b.text();
    EXPECT_NE(a.text(), b.text());
    std::set<std::string> seen;
    for (int k = 0; k < 1000; ++k) seen.insert(WR_ESGETNEWGUID());
    EXPECT_EQ(1000u, seen.size());
}

TEST(Guid, NullOutPointerMakesNone) {
#ifdef CSK_WINSIM
    winsim::reset();
#endif
    EXPECT_EQ(S_FALSE, vb::esGetNewGUID(nullptr));
#ifdef CSK_WINSIM  // the stand-in counts and refuses
    EXPECT_EQ(0, winsim::calls("CoCreateGuid"));
    for (const char* refusing : {"CoCreateGuid", "StringFromGUID2"}) {
        Bstr text("previous");
        winsim::failNext(refusing);
        EXPECT_EQ(S_OK, vb::esGetNewGUID(text.out()));
        EXPECT_EQ(kNull, text.text()) << refusing;
    }
#endif
}

}  // namespace
