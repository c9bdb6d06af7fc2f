// A document at the capacity of the tables.
#pragma once

#include "model/document.h"

#include <string>

inline void fill_model(Shared<SHAPEMODEL>& block, double seed) {
    SHAPEMODEL& model = block.edit();
    model.nverts = model.nprims = shape_capacity;
    for (std::size_t i = 0; i < shape_capacity; ++i) {
        model.verts[i].x = seed + static_cast<double>(i);
        model.prims[i].type = primitive_type::largest_polygon;
    }
}

// Every table of the document full: the models of polygons with ten corners, bitmaps of a whole canvas each.
inline void fill_document() {
    double seed = 0;
    for (auto& model : CAR)
        fill_model(model, seed += 1000);
    for (auto& model : CEXP)
        fill_model(model, seed += 1000);
    for (BITMAPS = 0; BITMAPS < max_bitmaps;) {
        BitmapRecord& bitmap = BITMAP[++BITMAPS];
        bitmap.name = std::to_string(1000 + BITMAPS);
        bitmap.mask_name = "mask";
        bitmap.width = 320;
        bitmap.height = 200;
        bitmap.pixels = Pixels(max_bitmap_pixels / max_bitmaps, BITMAPS);
    }
}
