// `station read` as a process against a coupler in this process.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"
#include "coupler/RegisterPeer.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string beginning =
    "modbus: {parameters: {address: 1000}, identity: {address: 500}, timeout: 300, retries: 0}\n"
    "modules:\n"
    "  - module: " PROJECT_BUILD "/examples/modules/MX0304.bin # levels\n";
const std::string stated = beginning + "    parameters: {Mains suppression: 60} # Boston\n";

class StationRead : public testing::Test
{
protected:
    StationRead() : file(directory.write("row.yaml", {stated.begin(), stated.end()}))
    {
        peer.put(500, {0x5A03, 0x0304});
        peer.put(1000, defaultsOf0304);
    }

    ToolRun read(const std::vector<std::string>& more = {})
    {
        std::vector<std::string> call = {"station", "read", file, "--target",
                                         targetText(peer.target())};
        call.insert(call.end(), more.begin(), more.end());
        return runTool(call);
    }

    testkit::TemporaryDirectory directory;
    std::string file;
    RegisterPeer peer;
};

TEST_F(StationRead, ReplacesTheValuesInTheFile)
{
    peer.put(1008, {9000});
    const ToolRun run = read();
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, AllOf(HasSubstr("2 parameters of 1 module differ\n"),
                               HasSubstr("2 values written to " + file + "\n")));
    EXPECT_EQ(readFile(file),
              beginning + "    parameters: {Mains suppression: 50 Hz, AI 2: {Upper limit: 9 V}} # "
                          "Boston\n");
    for (const std::string& request : peer.requests()) {
        EXPECT_EQ(request.substr(0, 2), "3 "); // nothing is written to the coupler
    }
}

TEST_F(StationRead, WritesElsewhere)
{
    const ToolRun run = read({"-q", "-o", "-"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, beginning + "    parameters: {Mains suppression: 50 Hz} # Boston\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(readFile(file), stated);
}

TEST_F(StationRead, KeepsTheFileAfterAFault)
{
    peer.answersUntilSilence = 1;
    ToolRun run = read();
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_EQ(readFile(file), stated);
    peer.answersUntilSilence = -1;
    peer.put(1000, {0x3D00}); // 61 Hz
    run = read();
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.err, HasSubstr("parameter \"Mains suppression\": register 1000 (0x03e8): "));
    EXPECT_EQ(readFile(file), stated);
    peer.put(500, {0x5A03, 0x0302});
    run = read();
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.err, HasSubstr("the coupler has 5a030302"));
    EXPECT_EQ(readFile(file), stated);
}

TEST_F(StationRead, RejectsATargetBeforeReadingAnything)
{
    const ToolRun run = runTool({"station", "read", "nowhere.yaml", "--target", "127.0.0.1"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, Not(HasSubstr("nowhere.yaml")));
}

} // namespace
