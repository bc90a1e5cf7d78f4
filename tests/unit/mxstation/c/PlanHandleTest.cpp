// The C interface: plans and the modules at their positions. MX0304 has 8 bytes of inputs; MX0208 a
// byte of inputs and one of outputs, and two parameter bytes, 00 and AA (hexadecimal).
#include "StationHandles.h"

#include "../StatedStation.h"

#include <gmock/gmock.h>
#include <mxmodule/c/CallFromC.h>
#include <mxstation/StationCheck.h>
#include <mxstation/StationReport.h>
#include <mxstation/c/PlannedStation.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const char* const rowFromC = R"(station: Dosing
modules:
  - {module: MX0304.bin, name: Levels}
  - reserve: {in: 4}
  - {module: MX0208.bin, name: Valves, parameters: {Behaviour on bus fault: Hold last value}}
  - MX0003.bin
)";

TEST(PlanFromC, IsThatOfTheStation)
{
    const mxstation::Plan expected = statedPlan(rowFromC);
    const PlanFromC plan = planFromC(rowFromC);
    std::size_t count = 0;
    EXPECT_EQ(mxstation_plan_ok(plan.get()), 1);
    EXPECT_EQ(mxstation_module_count(plan.get(), &count, nullptr), 1);
    EXPECT_EQ(count, 3U);
    EXPECT_EQ(contentOf(mxstation_plan_findings(plan.get(), nullptr)),
              mxmodule::findingsJson(expected.findings));
    EXPECT_EQ(contentOf(mxstation_check_json(plan.get(), nullptr)), checkOf(expected).json());
    EXPECT_EQ(contentOf(mxstation_plan_json(plan.get(), nullptr)), stationJson(expected));
    EXPECT_EQ(contentOf(mxstation_plan_text(plan.get(), nullptr)), stationText(expected));
}

// The inputs of Valves are at byte 8 + 4. The plan goes before its module.
TEST(PlanFromC, HasModulesAtTheirPlaces)
{
    PlanFromC plan = planFromC(rowFromC);
    const FromC<mxmodule_module, mxmodule_free> valves(mxstation_module_at(plan.get(), 2, nullptr));
    plan.reset();
    EXPECT_EQ(contentOf(mxmodule_module_id(valves.get(), nullptr)), "5a020208");
    const std::string channels = contentOf(mxmodule_channels_text(valves.get(), nullptr));
    EXPECT_THAT(channels, HasSubstr("IX12_0"));
    EXPECT_THAT(channels, HasSubstr("QX0_7"));
}

// On Modbus each parameter byte is the high byte of a register; "Hold last value" is option 1.
TEST(PlanFromC, HasTheParametersOfTheStation)
{
    const PlanFromC plan = planFromC(rowFromC);
    EXPECT_EQ(contentOf(mxstation_module_image(plan.get(), 2, nullptr)), "\x01\xAA");
    std::size_t count = 0;
    const std::uint16_t* registers = mxstation_module_registers(plan.get(), 2, &count, nullptr);
    EXPECT_THAT(std::vector<std::uint16_t>(registers, registers + count),
                testing::ContainerEq(statedPlan(rowFromC).modules[1].registers));
    EXPECT_EQ(registers[0], 0x0100);
}

TEST(PlanFromC, HasAResultForAModuleWithoutParameters)
{
    const PlanFromC plan = planFromC(rowFromC);
    std::size_t count = 7;
    EXPECT_EQ(contentOf(mxstation_module_image(plan.get(), 3, nullptr)), "");
    EXPECT_NE(mxstation_module_registers(plan.get(), 3, &count, nullptr), nullptr);
    EXPECT_EQ(count, 0U);
}

TEST(PlanFromC, HasNoModuleOutsideTheRow)
{
    const PlanFromC plan = planFromC(rowFromC);
    EXPECT_EQ(errorOf([&](auto error) { return mxstation_module_at(plan.get(), 4, error); }),
              "1 found position 4 of a module, expected 1 to 3");
    EXPECT_EQ(errorOf([&](auto error) { return mxstation_module_image(plan.get(), 0, error); }),
              "1 found position 0 of a module, expected 1 to 3");
    std::size_t count = 0;
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxstation_module_registers(plan.get(), 4, &count, error);
              }),
              "1 found position 4 of a module, expected 1 to 3");
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxstation_module_at(planFromC("modules: [reserve: {in: 4}]").get(), 1,
                                             error);
              }),
              "1 found position 1 of a module, the row has no module");
}

TEST(PlanFromC, WithErrorsHasFindingsAlone)
{
    const char* const source = "modules:\n  - MX0304.bin\n  - {module: MX0304.bin, at: {in: 4}}\n";
    const PlanFromC plan = planFromC(source);
    EXPECT_EQ(mxstation_plan_ok(plan.get()), 0);
    const mxstation::Plan expected = statedPlan(source);
    EXPECT_EQ(contentOf(mxstation_plan_findings(plan.get(), nullptr)),
              mxmodule::findingsJson(expected.findings));
    EXPECT_EQ(contentOf(mxstation_check_json(plan.get(), nullptr)), checkOf(expected).json());
    const std::string reason = "2 " + expected.findings.back().text;
    std::size_t count = 0;
    EXPECT_EQ(
        errorOf([&](auto error) { return mxstation_module_count(plan.get(), &count, error); }),
        reason);
    EXPECT_EQ(errorOf([&](auto error) { return mxstation_module_at(plan.get(), 1, error); }),
              reason);
    EXPECT_EQ(errorOf([&](auto error) { return mxstation_plan_json(plan.get(), error); }), reason);
}

TEST(PlanFromC, IsSharedWithOtherLibraries)
{
    PlanFromC plan = planFromC(rowFromC);
    const auto planned = mxstation::plannedStationOf(plan.get());
    plan.reset();
    EXPECT_EQ(planned->station.name, "Dosing");
    EXPECT_EQ(planned->plan.modules.size(), 3U);
}

TEST(PlanFromC, IsNoNullPointer)
{
    const std::string expected = "5 Found a null pointer, expected a plan of a station";
    std::size_t count = 0;
    EXPECT_EQ(mxstation_plan_ok(nullptr), 0);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_plan_findings(nullptr, error); }),
              expected);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_check_json(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_plan_json(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_plan_text(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([&](auto error) { return mxstation_module_count(nullptr, &count, error); }),
              expected);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_module_at(nullptr, 1, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_module_image(nullptr, 1, error); }),
              expected);
    EXPECT_EQ(
        errorOf([&](auto error) { return mxstation_module_registers(nullptr, 1, &count, error); }),
        expected);
    mxstation_plan_free(nullptr);
}

TEST(PlanFromC, NeedsAPlaceForNumbers)
{
    const PlanFromC plan = planFromC(rowFromC);
    const std::string expected = "5 Found a null pointer, expected a place for the number";
    EXPECT_EQ(
        errorOf([&](auto error) { return mxstation_module_count(plan.get(), nullptr, error); }),
        expected);
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxstation_module_registers(plan.get(), 2, nullptr, error);
              }),
              expected);
}

} // namespace
