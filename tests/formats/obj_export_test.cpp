// What a model becomes as an OBJ text, and what comes back.
#include "formats/obj_file.h"

#include "formats/shapes.h"
#include "model/body.h"
#include "support/models.h"

#include <gtest/gtest.h>
#include <limits>

namespace {
std::string exported(const SHAPEMODEL& model, std::size_t paint_job = 0) {
    const Bytes file = export_obj(model, paint_job).file;
    std::string text;
    for (const std::byte b : file)
        text += static_cast<char>(b);
    return text;
}

constexpr const char* first_line = "mtllib vortag.mtl\n";

// A body as an import leaves it: polygons only, every vertex used, in the order in which a file would hold them,
// without base materials.
SHAPEMODEL model_of_polygons(int polygons, int vertices) {
    SHAPEMODEL model = model_with_wheels();
    for (int i = 0; i < vertices; ++i)
        add_vertex(model, i * 0.37 - 50, i / 7.0, i * 0.002);
    for (int i = 0; i < polygons; ++i) {
        SHAPEPRIM& polygon = add_primitive(model, 3 + i % 8, {}, static_cast<std::uint16_t>(i % 200));
        polygon.cull1 = polygon.cull2 = 0xFFFFFFFF;
        polygon.flags = 1;
        for (std::size_t corner = 0; corner < polygon.type; ++corner)
            polygon.vertex[corner] = static_cast<std::uint16_t>(32 + (static_cast<std::size_t>(i) * 3 + corner) %
                                                                         static_cast<std::size_t>(vertices));
    }
    fit_bounding_box(model);
    return model;
}

// The same polygons in the same order: corners by their places, materials, flags.
void expect_same_polygons(const SHAPEMODEL& a, const SHAPEMODEL& b) {
    ASSERT_EQ(a.nprims, b.nprims);
    for (std::size_t i = car_layout::first_body_primitive; i < a.nprims; ++i) {
        ASSERT_EQ(a.prims[i].type, b.prims[i].type) << i;
        ASSERT_EQ(a.prims[i].material[0], b.prims[i].material[0]) << i;
        ASSERT_EQ(a.prims[i].flags, b.prims[i].flags) << i;
        for (std::size_t corner = 0; corner < a.prims[i].type; ++corner) {
            const SHAPEVERTEX& place = a.verts[a.prims[i].vertex[corner]];
            const SHAPEVERTEX& other = b.verts[b.prims[i].vertex[corner]];
            ASSERT_NEAR(place.x, other.x, 1e-13) << i;
            ASSERT_NEAR(place.y, other.y, 1e-13) << i;
            ASSERT_NEAR(place.z, other.z, 1e-13) << i;
        }
    }
}
} // namespace

TEST(ObjFile, AModelOfWheelsOnlyIsJustTheFirstLine) {
    EXPECT_EQ(exported(model_with_wheels()), first_line);
    EXPECT_EQ(exported({}), first_line);
}

TEST(ObjFile, ExactBytesOfATriangleAndAQuadrilateral) {
    SHAPEMODEL model = model_with_wheels();
    add_vertex(model, 9, 9, 9); // used by nothing
    add_triangle(model, {{{0.1, -2.5, 3}, {1.0 / 3, 1e20, -0.0}, {-1e-7, 123456789, 0.002}}}, 7);
    add_primitive(model, 4, {35, 34, 33, 8}, 255);
    EXPECT_EQ(exported(model), "mtllib vortag.mtl\n"
                               "v -0.8 0.22 -1.3\n"
                               "v 0.1 3 -2.5\n"
                               "v 0.3333333333333333 -0 1e+20\n"
                               "v -1e-07 0.002 123456789\n"
                               "usemtl Vortag7\n"
                               "f 2 3 4\n"
                               "usemtl Vortag255\n"
                               "f 4 3 2 1\n");
}

TEST(ObjFile, OnlyPolygonsOfThreeToTenCornersAreWritten) {
    for (int type = 0; type < 256; ++type) {
        SHAPEMODEL model;
        add_vertex(model, 1, 2, 3);
        add_primitive(model, type, {});
        const bool polygon = type >= 3 && type <= 10;
        const std::string expected = "v 1 3 2\nusemtl Vortag0\nf";
        EXPECT_EQ(exported(model).substr(18, expected.size()), polygon ? expected : "") << type;
        EXPECT_EQ(export_obj(model, 0).polygons, polygon ? 1U : 0U);
    }
}

TEST(ObjFile, PrimitivesAmongTheFirstFourAreWrittenWhereTheyArePolygons) {
    SHAPEMODEL model;
    add_triangle(model, {{{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}});
    EXPECT_EQ(exported(model), "mtllib vortag.mtl\nv 1 1 1\nv 2 2 2\nv 3 3 3\nusemtl Vortag0\nf 1 2 3\n");
}

TEST(ObjFile, TheMaterialIsThatOfThePaintJobShown) {
    SHAPEMODEL model;
    SHAPEPRIM& triangle = add_triangle(model, {{{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}}, 5);
    triangle.material[16] = 199;
    triangle.material[3] = 300;
    EXPECT_NE(exported(model, 0).find("usemtl Vortag5\n"), std::string::npos);
    EXPECT_NE(exported(model, 16).find("usemtl Vortag199\n"), std::string::npos);
    EXPECT_NE(exported(model, 3).find("usemtl Vortag300\n"), std::string::npos);
}

// ODDITY obj-base-names-shift
TEST(ObjFile, BaseMaterialsComeBackShiftedUpByOne) {
    SHAPEMODEL model = model_with_wheels();
    for (std::uint16_t material = 199; material <= 204; ++material)
        add_triangle(model, {{{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}}, material);
    const std::string text = exported(model);
    std::vector<std::string> names;
    for (std::size_t at = 0; (at = text.find("usemtl ", at)) != std::string::npos; ++at)
        names.push_back(text.substr(at + 7, text.find('\n', at) - at - 7));
    EXPECT_EQ(names, (std::vector<std::string>{"Vortag199", "base1", "base2", "base3", "base4", "Vortag204"}));

    import_obj(text, 7, model);
    std::vector<int> materials;
    for (const SHAPEPRIM& primitive : body_primitives(model))
        materials.push_back(primitive.material[0]);
    EXPECT_EQ(materials, (std::vector<int>{199, 201, 202, 203, 204, 204}));
}

TEST(ObjFile, APolygonWithAnIndexPastTheVerticesIsNotWritten) {
    for (const int index : {3, 511, 512, 65535}) {
        SHAPEMODEL model;
        add_triangle(model, {{{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}});
        add_primitive(model, 4, {0, 1, 2, index});
        const ObjExport result = export_obj(model, 0);
        EXPECT_EQ(result.polygons, 1U);
        EXPECT_EQ(result.left_out, 1U);
        model.prims[0].type = 0;
        EXPECT_EQ(exported(model), first_line) << "nor are its vertices, index " << index;
    }
}

TEST(ObjFile, ComesBackAsTheSamePolygonsWhateverTheSize) {
    for (const int polygons : {1, 8, 9, 507, 508})
        for (const int vertices : {1, 10, 479, 480}) {
            const SHAPEMODEL model = model_of_polygons(polygons, vertices);
            SHAPEMODEL again = model_with_wheels();
            EXPECT_EQ(remarks_on(import_obj(exported(model), 1, again)), "");
            expect_same_polygons(model, again);
            EXPECT_EQ(exported(again), exported(model)) << polygons << " polygons, " << vertices << " vertices";
        }
}

TEST(ObjFile, CoordinatesThatAreNoNumbersAreWrittenAsWordsAndReadAsZero) {
    SHAPEMODEL model = model_with_wheels();
    const double infinite = std::numeric_limits<double>::infinity();
    add_triangle(model, {{{infinite, -infinite, 1}, {std::numeric_limits<double>::quiet_NaN(), 2, 3}, {4, 5, 6}}});
    EXPECT_NE(exported(model).find("v inf 1 -inf\nv nan 3 2\n"), std::string::npos);
    SHAPEMODEL again = model_with_wheels();
    import_obj(exported(model), 1, again);
    EXPECT_EQ(again.verts[32].x, 0);
    EXPECT_EQ(again.verts[32].z, 1);
}

TEST(ObjFile, CountsPastTheTablesCountAsTheTables) {
    SHAPEMODEL model;
    model.nverts = model.nprims = 65535;
    model.prims[511].type = 3;
    model.prims[511].vertex = {511, 511, 511};
    model.verts[511] = {1, 2, 3};
    EXPECT_EQ(exported(model), "mtllib vortag.mtl\nv 1 3 2\nusemtl Vortag0\nf 1 1 1\n");
}
