// A file is built again when it, or a file that it names, is another one. The bytes of two modules
// that were built once are the same object.
#include "FolderFixture.h"

#include <atomic>
#include <thread>

#include <sys/stat.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FolderMemory : public FolderTest
{
protected:
    FolderMemory()
    {
        write("a.png", "PICTURE");
        write("image.yaml", smallText + "image: a.png\n");
    }

    bool isBuiltAgain() const { return &remembering.file("image.yaml").bytes() != &first.bytes(); }

    bool showsNow(const std::string& text) const
    {
        const auto bytes = remembering.file("image.yaml").bytes();
        return std::string(bytes.begin(), bytes.end()).find(text) != std::string::npos;
    }

    const mxmodule::ModuleFolder remembering = folder();
    mxmodule::ModuleFile first = remembering.file("small.yaml");
};

TEST_F(FolderMemory, givesTheSameFileAgain)
{
    first = remembering.file("image.yaml");
    EXPECT_FALSE(isBuiltAgain());
    EXPECT_EQ(&remembering.file("modules/../image.yaml").bytes(), &first.bytes());
    const mxmodule::ModuleFolder copy = remembering;
    EXPECT_EQ(&copy.file("image.yaml").bytes(), &first.bytes());
}

TEST_F(FolderMemory, readsAChangedFile)
{
    first = remembering.file("image.yaml");
    write("image.yaml", "module: {type: 3, id: 0x01020305}\n");
    EXPECT_TRUE(isBuiltAgain());
    EXPECT_FALSE(showsNow("PICTURE"));
}

TEST_F(FolderMemory, readsAChangedFileThatItNames)
{
    first = remembering.file("image.yaml");
    write("a.png", "DRAWING");
    EXPECT_TRUE(isBuiltAgain());
    EXPECT_TRUE(showsNow("DRAWING"));
}

// Same size, same time of the content: the time of the change of the entry differs.
TEST_F(FolderMemory, noticesAnotherFileOfTheSameTime)
{
    first = remembering.file("image.yaml");
    const auto time = std::filesystem::last_write_time(path("a.png"));
    writeNow("b.png", "DRAWING");
    std::filesystem::last_write_time(path("b.png"), time);
    std::filesystem::rename(path("b.png"), path("a.png"));
    EXPECT_TRUE(showsNow("DRAWING"));
}

TEST_F(FolderMemory, noticesThatAFileIsGone)
{
    first = remembering.file("image.yaml");
    std::filesystem::remove(path("a.png"));
    EXPECT_NE(failureOf([&] { remembering.file("image.yaml"); }), "");
    std::filesystem::remove(path("image.yaml"));
    EXPECT_NE(failureOf([&] { remembering.file("image.yaml"); }), "");
}

TEST_F(FolderMemory, noticesALinkThatLeadsOut)
{
    first = remembering.file("image.yaml");
    std::filesystem::rename(path("a.png"), outer.path("a.png"));
    link("../a.png", "a.png");
    EXPECT_NE(failureOf([&] { remembering.file("image.yaml"); }), "");
}

// Another write within the same tick of the clock would leave the time as it is.
TEST_F(FolderMemory, keepsNoFileThatWasJustWritten)
{
    writeNow("a.png", "PICTURE");
    first = remembering.file("image.yaml");
    EXPECT_TRUE(isBuiltAgain());
    age("a.png");
    first = remembering.file("image.yaml");
    EXPECT_FALSE(isBuiltAgain());
}

TEST_F(FolderMemory, tellsOfTheFilesAlsoWhenItIsUsed)
{
    class Reads : public mxmodule::Observer
    {
    public:
        void reads(const std::string& path) override { files.push_back(path); }

        std::vector<std::string> files;
    } read;
    remembering.file("image.yaml");
    remembering.file("image.yaml", &read);
    EXPECT_THAT(read.files, ElementsAre(path("image.yaml"), path("a.png")));
}

TEST_F(FolderMemory, isUsedByManyThreads)
{
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&, i] {
            for (int round = 0; round < 50; ++round) {
                const bool isChanged = i == 0 && round % 10 == 0;
                if (isChanged) {
                    write("new", smallText + "# " + std::to_string(round) + "\n");
                    std::filesystem::rename(path("new"), path("small.yaml"));
                }
                wrong += showsNow("PICTURE") ? 0 : 1;
                wrong += remembering.names().size() == 3 ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace
