#include "Failure.h"
#include "MxBuffer.h"
#include "ParserAccess.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using testkit::Bytes;
using testkit::failureOf;
using testkit::hexBytes;
using testkit::MxBuffer;

constexpr const char* badTermination = "Invalid textstring termination";

class Texts : public testing::Test
{
protected:
    // The text at the end of an allocation, so that one byte too far is seen.
    std::string mxText(const std::string& hex, unsigned length)
    {
        const Bytes bytes = hexBytes(hex);
        exact = std::make_unique<std::uint8_t[]>(bytes.size());
        std::copy(bytes.begin(), bytes.end(), exact.get());
        return parser.mxTextToStdString(exact.get(), length);
    }

    void loadTable(const std::string& payload)
    {
        load(MxBuffer().group(0x20D3, hexBytes(payload)));
    }

    void load(const MxBuffer& buffer)
    {
        data = buffer.chars();
        parser.index(data);
    }

    std::string textFailure(std::uint16_t id)
    {
        return failureOf([&] { parser.getTextStringById(id); });
    }

    std::unique_ptr<std::uint8_t[]> exact;
    std::vector<char> data;
    testkit::ParserAccess parser;
};

TEST_F(Texts, TerminatorRightAfterTheStatedLengthIsSeen)
{
    EXPECT_EQ(mxText("41 42 0d", 2), "AB");
    EXPECT_EQ(mxText("41 42 00", 2), "AB");
}

TEST_F(Texts, OtherByteAfterTheStatedLengthFails)
{
    EXPECT_EQ(failureOf([&] { mxText("41 42 43", 2); }), badTermination);
}

TEST_F(Texts, TextOfLength0MayBeATerminator)
{
    EXPECT_EQ(mxText("0d", 0), "");
    EXPECT_EQ(mxText("00", 0), "");
    EXPECT_EQ(failureOf([&] { mxText("41", 0); }), badTermination);
}

TEST_F(Texts, TextEndsAtTheFirstTerminatorWithinTheLength)
{
    EXPECT_EQ(mxText("00", 5), "");
    EXPECT_EQ(mxText("41 0d", 5), "A");
    EXPECT_EQ(mxText("41 00", 1), "A");
}

TEST_F(Texts, BytesAreCopiedAsTheyAreLineFeedsToo)
{
    EXPECT_EQ(mxText("0a fc ff 01 0d", 10), "\x0A\xFC\xFF\x01");
}

TEST_F(Texts, ResultIsOneStringForBothOperationsAndTwoParsers)
{
    loadTable("0000 0001 41 0d0a");
    testkit::ParserAccess other;
    const std::uint8_t text[] = {'B', 0};
    const std::string& first = parser.getTextStringById(1);
    EXPECT_EQ(first, "A");
    const std::string& second = other.mxTextToStdString(text, 1);
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(first, "B");
}

TEST_F(Texts, TextIsFoundByItsIdentifier)
{
    loadTable("0000 0001 41 0d0a 0002 4242 0d0a 0100 0d0a");
    EXPECT_EQ(parser.getTextStringById(1), "A");
    EXPECT_EQ(parser.getTextStringById(2), "BB");
    EXPECT_EQ(parser.getTextStringById(0x0100), "");
}

TEST_F(Texts, FirstTwoBytesAreNotInterpreted)
{
    loadTable("0007 0007 41 0d0a");
    EXPECT_EQ(parser.getTextStringById(7), "A");
}

TEST_F(Texts, FirstOfARepeatedIdentifierCounts)
{
    loadTable("0000 0001 41 0d0a 0001 42 0d0a");
    EXPECT_EQ(parser.getTextStringById(1), "A");
}

TEST_F(Texts, MissingTableFails)
{
    load(MxBuffer().group(0x20D4, {}));
    EXPECT_EQ(textFailure(1), "Cannot find group 20d3");
}

TEST_F(Texts, UnknownIdentifier7AmongTheIdentifiers1And2IsNamed)
{
    loadTable("0000 0001 41 0d0a 0002 42 0d0a");
    EXPECT_EQ(textFailure(7), "Cannot find requested text string: ID = 7");
    EXPECT_EQ(textFailure(65535), "Cannot find requested text string: ID = 65535");
}

TEST_F(Texts, PayloadsOf1To3BytesHoldNoRecord)
{
    for (const char* payload : {"00", "0000", "000000"}) {
        loadTable(payload);
        EXPECT_EQ(textFailure(0), "Cannot find requested text string: ID = 0") << payload;
    }
}

TEST_F(Texts, IdentifierWithoutATextByteIsNotFound)
{
    loadTable("0000 0001");
    EXPECT_EQ(textFailure(1), "Cannot find requested text string: ID = 1");
    loadTable("0000 0002 41 0d0a 0001");
    EXPECT_EQ(textFailure(1), "Cannot find requested text string: ID = 1");
}

TEST_F(Texts, OneByteLeftIsNoRecord)
{
    loadTable("0000 0002 41 0d0a 00");
    EXPECT_EQ(textFailure(0), "Cannot find requested text string: ID = 0");
}

TEST_F(Texts, LookedUpTextMayEndAtNul)
{
    loadTable("0000 0001 41 00 42 0d0a");
    EXPECT_EQ(parser.getTextStringById(1), "A");
}

TEST_F(Texts, SkippedTextDoesNotEndAtNul)
{
    loadTable("0000 0001 41 00 42 0d0a 0002 43 0d0a");
    EXPECT_EQ(parser.getTextStringById(2), "C");
}

TEST_F(Texts, BareLineFeedEndsASkippedTextWithTheByteBeforeIt)
{
    // The line end of the skipped text is "B" and the line feed.
    loadTable("0000 0001 41 42 0a 0002 43 0d0a");
    EXPECT_EQ(parser.getTextStringById(2), "C");
    // A line feed that begins the text does not end it: the scan continues to the next line end.
    loadTable("0000 0001 0a 0002 43 0d0a");
    EXPECT_EQ(textFailure(2), "Cannot find requested text string: ID = 2");
}

TEST_F(Texts, LookedUpTextDoesNotEndAtALineFeed)
{
    loadTable("0000 0001 41 0a 42 0d0a");
    EXPECT_EQ(parser.getTextStringById(1), "A\nB");
}

TEST_F(Texts, AnyByteMayFollowTheCarriageReturnOfASkippedText)
{
    loadTable("0000 0001 41 0d ff 0002 43 0d0a");
    EXPECT_EQ(parser.getTextStringById(2), "C");
}

TEST_F(Texts, SkippedTextWithoutALineEndFails)
{
    loadTable("0000 0001 41 42");
    EXPECT_EQ(textFailure(2), badTermination);
    loadTable("0000 0001");
    EXPECT_EQ(textFailure(2), badTermination);
}

TEST_F(Texts, LineFeedRightAfterThePayloadEndsASkippedText)
{
    // The checksum's first byte is the line feed: the line end begins at the payload's last byte.
    load(MxBuffer().raw(hexBytes("20d3 000c 0000 0001 41 42 0a00")));
    EXPECT_EQ(textFailure(2), "Cannot find requested text string: ID = 2");
}

TEST_F(Texts, LookedUpTextMayEndRightAfterThePayload)
{
    loadTable("0000 0001 41 42"); // the checksum is 0
    EXPECT_EQ(parser.getTextStringById(1), "AB");
    load(MxBuffer().raw(hexBytes("20d3 000c 0000 0001 41 42 4300")));
    EXPECT_EQ(textFailure(1), badTermination);
}

// An empty table reads its one record after the group.
class EmptyTextTable : public Texts
{
protected:
    // The content ends with the table; the bytes of `rest` follow it in the buffer.
    void loadBefore(const std::string& rest)
    {
        load(MxBuffer().raw(hexBytes("0000 0008 000e 0000")).group(0x20D3, {}).raw(hexBytes(rest)));
    }
};

TEST_F(EmptyTextTable, StillReadsARecordAtPosition2)
{
    loadBefore("0007 4869 0d");
    EXPECT_EQ(parser.getTextStringById(7), "Hi");
    loadBefore("0007 4869 00 ff");
    EXPECT_EQ(parser.getTextStringById(7), "Hi");
}

TEST_F(EmptyTextTable, RecordWithAnotherIdentifierHasNoLineEnd)
{
    loadBefore("0007 4869 0d0a 0008 41 0d");
    EXPECT_EQ(textFailure(8), badTermination);
}

TEST_F(EmptyTextTable, TextThatRunsToTheBuffersEndIsNotTerminated)
{
    loadBefore("0007 4869");
    EXPECT_EQ(textFailure(7), badTermination);
    loadBefore("0007");
    EXPECT_EQ(textFailure(7), badTermination);
}

TEST_F(EmptyTextTable, IdentifierBeyondTheBufferFails)
{
    loadBefore("");
    EXPECT_EQ(textFailure(7), "Unexpected end of mx buffer (group 20d3)");
    loadBefore("00");
    EXPECT_EQ(textFailure(7), "Unexpected end of mx buffer (group 20d3)");
}

TEST(DatatypeSize, IsInBits)
{
    testkit::ParserAccess parser;
    const unsigned bits[] = {8, 16, 8, 16, 8, 32, 32, 64, 64};
    for (std::uint8_t type = 1; type <= 9; ++type) {
        EXPECT_EQ(parser.getDatatypeSize(devices::parser::mx::MxParameterDatatype{type}),
                  bits[type - 1])
            << int{type};
    }
}

TEST(DatatypeSize, Of5Is8)
{
    testkit::ParserAccess parser;
    EXPECT_EQ(parser.getDatatypeSize(devices::parser::mx::MxParameterDatatype::Byte), 8U);
}

TEST(DatatypeSize, Of0And10IsInvalid)
{
    testkit::ParserAccess parser;
    for (const std::uint8_t type : testkit::Bytes{0, 10, 255}) {
        EXPECT_EQ(failureOf([&] {
                      parser.getDatatypeSize(devices::parser::mx::MxParameterDatatype{type});
                  }),
                  "Invalid datatype")
            << int{type};
    }
}

} // namespace
