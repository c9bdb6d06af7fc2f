// What holds at every moment, whatever a person does.
#pragma once

#include <string>
#include <vector>

// The rules that do not hold now, in words; none when all is well.
std::vector<std::string> broken_invariants();
