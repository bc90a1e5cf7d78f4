#include "Failure.h"
#include "MxBuffer.h"

#include <mxauthor/MxFile.h>

#include <gmock/gmock.h>

namespace {

using mxauthor::Bytes;
using mxauthor::Group;
using mxauthor::MxFile;
using mxauthor::Place;
using mxauthor::RawGroup;
using mxauthor::readMxFile;
using mxauthor::writeMxFile;
using testkit::hexBytes;
using testkit::MxBuffer;

MxFile read(const std::string& hex)
{
    const Bytes bytes = hexBytes(hex);
    return readMxFile({bytes.begin(), bytes.end()});
}

void expectPlace(const Place& place, unsigned group, unsigned offset, unsigned length)
{
    EXPECT_EQ(place.group, group);
    EXPECT_EQ(place.offset, offset);
    EXPECT_EQ(place.length, length);
}

TEST(MxFile, keepsGroupsInFileOrderRepeatedOnesIncluded)
{
    // A group 0x7abc, an empty one 0x0005, and 0x7abc again with another payload.
    const MxFile file = read("7abc 0008 0102 1234  0005 0006 abcd  7abc 0007 03 0000");
    ASSERT_EQ(file.groups.size(), 3U);
    EXPECT_EQ(file.groups[0].id, 0x7ABC);
    EXPECT_EQ(file.groups[1].id, 0x0005);
    EXPECT_EQ(file.groups[2].id, 0x7ABC);
    EXPECT_EQ(std::get<RawGroup>(file.groups[0].content).bytes.value, (Bytes{1, 2}));
    EXPECT_EQ(std::get<RawGroup>(file.groups[2].content).bytes.value, (Bytes{3}));
    EXPECT_EQ(file.groups[0].checksum.value, 0x1234);
    EXPECT_EQ(file.groups[1].checksum.value, 0xABCD);
}

TEST(MxFile, knowsWhereEachGroupAndItsChecksumStand)
{
    const MxFile file = read("7abc 0008 0102 1234  0005 0006 abcd");
    expectPlace(file.groups[1].place, 0x0005, 8, 6);
    expectPlace(file.groups[0].checksum.place, 0x7ABC, 6, 2);
    expectPlace(std::get<RawGroup>(file.groups[0].content).bytes.place, 0x7ABC, 4, 2);
}

TEST(MxFile, keepsTheBytesAfterTheContentLength)
{
    // Content length 10: what follows is not a group.
    const MxFile file = read("0000 000a 000a 0003 0000  ffff 0001");
    ASSERT_EQ(file.groups.size(), 1U);
    EXPECT_EQ(std::get<mxauthor::Header>(file.groups[0].content).contentLength.value, 10);
    EXPECT_EQ(file.tail.value, hexBytes("ffff0001"));
    expectPlace(file.tail.place, 0, 10, 4);
}

TEST(MxFile, refusesFramingThatDoesNotHoldWithTheReadersMessage)
{
    EXPECT_EQ(testkit::failureOf([] { read("7abc 0009 0102 0000"); }),
              "Parser::parse(): Error in group 31420 (@ 0): Index position out of bounds");
}

TEST(MxFile, computesTheLengthsOfWhatIsWritten)
{
    MxFile file;
    Group group;
    group.id = 0x20F1;
    group.content = mxauthor::ProductImage{Bytes{9, 8, 7}};
    group.checksum.value = 0x0102;
    file.groups.push_back(group);
    file.tail.value = {0xEE};
    EXPECT_EQ(writeMxFile(file), hexBytes("20f1 0009 090807 0102 ee"));
}

TEST(MxFile, writesAGroupOf65535BytesAndNoneBeyond)
{
    MxFile file;
    file.groups.resize(1);
    file.groups[0].id = 0x20F1;
    file.groups[0].content = mxauthor::ProductImage{Bytes(65529)};
    EXPECT_EQ(writeMxFile(file).size(), 65535U);
    file.groups[0].content = mxauthor::ProductImage{Bytes(65530)};
    EXPECT_THROW(writeMxFile(file), std::length_error);
}

} // namespace
