#include "image/picture_file.h"

#include <cstdint>
#include <new>
#include <stb_image_write.h>
#include <vector>

namespace {

// The writer counts bytes in 32 bits with a sign; a row takes a byte more than its pixels.
constexpr std::int64_t most_pixels = std::int64_t{1} << 28;

bool is_opaque(const Image& image) {
    if (image.bytes_per_pixel() != 4) return true;
    for (int y = 0; y < image.height(); ++y) {
        const auto row = image.row(y);
        for (std::size_t alpha = 3; alpha < row.size(); alpha += 4)
            if (row[alpha] != 255) return false;
    }
    return true;
}

// The pixels as the writer wants them: red, green, blue and, of four, alpha.
std::vector<std::uint8_t> channels_of(const Image& image, int channels) {
    std::vector<std::uint8_t> result;
    result.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()) *
                   static_cast<std::size_t>(channels));
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const std::uint32_t argb = raw_to_argb(image.pixel(x, y), image.bytes_per_pixel());
            for (int shift = 16; shift >= 0; shift -= 8)
                result.push_back(static_cast<std::uint8_t>(argb >> shift));
            if (channels == 4) result.push_back(static_cast<std::uint8_t>(argb >> 24));
        }
    return result;
}

// Called from C for every piece of the file: an exception must not pass through it.
struct Collected {
    Bytes bytes;
    bool complete = true;
};

void collect(void* context, void* data, int size) {
    auto& collected = *static_cast<Collected*>(context);
    const std::span piece(static_cast<const std::byte*>(data), static_cast<std::size_t>(size));
    try {
        collected.bytes.insert(collected.bytes.end(), piece.begin(), piece.end());
    } catch (const std::bad_alloc&) {
        collected.complete = false;
    }
}

// `write` gets what takes the pieces, the width, the height and the pixels; 0 from it is a failure.
std::optional<Bytes> encode(const Image& image, int channels, auto write) {
    if (std::int64_t{image.width()} * image.height() > most_pixels) return {};
    try {
        const auto pixels = channels_of(image, channels);
        Collected file;
        if (!write(&file, image.width(), image.height(), pixels.data()) || !file.complete) return {};
        return std::move(file.bytes);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

SaveOutcome save(const std::string& filename, const std::optional<Bytes>& content) {
    return content ? save_file(filename, *content) : SaveOutcome::write_failed;
}

} // namespace

std::optional<Bytes> encode_png(const Image& image, bool with_alpha) {
    const int channels = with_alpha ? 4 : 3;
    return encode(image, channels, [channels](void* file, int width, int height, const std::uint8_t* pixels) {
        return stbi_write_png_to_func(collect, file, width, height, channels, pixels, width * channels);
    });
}

std::optional<Bytes> encode_bmp(const Image& image) {
    const int channels = is_opaque(image) ? 3 : 4;
    return encode(image, channels, [channels](void* file, int width, int height, const std::uint8_t* pixels) {
        return stbi_write_bmp_to_func(collect, file, width, height, channels, pixels);
    });
}

SaveOutcome SavePNGFile(const Image& image, const std::string& filename, bool with_alpha) {
    return save(filename, encode_png(image, with_alpha));
}

SaveOutcome save_bmp(const Image& image, const std::string& filename) { return save(filename, encode_bmp(image)); }
