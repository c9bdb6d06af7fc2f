// LOADBITMAP: one picture file becomes a bitmap and its mask.
#include "formats/bitmap_import.h"

#include "image/picture_file.h"
#include "image/tga.h"
#include "model/colours.h"
#include "model/items.h"
#include "support/bitmaps.h"
#include "support/clean_car.h"
#include "support/picture_bytes.h"
#include "support/tga_words.h"

#include <gmock/gmock.h>

namespace {

using testing::AnyOf;

constexpr std::uint32_t black = 0xFF000000, red = 0xFFFF0000, white = 0xFFFFFFFF;

class BitmapImport : public CleanCar {
protected:
    BitmapImport() {
        INITDASHITEMS();
        PAL.fill(black);
        PAL[5] = red;
        PAL[9] = white;
        PAL[10] = white;
    }

    // The outcome's words.
    std::string import(const std::string& id, const Bytes& file, const std::string& name = "x.png") {
        put_file(directory / name, file);
        return LOADBITMAP(id, directory / name).message;
    }
    std::string imported(const std::string& id, const std::string& name = "x.png") {
        return "Imported " + id + " from " + directory / name;
    }
    static void add(const std::string& id, int width = 2, int height = 2) {
        BitmapFile file;
        BitmapRecord bitmap;
        bitmap.name = id;
        bitmap.width = static_cast<std::uint16_t>(width);
        bitmap.height = static_cast<std::uint16_t>(height);
        bitmap.pixels = Pixels(static_cast<std::size_t>(width * height));
        file.bitmaps.push_back(bitmap);
        merge_bitmap_file(file);
    }
    static const BitmapRecord& bitmap(std::string_view id) { return BITMAP[RBM(id)]; }
    static const Pixels& pixels(std::string_view id) { return *bitmap(id).pixels; }
};

ImageHandle picture(int width, int height, std::uint32_t colour) { return create_image(width, height, colour); }
Bytes png_of(int width, int height, std::uint32_t colour = red) {
    return png::file_of(*picture(width, height, colour));
}

} // namespace

TEST_F(BitmapImport, AppendsABitmapAtTheCorner) {
    add("roof");
    EXPECT_EQ(import("gbox", png_of(3, 2)), imported("gbox"));
    EXPECT_EQ(table_names(), "roof/gbox/");
    const BitmapRecord& gbox = bitmap("gbox");
    EXPECT_EQ(gbox.width, 3);
    EXPECT_EQ(gbox.height, 2);
    EXPECT_EQ(gbox.header_word_3, 0);
    EXPECT_EQ(gbox.header_word_4, 0);
    EXPECT_EQ(gbox.relative_x, 0);
    EXPECT_EQ(gbox.absolute_y, 0);
    EXPECT_EQ(gbox.flags, (std::array<std::uint8_t, 4>{}));
    EXPECT_EQ(pixels("gbox"), Pixels(6, 5));
    EXPECT_EQ(gbox.is_mask, 0);
    EXPECT_EQ(gbox.has_mask, 0);
    EXPECT_EQ(DASHITEM[10].bitmap, 2);
    EXPECT_EQ(FILE_FILE, directory / "x.png");
    EXPECT_SUCCESS();
}

TEST_F(BitmapImport, MakesTheMaskOfTheSameFile) {
    const auto image = picture(4, 1, red);
    image->set_pixel(1, 0, 0x80FFFFFF); // exactly halfway is opaque
    image->set_pixel(2, 0, 0x7FFFFFFF);
    image->set_pixel(3, 0, 0x00000000);
    EXPECT_EQ(import("dast", png::file_of(*image)), imported("dast"));
    EXPECT_EQ(table_names(), "dast/dasm/");
    EXPECT_EQ(pixels("dast"), (Pixels{5, 9, 9, 0}));
    EXPECT_EQ(pixels("dasm"), (Pixels{0, 0, 255, 255}));
    EXPECT_EQ(bitmap("dast").mask_name, "dasm");
    EXPECT_EQ(bitmap("dast").has_mask, 255);
    EXPECT_EQ(bitmap("dasm").is_mask, 255);
    EXPECT_EQ(bitmap("dasm").has_mask, 0);
    EXPECT_EQ(DASHITEM[2].bitmap, 1);
}

TEST_F(BitmapImport, KnowsEveryPair) {
    for (const auto& [owner, mask] : {std::pair{"dast", "dasm"}, std::pair{"dot ", "dota"}, std::pair{"ins1", "inm1"},
                                      std::pair{"ins3", "inm3"}, std::pair{"gnob", "gnab"}}) {
        reset_bitmaps();
        import(owner, png_of(2, 2));
        EXPECT_EQ(table_names(), std::string(owner) + "/" + mask + "/");
    }
    for (const char* alone : {"dash", "ins2", "dot1", "gbox", "dig0"}) {
        reset_bitmaps();
        import(alone, png_of(2, 2));
        EXPECT_EQ(table_names(), std::string(alone) + "/");
    }
}

TEST_F(BitmapImport, OfAMaskAloneTakesTheAlpha) {
    EXPECT_EQ(import("inm1", png_of(1, 1, 0x00ABCDEF)), imported("inm1"));
    EXPECT_EQ(pixels("inm1"), (Pixels{255}));
    EXPECT_EQ(bitmap("inm1").is_mask, 255);
}

TEST_F(BitmapImport, TakesTheNearestColourAndTheLowerOfTwo) {
    PAL[20] = 0xFF101010;
    PAL[21] = 0xFF303030;
    const auto image = picture(2, 1, 0xFF202020); // as far from the one as from the other
    image->set_pixel(1, 0, 0xFF212121);
    import("dash", png::file_of(*image));
    EXPECT_EQ(pixels("dash"), (Pixels{20, 21}));
    import("dash", png_of(1, 1, white)); // two entries are white
    EXPECT_EQ(pixels("dash"), (Pixels{9}));
}

TEST_F(BitmapImport, TellsHowManyColoursThePaletteLacks) {
    const auto image = picture(3, 1, red);
    image->set_pixel(1, 0, 0xFFFE0000);
    EXPECT_EQ(import("dash", png::file_of(*image)), imported("dash") + ", 1 colour not in the palette");
    image->set_pixel(2, 0, 0x40FE0100);
    image->set_pixel(0, 0, 0x11FE0000); // the same colour in another alpha
    EXPECT_EQ(import("dash", png::file_of(*image)), imported("dash") + ", 2 colours not in the palette");
    EXPECT_EQ(import("dasm", png::file_of(*image)), imported("dasm"));
}

// ODDITY swap-with-last
TEST_F(BitmapImport, ReplacesOwnerAndMaskOneAfterTheOther) {
    for (const char* id : {"dast", "roof", "dasm", "dash"})
        add(id);
    import("dast", png_of(3, 3));
    // The owner gave its place to "dash" and went to the end; then the mask gave its place to it.
    EXPECT_EQ(table_names(), "dash/roof/dast/dasm/");
    EXPECT_EQ(bitmap("dast").width, 3);
    EXPECT_EQ(bitmap("dasm").width, 3);
    EXPECT_EQ(DASHITEM[2].bitmap, 3);
    EXPECT_EQ(DASHITEM[1].bitmap, 1);
}

TEST_F(BitmapImport, ForgetsWhereTheEarlierBitmapWas) {
    add("gbox");
    BITMAP[1].relative_x = BITMAP[1].absolute_x = 77;
    BITMAP[1].flags[2] = 9;
    BITMAP[1].header_word_3 = 4;
    import("gbox", png_of(2, 2));
    EXPECT_EQ(bitmap("gbox").relative_x, 0);
    EXPECT_EQ(bitmap("gbox").absolute_x, 0);
    EXPECT_EQ(bitmap("gbox").flags[2], 0);
    EXPECT_EQ(bitmap("gbox").header_word_3, 0);
}

TEST_F(BitmapImport, PutsAPanelAtTheCornerOfTheInstruments) {
    add("ins2");
    BITMAP[1].relative_x = BITMAP[1].absolute_x = 80;
    BITMAP[1].relative_y = BITMAP[1].absolute_y = 120;
    import("ins3", png_of(2, 2));
    for (const char* id : {"ins3", "inm3"}) {
        EXPECT_EQ(bitmap(id).relative_x, 0);
        EXPECT_EQ(bitmap(id).absolute_x, 80);
        EXPECT_EQ(bitmap(id).absolute_y, 120);
    }
    reset_bitmaps();
    import("ins3", png_of(2, 2));
    EXPECT_EQ(bitmap("ins3").absolute_x, 0);
}

TEST_F(BitmapImport, OfTheInstrumentsTakesThePanelsAlong) {
    add("ins1");
    add("ins2");
    BITMAP[1].relative_x = 7;
    BITMAP[2].relative_x = 80;
    resolve_positions();
    ASSERT_EQ(bitmap("ins1").absolute_x, 87);
    import("ins2", png_of(2, 2));
    EXPECT_EQ(bitmap("ins1").absolute_x, 7);
    EXPECT_EQ(bitmap("ins1").relative_x, 7);
}

TEST_F(BitmapImport, TakesPicturesUpToTheCanvas) {
    EXPECT_EQ(import("dash", png_of(320, 200)), imported("dash"));
    EXPECT_EQ(import("dash", png_of(1, 1)), imported("dash"));
    for (const Bytes& file :
         {png_of(321, 200), png_of(320, 201), png::file_of_size(16000, 16000), jpeg::grey(321, 8, 9),
          bmp::file({.width = 65000, .height = 65000}, {}), dds::file({.width = 65000}, {})})
        EXPECT_EQ(import("dash", file), "Larger than 320 x 200");
    EXPECT_EQ(import("dash", png::file_of_size(65000, 65000)), not_a_picture); // not even the size is believed
    const Bytes large_targa = joined({targa_header({.width = 321}), Bytes(321 * 3)});
    EXPECT_EQ(import("dash", large_targa, "x.tga"), "Larger than 320 x 200");
    EXPECT_EQ(import("dash", targa_header({.width = 65000, .height = 65000}), "x.tga"), "Larger than 320 x 200");
    EXPECT_EQ(table_names(), "dash/");
    EXPECT_EQ(bitmap("dash").width, 1);
}

TEST_F(BitmapImport, RefusesPicturesWithoutArea) {
    add("dash");
    EXPECT_EQ(import("dash", png::file_of_size(0, 0)), not_a_picture);
    EXPECT_EQ(import("dash", bmp::file({.width = 0}, {}), "x.bmp"), not_a_picture);
    EXPECT_EQ(import("dash", dds::file({.width = 0, .height = 0}, {}), "x.dds"), "Corrupt or unsupported DDS");
    EXPECT_EQ(import("dash", targa_header({.width = 0, .height = 0}), "x.tga"), "Unsupported format");
    EXPECT_EQ(table_names(), "dash/");
    EXPECT_EQ(bitmap("dash").width, 2);
}

TEST_F(BitmapImport, ReadsEveryKindUnderAnyName) {
    const std::vector<Bytes> files = {
        png_of(1, 1),
        jpeg::file({}, 3,
                   [](int, int) {
                       return std::vector{76, 85, 255};
                   }), // red, nearly
        bmp::file({}, byte_list({0, 0, 255, 0})),
        joined({targa_header({}), byte_list({0, 0, 255})}),
        dds::file({}, byte_list({0, 0, 255, 255})),
    };
    for (const Bytes& file : files)
        for (const char* name : {"x.png", "X.JPG", "x.jpeg", "x.bmp", "x", "x.gif", "x.whatever"}) {
            reset_bitmaps();
            const std::string message = import("dash", file, name);
            ASSERT_EQ(message.substr(0, 13), "Imported dash") << name << ": " << message;
            ASSERT_EQ(pixels("dash")[0], 5) << name;
        }
}

TEST_F(BitmapImport, ReadsATargaFileByItsName) {
    EXPECT_EQ(import("dash", joined({targa_header({}), byte_list({0, 0, 255})}), "x.TGA"), imported("dash", "x.TGA"));
    EXPECT_EQ(pixels("dash"), (Pixels{5}));
    // Nothing else under that name.
    for (const Bytes& file : {png_of(1, 1), jpeg::grey(8, 8, 9), bmp::file({}, Bytes(4))}) {
        EXPECT_THAT(import("dash", file, "x.tga"), AnyOf("Image is too large", "Unsupported format"));
        EXPECT_NE(TARGAERROR, 0);
        EXPECT_EQ(pixels("dash"), (Pixels{5}));
    }
}

TEST_F(BitmapImport, TakesPngFilesOfEveryForm) {
    const auto red_of = [](int x, int) {
        return x == 2 ? png::Samples{255, 255, 255, 255} : png::Samples{255, 0, 0, 0};
    };
    const auto deep_red_of = [&](int x, int y) {
        png::Samples samples = red_of(x, y);
        for (unsigned& sample : samples)
            sample *= 257;
        return samples;
    };
    const png::Form alpha{.width = 3, .height = 2};
    const png::Form palette{.width = 3,
                            .height = 2,
                            .depth = 2,
                            .colour = png::colour::palette,
                            .palette = byte_list({255, 0, 0, 255, 255, 255}),
                            .transparency = byte_list({0})};
    const std::vector<std::pair<png::Form, png::PixelAt>> forms = {
        {alpha, red_of},
        {{.width = 3, .height = 2, .interlaced = true}, red_of},
        {{.width = 3, .height = 2, .depth = 16}, deep_red_of},
        {{.width = 3, .height = 2, .depth = 16, .interlaced = true}, deep_red_of},
        {palette, [](int x, int) { return png::Samples{x == 2 ? 1U : 0U}; }},
    };
    for (const auto& [form, pixel] : forms) {
        reset_bitmaps();
        EXPECT_EQ(import("dast", png::file(form, pixel)), imported("dast"));
        EXPECT_EQ(pixels("dast"), (Pixels{5, 5, 9, 5, 5, 9}));
        EXPECT_EQ(pixels("dasm"), (Pixels{255, 255, 0, 255, 255, 0}));
    }
}

TEST_F(BitmapImport, TakesJpegFilesOfFourInks) {
    const Bytes file = jpeg::file({.adobe = true}, 4, [](int, int) { return std::vector{255, 0, 0, 255}; });
    EXPECT_EQ(import("dast", file, "x.jpg"), imported("dast", "x.jpg"));
    EXPECT_EQ(pixels("dast"), Pixels(64, 5));
    EXPECT_EQ(pixels("dasm"), Pixels(64, 0));
}

TEST_F(BitmapImport, TakesTargaFilesOfEveryKindOfWholeColours) {
    const Bytes plain_24 = byte_list({0, 0, 255, 255, 255, 255}),
                run_24 = byte_list({0, 0, 0, 255, 128, 255, 255, 255});
    const Bytes plain_32 = byte_list({0, 0, 255, 255, 255, 255, 255, 255}),
                run_32 = byte_list({0, 0, 0, 255, 255, 128, 255, 255, 255, 255});
    for (const auto& [type, depth, packets] :
         {std::tuple{2, 24, plain_24}, {10, 24, run_24}, {2, 32, plain_32}, {10, 32, run_32}}) {
        const TargaFields fields{
            .image_type = type, .width = 2, .depth = depth, .descriptor = depth == 32 ? 0x28 : 0x20};
        EXPECT_EQ(import("dash", joined({targa_header(fields), packets}), "x.tga"), imported("dash", "x.tga"));
        EXPECT_EQ(pixels("dash"), (Pixels{5, 9})) << type << " of " << depth;
    }
}

TEST_F(BitmapImport, RefusesTargaFilesOfOtherDepths) {
    add("dash");
    const Bytes map(768);
    EXPECT_EQ(import("dash", joined({targa_header({.depth = 16}), Bytes(2)}), "x.tga"), not_a_picture);
    EXPECT_EQ(import("dash", joined({targa_header({.image_type = 10, .depth = 16}), Bytes(3)}), "x.tga"),
              not_a_picture);
    const TargaFields mapped{.map_type = 1, .image_type = 9, .map_length = 256, .map_entry_bits = 24, .depth = 8};
    set_palette_entry(0, 1, 2, 3);
    EXPECT_EQ(import("dash", joined({targa_header(mapped), map, Bytes(2)}), "x.tga"), not_a_picture);
    EXPECT_EQ(palette_entry(0), 0x010203U); // and sets no palette
    EXPECT_EQ(import("dash", joined({targa_header({.image_type = 1}), Bytes(3)}), "x.tga"), "Unsupported format");
    EXPECT_EQ(import("dash", joined({targa_header({.depth = 32, .descriptor = 0x20}), Bytes(4)}), "x.tga"),
              "Unsupported format");
    EXPECT_EQ(import("dash", joined({targa_header({.descriptor = 0x30}), Bytes(3)}), "x.tga"),
              "Format not supported: X axis is inverted");
    EXPECT_EQ(table_names(), "dash/");
    EXPECT_EQ(bitmap("dash").width, 2);
    EXPECT_SUCCESS();
}

TEST_F(BitmapImport, RefusesOtherFilesWithoutAStatus) {
    add("dash");
    const Bytes gif =
        bytes_of(std::string_view("GIF89a\1\0\1\0\x80\0\0\0\0\0\xFF\xFF\xFF,\0\0\0\0\1\0\1\0\0\2\2\x44\1\0;", 35));
    EXPECT_EQ(import("dash", gif, "x.gif"), not_a_picture);
    EXPECT_EQ(import("dash", joined({byte_list({0x0A, 5, 1, 8}), Bytes(200)}), "x.pcx"), not_a_picture);
    EXPECT_EQ(import("dash", {}, "x.png"), not_a_picture);
    EXPECT_EQ(import("dash", {}, "x.tga"), "Unsupported format");
    EXPECT_EQ(bitmap("dash").width, 2);
    EXPECT_SUCCESS();
}

TEST_F(BitmapImport, CutAnywhereImportsOrChangesNothing) {
    const std::vector<std::pair<std::string, Bytes>> files = {
        {"x.png", png_of(5, 4)},
        {"x.jpg", jpeg::grey(9, 9, 200)},
        {"x.bmp", bmp::file({.width = 3, .height = 3}, Bytes(36))},
        {"x.tga", joined({targa_header({.width = 4, .height = 3}), Bytes(36)})},
        {"x.any", joined({targa_header({.width = 4, .height = 3}), Bytes(36)})},
        {"x.dds", dds::file({.width = 3, .height = 3}, Bytes(36))},
    };
    for (const auto& [name, file] : files)
        for (std::size_t length = 0; length < file.size(); ++length) {
            reset_bitmaps();
            add("dash", 1, 1);
            put_file(directory / name, first_bytes(file, length));
            const BitmapExchange outcome = LOADBITMAP("dash", directory / name);
            ASSERT_FALSE(outcome.message.empty());
            ASSERT_EQ(table_names(), "dash/");
            ASSERT_EQ(bitmap("dash").width != 1, outcome.done) << name << " cut at " << length;
            ASSERT_TRUE(has_pixel_buffer(bitmap("dash")));
        }
}

TEST_F(BitmapImport, NoFileIsReportedAndChangesNothing) {
    add("dash");
    for (const std::string& name : names_of_no_file()) {
        reset_file_status();
        EXPECT_EQ(LOADBITMAP("dash", name).message, "File not found: " + name);
        EXPECT_EQ(FILE_FILE, name);
        EXPECT_FAILURE(file_status::not_found, "File not found");
        EXPECT_EQ(bitmap("dash").width, 2);
    }
}

TEST_F(BitmapImport, AtAFullTableNothingIsLost) {
    merge_bitmap_file(decode_bitmap_file(archive_of_one_bitmap_under_many_ids(99, whole_bitmap(1, 1))));
    add("dash");
    ASSERT_EQ(BITMAPS, 100);
    const std::string names = table_names();
    EXPECT_EQ(import("roof", png_of(2, 2)), "No room for roof: too many bitmaps");
    EXPECT_EQ(import("dast", png_of(2, 2)), "No room for dast: too many bitmaps");
    EXPECT_EQ(table_names(), names);
    EXPECT_EQ(import("dash", png_of(3, 3)), imported("dash")); // takes the room of the earlier one
    EXPECT_EQ(BITMAPS, 100);
}

TEST_F(BitmapImport, RoomForTheMaskIsCountedBeforeTheOwnerGoes) {
    merge_bitmap_file(decode_bitmap_file(archive_of_one_bitmap_under_many_ids(99, whole_bitmap(1, 1))));
    add("dast", 1, 1);
    EXPECT_EQ(import("dast", png_of(2, 2)), "No room for dast: too many bitmaps"); // its mask would be the 101st
    EXPECT_EQ(bitmap("dast").width, 1);
    drop_bitmap(1);
    EXPECT_EQ(import("dast", png_of(2, 2)), imported("dast"));
    EXPECT_EQ(BITMAPS, 100);
    EXPECT_EQ(import("dast", png_of(4, 4)), imported("dast")); // both go, both come
    EXPECT_EQ(BITMAPS, 100);
    EXPECT_EQ(bitmap("dasm").width, 4);
}

TEST_F(BitmapImport, PixelsOfAllBitmapsHaveABound) {
    merge_bitmap_file(decode_bitmap_file(encode_archive({{"aaaa", bitmap_resource(6400, 1000 - 1, 0, 0, 0)}})));
    ASSERT_EQ(BITMAPS, 1);
    EXPECT_EQ(import("dash", png_of(80, 80)), imported("dash")); // fills it
    EXPECT_EQ(import("roof", png_of(1, 1)), "No room for roof: too many bitmaps");
    EXPECT_EQ(import("dash", png_of(81, 80)), "No room for dash: too many bitmaps");
    EXPECT_EQ(bitmap("dash").width, 80);
}
