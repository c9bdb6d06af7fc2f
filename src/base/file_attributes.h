// What a file has beside its bytes.
#pragma once

#include <string>

// Gives the open file the mode, the owner and the extended attributes of the file under this name, as far as the system
// allows; where there is none, the mode of new files: for its owner alone, or what the user's mask leaves.
enum class Readers { owner, as_the_mask_says };
void take_attributes_of(const std::string& earlier, int descriptor, Readers of_a_new_file);
