// What the program ships: complete, inside every limit, and as the screens rely on it.
#include "base/config.h"
#include "base/file_status.h"
#include "formats/bitmap_file.h"
#include "formats/material_file.h"
#include "formats/palette_file.h"
#include "formats/parameter_file.h"
#include "formats/shape_file.h"
#include "image/image.h"
#include "image/tga.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/document.h"
#include "model/items.h"
#include "params/parameter_table.h"
#include "support/text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using testing::Each;
using testing::SizeIs;

namespace {

const std::string data_directory = KAROSMIT_DATA_DIR;
const std::string garage = data_directory + "garage/";

class ShippedData : public testing::Test {
protected:
    CurrentDirectory inside{garage};

    void SetUp() override {
        INITPARAMTARGETS();
        INITDASHITEMS();
        PROGDIR = data_directory;
        LOADPALETTE();
        LOADMATERIALS();
    }
};

class SampleCar : public ShippedData, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        ShippedData::SetUp();
        const std::string id = GetParam();
        expect_loaded(LOADRES("car" + id + ".res"));
        expect_loaded(LOAD3SH("st" + id + ".3sh", all_shapes));
        expect_loaded(LOADVSH("stda" + id + ".vsh"));
        expect_loaded(LOADVSH("stdb" + id + ".vsh"));
    }
    static void expect_loaded(const FileOutcome& outcome) {
        ASSERT_EQ(outcome, (FileOutcome{outcome.file})) << outcome.file << ": " << error_text(outcome.code);
    }
};

std::vector<std::string> lines_of(const std::string& information) {
    std::vector<std::string> lines(1);
    for (const char c : information) {
        if (c == ']')
            lines.emplace_back();
        else
            lines.back() += c;
    }
    lines.pop_back(); // behind the last bracket
    return lines;
}

void expect_sound_primitives(const SHAPEMODEL& model) {
    for (std::size_t p = 0; p < model.nprims; ++p) {
        const SHAPEPRIM& primitive = model.prims[p];
        for (int corner = 0; corner < primitive_vertex_count(primitive.type); ++corner)
            EXPECT_LT(primitive.vertex[static_cast<std::size_t>(corner)], model.nverts) << "primitive " << p;
    }
}

// How light a material is: the sum of its red, green and blue.
unsigned lightness(int material) {
    const std::uint32_t colour = MATERIAL[static_cast<std::size_t>(material)].colour;
    return (colour >> 16 & 0xFF) + (colour >> 8 & 0xFF) + (colour & 0xFF);
}

// The materials of one paint job, primitive by primitive, the wheels left out.
std::vector<int> paint_of(const SHAPEMODEL& model, std::size_t job) {
    std::vector<int> paint;
    for (std::size_t p = 4; p < model.nprims; ++p)
        paint.push_back(model.prims[p].material[job]);
    return paint;
}

std::set<std::string> ids_of(const std::string& file) {
    std::set<std::string> ids;
    for (const BitmapRecord& bitmap : decode_bitmap_file(get_file(file)).bitmaps)
        ids.insert(bitmap.name);
    return ids;
}

std::set<std::string> ids_in_set(BitmapSet set) {
    std::set<std::string> ids;
    const std::string_view list = bitmap_set_ids(set);
    for (std::size_t at = 1; at + 4 <= list.size(); at += 5)
        ids.emplace(list.substr(at, 4));
    return ids;
}

} // namespace

TEST_F(ShippedData, ThePaletteBeginsWithTheSixteenColoursOfPcGraphicsAndNoneComesTwice) {
    const std::uint32_t first[] = {0x000000, 0x0000AA, 0x00AA00, 0x00AAAA, 0xAA0000, 0xAA00AA, 0xAA5500, 0xAAAAAA,
                                   0x555555, 0x5555FF, 0x55FF55, 0x55FFFF, 0xFF5555, 0xFF55FF, 0xFFFF55, 0xFFFFFF};
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_EQ(PAL[i], 0xFF000000 | first[i]) << i;
    EXPECT_THAT(std::set<std::uint32_t>(PAL.begin(), PAL.end()), SizeIs(256));
    EXPECT_EQ(get_file(data_directory + "vortag.col").size(), 1024u);
}

TEST_F(ShippedData, TheMaterialsHaveGroupsFromDarkToLightTyresAndBaseShades) {
    for (int group = 48; group < 92; group += 4)
        for (int shade = group; shade < group + 3; ++shade)
            EXPECT_LT(lightness(shade), lightness(shade + 1)) << shade;
    EXPECT_LT(lightness(38), 3u * 0x40) << "tyres are black";
    const std::uint32_t base[] = {0xFF804000, 0xFF904800, 0xFFA05000, 0xFFB05800};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(MATERIAL[200 + i].colour, base[i]);
}

// The shading rule gives the last base material to faces that look up, so that a scheme's last shade lies on roofs.
TEST_F(ShippedData, TheColourSchemesRunFromDarkToLight) {
    ASSERT_EQ(PJCOLS, 22);
    for (int scheme = 1; scheme <= PJCOLS; ++scheme)
        for (std::size_t rank = 0; rank < 3; ++rank)
            EXPECT_LT(lightness(PJCOL[scheme][rank]), lightness(PJCOL[scheme][rank + 1])) << scheme << ", " << rank;
}

TEST_F(ShippedData, TheIconsAreFourCellsWideWithAlphaAndTheWindowHasItsOwn) {
    const ImageHandle icons = TARGALOAD(data_directory + "images.tga");
    ASSERT_TRUE(icons);
    EXPECT_EQ(icons->width(), 192);
    EXPECT_EQ(icons->height(), 48);
    for (int cell = 0; cell < 4; ++cell) {
        int drawn = 0, clear = 0;
        for (int y = 0; y < 48; ++y)
            for (int x = 0; x < 48; ++x) {
                const std::uint32_t alpha = icons->pixel(cell * 48 + x, y) >> 24;
                drawn += alpha == 255;
                clear += alpha == 0;
            }
        EXPECT_GT(drawn, 200) << cell;
        EXPECT_GT(clear, 300) << cell;
    }
    EXPECT_TRUE(TARGALOAD(data_directory + "icon.tga"));
}

TEST_F(ShippedData, TheDefaultCockpitHasEveryBitmapOfBothFiles) {
    std::set<std::string> wanted = ids_in_set(BitmapSet::dashboard);
    wanted.merge(ids_in_set(BitmapSet::dots_and_digits));
    EXPECT_EQ(ids_of(data_directory + "default.vsh"), wanted);
}

TEST_F(ShippedData, ThereIsSomethingToImport) {
    EXPECT_GT(get_file("hull.obj").size(), 1000u);
    EXPECT_GT(get_file("badge.png").size(), 100u);
}

INSTANTIATE_TEST_SUITE_P(All, SampleCar, testing::Values("vela", "brux", "tarn"),
                         [](const auto& car) { return std::string(car.param); });

TEST_P(SampleCar, HasNamesAndADescriptionThatTheScreensCanShow) {
    EXPECT_THAT(CARNAME, testing::AllOf(testing::Not(""), SizeIs(testing::Le(21))));
    EXPECT_THAT(CARSIGNNAME, testing::AllOf(testing::Not(""), SizeIs(testing::Le(4))));
    const auto lines = lines_of(CARINFO);
    EXPECT_THAT(lines, SizeIs(testing::AllOf(testing::Ge(3), testing::Le(9))));
    EXPECT_THAT(lines, Each(SizeIs(testing::Le(23))));
}

TEST_P(SampleCar, HasPlausibleParametersAndATorqueCurveWithAPeak) {
    EXPECT_GT(par_word(par_offset::mass), 0);
    EXPECT_THAT(par_byte(par_offset::gear_count), testing::AllOf(testing::Ge(4), testing::Le(6)));
    for (int gear = 1; gear < par_byte(par_offset::gear_count); ++gear)
        EXPECT_GT(par_word(14 + 2 * gear), par_word(16 + 2 * gear)) << "gear " << gear;
    EXPECT_LT(par_word(par_offset::idle_rpm), par_word(par_offset::downshift_rpm));
    EXPECT_LT(par_word(par_offset::downshift_rpm), par_word(par_offset::upshift_rpm));
    EXPECT_LE(par_word(par_offset::upshift_rpm), par_word(par_offset::maximum_rpm));

    std::vector<int> torque;
    for (int i = 0; i < torque_points; ++i)
        torque.push_back(par_byte(par_offset::torque_curve + i));
    const int peak = *std::ranges::max_element(torque);
    EXPECT_GT(peak, 60);
    EXPECT_LE(peak, 127) << "inside the graph at its first zoom";
    EXPECT_LT(torque.back(), peak / 2);
}

TEST_P(SampleCar, HasThreeModelsOfFallingDetailWithWheelsAndABoundingBox) {
    EXPECT_GT(CAR[0]->nprims, CAR[1]->nprims);
    EXPECT_GE(CAR[1]->nprims, CAR[2]->nprims);
    for (std::size_t slot = 0; slot < 3; ++slot) {
        const SHAPEMODEL& model = *CAR[slot];
        EXPECT_LE(model.nverts, 255);
        EXPECT_LE(model.nprims, 255);
        expect_sound_primitives(model);
        for (std::size_t wheel = 0; wheel < 4; ++wheel) {
            EXPECT_EQ(model.prims[wheel].type, primitive_type::wheel);
            EXPECT_EQ(model.prims[wheel].vertex[0], 8 + 6 * wheel);
            EXPECT_LT(model.verts[8 + 6 * wheel].x, model.verts[11 + 6 * wheel].x);
        }
        for (std::size_t vertex = 8; vertex < model.nverts; ++vertex) {
            EXPECT_GE(model.verts[vertex].x, model.verts[0].x);
            EXPECT_LE(model.verts[vertex].x, model.verts[1].x);
            EXPECT_LE(model.verts[vertex].y, model.verts[0].y);
            EXPECT_GE(model.verts[vertex].y, model.verts[2].y);
            EXPECT_LE(model.verts[vertex].z, model.verts[4].z);
        }
    }
    EXPECT_GT(par_word(par_offset::collision_half_length), par_word(par_offset::collision_half_width));
}

TEST_P(SampleCar, HasSevenPaintJobsThatDiffer) {
    ASSERT_EQ(PAINTJOBS, 7);
    std::set<std::vector<int>> paints;
    for (std::size_t job = 0; job < 7; ++job)
        paints.insert(paint_of(*CAR[1], job));
    EXPECT_EQ(paints.size(), 7u);
}

TEST_P(SampleCar, HasFourPiecesForACrash) {
    for (const Shared<SHAPEMODEL>& piece : CEXP) {
        EXPECT_GE(piece->nprims, 1);
        expect_sound_primitives(*piece);
    }
}

TEST_P(SampleCar, HasACockpitOfItsOwnThatFillsBothFiles) {
    const std::string id = GetParam();
    EXPECT_EQ(ids_of("stda" + id + ".vsh"), ids_in_set(BitmapSet::dashboard));
    EXPECT_EQ(ids_of("stdb" + id + ".vsh"), ids_in_set(BitmapSet::dots_and_digits));
    for (int i = 1; i <= BITMAPS; ++i) {
        EXPECT_GE(BITMAP[i].absolute_x, 0) << BITMAP[i].name;
        EXPECT_GE(BITMAP[i].absolute_y, 0) << BITMAP[i].name;
        EXPECT_LE(BITMAP[i].absolute_x + BITMAP[i].width, 320) << BITMAP[i].name;
        EXPECT_LE(BITMAP[i].absolute_y + BITMAP[i].height, 200) << BITMAP[i].name;
    }
    for (const auto& [offset, most] : {std::pair(par_offset::speedometer, most_speedometer_points),
                                       {par_offset::tachometer, most_tachometer_points}}) {
        EXPECT_GT(par_word(offset + 4), 10);
        EXPECT_LE(par_word(offset + 4), most);
        EXPECT_LT(par_word(offset), BITMAP[RBM("ins2")].width);
        EXPECT_LT(par_word(offset + 2), BITMAP[RBM("ins2")].height);
    }
}
