// Setting outputs: the bits of the channels, in the registers of the channels, and nothing else.
#include "images/ImageStation.h"

#include <mxonline/OutputSetting.h>

#include <gmock/gmock.h>

#include <utility>

namespace mxonline {

namespace {

using mxmodule::Failure;
using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::string>;
using Words = std::vector<std::uint16_t>;

// As "NAME BEFORE -> WANTED, now NOW".
Texts shown(const OutputReport& report)
{
    Texts lines;
    for (const SetOutput& one : report.outputs) {
        lines.push_back(one.channel.name + " " + one.before.text + " -> " + one.wanted.text +
                        ", now " + (one.now ? one.now->text : "unknown"));
    }
    return lines;
}

Texts textsOf(const std::vector<mxmodule::Finding>& findings)
{
    Texts texts;
    for (const mxmodule::Finding& finding : findings) {
        texts.push_back(finding.text);
    }
    return texts;
}

// Every bit around what is set is 1.
void putOutputs(RegisterPeer& peer)
{
    putRow(peer);
    peer.put(200, {0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF});
}

Texts writesOf(const RegisterPeer& peer)
{
    Texts writes;
    for (const std::string& request : peer.requests()) {
        if (request[0] != '3') {
            writes.push_back(request);
        }
    }
    return writes;
}

Texts errorsOf(const std::vector<std::string>& texts)
{
    RegisterPeer peer;
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    try {
        OutputSetting(coupler, outputValuesOf(texts));
    } catch (const Failure& failure) {
        EXPECT_THAT(peer.requests(), IsEmpty());
        return textsOf(failure.findings());
    }
    return {};
}

// P_101 is bit 0 of byte 0, the high byte of register 200. AO 2 is in bytes 3 and 4, the low byte
// of 201 and the high byte of 202: 0x1234.
TEST(OutputSetting, ChangesTheBitsOfTheChannelsAlone)
{
    RegisterPeer peer;
    putOutputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    OutputSetting setting(coupler, {{"P_101", "off"}, {"Valves/AO 2", "0x1234"}});
    const OutputReport report = setting.write();
    EXPECT_TRUE(report.isDone());
    EXPECT_THAT(shown(report),
                ElementsAre("P_101 1 -> 0, now 0", "Valves/AO 2 65535 -> 4660, now 4660"));
    EXPECT_EQ(peer.at(200, 5), (Words{0xFEFF, 0xFF12, 0x34FF, 0xFFFF, 0xFFFF}));
}

// Registers 200, 201 and 202, 203 and 204: with function 16 one run, with the others one by one.
TEST(OutputSetting, WritesOnlyTheRegistersConcernedByTheFunctionOfTheMap)
{
    const std::vector<std::pair<std::string, Texts>> cases = {
        {", write: 16", {"16 200 5"}},
        {", write: 6", {"6 200 65279", "6 201 65298", "6 202 13567", "6 203 65280", "6 204 511"}},
        {", write: 22",
         {"22 200 65279", "22 201 65280", "22 202 255", "22 203 65280", "22 204 255"}}};
    for (const auto& [outputs, expected] : cases) {
        RegisterPeer peer;
        putOutputs(peer);
        Coupler coupler(onlinePlan(imageStation("", outputs)), peer.target());
        OutputSetting setting(coupler, {{"P_101", "0"}, {"Valves/AO 2", "0x1234"}, {"AO 4", "1"}});
        EXPECT_TRUE(setting.write().isDone());
        EXPECT_EQ(peer.at(200, 5), (Words{0xFEFF, 0xFF12, 0x34FF, 0xFF00, 0x01FF})) << outputs;
        EXPECT_EQ(writesOf(peer), expected);
    }
}

// Registers 201 and 202 belong to nothing that is set. At most four registers a request: the two of
// a value are not divided.
TEST(OutputSetting, WritesNoRegisterBetweenAndDividesNoValue)
{
    RegisterPeer peer;
    putOutputs(peer);
    Coupler coupler(onlinePlan(imageStation("most_written: 4, ")), peer.target());
    EXPECT_TRUE(OutputSetting(coupler, {{"AO 4", "1"}, {"P_101", "0"}}).write().isDone());
    EXPECT_TRUE(
        OutputSetting(coupler, {{"P_101", "0"}, {"AO 2", "0"}, {"AO 4", "1"}}).write().isDone());
    EXPECT_THAT(writesOf(peer), ElementsAre("16 200 1", "16 203 2", "16 200 3", "16 203 2"));
}

TEST(OutputSetting, PutsTheFirstByteIntoTheLowByteWhereTheMapSaysSo)
{
    RegisterPeer peer;
    peer.put(500, {0x025A, 0x0802, 0x035A, 0x0403, 0x045A, 0x0404});
    peer.put(200, Words(5, 0xFFFF));
    Coupler coupler(onlinePlan(imageStation("bytes: little, ")), peer.target());
    OutputSetting setting(coupler, {{"Valves/AO 2", "0x1234"}});
    EXPECT_TRUE(setting.write().isDone());
    EXPECT_EQ(peer.at(200, 5), (Words{0xFFFF, 0x12FF, 0xFF34, 0xFFFF, 0xFFFF}));
}

TEST(OutputSetting, ReportsEveryErrorAndSendsNothing)
{
    EXPECT_THAT(
        errorsOf({"P_102=1", "LT_101=1", "P_101=2", "Valves/AO 1=1", "3/AO 1=2", "AO 2=65536"}),
        ElementsAre(
            "the station has no channel \"P_102\", did you mean \"P_101\"?",
            "channel \"AI 1\" of module 2 \"Levels\" is an input, which cannot be set",
            "channel \"DO 1\" of module 1 \"Pumps\": found the value \"2\", expected 0 or 1",
            "channel \"AO 1\" of module 3 \"Valves\" is stated twice",
            "channel \"AO 2\" of module 3 \"Valves\": found the value \"65536\", expected 0 "
            "to 65535 (0x0000 to 0xffff)"));
    EXPECT_THAT(errorsOf({"P_101", "=1", "AO 1=1"}),
                ElementsAre("found \"P_101\", expected CHANNEL=VALUE",
                            "found \"=1\", expected CHANNEL=VALUE"));
    EXPECT_THAT(errorsOf({}), ElementsAre("no output is stated"));
}

TEST(OutputSetting, WritesNothingToAnotherRow)
{
    RegisterPeer peer;
    putOutputs(peer);
    peer.put(505, {0x0402});
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    OutputSetting setting(coupler, {{"P_101", "0"}});
    EXPECT_EQ(failureOf([&setting] { setting.write(); }),
              "module 3 \"Valves\" is 5a040404 in the station, the coupler has 5a040402");
    EXPECT_THAT(writesOf(peer), IsEmpty());
    EXPECT_TRUE(setting.restore().outputs.empty());
    EXPECT_THAT(writesOf(peer), IsEmpty());
}

TEST(OutputSetting, ReportsAValueThatDoesNotStick)
{
    RegisterPeer peer;
    putOutputs(peer);
    peer.afterWrite = [](auto& registers) { registers[200] = 0xFFFF; };
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    OutputSetting setting(coupler, {{"P_101", "0"}});
    const OutputReport report = setting.write();
    EXPECT_FALSE(report.isDone());
    EXPECT_THAT(textsOf(report.findings),
                ElementsAre("channel \"DO 1\" of module 1 \"Pumps\": register 200 (0x00c8): read "
                            "back 1, set to 0"));
    EXPECT_EQ(report.findings[0].origin, mxmodule::Origin::Output);
}

// Between, another master changes the other outputs: they stay as it set them.
TEST(OutputSetting, RestoresTheBitsOfTheChannelsAlone)
{
    RegisterPeer peer;
    putOutputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    OutputSetting setting(coupler, {{"P_101", "0"}, {"AO 2", "0"}});
    EXPECT_TRUE(setting.write().isDone());
    peer.put(200, {0x0211});
    const OutputReport restored = setting.restore();
    EXPECT_TRUE(restored.isDone());
    EXPECT_THAT(shown(restored),
                ElementsAre("P_101 0 -> 1, now 1", "Valves/AO 2 0 -> 65535, now 65535"));
    EXPECT_EQ(peer.at(200, 5), (Words{0x0311, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF}));
}

// The write is refused; what is there is read all the same.
TEST(OutputSetting, ReportsAFaultOfTheWriteAndWhatIsThere)
{
    RegisterPeer peer;
    putOutputs(peer);
    peer.onWrite = [](unsigned, unsigned) { return 4; };
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    OutputSetting setting(coupler, {{"P_101", "0"}});
    const OutputReport report = setting.write();
    EXPECT_THAT(shown(report), ElementsAre("P_101 1 -> 0, now 1"));
    EXPECT_EQ(report.findings.size(), 2U);
    EXPECT_EQ(report.findings[0].text.substr(0, 77),
              "channel \"DO 1\" of module 1 \"Pumps\": register 200 (0x00c8) cannot be written: ");
}

TEST(OutputSetting, RestoresNothingOnAnotherRow)
{
    RegisterPeer peer;
    putOutputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    OutputSetting setting(coupler, {{"P_101", "0"}});
    EXPECT_TRUE(setting.write().isDone());
    peer.put(505, {0x0402});
    const std::size_t before = peer.requests().size();
    const OutputReport report = setting.restore();
    EXPECT_EQ(peer.requests().size() - before, 3U); // three times the identity
    EXPECT_THAT(textsOf(report.findings),
                ElementsAre("module 3 \"Valves\" is 5a040404 in the station, the coupler has "
                            "5a040402",
                            "channel \"DO 1\" of module 1 \"Pumps\": register 200 (0x00c8): not "
                            "known to be as before: it was 1, it may still be 0"));
    EXPECT_THAT(writesOf(peer), ElementsAre("16 200 1"));
}

TEST(OutputSetting, SaysWhatRemainsIfItCannotRestore)
{
    RegisterPeer peer;
    putOutputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    OutputSetting setting(coupler, {{"P_101", "0"}});
    EXPECT_TRUE(setting.write().isDone());
    peer.answersUntilSilence = 0;
    const OutputReport report = setting.restore();
    EXPECT_FALSE(report.isDone());
    EXPECT_EQ(report.findings.back().text,
              "channel \"DO 1\" of module 1 \"Pumps\": register 200 (0x00c8): not known to be as "
              "before: it was 1, it may still be 0");
    EXPECT_EQ(report.findings.back().hint, "set it to 1 when the coupler answers again");
}

// The coupler is away at the first attempt.
TEST(OutputSetting, RestoresAfterAShortFault)
{
    RegisterPeer peer;
    putOutputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    OutputSetting setting(coupler, {{"P_101", "0"}});
    EXPECT_TRUE(setting.write().isDone());
    bool isFirst = true;
    peer.onWrite = [&isFirst](unsigned, unsigned) { return std::exchange(isFirst, false) ? 4 : 0; };
    EXPECT_TRUE(setting.restore().isDone());
    EXPECT_EQ(peer.at(200, 1), Words{0xFFFF});
}

TEST(OutputSetting, IsShownBeforeAndAfter)
{
    RegisterPeer peer;
    putOutputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    OutputSetting setting(coupler, {{"P_101", "0"}, {"AO 2", "258"}});
    EXPECT_EQ(outputsText(setting.read()),
              "Position  Module  Channel  Alias  Symbol  Before          After\n"
              "1         Pumps   DO 1     P_101  QX0_0   1               0\n"
              "3         Valves  AO 2            QW3     65535 (0xffff)  258 (0x0102)\n");
    EXPECT_THAT(writesOf(peer), IsEmpty());
    const OutputReport report = setting.write();
    EXPECT_EQ(writtenText(report, std::nullopt),
              "2 outputs set and read back; they stay so until they are set again\n");
    EXPECT_EQ(writtenText(report, std::chrono::seconds(2)),
              "2 outputs set and read back; for 2s\n");
    EXPECT_EQ(outputsQuestion(2, std::nullopt),
              "Set 2 outputs? They stay so until they are set again.");
    EXPECT_EQ(outputsQuestion(1, std::nullopt), "Set 1 output? It stays so until it is set again.");
    EXPECT_EQ(outputsQuestion(1, std::chrono::milliseconds(1500)), "Set 1 output for 1500ms?");
    EXPECT_EQ(restoredText(setting.restore()), "2 outputs are again as before\n");
}

} // namespace

} // namespace mxonline
