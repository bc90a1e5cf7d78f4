// Lines written once for many channels or parameters build the bytes of the lines written out.

#include <mxauthor/CheckText.h>
#include <mxauthor/TextForm.h>

#include <gmock/gmock.h>

namespace {

using mxauthor::Bytes;
using mxauthor::SourceError;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;

Bytes bytesBuilt(const std::string& source)
{
    const mxauthor::BuildResult result = mxauthor::buildFromText(source, "");
    for (const SourceError& error : result.errors) {
        ADD_FAILURE() << error.line << ":" << error.column << ": " << error.text;
    }
    return mxauthor::writeMxFile(result.file);
}

struct Forms
{
    std::string repeated;
    std::string writtenOut;
};

class Repeat : public testing::TestWithParam<Forms>
{};

TEST_P(Repeat, buildsTheBytesOfTheLinesWrittenOut)
{
    EXPECT_EQ(bytesBuilt(GetParam().repeated), bytesBuilt(GetParam().writtenOut));
}

TEST_P(Repeat, isDumpedWrittenOut)
{
    const mxauthor::BuildResult result = mxauthor::buildFromText(GetParam().repeated, "");
    const std::string text = mxauthor::dumpText(result.file);
    EXPECT_EQ(text.find("repeat"), std::string::npos) << text;
    EXPECT_EQ(bytesBuilt(text), bytesBuilt(GetParam().repeated));
}

INSTANTIATE_TEST_SUITE_P(
    Channels, Repeat,
    testing::Values(
        Forms{"channels: [{repeat: 3, name: AI <n>, in: SInt16, words: [0x8000, <n>]}]\n",
              "channels: [{name: AI 1, in: SInt16, words: [0x8000, 1]},\n"
              "  {name: AI 2, in: SInt16, words: [0x8000, 2]},\n"
              "  {name: AI 3, in: SInt16, words: [0x8000, 3]}]\n"},
        Forms{"channels: [{repeat: 2, name: <n-1>/<2*n+10>, number: <3*n>, in: Bit}]\n",
              "channels: [{name: 0/12, number: 3, in: Bit}, {name: 1/14, number: 6, in: Bit}]\n"},
        Forms{
            "channels: [{repeat: 2, in: Bit}, {repeat: 2, name: \"-\", out: Bit}]\n",
            "channels: [{in: Bit}, {in: Bit}, {name: \"-\", out: Bit}, {name: \"-\", out: Bit}]\n"},
        Forms{"channels: [{repeat: 1, name: Only, in: Bit}]\n",
              "channels: [{name: Only, in: Bit}]\n"},
        Forms{"channels:\n"
              "  - repeat: 2\n"
              "    each:\n"
              "      - {name: Count <n>, in: UInt32}\n"
              "      - {name: Ready <n>, in: Bit}\n",
              "channels:\n"
              "  - {name: Count 1, in: UInt32}\n"
              "  - {name: Ready 1, in: Bit}\n"
              "  - {name: Count 2, in: UInt32}\n"
              "  - {name: Ready 2, in: Bit}\n"},
        // Text that is not a placeholder is not changed.
        Forms{"channels: [{repeat: 2, name: <5 V> a<b <n> <x>, in: Bit}]\n",
              "channels: [{name: <5 V> a<b 1 <x>, in: Bit}, {name: <5 V> a<b 2 <x>, in: Bit}]\n"}));

INSTANTIATE_TEST_SUITE_P(
    Parameters, Repeat,
    testing::Values(
        Forms{"parameters:\n"
              "  - repeat: 2\n"
              "    each:\n"
              "      - {name: Range, channel: <n-1>, type: UInt8, default: b, options: o}\n"
              "      - {name: Check, channel: <n-1>, type: Byte, bits: 1, default: 1}\n"
              "      - {name: Depth, channel: <n-1>, type: Byte, bits: 3, default: <n+2>}\n"
              "optionLists: {o: {options: {0: a, 1: b}}}\n",
              "parameters:\n"
              "  - {name: Range, channel: 0, at: 0, type: UInt8, default: 1, options: o}\n"
              "  - {name: Check, channel: 0, at: 1, type: Byte, bits: 1, bit: 0, default: 1}\n"
              "  - {name: Depth, channel: 0, at: 1, type: Byte, bits: 3, bit: 1, default: 3}\n"
              "  - {name: Range, channel: 1, at: 2, type: UInt8, default: 1, options: o}\n"
              "  - {name: Check, channel: 1, at: 3, type: Byte, bits: 1, bit: 0, default: 1}\n"
              "  - {name: Depth, channel: 1, at: 3, type: Byte, bits: 3, bit: 1, default: 4}\n"
              "optionLists: {o: {options: {0: a, 1: b}}}\n"},
        Forms{"parameters: [{repeat: 3, name: Limit <n>, at: <4*n-4>, type: UInt16, unit: V,\n"
              "  range: [0, <10*n>]}]\n",
              "parameters: [{name: Limit 1, at: 0, type: UInt16, unit: V, range: [0, 10]},\n"
              "  {name: Limit 2, at: 4, type: UInt16, unit: V, range: [0, 20]},\n"
              "  {name: Limit 3, at: 8, type: UInt16, unit: V, range: [0, 30]}]\n"}));

TEST(RepeatedLine, mayMakeAllChannels)
{
    const mxauthor::BuildResult result =
        mxauthor::buildFromText("channels: [{repeat: 256, name: DI <n>, in: Bit}]\n", "");
    EXPECT_TRUE(result.errors.empty());
    EXPECT_THAT(mxauthor::dumpText(result.file), HasSubstr("- {name: DI 256, in: Bit}\n"));
}

struct Wrong
{
    std::string source;
    std::size_t column; // in line 1
    std::string text;
};

class WrongRepeat : public testing::TestWithParam<Wrong>
{};

TEST_P(WrongRepeat, isOneErrorAtItsPlace)
{
    const Wrong& wrong = GetParam();
    EXPECT_THAT(
        mxauthor::buildFromText(wrong.source, "").errors,
        ElementsAre(AllOf(Field(&SourceError::line, 1), Field(&SourceError::column, wrong.column),
                          Field(&SourceError::text, HasSubstr(wrong.text)))))
        << wrong.source;
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, WrongRepeat,
    testing::Values(
        Wrong{"channels: [{repeat: 0, in: Bit}]", 21, "0 is out of range, 1 to 256 is accepted"},
        Wrong{"channels: [{repeat: 257, in: Bit}]", 21, "257 is out of range, 1 to 256"},
        Wrong{"channels: [{repeat: -1, in: Bit}]", 21, "-1 is out of range, 1 to 256"},
        Wrong{"channels: [{repeat: many, in: Bit}]", 21, "\"many\" is not a whole number"},
        Wrong{"channels: [{repeat: , in: Bit}]", 13, "\"repeat\" has no value"},
        Wrong{"channels: [{repeat: 2, repeat: 3, in: Bit}]", 24, "\"repeat\" is stated twice"},
        Wrong{"channels: [{repeat: 256, in: Bit}, {in: Bit}]", 36, "no number is left"},
        Wrong{"channels: [{repeat: 4, number: 7, in: Bit}]", 32,
              "made twice by this repeated line"},
        Wrong{"channels: [{repeat: 4, number: <n-2>, in: Bit}]", 32, "-1 is out of range"},
        Wrong{"parameters: [{repeat: 256, each: [{name: A<n>, type: UInt8, at: <n-1>},"
              "{name: B<n>, type: UInt8},{name: C<n>, type: UInt8},{name: D<n>, type: UInt8},"
              "{name: E<n>, type: UInt8},{name: F<n>, type: UInt8},{name: G<n>, type: UInt8},"
              "{name: H<n>, type: UInt8},{name: I<n>, type: UInt8}]}]",
              23, "256 times 9 lines are too many parameters: a group holds 2259 at most"}));

INSTANTIATE_TEST_SUITE_P(
    Placeholders, WrongRepeat,
    testing::Values(
        Wrong{"channels: [{repeat: 2, name: AI, in: Bit}]", 30,
              "all 2 channels would have this name: put the number into it, such as \"AI <n>\""},
        Wrong{"parameters: [{repeat: 2, name: P, type: UInt8}]", 32, "all 2 parameters would have"},
        Wrong{"channels: [{repeat: 2, name: AI <N>, in: Bit}]", 30, "<N> is not a placeholder"},
        Wrong{"channels: [{repeat: 2, name: AI <n*2>, in: Bit}]", 30, "<n*2> is not a placeholder"},
        Wrong{"channels: [{repeat: 2, name: AI <n - 1>, in: Bit}]", 30, "(accepted: <n>, <n-1>, "},
        Wrong{"channels: [{repeat: 2, name: A<9999999999*n>, in: Bit}]", 30,
              "is not a placeholder"},
        Wrong{"channels: [{number: <n>, in: Bit}]", 21,
              "\"<n>\" is a number only in a line with \"repeat\""}));

INSTANTIATE_TEST_SUITE_P(
    Lines, WrongRepeat,
    testing::Values(
        Wrong{"channels: [{each: [{in: Bit}]}]", 12, "\"repeat\" is missing"},
        Wrong{"channels: [{repeat: 2, each: []}]", 30, "there is nothing under \"each\""},
        Wrong{"channels: [{repeat: 2, each: {in: Bit}}]", 30, "a list expected here"},
        Wrong{"channels: [{repeat: 2, in: Bit, each: [{in: Bit}]}]", 24,
              "next to \"each\" only \"repeat\" is accepted"},
        Wrong{"channels: [{repeat: 2, each: [{repeat: 2, in: Bit}]}]", 31,
              "a repeat within a repeat"},
        Wrong{"channels: [{repeat: 9, name: AI <n>, in: Bitt}]", 42, "unknown type \"Bitt\""},
        Wrong{"channels: [{repeat: 9, name: AI <n>, inn: Bit, in: Bit}]", 38,
              "unknown key \"inn\""},
        Wrong{"channels: [{repeat: 9, name: AI <n>}]", 12, "either in or out expected"},
        Wrong{"parameters: [{repeat: 9, name: A <n>, at: 0, type: UInt8}]", 14,
              "this repeated parameter shares bits of byte 0 with itself"},
        Wrong{"parameters: [{repeat: 9, name: A <n>, type: UInt8, default: <200*n>}]", 61,
              "default 400 does not fit into 8 bits"},
        Wrong{"{parameterBlock: {bytes: 0000}, parameters: "
              "[{repeat: 5, name: A <n>, type: UInt8, default: 7}]}",
              93,
              "the parameter block has 2 bytes, no place for a default at byte 2 (in 3 of 5 "
              "repetitions, first in repetition 3)"},
        Wrong{"parameters: [{repeat: 3, name: A <n>, type: UInt8, default: <100*n>}]", 61,
              "default 300 does not fit into 8 bits, 0 to 255 is accepted (in repetition 3 of 3)"},
        Wrong{"channels: [{repeat: 3, name: \u2192 <n>, in: Bit}]", 30,
              "is not in Windows-1252, the code page of mx files (in all 3 repetitions)"},
        Wrong{"parameters: [{repeat: 200, name: A <n>, type: UInt16}]", 14, "no place is left"}));

TEST(RepeatedLine, hasItsFindingsAtItsPlace)
{
    const std::string source = "channels:\n"
                               "  - {repeat: 2, name: AI <n>, in: SInt16, bits: <n+8>}\n";
    std::vector<std::pair<std::size_t, std::string>> reported;
    for (const auto& finding : mxauthor::checkText(source, mxauthor::buildFromText(source, ""))) {
        if (std::string(finding.rule->name) == "channel-bits") {
            EXPECT_EQ(finding.where.line, 2U);
            reported.emplace_back(finding.where.column, finding.where.text);
        }
    }
    EXPECT_THAT(reported,
                ElementsAre(testing::Pair(49U, "channel 0 \"AI 1\": 9 bits stated, its kind "
                                               "has 16 (in both repetitions)")));
}

// Builds a module of the channels 0 to 3 and the lines `parameters`, and returns the texts of the
// findings of `rule`.
std::vector<std::string> findings(const std::string& rule, const std::string& parameters)
{
    const std::string source = "channels: [{repeat: 4, name: AI <n>, in: SInt16}]\n"
                               "parameters:\n" +
                               parameters;
    std::vector<std::string> reported;
    for (const auto& finding : mxauthor::checkText(source, mxauthor::buildFromText(source, ""))) {
        if (finding.rule->name == rule) {
            EXPECT_EQ(finding.finding.subject + ": " + finding.finding.text, finding.where.text);
            reported.push_back(finding.where.text);
        }
    }
    return reported;
}

TEST(RepeatedLine, reportsAFindingOfAllRepetitionsOnce)
{
    EXPECT_THAT(
        findings("default-range", "  - {repeat: 4, name: L <n>, type: UInt8, default: 9, "
                                  "range: [0, 5]}\n"),
        ElementsAre("parameter 1 \"L 1\": default 9 is outside 0 to 5 (in all 4 repetitions)"));
}

TEST(RepeatedLine, reportsHowManyRepetitionsHaveAFinding)
{
    EXPECT_THAT(findings("default-range", "  - {repeat: 4, name: L <n>, type: UInt8, default: <n>, "
                                          "range: [0, 1]}\n"),
                ElementsAre("parameter 2 \"L 2\": default 2 is outside 0 to 1 (in 3 of 4 "
                            "repetitions, first in repetition 2)"));
}

// Parameters 1 and 2 come from the first repetition, 7 and 8 from the fourth.
TEST(RepeatedLine, namesTheOneRepetitionWithAFinding)
{
    EXPECT_THAT(findings("parameter-channel", "  - repeat: 4\n"
                                              "    each:\n"
                                              "      - {name: Low, channel: <n-1>, type: UInt8}\n"
                                              "      - {name: High, channel: <n>, type: UInt8}\n"),
                ElementsAre("parameter 8 \"High\": belongs to channel 4, which does not exist (in "
                            "repetition 4 of 4)"));
}

TEST(RepeatedLine, ofItsOwnHasFindingsOfItsOwn)
{
    EXPECT_THAT(findings("parameter-channel",
                         "  - {repeat: 2, name: A <n>, channel: 9, type: UInt8}\n"
                         "  - {repeat: 2, name: B <n>, channel: 9, type: UInt8}\n"
                         "  - {name: C, channel: 9, type: UInt8}\n"
                         "  - {repeat: 1, name: D, channel: 9, type: UInt8}\n"),
                ElementsAre("parameter 1 \"A 1\": belongs to channel 9, which does not exist (in "
                            "both repetitions)",
                            "parameter 3 \"B 1\": belongs to channel 9, which does not exist (in "
                            "both repetitions)",
                            "parameter 5 \"C\": belongs to channel 9, which does not exist",
                            "parameter 6 \"D\": belongs to channel 9, which does not exist"));
}

// Two findings of one rule about computed bytes are both at the start of the text.
TEST(RepeatedLine, leavesFindingsOfNoLineAlone)
{
    const std::string source = "dataSizes: {InData: DD, OutData: DD}\n"
                               "channels: [{repeat: 2, in: Bit}]\n";
    std::size_t count = 0;
    for (const auto& finding : mxauthor::checkText(source, mxauthor::buildFromText(source, ""))) {
        count += std::string(finding.rule->name) == "data-without-channel" ? 1U : 0U;
    }
    EXPECT_EQ(count, 2U);
}

// The size of what a text makes depends on the text, not on the numbers in it.
TEST(RepeatedLine, isNoWayToALotOfMemory)
{
    const std::string name(40000, 'x');
    const auto errors =
        mxauthor::buildFromText("channels: [{repeat: 256, name: " + name + "<n>, in: Bit}]\n", "")
            .errors;
    EXPECT_THAT(errors, ElementsAre(Field(&SourceError::text,
                                          "the repeated lines are longer than any mx file")));
}

} // namespace
