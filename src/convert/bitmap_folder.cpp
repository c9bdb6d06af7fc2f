#include "convert/bitmap_folder.h"

#include "base/text.h"
#include "convert/bitmap_layout.h"
#include "convert/picture_exchange.h"
#include "convert/refusal.h"
#include "formats/bitmap_export.h"
#include "formats/bitmap_import.h"
#include "image/picture_file.h"
#include "model/bitmap_table.h"
#include "model/colours.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <utility>

namespace {

constexpr std::uint32_t colour_bits = 0xFFFFFF;
constexpr std::uint8_t full = 255;

bool has_area(const BitmapRecord& bitmap) { return bitmap.width != 0 && bitmap.height != 0; }

bool same_size(const BitmapRecord& a, const BitmapRecord& b) { return a.width == b.width && a.height == b.height; }

std::uint8_t alpha_of(std::uint32_t argb) { return static_cast<std::uint8_t>(argb >> 24); }

// --- writing --------------------------------------------------------------------------------------------------------

// The only bitmap of this id; null when there is none, or several.
const BitmapRecord* the_one(const std::vector<BitmapRecord>& bitmaps, std::string_view id) {
    const auto has_id = [&](const BitmapRecord& bitmap) { return bitmap.name == id; };
    const auto found = std::ranges::find_if(bitmaps, has_id);
    return std::ranges::count_if(bitmaps, has_id) == 1 ? &*found : nullptr;
}

// The mask that goes into the alpha of this bitmap's picture, or null.
const BitmapRecord* mask_for(const std::vector<BitmapRecord>& bitmaps, const BitmapRecord& owner) {
    if (!has_area(owner) || !the_one(bitmaps, owner.name)) return nullptr;
    const std::string_view id = mask_of(owner.name);
    const BitmapRecord* const mask = id.empty() ? nullptr : the_one(bitmaps, id);
    return mask && same_size(*mask, owner) ? mask : nullptr;
}

// The other way round: the bitmap whose picture carries this mask, or null.
const BitmapRecord* owner_of(const std::vector<BitmapRecord>& bitmaps, const BitmapRecord& mask) {
    const auto owner = std::ranges::find_if(bitmaps, [&](const BitmapRecord& bitmap) {
        return mask_of(bitmap.name) == mask.name && mask_for(bitmaps, bitmap) == &mask;
    });
    return owner == bitmaps.end() ? nullptr : &*owner;
}

// File names from ids: without trailing blanks, unusual characters as %XX, no two alike, however they are cased.
class FileNames {
public:
    std::string name_for(std::string_view id) {
        std::string stem;
        for (const char c : without_trailing_blanks(id))
            stem += is_usual(c) ? std::string(1, c) : numbered(static_cast<unsigned char>(c));
        std::string name = stem + ".png";
        for (int copy = 2; !taken_.insert(lower_case(name)).second; ++copy)
            name = stem + "-" + std::to_string(copy) + ".png";
        return name;
    }

private:
    static bool is_usual(char c) {
        const auto within = [c](char first, char last) { return c >= first && c <= last; };
        return within('a', 'z') || within('A', 'Z') || within('0', '9') || c == '!' || c == '_';
    }
    static std::string numbered(unsigned char c) {
        constexpr std::string_view digits = "0123456789ABCDEF";
        return {'%', digits[c >> 4], digits[c & 15]};
    }

    std::set<std::string> taken_;
};

// The pixels that a reader of the picture would take for others.
std::vector<PixelRun> runs_of_misread(const Pixels& pixels, auto is_misread) {
    std::vector<PixelRun> runs;
    for (std::size_t at = 0; at < pixels.size(); ++at) {
        if (!is_misread(pixels[at])) continue;
        const bool goes_on = !runs.empty() && runs.back().at + runs.back().count == at && //
                             runs.back().value == pixels[at];
        if (!goes_on) runs.push_back({.at = at, .count = 0, .value = pixels[at]});
        ++runs.back().count;
    }
    return runs;
}

std::vector<PixelRun> kept_indices(const Pixels& pixels) {
    const NearestPaletteEntry nearest(PAL);
    std::array<bool, 256> misread{};
    for (std::size_t index = 0; index < misread.size(); ++index)
        misread[index] = nearest(PAL[index] & colour_bits) != index;
    return runs_of_misread(pixels, [&](std::uint8_t index) { return misread[index]; });
}

std::vector<PixelRun> kept_mask_values(const Pixels& pixels) {
    return runs_of_misread(pixels, [](std::uint8_t value) { return value != 0 && value != full; });
}

// A mask without a bitmap that could carry it: white, as far as it lets see nothing through.
ImageHandle mask_image(const BitmapRecord& mask) {
    ImageHandle image = create_image(mask.width, mask.height, 0, 32);
    if (!image) return image;
    std::size_t at = 0;
    for (int y = 0; y < mask.height; ++y)
        for (int x = 0; x < mask.width; ++x)
            image->set_pixel(x, y, colour_bits | (std::uint32_t{full} - (*mask.pixels)[at++]) << 24);
    return image;
}

Bytes png_of(const BitmapRecord& bitmap, const ImageHandle& image) {
    std::optional<Bytes> png;
    if (image && PictureSize{bitmap.width, bitmap.height}.fits(largest_picture)) png = encode_png(*image, true);
    if (!png)
        throw Refusal("\"" + bitmap.name + "\" is " + std::to_string(bitmap.width) + " x " +
                      std::to_string(bitmap.height) + ", too large for a picture");
    return std::move(*png);
}

Bytes picture_of(const std::vector<BitmapRecord>& bitmaps, const BitmapRecord& bitmap, LayoutRow::Kind kind) {
    const bool is_mask = kind == LayoutRow::Kind::mask;
    return png_of(bitmap, is_mask ? mask_image(bitmap) : export_image(bitmap, mask_for(bitmaps, bitmap)));
}

// The row of a bitmap, without the name of its picture.
LayoutRow layout_row(const std::vector<BitmapRecord>& bitmaps, const BitmapRecord& bitmap) {
    LayoutRow row{.bitmap = bitmap};
    row.bitmap.pixels = {};
    if (!has_area(bitmap)) {
        row.kind = LayoutRow::Kind::empty;
    } else if (is_mask_id(bitmap.name)) {
        row.kind = LayoutRow::Kind::mask;
        row.kept = kept_mask_values(*bitmap.pixels);
        if (const BitmapRecord* const owner = owner_of(bitmaps, bitmap)) row.owner = owner->name;
    } else {
        row.kept = kept_indices(*bitmap.pixels);
    }
    return row;
}

// --- reading --------------------------------------------------------------------------------------------------------

constexpr PictureSize canvas{canvas_width, canvas_height};

class FolderReader {
public:
    FolderReader(const std::vector<LayoutRow>& rows, const PictureBytes& picture)
        : rows_(rows), picture_(picture), nearest_(PAL) {}

    std::vector<BitmapRecord> read() {
        std::vector<BitmapRecord> bitmaps;
        std::size_t pixels = 0;
        for (const LayoutRow& row : rows_) {
            bitmaps.push_back(bitmap_of(row));
            pixels += bitmaps.back().pixels->size();
            if (pixels > max_bitmap_pixels) throw Refusal("more pixels than a bitmap file has room for");
        }
        return bitmaps;
    }

private:
    BitmapRecord bitmap_of(const LayoutRow& row) {
        BitmapRecord bitmap = row.bitmap;
        if (row.kind == LayoutRow::Kind::empty) return bitmap;
        const Image& image = image_for(row);
        const bool as_laid_out = image.width() == bitmap.width && image.height() == bitmap.height;
        if (!as_laid_out && !PictureSize{image.width(), image.height()}.fits(canvas))
            throw Refusal(row.picture + ": " + "larger than " + std::to_string(canvas.width) + " x " +
                          std::to_string(canvas.height));
        bitmap.width = static_cast<std::uint16_t>(image.width());
        bitmap.height = static_cast<std::uint16_t>(image.height());
        const auto runs = as_laid_out ? std::span(row.kept) : std::span<const PixelRun>();
        bitmap.pixels = row.kind == LayoutRow::Kind::mask ? mask_pixels(image, runs) : colour_pixels(image, runs);
        return bitmap;
    }

    const Image& image_for(const LayoutRow& row) {
        if (row.owner.empty()) return image_named(row.picture);
        const auto owner = std::ranges::find_if(rows_, [&](const LayoutRow& other) {
            return other.kind == LayoutRow::Kind::bitmap && other.bitmap.name == row.owner;
        });
        if (owner == rows_.end()) throw Refusal("a mask of \"" + row.owner + "\", which the layout does not have");
        return image_named(owner->picture);
    }

    const Image& image_named(const std::string& name) {
        ImageHandle& image = images_[name];
        if (!image) {
            try {
                image = decode_whole_picture(name, picture_(name));
            } catch (const Refusal& why) {
                throw Refusal(name + ": " + why.what());
            }
        }
        return *image;
    }

    // Every pixel by `convert`, then those that the layout keeps, where the picture still shows them.
    static Pixels pixels_of(const Image& image, std::span<const PixelRun> kept, auto convert, auto still_shows) {
        Pixels pixels;
        const auto width = static_cast<std::size_t>(image.width());
        const auto pixel = [&](std::size_t at) {
            return image.pixel(static_cast<int>(at % width), static_cast<int>(at / width));
        };
        const std::size_t count = width * static_cast<std::size_t>(image.height());
        pixels.reserve(count);
        for (std::size_t at = 0; at < count; ++at)
            pixels.push_back(convert(pixel(at)));
        for (const PixelRun& run : kept)
            for (std::size_t at = run.at; at < run.at + run.count; ++at)
                if (still_shows(pixel(at), run.value)) pixels[at] = run.value;
        return pixels;
    }

    Pixels colour_pixels(const Image& image, std::span<const PixelRun> kept) const {
        return pixels_of(
            image, kept, [&](std::uint32_t pixel) { return nearest_(pixel & colour_bits); },
            [](std::uint32_t pixel, std::uint8_t index) { return ((pixel ^ PAL[index]) & colour_bits) == 0; });
    }

    static Pixels mask_pixels(const Image& image, std::span<const PixelRun> kept) {
        return pixels_of(image, kept, mask_value,
                         [](std::uint32_t pixel, std::uint8_t value) { return alpha_of(pixel) == full - value; });
    }

    const std::vector<LayoutRow>& rows_;
    const PictureBytes& picture_;
    NearestPaletteEntry nearest_;
    std::map<std::string, ImageHandle> images_;
};

} // namespace

std::vector<NamedFile> bitmap_folder(const std::vector<BitmapRecord>& bitmaps) {
    std::vector<NamedFile> files(1);
    std::vector<LayoutRow> rows;
    FileNames names;
    for (const BitmapRecord& bitmap : bitmaps) {
        rows.push_back(layout_row(bitmaps, bitmap));
        LayoutRow& row = rows.back();
        if (row.kind == LayoutRow::Kind::empty || !row.owner.empty()) continue;
        row.picture = names.name_for(bitmap.name);
        files.push_back({row.picture, picture_of(bitmaps, bitmap, row.kind)});
    }
    ByteWriter layout;
    layout.text(layout_text(rows));
    files.front() = {std::string(layout_file_name), layout.take()};
    return files;
}

std::vector<BitmapRecord> read_bitmap_folder(std::string_view layout, const PictureBytes& picture) {
    const std::vector<LayoutRow> rows = read_layout(layout);
    return FolderReader(rows, picture).read();
}
