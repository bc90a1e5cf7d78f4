#include "../ShownFinding.h"

#include <mxmodule/Assignment.h>

#include <gmock/gmock.h>

namespace {

using mxmodule::Assignment;
using mxmodule::readValues;
using mxmodule::Values;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> linesOf(const Values& values)
{
    std::vector<std::string> lines;
    for (const Assignment& one : values.assignments) {
        lines.push_back(one.place + " " + one.name + "=" + one.value);
    }
    return lines;
}

std::string failureOf(const std::string& content)
{
    try {
        readValues(content, "v.yaml");
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Input);
        return shown(failure.reason());
    }
    return "accepted";
}

TEST(ValuesFile, aNumberThatJsonCannotHoldIsRefusedWithItsFile)
{
    try {
        readValues(R"({"Transformer ratio": 1e999999})", "v.json");
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Input);
        EXPECT_EQ(shown(failure.reason()),
                  "v.json: error: Cannot read the values: number overflow parsing '1e999999'\n");
    }
}

TEST(ValuesFile, isAMapOfNamesToValues)
{
    EXPECT_THAT(
        linesOf(readValues("Filter: 3 ms\n\n'#12': 5\nAI 1/Level: -0.5\n", "v.yaml")),
        ElementsAre("v.yaml:1:1 Filter=3 ms", "v.yaml:3:1 #12=5", "v.yaml:4:1 AI 1/Level=-0.5"));
}

TEST(ValuesFile, groupsTheParametersOfAChannel)
{
    EXPECT_THAT(
        linesOf(readValues("AI 1:\n  Level: 5\n  Mode: off\nFilter: on\n", "v.yaml")),
        ElementsAre("v.yaml:2:3 AI 1/Level=5", "v.yaml:3:3 AI 1/Mode=off", "v.yaml:4:1 Filter=on"));
}

TEST(ValuesFile, mayBeJson)
{
    EXPECT_THAT(
        linesOf(readValues("{\n\t\"Filter\": \"3 \\u00b5s\",\n\t\"A/B\": 1.50\n}\n", "v.json")),
        ElementsAre("v.json:2:2 Filter=3 µs", "v.json:3:2 A/B=1.50"));
}

TEST(ValuesFile, numbersKeepTheirText)
{
    EXPECT_THAT(
        linesOf(readValues("a: 18446744073709551615\nb: 010\nc: yes\n", "v.yaml")),
        ElementsAre("v.yaml:1:1 a=18446744073709551615", "v.yaml:2:1 b=010", "v.yaml:3:1 c=yes"));
}

TEST(ValuesFile, anEmptyFileAsksForNothing)
{
    EXPECT_TRUE(readValues("", "v.yaml").assignments.empty());
    EXPECT_TRUE(readValues("{}", "v.yaml").assignments.empty());
}

TEST(ValuesFile, failuresNameLineAndColumn)
{
    EXPECT_EQ(failureOf("- a\n- b\n"), "v.yaml:1:1: error: Found a list, expected a map of "
                                       "parameter names to values\n");
    EXPECT_EQ(failureOf("Filter\n"), "v.yaml:1:1: error: Found \"Filter\", expected a map of "
                                     "parameter names to values\n");
    EXPECT_EQ(failureOf("a: 1\nFilter: [1, 2]\n"),
              "v.yaml:2:9: error: Found a list, expected the value of a parameter\n");
    EXPECT_EQ(failureOf("a: 1\nFilter:\n"), // where the value would begin
              "v.yaml:3:1: error: Found nothing, expected the value of a parameter\n");
    EXPECT_EQ(failureOf("AI 1:\n  Level: {x: 1}\n"),
              "v.yaml:2:10: error: Found a map, expected the value of a parameter\n");
    EXPECT_EQ(
        failureOf("a: 1\nb: [x\n"),
        "v.yaml:2:4: error: Cannot read the values: this \"[\" is not closed, \"]\" is missing\n");
}

// In braces the comma ends the value.
TEST(ValuesFile, aDecimalCommaIsTold)
{
    EXPECT_EQ(failureOf("AI 1: {Limit: 9,5}\n"),
              "v.yaml:1:18: error: Found nothing, expected the value of a parameter\n"
              "hint: numbers have a decimal point: 9.5\n");
    EXPECT_THAT(failureOf("{a: on, 5}\n"), testing::Not(HasSubstr("hint")));
    try {
        readValues("{\"Limit\": 9,25}", "v.json");
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().place, "v.json:1:14");
        EXPECT_EQ(failure.reason().hint, "numbers have a decimal point: 9.25");
    }
}

TEST(ValuesFile, jsonIsReadStrictly)
{
    // As YAML these would be accepted.
    for (const char* content : {"{\"a\": 1,}", "{\"a\": \"x", "{a: 1}", "a: 1", "{\"a\": 'x'}"}) {
        try {
            readValues(content, "v.json");
            ADD_FAILURE() << content;
        } catch (const mxmodule::Failure& failure) {
            EXPECT_THAT(failure.reason().place, testing::MatchesRegex("v.json:1:[0-9]+"));
            EXPECT_THAT(failure.what(), HasSubstr("Cannot read the values: "));
        }
    }
}

TEST(ValuesFile, readsWhatConfigHasWritten)
{
    const Values values = readValues(R"({"schema": {"name": "mxtool.config", "version": 1},
        "device_type_id": "kv38.01", "image": "0a ff", "values": {"#7": "#1"}})",
                                     "v.json");
    EXPECT_EQ(values.deviceTypeId, "kv38.01");
    EXPECT_EQ(values.image, (std::vector<char>{10, '\xFF'}));
    EXPECT_THAT(linesOf(values), ElementsAre("v.json:2:67 #7=#1"));
}

TEST(ValuesFile, otherSchemasAreRefused)
{
    EXPECT_EQ(failureOf("{schema: {name: mxtool.config, version: 2}, image: '', values: {}}"),
              "v.yaml:1:10: error: Found another schema, expected mxtool.config version 1\n");
    EXPECT_EQ(failureOf("{schema: {name: mxtool.device, version: 1}}"),
              "v.yaml:1:10: error: Found another schema, expected mxtool.config version 1\n");
    EXPECT_EQ(failureOf("{schema: {name: mxtool.config, version: 1}, values: {}}"),
              "v.yaml:1:1: error: Expected the members \"image\" and \"values\"\n");
    EXPECT_EQ(failureOf("{schema: {name: mxtool.config, version: 1}, image: ''}"),
              "v.yaml:1:1: error: Expected the members \"image\" and \"values\"\n");
    EXPECT_EQ(failureOf("{schema: {name: mxtool.config, version: 1}, image: '', values: {}, "
                        "values: {a: 1}}"),
              "v.yaml:1:68: error: The member \"values\" occurs twice\n");
    EXPECT_EQ(failureOf("{schema: {name: mxtool.config, version: 1}, device_type_id: [a]}"),
              "v.yaml:1:61: error: Found a list, expected a device type such as "
              "\"kv38.5a030304\"\n");
    EXPECT_EQ(failureOf("{schema: {name: mxtool.config, version: 1}, image: 0g, values: {}}"),
              "v.yaml:1:52: error: Found \"0g\" at character 1, expected two hexadecimal digits "
              "for each byte\n");
}

TEST(ValuesFile, aParameterMayBeCalledSchema)
{
    EXPECT_THAT(linesOf(readValues("schema: 5\n", "v.yaml")), ElementsAre("v.yaml:1:1 schema=5"));
    EXPECT_THAT(linesOf(readValues("schema: {Level: 5}\n", "v.yaml")),
                ElementsAre("v.yaml:1:10 schema/Level=5"));
}

TEST(ValuesFile, deepNestingIsRefused)
{
    EXPECT_THAT(failureOf(std::string(100000, '[')),
                HasSubstr("500 nested lists and maps, which is too many"));
    EXPECT_THAT(failureOf("a: &x {b: *x}\n"), HasSubstr("v.yaml:1:"));
}

// Documents after the first would be ignored silently.
TEST(ValuesFile, isOneDocument)
{
    const std::string reason =
        "error: Cannot read the values: a second document, a file holds one map of values\n";
    EXPECT_EQ(failureOf("a: 1\n---\nb: 2\n"), "v.yaml:3:1: " + reason);
    EXPECT_EQ(failureOf("{a: 1}\nb: 2\n"), "v.yaml:2:1: " + reason);
    EXPECT_THAT(linesOf(readValues("---\na: 1\n...\n", "v.yaml")), ElementsAre("v.yaml:2:1 a=1"));
}

// The YAML library would read "b" after it as the control character 08.
TEST(ValuesFile, aZeroByteIsRefused)
{
    EXPECT_EQ(failureOf(std::string("a: 1\nx\0b: 2\n", 12)),
              "v.yaml:2:2: error: Cannot read the values: byte 00, expected the characters of a "
              "text\n");
}

TEST(ValuesFile, moreValuesThanAnyModuleHasAreRefused)
{
    std::string entries;
    std::string aliases;
    std::string csv = "name,value\n";
    for (int i = 0; i < 101; ++i) {
        entries += "p" + std::to_string(i) + ": 1, ";
        aliases += "c" + std::to_string(i) + ": *one\n";
    }
    for (int i = 0; i < 10001; ++i) {
        csv += "p" + std::to_string(i) + ",1\n";
    }
    const std::string reason = "error: More than 10000 values, no module has so many parameters\n";
    EXPECT_THAT(failureOf("one: &one {" + entries + "}\n" + aliases), HasSubstr(reason));
    try {
        readValues(csv, "v.csv");
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(shown(failure.reason()), "v.csv:10002: " + reason);
    }
}

} // namespace
