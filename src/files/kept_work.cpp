#include "files/kept_work.h"

#include "base/code_page.h"
#include "base/descriptor.h"
#include "base/file_io.h"
#include "base/reset.h"
#include "base/state_folder.h"
#include "base/text.h"
#include "base/time_text.h"
#include "formats/project_file.h"
#include "formats/saved_car.h"
#include "model/power_gear.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <mutex>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view stem_start = "work-";
constexpr const char *project_end = ".car", *line_end = ".txt", *lock_end = ".lock";
constexpr std::size_t listed_name_length = 40;
constexpr const char* held_by_another = "Another program works on it";
constexpr char time_format[] = "%Y-%m-%d %H:%M:%S UTC";

struct Works {
    std::mutex mutex;
    std::map<std::string, Descriptor> claimed;    // the locks that this program holds
    std::map<std::uint32_t, AdoptedWork> adopted; // by the number of the load
};
// Never destroyed: the thread that keeps work may be at it until the program is gone.
Works& works = *new Works;

std::string path_of(const std::string& stem, const char* end) { return state_folder() + "/" + stem + end; }

// --- the lock ------------------------------------------------------------------------------------------------------

// Whether the open file is the one that the name stands for: it may have been removed before it was locked.
bool is_still(const Descriptor& file, const std::string& path) {
    struct stat opened {
    }, named{};
    return ::fstat(file.number(), &opened) == 0 && ::stat(path.c_str(), &named) == 0 && opened.st_ino == named.st_ino;
}

// Who only looks whether a stem is claimed keeps it locked for a moment, too.
bool is_locked_for_long(const Descriptor& file) {
    constexpr int attempts = 50;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) return false;
        ::usleep(1000);
    }
    return true;
}

// False when another program has claimed it. A file system without locks is no reason not to keep work.
bool claim(const std::string& stem) {
    const std::lock_guard guard(works.mutex);
    if (works.claimed.contains(stem)) return true;
    const std::string path = path_of(stem, lock_end);
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
        if (!file.open()) return true;
        if (is_locked_for_long(file)) return false;
        if (!is_still(file, path)) continue;
        works.claimed.emplace(stem, std::move(file));
        return true;
    }
    return true;
}

bool is_mine(const std::string& stem) {
    const std::lock_guard guard(works.mutex);
    return works.claimed.contains(stem);
}

bool is_adopted(const std::string& stem) {
    return std::ranges::any_of(works.adopted, [&](const auto& one) { return one.second.stem == stem; });
}

bool is_held_by_another(const std::string& stem) {
    if (is_mine(stem)) return false;
    const Descriptor file(::open(path_of(stem, lock_end).c_str(), O_RDWR | O_CLOEXEC));
    return file.open() && ::flock(file.number(), LOCK_SH | LOCK_NB) != 0;
}

void remove_files(const std::string& stem) {
    for (const char* end : {project_end, line_end, lock_end})
        ::unlink(path_of(stem, end).c_str());
}

// --- the line of text ----------------------------------------------------------------------------------------------

std::string line_for(const CarDocument& car, const std::string& folder, std::time_t when) {
    return utc_text(when, time_format) + "\t" + utf8_from_code_page(car.name) + "\t" + folder + "\n";
}

// What is known without the line: when the project was written.
KeptWork work_without_line(const std::string& stem) {
    struct stat status {};
    const bool there = ::stat(path_of(stem, project_end).c_str(), &status) == 0;
    return {stem, there ? status.st_mtime : 0, ""};
}

KeptWork work_of(const std::string& stem) {
    const FileContent file = read_file(path_of(stem, line_end), largest_text);
    const std::string line = file ? std::string(reinterpret_cast<const char*>(file->data()), file->size()) : "";
    std::tm utc{};
    const char* const behind = ::strptime(line.c_str(), time_format, &utc);
    if (!behind || *behind != '\t') return work_without_line(stem);
    const std::string name(behind + 1, std::find(behind + 1, line.c_str() + line.size(), '\t'));
    return {stem, ::timegm(&utc), code_page_from_utf8(name)};
}

// --- all of it -----------------------------------------------------------------------------------------------------

std::set<std::string> stems() {
    std::set<std::string> found;
    std::error_code error;
    const fs::directory_iterator entries(state_folder(), error);
    if (error || state_folder().empty()) return found;
    for (const fs::directory_entry& entry : entries) {
        const fs::path name = entry.path().filename();
        const bool ours =
            name.extension() == project_end || name.extension() == line_end || name.extension() == lock_end;
        if (ours && name.string().starts_with(stem_start)) found.insert(name.stem().string());
    }
    return found;
}

// That no other program works on, the newest first.
std::vector<KeptWork> free_works() {
    std::vector<KeptWork> found;
    for (const std::string& stem : stems())
        if (file_exists(path_of(stem, project_end)) && !is_held_by_another(stem)) found.push_back(work_of(stem));
    std::ranges::stable_sort(found, std::greater(), &KeptWork::when);
    return found;
}

} // namespace

bool keep_work(const std::string& stem, const CarDocument& car, const std::string& folder, std::string& reason) {
    if (!make_private_folder(state_folder(), reason)) return false;
    if (!claim(stem)) {
        reason = held_by_another;
        return false;
    }
    const Bytes project = encode_project_file(project_of(car));
    const std::string line = line_for(car, folder, std::time(nullptr));
    const FileToSave files[] = {
        {path_of(stem, line_end), std::as_bytes(std::span(line)), Readers::owner},
        {path_of(stem, project_end), project, Readers::owner},
    };
    return save_all(files, reason);
}

void drop_kept_work(const std::string& stem) {
    remove_files(stem);
    const std::lock_guard guard(works.mutex);
    works.claimed.erase(stem);
}

std::string new_stem() {
    const std::string start =
        std::string(stem_start) + utc_text(std::time(nullptr), "%Y%m%d-%H%M%S") + "-" + std::to_string(::getpid());
    std::string stem = start;
    for (int number = 2; stems().contains(stem); ++number)
        stem = start + "-" + std::to_string(number);
    return stem;
}

std::vector<KeptWork> offered_works() {
    std::vector<KeptWork> offered = free_works();
    const AdoptedWork* const adopted = adopted_work();
    const std::string saved = adopted && !saved_car().unsaved ? adopted->stem : ""; // and about to go
    std::erase_if(offered, [&](const KeptWork& work) {
        return (is_mine(work.stem) && !is_adopted(work.stem)) || work.stem == saved;
    });
    if (offered.size() > most_offered_works) offered.resize(most_offered_works);
    return offered;
}

std::string shown_work(const KeptWork& work) {
    const std::string name = work.car.empty() ? "a car without a name" : work.car.substr(0, listed_name_length);
    const std::string time = local_text(work.when, "%e %b %H:%M");
    return "Unsaved: " + name + ", " + std::string(trimmed(time));
}

TransferReport load_kept_work(const std::string& stem) {
    if (is_held_by_another(stem)) return {.text = held_by_another, .failed = true};
    const std::string path = path_of(stem, project_end), name = utf8_from_code_page(work_of(stem).car);
    const FileOutcome outcome = LOADCAR(path);
    const bool loaded = outcome.succeeded() || outcome.code == file_status::cut_to_fit;
    if (!loaded) return {.text = std::string(error_text(outcome.code)) + ": " + path, .failed = true};
    UPDATEPG(false); // which a project does not hold
    note_load_of_kept_work(CARNAME);
    if (claim(stem)) works.adopted[DOCUMENT.origin.load] = {stem, DOCUMENT}; // or another program was quicker
    const bool whole = outcome.succeeded() && outcome.remark == FileRemark::none;
    return {.text = "Loaded " + name, .note = whole ? "" : "The kept work is damaged: loaded as far as it goes"};
}

const AdoptedWork* adopted_work() {
    const auto found = works.adopted.find(DOCUMENT.origin.load);
    return found == works.adopted.end() ? nullptr : &found->second;
}

bool forget_adopted_work(const std::string& stem) {
    return std::erase_if(works.adopted, [&](const auto& one) { return one.second.stem == stem; }) > 0;
}

void tidy_kept_works() {
    const std::time_t oldest = std::time(nullptr) - std::time_t{kept_days} * 24 * 60 * 60;
    int number = 0;
    for (const KeptWork& work : free_works())
        if (++number > most_kept_works || work.when < oldest) remove_files(work.stem);
    for (const std::string& stem : stems())
        if (!file_exists(path_of(stem, project_end)) && !is_mine(stem) && !is_held_by_another(stem)) remove_files(stem);
}

namespace {
const ResetWithProgram registered([] {
    works.claimed.clear();
    works.adopted.clear();
});
}
