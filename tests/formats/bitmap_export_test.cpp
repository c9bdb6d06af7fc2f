// SAVEBITMAP: one bitmap, and its mask, as a picture file of the kind that the name says.
#include "formats/bitmap_export.h"

#include "base/config.h"
#include "formats/bitmap_import.h"
#include "image/picture_file.h"
#include "image/tga.h"
#include "model/colours.h"
#include "model/items.h"
#include "support/bitmaps.h"
#include "support/clean_car.h"
#include "support/picture_bytes.h"
#include "support/text_file.h"

#include <gmock/gmock.h>

namespace {

using Colours = std::vector<std::uint32_t>;

class BitmapExport : public CleanCar {
protected:
    BitmapExport() {
        INITDASHITEMS();
        for (std::uint32_t i = 0; i < PAL.size(); ++i)
            PAL[i] = 0xFF000000 | i << 16 | (255 - i) << 8 | i / 2;
        WORKDIR = directory / "";
    }

    static void add(const std::string& id, int width, int height, const Pixels& pixels) {
        BitmapRecord& bitmap = BITMAP[++BITMAPS];
        bitmap = {};
        bitmap.name = id;
        bitmap.width = static_cast<std::uint16_t>(width);
        bitmap.height = static_cast<std::uint16_t>(height);
        bitmap.pixels = pixels;
        link_mask(bitmap);
    }
    static void add_pair() {
        add("dast", 2, 2, {1, 2, 3, 4});
        add("dasm", 2, 2, {0, 255, 128, 1});
    }
    std::string exported(const std::string& id, const std::string& name) {
        return SAVEBITMAP(id, directory / name).message;
    }
    Colours colours_of(const std::string& name) {
        ImageHandle image = extension_is_targa(name) ? TARGALOAD(directory / name) : LoadRGBAFile(directory / name);
        Colours colours;
        for (int y = 0; image && y < image->height(); ++y)
            for (int x = 0; x < image->width(); ++x)
                colours.push_back(image->pixel(x, y));
        return colours;
    }
    static bool extension_is_targa(const std::string& name) { return name.ends_with("tga") || name.ends_with("TGA"); }

    // A converter that does what the text of a shell script says.
    void configure_converter(const std::string& script) {
        write_text(directory / "converter", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(directory / "converter", std::filesystem::perms::owner_all);
        CONFIGS = 1;
        CONFIG_ID[1] = "imagick";
        CONFIG_VALUE[1] = directory / "converter";
    }

    static constexpr std::uint32_t colour(std::uint32_t i) { return i << 16 | (255 - i) << 8 | i / 2; }
    const Colours with_alpha = {0xFF000000 | colour(1), colour(2), 0x7F000000 | colour(3), 0xFE000000 | colour(4)};
};

} // namespace

TEST_F(BitmapExport, WritesTheKindThatTheNameSays) {
    add_pair();
    for (const std::string name : {"x.png", "x.tga", "x.bmp", "X.PNG", "X.TGA", "X.BMP"}) {
        EXPECT_EQ(exported("dast", name), "Exported dast to " + directory / name);
        EXPECT_EQ(colours_of(name), with_alpha) << name;
    }
    EXPECT_EQ(first_bytes(get_file(directory / "x.png"), 4), byte_list({0x89, 'P', 'N', 'G'}));
    EXPECT_EQ(first_bytes(get_file(directory / "x.bmp"), 2), bytes_of("BM"));
    EXPECT_EQ(byte_at(get_file(directory / "x.tga"), 2), 10);
}

TEST_F(BitmapExport, WithoutAMaskTakesThePalettesAlpha) {
    PAL[7] = 0x40112233;
    add("dash", 2, 1, {7, 1});
    exported("dash", "x.png");
    EXPECT_EQ(colours_of("x.png"), (Colours{0x40112233, 0xFF000000 | colour(1)}));
    add("dast", 1, 1, {7}); // its mask is not there
    exported("dast", "x.png");
    EXPECT_EQ(colours_of("x.png"), (Colours{0x40112233}));
}

TEST_F(BitmapExport, AMaskReplacesThePalettesAlpha) {
    PAL[7] = 0x40112233;
    add("dast", 2, 1, {7, 7});
    add("dasm", 2, 1, {0, 255});
    exported("dast", "x.png");
    EXPECT_EQ(colours_of("x.png"), (Colours{0xFF112233, 0x00112233}));
}

TEST_F(BitmapExport, AMaskOfAnotherSizeCountsAsNone) {
    add("dast", 2, 1, {1, 2});
    add("dasm", 1, 2, {255, 255});
    exported("dast", "x.png");
    EXPECT_EQ(colours_of("x.png"), (Colours{0xFF000000 | colour(1), 0xFF000000 | colour(2)}));
}

TEST_F(BitmapExport, AMaskThatIsItsOwnOwnerIsTakenOnce) {
    add("what", 2, 1, {0, 3});
    BITMAP[1].has_mask = 255;
    BITMAP[1].mask_name = "what";
    exported("what", "x.png");
    EXPECT_EQ(colours_of("x.png"), (Colours{0xFF000000 | colour(0), 0xFC000000 | colour(3)}));
}

TEST_F(BitmapExport, ImportedAgainIsTheSame) {
    Pixels pixels, mask;
    for (int i = 0; i < 60 * 40; ++i) {
        pixels.push_back(static_cast<std::uint8_t>(i * 7));
        mask.push_back(i % 3 ? 0 : 255);
    }
    for (const std::string name : {"x.png", "x.tga", "x.bmp"}) {
        reset_bitmaps();
        add("dast", 60, 40, pixels);
        add("dasm", 60, 40, mask);
        exported("dast", name);
        reset_bitmaps();
        EXPECT_EQ(LOADBITMAP("dast", directory / name).message, "Imported dast from " + directory / name);
        EXPECT_EQ(*BITMAP[RBM("dast")].pixels, pixels);
        EXPECT_EQ(*BITMAP[RBM("dasm")].pixels, mask);
    }
}

TEST_F(BitmapExport, WithoutTheBitmapWritesNothing) {
    EXPECT_EQ(exported("dast", "x.png"), "No such bitmap");
    EXPECT_EQ(SAVEBITMAP("", directory / "x.png").message, "No such bitmap");
    EXPECT_THAT(directory.names(), testing::IsEmpty());
}

TEST_F(BitmapExport, WithoutAreaWritesNothing) {
    add("dash", 0, 5, {});
    add("roof", 40000, 1, Pixels(40000));
    EXPECT_EQ(exported("dash", "x.png"), "No picture can be made of dash");
    EXPECT_EQ(exported("roof", "x.png"), "No picture can be made of roof");
    EXPECT_THAT(directory.names(), testing::IsEmpty());
}

TEST_F(BitmapExport, OfAnotherKindWritesNothing) {
    add_pair();
    for (const std::string name : {"x.gif", "x.pcx", "x", "x."})
        EXPECT_EQ(exported("dast", name), "Unknown format: " + directory / name);
    EXPECT_THAT(directory.names(), testing::IsEmpty());
}

TEST_F(BitmapExport, ThatCannotBeWrittenLeavesTheEarlierFile) {
    add("dash", 200, 200, Pixels(40000, 7));
    for (const std::string name : {"x.png", "x.tga", "x.bmp"}) {
        put_file(directory / name, bytes_of("earlier"));
        const auto fails = [&] { return SAVEBITMAP("dash", directory / name).done ? 0 : 1; };
        EXPECT_EQ(run_with_file_size_limit(10, fails), 1) << name;
        EXPECT_EQ(get_file(directory / name), bytes_of("earlier"));
    }
    EXPECT_EQ(SAVEBITMAP("dash", directory / "no/x.png").message, "Invalid file name: " + directory / "no/x.png");
    EXPECT_EQ(SAVEBITMAP("dash", directory / "no/x.bmp").message, "Invalid file name: " + directory / "no/x.bmp");
    EXPECT_EQ(SAVEBITMAP("dash", directory / "no/x.tga").message,
              "Failed to create image file: " + directory / "no/x.tga");
}

TEST_F(BitmapExport, LeavesTheFileStatusAlone) {
    add_pair();
    FILE_FILE = "before";
    FILE_ERNUM = 77;
    exported("dast", "x.png");
    exported("none", "x.png");
    EXPECT_EQ(FILE_FILE, "before");
    EXPECT_FAILURE(77, "an earlier failure");
}

TEST_F(BitmapExport, HandsJpegToTheConverter) {
    add_pair();
    configure_converter("echo \"$1|$2|$#\" > \"$2\"");
    for (const std::string name : {"x.jpg", "X.JPEG", "it's; a.Jpg"}) {
        EXPECT_EQ(exported("dast", name), "Exported dast to " + directory / name);
        EXPECT_EQ(read_text(directory / name), directory / "temp.tga" + "|" + directory / name + "|2\n");
    }
    EXPECT_EQ(colours_of("temp.tga"), with_alpha);                  // and leaves it there
    EXPECT_EQ(byte_at(get_file(directory / "temp.tga"), 17), 0x28); // from the top row on
}

TEST_F(BitmapExport, WithoutAConverterWritesNoJpeg) {
    add_pair();
    EXPECT_EQ(exported("dast", "x.jpg"), "No image converter is configured: " + directory / "x.jpg");
    EXPECT_THAT(directory.names(), testing::IsEmpty());
}

TEST_F(BitmapExport, AConverterThatFailsDoesNotCostTheEarlierFile) {
    add_pair();
    for (const char* script : {"echo half > \"$2\"; exit 3", "rm \"$2\"", "kill -9 $$", "exit 1"}) {
        put_file(directory / "x.jpg", bytes_of("earlier"));
        configure_converter(script);
        EXPECT_EQ(exported("dast", "x.jpg"), "The image converter failed: " + directory / "x.jpg") << script;
        EXPECT_EQ(get_file(directory / "x.jpg"), bytes_of("earlier")) << script;
    }
}

TEST_F(BitmapExport, AConverterThatWritesNothingHasFailed) {
    add_pair();
    configure_converter("exit 0");
    EXPECT_EQ(exported("dast", "x.jpg"), "The image converter failed: " + directory / "x.jpg");
    CONFIG_VALUE[1] = directory / "no such program";
    EXPECT_EQ(exported("dast", "x.jpg"), "The image converter failed: " + directory / "x.jpg");
}
