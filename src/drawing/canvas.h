// What is drawn on: an image with the clip rectangle, the pen and the text cursor that figures share.
#pragma once

#include "image/image.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

struct Point {
    int x = 0, y = 0;
    bool operator==(const Point&) const = default;
};

struct Rectangle {
    int x1 = 0, y1 = 0, x2 = -1, y2 = -1; // both corners included; empty when x2 < x1 or y2 < y1

    bool empty() const { return x2 < x1 || y2 < y1; }
    bool contains(Point at) const { return at.x >= x1 && at.x <= x2 && at.y >= y1 && at.y <= y2; }
    bool operator==(const Rectangle&) const = default;
};
// What both cover, and the smallest rectangle around both (an empty one adds nothing).
Rectangle intersection(const Rectangle& a, const Rectangle& b);
Rectangle bounding(const Rectangle& a, const Rectangle& b);

// A short list of rectangles that together cover what changed. Rectangles that lie close are joined, so that the list
// costs little more pixels than what changed and never grows past its size.
class DamageList {
public:
    void add(Rectangle changed);
    bool empty() const { return count_ == 0; }
    std::span<const Rectangle> rectangles() const { return {all_.data(), count_}; }
    // The one around all of them.
    Rectangle around() const;

private:
    bool is_covered(const Rectangle& changed) const;
    void remove(std::size_t at);
    void join_cheapest();

    static constexpr std::size_t most = 8;
    std::array<Rectangle, most + 1> all_{};
    std::size_t count_ = 0;
};

// A picture that is drawn on, with the state that figures share.
class Canvas {
public:
    explicit Canvas(Image& image);

    Image& image() { return *image_; }
    const Rectangle& clip() const { return clip_; }
    // Later figures are cut at this rectangle, whose corners may be given in any order; coordinates are not shifted.
    void set_clip(int x1, int y1, int x2, int y2);
    void set_clip(const Rectangle& clip); // an empty one lets nothing through
    void reset_clip();

    double pen_x = 0, pen_y = 0;           // end point of the last figure
    std::uint32_t foreground = 0xFFFFFFFF; // of print_text and of lines without a colour
    int text_column = 0, text_row = 0;     // text cursor, in cells of 8 x 16 pixels

    // The rectangles around the pixels that figures have set since they were last taken.
    DamageList take_damage();
    bool damaged() const { return !damage_.empty(); }
    void add_damage(const Rectangle& touched) { damage_.add(touched); }

private:
    Image* image_;
    Rectangle clip_;
    DamageList damage_;
};

// Figures are cut at this rectangle, too, for as long as it lives; then the clip is what it was before.
class ClipGuard {
public:
    ClipGuard(Canvas& canvas, const Rectangle& clip);
    ~ClipGuard();
    ClipGuard(const ClipGuard&) = delete;
    ClipGuard& operator=(const ClipGuard&) = delete;

private:
    Canvas& canvas_;
    const Rectangle before_;
};
