#include "SimulatedCoupler.h"
#include "simulator/RawClient.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace mxonline {

namespace {

using ImageValues = std::vector<std::uint8_t>;

// Inputs: byte 0 DI 1 to DI 8, bytes 1 and 2 AI 1, bytes 3 and 4 AI 2: input registers 0 to 2.
// Outputs: bits 0 to 3 of byte 0: the high byte of holding register 0x800.
// Parameters: 9 registers from 0x4000 on, 9 from 0x4010 on, 4 from 0x4020 on.
constexpr const char* threeModules = R"(
modbus:
  unit: 7
  outputs: {address: 0x800}
  parameters: {address: 0x4000, stride: 16}
  identity: {address: 0x3000}
modules: [MX0108.bin, MX0204.bin, MX0302.bin]
)";

TEST(Simulator, BeginsWithDefaultsAndImagesOfZero)
{
    const SimulatedCoupler coupler(threeModules);
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("04 00 00 00 03"), "04 06 00 00 00 00 00 00");
    EXPECT_EQ(client.ask("03 08 00 00 01"), "03 02 00 00");
    EXPECT_EQ(client.ask("03 40 10 00 09"),
              "03 12 00 00 00 64 00 00 00 64 00 00 00 64 00 00 00 64 00 00");
    EXPECT_EQ(client.ask("03 30 00 00 06"), "03 0c 5a 01 01 08 5a 02 02 04 5a 03 03 02");
}

TEST(Simulator, ShowsInputsInTheirRegisters)
{
    SimulatedCoupler coupler(threeModules);
    coupler.simulator.setInput("DI 2", "on");
    coupler.simulator.setInput("MX0302/AI 1", "0x1234");
    coupler.simulator.setInput("AI 2", "-2");
    EXPECT_EQ(coupler.simulator.inputs(), (ImageValues{0x02, 0x12, 0x34, 0xFF, 0xFE}));
    EXPECT_EQ(coupler.simulator.value("AI 2").text, "-2");
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("04 00 00 00 03"), "04 06 02 12 34 ff fe 00");
    EXPECT_EQ(client.ask("04 00 01 00 01"), "04 02 34 ff");
}

TEST(Simulator, PutsTheFirstByteIntoTheLowByteIfTheMapSaysSo)
{
    std::string source = threeModules;
    source.replace(source.find("unit: 7"), 7, "unit: 7\n  bytes: little");
    SimulatedCoupler coupler(source);
    coupler.simulator.setInput("DI 2", "1");
    coupler.simulator.setInput("AI 1", "0x1234");
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("04 00 00 00 02"), "04 04 12 02 00 34");
    EXPECT_EQ(client.ask("06 08 00 00 05"), "06 08 00 00 05");
    EXPECT_EQ(coupler.simulator.outputs(), ImageValues{5});
}

// The low byte of the last register is outside an image of an odd size.
TEST(Simulator, TakesOutputsByEveryFunctionThatWrites)
{
    const SimulatedCoupler coupler(threeModules);
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("06 08 00 05 ff"), "06 08 00 05 ff");
    EXPECT_EQ(client.ask("03 08 00 00 01"), "03 02 05 00");
    // Bit 8 as in the value, 0; all others kept.
    EXPECT_EQ(client.ask("16 08 00 fe ff 00 00"), "16 08 00 fe ff 00 00");
    EXPECT_EQ(coupler.simulator.outputs(), ImageValues{4});
    EXPECT_EQ(client.ask("10 08 00 00 01 02 0a 00"), "10 08 00 00 01");
    EXPECT_EQ(coupler.simulator.outputs(), ImageValues{10});
    // Written before it is read.
    EXPECT_EQ(client.ask("17 08 00 00 01 08 00 00 01 02 03 00"), "17 02 03 00");
    EXPECT_EQ(coupler.simulator.outputs(), ImageValues{3});
}

TEST(Simulator, RejectsWhatThereIsNot)
{
    const SimulatedCoupler coupler(threeModules);
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("03 00 00 00 01"), "83 02"); // inputs by the other function
    EXPECT_EQ(client.ask("04 00 00 00 04"), "84 02"); // one too many
    EXPECT_EQ(client.ask("03 40 20 00 05"), "83 02");
    EXPECT_EQ(client.ask("03 ff ff 00 02"), "83 02");       // after the last register
    EXPECT_EQ(client.ask("06 30 00 00 01"), "86 02");       // identity
    EXPECT_EQ(client.ask("06 40 09 00 01"), "86 02");       // between two modules
    EXPECT_EQ(client.ask("16 00 00 00 00 00 01"), "96 02"); // inputs
    EXPECT_EQ(coupler.simulator.counts().exceptions, 7U);
}

TEST(Simulator, WritesAllRegistersOfARequestOrNone)
{
    const SimulatedCoupler coupler(threeModules);
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("10 40 08 00 02 04 00 01 00 02"), "90 02");
    EXPECT_EQ(client.ask("03 40 08 00 01"), "03 02 00 00");
}

TEST(Simulator, RejectsOtherFunctionsAndNumbers)
{
    const SimulatedCoupler coupler(threeModules);
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("01 00 00 00 01"), "81 01");
    EXPECT_EQ(client.ask("2b 0e 01 00"), "ab 01");
    EXPECT_EQ(client.ask("03 40 00 00 00"), "83 03");
    EXPECT_EQ(client.ask("03 40 00 00 7e"), "83 03"); // 126 registers
    EXPECT_EQ(client.ask("10 40 00 00 02 02 00 01"), "90 03");
    EXPECT_EQ(client.ask("03 40 00 00"), "83 03"); // too short
    EXPECT_EQ(client.ask("03 40 00 00 01 00"), "83 03");
    EXPECT_EQ(client.ask("03 40 00 00 01"), "03 02 01 00");
}

TEST(Simulator, TakesAsManyRegistersAsItsMapSays)
{
    std::string source = threeModules;
    source.replace(source.find("unit: 7"), 7, "unit: 7\n  most_read: 4\n  most_written: 5");
    const SimulatedCoupler coupler(source);
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("03 40 00 00 04"), "03 08 01 00 00 00 00 00 00 00");
    EXPECT_EQ(client.ask("03 40 00 00 05"), "83 03");
    EXPECT_EQ(client.ask("10 40 00 00 05 0a 00 01 00 02 00 03 00 04 00 05"), "10 40 00 00 05");
    EXPECT_EQ(client.ask("10 40 00 00 06 0c 00 01 00 02 00 03 00 04 00 05 00 06"), "90 03");
}

TEST(Simulator, DoesNotAnswerForOtherUnits)
{
    const SimulatedCoupler coupler(threeModules);
    const RawClient client(coupler.target());
    client.send("00 01 00 00 00 06 08 06 08 00 05 00");
    EXPECT_EQ(client.ask("03 08 00 00 01"), "03 02 00 00");
    EXPECT_EQ(coupler.simulator.counts().requests, 1U);
}

TEST(Simulator, FindsRequestsInAnyPieces)
{
    const SimulatedCoupler coupler(threeModules);
    const RawClient client(coupler.target());
    client.send("00 01 00 00 00 06 07 03 08 00 00 01 00 02 00 00 00 06 07");
    EXPECT_EQ(client.receive(11), "00 01 00 00 00 05 07 03 02 00 00");
    client.send("03 30 00 00");
    client.send("01");
    EXPECT_EQ(client.receive(11), "00 02 00 00 00 05 07 03 02 5a 01");
}

TEST(Simulator, ClosesConnectionsThatAreNoModbus)
{
    const SimulatedCoupler coupler(threeModules);
    for (const char* const noModbus :
         {"47 45 54 20 2f 0d 0a", "00 01 00 00 00 01 07", "00 01 00 00 00 ff 07"}) {
        const RawClient client(coupler.target());
        client.send(noModbus);
        EXPECT_TRUE(client.isClosed()) << noModbus;
    }
    EXPECT_EQ(coupler.simulator.counts().connections, 3U);
}

TEST(Simulator, ServesSeveralClients)
{
    const SimulatedCoupler coupler(threeModules);
    const RawClient one(coupler.target());
    const RawClient other(coupler.target());
    one.send("00 01 00 00 00"); // the rest does not come
    EXPECT_EQ(other.ask("06 08 00 03 00"), "06 08 00 03 00");
    const RawClient third(coupler.target());
    EXPECT_EQ(third.ask("03 08 00 00 01"), "03 02 03 00");
    EXPECT_EQ(coupler.simulator.counts().registersRead, 1U);
}

TEST(Simulator, KeepsWhatItHasAfterItsEnd)
{
    SimulatedCoupler coupler(threeModules);
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("06 08 00 03 00"), "06 08 00 03 00");
    coupler.simulator.stop();
    EXPECT_TRUE(client.isClosed());
    EXPECT_EQ(coupler.simulator.outputs(), ImageValues{3});
    EXPECT_EQ(coupler.simulator.counts().registersWritten, 1U);
    coupler.simulator.stop();
}

TEST(Simulator, SaysWhyItCannotListen)
{
    const SimulatedCoupler coupler(threeModules);
    const auto listening = [&coupler](const Target& target) {
        return failureOf([&] { const Simulator second(coupler.plan, target); });
    };
    EXPECT_EQ(listening(coupler.target()), "cannot listen: another program listens there");
    EXPECT_EQ(listening(TcpTarget{"192.0.2.1", 0}),
              "cannot listen: the address is not one of this computer");
    EXPECT_EQ(listening(SerialTarget{"/dev/no-such-line"}),
              "the serial line /dev/no-such-line cannot be opened: No such file or directory");
}

TEST(Simulator, NeedsAMap)
{
    EXPECT_EQ(failureOf([] { const SimulatedCoupler coupler("modules: [MX0108.bin]"); }),
              "the station does not state the registers of its coupler (\"modbus:\")");
}

TEST(Simulator, SetsOnlyChannelsOfTheRightDirection)
{
    SimulatedCoupler coupler(threeModules);
    EXPECT_EQ(failureOf([&] { coupler.simulator.setInput("Relay 1", "1"); }),
              "channel \"Relay 1\" of module 2 \"MX0204\" is an output, expected an input");
    coupler.simulator.setOutput("Relay 1", "1");
    EXPECT_EQ(coupler.simulator.outputs(), ImageValues{1});
    EXPECT_NE(failureOf([&] { coupler.simulator.setInput("AI 1", "32768"); }), "no failure");
    EXPECT_EQ(coupler.simulator.inputs(), ImageValues(5));
}

} // namespace

} // namespace mxonline
