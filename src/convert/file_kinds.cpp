#include "convert/file_kinds.h"

#include "base/text.h"
#include "convert/refusal.h"
#include "formats/car_files.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {

struct KindRow {
    FileKind kind;
    std::string_view name;  // after --to; the extension behind a "." where it has one
    std::string_view words; // for a person
    FileKind counterpart;
    bool has_extension = true;
};
constexpr KindRow kinds[] = {
    {FileKind::car_files, "files", "a car's four files", FileKind::project, false},
    {FileKind::project, "car", ".car", FileKind::car_files},
    {FileKind::bitmaps, "vsh", ".vsh", FileKind::folder},
    {FileKind::folder, "folder", "a folder of pictures", FileKind::bitmaps, false},
    {FileKind::shapes, "3sh", ".3sh", FileKind::body},
    {FileKind::body, "obj", ".obj", FileKind::unknown},
    {FileKind::parameters, "res", ".res", FileKind::text},
    {FileKind::text, "txt", ".txt", FileKind::parameters},
    {FileKind::targa, "tga", ".tga", FileKind::png},
    {FileKind::png, "png", ".png", FileKind::targa},
    {FileKind::bmp, "bmp", ".bmp", FileKind::png},
};

const KindRow* row_of(FileKind kind) {
    const auto row = std::ranges::find(kinds, kind, &KindRow::kind);
    return row == std::end(kinds) ? nullptr : &*row;
}

std::string_view last_element(std::string_view path) { return path.substr(path.rfind('/') + 1); }

// The name without folder and extension.
std::string_view stem_of(std::string_view source) {
    if (source.ends_with('/')) return last_element(source.substr(0, source.size() - 1));
    const std::string_view name = last_element(source);
    return name.substr(0, name.rfind('.'));
}

} // namespace

FileKind kind_of(std::string_view name) {
    if (name.ends_with('/')) return FileKind::folder;
    const std::string_view element = last_element(name);
    if (element.find('.') == std::string_view::npos)
        return element.size() == identifier_length ? FileKind::car_files : FileKind::unknown;
    const std::string extension = extension_of(element).substr(1);
    const auto row =
        std::ranges::find_if(kinds, [&](const KindRow& r) { return r.has_extension && r.name == extension; });
    return row == std::end(kinds) ? FileKind::unknown : row->kind;
}

std::string_view in_words(FileKind kind) {
    const KindRow* const row = row_of(kind);
    return row ? row->words : "an unknown kind of file";
}

std::optional<FileKind> kind_called(std::string_view name) {
    const auto row = std::ranges::find(kinds, lower_case(name), &KindRow::name);
    if (row == std::end(kinds)) return std::nullopt;
    return row->kind;
}

std::string kind_names() {
    std::string names;
    for (const KindRow& row : kinds)
        names += (names.empty() ? "" : " ") + std::string(row.name);
    return names;
}

FileKind counterpart_of(FileKind kind) {
    const KindRow* const row = row_of(kind);
    return row ? row->counterpart : FileKind::unknown;
}

std::string target_in_folder(std::string_view source, std::string_view folder, FileKind kind) {
    const std::string stem(stem_of(source));
    if (kind == FileKind::car_files && stem.size() != identifier_length)
        throw Refusal("a car's identifier has four characters, not \"" + stem + "\"");
    std::string name = std::string(folder) + stem;
    if (kind == FileKind::car_files) return name;
    return kind == FileKind::folder ? name + "/" : name + "." + std::string(row_of(kind)->name);
}
