// An output of one kind does not replace a file of another by mistake.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string module = "examples/modules/MX0304.bin";

class Overwrite : public testing::Test
{
protected:
    std::string write(const std::string& name, const std::string& content) const
    {
        return directory.write(name, {content.begin(), content.end()});
    }

    void expectRefused(std::vector<std::string> call, const std::string& file,
                       const std::string& kind) const
    {
        SCOPED_TRACE(file);
        const std::string before = readFile(file);
        const ToolRun refused = runTool(call);
        EXPECT_EQ(refused.exitCode, 2);
        EXPECT_THAT(refused.err, HasSubstr(file + ": error: The file is " + kind + ", the output"));
        EXPECT_THAT(refused.err, HasSubstr("add --overwrite"));
        EXPECT_TRUE(readFile(file) == before);

        call.emplace_back("--overwrite");
        EXPECT_NE(runTool(call).exitCode, 2);
        EXPECT_TRUE(readFile(file) != before);
    }

    testkit::TemporaryDirectory directory;
};

TEST_F(Overwrite, isAskedForWhereAnMxFileIsReplacedBySomethingElse)
{
    const std::string file = directory.path("precious");
    const std::string devices = "sqlite:" + directory.path("devices.sqlite");
    runTool({"populate", "examples/modules", "--db", devices});
    const std::string values = directory.write("values.yaml", {});
    for (const std::string& call :
         {"groups " + module, "show " + module, "channels " + module, "config " + module,
          "config " + module + " --values " + values + " --force --format json", "check " + module,
          "explain " + module, "diff " + module + " " + module, "dump " + module,
          "devices --db " + devices}) {
        fs::copy_file(fs::path(EXAMPLE_MODULES) / "MX0108.bin", file,
                      fs::copy_options::overwrite_existing);
        auto words = tooltest::words(call);
        words.insert(words.end(), {"-o", file});
        expectRefused(words, file, "an mx file");
    }
}

TEST_F(Overwrite, isAskedForADamagedMxFile)
{
    const std::string content = readFile(std::string(EXAMPLE_MODULES) + "/MX0108.bin");
    const std::string file = write("cut.bin", content.substr(0, content.size() / 2));
    expectRefused({"config", module, "-o", file}, file, "an mx file");
}

TEST_F(Overwrite, isAskedForATextForm)
{
    for (const char* text : {
             "module: {type: 1, id: 1}\n",
             "\xEF\xBB\xBFmodule: {type: 1, id: 1}\r\n",
             "# a comment\n---\n\"module\":\n  type: 1\n",
             "channels:\n\tparameters: [unclosed\nparameters:\n", // no YAML yet
             "{\"catalogue\": {\"a\": \"},{\"}, \"module\": {\"type\": 1}}",
         }) {
        const std::string file = write("text.yaml", text);
        expectRefused({"config", module, "-o", file}, file, "the text form of an mx file");
    }
}

TEST_F(Overwrite, isAskedForAStation)
{
    for (const char* text :
         {"station: Pump house\nmodules:\n  - MX0116.bin\n", "modules:\n  - MX0116.bin\n"}) {
        const std::string file = write("s.yaml", text);
        expectRefused({"dump", module, "-o", file}, file, "a station");
    }
}

TEST_F(Overwrite, isAskedForADatabase)
{
    const std::string file = directory.path("devices.sqlite");
    runTool({"populate", "examples/modules", "--db", "sqlite:" + file});
    expectRefused({"dump", module, "-o", file}, file, "a database (SQLite)");
}

TEST_F(Overwrite, isAskedForByAnExportBeforeItWritesAnything)
{
    const std::string devices = "sqlite:" + directory.path("devices.sqlite");
    runTool({"populate", "examples/modules", "--db", devices});
    const std::string file = directory.path("out/MX5a030304.bin");
    fs::create_directory(directory.path("out"));
    write("out/MX5a030304.bin", "module: {type: 1, id: 1}\n");
    const std::vector<std::string> call = {"devices", "--db", devices, "--export",
                                           directory.path("out")};
    const ToolRun run = runTool(call);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.err, HasSubstr(file + ": error: The file is the text form of an mx file"));
    EXPECT_EQ(std::distance(fs::directory_iterator(directory.path("out")), {}), 1);
}

TEST_F(Overwrite, isAskedForWhereATextLosesItsCommentsOrRepeats)
{
    const std::string whole = "module: {type: 1, id: 1}\n";
    for (const auto& [text, lost] : {
             std::pair{"# made for pump 2\n" + whole,
                       ":1: error: The file has the comment \"# made "
                       "for pump 2\", which the output would"},
             std::pair{whole + "texts: {first: 1} # see #4\n",
                       ":2: error: The file has the comment "
                       "\"# see #4\""},
             std::pair{whole + "channels:\n  - {repeat: 4, name: AI <n>, in: INT}\n",
                       ":3: error: The file has the key \"repeat\""},
             std::pair{whole + "channels:\n  - each:\n      - {name: a, in: INT}\n    repeat: 2\n",
                       ":3: error: The file has the key \"each\""},
         }) {
        const std::string file = write("text.yaml", text);
        const ToolRun refused = runTool({"dump", module, "-o", file});
        EXPECT_EQ(refused.exitCode, 2) << text;
        EXPECT_THAT(refused.err, HasSubstr(file + lost));
        EXPECT_THAT(refused.err, HasSubstr("\nhint: name another file, or add --overwrite"));
        EXPECT_EQ(readFile(file), text);
        EXPECT_EQ(runTool({"dump", module, "-o", file, "--overwrite"}).exitCode, 0);
        EXPECT_EQ(readFile(file), runTool({"dump", module}).out);
    }
}

TEST_F(Overwrite, isAskedForWhereAFileOfValuesLosesAComment)
{
    const std::string file = directory.path("values.yaml");
    const std::string written = runTool({"config", module, "--format", "values"}).out;
    for (const std::string& text :
         {written + "# as agreed on Monday\n",
          std::string("# as agreed on Monday\nMains suppression: 60\n")}) {
        write("values.yaml", text);
        const ToolRun refused = runTool({"config", module, "-o", file});
        EXPECT_EQ(refused.exitCode, 2);
        EXPECT_THAT(refused.err, HasSubstr("the comment \"# as agreed on Monday\""));
        EXPECT_EQ(readFile(file), text);
    }
    EXPECT_EQ(runTool({"config", module, "-o", file, "--overwrite"}).exitCode, 0);
    EXPECT_EQ(readFile(file), written);
}

// Of the same module or another, all values or only changes: mxtool's own comments are not a loss.
TEST_F(Overwrite, isNotAskedForFilesOfValuesThatAreMadeAgain)
{
    const std::string file = directory.path("values.yaml");
    for (const char* call :
         {"config examples/modules/MX0304.bin --format values",
          "config examples/modules/MX0803.bin --changed --format values --set Wiring=Delta",
          "config examples/modules/MX0502.bin --changed --format values",
          "config examples/modules/MX0803.bin --format values"}) {
        auto words = tooltest::words(call);
        words.insert(words.end(), {"-o", file});
        EXPECT_EQ(runTool(words).exitCode, 0) << call;
    }
    EXPECT_EQ(readFile(file),
              runTool({"config", "examples/modules/MX0803.bin", "--format", "values"}).out);
}

// "#" is a colour in a drawing, and part of a text in quotation marks.
TEST_F(Overwrite, isNotAskedForATextThatDumpWrote)
{
    const std::string file = write("text.yaml", R"(module: {type: 1, id: 1}
catalogue: {BrandLabelName: "Filter # 4", BrandOrderCode: 'K38 # 5', repeat#: 1}
image:
  svg: |
    <svg style="fill: #ccc"
     # no comment
    />
texts: {first: 1}
)");
    EXPECT_EQ(runTool({"dump", module, "-o", file}).exitCode, 0);
}

TEST_F(Overwrite, isNotAskedForWhereTheKindStaysTheSame)
{
    const std::string text = directory.path("text.yaml");
    const std::string binary = directory.path("module.bin");
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(runTool({"dump", module, "-o", text}).exitCode, 0);
        EXPECT_EQ(runTool({"build", text, "-o", binary}).exitCode, 0);
    }
    EXPECT_EQ(runTool({"dump", "examples/modules/MX0108.bin", "-o", text}).exitCode, 0);
    EXPECT_EQ(readFile(text), runTool({"dump", "examples/modules/MX0108.bin"}).out);
}

TEST_F(Overwrite, isNotAskedForWhatIsMadeAgain)
{
    const std::string file = directory.path("out");
    for (const char* call : {"config", "show --format json", "channels --format csv", "explain",
                             "check --format sarif", "config --format json", "groups"}) {
        auto words = tooltest::words(call);
        words.insert(words.end(), {module, "-o", file});
        EXPECT_EQ(runTool(words).exitCode, 0) << call;
    }
}

} // namespace
