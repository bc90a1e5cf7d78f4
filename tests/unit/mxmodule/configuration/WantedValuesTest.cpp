#include <mxmodule/WantedValues.h>

#include "../ShownFinding.h"
#include "TestModule.h"

#include <gmock/gmock.h>

namespace {

using mxmodule::readValues;
using mxmodule::ValueCheck;
using mxmodule::WantedValues;
using testing::ElementsAre;

class Wanted : public testing::Test
{
protected:
    void addFile(const std::string& content, const std::string& file)
    {
        wanted.add(readValues(content, file), file);
    }

    std::vector<std::string> lines() const
    {
        std::vector<std::string> all;
        for (const auto& one : wanted.assignments()) {
            all.push_back(one.name + "=" + one.value);
        }
        return all;
    }

    TestModule module;
    mxmodule::DeviceReport device = module.report();
    WantedValues wanted{TestModule::module()};
};

TEST_F(Wanted, laterFilesGoBeforeEarlierOnes)
{
    addFile("Filter: slow\nAI 1/Level: 11\nX/Y: 1\n", "a.yaml");
    addFile("module/Filter: off\nAI 1: {Level: 12}\n", "b.yaml");
    EXPECT_THAT(lines(), ElementsAre("X/Y=1", "module/Filter=off", "AI 1/Level=12"));
}

TEST_F(Wanted, theCallGoesBeforeFiles)
{
    addFile("Filter: slow\nAI 1/Level: 11\n", "a.yaml");
    wanted.add({"Filter=off"}, "--set", ValueCheck::Full);
    EXPECT_THAT(lines(), ElementsAre("AI 1/Level=11", "Filter=off"));
}

TEST_F(Wanted, whatAFileSaysTwiceStaysForTheRefusal)
{
    addFile("X/Y: 1\n'#5': 2\n", "a.yaml");
    EXPECT_EQ(lines().size(), 2U);
}

// Another version of a module may number its parameters differently.
TEST_F(Wanted, theNameOfARowIsThatOfItsIdentifier)
{
    const std::string filter = device.parameters[0].id; // called "Filter"
    addFile("id,name,value\n" + filter + ",Filter,5\n", "a.csv");
    EXPECT_THAT(lines(), ElementsAre("#" + filter + "=#5"));
    try {
        addFile("id,name,value\n" + filter + ",Level,5\n", "b.csv");
        FAIL() << "nothing was thrown";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(shown(failure.reason()),
                  "b.csv:2: error: Found \"Level\" as the name of parameter #" + filter +
                      ", expected \"Filter\": the table is of another version of the module\n"
                      "hint: without the column id rows are matched by name\n");
    }
}

TEST_F(Wanted, theImageIsThatOfTheLastFileWithOne)
{
    const std::string begin = R"({"schema": {"name": "mxtool.config", "version": 1},
                                  "image": ")";
    EXPECT_EQ(wanted.image(), std::nullopt);
    addFile(begin + R"(01", "values": {}})", "a.json");
    addFile(begin + R"(02", "values": {}})", "b.json");
    addFile("Filter: off", "c.yaml");
    EXPECT_EQ(wanted.image(), std::vector<char>{2});
    EXPECT_EQ(wanted.imageFile(), "b.json");
}

TEST_F(Wanted, numbersOfATableWithIdentifiersAreThoseOfOptions)
{
    // Option "5" of the filter has the number 2, the number 5 is "slow".
    const std::string filter = device.parameters[0].id;
    const std::string level = device.parameters[1].id;
    addFile("id,value\n" + filter + ",5\n" + level + ",12\n", "a.csv");
    EXPECT_THAT(lines(), ElementsAre("#" + filter + "=#5", "#" + level + "=12"));
    addFile("id,value\n" + filter + ",off\n", "b.csv");
    EXPECT_THAT(lines(), ElementsAre("#" + level + "=12", "#" + filter + "=off"));
    addFile("name,value\nFilter,5\n", "c.csv");
    EXPECT_THAT(lines(), ElementsAre("#" + level + "=12", "Filter=5"));
}

TEST_F(Wanted, valuesOfAnotherModuleTypeAreRefused)
{
    try {
        addFile("id,value,device_type_id\n1,2,kv38.99\n", "a.csv");
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Input);
        EXPECT_EQ(shown(failure.reason()),
                  "a.csv: error: The values are those of a kv38.99, expected a " +
                      device.deviceTypeId + " as MX1.bin is\n");
    }
}

TEST_F(Wanted, wordsThatCannotBeSplitAreRefusedWithTheirPlace)
{
    try {
        wanted.add({"Filter"}, "--set", ValueCheck::Full);
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Request);
        EXPECT_EQ(failure.reason().place, "--set Filter");
    }
}

} // namespace
