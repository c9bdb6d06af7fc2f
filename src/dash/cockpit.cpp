#include "dash/cockpit.h"

#include "drawing/drawing.h"
#include "model/bitmap_table.h"
#include "model/preview.h"
#include "window/window.h"

#include <string>

namespace {

// The marker that the dot reaches with the wheel turned, of 30 for a quarter turn: the wheels of the sample cars are
// turned by 23 to 30 degrees in their pictures, and where a clamp shows by how much it is 30.
constexpr int turned_marker = 10;

void draw_at(const CockpitView& view, const BitmapRecord& bitmap, CockpitPoint place, DrawMode mode) {
    const Image* picture = preview(bitmap, view.zoom);
    if (!picture) return;
    const Point at = view.at(place);
    draw_image(screen(), *picture, at.x, at.y, mode);
}

void draw(const CockpitView& view, int index, DrawMode mode) {
    if (index == 0) return;
    const BitmapRecord& bitmap = BITMAP[index];
    draw_at(view, bitmap, {bitmap.absolute_x, bitmap.absolute_y}, mode);
}

void draw(const CockpitView& view, std::string_view id, DrawMode mode) { draw(view, RBM(id), mode); }

// "ins1", "ins2" or "ins3".
std::string steered(std::string_view id, Steering steering) {
    return std::string(id) + std::to_string(static_cast<int>(steering) + 2);
}

void draw_around(const CockpitView& view, CockpitPoint centre, std::string_view id, DrawMode mode) {
    const int index = RBM(id);
    if (index == 0) return;
    const BitmapRecord& bitmap = BITMAP[index];
    draw_at(view, bitmap, centre - CockpitPoint{bitmap.width / 2, bitmap.height / 2}, mode);
}

} // namespace

void draw_bitmap(const CockpitView& view, int index) { draw(view, index, DrawMode::copy); }
void draw_bitmap(const CockpitView& view, std::string_view id) { draw(view, id, DrawMode::copy); }

void draw_body(const CockpitView& view) {
    draw_bitmap(view, "roof");
    draw_bitmap(view, "dash");
    draw(view, "dasm", DrawMode::and_);
    draw(view, "dast", DrawMode::or_);
}

void draw_cockpit(const CockpitView& view, Steering steering) {
    draw_body(view);
    draw_bitmap(view, steered("whl", steering));
    if (steering == Steering::straight) {
        draw_bitmap(view, "ins2");
        return;
    }
    draw(view, steered("inm", steering), DrawMode::and_);
    draw(view, steered("ins", steering), DrawMode::or_);
}

void draw_steering_dot(const CockpitView& view, Steering steering) {
    if (wheel_marker(0) == CockpitPoint{}) return; // as in a new car, which has no markers yet
    switch (steering) {
    case Steering::left: return draw_around(view, mirrored_marker(turned_marker), "dot1", DrawMode::copy);
    case Steering::right: return draw_around(view, wheel_marker(turned_marker), "dot2", DrawMode::copy);
    case Steering::straight: break;
    }
    const bool masked = RBM("dota") != 0;
    if (masked) draw_around(view, wheel_marker(0), "dota", DrawMode::and_);
    draw_around(view, wheel_marker(0), "dot ", masked ? DrawMode::or_ : DrawMode::copy);
}
