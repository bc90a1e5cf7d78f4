// Texts of a station, and of the mx files in it, are shown but never interpreted, in any output of
// the verbs of station.

#include "HarmlessOutput.h"
#include "HostileModule.h"
#include "RunningTool.h"
#include "TemporaryDirectory.h"
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

namespace {

using Json = nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tooltest::csvRows;
using tooltest::expectHarmless;
using tooltest::expectHarmlessCsv;
using tooltest::hostileTexts;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

using Words = std::vector<std::string>;

class HostileStation : public testing::Test
{
protected:
    HostileStation()
    {
        directory.write("texts.bin", tooltest::hostileModule(13));
        directory.write("last.bin", tooltest::hostileModule(31));
        for (const auto& text : hostileTexts()) {
            texts.push_back(text.utf8);
        }
        texts.insert(texts.end(), {"ends */ int x; /* here", "(* nested (* in ST *)", "?\?/\n//",
                                   std::string(1000, 'x'), std::string(500, '"') + "*/"});
    }

    // Each text is the name of a module and of a place, an alias and a comment; JSON is YAML.
    std::string stationFile(const std::string& name, const std::string& file = "texts.bin")
    {
        Json station{{"station", texts[0] + texts[13]}, {"modules", Json::array()}};
        station["layout"] = {{"most_modules", 200}};
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const std::string number = std::to_string(i);
            Json& module = station["modules"].emplace_back();
            module["module"] = i == 0   ? file
                               : i == 1 ? "last.bin"
                                        : PROJECT_BUILD "/examples/modules/MX0108.bin";
            module["name"] = texts[i];
            module["channels"]["0"] = {{"alias", "a" + number + texts[i]}, {"comment", texts[i]}};
            station["modules"].push_back(
                {{"reserve", {{"in", 1}, {"name", "r" + number + texts[i]}}}});
        }
        return write(name, station.dump(1));
    }

    // The same with registers, and with parameters of the first module whose names and values are
    // texts: every second one has its options, every third one is the module's own.
    std::string stationOnCoupler()
    {
        Json station = Json::parse(readFile(stationFile("station.yaml")));
        station["modbus"] = {{"inputs", {{"address", 0}}},
                             {"outputs", {{"address", 0x1000}}},
                             {"parameters", {{"address", 0x4000}}},
                             {"identity", {{"address", 0x3000}}}};
        for (std::size_t i = 0; i < tooltest::hostileTextCount(13); i += 6) {
            station["modules"][0]["parameters"][texts[i]] = texts[i == 30 ? 2 : i + 2];
        }
        return write("online.yaml", station.dump(1));
    }

    std::string write(const std::string& name, const std::string& text) const
    {
        return directory.write(name, {text.begin(), text.end()});
    }

    static std::string outputOf(const Words& words, int exitCode = 0)
    {
        const ToolRun run = runTool(words);
        EXPECT_EQ(run.exitCode, exitCode) << testing::PrintToString(words) << run.err;
        expectHarmless(run.err);
        return run.out;
    }

    testkit::TemporaryDirectory directory;
    Words texts;
};

// Returns `code` without what is between `begin` and the first `end` after it.
std::string withoutComments(std::string code, const std::string& begin, const std::string& end)
{
    std::string kept;
    for (std::size_t at = 0; at < code.size();) {
        const std::size_t comment = code.find(begin, at);
        kept += code.substr(at, comment - at);
        const std::size_t after = comment == code.npos ? code.npos : code.find(end, comment);
        at = after == code.npos ? code.size() : after + end.size();
    }
    return kept;
}

// Whether a line of a header begins as one that is not made of texts. Functions begin with a macro
// whose name has the prefix of the station.
bool beginsAsCode(const std::string& line)
{
    static const std::regex begin("$|[ {}#]|static_assert\\(|typedef struct |[A-Z_0-9]+_FUNCTION "
                                  "[a-z_0-9]+ [A-Za-z_0-9]+\\(.*\\)$");
    return std::regex_search(line, begin, std::regex_constants::match_continuous);
}

std::string textWith(const std::string& station, const Words& options)
{
    Words words{"station"};
    words.insert(words.end(), options.begin(), options.end());
    words.push_back(station);
    const ToolRun run = runTool(words);
    EXPECT_THAT(run.exitCode, testing::AnyOf(0, 1)) << testing::PrintToString(words) << run.err;
    expectHarmless(run.err);
    EXPECT_THAT(run.out, Not(IsEmpty()));
    return run.out;
}

TEST_F(HostileStation, isHarmlessAsText)
{
    const std::string file = stationFile("station.yaml");
    for (const Words& words : {Words{"show"}, Words{"channels"}, Words{"config"},
                               Words{"config", "--fieldbus", "modbus"}, Words{"check"}}) {
        expectHarmless(textWith(file, words));
    }
    const std::string one = write("one.yaml", "modules: [texts.bin]\n");
    expectHarmless(textWith(one, {"show", "--log-level", "trace"}));
}

TEST_F(HostileStation, comesBackFromJson)
{
    const std::string file = stationFile("station.yaml");
    const Json row = Json::parse(textWith(file, {"show", "--format", "json"}));
    EXPECT_EQ(row.at("station"), texts[0] + texts[13]);
    ASSERT_EQ(row.at("modules").size(), texts.size());
    const Json all = Json::parse(textWith(file, {"channels", "--format", "json"}));
    std::size_t noted = 0;
    for (const Json& channel : all.at("channels")) {
        const std::size_t module = channel.at("module").get<std::size_t>() - 1;
        EXPECT_EQ(channel.at("module_name"), texts[module]);
        EXPECT_EQ(row.at("modules")[module].at("name"), texts[module]);
        if (channel.at("alias") != "") {
            EXPECT_EQ(channel.at("alias"), "a" + std::to_string(module) + texts[module]);
            ++noted;
        }
    }
    EXPECT_EQ(noted, texts.size());
    for (const Words& words :
         {Words{"config"}, Words{"config", "--fieldbus", "modbus"}, Words{"check"}}) {
        Words json = words;
        json.insert(json.end(), {"--format", "json"});
        const std::string out = textWith(file, json);
        expectHarmless(out);
        EXPECT_TRUE(Json::accept(out));
    }
}

TEST_F(HostileStation, neitherBreaksARowNorBeginsAFormulaInCsv)
{
    const std::string out = textWith(stationFile("station.yaml"), {"channels", "--format", "csv"});
    expectHarmlessCsv(out);
    EXPECT_GT(csvRows(out).size(), texts.size());
}

TEST_F(HostileStation, declaresNothingInStructuredText)
{
    const std::string file = stationFile("station.yaml");
    for (const char* address : {"byte", "separate"}) {
        const std::string out =
            textWith(file, {"channels", "--format", "st", "--address", address});
        expectHarmless(out);
        std::istringstream lines(withoutComments(out, "(*", "*)"));
        for (std::string line; std::getline(lines, line);) {
            static const std::regex expected(
                "(    [A-Za-z_0-9]+ AT %[IQ][XBWDL][0-9.]+ : [A-Z]+;)? *|VAR_GLOBAL|END_VAR");
            EXPECT_TRUE(std::regex_match(line, expected)) << line;
        }
    }
}

TEST_F(HostileStation, declaresNothingInAHeader)
{
    const std::string out = textWith(stationFile("station.yaml"), {"channels", "--format", "c"});
    expectHarmless(out);
    EXPECT_THAT(out, Not(HasSubstr("?\?/"))); // a backslash in C11
    const std::string code = withoutComments(out, "/*", "*/");
    EXPECT_EQ(code.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                     "0123456789_ \n#<>.,;:()[]{}=+-*/%&|~^!?\""),
              code.npos);
    EXPECT_THAT(code, Not(HasSubstr("int x")));
    EXPECT_THAT(code, Not(HasSubstr("//")));
    std::istringstream lines(code);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_TRUE(beginsAsCode(line)) << line;
    }
}

TEST_F(HostileStation, isNoMarkupInXml)
{
    const std::string file = stationFile("station.yaml");
    const std::string plain = write("plain.yaml", "modules: [texts.bin]\n");
    const auto elements = [](const std::string& xml) { return tooltest::elementsOf(xml); };
    const std::string xml = textWith(file, {"channels", "--format", "plcopen"});
    expectHarmless(xml);
    EXPECT_EQ(elements(xml), elements(textWith(plain, {"channels", "--format", "plcopen"})));
    Poco::XML::DOMParser parser;
    EXPECT_NO_THROW(
        Poco::XML::AutoPtr<Poco::XML::Document>(parser.parseString(xml))->documentElement());
}

TEST_F(HostileStation, isNoMarkupInAPicture)
{
    const std::string svg = textWith(stationFile("station.yaml"), {"channels", "--picture", "-"});
    expectHarmless(svg);
    EXPECT_THAT(tooltest::elementsOf(svg),
                testing::IsSubsetOf({"svg", "title", "style", "defs", "pattern", "rect", "path",
                                     "text", "g", "?xml", "desc"}));
    Poco::XML::DOMParser parser;
    EXPECT_NO_THROW(
        Poco::XML::AutoPtr<Poco::XML::Document>(parser.parseString(svg))->documentElement());
}

TEST_F(HostileStation, isNoMarkupInADataSheet)
{
    const std::string html = outputOf({"datasheet", stationFile("station.yaml"), "-o", "-"});
    expectHarmless(html);
    EXPECT_THAT(tooltest::elementsOf(html),
                testing::IsSubsetOf({"html",    "head",   "meta",   "title",   "style",  "body",
                                     "a",       "header", "div",    "p",       "h1",     "h2",
                                     "h3",      "h4",     "dl",     "dt",      "dd",     "nav",
                                     "ol",      "ul",     "li",     "main",    "table",  "tr",
                                     "th",      "td",     "thead",  "tbody",   "code",   "span",
                                     "caption", "pre",    "footer", "section", "strong", "img"}));
}

TEST_F(HostileStation, isHarmlessInADifference)
{
    const std::string before = stationFile("before.yaml");
    std::rotate(texts.begin() + 20, texts.begin() + 21, texts.end());
    const std::string after = stationFile("after.yaml", "last.bin");
    expectHarmless(outputOf({"station", "diff", before, after}, 1));
    const std::string json = outputOf({"station", "diff", "--format", "json", before, after}, 1);
    expectHarmless(json);
    EXPECT_TRUE(Json::accept(json));
}

// A simulated coupler of the station, which shows what is written to it.
class HostileStationOnCoupler : public HostileStation
{
protected:
    HostileStationOnCoupler() : simulator({"simulate", file, "--listen", "tcp:127.0.0.1:0"})
    {
        const std::string line = simulator.line();
        target = line.substr(std::min(line.find("tcp:"), line.size()));
    }

    std::string outputOn(const std::string& verb, const Words& more, int exitCode = 0) const
    {
        Words words{"station", verb, file, "--target", target};
        words.insert(words.end(), more.begin(), more.end());
        return outputOf(words, exitCode);
    }

    const std::string file = stationOnCoupler();
    tooltest::RunningTool simulator;
    std::string target;
};

TEST_F(HostileStationOnCoupler, isHarmlessInADifference)
{
    const std::string plan = outputOn("plan", {}, 1);
    expectHarmless(plan);
    EXPECT_THAT(plan, HasSubstr("6 parameters of 1 module differ"));
    const std::string json = outputOn("plan", {"--format", "json"}, 1);
    expectHarmless(json);
    EXPECT_THAT(Json::parse(json).dump(), HasSubstr(Json(texts[12]).dump()));
    outputOn("read", {"-o", directory.path("read.yaml")});
}

TEST_F(HostileStationOnCoupler, isHarmlessInAReport)
{
    expectHarmless(outputOn("apply", {"--yes"}));
    for (int i = 0; i < 6; ++i) {
        const std::string written = simulator.line();
        EXPECT_THAT(written, HasSubstr("parameter "));
        expectHarmless(written);
    }
    const std::string json = outputOn("apply", {"--yes", "--format", "json"});
    expectHarmless(json);
    EXPECT_EQ(Json::parse(json).at("station"), texts[0] + texts[13]);
    const std::string page = outputOn("apply", {"--yes", "--format", "html"});
    expectHarmless(page);
    EXPECT_THAT(
        tooltest::elementsOf(page),
        testing::IsSubsetOf({"!DOCTYPE", "html",  "head",  "meta", "title", "style", "body",  "div",
                             "h1",       "h2",    "p",     "ul",   "li",    "dl",    "dt",    "dd",
                             "table",    "thead", "tbody", "tr",   "th",    "td",    "footer"}));
}

TEST_F(HostileStationOnCoupler, isHarmlessInSamples)
{
    expectHarmless(outputOn("watch", {"--once"}));
    const Words three{"--samples", "2", "--interval", "1ms", "--format"};
    Words csv = three;
    csv.emplace_back("csv");
    expectHarmlessCsv(outputOn("watch", csv));
    const std::string json = outputOn("watch", {"--once", "--format", "json"});
    expectHarmless(json);
    const Json values = Json::parse(json).at("values");
    for (std::size_t i = 2; i < texts.size(); ++i) {
        EXPECT_TRUE(values.contains("a" + std::to_string(i) + texts[i])) << texts[i];
    }
    expectHarmless(outputOn("set", {"--yes", texts[0] + "=" + texts[1], texts[12] + "=1"}, 2));
}

TEST_F(HostileStation, choosesNoPlaceForFiles)
{
    const std::string images = directory.path("images");
    outputOf({"station", "config", "--directory", images, stationFile("station.yaml")});
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(images)) {
        const std::string name = entry.path().filename().string();
        EXPECT_TRUE(std::regex_match(name, std::regex("[A-Za-z0-9_%.-]+"))) << name;
        ++files;
    }
    EXPECT_EQ(files, texts.size() + 1); // and station.json
    EXPECT_TRUE(Json::accept(readFile(images + "/station.json")));
}

TEST_F(HostileStation, keepsItsTextsWhenItIsPinned)
{
    const std::string file = stationFile("station.yaml");
    const std::string before = textWith(file, {"show", "--format", "json"});
    outputOf({"station", "pin", file});
    EXPECT_THAT(readFile(file), HasSubstr("\"at\": {"));
    Json pinned = Json::parse(textWith(file, {"show", "--format", "json"}));
    EXPECT_EQ(pinned.at("modules"), Json::parse(before).at("modules"));
    EXPECT_EQ(pinned.at("gaps"), Json::parse(before).at("gaps"));
}

TEST_F(HostileStation, isHarmlessInARefusal)
{
    for (std::size_t i = 0; i < texts.size(); i += 5) {
        const std::string& text = texts[i];
        const Json entry{{"module", "texts.bin"},
                         {"name", text},
                         {"parameters", {{text + "?", text}, {"-1+1", text + "?"}}},
                         {"channels", {{text + "?", {{"alias", text}}}}},
                         {text, text}};
        const Json station{
            {"layout", text + "?"},
            {text + "?", text},
            {"modules", {entry, entry, text, "/" + text, {{"module", "last.bin"}, {"at", text}}}}};
        const std::string file = write("wrong.yaml", station.dump(1));
        const std::string raw =
            write("raw.yaml", "modules: {unknown: \"" + hostileTexts()[i % 32].bytes + "\"}\n" +
                                  hostileTexts()[i % 32].bytes + ": 1\n");
        for (const Words& words :
             {Words{"check", file}, Words{"check", file, "--format", "json"},
              Words{"diff", file, raw}, Words{"show", raw}, Words{"check", raw}}) {
            Words call{"station"};
            call.insert(call.end(), words.begin(), words.end());
            const ToolRun run = runTool(call);
            SCOPED_TRACE(testing::PrintToString(call));
            EXPECT_THAT(run.exitCode, testing::AnyOf(1, 3));
            expectHarmless(run.out);
            expectHarmless(run.err);
        }
    }
}

} // namespace
