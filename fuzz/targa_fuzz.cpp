// Any bytes as a TGA file: decoded twice with the same result, and an image that comes out can be written and read
// again.
#include "formats/tga.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool held) {
    if (!held) std::abort();
}

bool same_pixels(const Image& a, const Image& b) {
    return a.width() == b.width() && a.height() == b.height() && std::ranges::equal(a.bytes(), b.bytes());
}

// Large empty pictures would take the time that other inputs need.
bool is_small(const Image& image) { return image.bytes().size() <= std::size_t{1} << 20; }

void write_and_read_again(const Image& image) {
    std::int16_t error = 0;
    TargaPalette palette{};
    switch (image.bytes_per_pixel()) {
    case 1: {
        const auto again = decode_targa(encode_targa_8(image, palette), &palette, error);
        require(again && same_pixels(*again, image));
        break;
    }
    case 2: require(decode_targa(encode_targa_16(image), nullptr, error) != nullptr); break;
    default: {
        const auto again = decode_targa(encode_targa_32(image), nullptr, error);
        require(again && same_pixels(*again, image));
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = std::as_bytes(std::span(data, size));
    std::int16_t error = 0;
    TargaPalette palette{};
    const auto image = decode_targa(file, &palette, error);
    require((image == nullptr) == (error != 0));
    decode_targa(file, nullptr, error);
    if (image && is_small(*image)) write_and_read_again(*image);
    return 0;
}
