// Where the cockpit stands on the screen: twice its size in a section of its own, or three times over the whole work
// area; and the way back from a pixel to the canvas.
#pragma once

#include "drawing/canvas.h"
#include "model/gauges.h"

#include <optional>

struct CockpitView {
    int zoom;       // screen pixels a canvas pixel
    Rectangle area; // what is seen of it; the canvas begins at its left top corner

    // The left top pixel of a canvas point.
    Point at(CockpitPoint place) const;
    // The canvas point at a pixel; none outside the area.
    std::optional<CockpitPoint> canvas_point(Point pixel) const;
};

constexpr int small_zoom = 2, large_zoom = 3;
constexpr int other_zoom(int zoom) { return small_zoom + large_zoom - zoom; }
CockpitView view_at(int zoom);
