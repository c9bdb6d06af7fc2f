// Cars with one fault each, as the checks find it.
#pragma once

#include "model/check_car.h"
#include "model/gauges.h"
#include "support/faultless_car.h"

#include <limits>
#include <ostream>

namespace one_fault {

constexpr CheckSpot body = CheckSpot::model, parameter = CheckSpot::parameter, picture = CheckSpot::bitmap;
constexpr Severity serious = Severity::serious, doubtful = Severity::doubtful, forgotten = Severity::forgotten;

struct Fault {
    const char* name;
    void (*put)(CarDocument&);
    Severity severity;
    const char *where, *what;
    CheckPlace place;
};
inline void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.name; }

inline SHAPEMODEL& slot(CarDocument& car, std::size_t number) { return car.models[number].edit(); }
inline SHAPEMODEL& intro(CarDocument& car) { return slot(car, 2); }

inline void add_fitting_face(CarDocument& car, const std::vector<SHAPEVERTEX>& corners) {
    add_face(intro(car), corners);
    fit_bounding_box(intro(car));
}
// As many as the model then has.
inline void add_points(SHAPEMODEL& model, int vertices, int primitives) {
    while (model.nverts < vertices)
        add_vertex(model, 0, 0, 0.5);
    while (model.nprims < primitives)
        add_primitive(model, primitive_type::point, {0}, 1);
}
inline void set_par(CarDocument& car, int offset, int value) {
    set_word(car.par, offset, static_cast<std::uint16_t>(value));
}
inline void paint_all(CarDocument& car, std::uint16_t material) {
    for (std::size_t i = 0; i < 3; ++i)
        for (SHAPEPRIM& primitive : slot(car, i).prims)
            primitive.material.fill(material);
}

inline const Fault faults[] = {
    {"Vertices",
     [](CarDocument& car) { add_points(intro(car), 256, 0); },
     serious,
     "Intro",
     "256 vertices, the file has room for 255",
     {body, 2}},
    {"Primitives",
     [](CarDocument& car) { add_points(slot(car, 0), 0, 300); },
     serious,
     "Showroom",
     "300 primitives, the file has room for 255",
     {body, 0}},
    {"ExplosionVertices",
     [](CarDocument& car) { add_points(car.explosions[3].edit(), 256, 0); },
     serious,
     "Explosion 4",
     "256 vertices, the file has room for 255",
     {body, 1}},
    {"Index",
     [](CarDocument& car) { intro(car).prims[4].vertex[2] = intro(car).nverts; },
     serious,
     "Intro",
     "1 primitive uses a vertex that is not there",
     {body, 2}},
    {"Coordinate",
     [](CarDocument& car) { slot(car, 0).verts[9].y = 32767.6 * CARSCALE[0]; },
     serious,
     "Showroom",
     "1 vertex too far out for the file",
     {body, 0}},
    {"CoordinateBelow",
     [](CarDocument& car) { intro(car).verts[9].y = -32769 * CARSCALE[2]; },
     serious,
     "Intro",
     "1 vertex too far out for the file",
     {body, 2}},
    {"CoordinateThatIsNone",
     [](CarDocument& car) { intro(car).verts[9].y = std::numeric_limits<double>::quiet_NaN(); },
     serious,
     "Intro",
     "1 vertex too far out for the file",
     {body, 2}},
    {"Material",
     [](CarDocument& car) { intro(car).prims[4].material[2] = 256; },
     serious,
     "Intro",
     "1 primitive with a material above 255",
     {body, 2}},
    {"Kind",
     [](CarDocument& car) { add_primitive(intro(car), 13, {}, 1); },
     serious,
     "Intro",
     "1 primitive of an unknown kind",
     {body, 2}},
    {"ThreeWheels",
     [](CarDocument& car) { intro(car).prims[3].type = primitive_type::point; },
     doubtful,
     "Intro",
     "Only 3 wheels",
     {body, 2}},
    {"EmptyGameModel",
     [](CarDocument& car) { car.models[1] = SHAPEMODEL(); },
     serious,
     "Game",
     "The model is empty",
     {body, 1}},
    {"EmptyIntro",
     [](CarDocument& car) { car.models[2] = SHAPEMODEL(); },
     doubtful,
     "Intro",
     "The model is empty",
     {body, 2}},
    {"OutsideItsBox",
     [](CarDocument& car) { add_vertex(intro(car), 0, 9, 0); },
     doubtful,
     "Intro",
     "1 vertex outside the bounding box",
     {body, 2}},
    {"NoArea",
     [](CarDocument& car) {
         add_fitting_face(car, {{0, 0, 1}, {1, 0, 1}, {2, 0, 1}});
     },
     doubtful,
     "Intro",
     "1 face without an area",
     {body, 2}},
    {"NoAreaOnceItsCornersAreWholeUnits",
     [](CarDocument& car) {
         add_fitting_face(car, {{0, 0, 1}, {1, 0, 1}, {0.5, 0.02, 1}});
     },
     doubtful,
     "Intro",
     "1 face without an area",
     {body, 2}},
    {"NotFlat",
     [](CarDocument& car) {
         add_fitting_face(car, {{0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1.8}});
     },
     doubtful,
     "Intro",
     "1 face that is not flat",
     {body, 2}},
    {"NotConvex",
     [](CarDocument& car) {
         add_fitting_face(car, {{0, 0, 1}, {2, 0, 1}, {0.4, 0.4, 1}, {0, 2, 1}});
     },
     doubtful,
     "Intro",
     "1 face that is not convex",
     {body, 2}},
    {"EmptyExplosions",
     [](CarDocument& car) { car.explosions[0] = car.explosions[2] = SHAPEMODEL(); },
     doubtful,
     "Explosion",
     "2 of 4 models are empty",
     {body, 1}},
    {"PaintJobsAlike",
     [](CarDocument& car) { paint_all(car, 60); },
     forgotten,
     "Paint jobs",
     "All 3 are alike",
     {body, 1}},
    {"PieceWithoutMaterial",
     [](CarDocument& car) { car.explosions[1].edit().prims[0].material[faultless_jobs - 1] = 0; },
     forgotten,
     "Explosion",
     "1 piece has no material for a paint job that was added",
     {body, 1}},

    {"MaskMissing",
     [](CarDocument& car) { remove_bitmap_of(car, "dasm"); },
     doubtful,
     "Bitmap dast",
     "Its mask dasm is missing",
     {picture, 0, "dast"}},
    {"MaskOfAnotherSize",
     [](CarDocument& car) {
         remove_bitmap_of(car, "inm3");
         add_bitmap(car, "inm3", 61);
     },
     serious,
     "Bitmap ins3",
     "Its mask inm3 has another size",
     {picture, 0, "ins3"}},
    {"BitmapMissing",
     [](CarDocument& car) { remove_bitmap_of(car, "roof"); },
     serious,
     "Bitmap roof",
     "The cockpit needs it, and it is missing",
     {picture, 0, "roof"}},
    {"BitmapWithoutArea",
     [](CarDocument& car) { bitmap_of(car, "dot1").height = 0; },
     serious,
     "Bitmap dot1",
     "It has no area",
     {picture, 0, "dot1"}},
    {"BitmapWithoutPixels",
     [](CarDocument& car) { bitmap_of(car, "dot1").pixels = Pixels(); },
     serious,
     "Bitmap dot1",
     "It has no area",
     {picture, 0, "dot1"}},
    {"BitmapRightOfTheCanvas",
     [](CarDocument& car) { bitmap_of(car, "dash").absolute_x = 261; },
     doubtful,
     "Bitmap dash",
     "It reaches outside the canvas of 320 x 200",
     {picture, 0, "dash"}},
    {"BitmapAboveTheCanvas",
     [](CarDocument& car) { bitmap_of(car, "dig7").absolute_y = -1; },
     doubtful,
     "Bitmap dig7",
     "It reaches outside the canvas of 320 x 200",
     {picture, 0, "dig7"}},
    {"SpeedometerTip",
     [](CarDocument& car) {
         set_par(car, speedometer.offset + 4, 5);
         car.par[static_cast<std::size_t>(speedometer.offset + 6 + 2 * 3)] = std::byte{60};
     },
     doubtful,
     "Speedometer",
     "1 needle tip outside the bitmap ins2",
     {CheckSpot::speedometer_tip, 3}},
    {"TachometerTips",
     [](CarDocument& car) {
         set_par(car, tachometer.offset + 4, 5);
         car.par[static_cast<std::size_t>(tachometer.offset + 7 + 2 * 4)] = std::byte{60};
         car.par[static_cast<std::size_t>(tachometer.offset + 7 + 2 * 5)] = std::byte{255};
     },
     doubtful,
     "Tachometer",
     "2 needle tips outside the bitmap ins2",
     {CheckSpot::tachometer_tip, 4}},
    {"Knob",
     [](CarDocument& car) { set_par(car, par_offset::knobs + 4 * 2, -1); },
     doubtful,
     "Gear box",
     "1 knob position outside the bitmap gbox",
     {CheckSpot::knob, 2}},
    {"Gate",
     [](CarDocument& car) { set_par(car, par_offset::knobs + 2, 60); },
     doubtful,
     "Gear box",
     "1 knob position outside the bitmap gbox",
     {CheckSpot::knob, 0}},

    {"NoGears",
     [](CarDocument& car) { car.par[0] = std::byte{0}; },
     serious,
     "Gears",
     "0 gears; the game knows 1 to 6",
     {parameter, par_offset::gear_count}},
    {"GearWithoutRatio",
     [](CarDocument& car) { set_par(car, 18, 0); },
     serious,
     "Gear 2",
     "It has no ratio",
     {parameter, 18}},
    {"RatiosNotFalling",
     [](CarDocument& car) { set_par(car, 18, 3000); },
     doubtful,
     "Gear 2",
     "Its ratio is not below that of the gear before",
     {parameter, 18}},
    {"SpeedsNotRising",
     [](CarDocument& car) { set_par(car, par_offset::upshift_rpm, 2000); },
     doubtful,
     "Engine",
     "Idle, downshift, upshift and maximum speed do not rise",
     {CheckSpot::engine_speed}},
    {"NoTorque",
     [](CarDocument& car) { car.par[par_offset::torque_curve + 20] = std::byte{0}; },
     serious,
     "Engine",
     "No torque at any speed",
     {CheckSpot::torque_curve}},
    {"CollisionWidth",
     [](CarDocument& car) { set_par(car, par_offset::collision_half_width, 0); },
     serious,
     "Collision box",
     "It has no width",
     {body, 1}},
    {"CollisionRadius",
     [](CarDocument& car) { set_par(car, par_offset::collision_radius, 0); },
     serious,
     "Collision box",
     "It has no radius",
     {body, 1}},
    {"CollisionLength",
     [](CarDocument& car) {
         set_par(car, par_offset::collision_half_length, word_of(car.par, par_offset::collision_half_length) - 1);
     },
     doubtful,
     "Collision box",
     "Its length is smaller than the Game model's",
     {body, 1}},
    {"CollisionHeight",
     [](CarDocument& car) {
         set_par(car, par_offset::collision_height, word_of(car.par, par_offset::collision_height) - 1);
     },
     doubtful,
     "Collision box",
     "Its height is smaller than the Game model's",
     {body, 1}},
    {"Wheels",
     [](CarDocument& car) {
         set_par(car, par_offset::wheels + 6 + 4, word_of(car.par, par_offset::wheels + 6 + 4) + 40);
     },
     doubtful,
     "Wheels",
     "They roll elsewhere than the Game model has them",
     {body, 1}},

    {"CarName",
     [](CarDocument& car) { car.name = std::string(22, 'n'); },
     doubtful,
     "Car name",
     "22 characters, the screens show 21",
     {CheckSpot::name}},
    {"SignName",
     [](CarDocument& car) { car.sign_name = "five!"; },
     doubtful,
     "Sign name",
     "5 characters, the screens show 4",
     {CheckSpot::sign_name}},
    {"DescriptionLines",
     [](CarDocument& car) { car.information = "1]2]3]4]5]6]7]8]9]10]"; },
     doubtful,
     "Description",
     "10 lines, nine are shown",
     {CheckSpot::description}},
    {"DescriptionColumns",
     [](CarDocument& car) { car.information = "a]" + std::string(24, 'w') + "]"; },
     doubtful,
     "Description",
     "1 line of more than 23 characters",
     {CheckSpot::description}},
};

} // namespace one_fault
