// Bodies through an independent tool, "assimp export": what is written here is a sound OBJ file for others, and what
// others write (normals, two blanks behind "f", faces ordered by material) is read here as the same polygons.
#include "files/transfer.h"
#include "formats/obj_file.h"
#include "model/car.h"
#include "model/items.h"
#include "model/shape_parts.h"
#include "support/models.h"
#include "support/text_file.h"

#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {
bool has_tool() { return std::system("command -v assimp >/dev/null 2>&1") == 0; }

// A corner in hundred-thousandths: the tool calculates in single precision.
using Corner = std::array<long, 3>;
struct Polygon {
    std::string material;
    std::vector<Corner> corners;
    auto operator<=>(const Polygon&) const = default; // NOLINT(modernize-use-nullptr): the zero is the compiler's own
};
using Polygons = std::vector<Polygon>;

Corner corner_at(double x, double y, double z) {
    const auto whole = [](double coordinate) { return std::lround(coordinate * 1e5); };
    return {whole(x), whole(y), whole(z)};
}

Polygons sorted(Polygons polygons) {
    std::ranges::sort(polygons);
    return polygons;
}

// The polygons of a body, with their materials as `name` calls them.
Polygons polygons_of(const SHAPEMODEL& model, auto&& name) {
    Polygons all;
    for (const SHAPEPRIM& primitive : body_primitives(model)) {
        if (!is_polygon(primitive)) continue;
        all.push_back({name(primitive.material[0]), {}});
        for (const std::uint16_t index : corners_of(primitive)) {
            const SHAPEVERTEX& vertex = model.verts[index];
            all.back().corners.push_back(corner_at(vertex.x, vertex.z, vertex.y));
        }
    }
    return sorted(all);
}

std::string as_written(int material) {
    return material >= 200 && material <= 203 ? "base" + std::to_string(material - 199)
                                              : "Vortag" + std::to_string(material);
}
// What the name of a material that was written is read as.
std::string as_read_again(int material) {
    return std::to_string(material >= 200 && material <= 203 ? material + 1 : material);
}

// The polygons of a file, read by the letter.
Polygons polygons_in(const std::string& path) {
    Polygons all;
    std::vector<Corner> vertices;
    std::string material;
    std::istringstream lines(read_text(path));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string keyword, word;
        double x = 0, y = 0, z = 0;
        words >> keyword;
        if (keyword == "usemtl") words >> material;
        if (keyword == "v" && words >> x >> y >> z) vertices.push_back(corner_at(x, y, z));
        if (keyword != "f") continue;
        all.push_back({material, {}});
        while (words >> word)
            all.back().corners.push_back(vertices.at(std::stoul(word) - 1));
    }
    return sorted(all);
}

class ModellingTool : public testing::TestWithParam<const char*> {
protected:
    TemporaryDirectory directory;
    CurrentDirectory inside{directory.path()};

    void SetUp() override {
        if (!has_tool()) GTEST_SKIP() << "NOT TESTED: assimp is not installed";
        INITDASHITEMS();
    }

    // Exports a slot, sends the file through the tool, and imports what that writes into the last slot.
    static void expect_same_polygons(int slot) {
        const SHAPEMODEL before = *CAR[static_cast<std::size_t>(slot)];
        SAVEOBJ("out.obj", slot);
        ASSERT_EQ(std::system("assimp export out.obj tool.obj >log 2>&1"), 0) << read_text("log");
        const Polygons wanted = polygons_of(before, as_written);
        EXPECT_FALSE(wanted.empty());
        EXPECT_TRUE(polygons_in("out.obj") == wanted);
        EXPECT_TRUE(polygons_in("tool.obj") == wanted);
        EXPECT_NE(read_text("tool.obj").find("\nf  1"), std::string::npos) << "the tool puts two blanks";

        const auto import = LOADOBJ("tool.obj", 4).import;
        ASSERT_TRUE(import);
        EXPECT_EQ(remarks_on(*import), "");
        const auto as_it_is = [](int material) { return std::to_string(material); };
        EXPECT_TRUE(polygons_of(*CAR[4], as_it_is) == polygons_of(before, as_read_again));
    }
};
} // namespace

INSTANTIATE_TEST_SUITE_P(All, ModellingTool, testing::Values("vela", "brux", "tarn"),
                         [](const auto& car) { return std::string(car.param); });

TEST_P(ModellingTool, KeepsThePolygonsOfASampleCar) {
    const std::string shapes = std::string("st") + GetParam() + ".3sh";
    std::filesystem::copy_file(KAROSMIT_DATA_DIR "garage/" + shapes, shapes);
    ASSERT_EQ(transfer(Transfer::load, shapes).text, "Loaded " + shapes);
    for (int slot = 0; slot < 3; ++slot)
        expect_same_polygons(slot);
}

TEST_P(ModellingTool, KeepsPolygonsOfEverySizeAndTheNamesOfBaseMaterials) {
    CAR[3] = model_with_wheels();
    SHAPEMODEL& model = CAR[3].edit();
    for (int corners = 3; corners <= 10; ++corners) {
        const int first = model.nverts;
        for (int i = 0; i < corners; ++i) {
            const double angle = 2 * 3.14159 * i / corners;
            add_vertex(model, std::cos(angle) * 1.25, std::sin(angle) * 2.5, 0.1 * corners);
        }
        SHAPEPRIM& polygon = add_primitive(model, corners, {}, static_cast<std::uint16_t>(196 + corners));
        for (int i = 0; i < corners; ++i)
            polygon.vertex[static_cast<std::size_t>(i)] = static_cast<std::uint16_t>(first + i);
    }
    expect_same_polygons(3);
}
