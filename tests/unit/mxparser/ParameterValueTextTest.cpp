#include "MxBuffer.h"

#include "devices/parser/mx/ByteReaders.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using devices::parser::mx::kv38ParameterValueToString;
using devices::parser::mx::MxParameterDatatype;

std::string valueText(const std::string& slot, MxParameterDatatype type)
{
    return kv38ParameterValueToString(testkit::hexBytes(slot).data(), type);
}

TEST(ParameterDatatype, NumbersAreThoseOfTheRecords)
{
    EXPECT_EQ(static_cast<int>(MxParameterDatatype::UInt8), 1);
    EXPECT_EQ(static_cast<int>(MxParameterDatatype::UInt16), 2);
    EXPECT_EQ(static_cast<int>(MxParameterDatatype::SInt8), 3);
    EXPECT_EQ(static_cast<int>(MxParameterDatatype::SInt16), 4);
    EXPECT_EQ(static_cast<int>(MxParameterDatatype::Byte), 5);
    EXPECT_EQ(static_cast<int>(MxParameterDatatype::UInt32), 6);
    EXPECT_EQ(static_cast<int>(MxParameterDatatype::SInt32), 7);
    EXPECT_EQ(static_cast<int>(MxParameterDatatype::UInt64), 8);
    EXPECT_EQ(static_cast<int>(MxParameterDatatype::SInt64), 9);
}

TEST(ParameterValueText, EightBitTypesReadTheLastByte)
{
    const std::string slot = "01020304050607ff";
    EXPECT_EQ(valueText(slot, MxParameterDatatype::UInt8), "255");
    EXPECT_EQ(valueText(slot, MxParameterDatatype::Byte), "255");
    EXPECT_EQ(valueText(slot, MxParameterDatatype::SInt8), "-1");
}

TEST(ParameterValueText, SInt8IsANumberNeverACharacter)
{
    EXPECT_EQ(valueText("0000000000000041", MxParameterDatatype::SInt8), "65");
    EXPECT_EQ(valueText("0000000000000041", MxParameterDatatype::UInt8), "65");
}

TEST(ParameterValueText, SixteenBitTypesReadTheLastTwoBytes)
{
    const std::string slot = "010203040506fffe";
    EXPECT_EQ(valueText(slot, MxParameterDatatype::UInt16), "65534");
    EXPECT_EQ(valueText(slot, MxParameterDatatype::SInt16), "-2");
}

TEST(ParameterValueText, ThirtyTwoBitTypesReadTheLastFourBytes)
{
    const std::string slot = "01020304fffffffd";
    EXPECT_EQ(valueText(slot, MxParameterDatatype::UInt32), "4294967293");
    EXPECT_EQ(valueText(slot, MxParameterDatatype::SInt32), "-3");
}

TEST(ParameterValueText, SixtyFourBitTypesReadTheWholeSlot)
{
    EXPECT_EQ(valueText("ffffffffffffffff", MxParameterDatatype::UInt64), "18446744073709551615");
    EXPECT_EQ(valueText("ffffffffffffffff", MxParameterDatatype::SInt64), "-1");
    EXPECT_EQ(valueText("8000000000000000", MxParameterDatatype::SInt64), "-9223372036854775808");
    EXPECT_EQ(valueText("0000000000000000", MxParameterDatatype::UInt64), "0");
}

TEST(ParameterValueText, IsEmptyForDatatypes0And10)
{
    EXPECT_EQ(valueText("0000000000000001", MxParameterDatatype{0}), "");
    EXPECT_EQ(valueText("0000000000000001", MxParameterDatatype{10}), "");
    EXPECT_EQ(valueText("0000000000000001", MxParameterDatatype{255}), "");
}

TEST(ParameterValueText, ReadsNothingForAnUnknownDatatype)
{
    EXPECT_EQ(kv38ParameterValueToString(nullptr, MxParameterDatatype{10}), "");
}

} // namespace
