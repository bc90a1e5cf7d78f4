// Every verb that reads an mx file reads its text form as well, and names the type of any other
// file.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string mxFile = std::string(EXAMPLE_MODULES) + "/MX0304.bin";

// A parameter that names a missing channel, and no component, in line 4.
const std::string textWithFindings = R"(module: {type: 1, id: 0x12345678}
catalogue: {BrandId: "41", BrandLabelName: X, BrandVersion: "1", BrandSerialNumber: "0",
  ProductVersion: "1", BrandOrderCode: X-1, BrandHwRevision: "1"}
parameters: [{name: Filter, channel: 7, type: UInt8}]
)";

std::vector<char> charsOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

// The help of `verb`, with single blanks.
std::string helpOf(const std::string& verb)
{
    std::istringstream help(runTool({verb, "--help"}).out);
    std::string text;
    for (std::string word; help >> word;) {
        text += word + " ";
    }
    return text;
}

// The verbs that take an mx file according to their help, or standard input instead; build takes
// texts, datasheet also stations (DatasheetVerbTest).
std::vector<std::string> verbsOfModules()
{
    const std::string help = runTool({"--help"}).out;
    std::istringstream lines(help.substr(help.find("Subcommands:")));
    std::vector<std::string> verbs;
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line) && !line.empty()) {
        const std::string verb = line.substr(2, line.find(' ', 2) - 2);
        const std::string words = helpOf(verb);
        if (verb != "build" && verb != "datasheet" && words.find(" mx file") != std::string::npos &&
            words.find("- for standard input") != std::string::npos) {
            verbs.push_back(verb);
        }
    }
    return verbs;
}

// A call of `verb` for one module; those that take two compare it with itself.
std::vector<std::string> callOf(const std::string& verb, const std::string& file)
{
    return verb == "diff" ? std::vector<std::string>{verb, file, mxFile}
                          : std::vector<std::string>{verb, file};
}

std::string without(std::string text, const std::string& name)
{
    for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name)) {
        text.erase(at, name.size());
    }
    return text;
}

TEST(TextFormInput, everyVerbThatTakesAnMxFileTakesItsTextForm)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = directory.write("MX0304.yaml", charsOf(runTool({"dump", mxFile}).out));
    const std::vector<std::string> verbs = verbsOfModules();
    EXPECT_THAT(verbs, testing::IsSupersetOf({"groups", "show", "channels", "config", "check",
                                              "explain", "diff", "dump"}));
    for (const std::string& verb : verbs) {
        const ToolRun ofText = runTool(callOf(verb, text));
        const ToolRun ofFile = runTool(callOf(verb, mxFile));
        EXPECT_EQ(ofText.exitCode, ofFile.exitCode) << verb << ": " << ofText.err;
        if (verb != "check") { // it names places
            EXPECT_EQ(without(without(ofText.out, text), mxFile), without(ofFile.out, mxFile))
                << verb;
        }
    }
}

TEST(TextFormInput, everyVerbNamesTheTypeOfAnotherFile)
{
    const testkit::TemporaryDirectory directory;
    const std::string empty = directory.write("empty.bin", {});
    const std::string database = directory.path("d.sqlite");
    runTool({"populate", EXAMPLE_MODULES, "--db", "sqlite:" + database});
    for (const std::string& verb : verbsOfModules()) {
        const ToolRun ofEmpty = runTool(callOf(verb, empty));
        EXPECT_EQ(ofEmpty.exitCode, 3) << verb;
        EXPECT_EQ(ofEmpty.err,
                  empty + ": error: The file is empty, expected an mx file or its text form\n");
        const ToolRun ofDatabase = runTool(callOf(verb, database));
        EXPECT_EQ(ofDatabase.exitCode, 3) << verb;
        EXPECT_EQ(ofDatabase.err, database +
                                      ": error: This is a database (SQLite), expected an mx file "
                                      "or its text form\n"
                                      "hint: mxtool devices --db sqlite:" +
                                      database + " lists the modules that it holds\n");
    }
}

// One line, not an error of the text form for each line of the file.
TEST(TextFormInput, everyVerbSendsFilesOfValuesToConfig)
{
    const testkit::TemporaryDirectory directory;
    const std::string values = directory.path("v.yaml");
    const std::string written = directory.path("v.json");
    const std::string csv = directory.path("v.csv");
    for (const std::string& file : {values, written, csv}) {
        EXPECT_EQ(runTool({"config", mxFile, "-o", file}).exitCode, 0);
    }
    for (const std::string& verb : verbsOfModules()) {
        EXPECT_EQ(runTool(callOf(verb, values)).err,
                  values +
                      ": error: This is a file of parameter values, expected an mx file or its "
                      "text form\nhint: mxtool config FILE --values " +
                      values + " takes it, FILE being the mx file\n")
            << verb;
        for (const std::string& file : {written, csv}) {
            const ToolRun run = runTool(callOf(verb, file));
            EXPECT_EQ(run.exitCode, 3) << verb;
            EXPECT_EQ(run.err, file +
                                   ": error: This is a configuration that mxtool config wrote, "
                                   "expected an mx file or its text form\nhint: mxtool config "
                                   "FILE --values " +
                                   file + " or --decode " + file +
                                   " takes it, FILE being the mx file\n")
                << verb;
        }
    }
    EXPECT_THAT(runTool({"build", values, "-o", directory.path("b.bin")}).err,
                StartsWith(values + ": error: This is a file of parameter values, expected the "
                                    "text form of an mx file\n"));
}

TEST(TextFormInput, aTextWithoutAKeyOfTheTextFormIsOneError)
{
    const testkit::TemporaryDirectory directory;
    const std::string text =
        directory.write("a.yaml", charsOf("AI 1: {Upper limit: 5}\nWiring: Delta\n"));
    for (const auto& call :
         {std::vector<std::string>{"show", text}, {"build", text, "-o", directory.path("b.bin")}}) {
        const ToolRun run = runTool(call);
        EXPECT_EQ(run.exitCode, 3);
        EXPECT_THAT(run.err, StartsWith(text + ": error: This text has no key of the text form, "
                                               "such as \"module:\", expected "));
        EXPECT_THAT(run.err, testing::EndsWith("\nhint: mxtool config FILE --values " + text +
                                               " takes a file of parameter values\n"));
    }
    const std::string misspelt =
        directory.write("b.yaml", charsOf("Modul: {type: 1}\nchanels: []\n"));
    EXPECT_THAT(runTool({"show", misspelt}).err, HasSubstr("did you mean \"module\"?"));
}

TEST(TextFormInput, aFileOfAnotherFormIsNamed)
{
    const testkit::TemporaryDirectory directory;
    const std::string png = directory.write("a.png", charsOf("\x89PNG\r\n\x1a\n\x01\x02\x03"));
    const std::string drawing = directory.write("a.svg", charsOf("<svg/>"));
    for (const std::string& verb : verbsOfModules()) {
        const ToolRun run = runTool(callOf(verb, png));
        EXPECT_EQ(run.exitCode, 3) << verb;
        EXPECT_EQ(run.err,
                  png + ": error: This is a PNG picture, expected an mx file or its text form\n");
        EXPECT_EQ(runTool(callOf(verb, drawing)).err,
                  drawing +
                      ": error: This is an SVG drawing, expected an mx file or its text form\n");
    }
}

TEST(TextFormInput, everyVerbReportsTheErrorsOfATextAtTheirPlaces)
{
    const testkit::TemporaryDirectory directory;
    const std::string text =
        directory.write("a.yaml", charsOf("module: {type: 1, id: 1, typ: 1}\ntexts: 5\n"));
    for (const std::string& verb : verbsOfModules()) {
        const ToolRun run = runTool(callOf(verb, text));
        EXPECT_EQ(run.exitCode, 3) << verb;
        EXPECT_THAT(run.err, StartsWith(text + ":1:26: error: unknown key \"typ\"")) << verb;
        EXPECT_THAT(run.err, HasSubstr("typ: 1}\n" + std::string(25, ' ') + "^\n"));
        EXPECT_THAT(run.err, HasSubstr(text + ":2:8: error: "));
        EXPECT_THAT(run.err,
                    testing::EndsWith(
                        ": error: A text with 2 errors, expected an mx file or its text form\n"));
    }
}

TEST(TextFormInput, aTextThatIsNotATextFormIsReportedAsSuch)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = directory.write("MX1.bin", charsOf("hello, this is a text\n"));
    const ToolRun run = runTool({"groups", text});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.err, text +
                           ":1:1: error: no module found: keys such as \"module:\" "
                           "expected\nhello, this is a text\n^\n" +
                           text +
                           ": error: A text with 1 error, expected an mx file or its text "
                           "form\n");
}

TEST(TextFormInput, standardInputMayBeAText)
{
    const testkit::TemporaryDirectory directory;
    tooltest::ToolSetup setup;
    setup.standardInput = directory.write("MX0304.yaml", charsOf(runTool({"dump", mxFile}).out));
    const ToolRun run = runTool({"show", "-"}, setup);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, runTool({"show", mxFile}).out);
    EXPECT_THAT(runTool({"check", "-"}, setup).out, StartsWith("<standard input>:"));
}

TEST(TextFormInput, checkReportsFindingsAtTheText)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = directory.write("a.yaml", charsOf(textWithFindings));
    const ToolRun run = runTool({"check", text});
    EXPECT_EQ(run.exitCode, 1);
    // "channel: 7" has its value in column 38.
    EXPECT_THAT(run.out, HasSubstr(text +
                                   ":4:38: error: [parameter-channel] parameter 1 "
                                   "\"Filter\": belongs to channel 7, which does not "
                                   "exist\n"
                                   "parameters: [{name: Filter, channel: 7, type: UInt8}]\n" +
                                   std::string(37, ' ') + "^\n"));
    EXPECT_THAT(run.out, HasSubstr(text + ":1:1: error: [parser-refuses] "));
}

TEST(TextFormInput, checkGivesLineAndColumnInJsonAndSarif)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = directory.write("a.yaml", charsOf(textWithFindings));
    const json report = json::parse(runTool({"check", "--format", "json", text}).out);
    json found;
    for (const json& finding : report["files"][0]["findings"]) {
        found = finding["rule"] == "parameter-channel" ? finding : found;
    }
    EXPECT_EQ(found["line"], 4);
    EXPECT_EQ(found["column"], 38);
    const json log = json::parse(runTool({"check", "--format", "sarif", text}).out);
    json region;
    for (const json& result : log["runs"][0]["results"]) {
        region = result["ruleId"] == "parameter-channel"
                     ? result["locations"][0]["physicalLocation"]["region"]
                     : region;
    }
    EXPECT_EQ(region, json({{"startLine", 4}, {"startColumn", 38}}));
    const json ofFile = json::parse(runTool({"check", "--format", "json", mxFile}).out);
    for (const json& finding : ofFile["files"][0]["findings"]) {
        EXPECT_TRUE(finding["line"].is_null());
    }
}

TEST(TextFormInput, checkGivesOneResultForTheRepetitionsOfALineInJsonAndSarif)
{
    const testkit::TemporaryDirectory directory;
    const std::string repeated =
        "parameters: [{repeat: 3, name: A <n>, channel: 7, type: UInt8}]\n";
    const std::string text = directory.write("a.yaml", charsOf(repeated));
    const std::string said = "belongs to channel 7, which does not exist (in all 3 repetitions)";
    std::vector<std::string> reported;
    const json report = json::parse(runTool({"check", "--format", "json", text}).out);
    for (const json& finding : report["files"][0]["findings"]) {
        if (finding["rule"] == "parameter-channel") {
            reported.push_back(finding["text"]);
        }
    }
    EXPECT_THAT(reported, testing::ElementsAre(said));
    reported.clear();
    const json log = json::parse(runTool({"check", "--format", "sarif", text}).out);
    for (const json& result : log["runs"][0]["results"]) {
        if (result["ruleId"] == "parameter-channel") {
            reported.push_back(result["message"]["text"]);
        }
    }
    EXPECT_THAT(reported, testing::ElementsAre("parameter 1 \"A 1\": " + said));
}

TEST(TextFormInput, aRejectionByTheParserPointsToTheText)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = directory.write("a.yaml", charsOf(textWithFindings));
    EXPECT_EQ(runTool({"show", text}).err,
              text + ": error: Parser::getGroupEntry(): No such group: 0040\nhint: mxtool check " +
                  text + " shows the place in the text\n");
}

TEST(TextFormInput, aTextThatIsNotUtf8IsReportedAtItsByte)
{
    const testkit::TemporaryDirectory directory;
    const std::string latin1 =
        directory.write("a.yaml", charsOf("# \xC2\xB5s\nmodule: {typ: \xFC}\n"));
    EXPECT_THAT(runTool({"show", latin1}).err,
                StartsWith(latin1 + ":2:15: error: the byte 0xfc is not UTF-8, which is expected "
                                    "here (in Windows-1252 it is \"\xC3\xBC\"): save the text as "
                                    "UTF-8\nmodule: {typ: \xC3\xBC}\n              ^\n"));
    const std::string utf16 = directory.write("b.yaml", {'\xFF', '\xFE', 'm', '\0', ':', '\0'});
    EXPECT_THAT(runTool({"show", utf16}).err,
                StartsWith(utf16 + ":1:1: error: this text is UTF-16, expected UTF-8: save it as "
                                   "UTF-8\n"));
}

} // namespace
