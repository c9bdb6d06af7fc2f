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

namespace {

// As much as a rectangle of its own costs, in pixels: joining two is worth so many that did not change.
constexpr std::int64_t worth_joining = 1024;

std::int64_t area(const Rectangle& of) { return (std::int64_t{of.x2} - of.x1 + 1) * (std::int64_t{of.y2} - of.y1 + 1); }

// How many pixels joining the two adds that neither covers, at most.
std::int64_t growth(const Rectangle& a, const Rectangle& b) { return area(bounding(a, b)) - area(a) - area(b); }

} // namespace

void DamageList::add(Rectangle changed) {
    if (changed.empty() || is_covered(changed)) return;
    for (std::size_t at = 0; at < count_;) {
        if (growth(all_[at], changed) > worth_joining) {
            ++at;
            continue;
        }
        const Rectangle joined = bounding(all_[at], changed);
        if (joined == all_[at]) return;
        changed = joined;
        remove(at);
        at = 0; // the larger one may reach others
    }
    all_[count_++] = changed;
    if (count_ > most) join_cheapest();
}

bool DamageList::is_covered(const Rectangle& changed) const {
    return std::ranges::any_of(rectangles(), [&](const Rectangle& one) {
        return changed.x1 >= one.x1 && changed.y1 >= one.y1 && changed.x2 <= one.x2 && changed.y2 <= one.y2;
    });
}

void DamageList::remove(std::size_t at) { all_[at] = all_[--count_]; }

void DamageList::join_cheapest() {
    std::size_t one = 0, other = 1;
    for (std::size_t a = 0; a < count_; ++a)
        for (std::size_t b = a + 1; b < count_; ++b)
            if (growth(all_[a], all_[b]) < growth(all_[one], all_[other])) {
                one = a;
                other = b;
            }
    const Rectangle joined = bounding(all_[one], all_[other]);
    remove(other);
    remove(one);
    add(joined);
}

Rectangle DamageList::around() const {
    Rectangle all;
    for (const Rectangle& one : rectangles())
        all = bounding(all, one);
    return all;
}

Canvas::Canvas(Image& image) : image_(&image) { reset_clip(); }

void Canvas::set_clip(int x1, int y1, int x2, int y2) {
    set_clip({std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)});
}

void Canvas::set_clip(const Rectangle& clip) {
    clip_ = intersection(clip, {0, 0, image_->width() - 1, image_->height() - 1});
}

void Canvas::reset_clip() { clip_ = {0, 0, image_->width() - 1, image_->height() - 1}; }

DamageList Canvas::take_damage() { return std::exchange(damage_, DamageList{}); }

ClipGuard::ClipGuard(Canvas& canvas, const Rectangle& clip) : canvas_(canvas), before_(canvas.clip()) {
    canvas_.set_clip(intersection(before_, clip));
}

ClipGuard::~ClipGuard() { canvas_.set_clip(before_); }
