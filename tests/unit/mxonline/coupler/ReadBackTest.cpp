#include "coupler/CouplerFixture.h"
#include "coupler/RegisterPeer.h"

#include <mxonline/ReadBack.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace mxonline {

namespace {

constexpr const char* oneModule = R"(# Levels
modbus: {parameters: {address: 1000}, identity: {address: 500}}
modules:
  - module: MX0304.bin
    name: Levels
    parameters:
      Mains suppression: 60 # Boston
)";

mxstation::Station stationOf(const std::string& source)
{
    return mxstation::stationOf(source, std::string(EXAMPLE_MODULES) + "/station.yaml");
}

std::string readInto(const std::string& source, RegisterPeer& peer)
{
    const mxstation::Station station = stationOf(source);
    const mxstation::Plan plan = onlinePlan(source);
    Coupler coupler(plan, peer.target());
    return withParametersOf(station, plan, peer.target(), coupler.read());
}

void putModule(RegisterPeer& peer)
{
    peer.put(500, {0x5A03, 0x0304});
    peer.put(1000, defaultsOf0304);
}

std::vector<mxmodule::Finding> findingsOf(const std::string& source, RegisterPeer& peer)
{
    try {
        static_cast<void>(readInto(source, peer));
    } catch (const mxmodule::Failure& failure) {
        return failure.findings();
    }
    return {};
}

// 9000 is 9 V. The file states the value of the coupler for what it states already.
TEST(ReadBack, WhatTheCouplerHasBecomesTheFile)
{
    RegisterPeer peer;
    putModule(peer);
    peer.put(1008, {9000});
    EXPECT_EQ(readInto(oneModule, peer), R"(# Levels
modbus: {parameters: {address: 1000}, identity: {address: 500}}
modules:
  - module: MX0304.bin
    name: Levels
    parameters:
      Mains suppression: 50 Hz # Boston
      AI 2: {Upper limit: 9 V}
)");
}

TEST(ReadBack, NothingChangesWhereNothingDiffers)
{
    RegisterPeer peer;
    putModule(peer);
    peer.put(1000, {0x3C00});
    EXPECT_EQ(readInto(oneModule, peer), oneModule);
}

// 61 Hz is above the range; option 7 of the signal ranges does not exist.
TEST(ReadBack, NamesEveryValueThatAStationCannotState)
{
    RegisterPeer peer;
    putModule(peer);
    peer.put(1000, {0x3D00, 0x0700});
    const auto findings = findingsOf(oneModule, peer);
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].origin, mxmodule::Origin::Output);
    EXPECT_EQ(
        findings[0].text.find("module 1 \"Levels\", parameter \"Mains suppression\": register "
                              "1000 (0x03e8): the value 61"),
        0U)
        << findings[0].text;
    EXPECT_EQ(
        findings[1].text.find("module 1 \"Levels\", parameter \"AI 1/Signal range\": register "
                              "1001 (0x03e9): "),
        0U)
        << findings[1].text;
    EXPECT_EQ(findings[1].hint,
              "a station cannot state it: give the module a value that it accepts, "
              "or apply that of the station");
}

// The preset of the counter is in registers 107 to 108 and again in 119 to 120; 5 is a value of it.
TEST(ReadBack, RejectsPlacesOfAParameterThatAreNotEqual)
{
    constexpr const char* counter = R"(
modbus: {parameters: {address: 100}}
modules: [{module: MX0602.bin, name: Bottles}]
)";
    RegisterPeer peer;
    peer.put(100, onlinePlan(counter).modules[0].registers);
    peer.put(107, {0, 5});
    const auto findings = findingsOf(counter, peer);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].text,
              "module 1 \"Bottles\", parameter \"Count 1/Preset\": registers 107 to 108 (0x006b "
              "to 0x006c) and 119 to 120 (0x0077 to 0x0078) have different values");
}

TEST(ReadBack, RejectsWhatHasNoRegistersOfItsModules)
{
    const mxstation::Station station = stationOf(oneModule);
    EXPECT_NE(failureOf([&] {
                  static_cast<void>(withParametersOf(station, onlinePlan(oneModule),
                                                     targetOf("tcp:127.0.0.1:1"), CouplerState{}));
              }),
              "no failure");
}

TEST(ReadBack, RejectsAnotherModule)
{
    RegisterPeer peer;
    putModule(peer);
    peer.put(500, {0x5A03, 0x0302});
    const auto findings = findingsOf(oneModule, peer);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].origin, mxmodule::Origin::Output);
    EXPECT_EQ(findings[0].text,
              "module 1 \"Levels\" is 5a030304 in the station, the coupler has 5a030302");
}

} // namespace

} // namespace mxonline
