// A station whose mx files come from one folder alone. The folder has a directory of stations, one
// of modules, and beside it a file that no message quotes.
#include "StationFixture.h"

#include "TemporaryDirectory.h"

#include <devices/database/DeviceDatabase.h>
#include <mxmodule/Catalogue.h>
#include <mxmodule/ModuleFolder.h>

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class StationFolder : public testing::Test
{
protected:
    StationFolder()
    {
        std::filesystem::create_directories(outer.path("plant/stations"));
        std::filesystem::create_directories(outer.path("plant/modules"));
        copy("MX0108.bin", "plant/modules/MX0108.bin");
        copy("MX0208.bin", "plant/stations/MX0208.bin");
        copy("MX0108.bin", "outside.bin");
        write("secret.yaml", "swordfish: 1\nmodule: {type: swordfish}\n");
    }

    void copy(const std::string& name, const std::string& to) const
    {
        outer.write(to, mxmodule::readFile(std::string(EXAMPLE_MODULES) + "/" + name));
    }

    void write(const std::string& name, const std::string& text) const
    {
        outer.write(name, {text.begin(), text.end()});
    }

    mxstation::Station stationOf(const std::string& references, const std::string& name,
                                 const std::string& catalogue = "") const
    {
        const mxmodule::ModuleFolder folder(outer.path("plant"));
        mxstation::StationOptions options;
        options.folder = &folder;
        options.catalogueUrl = catalogue;
        return mxstation::stationOf("modules: [" + references + "]\n", name, options);
    }

    mxstation::Station stationOf(const std::string& references) const
    {
        return stationOf(references, outer.path("plant/stations/row.yaml"));
    }

    /// Returns the texts of the findings of a station with these modules.
    std::vector<std::string> errorsOf(const std::string& references) const
    {
        std::vector<std::string> texts;
        for (const mxmodule::Finding& finding : stationOf(references).findings) {
            EXPECT_THAT(finding.text + finding.hint, Not(HasSubstr("swordfish")));
            texts.push_back(finding.text);
        }
        return texts;
    }

    testkit::TemporaryDirectory outer;
};

TEST_F(StationFolder, givesModulesFromTheDirectoryOfTheStation)
{
    const auto station = stationOf("MX0208.bin, ../modules/MX0108.bin, ./../stations/MX0208.bin");
    EXPECT_THAT(station.findings, IsEmpty());
    ASSERT_THAT(station.entries, SizeIs(3));
    EXPECT_EQ(station.entries[0].module->name(), "stations/MX0208.bin");
    EXPECT_EQ(station.entries[1].module->name(), "modules/MX0108.bin");
    EXPECT_EQ(station.entries[1].reference, "../modules/MX0108.bin");
    EXPECT_THAT(
        shownModules(mxstation::plan(station)),
        ElementsAre("MX0208 in 0+1 out 0+1", "MX0108 in 1+1 out 1+0", "MX0208_2 in 2+1 out 1+1"));
}

TEST_F(StationFolder, givesModulesToAStationWithoutAFile)
{
    EXPECT_THAT(stationOf("modules/MX0108.bin", "<draft>").findings, IsEmpty());
    EXPECT_THAT(stationOf("../outside.bin", "<draft>").findings, SizeIs(1));
}

TEST_F(StationFolder, refusesFilesOutside)
{
    const std::string noName = ": Cannot read the file: it is not the name of a file in the folder";
    const std::string notThere = ": Cannot read the file: there is no such file in the folder";
    std::filesystem::create_symlink("../../secret.yaml", outer.path("plant/stations/link.yaml"));
    std::filesystem::create_symlink("../../nothing.yaml", outer.path("plant/stations/none.yaml"));
    for (const std::string name : {"../../secret.yaml", "../../nothing.yaml"}) {
        EXPECT_THAT(errorsOf(name), ElementsAre("stations/" + name + noName));
    }
    for (const std::string& name : {outer.path("secret.yaml"), outer.path("nothing.yaml"),
                                    outer.path("plant/modules/MX0108.bin")}) {
        EXPECT_THAT(errorsOf(name), ElementsAre(name + noName));
    }
    for (const std::string name : {"link.yaml", "none.yaml", "absent.yaml"}) {
        EXPECT_THAT(errorsOf(name), ElementsAre("stations/" + name + notThere));
    }
}

TEST_F(StationFolder, refusesTextFormsThatNameFilesOutside)
{
    write("plant/stations/image.yaml",
          "module: {type: 3, id: 0x01020304}\nimage: ../../secret.yaml\n");
    EXPECT_THAT(errorsOf("image.yaml"),
                ElementsAre("stations/image.yaml:2:8: cannot read stations/../../secret.yaml: it "
                            "is not the name of a file in the folder"));
}

TEST_F(StationFolder, namesTheNearestFileInIt)
{
    copy("MX0108.bin", "MX0209.bin");
    const auto findings = stationOf("MX0209.bin, ../module/MX0108.bin, ../MX0209.bin").findings;
    ASSERT_THAT(findings, SizeIs(3));
    EXPECT_EQ(findings[0].text,
              "stations/MX0209.bin: Cannot read the file: there is no such file in the folder, did "
              "you mean \"MX0208.bin\"?");
    EXPECT_THAT(findings[0].accepted, ElementsAre("MX0208.bin"));
    EXPECT_THAT(findings[0].hint, HasSubstr("--folder"));
    EXPECT_THAT(findings[1].accepted, ElementsAre("../modules/MX0108.bin"));
    EXPECT_THAT(findings[2].accepted, Not(testing::Contains(HasSubstr("MX0209"))));
}

TEST_F(StationFolder, refusesAStationOutside)
{
    const auto findings = stationOf("MX0208.bin", outer.path("row.yaml")).findings;
    ASSERT_THAT(findings, SizeIs(1));
    EXPECT_EQ(findings[0].text, outer.path() + ": Found nothing of this name in the folder \"" +
                                    outer.path("plant") + "\"");
}

// In a catalogue of someone else a record may be a text form; its files count from the folder.
TEST_F(StationFolder, refusesFilesThatTheCatalogueNames)
{
    write("plant/modules/a.png", "PICTURE");
    const std::string url = "sqlite:" + outer.path("catalogue.sqlite");
    const auto store = [&url](const std::string& id, const std::string& image) {
        devices::database::DeviceProperties record;
        record.family = "kv38";
        record.moduleIdText = id;
        const std::string text = "module: {type: 3, id: 0x" + id + "}\nimage: " + image + "\n\xFF";
        record.mxFileData->assign(text.begin(), text.end());
        devices::database::DeviceDatabase(url).insert(record);
    };
    store("01020304", "modules/a.png");
    store("01020305", outer.path("secret.yaml"));
    store("01020306", "../secret.yaml");
    const std::string row = outer.path("plant/stations/row.yaml");
    const auto station = stationOf("01020304, 01020305, 01020306", row, url);
    ASSERT_THAT(station.findings, SizeIs(2));
    EXPECT_TRUE(station.entries[0].module);
    for (const mxmodule::Finding& finding : station.findings) {
        EXPECT_THAT(finding.text, HasSubstr("it is not the name of a file in the folder"));
    }
}

TEST_F(StationFolder, givesTheModulesOfTheCatalogue)
{
    const std::string url = "sqlite:" + outer.path("catalogue.sqlite");
    outer.write("MX1.bin", mxmodule::readFile(std::string(EXAMPLE_MODULES) + "/MX0108.bin"));
    auto catalogue = mxmodule::Catalogue::openOrCreate(url);
    mxmodule::populate(mxmodule::listMxDirectory(outer.path()), catalogue);
    const std::string id = catalogue.search().at(0).moduleId;
    EXPECT_THAT(stationOf(id, "<draft>", url).findings, IsEmpty());
}

} // namespace
