#include "model/parameters.h"

namespace {
bool inside(int offset, int width) { return offset >= 0 && offset <= static_cast<int>(parameter_bytes) - width; }
} // namespace

std::uint8_t par_byte(int offset) {
    return inside(offset, 1) ? std::to_integer<std::uint8_t>(PAR[static_cast<std::size_t>(offset)]) : std::uint8_t{0};
}

void set_par_byte(int offset, std::uint8_t value) {
    if (inside(offset, 1)) PAR[static_cast<std::size_t>(offset)] = std::byte{value};
}

std::uint16_t word_of(const ParameterBlock& block, int offset) {
    if (!inside(offset, 2)) return 0;
    const auto at = static_cast<std::size_t>(offset);
    return static_cast<std::uint16_t>(std::to_integer<unsigned>(block[at]) | std::to_integer<unsigned>(block[at + 1])
                                                                                 << 8);
}

void set_word(ParameterBlock& block, int offset, std::uint16_t value) {
    if (!inside(offset, 2)) return;
    const auto at = static_cast<std::size_t>(offset);
    block[at] = static_cast<std::byte>(value & 0xFF);
    block[at + 1] = static_cast<std::byte>(value >> 8);
}

std::uint16_t par_word(int offset) { return word_of(PAR, offset); }
void set_par_word(int offset, std::uint16_t value) { set_word(PAR, offset, value); }

void reset_parameters() {
    PAR.fill(std::byte{0});
    CARNAME.clear();
    CARSIGNNAME.clear();
    CARINFO.clear();
    TITLENAME.clear();
}
