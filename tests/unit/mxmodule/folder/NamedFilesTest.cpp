// Files that a text form names: only those of the folder.
#include "FolderFixture.h"

#include <mxmodule/ReadFile.h>

#include <sys/stat.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string withImage(const std::string& image)
{
    return smallText + "image: " + image + "\n";
}

class Reads : public mxmodule::Observer
{
public:
    void reads(const std::string& path) override { files.push_back(path); }

    std::vector<std::string> files;
};

class NamedFiles : public FolderTest
{
protected:
    NamedFiles() { write("modules/a.png", "PICTURE"); }

    std::string failureOfImage(const std::string& image) const
    {
        write("modules/image.yaml", withImage(image));
        return failureOfFile("modules/image.yaml");
    }
};

bool holds(const mxmodule::ModuleFile& file, const std::string& text)
{
    return std::string(file.bytes().begin(), file.bytes().end()).find(text) != std::string::npos;
}

TEST_F(NamedFiles, comeFromTheFolder)
{
    write("modules/beside.yaml", withImage("a.png"));
    write("above.yaml", withImage("modules/../modules/a.png"));
    write("modules/around.yaml", withImage("../modules/a.png"));
    for (const std::string name : {"modules/beside.yaml", "above.yaml", "modules/around.yaml"}) {
        EXPECT_TRUE(holds(folder().file(name), "PICTURE")) << name;
    }
}

TEST_F(NamedFiles, areTold)
{
    write("modules/beside.yaml", withImage("a.png"));
    Reads read;
    folder().file("modules/beside.yaml", &read);
    EXPECT_THAT(read.files, ElementsAre(path("modules/beside.yaml"), path("modules/a.png")));
}

TEST_F(NamedFiles, areRefusedOutside)
{
    link("../../secret.yaml", "modules/link.png");
    link("../../nothing.yaml", "modules/nothing.png");
    const std::string found = "modules/image.yaml:2:8: cannot read ";
    const std::string isNoName = ": it is not the name of a file in the folder\n";
    const std::string isNotThere = ": there is no such file in the folder\n";
    const auto firstLine = [](const std::string& text) {
        return text.substr(0, text.find('\n') + 1);
    };
    for (const std::string name : {"../../secret.yaml", "../../nothing.yaml"}) {
        EXPECT_EQ(firstLine(failureOfImage(name)), found + "modules/" + name + isNoName);
    }
    for (const std::string& name :
         {outer.path("secret.yaml"), std::string("/proc/self/environ"), std::string("/none")}) {
        EXPECT_EQ(firstLine(failureOfImage(name)), found + name + isNoName);
    }
    for (const std::string name : {"link.png", "nothing.png", "missing.png"}) {
        EXPECT_EQ(firstLine(failureOfImage(name)), found + "modules/" + name + isNotThere);
    }
}

TEST_F(NamedFiles, areNoPipes)
{
    ASSERT_EQ(mkfifo(path("modules/pipe").c_str(), 0600), 0);
    EXPECT_THAT(failureOfImage("pipe"), HasSubstr("found a pipe or a device, expected a file"));
    EXPECT_THAT(failureOfImage("\"a.png\\0\""), HasSubstr("it is not the name of a file"));
}

// Four files of 16 MiB are 64 MiB, the fifth has more.
TEST_F(NamedFiles, areNotReadWithoutEnd)
{
    std::filesystem::resize_file(path("modules/a.png"), 16777216);
    std::string text = smallText + "raw:\n";
    for (int i = 0; i < 6; ++i) {
        text += "  - {id: 0x7000, file: a.png}\n";
    }
    write("modules/raw.yaml", text);
    EXPECT_THAT(failureOfFile("modules/raw.yaml"),
                HasSubstr("modules/raw.yaml:8:24: cannot read modules/a.png: the files before it "
                          "have more than 64 MiB"));
}

TEST_F(NamedFiles, ofBytesComeFromTheFolderToo)
{
    const auto make = [this](const std::string& name, const std::string& image) {
        return folder().fileOf(name, chars(withImage(image)));
    };
    const std::string record = "<module 01020304 of catalogue>";
    EXPECT_TRUE(holds(make(record, "modules/a.png"), "PICTURE"));
    EXPECT_TRUE(holds(make("modules/x.yaml", "a.png"), "PICTURE"));
    EXPECT_EQ(make(record, "modules/a.png").name(), record);
    for (const std::string& image : {outer.path("secret.yaml"), std::string("../secret.yaml")}) {
        EXPECT_THAT(failureOf([&] { make(record, image); }),
                    HasSubstr("it is not the name of a file in the folder"));
    }
}

} // namespace
