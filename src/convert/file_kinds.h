// What a name stands for, told by the name alone, and what a file of each kind becomes when nobody says.
#pragma once

#include <optional>
#include <string>
#include <string_view>

enum class FileKind {
    unknown,
    car_files,  // "FOLDER/abcd": the four files of the car abcd
    project,    // .car
    parameters, // .res
    shapes,     // .3sh
    bitmaps,    // .vsh
    folder,     // "NAME/": a bitmap file as a folder of pictures
    body,       // .obj
    text,       // .txt: parameters
    targa,      // .tga
    png,        // .png
    bmp,        // .bmp
};

FileKind kind_of(std::string_view name);
// For a person: "a car's four files", ".car" ...
std::string_view in_words(FileKind kind);
// What the option --to calls it, in either case: "car", "files", "folder" ...
std::optional<FileKind> kind_called(std::string_view name);
// All these names, with blanks between them.
std::string kind_names();

// What a source becomes where only a folder is named: unknown when that has to be said.
FileKind counterpart_of(FileKind kind);
// The name of a source's counterpart of a kind in a folder, whose name ends in "/" or is empty. Refuses four files when
// the source's name has not four characters.
std::string target_in_folder(std::string_view source, std::string_view folder, FileKind kind);
