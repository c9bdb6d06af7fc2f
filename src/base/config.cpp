#include "base/config.h"

#include "base/byte_reader.h"
#include "base/file_io.h"
#include "base/file_status.h"
#include "base/reset.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

std::string PROGDIR;
std::string WORKDIR;
OneBased<std::string, max_config_entries> CONFIG_ID;
OneBased<std::string, max_config_entries> CONFIG_VALUE;
std::int16_t CONFIGS = 0;

namespace {

const std::string config_name = "karosmit.cfg";

// An unset variable counts as the empty text, so that the candidate made from it begins at the root.
std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// The places where the configuration may lie, the preferred one first.
std::array<std::string, 5> candidate_directories(const std::string& invocation_path) {
    const std::string home = environment("HOME");
    const std::string beside = program_directory(invocation_path);
    return {home + "/karosmit/", environment("APPDATA") + "/karosmit/", home + "/.karosmit/", current_directory() + "/",
            beside.empty() ? "./" : beside};
}

// The person changes directory while the program runs, so a place named relative to where it started is made absolute.
std::string absolute(const std::string& directory) {
    return directory.starts_with('/') ? directory : current_directory() + "/" + directory;
}

// Whether the configuration is taken from a place where looking for it gave this error or none. A place that fails to
// answer counts as well: another configuration in its stead would be the disk's choice. One that this user may not look
// into does not.
bool is_the_place(int error) { return error == 0 || (error != EACCES && !means_absence(error)); }

void store_entries(const std::vector<std::pair<std::string, std::string>>& entries) {
    CONFIGS = 0;
    for (const auto& [key, value] : entries) {
        ++CONFIGS;
        CONFIG_ID[CONFIGS] = key;
        CONFIG_VALUE[CONFIGS] = value;
    }
}

} // namespace

std::string program_directory(const std::string& invocation_path) {
    return invocation_path.substr(0, invocation_path.rfind('/') + 1);
}

std::vector<std::pair<std::string, std::string>> decode_config(std::string_view text) {
    std::vector<std::pair<std::string, std::string>> entries;
    std::string_view line;
    // ODDITY config-stops-at-101 (kept): the 101st entry ends the reading; no entry of that number ever exists.
    while (entries.size() < max_config_entries && next_line(text, line)) {
        line = trimmed(line);
        if (line.empty() || line[0] == ';' || line[0] == '#') continue;
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) continue;
        entries.emplace_back(without_trailing_blanks(line.substr(0, equals)),
                             without_leading_blanks(line.substr(equals + 1)));
    }
    return entries;
}

void LOADCONFIG(const std::string& invocation_path) {
    PROGDIR = program_directory(invocation_path);
    WORKDIR = current_directory() + "/";
    store_entries({});
    const auto candidates = candidate_directories(invocation_path);
    int error = 0;
    const auto found = std::ranges::find_if(candidates, [&](const std::string& directory) {
        error = look_for_file(directory + config_name);
        return is_the_place(error);
    });
    if (found == candidates.end()) return;
    WORKDIR = absolute(*found);
    const FileContent file = read_file(WORKDIR + config_name, largest_text);
    if (error == 0) error = file.error;
    if (error != 0) return note_unreadable_file(WORKDIR + config_name, std::generic_category().message(error));
    if (file) store_entries(decode_config(ByteReader(*file).text_view()));
}

std::string CONFIG(std::string_view key) {
    const std::string wanted = lower_case(key);
    for (int i = 1; i <= CONFIGS; ++i) {
        if (lower_case(CONFIG_ID[i]) == wanted) return CONFIG_VALUE[i];
    }
    return {};
}

std::string current_directory() {
    std::error_code error;
    const auto path = std::filesystem::current_path(error);
    return error ? "." : path.string();
}

bool change_directory(const std::string& path, std::string* reason) {
    std::error_code error;
    std::filesystem::current_path(path, error);
    if (reason) *reason = error ? error.message() : "";
    return !error;
}

std::string with_home(const std::string& path) {
    const std::string home = environment("HOME");
    return !home.empty() && (path == "~" || path.starts_with("~/")) ? home + path.substr(1) : path;
}

void reset_config() {
    PROGDIR.clear();
    WORKDIR.clear();
    for (std::string& id : CONFIG_ID)
        id.clear();
    for (std::string& value : CONFIG_VALUE)
        value.clear();
    CONFIGS = 0;
}

namespace {
const ResetWithProgram registered(reset_config);
}
