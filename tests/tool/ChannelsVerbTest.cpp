#include "MxBuffer.h"
#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;
using tooltest::ToolSetup;

const std::string mx0602 = "examples/modules/MX0602.bin";
const std::string warnings = "warning: channel 34: no IEC symbol assigned\n"
                             "warning: channel 35: no IEC symbol assigned\n";

std::size_t filesIn(const testkit::TemporaryDirectory& directory)
{
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(directory.path()), {}));
}

TEST(ChannelsVerb, warnsOfChannelsWithoutASymbolOnStandardError)
{
    const ToolRun run = runTool({"channels", mx0602});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, StartsWith("Channel  Name "));
    EXPECT_EQ(run.err, warnings);
    EXPECT_EQ(runTool({"channels", "--log-level", "error", mx0602}).err, "");
}

TEST(ChannelsVerb, writesThePictureBesideTheList)
{
    const testkit::TemporaryDirectory directory;
    const std::string picture = directory.path("image.svg");
    const ToolRun run = runTool({"channels", mx0602, "--picture", picture});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, runTool({"channels", mx0602}).out);
    EXPECT_THAT(readFile(picture), StartsWith("<svg "));
    EXPECT_EQ(filesIn(directory), 1U);
}

TEST(ChannelsVerb, aPictureOnStandardOutputReplacesTheList)
{
    const testkit::TemporaryDirectory directory;
    const std::string list = directory.path("list.csv");
    const ToolRun picture = runTool({"channels", mx0602, "--picture", "-"});
    EXPECT_THAT(picture.out, StartsWith("<svg "));
    EXPECT_THAT(picture.out, testing::EndsWith("</svg>\n"));
    const ToolRun both =
        runTool({"channels", mx0602, "--picture", "-", "--format", "csv", "-o", list});
    EXPECT_EQ(both.out, picture.out);
    EXPECT_THAT(readFile(list), StartsWith("number,name,"));
}

TEST(ChannelsVerb, aPictureIsSvgWhateverItsName)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun run = runTool({"channels", mx0602, "--picture", directory.path("a.png")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err,
                HasSubstr("--picture: draws SVG, expected a name that ends in .svg, not "));
    EXPECT_EQ(filesIn(directory), 0U);
}

TEST(ChannelsVerb, anOffsetAfterEveryImageIsSaid)
{
    const ToolRun far = runTool({"channels", mx0602, "--in-offset", "1000000"});
    EXPECT_EQ(far.exitCode, 0);
    EXPECT_THAT(far.err, HasSubstr("--in-offset 1000000: warning: "));
    EXPECT_THAT(runTool({"channels", mx0602, "--in-offset", "10"}).err,
                testing::Not(HasSubstr("--in-offset")));
}

TEST(ChannelsVerb, aPictureThatCannotBeWrittenIsAFailedOutput)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun missing =
        runTool({"channels", mx0602, "--picture", directory.path("none/image.svg")});
    EXPECT_EQ(missing.exitCode, 4);
    EXPECT_EQ(missing.out, "");
    EXPECT_THAT(missing.err, HasSubstr("none/image.svg: error: Cannot write: No such file"));
    const ToolRun full = runTool({"channels", mx0602, "--picture", "/dev/full"});
    EXPECT_EQ(full.exitCode, 4);
    EXPECT_EQ(full.out, "");
    EXPECT_EQ(runTool({"channels", mx0602, "--picture", directory.path()}).exitCode, 4);
    EXPECT_EQ(filesIn(directory), 0U);
}

TEST(ChannelsVerb, aListThatCannotBeWrittenIsAFailedOutput)
{
    ToolSetup full;
    full.standardOutput = "/dev/full";
    for (const char* format : {"text", "json", "csv", "st"}) {
        EXPECT_EQ(runTool({"channels", mx0602, "--format", format}, full).exitCode, 4);
    }
    EXPECT_EQ(runTool({"channels", mx0602, "--picture", "-"}, full).exitCode, 4);
}

TEST(ChannelsVerb, aBadInputKeepsThePictureThatWasThere)
{
    const testkit::TemporaryDirectory directory;
    const std::string picture = directory.write("image.svg", {'o', 'l', 'd'});
    const ToolRun run = runTool({"channels", "examples/modules/MX9999.bin", "--picture", picture});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(readFile(picture), "old");
}

TEST(ChannelsVerb, wordsThatContradictEachOtherAreRefused)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun map = runTool({"channels", mx0602, "--map", "--format", "json"});
    EXPECT_EQ(map.exitCode, 2);
    EXPECT_THAT(map.err, HasSubstr("--map: is drawn with --format text only, not with json"));
    const std::string file = directory.path("both");
    const ToolRun same = runTool({"channels", mx0602, "--picture", file, "-o", file});
    EXPECT_EQ(same.exitCode, 2);
    EXPECT_THAT(same.err,
                HasSubstr("/both: error: Two outputs of this call are the same file, this one;"));
    EXPECT_EQ(filesIn(directory), 0U);
}

TEST(ChannelsVerb, theMapIsAboveTheListWithoutColourOutsideATerminal)
{
    const ToolRun run = runTool({"channels", mx0602, "--map"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("│Count 2 +7"));
    EXPECT_THAT(run.out, testing::EndsWith(runTool({"channels", mx0602}).out));
    EXPECT_EQ(run.out.find('\033'), std::string::npos);
}

TEST(ChannelsVerb, readsStandardInput)
{
    ToolSetup setup;
    setup.standardInput = std::string(PROJECT_BUILD) + "/" + mx0602;
    EXPECT_EQ(runTool({"channels", "-"}, setup).out, runTool({"channels", mx0602}).out);
}

// Channels of 255 bits each, each beginning in the byte after the previous one, all with one long
// name.
testkit::MxBuffer crowdedModule()
{
    testkit::Bytes records;
    testkit::ChannelRecord record;
    record.bitLength = 255;
    for (unsigned i = 0; i < 1500; ++i) {
        record.bitOffset = static_cast<std::uint8_t>(i);
        records = testkit::join({std::move(records), record.bytes()});
    }
    testkit::MxBuffer module = testkit::minimalModule({"InData" + std::string(1500, 'D')});
    module.group(0x20d0, records);
    module.group(0x20d7, testkit::join({{0}, testkit::u16(7)}));
    module.group(0x20d3, testkit::textTablePayload({{7, "\033[2J*)" + std::string(20000, '<')}}));
    return module;
}

TEST(ChannelsVerb, aFileThatWantsToBeLargeGivesAPictureOfLimitedSizeInTime)
{
    const testkit::TemporaryDirectory directory;
    const std::string file = directory.write("MX1.bin", crowdedModule().chars());
    const auto start = std::chrono::steady_clock::now();
    const ToolRun picture =
        runTool({"channels", file, "--in-offset", "4294967000", "--picture", "-"});
    const ToolRun st = runTool({"channels", file, "--format", "st"});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
    EXPECT_EQ(picture.exitCode, 0) << picture.err;
    EXPECT_LT(picture.out.size(), 6'000'000U);
    EXPECT_EQ(picture.out.find('\033'), std::string::npos);
    EXPECT_EQ(st.exitCode, 0);
    EXPECT_LT(st.out.size(), 400'000U);
    EXPECT_EQ(st.out.find("*)<"), std::string::npos);
}

} // namespace
