// Table<T, First, Last>: a fixed-size table whose first index is not zero by accident. The car's tables are numbered
// from 1, some carry an entry 0 with a meaning of its own; the index of every access is checked, in every build. A
// wrong one ends the program with a line that names it, after what set_rescue() names had its chance.
#pragma once

#include <array>
#include <cstddef>

// Called once before a wrong index ends the program, to save what a person has made; null is none.
void set_rescue(void (*rescue)());
[[noreturn]] void table_index_out_of_range(long index, long first, long last);

template <typename T, int First, int Last>
class Table {
public:
    static constexpr int first_index = First;
    static constexpr int last_index = Last;

    T& operator[](long index) { return entries_[checked(index)]; }
    const T& operator[](long index) const { return entries_[checked(index)]; }

    bool operator==(const Table&) const = default;

    auto begin() { return entries_.begin(); }
    auto end() { return entries_.end(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

private:
    static std::size_t checked(long index) {
        if (index < First || index > Last) table_index_out_of_range(index, First, Last);
        return static_cast<std::size_t>(index - First);
    }

    std::array<T, static_cast<std::size_t>(Last - First + 1)> entries_{};
};

// A table numbered 1 .. N.
template <typename T, int N>
using OneBased = Table<T, 1, N>;
