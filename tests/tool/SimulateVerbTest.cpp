#include "RunningTool.h"
#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fstream>

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;
using tooltest::RunningTool;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string smallest = std::string(PROJECT_ROOT) + "/examples/stations/smallest.yaml";

std::vector<std::string> simulate(std::vector<std::string> options)
{
    std::vector<std::string> call = {"simulate", smallest, "--listen", "tcp:127.0.0.1:0"};
    call.insert(call.end(), options.begin(), options.end());
    return call;
}

// The address that the simulator prints first.
std::string addressOf(RunningTool& simulator)
{
    const std::string line = simulator.line();
    EXPECT_THAT(line, StartsWith("listening at tcp:127.0.0.1:"));
    return line.substr(std::min<std::size_t>(line.size(), 13));
}

TEST(SimulateVerb, isACouplerWithTheDefaults)
{
    RunningTool simulator(simulate({}));
    const std::string target = addressOf(simulator);
    const ToolRun plan = runTool({"station", "plan", smallest, "--target", target});
    EXPECT_EQ(plan.exitCode, 0) << plan.err;
    simulator.closeInput();
    EXPECT_EQ(runTool({"station", "verify", smallest, "--target", target}).exitCode, 0);
    EXPECT_EQ(simulator.end(SIGTERM), 0);
    EXPECT_EQ(simulator.errors(), "");
}

TEST(SimulateVerb, carriesOutLinesOfStandardInput)
{
    RunningTool simulator(simulate({}));
    addressOf(simulator);
    simulator.write("AI 1 = 5\nRelay 1 = on\nshow AI 1\nAI 9 = 1\nshow Relay 1\n");
    EXPECT_EQ(simulator.line(), "Relay 1 = 1 (an output, set by the script)");
    EXPECT_EQ(simulator.line(), "MX0302/AI 1 = 5");
    EXPECT_EQ(simulator.line(), "MX0204/Relay 1 = 1");
    EXPECT_EQ(simulator.end(SIGINT), 1);
    EXPECT_THAT(simulator.errors(), StartsWith("<standard input>:4:1: error: "));
}

TEST(SimulateVerb, carriesOutAFileAgainAndAgain)
{
    const testkit::TemporaryDirectory own;
    std::ofstream(own.path("script")) << "show AI 1\nsleep 10ms\nAI 1 = 7\nrepeat\n";
    RunningTool simulator(simulate({"--script", own.path("script")}));
    addressOf(simulator);
    EXPECT_EQ(simulator.line(), "MX0302/AI 1 = 0");
    EXPECT_EQ(simulator.line(), "MX0302/AI 1 = 7");
    EXPECT_EQ(simulator.line(), "MX0302/AI 1 = 7");
    EXPECT_EQ(simulator.end(SIGTERM), 0);
}

TEST(SimulateVerb, takesALongLineInPartsAndGoesOn)
{
    RunningTool simulator(simulate({}));
    addressOf(simulator);
    simulator.write(std::string(50000, 'x') + "\nshow AI 2\n");
    EXPECT_EQ(simulator.line(), "MX0302/AI 2 = 0");
    EXPECT_EQ(simulator.end(SIGTERM), 1);
    EXPECT_EQ(simulator.errors().find("error:"), simulator.errors().rfind("error:"));
}

// A plan of this station takes three requests, one for the parameters of each module.
TEST(SimulateVerb, hasFaults)
{
    RunningTool simulator(simulate({"--fault", "exception=4,after=3", "--fault", "late=1ms"}));
    const std::string target = addressOf(simulator);
    EXPECT_EQ(runTool({"station", "plan", smallest, "--target", target}).exitCode, 0);
    const ToolRun plan = runTool({"station", "plan", smallest, "--target", target});
    EXPECT_EQ(plan.exitCode, 4);
    EXPECT_THAT(plan.err, HasSubstr("exception 4 \"server device failure\""));
    EXPECT_EQ(simulator.end(SIGTERM), 0);
}

TEST(SimulateVerb, rejectsFaultsThatItCannotHave)
{
    const ToolRun unknown = runTool(simulate({"--fault", "sillence"}));
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_THAT(unknown.err,
                StartsWith("sillence: error: there is no fault \"sillence\", did you mean "
                           "\"silence\"? (accepted: exception, busy, "));
    const ToolRun ofOtherLine = runTool(simulate({"--fault", "checksum"}));
    EXPECT_EQ(ofOtherLine.exitCode, 2);
    EXPECT_EQ(ofOtherLine.err, "checksum: error: TCP has no checksum\nhint: leave out the fault, "
                               "or simulate the other kind of line\n");
}

TEST(SimulateVerb, endsAfterItsTime)
{
    RunningTool simulator(simulate({"--seconds", "0"}));
    addressOf(simulator);
    EXPECT_EQ(simulator.end(0), 0);
}

TEST(SimulateVerb, saysWhyItCannotListen)
{
    RunningTool simulator(simulate({}));
    const std::string target = addressOf(simulator);
    const ToolRun second = runTool({"simulate", smallest, "--listen", target});
    EXPECT_EQ(second.exitCode, 4);
    EXPECT_EQ(second.out, "");
    EXPECT_EQ(second.err, target + ": error: cannot listen: another program listens there\n"
                                   "hint: end it, or state another port\n");
}

TEST(SimulateVerb, rejectsWhatItCannotUse)
{
    EXPECT_EQ(runTool({"simulate", smallest, "--listen", "tcp:"}).exitCode, 2);
    EXPECT_EQ(runTool(simulate({"--script", "/no/such/script"})).exitCode, 3);
    EXPECT_EQ(runTool({"simulate", "/no/such/station.yaml"}).exitCode, 3);
}

// The example of the help, at a port that the system chooses and without its time.
TEST(SimulateVerb, printsWhatItsHelpSays)
{
    const std::string help = runTool({"simulate", "--help"}).out;
    EXPECT_THAT(help, HasSubstr("  $ mxtool simulate examples/stations/smallest.yaml --listen "
                                "tcp:127.0.0.1:1502 --seconds 1\n"
                                "  listening at tcp:127.0.0.1:1502\n"));
    const ToolRun run = runTool(simulate({"--seconds", "0"}));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, MatchesRegex("listening at tcp:127\\.0\\.0\\.1:[0-9]+\n"));
}

} // namespace
