// Allocations fail one after the other while a station is read and planned: std::bad_alloc is
// thrown, nothing stays in memory, and the next call gives the same as before.
#include "AllocationFault.h"

#include <mxstation/Pin.h>
#include <mxstation/StationReport.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

namespace {

// With EVERY_EXAMPLE in the environment each allocation fails; without it fewer, for everyday use.
std::size_t stride()
{
    return std::getenv("EVERY_EXAMPLE") != nullptr ? 1 : 41;
}

std::string planned()
{
    const auto station = mxstation::stationOf(
        "modules:\n"
        "  - {module: MX0304.bin, name: A, parameters: {Mains suppression: 60 Hz}}\n"
        "  - {module: MX0108.bin, channels: {DI 1: {alias: B}}, reserve: {in: 2}}\n"
        "  - {module: MX0304.bin, at: {in: 40}}\n",
        std::string(EXAMPLE_MODULES) + "/station.yaml");
    const auto plan = mxstation::plan(station);
    return mxstation::stationText(plan) + mxstation::pinned(station, plan);
}

// Returns whether there were so many allocations.
bool failOne(std::size_t number, const std::string& expected)
{
    std::string found = expected;
    bool happened = false;
    {
        const testkit::AllocationFault fault(number);
        try {
            found = planned();
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(fault.happened());
        }
        happened = fault.happened();
    }
    EXPECT_EQ(found, expected) << "with a failed allocation " << number;
    return happened;
}

TEST(StationAllocation, endsWithBadAllocAndKeepsNothing)
{
    planned(); // what is made once
    const std::string expected = planned();
    const std::size_t held = testkit::heldBlocks();
    std::size_t failures = 0;
    for (std::size_t number = 1; !HasFailure() && failOne(number, expected); number += stride()) {
        EXPECT_EQ(planned(), expected) << "after allocation " << number;
        EXPECT_EQ(testkit::heldBlocks(), held) << "after allocation " << number;
        ++failures;
    }
    EXPECT_GT(failures, 10U);
}

} // namespace
