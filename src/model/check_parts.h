// The parts of the checks of a car (check_car.h); each appends what it finds.
#pragma once

#include "model/document.h"
#include "model/finding.h"

void check_models(const CarDocument& car, Findings& findings);
void check_paint_jobs(const CarDocument& car, Findings& findings);
void check_cockpit(const CarDocument& car, Findings& findings);
void check_parameters(const CarDocument& car, Findings& findings);
void check_texts(const CarDocument& car, Findings& findings);
