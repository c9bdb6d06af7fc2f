// Width and height, as far as a picture's file tells them, and as far as they are taken.
#pragma once

struct PictureSize {
    int width = 0, height = 0;

    bool fits(const PictureSize& most) const { return width <= most.width && height <= most.height; }
    bool has_area() const { return width >= 1 && height >= 1; }
};
