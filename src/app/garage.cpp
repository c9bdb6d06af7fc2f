#include "app/garage.h"

#include "base/config.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// A variable of the environment that holds a whole path; anything else in it does not count.
std::string path_in(const char* variable) {
    const char* const value = std::getenv(variable);
    return value && *value == '/' ? value : "";
}

// Under a name of its own first: at no moment is there a garage with half of the cars. When another editor was quicker,
// its copy stands.
std::error_code copy_whole(const fs::path& from, const fs::path& to) {
    const fs::path half = to.string() + ".new-" + std::to_string(::getpid());
    std::error_code error, ignored;
    fs::create_directories(to.parent_path(), error);
    if (!error) fs::copy(from, half, fs::copy_options::recursive, error);
    if (!error) fs::rename(half, to, error);
    fs::remove_all(half, ignored);
    return fs::is_directory(to, ignored) ? std::error_code() : error;
}

} // namespace

std::string garage_directory() {
    const std::string data = path_in("XDG_DATA_HOME"), home = path_in("HOME");
    if (!data.empty()) return data + "/karosmit/garage";
    return home.empty() ? "" : home + "/.local/share/karosmit/garage";
}

std::string enter_garage(const std::string& samples) {
    const std::string garage = garage_directory();
    if (garage.empty()) return "no garage: neither XDG_DATA_HOME nor HOME names a directory";
    std::error_code error;
    if (!fs::exists(garage, error)) error = copy_whole(samples, garage);
    if (error) return "no garage in " + garage + ": " + error.message();
    return change_directory(garage) ? "" : "cannot enter the garage " + garage;
}
