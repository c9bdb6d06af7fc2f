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

inline std::span<const std::byte> input_bytes(const std::uint8_t* data, std::size_t size) {
    return std::as_bytes(std::span(data, size));
}
