// The C interface: the simulator.
#include "OnlineHandles.h"

#include "../simulator/RawClient.h"

#include <gmock/gmock.h>
#include <mxmodule/c/CallFromC.h>
#include <mxonline/Simulator.h>

namespace mxonline {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

SimulatorFromC startedFromC(int strict)
{
    return SimulatorFromC(
        mxonline_simulator_start(onlinePlanFromC().get(), "tcp:127.0.0.1:0", strict, nullptr));
}

// The nine parameters of MX0208 are in 1000 to 1008; the next module begins at 1128. 1010 is 03f2.
std::string answerBetweenModules(const SimulatorFromC& simulator)
{
    return RawClient(targetOf(contentOf(mxonline_simulator_address(simulator.get(), nullptr))))
        .ask("03 03 f2 00 01");
}

TEST(SimulatorFromC, HasTheValuesThatAreSet)
{
    const SimulatorFromC simulator = startedFromC(0);
    EXPECT_THAT(contentOf(mxonline_simulator_address(simulator.get(), nullptr)),
                StartsWith("tcp:127.0.0.1:"));
    EXPECT_EQ(mxonline_simulator_set_input(simulator.get(), "LT_101", "-5", nullptr), 1);
    EXPECT_EQ(mxonline_simulator_set_output(simulator.get(), "P_101", "on", nullptr), 1);
    mxonline_simulator_stop(simulator.get());
    EXPECT_EQ(contentOf(mxonline_simulator_value(simulator.get(), "LT_101", nullptr)), "-5");
    EXPECT_EQ(contentOf(mxonline_simulator_value(simulator.get(), "P_101", nullptr)), "1");
}

TEST(SimulatorFromC, IsStrictIfStated)
{
    EXPECT_EQ(answerBetweenModules(startedFromC(0)), "03 02 00 00");
    EXPECT_EQ(answerBetweenModules(startedFromC(1)), "83 02");
}

TEST(SimulatorFromC, CountsWhatClientsDid)
{
    const SimulatorFromC simulator = startedFromC(0);
    static_cast<void>(answerBetweenModules(simulator));
    EXPECT_EQ(
        contentOf(mxonline_simulator_counts(simulator.get(), nullptr)),
        "{\n  \"schema\": {\n    \"name\": \"mxonline.simulator-counts\",\n    \"version\": 1\n"
        "  },\n  \"connections\": 1,\n  \"requests\": 1,\n  \"exceptions\": 0,\n"
        "  \"faults\": 0,\n  \"registers_read\": 1,\n  \"registers_written\": 0\n}\n");
}

TEST(SimulatorFromC, IsNotStartedWhereItCannotListen)
{
    const SimulatorFromC first = startedFromC(0);
    const std::string taken = contentOf(mxonline_simulator_address(first.get(), nullptr));
    const OnlinePlanFromC plan = onlinePlanFromC();
    EXPECT_THAT(errorOf([&](auto error) {
                    return mxonline_simulator_start(plan.get(), taken.c_str(), 0, error);
                }),
                StartsWith("3 "));
    EXPECT_THAT(errorOf([&](auto error) {
                    return mxonline_simulator_start(plan.get(), "udp:x", 0, error);
                }),
                StartsWith("1 "));
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxonline_simulator_start(plan.get(), nullptr, 0, error);
              }),
              "5 Found a null pointer, expected an address to listen on");
    EXPECT_EQ(errorOf([](auto error) {
                  return mxonline_simulator_start(nullptr, "tcp:127.0.0.1:0", 0, error);
              }),
              "5 Found a null pointer, expected a plan of a station");
}

TEST(SimulatorFromC, TellsWhetherOthersReachIt)
{
    EXPECT_EQ(contentOf(mxonline_listening_notes("tcp:0.0.0.0:1502", nullptr)),
              mxmodule::findingsJson(listeningNotes(TcpTarget{"0.0.0.0", 1502})));
    EXPECT_EQ(contentOf(mxonline_listening_notes("tcp:127.0.0.1:1502", nullptr)),
              mxmodule::findingsJson({}));
    EXPECT_EQ(errorOf([](auto error) { return mxonline_listening_notes(nullptr, error); }),
              "5 Found a null pointer, expected an address to listen on");
}

TEST(SimulatorFromC, KnowsItsChannelsAlone)
{
    const SimulatorFromC simulator = startedFromC(0);
    EXPECT_THAT(errorOf([&](auto error) {
                    return mxonline_simulator_value(simulator.get(), "LT_102", error);
                }),
                HasSubstr("\"LT_101\""));
    EXPECT_THAT(errorOf([&](auto error) {
                    return mxonline_simulator_set_input(simulator.get(), "P_101", "1", error);
                }),
                StartsWith("1 "));
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxonline_simulator_value(simulator.get(), nullptr, error);
              }),
              "5 Found a null pointer, expected the name of a channel");
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxonline_simulator_set_output(simulator.get(), "P_101", nullptr, error);
              }),
              "5 Found a null pointer, expected a value");
}

TEST(SimulatorFromC, IsNoNullPointer)
{
    const std::string expected = "5 Found a null pointer, expected a simulator";
    EXPECT_EQ(errorOf([](auto error) { return mxonline_simulator_address(nullptr, error); }),
              expected);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_simulator_value(nullptr, "P_101", error); }),
              expected);
    EXPECT_EQ(errorOf([](auto error) {
                  return mxonline_simulator_set_input(nullptr, "LT_101", "1", error);
              }),
              expected);
    EXPECT_EQ(errorOf([](auto error) {
                  return mxonline_simulator_set_output(nullptr, "P_101", "1", error);
              }),
              expected);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_simulator_counts(nullptr, error); }),
              expected);
    mxonline_simulator_stop(nullptr);
    mxonline_simulator_free(nullptr);
}

} // namespace

} // namespace mxonline
