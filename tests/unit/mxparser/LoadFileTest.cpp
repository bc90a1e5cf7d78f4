#include "Failure.h"
#include "TemporaryDirectory.h"

#include "devices/parser/mx/LoadFile.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using devices::parser::mx::loadFile;
using testing::ElementsAre;
using testing::IsEmpty;

class LoadFile : public testing::Test
{
protected:
    testkit::TemporaryDirectory directory;
    std::vector<char> buffer;
};

TEST_F(LoadFile, ThreeBytesGiveFourTheLastOneFF)
{
    loadFile(directory.write("three", {'a', 'b', 'c'}), buffer);
    EXPECT_THAT(buffer, ElementsAre('a', 'b', 'c', '\xFF'));
}

TEST_F(LoadFile, EmptyFileGivesTheSingleByteFF)
{
    loadFile(directory.write("empty", {}), buffer);
    EXPECT_THAT(buffer, ElementsAre('\xFF'));
}

TEST_F(LoadFile, BytesAreTakenAsTheyAre)
{
    loadFile(directory.write("binary", {'\xFF', '\0', '\r', '\n', '\x1A', '\xFF'}), buffer);
    EXPECT_THAT(buffer, ElementsAre('\xFF', '\0', '\r', '\n', '\x1A', '\xFF', '\xFF'));
}

TEST_F(LoadFile, ReplacesWhatTheBufferHeld)
{
    buffer.assign(100, 'x');
    loadFile(directory.write("one", {'1'}), buffer);
    EXPECT_THAT(buffer, ElementsAre('1', '\xFF'));
}

TEST_F(LoadFile, LargeFileIsLoadedWhole)
{
    std::vector<char> content;
    for (int i = 0; i < 200001; ++i) {
        content.push_back(static_cast<char>(i % 251));
    }
    loadFile(directory.write("large", content), buffer);
    content.push_back('\xFF');
    EXPECT_TRUE(buffer == content);
}

// Kernel files have the size 0.
TEST_F(LoadFile, FileThatIsLongerThanItSaysIsLoadedWhole)
{
    const std::string path = "/proc/version";
    std::ifstream stream(path, std::ios::binary);
    std::vector<char> content{std::istreambuf_iterator<char>(stream), {}};
    ASSERT_GT(content.size(), 4U);
    loadFile(path, buffer);
    content.push_back('\xFF');
    EXPECT_EQ(buffer, content);
}

TEST_F(LoadFile, MissingFileFailsWithItsPathAndEmptiesTheBuffer)
{
    buffer.assign(3, 'x');
    const std::string path = directory.path("missing");
    EXPECT_EQ(testkit::failureOf([&] { loadFile(path, buffer); }), "Cannot open file: " + path);
    EXPECT_THAT(buffer, IsEmpty());
}

TEST_F(LoadFile, DirectoryFailsLikeAFileThatCannotBeOpened)
{
    buffer.assign(3, 'x');
    EXPECT_EQ(testkit::failureOf([&] { loadFile(directory.path(), buffer); }),
              "Cannot open file: " + directory.path());
    EXPECT_THAT(buffer, IsEmpty());
}

TEST_F(LoadFile, EmptyPathFails)
{
    EXPECT_EQ(testkit::failureOf([&] { loadFile("", buffer); }), "Cannot open file: ");
}

} // namespace
