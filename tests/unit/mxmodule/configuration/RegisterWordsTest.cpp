#include "configuration/RegisterWords.h"

#include "InvalidInput.h"

#include <gmock/gmock.h>
#include <text/Hexadecimal.h>

namespace {

using mxmodule::bytesOfRegisters;
using mxmodule::registerOfWord;
using testing::HasSubstr;

std::string hexOf(const std::string& text, std::size_t size)
{
    const auto bytes = bytesOfRegisters(text, size);
    return text::hexOfBytes(bytes, 0, bytes.size());
}

TEST(RegisterWords, areDecimalOrHexadecimal)
{
    EXPECT_EQ(registerOfWord("4500"), 0x1194);
    EXPECT_EQ(registerOfWord("0"), 0);
    EXPECT_EQ(registerOfWord("65535"), 0xFFFF);
    EXPECT_EQ(registerOfWord("-1"), 0xFFFF);
    EXPECT_EQ(registerOfWord("-32768"), 0x8000);
    EXPECT_EQ(registerOfWord("0x1194"), 0x1194);
    EXPECT_EQ(registerOfWord("0XfA"), 0xFA);
    EXPECT_EQ(registerOfWord("16#1194"), 0x1194);
    EXPECT_EQ(registerOfWord("10#4500"), 4500);
    for (const char* word : {"", "x", "65536", "-32769", "0x10000", "0x", "16#", "16#-1", "0x-1",
                             "11 94", "0250", "1.5", "12h", "10#x", "+5"}) {
        EXPECT_EQ(registerOfWord(word), std::nullopt) << word;
    }
}

TEST(RegisterWords, areSeparatedByBlanksCommasOrSemicolons)
{
    EXPECT_EQ(hexOf("4500 -1", 4), "11 94 ff ff");
    EXPECT_EQ(hexOf("4500,-1\r\n", 4), "11 94 ff ff");
    EXPECT_EQ(hexOf("0x1194; 250", 4), "11 94 00 fa");
}

TEST(RegisterWords, mayBeHexadecimalBytes)
{
    EXPECT_EQ(hexOf("11 94 ff ff", 4), "11 94 ff ff");
    EXPECT_EQ(hexOf("1194ffff", 4), "11 94 ff ff");
    EXPECT_EQ(hexOf("0x11 0x94", 2), "11 94");
    EXPECT_EQ(hexOf("0x11 0x94", 4), "00 11 00 94");
    EXPECT_EQ(hexOf("0250 0001", 4), "02 50 00 01"); // decimal numbers have no leading zeros
    EXPECT_EQ(hexOf("10 20", 2), "10 20");
    EXPECT_EQ(hexOf("10 20", 4), "00 0a 00 14");
}

TEST(RegisterWords, thatCanBeReadInTwoWaysAreRefused)
{
    try {
        bytesOfRegisters("4500 1000", 4);
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::InvalidInput& invalid) {
        EXPECT_STREQ(invalid.what(),
                     "It can be read in 2 ways: as hexadecimal bytes 45 00 10 00, or "
                     "as decimal registers with the bytes 11 94 03 e8");
        EXPECT_THAT(invalid.hint, HasSubstr("10#4500"));
    }
    EXPECT_EQ(hexOf("10#4500 1000", 4), "11 94 03 e8");
    EXPECT_EQ(hexOf("16#4500 16#1000", 4), "45 00 10 00");
    EXPECT_EQ(hexOf("0x4500 0x1000", 4), "45 00 10 00");
}

TEST(RegisterWords, otherWordsAreRefused)
{
    EXPECT_THROW(bytesOfRegisters("1 x", 4), mxmodule::InvalidInput);
    EXPECT_THROW(bytesOfRegisters("70000", 2), mxmodule::InvalidInput);
}

} // namespace
