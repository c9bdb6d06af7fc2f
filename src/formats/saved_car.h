// What of the car lies in files: whether there is unsaved work, and why a save left some.
//
// The car is judged part by part, as its files hold it. A part is saved while it is as the file was that held it whole
// when it was loaded or saved last. Which files these are belongs to the load that the car came from
// (CarOrigin::load): whoever takes a load back is asked about the files of the one before again.
#pragma once

#include "model/document.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

enum class CarPart : std::uint8_t {
    parameters, // with the texts
    shapes,     // the three car models, the explosion models, the count of paint jobs
    auxiliary,  // both models
    dashboard,  // the bitmaps of the first file
    dots,       // and those of the second
    others      // bitmaps that neither file takes
};
constexpr std::size_t car_parts = 6;
using CarParts = std::bitset<car_parts>;

// What a file of this name holds whole, by its extension; nothing where no car's file has it. A project holds all.
CarParts parts_in(std::string_view file_name);

struct CarFileOnDisk {
    std::string path; // absolute, without links: one file has one
    CarParts parts;   // that it holds whole
};

// The car as it is now is nobody's work: all of it counts as saved, and it has no name.
void begin_with_saved_car();
// The car was loaded from these files as `name`; `before` is the car before. What was saved stays so wherever a file
// changed it. A file that holds no part (a body) changes the car like any other edit.
void note_load(const CarDocument& before, const std::string& name, std::span<const CarFileOnDisk> files);
// It was saved into these files as `name`.
void note_save(const std::string& name, std::span<const CarFileOnDisk> files);
// It was loaded from work that is in no file of a person's own.
void note_load_of_kept_work(const std::string& name);

struct SavedCar {
    std::string name; // as what it was loaded or saved last; "" for neither
    bool unsaved = false;
    std::string reason{}; // why saving its four files does not change that; "" when it does

    bool operator==(const SavedCar&) const = default;
};
// What there is to say about the car.
SavedCar saved_car();
// Another number whenever a load or a save may have changed the answer.
std::uint32_t saved_car_revision();

// Whether this run has loaded or saved the file.
bool is_known_file(const std::string& path);
