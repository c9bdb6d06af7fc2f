#include "dash/marks.h"

#include "drawing/drawing.h"
#include "window/window.h"

void outline_mark(const CockpitView& view, CockpitPoint place, const MarkSizes& sizes, std::uint32_t colour) {
    const Point at = view.at(place);
    const MarkSize& size = sizes.at(view.zoom);
    draw_box(screen(), at.x + size.from, at.y + size.from, at.x + size.to, at.y + size.to, colour);
}

void fill_mark(const CockpitView& view, CockpitPoint place, const MarkSizes& sizes, std::uint32_t colour) {
    const Point at = view.at(place);
    const MarkSize& size = sizes.at(view.zoom);
    fill_box(screen(), at.x + size.from, at.y + size.from, at.x + size.to, at.y + size.to, colour);
}
