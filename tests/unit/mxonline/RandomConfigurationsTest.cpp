// What holds for every configuration: random rows of the example modules with random values, at
// random places of a simulated coupler, are applied, read back and verified. With
// RANDOM_CONFIGURATIONS in the environment as many as it says, otherwise a few for everyday use.

#include "coupler/CouplerFixture.h"

#include <mxonline/Coupler.h>
#include <mxonline/Simulator.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace mxonline {

namespace {

const std::vector<std::string> moduleNames = {
    "MX0104.bin", "MX0116.bin", "MX0132.bin", "MX0204.bin", "MX0208.bin", "MX0222.bin",
    "MX0302.bin", "MX0304.bin", "MX0308.bin", "MX0402.bin", "MX0404.bin", "MX0502.bin",
    "MX0504.bin", "MX0601.bin", "MX0602.bin", "MX0611.bin", "MX0620.bin", "MX0701.bin",
    "MX0702.bin", "MX0801.bin", "MX0803.bin", "MX0901.bin", "MX0911.bin"};

int configurationCount()
{
    const char* const stated = std::getenv("RANDOM_CONFIGURATIONS");
    return stated == nullptr ? 25 : std::atoi(stated);
}

class RandomConfigurations : public testing::Test
{
protected:
    unsigned below(unsigned count) { return static_cast<unsigned>(random() % count); }
    bool chance(unsigned percent) { return below(100) < percent; }

    std::string valueOf(const mxmodule::Parameter& parameter)
    {
        if (parameter.hasOptions) {
            const auto count = static_cast<unsigned>(parameter.options.size());
            return count == 0 ? parameter.stored : "#" + parameter.options[below(count)].value;
        }
        const std::string all[] = {parameter.minimum, parameter.maximum, parameter.digits};
        return all[below(3)];
    }

    // As an entry of a row; some of the values, as far as they can be set together.
    std::string moduleEntry(const std::string& name, unsigned position)
    {
        const auto module = mxmodule::Module::fromFile(std::string(EXAMPLE_MODULES) + "/" + name);
        std::vector<mxmodule::Assignment> assignments;
        std::string values;
        for (const mxmodule::Parameter& parameter : module.parameters()) {
            if (parameter.stored.empty() || !chance(40)) {
                continue;
            }
            mxmodule::Assignment one;
            one.name = "#" + parameter.id;
            one.value = valueOf(parameter);
            assignments.push_back(one);
            if (module.compose(assignments).ok()) {
                values +=
                    (values.empty() ? "" : ", ") + ("\"" + one.name) + "\": \"" + one.value + "\"";
            } else {
                assignments.pop_back();
            }
        }
        const std::string entry = "  - {module: " + name + ", name: m" + std::to_string(position);
        return entry + (values.empty() ? "" : ", parameters: {" + values + "}") + "}\n";
    }

    std::string mapText()
    {
        const char* const orders[] = {"big", "little"};
        std::string map = "modbus:\n  unit: " + std::to_string(1 + below(247));
        map += "\n  inputs: {address: 0}\n  outputs: {address: 2000}";
        map += "\n  parameters: {address: " + std::to_string(10000 + below(1000)) +
               ", stride: " + std::to_string(256 + below(100)) + "}";
        map += std::string("\n  words: ") + orders[below(2)] + "\n  bytes: " + orders[below(2)];
        map += "\n  most_read: " + std::to_string(4 + below(122));
        map += "\n  most_written: " + std::to_string(4 + below(120));
        if (chance(70)) {
            map += "\n  identity: {address: 5000, stride: " + std::to_string(2 + below(9)) + "}";
        }
        if (chance(60)) {
            map += "\n  commit: {address: 9000, value: " + std::to_string(1 + below(65535)) +
                   ", reads: " + (chance(50) ? "staged" : "active") + "}";
        }
        return map + "\n";
    }

    std::string stationText()
    {
        std::string modules;
        for (unsigned i = 0, count = 1 + below(8); i < count; ++i) {
            const auto& name = moduleNames[below(static_cast<unsigned>(moduleNames.size()))];
            modules += moduleEntry(name, i + 1);
        }
        return mapText() + "modules:\n" + modules;
    }

    std::mt19937 random{18};
};

std::vector<std::uint16_t> allActive(const Simulator& simulator, const mxstation::Plan& plan)
{
    std::vector<std::uint16_t> all;
    for (const mxstation::PlannedModule& module : plan.modules) {
        const auto registers = simulator.parameters(module.position);
        all.insert(all.end(), registers.begin(), registers.end());
    }
    return all;
}

std::vector<std::uint16_t> allPlanned(const mxstation::Plan& plan)
{
    std::vector<std::uint16_t> all;
    for (const mxstation::PlannedModule& module : plan.modules) {
        all.insert(all.end(), module.registers.begin(), module.registers.end());
    }
    return all;
}

TEST_F(RandomConfigurations, AreAppliedAndReadBackEqual)
{
    for (int round = 0; round < configurationCount(); ++round) {
        const std::string text = stationText();
        SCOPED_TRACE(text);
        const mxstation::Plan plan = onlinePlan(text);
        ASSERT_TRUE(plan.ok()) << plan.findings.back().text;
        SimulatorOptions options;
        options.isStrict = chance(50);
        const Simulator simulator(plan, listenTargetOf("tcp:127.0.0.1:0"), options);
        Coupler coupler(plan, simulator.address());
        const ApplyReport report = coupler.apply(coupler.difference());
        EXPECT_TRUE(report.isDone()) << report.text();
        EXPECT_TRUE(coupler.difference().isSame());
        EXPECT_EQ(allActive(simulator, plan), allPlanned(plan));
    }
}

} // namespace

} // namespace mxonline
