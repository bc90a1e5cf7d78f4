#include "SimulatedCoupler.h"

#include <fmt/format.h>

#include <gtest/gtest.h>

#include <string>

// Requests to a row of 64 modules, against the fewest that the protocol allows. An MX0304 has 25
// parameter registers, each a value of its own; a request reads 125 at most.

namespace mxonline {

namespace {

std::string rowOf64(unsigned stride, const std::string& more, const std::string& last = "")
{
    std::string source = fmt::format(
        "modbus: {{parameters: {{address: 0, stride: {}}}{}}}\nmodules:\n", stride, more);
    for (int i = 1; i <= 63; ++i) {
        source += "  - MX0304.bin\n";
    }
    return source + "  - {module: MX0304.bin, parameters: {" + last + "}}\n";
}

Traffic trafficOfReading(const std::string& source)
{
    const SimulatedCoupler simulated(source);
    Coupler coupler(simulated.plan, simulated.target());
    EXPECT_TRUE(coupler.difference().isSame());
    return coupler.traffic();
}

// 1,600 registers without a gap: twelve requests of 125 and one of 100.
TEST(RowOf64, ModulesSideBySideAreReadTogether)
{
    const Traffic traffic = trafficOfReading(rowOf64(25, ""));
    EXPECT_EQ(traffic.requests, 13U);
    EXPECT_EQ(traffic.registersRead, 1600U);
}

// 25 registers, a gap of 75, 25 registers: 125. Two modules are one request.
TEST(RowOf64, GapsAreReadOverWhereThatSavesRequests)
{
    const Traffic traffic = trafficOfReading(rowOf64(100, ""));
    EXPECT_EQ(traffic.requests, 32U);
    EXPECT_EQ(traffic.registersRead, 32U * 125);
}

// The first register of the next module is the 129th: a request of each module has no gap.
TEST(RowOf64, GapsThatSaveNothingAreNotRead)
{
    const Traffic traffic = trafficOfReading(rowOf64(128, ""));
    EXPECT_EQ(traffic.requests, 64U);
    EXPECT_EQ(traffic.registersRead, 1600U);
}

// 62 identifiers of two registers are 124, the next one is not divided: 2 requests. Reading before
// and after: 2 * (2 + 13). One register is written, and the commit.
TEST(RowOf64, OneChangedValueWritesOneModule)
{
    const SimulatedCoupler simulated(rowOf64(
        25, ", identity: {address: 2000}, commit: {address: 3000}", "Mains suppression: 60"));
    Coupler coupler(simulated.plan, simulated.target());
    const CouplerDifference difference = coupler.difference();
    EXPECT_EQ(coupler.traffic().requests, 15U);
    const ApplyReport report = coupler.apply(difference);
    EXPECT_TRUE(report.isDone());
    EXPECT_EQ(coupler.traffic().requests, 15U + 2 * 15 + 2);
    EXPECT_EQ(coupler.traffic().registersWritten, 2U);
    EXPECT_EQ(report.modules.back().parameters.size(), 1U);
    EXPECT_EQ(simulated.simulator.parameters(64).front(), 0x3C00);
}

} // namespace

} // namespace mxonline
