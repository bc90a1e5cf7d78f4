// Every file in cases/ is rejected or accepted by the device parser, and has the checker's
// findings, as the file states.

#include "Failure.h"
#include "MalformedFile.h"

#include <devices/parser/mx/Parser_kv38.h>
#include <mxauthor/Check.h>

#include <gmock/gmock.h>

#include <cstdio>
#include <filesystem>
#include <set>

namespace {

using malformed::MalformedFile;
using malformed::malformedFiles;
using malformed::readMalformedFile;

std::string parserSays(std::vector<char> bytes)
{
    bytes.push_back('\xFF'); // as after every loaded file
    try {
        devices::parser::mx::Parser_kv38().parse(bytes, nullptr, 0, 0);
        return "accepted";
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
}

std::string asStated(const mxauthor::Finding& finding)
{
    char offset[16];
    std::snprintf(offset, sizeof offset, "0x%06x", finding.place.offset);
    return std::string(offset) + " [" + finding.rule->name + "] " + describe(finding);
}

std::vector<std::string> checkerFinds(const std::vector<char>& bytes)
{
    std::vector<std::string> found;
    for (const mxauthor::Finding& finding : mxauthor::check(bytes)) {
        found.push_back(asStated(finding));
    }
    return found;
}

class Malformed : public testing::TestWithParam<std::string>
{};

TEST_P(Malformed, isFoundAsStated)
{
    const MalformedFile file = readMalformedFile(GetParam());
    EXPECT_NE(file.defect, "");
    EXPECT_EQ(parserSays(file.bytes), file.parser);
    EXPECT_THAT(checkerFinds(file.bytes), testing::ElementsAreArray(file.finds));
}

std::string nameOf(const testing::TestParamInfo<std::string>& info)
{
    std::string name = std::filesystem::path(info.param).stem().string();
    for (char& c : name) {
        c = std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, Malformed, testing::ValuesIn(malformedFiles()), nameOf);

// All results of parser and checker, as stated in the files.
std::multiset<std::string> everythingStated()
{
    std::multiset<std::string> all;
    for (const std::string& path : malformedFiles()) {
        const MalformedFile file = readMalformedFile(path);
        all.insert(file.parser);
        for (const std::string& finding : file.finds) {
            all.insert(finding.substr(finding.find('[')));
        }
    }
    return all;
}

TEST(MalformedFiles, areSixtyAtLeast)
{
    EXPECT_GE(malformedFiles().size(), 60U);
}

TEST(MalformedFiles, showTheExampleOfEveryRule)
{
    const auto stated = everythingStated();
    for (const mxauthor::CheckRule* rule : mxauthor::checkRules()) {
        EXPECT_THAT(stated,
                    testing::Contains("[" + std::string(rule->name) + "] " + rule->example));
    }
}

TEST(MalformedFiles, showEveryMessageOfTheParser)
{
    const auto stated = everythingStated();
    for (const char* message :
         {": Index position out of bounds",
          ": Invalid group length",
          "Parser::parse(): Truncated mx buffer",
          "Unexpected end of mx buffer (group 20c0)",
          "Unexpected end of mx buffer (group 20d0)",
          "No such group: 0001",
          "No such group: 0020",
          "Key 'BrandId' not found in group 0020",
          "Tavo dataset not found",
          "Unexpected tavo dataset size",
          "Invalid size property in group 0x0010 (1)",
          "Unsupported dataset version in group 0x0010",
          "Invalid size property in group 0x0010 (2)",
          "Default parameter block in mx data exceeds PARAMETER_BUFFER_SIZE",
          "Missing group 0x0011",
          "Error in group 0x0011: Unknown datatype identifier",
          "The current parameter array size does not match the value given in group 0x0011",
          "Cannot find group 20d3",
          "Cannot find requested text string: ID = ",
          "Invalid textstring termination",
          "Invalid datatype",
          "Cannot find group 20c1",
          "Bad alignment in group 20c1",
          "Invalid length of group 0x20f0",
          "Invalid mx extension version in group 0x20f0",
          "Parameter out of bounds: ",
          "Parameter option list value not found: ",
          "Parameter option list index out of bounds: "}) {
        EXPECT_THAT(stated, testing::Contains(testing::HasSubstr(message)));
    }
}

} // namespace
