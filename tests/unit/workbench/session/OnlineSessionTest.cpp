#include "session/OnlineSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mxonline/Simulator.h>
#include <text/Sha256.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

using namespace std::chrono_literals;
using mxonline::Simulator;
using workbench::OnlineConflict;
using workbench::OnlineConnection;
using workbench::OnlineSession;
using workbench::OnlineState;
using workbench::OnlineWork;

const std::string couplerRow = "modbus:\n"
                               "  outputs: {address: 0x800}\n"
                               "  parameters: {address: 0x4000}\n"
                               "  identity: {address: 0x3000}\n"
                               "modules:\n"
                               "  - {module: MX0304.bin, parameters: {Mains suppression: 60 Hz}}\n"
                               "  - MX0208.bin\n";

mxstation::Plan planOf(const std::string& text)
{
    return mxstation::plan(
        mxstation::stationOf(text, std::string(EXAMPLE_MODULES) + "/station.yaml"));
}

// A session with the simulated coupler of the row.
class OnlineSessionTest : public testing::Test
{
protected:
    OnlineSessionTest()
        : plan(planOf(couplerRow)),
          simulator(plan, mxonline::listenTargetOf("tcp:127.0.0.1:0")),
          session(mxonline::targetText(simulator.address()), {5ms, 200ms})
    {}

    /// Waits until the state is as wanted, at most ten seconds.
    OnlineState waitFor(const std::function<bool(const OnlineState&)>& isWanted)
    {
        const auto end = std::chrono::steady_clock::now() + 10s;
        while (std::chrono::steady_clock::now() < end) {
            OnlineState state = session.state();
            if (isWanted(state)) {
                return state;
            }
            std::this_thread::sleep_for(1ms);
        }
        throw std::runtime_error("the state did not become what is expected");
    }

    OnlineState waitForEnd()
    {
        return waitFor([](const OnlineState& state) { return state.work == OnlineWork::None; });
    }

    mxstation::Plan plan;
    Simulator simulator;
    OnlineSession session;
};

TEST_F(OnlineSessionTest, BeginsWithoutAConnection)
{
    const OnlineState state = session.state();
    EXPECT_EQ(state.connection, OnlineConnection::None);
    EXPECT_EQ(state.work, OnlineWork::None);
    EXPECT_EQ(simulator.counts().connections, 0U);
}

TEST_F(OnlineSessionTest, PlansAndAppliesWhatWasAgreedTo)
{
    session.compare(plan, true);
    const OnlineState planned = waitForEnd();
    ASSERT_TRUE(planned.difference);
    EXPECT_EQ(planned.connection, OnlineConnection::Connected);
    EXPECT_EQ(planned.difference->difference.parameterCount(), 1U);
    EXPECT_EQ(planned.difference->version, text::sha256(couplerRow));
    EXPECT_EQ(simulator.counts().registersWritten, 0U);

    session.apply(planned.difference->id, text::sha256(couplerRow));
    const OnlineState applied = waitForEnd();
    ASSERT_TRUE(applied.report);
    EXPECT_TRUE(applied.report->isDone());
    EXPECT_FALSE(applied.difference);
    EXPECT_EQ(simulator.parameters(1), plan.modules[0].registers);

    session.compare(plan, false);
    const OnlineState verified = waitForEnd();
    EXPECT_TRUE(verified.difference->difference.isSame());
    ASSERT_TRUE(verified.report); // until the next one, so that it can still be kept
    EXPECT_EQ(verified.report->json(), applied.report->json());
}

TEST_F(OnlineSessionTest, AppliesNothingElse)
{
    const std::string version = text::sha256(couplerRow);
    EXPECT_THROW(session.apply(1, version), OnlineConflict); // nothing is planned
    session.compare(plan, false);
    const auto verified = waitForEnd().difference->id;
    EXPECT_THROW(session.apply(verified, version), OnlineConflict); // only verified
    session.compare(plan, true);
    const auto id = waitForEnd().difference->id;
    EXPECT_THROW(session.apply(verified, version), OnlineConflict);         // not the newest
    EXPECT_THROW(session.apply(id, text::sha256("other")), OnlineConflict); // not the saved file
    EXPECT_EQ(simulator.counts().registersWritten, 0U);
}

TEST_F(OnlineSessionTest, WritesNothingWhenTheCouplerHasChangedSince)
{
    session.compare(plan, true);
    const auto planned = waitForEnd();
    OnlineSession another(mxonline::targetText(simulator.address()));
    const std::string text = "modbus:\n"
                             "  outputs: {address: 0x800}\n"
                             "  parameters: {address: 0x4000}\n"
                             "  identity: {address: 0x3000}\n"
                             "modules:\n"
                             "  - {module: MX0304.bin, parameters: {AI 1: {Upper limit: 5 V}}}\n"
                             "  - MX0208.bin\n";
    mxonline::Coupler other(planOf(text), simulator.address());
    ASSERT_TRUE(other.apply(other.difference()).isDone());
    const auto written = simulator.counts().registersWritten;

    session.apply(planned.difference->id, text::sha256(couplerRow));
    const OnlineState refused = waitForEnd();
    EXPECT_FALSE(refused.report);
    EXPECT_FALSE(refused.findings.empty());
    EXPECT_EQ(simulator.counts().registersWritten, written);
}

// An author builds a module again: the text of the station is the same, the module is another one.
TEST_F(OnlineSessionTest, ComparesWithTheFilesAsTheyAreNow)
{
    session.compare(plan, false);
    ASSERT_TRUE(waitForEnd().difference->difference.identityErrors().empty());
    auto station = mxstation::stationOf(couplerRow, std::string(EXAMPLE_MODULES) + "/station.yaml");
    station.entries[1].module =
        mxmodule::ModuleFile::read(std::string(EXAMPLE_MODULES) + "/MX0216.bin");
    const auto rebuilt = mxstation::plan(station);
    ASSERT_EQ(rebuilt.source, plan.source);
    session.compare(rebuilt, false);
    EXPECT_EQ(waitForEnd().difference->difference.identityErrors().size(), 1U);
    EXPECT_EQ(simulator.counts().connections, 2U);
    session.compare(mxstation::plan(station), false); // of equal files: the connection is kept
    waitForEnd();
    EXPECT_EQ(simulator.counts().connections, 2U);
}

TEST_F(OnlineSessionTest, WatchesChannels)
{
    simulator.setInput("AI 1", "-5");
    session.watch(plan, {"AI 1"});
    const OnlineState first =
        waitFor([](const OnlineState& state) { return state.live && !state.live->time.empty(); });
    ASSERT_EQ(first.live->values.size(), 1U);
    EXPECT_EQ(first.live->values[0].channel.channel, "AI 1");
    EXPECT_EQ(first.live->values[0].value.text, "-5");
    EXPECT_EQ(first.live->version, text::sha256(couplerRow));

    simulator.setInput("AI 1", "7");
    waitFor([](const OnlineState& state) { return state.live->values[0].value.text == "7"; });
    session.endWatch();
    EXPECT_FALSE(session.state().live);
}

TEST_F(OnlineSessionTest, NumbersEachWatch)
{
    const std::uint64_t first = session.watch(plan, {"AI 1"});
    EXPECT_EQ(session.state().live->id, first);
    const std::uint64_t second = session.watch(plan, {"AI 1"});
    EXPECT_NE(second, first);
    EXPECT_EQ(session.state().live->id, second);
}

TEST_F(OnlineSessionTest, RefusesUnknownChannelsAtOnce)
{
    EXPECT_THROW(session.watch(plan, {"AI 9"}), mxmodule::Failure);
    EXPECT_THROW(session.compare(planOf("modules: [MX0304.bin]"), true), mxmodule::Failure);
    EXPECT_EQ(session.state().work, OnlineWork::None);
    EXPECT_EQ(simulator.counts().connections, 0U);
}

TEST_F(OnlineSessionTest, ReadsNothingWhenNobodyLooks)
{
    session.watch(plan, {});
    waitFor([](const OnlineState& state) { return state.live && !state.live->time.empty(); });
    std::this_thread::sleep_for(300ms); // more than the time of attention
    const auto before = simulator.counts().requests;
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(simulator.counts().requests, before);
    EXPECT_EQ(session.state().connection, OnlineConnection::None);
    waitFor([&](const OnlineState&) { return simulator.counts().requests > before; });
}

TEST_F(OnlineSessionTest, TellsOfALostCouplerAndOfOneThatIsBack)
{
    session.watch(plan, {"AI 1"});
    waitFor([](const OnlineState& state) { return state.live && !state.live->time.empty(); });
    const auto place = simulator.address();
    simulator.stop();
    const OnlineState lost = waitFor(
        [](const OnlineState& state) { return state.connection == OnlineConnection::Failed; });
    EXPECT_FALSE(lost.live->findings.empty());
    EXPECT_EQ(lost.live->values.size(), 1U); // the last ones, with their time
    const Simulator again(plan, place);
    waitFor([](const OnlineState& state) {
        return state.connection == OnlineConnection::Connected && state.live->findings.empty();
    });
}

TEST(OnlineSession, RefusesATextThatIsNoTarget)
{
    EXPECT_THROW(OnlineSession("udp:127.0.0.1"), mxmodule::Failure);
}

// With a coupler that takes the connection and never answers, the end does not wait for long.
TEST(OnlineSession, EndsWhileACouplerIsSilent)
{
    const auto plan = planOf("modbus: {timeout: 300, retries: 0, parameters: {address: 0}}\n"
                             "modules: [MX0304.bin]\n");
    mxonline::SimulatorOptions options;
    options.faults = {mxonline::simulatedFaultOf("silence")};
    const Simulator simulator(plan, mxonline::listenTargetOf("tcp:127.0.0.1:0"), options);
    const auto begin = std::chrono::steady_clock::now();
    {
        OnlineSession session(mxonline::targetText(simulator.address()));
        session.compare(plan, true);
        EXPECT_THROW(session.compare(plan, true), OnlineConflict);
        std::this_thread::sleep_for(20ms);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
}

} // namespace
