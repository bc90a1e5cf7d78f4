// Bytes read as typed content and written again are the same bytes.

#include "GeneratedFiles.h"

#include <mxauthor/MxFile.h>

#include <devices/parser/mx/LoadFile.h>

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using mxauthor::Bytes;
using mxauthor::MxFile;
using mxauthor::readMxFile;
using mxauthor::writeMxFile;

Bytes asBytes(const std::vector<char>& chars)
{
    return {chars.begin(), chars.end()};
}

std::vector<char> loadExample(const std::string& name)
{
    std::vector<char> chars;
    devices::parser::mx::loadFile(std::string(EXAMPLE_MODULES) + "/" + name, chars);
    chars.pop_back(); // the byte that stands behind every loaded file
    return chars;
}

std::vector<std::string> examples()
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLE_MODULES)) {
        const std::string name = entry.path().filename().string();
        // MX9999.bin is cut off on purpose: its framing does not hold.
        if (entry.path().extension() == ".bin" && name != "MX9999.bin") {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

class ExampleContent : public testing::TestWithParam<std::string>
{};

TEST_P(ExampleContent, isWrittenAsItWasRead)
{
    const std::vector<char> chars = loadExample(GetParam());
    EXPECT_EQ(writeMxFile(readMxFile(chars)), asBytes(chars));
}

TEST_P(ExampleContent, isTypedButForTheGroupsOfTheMaker)
{
    for (const mxauthor::Group& group : readMxFile(loadExample(GetParam())).groups) {
        const bool isMakers = group.id == 0x20D4 || group.id == 0x7ABC;
        EXPECT_EQ(std::holds_alternative<mxauthor::RawGroup>(group.content), isMakers) << group.id;
    }
}

INSTANTIATE_TEST_SUITE_P(Files, ExampleContent, testing::ValuesIn(examples()));

TEST(GeneratedContent, isWrittenAsItWasRead)
{
    roundtrip::GeneratedFiles files(20240531);
    unsigned rawGroups = 0;
    unsigned typedGroups = 0;
    for (int i = 0; i < 10000; ++i) {
        const std::vector<char> chars = files.next();
        const MxFile file = readMxFile(chars);
        ASSERT_EQ(writeMxFile(file), asBytes(chars)) << "file " << i;
        for (const mxauthor::Group& group : file.groups) {
            ++(std::holds_alternative<mxauthor::RawGroup>(group.content) ? rawGroups : typedGroups);
        }
    }
    // The generator makes both: otherwise this test would show less than it says.
    EXPECT_GT(rawGroups, 5000U);
    EXPECT_GT(typedGroups, 50000U);
}

TEST(GeneratedContent, failsCleanlyAtEveryLengthOfAFile)
{
    const std::vector<char> whole = loadExample("MX0304.bin");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::vector<char> cut(whole.begin(),
                                    whole.begin() + static_cast<std::ptrdiff_t>(length));
        if (length <= 4) {
            EXPECT_EQ(writeMxFile(readMxFile(cut)), asBytes(cut)) << length;
        } else {
            EXPECT_THROW(readMxFile(cut), std::runtime_error) << length;
        }
    }
}

} // namespace
