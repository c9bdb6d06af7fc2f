// The whole car at once: its four files or its project, in and out of the tables.
#pragma once

#include "convert/bitmap_folder.h"

#include <string>
#include <vector>

// Empties the tables: nothing of an earlier car and no default cockpit is left.
void begin_car();

// "FOLDER/abcd": the four files of the car abcd, found however their names are cased. The bitmaps come into the order
// in which both dashboard files have theirs, so that written back each file has its own; of an id in both the later
// one counts. Refuses a set that is not there and whole. Returns the files that would not come back with the same
// bytes.
std::vector<std::string> load_car_files(const std::string& path);
void load_project(const std::string& path);

// What the tables make. Refuse what would be cut.
std::vector<NamedFile> car_files_of_tables(const std::string& path);
NamedFile project_file_of_tables(const std::string& path);
NamedFile shape_file_of_tables(const std::string& path);
