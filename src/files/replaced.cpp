#include "files/replaced.h"

#include "base/file_io.h"
#include "base/state_folder.h"
#include "base/time_text.h"
#include "formats/saved_car.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <limits>
#include <sys/stat.h>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::vector<std::string> endangered(std::span<const std::string> paths) {
    std::vector<std::string> found;
    std::ranges::copy_if(paths, std::back_inserter(found),
                         [](const std::string& path) { return !is_known_file(path) && file_exists(path); });
    return found;
}

// A folder of that name, or the next one that is free. Empty when there is none, with the reason.
std::string make_set(const std::string& name, std::string& reason) {
    constexpr int most_in_a_second = 100;
    const std::string all = state_folder().empty() ? "" : state_folder() + "/replaced";
    if (!make_private_folder(all, reason)) return {};
    const std::string start = all + "/" + local_text(std::time(nullptr), "%Y-%m-%d-%H%M%S") + "-" + name;
    for (int number = 1; number < most_in_a_second; ++number) {
        std::string folder = number == 1 ? start : start + "-" + std::to_string(number);
        if (::mkdir(folder.c_str(), 0700) == 0) return folder;
        reason = std::generic_category().message(errno);
        if (errno != EEXIST) break;
    }
    return {};
}

bool copy_all(std::span<const std::string> paths, const std::string& folder, std::string& reason) {
    std::vector<Bytes> contents;
    std::vector<FileToSave> copies;
    contents.reserve(paths.size());
    for (const std::string& path : paths) {
        FileContent content = read_file(path, std::numeric_limits<std::int32_t>::max());
        if (!content) {
            reason = path + ": " + content.reason();
            return false;
        }
        contents.push_back(std::move(*content));
        copies.push_back({folder + "/" + fs::path(path).filename().string(), contents.back(), Readers::owner});
    }
    return save_all(copies, reason);
}

// Their names begin with their time.
void remove_oldest_sets() {
    std::error_code ignored;
    std::vector<fs::path> sets;
    for (const auto& entry : fs::directory_iterator(state_folder() + "/replaced", ignored))
        sets.push_back(entry.path());
    std::ranges::sort(sets);
    for (std::size_t k = 0; k + most_replaced_sets < sets.size(); ++k)
        fs::remove_all(sets[k], ignored);
}

} // namespace

ReplacedFiles::ReplacedFiles(const std::string& name, std::span<const std::string> paths) {
    files_ = endangered(paths);
    if (files_.empty()) return;
    const std::string shown = fs::path(name).filename().string();
    std::string reason;
    folder_ = make_set(shown, reason);
    if (!folder_.empty() && copy_all(files_, folder_, reason)) {
        remove_oldest_sets();
        message_ = shown + " was replaced; the old files are kept in " + path_for_people(folder_);
    } else {
        forget();
        message_ = shown + " was replaced; the old files could not be kept: " + reason;
    }
}

std::string ReplacedFiles::settle() {
    if (std::ranges::any_of(files_, is_known_file)) return message_;
    forget();
    return {};
}

void ReplacedFiles::forget() const {
    std::error_code ignored;
    if (!folder_.empty()) fs::remove_all(folder_, ignored);
}
