#include "GroupListing.h"

#include "MxBuffer.h"

#include <gtest/gtest.h>

namespace {

using mxtool::GroupListing;
using mxtool::listGroups;

TEST(GroupListing, repeatedGroupsHaveTheirOwnPlaces)
{
    testkit::MxBuffer buffer;
    buffer.group(0x20D3, {1, 2}).group(7, {}).group(0x20D3, {3});
    const GroupListing listing = listGroups(buffer.chars());
    ASSERT_EQ(listing.groups.size(), 3U);
    EXPECT_EQ(listing.groups[0].payloadOffset, 4U);
    EXPECT_EQ(listing.groups[0].payloadSize, 2U);
    EXPECT_EQ(listing.groups[1].payloadOffset, 12U);
    EXPECT_EQ(listing.groups[1].payloadSize, 0U);
    EXPECT_EQ(listing.groups[2].payloadOffset, 18U);
    EXPECT_EQ(listing.groups[2].payloadSize, 1U);
    EXPECT_EQ(listing.framedSize, 21U);
    EXPECT_EQ(listing.failure, "");
}

TEST(GroupListing, aFailureKeepsTheGroupsInFront)
{
    testkit::MxBuffer buffer;
    buffer.group(7, {}).raw({0, 8, 0, 100, 0});
    const GroupListing listing = listGroups(buffer.chars());
    EXPECT_EQ(listing.groups.size(), 1U);
    EXPECT_EQ(listing.framedSize, 6U);
    EXPECT_EQ(listing.failure,
              "Parser::parse(): Error in group 8 (@ 6): Index position out of bounds");
}

} // namespace
