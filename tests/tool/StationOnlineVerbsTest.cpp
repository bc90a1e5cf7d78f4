// `station plan`, `apply` and `verify` as processes against a coupler in this process.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"
#include "coupler/RegisterPeer.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <atomic>
#include <csignal>
#include <optional>
#include <thread>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;
using tooltest::ToolSetup;

using Words = std::vector<std::uint16_t>;

const std::string modbus = "modbus: {parameters: {address: 1000, stride: 25}, "
                           "identity: {address: 500}, timeout: 300, retries: 0}\n";

// "Mains suppression" is register 1000, 60 Hz is 0x3c00; "Upper limit" of channel 2 is register
// 1008, 9 V is 9000.
const std::string levels = "modules:\n"
                           "  - module: " PROJECT_BUILD "/examples/modules/MX0304.bin\n"
                           "    name: Levels\n"
                           "    parameters: {Mains suppression: 60, AI 2/Upper limit: 9 V}\n";

// A coupler with the module of the station and its defaults.
class OnlineVerbs : public testing::Test
{
protected:
    OnlineVerbs() { setIdentity(0x5A030304); }

    void setIdentity(std::uint32_t id)
    {
        peer->put(500, {static_cast<std::uint16_t>(id >> 16), static_cast<std::uint16_t>(id)});
        peer->put(1000, defaultsOf0304);
    }

    std::string target() const { return targetText(peer->target()); }

    std::string station(const std::string& text = modbus + levels) const
    {
        return directory.write("row.yaml", {text.begin(), text.end()});
    }

    ToolRun run(const std::string& verb, const std::vector<std::string>& more = {},
                const ToolSetup& setup = {}) const
    {
        std::vector<std::string> call = {"station", verb, station(), "--target", target()};
        call.insert(call.end(), more.begin(), more.end());
        return runTool(call, setup);
    }

    // As "ADDRESS COUNT".
    std::vector<std::string> writes() const
    {
        std::vector<std::string> found;
        for (const std::string& request : peer->requests()) {
            if (request.compare(0, 3, "16 ") == 0) {
                found.push_back(request.substr(3));
            }
        }
        return found;
    }

    testkit::TemporaryDirectory directory;
    std::unique_ptr<RegisterPeer> peer = std::make_unique<RegisterPeer>();
};

TEST_F(OnlineVerbs, planShowsWhatWouldChangeAndWritesNothing)
{
    const ToolRun text = run("plan", {"--verbose"});
    EXPECT_EQ(text.exitCode, 1);
    EXPECT_THAT(text.out, AllOf(HasSubstr("Mains suppression  50 Hz"), HasSubstr("60 Hz"),
                                HasSubstr("1000 (0x03e8)"), HasSubstr("identified"),
                                EndsWith("Nothing was written.\n")));
    EXPECT_EQ(text.err, target() + ": note: 2 requests, 27 registers read, 0 registers written, 0 "
                                   "repetitions\n");
    const ToolRun asJson = run("plan", {"--format", "json"});
    EXPECT_EQ(asJson.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(asJson.out)["schema"]["name"], "mxtool.coupler-difference");
    EXPECT_THAT(writes(), IsEmpty());
}

TEST_F(OnlineVerbs, applyMakesTheCouplerEqual)
{
    EXPECT_EQ(run("verify").exitCode, 1);
    const ToolRun applied = run("apply", {"--yes", "--verbose"});
    EXPECT_EQ(applied.exitCode, 0) << applied.err;
    EXPECT_THAT(applied.out, StartsWith("Done: read back and equal"));
    EXPECT_THAT(applied.err, AllOf(HasSubstr("2 parameters of 1 module differ"),
                                   HasSubstr("8 requests, 81 registers read, 2 registers written, "
                                             "0 repetitions")));
    EXPECT_THAT(writes(), ElementsAre("1000 1", "1008 1"));
    EXPECT_EQ(peer->at(1000, 1), (Words{0x3C00}));
    EXPECT_EQ(peer->at(1008, 1), (Words{9000}));
    EXPECT_EQ(run("plan").exitCode, 0);
    EXPECT_EQ(run("verify").exitCode, 0);
}

TEST_F(OnlineVerbs, withoutATerminalNothingIsSent)
{
    const ToolRun refused = run("apply", {"--verbose"});
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_EQ(refused.out, "");
    EXPECT_THAT(refused.err, AllOf(HasSubstr("nothing was sent"), HasSubstr("add --yes")));
    EXPECT_THAT(peer->requests(), IsEmpty());
}

TEST_F(OnlineVerbs, applyWritesAfterATypedYes)
{
    const ToolRun applied = run("apply", {}, {"/dev/null", "", {}, false, "yes\n", {}});
    EXPECT_EQ(applied.exitCode, 0) << applied.err;
    EXPECT_THAT(applied.err, HasSubstr("Write 2 parameters in 2 registers, 2 requests to " +
                                       target() + " unit 1? Type \"yes\" to write: "));
    EXPECT_THAT(writes(), ElementsAre("1000 1", "1008 1"));
}

class OtherAnswers : public OnlineVerbs, public testing::WithParamInterface<const char*>
{};

TEST_P(OtherAnswers, writeNothing)
{
    const ToolRun refused = run("apply", {}, {"/dev/null", "", {}, false, GetParam(), {}});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_THAT(refused.err, HasSubstr("nothing was written"));
    EXPECT_THAT(writes(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(OnlineVerbs, OtherAnswers, testing::Values("no\n", "\n", "\4"));

TEST_F(OnlineVerbs, theQuestionSaysThatNoModuleIsIdentified)
{
    const std::string text = "modbus: {parameters: {address: 1000}, timeout: 300}\n" + levels;
    const ToolRun asked = runTool({"station", "apply", station(text), "--target", target()},
                                  {"/dev/null", "", {}, false, "no\n", {}});
    EXPECT_THAT(asked.err, HasSubstr("identity registers of the coupler. Write 2 parameters"));
}

TEST_F(OnlineVerbs, theReportHasTheFormOfItsName)
{
    const std::string jsonFile = directory.path("report.json");
    const ToolRun applied = run("apply", {"--yes", "-o", jsonFile});
    EXPECT_EQ(applied.exitCode, 0);
    EXPECT_EQ(applied.out, "");
    EXPECT_THAT(applied.err, EndsWith("\nDone: read back and equal to the station; 2 parameters "
                                      "changed\n"));
    EXPECT_EQ(nlohmann::json::parse(readFile(jsonFile))["done"], true);
    const std::string page = directory.path("report.html");
    EXPECT_EQ(run("apply", {"--yes", "-o", page}).exitCode, 0);
    EXPECT_THAT(readFile(page), StartsWith("<!DOCTYPE html>"));
    EXPECT_EQ(run("apply", {"--yes", "-o", page, "--format", "text"}).exitCode, 0);
    EXPECT_THAT(readFile(page), StartsWith("Done: "));
}

TEST_F(OnlineVerbs, anOutputIsCheckedBeforeTheFirstWrite)
{
    for (const std::string& output :
         {directory.path("nowhere/report.txt"), directory.path(), station()}) {
        const ToolRun refused = run("apply", {"--yes", "-o", output});
        EXPECT_NE(refused.exitCode, 0) << output;
        EXPECT_THAT(refused.err, HasSubstr(output)) << output;
    }
    EXPECT_THAT(peer->requests(), IsEmpty());
    EXPECT_EQ(readFile(station()), modbus + levels);
}

TEST_F(OnlineVerbs, aReportThatCannotBeWrittenIsShown)
{
    for (const char* format : {"text", "json", "html"}) {
        const ToolRun applied = run("apply", {"--yes", "--format", format, "-o", "/dev/full"});
        EXPECT_EQ(applied.exitCode, 4);
        EXPECT_THAT(applied.err, AllOf(HasSubstr("\nDone: read back and equal to the station"),
                                       HasSubstr("/dev/full: error: Cannot write")));
    }
    EXPECT_EQ(run("apply", {"--yes"}, {"/dev/null", "", {}, true, {}, {}}).exitCode, 4);
}

TEST_F(OnlineVerbs, anotherModuleStopsEveryVerb)
{
    setIdentity(0x5A030302);
    for (const char* verb : {"plan", "verify", "apply"}) {
        const bool writes = std::string(verb) == "apply";
        const ToolRun stopped =
            run(verb, writes ? std::vector<std::string>{"--yes"} : std::vector<std::string>{});
        EXPECT_EQ(stopped.exitCode, 4);
        EXPECT_THAT(stopped.err, HasSubstr("module 1 \"Levels\" is 5a030304 in the station, the "
                                           "coupler has 5a030302"));
        EXPECT_THAT(writes ? stopped.err : stopped.out, HasSubstr("another module: 5a030302"));
    }
    EXPECT_THAT(writes(), IsEmpty());
}

TEST_F(OnlineVerbs, aTargetThatIsNoneEndsWith2BeforeTheStationIsRead)
{
    for (const char* verb : {"plan", "verify", "apply"}) {
        std::vector<std::string> call = {"station", verb, "nowhere.yaml", "--target", "udp:host"};
        if (std::string(verb) == "apply") {
            call.emplace_back("--yes");
        }
        const ToolRun refused = runTool(call);
        EXPECT_EQ(refused.exitCode, 2);
        EXPECT_THAT(refused.err,
                    AllOf(HasSubstr("neither \"tcp:\" nor \"rtu:\""),
                          HasSubstr("hint: a target is "), Not(HasSubstr("nowhere.yaml"))));
    }
    EXPECT_THAT(runTool({"station", "plan", "row.yaml"}).err, HasSubstr("--target is required"));
    EXPECT_EQ(runTool({"station", "plan", "row.yaml", "--target", ""}).exitCode, 2);
}

TEST_F(OnlineVerbs, aStationWithoutRegistersEndsWith3)
{
    const ToolRun refused =
        runTool({"station", "plan", station(levels), "--target", target(), "--verbose"});
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_THAT(refused.err, HasSubstr("(\"modbus:\")"));
    EXPECT_THAT(peer->requests(), IsEmpty());
}

TEST_F(OnlineVerbs, aRefusedConnectionEndsWith4)
{
    const std::string gone = target();
    peer.reset();
    const ToolRun refused = runTool({"station", "plan", station(), "--target", gone});
    EXPECT_EQ(refused.exitCode, 4);
    EXPECT_THAT(refused.err,
                AllOf(HasSubstr(gone + " unit 1: error: module 1 \"Levels\""),
                      HasSubstr("the connection was refused"), HasSubstr("hint: nothing listens")));
}

TEST_F(OnlineVerbs, aValueThatDoesNotStickIsReported)
{
    peer->afterWrite = [](std::map<unsigned, std::uint16_t>& registers) {
        registers[1008] = 0x2328 - 1; // 8.999 V
    };
    const std::string file = directory.path("report.txt");
    const ToolRun applied = run("apply", {"--yes", "-o", file});
    EXPECT_EQ(applied.exitCode, 4);
    EXPECT_THAT(readFile(file), AllOf(StartsWith("NOT DONE"), HasSubstr("8.999 V")));
    EXPECT_THAT(applied.err,
                AllOf(HasSubstr("read back 8.999 V, planned 9 V"), HasSubstr("error: NOT DONE")));
}

// Identity and parameters are read twice, then the connection closes after the first write.
TEST_F(OnlineVerbs, theSameCallFinishesAfterAClosedConnection)
{
    peer->answersUntilSilence = 5;
    const ToolRun closed = run("apply", {"--yes"});
    EXPECT_EQ(closed.exitCode, 4);
    EXPECT_THAT(closed.out,
                AllOf(StartsWith("NOT DONE"), HasSubstr("not known"), Not(HasSubstr("Done:"))));
    EXPECT_THAT(closed.out, HasSubstr("parameter \"AI 2/Upper limit\""));
    peer->answersUntilSilence = -1;
    EXPECT_EQ(run("apply", {"--yes"}).exitCode, 0);
    EXPECT_EQ(run("verify").exitCode, 0);
}

TEST_F(OnlineVerbs, aSignalEndsItBetweenTwoWrites)
{
    std::atomic<pid_t> process{0};
    peer->onWrite = [&process](unsigned /*address*/, unsigned /*count*/) {
        while (process == 0) {
            std::this_thread::yield();
        }
        kill(process, SIGINT);
        return 0;
    };
    ToolSetup setup;
    setup.onStart = [&process](pid_t started) { process = started; };
    const ToolRun interrupted = run("apply", {"--yes"}, setup);
    EXPECT_EQ(interrupted.exitCode, 4);
    EXPECT_THAT(writes(), ElementsAre("1000 1"));
    EXPECT_THAT(interrupted.out, AllOf(StartsWith("NOT DONE"), HasSubstr("interrupted by a signal"),
                                       HasSubstr("hint: run the same call again")));
    peer->onWrite = [](unsigned /*address*/, unsigned /*count*/) { return 0; };
    EXPECT_EQ(run("apply", {"--yes"}).exitCode, 0);
}

} // namespace
