// A model of the car in the tables as an OBJ file with its materials, and an OBJ file into such a model.
#pragma once

#include "convert/output.h"

#include <string>

// The OBJ file and, beside it under the same name, the ".mtl" with the colours of the materials that it uses. The paint
// job is counted from 1. Refuses one that the car does not have. Needs MATERIAL.
Output body_of_model(const std::string& path, int model, int paint_job);

// Replaces the model's body. Refuses a file of which something would be left out or makes no sense. Returns a word for
// the person.
std::string body_into_model(const std::string& path, int model);
