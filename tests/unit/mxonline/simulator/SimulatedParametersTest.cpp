#include "SimulatedCoupler.h"
#include "simulator/RawClient.h"

#include <gtest/gtest.h>

#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

namespace mxonline {

namespace {

using Registers = std::vector<std::uint16_t>;

// Keeps what happened as text.
class NotedEvents : public SimulatorObserver
{
public:
    void happened(const SimulatorEvent& event) override { texts.push_back(event.text()); }

    std::vector<std::string> texts; // read after the answer to the request
};

// The module has 4 registers: 0x0100, 0, 0x0100, 0.
std::string oneModule(const std::string& commit)
{
    return "modbus: {unit: 7, parameters: {address: 0x4000}" + commit +
           "}\nmodules: [{module: MX0302.bin, name: Levels}]\n";
}

TEST(SimulatedParameters, AreActiveAtOnceWithoutCommit)
{
    const SimulatedCoupler coupler(oneModule(""));
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("10 40 01 00 02 04 01 00 02 00"), "10 40 01 00 02");
    EXPECT_EQ(coupler.simulator.parameters(1), (Registers{0x0100, 0x0100, 0x0200, 0}));
    EXPECT_EQ(client.ask("03 40 00 00 04"), "03 08 01 00 01 00 02 00 00 00");
}

TEST(SimulatedParameters, AreStagedUntilTheCommit)
{
    const SimulatedCoupler coupler(oneModule(", commit: {address: 0x2000, value: 5}"));
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("06 40 00 02 00"), "06 40 00 02 00");
    EXPECT_EQ(client.ask("03 40 00 00 01"), "03 02 02 00");
    EXPECT_EQ(coupler.simulator.parameters(1), (Registers{0x0100, 0, 0x0100, 0}));
    EXPECT_EQ(client.ask("06 20 00 00 04"), "86 03"); // another value
    EXPECT_EQ(coupler.simulator.parameters(1), (Registers{0x0100, 0, 0x0100, 0}));
    EXPECT_EQ(client.ask("10 20 00 00 01 02 00 05"), "10 20 00 00 01");
    EXPECT_EQ(coupler.simulator.parameters(1), (Registers{0x0200, 0, 0x0100, 0}));
    EXPECT_EQ(client.ask("03 20 00 00 01"), "03 02 00 00");
}

TEST(SimulatedParameters, AreReadAsActiveIfTheMapSaysSo)
{
    const SimulatedCoupler coupler(oneModule(", commit: {address: 0x2000, reads: active}"));
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("06 40 00 02 00"), "06 40 00 02 00");
    EXPECT_EQ(client.ask("03 40 00 00 01"), "03 02 01 00");
    // Bits are kept of what was written last: 0x0200.
    EXPECT_EQ(client.ask("16 40 00 ff f0 00 01"), "16 40 00 ff f0 00 01");
    EXPECT_EQ(client.ask("06 20 00 00 01"), "06 20 00 00 01");
    EXPECT_EQ(client.ask("03 40 00 00 01"), "03 02 02 01");
}

// Identifiers may be in registers that the parameters leave.
TEST(SimulatedParameters, HaveGapsOfZeroUnlessStrict)
{
    const std::string source = "modbus: {unit: 7, parameters: {address: 0x4000, stride: 8}, "
                               "identity: {address: 0x4006, stride: 8}}\n"
                               "modules: [MX0302.bin, MX0302.bin]\n";
    const SimulatedCoupler coupler(source);
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("03 40 03 00 06"), "03 0c 00 00 00 00 00 00 5a 03 03 02 01 00");
    SimulatorOptions options;
    options.isStrict = true;
    const SimulatedCoupler strict(source, options);
    const RawClient other(strict.target());
    EXPECT_EQ(other.ask("03 40 03 00 02"), "83 02");
    EXPECT_EQ(other.ask("03 40 06 00 03"), "03 06 5a 03 03 02 01 00");
}

TEST(SimulatedParameters, KnowTheirModules)
{
    const SimulatedCoupler coupler(oneModule(""));
    EXPECT_THROW(coupler.simulator.parameters(0), std::out_of_range);
    EXPECT_THROW(coupler.simulator.parameters(2), std::out_of_range);
}

TEST(SimulatedParameters, AreToldByName)
{
    NotedEvents events;
    SimulatorOptions options;
    options.observer = &events;
    const SimulatedCoupler coupler(oneModule(", commit: {address: 0x2000}"), options);
    const RawClient client(coupler.target());
    client.ask("06 40 01 00 10");
    client.ask("06 20 00 00 01");
    client.ask("03 40 00 00 01");
    EXPECT_EQ(events.texts, (std::vector<std::string>{"parameter Levels/AI 1/Zero offset = 0.016 V",
                                                      "parameters committed"}));
}

TEST(SimulatedParameters, OutputsAreToldWhenTheyChange)
{
    NotedEvents events;
    SimulatorOptions options;
    options.observer = &events;
    const SimulatedCoupler coupler(
        "modbus: {unit: 7, parameters: {address: 0x4000}}\n"
        "modules: [{module: MX0204.bin, name: Relays, channels: {Relay 2: {alias: Pump}}}]\n",
        options);
    const RawClient client(coupler.target());
    client.ask("06 00 00 03 00");
    client.ask("06 00 00 03 00");
    client.ask("06 00 00 02 00");
    EXPECT_EQ(events.texts,
              (std::vector<std::string>{"Relays/Relay 1 = 1", "Pump = 1", "Relays/Relay 1 = 0"}));
}

TEST(SimulatedParameters, OfACouplerBecomeThoseOfTheStation)
{
    const SimulatedCoupler coupler(R"(
modbus: {unit: 9, parameters: {address: 1000, stride: 25}, words: little, bytes: little,
         identity: {address: 500}, commit: {address: 9, reads: active}}
modules:
  - {module: MX0304.bin, parameters: {Mains suppression: 60, AI 2/Upper limit: 9 V}}
  - {module: MX0304.bin, parameters: {AI 1: {Upper limit: 1 V, Lower limit: -1 V}}}
)");
    Coupler client(coupler.plan, coupler.target());
    EXPECT_EQ(client.difference().parameterCount(), 4U);
    EXPECT_TRUE(client.apply(client.difference()).isDone());
    EXPECT_EQ(coupler.simulator.parameters(1), coupler.plan.modules[0].registers);
    EXPECT_EQ(coupler.simulator.parameters(2), coupler.plan.modules[1].registers);
}

} // namespace

} // namespace mxonline
