#include "files/dropped_path.h"

#include "base/text.h"

#include <filesystem>
#include <string_view>
#include <system_error>

namespace {

constexpr std::string_view car_prefix = "car", car_extension = ".res";
constexpr std::size_t identifier_length = 4;

bool is_folder(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

// Empty for any other name than a car's.
std::string identifier_in(const std::string& name) {
    const std::string key = lower_case(name);
    const bool is_cars = key.size() == car_prefix.size() + identifier_length + car_extension.size() &&
                         key.starts_with(car_prefix) && key.ends_with(car_extension);
    std::string identifier = is_cars ? key.substr(car_prefix.size(), identifier_length) : std::string();
    return identifier.find('.') == std::string::npos ? identifier : std::string();
}

// Without a "." it would be taken for an identifier.
std::string name_in_field(const std::string& name) {
    if (std::string identifier = identifier_in(name); !identifier.empty()) return identifier;
    return name.find('.') == std::string::npos ? "./" + name : name;
}

} // namespace

DroppedPath dropped_path(const std::string& path) {
    if (is_folder(path)) return {path};
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {".", name_in_field(path)};
    return {path.substr(0, slash + 1), name_in_field(path.substr(slash + 1))};
}
