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

    void write(const NamedFile& file) {
        make_folder(fs::path(file.name).parent_path());
        FileContent before = read_file(file.name);
        std::string reason;
        if (save_file(file.name, file.content, &reason) != SaveOutcome::saved)
            throw Refusal("cannot write " + file.name + (reason.empty() ? "" : ": " + reason));
        earlier_.emplace_back(file.name, std::move(before));
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
    for (const NamedFile& file : output.files)
        written.write(file);
    written.keep();
}
