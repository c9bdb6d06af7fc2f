// Copies of files that a save is about to replace although this run has nothing to do with them: of another car, by
// mistake.
#pragma once

#include <span>
#include <string>
#include <vector>

constexpr int most_replaced_sets = 50; // the newest stay

// One save's copies, in a folder of their own.
class ReplacedFiles {
public:
    // Copies those of the files that are there and that this run has neither loaded nor saved. `name` is what is saved.
    ReplacedFiles(const std::string& name, std::span<const std::string> paths);

    // After the save: what a person should know; "" when no such file was there. Copies of files that the save did not
    // write go.
    std::string settle();

private:
    void forget() const;

    std::vector<std::string> files_;
    std::string folder_, message_;
};
