// The sample cars through a project file and through OBJ: what comes back is the same car.
#include "base/file_status.h"
#include "base/reset.h"
#include "files/transfer.h"
#include "formats/bitmap_file.h"
#include "formats/obj_file.h"
#include "formats/project_file.h"
#include "model/body.h"
#include "model/car.h"
#include "model/dimensions.h"
#include "model/items.h"
#include "model/shape_parts.h"
#include "support/text_file.h"

#include <gtest/gtest.h>

namespace {
const std::string garage = KAROSMIT_DATA_DIR "garage/";

class SampleExchange : public testing::TestWithParam<const char*> {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        INITDASHITEMS();
        LOADVSH(KAROSMIT_DATA_DIR "default.vsh"); // as at start-up: it settles the order of the bitmaps
        for (const std::string& file : files())
            std::filesystem::copy_file(garage + file, file);
        ASSERT_EQ(transfer(Transfer::load, GetParam()).first_failure, "");
    }

    static std::vector<std::string> files() {
        const std::string id = GetParam();
        return {"car" + id + ".res", "st" + id + ".3sh", "stda" + id + ".vsh", "stdb" + id + ".vsh"};
    }
    static std::vector<Bytes> contents(const std::string& folder = "") {
        std::vector<Bytes> all;
        for (const std::string& file : files())
            all.push_back(get_file(folder + file));
        return all;
    }
};

void expect_same_polygons(const SHAPEMODEL& a, const SHAPEMODEL& b) {
    const auto polygons = [](const SHAPEMODEL& model) {
        std::vector<const SHAPEPRIM*> all;
        for (const SHAPEPRIM& primitive : body_primitives(model))
            if (is_polygon(primitive)) all.push_back(&primitive);
        return all;
    };
    const auto of_a = polygons(a), of_b = polygons(b);
    ASSERT_EQ(of_a.size(), of_b.size());
    for (std::size_t i = 0; i < of_a.size(); ++i) {
        ASSERT_EQ(of_a[i]->type, of_b[i]->type) << i;
        ASSERT_EQ(of_a[i]->material[0], of_b[i]->material[0]) << i;
        for (std::size_t corner = 0; corner < of_a[i]->type; ++corner) {
            const SHAPEVERTEX& place = a.verts[of_a[i]->vertex[corner]];
            const SHAPEVERTEX& other = b.verts[of_b[i]->vertex[corner]];
            ASSERT_NEAR(place.x, other.x, 1e-14);
            ASSERT_NEAR(place.y, other.y, 1e-14);
            ASSERT_NEAR(place.z, other.z, 1e-14);
        }
    }
}
} // namespace

INSTANTIATE_TEST_SUITE_P(All, SampleExchange, testing::Values("vela", "brux", "tarn"),
                         [](const auto& car) { return std::string(car.param); });

TEST_P(SampleExchange, ThroughAProjectTheFourFilesStayTheSame) {
    const CarDocument loaded = DOCUMENT;
    SAVECAR("whole.car");
    ASSERT_EQ(FILE_ERNUM, file_status::success);
    for (const std::string& file : files())
        std::filesystem::remove(file);
    reset_program();
    INITDASHITEMS();

    LOADCAR("whole.car");
    ASSERT_EQ(FILE_ERNUM, file_status::success);
    EXPECT_EQ(BITMAPS, loaded.bitmap_count);
    EXPECT_EQ(transfer(Transfer::save, GetParam()).first_failure, "");
    EXPECT_TRUE(contents() == contents(garage));

    SAVECAR("again.car");
    EXPECT_TRUE(get_file("again.car") == get_file("whole.car"));
}

TEST_P(SampleExchange, ThroughObjThePolygonsStayTheSame) {
    for (int slot = 0; slot < 3; ++slot) {
        const auto index = static_cast<std::size_t>(slot);
        const SHAPEMODEL before = *CAR[index];
        EXPECT_EQ(SAVEOBJ("body.obj", slot).left_out, 0U);
        const auto import = LOADOBJ("body.obj", slot).import;
        ASSERT_TRUE(import);
        EXPECT_EQ(remarks_on(*import), "");
        EXPECT_GT(import->faces, 10U);
        expect_same_polygons(before, *CAR[index]);
        EXPECT_TRUE(std::equal(before.prims.begin(), before.prims.begin() + 4, CAR[index]->prims.begin())) << "wheels";
        const Bytes first = get_file("body.obj");
        SAVEOBJ("body.obj", slot);
        EXPECT_TRUE(get_file("body.obj") == first);
    }
}

TEST_P(SampleExchange, BoxAndDimensionsAreThoseThatTheProgramMakes) {
    for (std::size_t slot = 0; slot < 3; ++slot) {
        SHAPEMODEL fitted = *CAR[slot];
        fit_bounding_box(fitted);
        for (std::size_t i = 0; i < car_layout::box_vertices; ++i) {
            EXPECT_NEAR(fitted.verts[i].x, CAR[slot]->verts[i].x, 1e-12);
            EXPECT_NEAR(fitted.verts[i].y, CAR[slot]->verts[i].y, 1e-12);
            EXPECT_NEAR(fitted.verts[i].z, CAR[slot]->verts[i].z, 1e-12);
        }
    }
    ParameterBlock par = PAR;
    store_dimensions(*CAR[1], par);
    EXPECT_TRUE(store_wheel_positions(*CAR[1], par));
    EXPECT_TRUE(par == PAR);
}
