#include "api/ApiFixture.h"

#include <gmock/gmock.h>
#include <mxmodule/ReadFile.h>
#include <text/Sha256.h>

#include <sys/stat.h>

namespace {

using testing::ElementsAre;
using text::Json;

const std::string savedText = "station: Row # kept\nmodules:\n  - MX0116.bin\n";

class FileCalls : public ApiTest
{
protected:
    std::string onDisk(const std::string& name = "row.yaml") const
    {
        const auto bytes = mxmodule::readFile(path(name));
        return {bytes.begin(), bytes.end()};
    }
};

TEST_F(FileCalls, GiveTheFileAndItsVersion)
{
    openStation(savedText);
    const Json file = call("GET", "/file");
    EXPECT_EQ(file.at("name"), "row.yaml");
    EXPECT_EQ(file.at("text"), savedText);
    EXPECT_EQ(file.at("version"), text::sha256(savedText));
    EXPECT_EQ(call("GET", "/file/version"), Json({{"version", text::sha256(savedText)}}));
}

TEST_F(FileCalls, SaveByteForByte)
{
    openStation(savedText);
    const std::string changed = savedText + "# \xc3\xa4\r\n";
    const Json saved = call("PUT", "/file", {{"text", changed}, {"from", text::sha256(savedText)}});
    EXPECT_EQ(saved.at("version"), text::sha256(changed));
    EXPECT_EQ(onDisk(), changed);
}

TEST_F(FileCalls, NeverOverwriteAChangedFile)
{
    openStation(savedText);
    const std::string theirs = savedText + "# of another program\n";
    write("row.yaml", theirs);
    const Json refused =
        call("PUT", "/file", {{"text", "station: Mine"}, {"from", text::sha256(savedText)}}, 409);
    EXPECT_EQ(refused.at("text"), theirs);
    EXPECT_EQ(refused.at("version"), text::sha256(theirs));
    EXPECT_EQ(refused.at("findings")[0].at("text"),
              "The file was changed by another program, and is not overwritten");
    EXPECT_EQ(refused.at("findings")[0].at("place"), "row.yaml");
    EXPECT_EQ(onDisk(), theirs);

    call("PUT", "/file", {{"text", savedText}, {"from", refused.at("version")}});
    EXPECT_EQ(onDisk(), savedText);
}

TEST_F(FileCalls, KnowThatTheFileIsGone)
{
    openStation(savedText);
    std::filesystem::remove(path("row.yaml"));
    EXPECT_EQ(call("GET", "/file/version").at("version"), "");
    call("PUT", "/file", {{"text", savedText}, {"from", text::sha256(savedText)}}, 409);
    EXPECT_FALSE(std::filesystem::exists(path("row.yaml")));
    call("PUT", "/file", {{"text", savedText}, {"from", ""}});
    EXPECT_EQ(onDisk(), savedText);
}

// What another program put in the place of the file.
TEST_F(FileCalls, ReadAndReplaceOnlyAPlainFile)
{
    openStation(savedText);
    const std::string other = path("other.txt");
    write("other.txt", "of others");
    const auto refuses = [this](const std::string& reason) {
        const std::string text = "Cannot read the file: " + reason;
        EXPECT_THAT(failure("GET", "/file", nullptr, 422), ElementsAre(text));
        EXPECT_THAT(failure("GET", "/file/version", nullptr, 422), ElementsAre(text));
        EXPECT_THAT(failure("PUT", "/file", {{"text", "mine"}, {"from", ""}}, 422),
                    ElementsAre(text));
        std::filesystem::remove(path("row.yaml"));
    };
    std::filesystem::remove(path("row.yaml"));
    ASSERT_EQ(mkfifo(path("row.yaml").c_str(), S_IRUSR | S_IWUSR), 0);
    refuses("found a pipe or a device, expected the file that was opened");
    std::filesystem::create_symlink(other, path("row.yaml"));
    refuses("found a symbolic link, expected the file that was opened");
    std::filesystem::create_symlink(path("nothing"), path("row.yaml"));
    refuses("found a symbolic link, expected the file that was opened");
    EXPECT_FALSE(std::filesystem::exists(path("nothing")));
    std::filesystem::create_directory(path("row.yaml"));
    refuses("found a directory, expected the file that was opened");
    write("row.yaml", "");
    std::filesystem::resize_file(path("row.yaml"), (std::size_t{16} << 20) + 1);
    refuses("it has more than 16777216 bytes, the most of a station");
    EXPECT_EQ(onDisk("other.txt"), "of others");
}

TEST_F(FileCalls, FollowTheLinkThatWasOpened)
{
    write("row-1.yaml", savedText);
    std::filesystem::create_symlink("row-1.yaml", path("row.yaml"));
    open("row.yaml");
    call("PUT", "/file", {{"text", "station: Mine"}, {"from", text::sha256(savedText)}});
    EXPECT_EQ(onDisk("row-1.yaml"), "station: Mine");
    EXPECT_TRUE(std::filesystem::is_symlink(path("row.yaml")));
}

TEST_F(FileCalls, RefuseATextThatIsNoUtf8)
{
    openStation("station: \xff\nmodules: []\n");
    EXPECT_THAT(failure("GET", "/file", nullptr, 422),
                ElementsAre("Found bytes that are no UTF-8, expected a text"));
}

TEST_F(FileCalls, NeedAStation)
{
    open("MX0304.bin");
    EXPECT_THAT(failure("GET", "/file", nullptr, 404), ElementsAre("No station file is open"));
    EXPECT_THAT(failure("PUT", "/file", {{"text", ""}, {"from", ""}}, 404),
                ElementsAre("No station file is open"));
}

} // namespace
