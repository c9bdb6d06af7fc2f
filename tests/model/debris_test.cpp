#include "model/debris.h"

#include "support/models.h"

#include <gtest/gtest.h>
#include <map>

namespace {
// More picks than any test here needs: a model of which nothing is picked ends it, not the test run.
TimeIsUp patience() {
    return [asked = 0]() mutable { return ++asked > 10000; };
}
bool at_once() { return true; }

// Gives these numbers one after the other, then zeros.
UnitRandom numbers(std::vector<double> values) {
    return [values, next = std::size_t{0}]() mutable { return next < values.size() ? values[next++] : 0.0; };
}

// A body of one primitive of each type from 0 to 14, all of the same three vertices.
SHAPEMODEL model_of_all_types() {
    SHAPEMODEL model;
    for (int i = 0; i < 3; ++i)
        add_vertex(model, i, i + 10, i + 20);
    for (int type = 0; type < 15; ++type)
        add_primitive(model, type, {0, 1, 2, 0, 1, 2, 0, 1, 2, 0});
    return model;
}
} // namespace

TEST(Debris, OnlyLinesAndPolygonsOfUpToFiveCornersArePicked) {
    const SHAPEMODEL model = model_of_all_types();
    std::map<std::size_t, int> picks;
    for (int i = 0; i < 1500; ++i) {
        const auto pick = pick_debris(model, numbers({i / 1500.0, 2 / 15.0 + 0.001}), patience());
        ASSERT_TRUE(pick);
        ++picks[*pick];
    }
    EXPECT_EQ(picks.size(), 4U);
    EXPECT_EQ(picks[2], 100 + 1100) << "what is picked again after a miss";
    for (const std::size_t type : {3U, 4U, 5U})
        EXPECT_EQ(picks[type], 100);
}

TEST(Debris, TheNumberChoosesAmongAllPrimitives) {
    SHAPEMODEL model;
    add_vertex(model, 0, 0, 0);
    for (int i = 0; i < 4; ++i)
        add_primitive(model, primitive_type::line, {0, 0});
    EXPECT_EQ(pick_debris(model, numbers({0.0}), patience()), 0U);
    EXPECT_EQ(pick_debris(model, numbers({0.2499999}), patience()), 0U);
    EXPECT_EQ(pick_debris(model, numbers({0.25}), patience()), 1U);
    EXPECT_EQ(pick_debris(model, numbers({0.9999999999999999}), patience()), 3U);
}

TEST(Debris, GivesUpWhenTheTimeIsUp) {
    const SHAPEMODEL model = model_of_all_types();
    EXPECT_FALSE(pick_debris(model, numbers({0.2}), at_once));
    int asked = 0;
    const auto after_three = [&asked] { return ++asked > 3; };
    EXPECT_FALSE(pick_debris(model, numbers({0, 0, 0, 0.2}), after_three));
    EXPECT_EQ(asked, 4);
}

TEST(Debris, WhereNothingFitsItEndsAtOnce) {
    SHAPEMODEL model = model_with_wheels();
    for (const int type : {0, 1, 6, 10, 11, 12, 13, 255})
        add_primitive(model, type, {8, 9, 10, 11, 12, 13});
    EXPECT_FALSE(has_debris(model));
    EXPECT_FALSE(pick_debris(model, numbers({}), patience()));
    EXPECT_FALSE(pick_debris({}, numbers({}), patience()));
}

TEST(Debris, WithAnIndexPastTheVerticesIsNotPicked) {
    SHAPEMODEL model = model_of_all_types();
    for (const std::size_t type : {2U, 3U, 4U})
        model.prims[type].vertex[1] = 3;
    EXPECT_EQ(pick_debris(model, numbers({0.14, 0.21, 0.27, 0.34}), patience()), 5U);
    model.prims[5].vertex[4] = 65535;
    EXPECT_FALSE(has_debris(model));
    model.prims[2].vertex[1] = 2;
    model.prims[2].vertex[2] = 65535; // a line does not use it
    EXPECT_EQ(pick_debris(model, numbers({0.14}), patience()), 2U);
}

TEST(Debris, CountsPastTheTablesCountAsTheTables) {
    SHAPEMODEL model;
    model.nprims = model.nverts = 65535;
    model.prims[511].type = primitive_type::line;
    EXPECT_EQ(pick_debris(model, numbers({0.9999}), patience()), 511U);
}

TEST(Debris, APieceIsThePolygonAloneWithVerticesOfItsOwn) {
    SHAPEMODEL source;
    for (int i = 0; i < 9; ++i)
        add_vertex(source, i, i * 2, i * 3);
    source.verts[7].mark = 5;
    SHAPEPRIM& quad = add_primitive(source, 4, {7, 2, 2, 8});
    quad.flags = 1;
    quad.mark = 9;
    quad.cull1 = quad.cull2 = 3;
    for (std::size_t job = 0; job < 17; ++job)
        quad.material[job] = static_cast<std::uint16_t>(100 + job);

    SHAPEMODEL piece = model_with_wheels();
    piece.prims[0].cull1 = piece.prims[0].cull2 = piece.prims[0].flags = piece.prims[0].mark = 7;
    const SHAPEMODEL before = piece;
    make_debris(source, 0, 3, piece);
    EXPECT_EQ(piece.nprims, 1);
    EXPECT_EQ(piece.nverts, 4);
    const SHAPEPRIM& made = piece.prims[0];
    EXPECT_EQ(made.type, 4);
    EXPECT_EQ(made.flags, 0);
    EXPECT_EQ(made.mark, 0);
    EXPECT_EQ(made.cull1, 0xFFFFFFFF);
    EXPECT_EQ(made.cull2, 0xFFFFFFFF);
    const std::array<std::size_t, 4> corners = {7, 2, 2, 8};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(made.vertex[i], i);
        EXPECT_TRUE(piece.verts[i] == source.verts[corners[i]]) << i;
    }
    for (std::size_t job = 0; job < 17; ++job)
        EXPECT_EQ(made.material[job], job < 3 ? 100 + job : before.prims[0].material[job]) << job;
    EXPECT_TRUE(piece.verts[4] == before.verts[4] && piece.prims[1] == before.prims[1]) << "the rest of the tables";
}
