#include "StoredModules.h"

#include "TestDatabase.h"

#include <devices/parser/mx/Parser_kv38.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace {

using mxmodule::Catalogue;
using mxmodule::Finding;
using mxmodule::Origin;
using mxmodule::Population;
using mxmodule::Severity;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// What an operation tells, as texts.
class Recorder : public mxmodule::Observer
{
public:
    explicit Recorder(std::string lowestLevel = "error") : level(std::move(lowestLevel)) {}

    void notice(const Finding& finding) override { notices.push_back(finding.text); }
    void progress(std::size_t done, std::size_t total, const char* things) override
    {
        steps.push_back(std::to_string(done) + " of " + std::to_string(total) + " " + things);
    }
    void reads(const std::string& path) override { files.push_back(path); }
    std::string logLevel() const override { return level; }

    std::vector<std::string> notices;
    std::vector<std::string> steps;
    std::vector<std::string> files;

private:
    std::string level;
};

std::vector<std::string> textsOf(const std::vector<Finding>& findings)
{
    std::vector<std::string> texts;
    for (const Finding& finding : findings) {
        texts.push_back(finding.text);
    }
    return texts;
}

class Populating : public testing::Test
{
protected:
    // Makes the engine end the insertion of module 00000a02 with `action`.
    void refuse(const std::string& action)
    {
        place.execute("CREATE TRIGGER refuse BEFORE INSERT ON device_properties"
                      " WHEN NEW.module_id = CAST('00000a02' AS BLOB)"
                      " BEGIN SELECT RAISE(" +
                      action + ", 'refused'); END");
    }

    // What another connection sees.
    std::vector<std::string> stored() const { return idsOf(Catalogue::open(place.url()).search()); }

    testkit::TestDatabase place{testkit::Engine::Sqlite};
    Catalogue catalogue = Catalogue::openOrCreate(place.url());
    ModuleDirectory directory;
};

TEST_F(Populating, insertsNewModulesAndCommits)
{
    directory.add("MX1.bin", 0xa01);
    directory.add("MX2.bin", 0xa02);
    directory.add("other.bin", 0xa03);
    const Population done = directory.populate(catalogue);
    EXPECT_EQ(done.inserted, 2U);
    EXPECT_EQ(done.replaced, 0U);
    EXPECT_EQ(done.failed, 0U);
    EXPECT_THAT(done.removed, IsEmpty());
    EXPECT_THAT(done.findings, IsEmpty());
    EXPECT_THAT(stored(), ElementsAre("00000a01", "00000a02"));
}

TEST_F(Populating, replacesModulesOfAnEarlierRun)
{
    directory.add("MX1.bin", 0xa01);
    directory.populate(catalogue);
    directory.add("MX2.bin", 0xa02);
    const Population done = directory.populate(catalogue);
    EXPECT_EQ(done.inserted, 1U);
    EXPECT_EQ(done.replaced, 1U);
}

TEST_F(Populating, worksInMemory)
{
    Catalogue memory = Catalogue::openOrCreate("sqlite::memory:");
    directory.add("MX1.bin", 0xa01);
    EXPECT_EQ(directory.populate(memory).inserted, 1U);
    EXPECT_THAT(idsOf(memory.search()), ElementsAre("00000a01"));
}

TEST_F(Populating, secondFileOfAModuleIsAWarning)
{
    directory.add("MX2.bin", 0xa01);
    directory.add("MX1.bin", 0xa01);
    const Population done = directory.populate(catalogue);
    EXPECT_EQ(done.inserted, 1U);
    EXPECT_EQ(done.replaced, 1U);
    ASSERT_EQ(done.findings.size(), 1U);
    EXPECT_EQ(done.findings[0].severity, Severity::Warning);
    EXPECT_EQ(done.findings[0].place, directory.path());
    EXPECT_EQ(done.findings[0].text,
              "Module 00000a01 has several files, of which one is stored: MX1.bin, MX2.bin");
    EXPECT_EQ(done.findings[0].hint, "leave one of them in the directory");
    EXPECT_THAT(stored(), ElementsAre("00000a01"));
}

TEST_F(Populating, fileThatCannotBeTranslatedFailsAlone)
{
    directory.add("MX1.bin", 0xa01);
    directory.add("MX2.bin", cutFile(0xa02));
    directory.add("MX3.bin", 0xa03);
    const Population done = directory.populate(catalogue);
    EXPECT_EQ(done.inserted, 2U);
    EXPECT_EQ(done.failed, 1U);
    ASSERT_THAT(
        textsOf(done.findings),
        ElementsAre(StartsWith("File MX2.bin: Parser::parse(): Error in group 17 "))); // 0x0011
    EXPECT_EQ(done.findings[0].severity, Severity::Error);
    EXPECT_THAT(stored(), ElementsAre("00000a01", "00000a03"));
}

TEST_F(Populating, rejectedRecordIsUndoneAlone)
{
    refuse("ABORT");
    directory.add("MX1.bin", 0xa01);
    directory.add("MX2.bin", 0xa02);
    directory.add("MX3.bin", 0xa03);
    const Population done = directory.populate(catalogue);
    EXPECT_EQ(done.inserted, 2U);
    EXPECT_EQ(done.failed, 1U);
    EXPECT_EQ(done.findings.size(), 1U);
    EXPECT_THAT(stored(), ElementsAre("00000a01", "00000a03"));
}

// More files than one batch: 300. The directory is walked in any order.
TEST_F(Populating, findingsComeInTheOrderOfTheFiles)
{
    refuse("ABORT");
    std::vector<std::string> expected;
    mxmodule::MxDirectory listed{directory.path()};
    for (std::uint32_t number = 0; number < 300; ++number) {
        const std::string name = "MX" + std::to_string(1000 + number) + ".bin";
        const bool isRefused = number % 100 == 50;
        const bool isCut = number % 100 == 30 || number == 299;
        const std::uint32_t module = isRefused ? 0xa02 : 0xb00 + number;
        directory.add(name, isCut ? cutFile(module) : mxFile(module));
        listed.files.push_back(directory.path(name));
        if (isRefused || isCut) {
            expected.push_back("File " + name + ": " +
                               (isCut ? "Parser::parse()" : "Cannot write"));
        }
    }
    Recorder recorder;
    const Population done = mxmodule::populate(listed, catalogue, {}, &recorder);
    EXPECT_EQ(done.inserted, 293U);
    EXPECT_EQ(done.failed, 7U); // 3 are refused, 4 are cut
    EXPECT_EQ(recorder.notices, textsOf(done.findings));
    ASSERT_EQ(recorder.notices.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_THAT(recorder.notices[i], StartsWith(expected[i]));
    }
    EXPECT_EQ(stored().size(), 293U);
}

// Two of the files are of one module, between them one that is refused.
TEST_F(Populating, lastFileOfAModuleIsStored)
{
    refuse("ABORT");
    directory.add("MX1.bin", 0xa01);
    directory.add("MX2.bin", 0xa02);
    std::vector<char> labelled = mxFile(0xa01);
    const std::string label = "Test module";
    const auto at = std::search(labelled.begin(), labelled.end(), label.begin(), label.end());
    ASSERT_NE(at, labelled.end());
    *at = 'B';
    directory.add("MX3.bin", labelled);
    mxmodule::MxDirectory listed{directory.path()};
    listed.files = {directory.path("MX1.bin"), directory.path("MX2.bin"),
                    directory.path("MX3.bin")};
    mxmodule::populate(listed, catalogue);
    EXPECT_EQ(catalogue.search().front().label, "Best module");
    std::swap(listed.files.front(), listed.files.back());
    const Population done = mxmodule::populate(listed, catalogue);
    EXPECT_EQ(catalogue.search().front().label, "Test module");
    EXPECT_EQ(done.replaced, 2U);
    EXPECT_EQ(done.failed, 1U);
}

// What is known of the files before it is told.
TEST_F(Populating, fileThatIsGoneIsToldAfterTheFindings)
{
    directory.add("MX1.bin", cutFile(0xa01));
    mxmodule::MxDirectory listed{directory.path()};
    listed.files = {directory.path("MX1.bin"), directory.path("MX2.bin")};
    Recorder recorder;
    const Finding reason = reasonOf([&] { mxmodule::populate(listed, catalogue, {}, &recorder); });
    EXPECT_EQ(reason.place, directory.path("MX2.bin"));
    EXPECT_THAT(recorder.notices, ElementsAre(StartsWith("File MX1.bin: Parser::parse()")));
}

TEST_F(Populating, lostTransactionLeavesTheCatalogueUnchanged)
{
    directory.add("MX1.bin", 0xa01);
    directory.populate(catalogue);
    refuse("ROLLBACK");
    directory.add("MX2.bin", 0xa02);
    directory.add("MX3.bin", 0xa03);
    const Finding reason = reasonOf([&] { directory.populate(catalogue); });
    EXPECT_THAT(reason.text, HasSubstr("refused")); // not what follows from it
    EXPECT_EQ(reason.origin, Origin::Output);
    EXPECT_EQ(reason.hint, "the database is unchanged");
    EXPECT_THAT(stored(), ElementsAre("00000a01"));
    place.execute("DROP TRIGGER refuse");
    EXPECT_EQ(directory.populate(catalogue).inserted, 2U);
}

TEST_F(Populating, fileThatIsGoneLeavesTheCatalogueUnchanged)
{
    directory.add("MX1.bin", 0xa01);
    directory.add("MX2.bin", 0xa02);
    const auto listed = mxmodule::listMxDirectory(directory.path());
    std::filesystem::remove(listed.files.back());
    const Finding reason = reasonOf([&] { mxmodule::populate(listed, catalogue); });
    EXPECT_EQ(reason.origin, Origin::Input);
    EXPECT_EQ(reason.place, listed.files.back());
    EXPECT_EQ(reason.hint, "the database is unchanged");
    EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(Populating, entriesThatAreNoFilesAreLeftOut)
{
    directory.add("MX1.bin", 0xa01);
    std::filesystem::create_directory(directory.path("MX2dir.bin"));
    const auto listed = mxmodule::listMxDirectory(directory.path());
    EXPECT_THAT(listed.files, ElementsAre(directory.path("MX1.bin")));
    ASSERT_EQ(listed.leftOut.size(), 1U);
    EXPECT_EQ(listed.leftOut[0].place, directory.path("MX2dir.bin"));
    EXPECT_EQ(listed.leftOut[0].text, "Found a directory, expected a file: it is left out");
    const Population done = mxmodule::populate(listed, catalogue);
    EXPECT_EQ(done.inserted, 1U);
    EXPECT_EQ(done.failed, 1U);
}

TEST_F(Populating, directoryWithoutMxFilesIsAFailure)
{
    directory.add("MX.bin.old", 0xa01);
    const Finding reason = reasonOf([&] { mxmodule::listMxDirectory(directory.path()); });
    EXPECT_EQ(reason.origin, Origin::Input);
    EXPECT_EQ(reason.text, "The directory holds no file MX*.bin, nothing is inserted");
    EXPECT_EQ(reasonOf([&] { mxmodule::listMxDirectory(directory.path("no")); }).text,
              "Cannot read the directory: No such file or directory");
}

TEST_F(Populating, mxFilesAreOrderedByName)
{
    directory.add("MX2.bin", 0xa01);
    directory.add("MX1.bin", 0xa02);
    directory.add("x.bin", 0xa03);
    EXPECT_THAT(mxmodule::mxFilesOf(directory.path()),
                ElementsAre(directory.path("MX1.bin"), directory.path("MX2.bin")));
    EXPECT_THAT(mxmodule::mxFilesOf("any name"), ElementsAre("any name"));
}

TEST_F(Populating, replaceRemovesWhatNoFileStates)
{
    storeHostRecord(place.url(), "00000a05");
    storeHostRecord(place.url(), "00000a06", "host");
    directory.add("MX1.bin", 0xa01);
    EXPECT_THAT(directory.populate(catalogue).removed, IsEmpty());
    const Population done = directory.populate(catalogue, true);
    EXPECT_THAT(idsOf(done.removed), ElementsAre("00000a05"));
    EXPECT_EQ(done.removed[0].label, "4 AI \xC2\xB1"
                                     "10 V");
    EXPECT_THAT(stored(), ElementsAre("00000a06", "00000a01")); // families "host", "kv38"
}

// The identity is readable although the file cannot be translated.
TEST_F(Populating, replaceKeepsTheModuleOfADamagedFile)
{
    storeHostRecord(place.url(), "00000a02");
    directory.add("MX1.bin", 0xa01);
    directory.add("MX2.bin", cutFile(0xa02));
    EXPECT_THAT(directory.populate(catalogue, true).removed, IsEmpty());
    EXPECT_THAT(stored(), ElementsAre("00000a01", "00000a02"));
}

TEST_F(Populating, replaceRemovesNothingIfAModuleIsNotKnown)
{
    storeHostRecord(place.url(), "00000a05");
    directory.add("MX1.bin", 0xa01);
    directory.add("MX2.bin", {'M', 'X'});
    const Population unstated = directory.populate(catalogue, true);
    EXPECT_THAT(unstated.removed, IsEmpty());
    ASSERT_EQ(unstated.findings.size(), 2U);
    EXPECT_EQ(unstated.findings[1].text, "A file does not state its module, which may be any in "
                                         "the database: nothing is removed");
    std::filesystem::remove(directory.path("MX2.bin"));
    std::filesystem::create_directory(directory.path("MX2.bin"));
    EXPECT_THAT(textsOf(directory.populate(catalogue, true).findings),
                ElementsAre("An entry was left out, which may be any in the database: nothing is "
                            "removed"));
    EXPECT_THAT(stored(), ElementsAre("00000a01", "00000a05"));
}

TEST_F(Populating, observerIsToldFilesProgressAndFindings)
{
    directory.add("MX1.bin", 0xa01);
    directory.add("MX2.bin", {'M', 'X'});
    Recorder recorder;
    const Population done = directory.populate(catalogue, false, &recorder);
    std::sort(recorder.files.begin(), recorder.files.end());
    EXPECT_THAT(recorder.files, ElementsAre(directory.path("MX1.bin"), directory.path("MX2.bin")));
    EXPECT_THAT(recorder.steps, ElementsAre("0 of 2 files", "1 of 2 files", "2 of 2 files"));
    EXPECT_EQ(recorder.notices, textsOf(done.findings));
    EXPECT_EQ(recorder.notices.size(), 1U);
}

TEST_F(Populating, observerOfDebugLinesIsToldEachFile)
{
    directory.add("MX1.bin", 0xa01);
    Recorder recorder("debug");
    directory.populate(catalogue, false, &recorder);
    ASSERT_FALSE(recorder.notices.empty());
    EXPECT_EQ(recorder.notices.front(), "Loading mx file MX1.bin");
}

TEST_F(Populating, exceptionOfAnObserverUndoesTheRun)
{
    class Stopping : public mxmodule::Observer
    {
        void progress(std::size_t done, std::size_t total, const char* /*things*/) override
        {
            if (done == total) {
                throw std::runtime_error("stop");
            }
        }
    } stopping;
    directory.add("MX1.bin", 0xa01);
    EXPECT_THROW(directory.populate(catalogue, false, &stopping), std::runtime_error);
    EXPECT_THAT(stored(), IsEmpty());
}

TEST_F(Populating, exceptionForALineOfTheParserUndoesTheRun)
{
    class Stopping : public mxmodule::Observer
    {
        void notice(const Finding& finding) override
        {
            if (finding.text == ">> parse().") {
                throw std::runtime_error("stop");
            }
        }
        std::string logLevel() const override { return "trace"; }
    } stopping;
    directory.add("MX1.bin", 0xa01);
    EXPECT_THROW(directory.populate(catalogue, false, &stopping), std::runtime_error);
    EXPECT_THAT(stored(), IsEmpty());
}

// A translation of the host during which `work` runs on another thread.
class Occupied : public devices::parser::mx::Parser_kv38
{
public:
    explicit Occupied(std::function<void()> meanwhile) : work(std::move(meanwhile)) {}

private:
    void parseContent() override
    {
        std::thread(work).join();
        Parser_kv38::parseContent();
    }

    std::function<void()> work;
};

TEST_F(Populating, translationOfTheHostUndoesTheRun)
{
    directory.add("MX1.bin", 0xa01);
    directory.populate(catalogue); // makes the parser of the library
    directory.add("MX2.bin", 0xa02);
    Occupied host([this] { EXPECT_THROW(directory.populate(catalogue), std::logic_error); });
    std::vector<char> loaded = mxFile(0xa03);
    loaded.push_back('\xFF');
    host.parse(loaded, nullptr, 0, 0);
    EXPECT_THAT(stored(), ElementsAre("00000a01"));
}

} // namespace
