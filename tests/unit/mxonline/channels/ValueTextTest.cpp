#include "channels/MadePlan.h"

#include "channels/ValueText.h"

#include <mxmodule/Finding.h>

#include <gtest/gtest.h>

namespace mxonline {

namespace {

using mxstation::Channel;

Channel channelOf(unsigned bits, bool isSigned = false)
{
    mxstation::Plan plan = madePlan(40, 0);
    Channel& channel = addField(plan, 80, bits);
    channel.isSigned = isSigned;
    channel.name = "Level";
    channel.moduleName = "Tank";
    return channel;
}

std::string shown(unsigned bits, bool isSigned, const ValueBits& value)
{
    const ChannelValue found = valueOf(channelOf(bits, isSigned), value);
    return found.text + (found.hex.empty() ? "" : " " + found.hex);
}

std::string reasonFor(const Channel& channel, const std::string& text)
{
    try {
        static_cast<void>(bitsOf(channel, text));
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Request);
        return failure.reason().text;
    }
    return "accepted";
}

TEST(ValueText, ShowsNumbersAndTheirBits)
{
    EXPECT_EQ(shown(1, false, {1}), "1");
    EXPECT_EQ(shown(3, false, {5}), "5 0x5");
    EXPECT_EQ(shown(8, false, {0xFF}), "255 0xff");
    EXPECT_EQ(shown(8, true, {0xFF}), "-1 0xff");
    EXPECT_EQ(shown(8, true, {0x80}), "-128 0x80");
    EXPECT_EQ(shown(16, true, {0xFF, 0x7F}), "32767 0x7fff");
    EXPECT_EQ(shown(32, true, {0, 0, 0, 0x80}), "-2147483648 0x80000000");
    EXPECT_EQ(shown(64, true, {0, 0, 0, 0, 0, 0, 0, 0x80}),
              "-9223372036854775808 0x8000000000000000");
    EXPECT_EQ(shown(64, false, ValueBits(8, 0xFF)), "18446744073709551615 0xffffffffffffffff");
}

TEST(ValueText, GivesSignedNumbersAsTwosComplement)
{
    EXPECT_EQ(valueOf(channelOf(16, true), {0xFE, 0xFF}).number, 0xFFFFFFFFFFFFFFFEU);
    EXPECT_EQ(valueOf(channelOf(16, false), {0xFE, 0xFF}).number, 0xFFFEU);
}

TEST(ValueText, ShowsMoreThan64BitsAsBytes)
{
    EXPECT_EQ(shown(65, false, {1, 2, 3, 4, 5, 6, 7, 0xAB, 1}), "01 02 03 04 05 06 07 ab 01");
    EXPECT_EQ(bitsOf(channelOf(65), "01 02 03 04 05 06 07 AB 01"),
              (ValueBits{1, 2, 3, 4, 5, 6, 7, 0xAB, 1}));
}

TEST(ValueText, TakesWordsForOneBit)
{
    for (const char* const text : {"1", "true", "TRUE", "on", "On"}) {
        EXPECT_EQ(bitsOf(channelOf(1), text), ValueBits{1}) << text;
    }
    for (const char* const text : {"0", "false", "off", "OFF"}) {
        EXPECT_EQ(bitsOf(channelOf(1), text), ValueBits{0}) << text;
    }
    EXPECT_EQ(reasonFor(channelOf(1), "2"),
              "channel \"Level\" of module 1 \"Tank\": found the value \"2\", expected 0 or 1");
    EXPECT_NE(reasonFor(channelOf(2), "on"), "accepted");
}

TEST(ValueText, TakesNumbersUpToTheLimits)
{
    EXPECT_EQ(bitsOf(channelOf(3), "7"), ValueBits{7});
    EXPECT_EQ(reasonFor(channelOf(3), "8"), "channel \"Level\" of module 1 \"Tank\": found the "
                                            "value \"8\", expected 0 to 7 (0x0 to 0x7)");
    EXPECT_EQ(bitsOf(channelOf(16, true), "-32768"), (ValueBits{0x00, 0x80}));
    EXPECT_EQ(bitsOf(channelOf(16, true), "32767"), (ValueBits{0xFF, 0x7F}));
    EXPECT_EQ(reasonFor(channelOf(16, true), "32768"),
              "channel \"Level\" of module 1 \"Tank\": found the value \"32768\", expected -32768 "
              "to 32767 (0x0000 to 0xffff)");
    EXPECT_NE(reasonFor(channelOf(16, true), "-32769"), "accepted");
    EXPECT_EQ(bitsOf(channelOf(64), "18446744073709551615"), ValueBits(8, 0xFF));
    EXPECT_NE(reasonFor(channelOf(64), "18446744073709551616"), "accepted");
    EXPECT_EQ(bitsOf(channelOf(64, true), "-9223372036854775808"),
              (ValueBits{0, 0, 0, 0, 0, 0, 0, 0x80}));
    EXPECT_NE(reasonFor(channelOf(64, true), "9223372036854775808"), "accepted");
}

TEST(ValueText, TakesTheBitsInHexadecimal)
{
    EXPECT_EQ(bitsOf(channelOf(16, true), "0xFFFF"), (ValueBits{0xFF, 0xFF}));
    EXPECT_EQ(bitsOf(channelOf(12), "0Xabc"), (ValueBits{0xBC, 0x0A}));
    EXPECT_NE(reasonFor(channelOf(12), "0x1000"), "accepted");
    EXPECT_NE(reasonFor(channelOf(12), "0x"), "accepted");
    EXPECT_NE(reasonFor(channelOf(12), "0x-1"), "accepted");
}

TEST(ValueText, RejectsWhatIsNoValue)
{
    for (const char* const text : {"", " 1", "1 ", "+1", "-1", "-0", "1.0", "1e2", "ten", "--1"}) {
        EXPECT_NE(reasonFor(channelOf(16), text), "accepted") << text;
    }
    for (const char* const text : {"", "-", "+1", "- 1", "1.5", "-0x1"}) {
        EXPECT_NE(reasonFor(channelOf(16, true), text), "accepted") << text;
    }
    EXPECT_EQ(reasonFor(channelOf(65), "00 00"),
              "channel \"Level\" of module 1 \"Tank\": found the value \"00 00\", expected 9 bytes "
              "as hexadecimal digits, the last at most 01");
    EXPECT_NE(reasonFor(channelOf(65), "00 00 00 00 00 00 00 00 02"), "accepted");
    EXPECT_EQ(acceptedValues(channelOf(72)), "9 bytes as hexadecimal digits");
}

} // namespace

} // namespace mxonline
