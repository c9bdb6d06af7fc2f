#include "base/rounding.h"

#include <cmath>

namespace {
constexpr double words = 65536;
}

std::uint16_t rounded_word(double value) {
    const double whole = std::nearbyint(value);
    if (!std::isfinite(whole)) return 0;
    return static_cast<std::uint16_t>(static_cast<std::int32_t>(std::fmod(whole, words)) & 0xFFFF);
}
