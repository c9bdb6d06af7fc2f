#include "formats/material_file.h"

#include "base/config.h"

#include "support/clean_car.h"

#include <gmock/gmock.h>

namespace {
using Scheme = std::array<std::uint8_t, 4>;
using Schemes = std::vector<Scheme>;
using testing::ElementsAre;

// Two material words: 0x80123456 and 0x00ABCDEF.
const Bytes two_materials = byte_list({0x56, 0x34, 0x12, 0x80, 0xEF, 0xCD, 0xAB, 0});

Bytes materials_past_the_table() {
    ByteWriter writer;
    for (std::uint32_t i = 0; i < 300; ++i)
        writer.u32(0x01000000 + i);
    return writer.take();
}

class MaterialFile : public CleanCar {
protected:
    MaterialFile() : inside(directory.path()) { PROGDIR = directory / "data/"; }

    void put_materials(const Bytes& file) {
        std::filesystem::create_directory(directory / "data");
        put_file(directory / "data/material.dat", file);
    }
    void put_schemes(std::string_view text) { put_file(directory / "pjobs.cfg", bytes_of(text)); }

    CurrentDirectory inside;
};
} // namespace

TEST(MaterialFormat, ColourIsAlwaysOpaqueAndTheTopByteIsKeptAside) {
    std::array<MaterialColour, 256> materials{};
    decode_materials(two_materials, materials);
    EXPECT_EQ(materials[0].colour, 0xFF123456);
    EXPECT_EQ(materials[0].attribute, 0x80);
    EXPECT_EQ(materials[1].colour, 0xFFABCDEF);
    EXPECT_EQ(materials[1].attribute, 0);
    EXPECT_EQ(materials[2].colour, 0U);
}

TEST(MaterialFormat, EncodesExactBytes) {
    std::array<MaterialColour, 256> materials{};
    materials[0] = {0xFF123456, 0x80};
    materials[1] = {0xFFABCDEF, 0};
    const Bytes file = encode_materials(materials);
    EXPECT_EQ(file.size(), 1024U);
    EXPECT_EQ(first_bytes(file, 12), joined({two_materials, byte_list({0, 0, 0, 0})}));
}

TEST(MaterialFormat, CutAtEveryByteHoldsTheWordsThatAreWhole) {
    const Bytes file = materials_past_the_table();
    for (std::size_t length = 0; length <= 1030; ++length) {
        std::array<MaterialColour, 256> materials{};
        decode_materials(first_bytes(file, length), materials);
        for (std::size_t i = 0; i < materials.size(); ++i)
            ASSERT_EQ(materials[i].attribute, i < length / 4 ? 1 : 0) << length << " bytes, material " << i;
    }
}

TEST(ColourSchemeText, FourNumbersALine) {
    EXPECT_THAT(decode_colour_schemes("48 49 50 51\n52 53 54 55"),
                ElementsAre(Scheme{48, 49, 50, 51}, Scheme{52, 53, 54, 55}));
}

TEST(ColourSchemeText, CommentsMayFollowAndMissingNumbersAreZero) {
    EXPECT_THAT(decode_colour_schemes("12 13 ; two only"), ElementsAre(Scheme{12, 13, 0, 0}));
    EXPECT_THAT(decode_colour_schemes("12 13; 14 15"), ElementsAre(Scheme{12, 13, 0, 0}));
}

TEST(ColourSchemeText, LinesWithoutContentAreLeftOut) {
    EXPECT_THAT(decode_colour_schemes("; title\n\n   \n  ; note\n 1 2 3 4 \n;5 6 7 8\n"),
                ElementsAre(Scheme{1, 2, 3, 4}));
    EXPECT_TRUE(decode_colour_schemes("").empty());
}

TEST(ColourSchemeText, LinesMayEndInCarriageReturnAndLineFeed) {
    EXPECT_THAT(decode_colour_schemes("1 2 3 4\r\n\r\n5 6 7 8\r\n"),
                ElementsAre(Scheme{1, 2, 3, 4}, Scheme{5, 6, 7, 8}));
}

TEST(ColourSchemeText, SeveralBlanksSeparateLikeOne) {
    EXPECT_THAT(decode_colour_schemes("  1   2  3    4   5"), ElementsAre(Scheme{1, 2, 3, 4}));
}

TEST(ColourSchemeText, NumbersKeepTheirLowEightBits) {
    EXPECT_THAT(decode_colour_schemes("-1 256 300 65535"), ElementsAre(Scheme{255, 0, 44, 255}));
}

TEST(ColourSchemeText, WordsAndHugeNumbersAreTakenAsTheyCome) {
    EXPECT_THAT(decode_colour_schemes("red 7 8x9 +3"), ElementsAre(Scheme{0, 7, 8, 3}));
    EXPECT_EQ(decode_colour_schemes("99999999999999999999 1 -99999999999999999999 2")[0][1], 1);
    EXPECT_EQ(decode_colour_schemes("1\t2 3")[0], (Scheme{1, 3, 0, 0})); // a tab separates nothing
}

TEST(ColourSchemeText, HoldsThirtyTwoSchemes) {
    std::string text;
    for (int i = 1; i <= 40; ++i)
        text += std::to_string(i) + " 0 0 0\n";
    const Schemes schemes = decode_colour_schemes(text);
    ASSERT_EQ(schemes.size(), 32U);
    EXPECT_EQ(schemes.back()[0], 32);
}

TEST(ColourSchemeText, CutAtEveryByteGivesTheNumbersThatAreThere) {
    const std::string text = "12 13\r\n; note\r\n 200 4 ; last";
    const auto second = [](std::uint8_t first, std::uint8_t next = 0) {
        return ColourSchemes{{12, 13, 0, 0}, {first, next, 0, 0}};
    };
    const std::vector<std::pair<std::size_t, ColourSchemes>> from_length = {
        {0, {}},         {1, {{1, 0, 0, 0}}}, {2, {{12, 0, 0, 0}}}, {4, {{12, 1, 0, 0}}}, {5, {{12, 13, 0, 0}}},
        {17, second(2)}, {18, second(20)},    {19, second(200)},    {21, second(200, 4)}};
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const auto after =
            std::ranges::upper_bound(from_length, length, {}, &std::pair<std::size_t, ColourSchemes>::first);
        EXPECT_EQ(decode_colour_schemes(text.substr(0, length)), std::prev(after)->second) << length;
    }
}

TEST_F(MaterialFile, OfLongerFilesOnlyTheTablesAreRead) {
    put_materials(two_materials);
    put_schemes("1 2 3 4\n");
    std::filesystem::resize_file(directory / "data/material.dat", std::uintmax_t{1} << 40);
    std::filesystem::resize_file("pjobs.cfg", std::uintmax_t{1} << 40);
    LOADMATERIALS();
    EXPECT_EQ(MATERIAL[0].colour, 0xFF123456);
    EXPECT_EQ(PJCOL[1], (Scheme{1, 2, 3, 4}));
}

TEST_F(MaterialFile, LoadsMaterialsFromTheProgramsAndSchemesFromTheCurrentDirectory) {
    put_materials(two_materials);
    put_schemes("48 49 50 51\n12 13 ; short\n");
    LOADMATERIALS();
    EXPECT_EQ(MATERIAL[0].colour, 0xFF123456);
    EXPECT_EQ(PJCOLS, 2);
    EXPECT_EQ(PJCOL[1], (Scheme{48, 49, 50, 51}));
    EXPECT_EQ(PJCOL[2], (Scheme{12, 13, 0, 0}));
    EXPECT_EQ(FILE_FILE, "");
    EXPECT_SUCCESS();
}

// ODDITY schemes-from-current-directory
TEST_F(MaterialFile, SchemesBesideTheProgramAreNotRead) {
    put_materials(two_materials);
    put_file(directory / "data/pjobs.cfg", bytes_of("1 2 3 4"));
    LOADMATERIALS();
    EXPECT_EQ(PJCOLS, 0);
}

TEST_F(MaterialFile, BaseColoursAreBuiltInWhereTheFileIsShort) {
    put_materials(two_materials);
    LOADMATERIALS();
    EXPECT_EQ(MATERIAL[200].colour, 0xFF804000);
    EXPECT_EQ(MATERIAL[201].colour, 0xFF904800);
    EXPECT_EQ(MATERIAL[202].colour, 0xFFA05000);
    EXPECT_EQ(MATERIAL[203].colour, 0xFFB05800);
    EXPECT_EQ(MATERIAL[204].colour, 0U);
}

TEST_F(MaterialFile, ALongFileReplacesTheBaseColours) {
    put_materials(materials_past_the_table());
    LOADMATERIALS();
    EXPECT_EQ(MATERIAL[200].colour, 0xFF0000C8);
    EXPECT_EQ(MATERIAL[255].colour, 0xFF0000FF);
}

// ODDITY base-colours-need-file
TEST_F(MaterialFile, WithoutTheFileThereAreNoBaseColours) {
    LOADMATERIALS();
    EXPECT_EQ(MATERIAL[200].colour, 0U);
    EXPECT_EQ(PJCOLS, 0);
}

TEST_F(MaterialFile, AnEmptyFileStillBringsTheBaseColours) {
    put_materials({});
    LOADMATERIALS();
    EXPECT_EQ(MATERIAL[200].colour, 0xFF804000);
    EXPECT_EQ(MATERIAL[0].colour, 0U);
}

TEST_F(MaterialFile, DirectoriesInPlaceOfTheFilesAreSilent) {
    std::filesystem::create_directories(directory / "data/material.dat");
    std::filesystem::create_directory(directory / "pjobs.cfg");
    LOADMATERIALS();
    EXPECT_EQ(MATERIAL[200].colour, 0U);
    EXPECT_EQ(PJCOLS, 0);
}

TEST_F(MaterialFile, SchemesAreCountedAnewEachTime) {
    put_schemes("1 2 3 4\n5 6 7 8\n");
    LOADMATERIALS();
    LOADMATERIALS();
    EXPECT_EQ(PJCOLS, 2);
    std::filesystem::remove(directory / "pjobs.cfg");
    LOADMATERIALS();
    EXPECT_EQ(PJCOLS, 0);
}
