// The table on a pseudo terminal in place of standard output.
#include "station/LiveTable.h"

#include <gtest/gtest.h>

#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <string>

namespace {

using mxtool::LiveTable;

class LiveTableOnTerminal : public testing::Test
{
protected:
    void SetUp() override
    {
        winsize size = {};
        size.ws_row = 7;
        size.ws_col = 40;
        termios plain = {};
        cfmakeraw(&plain);
        ASSERT_EQ(openpty(&controller, &terminal, nullptr, &plain, &size), 0);
        kept = dup(STDOUT_FILENO);
        dup2(terminal, STDOUT_FILENO);
    }

    void TearDown() override
    {
        dup2(kept, STDOUT_FILENO);
        for (const int file : {controller, terminal, kept}) {
            close(file);
        }
    }

    std::string written() const
    {
        std::string text(4096, '\0');
        const ssize_t count = read(controller, text.data(), text.size());
        text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        return text;
    }

    int controller = -1;
    int terminal = -1;
    int kept = -1;
};

std::vector<mxonline::NamedChannel> channelsOf(std::size_t count)
{
    std::vector<mxonline::NamedChannel> channels;
    for (std::size_t i = 1; i <= count; ++i) {
        const std::string name = "C" + std::to_string(i);
        channels.push_back({name, i - 1, 1, "M", name, "", "IX0_" + std::to_string(i)});
    }
    return channels;
}

mxonline::Sample sampleOf(std::size_t count)
{
    mxonline::Sample sample;
    sample.values.assign(count, {1, "1", ""});
    sample.isChanged.assign(count, false);
    sample.isChanged.front() = true;
    return sample;
}

// 7 lines and 40 columns: the last line and column stay free. The heading has 61 columns.
TEST_F(LiveTableOnTerminal, FitsIntoTheWindow)
{
    const auto channels = channelsOf(3);
    LiveTable table("Row", channels);
    table.show(sampleOf(3));
    const std::string end = "\033[K\n";
    EXPECT_EQ(written(), "\n\n\n\n\n\n\n\033[HRow" + end + "1970-01-01T00:00:00.000Z" + end +
                             "Position  Module  Channel  Alias  Symb…" + end +
                             "\033[1;33m1         M       C1              IX0_…\033[0m" + end +
                             "1         M       C2              IX0_…" + end +
                             "1         M       C3              IX0_…" + end + "\033[J");
}

TEST_F(LiveTableOnTerminal, SaysHowManyChannelsDoNotFit)
{
    const auto channels = channelsOf(5);
    LiveTable table("Row", channels);
    table.show(sampleOf(5));
    const std::string text = written();
    EXPECT_NE(text.find("C2 "), std::string::npos);
    EXPECT_EQ(text.find("C3 "), std::string::npos);
    EXPECT_NE(text.find("3 more channels: make the window"), std::string::npos) << text;
}

TEST_F(LiveTableOnTerminal, ShowsAFaultBelowTheLastValues)
{
    const auto channels = channelsOf(1);
    LiveTable table("Row", channels);
    table.show(sampleOf(1));
    written();
    table.show(mxtool::Failure(mxtool::Origin::Output, "tcp:a:502", "no answer"));
    const std::string text = written();
    EXPECT_EQ(text.substr(0, 3), "\033[H");
    EXPECT_NE(text.find("M       C1"), std::string::npos);
    EXPECT_NE(text.find("\033[1;31mtcp:a:502: error: no answer\033[0m"), std::string::npos) << text;
}

} // namespace
