// Run-length TGA of 2048 x 2048 pixels: the program's reader and writer against stb's, in one run.
#include "alternate.h"
#include "image/tga.h"
#include "pictures.h"

#include <benchmark/benchmark.h>
#define STBI_NO_STDIO
#include <stb_image.h>
#include <stb_image_write.h>

#include <cstring>

namespace {

constexpr int side = 2048;
constexpr int rounds = 15;

// The same pixels as red, green, blue, alpha.
std::vector<std::uint8_t> channels_of(const Image& image) {
    std::vector<std::uint8_t> channels;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const std::uint32_t pixel = image.pixel(x, y);
            for (const int shift : {16, 8, 0, 24})
                channels.push_back(static_cast<std::uint8_t>(pixel >> shift));
        }
    return channels;
}

// Takes the other writer's pieces in without growing, which is the cheapest way there is.
struct Collected {
    std::vector<std::uint8_t> bytes;
    std::size_t used = 0;
};

void collect(void* context, void* data, int size) {
    auto& collected = *static_cast<Collected*>(context);
    if (collected.used + static_cast<std::size_t>(size) > collected.bytes.size()) std::abort();
    std::memcpy(&collected.bytes[collected.used], data, static_cast<std::size_t>(size));
    collected.used += static_cast<std::size_t>(size);
}

bool decodes_alike(const Bytes& file, const Image& image) {
    int width = 0, height = 0, channels = 0;
    stbi_uc* const theirs = stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(file.data()),
                                                  static_cast<int>(file.size()), &width, &height, &channels, 4);
    const auto ours = decode_targa(file).image;
    const auto wanted = channels_of(image);
    const bool alike = theirs && ours && std::ranges::equal(ours->bytes(), image.bytes()) &&
                       std::memcmp(theirs, wanted.data(), wanted.size()) == 0;
    stbi_image_free(theirs);
    return alike;
}

bool measure_decoding(const char* what, const Image& image) {
    const Bytes file = encode_targa_32(image);
    if (!decodes_alike(file, image)) {
        std::printf("%s: the two readers disagree\n", what);
        return false;
    }
    const auto times = compare(
        rounds, [&] { benchmark::DoNotOptimize(decode_targa(file)); },
        [&] {
            int width = 0, height = 0, channels = 0;
            stbi_uc* const pixels = stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(file.data()),
                                                          static_cast<int>(file.size()), &width, &height, &channels, 0);
            benchmark::DoNotOptimize(pixels);
            stbi_image_free(pixels);
        });
    std::printf("%s: %.1f ms, stb %.1f ms, file of %zu bytes\n", what, times.ours, times.theirs, file.size());
    return report(what, times.ratio, "stb", 1.0);
}

bool measure_encoding(const char* what, const Image& image) {
    const auto channels = channels_of(image);
    Collected collected;
    collected.bytes.resize(std::size_t{side} * side * 5 + 1000);
    const auto times = compare(
        rounds, [&] { benchmark::DoNotOptimize(encode_targa_32(image)); },
        [&] {
            collected.used = 0;
            stbi_write_tga_to_func(collect, &collected, side, side, 4, channels.data());
            benchmark::DoNotOptimize(collected.bytes.data());
        });
    std::printf("%s: %.1f ms, stb %.1f ms\n", what, times.ours, times.theirs);
    return report(what, times.ratio, "stb", 1.0);
}

} // namespace

int main() {
    stbi_write_tga_with_rle = 1;
    const auto drawn = artwork(side, side);
    const auto photo = photograph(side, side);
    // One pixel that is not opaque: four bytes a pixel in the file, as the other writer is asked for.
    drawn->set_pixel(0, 0, 0x80FFFFFF);
    photo->set_pixel(0, 0, 0x80FFFFFF);
    bool kept = measure_decoding("targa decode, artwork", *drawn);
    kept &= measure_decoding("targa decode, photograph", *photo);
    kept &= measure_encoding("targa encode, artwork", *drawn);
    kept &= measure_encoding("targa encode, photograph", *photo);
    return kept ? 0 : 1;
}
