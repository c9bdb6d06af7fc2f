#include "base/state_folder.h"

#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>
#include <system_error>

namespace {

// Only an absolute path counts.
std::string folder_in(const char* variable) {
    const char* const value = std::getenv(variable);
    return value && *value == '/' ? value : "";
}

bool is_folder(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::string state_folder() {
    if (const std::string state = folder_in("XDG_STATE_HOME"); !state.empty()) return state + "/karosmit";
    const std::string home = folder_in("HOME");
    return home.empty() ? "" : home + "/.local/state/karosmit";
}

bool make_private_folder(const std::string& path, std::string& reason) {
    if (path.empty()) {
        reason = "no home folder";
        return false;
    }
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const std::string folder = path.substr(0, end);
        const int error = ::mkdir(folder.c_str(), 0700) == 0 ? 0 : errno;
        if (error != 0 && !is_folder(folder)) {
            reason = folder + ": " + std::generic_category().message(error);
            return false;
        }
        if (end == std::string::npos) return true;
    }
}

std::string path_for_people(const std::string& path) {
    const std::string home = folder_in("HOME");
    return !home.empty() && path.starts_with(home + "/") ? "~" + path.substr(home.size()) : path;
}
