// How much is remembered.
#include <folder/FileMemory.h>

#include <gmock/gmock.h>

namespace {

using mxmodule::BuiltModule;
using mxmodule::FileMemory;

BuiltModule builtModule(std::size_t bytes)
{
    const std::string text = "module: {type: 3, id: 0x01020304}\n";
    static const mxmodule::ModuleFile file("<text>", {text.begin(), text.end()});
    return {file, {}, bytes};
}

TEST(FileMemory, forgetsTheLeastRecentlyUsed)
{
    FileMemory memory;
    for (std::size_t i = 0; i < 512; ++i) {
        memory.add(std::to_string(i), builtModule(1));
    }
    EXPECT_TRUE(memory.find("0"));
    memory.add("more", builtModule(1));
    EXPECT_TRUE(memory.find("0"));
    EXPECT_FALSE(memory.find("1"));
    EXPECT_TRUE(memory.find("2"));
    EXPECT_TRUE(memory.find("more"));
}

// 134217728 bytes are 128 MiB.
TEST(FileMemory, takesAtMost128Mebibytes)
{
    FileMemory memory;
    memory.add("a", builtModule(134217727));
    memory.add("b", builtModule(1));
    EXPECT_TRUE(memory.find("a"));
    memory.add("c", builtModule(1));
    EXPECT_TRUE(memory.find("a"));
    EXPECT_FALSE(memory.find("b"));
    EXPECT_TRUE(memory.find("c"));
}

TEST(FileMemory, countsAReplacedFileOnce)
{
    FileMemory memory;
    memory.add("other", builtModule(1));
    for (int i = 0; i < 3; ++i) {
        memory.add("a", builtModule(134217727));
    }
    EXPECT_TRUE(memory.find("a"));
    EXPECT_TRUE(memory.find("other"));
}

TEST(FileMemory, keepsTheOthersInPlaceOfALargerOne)
{
    FileMemory memory;
    memory.add("a", builtModule(1));
    memory.add("b", builtModule(134217729));
    EXPECT_TRUE(memory.find("a"));
    EXPECT_FALSE(memory.find("b"));
}

} // namespace
