#include "base/byte_reader.h"

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <limits>

TEST(ByteReader, ReadsEveryWidthLittleEndian) {
    const Bytes bytes = byte_list({0xFE, 0x34, 0x12, 0xFE, 0xFF, 0x78, 0x56, 0x34, 0x92, 0, 0, 0, 0, 0, 0, 0xF8, 0xBF});
    ByteReader reader(bytes);
    std::uint8_t byte = 0;
    std::uint16_t word = 0;
    std::int16_t signed_word = 0;
    std::uint32_t double_word = 0;
    double number = 0;
    EXPECT_TRUE(reader.u8(byte) && reader.u16(word) && reader.i16(signed_word) && reader.u32(double_word) &&
                reader.f64(number));
    EXPECT_EQ(byte, 0xFE);
    EXPECT_EQ(word, 0x1234);
    EXPECT_EQ(signed_word, -2);
    EXPECT_EQ(double_word, 0x92345678U);
    EXPECT_EQ(number, -1.5);
    EXPECT_EQ(reader.remaining(), 0U);
    EXPECT_FALSE(reader.ran_out());
}

TEST(ByteReader, ReadThatDoesNotFitLeavesTheReceiverMovesToTheEndAndIsRemembered) {
    const Bytes bytes = byte_list({1, 2, 3});
    std::uint32_t value = 77;
    ByteReader reader(bytes);
    EXPECT_FALSE(reader.u32(value));
    EXPECT_EQ(value, 77U);
    EXPECT_EQ(reader.position(), 3U);
    EXPECT_TRUE(reader.ran_out());

    std::uint8_t byte = 55;
    EXPECT_FALSE(reader.u8(byte));
    EXPECT_EQ(byte, 55);
}

TEST(ByteReader, EveryWidthRefusesOneByteTooFew) {
    const Bytes bytes(8);
    std::uint8_t u8 = 1;
    std::uint16_t u16 = 1;
    std::int16_t i16 = 1;
    std::uint32_t u32 = 1;
    double f64 = 1;
    EXPECT_FALSE(ByteReader(bytes, 8).u8(u8));
    EXPECT_FALSE(ByteReader(bytes, 7).u16(u16));
    EXPECT_FALSE(ByteReader(bytes, 7).i16(i16));
    EXPECT_FALSE(ByteReader(bytes, 5).u32(u32));
    EXPECT_FALSE(ByteReader(bytes, 1).f64(f64));
    EXPECT_EQ(u8 + u16 + i16, 3);
    EXPECT_EQ(u32, 1U);
    EXPECT_EQ(f64, 1.0);
}

TEST(ByteReader, PositionsPastTheEndReadNothing) {
    const Bytes bytes = byte_list({1, 2, 3});
    for (const std::uint64_t position :
         {std::uint64_t{3}, std::uint64_t{4}, std::uint64_t{1} << 32, std::numeric_limits<std::uint64_t>::max()}) {
        ByteReader reader(bytes, position);
        std::uint8_t value = 9;
        EXPECT_EQ(reader.remaining(), 0U);
        EXPECT_FALSE(reader.u8(value));
        EXPECT_EQ(value, 9);
        EXPECT_EQ(reader.text(5), "");
        EXPECT_TRUE(reader.view(1).empty());
    }
}

TEST(ByteReader, SkippingNeverWrapsRound) {
    const Bytes bytes = byte_list({1, 2, 3});
    ByteReader reader(bytes, 2);
    reader.skip(std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(reader.position(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(reader.remaining(), 0U);
}

TEST(ByteReader, SeekingBackReadsAgain) {
    const Bytes bytes = byte_list({1, 2, 3});
    ByteReader reader(bytes, 100);
    reader.seek(1);
    std::uint8_t value = 0;
    EXPECT_TRUE(reader.u8(value));
    EXPECT_EQ(value, 2);
}

TEST(ByteReader, RunsOfBytesTakeWhatExists) {
    const Bytes bytes = byte_list({1, 2, 3});
    std::array<std::uint8_t, 5> receiver = {9, 9, 9, 9, 9};
    ByteReader reader(bytes, 1);
    EXPECT_EQ(reader.bytes(receiver), 2U);
    EXPECT_EQ(receiver, (std::array<std::uint8_t, 5>{2, 3, 9, 9, 9}));
    EXPECT_TRUE(reader.ran_out());
}

TEST(ByteReader, TextsTakeWhatExists) {
    const Bytes bytes = bytes_of("short");
    EXPECT_EQ(ByteReader(bytes).text(255), "short");
    EXPECT_EQ(ByteReader(bytes).text(3), "sho");
    EXPECT_EQ(ByteReader(bytes).text_up_to_zero(255), "short");
}

TEST(ByteReader, TextUpToZeroIsCutButMovesOverAll) {
    const Bytes bytes = joined({bytes_of("ab"), byte_list({0}), bytes_of("cd"), byte_list({0})});
    ByteReader reader(bytes);
    EXPECT_EQ(reader.text_up_to_zero(5), "ab");
    EXPECT_EQ(reader.position(), 5U);
    EXPECT_EQ(ByteReader(bytes, 2).text_up_to_zero(4), "");
}

TEST(ByteReader, NoBytesAtAll) {
    ByteReader reader({});
    std::uint8_t value = 3;
    EXPECT_EQ(reader.size(), 0U);
    EXPECT_FALSE(reader.u8(value));
    EXPECT_EQ(reader.text_up_to_zero(10), "");
    EXPECT_EQ(value, 3);
}

TEST(ByteReader, TextViewIsWhatRemains) {
    const Bytes bytes = bytes_of("ab\0c");
    ByteReader reader(bytes, 1);
    EXPECT_EQ(reader.text_view(), "b");
    EXPECT_FALSE(reader.ran_out());
    EXPECT_EQ(reader.text_view(), "");
    EXPECT_EQ(ByteReader({}).text_view(), "");
}

TEST(ByteReader, PositionPastTheEndStaysWhereItIs) {
    ByteReader reader({}, 7);
    std::uint8_t value = 5;
    EXPECT_FALSE(reader.u8(value));
    EXPECT_EQ(value, 5);
    EXPECT_EQ(reader.position(), 7U);
}
