#include "model/check_car.h"

#include "support/faults.h"

#include <gmock/gmock.h>

namespace {

using namespace one_fault;

class CheckCar : public testing::TestWithParam<Fault> {};

std::string name_of_fault(const testing::TestParamInfo<Fault>& fault) { return fault.param.name; }

} // namespace

TEST_P(CheckCar, FindsJustThisFault) {
    const Fault& fault = GetParam();
    CarDocument car = faultless_car();
    fault.put(car);
    const std::vector<Finding> findings = check_car(car);
    ASSERT_EQ(findings.size(), 1U) << (findings.empty() ? "" : findings.back().what);
    EXPECT_EQ(findings[0].severity, fault.severity);
    EXPECT_EQ(findings[0].where, fault.where);
    EXPECT_EQ(findings[0].what, fault.what);
    EXPECT_FALSE(findings[0].remedy.empty());
    EXPECT_EQ(findings[0].place, fault.place);
}

INSTANTIATE_TEST_SUITE_P(Each, CheckCar, testing::ValuesIn(faults), name_of_fault);

TEST(CheckedCar, WithoutAFaultShowsNothing) { EXPECT_THAT(check_car(faultless_car()), testing::IsEmpty()); }

TEST(CheckedCar, EveryBitmapOfTheCockpitIsMissed) {
    for (const char* id : {"dash", "roof", "whl1", "whl2", "whl3", "ins1", "ins2", "ins3", "gbox", "gnob", "dot ",
                           "dot1", "dot2", "dig0", "dig1", "dig5", "dig9"}) {
        CarDocument car = faultless_car();
        remove_bitmap_of(car, id);
        const auto findings = check_car(car);
        ASSERT_EQ(findings.size(), 1U) << id;
        EXPECT_EQ(findings[0].where, "Bitmap " + std::string(id));
    }
}

TEST(CheckedCar, RoundingIsNoFault) {
    CarDocument car = faultless_car();
    set_par(car, par_offset::wheels, word_of(car.par, par_offset::wheels) + 32);
    SHAPEMODEL& model = intro(car);
    model.verts[model.nverts - 1].z += 1.9 * CARSCALE[2];
    add_vertex(model, model.verts[7].x + 0.4 * CARSCALE[2], 0, 0.5);
    fit_bounding_box(model);
    model.verts[model.nverts - 1].x += 0.4 * CARSCALE[2];
    EXPECT_THAT(check_car(car), testing::IsEmpty());
}

TEST(CheckedCar, TheMostSeriousComesFirst) {
    CarDocument car = faultless_car();
    paint_all(car, 60);
    car.name = std::string(30, 'n');
    car.par[0] = std::byte{7};
    const auto findings = check_car(car);
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(findings[0].where, "Gears");
    EXPECT_EQ(findings[1].where, "Car name");
    EXPECT_EQ(findings[2].where, "Paint jobs");
    EXPECT_EQ(serious_findings(findings), 1U);
}

TEST(CheckedCar, AWreckOfACarIsCheckedToo) {
    CarDocument car = faultless_car();
    car.par.fill(std::byte{0xFF});
    car.paint_jobs = 255;
    for (auto& block : car.models) {
        SHAPEMODEL& model = block.edit();
        model.nverts = model.nprims = 65535;
        for (SHAPEPRIM& primitive : model.prims) {
            primitive.type = primitive_type::largest_polygon;
            primitive.vertex.fill(65535);
        }
    }
    EXPECT_GT(serious_findings(check_car(car)), 5U);
    EXPECT_GT(serious_findings(check_car(CarDocument())), 5U);
}
