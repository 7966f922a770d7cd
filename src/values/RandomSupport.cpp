// Module RandomSupport: the random source and its exports.
#include "RandomSupport.h"

#include <cstring>

#include "Frame.h"

static const char kModule[] = "RandomSupport";

namespace {

enum : int { kWords = 624, kShift = 397 };

enum Generator : uint8_t { kNoGenerator, kTwister, kProvider };

// The generator's state, alive for the whole process.
uint8_t g_randomized = 0;
Generator g_generator = kNoGenerator;
uint32_t g_words[kWords];
int g_position = kWords;  // kWords: the table is used up
double g_lastValue = 0.0;

// The library's own seeding, shared by both generators: word i is word i-1
// times 1664525 plus 1013904223 (mod 2^32).
void fillTable(uint32_t seed) {
    g_words[0] = seed;
    for (int i = 1; i < kWords; ++i) g_words[i] = g_words[i - 1] * 1664525u + 1013904223u;
    g_position = kWords;
}

uint32_t TWISTERWORD() {
    if (g_position >= kWords) {
        for (int i = 0; i < kWords; ++i) {
            uint32_t y = (g_words[i] & 0x80000000u) | (g_words[(i + 1) % kWords] & 0x7FFFFFFFu);
            g_words[i] = g_words[(i + kShift) % kWords] ^ (y >> 1) ^ ((y & 1) ? 0x9908B0DFu : 0u);
        }
        g_position = 0;
    }
    uint32_t y = g_words[g_position++];
    y ^= y >> 11;
    y ^= (y << 7) & 0x9D2C5680u;
    y ^= (y << 15) & 0xEFC60000u;
    y ^= y >> 18;
    return y;
}

// An acquired provider, released on every exit.
struct ProviderContext {
    HCRYPTPROV handle = 0;
    ~ProviderContext() {
        if (handle) CryptReleaseContext(handle, 0);
    }
};

// A whole table of provider bytes; false if the provider is not there or
// gives none.
bool fillFromProvider() {
    ProviderContext provider;
    if (CryptAcquireContextA(&provider.handle, nullptr, nullptr, PROV_RSA_FULL, 0) != 1) {
        provider.handle = 0;
        return false;
    }
    return CryptGenRandom(provider.handle, sizeof g_words, reinterpret_cast<BYTE*>(g_words)) != 0;
}

// A seed from the clock: the seconds since an arbitrary origin as a double,
// its two 32-bit halves combined.
uint32_t clockSeed() {
    LARGE_INTEGER counter, frequency;
    double seconds;
    if (QueryPerformanceCounter(&counter) && QueryPerformanceFrequency(&frequency) && frequency.QuadPart != 0)
        seconds = static_cast<double>(counter.QuadPart) * (1.0 / static_cast<double>(frequency.QuadPart));
    else
        seconds = GetTickCount() * 0.001;
    uint64_t bits;
    std::memcpy(&bits, &seconds, sizeof bits);
    return static_cast<uint32_t>(bits) ^ static_cast<uint32_t>(bits >> 32);
}

// Provider words go out untempered. A provider that fails hands the source
// over to the Twister until the next seeding.
uint32_t PROVIDERWORD() {
    if (g_position >= kWords) {
        if (!fillFromProvider()) {
            g_generator = kTwister;
            fillTable(clockSeed());
            return TWISTERWORD();
        }
        g_position = 0;
    }
    return g_words[g_position++];
}

}  // namespace

void SEEDGENERATOR(uint32_t seed, uint8_t twister) {
    CSK_ROUTINE("SEEDGENERATOR");
    g_generator = twister ? kTwister : kProvider;
    fillTable(seed);
    g_randomized = 1;
}

void RANDOMIZEIT(uint8_t twister) {
    CSK_ROUTINE("RANDOMIZEIT");
    LARGE_INTEGER counter;
    if (QueryPerformanceCounter(&counter)) SEEDGENERATOR(static_cast<uint32_t>(counter.QuadPart), twister);
    else SEEDGENERATOR(GetTickCount(), 1);
}

uint8_t ISTWISTERACTIVE() { return g_generator == kTwister ? 1 : 0; }

double RNDIT(uint8_t repeat) {
    CSK_ROUTINE("RNDIT");
    if (g_randomized != 1) RANDOMIZEIT(0);
    if (repeat) return g_lastValue;
    uint32_t word = g_generator == kTwister ? TWISTERWORD() : PROVIDERWORD();
    g_lastValue = word * (1.0 / 4294967296.0);
    return g_lastValue;
}

// Computed exactly in integers: v is a word times 2^-32, so span * v + low
// is a 64-bit count of 2^-32 units, and the rounding is done on that count.
// This is the answer the 64-bit-mantissa computation gives, and it does not
// depend on the precision the caller's floating-point unit happens to use.
LONG RNDINRANGE(double v, LONG low, LONG high) {
    CSK_ROUTINE("RNDINRANGE");
    int64_t span = static_cast<int32_t>(static_cast<uint32_t>(high) - static_cast<uint32_t>(low));
    int64_t word = static_cast<int64_t>(v * 4294967296.0);
    int64_t units = span * word;                       // span * v, in 2^-32 units
    int64_t whole = (units >> 32) + low;               // floor of span * v + low
    uint32_t fraction = static_cast<uint32_t>(units);  // what lies above it
    if (fraction > 0x80000000u || (fraction == 0x80000000u && (whole & 1))) ++whole;
    if (whole < low) whole = low;
    if (whole > high) whole = high;
    return static_cast<LONG>(whole);
}

CSK_EXPORT HRESULT WINAPI esRandomize(VARIANT_BOOL twister) {
    RoutineScope scope(kModule, "ESRANDOMIZE");
    RANDOMIZEIT(FLAG(twister));
    return S_OK;
}

CSK_EXPORT HRESULT WINAPI esRnd(VARIANT_BOOL repeat, double* answer) {
    return ValueExport(kModule, "ESRND", answer, [&] {
        *answer = RNDIT(FLAG(repeat));
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esGetRnd(LONG low, LONG high, VARIANT_BOOL repeat, LONG* answer) {
    return ValueExport(kModule, "ESGETRND", answer, [&] {
        *answer = RNDINRANGE(RNDIT(FLAG(repeat)), low, high);
        return S_OK;
    });
}
