// A model in a project file:
//
//   u16 V, V x three f64: x, y, z in model units
//   u16 P, P x u8 type, u32 cull1, u32 cull2, u8 flags, J x u16 material, as many u16 vertex indices as the type uses
#pragma once

#include "base/byte_reader.h"
#include "base/byte_writer.h"
#include "model/shape.h"

#include <cstddef>

// Fills the model; what the file does not hold keeps its value, as does what the tables hold past the counts. The marks
// of the vertices read become 0. Returns whether the file holds vertices, primitives or materials for which the model
// has no room; those are read over.
bool read_project_model(ByteReader& reader, std::size_t paint_jobs, SHAPEMODEL& model);
// A count above the table's size counts as the size.
void write_project_model(ByteWriter& writer, std::size_t paint_jobs, const SHAPEMODEL& model);
