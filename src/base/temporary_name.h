// The names under which files are made ready beside their targets: ".karosmit-save-", the number of the process, that
// of the call.
#pragma once

#include <functional>
#include <string>

// Takes a name in the directory by `take`, which creates something under a name that must be free and otherwise fails
// with EEXIST. No two calls of one process use the same name, and no two processes. Empty when none could be had, errno
// says why.
std::string take_temporary_name(const std::string& directory, const std::function<bool(const std::string&)>& take);

// Says that the file's maker lives, as long as the descriptor is open.
void lock_temporary(int descriptor);
// Removes the files that programs left in the directory which were killed before they were done: those that nobody
// keeps locked, of processes that are no more.
void remove_left_temporaries(const std::string& directory);
