#include "HarmlessOutput.h"
#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string analogueSheet = std::string(EXAMPLE_MODULES) + "/MX0304.bin";

TEST(DatasheetVerb, writesAPage)
{
    const testkit::TemporaryDirectory directory;
    const std::string page = directory.path("out.html");
    const ToolRun run = runTool({"datasheet", analogueSheet, "-o", page});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_THAT(readFile(page), HasSubstr("<h1>4 AI ±10 V / 0-20 mA</h1>"));
    EXPECT_EQ(runTool({"datasheet", analogueSheet, "-o", "-"}).out, readFile(page));
    EXPECT_EQ(runTool({"datasheet", analogueSheet}).exitCode, 2); // a page is not for a terminal
}

TEST(DatasheetVerb, readsTextsAndStandardInput)
{
    const ToolRun text = runTool({"datasheet", "examples/modules/MX0304.yaml", "-o", "-"});
    EXPECT_THAT(text.out, HasSubstr("<dd>MX0304.yaml</dd>"));
    tooltest::ToolSetup fromAnalogue;
    fromAnalogue.standardInput = analogueSheet;
    const ToolRun piped = runTool({"datasheet", "-", "-o", "-"}, fromAnalogue);
    EXPECT_EQ(piped.exitCode, 0) << piped.err;
    EXPECT_THAT(piped.out, HasSubstr("<dd>&lt;standard input&gt;</dd>"));
}

TEST(DatasheetVerb, writesThePageOfAStation)
{
    const ToolRun run = runTool({"datasheet", "examples/stations/pump-house.yaml", "-o", "-"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.out, HasSubstr("<h1>Pump house</h1>"));
    const testkit::TemporaryDirectory directory;
    const std::string url = "sqlite:" + directory.path("devices.sqlite");
    runTool({"populate", "examples/modules", "--db", url});
    const std::string text = "modules: [5a030304]\n";
    const std::string station = directory.write("a.yaml", {text.begin(), text.end()});
    EXPECT_THAT(runTool({"datasheet", station, "--db", url, "-o", "-"}).out,
                HasSubstr("4 AI ±10 V / 0-20 mA"));
    const ToolRun unknown = runTool({"datasheet", station, "--db", "sqlite:none", "-o", "-"});
    EXPECT_EQ(unknown.exitCode, 3);
    EXPECT_EQ(unknown.out, "");
}

TEST(DatasheetVerb, saysWhatAnotherFileIs)
{
    const testkit::TemporaryDirectory directory;
    const std::string config = directory.path("config.json");
    runTool({"config", analogueSheet, "--format", "json", "-o", config});
    const ToolRun run = runTool({"datasheet", config, "-o", "-"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(
        run.err,
        HasSubstr(
            "This is a configuration that mxtool config wrote, expected an mx file, its text form "
            "or a station"));
    const ToolRun broken =
        runTool({"datasheet", std::string(EXAMPLE_MODULES) + "/MX9999.bin", "-o", "-"});
    EXPECT_EQ(broken.exitCode, 3);
    EXPECT_THAT(broken.err, HasSubstr("Truncated mx buffer"));
}

TEST(DatasheetVerb, replacesNeitherItsInputNorWork)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = readFile(PROJECT_ROOT "/examples/modules/MX0304.yaml");
    ASSERT_FALSE(text.empty());
    const std::string module = directory.write("a.yaml", {text.begin(), text.end()});
    EXPECT_EQ(runTool({"datasheet", module, "-o", module}).exitCode, 2);
    EXPECT_EQ(runTool({"datasheet", analogueSheet, "-o", module}).exitCode, 2);
    EXPECT_EQ(readFile(module), text);
    EXPECT_EQ(runTool({"datasheet", analogueSheet, "-o", module, "--overwrite"}).exitCode, 0);
}

} // namespace
