// What is drawn on: an image with the clip rectangle, the pen and the text cursor that figures share.
#pragma once

#include "image/image.h"

#include <cstdint>

struct Rectangle {
    int x1 = 0, y1 = 0, x2 = -1, y2 = -1; // both corners included; empty when x2 < x1 or y2 < y1

    bool empty() const { return x2 < x1 || y2 < y1; }
    bool operator==(const Rectangle&) const = default;
};
// What both cover, and the smallest rectangle around both (an empty one adds nothing).
Rectangle intersection(const Rectangle& a, const Rectangle& b);
Rectangle bounding(const Rectangle& a, const Rectangle& b);

// A picture that is drawn on, with the state that figures share.
class Canvas {
public:
    explicit Canvas(Image& image);

    Image& image() { return *image_; }
    const Rectangle& clip() const { return clip_; }
    // Later figures are cut at this rectangle, whose corners may be given in any order; coordinates are not shifted.
    void set_clip(int x1, int y1, int x2, int y2);
    void reset_clip();

    double pen_x = 0, pen_y = 0;           // end point of the last figure
    std::uint32_t foreground = 0xFFFFFFFF; // of print_text and of lines without a colour
    int text_column = 0, text_row = 0;     // text cursor, in cells of 8 x 16 pixels

    // The rectangle around the pixels that figures have set since it was last taken.
    Rectangle take_damage();
    bool damaged() const { return !damage_.empty(); }
    void add_damage(const Rectangle& touched);

private:
    Image* image_;
    Rectangle clip_;
    Rectangle damage_;
};
