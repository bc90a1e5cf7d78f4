#include "coupler/CouplerFixture.h"
#include "simulator/RawClient.h"

#include <mxonline/Simulator.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace mxonline {

namespace {

// The master of a pseudo terminal: what the simulator has at the other end of its line.
int openMaster()
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        throw std::runtime_error("no pseudo terminal");
    }
    return master;
}

class SerialSimulator : public testing::Test
{
protected:
    const mxstation::Plan plan = onlinePlan("modbus: {unit: 7, parameters: {address: 0x4000}}\n"
                                            "modules: [MX0302.bin]\n");
    const int master = openMaster();
    const RawClient client{master};
    Simulator simulator{plan, SerialTarget{ptsname(master), 19200, 'N', 1}};
};

// Checksums: CRC-16 of the bytes before, its low byte first.
TEST_F(SerialSimulator, AnswersFrames)
{
    client.send("07 03 40 00 00 01 91 ac");
    EXPECT_EQ(client.receive(7), "07 03 02 01 00 31 d4");
}

TEST_F(SerialSimulator, PassesOverOtherUnitsAndNoise)
{
    client.send("08 03 40 00 00 01 00 00 ff ff 07 03 40 00 00 01 91 ac");
    EXPECT_EQ(client.receive(7), "07 03 02 01 00 31 d4");
}

TEST_F(SerialSimulator, DoesNotAnswerAWrongChecksum)
{
    client.send("07 03 40 00 00 01 91 ad");
    EXPECT_EQ(client.receive(1, 100), "");
}

TEST_F(SerialSimulator, AnswersUnknownFunctions)
{
    client.send("07 2b 0e 01 00 f8 77");
    EXPECT_EQ(client.receive(5), "07 ab 01 7e f1");
}

TEST_F(SerialSimulator, KnowsItsLine)
{
    EXPECT_EQ(targetText(simulator.address()),
              "rtu:" + std::string(ptsname(master)) + ",19200,N,1");
}

TEST(SerialFault, IsAWrongChecksum)
{
    const mxstation::Plan plan = onlinePlan("modbus: {unit: 7, parameters: {address: 0x4000}}\n"
                                            "modules: [MX0302.bin]\n");
    const int master = openMaster();
    const RawClient client(master);
    const SerialTarget target{ptsname(master), 19200, 'N', 1};
    SimulatorOptions options;
    options.faults = {simulatedFaultOf("checksum"), simulatedFaultOf("unit,after=1")};
    const Simulator simulator(plan, target, options);
    client.send("07 03 40 00 00 01 91 ac");
    EXPECT_EQ(client.receive(7), "07 03 02 01 00 31 d5");
    client.send("07 03 40 00 00 01 91 ac");
    EXPECT_EQ(client.receive(7), "08 03 02 01 00 65 d6");
    options.faults = {simulatedFaultOf("close")};
    EXPECT_EQ(failureOf([&] { const Simulator other(plan, target, options); }),
              "a serial line has no connection");
}

} // namespace

} // namespace mxonline
