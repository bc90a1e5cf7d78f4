// Which names a folder takes, and what it says of the others.
#include "FolderFixture.h"

#include <sys/stat.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string notThere = "Cannot read the file: there is no such file in the folder\n";
const std::string noName = "Cannot read the file: it is not the name of a file in the folder\n";

class ModuleFolder : public FolderTest
{};

TEST_F(ModuleFolder, givesFilesByName)
{
    const auto file = folder().file("small.yaml");
    EXPECT_EQ(file.name(), "small.yaml");
    EXPECT_TRUE(file.isText());
    EXPECT_EQ(folder().file("modules/other.yaml").bytes(), file.bytes());
}

TEST_F(ModuleFolder, resolvesDotsInTheName)
{
    EXPECT_EQ(folder().file("./modules/../small.yaml").name(), "small.yaml");
    EXPECT_EQ(folder().file("stations/../modules//other.yaml").name(), "modules/other.yaml");
}

TEST_F(ModuleFolder, refusesNamesThatLeadOut)
{
    for (const std::string name :
         {"../secret.yaml", "modules/../../secret.yaml", "..", "../row/small.yaml", "./..", "",
          "/etc/passwd", "/proc/self/environ", "/", "//etc/passwd"}) {
        EXPECT_EQ(failureOfFile(name), name + ": " + noName);
    }
    EXPECT_EQ(failureOfFile(path("small.yaml")), path("small.yaml") + ": " + noName);
}

TEST_F(ModuleFolder, refusesANameWithAByte00)
{
    const std::string name("small.yaml\0", 11);
    EXPECT_EQ(failureOfFile(name), name + ": " + noName);
    EXPECT_EQ(failureOfFile(std::string("\0", 1)), std::string("\0", 1) + ": " + noName);
    EXPECT_FALSE(folder().contains(name));
}

TEST_F(ModuleFolder, saysTheSameOfLinksThatLeadOut)
{
    link(outer.path("secret.yaml"), "there.yaml");
    link("../secret.yaml", "relative.yaml");
    link(outer.path("nothing.yaml"), "nothing.yaml");
    link("..", "up");
    link("/proc/self/environ", "environ.yaml");
    link("/dev/zero", "zero.yaml");
    for (const std::string name :
         {"there.yaml", "relative.yaml", "nothing.yaml", "up/secret.yaml", "up/nothing.yaml",
          "environ.yaml", "zero.yaml", "missing.yaml", "small.yaml/below"}) {
        EXPECT_EQ(failureOfFile(name), name + ": " + notThere);
        EXPECT_FALSE(folder().contains(name)) << name;
    }
}

TEST_F(ModuleFolder, followsLinksThatStayInside)
{
    link("modules/other.yaml", "relative.yaml");
    link(path("small.yaml"), "absolute.yaml");
    link("modules", "below");
    EXPECT_EQ(folder().file("relative.yaml").name(), "relative.yaml");
    EXPECT_EQ(folder().file("absolute.yaml").bytes(), folder().file("small.yaml").bytes());
    EXPECT_TRUE(folder().contains("below/other.yaml"));
}

// "up/row" is the folder itself, whatever leads there.
TEST_F(ModuleFolder, judgesWhereLinksEnd)
{
    link("..", "up");
    EXPECT_TRUE(folder().contains("up/row/small.yaml"));
}

TEST_F(ModuleFolder, refusesALinkToItself)
{
    link("loop.yaml", "loop.yaml");
    EXPECT_EQ(failureOfFile("loop.yaml"), "loop.yaml: " + notThere);
}

// Opening a pipe for reading would wait for its writer.
TEST_F(ModuleFolder, refusesWhatIsNoFile)
{
    ASSERT_EQ(mkfifo(path("pipe.bin").c_str(), 0600), 0);
    link("pipe.bin", "link.bin");
    const std::string pipe = ": Cannot read the file: found a pipe or a device, expected a file\n";
    EXPECT_EQ(failureOfFile("pipe.bin"), "pipe.bin" + pipe);
    EXPECT_EQ(failureOfFile("link.bin"), "link.bin" + pipe);
    const std::string directory = ": Cannot read the file: found a directory, expected a file\n";
    EXPECT_EQ(failureOfFile("modules"), "modules" + directory);
    EXPECT_EQ(failureOfFile("modules/.."), "modules/.." + directory);
    EXPECT_EQ(failureOfFile("."), "." + directory);
}

TEST_F(ModuleFolder, refusesLargeFiles)
{
    std::filesystem::resize_file(path("small.yaml"), 16777217);
    EXPECT_EQ(
        failureOfFile("small.yaml"),
        "small.yaml: Cannot read the file: it has 16777217 bytes, expected at most 16777216\n");
}

TEST_F(ModuleFolder, saysWhatIsWrongWithAFileInside)
{
    write("wrong.yaml", "module: {type: x, id: 0x01020304}\n");
    EXPECT_THAT(failureOfFile("wrong.yaml"), HasSubstr("wrong.yaml:1:16: "));
    EXPECT_TRUE(folder().contains("wrong.yaml"));
    write("empty.yaml", "");
    EXPECT_THAT(failureOfFile("empty.yaml"), HasSubstr("The file is empty"));
}

TEST_F(ModuleFolder, hintsAtTheChoiceOfTheFolder)
{
    try {
        folder().file("../secret.yaml");
        ADD_FAILURE() << "no failure";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_THAT(failure.reason().hint, HasSubstr("--folder"));
    }
}

TEST_F(ModuleFolder, refusesADirectoryThatIsNone)
{
    const auto make = [](const std::string& path) {
        return [path] { const mxmodule::ModuleFolder made(path); };
    };
    EXPECT_EQ(failureOf(make(outer.path("missing"))),
              outer.path("missing") + ": There is no such directory: No such file or directory\n");
    EXPECT_EQ(failureOf(make(path("small.yaml"))),
              path("small.yaml") + ": There is no such directory\n");
}

TEST_F(ModuleFolder, mayBeALink)
{
    std::filesystem::create_symlink("row", outer.path("link"));
    const mxmodule::ModuleFolder linked(outer.path("link"));
    EXPECT_EQ(linked.file("small.yaml").name(), "small.yaml");
    EXPECT_EQ(linked.nameOf(path("modules")), "modules");
}

// "/tmp/x/row2" begins with "/tmp/x/row".
TEST_F(ModuleFolder, isNotTheOneWhoseNameIsLonger)
{
    std::filesystem::create_directory(outer.path("row2"));
    outer.write("row2/small.yaml", chars(secret));
    link("../row2/small.yaml", "link.yaml");
    EXPECT_EQ(failureOfFile("link.yaml"), "link.yaml: " + notThere);
}

TEST_F(ModuleFolder, tellsTheNamesOfPaths)
{
    EXPECT_EQ(folder().nameOf(path("modules")), "modules");
    EXPECT_EQ(folder().nameOf(path("modules/..")), ".");
    EXPECT_EQ(folder().nameOf(path("modules/other.yaml")), "modules/other.yaml");
    for (const std::string name : {"secret.yaml", "nothing.yaml", "row/nothing.yaml"}) {
        EXPECT_EQ(failureOf([&] { folder().nameOf(outer.path(name)); }),
                  outer.path(name) + ": Found nothing of this name in the folder \"" +
                      outer.path("row") + "\"\n");
    }
}

TEST_F(ModuleFolder, saysWhatToDoWithAPathOutside)
{
    try {
        folder().nameOf(outer.path("secret.yaml"));
        FAIL() << "it was accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(
            failure.reason().hint,
            "files come only from this folder: move it there, or name the folder that has it, "
            "with mxtool serve --folder");
    }
}

TEST_F(ModuleFolder, listsModules)
{
    write("station.yaml", "station: S\nmodules: [small.yaml]\n");
    write("notes.yml", "a: 1\n");
    write("zero.bin", std::string(20, '\0'));
    write("small.txt", smallText);
    write("A.YML", smallText);
    write(".hidden.yaml", smallText);
    std::filesystem::create_directory(path(".git"));
    write(".git/small.yaml", smallText);
    write("not-utf-8-\xFF.yaml", smallText);
    EXPECT_THAT(folder().names(), ElementsAre("A.YML", "modules/other.yaml", "small.yaml"));
}

TEST_F(ModuleFolder, listsNothingOutside)
{
    outer.write("module.yaml", chars(smallText));
    link("..", "up");
    link("../module.yaml", "out.yaml");
    link("modules", "below");
    link("small.yaml", "small-link.yaml");
    ASSERT_EQ(mkfifo(path("pipe.bin").c_str(), 0600), 0);
    EXPECT_THAT(folder().names(),
                ElementsAre("modules/other.yaml", "small-link.yaml", "small.yaml"));
}

TEST_F(ModuleFolder, listsAFileAsItIsNow)
{
    const mxmodule::ModuleFolder listed = folder();
    EXPECT_THAT(listed.names(), ElementsAre("modules/other.yaml", "small.yaml"));
    writeNow("small.yaml", "a: 1\n");
    EXPECT_THAT(listed.names(), ElementsAre("modules/other.yaml"));
}

// The folder is the first of 8 directories.
TEST_F(ModuleFolder, listsEightDirectories)
{
    std::filesystem::create_directories(path("2/3/4/5/6/7/8/9"));
    write("2/3/4/5/6/7/8/in.yaml", smallText);
    write("2/3/4/5/6/7/8/9/out.yaml", smallText);
    EXPECT_THAT(folder().names(),
                ElementsAre("2/3/4/5/6/7/8/in.yaml", "modules/other.yaml", "small.yaml"));
}

} // namespace
