// Pictures drawn on pictures, in four modes, between any two depths.
#include "drawing/drawing.h"
#include "drawing/plotter.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace {

using Row = std::span<std::uint8_t>;
using SourceRow = std::span<const std::uint8_t>;

// (source x a + target x (255 - a)) / 255, rounded; 255 is odd, so there are no halves.
std::uint32_t blend_channel(std::uint32_t source, std::uint32_t target, std::uint32_t alpha) {
    return (source * alpha + target * (255 - alpha) + 127) / 255;
}

// The target's own alpha becomes that of the pile of both, so that an opaque picture stays opaque.
std::uint32_t blend(std::uint32_t source, std::uint32_t target) {
    const std::uint32_t alpha = source >> 24;
    std::uint32_t result = blend_channel(255, target >> 24, alpha) << 24;
    for (int shift = 0; shift < 24; shift += 8)
        result |= blend_channel(source >> shift & 0xFF, target >> shift & 0xFF, alpha) << shift;
    return result;
}

std::uint32_t load(const std::uint8_t* pixel, std::size_t size) {
    std::uint32_t raw = 0;
    std::memcpy(&raw, pixel, size);
    return raw;
}

void copy_row(Row target, SourceRow source) { std::memmove(target.data(), source.data(), target.size()); }

void and_row(Row target, SourceRow source) {
    for (std::size_t i = 0; i < target.size(); ++i)
        target[i] = target[i] & source[i];
}

void or_row(Row target, SourceRow source) {
    for (std::size_t i = 0; i < target.size(); ++i)
        target[i] = target[i] | source[i];
}

// Blends pixels of any depth: both are taken as colours, the result goes back to the target's depth.
void blend_row(Row target, SourceRow source, int target_bytes, int source_bytes) {
    const auto target_step = static_cast<std::size_t>(target_bytes);
    const auto source_step = static_cast<std::size_t>(source_bytes);
    std::size_t from = 0;
    for (std::size_t to = 0; to < target.size(); to += target_step, from += source_step) {
        const std::uint32_t above = raw_to_argb(load(&source[from], source_step), source_bytes);
        const std::uint32_t below = raw_to_argb(load(&target[to], target_step), target_bytes);
        const std::uint32_t raw = argb_to_raw(blend(above, below), target_bytes);
        std::memcpy(&target[to], &raw, target_step);
    }
}

// The part of a picture that is drawn, and where it goes.
struct Placement {
    int source_x, source_y, target_x, target_y, width, height;
};

Placement place(const Canvas& canvas, const Image& image, double x, double y) {
    const std::int64_t left = whole_pixel(x);
    const std::int64_t top = whole_pixel(y);
    const Rectangle& clip = canvas.clip();
    const std::int64_t x1 = std::max<std::int64_t>(left, clip.x1);
    const std::int64_t y1 = std::max<std::int64_t>(top, clip.y1);
    const std::int64_t x2 = std::min<std::int64_t>(left + image.width() - 1, clip.x2);
    const std::int64_t y2 = std::min<std::int64_t>(top + image.height() - 1, clip.y2);
    if (x1 > x2 || y1 > y2) return {0, 0, 0, 0, 0, 0};
    return {static_cast<int>(x1 - left), static_cast<int>(y1 - top),    static_cast<int>(x1),
            static_cast<int>(y1),        static_cast<int>(x2 - x1 + 1), static_cast<int>(y2 - y1 + 1)};
}

template <typename Bytes>
Bytes part_of_row(Bytes row, int x, int width, int bytes_per_pixel) {
    return row.subspan(static_cast<std::size_t>(x * bytes_per_pixel),
                       static_cast<std::size_t>(width * bytes_per_pixel));
}

// That part of the picture in a depth, its own or another.
Image part_in_depth(const Image& image, const Placement& placement, int bytes_per_pixel) {
    Image result(placement.width, placement.height, bytes_per_pixel,
                 static_cast<std::size_t>(placement.width * bytes_per_pixel));
    const bool same = image.bytes_per_pixel() == bytes_per_pixel;
    for (int y = 0; y < placement.height; ++y)
        for (int x = 0; x < placement.width; ++x) {
            const std::uint32_t raw = image.pixel(placement.source_x + x, placement.source_y + y);
            const std::uint32_t colour = raw_to_argb(raw, image.bytes_per_pixel());
            result.set_pixel(x, y, same ? raw : argb_to_raw(colour, bytes_per_pixel));
        }
    return result;
}

void draw_rows(Image& target, const Image& source, const Placement& placement, DrawMode mode) {
    for (int y = 0; y < placement.height; ++y) {
        const Row to = part_of_row(target.row(placement.target_y + y), placement.target_x, placement.width,
                                   target.bytes_per_pixel());
        const SourceRow from = part_of_row(source.row(placement.source_y + y), placement.source_x, placement.width,
                                           source.bytes_per_pixel());
        switch (mode) {
        case DrawMode::copy: copy_row(to, from); break;
        case DrawMode::and_: and_row(to, from); break;
        case DrawMode::or_: or_row(to, from); break;
        case DrawMode::alpha: blend_row(to, from, target.bytes_per_pixel(), source.bytes_per_pixel()); break;
        }
    }
}

} // namespace

void draw_image(Canvas& canvas, const Image& image, double x, double y, DrawMode mode) {
    if (!are_numbers({x, y})) return;
    Image& target = canvas.image();
    Placement placement = place(canvas, image, x, y);
    if (placement.width == 0) return;
    canvas.add_damage({placement.target_x, placement.target_y, placement.target_x + placement.width - 1,
                       placement.target_y + placement.height - 1});

    const bool other_depth = image.bytes_per_pixel() != target.bytes_per_pixel() && mode != DrawMode::alpha;
    if (!other_depth && &image != &target) return draw_rows(target, image, placement, mode);
    // A picture drawn on itself is drawn as it was before.
    const int depth = other_depth ? target.bytes_per_pixel() : image.bytes_per_pixel();
    const Image part = part_in_depth(image, placement, depth);
    placement.source_x = 0;
    placement.source_y = 0;
    draw_rows(target, part, placement, mode);
}
