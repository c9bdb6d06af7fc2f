#include "base/byte_reader.h"

#include <algorithm>
#include <bit>
#include <limits>

ByteReader::ByteReader(std::span<const std::byte> bytes, std::uint64_t position) : bytes_(bytes), position_(position) {}

void ByteReader::seek(std::uint64_t position) { position_ = position; }

void ByteReader::skip(std::uint64_t count) {
    const std::uint64_t room = std::numeric_limits<std::uint64_t>::max() - position_;
    position_ += std::min(count, room);
}

std::size_t ByteReader::remaining() const {
    return position_ >= bytes_.size() ? 0 : bytes_.size() - static_cast<std::size_t>(position_);
}

std::span<const std::byte> ByteReader::view(std::size_t count) {
    const std::size_t available = std::min(count, remaining());
    if (available < count) ran_out_ = true;
    if (available == 0) return {};
    const auto part = bytes_.subspan(static_cast<std::size_t>(position_), available);
    position_ += available;
    return part;
}

namespace {
// The little-endian value of all bytes of `part`.
std::uint64_t little_endian(std::span<const std::byte> part) {
    std::uint64_t value = 0;
    for (std::size_t i = part.size(); i > 0; --i)
        value = value << 8 | std::to_integer<std::uint64_t>(part[i - 1]);
    return value;
}
} // namespace

bool ByteReader::u8(std::uint8_t& value) {
    const auto part = view(sizeof value);
    if (part.size() < sizeof value) return false;
    value = std::to_integer<std::uint8_t>(part[0]);
    return true;
}

bool ByteReader::u16(std::uint16_t& value) {
    const auto part = view(sizeof value);
    if (part.size() < sizeof value) return false;
    value = static_cast<std::uint16_t>(little_endian(part));
    return true;
}

bool ByteReader::i16(std::int16_t& value) {
    std::uint16_t bits = 0;
    if (!u16(bits)) return false;
    value = static_cast<std::int16_t>(bits);
    return true;
}

bool ByteReader::u32(std::uint32_t& value) {
    const auto part = view(sizeof value);
    if (part.size() < sizeof value) return false;
    value = static_cast<std::uint32_t>(little_endian(part));
    return true;
}

bool ByteReader::f64(double& value) {
    const auto part = view(sizeof value);
    if (part.size() < sizeof value) return false;
    value = std::bit_cast<double>(little_endian(part));
    return true;
}

std::size_t ByteReader::bytes(std::span<std::byte> receiver) {
    const auto part = view(receiver.size());
    std::ranges::copy(part, receiver.begin());
    return part.size();
}

std::size_t ByteReader::bytes(std::span<std::uint8_t> receiver) { return bytes(std::as_writable_bytes(receiver)); }

std::string ByteReader::text(std::size_t count) {
    const auto part = view(count);
    return {reinterpret_cast<const char*>(part.data()), part.size()};
}

std::string_view ByteReader::text_view() {
    const auto part = view(remaining());
    return {reinterpret_cast<const char*>(part.data()), part.size()};
}

std::string ByteReader::text_up_to_zero(std::size_t count) {
    std::string result = text(count);
    result.resize(std::min(result.find('\0'), result.size()));
    return result;
}
