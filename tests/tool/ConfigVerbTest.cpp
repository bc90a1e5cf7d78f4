#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string analogue = "examples/modules/MX0304.bin";
const std::string serial =
    "examples/modules/MX0701.bin"; // block 03 01 00 fa ee dd ef 0b 82 16 7e eb

std::vector<char> charsOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

TEST(ConfigVerb, writesTheImageAsBytes)
{
    const testkit::TemporaryDirectory directory;
    const std::string out = directory.path("image");
    const ToolRun run = runTool({"config", serial, "--set", "Parity=odd", "--set",
                                 "Receive timeout=1000 ms", "-q", "-o", out});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out + run.err, "");
    EXPECT_EQ(readFile(out), std::string("\x03\x02\x03\xE8\xEE\xDD\xEF\x0B\x82\x16\x7E\xEB", 12));
}

TEST(ConfigVerb, bareBytesAreNotedUnlessTheCallNamesThem)
{
    const testkit::TemporaryDirectory directory;
    const std::string out = directory.path("image.bin");
    const ToolRun run = runTool({"config", serial, "-o", out});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, out + ": note: The bytes carry no identity: nothing in the file identifies "
                             "them as those of a kv38.5a070701\n"
                             "hint: -o NAME.json or NAME.csv keeps it; --format binary or -q "
                             "leaves out this note\n");
    EXPECT_EQ(runTool({"config", serial, "-q", "-o", out}).err, "");
    EXPECT_EQ(runTool({"config", serial, "--format", "binary", "-o", out}).err, "");
    EXPECT_EQ(runTool({"config", serial, "-o", directory.path("image.json")}).err, "");
}

// The input of a script that failed to read the module.
TEST(ConfigVerb, filesThatHoldNoImageAreCalledWhatTheyAre)
{
    const testkit::TemporaryDirectory directory;
    const std::string values = directory.path("v.yaml");
    runTool({"config", serial, "-o", values});
    EXPECT_THAT(runTool({"config", serial, "--compare", values}).err,
                HasSubstr("hint: --values takes a file of values\n"));
    EXPECT_THAT(runTool({"config", serial, "--decode", analogue}).err,
                HasSubstr("hint: the file is an mx file, not bytes that were read from a module; "
                          "mxtool show " +
                          analogue + " shows the device that it describes\n"));
    const std::string table = directory.write("v.csv", charsOf("name,value\nParity,odd\n"));
    EXPECT_THAT(runTool({"config", serial, "--compare", table}).err,
                HasSubstr("hint: --values takes a file of values\n"));
}

TEST(ConfigVerb, writesModbusRegisters)
{
    // Positions of the options (19200 third, even second, "2" second), then 250 and the number.
    const ToolRun run = runTool({"config", serial, "--set", "Baud rate=19200", "--set",
                                 "Stop bits=2", "--fieldbus", "modbus", "--format", "binary"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, std::string("\x02\0\x01\0\x01\0\0\xFA\xEE\xDD\xEF\x0B\x82\x16\x7E\xEB", 16));
}

TEST(ConfigVerb, refusesBeforeAnythingIsWritten)
{
    const testkit::TemporaryDirectory directory;
    const std::string out = directory.write("image", charsOf("before"));
    const ToolRun run = runTool({"config", serial, "--set", "Receive timeout=0", "--set",
                                 "Parity=evn", "--set", "Speed=1", "-o", out});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(
        run.err,
        StartsWith("--set Receive timeout=0: error: parameter \"Receive timeout\" of the "
                   "module (#21, bytes 2 to 3): value \"0\" is not accepted: expected a "
                   "whole number, 1 to 60000 ms\n"
                   "--set Parity=evn: error: parameter \"Parity\" of the module (#19, byte 1 "
                   "bits 0 to 1): value \"evn\" is not accepted: no such option, did you "
                   "mean \"even\"? Accepted: none = 0 | [even = 1] | odd = 2\n"
                   "--set Speed=1: error: No parameter is called \"Speed\""));
    EXPECT_EQ(readFile(out), "before");
}

TEST(ConfigVerb, forceSkipsRangeAndOptionsOnly)
{
    const ToolRun run = runTool({"config", serial, "--force", "--set", "Receive timeout=0", "--set",
                                 "Baud rate=9", "--format", "binary"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out.substr(0, 4), std::string("\x09\x01\0\0", 4));
    EXPECT_THAT(run.err,
                HasSubstr("--set Receive timeout=0: warning: parameter \"Receive timeout\""));
    EXPECT_THAT(run.err, HasSubstr("is forced to \"9\", accepted otherwise: 1200 = 1 | "));
    EXPECT_EQ(runTool({"config", serial, "--force", "--set", "Receive timeout=65536"}).exitCode, 2);
    EXPECT_EQ(runTool({"config", serial, "--force", "--set", "Baud rate=fast"}).exitCode, 2);
    EXPECT_EQ(runTool({"config", serial, "--force", "--set", "Speed=1"}).exitCode, 2);
}

TEST(ConfigVerb, comparesWhatIsWantedWithWhatWasRead)
{
    const testkit::TemporaryDirectory directory;
    const std::string wanted = directory.write("wanted.yaml", charsOf("Parity: odd\n"));
    // Wanted 03 02 ...; a receive timeout of 251 was read.
    const ToolRun run = runTool(
        {"config", serial, "--values", wanted, "--compare", "03 02 00 fb eeddef0b82167eeb", "-q"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.err, "");
    EXPECT_THAT(run.out,
                HasSubstr("2-3         module        Receive timeout  250 ms  251 ms  00 fa "
                          "        00 fb\n"));
    EXPECT_THAT(run.out, HasSubstr("1 of 5 parameters deviate from the wanted values\n"));
    const ToolRun decoded = runTool(
        {"config", serial, "--values", wanted, "--decode", "03 02 00 fb eeddef0b82167eeb", "-q"});
    EXPECT_EQ(decoded.exitCode, 1);
    EXPECT_EQ(decoded.out, run.out);
    const ToolRun same = runTool({"config", serial, "--set", "Parity=odd", "--compare",
                                  "03 02 00 fa eeddef0b82167eeb", "-q"});
    EXPECT_EQ(same.exitCode, 0);
    EXPECT_EQ(runTool({"config", serial, "--compare", "00", "--format", "binary"}).exitCode, 2);
}

TEST(ConfigVerb, comparesRegisters)
{
    // Parity even is 1, in the high byte of register 1; odd is 2.
    const ToolRun run = runTool({"config", serial, "--fieldbus", "modbus", "--format", "csv",
                                 "--compare", "256 512 0 250 61149 61195 33302 32491", "-q"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.out, HasSubstr("\r\n19,,Parity,even,odd,2,2,0,2,01 00,02 00,1,2,1,"
                                   "kv38.5a070701\r\n"));
}

TEST(ConfigVerb, anImageWithItsIdentityIsNoOtherModules)
{
    const testkit::TemporaryDirectory directory;
    for (const char* name : {"image.json", "image.csv"}) {
        const std::string file = directory.path(name);
        runTool({"config", serial, "--set", "Parity=odd", "-o", file});
        const ToolRun run = runTool({"config", serial, "--decode", file});
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.err, "");
        EXPECT_THAT(run.out, HasSubstr("odd                   even"));
        const ToolRun other = runTool({"config", analogue, "--decode", file});
        EXPECT_EQ(other.exitCode, 3);
        EXPECT_THAT(other.err, HasSubstr("The values are those of a kv38.5a070701, expected a "
                                         "kv38.5a030304"));
    }
}

TEST(ConfigVerb, registersCannotHoldAnUnlistedOption)
{
    const ToolRun run =
        runTool({"config", serial, "--force", "--set", "Baud rate=9", "--fieldbus", "modbus"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, serial + ": error: Parameter option list value not found: Baud rate; "
                                "parameter \"Baud rate\" of the module (#18, byte 0): its value 9 "
                                "is none of its options 1200 = 1 | 9600 = 3 | 19200 = 5 | 115200 = "
                                "8\n");
}

TEST(ConfigVerb, namesOfSeveralChannelsAreAmbiguous)
{
    const ToolRun run = runTool({"config", analogue, "--set", "Filter depth=3"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("4 parameters are called \"Filter depth\", expected one of "
                                   "\"AI 1/Filter depth\", \"AI 2/Filter depth\""));
}

TEST(ConfigVerb, takesValuesFromAFile)
{
    const testkit::TemporaryDirectory directory;
    const std::string yaml =
        directory.write("values.yaml", charsOf("Parity: odd\nBaud rate: 1200\n'#21': 7\n"));
    const ToolRun run = runTool(
        {"config", serial, "--values", yaml, "--set", "module/Parity=none", "--format", "binary"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out.substr(0, 4),
              std::string("\x01\0\0\x07", 4)); // the command line overrides the file
}

TEST(ConfigVerb, takesSeveralFilesOfValues)
{
    const testkit::TemporaryDirectory directory;
    const std::string all = directory.write("all.yaml", charsOf("Parity: odd\nBaud rate: 1200\n"));
    const std::string more =
        directory.write("more.csv", charsOf("Name;Value\r\nParity;none\r\nReceive timeout;7 ms"));
    const ToolRun run =
        runTool({"config", serial, "--values", all, "--values", more, "--format", "binary"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out.substr(0, 4), std::string("\x01\0\0\x07", 4));
}

TEST(ConfigVerb, theNameOfTheOutputSaysItsFormat)
{
    const testkit::TemporaryDirectory directory;
    const std::string expected = std::string("\x03\x12\0\xFA\xEE\xDD\xEF\x0B\x82\x16\x7E\xEB", 12);
    for (const char* name : {"v.json", "v.csv", "v.yaml", "v.yml"}) {
        const std::string file = directory.path(name);
        EXPECT_EQ(
            runTool({"config", serial, "--set", "Stop bits=2", "--set", "Parity=odd", "-o", file})
                .exitCode,
            0);
        const ToolRun run = runTool({"config", serial, "--values", file, "--format", "binary"});
        EXPECT_EQ(run.err, "") << name;
        EXPECT_EQ(run.out, expected) << name;
    }
    EXPECT_THAT(readFile(directory.path("v.yml")),
                HasSubstr("\n# none = #0 | even = #1 | odd = #2; "
                          "default even\nParity: odd\n"));
    const std::string forced = directory.path("raw.json");
    runTool({"config", serial, "--format", "binary", "-o", forced});
    EXPECT_EQ(readFile(forced).size(), 12U);
}

TEST(ConfigVerb, listsWhatDiffersFromTheDefaults)
{
    const ToolRun run = runTool({"config", serial, "--set", "Parity=odd", "--changed"});
    EXPECT_THAT(run.out, HasSubstr("Parity  odd    even\n"));
    EXPECT_THAT(run.out, testing::Not(HasSubstr("Baud rate")));
    EXPECT_EQ(runTool({"config", serial, "--changed", "--format", "binary"}).exitCode, 2);
}

TEST(ConfigVerb, marksWhatLiesOutsideTheRange)
{
    const ToolRun run = runTool({"config", serial, "--decode", "09 01 00 00 eeddef0b82167eeb"});
    EXPECT_THAT(run.out, HasSubstr("9 (not in the list)"));
    EXPECT_THAT(run.out, HasSubstr("0 ms (outside 1 to 60000 ms)"));
}

TEST(ConfigVerb, namesLineAndColumnOfAWrongValue)
{
    const testkit::TemporaryDirectory directory;
    const std::string yaml =
        directory.write("values.yaml", charsOf("# serial line\nParity: evn\n  \nSpeed: 1\n"));
    const ToolRun run = runTool({"config", serial, "--values", yaml});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, StartsWith(yaml + ":2:1: error: parameter \"Parity\""));
    EXPECT_THAT(run.err, HasSubstr(yaml + ":4:1: error: No parameter is called \"Speed\""));
}

TEST(ConfigVerb, takesItsOwnJsonBack)
{
    const testkit::TemporaryDirectory directory;
    const std::string written = directory.path("values.json");
    ASSERT_EQ(runTool({"config", serial, "--set", "Stop bits=2", "--format", "json", "-o", written})
                  .exitCode,
              0);
    const ToolRun run = runTool({"config", serial, "--values", written, "--format", "binary"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, std::string("\x03\x11\0\xFA\xEE\xDD\xEF\x0B\x82\x16\x7E\xEB", 12));

    const ToolRun other = runTool({"config", analogue, "--values", written});
    EXPECT_EQ(other.exitCode, 3);
    EXPECT_EQ(other.err, written +
                             ": error: The values are those of a kv38.5a070701, expected a "
                             "kv38.5a030304 as " +
                             analogue + " is\n");
}

TEST(ConfigVerb, writesIntoAParameterBlock)
{
    const testkit::TemporaryDirectory directory;
    const std::string block = directory.write("block", charsOf("\x05\x02\x01\x01zzzzzzzz"));
    const ToolRun run = runTool(
        {"config", serial, "--param-block", block, "--set", "Parity=even", "--format", "binary"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "\x05\x01\x01\x01zzzzzzzz");

    const std::string shorter = directory.write("short", charsOf("12345"));
    const ToolRun refused = runTool({"config", serial, "--param-block", shorter});
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_EQ(refused.err, shorter +
                               ": error: Found 5 bytes, expected the 12 bytes of the module's "
                               "parameter image\n");
}

TEST(ConfigVerb, decodesBytesOfTheCallOrOfAFile)
{
    const std::string expected = "1     0-1   02                       module        Parity       "
                                 "    odd                   even\n";
    const ToolRun spelled = runTool({"config", serial, "--decode", "03 02 00 fa eeddef0b82167eeb"});
    EXPECT_EQ(spelled.exitCode, 0);
    EXPECT_EQ(spelled.err, "--decode 03 02 00 fa eeddef0b82167eeb: note: The bytes carry no "
                           "identity: they are read as those of a kv38.5a070701\n");
    EXPECT_THAT(spelled.out, HasSubstr(expected));
    EXPECT_THAT(spelled.out, HasSubstr("1 of 5 parameters differ from the default\n"));

    const testkit::TemporaryDirectory directory;
    const std::string file = directory.write(
        "image", charsOf(std::string("\x03\x02\0\xFA\xEE\xDD\xEF\x0B\x82\x16\x7E\xEB", 12)));
    EXPECT_EQ(runTool({"config", serial, "--decode", file}).out, spelled.out);
    tooltest::ToolSetup fromInput;
    fromInput.standardInput = file;
    EXPECT_EQ(runTool({"config", serial, "--decode", "-"}, fromInput).out, spelled.out);
}

TEST(ConfigVerb, decodesModbusRegisters)
{
    const ToolRun run = runTool({"config", serial, "--fieldbus", "modbus", "--format", "binary",
                                 "--decode", "0200 0000 0100 00fa eeddef0b82167eeb", "-q"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, std::string("\x05\x10\0\xFA\xEE\xDD\xEF\x0B\x82\x16\x7E\xEB", 12));

    const ToolRun refused = runTool({"config", serial, "--fieldbus", "modbus", "--decode",
                                     "0400 0000 0100 00fa eeddef0b82167eeb"});
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_THAT(refused.err,
                HasSubstr("error: parameter \"Baud rate\" of the module (#18, byte 0): "
                          "found 04 00 in byte 0 of the registers, expected 00 00 to "
                          "03 00"));
}

TEST(ConfigVerb, registersThatContradictEachOtherAreRefused)
{
    // MX0602 lists its parameters once for the input and once for the output of a channel.
    const std::string counter = "examples/modules/MX0602.bin";
    const std::string half = "ee6b2800 fffffffffffffd98 ee6b2800 fffffffffffffd99";
    EXPECT_EQ(runTool({"config", counter, "--fieldbus", "modbus", "--decode", "0200" + half + half})
                  .exitCode,
              0);
    std::string other = half;
    other.replace(6, 2, "01");
    const ToolRun run =
        runTool({"config", counter, "--fieldbus", "modbus", "--decode", "0200" + half + other});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("parameter \"Preset\" of channel 0 Gate 1 open"));
    EXPECT_THAT(run.err, HasSubstr("found 00 in byte 5 of the registers, expected 01 as in its "
                                   "other registers"));
    // MX0502: the byte after "Wires" (fd) is padding.
    const ToolRun padded = runTool({"config", "examples/modules/MX0502.bin", "--fieldbus", "modbus",
                                    "--decode", "0000 1194 fd07 0400 1194 fd00"});
    EXPECT_EQ(padded.exitCode, 3);
    EXPECT_THAT(padded.err, HasSubstr("found 07 in byte 5 of the registers, expected 00"));
}

TEST(ConfigVerb, decodeNeedsTheSizeOfTheImage)
{
    for (const char* bytes : {"03", "0302 00fa eedd ef0b 8216 7eeb 00"}) {
        const ToolRun run = runTool({"config", serial, "--decode", bytes});
        EXPECT_EQ(run.exitCode, 3);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, HasSubstr("expected the 12 bytes of the module's parameter image"));
    }
    const ToolRun run = runTool({"config", serial, "--decode", "03 0g"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "--decode 03 0g: error: Found \"0g\" at character 4, expected two "
                       "hexadecimal digits for each byte, or the name of an existing file\n");
}

// An empty value, such as that of an unset variable, does not mean the default image.
TEST(ConfigVerb, anEmptyValueOfAnOptionIsRefused)
{
    for (const char* option : {"--decode", "--compare", "--param-block"}) {
        const ToolRun run = runTool({"config", "examples/modules/MX0108.bin", option, ""});
        EXPECT_EQ(run.exitCode, 2) << option;
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, HasSubstr(std::string("error: ") + option + ": the value is empty"));
    }
}

TEST(ConfigVerb, filesThatHoldNoValuesAreCalledWhatTheyAre)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = directory.path("module.yaml");
    const std::string database = directory.path("d.sqlite");
    const std::string picture = directory.write("p.svg", charsOf("<svg/>"));
    const std::string image = directory.write("image", {'\x03', '\0', '\xFF'});
    const std::string hexadecimal = directory.write("image.txt", charsOf("03 00 ff\n"));
    runTool({"dump", analogue, "-o", text});
    runTool({"populate", "examples/modules", "--db", "sqlite:" + database});
    const std::string bytes = "--decode shows the values in bytes, --param-block sets values in "
                              "them";
    const std::vector<std::array<std::string, 3>> files = {
        {analogue, "an mx file", "mxtool config " + analogue + " --format values writes one"},
        {text, "the text form of an mx file", "mxtool config " + text + " --format values writes"},
        {database, "a database (SQLite)", "mxtool devices --db sqlite:" + database},
        {picture, "an SVG drawing", ""},
        {image, "an image of bytes", bytes},
        {hexadecimal, "an image of bytes", bytes}};
    for (const auto& [file, kind, hint] : files) {
        const ToolRun run = runTool({"config", serial, "--values", file});
        EXPECT_EQ(run.exitCode, 3) << file;
        EXPECT_THAT(run.err, StartsWith(file + ": error: This is " + kind +
                                        ", expected a file of names and values\n" +
                                        (hint.empty() ? "" : "hint: " + hint)));
    }
}

// "module" is the module itself in a file of values, and a key of the text form.
TEST(ConfigVerb, valuesOfTheModuleAreNoTextForm)
{
    const testkit::TemporaryDirectory directory;
    const std::string values = directory.write("v.yaml", charsOf("module:\n  Parity: odd\n"));
    EXPECT_EQ(runTool({"config", serial, "--values", values}).exitCode, 0);
}

// An option without effect is an invalid command line.
TEST(ConfigVerb, nothingIsIgnored)
{
    const testkit::TemporaryDirectory directory;
    const std::string image = directory.write("i.bin", std::vector<char>(12));
    const std::string values = directory.path("i.json");
    runTool({"config", serial, "-o", values});
    const std::vector<std::pair<std::vector<std::string>, std::string>> calls = {
        {{"--changed", "--compare", image}, "--changed: does not apply to a comparison"},
        {{"--changed", "--decode", image, "--values", values}, "--changed: does not apply to a"},
        {{"--changed", "-o", directory.path("o.bin")},
         "--changed: applies to lists of parameters, not to"},
        {{"--force"}, "--force: applies to values of --set and --values, and there are none"},
        {{"--force", "--compare", image}, "--force: applies to values of"},
        {{"--in-offset", "4"}, "mxtool config has no option \"--in-offset\""},
        {{"--param-block", image, "--values", values},
         "--param-block " + image + ": error: " + values +
             " also has an image to write values into"}};
    for (const auto& [words, text] : calls) {
        std::vector<std::string> call = {"config", serial};
        call.insert(call.end(), words.begin(), words.end());
        const ToolRun run = runTool(call);
        EXPECT_EQ(run.exitCode, 2) << text;
        EXPECT_EQ(run.out, "") << text;
        EXPECT_THAT(run.err, HasSubstr(text));
    }
}

TEST(ConfigVerb, standardInputIsOneInput)
{
    tooltest::ToolSetup setup;
    setup.standardInput = std::string(PROJECT_BUILD) + "/" + serial;
    const ToolRun run = runTool({"config", "-", "--values", "-"}, setup);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("<standard input>: error: Two inputs of this call are standard "
                                   "input\nhint: name a file for one of them\n"));
}

TEST(ConfigVerb, decodeGoesWithNothingThatSetsValues)
{
    for (const char* option : {"--set", "--compare", "--param-block"}) {
        const ToolRun run = runTool({"config", serial, "--decode", "00", option, "x=y"});
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_THAT(run.err, HasSubstr("excludes"));
    }
}

TEST(ConfigVerb, csvIsForTheSpreadsheetThatOpensIt)
{
    const ToolRun run = runTool(
        {"config", serial, "--fieldbus", "modbus", "--format", "csv", "--separator", ";", "--bom"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, StartsWith("\xEF\xBB\xBFid;channel;name;"));
    // Registers 4 to 7 from 0, 5 to 8 from 1.
    EXPECT_THAT(run.out, HasSubstr(";8;8;0;0;ee dd ef 0b 82 16 7e eb;4;5;4;kv38.5a070701\r\n"));
    for (const char* verb : {"groups", "channels", "config"}) {
        EXPECT_THAT(runTool({verb, serial, "--format", "csv", "--separator", "tab"}).out,
                    HasSubstr("\tname\t"));
        const ToolRun refused = runTool({verb, serial, "--separator", "tab"});
        EXPECT_EQ(refused.exitCode, 2);
        EXPECT_THAT(refused.err, HasSubstr("--separator: goes with --format csv only, not with "
                                           "text"));
    }
    EXPECT_EQ(runTool({"groups", serial, "--format", "csv", "--separator", ":"}).exitCode, 2);
}

TEST(ConfigVerb, keepsWhatWasThereWhenItCannotWrite)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun run = runTool({"config", serial, "-o", directory.path("none/image")});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.err, HasSubstr("Cannot write: No such file or directory"));
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST(ConfigVerb, aFailedCallOfTheLibraryWritesOneErrorOnly)
{
    const ToolRun run = runTool({"config", "examples/modules/MX9999.bin"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, StartsWith("examples/modules/MX9999.bin: error: "));
}

TEST(ConfigVerb, valuesThatAreNotUtf8AreReportedAtTheirByte)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = "Parity: even\nStop bits: \xFC\n";
    const std::string file = directory.write("values.yaml", {text.begin(), text.end()});
    const ToolRun run = runTool({"config", serial, "--values", file});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.err, file +
                           ":2:12: error: the byte 0xfc is not UTF-8, which is expected here (in "
                           "Windows-1252 it is \"\xC3\xBC\"): save the text as UTF-8\n");
    const ToolRun set = runTool({"config", serial, "--set", "Parity=T\xFCr"});
    EXPECT_EQ(set.exitCode, 2);
    EXPECT_THAT(set.err, HasSubstr("error: Character 9: the byte 0xfc is not UTF-8, "));
}

} // namespace
