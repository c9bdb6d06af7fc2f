#include "editor3d/view_ground.h"

#include "drawing/drawing.h"
#include "model/car.h"
#include "model/parameters.h"

namespace {

constexpr int grid_reach = 5; // model units from the origin
constexpr int grid_lines_per_unit = 2;
constexpr int wheel_dot_radius = 3;
constexpr int wheel_count = 4, bytes_per_wheel = 6, wheel_along = 4;

std::uint32_t grid_colour(int line) {
    if (line == 0) return ground_colour::axis;
    return line % grid_lines_per_unit == 0 ? ground_colour::unit : ground_colour::half_unit;
}

} // namespace

void draw_grid(Canvas& canvas, const ViewMapping& mapping) {
    const double reach = grid_reach * mapping.zoom;
    const double left = mapping.origin_x - reach, right = mapping.origin_x + reach;
    const double top = mapping.origin_y - reach, bottom = mapping.origin_y + reach;
    constexpr int lines = grid_reach * grid_lines_per_unit;
    for (int line = -lines; line <= lines; ++line) {
        const double offset = static_cast<double>(line) / grid_lines_per_unit * mapping.zoom;
        const double x = mapping.origin_x + offset, y = mapping.origin_y + offset;
        draw_line(canvas, x, top, x, bottom, grid_colour(line));
        draw_line(canvas, left, y, right, y, grid_colour(line));
    }
}

namespace {

// Pixels per unit of the words of the collision box, and of the wheels' places.
double collision_scale(const ViewMapping& mapping) { return CARSCALE[1] * mapping.zoom; }
double wheel_scale(const ViewMapping& mapping) { return CARSCALE[3] * mapping.zoom; }

double signed_word(int offset) { return static_cast<std::int16_t>(par_word(offset)); }

void draw_wheel_dots(Canvas& canvas, const ViewMapping& mapping) {
    for (int wheel = 0; wheel < wheel_count; ++wheel) {
        const int offset = par_offset::wheels + wheel * bytes_per_wheel;
        const double across = signed_word(offset) * wheel_scale(mapping);
        const double along = signed_word(offset + wheel_along) * wheel_scale(mapping);
        // ODDITY wheel-dots-mirrored (kept): y runs downwards here, upwards in the wireframe.
        draw_circle(canvas, mapping.origin_x + across, mapping.origin_y + along, wheel_dot_radius,
                    ground_colour::physical_data, 1, 0, whole_circle, true);
    }
}

void draw_from_top(Canvas& canvas, const ViewMapping& mapping) {
    draw_wheel_dots(canvas, mapping);
    const double scale = collision_scale(mapping);
    const double half_width = par_word(par_offset::collision_half_width) * scale;
    const double half_length = par_word(par_offset::collision_half_length) * scale;
    draw_circle(canvas, mapping.origin_x, mapping.origin_y, par_word(par_offset::collision_radius) * scale,
                ground_colour::physical_data);
    draw_box(canvas, mapping.origin_x - half_width, mapping.origin_y - half_length, mapping.origin_x + half_width,
             mapping.origin_y + half_length, ground_colour::physical_data);
}

void draw_standing_box(Canvas& canvas, const ViewMapping& mapping, int half_side_offset) {
    const double half_side = par_word(half_side_offset) * collision_scale(mapping);
    const double height = par_word(par_offset::collision_height) * collision_scale(mapping);
    draw_box(canvas, mapping.origin_x - half_side, mapping.origin_y - height, mapping.origin_x + half_side,
             mapping.origin_y, ground_colour::physical_data);
}

} // namespace

void draw_physical_data(Canvas& canvas, Plane plane, const ViewMapping& mapping) {
    switch (plane) {
    case Plane::top: return draw_from_top(canvas, mapping);
    case Plane::front: return draw_standing_box(canvas, mapping, par_offset::collision_half_width);
    case Plane::side: return draw_standing_box(canvas, mapping, par_offset::collision_half_length);
    }
}
