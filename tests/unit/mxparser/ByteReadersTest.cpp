#include "MxBuffer.h"

#include "devices/parser/mx/ByteReaders.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>

namespace {

using namespace devices::parser::mx;
using testkit::Bytes;
using testkit::hexBytes;

// Reads from an allocation that holds these bytes and not one more.
template <class Reader>
auto readExactly(Reader reader, const Bytes& bytes)
{
    const auto exact = std::make_unique<std::uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), exact.get());
    return reader(exact.get());
}

TEST(ByteReaders, U8AndS8)
{
    EXPECT_EQ(readExactly(readU8, hexBytes("80")), 128);
    EXPECT_EQ(readExactly(readS8, hexBytes("80")), -128);
    EXPECT_EQ(readExactly(readS8, hexBytes("7f")), 127);
    EXPECT_EQ(readExactly(readS8, hexBytes("ff")), -1);
}

TEST(ByteReaders, U16IsMostSignificantFirst)
{
    EXPECT_EQ(readExactly(readU16BE, hexBytes("20d3")), 0x20D3);
    EXPECT_EQ(readExactly(readU16BE, hexBytes("0100")), 256);
}

TEST(ByteReaders, SameBytesAreMinusTwoSignedAnd65534Unsigned)
{
    EXPECT_EQ(readExactly(readS16BE, hexBytes("fffe")), -2);
    EXPECT_EQ(readExactly(readU16BE, hexBytes("fffe")), 65534);
}

TEST(ByteReaders, S16Bounds)
{
    EXPECT_EQ(readExactly(readS16BE, hexBytes("8000")), -32768);
    EXPECT_EQ(readExactly(readS16BE, hexBytes("7fff")), 32767);
}

TEST(ByteReaders, U32AndS32)
{
    EXPECT_EQ(readExactly(readU32BE, hexBytes("01020304")), 16909060U);
    EXPECT_EQ(readExactly(readU32BE, hexBytes("fffffffe")), 4294967294U);
    EXPECT_EQ(readExactly(readS32BE, hexBytes("fffffffe")), -2);
    EXPECT_EQ(readExactly(readS32BE, hexBytes("80000000")),
              std::numeric_limits<std::int32_t>::min());
}

TEST(ByteReaders, U64AndS64)
{
    EXPECT_EQ(readExactly(readU64BE, hexBytes("0102030405060708")), 72623859790382856U);
    EXPECT_EQ(readExactly(readS64BE, hexBytes("fffffffffffffffe")), -2);
    EXPECT_EQ(readExactly(readS64BE, hexBytes("7fffffffffffffff")),
              std::numeric_limits<std::int64_t>::max());
}

TEST(ByteReaders, MostNegativeS64)
{
    EXPECT_EQ(readExactly(readS64BE, hexBytes("8000000000000000")),
              std::numeric_limits<std::int64_t>::min());
}

TEST(ByteReaders, TakeUnalignedPointers)
{
    alignas(8) const std::uint8_t bytes[] = {0xEE, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08};
    EXPECT_EQ(readU16BE(bytes + 1), 0x0102);
    EXPECT_EQ(readU32BE(bytes + 1), 0x01020304U);
    EXPECT_EQ(readU64BE(bytes + 1), 0x0102030405060708U);
    EXPECT_EQ(readS16BE(bytes + 3), 0x0304);
    EXPECT_EQ(readS32BE(bytes + 5), 0x05060708);
    EXPECT_EQ(readS64BE(bytes + 1), 0x0102030405060708);
}

} // namespace
