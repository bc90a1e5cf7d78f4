// Values in images, worked out by hand. The input image of a made plan begins at byte 10.
#include "channels/MadePlan.h"

#include "channels/ChannelBits.h"

#include <gtest/gtest.h>

#include <random>

namespace mxonline {

namespace {

using mxstation::ByteOrder;
using mxstation::Plan;

TEST(ChannelBits, HaveTheMostSignificantByteFirstOrLast)
{
    const ProcessImage image = {0x01, 0x02, 0x03, 0x04, 0x05};
    Plan plan = madePlan(5, 0, ByteOrder::Big);
    const auto& channel = addBytes(plan, 11, 4);
    EXPECT_EQ(bitsIn(plan, channel, image), (ValueBits{0x05, 0x04, 0x03, 0x02}));
    plan.layout.byteOrder = ByteOrder::Little;
    EXPECT_EQ(bitsIn(plan, channel, image), (ValueBits{0x02, 0x03, 0x04, 0x05}));
}

// Byte 11 is 1010'0110, byte 12 is 0000'1101: from bit 5 on 101, then 1101 above it.
TEST(ChannelBits, OfAFieldCrossBytesUpwardsInBothOrders)
{
    const ProcessImage image = {0xFF, 0xA6, 0x0D};
    for (const ByteOrder order : {ByteOrder::Big, ByteOrder::Little}) {
        Plan plan = madePlan(3, 0, order);
        EXPECT_EQ(bitsIn(plan, addField(plan, 11 * 8 + 5, 7), image), (ValueBits{0x6D}));
        EXPECT_EQ(bitsIn(plan, addField(plan, 11 * 8, 16), image), (ValueBits{0xA6, 0x0D}));
        EXPECT_EQ(bitsIn(plan, addField(plan, 11 * 8 + 3, 1), image), (ValueBits{0x00}));
        EXPECT_EQ(bitsIn(plan, addField(plan, 11 * 8 + 2, 1), image), (ValueBits{0x01}));
    }
}

TEST(ChannelBits, AreWrittenWithoutTheirNeighbours)
{
    Plan plan = madePlan(4, 0);
    ProcessImage image = {0xFF, 0xFF, 0xFF, 0xFF};
    putBits(plan, addField(plan, 10 * 8 + 6, 4), {0x09}, image); // 01 above 10 of 1001
    EXPECT_EQ(image, (ProcessImage{0x7F, 0xFE, 0xFF, 0xFF}));
    putBits(plan, addBytes(plan, 11, 2), {0x34, 0x12}, image);
    EXPECT_EQ(image, (ProcessImage{0x7F, 0x12, 0x34, 0xFF}));
    plan.layout.byteOrder = ByteOrder::Little;
    putBits(plan, addBytes(plan, 12, 2), {0x34, 0x12}, image);
    EXPECT_EQ(image, (ProcessImage{0x7F, 0x12, 0x34, 0x12}));
}

TEST(ChannelBits, OfOutputsCountFromTheOutputImage)
{
    Plan plan = madePlan(1, 2);
    auto& channel = addBytes(plan, 1, 1);
    channel.isInput = false;
    EXPECT_EQ(bitsIn(plan, channel, {0x11, 0x22}), (ValueBits{0x22}));
    EXPECT_EQ(bytesOf(plan, channel).offset, 1U);
}

TEST(ChannelBits, LieInTheseBytes)
{
    Plan plan = madePlan(4, 0);
    const auto ofCrossing = bytesOf(plan, addField(plan, 10 * 8 + 7, 10));
    EXPECT_EQ(ofCrossing.offset, 0U);
    EXPECT_EQ(ofCrossing.size, 3U); // bit 7 of byte 10, byte 11, bit 0 of byte 12
    const auto ofWord = bytesOf(plan, addBytes(plan, 12, 2));
    EXPECT_EQ(ofWord.offset, 2U);
    EXPECT_EQ(ofWord.size, 2U);
}

TEST(ChannelBits, AreMissingOutsideTheImageAndWithoutBits)
{
    Plan plan = madePlan(2, 0);
    EXPECT_EQ(reasonWithoutValue(plan, addBytes(plan, 10, 2)), std::nullopt);
    EXPECT_EQ(reasonWithoutValue(plan, addBytes(plan, 11, 2)), "is outside the input image");
    EXPECT_EQ(reasonWithoutValue(plan, addBytes(plan, 9, 1)), "is outside the input image");
    EXPECT_EQ(reasonWithoutValue(plan, addField(plan, 80, 0)), "has no bits");
}

// What is written is read again, and each bit outside the channel stays.
TEST(ChannelBits, OfAnyPlaceAreReadAsWritten)
{
    std::mt19937 random(3);
    const auto upTo = [&random](unsigned most) { return static_cast<unsigned>(random() % most); };
    for (int round = 0; round < 2000; ++round) {
        Plan plan = madePlan(40, 0, upTo(2) == 0 ? ByteOrder::Big : ByteOrder::Little);
        const bool isField = upTo(2) == 0;
        const unsigned bits = 1 + upTo(255);
        const auto& channel = isField ? addField(plan, 80 + upTo(40 * 8 - bits), bits)
                                      : addBytes(plan, 10 + upTo(32), 1U << upTo(4));
        ProcessImage before(40);
        for (auto& byte : before) {
            byte = static_cast<std::uint8_t>(random());
        }
        const ValueBits value = bitsIn(plan, channel, before);
        ProcessImage after(40, 0xFF);
        putBits(plan, channel, value, after);
        EXPECT_EQ(bitsIn(plan, channel, after), value);
        putBits(plan, channel, ValueBits(value.size(), 0xFF), after);
        EXPECT_EQ(after, ProcessImage(40, 0xFF));
    }
}

} // namespace

} // namespace mxonline
