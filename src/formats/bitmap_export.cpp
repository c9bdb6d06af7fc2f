#include "formats/bitmap_export.h"

#include "base/config.h"
#include "base/file_io.h"
#include "base/shell.h"
#include "base/text.h"
#include "image/picture_file.h"
#include "image/tga.h"
#include "model/colours.h"

#include <chrono>
#include <cstdint>

namespace {

constexpr std::uint32_t colour_bits = 0xFFFFFF;
constexpr std::chrono::seconds converters_time{20};

// --- the picture ----------------------------------------------------------------------------------------------------

const BitmapRecord* mask_of_same_size(const BitmapRecord& bitmap) {
    const int index = mask_index(bitmap);
    if (index == 0 || !has_pixel_buffer(BITMAP[index])) return nullptr;
    const bool same = BITMAP[index].width == bitmap.width && BITMAP[index].height == bitmap.height;
    return same ? &BITMAP[index] : nullptr;
}

std::uint32_t with_alpha(std::uint32_t colour, std::uint8_t mask) {
    return (colour & colour_bits) | (255u - mask) << 24;
}

// --- files ----------------------------------------------------------------------------------------------------------

// An empty text when the file was written, else why it was not.
using Failure = std::string;

Failure failure_of(SaveOutcome outcome) {
    switch (outcome) {
    case SaveOutcome::saved: return {};
    case SaveOutcome::not_writable: return "Not writable";
    case SaveOutcome::cannot_create: return "Invalid file name";
    default: return "Write error";
    }
}

Failure write_targa(const Image& image, const std::string& path) {
    TARGASAVE(path, &image);
    return TARGAERRORMESSAGE;
}
Failure write_bmp(const Image& image, const std::string& path) { return failure_of(save_bmp(image, path)); }
Failure write_png(const Image& image, const std::string& path) { return failure_of(SavePNGFile(image, path, true)); }

// Some converters take the rows of a Truevision file for stored from the top, whatever its header says: so they are.
Failure write_for_converter(const Image& image, const std::string& path) {
    save_targa_from_the_top(path, &image);
    return TARGAERRORMESSAGE;
}

// The file that stands where a converter is to write: one that fails half-way does not cost it.
class EarlierFile {
public:
    explicit EarlierFile(const std::string& path) : path_(path), content_(read_file(path, most_kept)) {}

    void put_back() const {
        if (!content_ || content_->size() == most_kept) return;
        const FileContent now = read_file(path_, most_kept);
        if (!now || *now != *content_) save_file(path_, *content_);
    }

private:
    static constexpr std::size_t most_kept = largest_picture_file;
    std::string path_;
    FileContent content_;
};

Failure convert(const Image& image, const std::string& path) {
    const std::string converter = CONFIG("imagick");
    if (converter.empty()) return "No image converter is configured";
    const std::string picture = WORKDIR + "temp.tga";
    if (Failure failure = write_for_converter(image, picture); !failure.empty()) return failure;
    const EarlierFile earlier(path);
    const CommandOutcome outcome = run_external_program(
        converter + " " + shell_quoted(picture) + " " + shell_quoted(path), "the image converter", converters_time);
    if (outcome.succeeded() && file_exists(path)) return {};
    earlier.put_back();
    return outcome.ended_by_itself() ? "The image converter failed" : "The image converter: " + in_words(outcome);
}

struct PictureKind {
    std::string_view extension;
    Failure (*write)(const Image& image, const std::string& path);
};
constexpr PictureKind picture_kinds[] = {
    {".tga", write_targa}, {".bmp", write_bmp}, {".png", write_png}, {".jpg", convert}, {".jpeg", convert},
};

Failure write_picture(const Image& image, const std::string& path) {
    const std::string extension = extension_of(path);
    for (const PictureKind& kind : picture_kinds)
        if (kind.extension == extension) return kind.write(image, path);
    return "Unknown format";
}

} // namespace

ImageHandle export_image(const BitmapRecord& bitmap, const BitmapRecord* mask) {
    if (!has_pixel_buffer(bitmap)) return nullptr;
    ImageHandle image = create_image(bitmap.width, bitmap.height, 0, 32);
    if (!image) return image;
    std::size_t at = 0;
    for (int y = 0; y < bitmap.height; ++y)
        for (int x = 0; x < bitmap.width; ++x, ++at) {
            const std::uint32_t colour = PAL[(*bitmap.pixels)[at]];
            image->set_pixel(x, y, mask ? with_alpha(colour, (*mask->pixels)[at]) : colour);
        }
    return image;
}

BitmapExchange SAVEBITMAP(const std::string& id, const std::string& path) {
    const int index = RBM(id);
    if (index == 0) return {.message = "No such bitmap"};
    const ImageHandle image = export_image(BITMAP[index], mask_of_same_size(BITMAP[index]));
    if (!image) return {.message = "No picture can be made of " + id};
    if (const Failure failure = write_picture(*image, path); !failure.empty())
        return {.message = failure + ": " + path};
    return {.done = true, .message = "Exported " + id + " to " + path};
}
