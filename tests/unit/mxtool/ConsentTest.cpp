#include "station/Consent.h"
#include "Diagnostic.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

#include <string>

namespace {

using mxtool::ExitCode;

// Standard input and standard error of this process, replaced and put back.
class Consent : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(openpty(&controller, &terminal, nullptr, nullptr, nullptr), 0);
        nothing = open("/dev/null", O_RDWR);
        keptInput = dup(STDIN_FILENO);
        keptError = dup(STDERR_FILENO);
    }

    void TearDown() override
    {
        dup2(keptInput, STDIN_FILENO);
        dup2(keptError, STDERR_FILENO);
        for (const int file : {controller, terminal, nothing, keptInput, keptError}) {
            close(file);
        }
    }

    void use(int input, int error) const
    {
        dup2(input, STDIN_FILENO);
        dup2(error, STDERR_FILENO);
    }

    bool answeredBy(const std::string& text) const
    {
        EXPECT_EQ(write(controller, text.data(), text.size()), static_cast<ssize_t>(text.size()));
        return mxtool::hasConsent(false, "Write 1 register?");
    }

    int controller = -1;
    int terminal = -1;
    int nothing = -1;
    int keptInput = -1;
    int keptError = -1;
};

ExitCode exitCodeWithout(bool isGiven)
{
    try {
        mxtool::requireConsentPossible(isGiven);
    } catch (const mxtool::Failure& failure) {
        return mxtool::exitCodeFor(failure);
    }
    return ExitCode::Done;
}

TEST_F(Consent, NeedsTwoTerminalsOrTheOption)
{
    use(nothing, nothing);
    EXPECT_EQ(exitCodeWithout(false), ExitCode::Usage);
    EXPECT_EQ(exitCodeWithout(true), ExitCode::Done);
    use(terminal, nothing);
    EXPECT_EQ(exitCodeWithout(false), ExitCode::Usage);
    use(nothing, terminal);
    EXPECT_EQ(exitCodeWithout(false), ExitCode::Usage);
    use(terminal, terminal);
    EXPECT_EQ(exitCodeWithout(false), ExitCode::Done);
}

TEST_F(Consent, IsTheWordYesAlone)
{
    use(terminal, terminal);
    EXPECT_TRUE(answeredBy("yes\n"));
    EXPECT_FALSE(answeredBy("y\n"));
    EXPECT_FALSE(answeredBy("yes please\n"));
    EXPECT_FALSE(answeredBy("\n"));
    EXPECT_FALSE(answeredBy("\4")); // end of input
}

TEST_F(Consent, AsksNothingWithTheOption)
{
    use(nothing, nothing);
    EXPECT_TRUE(mxtool::hasConsent(true, "Write 1 register?"));
}

} // namespace
