#include "model/colours.h"

#include "base/reset.h"
std::array<std::uint32_t, 256> PAL{};
std::array<MaterialColour, 256> MATERIAL{};
OneBased<std::array<std::uint8_t, 4>, max_colour_schemes> PJCOL;
std::uint8_t PJCOLS = 0;

void reset_colours() {
    PAL.fill(0);
    MATERIAL.fill({});
    for (auto& scheme : PJCOL)
        scheme.fill(0);
    PJCOLS = 0;
}

namespace {
const ResetWithProgram registered(reset_colours);
}
