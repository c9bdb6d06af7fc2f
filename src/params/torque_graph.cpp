#include "params/torque_graph.h"

#include "widgets/widgets.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

namespace {

constexpr std::uint32_t black = 0xFF000000;
constexpr std::uint32_t curve_colour = 0xFF00B400;
constexpr std::uint32_t selected_colour = 0xFF00FAFA;
constexpr std::uint32_t clipped_colour = 0xFFFF00FA;
constexpr std::uint32_t high_colour = 0xFFFA5000; // 128 and more
constexpr std::uint32_t low_colour = 0xFF00C800;
constexpr std::uint32_t hovered_colour = colour::title;

constexpr Rectangle cleared{12, 230, 718, 564};
constexpr int full_scale = 255; // the highest value that the graph shows in place
constexpr int highest_torque = 255;
constexpr int highest_speed = 65535;
constexpr int text_line = 545; // of the dragged marker's speed and the hovered point's values
constexpr int dragged_x = 72;  // where the dragged marker's speed begins

// A marker: a stem over the graph into a disc below it, with the marker's letter.
constexpr int disc_left_of_stem = 1; // the disc's centre, which makes the disc stand evenly around the letter
constexpr int disc_y = 532, disc_radius = 8;
constexpr int letter_left_of_stem = 4, letter_y = 525;
constexpr int stem_bottom = 525;

const OneBased<SpeedMarker, speed_markers>& markers() {
    static const auto table = [] {
        OneBased<SpeedMarker, speed_markers> all;
        all[1] = {"I", "Idle: ", 0xFFB4A000, par_offset::idle_rpm};
        all[2] = {"D", "Downshift: ", 0xFF3C3CB4, par_offset::downshift_rpm};
        all[3] = {"U", "Upshift: ", 0xFF3CB4B4, par_offset::upshift_rpm};
        all[4] = {"M", "Max: ", 0xFFF05000, par_offset::maximum_rpm};
        return all;
    }();
    return table;
}

int scaled_torque(int point, int zoom) { return torque(point) * zoom; }

int point_x(int point) { return graph_area::left + pixels_per_point * point; }

double speed_x(double speed) { return speed * pixels_per_point / rpm_per_point + graph_area::left; }

} // namespace

const SpeedMarker& speed_marker(int marker) { return markers()[marker]; }

int marker_speed(int marker) { return par_word(speed_marker(marker).offset); }

void set_marker_speed(int marker, int speed) {
    set_par_word(speed_marker(marker).offset, static_cast<std::uint16_t>(std::clamp(speed, 0, highest_speed)));
}

std::uint8_t torque(int point) { return par_byte(par_offset::torque_curve + point); }

void set_torque(int point, int value) {
    if (point < 0 || point >= torque_points) return;
    set_par_byte(par_offset::torque_curve + point, static_cast<std::uint8_t>(std::clamp(value, 0, highest_torque)));
}

bool over_curve(int x, int y) {
    return x >= graph_area::left && x <= graph_area::right && y >= graph_area::top && y <= graph_area::bottom;
}

bool over_marker_strip(int x, int y) {
    return x >= graph_area::left && x <= graph_area::right && y >= graph_area::strip_top &&
           y <= graph_area::strip_bottom;
}

int point_at(int x) { return (x - graph_area::left) / pixels_per_point; }

int torque_at(int y, int zoom) { return (graph_area::bottom - y) / zoom; }

void set_torque_between(Point from, Point to, int zoom) {
    if (from.x > to.x) std::swap(from, to);
    const int first = point_at(from.x), last = point_at(to.x);
    for (int point = first + 1; point < last; ++point) {
        const double share = static_cast<double>(point - first) / (last - first);
        set_torque(point, torque_at(static_cast<int>(std::lround(from.y + share * (to.y - from.y))), zoom));
    }
}

// ODDITY marker-drag-truncates-key-rounds (kept): the same place gives speeds that may differ by one, cut by the mouse
// and rounded by a key.
int dragged_speed(int x) { return rpm_per_point * (x - graph_area::left) / pixels_per_point; }

int keyed_speed(int x) {
    return static_cast<int>(
        std::nearbyint(rpm_per_point * (x - graph_area::left) / static_cast<double>(pixels_per_point)));
}

int marker_place(int speed) {
    return static_cast<int>(std::nearbyint(speed * pixels_per_point / static_cast<double>(rpm_per_point)));
}

int marker_near(int speed) {
    int nearest = 0;
    int distance = 1000;
    for (int marker = 1; marker <= speed_markers; ++marker) {
        const int away = std::abs(marker_speed(marker) - speed);
        if (away >= distance) continue;
        nearest = marker;
        distance = away;
    }
    return nearest;
}

namespace {

void draw_marker(Canvas& canvas, int marker, bool dragged) {
    const SpeedMarker& look = speed_marker(marker);
    const int stem = graph_area::left + marker_place(marker_speed(marker));
    draw_line(canvas, stem, graph_area::top, stem, stem_bottom, look.colour);
    draw_circle(canvas, stem - disc_left_of_stem, disc_y, disc_radius, look.colour, 1, 0, whole_circle, true);
    draw_text(canvas, stem - letter_left_of_stem, letter_y, look.letter, black);
    if (!dragged) return;
    draw_text(canvas, dragged_x, text_line, look.label + std::to_string(marker_speed(marker)) + " RPM", look.colour);
}

void draw_axes(Canvas& canvas, int zoom) {
    draw_line(canvas, 55, graph_area::top, graph_area::left, graph_area::top, colour::label);
    draw_line(canvas, graph_area::left, graph_area::top, graph_area::left, graph_area::bottom, colour::label);
    draw_line(canvas, 55, graph_area::bottom, 683, graph_area::bottom, colour::label);
    draw_text(canvas, 29, 237, std::to_string(256 / zoom - 1), colour::label);
    draw_text(canvas, 45, 492, "0", colour::label);
}

void draw_speed_ticks(Canvas& canvas) {
    for (int speed = 0; speed <= 13000; speed += 1000) {
        const double x = speed_x(speed);
        draw_line(canvas, x, graph_area::bottom, x, 507, colour::label);
        const std::string label = std::to_string(speed / 1000) + "k";
        draw_text(canvas, x - 4.0 * static_cast<double>(label.size()), 510, label, colour::label);
    }
}

int curve_y(int point, int zoom) { return graph_area::bottom - std::min(full_scale, scaled_torque(point, zoom)); }

void draw_curve(Canvas& canvas, int zoom) {
    draw_pixel(canvas, graph_area::left, curve_y(0, zoom), curve_colour);
    for (int point = 0; point < torque_points; ++point)
        draw_line_from_pen(canvas, point_x(point), curve_y(point, zoom), curve_colour);
}

void draw_point_box(Canvas& canvas, int point, int value, std::uint32_t box_colour) {
    const int x = point_x(point), y = graph_area::bottom - value;
    draw_box(canvas, x - 1, y - 1, x + 1, y + 1, box_colour);
}

std::uint32_t plain_colour(int point) { return torque(point) >= 128 ? high_colour : low_colour; }

void draw_point(Canvas& canvas, const TorqueGraph& graph, int point) {
    const int value = scaled_torque(point, graph.zoom);
    // ODDITY selected-point-unclipped (kept): the selected point stands at its true height, above the graph if need be.
    if (point == graph.selected) return draw_point_box(canvas, point, value, selected_colour);
    if (value > full_scale) return draw_point_box(canvas, point, full_scale, clipped_colour);
    draw_point_box(canvas, point, value, plain_colour(point));
}

void fill(Canvas& canvas, const Rectangle& area) {
    fill_box(canvas, area.x1, area.y1, area.x2, area.y2, colour::background);
}

} // namespace

void draw_torque_graph(Canvas& canvas, const TorqueGraph& graph) {
    fill(canvas, cleared);
    fill(canvas, {dragged_x, text_line, 231, 560});
    for (int marker = 1; marker <= speed_markers; ++marker)
        draw_marker(canvas, marker, marker == graph.dragged);
    draw_axes(canvas, graph.zoom);
    draw_speed_ticks(canvas);
    draw_curve(canvas, graph.zoom);
    for (int point = 0; point < torque_points; ++point)
        draw_point(canvas, graph, point);
}

bool reaches_outside(const TorqueGraph& graph) {
    if (graph_area::bottom - scaled_torque(graph.selected, graph.zoom) - 1 < cleared.y1) return true;
    for (int marker = 1; marker <= speed_markers; ++marker)
        if (graph_area::left + marker_place(marker_speed(marker)) - disc_left_of_stem + disc_radius > cleared.x2)
            return true;
    return false;
}

void draw_hovered_point(Canvas& canvas, const TorqueGraph& graph, int point) {
    const int before = graph.hovered_speed / rpm_per_point;
    // ODDITY hover-box-takes-selected-colour (kept): the box that the pointer leaves takes the selected point's colour
    // when it is the selected point that the pointer reaches, and its plain colour otherwise, selected or not.
    const std::uint32_t left_behind = point == graph.selected ? selected_colour : plain_colour(before);
    if (const int value = scaled_torque(before, graph.zoom); value <= full_scale)
        draw_point_box(canvas, before, value, left_behind);
    if (const int value = scaled_torque(point, graph.zoom); value <= full_scale)
        draw_point_box(canvas, point, value, hovered_colour);
}

void draw_hovered_values(Canvas& canvas, int point) {
    fill(canvas, {520, text_line, 689, 560});
    draw_text(canvas, 520, text_line, std::to_string(point * rpm_per_point) + " RPM", colour::label);
    draw_text(canvas, 610, text_line, "Torque=" + std::to_string(torque(point)), colour::label);
}
