// Builds the bytes of a file, little-endian, at the end or over what is already there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

using Bytes = std::vector<std::byte>;

class ByteWriter {
public:
    // Room for so many bytes more, so that a large file is not copied while it grows.
    void expect(std::size_t count) { bytes_.reserve(bytes_.size() + count); }

    std::size_t position() const { return bytes_.size(); }

    void u8(std::uint8_t value);
    void u16(std::uint16_t value);
    void u32(std::uint32_t value);
    void f64(double value);
    void bytes(std::span<const std::byte> run);
    void bytes(std::span<const std::uint8_t> run);
    void text(std::string_view run);
    void zeros(std::size_t count);

    // Overwrites four bytes that were written before.
    void u32_at(std::size_t position, std::uint32_t value);

    const Bytes& written() const { return bytes_; }
    Bytes take() { return std::move(bytes_); }

private:
    Bytes bytes_;
};
