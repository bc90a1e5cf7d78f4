// mxtool build and dump as processes.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string mx0304 = "examples/modules/MX0304.bin";

class BuildVerb : public testing::Test
{
protected:
    std::string file(const std::string& name, const std::string& content) const
    {
        std::ofstream(directory.path(name), std::ios::binary) << content;
        return directory.path(name);
    }

    testkit::TemporaryDirectory directory;
};

// A module without findings, in 12 lines: parameters may follow.
const std::string sound = "module: {type: 1, id: 2}\n"
                          "catalogue:\n"
                          "  BrandLabelName: L\n"
                          "  BrandVersion: V\n"
                          "  BrandId: I\n"
                          "  BrandSerialNumber: S\n"
                          "  ProductVersion: P\n"
                          "  BrandOrderCode: O\n"
                          "  BrandHwRevision: H\n"
                          "component: {Component: C}\n"
                          "channels:\n"
                          "  - {name: In, in: Bit}\n";

// 300 lines: a module of 295 channels, one of which has a wrong kind.
std::string longText(int wrongLine)
{
    std::string text = "module:\n  type: 1\n  id: 0x5a010108\nheader: {}\nchannels:\n";
    for (int line = 6; line <= 300; ++line) {
        text += "  - {name: DI " + std::to_string(line) +
                ", number: " + std::to_string(line % 256) +
                ", in: " + (line == wrongLine ? "Bitt" : "Bit") + ", again: true}\n";
    }
    return text;
}

TEST_F(BuildVerb, anMxFileIsNoText)
{
    const std::string output = directory.path("out.bin");
    const ToolRun run = runTool({"build", mx0304, "-o", output});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.err, mx0304 + ": error: This is an mx file already, expected its text form\n"
                                "hint: mxtool dump FILE -o FILE.yaml writes the text form of an mx "
                                "file\n");
    EXPECT_FALSE(std::filesystem::exists(output));
}

TEST_F(BuildVerb, givesBackTheFileThatWasDumped)
{
    const std::string text = directory.path("module.yaml");
    const std::string binary = directory.path("module.bin");
    const ToolRun dump = runTool({"dump", mx0304, "-o", text});
    EXPECT_EQ(dump.exitCode, 0);
    EXPECT_EQ(dump.out + dump.err, "");
    const ToolRun build = runTool({"build", text, "-o", binary});
    EXPECT_EQ(build.exitCode, 0);
    EXPECT_EQ(build.out, binary + ": 1816 bytes\n");
    EXPECT_EQ(readFile(binary), runTool({"build", text, "-o", "-"}).out);
    EXPECT_EQ(runTool({"show", binary}).out, runTool({"show", mx0304}).out);
}

TEST_F(BuildVerb, showsAnErrorOfALongTextAtItsLineAndColumn)
{
    const std::string text = file("long.yaml", longText(217));
    const std::string binary = directory.path("long.bin");
    const ToolRun run = runTool({"build", text, "-o", binary});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              text +
                  ":217:37: error: unknown type \"Bitt\", did you mean \"Bit\"? (accepted: UInt8, "
                  "UInt16, SInt8, SInt16, Byte, UInt32, SInt32, UInt64, SInt64, Bit)\n"
                  "  - {name: DI 217, number: 217, in: Bitt, again: true}\n"
                  "                                    ^\n");
    EXPECT_FALSE(std::filesystem::exists(binary));
}

TEST_F(BuildVerb, leavesAnOlderFileInPlaceAfterAnError)
{
    const std::string text = file("wrong.yaml", "modul: []\n");
    const std::string binary = file("module.bin", "older");
    EXPECT_EQ(runTool({"build", text, "-o", binary}).exitCode, 3);
    EXPECT_EQ(readFile(binary), "older");
}

TEST_F(BuildVerb, buildsManyIntoADirectory)
{
    const std::string good = file("good.yaml", sound);
    const std::string wrong = file("wrong.yaml", "a: 1\nb: 2\n");
    const std::string missing = directory.path("missing.yaml");
    const std::string output = directory.path("out") + "/";
    const ToolRun run = runTool({"build", good, wrong, missing, "-o", output});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, output + "good.bin: 282 bytes\n");
    EXPECT_THAT(run.err, StartsWith(wrong + ":1:1: error: "));
    EXPECT_THAT(run.err, HasSubstr("\n" + wrong + ":2:1: error: "));
    EXPECT_THAT(run.err, HasSubstr("\n" + missing + ": error: "));
    EXPECT_TRUE(std::filesystem::exists(output + "good.bin"));
    EXPECT_FALSE(std::filesystem::exists(output + "wrong.bin"));
}

TEST_F(BuildVerb, reportsImpossibleOutputs)
{
    const std::string text = file("a.yaml", "module: []\n");
    const ToolRun several = runTool({"build", text, text, "-o", directory.path("a.bin")});
    EXPECT_EQ(several.exitCode, 2);
    EXPECT_THAT(several.err, HasSubstr("the output is not a directory"));
    const ToolRun same = runTool({"build", text, text, "-o", directory.path("out/")});
    EXPECT_EQ(same.exitCode, 2);
    EXPECT_THAT(same.err, HasSubstr("A second text for a.bin"));
    const ToolRun nameless = runTool({"build", "-", "-o", directory.path("out/")});
    EXPECT_EQ(nameless.exitCode, 2);
    EXPECT_THAT(nameless.err, HasSubstr("Standard input has no name"));
    const std::string good = file("good.yaml", sound);
    const ToolRun nowhere = runTool({"build", good, "-o", directory.path("no/such/a.bin")});
    EXPECT_EQ(nowhere.exitCode, 4);
}

TEST_F(BuildVerb, readsStandardInput)
{
    const std::string text = file("a.yaml", "module: {type: 1, id: 2}\nx: 1\n");
    tooltest::ToolSetup setup;
    setup.standardInput = text;
    const ToolRun run = runTool({"build", "-", "-o", "-"}, setup);
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, StartsWith("<standard input>:2:1: error: unknown key \"x\""));
}

TEST_F(BuildVerb, showsNoControlCharacterOfTheText)
{
    const std::string text = file("a.yaml", "a: \"\x1B[31m\"\n\xC2\x9B: 1\n");
    EXPECT_EQ(runTool({"build", text, "-o", "-"}).err.find_first_of("\x1B\x9B"), std::string::npos);
}

TEST_F(BuildVerb, dumpsADamagedFileWithAWarning)
{
    const std::string text = directory.path("damaged.yaml");
    const ToolRun dump = runTool({"dump", "examples/modules/MX9999.bin", "-o", text});
    EXPECT_EQ(dump.exitCode, 1);
    EXPECT_EQ(dump.err,
              "examples/modules/MX9999.bin:0x000412: warning: Parser::parse(): Truncated mx "
              "buffer\nhint: 227 bytes from here on are kept under \"tail\"\n");
    const std::string binary = directory.path("damaged.bin");
    EXPECT_EQ(runTool({"build", text, "-o", binary}).exitCode, 3);
    EXPECT_EQ(runTool({"build", text, "-o", binary, "--force"}).exitCode, 0);
    EXPECT_EQ(runTool({"dump", binary}).out, readFile(text));
}

TEST_F(BuildVerb, writesAFileWithFindingsAndReportsThemAtTheText)
{
    const std::string text =
        file("a.yaml", sound + "parameters:\n  - {name: A, channel: 7, type: UInt8}\n");
    const std::string binary = directory.path("a.bin");
    const ToolRun run = runTool({"build", text, "-o", binary});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, text + ":14:24: error: [parameter-channel] parameter 1 \"A\": belongs to "
                              "channel 7, which does not exist\n"
                              "  - {name: A, channel: 7, type: UInt8}\n"
                              "                       ^\n");
    EXPECT_TRUE(std::filesystem::exists(binary));
    EXPECT_EQ(runTool({"check", binary}).exitCode, 1);
}

TEST_F(BuildVerb, doesNotWriteWhatTheParserRefuses)
{
    const std::string wrong = sound.substr(sound.find("catalogue"));
    const std::string text = file("a.yaml", wrong);
    const std::string binary = file("a.bin", "older");
    const ToolRun refused = runTool({"build", text, "-o", binary});
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_EQ(readFile(binary), "older");
    EXPECT_THAT(refused.err, StartsWith(text + ":1:1: error: [group-missing] group 0001 (module "
                                               "identity) is missing\n"
                                               "hint: the key \"module\" states it\n"));
    EXPECT_THAT(refused.err,
                testing::EndsWith(text + ": error: The device parser refuses this module, nothing "
                                         "is written\nhint: --force writes it all the same\n"));
    const ToolRun forced = runTool({"build", text, "-o", binary, "--force"});
    EXPECT_EQ(forced.exitCode, 0);
    EXPECT_NE(readFile(binary), "older");
}

TEST_F(BuildVerb, reportsNoNotesWhenQuiet)
{
    const std::string text = file("a.yaml", sound + "texts: {fixed: {9: unused}}\n");
    EXPECT_THAT(runTool({"build", text, "-o", "-"}).err, HasSubstr("note: [text-unused]"));
    EXPECT_EQ(runTool({"build", text, "-o", "-", "-q"}).err, "");
}

} // namespace
