// Fractions made whole numbers: to the nearest, a tie going to the even
// neighbour (placement and opacity), or away from zero (screen units).
#pragma once

#include <cmath>

inline double ROUNDHALFEVEN(double value) {
    const double below = std::floor(value);
    const double fraction = value - below;
    if (fraction > 0.5) return below + 1;
    if (fraction < 0.5) return below;
    return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

inline double ROUNDHALFAWAY(double value) { return std::round(value); }
