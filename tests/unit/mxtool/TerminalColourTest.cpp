#include "Diagnostic.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

#include <cstdlib>

namespace {

using mxtool::takesColour;

class Terminal : public testing::Test
{
protected:
    void SetUp() override
    {
        unsetenv("NO_COLOR");
        ASSERT_EQ(openpty(&controller, &terminal, nullptr, nullptr, nullptr), 0);
    }

    void TearDown() override
    {
        unsetenv("NO_COLOR");
        close(controller);
        close(terminal);
    }

    int controller = -1;
    int terminal = -1;
};

TEST_F(Terminal, takesColour)
{
    EXPECT_TRUE(takesColour(terminal));
}

TEST_F(Terminal, takesNoneWhenNoColorIsSet)
{
    setenv("NO_COLOR", "1", 1);
    EXPECT_FALSE(takesColour(terminal));
    setenv("NO_COLOR", "", 1); // empty is not set
    EXPECT_TRUE(takesColour(terminal));
}

TEST(TakesColour, aFileDoesNot)
{
    const int file = open("/dev/null", O_WRONLY);
    EXPECT_FALSE(takesColour(file));
    close(file);
}

} // namespace
