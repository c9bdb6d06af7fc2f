// What changed between two states of the car, in words that a person knows: "mass", "torque curve", "load of brux".
#pragma once

#include "model/document.h"

#include <string>

// From `older` to `newer`, which are not equal.
std::string step_words(const CarDocument& older, const CarDocument& newer);
