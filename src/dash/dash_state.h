// What the Dash manager remembers while it runs, and what makes one of its modes.
#pragma once

#include "dash/cockpit.h"
#include "dash/view.h"
#include "model/arcs.h"
#include "widgets/screen_loop.h"

#include <optional>
#include <span>
#include <string>

// What is worked on of a list of points, and the arc along which they can be laid.
struct PointEdit {
    int selected = 0;
    Arc arc;
};

// A bitmap that the mouse moves, by the point at which it was taken.
struct Drag {
    int bitmap;
    std::string name;     // of the bitmap: meanwhile another one may have come to its place in the table
    CockpitPoint grabbed; // from the bitmap's left top corner
};

constexpr int tabs = -1; // in place of a gear: the gate

struct DashScreen : ScreenState {
    bool redraw = true;
    int zoom = small_zoom;
    int item = 1;      // of DASHITEM
    int gear = 1;      // 1 .. most_gears, or tabs
    bool arcs = false; // keys act on the arc, not on the selected point
    PointEdit wheel{0, arc_of_wheel()}, speed{0, arc_of(speedometer)}, revolutions{0, arc_of(tachometer)};
    int spokes = last_marker;
    Steering steering = Steering::straight;
    std::optional<Drag> drag{};

    CockpitView view() const { return view_at(zoom); }
};

// A mode: what it shows and what acts in it. Null where it has none of that.
struct DashMode {
    const char* key_heading; // over its keys in a list for a person
    const char* view_title;
    void (*draw_view)(const DashScreen&); // the cockpit and the marks on it, cut at the view
    void (*draw_panel)(const DashScreen&);
    void (*on_mouse)(DashScreen&, CockpitPoint); // the left button is down, the pointer in the view
    std::span<const KeyBinding<DashScreen>> keys;
    bool (*on_drop)(DashScreen&) = nullptr; // see Screen (widgets/screen_loop.h)
};
