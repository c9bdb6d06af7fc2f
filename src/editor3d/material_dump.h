// "coso.txt": the wheels' materials as text, for whoever looks into a model. Nothing reads it back.
#pragma once

#include "model/shape.h"

#include <string>

// Four lines, one for each of the first four primitives, whether they are in use or not: the first sixteen materials as
// signed numbers, a blank behind each.
std::string material_dump(const SHAPEMODEL& model);
