#include "model/finding.h"

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : several);
}
