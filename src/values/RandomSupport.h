// Module RandomSupport: one process-wide random source, either the
// platform's cryptographic provider, taken in batches of 624 words, or a
// Mersenne Twister with the library's own seeding. Numbers go out as a
// 32-bit word times 2^-32: from 0 inclusive to 1 exclusive.
#pragma once

#include <cstdint>

#include "Platform.h"

// Seeds from the high-resolution counter and picks the Twister (flag set)
// or the provider. Without a counter: the tick count and the Twister.
void RANDOMIZEIT(uint8_t twister);

// Fills the word table from seed, makes the Twister (flag set) or the
// provider the active generator, and marks the source as randomised. The
// last value is kept.
void SEEDGENERATOR(uint32_t seed, uint8_t twister);

// 1 while the Twister is the active generator: chosen, or fallen back to
// after the provider refused.
uint8_t ISTWISTERACTIVE();

// The next number, or with repeat the last one again (0.0 before any).
// Seeds with the provider at first use.
double RNDIT(uint8_t repeat);

// v, a multiple of 2^-32 as RNDIT gives it, mapped onto low..high: span * v + low rounded to the nearest whole
// number, a tie to the even one, then held within low and high.
LONG RNDINRANGE(double v, LONG low, LONG high);
