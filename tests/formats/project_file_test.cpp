#include "formats/project_file.h"

#include "formats/projects.h"

#include <bit>
#include <gtest/gtest.h>

namespace {
std::uint64_t bits_of(double value) { return std::bit_cast<std::uint64_t>(value); }

// A project of two vertices, a line and one bitmap.
ProjectFile tiny_project() {
    ProjectFile project;
    project.name = "Car";
    project.information = "x]";
    project.par[0] = std::byte{5};
    project.par[775] = std::byte{9};
    project.paint_jobs = 2;
    SHAPEMODEL& intro = project.models[2].edit();
    intro.nverts = 1;
    intro.verts[0] = {0.1, -2, 1e300, 7};
    intro.nprims = 1;
    intro.prims[0].type = primitive_type::line;
    intro.prims[0].cull1 = 0x04030201;
    intro.prims[0].cull2 = 0x08070605;
    intro.prims[0].flags = 9;
    intro.prims[0].material = {300, 2, 3};
    intro.prims[0].vertex = {0, 511, 4};
    BitmapRecord bitmap = numbered_bitmap("dot", 2, 1, 5);
    bitmap.pixels = Pixels{77, 88};
    bitmap.has_mask = 255;
    bitmap.mask_name = "dota";
    project.bitmaps = {bitmap};
    return project;
}

Bytes tiny_parameters() { return joined({byte_list({5}), Bytes(774), byte_list({9})}); }

Bytes tiny_bitmap() {
    return joined({bytes_of("dot "), byte_list({2, 0, 1, 0, 0xFF, 0xFF, 5, 0}),
                   byte_list({0x00, 0x80, 0xFF, 0xFF, 0xFF, 0x7F, 5, 0}), byte_list({1, 2, 3, 255}),
                   byte_list({0, 255}), bytes_of("dota"), byte_list({77, 88})});
}

// Offset of a chunk as the file's table has it.
std::size_t offset_of(const Bytes& file, std::size_t chunk) {
    std::uint32_t offset = 0;
    ByteReader(file, 16 + 8 * chunk).u32(offset);
    return offset;
}
} // namespace

TEST(ProjectFileFormat, EncodesExactBytes) {
    const Bytes texts = joined(
        {byte_list({3, 0}), bytes_of("Car"), byte_list({0, 0}), byte_list({2, 0}), bytes_of("x]"), byte_list({0})});
    const Bytes primitive = bytes_of_primitive(primitive_type::line, {300, 2}, {0, 511});
    const Bytes intro = joined({words({1}), bytes_of_vertex(0.1, -2, 1e300), words({1}), primitive});
    const Bytes models = joined({byte_list({2}), repeated(empty_model(), 2), intro, repeated(empty_model(), 6)});
    const int base = 44, pars = base + 12, shps = pars + 776;
    const int dash = shps + static_cast<int>(models.size());
    const Bytes header = joined({bytes_of("*car"), byte_list({13, 10, 26, 0, 1, 0, 0, 4}), bytes_of("Base"),
                                 words({base, 0}), bytes_of("Pars"), words({pars, 0}), bytes_of("Shps"),
                                 words({shps, 0}), bytes_of("Dash"), words({dash, 0})});
    EXPECT_EQ(encode_project_file(tiny_project()),
              joined({header, texts, tiny_parameters(), models, byte_list({1}), tiny_bitmap()}));
}

TEST(ProjectFileFormat, CoordinatesAreTheirBitsLowestByteFirst) {
    EXPECT_EQ(bytes_of_vertex(1, -2, 0),
              byte_list({0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(ProjectFileFormat, DecodesWhatItEncodedWhateverTheSize) {
    for (const int vertices : {0, 1, 255, 256, 511, 512})
        for (const int primitives : {0, 1, 300, 512})
            for (const int jobs : {1, 7, 17}) {
                const ProjectFile project = odd_project(vertices, primitives, jobs);
                ASSERT_TRUE(decoded_project(encode_project_file(project)) == project)
                    << vertices << " vertices, " << primitives << " primitives, " << jobs << " paint jobs";
            }
}

TEST(ProjectFileFormat, BitmapsOfEverySizeComeBack) {
    ProjectFile project;
    for (const auto& [width, height] : {std::pair(0, 0), {65535, 0}, {0, 65535}, {1, 65535}, {65535, 2}, {320, 200}})
        project.bitmaps.push_back(numbered_bitmap("size", width, height));
    while (project.bitmaps.size() < max_bitmaps)
        project.bitmaps.push_back(numbered_bitmap("more", 1, 1, static_cast<int>(project.bitmaps.size())));
    const ProjectFile again = decoded_project(encode_project_file(project));
    EXPECT_TRUE(again.bitmaps == project.bitmaps);
    EXPECT_FALSE(again.cut);
}

TEST(ProjectFileFormat, CoordinatesThatAreNoNumbersComeBackBitForBit) {
    ProjectFile project;
    SHAPEMODEL& model = project.models[8].edit();
    model.nverts = 3;
    const std::uint64_t odd[] = {0x7FF8000000000000, 0xFFF8DEADBEEF0001, 0x7FF0000000000001,
                                 0x7FF0000000000000, 0xFFF0000000000000, 0x8000000000000000,
                                 0x0000000000000001, 0x800FFFFFFFFFFFFF, 0x7FEFFFFFFFFFFFFF};
    for (std::size_t i = 0; i < 3; ++i)
        model.verts[i] = {std::bit_cast<double>(odd[3 * i]), std::bit_cast<double>(odd[3 * i + 1]),
                          std::bit_cast<double>(odd[3 * i + 2])};
    const ProjectFile again = decoded_project(encode_project_file(project));
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(bits_of(again.models[8]->verts[i].x), odd[3 * i]);
        EXPECT_EQ(bits_of(again.models[8]->verts[i].y), odd[3 * i + 1]);
        EXPECT_EQ(bits_of(again.models[8]->verts[i].z), odd[3 * i + 2]);
    }
}

TEST(ProjectFileFormat, EmptyTextsAreALengthOfZeroAndComeBackEmpty) {
    ProjectFile before;
    before.name = before.sign_name = before.information = "as it was";
    const Bytes file = encode_project_file({});
    EXPECT_EQ(bytes_between(file, 44, 7), byte_list({0, 0, 0, 0, 0, 0, 0}));
    const ProjectFile again = decoded_project(file, before);
    EXPECT_EQ(again.name + again.sign_name + again.information, "");
}

TEST(ProjectFileFormat, LongTextsComeBackUpTo65535Bytes) {
    ProjectFile project;
    project.information = std::string(65535, 'i');
    EXPECT_EQ(decoded_project(encode_project_file(project)).information, project.information);
    project.information += "more";
    project.sign_name = "next";
    const ProjectFile again = decoded_project(encode_project_file(project));
    EXPECT_EQ(again.information, std::string(65535, 'i'));
    EXPECT_EQ(again.sign_name, "next");
}

TEST(ProjectFileFormat, ANameOfFewerThanFourCharactersComesBackWithBlanks) {
    const ProjectFile again = decoded_project(encode_project_file(tiny_project()));
    EXPECT_EQ(again.bitmaps.at(0).name, "dot ");
    ProjectFile longer = tiny_project();
    longer.bitmaps[0].name = "";
    longer.bitmaps[0].mask_name = "dota and more";
    EXPECT_EQ(decoded_project(encode_project_file(longer)).bitmaps.at(0).name, "    ");
    EXPECT_EQ(decoded_project(encode_project_file(longer)).bitmaps.at(0).mask_name, "dota");
}

TEST(ProjectFileFormat, PixelsThatABitmapLacksAreWrittenAsZero) {
    ProjectFile project = tiny_project();
    project.bitmaps[0].height = 2;
    EXPECT_EQ(*decoded_project(encode_project_file(project)).bitmaps.at(0).pixels, (Pixels{77, 88, 0, 0}));
    project.bitmaps[0].height = 0;
    EXPECT_EQ(*decoded_project(encode_project_file(project)).bitmaps.at(0).pixels, Pixels{});
}

TEST(ProjectFileFormat, TypesWithoutKindCarryNoVertexIndices) {
    const auto size_with_type = [](int type) {
        ProjectFile project = tiny_project();
        project.models[2].edit().prims[0].type = static_cast<std::uint8_t>(type);
        EXPECT_TRUE(*decoded_project(encode_project_file(project), project).models[2] == [&] {
            SHAPEMODEL expected = *project.models[2];
            expected.verts[0].mark = 0;
            return expected;
        }()) << type;
        return encode_project_file(project).size();
    };
    const std::size_t without = size_with_type(0);
    for (int type = 1; type < 256; ++type)
        EXPECT_EQ(size_with_type(type), without + 2 * static_cast<std::size_t>(primitive_vertex_count(type))) << type;
}

TEST(ProjectFileFormat, CountsPastTheTablesAreWrittenAsTheTables) {
    ProjectFile project = odd_project(512, 512, 17);
    const Bytes file = encode_project_file(project);
    for (auto& model : project.models)
        model.edit().nverts = model.edit().nprims = 65535;
    project.paint_jobs = 255;
    EXPECT_EQ(encode_project_file(project), file);
}

TEST(ProjectFileFormat, MarksOfVerticesReadBecomeZeroAndWhatLiesPastTheCountsStays) {
    ProjectFile before = odd_project(20, 20, 17);
    for (auto& model : before.models)
        for (std::size_t i = 0; i < shape_capacity; ++i)
            model.edit().verts[i].mark = model.edit().prims[i].mark = 6;
    const Bytes model = joined({words({2}), bytes_of_vertex(1, 2, 3), bytes_of_vertex(4, 5, 6), words({1}),
                                bytes_of_primitive(2, {70, 71}, {500, 600})});
    const ProjectFile after = decoded_project(project_with({"Shps", models_chunk(2, {model})}), before);

    const SHAPEMODEL& read = *after.models[0];
    const SHAPEMODEL& old = *before.models[0];
    EXPECT_EQ(read.nverts, 2);
    EXPECT_EQ(read.nprims, 1);
    EXPECT_TRUE(read.verts[1] == (SHAPEVERTEX{4, 5, 6, 0}));
    EXPECT_TRUE(std::equal(read.verts.begin() + 2, read.verts.end(), old.verts.begin() + 2));
    EXPECT_TRUE(std::equal(read.prims.begin() + 1, read.prims.end(), old.prims.begin() + 1));
    SHAPEPRIM expected = old.prims[0];
    expected.type = 2;
    expected.cull1 = 0x04030201;
    expected.cull2 = 0x08070605;
    expected.flags = 9;
    expected.material[0] = 70;
    expected.material[1] = 71;
    expected.vertex[0] = 500;
    expected.vertex[1] = 600;
    EXPECT_TRUE(read.prims[0] == expected) << "its mark and the further materials stay";
}

TEST(ProjectFileFormat, ChunksMayStandInAnyOrderAndUnknownOnesAreSkipped) {
    const Bytes plain = encode_project_file(tiny_project());
    const auto part = [&](std::size_t chunk) {
        const std::size_t end = chunk == 3 ? plain.size() : offset_of(plain, chunk + 1);
        return bytes_between(plain, offset_of(plain, chunk), end - offset_of(plain, chunk));
    };
    const Bytes file = project_of({{"More", bytes_of("anything")},
                                   {"Dash", part(3)},
                                   {"base", bytes_of("another case")},
                                   {"Shps", part(2)},
                                   {"Pars", part(1)},
                                   {"Base", part(0)}});
    EXPECT_TRUE(decoded_project(file) == decoded_project(plain));
}

TEST(ProjectFileFormat, OfTwoChunksWithOneIdTheLastCounts) {
    const Bytes file = project_of({{"Base", texts_chunk("first")}, {"Base", texts_chunk("last")}});
    EXPECT_EQ(decoded_project(file).name, "last");
}

TEST(ProjectFileFormat, OnlyTheFirstFourBytesSayWhatItIs) {
    EXPECT_TRUE(is_project_file(encode_project_file({})));
    EXPECT_TRUE(is_project_file(bytes_of("*car")));
    for (const std::string start : {"", "*", "*ca", "*CAR....", "car*....", " *car"})
        EXPECT_FALSE(is_project_file(bytes_of(start))) << start;
    Bytes file = encode_project_file(tiny_project());
    for (std::size_t i = 4; i < 11; ++i)
        file[i] = std::byte{0xFF};
    EXPECT_TRUE(decoded_project(file) == decoded_project(encode_project_file(tiny_project())));
}
