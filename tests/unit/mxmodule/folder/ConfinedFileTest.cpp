#include <folder/ConfinedFile.h>

#include <gmock/gmock.h>

namespace {

using mxmodule::FileStamp;
using mxmodule::isSettled;
using mxmodule::nameWithin;

TEST(NameWithin, hasNoDots)
{
    EXPECT_EQ(nameWithin("a/./b//c/../d"), "a/b/d");
    EXPECT_EQ(nameWithin("a/.."), ".");
    EXPECT_EQ(nameWithin("..a"), "..a");
    EXPECT_EQ(nameWithin("a/../.."), std::nullopt);
}

FileStamp writtenAt(time_t seconds, long nanoseconds)
{
    FileStamp stamp;
    stamp.modified = {seconds, nanoseconds};
    return stamp;
}

TEST(FileStamp, isSettledAfterFiftyMilliseconds)
{
    EXPECT_FALSE(isSettled(writtenAt(100, 1), {100, 50000000}));
    EXPECT_TRUE(isSettled(writtenAt(100, 1), {100, 50001001}));
    EXPECT_TRUE(isSettled(writtenAt(100, 999999999), {101, 100000000}));
    EXPECT_FALSE(isSettled(writtenAt(100, 999999999), {101, 0}));
}

// The time of some file systems has whole or even seconds.
TEST(FileStamp, isSettledLaterWithoutFractionsOfASecond)
{
    EXPECT_FALSE(isSettled(writtenAt(100, 0), {102, 0}));
    EXPECT_TRUE(isSettled(writtenAt(100, 0), {102, 600000000}));
}

TEST(FileStamp, isNotSettledIfTheClockWasSetBack)
{
    EXPECT_FALSE(isSettled(writtenAt(100, 1), {50, 0}));
}

} // namespace
