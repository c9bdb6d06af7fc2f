// The sample cars' bitmaps through another program's picture files, and through another reader.
#include "base/config.h"
#include "base/reset.h"
#include "formats/bitmap_export.h"
#include "formats/bitmap_file.h"
#include "formats/bitmap_import.h"
#include "formats/palette_file.h"
#include "model/colours.h"
#include "model/items.h"
#include "support/text_file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

namespace {

class PictureExchange : public testing::TestWithParam<const char*> {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        reset_program();
        INITDASHITEMS();
        PROGDIR = KAROSMIT_DATA_DIR;
        WORKDIR = directory / "";
        LOADPALETTE();
        for (const char* file : {"stda", "stdb"})
            LOADVSH(KAROSMIT_DATA_DIR "garage/" + std::string(file) + GetParam() + ".vsh");
    }
    void TearDown() override { reset_program(); }

    static const BitmapRecord& bitmap(std::string_view id) { return BITMAP[RBM(id)]; }
};

bool succeeds(const std::string& command) { return std::system(command.c_str()) == 0; }

void expect_same_pixels(const BitmapRecord& now, const BitmapRecord& before) {
    EXPECT_EQ(now.width, before.width);
    EXPECT_EQ(now.height, before.height);
    EXPECT_TRUE(now.pixels == before.pixels) << before.name;
}

void expect_nothing_else(const BitmapRecord& bitmap) {
    EXPECT_EQ(bitmap.header_word_3, 0);
    EXPECT_EQ(bitmap.header_word_4, 0);
    EXPECT_EQ(bitmap.flags, (std::array<std::uint8_t, 4>{}));
    EXPECT_EQ(bitmap.relative_x, 0);
    EXPECT_EQ(bitmap.relative_y, 0);
}

// How far a picture of plain 8-bit channels is from a bitmap's colours, a channel on average; 255 when it is none of
// that size.
double distance_to(const BitmapRecord& bitmap, const std::string& pixmap) {
    std::istringstream file(pixmap);
    std::string kind;
    int width = 0, height = 0, most = 0;
    file >> kind >> width >> height >> most;
    file.get();
    if (kind != "P6" || width != bitmap.width || height != bitmap.height || most != 255) return 255;
    double sum = 0;
    for (const std::uint8_t index : *bitmap.pixels)
        for (const int shift : {16, 8, 0})
            sum += std::abs(file.get() - static_cast<int>(PAL[index] >> shift & 255));
    return file ? sum / (3.0 * width * height) : 255;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(All, PictureExchange, testing::Values("vela", "brux", "tarn"),
                         [](const auto& car) { return std::string(car.param); });

TEST_P(PictureExchange, SavedAnewByAnotherProgramEveryPixelComesBack) {
    for (const std::string id : {"dast", "ins1", "ins3", "dot ", "gnob"}) {
        const BitmapRecord owner = bitmap(id), mask = bitmap(mask_of(id));
        ASSERT_GT(owner.width * owner.height, 0);
        ASSERT_TRUE(SAVEBITMAP(id, "ours.png").done);
        ASSERT_TRUE(succeeds("convert ours.png -strip theirs.png"));
        EXPECT_FALSE(get_file("ours.png") == get_file("theirs.png"));
        EXPECT_EQ(LOADBITMAP(id, "theirs.png").message, "Imported " + id + " from theirs.png");
        for (const BitmapRecord& before : {owner, mask}) {
            expect_same_pixels(bitmap(before.name), before);
            expect_nothing_else(bitmap(before.name));
        }
    }
}

TEST_P(PictureExchange, JpegOfTheConverterIsNearTheOriginalInAnotherReader) {
    CONFIGS = 1;
    CONFIG_ID[1] = "imagick";
    CONFIG_VALUE[1] = "convert";
    for (const std::string name : {"x.jpg", "X.JPEG"})
        for (const std::string id : {"dash", "dast", "whl2"}) {
            ASSERT_EQ(SAVEBITMAP(id, name).message, "Exported " + id + " to " + name);
            ASSERT_TRUE(succeeds("djpeg -rgb -pnm -outfile x.ppm " + name));
            EXPECT_LT(distance_to(bitmap(id), read_text("x.ppm")), 5) << id;
            EXPECT_GT(distance_to(bitmap(id == "dash" ? "whl2" : "dash"), read_text("x.ppm")), 200); // of another size
        }
}
