#include "model/generators.h"

#include "model/body.h"
#include "model/car.h"
#include "model/dimensions.h"
#include "model/parameters.h"
#include "model/shading.h"
#include "model/wheels.h"

namespace {
constexpr std::size_t game_slot = 1; // the model that the game drives with

SHAPEMODEL& edited(int slot) { return CAR.at(static_cast<std::size_t>(slot)).edit(); }
const SHAPEMODEL& game_model() { return *CAR[game_slot]; }
} // namespace

void MOVECAR(double dx, double dy, double dz) { move_body(edited(CURMODEL), dx, dy, dz); }
void MOVEWHEELS(double dx, double dy, double dz) { move_wheels(edited(CURMODEL), dx, dy, dz); }

void RESIZEWHEELS(double dwidth, double dradius1, double dradius2) {
    resize_wheels(edited(CURMODEL), dwidth, dradius1, dradius2);
}

void GENERATEWHEELS(int slot) { generate_wheels(edited(slot)); }
void GENERATEBOUNDINGBOX(int slot) { fit_bounding_box(edited(slot)); }
void AUTOSHADE() { shade_by_facing(edited(CURMODEL), CURPJ); }

bool GENERATEINFO(bool dimensions, bool wheels) {
    if (dimensions) store_dimensions(game_model(), PAR);
    return !wheels || store_wheel_positions(game_model(), PAR);
}

DebrisReport GENERATEDEBRIS(const UnitRandom& random, const TimeIsUp& time_is_up) {
    DebrisReport report{.nothing_fits = !has_debris(game_model())};
    for (Shared<SHAPEMODEL>& piece : CEXP) {
        const auto primitive = pick_debris(game_model(), random, time_is_up);
        if (!primitive) break;
        make_debris(game_model(), *primitive, PAINTJOBS, piece.edit());
        ++report.pieces;
    }
    return report;
}
