// The configuration file and the two directories that it settles.
#pragma once

#include "base/table.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

extern std::string PROGDIR; // where the program's data files lie; ends in "/" or is empty (current directory)
extern std::string WORKDIR; // where the configuration was found, else the current directory; ends in "/"

constexpr int max_config_entries = 100;
extern OneBased<std::string, max_config_entries> CONFIG_ID;
extern OneBased<std::string, max_config_entries> CONFIG_VALUE;
extern std::int16_t CONFIGS; // entries read, at most 100

// The directory of the program file as it was invoked: up to and including the last "/", empty when there is none.
std::string program_directory(const std::string& invocation_path);

// The entries of a configuration text, in order, at most 100.
std::vector<std::pair<std::string, std::string>> decode_config(std::string_view text);

// Settles PROGDIR from the invocation path, WORKDIR from the first place that holds "karosmit.cfg", and reads the
// entries. No file, or one that cannot be read, gives no entries; the latter is noted (file_status.h).
void LOADCONFIG(const std::string& invocation_path);

// The value of the first entry of that key, ignoring case; empty when there is none.
std::string CONFIG(std::string_view key);

// The current directory, and entering another one. False: it stays, and `reason` says why, in the system's words.
std::string current_directory();
bool change_directory(const std::string& path, std::string* reason = nullptr);
// A path with "~/" at its front, or "~" alone, as one that begins in the user's home directory, where there is one.
std::string with_home(const std::string& path);

void reset_config();
