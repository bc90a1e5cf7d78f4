#include "HarmlessOutput.h"
#include "HostileModule.h"
#include "TemporaryDirectory.h"
#include "TestDatabase.h"
#include "ToolProcess.h"

#include <Poco/DOM/AutoPtr.h>
#include <Poco/DOM/DOMParser.h>
#include <Poco/DOM/Document.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <set>

// Texts of an mx file, whatever they hold, are shown and stored but never interpreted, in any
// output of any verb.

namespace {

using Json = nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tooltest::csvRows;
using tooltest::elementsOf;
using tooltest::expectHarmless;
using tooltest::expectHarmlessCsv;
using tooltest::hostileModule;
using tooltest::hostileModuleId;
using tooltest::hostileTexts;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

using Words = std::vector<std::string>;

class HostileText : public testing::Test
{
protected:
    // For verbs where one call per text would take too long: one text of each kind.
    static constexpr unsigned chosen[] = {0, 1, 2, 4, 12, 26, 27, 28, 31};

    HostileText()
    {
        for (unsigned i = 0; i < hostileTexts().size(); ++i) {
            files.push_back(modules.write("MX" + hostileModuleId(i) + ".bin", hostileModule(i)));
        }
    }

    // Runs a call that must succeed, or return 1 with findings. Standard error is harmless in any
    // case.
    static std::string outputOf(const Words& words, int exitCode = 0)
    {
        const ToolRun run = runTool(words);
        EXPECT_EQ(run.exitCode, exitCode) << testing::PrintToString(words) << run.err;
        expectHarmless(run.err);
        return run.out;
    }

    // The UTF-8 of the first `count` texts, in order.
    static Words shownTexts(std::size_t count)
    {
        Words texts;
        for (std::size_t i = 0; i < count; ++i) {
            texts.push_back(hostileTexts()[i].utf8);
        }
        return texts;
    }

    static Words valuesOf(const Json& list, const char* key)
    {
        Words values;
        for (const Json& item : list) {
            values.push_back(item.at(key));
        }
        return values;
    }

    testkit::TemporaryDirectory modules;
    testkit::TemporaryDirectory other;
    Words files;
};

TEST_F(HostileText, IsHarmlessAsText)
{
    const std::string& file = files.front();
    for (const Words& words :
         {Words{"groups", file}, Words{"show", file}, Words{"channels", file},
          Words{"channels", file, "--map"}, Words{"config", file},
          Words{"config", file, "--fieldbus", "modbus"},
          Words{"config", file, "--format", "values"},
          Words{"config", file, "--compare", std::string(62, '7')}, Words{"explain", file},
          Words{"explain", file, "--where", "=1+1"}, Words{"diff", file, files[4]},
          Words{"show", file, "--log-level", "trace"}}) {
        const ToolRun run = runTool(words);
        EXPECT_THAT(run.exitCode, testing::AnyOf(0, 1)) << testing::PrintToString(words) << run.err;
        EXPECT_THAT(run.out, Not(IsEmpty()));
        expectHarmless(run.out);
        expectHarmless(run.err);
    }
}

TEST_F(HostileText, OfTheIdentityIsHarmless)
{
    for (const unsigned number : chosen) {
        expectHarmless(outputOf({"show", files[number]}));
        const ToolRun check = runTool({"check", files[number]});
        expectHarmless(check.out + check.err);
    }
}

TEST_F(HostileText, KeepsItsLinesInAText)
{
    const std::string text = outputOf({"show", files.back()});
    EXPECT_THAT(text, HasSubstr("first\\x0asecond"));
    EXPECT_THAT(text, Not(HasSubstr("\nsecond")));
}

TEST_F(HostileText, ComesBackFromJson)
{
    for (const unsigned number : chosen) {
        const std::string out = outputOf({"show", files[number], "--format", "json"});
        expectHarmless(out);
        const Json device = Json::parse(out);
        const Words texts = shownTexts(tooltest::hostileTextCount(number));
        EXPECT_EQ(device.at("label"), hostileTexts()[number].utf8);
        EXPECT_EQ(valuesOf(device.at("parameters"), "name"), texts);
        EXPECT_EQ(valuesOf(device.at("parameters"), "unit"), texts);
        EXPECT_EQ(valuesOf(device.at("parameters")[0].at("options"), "text"), texts);
        EXPECT_EQ(valuesOf(device.at("channels"), "name"), texts);
    }
}

TEST_F(HostileText, IsHarmlessInEveryJson)
{
    const std::string& file = files.front();
    for (const Words& words :
         {Words{"groups", file}, Words{"channels", file}, Words{"config", file},
          Words{"explain", file}, Words{"diff", file, files[4]}, Words{"check", file}}) {
        Words json = words;
        json.insert(json.end(), {"--format", "json"});
        const ToolRun run = runTool(json);
        SCOPED_TRACE(testing::PrintToString(json));
        EXPECT_THAT(run.exitCode, testing::AnyOf(0, 1)) << run.err;
        expectHarmless(run.out);
        expectHarmless(run.err);
        EXPECT_TRUE(Json::accept(run.out));
    }
    const Json channels = Json::parse(outputOf({"channels", file, "--format", "json"}));
    const Words texts = shownTexts(tooltest::hostileTextCount(0));
    EXPECT_EQ(valuesOf(channels.at("channels"), "name"), texts);
    const Json config = Json::parse(outputOf({"config", file, "--format", "json"}));
    EXPECT_EQ(valuesOf(config.at("parameters"), "name"), texts);
}

TEST_F(HostileText, IsHarmlessInSarif)
{
    const testkit::TemporaryDirectory odd;
    const std::string file = odd.write("MX \033[31m<&\"%41\n.bin", hostileModule(12));
    const ToolRun run = runTool({"check", file, "--format", "sarif"});
    expectHarmless(run.out);
    const Json sarif = Json::parse(run.out);
    EXPECT_THAT(sarif.dump(), HasSubstr("MX%20%1B%5B31m%3C%26%22%2541%0A.bin"));
}

TEST_F(HostileText, NeitherBreaksARowNorBeginsAFormulaInCsv)
{
    const std::string& file = files.front();
    for (const Words& words :
         {Words{"groups", file}, Words{"channels", file}, Words{"config", file},
          Words{"config", file, "--fieldbus", "modbus"}}) {
        Words csv = words;
        csv.insert(csv.end(), {"--format", "csv"});
        SCOPED_TRACE(testing::PrintToString(csv));
        expectHarmlessCsv(outputOf(csv));
    }
    EXPECT_EQ(csvRows(outputOf({"channels", file, "--format", "csv"})).size(),
              1 + tooltest::hostileTextCount(0));
}

TEST_F(HostileText, DeclaresNothingInStructuredText)
{
    for (const unsigned number : {0U, 13U, 22U, 31U}) {
        const std::string out = outputOf({"channels", files[number], "--format", "st"});
        expectHarmless(out);
        // Without its comments, which end where they first can.
        const std::string code = std::regex_replace(out, std::regex("\\(\\*[\\s\\S]*?\\*\\)"), "");
        std::size_t declarations = 0;
        std::istringstream lines(code);
        for (std::string line; std::getline(lines, line);) {
            static const std::regex declaration(
                "    [A-Za-z_0-9]+ AT %[IQ][XBWDL][0-9.]+ : [A-Z]+; *");
            const bool declares = std::regex_match(line, declaration);
            declarations += declares ? 1U : 0U;
            EXPECT_TRUE(declares || line == "VAR_GLOBAL" || line == "END_VAR" ||
                        line.find_first_not_of(' ') == std::string::npos)
                << line;
        }
        EXPECT_EQ(declarations, tooltest::hostileTextCount(number));
    }
}

TEST_F(HostileText, IsNoMarkupInAPicture)
{
    for (const unsigned number : {0U, 12U, 13U, 14U, 26U, 29U, 31U}) {
        const std::string picture = other.path("picture.svg");
        outputOf({"channels", files[number], "--picture", picture});
        const std::string svg = readFile(picture);
        expectHarmless(svg);
        EXPECT_THAT(elementsOf(svg),
                    testing::IsSubsetOf({"svg", "title", "style", "defs", "pattern", "rect", "path",
                                         "text", "g", "?xml"}));
        Poco::XML::DOMParser parser;
        EXPECT_NO_THROW(
            Poco::XML::AutoPtr<Poco::XML::Document>(parser.parseString(svg))->documentElement());
    }
}

TEST_F(HostileText, IsNoMarkupInAPage)
{
    for (const unsigned number : {0U, 12U, 13U, 14U}) {
        const std::string html = outputOf({"explain", files[number], "--format", "html"});
        expectHarmless(html);
        EXPECT_THAT(elementsOf(html),
                    testing::IsSubsetOf({"html", "head", "meta", "title", "style", "body", "h1",
                                         "h2", "nav", "a", "table", "tr", "td", "p", "strong"}));
        EXPECT_THAT(html, HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;"));
    }
}

TEST_F(HostileText, IsNoMarkupInADataSheet)
{
    for (const unsigned number : {0U, 12U, 13U, 14U, 26U}) {
        const std::string html = outputOf({"datasheet", files[number], "-o", "-"});
        expectHarmless(html);
        EXPECT_THAT(elementsOf(html),
                    testing::IsSubsetOf(
                        {"html",  "head",  "meta", "title", "style",   "body", "a",     "header",
                         "div",   "p",     "h1",   "h2",    "dl",      "dt",   "dd",    "nav",
                         "ol",    "ul",    "li",   "main",  "table",   "tr",   "th",    "td",
                         "thead", "tbody", "code", "span",  "caption", "pre",  "footer"}));
        EXPECT_THAT(html, HasSubstr("&lt;script&gt;alert(1)&lt;/script&gt;"));
    }
}

TEST_F(HostileText, ComesBackFromYaml)
{
    for (const unsigned number : chosen) {
        SCOPED_TRACE(number);
        const std::string yaml = outputOf({"dump", files[number]});
        expectHarmless(yaml);
        const std::string text = other.write("module.yaml", {yaml.begin(), yaml.end()});
        outputOf({"build", text, "-o", other.path("again.bin")});
        EXPECT_EQ(readFile(other.path("again.bin")), readFile(files[number]));
    }
}

TEST_F(HostileText, IsHarmlessInTheDatabase)
{
    const std::string url = "sqlite:" + other.path("devices.sqlite");
    const ToolRun populate =
        runTool({"populate", modules.path(), "--db", url, "--log-level", "trace"});
    EXPECT_EQ(populate.exitCode, 0) << populate.err;
    expectHarmless(populate.out + populate.err);

    for (const Words& words :
         {Words{}, Words{hostileModuleId(0)}, Words{"--search", "=1+1"}, Words{"--limit", "1"},
          Words{"--search", "\033[2J\n", "--explain-search"}}) {
        Words text{"devices", "--db", url};
        text.insert(text.end(), words.begin(), words.end());
        expectHarmless(outputOf(text));
    }
    expectHarmlessCsv(outputOf({"devices", "--db", url, "--format", "csv"}));
    const std::string out = outputOf({"devices", "--db", url, "--format", "json"});
    expectHarmless(out);
    EXPECT_EQ(valuesOf(Json::parse(out).at("devices"), "label"), shownTexts(hostileTexts().size()));
    expectHarmless(outputOf({"devices", "--db", url, "--remove", hostileModuleId(12)}));
}

TEST_F(HostileText, OfADatabaseIsHarmlessAndChoosesNoPlaceForAnExport)
{
    const testkit::TestDatabase database(testkit::Engine::Sqlite);
    outputOf({"populate", modules.path(), "--db", database.url()});
    // Another program writes identifiers and families that the format does not have.
    for (const char* table : {"device_properties", "search_modules", "search_new"}) {
        const std::string update = std::string("UPDATE ") + table + " SET ";
        database.execute(update + "module_id = CAST('../../up' AS BLOB)"
                                  " WHERE module_id = CAST('5a000000' AS BLOB)");
        database.execute(update + "module_id = x'1b5b324a0a3d312c22'"
                                  " WHERE module_id = CAST('5a000001' AS BLOB)");
        database.execute(update + "family = CAST('=/../<b>' AS BLOB)"
                                  " WHERE module_id = CAST('5a000002' AS BLOB)");
    }
    expectHarmless(outputOf({"devices", "--db", database.url()}));
    expectHarmlessCsv(outputOf({"devices", "--db", database.url(), "--format", "csv"}));
    const std::string json = outputOf({"devices", "--db", database.url(), "--format", "json"});
    expectHarmless(json);
    EXPECT_THAT(valuesOf(Json::parse(json).at("devices"), "module_id"),
                testing::IsSupersetOf({"../../up", "\033[2J\n=1,\""}));

    outputOf({"devices", "--db", database.url(), "--export", other.path("below/exported")});
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(other.path())) {
        names.insert(entry.path().filename().string());
    }
    std::set<std::string> expected{"below", "exported", "MX%2e%2e%2f%2e%2e%2fup.bin",
                                   "MX%1b%5b2J%0a%3d1%2c%22.bin",
                                   "MX5a000002.%3d%2f%2e%2e%2f%3cb%3e.bin"};
    for (unsigned i = 3; i < files.size(); ++i) {
        expected.insert("MX" + hostileModuleId(i) + ".bin");
    }
    EXPECT_EQ(names, expected);
}

TEST_F(HostileText, OfAFileNameIsHarmless)
{
    const testkit::TemporaryDirectory odd;
    const std::string good = odd.write("MX\033[2J\n=1%s<b>.bin", hostileModule(0));
    odd.write("MX\033[2J\nerror: 2.bin", {0, 5, 0, 6, 0, 0});
    const std::string url = "sqlite:" + other.path("devices.sqlite");
    const ToolRun populate = runTool({"populate", odd.path(), "--db", url, "--log-level", "debug"});
    EXPECT_EQ(populate.exitCode, 1);
    expectHarmless(populate.out + populate.err);
    std::istringstream lines(populate.err);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_TRUE(std::regex_search(line, std::regex("(^|: )(note|warning|error|hint): ")))
            << line;
    }
    EXPECT_THAT(populate.err, HasSubstr("MX\\x1b[2J\\x0aerror: 2.bin"));
    for (const Words& words :
         {Words{"show", good}, Words{"show", good + "?"},
          Words{"explain", good, "--format", "html"}, Words{"check", good}, Words{"dump", good},
          Words{"diff", good, good}, Words{"build", good}, Words{"config", good, "--values", good},
          Words{good}, Words{"show", good, "--format", good},
          Words{"show", good, "-o", good + "/x"}, Words{"populate", good, "--db", url},
          Words{"devices", "--db", good}}) {
        const ToolRun run = runTool(words);
        SCOPED_TRACE(testing::PrintToString(words));
        expectHarmless(run.out);
        expectHarmless(run.err);
    }
}

TEST_F(HostileText, OfTheCallIsHarmlessInARefusal)
{
    const std::string& file = files.front();
    for (const unsigned number : chosen) {
        const std::string& text = hostileTexts()[number].bytes;
        for (const char* option : {"--name", "--schema"}) {
            const ToolRun skeleton = runTool({"new", option, text});
            expectHarmless(skeleton.out);
            expectHarmless(skeleton.err);
        }
        for (const Words& words :
             {Words{"config", file, "--set", text + "?=1"},
              Words{"config", file, "--set", "null=" + text + "?"},
              Words{"explain", file, "--where", text + "?"}, Words{"explain", file, "--at", text},
              Words{"new", "--channels", text + "?"}, Words{"new", "--id", text + "?"},
              Words{"new", "--type", text + "?"}}) {
            const ToolRun run = runTool(words);
            SCOPED_TRACE(testing::PrintToString(words));
            EXPECT_NE(run.exitCode, 0);
            expectHarmless(run.out);
            expectHarmless(run.err);
        }
    }
}

TEST_F(HostileText, OfAYamlTextIsHarmlessInARefusal)
{
    for (const unsigned number : chosen) {
        const auto& text = hostileTexts()[number];
        const std::string yaml =
            "module: {unknown: \"" + text.bytes + "\"}\n" + text.bytes + ": 1\n";
        const std::string file = other.write("wrong.yaml", {yaml.begin(), yaml.end()});
        for (const Words& words : {Words{"build", file, "-o", other.path("wrong.bin")},
                                   Words{"config", files.front(), "--values", file}}) {
            const ToolRun run = runTool(words);
            EXPECT_NE(run.exitCode, 0);
            expectHarmless(run.out);
            expectHarmless(run.err);
        }
    }
}

} // namespace
