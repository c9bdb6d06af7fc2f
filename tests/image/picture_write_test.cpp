// Windows bitmap files, byte by byte.
#include "base/file_io.h"
#include "image/picture_file.h"
#include "support/picture_words.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

class Bmp : public ::testing::Test {
protected:
    void SetUp() override {
        directory_ =
            ::testing::TempDir() + "karosmit-bmp-" + ::testing::UnitTest::GetInstance()->current_test_info()->name();
        std::filesystem::create_directories(directory_);
    }
    void TearDown() override { std::filesystem::remove_all(directory_); }

    std::string path() const { return directory_ + "/picture.bmp"; }
    std::vector<int> saved(const Image& image) const {
        EXPECT_EQ(save_bmp(image, path()), SaveOutcome::saved);
        std::vector<int> bytes;
        for (const std::byte b : read_file(path()).value_or(Bytes{}))
            bytes.push_back(std::to_integer<int>(b));
        return bytes;
    }

    std::string directory_;
};

int little_endian(const std::vector<int>& bytes, std::size_t at, int width) {
    int value = 0;
    for (int i = width - 1; i >= 0; --i)
        value = value << 8 | bytes.at(at + static_cast<std::size_t>(i));
    return value;
}

std::vector<int> from(const std::vector<int>& bytes, std::size_t at) {
    return {bytes.begin() + static_cast<long>(at), bytes.end()};
}

TEST_F(Bmp, OpaqueImageBecomes24BitsBottomUpWithPaddedRows) {
    const auto image = create_image(2, 2, 0xFF102030, 32, 16);
    image->set_pixel(1, 0, 0xFFA0B0C0);
    const auto bytes = saved(*image);
    ASSERT_EQ(bytes.size(), 54u + 16u);
    EXPECT_EQ(bytes[0], 'B');
    EXPECT_EQ(bytes[1], 'M');
    EXPECT_EQ(little_endian(bytes, 2, 4), 70);
    EXPECT_EQ(little_endian(bytes, 10, 4), 54);
    EXPECT_EQ(little_endian(bytes, 18, 4), 2);
    EXPECT_EQ(little_endian(bytes, 22, 4), 2);
    EXPECT_EQ(little_endian(bytes, 28, 2), 24);
    EXPECT_EQ(from(bytes, 54), (std::vector<int>{0x30, 0x20, 0x10, 0x30, 0x20, 0x10, 0, 0, //
                                                 0x30, 0x20, 0x10, 0xC0, 0xB0, 0xA0, 0, 0}));
}

TEST_F(Bmp, ImageWithAlphaBecomes32BitsWithAnAlphaMask) {
    const auto image = create_image(1, 2, 0xFF102030);
    image->set_pixel(0, 0, 0x40A0B0C0);
    const auto bytes = saved(*image);
    EXPECT_EQ(little_endian(bytes, 28, 2), 32);
    const auto pixels = static_cast<std::size_t>(little_endian(bytes, 10, 4));
    EXPECT_EQ(from(bytes, pixels), (std::vector<int>{0x30, 0x20, 0x10, 0xFF, 0xC0, 0xB0, 0xA0, 0x40}));
}

TEST_F(Bmp, EightBitImageGoesThroughThePaletteAnd16BitOneIsSpread) {
    EXPECT_EQ(from(saved(*create_image(1, 1, 77, 8)), 54), (std::vector<int>{77, 77, 77, 0}));
    EXPECT_EQ(from(saved(*create_image(1, 1, 0xF81F, 16)), 54), (std::vector<int>{0xFF, 0, 0xFF, 0}));
}

TEST_F(Bmp, FileThatCannotBeWrittenIsReported) {
    EXPECT_EQ(save_bmp(*create_image(1, 1), directory_ + "/no/such/place.bmp"), SaveOutcome::cannot_create);
    EXPECT_EQ(save_bmp(*create_image(1, 1), directory_), SaveOutcome::cannot_create);
}

} // namespace
