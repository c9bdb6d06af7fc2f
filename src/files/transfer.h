// Loading and saving by name: which reader or writer a name stands for, the packed kinds, the set of four files that
// makes a car, and what the screen says about the outcome.
#pragma once

#include <string>

enum class Transfer { load, save };

struct TransferReport {
    bool unknown_format = false; // no reader or writer knows the name's extension; nothing was done, nothing is said
    std::string text{};          // status line; empty when nothing was done
    bool failed = false;         // the status line is an error
    std::string note{}; // what the status line does not say: why it failed, where a body went, why nothing was done
    std::string first_failure{}; // of a car's four files, the first that failed with its error; empty when none did
};

// Whether transfer() does anything with such a name: it has an extension, or is an identifier.
bool stands_for_files(const std::string& name);

// Does what the name asks for. Without a ".", a name of exactly four characters stands for the car's four files, in
// small letters or, where they are there only otherwise, as the directory spells them; any other name does nothing but
// say so. Texts are in UTF-8 where a file's name is.
// When one of the four is there but cannot be read, the whole car stays as it was before. Sets the file-status record.
TransferReport transfer(Transfer direction, const std::string& name);

// What there is to say about such a name, also in the file-status record.
TransferReport report_unknown_format();

// The files that the car list shows instead of cars: every kind that can be loaded, the packed ones only when an
// unpacker is configured.
std::string car_file_filter();
