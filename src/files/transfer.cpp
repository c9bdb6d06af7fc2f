#include "files/transfer.h"

#include "base/config.h"
#include "base/file_io.h"
#include "base/file_status.h"
#include "base/shell.h"
#include "base/text.h"
#include "base/utf8.h"
#include "files/directory.h"
#include "files/replaced.h"
#include "formats/bitmap_file.h"
#include "formats/car_files.h"
#include "formats/obj_file.h"
#include "formats/parameter_file.h"
#include "formats/project_file.h"
#include "formats/saved_car.h"
#include "formats/shape_file.h"
#include "model/car.h"
#include "model/document.h"
#include "model/items.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace {

const std::string no_car_data = "No car data in it: ";

// What one reader or writer did, and what there is to say beside its outcome.
struct Handled {
    FileOutcome outcome;
    std::string note{};
};
using FileProcedure = Handled (*)(const std::string& filename);

template <FileOutcome (*procedure)(const std::string& filename)>
Handled silently(const std::string& filename) {
    return {procedure(filename)};
}

FileOutcome load_all_shapes(const std::string& filename) { return LOAD3SH(filename, all_shapes); }

Handled load_body(const std::string& filename) {
    const BodyLoaded loaded = LOADOBJ(filename, CURMODEL);
    if (!loaded.import) return {loaded.outcome};
    if (*loaded.import == ObjImport{})
        return {loaded.outcome, no_car_data + filename + "; " + slot_label(CURMODEL) + " has no body now"};
    const std::string remarks = remarks_on(*loaded.import);
    return {loaded.outcome, "Into " + slot_label(CURMODEL) + (remarks.empty() ? "" : ": " + remarks)};
}

Handled save_body(const std::string& filename) {
    const auto [outcome, left_out] = SAVEOBJ(filename, CURMODEL);
    if (left_out == 0 || !outcome.succeeded()) return {outcome};
    if (left_out == 1) return {outcome, "1 polygon left out: its vertices are not there"};
    return {outcome, std::to_string(left_out) + " polygons left out: their vertices are not there"};
}

struct FileKind {
    std::string_view extension;
    FileProcedure load;
    FileProcedure save;               // null: cannot be saved
    std::string_view unpacked_name{}; // of a packed kind: the file in WORKDIR that the unpacker makes
};

constexpr FileKind file_kinds[] = {
    {".res", silently<LOADRES>, silently<SAVERES>},
    {".3sh", silently<load_all_shapes>, silently<SAVE3SH>},
    {".vsh", silently<LOADVSH>, silently<SAVEVSH>},
    {".car", silently<LOADCAR>, silently<SAVECAR>},
    {".obj", load_body, save_body},
    {".pre", silently<LOADRES>, nullptr, "temp.res"},
    {".p3s", silently<load_all_shapes>, nullptr, "temp.3sh"},
    {".pvs", silently<LOADVSH>, nullptr, "temp.vsh"},
};

const FileKind* kind_of(const std::string& name) {
    const auto kind = std::ranges::find(file_kinds, extension_of(name), &FileKind::extension);
    return kind == std::end(file_kinds) ? nullptr : kind;
}

std::string unpacker() { return CONFIG("vorpack"); }

Handled failed(const std::string& file, std::uint8_t code, const std::string& reason) {
    begin_file(file);
    return {report_file({file, code, reason})};
}

// Whether nothing is there any more; otherwise errno says why.
bool removed(const std::string& path) { return ::unlink(path.c_str()) == 0 || errno == ENOENT; }

// Loads what the unpacker makes of a packed file. What lies there from an earlier time is removed first, so that an
// unpacker that fails never shows an earlier car as loaded.
Handled load_unpacked(const FileKind& kind, const std::string& packed) {
    const std::string unpacked = WORKDIR + std::string(kind.unpacked_name);
    if (!removed(unpacked))
        return failed(packed, file_status::not_unpacked, unpacked + ": " + std::generic_category().message(errno));
    const CommandOutcome outcome =
        run_external_program(unpacker() + " " + shell_quoted(packed) + " " + shell_quoted(unpacked), "the unpacker");
    if (outcome.ended_by_itself()) return kind.load(unpacked);
    removed(unpacked); // as far as it had come
    return failed(packed, file_status::not_unpacked, in_words(outcome));
}

// The outcome before any reader or writer was called.
Handled nothing_done(const std::string& why) { return {{"", file_status::nothing_done}, why}; }

Handled load_kind(const FileKind& kind, const std::string& name) {
    if (kind.unpacked_name.empty()) return kind.load(name);
    return unpacker().empty() ? nothing_done("Packed, and no unpacker (vorpack) is configured")
                              : load_unpacked(kind, name);
}

std::string failure_text(const FileOutcome& outcome, const std::string& file) {
    return std::string(error_text(outcome.code)) + ": " + file;
}

// Of one of several files.
std::string part_failure_text(const FileOutcome& outcome, const std::string& file) {
    return outcome.remark == FileRemark::not_writable ? "Not writable: " + file : failure_text(outcome, file);
}

// What the status line leaves unsaid; nothing where it says all.
std::string unsaid(const FileOutcome& outcome) {
    const std::string reason = outcome.file + ": " + outcome.reason;
    switch (outcome.remark) {
    case FileRemark::not_writable: return "Not writable: " + reason;
    case FileRemark::ends_early: return "Ends too early: " + outcome.file + ", loaded as far as it goes";
    case FileRemark::no_car_data: return no_car_data + outcome.file;
    case FileRemark::none: break;
    }
    if (outcome.reason.empty()) return {};
    switch (outcome.code) {
    case file_status::read_error: return "Cannot read " + reason;
    case file_status::not_unpacked: return "Not unpacked: " + outcome.reason;
    case file_status::invalid_name: return "Cannot be written: " + reason;
    default: return "Cannot write " + reason;
    }
}

std::string done_text(Transfer direction, const std::string& file) {
    return (direction == Transfer::load ? "Loaded " : "Saved ") + file;
}

// What an outcome comes to, with the names that stand for the file in a success and in a failure.
TransferReport report(Transfer direction, const FileOutcome& outcome, const std::string& done_name,
                      const std::string& failed_name) {
    if (outcome.code == file_status::nothing_done) return {};
    if (outcome.succeeded()) return {.text = done_text(direction, done_name), .note = unsaid(outcome)};
    return {.text = failure_text(outcome, failed_name), .failed = true, .note = unsaid(outcome)};
}

struct FoundName {
    std::string name;
    std::string failure{}; // why the directory could not be asked, in the system's words
};

// The file's name as the directory has it: DOS disks give names in capitals, which this system tells apart.
FoundName name_in_directory(const std::string& file) {
    if (file_exists(file)) return {file};
    const DirectoryContent content = read_directory([&](std::string_view key) { return key == file; });
    const auto found = std::ranges::find(content.entries, file, &DirectoryEntry::key);
    return {found == content.entries.end() ? file : found->name, content.failure};
}

// Loads one of a car's files, by the name that the directory has it under.
FileOutcome load_part(const std::string& file) {
    const FoundName found = name_in_directory(file);
    if (!found.failure.empty()) return failed(found.name, file_status::read_error, found.failure).outcome;
    return kind_of(file)->load(found.name).outcome;
}

// One name for each file, however it was written.
std::string path_of(const std::string& name) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::weakly_canonical(std::filesystem::absolute(name), error);
    return error ? name : path.string();
}

// The files that a transfer has read or written, for what is known of saved work.
class Moved {
public:
    explicit Moved(Transfer direction) : direction_(direction) {}

    void add(const FileOutcome& outcome, const std::string& name) {
        const bool cut = outcome.code == file_status::cut_to_fit;
        const bool done = outcome.succeeded() || cut;
        if (!done || outcome.remark == FileRemark::no_car_data) return;
        const bool whole = direction_ == Transfer::load ? outcome.remark == FileRemark::none : !cut;
        files_.push_back({path_of(name), whole ? parts_in(name) : CarParts()});
    }
    void note(const CarDocument& before, const std::string& name) const {
        if (files_.empty()) return;
        direction_ == Transfer::load ? note_load(before, name, files_) : note_save(name, files_);
    }

private:
    Transfer direction_;
    std::vector<CarFileOnDisk> files_;
};

// The car as it was before a load.
class EarlierCar {
public:
    const CarDocument& document() const { return document_; }
    void put_back() const {
        DOCUMENT = document_;
        CURPJ = paint_job_;
        UPDATEDASHITEMS();
    }

private:
    const CarDocument document_ = DOCUMENT;
    const std::uint8_t paint_job_ = CURPJ;
};

// How a car's four files ended, in their order.
struct CarOutcome {
    FileOutcome last;
    std::string first_failure, why, remark;

    void add(FileOutcome outcome, const std::string& file) {
        if (!outcome.succeeded() && first_failure.empty()) {
            first_failure = part_failure_text(outcome, file);
            why = unsaid(outcome);
        }
        if (remark.empty()) remark = unsaid(outcome);
        last = std::move(outcome);
    }
};

// Of a set with a file that cannot be read nothing is kept: saved, a mixture of two cars would take the file's place.
CarOutcome load_car(const std::string& name, const std::string& identifier) {
    const EarlierCar before;
    Moved moved(Transfer::load);
    CarOutcome result;
    for (const CarFile& part : car_files) {
        const std::string file = car_file_name(part, identifier);
        result.add(load_part(file), file);
        moved.add(result.last, result.last.file);
        if (result.last.code != file_status::read_error) continue;
        before.put_back();
        return result;
    }
    moved.note(before.document(), name);
    return result;
}

// The four take their names together, so that no end of the program leaves a car of old and new files.
CarOutcome save_car(const std::string& name, const std::string& identifier) {
    std::vector<std::string> names;
    std::vector<EncodedFile> contents;
    for (const CarFile& part : car_files) {
        names.push_back(name_in_directory(car_file_name(part, identifier)).name);
        contents.push_back(part.content());
    }
    std::vector<FileToSave> files;
    for (std::size_t k = 0; k < names.size(); ++k)
        files.push_back({names[k], contents[k].bytes});
    const std::vector<SaveResult> saved = save_files(files);

    Moved moved(Transfer::save);
    CarOutcome result;
    for (std::size_t k = 0; k < names.size(); ++k) {
        result.add(report_save(names[k], saved[k], contents[k].cut), car_file_name(car_files[k], identifier));
        moved.add(result.last, names[k]);
    }
    moved.note(DOCUMENT, name);
    return result;
}

TransferReport transfer_car(Transfer direction, const std::string& name) {
    const std::string identifier = lower_case(name);
    const CarOutcome outcome = direction == Transfer::load ? load_car(name, identifier) : save_car(name, identifier);
    // ODDITY four-file-save-keeps-file (kept): a failed load names the identifier, a failed save the file.
    TransferReport result =
        report(direction, outcome.last, name, direction == Transfer::load ? name : outcome.last.file);
    result.first_failure = outcome.first_failure;
    result.note = outcome.why.empty() ? outcome.remark : outcome.why;
    return result;
}

TransferReport transfer_file(Transfer direction, const FileKind& kind, const std::string& name) {
    const EarlierCar before;
    const Handled handled = direction == Transfer::load ? load_kind(kind, name) : kind.save(name);
    Moved moved(direction);
    moved.add(handled.outcome, name);
    moved.note(before.document(), name);
    TransferReport result = report(direction, handled.outcome, handled.outcome.file, handled.outcome.file);
    if (!handled.note.empty()) result.note = handled.note;
    return result;
}

bool names_a_car(const std::string& name) { return name.find('.') == std::string::npos; }

// The files that a save of this name writes.
std::vector<std::string> targets_of(const std::string& name) {
    if (!names_a_car(name)) return {path_of(name)};
    std::vector<std::string> paths;
    for (const CarFile& part : car_files)
        paths.push_back(path_of(name_in_directory(car_file_name(part, lower_case(name))).name));
    return paths;
}

TransferReport run(Transfer direction, const std::string& name) {
    if (names_a_car(name)) return transfer_car(direction, name);
    return transfer_file(direction, *kind_of(name), name);
}

// Whoever saves over another car gets its files back.
TransferReport save_with_care(const std::string& name) {
    ReplacedFiles replaced(name, targets_of(name));
    TransferReport result = run(Transfer::save, name);
    const std::string message = replaced.settle();
    if (!message.empty()) result.note += (result.note.empty() ? "" : "; ") + message;
    return result;
}

// Of a name that stands for no file.
std::string why_nothing_is_done(Transfer direction, const std::string& name) {
    if (!name.empty()) return "A car's identifier has four characters";
    return std::string("Nothing to ") + (direction == Transfer::load ? "load" : "save") + ": the File field is empty";
}

} // namespace

bool stands_for_files(const std::string& name) {
    return name.find('.') != std::string::npos || utf8_count(name) == identifier_length;
}

TransferReport transfer(Transfer direction, const std::string& name) {
    FILE_ERNUM = file_status::nothing_done;
    if (!stands_for_files(name)) return {.note = why_nothing_is_done(direction, name)};
    if (!names_a_car(name)) {
        const FileKind* const kind = kind_of(name);
        if (!kind || (direction == Transfer::save && !kind->save)) return {.unknown_format = true};
    }
    return direction == Transfer::save ? save_with_care(name) : run(direction, name);
}

TransferReport report_unknown_format() {
    const FileOutcome outcome = report_file({"", file_status::unknown_format});
    FILE_FILE.clear();
    return {.text = failure_text(outcome, outcome.file), .failed = true};
}

std::string car_file_filter() {
    const std::string plain = ".res.vsh.3sh.obj.";
    return unpacker().empty() ? plain : plain + "p3s.pvs.pre.";
}
