#include "CompanionTest.h"

#include <algorithm>

namespace {

using testkit::Bytes;
using testkit::hexBytes;
using testkit::ParameterRecord;

using ParameterValueTest = CompanionTest;

struct Limits
{
    std::uint8_t datatype;
    const char* lowestBytes;
    const char* highestBytes;
    const char* lowest;
    const char* highest;
};

const std::vector<Limits> allLimits{
    {1, "00", "ff", "0", "255"},
    {2, "0000", "ffff", "0", "65535"},
    {3, "80", "7f", "-128", "127"},
    {4, "8000", "7fff", "-32768", "32767"},
    {5, "00", "ff", "0", "255"},
    {6, "00000000", "ffffffff", "0", "4294967295"},
    {7, "80000000", "7fffffff", "-2147483648", "2147483647"},
    {8, "0000000000000000", "ffffffffffffffff", "0", "18446744073709551615"},
    {9, "8000000000000000", "7fffffffffffffff", "-9223372036854775808", "9223372036854775807"},
};

ParameterRecord recordWith(std::uint8_t datatype)
{
    ParameterRecord record;
    record.datatype = datatype;
    return record;
}

TEST_F(ParameterValueTest, everyDatatypeIsReadAtBothLimits)
{
    for (const Limits& limits : allLimits) {
        const ParameterRecord record = recordWith(limits.datatype);
        EXPECT_EQ(read(record, hexBytes(limits.lowestBytes)),
                  (Texts{limits.lowest, limits.lowest, limits.highest}));
        EXPECT_EQ(read(record, hexBytes(limits.highestBytes)),
                  (Texts{limits.highest, limits.lowest, limits.highest}));
    }
}

TEST_F(ParameterValueTest, everyDatatypeIsWrittenAtBothLimits)
{
    for (const Limits& limits : allLimits) {
        const ParameterRecord record = recordWith(limits.datatype);
        const Bytes lowest = hexBytes(limits.lowestBytes);
        const Bytes highest = hexBytes(limits.highestBytes);
        EXPECT_EQ(imageAfter(record, highest, limits.lowest), lowest);
        EXPECT_EQ(imageAfter(record, lowest, limits.highest), highest);
    }
}

TEST_F(ParameterValueTest, mostSignificantByteComesFirst)
{
    const Bytes block = hexBytes("0102030405060708");
    EXPECT_EQ(read(recordWith(2), block)[0], "258");
    EXPECT_EQ(read(recordWith(6), block)[0], "16909060");
    EXPECT_EQ(read(recordWith(8), block)[0], "72623859790382856");
}

TEST_F(ParameterValueTest, positionCountsFromFour)
{
    ParameterRecord record = recordWith(2);
    record.position = 6;
    EXPECT_EQ(read(record, hexBytes("11220102"))[0], "258");
}

TEST_F(ParameterValueTest, positionWrapsInEightBits)
{
    ParameterRecord record = recordWith(1);
    record.position = 2; // byte offset 254
    Bytes block(255, 0);
    block[254] = 77;
    EXPECT_EQ(read(record, block)[0], "77");
    block.resize(254);
    EXPECT_EQ(read(record, block)[0], "");
}

TEST_F(ParameterValueTest, isAbsentOneByteBeyondTheBlock)
{
    for (const Limits& limits : allLimits) {
        Bytes block = hexBytes(limits.highestBytes);
        block.pop_back();
        const mxfileext::ParameterValue_t value = decode(recordWith(limits.datatype), block);
        EXPECT_FALSE(value.present);
        EXPECT_EQ(value.datatype, limits.datatype);
        EXPECT_EQ(textsOf(value), (Texts{"", limits.lowest, limits.highest}));
    }
}

TEST_F(ParameterValueTest, isAbsentWithoutBlock)
{
    tellSize(4);
    mxfileext::ParameterValue_t value;
    mxfileext::getParameterValue(recordWith(1).bytes().data(), nullptr, &value);
    EXPECT_FALSE(value.present);
    EXPECT_EQ(textsOf(value), (Texts{"", "0", "255"}));
}

TEST_F(ParameterValueTest, slotsAreSignExtended)
{
    ParameterRecord record = recordWith(4);
    record.minimum = 0x000000000000FFFE; // -2, only its own bytes stated
    record.maximum = 0xFFFFFFFFFFFFFFFF; // -1
    const mxfileext::ParameterValue_t value = decode(record, hexBytes("fffd"));
    const auto slot = [](const unsigned char* bytes) { return Bytes(bytes, bytes + 8); };
    EXPECT_TRUE(value.present);
    EXPECT_EQ(slot(value.value), hexBytes("fffffffffffffffd"));
    EXPECT_EQ(slot(value.minimum), hexBytes("fffffffffffffffe"));
    EXPECT_EQ(slot(value.maximum), hexBytes("ffffffffffffffff"));
    EXPECT_EQ(textsOf(value), (Texts{"-3", "-2", "-1"}));
}

TEST_F(ParameterValueTest, unsignedSlotsAreFilledWithZeros)
{
    const mxfileext::ParameterValue_t value = decode(recordWith(2), hexBytes("fffd"));
    EXPECT_EQ(Bytes(value.value, value.value + 8), hexBytes("000000000000fffd"));
    EXPECT_EQ(Bytes(value.maximum, value.maximum + 8), hexBytes("000000000000ffff"));
}

TEST_F(ParameterValueTest, statedRangeReplacesTheNaturalOne)
{
    ParameterRecord record = recordWith(6);
    record.minimum = 10;
    record.maximum = 100000;
    EXPECT_EQ(read(record, hexBytes("00000005")), (Texts{"5", "10", "100000"}));
}

TEST_F(ParameterValueTest, oneBoundOtherThanZeroStatesARange)
{
    ParameterRecord record = recordWith(1);
    record.maximum = 100;
    EXPECT_EQ(read(record, {7}), (Texts{"7", "0", "100"}));
    record.minimum = 3;
    record.maximum = 0;
    EXPECT_EQ(read(record, {7}), (Texts{"7", "3", "0"}));
}

TEST_F(ParameterValueTest, statedRangeTakesTheWidthOfTheDatatype)
{
    ParameterRecord record = recordWith(3);
    record.minimum = 0x80;
    record.maximum = 0x1234567F; // only its last byte is a bound
    EXPECT_EQ(read(record, {0}), (Texts{"0", "-128", "127"}));
    record = recordWith(9);
    record.minimum = 0x8000000000000000;
    record.maximum = 0x0102030405060708;
    EXPECT_EQ(read(record, Bytes(8, 0)), (Texts{"0", "-9223372036854775808", "72623859790382856"}));
}

TEST_F(ParameterValueTest, invalidDatatypeGivesNothing)
{
    for (const unsigned datatype : {0U, 10U, 128U, 255U}) {
        ParameterRecord record = recordWith(static_cast<std::uint8_t>(datatype));
        record.minimum = 1;
        record.maximum = 2;
        const mxfileext::ParameterValue_t value = decode(record, Bytes(16, 0x55));
        EXPECT_FALSE(value.present);
        EXPECT_EQ(value.datatype, 0);
        EXPECT_EQ(textsOf(value), (Texts{"", "", ""}));
    }
}

TEST_F(ParameterValueTest, textsFollowTheStructureAlone)
{
    mxfileext::ParameterValue_t value{4, true, {}, {}, {}};
    value.value[6] = 0xFF;
    value.value[7] = 0x38;
    value.maximum[6] = 0x01;
    EXPECT_EQ(textsOf(value), (Texts{"-200", "0", "256"}));
    value.datatype = 12;
    EXPECT_EQ(textsOf(value), (Texts{"", "", ""}));
}

} // namespace
