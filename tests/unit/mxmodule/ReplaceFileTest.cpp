#include <mxmodule/ReplaceFile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;
using mxmodule::Failure;

class ReplaceFile : public testing::Test
{
protected:
    ReplaceFile()
    {
        std::string name = (fs::temp_directory_path() / "replace-XXXXXX").string();
        directory = mkdtemp(name.data());
    }

    ~ReplaceFile() override { fs::remove_all(directory); }

    std::string path(const std::string& name) const { return (directory / name).string(); }

    static std::string contentOf(const std::string& file)
    {
        std::ostringstream content;
        content << std::ifstream(file, std::ios::binary).rdbuf();
        return content.str();
    }

    static void write(const std::string& file, const std::string& content)
    {
        std::ofstream(file, std::ios::binary) << content;
    }

    std::size_t filesThere() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
    }

    fs::path directory;
};

TEST_F(ReplaceFile, MakesAFileAndReplacesIt)
{
    mxmodule::replaceFile(path("a"), "before");
    mxmodule::replaceFile(path("a"), std::string("after\0", 6));
    EXPECT_EQ(contentOf(path("a")), std::string("after\0", 6));
    EXPECT_EQ(filesThere(), 1U);
}

TEST_F(ReplaceFile, GivesAReaderTheContentThatItOpened)
{
    write(path("a"), "before");
    std::ifstream opened(path("a"));
    mxmodule::replaceFile(path("a"), "after, longer");
    std::string line;
    std::getline(opened, line);
    EXPECT_EQ(line, "before");
}

TEST_F(ReplaceFile, KeepsPermissions)
{
    write(path("a"), "before");
    fs::permissions(path("a"), fs::perms::owner_read | fs::perms::owner_write);
    mxmodule::replaceFile(path("a"), "after");
    EXPECT_EQ(fs::status(path("a")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(ReplaceFile, GivesANewFileThePermissionsOfTheProcess)
{
    const mode_t before = umask(027);
    mxmodule::replaceFile(path("a"), "content");
    umask(before);
    EXPECT_EQ(fs::status(path("a")).permissions(), fs::perms(0640));
}

// Whoever knew the name could put a link there.
TEST_F(ReplaceFile, WritesToNoFileOfAKnownName)
{
    write(path("other"), "kept");
    const std::string known = "mxtool.part-" + std::to_string(getpid());
    fs::create_symlink("other", path(known));
    mxmodule::replaceFile(path("a"), "content");
    mxmodule::requireReplaceable(path("b"));
    EXPECT_EQ(contentOf(path("other")), "kept");
    EXPECT_TRUE(fs::is_symlink(path(known)));
}

TEST_F(ReplaceFile, TakesManyThreadsAtOnce)
{
    const std::string half(100000, 'x');
    std::thread other([&] {
        for (int i = 0; i < 10; ++i) {
            mxmodule::replaceFile(path("a"), half);
        }
    });
    for (int i = 0; i < 10; ++i) {
        mxmodule::replaceFile(path("a"), half + half);
    }
    other.join();
    EXPECT_EQ(contentOf(path("a")).size() % half.size(), 0U);
    EXPECT_EQ(filesThere(), 1U);
}

TEST_F(ReplaceFile, FollowsALink)
{
    write(path("target"), "before");
    fs::create_symlink("target", path("link"));
    mxmodule::replaceFile(path("link"), "after");
    EXPECT_TRUE(fs::is_symlink(path("link")));
    EXPECT_EQ(contentOf(path("target")), "after");
    EXPECT_EQ(mxmodule::followLinks(path("link")), path("target"));
}

TEST_F(ReplaceFile, NamesAMissingDirectory)
{
    try {
        mxmodule::replaceFile(path("none/a"), "content");
        FAIL() << "it was written";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.reason().place, path("none/a"));
        EXPECT_EQ(failure.reason().text, "Cannot write: No such file or directory");
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Output);
        EXPECT_EQ(failure.reason().hint,
                  "there is no directory " + path("none") + ", create it first");
    }
    EXPECT_THROW(mxmodule::requireReplaceable(path("none/a")), Failure);
}

TEST_F(ReplaceFile, LeavesADirectoryOfThatName)
{
    fs::create_directory(path("folder"));
    write(path("folder/kept"), "kept");
    EXPECT_THROW(mxmodule::replaceFile(path("folder"), "content"), Failure);
    EXPECT_THROW(mxmodule::requireReplaceable(path("folder")), Failure);
    EXPECT_EQ(contentOf(path("folder/kept")), "kept");
    EXPECT_EQ(filesThere(), 1U);
}

TEST_F(ReplaceFile, LeavesNothingOfATest)
{
    mxmodule::requireReplaceable(path("a"));
    EXPECT_EQ(filesThere(), 0U);
}

} // namespace
