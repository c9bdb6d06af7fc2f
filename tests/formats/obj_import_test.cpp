// What an OBJ text becomes.
#include "formats/obj_file.h"

#include "model/body.h"
#include "support/models.h"

#include <gtest/gtest.h>
#include <limits>

namespace {
struct Imported {
    SHAPEMODEL model = model_with_wheels();
    ObjImport report;

    explicit Imported(std::string_view text, std::size_t paint_jobs = 7)
        : report(import_obj(text, paint_jobs, model)) {}

    const SHAPEVERTEX& vertex(std::size_t number) const { return model.verts[31 + number]; }
    const SHAPEPRIM& face(std::size_t number) const { return model.prims[3 + number]; }
    // Materials of all faces in the first paint job.
    std::vector<int> materials() const {
        std::vector<int> all;
        for (const SHAPEPRIM& primitive : body_primitives(model))
            all.push_back(primitive.material[0]);
        return all;
    }
    // The vertex numbers of the only face.
    std::vector<int> corners(std::size_t number = 1) const {
        std::vector<int> all;
        for (const std::uint16_t index : corners_of(face(number)))
            all.push_back(index - 31);
        return all;
    }
};

using Corners = std::vector<int>;

void expect_vertex(const SHAPEVERTEX& vertex, double x, double y, double z) {
    EXPECT_EQ(vertex.x, x);
    EXPECT_EQ(vertex.y, y);
    EXPECT_EQ(vertex.z, z);
}

// Coordinates of the only vertex of a text, in the file's order.
std::array<double, 3> coordinates(std::string_view line) {
    const Imported obj(line);
    EXPECT_EQ(obj.report.vertices, 1U) << line;
    return {obj.vertex(1).x, obj.vertex(1).z, obj.vertex(1).y};
}
using Numbers = std::array<double, 3>;

constexpr std::string_view three_vertices = "v 0 0 0\nv 1 0 0\nv 0 0 1\n";

int material_of(const std::string& line) {
    return Imported(std::string(three_vertices) + line + "\nf 1 2 3\n").materials().at(0);
}

std::string repeated(std::string_view line, int times) {
    std::string text;
    for (int i = 0; i < times; ++i)
        text += line;
    return text;
}
} // namespace

TEST(ObjImport, TheSecondCoordinateIsTheHeight) {
    const Imported obj("v 1 2 3\nv -4 -5 -6\n");
    EXPECT_EQ(obj.model.nverts, 34);
    expect_vertex(obj.vertex(1), 1, 3, 2);
    expect_vertex(obj.vertex(2), -4, -6, -5);
}

TEST(ObjImport, AMissingNumberIsZero) {
    EXPECT_EQ(coordinates("v 1 2"), (Numbers{1, 2, 0}));
    EXPECT_EQ(coordinates("v 1"), (Numbers{1, 0, 0}));
    EXPECT_EQ(coordinates("v"), (Numbers{0, 0, 0}));
    EXPECT_EQ(coordinates("v a 2 b3"), (Numbers{0, 2, 0}));
}

TEST(ObjImport, NumbersAreAsOtherToolsWriteThem) {
    EXPECT_EQ(coordinates("v 1. .5 -1.5e-1"), (Numbers{1, 0.5, -0.15}));
    EXPECT_EQ(coordinates("v +1 2E2 3.000000"), (Numbers{1, 200, 3}));
    EXPECT_EQ(coordinates("v 1.0 2.0 3.0 1.0"), (Numbers{1, 2, 3})) << "a weight";
    EXPECT_EQ(coordinates("v 1 2 3 0.5 0.5 0.5"), (Numbers{1, 2, 3})) << "a colour";
    EXPECT_EQ(coordinates("v nan inf -inf"), (Numbers{0, 0, 0}));
    EXPECT_EQ(coordinates("v 1e999 0 0")[0], std::numeric_limits<double>::infinity());
}

TEST(ObjImport, ARunOfBlanksSeparatesOnce) {
    EXPECT_EQ(coordinates("v   1   2     3   "), (Numbers{1, 2, 3}));
    EXPECT_EQ(Imported("v 0 0 0\nf   1   1 1  \n").corners(), (Corners{1, 1, 1}));
}

TEST(ObjImport, TabsAreNoSeparators) {
    EXPECT_EQ(coordinates("v 1\t2 3"), (Numbers{1, 3, 0}));
    EXPECT_EQ(Imported("v\t1 2 3\n").report.vertices, 0U);
    EXPECT_EQ(Imported("f\t1 2 3\nusemtl\tvortag7\n").report, ObjImport{});
    EXPECT_EQ(Imported("v 0 0 0\nf 1\t1 1\n").corners(), (Corners{1, 1}));
}

TEST(ObjImport, ALineThatBeginsWithABlankIsIgnored) { EXPECT_EQ(Imported(" v 1 2 3\n f 1 1 1\n").report, ObjImport{}); }

TEST(ObjImport, KeywordsCountInEitherCase) {
    const Imported obj("V 1 2 3\nUSEMTL VORTAG7\nF 1 1 1\n");
    EXPECT_EQ(obj.report.vertices, 1U);
    EXPECT_EQ(obj.materials(), std::vector<int>{7});
}

TEST(ObjImport, LinesMayEndInCarriageReturnsOrWithTheFile) {
    const Imported obj("v 1 2 3\r\nusemtl vortag9\r\nf 1 1 1\r\nf 1 1");
    expect_vertex(obj.vertex(1), 1, 3, 2);
    EXPECT_EQ(obj.materials(), (std::vector<int>{9, 9}));
    EXPECT_EQ(obj.corners(2), (Corners{1, 1}));
}

TEST(ObjImport, CommentsReachToTheEndOfTheLine) {
    EXPECT_EQ(coordinates("v 1 2#3 4"), (Numbers{1, 2, 0}));
    EXPECT_EQ(Imported("# v 1 2 3\n#v 1 2 3\nv#1 2 3\n").report.vertices, 1U);
    EXPECT_EQ(Imported("v 0 0 0\nf 1 1 # 1 1\n").corners(), (Corners{1, 1}));
}

TEST(ObjImport, ThousandsOfOtherLinesAreIgnored) {
    const std::string others =
        repeated("vn 0 0 1\nvt 0.5 0.5\nvp 1\no Body\ng a b\ns 1\ns off\nl 1 2\nmtllib x.mtl\nfo 1 2 3\n\n", 2000);
    const Imported obj(others + std::string(three_vertices) + others + "f 1 2 3\n" + others);
    EXPECT_EQ(obj.report, (ObjImport{.vertices = 3, .faces = 1}));
    EXPECT_EQ(obj.corners(), (Corners{1, 2, 3}));
}

TEST(ObjImport, OfACornerOnlyTheVertexNumberCounts) {
    EXPECT_EQ(Imported(repeated("v 0 0 0\n", 9) + "f 7/3/2 8//1 9/1\n").corners(), (Corners{7, 8, 9}));
    EXPECT_EQ(Imported(repeated("v 0 0 0\n", 3) + "f  1//1  2//1  3//1\n").corners(), (Corners{1, 2, 3}));
}

TEST(ObjImport, AFaceIsTwoSidedUnmarkedAndAlwaysShown) {
    SHAPEMODEL model = model_with_wheels();
    model.prims[4].mark = 9;
    model.prims[4].flags = 6;
    import_obj("v 0 0 0\nf 1 1 1\n", 7, model);
    EXPECT_EQ(model.prims[4].type, 3);
    EXPECT_EQ(model.prims[4].cull1, 0xFFFFFFFF);
    EXPECT_EQ(model.prims[4].cull2, 0xFFFFFFFF);
    EXPECT_EQ(model.prims[4].flags, 1);
    EXPECT_EQ(model.prims[4].mark, 0);
}

TEST(ObjImport, AFaceOfTwelveNumbersHasTenCorners) {
    const Imported obj(repeated("v 0 0 0\n", 12) + "f 1 2 3 4 5 6 7 8 9 10 11 12\nf 1 2 3 4 5 6 7 8 9 10\n");
    EXPECT_EQ(obj.face(1).type, 10);
    EXPECT_EQ(obj.corners(), (Corners{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(obj.report.faces_cut, 1U);
    EXPECT_EQ(remarks_on(obj.report), "1 face cut to 10 corners");
}

TEST(ObjImport, AFaceWithoutNumbersIsNone) {
    const Imported obj("v 0 0 0\nf\nf \nf 1\nf 1 1\n");
    EXPECT_EQ(obj.report.faces, 2U);
    EXPECT_EQ(obj.face(1).type, primitive_type::point);
    EXPECT_EQ(obj.face(2).type, primitive_type::line);
}

TEST(ObjImport, VertexNumbersBelowOneLeadToWheelsOrNowhereAndAreTold) {
    const Imported obj("v 0 0 0\nf 1 -1 0\nf -31 -32 a\n");
    EXPECT_EQ(obj.face(1).vertex[1], 30);
    EXPECT_EQ(obj.face(1).vertex[2], 31);
    EXPECT_EQ(obj.face(2).vertex[0], 0);
    EXPECT_EQ(obj.face(2).vertex[1], 65535);
    EXPECT_EQ(obj.face(2).vertex[2], 31);
    EXPECT_EQ(obj.report.numbers_below_one, 5U);
    EXPECT_EQ(remarks_on(obj.report), "5 vertex numbers below 1; 1 face of vertices that are not there");
}

TEST(ObjImport, VertexNumbersPastTheFileAreKeptAndTold) {
    const Imported obj("v 0 0 0\nf 1 2 3\nf 1 1 65504\nf 65505 70000 4294967297\n");
    EXPECT_EQ(obj.face(1).vertex[2], 34);
    EXPECT_EQ(obj.face(2).vertex[2], 65535);
    for (std::size_t corner = 0; corner < 3; ++corner)
        EXPECT_EQ(obj.face(3).vertex[corner], 65535) << "never one that the model has";
    EXPECT_EQ(remarks_on(obj.report), "3 faces of vertices that are not there");
}

TEST(ObjImport, AVertexMayStandBehindItsFace) {
    const Imported obj("f 1 2 3\n" + std::string(three_vertices));
    EXPECT_EQ(obj.report, (ObjImport{.vertices = 3, .faces = 1}));
}

TEST(ObjImport, MaterialNamesBeginWithVortagInAnyCase) {
    EXPECT_EQ(material_of("usemtl Vortag7"), 7);
    EXPECT_EQ(material_of("usemtl VORTAG7"), 7);
    EXPECT_EQ(material_of("usemtl vortag7.001"), 7);
    EXPECT_EQ(material_of("usemtl  vortag255  "), 255);
    EXPECT_EQ(material_of("usemtl vortag"), 0);
    EXPECT_EQ(material_of("usemtl vortagx"), 0);
    EXPECT_EQ(material_of("usemtl vortag300"), 300);
    EXPECT_EQ(material_of("usemtl vortag65543"), 7);
}

TEST(ObjImport, AnyOtherNameIsMaterial200) {
    EXPECT_EQ(material_of("usemtl red"), 200);
    EXPECT_EQ(material_of("usemtl"), 200);
    EXPECT_EQ(material_of("usemtl my vortag7"), 200);
    EXPECT_EQ(material_of("usemtl Material.001"), 200);
    EXPECT_EQ(material_of(""), 200);
}

TEST(ObjImport, TheMaterialHoldsUntilTheNextName) {
    EXPECT_EQ(Imported("v 0 0 0\nf 1 1\nusemtl vortag5\nf 1 1\nf 1 1\nusemtl vortag6\nusemtl x\nf 1 1\n").materials(),
              (std::vector<int>{200, 5, 5, 200}));
}

// ODDITY obj-base-names-shift
TEST(ObjImport, BaseNamesCountFrom201) {
    EXPECT_EQ(material_of("usemtl base1"), 201);
    EXPECT_EQ(material_of("usemtl Base4"), 204);
    EXPECT_EQ(material_of("usemtl base"), 200);
    EXPECT_EQ(material_of("usemtl base-5"), 195);
}

TEST(ObjImport, TheMaterialIsSetForThePaintJobsInUse) {
    SHAPEMODEL model = model_with_wheels();
    model.prims[4].material.fill(99);
    import_obj("v 0 0 0\nusemtl vortag7\nf 1 1 1\n", 3, model);
    for (std::size_t job = 0; job < max_paint_jobs; ++job)
        EXPECT_EQ(model.prims[4].material[job], job < 3 ? 7 : 99);
    import_obj("v 0 0 0\nusemtl vortag8\nf 1 1 1\n", 255, model);
    EXPECT_EQ(model.prims[4].material[16], 8);
}

TEST(ObjImport, TheFourWheelsStay) {
    SHAPEMODEL model = model_with_wheels();
    move_wheels(model, 0.5, 0.25, 0.125);
    model.prims[2].material.fill(77);
    model.prims[2].flags = 3;
    add_triangle(model, {{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}}, 55);
    const SHAPEMODEL before = model;
    import_obj("v 1 1 1\nf 1 1 1\n", 7, model);
    EXPECT_EQ(model.nverts, 33);
    EXPECT_EQ(model.nprims, 5);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_TRUE(model.prims[i] == before.prims[i]);
    for (std::size_t i = 8; i < 32; ++i)
        EXPECT_TRUE(model.verts[i] == before.verts[i]);
}

TEST(ObjImport, WithoutFourWheelsAllFourAreMadeAnew) {
    for (std::size_t missing = 0; missing < 4; ++missing) {
        SHAPEMODEL model = model_with_wheels();
        move_wheels(model, 0.5, 0.25, 0.125);
        model.prims[missing].type = primitive_type::triangle;
        import_obj("", 7, model);
        SHAPEMODEL expected = model_with_wheels();
        fit_bounding_box(expected);
        EXPECT_TRUE(model == expected) << missing;
    }
}

TEST(ObjImport, IntoAnEmptySlotMakesWheels) {
    SHAPEMODEL model;
    import_obj(three_vertices, 7, model);
    EXPECT_EQ(model.nverts, 35);
    EXPECT_EQ(model.nprims, 4);
    EXPECT_EQ(model.prims[3].type, primitive_type::wheel);
}

TEST(ObjImport, TheBoxIsFittedAnew) {
    SHAPEMODEL model = model_with_wheels();
    import_obj("v 5 7 9\nv -5 1 -9\n", 7, model);
    EXPECT_EQ(model.verts[7].x, 5);
    EXPECT_EQ(model.verts[7].y, -9);
    EXPECT_EQ(model.verts[7].z, 7);
    EXPECT_EQ(model.verts[0].z, 0);
}

TEST(ObjImport, EverythingBeyondTheTablesIsLeftOutAndCounted) {
    const Imported full(repeated("v 1 2 3\n", 480) + repeated("f 480 1 1\n", 508));
    EXPECT_EQ(full.report, (ObjImport{.vertices = 480, .faces = 508}));
    EXPECT_EQ(remarks_on(full.report), "");

    const Imported more(repeated("v 1 2 3\n", 610) + repeated("f 480 1 1\n", 509) + "f\nf 481 1 1\n");
    EXPECT_EQ(more.report, (ObjImport{.vertices = 480, .faces = 508, .vertices_left_out = 130, .faces_left_out = 2}));
    EXPECT_EQ(remarks_on(more.report), "512 vertices at most: 130 left out; 512 primitives at most: 2 left out");
    EXPECT_TRUE(more.model == full.model);
    EXPECT_EQ(more.model.nverts, 512);
    EXPECT_EQ(more.model.nprims, 512);
}

TEST(ObjImport, NoFaceAtAllIsTold) {
    EXPECT_EQ(remarks_on(Imported("").report), "no face");
    EXPECT_EQ(remarks_on(Imported(three_vertices).report), "no face");
    EXPECT_EQ(remarks_on(Imported("v 0 0 0\nf 1 1 1\n").report), "");
}

TEST(ObjImport, CutAtEveryByteIsStillATextOfWholeModels) {
    const std::string text = "v 1.5 -2e1 3\nusemtl base2\nv 1 2 3\r\nf 1 2/3/4 -1 # end\nusemtl Vortag12\nf 1 2\n";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const Imported obj(text.substr(0, length));
        EXPECT_EQ(obj.model.nverts, 32 + obj.report.vertices);
        EXPECT_EQ(obj.model.nprims, 4 + obj.report.faces);
    }
}
