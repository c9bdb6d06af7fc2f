// The marks on the cockpit: small boxes and crosses, measured from the left top pixel of the canvas point that they
// stand for.
#pragma once

#include "dash/view.h"

#include <cstdint>

namespace mark_colour {
constexpr std::uint32_t selected = 0xFFC864FA, plain = 0xFF00FAFA, centre = 0xFF00FA64, arc = 0xFFFAFA00,
                        current_gear = 0xFFFA00C8, number = 0xFFFAFAFA, shadow = 0xFF000000;
}

// A square from one corner to the other, both included, at each zoom.
struct MarkSize {
    int from, to;
};
struct MarkSizes {
    MarkSize small, large;
    const MarkSize& at(int zoom) const { return zoom == small_zoom ? small : large; }
};

void outline_mark(const CockpitView& view, CockpitPoint place, const MarkSizes& sizes, std::uint32_t colour);
void fill_mark(const CockpitView& view, CockpitPoint place, const MarkSizes& sizes, std::uint32_t colour);
