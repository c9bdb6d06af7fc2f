#include "base/byte_writer.h"

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <stdexcept>

TEST(ByteWriter, WritesEveryWidthLittleEndian) {
    ByteWriter writer;
    writer.u8(0xFE);
    writer.u16(0x1234);
    writer.u32(0x92345678);
    writer.f64(-1.5);
    writer.text("ab");
    writer.bytes(std::span<const std::byte>(byte_list({7, 8})));
    writer.zeros(2);
    EXPECT_EQ(writer.written(), byte_list({0xFE, 0x34, 0x12, 0x78, 0x56, 0x34, 0x92, 0, 0, 0, 0,
                                           0,    0,    0xF8, 0xBF, 'a',  'b',  7,    8, 0, 0}));
    EXPECT_EQ(writer.position(), 21U);
}

TEST(ByteWriter, OverwritesFourBytesThatWereWritten) {
    ByteWriter writer;
    writer.zeros(6);
    writer.u32_at(1, 0x04030201);
    EXPECT_EQ(writer.take(), byte_list({0, 1, 2, 3, 4, 0}));
}

TEST(ByteWriter, RefusesToOverwriteWhatWasNotWritten) {
    ByteWriter writer;
    writer.zeros(6);
    EXPECT_THROW(writer.u32_at(3, 1), std::out_of_range);
}
