#include "model/shape_parts.h"

#include <gtest/gtest.h>

TEST(ShapeParts, CountsPastTheTablesCountAsTheTables) {
    SHAPEMODEL model;
    for (const std::uint16_t count : std::initializer_list<std::uint16_t>{0, 1, 4, 511, 512, 513, 65535}) {
        model.nverts = model.nprims = count;
        const std::size_t expected = std::min<std::size_t>(count, 512);
        EXPECT_EQ(vertices_in_use(model).size(), expected);
        EXPECT_EQ(primitives_in_use(model).size(), expected);
        EXPECT_EQ(body_primitives(model).size(), expected < 4 ? 0 : expected - 4);
    }
    EXPECT_EQ(&body_primitives(model)[0], &model.prims[4]);
}

TEST(ShapeParts, PolygonsHaveThreeToTenCorners) {
    for (int type = 0; type < 256; ++type)
        EXPECT_EQ(is_polygon({.type = static_cast<std::uint8_t>(type)}), type >= 3 && type <= 10) << type;
}

TEST(ShapeParts, APrimitiveHasItsVerticesWhenAllThatItsTypeUsesAreInUse) {
    SHAPEMODEL model;
    model.nverts = 5;
    for (int type = 0; type < 256; ++type) {
        SHAPEPRIM primitive{.type = static_cast<std::uint8_t>(type)};
        primitive.vertex.fill(5);
        const auto used = static_cast<std::size_t>(primitive_vertex_count(type));
        EXPECT_EQ(corners_of(primitive).size(), used);
        EXPECT_EQ(has_its_vertices(model, primitive), used == 0) << type;
        std::fill_n(primitive.vertex.begin(), used, std::uint16_t{4});
        EXPECT_TRUE(has_its_vertices(model, primitive)) << type;
        if (used == 0) continue;
        primitive.vertex[used - 1] = 5;
        EXPECT_FALSE(has_its_vertices(model, primitive)) << type;
    }
    model.nverts = 65535;
    SHAPEPRIM point{.type = primitive_type::point};
    point.vertex[0] = 511;
    EXPECT_TRUE(has_its_vertices(model, point));
    point.vertex[0] = 512;
    EXPECT_FALSE(has_its_vertices(model, point));
}
