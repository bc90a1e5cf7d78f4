#include "api/FindingJson.h"

#include <gtest/gtest.h>
#include <text/JsonText.h>

namespace {

using mxmodule::Finding;
using mxmodule::Severity;
using workbench::findingJson;
using workbench::findingsJson;

TEST(FindingJson, HasThePlaceInTheFile)
{
    const auto json = findingJson({Severity::Warning, "/a/b.yaml:12:7", "text"}, "/a/b.yaml");
    EXPECT_EQ(json.at("severity"), "warning");
    EXPECT_EQ(json.at("line"), 12);
    EXPECT_EQ(json.at("column"), 7);
}

TEST(FindingJson, HasNoPlaceInAnotherFile)
{
    for (const char* place : {"/a/c.yaml:12:7", "/a/b.yaml", "/a/b.yaml:", "/a/b.yaml:x:1", ""}) {
        const auto json = findingJson({Severity::Error, place, "text"}, "/a/b.yaml");
        EXPECT_TRUE(json.at("line").is_null()) << place;
        EXPECT_TRUE(json.at("column").is_null()) << place;
    }
    EXPECT_TRUE(findingJson({Severity::Error, ":1:2", "text"}).at("line").is_null());
}

TEST(FindingJson, NamesTheFileWithoutItsDirectory)
{
    const auto placeOf = [](const std::string& place, const std::string& file) {
        return findingJson({Severity::Error, place, "text"}, file).at("place");
    };
    EXPECT_EQ(placeOf("/a/b.yaml:12:7", "/a/b.yaml"), "b.yaml:12:7");
    EXPECT_EQ(placeOf("/a/b.yaml", "/a/b.yaml"), "b.yaml");
    EXPECT_EQ(placeOf("b.yaml:1", "b.yaml"), "b.yaml:1");
    EXPECT_EQ(placeOf("modules/c.bin:0x01", "/a/b.yaml"), "modules/c.bin:0x01");
    EXPECT_EQ(placeOf("/a/b.yaml.bin", "/a/b.yaml"), "/a/b.yaml.bin");
}

TEST(FindingJson, HasTextsInUtf8)
{
    Finding finding = {Severity::Error, "", "\xB0"};
    finding.accepted = {"\xE9"};
    const auto json = findingJson(finding);
    EXPECT_EQ(json.at("text"), "\xC2\xB0");
    EXPECT_EQ(json.at("accepted")[0], "\xC3\xA9");
}

// Two of them are more than 1 MiB.
TEST(FindingsJson, LeavesOutWhatIsTooMuch)
{
    const Finding large = {Severity::Error, "", std::string(600 * 1024, 'x')};
    EXPECT_EQ(findingsJson({large, large}).size(), 2U);
    const auto json = findingsJson({large, large, large, large, large});
    ASSERT_EQ(json.size(), 3U);
    EXPECT_EQ(json[2].at("text"), "3 more findings are left out");
    EXPECT_EQ(json[2].at("severity"), "note");
}

} // namespace
