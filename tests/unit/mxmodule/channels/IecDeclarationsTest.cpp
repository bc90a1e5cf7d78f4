#include "channels/ChannelMapOutput.h"

#include "ChannelTables.h"

#include <gmock/gmock.h>

namespace {

using mxmodule::ChannelTable;
using mxmodule::iecDeclarations;
using mxmodule::MappedChannel;
using testing::HasSubstr;

std::string declarationsOf(const std::vector<MappedChannel>& channels)
{
    ChannelTable map = emptyMap(0);
    map.channels = channels;
    const std::string text = iecDeclarations(map);
    const std::string head = "(* Module (kv38.01020304). Addresses count bytes. *)\nVAR_GLOBAL\n";
    const std::string tail = "END_VAR\n";
    EXPECT_EQ(text.substr(0, head.size()), head);
    EXPECT_EQ(text.substr(text.size() - tail.size()), tail);
    return text.substr(head.size(), text.size() - head.size() - tail.size());
}

TEST(IecDeclarations, giveTheTypeByTheSizeLetter)
{
    EXPECT_EQ(
        declarationsOf({bitChannel("A", 'I', 3, 2), wholeChannel("B", 'I', 'B', 4, 8),
                        wholeChannel("C", 'Q', 'W', 6, 16), wholeChannel("D1", 'Q', 'D', 8, 32),
                        wholeChannel("E", 'I', 'L', 16, 64)}),
        "    A AT %IX3.2 : BOOL;\n"
        "    B AT %IB4 : BYTE;\n"
        "    C AT %QW6 : WORD;\n"
        "    D1 AT %QD8 : DWORD;\n"
        "    E AT %IL16 : LWORD;\n");
}

MappedChannel withSign(MappedChannel channel)
{
    channel.isSigned = true;
    return channel;
}

TEST(IecDeclarations, tellWhichValuesHaveASign)
{
    EXPECT_EQ(declarationsOf({withSign(wholeChannel("B", 'I', 'B', 4, 8)),
                              withSign(wholeChannel("C", 'Q', 'W', 6, 16)),
                              withSign(wholeChannel("D1", 'Q', 'D', 8, 32)),
                              withSign(wholeChannel("E", 'I', 'L', 16, 64))}),
              "    B AT %IB4 : SINT;\n"
              "    C AT %QW6 : INT;\n"
              "    D1 AT %QD8 : DINT;\n"
              "    E AT %IL16 : LINT;\n");
}

TEST(IecDeclarations, tellTheNameWhereItIsNoIdentifier)
{
    EXPECT_EQ(declarationsOf({bitChannel("DI 1", 'I', 0, 0), bitChannel("DI_1", 'I', 0, 1)}),
              "    DI_1 AT %IX0.0 : BOOL; (* DI 1 *)\n"
              "    DI_1_2 AT %IX0.1 : BOOL; (* DI_1 *)\n");
}

TEST(IecDeclarations, tellTheNameOfRepeatedBytesToo)
{
    EXPECT_EQ(declarationsOf({fieldChannel("A", 'Q', 5, 0, 8), fieldChannel("A", 'Q', 6, 0, 24)}),
              "    A AT %QB5 : BYTE;\n"
              "    A_2 AT %QB6 : ARRAY [0..2] OF BYTE; (* A *)\n");
}

TEST(IecDeclarations, aNameCannotEndTheComment)
{
    EXPECT_EQ(declarationsOf({bitChannel("x *) AT %QX0.0", 'I', 0, 0)}),
              "    x_AT_QX0_0 AT %IX0.0 : BOOL; (* x * ) AT %QX0.0 *)\n");
}

TEST(IecDeclarations, aChannelWithoutAUsableNameIsCalledByItsNumber)
{
    EXPECT_EQ(declarationsOf({bitChannel("+", 'I', 0, 0)}),
              "    Channel_1 AT %IX0.0 : BOOL; (* + *)\n");
}

TEST(IecDeclarations, aBitOffsetAbove7CountsWithinTheByte)
{
    // IX1_9: the byte address has been moved on already.
    EXPECT_EQ(declarationsOf({bitChannel("A", 'I', 1, 9)}), "    A AT %IX1.1 : BOOL;\n");
}

TEST(IecDeclarations, aBitFieldBecomesOneBoolPerBit)
{
    EXPECT_EQ(declarationsOf({fieldChannel("State", 'I', 0, 7, 3)}),
              "    State_Bit0 AT %IX0.7 : BOOL; (* State, bit 0 of 3 *)\n"
              "    State_Bit1 AT %IX1.0 : BOOL; (* State, bit 1 of 3 *)\n"
              "    State_Bit2 AT %IX1.1 : BOOL; (* State, bit 2 of 3 *)\n");
}

TEST(IecDeclarations, aBitFieldOfWholeBytesBecomesBytes)
{
    EXPECT_EQ(declarationsOf({fieldChannel("A", 'Q', 5, 0, 8), fieldChannel("B", 'Q', 6, 0, 24)}),
              "    A AT %QB5 : BYTE;\n"
              "    B AT %QB6 : ARRAY [0..2] OF BYTE;\n");
}

TEST(IecDeclarations, aBitFieldThatNoTypeHoldsBecomesAComment)
{
    EXPECT_EQ(declarationsOf({fieldChannel("A", 'I', 2, 3, 33), fieldChannel("B", 'I', 9, 0, 0),
                              bitChannel("C", 'I', 9, 0)}),
              "    (* A: 33 bits from %IX2.3 on, not declared *)\n"
              "    (* B: 0 bits from %IX9.0 on, not declared *)\n"
              "    C AT %IX9.0 : BOOL;\n");
    EXPECT_THAT(declarationsOf({fieldChannel("A", 'I', 2, 3, 32)}),
                HasSubstr("A_Bit31 AT %IX6.2 : BOOL;"));
}

// Compilers reject VAR_GLOBAL without a declaration.
TEST(IecDeclarations, withoutADeclarationAreComments)
{
    const std::string head = "(* Module (kv38.01020304). Addresses count bytes. *)\n";
    ChannelTable map = emptyMap(0);
    EXPECT_EQ(iecDeclarations(map), head);
    map.channels = {fieldChannel("A", 'I', 2, 3, 33)};
    EXPECT_EQ(iecDeclarations(map), head + "    (* A: 33 bits from %IX2.3 on, not declared *)\n");
}

} // namespace
