#include "bus/ByteStream.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

namespace mxonline {

namespace {

// A host may not ignore SIGPIPE, which would end it.
TEST(ByteStream, ReportsAClosedSocket)
{
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    close(ends[1]);
    const ByteStream stream(ends[0]);
    EXPECT_EQ(stream.write({1, 2}, ByteStream::Clock::now()), StreamEnd::Closed);
    close(ends[0]);
}

TEST(ByteStream, WritesToWhatIsNoSocket)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(ByteStream(ends[1]).write({1, 2}, ByteStream::Clock::now()), StreamEnd::Complete);
    std::vector<std::uint8_t> bytes;
    EXPECT_EQ(ByteStream(ends[0]).read(bytes, 2, ByteStream::Clock::now()), StreamEnd::Complete);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{1, 2}));
    close(ends[0]);
    close(ends[1]);
}

} // namespace

} // namespace mxonline
