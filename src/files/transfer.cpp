#include "files/transfer.h"

#include "base/config.h"
#include "base/file_io.h"
#include "base/file_status.h"
#include "base/shell.h"
#include "base/text.h"
#include "base/utf8.h"
#include "files/directory.h"
#include "formats/bitmap_file.h"
#include "formats/obj_file.h"
#include "formats/parameter_file.h"
#include "formats/project_file.h"
#include "formats/shape_file.h"
#include "model/car.h"
#include "model/document.h"
#include "model/items.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace {

constexpr std::size_t identifier_length = 4;
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

struct CarFile {
    std::string_view prefix;
    std::string_view extension;
};
// Also the order in which a car is loaded and saved.
constexpr CarFile car_files[] = {{"car", ".res"}, {"st", ".3sh"}, {"stda", ".vsh"}, {"stdb", ".vsh"}};

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

// Loads or saves one of a car's files, by the name that the directory has it under.
FileOutcome transfer_part(Transfer direction, const std::string& file) {
    const FoundName found = name_in_directory(file);
    const FileKind& kind = *kind_of(file);
    if (direction == Transfer::save) return kind.save(found.name).outcome;
    if (!found.failure.empty()) return failed(found.name, file_status::read_error, found.failure).outcome;
    return kind.load(found.name).outcome;
}

// The car as it was before a load.
class EarlierCar {
public:
    void put_back() const {
        DOCUMENT = document_;
        CURPJ = paint_job_;
        UPDATEDASHITEMS();
    }

private:
    const CarDocument document_ = DOCUMENT;
    const std::uint8_t paint_job_ = CURPJ;
};

// Of a set with a file that cannot be read nothing is kept: saved, a mixture of two cars would take the file's place.
TransferReport transfer_car(Transfer direction, const std::string& name) {
    const std::string identifier = lower_case(name);
    const EarlierCar before;
    FileOutcome last;
    std::string first_failure, why, remark;
    for (const CarFile& part : car_files) {
        const std::string file = std::string(part.prefix) + identifier + std::string(part.extension);
        last = transfer_part(direction, file);
        if (!last.succeeded() && first_failure.empty()) {
            first_failure = part_failure_text(last, file);
            why = unsaid(last);
        }
        if (remark.empty()) remark = unsaid(last);
        if (last.code != file_status::read_error) continue;
        before.put_back();
        break;
    }
    // ODDITY four-file-save-keeps-file (kept): a failed load names the identifier, a failed save the file.
    TransferReport result = report(direction, last, name, direction == Transfer::load ? name : last.file);
    result.first_failure = first_failure;
    result.note = why.empty() ? remark : why;
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
    if (name.find('.') == std::string::npos) return transfer_car(direction, name);

    const FileKind* kind = kind_of(name);
    if (!kind || (direction == Transfer::save && !kind->save)) return {.unknown_format = true};
    const Handled handled = direction == Transfer::load ? load_kind(*kind, name) : kind->save(name);
    TransferReport result = report(direction, handled.outcome, handled.outcome.file, handled.outcome.file);
    if (!handled.note.empty()) result.note = handled.note;
    return result;
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
