#include "SimulatedCoupler.h"
#include "simulator/RawClient.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace mxonline {

namespace {

using FaultWords = std::vector<std::uint16_t>;

// The module has 4 registers: 0x0100, 0, 0x0100, 0.
constexpr const char* faultyStation = R"(
modbus: {unit: 7, parameters: {address: 0x4000}, identity: {address: 0x3000}}
modules: [{module: MX0302.bin, name: Levels, parameters: {AI 1/Filter: 60 Hz}}]
)";

SimulatorOptions withFaults(const std::vector<std::string>& texts)
{
    SimulatorOptions options;
    for (const std::string& text : texts) {
        options.faults.push_back(simulatedFaultOf(text));
    }
    return options;
}

struct FaultyBytes
{
    const char* fault;
    const char* received; // after a request to read register 0x4000
};

class FaultyAnswer : public testing::TestWithParam<FaultyBytes>
{};

// The correct answer is 12 34 00 00 00 05 07 03 02 01 00.
TEST_P(FaultyAnswer, HasTheseBytes)
{
    const SimulatedCoupler coupler(faultyStation,
                                   withFaults({GetParam().fault + std::string(",times=1")}));
    const RawClient client(coupler.target());
    client.send("12 34 00 00 00 06 07 03 40 00 00 01");
    const std::string expected = GetParam().received;
    EXPECT_EQ(client.receive((expected.size() + 1) / 3), expected);
    EXPECT_EQ(client.ask("03 40 01 00 01"), "03 02 00 00"); // and nothing else in between
    EXPECT_EQ(coupler.simulator.counts().faults, 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, FaultyAnswer,
    testing::Values(
        FaultyBytes{"exception=4", "12 34 00 00 00 03 07 83 04"},
        FaultyBytes{"exception=0x0b", "12 34 00 00 00 03 07 83 0b"},
        FaultyBytes{"busy=1h", "12 34 00 00 00 03 07 83 06"},
        FaultyBytes{"acknowledge=1h", "12 34 00 00 00 03 07 83 05"}, FaultyBytes{"silence", ""},
        FaultyBytes{"lost", ""}, FaultyBytes{"slow=1", "12 34 00 00 00 05 07 03 02 01 00"},
        FaultyBytes{"short", "12 34 00 00 00 05 07 03 02 01"},
        FaultyBytes{"long", "12 34 00 00 00 07 07 03 02 01 00 00 00"},
        FaultyBytes{"twice", "12 34 00 00 00 05 07 03 02 01 00 12 34 00 00 00 05 07 03 02 01 00"},
        FaultyBytes{"garbage", "48 54 54 50 2f 31 2e 31 20 34 30 30 20 42 61 64 20 52 65 71 75 65 "
                               "73 74 0d 0a 0d 0a"},
        FaultyBytes{"unit", "12 34 00 00 00 05 08 03 02 01 00"},
        FaultyBytes{"transaction", "12 35 00 00 00 05 07 03 02 01 00"},
        FaultyBytes{"protocol", "12 34 00 01 00 05 07 03 02 01 00"},
        FaultyBytes{"length", "12 34 00 00 00 0f 07 03 02 01 00"},
        FaultyBytes{"function", "12 34 00 00 00 05 07 04 02 01 00"},
        FaultyBytes{"count", "12 34 00 00 00 05 07 03 04 01 00"},
        FaultyBytes{"echo", "12 34 00 00 00 05 07 03 02 01 00"}));

TEST(Fault, ClosesTheConnection)
{
    const SimulatedCoupler coupler(faultyStation, withFaults({"close,after=1", "half,times=1"}));
    const RawClient first(coupler.target());
    first.send("12 34 00 00 00 06 07 03 40 00 00 01");
    EXPECT_EQ(first.receive(11), "12 34 00 00 00");
    EXPECT_TRUE(first.isClosed());
    const RawClient second(coupler.target());
    second.send("12 34 00 00 00 06 07 06 40 00 02 00");
    EXPECT_TRUE(second.isClosed());
    EXPECT_EQ(coupler.simulator.parameters(1), (FaultWords{0x0100, 0, 0x0100, 0}));
}

TEST(Fault, ConfirmsAnotherAddress)
{
    const SimulatedCoupler coupler(faultyStation, withFaults({"echo"}));
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("06 40 00 02 00"), "06 40 01 02 00");
    EXPECT_EQ(client.ask("06 50 00 02 00"), "86 02"); // an exception confirms nothing
}

TEST(Fault, ChangesNothingOfARequestThatIsIgnored)
{
    const SimulatedCoupler coupler(
        faultyStation, withFaults({"silence,times=1", "count,times=1", "function,times=1",
                                   "echo,times=1", "long,times=1"}));
    const RawClient client(coupler.target());
    client.send("12 34 00 00 00 02 07 03"); // without an address
    EXPECT_EQ(client.ask("03 40 00 00 01"), "03 02 01 00");
}

TEST(Fault, LosesTheAnswerToWhatIsDone)
{
    const SimulatedCoupler coupler(faultyStation,
                                   withFaults({"lost,times=1", "silence,after=1,times=1"}));
    const RawClient client(coupler.target());
    client.send("12 34 00 00 00 06 07 06 40 00 02 00");
    client.send("12 34 00 00 00 06 07 06 40 02 02 00");
    EXPECT_EQ(client.ask("03 40 00 00 03"), "03 06 02 00 00 00 01 00");
}

TEST(Fault, IsLate)
{
    const SimulatedCoupler coupler(faultyStation, withFaults({"late=60ms,times=1"}));
    const RawClient client(coupler.target());
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(client.ask("03 40 00 00 01"), "03 02 01 00");
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(60));
}

TEST(Fault, IsBusyForItsTime)
{
    const SimulatedCoupler coupler(faultyStation, withFaults({"busy=40ms"}));
    const RawClient client(coupler.target());
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(client.ask("03 40 00 00 01"), "83 06");
    while (client.ask("03 40 00 00 01") == "83 06") {
    }
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(40));
    EXPECT_EQ(client.ask("03 40 00 00 01"), "03 02 01 00");
}

TEST(Fault, HasItsConditions)
{
    const SimulatedCoupler coupler(
        faultyStation, withFaults({"exception=4,after=1,times=2,function=3,address=0x4001"}));
    const RawClient client(coupler.target());
    const char* const about = "03 40 00 00 02";
    EXPECT_EQ(client.ask(about), "03 04 01 00 00 00");
    EXPECT_EQ(client.ask("03 40 00 00 01"), "03 02 01 00");    // another register
    EXPECT_EQ(client.ask("06 40 01 00 00"), "06 40 01 00 00"); // another function
    EXPECT_EQ(client.ask(about), "83 04");
    EXPECT_EQ(client.ask(about), "83 04");
    EXPECT_EQ(client.ask(about), "03 04 01 00 00 00");
}

TEST(Fault, KeepsParameters)
{
    const SimulatedCoupler coupler(faultyStation,
                                   withFaults({"stuck=Levels/AI 1/Filter", "refuse=1/AI 2/Filter",
                                               "clamp=Levels/AI 1/Zero offset:0x10"}));
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("10 40 00 00 02 04 02 00 00 20"), "10 40 00 00 02");
    EXPECT_EQ(client.ask("06 40 02 02 00"), "86 03");
    EXPECT_EQ(coupler.simulator.parameters(1), (FaultWords{0x0100, 0x0010, 0x0100, 0}));
    EXPECT_EQ(client.ask("06 40 01 00 05"), "06 40 01 00 05");
    EXPECT_EQ(coupler.simulator.parameters(1), (FaultWords{0x0100, 0x0005, 0x0100, 0}));
}

TEST(Fault, HasAnotherModule)
{
    const SimulatedCoupler coupler(faultyStation, withFaults({"identity=1:5a030304"}));
    const RawClient client(coupler.target());
    EXPECT_EQ(client.ask("03 30 00 00 02"), "03 04 5a 03 03 04");
}

TEST(Fault, IsOneOfThisCoupler)
{
    const auto reason = [](const std::string& fault) {
        return failureOf(
            [&] { const SimulatedCoupler coupler(faultyStation, withFaults({fault})); });
    };
    EXPECT_EQ(reason("checksum"), "TCP has no checksum");
    EXPECT_EQ(reason("identity=2:5a030304"), "no module is at position 2");
    EXPECT_EQ(reason("identity=0:5a030304"), "no module is at position 0");
    EXPECT_EQ(reason("stuck=Levels/Fliter"), "there is no parameter \"Levels/Fliter\"");
    EXPECT_EQ(failureOf([] {
                  const SimulatedCoupler coupler("modbus: {parameters: {address: 0}}\n"
                                                 "modules: [MX0302.bin]",
                                                 withFaults({"identity=1:5a030304"}));
              }),
              "the coupler has no registers that identify modules");
}

struct FaultMessage
{
    const char* fault;
    const char* text;        // part of what the client says
    unsigned timeout = 1000; // as long as this one waits for nothing
};

class FaultSeen : public testing::TestWithParam<FaultMessage>
{};

// What a person is told of a fault while the coupler is read.
TEST_P(FaultSeen, HasItsMessage)
{
    const SimulatedCoupler coupler(faultyStation, withFaults({GetParam().fault}));
    mxstation::Plan plan = coupler.plan;
    plan.modbus->timeout = GetParam().timeout;
    plan.modbus->busyTime = 0;
    Coupler client(plan, coupler.target());
    const std::string text = failureOf([&client] { client.difference(); });
    EXPECT_NE(text.find(GetParam().text), std::string::npos) << text;
}

INSTANTIATE_TEST_SUITE_P(
    Faults, FaultSeen,
    testing::Values(FaultMessage{"exception=4", "exception 4 \"server device failure\""},
                    FaultMessage{"busy=1h", "exception 6 \"server device busy\" for 0 ms"},
                    FaultMessage{"silence", "no answer within 60 ms", 60},
                    FaultMessage{"late=10s", "no answer within 60 ms", 60},
                    FaultMessage{"slow=50ms", "the answer ends after ", 300},
                    FaultMessage{"short", "the answer ends after 12 bytes", 300},
                    FaultMessage{"long", "the answer has 6 bytes of values, stated as 4"},
                    FaultMessage{"garbage", "the answer is of protocol 21584, expected 0"},
                    FaultMessage{"unit", "the answer is of unit 8, expected 7"},
                    FaultMessage{"transaction", "the answer is of transaction 2, expected 1"},
                    FaultMessage{"protocol", "the answer is of protocol 1, expected 0"},
                    FaultMessage{"length", "the answer ends after 13 bytes", 300},
                    FaultMessage{"function", "the answer is of function 4, expected 3"},
                    FaultMessage{"count", "the answer has 4 bytes of values, stated as 6"},
                    FaultMessage{"close", "the connection was closed before the answer"},
                    FaultMessage{"half", "the connection was closed before the answer"},
                    FaultMessage{"twice,function=3,times=1",
                                 "13 bytes came that no request asked for"}));

TEST(FaultSeen, AsParametersThatDoNotStick)
{
    const SimulatedCoupler coupler(faultyStation, withFaults({"stuck=Levels/AI 1/Filter"}));
    Coupler client(coupler.plan, coupler.target());
    const ApplyReport report = client.apply(client.difference());
    EXPECT_FALSE(report.isDone());
    ASSERT_EQ(report.modules[0].parameters.size(), 1U);
    EXPECT_EQ(report.modules[0].parameters[0].outcome, WriteOutcome::Different);
    EXPECT_EQ(report.modules[0].parameters[0].nowShown, "50 Hz");
}

TEST(FaultSeen, AsAnAnswerOfAnotherFunctionAfterWhichTheLineIsOpenedAnew)
{
    const SimulatedCoupler coupler(faultyStation, withFaults({"function,times=1"}));
    mxstation::Plan plan = coupler.plan;
    plan.modbus->retries = 1;
    EXPECT_EQ(Coupler(plan, coupler.target()).read().modules[0].registers.size(), 4U);
    EXPECT_EQ(coupler.simulator.counts().connections, 2U);
}

TEST(FaultSeen, AsAnotherModule)
{
    const SimulatedCoupler coupler(faultyStation, withFaults({"identity=1:5a030304"}));
    Coupler client(coupler.plan, coupler.target());
    EXPECT_EQ(client.difference().identityErrors().size(), 1U);
}

TEST(FaultText, IsReadWithItsConditions)
{
    const SimulatedFault fault =
        simulatedFaultOf("clamp=Levels/Time, long: a:7,after=2,times=0,function=0x10,address=9");
    EXPECT_EQ(fault.kind, FaultKind::Clamp);
    EXPECT_EQ(fault.parameter, "Levels/Time, long: a");
    EXPECT_EQ(fault.most, 7U);
    EXPECT_EQ(fault.after, 2U);
    EXPECT_EQ(fault.times, 0U);
    EXPECT_EQ(fault.function, 16);
    EXPECT_EQ(fault.address, 9);
    EXPECT_EQ(simulatedFaultOf("late=2s").time, std::chrono::seconds(2));
    EXPECT_EQ(simulatedFaultOf("identity=3:5A030304").moduleId, 0x5A030304U);
}

TEST(FaultText, IsRejectedWithItsReason)
{
    const auto reason = [](const std::string& text) {
        return failureOf([&text] { simulatedFaultOf(text); });
    };
    EXPECT_EQ(reason("").find("there is no fault \"\" (accepted: exception, busy, "), 0U);
    EXPECT_EQ(reason("silent").find("there is no fault \"silent\", did you mean \"silence\"? "),
              0U);
    EXPECT_EQ(reason("silence,before=2"), "there is no fault \"silence,before\"");
    EXPECT_EQ(reason("silence=1"), "it takes no value");
    EXPECT_EQ(reason("silence="), "it takes no value");
    EXPECT_EQ(reason("late"), "its value is missing");
    EXPECT_EQ(reason("late="), "its value is missing");
    EXPECT_EQ(reason("late=soon").substr(0, 22), "found the time \"soon\",");
    EXPECT_EQ(reason("exception=256"),
              "found \"256\" for \"exception\", expected a number from 1 to 255");
    EXPECT_EQ(reason("exception=0"),
              "found \"0\" for \"exception\", expected a number from 1 to 255");
    EXPECT_EQ(reason("silence,after=-1").substr(0, 24), "found \"-1\" for \"after\", ");
    EXPECT_EQ(reason("clamp=Levels/Limit"), "\":\" is missing in its value");
    EXPECT_EQ(reason("identity=1:5a0303"), "found the identifier \"5a0303\"");
}

TEST(FaultText, IsThatOfEachDescription)
{
    for (const FaultDescription& one : faultDescriptions()) {
        std::string text = one.form;
        for (const auto& [from, to] : {std::pair{"CODE", "1"},
                                       {"TIME", "1s"},
                                       {"POSITION", "1"},
                                       {":ID", ":00000001"},
                                       {":N", ":1"}}) {
            const std::size_t at = text.find(from);
            text = at == std::string::npos ? text : text.replace(at, std::string(from).size(), to);
        }
        EXPECT_EQ(simulatedFaultOf(text).kind, one.kind) << text;
    }
}

} // namespace

} // namespace mxonline
