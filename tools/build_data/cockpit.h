// A cockpit's sources: the bitmaps of both dashboard files with their layout, and the gauge data of the parameters.
#pragma once

#include "base/byte_writer.h"
#include "model/bitmap_table.h"

#include <filesystem>
#include <vector>

struct Cockpit {
    // The bitmaps of the dashboard file, then those of the file of dots, knob and digits, each in file order with a
    // mask right behind its owner. "!cg0" and "!eg0" end both.
    std::vector<BitmapRecord> dashboard, dots_and_digits;
};

// Reads layout.txt and the pictures it names from a folder; colours are mapped to PAL, masks made from alpha.
Cockpit read_cockpit(const std::filesystem::path& folder);

// The bytes of a car's dashboard files.
Bytes encode_bitmaps(const std::vector<BitmapRecord>& bitmaps);
// The bytes of one file of all bitmaps, in an order from which the two files of a car with this layout, when they are
// the first to be loaded over it, come out byte for byte as they were when saved again. Loading swaps what it replaces
// with the last bitmap, so this is not the order of the two files.
Bytes encode_default_set(const Cockpit& cockpit);

// Stores gauges.txt of the folder in PAR: gauge centres and needle tips relative to "ins2", knob positions relative to
// "gbox", the markers of the steering wheel on the canvas.
void store_gauges(const std::filesystem::path& folder, const Cockpit& cockpit);
