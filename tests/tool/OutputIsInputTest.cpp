// An output that is an input of the same call, or another output of it, is rejected for every verb,
// option and spelling.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>
#include <set>

namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;
using tooltest::ToolSetup;

const std::string moduleText =
    "module: {type: 1, id: 1}\n"
    "catalogue: {BrandId: \"41\", BrandLabelName: A, BrandVersion: \"1\","
    " BrandSerialNumber: \"0\", ProductVersion: \"1\","
    " BrandOrderCode: A, BrandHwRevision: \"1\"}\n"
    "component: {Component: A, Creator: A}\n";

// The files that the calls name, in a directory of their own.
class Workplace
{
public:
    Workplace()
    {
        fs::create_directory(directory.path("sub"));
        fs::copy(fs::path(EXAMPLE_MODULES) / "MX0304.bin", path("module.bin"));
        fs::copy(fs::path(EXAMPLE_MODULES) / "MX0108.bin", path("other.bin"));
        write("block.bin", std::string(33, '\0')); // the size that MX0304 has
        write("values.yaml", "Mains suppression: 60\n");
        write("text.yaml", moduleText + "image: {file: drawing.svg}\n");
        write("drawing.svg", "<svg/>");
        fs::copy(catalogue(), path("devices.sqlite"));
    }

    std::string path(const std::string& name = "") const { return directory.path(name); }

    // `call` with each @NAME replaced by the path of the file, and @OUT by `output`.
    std::vector<std::string> words(const std::string& call, const std::string& output,
                                   const std::string& input = "") const
    {
        std::vector<std::string> result = tooltest::words(call);
        for (std::string& word : result) {
            const auto at = word.find('@');
            const std::string name = at == std::string::npos ? "" : word.substr(at + 1);
            if (name == "OUT") {
                word.replace(at, word.size(), output);
            } else if (name == "IN") {
                word.replace(at, word.size(), input);
            } else if (!name.empty()) {
                word.replace(at, word.size(), path(name));
            }
        }
        return result;
    }

private:
    // A database with the examples, made once: populating it takes longer than the tests.
    static std::string catalogue()
    {
        static const testkit::TemporaryDirectory made;
        const std::string path = made.path("devices.sqlite");
        if (!fs::exists(path)) {
            runTool({"populate", "examples/modules", "--db", "sqlite:" + path});
        }
        return path;
    }

    void write(const std::string& name, const std::string& content) const
    {
        directory.write(name, {content.begin(), content.end()});
    }

    testkit::TemporaryDirectory directory;
};

struct Call
{
    const char* name;
    const char* input; // the file that is the output too
    const char* words; // @IN where the file is named; absent if a file in the call names it
    bool takesStandardInput = true;
};

constexpr Call calls[] = {
    {"groups", "module.bin", "groups @IN -o @OUT"},
    {"show", "module.bin", "show @IN -o @OUT"},
    {"showParameterBlock", "block.bin", "show @module.bin --param-block @IN -o @OUT"},
    {"channels", "module.bin", "channels @IN -o @OUT"},
    {"channelsPicture", "module.bin", "channels @IN --picture @OUT"},
    {"channelsPictureAndList", "module.bin", "channels @IN --picture @new -o @OUT"},
    {"channelsMap", "module.bin", "channels @IN --map --picture @OUT -o @new"},
    {"channelsParameterBlock", "block.bin", "channels @module.bin --param-block @IN -o @OUT"},
    {"config", "module.bin", "config @IN -o @OUT"},
    {"configValues", "values.yaml", "config @module.bin --values @IN -o @OUT"},
    {"configParameterBlock", "block.bin", "config @module.bin --param-block @IN -o @OUT"},
    {"configDecode", "block.bin", "config @module.bin --decode @IN --format json -o @OUT"},
    {"configCompare", "block.bin", "config @module.bin --compare @IN --format json -o @OUT"},
    {"configOfText", "text.yaml", "config @IN --format json -o @OUT", false},
    {"configOfTextWithDrawing", "drawing.svg", "config @text.yaml --format json -o @OUT", false},
    {"checkOfTextWithDrawing", "drawing.svg", "check @text.yaml -o @OUT", false},
    {"dump", "module.bin", "dump @IN -o @OUT"},
    {"build", "text.yaml", "build @IN -o @OUT", false}, // names a file beside it
    {"buildDrawing", "drawing.svg", "build @text.yaml -o @OUT", false},
    {"check", "module.bin", "check @IN -o @OUT"},
    {"checkTwo", "module.bin", "check @other.bin @IN --format sarif -o @OUT"},
    {"checkDirectory", "sub/MX1.bin", "check @sub -o @OUT", false},
    {"explain", "module.bin", "explain @IN --format html -o @OUT"},
    {"datasheet", "module.bin", "datasheet @IN -o @OUT"},
    {"diffBefore", "module.bin", "diff @IN @other.bin -o @OUT"},
    {"diffAfter", "module.bin", "diff @other.bin @IN -o @OUT"},
    {"devices", "devices.sqlite", "devices --db sqlite:@IN -o @OUT", false},
    {"devicesCopy", "devices.sqlite", "devices --db sqlite:@IN --copy-to sqlite:@OUT", false},
};

class OutputIsInput : public testing::TestWithParam<Call>
{
protected:
    OutputIsInput()
    {
        const std::string file = workplace.path(GetParam().input);
        if (!fs::exists(file)) {
            fs::copy(workplace.path("module.bin"), file);
        }
        before = readFile(file);
    }

    std::string input() const { return workplace.path(GetParam().input); }

    void expectRefused(const std::string& output) const
    {
        SCOPED_TRACE(output);
        const ToolRun run = runTool(workplace.words(GetParam().words, output, input()));
        expectRefused(run, output);
    }

    void expectRefused(const ToolRun& run, const std::string& output) const
    {
        EXPECT_EQ(run.exitCode, 2) << run.err;
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, HasSubstr(output + ": error: The output is "));
        EXPECT_THAT(run.err, HasSubstr("hint: name another output\n"));
        EXPECT_TRUE(readFile(input()) == before);
        EXPECT_FALSE(fs::exists(workplace.path("new")));
    }

    Workplace workplace;
    std::string before;
};

TEST_P(OutputIsInput, isRefusedByTheSamePath)
{
    expectRefused(input());
}

TEST_P(OutputIsInput, isRefusedByAnotherSpelling)
{
    expectRefused(workplace.path("./") + GetParam().input);
    expectRefused(workplace.path("sub/../") + GetParam().input);
}

TEST_P(OutputIsInput, isRefusedByLinks)
{
    fs::create_symlink(input(), workplace.path("symbolic"));
    fs::create_symlink("symbolic", workplace.path("further"));
    fs::create_hard_link(input(), workplace.path("hard"));
    for (const char* link : {"symbolic", "further", "hard"}) {
        expectRefused(workplace.path(link));
    }
}

TEST_P(OutputIsInput, isRefusedWithOverwriteToo)
{
    auto words = workplace.words(GetParam().words, input(), input());
    words.emplace_back("--overwrite");
    expectRefused(runTool(words), input());
}

TEST_P(OutputIsInput, isRefusedAsStandardInput)
{
    if (!GetParam().takesStandardInput) {
        return; // takes no "-"
    }
    ToolSetup setup;
    setup.standardInput = input();
    expectRefused(runTool(workplace.words(GetParam().words, input(), "-"), setup), input());
}

INSTANTIATE_TEST_SUITE_P(Calls, OutputIsInput, testing::ValuesIn(calls),
                         [](const auto& row) { return row.param.name; });

// Fails for a verb that is not in the list above.
TEST(OutputIsInput, isTriedForEveryVerbThatWritesAFile)
{
    const std::string help = runTool({"--help"}).out;
    std::set<std::string> tried = {"new"}; // reads no file
    for (const Call& call : calls) {
        tried.insert(tooltest::words(call.words)[0]);
    }
    const std::regex verb("\n  ([a-z]+) ");
    const std::string verbs = help.substr(help.find("Subcommands:"));
    unsigned writing = 0;
    for (std::sregex_iterator found(verbs.begin(), verbs.end(), verb), end; found != end; ++found) {
        if (runTool({(*found)[1], "--help"}).out.find("--output") != std::string::npos) {
            EXPECT_EQ(tried.count((*found)[1]), 1) << (*found)[1];
            ++writing;
        }
    }
    EXPECT_GE(writing, 9);
}

class StandardOutput : public testing::TestWithParam<const char*>
{};

TEST_P(StandardOutput, thatIsAnInputIsRefused)
{
    const Workplace workplace;
    const std::string module = readFile(workplace.path("module.bin"));
    ToolSetup setup;
    setup.standardOutput = workplace.path("module.bin");
    const ToolRun run = runTool(workplace.words(GetParam(), workplace.path("new")), setup);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("<standard output>: error: The output is also the input " +
                                   workplace.path("module.bin")));
    EXPECT_TRUE(readFile(workplace.path("module.bin")) == module);
    EXPECT_FALSE(fs::exists(workplace.path("new")));
}

INSTANTIATE_TEST_SUITE_P(Calls, StandardOutput,
                         testing::Values("show @module.bin", "dump @module.bin -o @OUT",
                                         "config @module.bin --format binary", "check @module.bin",
                                         "diff @other.bin @module.bin"));

class TwoOutputs : public testing::TestWithParam<const char*>
{};

TEST_P(TwoOutputs, thatAreOneFileAreRefused)
{
    const Workplace workplace;
    const std::string same = workplace.path("same");
    for (const bool isThere : {false, true}) {
        if (isThere) {
            fs::copy(workplace.path("block.bin"), same);
        }
        const ToolRun run = runTool(workplace.words(GetParam(), workplace.path("./same")));
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_THAT(run.err, HasSubstr("Two outputs of this call are the same file"));
        EXPECT_EQ(fs::exists(same), isThere);
    }
    EXPECT_TRUE(readFile(same) == readFile(workplace.path("block.bin")));
}

INSTANTIATE_TEST_SUITE_P(Calls, TwoOutputs,
                         testing::Values("channels @module.bin --picture @OUT -o @same",
                                         "channels @module.bin --map --picture @same -o @OUT"));

TEST(TwoOutputs, anOutputThatIsStandardOutputTooIsRefused)
{
    const Workplace workplace;
    ToolSetup setup;
    setup.standardOutput = workplace.path("block.bin");
    const ToolRun run =
        runTool(workplace.words("dump @module.bin -o @OUT", workplace.path("block.bin")), setup);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("this one and <standard output>"));
}

TEST(Devices, doNotWriteToTheFilesBesideTheDatabase)
{
    const Workplace workplace;
    for (const char* beside : {"devices.sqlite-wal", "devices.sqlite-shm"}) {
        const ToolRun run = runTool(
            workplace.words("devices --db sqlite:@devices.sqlite -o @OUT", workplace.path(beside)));
        EXPECT_EQ(run.exitCode, 2) << beside;
    }
}

TEST(Export, doesNotWriteOverItsDatabase)
{
    const Workplace workplace;
    const std::string database = workplace.path("sub/MX5a030304.bin");
    fs::rename(workplace.path("devices.sqlite"), database);
    const std::string before = readFile(database);
    const ToolRun run =
        runTool({"devices", "--db", "sqlite:" + database, "--export", workplace.path("sub")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr(database + ": error: The output is also an input"));
    EXPECT_TRUE(readFile(database) == before);
    EXPECT_EQ(std::distance(fs::directory_iterator(workplace.path("sub")), {}), 1);
}

TEST(Build, namesWhatOneTextReadsAndAnotherIsBuiltTo)
{
    const Workplace workplace;
    fs::copy(workplace.path("module.bin"), workplace.path("sub/a.bin"));
    std::ofstream(workplace.path("a.yaml")) << moduleText;
    std::ofstream(workplace.path("b.yaml"))
        << moduleText << "raw:\n  - {id: 0x7abc, file: sub/a.bin}\n";
    const ToolRun run = runTool(
        {"build", workplace.path("a.yaml"), workplace.path("b.yaml"), "-o", workplace.path("sub")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr("sub/a.bin: error: The output is also an input of this call"));
    EXPECT_TRUE(readFile(workplace.path("sub/a.bin")) == readFile(workplace.path("module.bin")));
    EXPECT_FALSE(fs::exists(workplace.path("sub/b.bin")));
}

TEST(Populate, doesNotMakeItsDatabaseOfAFileThatItReads)
{
    const Workplace workplace;
    std::ofstream(workplace.path("MX1.bin")); // an empty file may become a database
    const ToolRun run =
        runTool({"populate", workplace.path(), "--db", "sqlite:" + workplace.path("MX1.bin")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(readFile(workplace.path("MX1.bin")), "");
}

} // namespace
