#include "ToolProcess.h"

#include <TestDatabase.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;
using tooltest::ToolSetup;

namespace fs = std::filesystem;

class CatalogueVerbs : public testkit::OnEachEngine
{
protected:
    // A directory with the named example files.
    std::string modules(const std::string& name, const std::vector<std::string>& files)
    {
        const fs::path target = directory.path(name);
        fs::create_directory(target);
        for (const std::string& file : files) {
            fs::copy(fs::path(EXAMPLE_MODULES) / file, target);
        }
        return target.string();
    }

    ToolRun populate(const std::string& from, std::vector<std::string> options = {})
    {
        std::vector<std::string> call = {"populate", from, "--db", url};
        call.insert(call.end(), options.begin(), options.end());
        return runTool(call);
    }

    ToolRun devices(std::vector<std::string> options)
    {
        options.insert(options.begin(), {"devices", "--db", url});
        return runTool(options);
    }

    // The identifiers that a call lists.
    std::vector<std::string> found(std::vector<std::string> options)
    {
        options.insert(options.end(), {"--format", "csv"});
        const std::string lines = devices(options).out;
        std::vector<std::string> ids;
        for (auto end = lines.find("\r\n"); end != std::string::npos && end + 2 < lines.size();
             end = lines.find("\r\n", end + 2)) {
            ids.push_back(lines.substr(end + 2, 8));
        }
        return ids;
    }

    testkit::TemporaryDirectory directory;
};

RUN_ON_EACH_ENGINE(CatalogueVerbs);

TEST_P(CatalogueVerbs, populateFillsRecordsAndCatalogue)
{
    const ToolRun run = populate("examples/modules");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.out, EndsWith(": 38 modules inserted, 1 failed\n"));
    EXPECT_EQ(run.err, "error: File MX9999.bin: Parser::parse(): Truncated mx buffer\n");
    EXPECT_EQ(found({}).size(), 38U);
    // Words in a label with a byte of Windows-1252, in a channel and in a parameter.
    EXPECT_THAT(found({"--search", "AI \xC2\xB1"
                                   "10"}),
                ElementsAre("5a030304", "5a030316"));
    EXPECT_THAT(found({"--search", "parity"}), ElementsAre("5a060612", "5a070701", "5a070702"));
}

TEST_P(CatalogueVerbs, conditionsNarrowTheList)
{
    populate("examples/modules");
    EXPECT_THAT(found({"--where", "in_bytes>22"}),
                ElementsAre("5a030316", "5a060620", "5a070701", "5a080803", "5a080804", "5a090960",
                            "5a090990"));
    EXPECT_THAT(found({"--where", "out_bytes >= 10", "--where", "in_bytes!=24"}),
                ElementsAre("5a040408", "5a060602", "5a070702", "5a070704", "5a090990"));
    EXPECT_THAT(found({"--search", "24 v dc 0.5", "--where", "direction=out"}),
                ElementsAre("5a020208", "5a020216"));
    EXPECT_THAT(found({"--where", "label=nothing"}), IsEmpty());
    EXPECT_EQ(devices({"--where", "label=nothing"}).exitCode, 0);
}

// A module with two files is stored once.
TEST_P(CatalogueVerbs, aSecondFileOfAModuleReplacesTheFirst)
{
    const std::string from = modules("twice", {"MX0001.bin", "MX0108.bin"});
    fs::copy(from + "/MX0108.bin", from + "/MXcopy.bin");
    const ToolRun run = populate(from);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, EndsWith(": 2 modules inserted, 1 replaced, 0 failed\n"));
    EXPECT_EQ(run.err, from +
                           ": warning: Module 5a010108 has several files, of which one is stored: "
                           "MX0108.bin, MXcopy.bin\n"
                           "hint: leave one of them in the directory\n");
    EXPECT_THAT(found({}), ElementsAre("0bc1e800", "5a010108"));
    EXPECT_THAT(populate(from).out, EndsWith(": 0 modules inserted, 3 replaced, 0 failed\n"));
}

// A label that begins with a blank.
TEST_P(CatalogueVerbs, blanksOfAConditionBelongToTheText)
{
    const std::string from = modules("blanks", {"MX0108.bin"});
    std::string mx = readFile(std::string(EXAMPLE_MODULES) + "/MX0001.bin");
    const std::string label = "Field supply 24 V";
    mx.replace(mx.find(label), label.size(), " Field supply 24V");
    std::ofstream(from + "/MX0001.bin", std::ios::binary) << mx;
    populate(from);
    EXPECT_THAT(found({"--where", "label= Field supply 24V"}), ElementsAre("0bc1e800"));
    EXPECT_THAT(found({"--where", "label =  Field supply 24V"}), ElementsAre("0bc1e800"));
    EXPECT_THAT(found({"--where", "label~ Field"}), ElementsAre("0bc1e800"));
    EXPECT_THAT(found({"--where", "label=Field supply 24V"}), IsEmpty());
    EXPECT_THAT(found({"--where", "label= Field supply 24V "}), IsEmpty());
    EXPECT_THAT(found({"--where", " in_bytes= 0 "}), ElementsAre("0bc1e800"));
}

TEST_P(CatalogueVerbs, tableAndTextAreTheSame)
{
    populate(modules("one", {"MX0001.bin"}));
    const std::string table = devices({"--format", "table"}).out;
    EXPECT_EQ(table, devices({}).out);
    EXPECT_EQ(table, "Module    Family  Label              In  Out  Parameters  File\n"
                     "0bc1e800  kv38    Field supply 24 V  0   0    0           307\n");
    EXPECT_THAT(devices({"--format", "json"}).out, HasSubstr("\"module_id\": \"0bc1e800\""));
}

TEST_P(CatalogueVerbs, replaceListsAndRemovesWhatTheDirectoryNoLongerHolds)
{
    populate(modules("all", {"MX0001.bin", "MX0108.bin", "MX0304.bin"}));
    const ToolRun run = populate(modules("some", {"MX0108.bin"}), {"--replace"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, StartsWith("removing 0bc1e800 Field supply 24 V\n"
                                    "removing 5a030304 4 AI \xC2\xB1"
                                    "10 V / 0-20 mA\n"));
    EXPECT_THAT(run.out, EndsWith(": 0 modules inserted, 1 replaced, 0 failed, 2 removed\n"));
    EXPECT_THAT(found({}), ElementsAre("5a010108"));
}

TEST_P(CatalogueVerbs, withoutReplaceNothingIsRemoved)
{
    populate(modules("one", {"MX0001.bin"}));
    populate(modules("two", {"MX0108.bin"}));
    EXPECT_THAT(found({}), ElementsAre("0bc1e800", "5a010108"));
}

TEST_P(CatalogueVerbs, replaceKeepsTheModuleOfAFileThatCannotBeTranslated)
{
    populate(modules("old", {"MX0001.bin", "MX0108.bin"}));
    const std::string changed = modules("new", {"MX0001.bin"});
    const std::string whole = readFile(std::string(EXAMPLE_MODULES) + "/MX0108.bin");
    std::ofstream(changed + "/MX0108.bin", std::ios::binary) << whole.substr(0, 600);
    const ToolRun run = populate(changed, {"--replace"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.out, EndsWith(": 0 modules inserted, 1 replaced, 1 failed, 0 removed\n"));
    EXPECT_THAT(found({}), ElementsAre("0bc1e800", "5a010108"));
}

TEST_P(CatalogueVerbs, replaceRemovesNothingWhereAFileStatesNoModule)
{
    populate(modules("old", {"MX0001.bin", "MX0108.bin"}));
    const std::string changed = modules("new", {"MX0001.bin"});
    std::ofstream(changed + "/MXjunk.bin", std::ios::binary) << "junk";
    const ToolRun run = populate(changed, {"--replace"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.out, EndsWith(": 0 modules inserted, 1 replaced, 1 failed, 0 removed\n"));
    EXPECT_THAT(run.err, HasSubstr("nothing is removed"));
    EXPECT_THAT(found({}), ElementsAre("0bc1e800", "5a010108"));
}

TEST_P(CatalogueVerbs, aRejectedRecordAffectsItsFileOnly)
{
    populate(modules("first", {"MX0001.bin"}));
    // The module of MX0108.bin, by the label that its file states.
    place.execute(GetParam() == testkit::Engine::Sqlite
                      ? "CREATE TRIGGER refuse BEFORE INSERT ON modules"
                        " WHEN NEW.module = '5a010108' BEGIN SELECT RAISE(ABORT, 'refused'); END"
                      : "ALTER TABLE modules ADD CONSTRAINT refuse CHECK (module <> '5a010108')");
    const ToolRun run = populate(modules("all", {"MX0001.bin", "MX0108.bin", "MX0304.bin"}));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.out, EndsWith(": 1 module inserted, 1 replaced, 1 failed\n"));
    EXPECT_THAT(run.err, StartsWith("error: File MX0108.bin: Cannot write to device database " +
                                    place.name() + ": "));
    EXPECT_THAT(run.err, HasSubstr("refuse"));
    EXPECT_THAT(found({}), ElementsAre("0bc1e800", "5a030304"));
}

TEST_P(CatalogueVerbs, exportWritesTheFilesBackAsTheyWere)
{
    populate("examples/modules");
    const std::string target = directory.path("made/here");
    const ToolRun run = devices({"--export", target});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "38 modules written to " + target + "\n");
    std::vector<std::string> originals;
    for (const auto& file : fs::directory_iterator(EXAMPLE_MODULES)) {
        if (file.path().extension() == ".bin" && file.path().filename() != "MX9999.bin") {
            originals.push_back(readFile(file.path().string()));
        }
    }
    std::vector<std::string> exported;
    for (const auto& file : fs::directory_iterator(target)) {
        exported.push_back(readFile(file.path().string()));
    }
    std::sort(originals.begin(), originals.end());
    std::sort(exported.begin(), exported.end());
    EXPECT_TRUE(exported == originals);
    EXPECT_EQ(readFile(target + "/MX5a010108.bin"),
              readFile(std::string(EXAMPLE_MODULES) + "/MX0108.bin"));
    EXPECT_THAT(populate(target).out, EndsWith(": 0 modules inserted, 38 replaced, 0 failed\n"));
}

TEST_P(CatalogueVerbs, aFileOf65535BytesWithEveryByteValueComesBack)
{
    constexpr std::size_t most = 65535;
    std::string mx = readFile(std::string(EXAMPLE_MODULES) + "/MX0001.bin");
    // A group that is not read, as long as the file may still grow.
    const std::size_t length = most - mx.size();
    mx +=
        std::string("\x77\x77") + static_cast<char>(length >> 8) + static_cast<char>(length & 0xFF);
    while (mx.size() < most) {
        mx += static_cast<char>(mx.size() % 256);
    }
    const std::string from = modules("long", {});
    std::ofstream(from + "/MXlong.bin", std::ios::binary) << mx;
    ASSERT_THAT(populate(from).out, EndsWith(": 1 module inserted, 0 failed\n"));
    ASSERT_EQ(devices({"--export", directory.path("out")}).exitCode, 0);
    EXPECT_EQ(readFile(directory.path("out/MX0bc1e800.bin")), mx);
    EXPECT_THAT(devices({"--format", "csv"}).out, HasSubstr(",65535\r\n"));
}

TEST_P(CatalogueVerbs, exportTakesWhatIsSearchedFor)
{
    populate("examples/modules");
    const std::string target = directory.path("some");
    EXPECT_EQ(devices({"--export", target, "--where", "in_bytes>22"}).exitCode, 0);
    EXPECT_EQ(std::distance(fs::directory_iterator(target), fs::directory_iterator()), 7);
}

TEST_P(CatalogueVerbs, exportIntoAFileEndsWithCode4)
{
    populate(modules("one", {"MX0001.bin"}));
    const std::string file = directory.write("file", {'x'});
    const ToolRun run = devices({"--export", file});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.err, StartsWith(file + ": error: Cannot make the directory"));
    EXPECT_EQ(readFile(file), "x");
}

TEST_P(CatalogueVerbs, copyGoesFromEngineToEngineAndBack)
{
    populate("examples/modules");
    for (const auto engine : {testkit::Engine::Sqlite, testkit::Engine::Postgresql}) {
        if (engine == testkit::Engine::Postgresql && GetParam() == testkit::Engine::Sqlite) {
            continue; // copied back below, where there is a server
        }
        const testkit::TestDatabase target(engine);
        const ToolRun run = devices({"--copy-to", target.url()});
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.out, "38 modules copied to " + target.name() + "\n");
        for (const char* format : {"csv", "json"}) {
            EXPECT_EQ(runTool({"devices", "--db", target.url(), "--format", format}).out,
                      devices({"--format", format}).out);
        }
        EXPECT_THAT(runTool({"devices", "--db", target.url(), "--search", "parity"}).out,
                    HasSubstr("5a070701"));
        const ToolRun back = runTool({"devices", "--db", target.url(), "--copy-to", url});
        EXPECT_EQ(back.out, "38 modules copied to " + place.name() + "\n");
    }
}

TEST_P(CatalogueVerbs, copyThatFailsLeavesTheTargetAsItWas)
{
    populate(modules("two", {"MX0001.bin", "MX0108.bin"}));
    const testkit::TestDatabase target(GetParam());
    runTool({"populate", modules("other", {"MX0304.bin"}), "--db", target.url()});
    target.execute("DROP TABLE options");
    const ToolRun run = devices({"--copy-to", target.url()});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_THAT(run.err, HasSubstr(target.name()));
    EXPECT_THAT(runTool({"devices", "--db", target.url(), "--format", "csv"}).out,
                Not(HasSubstr("0bc1e800")));
}

TEST_P(CatalogueVerbs, removeTakesOneModule)
{
    populate(modules("two", {"MX0001.bin", "MX0108.bin"}));
    const ToolRun run = devices({"--remove", "5a010108"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "5a010108 removed\n");
    EXPECT_THAT(found({}), ElementsAre("0bc1e800"));
    const ToolRun again = devices({"--remove", "5a010108"});
    EXPECT_EQ(again.exitCode, 1);
    EXPECT_EQ(again.out, "");
    EXPECT_THAT(again.err, HasSubstr("hint: it holds 0bc1e800"));
}

TEST_P(CatalogueVerbs, quietPrintsResultsOnly)
{
    const std::string one = modules("one", {"MX0001.bin"});
    EXPECT_EQ(populate(one, {"-q", "--replace"}).out, "");
    EXPECT_EQ(devices({"-q", "--export", directory.path("out")}).out, "");
    EXPECT_EQ(devices({"-q", "--remove", "0bc1e800"}).out, "");
}

TEST_P(CatalogueVerbs, nothingToReadIsNotMade)
{
    for (const std::vector<std::string>& call :
         {std::vector<std::string>{}, {"--remove", "0bc1e800"}, {"--search", "x"}}) {
        const ToolRun run = devices(call);
        EXPECT_EQ(run.exitCode, 4);
        EXPECT_THAT(run.err, StartsWith("error: Cannot open device database " + place.name()));
    }
}

TEST_P(CatalogueVerbs, modulesWithoutContentAreWarnedOfWhenSearched)
{
    populate(modules("two", {"MX0001.bin", "MX0108.bin"}));
    place.execute("DELETE FROM channels");
    place.execute("DELETE FROM options");
    place.execute("DELETE FROM parameters");
    place.execute("DELETE FROM modules WHERE module = '5a010108'");
    const ToolRun run = devices({"--search", "supply"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("0bc1e800"));
    EXPECT_EQ(run.err, "warning: The catalogue does not have the content of 1 module: searches may "
                       "not find it\n"
                       "hint: mxtool populate DIRECTORY stores it\n");
    EXPECT_EQ(devices({}).err, "");
}

// The record of a host that stores a device without the bytes of its file.
TEST_P(CatalogueVerbs, aModuleWithoutItsFileIsNamed)
{
    populate(modules("two", {"MX0001.bin", "MX0108.bin"}));
    place.execute(std::string("UPDATE device_properties SET mx_file_data = ") +
                  (GetParam() == testkit::Engine::Sqlite ? "X''" : "''") +
                  " WHERE in_data_size = 1"); // MX0108
    place.execute("UPDATE search_modules SET file_bytes = 0 WHERE in_bytes = 1");
    const std::string missing = "warning: 1 module was stored without the mx file: 5a010108\n"
                                "hint: mxtool populate DIRECTORY stores the files; a host stores "
                                "their bytes in mxFileData of the record\n";
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{}, {"5a010108"}, {"--export", directory.path("out")}}) {
        const ToolRun run = devices(options);
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(run.err, missing);
    }
    EXPECT_EQ(readFile(directory.path("out/MX0bc1e800.bin")),
              readFile(std::string(EXAMPLE_MODULES) + "/MX0001.bin"));
    EXPECT_FALSE(fs::exists(directory.path("out/MX5a010108.bin")));
    EXPECT_EQ(devices({"0bc1e800"}).exitCode, 0);
}

TEST(CatalogueWords, ofAConditionAreChecked)
{
    const std::vector<std::pair<std::string, std::string>> refused = {
        {"inbytes>4", "names no field, did you mean \"in_bytes\"? (accepted: module_id, "},
        {"in_bytes>four", "compares in_bytes with \"four\", expected a whole number"},
        {"in_bytes~4", "looks for a text in the number in_bytes"},
        {"in_bytes", "is not a condition, expected a field"},
        {">4", "names no field"},
        {"in_bytes>99999999999999999999", "expected a whole number"},
    };
    for (const auto& [condition, reason] : refused) {
        const ToolRun run =
            runTool({"devices", "--db", "sqlite:/nonexistent", "--where", condition});
        EXPECT_EQ(run.exitCode, 2) << condition;
        EXPECT_THAT(run.err, HasSubstr(reason));
    }
}

TEST(CatalogueWords, thatExcludeEachOther)
{
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"0bc1e800", "--search", "x"},
          {"--export", "a", "--copy-to", "b"},
          {"--remove", "a", "--export", "b"},
          {"--remove", "a", "--where", "in_bytes=1"}}) {
        std::vector<std::string> call = {"devices"};
        call.insert(call.end(), words.begin(), words.end());
        EXPECT_EQ(runTool(call).exitCode, 2);
    }
}

TEST(CataloguePostgresql, passwordIsNeverShown)
{
    const std::string words = testkit::testServer() + " password=hunter2";
    for (const std::string& url :
         {"postgresql:" + words, std::string("postgresql://u:hunter2@/plant?host=/nowhere"),
          std::string("postgresql:password=hunter2 nonsense"),
          std::string("postgresql:host=/nowhere password=hunter2")}) {
        for (const char* verb : {"devices", "populate"}) {
            std::vector<std::string> call = {"--log-level", "trace", verb};
            if (std::string(verb) == "populate") {
                call.emplace_back("/nonexistent");
            }
            call.insert(call.end(), {"--db", url});
            const ToolRun run = runTool(call);
            EXPECT_NE(run.exitCode, 0);
            EXPECT_THAT(run.out + run.err, Not(HasSubstr("hunter2")));
        }
    }
}

TEST(CataloguePostgresql, commitThatIsNotAnsweredMayBeStored)
{
    const testkit::TestDatabase place(testkit::Engine::Postgresql);
    const testkit::TemporaryDirectory directory;
    fs::copy(fs::path(EXAMPLE_MODULES) / "MX0108.bin", directory.path());
    const std::string files = directory.path();
    runTool({"populate", files, "--db", place.url()});
    place.execute("CREATE FUNCTION lose() RETURNS trigger LANGUAGE plpgsql AS"
                  " 'BEGIN PERFORM pg_terminate_backend(pg_backend_pid()); RETURN NULL; END'");
    place.execute("CREATE CONSTRAINT TRIGGER lose AFTER INSERT OR UPDATE ON device_properties"
                  " DEFERRABLE INITIALLY DEFERRED FOR EACH ROW EXECUTE FUNCTION lose()");
    const ToolRun run = runTool({"populate", files, "--db", place.url()});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_EQ(run.err,
              "error: Cannot change device database " + place.name() +
                  ": the connection to the server is lost during the commit: it is not known "
                  "whether the changes are stored\n"
                  "hint: the database has all of the changes or none: make them again\n");
}

TEST(CataloguePostgresql, passwordComesFromTheEnvironment)
{
    ToolSetup setup;
    setup.environment["PGHOST"] = "/nowhere";
    setup.environment["PGPASSWORD"] = "hunter2";
    setup.environment["DEVICE_DATABASE_URL"] = "postgresql:dbname=plant";
    const ToolRun run = runTool({"devices"}, setup);
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_EQ(run.err, "error: Cannot open device database postgresql:host=/nowhere dbname=plant: "
                       "connection to server on socket \"/nowhere/.s.PGSQL.5432\" failed: No such "
                       "file or directory\n");
}

} // namespace
