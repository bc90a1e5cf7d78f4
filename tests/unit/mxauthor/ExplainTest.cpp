// Every byte of a file is explained exactly once, with the right text.

#include "MxBuffer.h"

#include <mxauthor/Explain.h>

#include <gmock/gmock.h>

namespace {

using mxauthor::explain;
using mxauthor::ExplainedPart;
using mxauthor::Explanation;
using testkit::hexBytes;
using testkit::MxBuffer;

Explanation explained(const std::string& hex)
{
    const auto bytes = hexBytes(hex);
    return explain({bytes.begin(), bytes.end()});
}

// "OFFSET+LENGTH FIELD VALUE MEANING", with "-" before what is not read.
std::vector<std::string> linesOf(const Explanation& explanation)
{
    std::vector<std::string> lines;
    for (const ExplainedPart& part : explanation.parts) {
        lines.push_back((part.isRead ? "" : "-") + std::to_string(part.place.offset) + "+" +
                        std::to_string(part.place.length) + " " + part.field + " [" + part.value +
                        "] " + part.meaning);
    }
    return lines;
}

TEST(Explain, framesEveryGroup)
{
    EXPECT_THAT(linesOf(explained("7abc 0009 010203 1234")),
                testing::ElementsAre("0+2 id [31420] group 7abc",
                                     "2+2 length [9] bytes, the whole group", "-4+3 payload [] ",
                                     "-7+2 checksum [4660] never compared"));
}

TEST(Explain, linesAndTheirEnds)
{
    // "Component,s=k" and "Creator,s=" in group 0x0040.
    const auto lines = linesOf(explained("0040 0021 436f6d706f6e656e742c733d6b0d0a"
                                         "43726561746f722c733d0d0a 0000"));
    EXPECT_THAT(lines, testing::ElementsAre(
                           "0+2 id [64] group 0040", "2+2 length [33] bytes, the whole group",
                           "4+9 key [Component] ", "13+1 separator [] ",
                           "-14+1 kind [115] any byte", "15+1 separator [] ", "16+1 value [k] ",
                           "17+2 line_end [] ", "19+7 key [Creator] ", "26+1 separator [] ",
                           "-27+1 kind [115] any byte", "28+1 separator [] ", "29+2 line_end [] ",
                           "-31+2 checksum [0] never compared"));
}

TEST(Explain, aRepeatedGroupIsNotRead)
{
    const Explanation explanation =
        explained("0010 000a 0000 01 02 0000  0010 000a 0000 01 02 0000");
    ASSERT_EQ(explanation.groups.size(), 2U);
    EXPECT_TRUE(explanation.groups[0].isRead);
    EXPECT_FALSE(explanation.groups[1].isRead);
    for (const ExplainedPart& part : explanation.parts) {
        const bool isPayloadOfSecond = part.group == 1 && part.field == "version";
        EXPECT_TRUE(part.isRead || part.group == 1 || part.field == "checksum" ||
                    part.field == "block")
            << part.field;
        EXPECT_FALSE(isPayloadOfSecond && part.isRead);
    }
}

TEST(Explain, bytesOfTheBlockNameTheirParameters)
{
    testkit::ParameterRecord whole; // byte 0
    testkit::ParameterRecord bit;
    bit.number = 2;
    bit.position = 5;
    bit.datatype = 5;
    bit.bitLength = 1;
    bit.bitOffset = 3;
    testkit::ParameterRecord bits = bit;
    bits.number = 3;
    bits.bitLength = 2;
    bits.bitOffset = 4;
    MxBuffer buffer;
    buffer.group(0x0010, hexBytes("0000 2a 18 ff"));
    buffer.group(0x20C0, testkit::join({whole.bytes(), bit.bytes(), bits.bytes()}));
    const auto lines = linesOf(explain(buffer.chars()));
    EXPECT_THAT(lines, testing::Contains("6+1 block [] default of parameter 1: 42"));
    EXPECT_THAT(lines, testing::Contains("7+1 block [] default of parameter 2: 1 (bit 3); default "
                                         "of parameter 3: 1 (bits 4 to 5)"));
    EXPECT_THAT(lines, testing::Contains("-8+1 block [] no parameter"));
}

TEST(Explain, whatFollowsAFramingFailureIsOnePart)
{
    const Explanation explanation = explained("7abc 0006 0000  20d3 9999 0000 00");
    EXPECT_EQ(explanation.failure,
              "Parser::parse(): Error in group 8403 (@ 6): Index position out of bounds");
    const ExplainedPart& last = explanation.parts.back();
    EXPECT_EQ(last.field, "tail");
    EXPECT_EQ(last.place.offset, 6U);
    EXPECT_EQ(last.place.length, 7U);
    EXPECT_FALSE(last.isRead);
}

TEST(Explain, namesAreFoundWhereTheyStand)
{
    testkit::ParameterRecord parameter;
    MxBuffer buffer;
    buffer.group(0x0010, hexBytes("0000 2a"));                              // 0 to 9
    buffer.group(0x20C0, parameter.bytes());                                // 9 to 44
    buffer.group(0x20D0, testkit::ChannelRecord{4, 0x85, 1, 0, 1}.bytes()); // 44 to 59
    buffer.group(0x20D7, hexBytes("04 0064"));                              // 59 to 68
    buffer.group(0x20D3, testkit::textTablePayload({{100, "Gain"}}));       // 68 on
    std::vector<std::string> found;
    for (const mxauthor::NamedPlace& place : explain(buffer.chars()).names) {
        found.push_back(place.what + " " + place.name + " " + std::to_string(place.place.offset) +
                        "+" + std::to_string(place.place.length));
    }
    EXPECT_THAT(found, testing::ElementsAre("default of parameter 1 Gain 6+1",
                                            "parameter 1 Gain 13+29", "channel 4 (IX0_0) Gain 48+9",
                                            "name of channel 4 Gain 63+3", "text 100 Gain 74+8"));
}

} // namespace
