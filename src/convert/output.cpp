#include "convert/output.h"

#include "base/file_io.h"
#include "convert/refusal.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace {

namespace fs = std::filesystem;

bool is_there(const std::string& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

void expect_nothing_there(const Output& output) {
    for (const NamedFile& file : output.files)
        if (is_there(file.name)) throw Refusal(file.name + " is there already; --force replaces it");
}

// What was written so far; taken back unless all of it was.
class Written {
public:
    Written() = default;
    Written(const Written&) = delete;
    Written& operator=(const Written&) = delete;
    ~Written() {
        std::error_code ignored;
        for (const auto& [path, before] : earlier_)
            before ? static_cast<void>(save_file(path, *before)) : static_cast<void>(fs::remove(path, ignored));
        for (; !made_.empty(); made_.pop_back())
            fs::remove(made_.back(), ignored); // one that holds anything else stays
    }

    // All are on the disk before the first takes its name.
    void write(const std::vector<NamedFile>& files) {
        std::vector<FileToSave> saves;
        std::vector<FileContent> before;
        for (const NamedFile& file : files) {
            make_folder(fs::path(file.name).parent_path());
            before.push_back(read_file(file.name));
            saves.push_back({file.name, file.content});
        }
        const std::vector<SaveResult> results = save_files(saves);
        std::string failure;
        for (std::size_t i = 0; i < files.size(); ++i)
            if (results[i].outcome == SaveOutcome::saved)
                earlier_.emplace_back(files[i].name, std::move(before[i]));
            else if (failure.empty())
                failure = "cannot write " + files[i].name + (results[i].reason.empty() ? "" : ": " + results[i].reason);
        if (!failure.empty()) throw Refusal(failure);
    }

    void keep() {
        earlier_.clear();
        made_.clear();
    }

private:
    void make_folder(const fs::path& folder) {
        std::error_code error;
        if (folder.empty() || fs::is_directory(folder, error)) return;
        make_folder(folder.parent_path());
        // Another process may have made it meanwhile.
        if (fs::create_directory(folder, error)) made_.push_back(folder);
        if (error) throw Refusal("cannot make the folder " + folder.string() + ": " + error.message());
    }

    std::vector<std::pair<std::string, FileContent>> earlier_;
    std::vector<fs::path> made_;
};

} // namespace

void write_output(const Output& output, bool replace) {
    if (!replace) expect_nothing_there(output);
    Written written;
    written.write(output.files);
    written.keep();
}
