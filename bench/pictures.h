// Pictures made for measuring: smooth noise of several sizes for a photograph, plain areas with details for artwork.
#pragma once

#include "drawing/drawing.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

// Noise between 0 and 1 that changes over `size` pixels.
class SmoothNoise {
public:
    SmoothNoise(int width, int height, int size, unsigned seed)
        : columns_(width / size + 2), size_(size), knots_(static_cast<std::size_t>(columns_ * (height / size + 2))) {
        std::mt19937 random(seed);
        for (double& knot : knots_)
            knot = static_cast<double>(random() % 1000) / 999;
    }
    double at(int x, int y) const {
        const double fx = smooth(static_cast<double>(x % size_) / size_),
                     fy = smooth(static_cast<double>(y % size_) / size_);
        const int column = x / size_, row = y / size_;
        const double top = std::lerp(knot(column, row), knot(column + 1, row), fx);
        const double bottom = std::lerp(knot(column, row + 1), knot(column + 1, row + 1), fx);
        return std::lerp(top, bottom, fy);
    }

private:
    static double smooth(double t) { return t * t * (3 - 2 * t); }
    double knot(int column, int row) const { return knots_[static_cast<std::size_t>(row * columns_ + column)]; }

    int columns_, size_;
    std::vector<double> knots_;
};

// Light and shade over large areas, three hues, detail, grain of a few levels.
inline ImageHandle photograph(int width, int height) {
    const SmoothNoise light(width, height, 97, 1), hue(width, height, 61, 2), warm(width, height, 43, 3);
    const SmoothNoise detail(width, height, 7, 4);
    std::mt19937 grain(5);
    auto image = create_image(width, height, 0);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double base = 0.7 * light.at(x, y) + 0.3 * detail.at(x, y);
            const double tints[] = {0.55 + 0.45 * hue.at(x, y), 0.75, 0.55 + 0.45 * warm.at(x, y)};
            std::uint32_t pixel = 0xFF;
            for (const double tint : tints) {
                const double level = 255 * base * tint * 1.2 + static_cast<double>(grain() % 9) - 4;
                pixel = pixel << 8 | static_cast<std::uint32_t>(std::clamp(level, 0.0, 255.0));
            }
            image->set_pixel(x, y, pixel);
        }
    return image;
}

// Panels, dials and letters in flat colours, and one dithered patch.
inline ImageHandle artwork(int width, int height) {
    auto image = create_image(width, height, 0xFF403830);
    Canvas canvas(*image);
    std::mt19937 random(6);
    const auto below = [&](int limit) { return static_cast<double>(random() % static_cast<unsigned>(limit)); };
    const auto colour = [&] { return 0xFF000000u | static_cast<std::uint32_t>(random() & 0xF0F0F0u); };
    for (int i = 0; i < 200; ++i)
        fill_box_relative(canvas, below(width), below(height), below(200), below(120), colour());
    for (int i = 0; i < 200; ++i)
        draw_circle(canvas, below(width), below(height), below(90), colour(), 1, 0, whole_circle, i % 2 == 0);
    for (int i = 0; i < 1500; ++i)
        draw_text(canvas, below(width), below(height), "120 km/h", colour());
    for (int y = 0; y < height / 4; ++y)
        for (int x = 0; x < width / 4; ++x)
            if ((x + y) % 2) image->set_pixel(x, y, 0xFF605040);
    return image;
}
