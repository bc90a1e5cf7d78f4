#include "Base64.h"

#include "MxBuffer.h"

#include <gtest/gtest.h>

namespace {

std::string encoded(const testkit::Bytes& bytes)
{
    return devices::parser::mx::base64(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

// The examples of the encoding's standard.
TEST(Base64, isPaddedToWholeQuartets)
{
    EXPECT_EQ(encoded({}), "");
    EXPECT_EQ(encoded(testkit::textBytes("f")), "Zg==");
    EXPECT_EQ(encoded(testkit::textBytes("fo")), "Zm8=");
    EXPECT_EQ(encoded(testkit::textBytes("foo")), "Zm9v");
    EXPECT_EQ(encoded(testkit::textBytes("foob")), "Zm9vYg==");
    EXPECT_EQ(encoded(testkit::textBytes("fooba")), "Zm9vYmE=");
    EXPECT_EQ(encoded(testkit::textBytes("foobar")), "Zm9vYmFy");
}

TEST(Base64, hasADigitForEverySixBits)
{
    // 00 10 83 10 51 87 ... : the numbers 0 to 63, six bits each.
    testkit::Bytes bytes;
    for (unsigned number = 0; number < 64; number += 4) {
        bytes.push_back(static_cast<std::uint8_t>(number << 2 | (number + 1) >> 4));
        bytes.push_back(static_cast<std::uint8_t>((number + 1) << 4 | (number + 2) >> 2));
        bytes.push_back(static_cast<std::uint8_t>((number + 2) << 6 | (number + 3)));
    }
    EXPECT_EQ(encoded(bytes), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

TEST(Base64, isOneLineHoweverLong)
{
    EXPECT_EQ(encoded(testkit::Bytes(3000, 0)), std::string(4000, 'A'));
}

} // namespace
