#include "drawing/canvas.h"

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
