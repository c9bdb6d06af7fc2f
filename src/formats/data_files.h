// The data that the program ships, and a person's configuration.
#pragma once

#include <string>

// Finds the configuration and the program's directory, then reads the material table, the paint-job schemes, the
// palette and the default dashboard, in the order in which they build on each other. A missing file stops nothing.
// Needs the tables of items; no window.
void load_data_files(const std::string& invocation_path);
