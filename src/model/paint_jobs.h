// Paint jobs: one more, one less, and recolouring one after a scheme. A primitive holds one material a paint job.
#pragma once

#include "model/shape.h"

#include <array>
#include <cstddef>
#include <cstdint>

constexpr int most_added_paint_jobs = 16; // as many as can be added here; a file may hold seventeen

// Every primitive gets the material of paint job `from` in paint job `to` as well.
void copy_paint_job(SHAPEMODEL& model, std::size_t from, std::size_t to);
// Of `jobs` paint jobs the materials behind `job` move down by one place.
void remove_paint_job(SHAPEMODEL& model, std::size_t job, std::size_t jobs);

// Adds a paint job, a copy of the current one, to the slots 0, 1 and 2 and makes it the current one. False, and nothing
// changed, when there are sixteen already.
bool add_paint_job();
// Removes the current paint job from the slots 0, 1 and 2; the next one becomes the current one, or the last one when
// there is none behind it. False, and nothing changed, when it is the only one.
bool remove_current_paint_job();

using ColourScheme = std::array<std::uint8_t, 4>; // four materials, one a shade

// The first of the four materials that a scheme replaces in a paint job: 200 as soon as a primitive behind the wheels
// has a material from 200 to 203; otherwise the first one of the commonest group of four from 48 on to 91, of equally
// common ones the lowest; 0 when there is none of these.
int recoloured_group(const SHAPEMODEL& model, std::size_t paint_job);

// Replaces the materials of that group behind the wheels by the scheme's of the same rank. Returns how many primitives
// it changed to the scheme; 0 means that none had a material of the group.
int recolour(SHAPEMODEL& model, std::size_t paint_job, const ColourScheme& scheme);
