// Searches of `mxtool devices` in parts, and their explanation.
#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using tooltest::runTool;
using tooltest::ToolRun;

namespace fs = std::filesystem;

// 0bc1e800 "Field supply 24 V", 5a010108 "8 DI 24 V DC 3 ms", 5a030304 "4 AI ±10 V / 0-20 mA".
class CataloguePages : public testing::Test
{
protected:
    CataloguePages()
    {
        for (const char* file : {"MX0001.bin", "MX0108.bin", "MX0304.bin"}) {
            fs::copy(fs::path(EXAMPLE_MODULES) / file, directory.path());
        }
        runTool({"populate", directory.path(), "--db", url});
    }

    ToolRun devices(std::vector<std::string> options) const
    {
        options.insert(options.begin(), {"devices", "--db", url});
        return runTool(options);
    }

    testkit::TemporaryDirectory directory;
    std::string url = "sqlite:" + directory.path("devices.sqlite");
};

constexpr const char* csvHead =
    "module_id,family,label,in_bytes,out_bytes,parameter_bytes,file_bytes\r\n";

TEST_F(CataloguePages, followEachOther)
{
    const ToolRun first = devices({"--search", "V 24", "--limit", "1", "--format", "csv"});
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.out, csvHead + std::string("0bc1e800,kv38,Field supply 24 V,0,0,0,307\r\n"));
    EXPECT_EQ(first.err, "note: More modules match than --limit allows\n"
                         "hint: the next ones: the same call with --after 0bc1e800\n");
    const ToolRun second = devices({"--search", "V 24", "--limit", "1", "--after", "0bc1e800"});
    EXPECT_THAT(second.out, HasSubstr("\n5a010108  kv38    8 DI 24 V DC 3 ms"));
    const ToolRun last = devices({"--after", "kv38/5a010108", "--limit", "1", "--format", "csv"});
    EXPECT_THAT(last.out, StartsWith(csvHead + std::string("5a030304,")));
    EXPECT_EQ(last.err, "");
    EXPECT_EQ(devices({"-q", "--limit", "2"}).err, "");
}

TEST_F(CataloguePages, areExportedAndCopied)
{
    const std::string hint = "hint: the next ones: the same call with --after 5a010108\n";
    const std::string target = directory.path("exported");
    const ToolRun exported = devices({"--export", target, "--limit", "2"});
    EXPECT_EQ(exported.out, "2 modules written to " + target + "\n");
    EXPECT_THAT(exported.err, HasSubstr(hint));
    EXPECT_FALSE(fs::exists(target + "/MX5a030304.bin"));
    const std::string copy = "sqlite:" + directory.path("copy.sqlite");
    EXPECT_THAT(devices({"--copy-to", copy, "--limit", "2"}).err, HasSubstr(hint));
    EXPECT_EQ(devices({"--copy-to", copy, "--after", "5a010108"}).out,
              "1 module copied to " + copy + "\n");
}

TEST_F(CataloguePages, afterAnotherModuleAreNotListed)
{
    const ToolRun unknown = devices({"--after", "12345678"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.out, "");
    EXPECT_EQ(unknown.err, "error: Module 12345678 is not in the database, expected eight "
                           "hexadecimal digits of one that is\n"
                           "hint: it holds 0bc1e800, 5a010108, 5a030304\n");
    const ToolRun absent = devices({"--search", "supply", "--after", "5a030304"});
    EXPECT_EQ(absent.exitCode, 2);
    EXPECT_THAT(absent.err, HasSubstr("Module 5a030304 is in the database, but not in this list"));
}

TEST_F(CataloguePages, haveAnExplanation)
{
    const ToolRun text = devices({"--search", "Supply", "--explain-search"});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_THAT(text.out, StartsWith("Compared with the search: "));
    EXPECT_THAT(text.out, HasSubstr("Words, without case and accents: \"supply\"\n"));
    const ToolRun explained = devices({"--limit", "2", "--explain-search", "--format", "json"});
    EXPECT_THAT(explained.out, HasSubstr("\"name\": \"mxtool.search-explanation\""));
    EXPECT_THAT(explained.out, HasSubstr("\"source\": \"order\""));
    EXPECT_THAT(explained.out, HasSubstr("LIMIT 2"));
    EXPECT_EQ(explained.err, "");
}

TEST(CataloguePageWords, areChecked)
{
    const std::vector<std::pair<std::vector<std::string>, std::string>> refused = {
        {{"--limit", "0"}, "--limit: "},
        {{"--limit", "-1"}, "--limit: "},
        {{"--limit", "many"}, "--limit"},
        {{"--after", ""}, "--after: the value is empty"},
        {{"0bc1e800", "--limit", "1"}, "--limit"},
        {{"--remove", "0bc1e800", "--after", "0bc1e801"}, "--after"},
        {{"--explain-search", "--export", "x"}, "--explain-search"},
        {{"--explain-search", "--format", "csv"}, "--explain-search: goes with --format text"}};
    for (const auto& [words, reason] : refused) {
        std::vector<std::string> call = {"devices", "--db", "sqlite:/nonexistent"};
        call.insert(call.end(), words.begin(), words.end());
        const ToolRun run = runTool(call);
        EXPECT_EQ(run.exitCode, 2) << reason;
        EXPECT_THAT(run.err, HasSubstr(reason));
        EXPECT_THAT(run.out, IsEmpty());
    }
}

} // namespace
