// The checks of a car: what its files or the game will not take, and what looks forgotten.
#pragma once

#include "model/document.h"
#include "model/finding.h"

// The most serious first, and of equally serious ones in the order models, paint jobs, cockpit, parameters, texts.
Findings check_car(const CarDocument& car);
std::size_t serious_findings(const Findings& findings);
