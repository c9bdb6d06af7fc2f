#include "app/drawing.h"

#include "app/plotter.h"

#include <algorithm>
#include <utility>

Rectangle intersection(const Rectangle& a, const Rectangle& b) {
    const Rectangle both{std::max(a.x1, b.x1), std::max(a.y1, b.y1), std::min(a.x2, b.x2), std::min(a.y2, b.y2)};
    return both.empty() ? Rectangle{} : both;
}

Rectangle bounding(const Rectangle& a, const Rectangle& b) {
    if (a.empty()) return b.empty() ? Rectangle{} : b;
    if (b.empty()) return a;
    return {std::min(a.x1, b.x1), std::min(a.y1, b.y1), std::max(a.x2, b.x2), std::max(a.y2, b.y2)};
}

Canvas::Canvas(Image& image) : image_(&image) { reset_clip(); }

void Canvas::set_clip(int x1, int y1, int x2, int y2) {
    const Rectangle asked{std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
    clip_ = intersection(asked, {0, 0, image_->width() - 1, image_->height() - 1});
}

void Canvas::reset_clip() { clip_ = {0, 0, image_->width() - 1, image_->height() - 1}; }

Rectangle Canvas::take_damage() { return std::exchange(damage_, Rectangle{}); }

void Canvas::add_damage(const Rectangle& touched) { damage_ = bounding(damage_, touched); }

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
