#include "base/byte_writer.h"

#include <array>
#include <bit>

namespace {
void append_little_endian(Bytes& bytes, std::uint64_t value, int width) {
    std::array<std::byte, sizeof value> parts{};
    for (std::size_t i = 0; i < parts.size(); ++i)
        parts[i] = static_cast<std::byte>(value >> (8 * i) & 0xFF);
    bytes.insert(bytes.end(), parts.begin(), parts.begin() + width);
}
} // namespace

void ByteWriter::u8(std::uint8_t value) { append_little_endian(bytes_, value, 1); }
void ByteWriter::u16(std::uint16_t value) { append_little_endian(bytes_, value, 2); }
void ByteWriter::u32(std::uint32_t value) { append_little_endian(bytes_, value, 4); }
void ByteWriter::f64(double value) { append_little_endian(bytes_, std::bit_cast<std::uint64_t>(value), 8); }

void ByteWriter::bytes(std::span<const std::byte> run) { bytes_.insert(bytes_.end(), run.begin(), run.end()); }
void ByteWriter::bytes(std::span<const std::uint8_t> run) { bytes(std::as_bytes(run)); }
void ByteWriter::text(std::string_view run) { bytes(std::as_bytes(std::span(run))); }
void ByteWriter::zeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }

void ByteWriter::u32_at(std::size_t position, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes_.at(position + i) = static_cast<std::byte>(value >> (8 * i) & 0xFF);
}
