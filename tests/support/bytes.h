// File bytes built by hand.
#pragma once

#include "base/byte_writer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

inline Bytes bytes_of(std::string_view text) {
    const auto run = std::as_bytes(std::span(text));
    return Bytes(run.begin(), run.end());
}

inline Bytes byte_list(std::initializer_list<int> values) {
    ByteWriter writer;
    for (const int value : values)
        writer.u8(static_cast<std::uint8_t>(value));
    return writer.take();
}

inline Bytes joined(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

// Bytes that differ from their neighbours.
inline Bytes counting_bytes(std::size_t count, unsigned first = 1) {
    ByteWriter writer;
    for (std::size_t i = 0; i < count; ++i)
        writer.u8(static_cast<std::uint8_t>(first + i * 7));
    return writer.take();
}

inline Bytes first_bytes(const Bytes& bytes, std::size_t count) {
    return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(count, bytes.size())));
}
inline Bytes last_bytes(const Bytes& bytes, std::size_t count) {
    return Bytes(bytes.end() - static_cast<std::ptrdiff_t>(std::min(count, bytes.size())), bytes.end());
}
inline Bytes bytes_between(const Bytes& bytes, std::size_t from, std::size_t count) {
    return first_bytes(last_bytes(bytes, bytes.size() - std::min(from, bytes.size())), count);
}

inline void put_u16(Bytes& bytes, std::size_t at, unsigned value) {
    bytes.at(at) = static_cast<std::byte>(value & 0xFF);
    bytes.at(at + 1) = static_cast<std::byte>(value >> 8 & 0xFF);
}
inline void put_u32(Bytes& bytes, std::size_t at, std::uint32_t value) {
    put_u16(bytes, at, value & 0xFFFF);
    put_u16(bytes, at + 2, value >> 16);
}

inline int byte_at(const Bytes& bytes, std::size_t at) { return std::to_integer<int>(bytes.at(at)); }
