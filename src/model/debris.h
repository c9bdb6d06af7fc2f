// The pieces that fly off in a crash: single polygons picked from the in-game model by chance.
#pragma once

#include "model/shape.h"

#include <cstddef>
#include <functional>
#include <optional>

using UnitRandom = std::function<double()>; // a uniform number in [0, 1)
using TimeIsUp = std::function<bool()>;     // asked before every pick

// Whether the model has a primitive that can be a piece: a line or a polygon of up to five corners that has its
// vertices.
bool has_debris(const SHAPEMODEL& source);

// Such a primitive, each with the same chance. None when the time is up, or at once when the
// model has no such primitive.
std::optional<std::size_t> pick_debris(const SHAPEMODEL& source, const UnitRandom& random, const TimeIsUp& time_is_up);

// Makes `piece` a model of this one primitive alone, with the materials of the first `paint_jobs` paint jobs. What its
// tables hold past the counts stays.
void make_debris(const SHAPEMODEL& source, std::size_t primitive, std::size_t paint_jobs, SHAPEMODEL& piece);
