#include "SimulatedCoupler.h"

#include <mxonline/SimulatorScript.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace mxonline {

namespace {

using Lines = std::vector<std::string>;

// Does not wait; ends the script at the wait number `mostWaits`.
class NotedHost : public SimulatorScriptHost
{
public:
    bool isEndedUntil(std::chrono::steady_clock::time_point time) override
    {
        times.push_back(time);
        onWait();
        return ++waits == mostWaits;
    }

    void show(const std::string& line) override { shown.push_back(line); }

    void reject(const mxmodule::Finding& finding) override
    {
        rejected.push_back(finding.place + " " + finding.text);
    }

    Lines shown;
    Lines rejected;
    std::vector<std::chrono::steady_clock::time_point> times; // until which it was asked to wait
    unsigned waits = 0;
    unsigned mostWaits = 0; // 0: never
    std::function<void()> onWait = [] {};
};

class Script : public testing::Test
{
protected:
    SimulatedCoupler coupler{R"(
modbus: {unit: 7, outputs: {address: 0x800}, parameters: {address: 0x4000}}
modules:
  - {module: MX0108.bin, channels: {DI 1: {alias: Level high}}}
  - {module: MX0204.bin, name: Relays}
  - {module: MX0302.bin, name: Levels}
)"};
    NotedHost host;
    SimulatorScript script{coupler.simulator, "script", host};

    std::string value(const char* channel) { return coupler.simulator.value(channel).text; }

    // What is wrong with `line`, after its place.
    std::string wrongWith(const std::string& line)
    {
        host.rejected.clear();
        EXPECT_TRUE(script.runLine(line));
        return host.rejected.empty() ? "nothing" : host.rejected.front();
    }
};

TEST_F(Script, SetsInputs)
{
    EXPECT_TRUE(script.runText("Level high = 1\nDI 2=on\n\n  Levels/AI 1 =  -7  # low\r\n"));
    EXPECT_EQ(value("DI 1"), "1");
    EXPECT_EQ(value("DI 2"), "1");
    EXPECT_EQ(value("AI 1"), "-7");
    EXPECT_EQ(host.shown, Lines{});
    EXPECT_EQ(host.rejected, Lines{});
}

TEST_F(Script, NotesOutputsThatItSets)
{
    EXPECT_TRUE(script.runLine("Relay 1 = on"));
    EXPECT_EQ(value("Relay 1"), "1");
    EXPECT_EQ(host.shown, Lines{"Relay 1 = 1 (an output, set by the script)"});
}

TEST_F(Script, ShowsChannels)
{
    script.runText("AI 2 = 3\nshow Level high\nshow Levels\nshow");
    ASSERT_EQ(host.shown.size(), 3U + 14U);
    EXPECT_EQ(host.shown[0], "Level high = 0");
    EXPECT_EQ(host.shown[1], "Levels/AI 1 = 0");
    EXPECT_EQ(host.shown[2], "Levels/AI 2 = 3");
    EXPECT_EQ(host.shown[3], "Level high = 0");
    EXPECT_EQ(host.shown.back(), "Levels/AI 2 = 3");
}

TEST_F(Script, RampsFromTheFirstValueToTheLast)
{
    Lines values;
    host.onWait = [&] { values.push_back(value("AI 1")); };
    EXPECT_TRUE(script.runLine("ramp Levels/AI 1 100 -100 in 40ms step 10ms"));
    EXPECT_EQ(values, (Lines{"100", "50", "0", "-50"}));
    for (std::size_t i = 1; i < host.times.size(); ++i) {
        EXPECT_EQ(host.times[i] - host.times[i - 1], std::chrono::milliseconds(10)) << i;
    }
    EXPECT_EQ(value("AI 1"), "-100");
    values.clear();
    EXPECT_TRUE(script.runLine("ramp AI 1 0 9 in 250ms"));
    EXPECT_EQ(values, (Lines{"0", "4", "7"})); // 9 * 100/250 = 3.6, 9 * 200/250 = 7.2
    EXPECT_EQ(value("AI 1"), "9");
    EXPECT_TRUE(script.runLine("ramp AI 1 5 6 in 0s"));
    EXPECT_EQ(value("AI 1"), "6");
}

TEST_F(Script, RampsNothingToAValueThatIsNone)
{
    EXPECT_EQ(wrongWith("ramp AI 1 5 40000 in 1s"),
              "script:1:13 channel \"AI 1\" of module 3 \"Levels\": found the value \"40000\", "
              "expected -32768 to 32767 (0x0000 to 0xffff)");
    EXPECT_EQ(value("AI 1"), "0");
    EXPECT_EQ(host.waits, 0U);
}

TEST_F(Script, Sleeps)
{
    const auto before = std::chrono::steady_clock::now();
    EXPECT_TRUE(script.runLine("sleep 90s"));
    ASSERT_EQ(host.times.size(), 1U);
    EXPECT_GE(host.times[0], before + std::chrono::seconds(90));
    EXPECT_LE(host.times[0], std::chrono::steady_clock::now() + std::chrono::seconds(90));
}

TEST_F(Script, EndsWithItsHost)
{
    host.mostWaits = 2;
    EXPECT_FALSE(script.runText("sleep 1h\nAI 1 = 1\nsleep 2s\nAI 1 = 2"));
    EXPECT_EQ(value("AI 1"), "1");
    host.mostWaits = 4;
    EXPECT_FALSE(script.runText("ramp AI 1 0 100 in 1s\nAI 1 = 2"));
    EXPECT_EQ(value("AI 1"), "10");
}

TEST_F(Script, Repeats)
{
    int rounds = 0;
    host.onWait = [&] {
        ++rounds;
        EXPECT_EQ(value("AI 1"), "1");
        coupler.simulator.setInput("AI 1", "0");
    };
    host.mostWaits = 3;
    const auto before = std::chrono::steady_clock::now();
    EXPECT_FALSE(script.runText("AI 1 = 1\nno = 1\nrepeat\nAI 2 = 1"));
    EXPECT_GE(host.times.at(0), before + std::chrono::milliseconds(10)); // not without a pause
    EXPECT_EQ(rounds, 3);
    EXPECT_EQ(value("AI 2"), "0");
    EXPECT_EQ(host.rejected.size(), 1U); // once, in three rounds
}

TEST_F(Script, RejectsLinesAtTheirPlaces)
{
    EXPECT_EQ(wrongWith("on"),
              "script:1:1 found \"on\", expected NAME = VALUE, ramp NAME FROM TO in TIME, sleep "
              "TIME, show NAME, repeat or # COMMENT");
    EXPECT_EQ(wrongWith("AI 1 ="), "script:2:6 the value is missing, expected NAME = VALUE");
    EXPECT_EQ(wrongWith(" = 1"), "script:3:2 the name is missing, expected NAME = VALUE");
    EXPECT_EQ(wrongWith("ä = 1").substr(0, 12), "script:4:1 t");
    EXPECT_EQ(wrongWith("DI 2 = 2"),
              "script:5:8 channel \"DI 2\" of module 1 \"MX0108\": found the "
              "value \"2\", expected 0 or 1");
    EXPECT_EQ(wrongWith("sleep soon").substr(0, 34), "script:6:7 found the time \"soon\", ");
    EXPECT_EQ(wrongWith("sleep"), "script:7:1 expected \"sleep TIME\", such as sleep 100ms");
    EXPECT_EQ(wrongWith("ramp AI 1 0 9"),
              "script:8:1 expected \"ramp NAME FROM TO in TIME [step TIME]\", such as ramp Level 0 "
              "1000 in 5s");
    EXPECT_EQ(wrongWith("ramp AI 1 0 x in 1s"), "script:9:13 found \"x\", expected a whole number");
    EXPECT_EQ(wrongWith("ramp AI 1 0 9 in 1s step 0ms"),
              "script:10:26 found a step of 0, expected at least 1ms");
    EXPECT_EQ(wrongWith("repeat"), "script:11:1 only the lines of a file can be repeated");
    EXPECT_EQ(wrongWith("show Nothing").substr(0, 12), "script:12:6 ");
    EXPECT_EQ(wrongWith("# DI 2 = 2"), "nothing");
}

} // namespace

} // namespace mxonline
