// The texts of a difference. The station has two modules; registers 1000 and 1008 of the first one
// differ.
#include <mxonline/CouplerDifference.h>
#include <mxonline/Target.h>

#include "../coupler/CouplerFixture.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>

namespace mxonline {

namespace {

using testing::Test;
using Words = std::vector<std::uint16_t>;

CouplerDifference handMade()
{
    CouplerDifference difference;
    difference.station = "Pump house";
    difference.target = "tcp:127.0.0.1:1502";
    difference.map.unit = 9;
    difference.map.identity = mxstation::ModbusIdentity{};
    difference.modules = {{1, "Levels", "5a030304", Identification::Same, "5a030304", true, {}, {}},
                          {2, "Flows", "5a030302", Identification::Same, "5a030302", true, {}, {}}};
    difference.modules[0].parameters = {
        {"Mains suppression", 1000, {0x3200}, {0x3c00}, "50 Hz", "60 Hz"},
        {"AI 2/Upper limit", 1008, {0x251d, 0x0001}, {0x2328, 0x0000}, "9.501 V", "9 V"}};
    difference.writes = {2, 3, 2};
    return difference;
}

TEST(DifferenceText, ListsModulesAndParameters)
{
    EXPECT_EQ(handMade().text(), R"(Pump house on tcp:127.0.0.1:1502 unit 9

Position  Name    Module    On the coupler
1         Levels  5a030304  identified
2         Flows   5a030302  identified

Module  Parameter          Coupler  Station  Registers                        Coupler words  Station words
Levels  Mains suppression  50 Hz    60 Hz    1000 (0x03e8)                    3200           3c00
Levels  AI 2/Upper limit   9.501 V  9 V      1008 to 1009 (0x03f0 to 0x03f1)  251d 0001      2328 0000

2 parameters of 1 module differ
To write: 2 parameters in 3 registers, 2 requests
Nothing was written.
)");
}

TEST(DifferenceText, OfVerifySaysNothingOfWrites)
{
    const std::string text = handMade().text(DifferenceUse::Verify);
    EXPECT_NE(text.find("2 parameters of 1 module differ\n"), std::string::npos);
    EXPECT_EQ(text.find("rite"), std::string::npos);
}

TEST(DifferenceText, SaysThatThereIsNothingToDo)
{
    CouplerDifference difference = handMade();
    difference.modules[0].parameters.clear();
    difference.writes = {};
    EXPECT_TRUE(difference.isSame());
    EXPECT_NE(difference.text().find("Every parameter is as the station states\nNothing to do\n"
                                     "Nothing was written.\n"),
              std::string::npos);
}

// What was not read is not the same.
TEST(DifferenceText, AModuleThatWasNotReadIsNotTheSame)
{
    CouplerDifference difference = handMade();
    difference.modules[0].parameters.clear();
    difference.modules[1].isRead = false;
    EXPECT_FALSE(difference.isSame());
}

TEST(DifferenceText, SaysThatNoModuleIsIdentified)
{
    CouplerDifference difference = handMade();
    difference.map.identity.reset();
    for (ModuleDifference& module : difference.modules) {
        module.identification = Identification::NotPossible;
        module.foundId.clear();
    }
    const std::string text = difference.text();
    EXPECT_NE(text.find("1         Levels  5a030304  not identified\n"), std::string::npos);
    EXPECT_NE(text.find("Note: No module is identified: \"modbus\" of the station states no "
                        "identity registers of the coupler\n"),
              std::string::npos);
}

TEST(DifferenceText, NamesAnotherModule)
{
    CouplerDifference difference = handMade();
    difference.modules[0].parameters.clear();
    difference.writes = {};
    difference.modules[0].identification = Identification::Other;
    difference.modules[0].foundId = "5a030302";
    difference.modules[1].identification = Identification::Other;
    difference.modules[1].foundId = "ffffffff";
    const std::string text = difference.text();
    EXPECT_NE(text.find("5a030304  another module: 5a030302\n"), std::string::npos);
    EXPECT_NE(text.find("5a030302  no module\n"), std::string::npos);
    EXPECT_NE(text.find("2 modules are not that of the station\n"), std::string::npos);
    EXPECT_EQ(text.find("To write"), std::string::npos);
    EXPECT_EQ(text.find("Nothing to do"), std::string::npos);
}

TEST(DifferenceText, SaysWhatACommitMeans)
{
    CouplerDifference difference = handMade();
    difference.map.commit = mxstation::ModbusCommit{8192, 1, true};
    std::string text = difference.text();
    EXPECT_NE(text.find("2 requests, the commit included\n"), std::string::npos);
    EXPECT_NE(text.find("Note: Parameters are read as last written: they may not be active before "
                        "a commit\nNote: apply writes the commit register 8192 (0x2000) in any "
                        "case\n"),
              std::string::npos);
    EXPECT_EQ(difference.text(DifferenceUse::Verify).find("apply"), std::string::npos);
    difference.map.commit->readsAreStaged = false;
    EXPECT_NE(difference.text(DifferenceUse::Verify)
                  .find("Note: Parameters are read as they are active: what was written without a "
                        "commit is not seen\n"),
              std::string::npos);
    text = difference.text();
    EXPECT_NE(text.find("Note: Parameters are read as they are active: what was written without a "
                        "commit is not seen, so that apply writes all parameters\n"),
              std::string::npos);
}

TEST(DifferenceText, DoesNotClaimParametersThatAreInNoRegister)
{
    CouplerDifference difference = handMade();
    for (ModuleDifference& module : difference.modules) {
        module.parameters.clear();
    }
    EXPECT_NE(difference.text().find("\nEvery parameter is as the station states\n"),
              std::string::npos);
    difference.modules[0].withoutRegisters = {"Label"};
    EXPECT_NE(difference.text().find(
                  "\nEvery parameter that is in a register is as the station states\n"),
              std::string::npos);
}

TEST(DifferenceText, ShowsHostileNamesHarmlessly)
{
    CouplerDifference difference = handMade();
    difference.station = "a\x1b[31mb";
    difference.modules[0].withoutRegisters = {"c\x1b[0m"};
    EXPECT_EQ(difference.text().find('\x1b'), std::string::npos);
    EXPECT_EQ(difference.json().find('\x1b'), std::string::npos);
}

TEST(DifferenceText, JsonHasEveryMember)
{
    CouplerDifference difference = handMade();
    difference.map.commit = mxstation::ModbusCommit{8192, 3, true};
    difference.modules[0].parameters.erase(difference.modules[0].parameters.begin());
    difference.modules[1] = {2,  "Flows", "5a030302", Identification::NotPossible,
                             "", false,   {},         {"Label"}};
    const auto expected = nlohmann::json::parse(R"({
        "schema": {"name": "mxtool.coupler-difference", "version": 1},
        "station": "Pump house",
        "target": "tcp:127.0.0.1:1502",
        "unit": 9,
        "identity": true,
        "commit": {"address": 8192, "value": 3, "reads": "staged"},
        "same": false,
        "differing": 1,
        "writes": {"parameters": 2, "registers": 3, "requests": 2},
        "modules": [
            {"position": 1, "name": "Levels", "module_id": "5a030304", "identification": "same",
             "found_id": "5a030304", "read": true, "without_registers": [],
             "parameters": [
                 {"name": "AI 2/Upper limit", "address": 1008, "found": "9.501 V",
                  "planned": "9 V", "found_registers": [9501, 1],
                  "planned_registers": [9000, 0]}]},
            {"position": 2, "name": "Flows", "module_id": "5a030302",
             "identification": "not possible", "found_id": null, "read": false,
             "without_registers": ["Label"], "parameters": []}]})");
    auto json = nlohmann::json::parse(difference.json());
    EXPECT_FALSE(json["mxtool"].get<std::string>().empty());
    EXPECT_EQ(json["notes"].size(), 3U); // staged reads, the commit in any case, without registers
    json.erase("mxtool");
    json.erase("notes");
    EXPECT_EQ(json, expected);
}

constexpr const char* oneModule = R"(
modbus: {parameters: {address: 1000}MORE}
modules:
  - {module: MX0304.bin, parameters: {Mains suppression: 60, AI 1/Upper limit: 1 V, AI 1/Lower limit: 0 V}}
)";

CouplerDifference comparedWith(const std::string& more)
{
    std::string source = oneModule;
    source.replace(source.find("MORE"), 4, more);
    return compare(onlinePlan(source), targetOf("tcp:127.0.0.1"),
                   CouplerState{{{1, std::nullopt, defaultsOf0304}}});
}

// Registers 1000, and 1002 with 1003, which follow each other. The module has 25 registers.
TEST(NeededWrites, AreThoseOfApply)
{
    NeededWrites writes = comparedWith("").writes;
    EXPECT_EQ((Words{3, 3, 2}), (Words{static_cast<std::uint16_t>(writes.parameters),
                                       static_cast<std::uint16_t>(writes.registers),
                                       static_cast<std::uint16_t>(writes.requests)}));
    writes = comparedWith(", commit: {address: 5}").writes;
    EXPECT_EQ(writes.parameters, 3U);
    EXPECT_EQ(writes.registers, 4U);
    EXPECT_EQ(writes.requests, 3U);
    writes = comparedWith(", commit: {address: 5, reads: active}, most_written: 20").writes;
    EXPECT_EQ(writes.parameters, 25U);
    EXPECT_EQ(writes.registers, 26U);
    EXPECT_EQ(writes.requests, 3U);
}

} // namespace

} // namespace mxonline
