#include "drawing/drawing.h"

#include "drawing/plotter.h"

#include <algorithm>

void draw_line(Canvas& canvas, double x1, double y1, double x2, double y2, std::uint32_t colour) {
    if (!are_numbers({x1, y1, x2, y2})) return;
    Plotter plotter(canvas, colour);
    plot_line(plotter, whole_pixel(x1), whole_pixel(y1), whole_pixel(x2), whole_pixel(y2));
    canvas.pen_x = x2;
    canvas.pen_y = y2;
}

void draw_line(Canvas& canvas, double x1, double y1, double x2, double y2) {
    draw_line(canvas, x1, y1, x2, y2, canvas.foreground);
}

void draw_line_relative(Canvas& canvas, double x1, double y1, double dx, double dy, std::uint32_t colour) {
    draw_line(canvas, x1, y1, x1 + dx, y1 + dy, colour);
}

void draw_line_from_pen(Canvas& canvas, double x2, double y2, std::uint32_t colour) {
    draw_line(canvas, canvas.pen_x, canvas.pen_y, x2, y2, colour);
}

namespace {

struct WholeBox {
    std::int64_t left, top, right, bottom;
};

WholeBox whole_box(double x1, double y1, double x2, double y2) {
    const auto [left, right] = std::minmax({whole_pixel(x1), whole_pixel(x2)});
    const auto [top, bottom] = std::minmax({whole_pixel(y1), whole_pixel(y2)});
    return {left, top, right, bottom};
}

} // namespace

void draw_box(Canvas& canvas, double x1, double y1, double x2, double y2, std::uint32_t colour) {
    if (!are_numbers({x1, y1, x2, y2})) return;
    Plotter plotter(canvas, colour);
    const WholeBox box = whole_box(x1, y1, x2, y2);
    plotter.across(box.left, box.right, box.top);
    plotter.across(box.left, box.right, box.bottom);
    plotter.down(box.left, box.top, box.bottom);
    plotter.down(box.right, box.top, box.bottom);
    canvas.pen_x = x2;
    canvas.pen_y = y2;
}

void draw_box_relative(Canvas& canvas, double x1, double y1, double dx, double dy, std::uint32_t colour) {
    draw_box(canvas, x1, y1, x1 + dx, y1 + dy, colour);
}

void fill_box(Canvas& canvas, double x1, double y1, double x2, double y2, std::uint32_t colour) {
    if (!are_numbers({x1, y1, x2, y2})) return;
    Plotter plotter(canvas, colour);
    const WholeBox box = whole_box(x1, y1, x2, y2);
    const std::int64_t last = std::min<std::int64_t>(box.bottom, plotter.clip().y2);
    for (std::int64_t y = std::max<std::int64_t>(box.top, plotter.clip().y1); y <= last; ++y)
        plotter.across(box.left, box.right, y);
    canvas.pen_x = x2;
    canvas.pen_y = y2;
}

void fill_box_relative(Canvas& canvas, double x1, double y1, double dx, double dy, std::uint32_t colour) {
    fill_box(canvas, x1, y1, x1 + dx, y1 + dy, colour);
}

void draw_pixel(Canvas& canvas, double x, double y, std::uint32_t colour) {
    if (!are_numbers({x, y})) return;
    Plotter plotter(canvas, colour);
    plotter.pixel(whole_pixel(x), whole_pixel(y));
    canvas.pen_x = x;
    canvas.pen_y = y;
}
