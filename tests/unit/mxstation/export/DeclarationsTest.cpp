#include "Plans.h"
#include "export/Provenance.h"

#include <mxstation/Declarations.h>

#include <gmock/gmock.h>

namespace {

using mxstation::AddressStyle;
using mxstation::Declarations;
using mxstation::Plan;
using mxstation::VariableScope;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

const std::string& provenanceOfAbc()
{
    static const std::string lines = "(* Made by mxtool " + mxstation::Provenance::version() +
                                     " of: *)\n(* SHA-256 " + sumOfAbc + " station *)\n";
    return lines;
}

// The declarations without the comments before and after VAR_GLOBAL.
std::string listOf(const Plan& plan, AddressStyle style = AddressStyle::Byte)
{
    const std::string text = mxstation::declarations(plan, {style, {}}).text;
    const std::string begin = "VAR_GLOBAL\n";
    const std::string end = "END_VAR\n";
    const std::size_t at = text.find(begin);
    EXPECT_NE(at, std::string::npos) << text;
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
    return text.substr(at + begin.size(), text.size() - at - begin.size() - end.size());
}

// The channels that the styles are explained with.
Plan ofFourChannels()
{
    return planOf({bitsAt("A", 'I', 0, 0, 1), wholeAt("B", 'I', 'W', 2), wholeAt("C", 'I', 'W', 4),
                   wholeAt("E", 'I', 'D', 6)});
}

TEST(StationDeclarations, countBytes)
{
    EXPECT_EQ(mxstation::declarations(ofFourChannels()).text,
              "(* Pump house. Addresses count bytes. *)\n" + provenanceOfAbc() +
                  "VAR_GLOBAL\n"
                  "    Levels_A AT %IX0.0 : BOOL; (* Levels, A *)\n"
                  "    Levels_B AT %IW2 : WORD; (* Levels, B *)\n"
                  "    Levels_C AT %IW4 : WORD; (* Levels, C *)\n"
                  "    Levels_E AT %ID6 : DWORD; (* Levels, E *)\n"
                  "END_VAR\n");
    EXPECT_THAT(mxstation::declarations(ofFourChannels()).findings, IsEmpty());
}

TEST(StationDeclarations, countUnitsOfTheirSize)
{
    EXPECT_EQ(listOf(ofFourChannels(), AddressStyle::Index),
              "    Levels_A AT %IX0.0 : BOOL; (* Levels, A *)\n"
              "    Levels_B AT %IW1 : WORD; (* Levels, B *)\n"
              "    Levels_C AT %IW2 : WORD; (* Levels, C *)\n"
              "    (* Levels_E is not declared (ID6, byte 6 is no multiple of 4): Levels, E *)\n");
    const auto findings =
        mxstation::declarations(ofFourChannels(), {AddressStyle::Index, {}}).findings;
    ASSERT_THAT(findings, SizeIs(1));
    EXPECT_EQ(findings[0].severity, mxmodule::Severity::Warning);
    EXPECT_EQ(findings[0].place, "pump-house.yaml");
    EXPECT_EQ(findings[0].text, "channel \"E\" of module 1 \"Levels\" (ID6) is not declared: "
                                "byte 6 is no multiple of 4");
}

TEST(StationDeclarations, countUnitsOfEachSize)
{
    EXPECT_EQ(listOf(planOf({wholeAt("B", 'Q', 'B', 5), wholeAt("D8", 'Q', 'D', 12),
                             wholeAt("L8", 'Q', 'L', 24)}),
                     AddressStyle::Index),
              "    Levels_B AT %QB5 : BYTE; (* Levels, B *)\n"
              "    Levels_D8 AT %QD3 : DWORD; (* Levels, D8 *)\n"
              "    Levels_L8 AT %QL3 : LWORD; (* Levels, L8 *)\n");
}

TEST(StationDeclarations, countEachSizeInASpaceOfItsOwn)
{
    EXPECT_EQ(listOf(ofFourChannels(), AddressStyle::Separate),
              "    Levels_A AT %IX0.0 : BOOL; (* Levels, A *)\n"
              "    Levels_B AT %IW0 : WORD; (* Levels, B *)\n"
              "    Levels_C AT %IW1 : WORD; (* Levels, C *)\n"
              "    Levels_E AT %ID0 : DWORD; (* Levels, E *)\n");
}

// By address, not in the order of the row; inputs and outputs separately; bits in bytes of eight.
TEST(StationDeclarations, separateSpacesCountByAddress)
{
    std::vector<mxstation::Channel> channels = {
        wholeAt("Late", 'I', 'W', 20), wholeAt("Early", 'I', 'W', 3), wholeAt("Out", 'Q', 'W', 9),
        bitsAt("X", 'I', 9, 7, 1)};
    for (std::uint8_t bit = 0; bit < 8; ++bit) {
        channels.push_back(bitsAt("Y" + std::to_string(bit), 'I', 1, bit, 1));
    }
    const std::string list = listOf(planOf(channels), AddressStyle::Separate);
    EXPECT_THAT(list, HasSubstr("Levels_Late AT %IW1 "));
    EXPECT_THAT(list, HasSubstr("Levels_Early AT %IW0 "));
    EXPECT_THAT(list, HasSubstr("Levels_Out AT %QW0 "));
    EXPECT_THAT(list, HasSubstr("Levels_Y0 AT %IX0.0 "));
    EXPECT_THAT(list, HasSubstr("Levels_Y7 AT %IX0.7 "));
    EXPECT_THAT(list, HasSubstr("Levels_X AT %IX1.0 "));
}

// Bytes 5, 6 and 7 are numbers 1 to 3; channels at one place are one number.
TEST(StationDeclarations, separateSpacesCountTheElementsOfArrays)
{
    EXPECT_EQ(listOf(planOf({bitsAt("F", 'Q', 5, 0, 24), wholeAt("B", 'Q', 'B', 2),
                             wholeAt("Same", 'Q', 'B', 6), wholeAt("Next", 'Q', 'B', 9)}),
                     AddressStyle::Separate),
              "    Levels_F AT %QB1 : ARRAY [0..2] OF BYTE; (* Levels, F *)\n"
              "    Levels_B AT %QB0 : BYTE; (* Levels, B *)\n"
              "    Levels_Same AT %QB2 : BYTE; (* Levels, Same *)\n"
              "    Levels_Next AT %QB4 : BYTE; (* Levels, Next *)\n");
}

TEST(StationDeclarations, haveTheAliasAndTheCommentOfTheStation)
{
    EXPECT_EQ(listOf(planOf({withNote(withSign(wholeAt("AI 1", 'I', 'W', 2)), "LT_101", "tank 1"),
                             withNote(wholeAt("AI 2", 'I', 'W', 4), "Füllstand 2"),
                             withNote(bitsAt("State", 'I', 6, 7, 2), "Run", "of pump 1")})),
              "    LT_101 AT %IW2 : INT; (* tank 1 *)\n"
              "    Fuellstand_2 AT %IW4 : WORD; (* Füllstand 2: Levels, AI 2 *)\n"
              "    Run_Bit0 AT %IX6.7 : BOOL; (* of pump 1, bit 0 of 2 *)\n"
              "    Run_Bit1 AT %IX7.0 : BOOL; (* of pump 1, bit 1 of 2 *)\n");
}

TEST(StationDeclarations, anAliasKeepsItsName)
{
    const std::string list = listOf(planOf(
        {wholeAt("AI 1", 'I', 'W', 2), withNote(wholeAt("AI 2", 'I', 'W', 4), "levels_ai_1")}));
    EXPECT_THAT(list, HasSubstr("    levels_ai_1 AT %IW4 "));
    EXPECT_THAT(list, HasSubstr("    Levels_AI_1_2 AT %IW2 "));
}

TEST(StationDeclarations, channelsWithoutAUsableNameHaveTheirNumber)
{
    EXPECT_THAT(listOf(planOf({wholeAt("+", 'I', 'W', 2)})),
                HasSubstr("    Levels_Channel_3 AT %IW2 : WORD; (* Levels, + *)\n"));
    EXPECT_THAT(listOf(planOf({withNote(wholeAt("A", 'I', 'W', 2), "%")})),
                HasSubstr("    Levels_A AT %IW2 : WORD; (* %: Levels, A *)\n"));
}

// Long names of modules leave room for that of the channel.
TEST(StationDeclarations, longNamesDiffer)
{
    Plan plan = planOf({wholeAt("A", 'I', 'W', 2), wholeAt("B", 'I', 'W', 4)});
    for (mxstation::Channel& channel : plan.channels) {
        channel.moduleName = std::string(1000, 'M');
    }
    EXPECT_THAT(listOf(plan), HasSubstr(std::string(48, 'M') + "_A AT"));
    EXPECT_THAT(listOf(plan), HasSubstr(std::string(48, 'M') + "_B AT"));
}

TEST(StationDeclarations, whatNoTypeHoldsIsAComment)
{
    const Plan plan = planOf({bitsAt("A", 'I', 2, 3, 33), wholeAt("B", 'I', 'B', 9)});
    EXPECT_EQ(listOf(plan), "    (* Levels_A is not declared (IB2#3,255, no type of IEC 61131-3 "
                            "holds 33 bits from %IX2.3 on): Levels, A *)\n"
                            "    Levels_B AT %IB9 : BYTE; (* Levels, B *)\n");
    EXPECT_THAT(mxstation::declarations(plan).findings, SizeIs(1));
}

// Compilers reject an empty list of variables.
TEST(StationDeclarations, withoutAVariableThereIsNoList)
{
    EXPECT_EQ(mxstation::declarations(planOf({})).text,
              "(* Pump house. Addresses count bytes. *)\n" + provenanceOfAbc());
    EXPECT_THAT(mxstation::declarations(planOf({bitsAt("A", 'I', 2, 3, 33)})).text,
                Not(HasSubstr("VAR")));
}

TEST(StationDeclarations, ofAProgramHaveItsName)
{
    const Declarations made =
        mxstation::declarations(planOf({wholeAt("A", 'I', 'W', 2)}), {{}, VariableScope::Program});
    EXPECT_EQ(made.text, "(* Pump house. Addresses count bytes. *)\n" + provenanceOfAbc() +
                             "PROGRAM Pump_house\n"
                             "VAR\n"
                             "    Levels_A AT %IW2 : WORD; (* Levels, A *)\n"
                             "END_VAR\n"
                             "    ;\n"
                             "END_PROGRAM\n");
}

TEST(StationDeclarations, noVariableHasTheNameOfTheProgram)
{
    const Plan plan = planOf({withNote(wholeAt("A", 'I', 'W', 2), "PUMP_HOUSE")});
    EXPECT_THAT(mxstation::declarations(plan, {{}, VariableScope::Program}).text,
                HasSubstr("PROGRAM Pump_house_2\n"));
}

TEST(StationDeclarations, aWarningIsAtTheModuleInTheStation)
{
    const Plan plan = mxstation::plan(
        mxstation::stationOf("modules:\n  - MX0116.bin\n  - {module: MX0602.bin, at: {in: 4}}\n",
                             EXAMPLE_MODULES "/row.yaml"));
    ASSERT_TRUE(plan.ok());
    // Count 1 is at byte 6: byte 4 has open bits, then 5 + (5 and 3).
    const auto findings = mxstation::declarations(plan, {AddressStyle::Index, {}}).findings;
    ASSERT_THAT(findings, Not(IsEmpty()));
    EXPECT_EQ(findings[0].place, EXAMPLE_MODULES "/row.yaml:3:5");
    EXPECT_THAT(findings[0].text, HasSubstr("\"Count 1\" of module 2 \"MX0602\" (ID6)"));
    EXPECT_THAT(findings[0].excerpt, HasSubstr("MX0602.bin"));
}

// A name that ended the comment would become code.
TEST(StationDeclarations, hostileTextsStayInTheirComments)
{
    const std::string hostile = "x*)(*)\n\"'; END_VAR // */ ?\?/ \x1B[2J\xE2\x80\xAE";
    Plan plan = planOf({withNote(wholeAt(hostile, 'I', 'W', 2), hostile, hostile),
                        wholeAt(hostile, 'I', 'W', 4), bitsAt(hostile, 'I', 2, 3, 33),
                        wholeAt(std::string(1000, 'x'), 'I', 'W', 6)});
    plan.station = hostile;
    for (mxstation::Channel& channel : plan.channels) {
        channel.moduleName = hostile;
    }
    const std::string text = mxstation::declarations(plan, {{}, VariableScope::Program}).text;
    std::size_t lines = 0;
    std::size_t begin = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos;
         end = text.find('\n', begin)) {
        const std::string line = text.substr(begin, end - begin);
        const std::size_t comment = line.find("(*");
        if (comment != std::string::npos) {
            EXPECT_EQ(line.find("(*", comment + 1), std::string::npos) << line;
            EXPECT_EQ(line.find("*)"), line.size() - 2) << line;
        }
        EXPECT_EQ(line.find('\x1B'), std::string::npos);
        EXPECT_EQ(line.find("\xE2\x80\xAE"), std::string::npos);
        ++lines;
        begin = end + 1;
    }
    EXPECT_EQ(lines, 12U); // 3 of the head, 4 channels, PROGRAM, VAR, END_VAR, ";", END_PROGRAM
}

} // namespace
