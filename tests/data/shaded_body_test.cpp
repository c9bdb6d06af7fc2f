// Shading and colour schemes fit together: the light shade lies on top, from wherever a car is looked at.
#include "base/config.h"
#include "base/file_status.h"
#include "editor3d/views.h"
#include "formats/material_file.h"
#include "formats/shape_file.h"
#include "model/car.h"
#include "model/colours.h"
#include "model/generators.h"
#include "model/paint_jobs.h"
#include "model/shape_parts.h"
#include "support/text_file.h"
#include "window/window.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <numbers>

namespace {

const std::string data_directory = KAROSMIT_DATA_DIR;

int brightness(std::uint32_t colour) {
    return static_cast<int>((colour >> 16 & 0xFF) + (colour >> 8 & 0xFF) + (colour & 0xFF));
}

// How much of the shaded view has a colour, and how high it lies on average, in pixels from the top.
struct Shade {
    double pixels = 0, height = 0;
};
std::map<std::uint32_t, Shade> shades_in_view() {
    const WINDOW3D& view = W3D[view_3d];
    std::map<std::uint32_t, Shade> shades;
    for (int y = view.top + 8; y <= view.bottom - 2; ++y)
        for (int x = view.left + 2; x <= view.right - 2; ++x) {
            Shade& shade = shades[screen().image().pixel(x, y)];
            shade.pixels += 1;
            shade.height += y;
        }
    for (auto& [colour, shade] : shades)
        shade.height /= shade.pixels;
    return shades;
}

class ShadedBody : public testing::TestWithParam<const char*> {
protected:
    CurrentDirectory inside{data_directory + "garage/"};

    void SetUp() override {
        PROGDIR = data_directory;
        LOADMATERIALS();
        INIT3DWINDOWS();
        LOAD3SH(std::string("st") + GetParam() + ".3sh", all_shapes);
        ASSERT_EQ(FILE_ERNUM, file_status::success);
        for (SHAPEPRIM& prim : body_primitives(CAR[0].edit()))
            prim.material.fill(0);
        AUTOSHADE();
    }
};

} // namespace

TEST_P(ShadedBody, HasItsLightShadeOnTopFromEveryYaw) {
    const ColourScheme& scheme = PJCOL[4];
    ASSERT_GT(recolour(CAR[0].edit(), 0, scheme), 100);
    std::array<std::uint32_t, 4> colours;
    for (std::size_t shade = 0; shade < 4; ++shade)
        colours[shade] = MATERIAL[scheme[shade]].colour;
    ASSERT_GT(brightness(colours[3]), brightness(colours[0]));

    CURPITCH = 0.3;
    constexpr int yaws = 16;
    for (int i = 0; i < yaws; ++i) {
        CURYAW = 2 * std::numbers::pi * i / yaws;
        UPDATE3DWINDOW(view_3d);
        auto shades = shades_in_view();
        const Shade light = shades[colours[3]], dark = shades[colours[0]];
        EXPECT_GT(light.pixels, 100) << i;
        EXPECT_GT(dark.pixels, 100) << i;
        EXPECT_LT(light.height, dark.height - 10) << i;
    }
}

TEST_P(ShadedBody, EverySchemeRunsFromDarkToLight) {
    ASSERT_GE(PJCOLS, 20);
    for (int scheme = 1; scheme <= PJCOLS; ++scheme)
        EXPECT_GT(brightness(MATERIAL[PJCOL[scheme][3]].colour), brightness(MATERIAL[PJCOL[scheme][0]].colour))
            << scheme;
}

INSTANTIATE_TEST_SUITE_P(Cars, ShadedBody, testing::Values("brux", "tarn", "vela"));
