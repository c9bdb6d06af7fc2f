#include "formats/bitmap_import.h"

#include "base/file_io.h"
#include "base/file_status.h"
#include "base/text.h"
#include "image/picture_file.h"
#include "image/tga.h"
#include "model/bitmap_table.h"
#include "model/colours.h"
#include "model/items.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr PictureSize largest_bitmap{canvas_width, canvas_height};
constexpr std::uint32_t colour_bits = 0xFFFFFF;
constexpr int opaque_from = 128; // alpha from which a pixel hides what lies behind
constexpr std::uint8_t opaque = 0, see_through = 255;

std::string too_large() {
    return "Larger than " + std::to_string(canvas_width) + " x " + std::to_string(canvas_height);
}

// --- decoding -------------------------------------------------------------------------------------------------------

ImportedPicture decode_targa_import(std::span<const std::byte> file) {
    TargaPicture picture = decode_targa(file);
    set_targa_error(picture.error);
    if (!picture.image) return {.reason = TARGAERRORMESSAGE};
    if (picture.image->bytes_per_pixel() != 4) return {.reason = std::string(not_a_picture)};
    return {.image = std::move(picture.image)};
}

ImportedPicture decode_picture_import(std::span<const std::byte> file) {
    DecodedPicture picture = decode_picture(file, largest_bitmap);
    return {.image = std::move(picture.image), .reason = std::move(picture.reason)};
}

bool is_targa(std::string_view path) { return extension_of(path) == ".tga"; }

std::optional<PictureSize> import_size(std::string_view path, std::span<const std::byte> file) {
    return is_targa(path) ? targa_size(file) : picture_size(file);
}

// --- pixels ---------------------------------------------------------------------------------------------------------

void each_pixel(const Image& picture, auto visit) {
    for (int y = 0; y < picture.height(); ++y) {
        const auto row = picture.row(y);
        for (std::size_t at = 0; at < row.size(); at += sizeof(std::uint32_t)) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, &row[at], sizeof pixel);
            visit(pixel);
        }
    }
}

Pixels converted(const Image& picture, auto convert) {
    Pixels pixels;
    pixels.reserve(static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height()));
    each_pixel(picture, [&](std::uint32_t pixel) { pixels.push_back(convert(pixel)); });
    return pixels;
}

Pixels mask_pixels(const Image& picture) { return converted(picture, mask_value); }

// How many of the picture's colours the palette does not have.
std::size_t foreign_colours(const Image& picture, const Pixels& indices) {
    std::vector<std::uint32_t> foreign;
    auto index = indices.begin();
    each_pixel(picture, [&](std::uint32_t pixel) {
        const std::uint32_t colour = pixel & colour_bits;
        if (colour != (PAL[*index++] & colour_bits)) foreign.push_back(colour);
    });
    std::ranges::sort(foreign);
    return static_cast<std::size_t>(std::unique(foreign.begin(), foreign.end()) - foreign.begin());
}

// --- the table ------------------------------------------------------------------------------------------------------

// What an import takes out of the table before it adds.
struct Room {
    int bitmaps = max_bitmaps - BITMAPS;
    std::size_t pixels = max_bitmap_pixels - bitmap_pixels();

    void free(std::string_view id) {
        const int index = RBM(id);
        if (index == 0) return;
        ++bitmaps;
        pixels += BITMAP[index].pixels->size();
    }
    bool take(std::size_t area) {
        if (bitmaps < 1 || pixels < area) return false;
        --bitmaps;
        pixels -= area;
        return true;
    }
};

bool has_room(std::string_view id, const Image& picture) {
    const std::string_view mask = mask_of(id);
    const auto area = static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height());
    Room room;
    room.free(id);
    if (!mask.empty()) room.free(mask);
    return room.take(area) && (mask.empty() || room.take(area));
}

void replace_bitmap(const std::string& id, const Image& picture, Pixels pixels) {
    drop_bitmap(RBM(id));
    BitmapRecord& bitmap = BITMAP[++BITMAPS];
    bitmap = {};
    bitmap.name = id;
    bitmap.width = static_cast<std::uint16_t>(picture.width());
    bitmap.height = static_cast<std::uint16_t>(picture.height());
    bitmap.pixels = std::move(pixels);
    link_mask(bitmap);
    const BitmapRecord& instruments = BITMAP[RBM("ins2")];
    if (is_instrument_panel(id)) {
        bitmap.absolute_x = instruments.absolute_x;
        bitmap.absolute_y = instruments.absolute_y;
    }
    if (id == "ins2") resolve_positions(); // the panels follow
}

std::string told(const std::string& id, const std::string& path, std::size_t foreign) {
    std::string text = "Imported " + id + " from " + path;
    if (foreign == 0) return text;
    return text + ", " + std::to_string(foreign) + (foreign == 1 ? " colour" : " colours") + " not in the palette";
}

} // namespace

std::uint8_t mask_value(std::uint32_t argb) {
    return static_cast<int>(argb >> 24) >= opaque_from ? opaque : see_through;
}

ImportedPicture decode_import(std::string_view path, std::span<const std::byte> file) {
    const auto size = import_size(path, file);
    if (size && !size->fits(largest_bitmap)) return {.reason = too_large()};
    return is_targa(path) ? decode_targa_import(file) : decode_picture_import(file);
}

Import import_bitmap(const std::string& id, const Image& picture, Dither dither) {
    if (!has_room(id, picture)) return {};
    const bool is_mask = is_mask_id(id);
    Pixels pixels = is_mask ? mask_pixels(picture) : dithered(picture, PAL, dither);
    const std::size_t foreign = is_mask ? 0 : foreign_colours(picture, pixels);
    replace_bitmap(id, picture, std::move(pixels));
    if (const std::string_view mask = mask_of(id); !mask.empty())
        replace_bitmap(std::string(mask), picture, mask_pixels(picture));
    UPDATEDASHITEMS();
    return {.done = true, .foreign_colours = foreign};
}

BitmapExchange LOADBITMAP(const std::string& id, const std::string& path, Dither dither) {
    const auto [outcome, file] = load_and_report(path, largest_picture_file);
    if (!file) return {.message = std::string(error_text(outcome.code)) + ": " + path};
    report_file({path}); // also when it was longer than any picture
    const ImportedPicture picture = decode_import(path, *file);
    if (!picture.image) return {.message = picture.reason};
    const Import import = import_bitmap(id, *picture.image, dither);
    if (!import.done) return {.message = "No room for " + id + ": too many bitmaps"};
    return {.done = true, .message = told(id, path, import.foreign_colours)};
}
