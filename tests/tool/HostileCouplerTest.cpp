// Texts of a station and of the mx files in it, through the verbs that reach a coupler: they are
// shown but never interpreted.

#include "HarmlessOutput.h"
#include "HostileModule.h"
#include "RunningTool.h"
#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <csignal>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::json;
using testing::HasSubstr;
using tooltest::expectHarmless;
using tooltest::expectHarmlessCsv;
using tooltest::hostileTexts;
using tooltest::RunningTool;
using tooltest::runTool;
using tooltest::ToolRun;

using Words = std::vector<std::string>;

// Each text is the name of a module and the alias of its first channel; the first module has all
// texts as names of channels and parameters. JSON is YAML.
class HostileCoupler : public testing::Test
{
protected:
    HostileCoupler() : station(stationFile()), simulator({"simulate", station, "--listen", here})
    {
        const std::string line = simulator.line();
        EXPECT_THAT(line, HasSubstr("tcp:")) << simulator.errors();
        target = line.substr(std::min(line.find("tcp:"), line.size()));
    }

    std::string stationFile()
    {
        const auto bytes = tooltest::hostileModule(31);
        directory.write("texts.bin", bytes);
        Json made{{"station", hostileTexts()[0].utf8},
                  {"layout", {{"most_modules", 200}}},
                  {"modbus",
                   {{"parameters", {{"address", 0x4000}}}, {"identity", {{"address", 0x3000}}}}},
                  {"modules", {"texts.bin"}}};
        for (std::size_t i = 0; i < hostileTexts().size(); ++i) {
            const std::string& text = hostileTexts()[i].utf8;
            Json& module = made["modules"].emplace_back();
            module["module"] = PROJECT_BUILD "/examples/modules/MX0204.bin";
            module["name"] = text;
            module["channels"]["0"] = {{"alias", "a" + std::to_string(i) + text}};
        }
        const std::string text = made.dump();
        return directory.write("station.yaml", {text.begin(), text.end()});
    }

    std::string outputOf(const std::string& verb, const Words& more, int exitCode = 0) const
    {
        Words call = {"station", verb, station, "--target", target};
        call.insert(call.end(), more.begin(), more.end());
        const ToolRun run = runTool(call);
        EXPECT_EQ(run.exitCode, exitCode) << testing::PrintToString(call) << run.err;
        expectHarmless(run.err);
        return run.out;
    }

    const std::string here = "tcp:127.0.0.1:0";
    testkit::TemporaryDirectory directory;
    std::string station;
    RunningTool simulator;
    std::string target;
};

TEST_F(HostileCoupler, namesItsChannelsHarmlesslyInSamples)
{
    const std::string text = outputOf("watch", {"--once"});
    expectHarmless(text);
    EXPECT_THAT(text, HasSubstr("\\x1b"));
    const Words twice = {"--samples", "2", "--interval", "1ms", "--format"};
    const auto formatted = [&](const std::string& format) {
        Words options = twice;
        options.push_back(format);
        return outputOf("watch", options);
    };
    expectHarmlessCsv(formatted("csv"));
    std::istringstream lines(formatted("json"));
    for (std::string line; std::getline(lines, line);) {
        expectHarmless(line);
        EXPECT_EQ(Json::parse(line)["schema"]["name"], "mxtool.sample");
    }
}

// Whatever a sample calls a channel, a call finds it by that name.
TEST_F(HostileCoupler, findsEachOutputByTheNameInASample)
{
    Words values = {"--yes"};
    const Json sample = Json::parse(outputOf("watch", {"--once", "--format", "json"}));
    for (const auto& [name, value] : sample["values"].items()) {
        if (name[0] == 'a') {
            values.push_back(name + "=1");
        }
    }
    EXPECT_GE(values.size(), hostileTexts().size());
    expectHarmless(outputOf("set", values));
    Words unknown = {"--yes"};
    for (const auto& text : hostileTexts()) {
        unknown.push_back("?" + text.utf8 + "=1");
    }
    expectHarmless(outputOf("set", unknown, 2));
    EXPECT_EQ(simulator.end(SIGTERM), 0);
    expectHarmless(simulator.errors());
}

TEST_F(HostileCoupler, isComparedHarmlessly)
{
    expectHarmless(outputOf("plan", {}));
    expectHarmless(outputOf("verify", {"--format", "json"}));
    expectHarmless(outputOf("apply", {"--yes"}));
}

} // namespace
