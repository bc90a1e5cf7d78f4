// `station watch` and `station set` as processes on a simulated coupler.

#include "RunningTool.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <csignal>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;
using tooltest::RunningTool;
using tooltest::runTool;
using tooltest::ToolRun;
using tooltest::ToolSetup;

const std::string pumpHouse = PROJECT_ROOT "/examples/stations/pump-house.yaml";

// The pump house on a simulator of its own.
class WatchAndSet : public testing::Test
{
protected:
    WatchAndSet() : simulator({"simulate", pumpHouse, "--listen", "tcp:127.0.0.1:0"})
    {
        const std::string line = simulator.line();
        target = line.substr(line.find("tcp:"));
    }

    ToolRun run(const std::string& verb, const std::vector<std::string>& more,
                const ToolSetup& setup = {}) const
    {
        std::vector<std::string> call = {"station", verb, pumpHouse, "--target", target};
        call.insert(call.end(), more.begin(), more.end());
        return runTool(call, setup);
    }

    // The value of a channel now.
    std::string valueOf(const std::string& channel) const
    {
        const ToolRun sample = run("watch", {"--once", "--format", "json", channel});
        EXPECT_EQ(sample.exitCode, 0) << sample.err;
        return nlohmann::json::parse(sample.out)["values"][channel].dump();
    }

    RunningTool simulator;
    std::string target;
};

TEST_F(WatchAndSet, watchShowsValuesByName)
{
    simulator.write("LT_101 = -5\n");
    while (valueOf("LT_101") != "-5") {
    }
    const ToolRun text = run("watch", {"--once", "LT_101", "P_101"});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_THAT(text.out,
                AllOf(HasSubstr("\nPosition  Module  Channel  Alias   Symbol  Value  Hex\n"),
                      HasSubstr("\n2         Levels  AI 1     LT_101  IW2     -5     0xfffb\n"),
                      EndsWith("\n3         Pumps   DO 1     P_101   QX0_0   0\n")));
}

TEST_F(WatchAndSet, watchWritesALineForEachSample)
{
    const std::string time = "20[0-9-]+T[0-9:]+\\.[0-9]{3}Z";
    const ToolRun csv =
        run("watch", {"--samples", "2", "--interval", "1ms", "--format", "csv", "P_101", "LT_101"});
    EXPECT_EQ(csv.exitCode, 0);
    EXPECT_THAT(csv.out,
                MatchesRegex("time,LT_101,P_101\r\n" + time + ",0,0\r\n" + time + ",0,0\r\n"));
    const ToolRun changes = run(
        "watch", {"--samples", "3", "--interval", "1ms", "--format", "csv", "--changes", "P_101"});
    EXPECT_THAT(changes.out, MatchesRegex("time,P_101\r\n" + time + ",0\r\n"));
}

TEST_F(WatchAndSet, watchEndsWithCode0AfterCtrlC)
{
    RunningTool watch({"station", "watch", pumpHouse, "--target", target, "--interval", "5ms",
                       "--format", "csv", "P_101"});
    EXPECT_EQ(watch.line(), "time,P_101\r");
    EXPECT_THAT(watch.line(), EndsWith("Z,0\r"));
    EXPECT_EQ(watch.end(SIGINT), 0);
}

// A log of samples does not go on without a word; with --keep-going it does, with one.
TEST_F(WatchAndSet, watchEndsAfterAFaultUnlessItIsToGoOn)
{
    simulator.end(SIGTERM);
    const ToolRun ended = run("watch", {"--format", "csv", "P_101"});
    EXPECT_EQ(ended.exitCode, 4);
    EXPECT_THAT(ended.err, HasSubstr("the connection was refused"));
    const ToolRun kept = run("watch", {"--format", "csv", "--keep-going", "--samples", "2",
                                       "--interval", "1ms", "P_101"});
    EXPECT_EQ(kept.exitCode, 4);
    EXPECT_THAT(kept.err, AllOf(StartsWith(target), HasSubstr("refused")));
}

TEST_F(WatchAndSet, watchEndsWhenItsOutputIsFull)
{
    ToolSetup full;
    full.standardOutput = "/dev/full";
    for (const char* format : {"text", "csv"}) {
        const ToolRun watch =
            run("watch",
                {"--samples", "3", "--interval", "1ms", "--keep-going", "--format", format}, full);
        EXPECT_EQ(watch.exitCode, 4);
        EXPECT_EQ(watch.err, "<standard output>: error: Cannot write: No space left on device\n");
    }
}

TEST_F(WatchAndSet, aNameThatThereIsNotIsReportedBeforeAnythingIsSent)
{
    const ToolRun watch = run("watch", {"--once", "LT_10"});
    EXPECT_EQ(watch.exitCode, 2);
    EXPECT_THAT(watch.err,
                HasSubstr("the station has no channel or module with channels \"LT_10\", did you "
                          "mean \"LT_101\" or \"LT_102\"?"));
    const ToolRun interval = run("watch", {"--interval", "0ms"});
    EXPECT_EQ(interval.exitCode, 2);
    EXPECT_THAT(interval.err, HasSubstr("--interval: error: the time is 0"));
}

TEST_F(WatchAndSet, setChangesOneOutputAndSaysThatItStays)
{
    const ToolRun set = run("set", {"--yes", "P_101=on"});
    EXPECT_EQ(set.exitCode, 0) << set.err;
    EXPECT_THAT(set.out,
                EndsWith("1 output set and read back; it stays so until it is set again\n"));
    EXPECT_EQ(valueOf("P_101"), "1");
    EXPECT_EQ(valueOf("P_102"), "0");
    EXPECT_EQ(simulator.line(), "P_101 = 1");
}

TEST_F(WatchAndSet, setTakesValuesBackAfterItsTime)
{
    run("set", {"--yes", "P_102=1"});
    const ToolRun set = run("set", {"--yes", "--for", "1ms", "P_101=1", "P_102=0"});
    EXPECT_EQ(set.exitCode, 0) << set.err;
    EXPECT_THAT(set.out, EndsWith("2 outputs are again as before\n"));
    EXPECT_EQ(valueOf("P_101"), "0");
    EXPECT_EQ(valueOf("P_102"), "1");
}

TEST_F(WatchAndSet, setTakesValuesBackAfterCtrlC)
{
    RunningTool set(
        {"station", "set", pumpHouse, "--target", target, "--yes", "--for", "1h", "P_101=1"});
    EXPECT_EQ(simulator.line(), "P_101 = 1");
    while (set.line().find("read back") == std::string::npos) {
    }
    EXPECT_EQ(set.end(SIGINT), 0);
    EXPECT_EQ(simulator.line(), "P_101 = 0");
}

// An empty variable of a script must not let the values stay.
TEST_F(WatchAndSet, setTakesNoTimeThatIsNone)
{
    EXPECT_EQ(run("set", {"--yes", "--for", "", "P_101=1"}).exitCode, 2);
    const ToolRun zero = run("set", {"--yes", "--for", "0s", "P_101=1"});
    EXPECT_EQ(zero.exitCode, 2);
    EXPECT_THAT(zero.err, HasSubstr("--for: error: the time is 0, expected at least 1ms"));
    EXPECT_EQ(valueOf("P_101"), "0");
}

TEST_F(WatchAndSet, setSendsNothingWithoutConsent)
{
    const ToolRun noTerminal = run("set", {"P_101=1"});
    EXPECT_EQ(noTerminal.exitCode, 2);
    EXPECT_THAT(noTerminal.err, HasSubstr("nothing was sent to the coupler"));
    ToolSetup typedNo;
    typedNo.typed = "no\n";
    EXPECT_EQ(run("set", {"P_101=1"}, typedNo).exitCode, 1);
    EXPECT_EQ(valueOf("P_101"), "0");
    ToolSetup typedYes;
    typedYes.typed = "yes\n";
    EXPECT_EQ(run("set", {"P_101=1"}, typedYes).exitCode, 0);
    EXPECT_EQ(valueOf("P_101"), "1");
}

TEST_F(WatchAndSet, setReportsEveryErrorBeforeAnythingIsSent)
{
    const ToolRun set = run("set", {"--yes", "P_101=7", "LT_101=1", "P_102=1", "P_102=0", "a=1"});
    EXPECT_EQ(set.exitCode, 2);
    EXPECT_THAT(set.err, AllOf(HasSubstr("found the value \"7\", expected 0 or 1"),
                               HasSubstr("is an input, which cannot be set"),
                               HasSubstr("is stated twice"), HasSubstr("no channel \"a\"")));
    EXPECT_EQ(valueOf("P_102"), "0");
}

} // namespace
