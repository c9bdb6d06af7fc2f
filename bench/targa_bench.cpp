// TGA files of every kind that is read, raw and run-length, at 8, 16, 24 and 32 bits and in three sizes: the program's
// reader against stb's and SDL_image's; and the writer against stb's. In one run, from memory.
//
// What comes out is not the same: stb gives bytes of as many channels as the file has, three for 24 bits, in the
// opposite order; SDL_image gives the file's own bytes, of which 24 bits are made words as the program's are.
#include "alternate.h"
#include "base/byte_writer.h"
#include "image/tga.h"
#include "pictures.h"

#include <SDL_image.h>
#include <benchmark/benchmark.h>
#define STBI_NO_STDIO
#include <stb_image.h>
#include <stb_image_write.h>

#include <cstring>
#include <malloc.h>
#include <string>

namespace {

constexpr int rounds = 21;
constexpr int sides[] = {64, 320, 2048};
constexpr int pixels_a_round = 1 << 20; // at least, so that small pictures are decoded often enough to be timed

struct Kind {
    const char* name;
    Bytes (*file)(const Image& picture); // of 32 bits, opaque
};

Bytes raw(const Image& picture, int bits, int alpha_bits, auto&& put_pixel) {
    ByteWriter writer;
    for (const int byte : {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0})
        writer.u8(static_cast<std::uint8_t>(byte));
    writer.u16(static_cast<std::uint16_t>(picture.width()));
    writer.u16(static_cast<std::uint16_t>(picture.height()));
    writer.u8(static_cast<std::uint8_t>(bits));
    writer.u8(static_cast<std::uint8_t>(alpha_bits));
    for (int y = picture.height() - 1; y >= 0; --y)
        for (int x = 0; x < picture.width(); ++x)
            put_pixel(writer, picture.pixel(x, y));
    return writer.take();
}

std::uint16_t packed(std::uint32_t pixel) { // 5-6-5
    return static_cast<std::uint16_t>((pixel >> 8 & 0xF800) | (pixel >> 5 & 0x07E0) | (pixel >> 3 & 0x001F));
}

Image converted(const Image& picture, int bytes, auto&& convert) {
    Image result(picture.width(), picture.height(), bytes, static_cast<std::size_t>(picture.width() * bytes));
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            result.set_pixel(x, y, convert(picture.pixel(x, y)));
    return result;
}

Image with_alpha(const Image& picture) {
    return converted(picture, 4, [](std::uint32_t pixel) { return (pixel & 0xFFFFFF) | 0x80000000; });
}

constexpr Kind kinds[] = {
    {"raw 16 bit",
     [](const Image& picture) {
         return raw(picture, 16, 0, [](ByteWriter& writer, std::uint32_t pixel) { writer.u16(packed(pixel)); });
     }},
    {"raw 24 bit",
     [](const Image& picture) {
         return raw(picture, 24, 0, [](ByteWriter& writer, std::uint32_t pixel) {
             for (const int shift : {0, 8, 16})
                 writer.u8(static_cast<std::uint8_t>(pixel >> shift));
         });
     }},
    {"raw 32 bit",
     [](const Image& picture) {
         return raw(picture, 32, 8, [](ByteWriter& writer, std::uint32_t pixel) { writer.u32(pixel); });
     }},
    {"run-length 8 bit",
     [](const Image& picture) {
         const Image indices = converted(picture, 1, [](std::uint32_t pixel) { return pixel >> 8 & 0xFF; });
         return encode_targa_8(indices, {});
     }},
    {"run-length 16 bit",
     [](const Image& picture) {
         return encode_targa_16(converted(picture, 2, [](std::uint32_t pixel) { return packed(pixel); }));
     }},
    {"run-length 24 bit", [](const Image& picture) { return encode_targa_32(picture); }},
    {"run-length 32 bit", [](const Image& picture) { return encode_targa_32(with_alpha(picture)); }},
};

void decode(const Bytes& file) { benchmark::DoNotOptimize(decode_targa(file)); }

void decode_with_stb(const Bytes& file) {
    int width = 0, height = 0, channels = 0;
    stbi_uc* const pixels = stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(file.data()),
                                                  static_cast<int>(file.size()), &width, &height, &channels, 0);
    if (!pixels) std::abort();
    benchmark::DoNotOptimize(pixels);
    stbi_image_free(pixels);
}

void decode_with_sdl_image(const Bytes& file) {
    SDL_Surface* surface = IMG_LoadTGA_RW(SDL_RWFromConstMem(file.data(), static_cast<int>(file.size())));
    if (!surface) std::abort();
    if (surface->format->BytesPerPixel == 3) {
        SDL_Surface* const words = SDL_ConvertSurfaceFormat(surface, SDL_PIXELFORMAT_ARGB8888, 0);
        SDL_FreeSurface(surface);
        surface = words;
    }
    benchmark::DoNotOptimize(surface->pixels);
    SDL_FreeSurface(surface);
}

struct Rival {
    const char* name;
    void (*decode)(const Bytes&);
    double least; // how much as fast the program is to be
};

// SDL_image clears no memory; of a picture that is all literal packets, that is a fifth of the time.
constexpr Rival rivals[] = {{"stb", decode_with_stb, 1.0}, {"SDL_image", decode_with_sdl_image, 0.75}};

bool measure_against(const std::string& what, const Rival& rival, const Bytes& file, int times) {
    const Comparison taken = compare(
        rounds,
        [&] {
            for (int i = 0; i < times; ++i)
                decode(file);
        },
        [&] {
            for (int i = 0; i < times; ++i)
                rival.decode(file);
        });
    print_times(what.c_str(), rival.name, taken);
    return report(what.c_str(), taken.ratio, (std::string("as fast as ") + rival.name).c_str(), rival.least);
}

bool measure_decoding(const char* picture_name, ImageHandle (*picture)(int, int)) {
    bool kept = true;
    for (const int side : sides) {
        const ImageHandle image = picture(side, side);
        const int times = std::max(1, pixels_a_round / (side * side));
        for (const Kind& kind : kinds) {
            const Bytes file = kind.file(*image);
            const std::string what = std::string("targa decode, ") + kind.name + ", " + picture_name + ", " +
                                     std::to_string(side) + " x " + std::to_string(side);
            for (const Rival& rival : rivals)
                kept &= measure_against(what, rival, file, times);
        }
    }
    return kept;
}

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

bool decodes_alike(const Image& image) {
    const Bytes file = encode_targa_32(image);
    int width = 0, height = 0, channels = 0;
    stbi_uc* const theirs = stbi_load_from_memory(reinterpret_cast<const stbi_uc*>(file.data()),
                                                  static_cast<int>(file.size()), &width, &height, &channels, 4);
    const auto ours = decode_targa(file).image;
    const auto wanted = channels_of(image);
    const bool alike = theirs && ours && std::ranges::equal(ours->bytes(), image.bytes()) &&
                       std::memcmp(theirs, wanted.data(), wanted.size()) == 0;
    stbi_image_free(theirs);
    if (!alike) std::printf("the two readers disagree\n");
    return alike;
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

// Four bytes a pixel in the file, as the other writer is asked for.
bool measure_encoding(const char* what, const Image& opaque) {
    const Image image = with_alpha(opaque);
    const auto channels = channels_of(image);
    Collected collected;
    collected.bytes.resize(channels.size() * 5 / 4 + 1000);
    const auto times = compare(
        rounds, [&] { benchmark::DoNotOptimize(encode_targa_32(image)); },
        [&] {
            collected.used = 0;
            stbi_write_tga_to_func(collect, &collected, image.width(), image.height(), 4, channels.data());
            benchmark::DoNotOptimize(collected.bytes.data());
        });
    print_times(what, "stb", times);
    return report(what, times.ratio, "as fast as stb", 1.0);
}

// Memory that is given back to the system and taken anew costs more than decoding does, and when that happens is luck:
// what was freed stays at hand, for all readers alike.
void keep_freed_memory() {
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
}

} // namespace

int main() {
    keep_freed_memory();
    stbi_write_tga_with_rle = 1;
    const auto drawn = artwork(2048, 2048);
    const auto photo = photograph(2048, 2048);
    bool kept = decodes_alike(*drawn) && decodes_alike(*photo);
    kept &= measure_decoding("artwork", artwork);
    kept &= measure_decoding("photograph", photograph);
    kept &= measure_encoding("targa encode, artwork", *drawn);
    kept &= measure_encoding("targa encode, photograph", *photo);
    return kept ? 0 : 1;
}
