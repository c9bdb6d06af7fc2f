#include "dash/view.h"

namespace {

constexpr Rectangle section_area{50, 100, 689, 499};
constexpr Rectangle whole_area{0, 0, 959, 599};

} // namespace

Point CockpitView::at(CockpitPoint place) const { return {area.x1 + zoom * place.x, area.y1 + zoom * place.y}; }

std::optional<CockpitPoint> CockpitView::canvas_point(Point pixel) const {
    if (!area.contains(pixel)) return {};
    return CockpitPoint{(pixel.x - area.x1) / zoom, (pixel.y - area.y1) / zoom};
}

CockpitView view_at(int zoom) { return {zoom, zoom == small_zoom ? section_area : whole_area}; }
