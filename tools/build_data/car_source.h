// A car's sources: parameters and texts, models, paint jobs, wheels.
#pragma once

#include <filesystem>

// Reads car.txt, the models, paint.txt and wheels.txt of a folder into the car's globals: PAR, the texts, CAR, CEXP and
// PAINTJOBS. The cockpit data of PAR are left as they are.
void read_car(const std::filesystem::path& folder);
