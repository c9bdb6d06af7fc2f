// The procedures that change the car's models in one step, by the names that users know. All act on the slot CURMODEL
// unless they say otherwise; lengths are model units.
#pragma once

#include "model/debris.h"

#include <cstdint>

// Moves the body and its box; wheels stay. See move_body.
void MOVECAR(double dx, double dy, double dz);
// Moves the wheels in mirror image. See move_wheels.
void MOVEWHEELS(double dx, double dy, double dz);
// Changes width and radii of every wheel. See resize_wheels.
void RESIZEWHEELS(double dwidth, double dradius1, double dradius2);
// Makes the four standard wheels of a slot. Every wheel of that slot grows by the standard size, so that wheels among
// its further primitives grow as well. See generate_wheels.
void GENERATEWHEELS(int slot);
// Fits the bounding box of a slot around its wheels and body. See fit_bounding_box.
void GENERATEBOUNDINGBOX(int slot);
// Gives the polygons of the body the materials 200 to 203 in the paint job CURPJ, by where they look. See
// shade_by_facing.
void AUTOSHADE();

// Fills words of PAR from slot 1, the in-game model: the dimensions, the wheel positions, or both. False when wheel
// positions were asked for but primitive 0 or 1 of the slot is no whole wheel; their words then stay as they are.
bool GENERATEINFO(bool dimensions, bool wheels);

struct DebrisReport {
    int pieces = 0;            // explosion models made, the first ones
    bool nothing_fits = false; // slot 1 has no line and no polygon of up to five corners
};
// Makes the four explosion models from primitives of slot 1 picked by chance. When the time is up, the remaining ones
// stay as they are. See pick_debris.
DebrisReport GENERATEDEBRIS(const UnitRandom& random, const TimeIsUp& time_is_up);
