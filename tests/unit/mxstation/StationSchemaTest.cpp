// The JSON Schema, which editors use, and the reader of stations know the same keys, words and
// limits.

#include <gmock/gmock.h>
#include <mxstation/Station.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <iterator>

namespace {

using mxmodule::Finding;
using nlohmann::json;
using testing::HasSubstr;
using testing::UnorderedElementsAreArray;
using Words = std::vector<std::string>;

const json& stationSchema()
{
    static const json loaded = json::parse(std::ifstream(MX_STATION_SCHEMA));
    return loaded;
}

const json& schemaAt(const std::string& path)
{
    return stationSchema().at(json::json_pointer(path));
}

// The finding about `word` in a station with this text.
Finding findingAbout(const std::string& word, const std::string& text)
{
    for (const Finding& finding : mxstation::stationOf(text, "<test>").findings) {
        if (finding.text.find('"' + word + '"') != std::string::npos) {
            return finding;
        }
    }
    return {mxmodule::Severity::Note, "", "nothing is found in " + text, ""};
}

Words keysOf(const json& definition)
{
    Words keys;
    for (const auto& [key, value] : definition.at("properties").items()) {
        keys.push_back(key);
    }
    return keys;
}

Words constants(const json& choices)
{
    Words words;
    for (const json& choice : choices) {
        if (choice.contains("const")) {
            words.push_back(choice.at("const"));
        }
    }
    return words;
}

const std::string modbus = "/definitions/modbus";

TEST(StationSchema, hasTheKeysOfEveryMapping)
{
    const std::string layout = "/definitions/layout/properties/";
    for (const auto& [path, text] : {
             std::pair<std::string, const char*>{"", "{x: 1, modules: []}"},
             {"/definitions/entry", "modules: [{x: 1}]"},
             {"/definitions/entry/properties/at", "modules: [{module: a.bin, at: {x: 1}}]"},
             {"/definitions/entry/properties/reserve", "modules: [{reserve: {x: 1}}]"},
             {"/definitions/channel", "modules: [{module: a.bin, channels: {A: {x: 1}}}]"},
             {"/definitions/layout", "{layout: {x: 1}, modules: []}"},
             {layout + "align/anyOf/1", "{layout: {align: {x: 1}}, modules: []}"},
             {layout + "order/anyOf/2", "{layout: {order: {x: row}}, modules: []}"},
             {modbus, "{modbus: {x: 1}, modules: []}"},
             {modbus + "/properties/inputs", "{modbus: {inputs: {x: 1}}, modules: []}"},
             {modbus + "/properties/outputs", "{modbus: {outputs: {x: 1}}, modules: []}"},
             {modbus + "/properties/parameters", "{modbus: {parameters: {x: 1}}, modules: []}"},
             {modbus + "/properties/identity", "{modbus: {identity: {x: 1}}, modules: []}"},
             {modbus + "/properties/commit", "{modbus: {commit: {x: 1}}, modules: []}"},
         }) {
        EXPECT_THAT(keysOf(schemaAt(path)),
                    UnorderedElementsAreArray(findingAbout("x", text).accepted))
            << text;
        EXPECT_EQ(schemaAt(path).at("additionalProperties"), false) << path;
    }
}

TEST(StationSchema, hasTheWordsOfLayouts)
{
    const std::string layout = "/definitions/layout/properties/";
    for (const auto& [path, text] : {
             std::pair<std::string, const char*>{"/definitions/layoutName/anyOf",
                                                 "{layout: x, modules: []}"},
             {layout + "order/anyOf", "{layout: {order: x}, modules: []}"},
             {layout + "order/anyOf/2/properties/in/anyOf", "{layout: {order: x}, modules: []}"},
             {layout + "byte_order/anyOf", "{layout: {byte_order: x}, modules: []}"},
             {modbus + "/properties/words/anyOf", "{modbus: {words: x}, modules: []}"},
             {modbus + "/properties/bytes/anyOf", "{modbus: {bytes: x}, modules: []}"},
             {modbus + "/properties/commit/properties/reads/anyOf",
              "{modbus: {commit: {reads: x}}, modules: []}"},
         }) {
        EXPECT_EQ(constants(schemaAt(path)), findingAbout("x", text).accepted) << text;
    }
}

TEST(StationSchema, describesTheNamedLayouts)
{
    const json& layouts = schemaAt("/definitions/layoutName/anyOf");
    const auto& known = mxstation::namedLayouts();
    ASSERT_EQ(layouts.size(), known.size());
    for (std::size_t i = 0; i < known.size(); ++i) {
        std::string description = layouts[i].at("description");
        description.front() = static_cast<char>(std::tolower(description.front()));
        EXPECT_EQ(description, known[i].meaning + ".");
    }
}

std::string limits(const json& number)
{
    return "expected a whole number from " + number.at("minimum").dump() + " to " +
           number.at("maximum").dump();
}

TEST(StationSchema, hasTheLimitsOfNumbers)
{
    EXPECT_THAT(findingAbout("-1", "modules: [{reserve: {in: -1}}]").text,
                HasSubstr(limits(schemaAt("/definitions/byte"))));
    for (const auto& [key, definition] : schemaAt("/definitions/layout/properties").items()) {
        const json number = definition.contains("minimum") ? definition
                            : definition.contains("anyOf") ? definition.at("anyOf")[0]
                                                           : json::object();
        if (number.contains("minimum")) {
            EXPECT_THAT(findingAbout("-1", "{layout: {" + key + ": -1}, modules: []}").text,
                        HasSubstr(limits(number)));
        }
    }
}

// A definition, or the one that it refers to.
const json& resolved(const json& definition)
{
    return definition.contains("allOf")
               ? schemaAt(definition.at("allOf")[0].at("$ref").get<std::string>().substr(1))
               : definition;
}

void expectLimits(const json& properties, const std::string& before, const std::string& after)
{
    for (const auto& [key, definition] : properties.items()) {
        const json& number = resolved(definition);
        if (number.contains("minimum")) {
            const std::string text = before + "{" + key + ": -1}" + after;
            EXPECT_THAT(findingAbout("-1", text).text, HasSubstr(limits(number))) << text;
        }
        if (definition.value("type", "") == "object") {
            expectLimits(definition.at("properties"), before + "{" + key + ": ", "}" + after);
        }
    }
}

TEST(StationSchema, hasTheLimitsOfRegisters)
{
    expectLimits(schemaAt(modbus + "/properties"), "{modbus: ", ", modules: []}");
}

TEST(StationSchema, hasTheFunctionCodes)
{
    for (const auto& [section, key] : {
             std::pair<std::string, std::string>{"inputs", "read"},
             {"outputs", "read"},
             {"outputs", "write"},
             {"identity", "read"},
         }) {
        const json& choices =
            schemaAt(modbus + "/properties/" + section + "/properties/" + key + "/anyOf");
        Words codes;
        for (const json& choice : choices) {
            codes.push_back(choice.at("const").dump());
        }
        const std::string text = "{modbus: {" + section + ": {" + key + ": 1}}, modules: []}";
        EXPECT_EQ(codes, findingAbout("1", text).accepted) << text;
    }
}

// What the reader misses without it.
TEST(StationSchema, requiresWhatTheReaderRequires)
{
    EXPECT_EQ(schemaAt(modbus + "/required"), json{"parameters"});
    EXPECT_NE(findingAbout("parameters", "{modbus: {unit: 1}, modules: []}").severity,
              mxmodule::Severity::Note);
    for (const char* const section : {"inputs", "outputs", "parameters", "identity", "commit"}) {
        const json& definition = schemaAt(modbus + "/properties/" + section);
        const bool isRequired =
            findingAbout("address", "{modbus: {" + std::string(section) + ": {}}, modules: []}")
                .severity != mxmodule::Severity::Note;
        EXPECT_EQ(definition.value("required", Words{}), isRequired ? Words{"address"} : Words{})
            << section;
    }
}

void expectKeysIn(const std::string& text, const json& properties)
{
    for (const auto& [key, definition] : properties.items()) {
        EXPECT_THAT(text, testing::ContainsRegex("[ {]" + key + ": "));
        if (definition.value("type", "") == "object") {
            expectKeysIn(text, definition.at("properties"));
        }
    }
}

TEST(StationSchema, hasAnExampleOfEveryKeyOfTheRegisters)
{
    std::ifstream file(EXAMPLE_STATIONS "/own-layout.yaml");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    expectKeysIn(text.substr(text.find("modbus:")), schemaAt(modbus + "/properties"));
}

} // namespace
