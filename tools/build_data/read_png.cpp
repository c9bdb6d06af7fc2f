// The only file of the tool that knows the image library.
#include "source.h"

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_STATIC
#define STBI_ONLY_PNG
#define STBI_NO_LINEAR
#define STBI_NO_HDR
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wall"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wcast-qual"
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_image.h>
#pragma GCC diagnostic pop

#include <memory>

ImageHandle read_png(const std::filesystem::path& file) {
    int width = 0, height = 0, channels = 0;
    const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> pixels(
        stbi_load(file.c_str(), &width, &height, &channels, 4), stbi_image_free);
    ImageHandle image = pixels ? create_image(width, height, 0) : nullptr;
    if (!image) throw SourceError(file.string() + ": no PNG picture");

    const stbi_uc* at = pixels.get();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x, at += 4) {
            const std::uint32_t red = at[0], green = at[1], blue = at[2], alpha = at[3];
            image->set_pixel(x, y, alpha << 24 | red << 16 | green << 8 | blue);
        }
    }
    return image;
}
