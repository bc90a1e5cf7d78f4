#include "CompanionTest.h"

namespace {

using testkit::Bytes;
using testkit::hexBytes;
using testkit::join;
using testkit::textBytes;
using testkit::u16;

class UnitTextTest : public CompanionTest
{
protected:
    // The unit of a conversion that names the text `id`; the text table is `payload`.
    static std::string unit(const Bytes& payload, unsigned id)
    {
        forgetAll();
        giveTexts(payload);
        giveConversions({{1, plusOne, 0, id}});
        testkit::ParameterRecord record;
        record.conversionId = 1;
        return convert(record, {0}).unit;
    }
};

TEST_F(UnitTextTest, isFoundByIdentifier)
{
    const Bytes table =
        testkit::textTablePayload({{1, "mA"}, {0x0D0A, "V"}, {3, ""}, {65535, "s"}});
    EXPECT_EQ(unit(table, 1), "mA");
    EXPECT_EQ(unit(table, 0x0D0A), "V");
    EXPECT_EQ(unit(table, 3), "");
    EXPECT_EQ(unit(table, 65535), "s");
    EXPECT_EQ(unit(table, 2), "");
}

TEST_F(UnitTextTest, identifierZeroIsNone)
{
    EXPECT_EQ(unit(testkit::textTablePayload({{0, "V"}}), 0), "");
}

TEST_F(UnitTextTest, firstTextOfAnIdentifierHolds)
{
    EXPECT_EQ(unit(testkit::textTablePayload({{1, "V"}, {1, "A"}}), 1), "V");
    EXPECT_EQ(unit(testkit::textTablePayload({{1, ""}, {1, "A"}}), 1), "");
}

TEST_F(UnitTextTest, bytesStayAsTheyAre)
{
    EXPECT_EQ(unit(testkit::textTablePayload({{1, "\xB0\x43\x01\xFF"}}), 1), "\xB0\x43\x01\xFF");
}

TEST_F(UnitTextTest, nulEndsTheTextButNotTheRecord)
{
    const Bytes table =
        join({{0, 0}, u16(1), {'A', 0, 'B', 0x0D, 0x0A}, u16(2), {'V', 0x0D, 0x0A}});
    EXPECT_EQ(unit(table, 1), "A");
    EXPECT_EQ(unit(table, 2), "V");
}

TEST_F(UnitTextTest, bareLineFeedEndsASkippedText)
{
    const Bytes table = join({{0, 0}, u16(1), {'A', 'B', 0x0A}, u16(2), {'V', 0x0D, 0x0A}});
    EXPECT_EQ(unit(table, 2), "V");
}

TEST_F(UnitTextTest, lastTextNeedsNoLineEnd)
{
    EXPECT_EQ(unit(join({{0, 0}, u16(1), {'V', 0x0D}}), 1), "V");
    EXPECT_EQ(unit(join({{0, 0}, u16(1), {'V', 0x00}}), 1), "V");
}

TEST_F(UnitTextTest, textWithoutEndIsNone)
{
    // The checksum after the payload is zero; it does not end the text.
    EXPECT_EQ(unit(join({{0, 0}, u16(1), {'V'}}), 1), "");
    EXPECT_EQ(unit(join({{0, 0}, u16(1), {'A', 'B', 0x0A}}), 1), "");
}

TEST_F(UnitTextTest, damageHidesWhatFollows)
{
    // Text 2 has no line end: the table cannot be followed to any other.
    const Bytes table =
        join({{0, 0}, u16(1), {'A', 0x0D, 0x0A}, u16(2), {'V', 0}, u16(3), {'s', 0}});
    EXPECT_EQ(unit(table, 1), "A");
    EXPECT_EQ(unit(table, 2), "V");
    EXPECT_EQ(unit(table, 3), "");
}

TEST_F(UnitTextTest, tableOfEveryLengthGivesTheTextsThatAreWhole)
{
    const Bytes table = hexBytes("0002 0001 6d41 0d0a 0002 56 0d0a"); // 1: mA, 2: V
    for (std::size_t size = 0; size <= table.size(); ++size) {
        const Bytes cut(table.begin(), table.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(unit(cut, 1), size >= 7 ? "mA" : "") << size;
        EXPECT_EQ(unit(cut, 2), size >= 12 ? "V" : "") << size;
    }
}

TEST_F(UnitTextTest, everyDamagedByteIsSurvived)
{
    const Bytes table = testkit::textTablePayload({{1, "mA"}, {2, "V"}, {3, "s"}});
    for (std::size_t i = 0; i < table.size(); ++i) {
        for (const unsigned byte : {0x00U, 0x0AU, 0x0DU, 0x41U, 0xFFU}) {
            Bytes damaged = table;
            damaged[i] = static_cast<std::uint8_t>(byte);
            EXPECT_LT(unit(damaged, 3).size(), damaged.size());
        }
    }
}

// After bare line feeds the texts overlap: each runs on to the only terminator, at the end.
TEST_F(UnitTextTest, overlappingTextsAreFollowed)
{
    Bytes table{0, 0};
    for (unsigned id = 0; id < 4096; ++id) {
        table.push_back(static_cast<std::uint8_t>(0x40U | id >> 6));
        table.push_back(static_cast<std::uint8_t>(0x40U | (id & 0x3FU)));
        table.push_back('x');
        table.push_back('\n');
    }
    table = join({table, {1, 1}, textBytes("end"), {0x0D, 0x0A}});
    EXPECT_EQ(unit(table, 0x0101), "end");
    EXPECT_EQ(unit(table, 0x7F7F), "x\n\x01\x01"
                                   "end");
    EXPECT_EQ(unit(table, 0x4040).size(), 4096U * 4 - 2 + 2 + 3);
}

} // namespace
