#include "ContainerAccess.h"
#include "MxBuffer.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using testkit::hexBytes;
using testkit::MxBuffer;

TEST(GroupAccess, GivesPayloadAndSizeInTheCallersBuffer)
{
    const std::vector<char> data =
        MxBuffer().group(0x0005, hexBytes("aa")).group(0x20D3, hexBytes("010203")).chars();
    testkit::ContainerAccess reader;
    reader.index(data);
    std::uint32_t size = 0;
    const std::uint8_t* payload = reader.getGroup(0x20D3, &size);
    EXPECT_EQ(payload, reinterpret_cast<const std::uint8_t*>(data.data()) + 11);
    EXPECT_EQ(size, 3U);
}

TEST(GroupAccess, GroupOfLength6IsNotNullAndHasSize0)
{
    const std::vector<char> data = MxBuffer().group(0x0005, {}).chars();
    testkit::ContainerAccess reader;
    reader.index(data);
    std::uint32_t size = 77;
    EXPECT_NE(reader.getGroup(0x0005, &size), nullptr);
    EXPECT_EQ(size, 0U);
}

TEST(GroupAccess, MissingGroupIsNullAndLeavesTheSizeUntouched)
{
    const std::vector<char> data = MxBuffer().group(0x0005, {}).chars();
    testkit::ContainerAccess reader;
    reader.index(data);
    std::uint32_t size = 77;
    EXPECT_EQ(reader.getGroup(0x0006, &size), nullptr);
    EXPECT_EQ(size, 77U);
}

TEST(GroupAccess, SizeMayBeNull)
{
    const std::vector<char> data = MxBuffer().group(0x0005, {}).chars();
    testkit::ContainerAccess reader;
    reader.index(data);
    EXPECT_NE(reader.getGroup(0x0005, nullptr), nullptr);
    EXPECT_EQ(reader.getGroup(0x0006, nullptr), nullptr);
}

TEST(GroupAccess, RepeatedIdentifierGivesTheFirst)
{
    const std::vector<char> data =
        MxBuffer().group(0x0005, hexBytes("01")).group(0x0005, hexBytes("0202")).chars();
    testkit::ContainerAccess reader;
    reader.index(data);
    std::uint32_t size = 0;
    EXPECT_EQ(*reader.getGroup(0x0005, &size), 1);
    EXPECT_EQ(size, 1U);
}

TEST(GroupListing, HasALinePerGroupInFileOrder)
{
    const std::vector<char> data = MxBuffer()
                                       .group(0x0005, testkit::Bytes(1224, 0))
                                       .group(0x20D3, testkit::Bytes(56, 0))
                                       .group(0x0011, {})
                                       .chars();
    testkit::ContainerAccess reader;
    reader.index(data);
    testing::internal::CaptureStdout();
    reader.parseContent();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Group 0005 @ 4, size = 1224\n"
                                                      "Group 20d3 @ 1234, size = 56\n"
                                                      "Group 0011 @ 1296, size = 0\n");
}

TEST(GroupListing, RepeatedIdentifierShowsTheFirstOccurrenceEachTime)
{
    const std::vector<char> data =
        MxBuffer().group(0x0005, hexBytes("01")).group(0x0005, hexBytes("0202")).chars();
    testkit::ContainerAccess reader;
    reader.index(data);
    testing::internal::CaptureStdout();
    reader.parseContent();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Group 0005 @ 4, size = 1\nGroup 0005 @ 4, size = 1\n");
}

TEST(GroupListing, OfNoGroupsIsEmpty)
{
    testkit::ContainerAccess reader;
    testing::internal::CaptureStdout();
    reader.parseContent();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

} // namespace
