#include <mxmodule/IecVariable.h>

#include "ChannelTables.h"

#include <gtest/gtest.h>

namespace {

using mxmodule::IecVariable;
using mxmodule::MappedChannel;

std::string shownVariable(const IecVariable& variable)
{
    return fmt::format("{} {} {} {}/{}\n", variable.suffix, iecByteAddress(variable),
                       iecTypeText(variable), variable.bit, variable.bits);
}

std::string variablesOf(const MappedChannel& channel)
{
    std::string shown;
    for (const IecVariable& variable : mxmodule::iecVariables(channel)) {
        EXPECT_EQ(variable.isInput, channel.isInput);
        shown += shownVariable(variable);
    }
    return shown;
}

TEST(IecVariable, isOneOfTheSizeOfTheChannel)
{
    MappedChannel signedWord = wholeChannel("A", 'Q', 'W', 6, 16);
    signedWord.isSigned = true;
    EXPECT_EQ(variablesOf(bitChannel("A", 'I', 3, 2)), " %IX3.2 BOOL 0/1\n");
    EXPECT_EQ(variablesOf(wholeChannel("A", 'I', 'B', 3, 8)), " %IB3 BYTE 0/8\n");
    EXPECT_EQ(variablesOf(signedWord), " %QW6 INT 0/16\n");
    EXPECT_EQ(variablesOf(wholeChannel("A", 'Q', 'D', 7, 32)), " %QD7 DWORD 0/32\n");
    EXPECT_EQ(variablesOf(wholeChannel("A", 'I', 'L', 9, 64)), " %IL9 LWORD 0/64\n");
}

// The last byte of the image is 4294967295, its bits are those up to 34359738367.
TEST(IecVariable, liesAnywhereInTheImage)
{
    EXPECT_EQ(variablesOf(wholeChannel("A", 'I', 'B', 4294967295U, 8)),
              " %IB4294967295 BYTE 0/8\n");
    EXPECT_EQ(mxmodule::iecBitAddress(false, 34359738367U), "%QX4294967295.7");
}

TEST(IecVariable, isABoolForEachBitOfABitField)
{
    EXPECT_EQ(variablesOf(fieldChannel("A", 'Q', 0, 6, 3)), "_Bit0 %QX0.6 BOOL 0/3\n"
                                                            "_Bit1 %QX0.7 BOOL 1/3\n"
                                                            "_Bit2 %QX1.0 BOOL 2/3\n");
    EXPECT_EQ(mxmodule::iecVariables(fieldChannel("A", 'Q', 0, 6, 32)).size(), 32U);
}

TEST(IecVariable, isBytesForABitFieldThatFillsThem)
{
    EXPECT_EQ(variablesOf(fieldChannel("A", 'Q', 5, 0, 8)), " %QB5 BYTE 0/8\n");
    EXPECT_EQ(variablesOf(fieldChannel("A", 'I', 6, 8, 40)), " %IB6 ARRAY [0..4] OF BYTE 0/40\n");
}

TEST(IecVariable, isNoneForBitsThatNoTypeHolds)
{
    EXPECT_EQ(variablesOf(fieldChannel("A", 'I', 2, 3, 33)), "");
    EXPECT_EQ(variablesOf(fieldChannel("A", 'I', 2, 0, 0)), "");
}

TEST(IecVariable, isCalledAsTheChannelOrByItsNumber)
{
    EXPECT_EQ(iecIdentifier(bitChannel("T\u00FCr 1", 'I', 0, 0)), "Tuer_1");
    EXPECT_EQ(iecIdentifier(fieldChannel("+", 'I', 0, 0, 3)), "Channel_2");
}

} // namespace
