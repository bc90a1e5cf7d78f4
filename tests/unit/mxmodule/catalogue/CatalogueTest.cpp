#include "StoredModules.h"

#include "TestDatabase.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace {

using mxmodule::Catalogue;
using mxmodule::CatalogueEntry;
using mxmodule::CatalogueQuery;
using mxmodule::Finding;
using mxmodule::Module;
using mxmodule::Origin;
using mxmodule::Severity;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OpenCatalogue : public testing::Test
{
protected:
    OpenCatalogue()
    {
        directory.add("MX1.bin", 0xa01);
        directory.add("MX2.bin", 0xa02);
        directory.populate(catalogue);
    }

    testkit::TestDatabase place{testkit::Engine::Sqlite};
    Catalogue catalogue = Catalogue::openOrCreate(place.url());
    ModuleDirectory directory;
};

TEST_F(OpenCatalogue, listsModules)
{
    const auto modules = catalogue.search();
    EXPECT_THAT(idsOf(modules), ElementsAre("00000a01", "00000a02"));
    EXPECT_EQ(modules[0].family, "kv38");
    EXPECT_EQ(modules[0].label, "Test module");
    EXPECT_EQ(modules[0].inputSize, 7U);
    EXPECT_EQ(modules[0].outputSize, 4U);
    EXPECT_EQ(modules[0].parameterSize, 0U);
    EXPECT_EQ(modules[0].fileSize, mxFile(0xa01).size());
    EXPECT_TRUE(modules[0].hasContent);
    EXPECT_EQ(catalogue.name(), place.url());
}

TEST_F(OpenCatalogue, searchesWordsAndConditions)
{
    EXPECT_THAT(idsOf(catalogue.search(CatalogueQuery("  MODULE  test "))),
                ElementsAre("00000a01", "00000a02"));
    EXPECT_THAT(catalogue.search(CatalogueQuery("module absent")), IsEmpty());
    EXPECT_THAT(catalogue.search(CatalogueQuery("", {"in_bytes>7"})), IsEmpty());
    EXPECT_EQ(catalogue.search(CatalogueQuery("", {"in_bytes >= 7", "label~Test"})).size(), 2U);
}

TEST_F(OpenCatalogue, showsOneRecord)
{
    const auto record = catalogue.find("00000a01");
    ASSERT_TRUE(record);
    EXPECT_TRUE(record->module.hasContent);
    EXPECT_EQ(record->file, mxFile(0xa01));
    EXPECT_THAT(record->parameterBlock, IsEmpty());
    EXPECT_THAT(record->hostData, IsEmpty());
    const std::string size = std::to_string(mxFile(0xa01).size());
    EXPECT_EQ(record->text(), "Field              Value\n"
                              "module identifier  00000a01\n"
                              "family             kv38\n"
                              "label              Test module\n"
                              "input              7 bytes\n"
                              "output             4 bytes\n"
                              "parameter block    0 bytes:\n"
                              "mx file            " +
                                  size +
                                  " bytes\n"
                                  "host data          0 bytes\n");
    EXPECT_THAT(record->json(), HasSubstr("\"schema\": {"));
    EXPECT_THAT(record->json(), HasSubstr("\"module_id\": \"00000a01\""));
}

TEST_F(OpenCatalogue, listsAsTableCsvAndJson)
{
    const auto modules = catalogue.search();
    const std::string size = std::to_string(mxFile(0xa01).size());
    EXPECT_EQ(mxmodule::catalogueTable(modules),
              "Module    Family  Label        In  Out  Parameters  File\n"
              "00000a01  kv38    Test module  7   4    0           " +
                  size +
                  "\n"
                  "00000a02  kv38    Test module  7   4    0           " +
                  size + "\n");
    EXPECT_EQ(mxmodule::catalogueCsv({modules[0]}, {';', true}),
              "\xEF\xBB\xBFmodule_id;family;label;in_bytes;out_bytes;parameter_bytes;file_bytes\r\n"
              "00000a01;kv38;Test module;7;4;0;" +
                  size + "\r\n");
    EXPECT_THAT(catalogue.json(modules), HasSubstr("\"module_id\": \"00000a02\""));
}

TEST_F(OpenCatalogue, unknownModuleIsExplained)
{
    EXPECT_FALSE(catalogue.find("00000a09"));
    EXPECT_FALSE(catalogue.remove("00000a09"));
    const Finding unknown = catalogue.unknownModule("00000a09");
    EXPECT_EQ(unknown.origin, Origin::Request);
    EXPECT_EQ(unknown.text, "Module 00000a09 is not in the database, expected eight hexadecimal "
                            "digits of one that is");
    EXPECT_EQ(unknown.hint, "it holds 00000a01, 00000a02");
    EXPECT_EQ(unknown.accepted, (std::vector<std::string>{"00000a01", "00000a02"}));
    EXPECT_EQ(Catalogue::openOrCreate("sqlite::memory:").unknownModule("1").hint,
              "the database holds no module");
}

TEST_F(OpenCatalogue, makesModules)
{
    const Module module = Module::fromCatalogue(place.url(), 0xa02);
    EXPECT_EQ(module.label(), "Test module");
    EXPECT_EQ(module.moduleId(), "00000a02");
    EXPECT_EQ(module.name(), "<module 00000a02 of " + place.url() + ">");
    EXPECT_EQ(Module::fromCatalogue(place.url(), "00000a01").moduleId(), "00000a01");
    EXPECT_EQ(catalogue.module("00000a01").sizes().input, 7U);
}

TEST_F(OpenCatalogue, makesNoModuleOfAnUnknownIdentifier)
{
    const Finding reason = reasonOf([&] { Module::fromCatalogue(place.url(), 0xa09); });
    EXPECT_EQ(reason.origin, Origin::Request);
    EXPECT_EQ(reason.place, place.url());
    EXPECT_THAT(reason.text, testing::StartsWith("Module 00000a09 is not in the database"));
}

TEST_F(OpenCatalogue, makesNoModuleOfARecordWithoutFile)
{
    storeHostRecord(place.url(), "00000a05");
    const Finding reason = reasonOf([&] { Module::fromCatalogue(place.url(), 0xa05); });
    EXPECT_EQ(reason.severity, Severity::Error);
    EXPECT_EQ(reason.place, place.url());
    EXPECT_EQ(reason.text, "1 module was stored without the mx file: 00000a05");
}

TEST_F(OpenCatalogue, namesModulesWithoutFile)
{
    EXPECT_THAT(mxmodule::withoutFile(catalogue.search()), IsEmpty());
    storeHostRecord(place.url(), "00000a05");
    storeHostRecord(place.url(), "00000a06");
    const auto found = mxmodule::withoutFile(catalogue.search());
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].severity, Severity::Warning);
    EXPECT_EQ(found[0].text, "2 modules were stored without the mx file: 00000a05, 00000a06");
}

TEST_F(OpenCatalogue, warnsOfModulesThatASearchMayMiss)
{
    EXPECT_THAT(catalogue.searchFindings(CatalogueQuery("x")), IsEmpty());
    storeHostRecord(place.url(), "00000a05");
    EXPECT_THAT(catalogue.searchFindings({}), IsEmpty());
    const auto found = catalogue.searchFindings(CatalogueQuery("x"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].text,
              "The catalogue does not have the content of 1 module: searches may not find it");
    EXPECT_FALSE(catalogue.find("00000a05")->module.hasContent);
}

TEST_F(OpenCatalogue, removesAModule)
{
    EXPECT_TRUE(catalogue.remove("00000a01"));
    EXPECT_THAT(idsOf(Catalogue::open(place.url()).search()), ElementsAre("00000a02"));
}

TEST_F(OpenCatalogue, visitsFilesByteForByte)
{
    storeHostRecord(place.url(), "00000a05");
    std::map<std::string, std::vector<char>> files;
    const auto keep = [&](const CatalogueEntry& module, const std::vector<char>& file) {
        files[mxmodule::exportName(module)] = file;
    };
    EXPECT_EQ(catalogue.visitFiles(catalogue.search(), keep), 2U);
    EXPECT_THAT(files, ElementsAre(std::pair("MX00000a01.bin", mxFile(0xa01)),
                                   std::pair("MX00000a02.bin", mxFile(0xa02))));
}

TEST_F(OpenCatalogue, exceptionOfAVisitorIsNotOneOfTheDatabase)
{
    const auto stop = [](const CatalogueEntry& /*module*/, const std::vector<char>& /*file*/) {
        throw std::out_of_range("stop");
    };
    EXPECT_THROW(catalogue.visitFiles(catalogue.search(), stop), std::out_of_range);
}

TEST_F(OpenCatalogue, copiesRecordsAndContent)
{
    const testkit::TestDatabase other{testkit::Engine::Sqlite};
    storeHostRecord(place.url(), "00000a05");
    Catalogue target = Catalogue::openOrCreate(other.url());
    EXPECT_EQ(catalogue.copyTo(target, catalogue.search()), 3U);
    Catalogue copied = Catalogue::open(other.url());
    EXPECT_THAT(idsOf(copied.search()), ElementsAre("00000a01", "00000a02", "00000a05"));
    EXPECT_EQ(copied.find("00000a02")->file, mxFile(0xa02));
    EXPECT_THAT(idsOf(copied.search(CatalogueQuery("k38-t"))), // the order code
                ElementsAre("00000a01", "00000a02"));
}

// More than are read at once: 130 of the records of a host, one of them removed meanwhile.
TEST_F(OpenCatalogue, manyModulesAreVisitedAndCopiedInTheirOrder)
{
    {
        devices::database::DeviceDatabase database(place.url());
        auto transaction = database.beginTransaction();
        for (int number = 100; number < 230; ++number) {
            devices::database::DeviceProperties record;
            record.family = "kv39";
            record.moduleIdText = std::to_string(number);
            record.mxFileData = new std::vector<char>{'x', '\xFF'};
            database.insert(record);
        }
        transaction.commit();
    }
    auto modules = catalogue.search();
    std::reverse(modules.begin(), modules.end());
    catalogue.remove("150");
    std::vector<std::string> visited;
    catalogue.visitFiles(modules, [&](const CatalogueEntry& module, const std::vector<char>&) {
        visited.push_back(module.moduleId);
    });
    ASSERT_EQ(visited.size(), 131U); // 129 of the host, then those of the fixture
    EXPECT_EQ(visited[0], "229");
    EXPECT_EQ(visited[78], "151");
    EXPECT_EQ(visited[79], "149");
    EXPECT_EQ(visited[130], "00000a01");
    Catalogue target = Catalogue::openOrCreate("sqlite::memory:");
    EXPECT_EQ(catalogue.copyTo(target, modules), 131U);
    EXPECT_EQ(idsOf(target.search()), idsOf(catalogue.search()));
}

TEST_F(OpenCatalogue, failedCopyChangesNothing)
{
    const testkit::TestDatabase other{testkit::Engine::Sqlite};
    Catalogue target = Catalogue::openOrCreate(other.url());
    other.execute("CREATE TRIGGER refuse BEFORE INSERT ON device_properties"
                  " WHEN NEW.module_id = CAST('00000a02' AS BLOB)"
                  " BEGIN SELECT RAISE(ABORT, 'refused'); END");
    const Finding reason = reasonOf([&] { catalogue.copyTo(target, catalogue.search()); });
    EXPECT_EQ(reason.origin, Origin::Output);
    EXPECT_THAT(reason.text, HasSubstr("refused"));
    EXPECT_THAT(target.search(), IsEmpty());
}

TEST(ClosedCatalogue, isNotCreatedToBeRead)
{
    const testkit::TemporaryDirectory directory;
    const std::string url = "sqlite:" + directory.path("none.sqlite");
    const Finding reason = reasonOf([&] { Catalogue::open(url); });
    EXPECT_EQ(reason.origin, Origin::Output);
    EXPECT_EQ(reason.hint, "make one with: mxtool populate DIRECTORY --db " + url);
    EXPECT_FALSE(std::filesystem::exists(directory.path("none.sqlite")));
}

TEST(ClosedCatalogue, ofAnUnknownSchemeIsExplained)
{
    EXPECT_EQ(reasonOf([] { Module::fromCatalogue("sqlit:x.sqlite", 1); }).hint,
              "did you mean \"sqlite:\"?");
    EXPECT_EQ(reasonOf([] { Catalogue::openOrCreate("x.sqlite"); }).hint,
              "name a file as sqlite:x.sqlite");
    EXPECT_EQ(reasonOf([] { Catalogue::open("host=db password=s3cret"); }).hint,
              "name a server as postgresql:CONNECTION");
    const Finding secret = reasonOf([] { Catalogue::open("other:password=s3cret"); });
    EXPECT_EQ(secret.hint, "");
    EXPECT_EQ(secret.origin, Origin::Output);
}

TEST(ExportName, isThatOfAnMxFile)
{
    EXPECT_EQ(mxmodule::exportName({"5a010108", "kv38", ""}), "MX5a010108.bin");
    EXPECT_EQ(mxmodule::exportName({"../\xE4", "own-1", ""}), "MX%2e%2e%2f%e4.own-1.bin");
}

} // namespace
