#include "coupler/CouplerFixture.h"
#include "coupler/RegisterPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace mxonline {

namespace {

using Words = std::vector<std::uint16_t>;
using Texts = std::vector<std::string>;

constexpr const char* differingModules = R"(
modbus: {unit: 9, parameters: {address: 1000, stride: 30}, identity: {address: 500}}
modules:
  - {module: MX0304.bin, name: Levels, parameters: {Mains suppression: 60, AI 2/Upper limit: 9 V}}
  - {module: MX0304.bin, name: Flows}
)";

// As "MODULE PARAMETER ADDRESS FOUND -> PLANNED".
Texts shown(const CouplerDifference& difference)
{
    Texts lines;
    for (const ModuleDifference& module : difference.modules) {
        for (const ParameterDifference& one : module.parameters) {
            lines.push_back(module.name + " " + one.parameter + " " + std::to_string(one.address) +
                            " " + one.foundShown + " -> " + one.plannedShown);
        }
    }
    return lines;
}

void putDefaults(RegisterPeer& peer)
{
    peer.put(500, {0x5A03, 0x0304, 0x5A03, 0x0304});
    peer.put(1000, defaultsOf0304);
    peer.put(1030, defaultsOf0304);
}

// 25 registers from 1000 and from 1030: one request of 55 over the gap, which does not exist here,
// then one for each module.
TEST(Difference, NamesWhatWouldChange)
{
    RegisterPeer peer;
    putDefaults(peer);
    Coupler coupler(onlinePlan(differingModules), peer.target());
    const CouplerDifference difference = coupler.difference();
    EXPECT_EQ(shown(difference), (Texts{"Levels Mains suppression 1000 50 Hz -> 60 Hz",
                                        "Levels AI 2/Upper limit 1008 9.501 V -> 9 V"}));
    EXPECT_EQ(difference.modules[0].parameters[0].found, (Words{0x3200}));
    EXPECT_EQ(difference.modules[0].parameters[0].planned, (Words{0x3C00}));
    EXPECT_EQ(difference.modules[0].parameters[1].found, (Words{0x251D}));
    EXPECT_EQ(difference.modules[0].parameters[1].planned, (Words{9000}));
    EXPECT_EQ(difference.modules[1].identification, Identification::Same);
    EXPECT_EQ(difference.modules[1].foundId, "5a030304");
    EXPECT_FALSE(difference.isSame());
    EXPECT_EQ(peer.requests(), (Texts{"3 500 4", "3 1000 55", "3 1000 25", "3 1030 25"}));
}

// A host may keep a state and compare it with another station.
TEST(Difference, AModuleThatIsNotInTheStateIsNotTheSame)
{
    CouplerState state;
    state.modules.push_back({1, 0x5A030304, defaultsOf0304});
    const mxstation::Plan plan = onlinePlan(R"(
modbus: {parameters: {address: 1000}}
modules: [MX0304.bin, MX0304.bin]
)");
    const CouplerDifference difference = compare(plan, targetOf("tcp:127.0.0.1"), state);
    ASSERT_EQ(difference.modules.size(), 2U);
    EXPECT_TRUE(difference.modules[0].isRead);
    EXPECT_FALSE(difference.modules[1].isRead);
    EXPECT_FALSE(difference.isSame());
    EXPECT_NE(difference.text().find("\nThe parameters of 1 module were not read\n"),
              std::string::npos);
}

// Once known, the gap is not asked for again.
TEST(Difference, RemembersThatGapsDoNotExist)
{
    RegisterPeer peer;
    putDefaults(peer);
    Coupler coupler(onlinePlan(differingModules), peer.target());
    static_cast<void>(coupler.read());
    static_cast<void>(coupler.read());
    EXPECT_EQ(peer.requests(), (Texts{"3 500 4", "3 1000 55", "3 1000 25", "3 1030 25", "3 500 4",
                                      "3 1000 25", "3 1030 25"}));
    EXPECT_EQ(coupler.traffic().registersRead, 2U * (4 + 25 + 25));
    EXPECT_EQ(coupler.traffic().requests, 7U);
}

TEST(Difference, ReadsOverGapsThatExist)
{
    RegisterPeer peer;
    peer.put(1000, Words(60));
    putDefaults(peer);
    Coupler coupler(onlinePlan(differingModules), peer.target());
    EXPECT_EQ(coupler.difference().parameterCount(), 2U);
    EXPECT_EQ(peer.requests(), (Texts{"3 500 4", "3 1000 55"}));
    EXPECT_EQ(coupler.traffic().requests, 2U);
}

TEST(Difference, IsNothingWhereEveryRegisterIsAsPlanned)
{
    RegisterPeer peer;
    putDefaults(peer);
    peer.put(1000, {0x3C00});
    peer.put(1008, {9000});
    Coupler coupler(onlinePlan(differingModules), peer.target());
    EXPECT_TRUE(coupler.difference().isSame());
}

// The registers of another module have another meaning: they are not read.
TEST(Difference, AnotherModuleIsAnError)
{
    RegisterPeer peer;
    putDefaults(peer);
    peer.put(502, {0x5A03, 0x0302});
    Coupler coupler(onlinePlan(differingModules), peer.target());
    const CouplerDifference difference = coupler.difference();
    EXPECT_FALSE(difference.isSame());
    EXPECT_EQ(difference.modules[0].identification, Identification::Same);
    EXPECT_EQ(difference.modules[1].identification, Identification::Other);
    ASSERT_EQ(difference.identityErrors().size(), 1U);
    EXPECT_EQ(difference.identityErrors()[0].text,
              "module 2 \"Flows\" is 5a030304 in the station, the coupler has 5a030302");
    EXPECT_EQ(peer.requests(), (Texts{"3 500 4"}));
}

TEST(Difference, AnEmptyPlaceIsNamed)
{
    RegisterPeer peer;
    putDefaults(peer);
    peer.put(500, {0, 0, 0xFFFF, 0xFFFF});
    Coupler coupler(onlinePlan(differingModules), peer.target());
    const auto errors = coupler.difference().identityErrors();
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0].text,
              "module 1 \"Levels\" is 5a030304 in the station, the coupler has no module there");
    EXPECT_EQ(errors[1].text,
              "module 2 \"Flows\" is 5a030304 in the station, the coupler has no module there");
}

// A signal range of index 7, an upper limit of 11 V, and a filter depth with a second byte.
TEST(Difference, RegistersThatAreNoValuesHideNoOther)
{
    RegisterPeer peer;
    putDefaults(peer);
    peer.put(1030, {0x3C00, 0x0700, 11000});
    peer.put(1036, {0x0005});
    Coupler coupler(onlinePlan(differingModules), peer.target());
    const Texts lines = shown(coupler.difference());
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[2], "Flows Mains suppression 1030 60 Hz -> 50 Hz");
    EXPECT_EQ(lines[3].find("Flows AI 1/Signal range 1031 no value: "), 0U) << lines[3];
    EXPECT_EQ(lines[4], "Flows AI 1/Upper limit 1032 11 V (outside -10 to 10 V) -> 9.5 V");
    EXPECT_EQ(lines[5].find("Flows AI 1/Filter depth 1036 no value: "), 0U) << lines[5];
}

TEST(Difference, WithoutIdentityNoModuleIsIdentified)
{
    RegisterPeer peer;
    putDefaults(peer);
    std::string source = differingModules;
    source.replace(source.find(", identity: {address: 500}"), 26, "");
    Coupler coupler(onlinePlan(source), peer.target());
    const CouplerDifference difference = coupler.difference();
    EXPECT_EQ(difference.modules[0].identification, Identification::NotPossible);
    EXPECT_EQ(difference.modules[0].foundId, "");
    EXPECT_EQ(difference.parameterCount(), 2U);
}

// Values of two registers: low word first, low byte first; values of one byte are the low byte.
TEST(Difference, OrdersOfWordsAndBytes)
{
    const std::string source = R"(
modbus: {unit: 9, parameters: {address: 0}, identity: {address: 900}, words: little, bytes: little}
modules: [{module: MX0304.bin, name: Levels}]
)";
    RegisterPeer peer;
    Words swapped;
    for (const std::uint16_t word : defaultsOf0304) {
        swapped.push_back(static_cast<std::uint16_t>(word << 8 | word >> 8));
    }
    peer.put(0, swapped);
    peer.put(900, {0x0403, 0x035A});
    Coupler coupler(onlinePlan(source), peer.target());
    EXPECT_TRUE(coupler.difference().isSame());
}

// An MX0602 with the low word first: the mode, and the values of gate and counter, each in two
// places.
Words counterRegisters()
{
    Words registers = {0x0200};
    for (int place = 0; place < 2; ++place) {
        for (const std::uint16_t lastWord : Words{0xFD98, 0xFD99}) {
            registers.insert(registers.end(), {0x2800, 0xEE6B, lastWord, 0xFFFF, 0xFFFF, 0xFFFF});
        }
    }
    return registers;
}

constexpr const char* oneCounter = R"(
modbus: {parameters: {address: 100}, words: little}
modules: [{module: MX0602.bin, name: Bottles}]
)";

TEST(Difference, ValuesOfSeveralRegisters)
{
    RegisterPeer peer;
    peer.put(100, counterRegisters());
    Coupler coupler(onlinePlan(oneCounter), peer.target());
    EXPECT_TRUE(coupler.difference().isSame());
}

// Of the preset of the counter only one of its places has another value.
TEST(Difference, AParameterInTwoPlaces)
{
    RegisterPeer peer;
    peer.put(100, counterRegisters());
    peer.put(107, {5, 0});
    Coupler coupler(onlinePlan(oneCounter), peer.target());
    const CouplerDifference difference = coupler.difference();
    ASSERT_EQ(difference.parameterCount(), 1U);
    const ParameterDifference& preset = difference.modules[0].parameters[0];
    EXPECT_EQ(preset.address, 107);
    EXPECT_EQ(preset.found, (Words{5, 0}));
    EXPECT_EQ(preset.planned, (Words{0x2800, 0xEE6B}));
    EXPECT_EQ(preset.foundShown, "5");
    EXPECT_EQ(preset.plannedShown, "4000000000");
}

TEST(Difference, TheIdentityMayBeInInputRegisters)
{
    const std::string source = R"(
modbus: {parameters: {address: 0}, identity: {address: 900, read: 4, stride: 10}}
modules: [{module: MX0304.bin}, {module: MX0304.bin, name: b}]
)";
    RegisterPeer peer;
    peer.put(0, Words(200));
    peer.put(0, defaultsOf0304);
    peer.put(128, defaultsOf0304);
    peer.put(900, {0x5A03, 0x0304});
    peer.put(910, {0x5A03, 0x0304});
    Coupler coupler(onlinePlan(source), peer.target());
    EXPECT_TRUE(coupler.difference().isSame());
    // 128 + 25 registers are more than a request reads.
    EXPECT_EQ(peer.requests(), (Texts{"4 900 12", "4 900 2", "4 910 2", "3 0 25", "3 128 25"}));
}

TEST(Difference, AStationWithoutAMapIsAnError)
{
    EXPECT_EQ(failureOf([] {
                  const Coupler coupler(onlinePlan("modules: [MX0304.bin]"), TcpTarget{"h", 1});
              }),
              "the station does not state the registers of its coupler (\"modbus:\")");
}

TEST(Difference, AUnitOfALineIsOneOfTheProtocol)
{
    SerialTarget line;
    line.device = "/dev/no-such-line";
    const auto failureOfUnit = [&line](const std::string& unit) {
        const std::string source =
            "{modules: [MX0304.bin], modbus: {unit: " + unit + ", parameters: {address: 0}}}";
        return failureOf([&] { const Coupler coupler(onlinePlan(source), line); });
    };
    EXPECT_EQ(failureOfUnit("0"), "\"modbus:\" states unit 0, expected 1 to 247 on a serial line");
    EXPECT_EQ(failureOfUnit("247"), "no failure");
    EXPECT_EQ(failureOfUnit("248"),
              "\"modbus:\" states unit 248, expected 1 to 247 on a serial line");
}

TEST(Difference, AFaultNamesParameterAndRegisters)
{
    RegisterPeer peer;
    peer.put(500, {0x5A03, 0x0304, 0x5A03, 0x0304});
    peer.put(1000, defaultsOf0304);
    Coupler coupler(onlinePlan(differingModules), peer.target());
    const std::string text = failureOf([&coupler] { static_cast<void>(coupler.read()); });
    EXPECT_EQ(text.substr(0, text.find(';')),
              "module 2 \"Flows\", parameter \"Mains suppression\" to parameter \"AI 4/Filter "
              "depth\": registers 1030 to 1054 (0x0406 to 0x041e) cannot be read: exception 2 "
              "\"illegal data address\"");
}

} // namespace

} // namespace mxonline
