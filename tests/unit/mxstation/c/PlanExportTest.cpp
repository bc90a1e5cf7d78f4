// The C interface: what is made of a plan. Each function gives what the operation in C++ gives.
#include "StationHandles.h"

#include "../StatedStation.h"

#include <gmock/gmock.h>
#include <mxmodule/c/CallFromC.h>
#include <mxstation/ChannelExport.h>
#include <mxstation/Datasheet.h>
#include <mxstation/Declarations.h>
#include <mxstation/ParameterExport.h>
#include <mxstation/StationDiff.h>
#include <mxstation/StationPicture.h>

#include <functional>

namespace {

using testing::HasSubstr;

using FilesFromC = FromC<mxstation_files, mxstation_files_free>;
using ComparisonFromC = FromC<mxstation_comparison, mxstation_comparison_free>;
using ExportFromC = std::function<mxmodule_bytes*(const mxstation_plan*, mxmodule_error**)>;

// The words of the first module are at odd bytes, which units of their own size cannot state.
const char* const exportedRow = R"(station: Dosing
modules:
  - {module: MX0304.bin, name: Levels, at: {in: 1}}
  - {module: MX0208.bin, name: Valves, parameters: {Behaviour on bus fault: Hold last value}}
  - MX0003.bin
)";

const auto addressStyleOf = [](int number) { return static_cast<mxstation_address_style>(number); };
const auto variableScopeOf = [](int number) {
    return static_cast<mxstation_variable_scope>(number);
};
const auto fieldbusNumber = [](int number) { return static_cast<mxmodule_fieldbus>(number); };

ExportFromC declaredAs(int address, int scope)
{
    return [=](auto* plan, auto** error) {
        return mxstation_declarations(plan, addressStyleOf(address), variableScopeOf(scope),
                                      nullptr, error);
    };
}

ExportFromC parametersOn(int bus)
{
    return [=](auto* plan, auto** error) {
        return mxstation_parameters_json(plan, fieldbusNumber(bus), error);
    };
}

ExportFromC separatedBy(char separator)
{
    return
        [=](auto* plan, auto** error) { return mxstation_channels_csv(plan, separator, 1, error); };
}

std::string exportedFromC(const ExportFromC& function)
{
    return contentOf(function(planFromC(exportedRow).get(), nullptr));
}

TEST(PlanExportFromC, IsThatOfCpp)
{
    const mxstation::Plan plan = statedPlan(exportedRow);
    EXPECT_EQ(exportedFromC(mxstation_channels_json), channelsJson(plan));
    EXPECT_EQ(exportedFromC(mxstation_channels_text), channelsText(plan));
    EXPECT_EQ(exportedFromC(separatedBy(';')), channelsCsv(plan, {';', true}));
    EXPECT_EQ(exportedFromC(mxstation_svg), stationSvg(plan));
    EXPECT_EQ(exportedFromC(mxstation_datasheet), datasheet(plan));
}

TEST(PlanExportFromC, HasTheParametersOnEachFieldbus)
{
    const mxstation::Plan plan = statedPlan(exportedRow);
    EXPECT_EQ(exportedFromC(parametersOn(MXMODULE_RAW)),
              parametersJson(plan, mxmodule::Fieldbus::Raw));
    EXPECT_EQ(exportedFromC(parametersOn(MXMODULE_MODBUS)),
              parametersJson(plan, mxmodule::Fieldbus::Modbus));
    EXPECT_EQ(exportedFromC([](auto* one, auto** error) {
                  return mxstation_parameters_text(one, MXMODULE_MODBUS, error);
              }),
              parametersText(plan, mxmodule::Fieldbus::Modbus));
}

TEST(PlanExportFromC, DeclaresInEachWay)
{
    using mxstation::AddressStyle;
    using mxstation::VariableScope;
    const mxstation::Plan plan = statedPlan(exportedRow);
    EXPECT_EQ(exportedFromC(declaredAs(MXSTATION_BYTE, MXSTATION_GLOBAL)), declarations(plan).text);
    EXPECT_EQ(exportedFromC(declaredAs(MXSTATION_INDEX, MXSTATION_GLOBAL)),
              declarations(plan, {AddressStyle::Index, VariableScope::Global}).text);
    EXPECT_EQ(exportedFromC(declaredAs(MXSTATION_SEPARATE, MXSTATION_PROGRAM)),
              declarations(plan, {AddressStyle::Separate, VariableScope::Program}).text);
    EXPECT_EQ(exportedFromC([](auto* one, auto** error) {
                  return mxstation_plcopen(one, MXSTATION_SEPARATE, MXSTATION_PROGRAM, nullptr,
                                           error);
              }),
              plcopenXml(plan, {AddressStyle::Separate, VariableScope::Program}).text);
    EXPECT_EQ(exportedFromC(
                  [](auto* one, auto** error) { return mxstation_c_header(one, nullptr, error); }),
              cHeader(plan).text);
}

// Of the four words, which begin at byte 1.
TEST(PlanExportFromC, TellsWhatIsNotDeclared)
{
    const PlanFromC plan = planFromC(exportedRow);
    mxmodule_bytes* findings = nullptr;
    const FromC<mxmodule_bytes, mxmodule_bytes_free> text(
        mxstation_declarations(plan.get(), MXSTATION_INDEX, MXSTATION_GLOBAL, &findings, nullptr));
    const auto expected = declarations(statedPlan(exportedRow), {mxstation::AddressStyle::Index,
                                                                 mxstation::VariableScope::Global});
    EXPECT_EQ(expected.findings.size(), 4U);
    EXPECT_EQ(contentOf(findings), mxmodule::findingsJson(expected.findings));
}

TEST(PlanExportFromC, HasNoFindingsAfterAFailure)
{
    const FromC<mxmodule_bytes, mxmodule_bytes_free> before(
        mxstation_svg(planFromC(exportedRow).get(), nullptr));
    mxmodule_bytes* findings = before.get();
    EXPECT_EQ(mxstation_c_header(nullptr, &findings, nullptr), nullptr);
    EXPECT_EQ(findings, nullptr);
}

TEST(PlanExportFromC, HasAFileForEachModule)
{
    PlanFromC plan = planFromC(exportedRow);
    const FilesFromC files(mxstation_parameter_files(plan.get(), MXMODULE_RAW, nullptr));
    plan.reset();
    const auto expected = parameterFiles(statedPlan(exportedRow), mxmodule::Fieldbus::Raw);
    ASSERT_EQ(mxstation_files_count(files.get()), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        std::size_t size = 0;
        const unsigned char* data = mxstation_files_data(files.get(), i, &size);
        ASSERT_NE(data, nullptr); // also of the module without parameters
        EXPECT_EQ(mxstation_files_name(files.get(), i), expected[i].name);
        EXPECT_EQ(std::vector<char>(data, data + size), expected[i].bytes);
    }
    EXPECT_STREQ(mxstation_files_name(files.get(), 1), "2-Valves.bin");
}

TEST(PlanExportFromC, HasNoFileAfterTheLast)
{
    const FilesFromC files(
        mxstation_parameter_files(planFromC(exportedRow).get(), MXMODULE_RAW, nullptr));
    std::size_t size = 7;
    EXPECT_EQ(mxstation_files_name(files.get(), 4), nullptr);
    EXPECT_EQ(mxstation_files_data(files.get(), 4, &size), nullptr);
    EXPECT_EQ(size, 0U);
    EXPECT_NE(mxstation_files_data(files.get(), 3, nullptr), nullptr);
    EXPECT_EQ(mxstation_files_count(nullptr), 0U);
    EXPECT_EQ(mxstation_files_name(nullptr, 0), nullptr);
    EXPECT_EQ(mxstation_files_data(nullptr, 0, nullptr), nullptr);
    mxstation_files_free(nullptr);
}

TEST(PlanExportFromC, TakesNoOtherNumbers)
{
    const PlanFromC plan = planFromC(exportedRow);
    const auto errorOfExport = [&plan](const ExportFromC& function) {
        return errorOf([&](auto error) { return function(plan.get(), error); });
    };
    EXPECT_EQ(errorOfExport(declaredAs(3, 0)), "5 Found the address style 3, expected 0 to 2");
    EXPECT_EQ(errorOfExport(declaredAs(0, -1)), "5 Found the scope -1, expected 0 or 1");
    EXPECT_EQ(errorOfExport(parametersOn(9)), "5 Found the fieldbus 9, expected 0 or 1");
    EXPECT_EQ(errorOfExport(separatedBy('.')),
              "5 Found the separator of number 46, expected ',', ';' or a tab");
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxstation_parameter_files(plan.get(), fieldbusNumber(2), error);
              }),
              "5 Found the fieldbus 2, expected 0 or 1");
}

TEST(PlanExportFromC, IsOfNoNullPointer)
{
    const std::vector<ExportFromC> functions = {
        mxstation_channels_json,
        mxstation_channels_text,
        separatedBy(','),
        mxstation_svg,
        mxstation_datasheet,
        declaredAs(0, 0),
        parametersOn(0),
        [](auto* plan, auto** error) {
            return mxstation_plcopen(plan, MXSTATION_BYTE, MXSTATION_GLOBAL, nullptr, error);
        },
        [](auto* plan, auto** error) { return mxstation_c_header(plan, nullptr, error); },
        [](auto* plan, auto** error) {
            return mxstation_parameters_text(plan, MXMODULE_RAW, error);
        }};
    for (const ExportFromC& function : functions) {
        EXPECT_EQ(errorOf([&](auto error) { return function(nullptr, error); }),
                  "5 Found a null pointer, expected a plan of a station");
    }
    EXPECT_EQ(
        errorOf([](auto error) { return mxstation_parameter_files(nullptr, MXMODULE_RAW, error); }),
        "5 Found a null pointer, expected a plan of a station");
}

// The reserved byte moves the inputs of Valves from byte 9 to 10.
TEST(StationComparisonFromC, IsThatOfCpp)
{
    const std::string moved = std::string(exportedRow)
                                  .replace(std::string(exportedRow).find("  - {module: MX0208"), 0,
                                           "  - reserve: {in: 1}\n");
    PlanFromC a = planFromC(exportedRow);
    PlanFromC b = planFromC(moved);
    const ComparisonFromC comparison(mxstation_compare(a.get(), b.get(), nullptr));
    const ComparisonFromC same(mxstation_compare(a.get(), a.get(), nullptr));
    a.reset();
    b.reset();
    const auto expected = compare(statedPlan(exportedRow), statedPlan(moved));
    EXPECT_EQ(contentOf(mxstation_comparison_json(comparison.get(), nullptr)), expected.json());
    EXPECT_EQ(contentOf(mxstation_comparison_text(comparison.get(), nullptr)), expected.text());
    EXPECT_EQ(mxstation_comparison_is_same(comparison.get()), 0);
    EXPECT_EQ(mxstation_comparison_same_values(comparison.get()), 0);
    EXPECT_EQ(mxstation_comparison_is_same(same.get()), 1);
    EXPECT_EQ(mxstation_comparison_same_values(same.get()), 1);
}

TEST(StationComparisonFromC, IsOfNoNullPointer)
{
    const PlanFromC plan = planFromC(exportedRow);
    EXPECT_EQ(errorOf([&](auto error) { return mxstation_compare(plan.get(), nullptr, error); }),
              "5 Found a null pointer, expected a plan of a station");
    EXPECT_EQ(errorOf([&](auto error) { return mxstation_compare(nullptr, plan.get(), error); }),
              "5 Found a null pointer, expected a plan of a station");
    EXPECT_EQ(errorOf([](auto error) { return mxstation_comparison_json(nullptr, error); }),
              "5 Found a null pointer, expected a comparison");
    EXPECT_EQ(errorOf([](auto error) { return mxstation_comparison_text(nullptr, error); }),
              "5 Found a null pointer, expected a comparison");
    EXPECT_EQ(mxstation_comparison_is_same(nullptr), 0);
    EXPECT_EQ(mxstation_comparison_same_values(nullptr), 0);
    mxstation_comparison_free(nullptr);
}

} // namespace
