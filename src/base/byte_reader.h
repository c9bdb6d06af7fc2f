// The one reader of file bytes, and with it the one bounds check of the program.
//
// Little-endian. A read that does not fit in what remains leaves its receiver as it was, moves to the end (a position
// past it stays where it is) and is remembered in ran_out(); text and byte runs take what exists.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

class ByteReader {
public:
    explicit ByteReader(std::span<const std::byte> bytes, std::uint64_t position = 0);

    // Any position may be asked for; one past the end reads nothing.
    void seek(std::uint64_t position);
    void skip(std::uint64_t count);
    std::uint64_t position() const { return position_; }
    std::uint64_t size() const { return bytes_.size(); }
    std::size_t remaining() const;
    bool ran_out() const { return ran_out_; }

    bool u8(std::uint8_t& value);
    bool u16(std::uint16_t& value);
    bool i16(std::int16_t& value);
    bool u32(std::uint32_t& value);
    bool f64(double& value);

    // Fills as much of `receiver` as there is; the rest stays as it was. Returns how many bytes were filled.
    std::size_t bytes(std::span<std::byte> receiver);
    std::size_t bytes(std::span<std::uint8_t> receiver);
    // A view of the next `count` bytes, or of as many as exist.
    std::span<const std::byte> view(std::size_t count);
    // The next `count` bytes, or as many as exist, as a text.
    std::string text(std::size_t count);
    // All bytes that remain, as a text that lives as long as they do.
    std::string_view text_view();
    // The next `count` bytes, or as many as exist, as a text cut before the first zero byte; the position still
    // moves over all of them.
    std::string text_up_to_zero(std::size_t count);

private:
    std::span<const std::byte> bytes_;
    std::uint64_t position_;
    bool ran_out_ = false;
};
