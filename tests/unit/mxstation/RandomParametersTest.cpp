// Stations with random values, written in every form, are given the random values of a coupler.
// With RANDOM_STATIONS in the environment as many as it says, otherwise a few for everyday use.

#include "StatedStation.h"

#include <mxstation/ParameterEdit.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>

namespace {

using mxmodule::Parameter;
using mxstation::Plan;
using mxstation::Station;

class RandomParameters : public testing::Test
{
protected:
    RandomParameters()
    {
        std::set<std::string> names;
        for (const auto& text : std::filesystem::directory_iterator(EXAMPLE_TEXTS)) {
            if (text.path().extension() == ".yaml" && text.path().stem() != "MX9999") {
                names.insert(text.path().stem().string() + ".bin");
            }
        }
        for (const std::string& name : names) {
            const auto module = mxmodule::Module::fromFile(EXAMPLE_MODULES "/" + name);
            if (hasRegisters(module)) {
                modules.push_back({name, module.parameters()});
            }
        }
    }

    struct RowModule
    {
        std::string name;
        std::vector<Parameter> parameters;
    };

    static bool hasRegisters(const mxmodule::Module& module)
    {
        try {
            return !module.registers(module.defaultImage()).empty();
        } catch (const mxmodule::Failure&) {
            return false;
        }
    }

    std::uint32_t below(std::size_t count) { return static_cast<std::uint32_t>(random() % count); }

    // An option, or the least or greatest value.
    std::string valueOf(const Parameter& parameter)
    {
        if (parameter.hasOptions) {
            return "#" + parameter.options[below(parameter.options.size())].value;
        }
        return below(2) == 0 ? parameter.minimum : parameter.maximum;
    }

    // "KEY: VALUE" of some of the parameters, in brackets or lines.
    std::vector<std::string> valuesOf(const RowModule& module, std::uint32_t oneOf)
    {
        std::vector<std::string> values;
        for (const Parameter& parameter : module.parameters) {
            const bool isUsable = !parameter.hasOptions || !parameter.options.empty();
            if (isUsable && below(oneOf) == 0) {
                values.push_back("\"" + parameter.callName + "\": '" + valueOf(parameter) + "'");
            }
        }
        return values;
    }

    std::string entryOf(const RowModule& module, std::uint32_t oneOf)
    {
        const std::vector<std::string> values = valuesOf(module, oneOf);
        const bool isFlow = below(2) == 0;
        if (values.empty()) {
            return isFlow ? "- {module: " + module.name + "} # x\n" : "- " + module.name + " # x\n";
        }
        std::string text = isFlow ? "- {module: " + module.name + ", parameters: {"
                                  : "- module: " + module.name + " # y\n  parameters: # z\n";
        for (std::size_t i = 0; i < values.size(); ++i) {
            text += isFlow ? (i == 0 ? "" : ", ") + values[i] : "    " + values[i] + " # v\n";
        }
        return text + (isFlow ? "}}\n" : "");
    }

    std::string rowOf(const std::vector<std::size_t>& row, std::uint32_t oneOf)
    {
        std::string text = "modules:\n";
        for (const std::size_t one : row) {
            text += entryOf(modules[one], oneOf);
        }
        return text;
    }

    std::mt19937 random{18};
    std::vector<RowModule> modules;
};

TEST_F(RandomParameters, BecomeTheFile)
{
    const char* const stated = std::getenv("RANDOM_STATIONS");
    int changed = 0;
    for (int left = stated == nullptr ? 15 : std::atoi(stated); left > 0; --left) {
        std::vector<std::size_t> row;
        for (std::uint32_t i = 1 + below(5); i > 0; --i) {
            row.push_back(below(modules.size()));
        }
        const Station station = statedStation(rowOf(row, 4));
        const Plan plan = mxstation::plan(station);
        const Plan coupler = statedPlan(rowOf(row, 3));
        if (!plan.ok() || !coupler.ok()) {
            continue; // values of parameters that share bits
        }
        std::vector<std::vector<std::uint16_t>> registers;
        for (const auto& module : coupler.modules) {
            registers.push_back(module.registers);
        }
        const std::string text = mxstation::withParameters(station, plan, registers);
        const Station again = statedStation(text);
        const Plan made = mxstation::plan(again);
        ASSERT_TRUE(made.ok()) << text;
        for (std::size_t i = 0; i < made.modules.size(); ++i) {
            EXPECT_EQ(made.modules[i].registers, registers[i]) << text;
        }
        EXPECT_EQ(mxstation::withParameters(again, made, registers), text);
        changed += text == station.source ? 0 : 1;
    }
    EXPECT_GT(changed, 8);
}

} // namespace
