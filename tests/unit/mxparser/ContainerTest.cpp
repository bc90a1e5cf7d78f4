#include "ContainerAccess.h"
#include "Failure.h"
#include "MxBuffer.h"

#include <gmock/gmock.h>

#include <memory>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;
using testkit::Bytes;
using testkit::hexBytes;

// A reader and the buffer that it indexes: an allocation that ends with the last byte, so that one
// byte too far is seen.
class Container : public testing::Test
{
protected:
    void parse(const Bytes& bytes)
    {
        data = std::make_unique<std::uint8_t[]>(bytes.size());
        std::copy(bytes.begin(), bytes.end(), data.get());
        reader.parse(data.get(), static_cast<std::uint32_t>(bytes.size()));
    }

    std::string failureOf(const std::string& hex)
    {
        return testkit::failureOf([&] { parse(hexBytes(hex)); });
    }

    std::unique_ptr<std::uint8_t[]> data;
    testkit::ContainerAccess reader;
};

TEST_F(Container, LengthsOf0To4AreAcceptedAndIndexNothing)
{
    const Bytes tiny = hexBytes("0005 0005");
    for (std::size_t length = 0; length <= 4; ++length) {
        parse(Bytes(tiny.begin(), tiny.begin() + static_cast<std::ptrdiff_t>(length)));
        EXPECT_THAT(reader.groupIndex, IsEmpty()) << length;
        EXPECT_THAT(reader.groupOrder, IsEmpty()) << length;
        EXPECT_EQ(reader.buffer, data.get()) << length;
    }
}

TEST_F(Container, NullBufferOfLengthZeroIsAccepted)
{
    reader.parse(static_cast<const std::uint8_t*>(nullptr), 0);
    EXPECT_THAT(reader.groupOrder, IsEmpty());
    EXPECT_EQ(reader.buffer, nullptr);
}

TEST_F(Container, FirstPayloadIsAtOffset4AndAGroupOfLength6HasSize0)
{
    parse(hexBytes("0005 0006 0000"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(5));
    EXPECT_THAT(reader.groupIndex, UnorderedElementsAre(Pair(5, Pair(4U, 0U))));
}

TEST_F(Container, GroupsAreIndexedByPayloadAndListedInFileOrder)
{
    parse(hexBytes("20d3 0008 aabb 0000"
                   "0005 0006 0000"
                   "0011 0009 010203 0000"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(0x20D3, 0x0005, 0x0011));
    EXPECT_THAT(reader.groupIndex,
                UnorderedElementsAre(Pair(0x20D3, Pair(4U, 2U)), Pair(0x0005, Pair(12U, 0U)),
                                     Pair(0x0011, Pair(18U, 3U))));
}

TEST_F(Container, HeaderGroupIsIndexedLikeEveryOther)
{
    parse(hexBytes("0000 000a 000a beef 0000"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(0));
    EXPECT_THAT(reader.groupIndex, UnorderedElementsAre(Pair(0, Pair(4U, 4U))));
}

TEST_F(Container, UpToFourTrailingBytesAreIgnored)
{
    const Bytes group = hexBytes("0005 0006 0000");
    for (std::size_t extra = 1; extra <= 4; ++extra) {
        parse(testkit::join({group, Bytes(extra, 0xFF)}));
        EXPECT_THAT(reader.groupOrder, ElementsAre(5)) << extra;
    }
}

TEST_F(Container, FiveTrailingBytesAreAGroup)
{
    EXPECT_EQ(failureOf("0005 0006 0000 ffffffffff"),
              "Parser::parse(): Error in group 65535 (@ 6): Index position out of bounds");
}

TEST_F(Container, GroupLengthOf5ThatFitsIsInvalid)
{
    EXPECT_EQ(failureOf("0005 0005 00"),
              "Parser::parse(): Error in group 5 (@ 0): Invalid group length");
    EXPECT_EQ(failureOf("0005 0000 0000"),
              "Parser::parse(): Error in group 5 (@ 0): Invalid group length");
}

TEST_F(Container, GroupPastTheEndIsOutOfBounds)
{
    EXPECT_EQ(failureOf("0005 0007 0000"),
              "Parser::parse(): Error in group 5 (@ 0): Index position out of bounds");
    EXPECT_EQ(failureOf("0005 0006 0000 0006 ffff 00"),
              "Parser::parse(): Error in group 6 (@ 6): Index position out of bounds");
}

TEST_F(Container, GroupsAreCheckedAgainstTheContentLengthNotTheBuffer)
{
    // The content ends at 13, within the second group; the buffer itself is longer.
    EXPECT_EQ(failureOf("0000 0008 000d 0000 0005 0006 0000 ffff"),
              "Parser::parse(): Error in group 5 (@ 8): Index position out of bounds");
    EXPECT_EQ(failureOf("0000 0008 000d 0000 0005 0005 0000 ffff"),
              "Parser::parse(): Error in group 5 (@ 8): Invalid group length");
}

TEST_F(Container, IdentifierAndStartArePrintedInDecimal)
{
    const Bytes before =
        testkit::MxBuffer().group(0x0005, Bytes(1228, 0)).raw(hexBytes("20d3 0010 0000")).bytes();
    EXPECT_EQ(testkit::failureOf([&] { parse(before); }),
              "Parser::parse(): Error in group 8403 (@ 1234): Index position out of bounds");
}

TEST_F(Container, HeaderGroupOfLength7IsInvalid)
{
    EXPECT_EQ(failureOf("0000 0007 0007 00"),
              "Parser::parse(): Error in group 0 (@ 0): Invalid group length");
}

TEST_F(Container, LengthIsCheckedFirstInAHeaderGroup)
{
    // Too short, with a content length beyond the buffer as well.
    EXPECT_EQ(failureOf("0000 0007 ffff 00"),
              "Parser::parse(): Error in group 0 (@ 0): Invalid group length");
    // Too short, and the content length crosses the end.
    EXPECT_EQ(failureOf("0000 0007 ff"),
              "Parser::parse(): Error in group 0 (@ 0): Invalid group length");
}

TEST_F(Container, ContentLengthIsCheckedBeforeTheBoundsOfAHeaderGroup)
{
    EXPECT_EQ(failureOf("0000 0100 0009 0000"), "Parser::parse(): Truncated mx buffer");
    EXPECT_EQ(failureOf("0000 0100 0008 0000"),
              "Parser::parse(): Error in group 0 (@ 0): Index position out of bounds");
}

TEST_F(Container, ContentLengthThatCrossesTheEndIsOutOfBounds)
{
    EXPECT_EQ(failureOf("0000 0008 ff"),
              "Parser::parse(): Error in group 0 (@ 0): Index position out of bounds");
    EXPECT_EQ(failureOf("0005 0006 0000 0000 0008 00"),
              "Parser::parse(): Error in group 0 (@ 6): Index position out of bounds");
}

TEST_F(Container, ContentLengthAboveTheBufferIsTruncated)
{
    EXPECT_EQ(failureOf("0000 0008 0009 0000"), "Parser::parse(): Truncated mx buffer");
    EXPECT_THAT(reader.groupOrder, IsEmpty());
}

TEST_F(Container, ContentLengthOfExactlyTheBufferChangesNothing)
{
    parse(hexBytes("0000 0008 000e 0000 0005 0006 0000"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(0, 5));
}

TEST_F(Container, GroupsAfterASmallerContentLengthAreNeverRead)
{
    parse(hexBytes("0000 0008 000e 0000 0005 0006 0000 0006 0001 0000 ffff ffff ffff"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(0, 5));
}

TEST_F(Container, ContentLengthNotBeyondTheHeaderGroupEndsTheWalk)
{
    parse(hexBytes("0000 0008 0008 0000 0005 0001 0000"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(0));
}

TEST_F(Container, ContentLengthThatCutsTheHeaderGroupIsOutOfBounds)
{
    EXPECT_EQ(failureOf("0000 0008 0007 0000"),
              "Parser::parse(): Error in group 0 (@ 0): Index position out of bounds");
    EXPECT_EQ(failureOf("0000 0008 0000 0000"),
              "Parser::parse(): Error in group 0 (@ 0): Index position out of bounds");
}

TEST_F(Container, SecondHeaderGroupReducesTheEndFurtherButNeverRaisesIt)
{
    // End 22, then 16: the third group is not read.
    parse(hexBytes("0000 0008 0016 0000 0000 0008 0010 0000 0005 0006 0000"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(0, 0));
    EXPECT_THAT(reader.groupIndex, UnorderedElementsAre(Pair(0, Pair(4U, 2U))));
    // End 16, then 22 although the buffer has 22 bytes.
    EXPECT_EQ(failureOf("0000 0008 0010 0000 0000 0008 0016 0000 0005 0006 0000"),
              "Parser::parse(): Truncated mx buffer");
}

TEST_F(Container, ContentLengthBeyondTheReducedEndIsReadFromTheBuffer)
{
    // The first header reduces the end to 13, in the middle of the second one's content length.
    EXPECT_EQ(failureOf("0000 0008 000d 0000 0000 0008 ffff 0000 0000 0000"),
              "Parser::parse(): Truncated mx buffer");
    EXPECT_EQ(failureOf("0000 0008 000d 0000 0000 0008 000d 0000 0000 0000"),
              "Parser::parse(): Error in group 0 (@ 8): Index position out of bounds");
    // Here the buffer ends there as well.
    EXPECT_EQ(failureOf("0000 0008 000d 0000 0000 0008 ff"),
              "Parser::parse(): Error in group 0 (@ 8): Index position out of bounds");
}

TEST_F(Container, RepeatedIdentifierIsIndexedFirstAndListedTwice)
{
    parse(hexBytes("0005 0007 aa 0000 0006 0006 0000 0005 0008 bbcc 0000"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(5, 6, 5));
    EXPECT_THAT(reader.groupIndex,
                UnorderedElementsAre(Pair(5, Pair(4U, 1U)), Pair(6, Pair(11U, 0U))));
    std::uint32_t size = 0;
    EXPECT_EQ(*reader.getGroup(5, &size), 0xAA);
}

TEST_F(Container, AnyChecksumIsAcceptedAndNoneComputed)
{
    parse(hexBytes("0005 0007 aa ffff 0006 0007 aa 1234"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(5, 6));
    EXPECT_EQ(reader.calculateCrc(data.get(), 14), 0);
    EXPECT_EQ(reader.calculateCrc(nullptr, 0), 0);
}

TEST_F(Container, SecondParseReplacesTheFirst)
{
    parse(hexBytes("0005 0006 0000 0006 0006 0000"));
    parse(hexBytes("0007 0007 aa 0000"));
    EXPECT_THAT(reader.groupOrder, ElementsAre(7));
    EXPECT_THAT(reader.groupIndex, UnorderedElementsAre(Pair(7, Pair(4U, 1U))));
    EXPECT_EQ(reader.buffer, data.get());
}

TEST_F(Container, FailureKeepsTheGroupsBeforeIt)
{
    parse(hexBytes("0001 0006 0000"));
    EXPECT_EQ(failureOf("0005 0006 0000 0006 0007 aa 0000 0007 0001 00"),
              "Parser::parse(): Error in group 7 (@ 13): Invalid group length");
    EXPECT_THAT(reader.groupOrder, ElementsAre(5, 6));
    EXPECT_THAT(reader.groupIndex,
                UnorderedElementsAre(Pair(5, Pair(4U, 0U)), Pair(6, Pair(10U, 1U))));
    EXPECT_EQ(reader.buffer, data.get());
}

TEST_F(Container, BufferOfCharIsReadTheSame)
{
    const auto chars = testkit::MxBuffer().group(0xFFFE, {0x80, 0xFF}).chars();
    reader.parse(chars.data(), static_cast<std::uint32_t>(chars.size()));
    EXPECT_THAT(reader.groupOrder, ElementsAre(0xFFFE));
    EXPECT_EQ(reader.buffer, reinterpret_cast<const std::uint8_t*>(chars.data()));
}

TEST_F(Container, LongestGroupIsAccepted)
{
    parse(testkit::MxBuffer().group(0x0005, Bytes(0xFFFF - 6, 7)).bytes());
    EXPECT_THAT(reader.groupIndex, UnorderedElementsAre(Pair(5, Pair(4U, 0xFFF9U))));
}

TEST_F(Container, EveryPrefixOfAValidFileIsIndexedToItsLastWholeGroupOrFails)
{
    const Bytes file = hexBytes("0005 0008 aabb 0000 0006 0006 0000 0007 0007 cc 0000");
    for (std::size_t length = 0; length <= file.size(); ++length) {
        const Bytes prefix(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
        const std::size_t groupStarts[] = {0, 8, 14, 21};
        std::size_t whole = 0;
        while (whole < 3 && groupStarts[whole + 1] <= length) {
            ++whole;
        }
        const std::size_t rest = length - groupStarts[whole];
        if (rest <= 4) {
            EXPECT_NO_THROW(parse(prefix)) << length;
        } else {
            EXPECT_EQ(testkit::failureOf([&] { parse(prefix); }),
                      "Parser::parse(): Error in group " + std::to_string(5 + whole) + " (@ " +
                          std::to_string(groupStarts[whole]) + "): Index position out of bounds");
        }
        EXPECT_EQ(reader.groupOrder.size(), whole) << length;
    }
}

TEST_F(Container, EveryPrefixOfAFileWithAHeaderGroupFailsUnlessTiny)
{
    const Bytes file = hexBytes("0000 0008 0016 0000 0005 0008 aabb 0000 0006 0006 0000");
    for (std::size_t length = 0; length < file.size(); ++length) {
        const Bytes prefix(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
        if (length <= 4) {
            EXPECT_NO_THROW(parse(prefix)) << length;
            continue;
        }
        // With five bytes the content length itself crosses the end.
        EXPECT_EQ(testkit::failureOf([&] { parse(prefix); }),
                  length == 5
                      ? "Parser::parse(): Error in group 0 (@ 0): Index position out of bounds"
                      : "Parser::parse(): Truncated mx buffer");
    }
    parse(file);
    EXPECT_THAT(reader.groupOrder, ElementsAre(0, 5, 6));
}

TEST_F(Container, GroupsHaveTheirPlacesRepeatedOnesTheirOwn)
{
    parse(hexBytes("20d3 0008 aabb 0000"
                   "0005 0006 0000"
                   "20d3 0009 010203 0000"));
    const auto places = reader.groups();
    ASSERT_EQ(places.size(), 3U);
    EXPECT_EQ(places[0].id, 0x20D3);
    EXPECT_EQ(places[0].payloadOffset, 4U);
    EXPECT_EQ(places[0].payloadSize, 2U);
    EXPECT_EQ(places[1].id, 0x0005);
    EXPECT_EQ(places[1].payloadOffset, 12U);
    EXPECT_EQ(places[1].payloadSize, 0U);
    EXPECT_EQ(places[2].payloadOffset, 18U);
    EXPECT_EQ(places[2].payloadSize, 3U);
}

TEST_F(Container, GroupsBeforeAFailureKeepTheirPlaces)
{
    EXPECT_NE(failureOf("0005 0006 0000 0007 00ff 0000"), "");
    ASSERT_EQ(reader.groups().size(), 1U);
    EXPECT_EQ(reader.groups()[0].id, 0x0005);
    parse({});
    EXPECT_THAT(reader.groups(), IsEmpty());
}

TEST_F(Container, GateGivesPlacesInTheBufferOnly)
{
    parse(hexBytes("20d3 0008 aabb 0000 ff")); // nine bytes, the payload at 4
    const std::uint8_t* payload = reader.getGroup(0x20D3, nullptr);
    EXPECT_EQ(reader.bytesFrom(payload, 0), 5U);
    EXPECT_EQ(reader.bytesFrom(payload, 4), 1U);
    EXPECT_EQ(reader.bytesFrom(payload, 5), 0U);
    EXPECT_EQ(reader.bytesFrom(payload, 0xFFFFFFFF), 0U);
    EXPECT_EQ(reader.bytesAt(payload, 3, 2, 0x20D3), payload + 3);
    for (const auto& [offset, count] : {std::pair{4U, 2U}, std::pair{5U, 1U}, std::pair{0U, 6U},
                                        std::pair{0xFFFFFFFFU, 2U}, std::pair{1U, 0xFFFFFFFFU}}) {
        EXPECT_EQ(testkit::failureOf(
                      [&, o = offset, c = count] { reader.bytesAt(payload, o, c, 0x20D3); }),
                  "Unexpected end of mx buffer (group 20d3)");
    }
}

} // namespace
