// The pixels of a TGA file, and how they become those of an image.
#pragma once

#include "image/image.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace targa_pixels {

using FileBytes = std::span<const std::byte>;

constexpr std::uint32_t opaque = 0xFF000000;

inline std::uint32_t byte_at(FileBytes bytes, std::size_t index) {
    return std::to_integer<std::uint32_t>(bytes[index]);
}

// One pixel of a file, and what it becomes in the image. `stays` when both are the same bytes.
struct Argb32 {
    using Pixel = std::uint32_t;
    static constexpr std::size_t size = 4;
    static constexpr bool stays = true;
    static Pixel decode(FileBytes b) {
        return byte_at(b, 0) | byte_at(b, 1) << 8 | byte_at(b, 2) << 16 | byte_at(b, 3) << 24;
    }
};
struct Rgb24 {
    using Pixel = std::uint32_t;
    static constexpr std::size_t size = 3;
    static constexpr bool stays = false;
    static Pixel decode(FileBytes b) { return byte_at(b, 0) | byte_at(b, 1) << 8 | byte_at(b, 2) << 16 | opaque; }
};
struct Word16 {
    using Pixel = std::uint16_t;
    static constexpr std::size_t size = 2;
    static constexpr bool stays = true;
    static Pixel decode(FileBytes b) { return static_cast<Pixel>(byte_at(b, 0) | byte_at(b, 1) << 8); }
};
// 1-5-5-5 to 5-6-5, the top bit dropped.
struct Rgb555 {
    using Pixel = std::uint16_t;
    static constexpr std::size_t size = 2;
    static constexpr bool stays = false;
    static Pixel decode(FileBytes b) {
        const unsigned value = Word16::decode(b);
        return static_cast<Pixel>((value * 2 & 0xFFC0) | (value & 31));
    }
};
struct Index8 {
    using Pixel = std::uint8_t;
    static constexpr std::size_t size = 1;
    static constexpr bool stays = true;
    static Pixel decode(FileBytes b) { return static_cast<Pixel>(byte_at(b, 0)); }
};

// Decodes the pixels of a file one by one, from the `done`-th on.
template <typename Format>
void decode_each(FileBytes from, std::span<std::uint8_t> to, std::size_t done = 0) {
    for (; done * Format::size < from.size(); ++done) {
        const typename Format::Pixel pixel = Format::decode(from.subspan(done * Format::size, Format::size));
        std::memcpy(&to[done * sizeof pixel], &pixel, sizeof pixel);
    }
}

// Three bytes a pixel: eight bytes are read at once and masked, of which six are two pixels. Behind the last ones there
// may be no byte more; they are decoded one by one.
inline void decode_by_words(FileBytes from, std::span<std::uint8_t> to) {
    constexpr std::uint64_t first_colour = 0x0000000000FFFFFF, second_colour = 0x00FFFFFF00000000;
    constexpr std::uint64_t both_opaque = 0xFF000000FF000000;
    std::size_t done = 0;
    for (; done * Rgb24::size + sizeof(std::uint64_t) <= from.size(); done += 2) {
        std::uint64_t pixels = 0;
        std::memcpy(&pixels, &from[done * Rgb24::size], sizeof pixels);
        pixels = (pixels & first_colour) | (pixels << 8 & second_colour) | both_opaque;
        std::memcpy(&to[done * sizeof(std::uint32_t)], &pixels, sizeof pixels);
    }
    decode_each<Rgb24>(from, to, done);
}

// Decodes all pixels that `from` holds; `to` has room for just as many.
template <typename Format>
void decode_pixels(FileBytes from, std::span<std::uint8_t> to) {
    if constexpr (Format::stays)
        std::memcpy(to.data(), from.data(), from.size());
    else if constexpr (Format::size == Rgb24::size)
        decode_by_words(from, to);
    else
        decode_each<Format>(from, to);
}

// The pixels of an image in the order of the file, row after row. What comes when it is full is dropped.
template <typename Format>
class Sink {
public:
    using Pixel = typename Format::Pixel;

    Sink(Image& image, bool from_the_top) : image_(image), from_the_top_(from_the_top) { take_row(); }

    bool full() const { return row_number_ == image_.height(); }

    void run(Pixel pixel, std::size_t count) {
        while (count > 0 && !full()) {
            const std::size_t part = std::min(count, room());
            for (std::size_t i = 0; i < part; ++i)
                put(i, pixel);
            advance(part);
            count -= part;
        }
    }

    // As many pixels as `bytes` holds whole ones.
    void literals(FileBytes bytes) {
        while (bytes.size() >= Format::size && !full()) {
            const std::size_t part = std::min(bytes.size() / Format::size, room());
            decode_pixels<Format>(bytes.first(part * Format::size), rest_.first(part * sizeof(Pixel)));
            bytes = bytes.subspan(part * Format::size);
            advance(part);
        }
    }

private:
    // Of the row that is being filled.
    std::size_t room() const { return rest_.size() / sizeof(Pixel); }
    void put(std::size_t index, Pixel pixel) { std::memcpy(&rest_[index * sizeof pixel], &pixel, sizeof pixel); }

    void advance(std::size_t pixels) {
        rest_ = rest_.subspan(pixels * sizeof(Pixel));
        if (!rest_.empty()) return;
        ++row_number_;
        if (!full()) take_row();
    }

    void take_row() { rest_ = image_.row(from_the_top_ ? row_number_ : image_.height() - 1 - row_number_); }

    Image& image_;
    const bool from_the_top_;
    int row_number_ = 0;
    std::span<std::uint8_t> rest_;
};

} // namespace targa_pixels
