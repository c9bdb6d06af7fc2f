// What a conversion makes, and writing it: all of it or nothing.
#pragma once

#include "convert/bitmap_folder.h"

#include <string>
#include <vector>

struct Output {
    std::vector<NamedFile> files; // by their whole paths
    std::string note{};           // what a person may like to know
};

// Refuses, before anything is written, when one of the files is there and may not be replaced. Folders that are missing
// are made. When a file cannot be written, those before it, and the folders, are taken back.
void write_output(const Output& output, bool replace);
