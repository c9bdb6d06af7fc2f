// The checks of the fuzz targets: what must hold for any input at all.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

inline void expect(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

// Whether the input is one whose name begins with "good_": nothing is wrong with it, and a reader has to say so.
inline bool input_is_good = false;

inline std::span<const std::byte> input_bytes(const std::uint8_t* data, std::size_t size) {
    return std::as_bytes(std::span(data, size));
}
