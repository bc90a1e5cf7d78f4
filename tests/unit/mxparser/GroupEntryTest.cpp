#include "ContainerAccess.h"
#include "Failure.h"
#include "MxBuffer.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr std::uint16_t group = 0x0020;

// A reader over one text group. The checksum holds bytes that could be mistaken for text.
class GroupEntry : public testing::Test
{
protected:
    void load(const std::string& payload)
    {
        data = testkit::MxBuffer()
                   .raw(testkit::u16(group))
                   .raw(testkit::u16(static_cast<unsigned>(payload.size() + 6)))
                   .raw(testkit::textBytes(payload + "\r\n"))
                   .chars();
        reader.index(data);
    }

    std::string entry(const std::string& key) { return reader.getGroupEntry(group, key); }

    void expectNotFound(const std::string& key)
    {
        EXPECT_EQ(testkit::failureOf([&] { entry(key); }),
                  "Parser::getGroupEntry(): Key '" + key + "' not found in group 0020");
    }

    std::vector<char> data;
    testkit::ContainerAccess reader;
};

TEST_F(GroupEntry, KeyThatIsAPrefixOfAnotherKeyDoesNotMatchIt)
{
    load("IDX,s=1\r\nID,s=42\r\n");
    EXPECT_EQ(entry("ID"), "42");
    EXPECT_EQ(entry("IDX"), "1");
}

TEST_F(GroupEntry, AnyKindByteIsAccepted)
{
    load("A,\x01=one\r\nB,==two\r\nC,\n=three\r\n");
    EXPECT_EQ(entry("A"), "one");
    EXPECT_EQ(entry("B"), "two");
    EXPECT_EQ(entry("C"), "three");
}

TEST_F(GroupEntry, CommaAndEqualsSignAreRequired)
{
    load("A;s=1\r\nA,s:2\r\nA,s=3\r\n");
    EXPECT_EQ(entry("A"), "3");
}

TEST_F(GroupEntry, KeyIsCaseSensitive)
{
    load("id,s=1\r\nID,s=2\r\n");
    EXPECT_EQ(entry("ID"), "2");
    expectNotFound("Id");
}

TEST_F(GroupEntry, FirstOfARepeatedKeyCounts)
{
    load("A,s=1\r\nA,s=2\r\n");
    EXPECT_EQ(entry("A"), "1");
}

TEST_F(GroupEntry, ShortEntryAtTheEndWithoutALineEndIsNotFound)
{
    load("ID,s=42"); // 7 bytes: 0 + 2 + 5 < 7 does not hold
    expectNotFound("ID");
}

TEST_F(GroupEntry, EmptyValueInTheLastLineIsNotFound)
{
    load("X,s=9\r\nID,s=\r\n");
    expectNotFound("ID");
    load("ID,s=\r\n");
    expectNotFound("ID");
}

TEST_F(GroupEntry, EmptyValueFollowedByALineIsFound)
{
    load("ID,s=\r\nX,s=9\r\n");
    EXPECT_EQ(entry("ID"), "");
    load("ID,s=\r\n\n"); // one more byte suffices
    EXPECT_EQ(entry("ID"), "");
}

TEST_F(GroupEntry, LastLineWithAValueOfOneByteIsFound)
{
    load("X,s=9\r\nID,s=4\r\n");
    EXPECT_EQ(entry("ID"), "4");
}

TEST_F(GroupEntry, ValueWithoutLineEndRunsToTheEndOfThePayload)
{
    load("ID,s=abc"); // 8 bytes: found; the carriage return after it is the checksum's
    EXPECT_EQ(entry("ID"), "abc");
}

TEST_F(GroupEntry, LineFeedInAValueIsCopiedOnlyACarriageReturnEndsIt)
{
    load("ID,s=a\nb\r\n");
    EXPECT_EQ(entry("ID"), "a\nb");
}

TEST_F(GroupEntry, KeyIsTriedAfterALineFeedWithinAValueToo)
{
    load("A,s=x\nID,s=1\r\nEND,s=2\r\n");
    EXPECT_EQ(entry("ID"), "1");
}

TEST_F(GroupEntry, KeyInsideAValueIsNeverMatched)
{
    load("A,s=ID,s=1\r\nB,s=\rID,s=2\r\nID,s=3\r\n");
    EXPECT_EQ(entry("ID"), "3");
    load("A,s=ID,s=1\r\n");
    expectNotFound("ID");
}

TEST_F(GroupEntry, ValueKeepsEveryByteUpToTheCarriageReturn)
{
    load(std::string("A,s=\0\xFC,=\t\r\n", 11));
    EXPECT_EQ(entry("A"), std::string("\0\xFC,=\t", 5));
}

TEST_F(GroupEntry, LinesWithoutALineFeedEndTheSearch)
{
    load("A,s=1\rID,s=22\r");
    expectNotFound("ID");
}

TEST_F(GroupEntry, EmptyKeyMatchesALineThatBeginsWithTheSeparator)
{
    load("A,s=1\r\n,s=22\r\n");
    EXPECT_EQ(entry(""), "22");
}

TEST_F(GroupEntry, EmptyPayloadHoldsNoKey)
{
    load("");
    expectNotFound("ID");
}

TEST_F(GroupEntry, MissingGroupIsNamedByItsFourDigits)
{
    load("ID,s=42\r\n");
    EXPECT_EQ(testkit::failureOf([&] { reader.getGroupEntry(0x0ABC, "ID"); }),
              "Parser::getGroupEntry(): No such group: 0abc");
}

TEST_F(GroupEntry, MissingKeyIsQuotedAsItIs)
{
    load("ID,s=42\r\n");
    expectNotFound("Brand 'X'");
}

TEST_F(GroupEntry, ResultIsOneStringForTwoParsers)
{
    load("A,s=1\r\nB,s=2\r\nC,s=3\r\n");
    testkit::ContainerAccess other;
    other.index(data);
    const std::string& first = reader.getGroupEntry(group, "A");
    const std::string& second = other.getGroupEntry(group, "B");
    EXPECT_EQ(&first, &second);
    EXPECT_EQ(first, "2");
}

TEST_F(GroupEntry, ResultIsEmptyAfterEachFailure)
{
    load("A,s=1\r\nB,s=2\r\n");
    const std::string& result = reader.getGroupEntry(group, "A");
    expectNotFound("ID");
    EXPECT_EQ(result, "");
    reader.getGroupEntry(group, "A");
    EXPECT_EQ(result, "1");
    testkit::failureOf([&] { reader.getGroupEntry(0x0999, "A"); });
    EXPECT_EQ(result, "");
}

TEST_F(GroupEntry, EveryCutOfAPayloadIsReadWithinTheBuffer)
{
    const std::string whole = "IDX,s=1\r\nID,s=42\r\n";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        load(whole.substr(0, length));
        // The line of ID begins at 9: 9 + 2 + 5 < length.
        if (length > 16) {
            EXPECT_EQ(entry("ID"), "42") << length;
        } else {
            expectNotFound("ID");
        }
    }
}

} // namespace
