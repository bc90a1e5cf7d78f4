// A finding in a built file is reported at the text that it was built from.

#include <mxauthor/CheckText.h>
#include <mxauthor/SourceMap.h>

#include <gmock/gmock.h>

namespace {

using mxauthor::BuildResult;
using mxauthor::SourceError;
using mxauthor::TextFinding;
using testing::ElementsAre;
using testing::IsEmpty;

// A module without a finding: 14 lines.
const std::string sound = "module: {type: 1, id: 0x12345678}\n"
                          "catalogue:\n"
                          "  BrandLabelName: L\n"
                          "  BrandVersion: V\n"
                          "  BrandId: I\n"
                          "  BrandSerialNumber: S\n"
                          "  ProductVersion: P\n"
                          "  BrandOrderCode: O\n"
                          "  BrandHwRevision: H\n"
                          "component: {Component: C}\n"
                          "channels:\n"
                          "  - {name: In, in: Bit}\n"
                          "parameters:\n";

// "RULE LINE:COLUMN TEXT" of each finding.
std::vector<std::string> findingsOf(const std::string& source)
{
    const BuildResult built = mxauthor::buildFromText(source, "");
    EXPECT_THAT(built.errors, IsEmpty());
    std::vector<std::string> shown;
    for (const TextFinding& finding : mxauthor::checkText(source, built)) {
        shown.push_back(std::string(finding.rule->name) + " " + std::to_string(finding.where.line) +
                        ":" + std::to_string(finding.where.column) + " " + finding.where.text);
    }
    return shown;
}

// The one finding of a sound module with this parameter in line 14.
std::string findingOfParameter(const std::string& line, const std::string& rest = "")
{
    const auto all = findingsOf(sound + "  - {" + line + "}\n" + rest);
    EXPECT_EQ(all.size(), 1U) << testing::PrintToString(all);
    return all.empty() ? "" : all.front();
}

// 12 V are 12000 times 0.001 V. With a negative factor the least physical value has the greatest
// raw one: -1 times -10 mA is 10 mA.
TEST(TextFindings, sayPhysicalAndRawValues)
{
    const std::string volts = "conversions: {volts: {factor: 0.001, unit: V}}\n";
    const std::string inverse = "conversions: {volts: {factor: -10, unit: mA}}\n";
    EXPECT_EQ(findingOfParameter("name: A, type: SInt16, default: 12 V, range: [-10 V, 10 V], "
                                 "conversion: volts",
                                 volts),
              "default-range 14:38 parameter 1 \"A\": default 12 V (raw 12000) is outside -10 V to "
              "10 V (raw -10000 to 10000)");
    EXPECT_EQ(findingOfParameter("name: A, type: SInt8, default: 0 mA, range: [10 mA, 30 mA], "
                                 "conversion: volts",
                                 inverse),
              "default-range 14:37 parameter 1 \"A\": default 0 mA (raw 0) is outside 10 mA to 30 "
              "mA (raw -1 to -3)");
    EXPECT_EQ(findingOfParameter("name: A, type: UInt8, range: [0, 300], conversion: volts", volts),
              "range-datatype 14:39 parameter 1 \"A\": maximum 0.3 V (raw 300) does not fit in 8 "
              "bits, 0 V to 0.255 V (raw 0 to 255) is accepted");
}

TEST(TextFindings, ofBitsThatAreIgnoredAreAtTheKey)
{
    EXPECT_EQ(findingOfParameter("name: A, type: UInt8, bits: 3, bit: 2"),
              "bits-ignored 14:34 parameter 1 \"A\": 3 bits from bit 2 stated, which readers "
              "ignore: its datatype is UInt8, only a Byte has bit fields");
    EXPECT_EQ(findingOfParameter("name: A, type: UInt16, bit: 2"),
              "bits-ignored 14:34 parameter 1 \"A\": 0 bits from bit 2 stated, which readers "
              "ignore: its datatype is UInt16, only a Byte has bit fields");
}

TEST(TextFindings, ofTypographicQuotesAreAtTheText)
{
    EXPECT_EQ(findingOfParameter("name: \u201CA\u201D, type: UInt8"),
              "text-quotes 14:12 text 1 \"\u201CA\u201D\": its quotation marks are part of it");
    EXPECT_THAT(findingsOf(sound + "  - {name: \u201CA\u201D B, type: UInt8}\n"), IsEmpty());
}

TEST(TextFindings, ofAGtinAreAtIt)
{
    for (const char* gtin : {"12345670", "123456789012", "2000000000108", "20000003020001", ""}) {
        EXPECT_THAT(
            findingsOf(sound + "  - {name: A, type: UInt8}\nextension: {gtin: \"" + gtin + "\"}\n"),
            IsEmpty())
            << gtin;
    }
    EXPECT_EQ(findingOfParameter("name: A, type: UInt8", "extension: {gtin: \"123\"}\n"),
              "gtin-digits 15:19 GTIN: \"123\", expected 8, 12, 13 or 14 digits");
}

TEST(TextFindings, ofASoundModuleAreNone)
{
    EXPECT_THAT(findingsOf(sound + "  - {name: A, type: UInt8}\n"), IsEmpty());
}

TEST(TextFindings, ofAParameterAreAtTheValue)
{
    EXPECT_EQ(findingOfParameter("name: A, channel: 7, type: UInt8"),
              "parameter-channel 14:24 parameter 1 \"A\": belongs to channel 7, which does not "
              "exist");
    EXPECT_EQ(findingOfParameter("name: \"\", type: UInt8"),
              "parameter-unnamed 14:12 parameter 1: its name is an empty text");
    EXPECT_EQ(findingOfParameter("name: A, type: UInt8, flags: 3, conversion: k",
                                 "conversions: {k: {factor: 2}}\n"),
              "conversion-ignored 14:50 parameter 1 \"A\": names conversion 1, but is not shown in "
              "physical units");
}

TEST(TextFindings, ofABitFieldOutsideItsByteAreAtBitsOrBit)
{
    using testing::Contains;
    EXPECT_THAT(findingsOf(sound + "  - {name: A, type: Byte, bits: 9}\n"),
                Contains("bit-field 14:33 parameter 1 \"A\": 9 bits from bit 0 leave their byte, "
                         "bits 0 to 7"));
    EXPECT_THAT(findingsOf(sound + "  - {name: A, type: Byte, bits: 3, bit: 7}\n"),
                Contains("bit-field 14:41 parameter 1 \"A\": 3 bits from bit 7 leave their byte, "
                         "bits 0 to 7"));
}

TEST(TextFindings, ofARangeAreAtTheEndThatDoesNotFit)
{
    EXPECT_EQ(findingOfParameter("name: A, type: SInt16, range: [-100000, 10]"),
              "range-datatype 14:37 parameter 1 \"A\": minimum -100000 does not fit in 16 bits, "
              "-32768 to 32767 is accepted");
    EXPECT_EQ(findingOfParameter("name: A, type: UInt16, range: [-10000, 10000]"),
              "range-datatype 14:37 parameter 1 \"A\": minimum -10000 does not fit in 16 bits, "
              "0 to 65535 is accepted");
    EXPECT_EQ(findingOfParameter("name: A, type: UInt8, range: [0, 256]"),
              "range-datatype 14:39 parameter 1 \"A\": maximum 256 does not fit in 8 bits, "
              "0 to 255 is accepted");
}

TEST(TextFindings, ofADefaultAreAtTheDefaultOfTheirBitField)
{
    // All share byte 0; the second default is wrong.
    const auto found = findingsOf(sound + "  - {name: A, at: 0, type: Byte, bits: 2, bit: 0}\n"
                                          "  - {name: B, at: 0, type: Byte, bits: 3, bit: 2, "
                                          "default: 7, range: [0, 5]}\n"
                                          "  - {name: C, at: 0, type: Byte, bits: 3, bit: 5}\n");
    EXPECT_THAT(found,
                ElementsAre("default-range 15:60 parameter 2 \"B\": default 7 is outside 0 to 5"));
}

TEST(TextFindings, ofADefaultThatIsNotStatedAreAtTheParameter)
{
    EXPECT_EQ(findingOfParameter("name: A, type: UInt8, range: [1, 5]"),
              "default-range 14:5 parameter 1 \"A\": default 0 is outside 1 to 5");
}

TEST(TextFindings, ofAnOptionAreAtItsValue)
{
    EXPECT_EQ(findingOfParameter("name: A, type: UInt8, default: on, options: L",
                                 "optionLists: {L: {options: {1: on, 300: off}}}\n"),
              "option-value 15:36 parameter 1 \"A\": its option value 300 does not fit in 8 bits");
}

TEST(TextFindings, ofATextAreWhereItIsUsedFirst)
{
    EXPECT_EQ(findingOfParameter("name: \"A\\tB\", type: UInt8"),
              "text-control 14:12 text 1 \"A\tB\": holds control characters");
    EXPECT_EQ(findingOfParameter("name: A, type: UInt8", "texts: {fixed: {9: x}}\n"),
              "text-unused 15:17 text 9 \"x\": nothing refers to it");
}

TEST(TextFindings, ofChannelsAreAtTheirKindAndBits)
{
    const std::string channels = "channels: [{name: A, in: 11}, {name: B, in: UInt8, bits: 7}]\n";
    std::string source = sound;
    source.replace(source.find("channels:"), std::string::npos, channels);
    EXPECT_THAT(
        findingsOf(source),
        ElementsAre("channel-kind 11:26 channel 0 \"A\": kind 11 means no data, expected 1 to 9",
                    "channel-bits 11:58 channel 1 \"B\": 7 bits stated, its kind has 8"));
}

TEST(TextFindings, ofAMisspeltEntryAreAtItsKey)
{
    std::string source = sound;
    source.replace(source.find("OrderCode"), 9, "Ordercode");
    EXPECT_THAT(findingsOf(source + "  - {name: A, type: UInt8}\n"),
                ElementsAre(testing::StartsWith("parser-refuses 3:3 "),
                            "entry-missing 8:3 catalogue: entry \"BrandOrderCode\" is missing, is "
                            "\"BrandOrdercode\" misspelt?"));
}

TEST(TextFindings, ofAMissingGroupNameItsKey)
{
    const std::string source = sound.substr(sound.find("catalogue:"));
    const BuildResult built = mxauthor::buildFromText(source + "  []\n", "");
    const auto findings = mxauthor::checkText(source, built);
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_STREQ(findings[0].rule->name, "group-missing");
    EXPECT_EQ(findings[0].where.line, 1U);
    EXPECT_EQ(findings[0].hint, "the key \"module\" states it");
    EXPECT_STREQ(findings[1].rule->name, "parser-refuses");
    EXPECT_TRUE(mxauthor::isRefused(findings));
}

TEST(TextFindings, ofARecordWithoutRefusalRefuseNothing)
{
    const std::string source = sound + "  - {name: A, channel: 7, type: UInt8}\n";
    EXPECT_FALSE(
        mxauthor::isRefused(mxauthor::checkText(source, mxauthor::buildFromText(source, ""))));
}

// The position of the byte at `offset`: LINE:COLUMN.
std::string positionOf(const std::string& source, std::uint32_t offset)
{
    const BuildResult built = mxauthor::buildFromText(source, "");
    EXPECT_THAT(built.errors, IsEmpty());
    const SourceError error = mxauthor::SourceMap(source, built).at(offset, "text");
    EXPECT_EQ(error.text, "text");
    return std::to_string(error.line) + ":" + std::to_string(error.column);
}

// Without header and data sizes the first group is at byte 0: identifier and length in 4 bytes.
const std::string bare = "header: none\ndataSizes: none\n";

TEST(SourceMap, findsTheLinesOfEntries)
{
    // 00 20, length, "A,s=xy" CR LF, "B,s=z" CR LF
    const std::string source = bare + "catalogue:\n  A: xy\n  B: z\n";
    EXPECT_EQ(positionOf(source, 0), "4:3");
    EXPECT_EQ(positionOf(source, 4), "4:3");
    EXPECT_EQ(positionOf(source, 8), "4:6");
    EXPECT_EQ(positionOf(source, 12), "5:3");
    EXPECT_EQ(positionOf(source, 16), "5:6");
}

TEST(SourceMap, findsTheFieldsOfAChannel)
{
    // 20 d0, length, then a record: number, kind, unread, bits, bit, unread, count, a word.
    const std::string source =
        bare + "channels:\n  - {number: 3, in: UInt16, bits: 16, bit: 0, unread: '0102', "
               "words: [7, 8]}\n";
    EXPECT_EQ(positionOf(source, 4), "4:14");
    EXPECT_EQ(positionOf(source, 5), "4:21");
    EXPECT_EQ(positionOf(source, 6), "4:55");
    EXPECT_EQ(positionOf(source, 7), "4:35");
    EXPECT_EQ(positionOf(source, 8), "4:44");
    EXPECT_EQ(positionOf(source, 9), "4:55");
    EXPECT_EQ(positionOf(source, 10), "4:70");
    EXPECT_EQ(positionOf(source, 11), "4:71");
    EXPECT_EQ(positionOf(source, 14), "4:74");
}

TEST(SourceMap, findsRawGroupsAndTheirOrder)
{
    const std::string source =
        bare + "raw:\n  - {id: 0x7001, hex: '00'}\n  - {id: 0x7002, hex: '00'}\n";
    EXPECT_EQ(positionOf(source, 0), "4:5");
    EXPECT_EQ(positionOf(source, 6), "4:5");
    EXPECT_EQ(positionOf(source, 7), "5:5");
}

TEST(SourceMap, findsTheDefaultThatMadeAByteOfTheBlock)
{
    // The block, group 0010, is the first group: 4 bytes, version and descriptor, then the bytes.
    const std::string source = bare + "parameters:\n  - {name: A, type: UInt8, default: 4}\n"
                                      "  - {name: B, type: UInt16, default: 5}\n";
    EXPECT_EQ(positionOf(source, 6), "4:37");
    EXPECT_EQ(positionOf(source, 7), "5:38");
    EXPECT_EQ(positionOf(source, 8), "5:38");
}

TEST(SourceMap, countsColumnsInCharacters)
{
    const std::string source = bare + "component: {\xC2\xB0: x, \xC2\xB5: y}\n";
    // 00 40, length, B0 ",s=x" CR LF, B5 ",s=y"
    EXPECT_EQ(positionOf(source, 4), "3:13");
    EXPECT_EQ(positionOf(source, 11), "3:19");
    EXPECT_EQ(positionOf(source, 15), "3:22");
}

TEST(SourceMap, givesTheStartForWhatIsComputedAndBeyondTheEnd)
{
    const std::string source = "\n\nmodule: {type: 1, id: 2}\n";
    EXPECT_EQ(positionOf(source, 0), "1:1");  // the header
    EXPECT_EQ(positionOf(source, 10), "3:9"); // the identity, after a header of 10 bytes
    EXPECT_EQ(positionOf(source, 30), "1:1"); // the data sizes
    EXPECT_NO_THROW(positionOf(source, 100000));
    EXPECT_EQ(positionOf("header: none\ndataSizes: none\ntail: '0102'\n", 0), "1:1");
}

} // namespace
