#include "image/picture_file.h"

#include "image/dds.h"
#include "image/jpeg_check.h"
#include "image/stb_fence.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <stb_image.h>

namespace {

using FileBytes = std::span<const std::byte>;

constexpr std::size_t row_alignment = 16;
constexpr int channels = 4;
// What a decoder needs at most at once: the file's compressed data, its unpacked rows, the coefficients of a
// progressive picture and the result.
constexpr std::size_t memory_a_pixel = 48, memory_besides = std::size_t{8} << 20;

std::string& last_failure() {
    static std::string text;
    return text;
}

const stbi_uc* library_bytes(FileBytes file) { return reinterpret_cast<const stbi_uc*>(file.data()); }
int library_length(FileBytes file) { return static_cast<int>(file.size()); }

bool is_refused(FileBytes file) {
    return file.empty() || file.size() > largest_picture_file || (is_jpeg(file) && !is_safe_jpeg(file));
}

// Holds the library to a share of memory for as long as it lives.
class MemoryLimit {
public:
    explicit MemoryLimit(std::size_t limit) : before_(fenced_memory_limit) { fenced_memory_limit = limit; }
    ~MemoryLimit() { fenced_memory_limit = before_; }
    MemoryLimit(const MemoryLimit&) = delete;
    MemoryLimit& operator=(const MemoryLimit&) = delete;

private:
    std::size_t before_;
};

std::size_t memory_for(PictureSize size) {
    return memory_besides +
           memory_a_pixel * static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

// Red, green, blue, alpha in the file's order to a word 0xAARRGGBB.
std::uint32_t argb_of(const stbi_uc* pixel) {
    return std::uint32_t{pixel[3]} << 24 | std::uint32_t{pixel[0]} << 16 | std::uint32_t{pixel[1]} << 8 | pixel[2];
}

ImageHandle image_of(const stbi_uc* pixels, PictureSize size) {
    ImageHandle image = create_image(size.width, size.height, 0, 32, row_alignment);
    if (!image) return image;
    for (int y = 0; y < size.height; ++y) {
        const auto row = image->row(y);
        for (std::size_t at = 0; at < row.size(); at += channels, pixels += channels) {
            const std::uint32_t pixel = argb_of(pixels);
            std::memcpy(&row[at], &pixel, sizeof pixel);
        }
    }
    return image;
}

DecodedPicture decode_by_library(FileBytes file, PictureSize size) {
    const MemoryLimit limit(memory_for(size));
    PictureSize decoded;
    int file_channels = 0;
    const std::unique_ptr<stbi_uc, decltype(&stbi_image_free)> pixels(
        stbi_load_from_memory(library_bytes(file), library_length(file), &decoded.width, &decoded.height,
                              &file_channels, channels),
        stbi_image_free);
    if (!pixels) return {.reason = stbi_failure_reason()};
    if (decoded.width != size.width || decoded.height != size.height) return {.reason = std::string(not_a_picture)};
    ImageHandle image = image_of(pixels.get(), size);
    if (!image) return {.reason = "Image load failed out of memory !"};
    return {.image = std::move(image)};
}

DecodedPicture decode_as_dds(FileBytes file, PictureSize most) {
    ImageHandle image = decode_dds(file, most);
    if (!image) return {.reason = "Corrupt or unsupported DDS"};
    return {.image = std::move(image)};
}

std::optional<PictureSize> size_by_library(FileBytes file) {
    const MemoryLimit limit(memory_besides);
    PictureSize size;
    int file_channels = 0;
    if (!stbi_info_from_memory(library_bytes(file), library_length(file), &size.width, &size.height, &file_channels))
        return {};
    // A bitmap that is stored from the top has a negative height.
    if (size.height < 0 && size.height > -0x7FFFFFFF) size.height = -size.height;
    if (!size.has_area()) return {};
    return size;
}

} // namespace

std::optional<PictureSize> picture_size(FileBytes file) {
    if (is_dds(file)) return dds_size(file);
    return is_refused(file) ? std::nullopt : size_by_library(file);
}

DecodedPicture decode_picture(FileBytes file, PictureSize most) {
    const auto size = picture_size(file);
    if (!size) return {.reason = std::string(not_a_picture)};
    if (!size->fits(most)) return {.reason = "Image is too large"};
    return is_dds(file) ? decode_as_dds(file, most) : decode_by_library(file, *size);
}

ImageHandle LoadRGBAFile(const std::string& filename) {
    DecodedPicture picture;
    try {
        const FileContent file = read_file_or_throw(filename, largest_picture_file);
        if (file) {
            picture = decode_picture(*file);
        } else {
            picture.reason = filename.empty() ? "Image load failed no filename !" : "Unable to open file";
        }
    } catch (const std::bad_alloc&) {
        picture = {.reason = "Image load failed out of memory !"};
    }
    if (!picture.image) last_failure() = picture.reason;
    return std::move(picture.image);
}

const std::string& picture_failure() { return last_failure(); }
