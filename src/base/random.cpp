#include "base/random.h"

#include "base/reset.h"
#include <bit>
#include <cstdint>
#include <random>

namespace {
std::mt19937_64& generator() {
    static std::mt19937_64 instance;
    return instance;
}
} // namespace

void seed_random(double seed) { generator().seed(std::bit_cast<std::uint64_t>(seed)); }

double random_unit() { return std::uniform_real_distribution<double>(0.0, 1.0)(generator()); }

namespace {
const ResetWithProgram registered([] { generator() = std::mt19937_64(); });
}
