// What the reader of stations takes of `modbus`, and what it refuses.

#include "../StationFixture.h"

#include <gmock/gmock.h>

namespace {

using mxstation::ModbusMap;
using mxstation::PartOrder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// The registers of a station whose other content has no errors.
ModbusMap mapIn(const std::string& modbus)
{
    const auto station = stationWith("modbus: " + modbus + "\nmodules: []\n");
    EXPECT_THAT(shownFindings(station.findings), IsEmpty());
    return station.modbus.value_or(ModbusMap{});
}

std::vector<std::string> errorsOfMap(const std::string& modbus)
{
    const auto station = stationWith("modbus: " + modbus + "\nmodules: []\n");
    EXPECT_EQ(station.modbus.has_value(), station.findings.empty());
    return shownFindings(station.findings);
}

TEST(ModbusReader, hasDefaultsForAllButTheParameters)
{
    const ModbusMap map = mapIn("{parameters: {address: 0x4000}}");
    EXPECT_EQ(map.unit, 1);
    EXPECT_EQ(map.inputs.address, 0);
    EXPECT_EQ(map.inputs.readFunction, 4);
    EXPECT_EQ(map.inputs.writeFunction, 0);
    EXPECT_EQ(map.outputs.address, 0);
    EXPECT_EQ(map.outputs.readFunction, 3);
    EXPECT_EQ(map.outputs.writeFunction, 16);
    EXPECT_EQ(map.parameters.address, 16384);
    EXPECT_EQ(map.parameters.stride, 128);
    EXPECT_FALSE(map.identity);
    EXPECT_FALSE(map.commit);
    EXPECT_EQ(map.mostRead, 125);
    EXPECT_EQ(map.mostWritten, 123);
    EXPECT_EQ(map.words, PartOrder::Big);
    EXPECT_EQ(map.bytes, PartOrder::Big);
    EXPECT_EQ(map.timeout, 1000U);
    EXPECT_EQ(map.busyTime, 5000U);
    EXPECT_EQ(map.retries, 2U);
}

TEST(ModbusReader, hasDefaultsWithinEachSection)
{
    const ModbusMap map = mapIn("{inputs: {address: 7}, outputs: {address: 8}, parameters: "
                                "{address: 9}, identity: {address: 10}, commit: {address: 11}}");
    EXPECT_EQ(map.inputs.readFunction, 4);
    EXPECT_EQ(map.outputs.readFunction, 3);
    EXPECT_EQ(map.outputs.writeFunction, 16);
    ASSERT_TRUE(map.identity);
    EXPECT_EQ(map.identity->stride, 2);
    EXPECT_EQ(map.identity->readFunction, 3);
    ASSERT_TRUE(map.commit);
    EXPECT_EQ(map.commit->value, 1);
    EXPECT_TRUE(map.commit->readsAreStaged);
}

TEST(ModbusReader, takesTheRegistersOfTheImages)
{
    const ModbusMap map = mapIn("{inputs: {address: 0x100, read: 3}, outputs: {address: 65535, "
                                "read: 4, write: 22}, parameters: {address: 0}}");
    EXPECT_EQ(map.inputs.address, 256);
    EXPECT_EQ(map.inputs.readFunction, 3);
    EXPECT_EQ(map.outputs.address, 65535);
    EXPECT_EQ(map.outputs.readFunction, 4);
    EXPECT_EQ(map.outputs.writeFunction, 22);
    EXPECT_EQ(mapIn("{outputs: {write: 6}, parameters: {address: 0}}").outputs.writeFunction, 6);
    EXPECT_EQ(mapIn("{outputs: {write: 0x10}, parameters: {address: 0}}").outputs.writeFunction,
              16);
}

TEST(ModbusReader, takesTheRegistersOfModules)
{
    const ModbusMap map = mapIn("\n"
                                "  parameters: {address: 1, stride: 1}\n"
                                "  identity: {address: 5, stride: 65535, read: 4}\n"
                                "  commit: {address: 6, value: 65535, reads: active}\n");
    EXPECT_EQ(map.parameters.address, 1);
    EXPECT_EQ(map.parameters.stride, 1);
    EXPECT_EQ(map.identity->address, 5);
    EXPECT_EQ(map.identity->stride, 65535);
    EXPECT_EQ(map.identity->readFunction, 4);
    EXPECT_EQ(map.commit->address, 6);
    EXPECT_EQ(map.commit->value, 65535);
    EXPECT_FALSE(map.commit->readsAreStaged);
    const ModbusMap staged =
        mapIn("{parameters: {address: 1}, commit: {address: 6, value: 0, reads: staged}}");
    EXPECT_EQ(staged.commit->value, 0);
    EXPECT_TRUE(staged.commit->readsAreStaged);
}

TEST(ModbusReader, takesOrdersTimesAndRequestSizes)
{
    const ModbusMap map = mapIn("{parameters: {address: 1}, unit: 0, most_read: 4, most_written: 4,"
                                " words: little, bytes: little, timeout: 1, busy: 0, retries: 0}");
    EXPECT_EQ(map.unit, 0);
    EXPECT_EQ(map.mostRead, 4);
    EXPECT_EQ(map.mostWritten, 4);
    EXPECT_EQ(map.words, PartOrder::Little);
    EXPECT_EQ(map.bytes, PartOrder::Little);
    EXPECT_EQ(map.timeout, 1U);
    EXPECT_EQ(map.busyTime, 0U);
    EXPECT_EQ(map.retries, 0U);
    const ModbusMap most =
        mapIn("{parameters: {address: 1}, unit: 255, most_read: 125, most_written: 123,"
              " words: big, bytes: little, timeout: 60000, busy: 600000, retries: 10}");
    EXPECT_EQ(most.unit, 255);
    EXPECT_EQ(most.mostRead, 125);
    EXPECT_EQ(most.mostWritten, 123);
    EXPECT_EQ(most.words, PartOrder::Big);
    EXPECT_EQ(most.bytes, PartOrder::Little);
    EXPECT_EQ(most.timeout, 60000U);
    EXPECT_EQ(most.busyTime, 600000U);
    EXPECT_EQ(most.retries, 10U);
}

TEST(ModbusReader, isOfTheStationAndItsPlan)
{
    const auto station = stationWith("modules: []\n"
                                     "modbus: {parameters: {address: 3}}\n");
    EXPECT_EQ(station.modbusPlace.line, 2U);
    EXPECT_EQ(station.modbusPlace.column, 9U);
    const auto made = plan(station);
    ASSERT_TRUE(made.modbus);
    EXPECT_EQ(made.modbus->parameters.address, 3);
    EXPECT_FALSE(planWith("modules: []").modbus);
}

TEST(ModbusReader, refusesWhatIsNoMap)
{
    EXPECT_THAT(errorsOfMap("502"),
                ElementsAre("1:9 error found \"502\", expected a map of the keys unit, inputs, "
                            "outputs, parameters, identity, commit, most_read, most_written, "
                            "words, bytes, timeout, busy, retries"));
    EXPECT_THAT(errorsOfMap("[a]"), SizeIs(1));
    EXPECT_THAT(errorsOfMap(""), ElementsAre("1:1 error \"modbus\" has no value"));
    EXPECT_THAT(errorsOfMap("\n"
                            "  inputs: 1\n"
                            "  outputs: [2]\n"
                            "  parameters: 0x4000\n"
                            "  identity: yes\n"
                            "  commit: 4\n"),
                ElementsAre("2:11 error found \"1\", expected a map of the keys address, read",
                            "3:12 error found a list, expected a map of the keys address, read, "
                            "write",
                            "4:15 error found \"0x4000\", expected a map of the keys address, "
                            "stride",
                            "5:13 error found \"yes\", expected a map of the keys address, stride, "
                            "read",
                            "6:11 error found \"4\", expected a map of the keys address, value, "
                            "reads"));
}

TEST(ModbusReader, namesWhatIsMissing)
{
    EXPECT_THAT(errorsOfMap("{unit: 1}"),
                ElementsAre("1:9 error \"parameters\" is missing, the registers of the modules' "
                            "parameters"));
    EXPECT_THAT(errorsOfMap("\n"
                            "  parameters: {stride: 4}\n"
                            "  identity: {}\n"
                            "  commit: {value: 2}\n"),
                ElementsAre("2:15 error \"address\" is missing, the first parameter register of "
                            "the first module",
                            "3:13 error \"address\" is missing, the first register with the "
                            "identifier of the first module",
                            "4:11 error \"address\" is missing, the register that makes parameters "
                            "active"));
}

// The unknown key may be the missing one.
TEST(ModbusReader, refusesUnknownKeysWithTheNearest)
{
    EXPECT_THAT(
        errorsOfMap("{units: 1}"),
        ElementsAre("1:10 error unknown key of modbus \"units\", did you mean \"unit\"? "
                    "(accepted: unit, inputs, outputs, parameters, identity, commit, most_read, "
                    "most_written, words, bytes, timeout, busy, retries)"));
    EXPECT_THAT(
        errorsOfMap("\n"
                    "  inputs: {write: 6}\n"
                    "  outputs: {adress: 1}\n"
                    "  parameters: {addres: 1}\n"
                    "  identity: {adress: 1}\n"
                    "  commit: {addresss: 1}\n"),
        ElementsAre("2:12 error unknown key of inputs \"write\" (accepted: address, read)",
                    "3:13 error unknown key of outputs \"adress\", did you mean \"address\"? "
                    "(accepted: address, read, write)",
                    "4:16 error unknown key of parameters \"addres\", did you mean \"address\"? "
                    "(accepted: address, stride)",
                    "5:14 error unknown key of identity \"adress\", did you mean \"address\"? "
                    "(accepted: address, stride, read)",
                    "6:12 error unknown key of commit \"addresss\", did you mean \"address\"? "
                    "(accepted: address, value, reads)"));
}

TEST(ModbusReader, refusesNumbersBeyondTheirLimits)
{
    EXPECT_THAT(errorsOfMap("\n"
                            "  unit: 256\n"
                            "  inputs: {address: 65536}\n"
                            "  outputs: {address: -1}\n"
                            "  parameters: {address: 0x10000, stride: 0}\n"
                            "  identity: {address: x, stride: 1}\n"
                            "  commit: {address: 65536, value: 65536}\n"
                            "  most_read: 3\n"
                            "  most_written: 124\n"
                            "  timeout: 0\n"
                            "  busy: 600001\n"
                            "  retries: 11\n"),
                ElementsAre("2:9 error found \"256\", expected a whole number from 0 to 255",
                            "3:21 error found \"65536\", expected a whole number from 0 to 65535",
                            "4:22 error found \"-1\", expected a whole number from 0 to 65535",
                            "5:25 error found \"0x10000\", expected a whole number from 0 to 65535",
                            "5:42 error found \"0\", expected a whole number from 1 to 65535",
                            "6:23 error found \"x\", expected a whole number from 0 to 65535",
                            "6:34 error found \"1\", expected a whole number from 2 to 65535",
                            "7:21 error found \"65536\", expected a whole number from 0 to 65535",
                            "7:35 error found \"65536\", expected a whole number from 0 to 65535",
                            "8:14 error found \"3\", expected a whole number from 4 to 125",
                            "9:17 error found \"124\", expected a whole number from 4 to 123",
                            "10:12 error found \"0\", expected a whole number from 1 to 60000",
                            "11:9 error found \"600001\", expected a whole number from 0 to 600000",
                            "12:12 error found \"11\", expected a whole number from 0 to 10"));
    EXPECT_THAT(errorsOfMap("{parameters: {address: 1}, most_read: 126, most_written: 3, timeout: "
                            "60001}"),
                SizeIs(3));
}

TEST(ModbusReader, refusesFunctionCodesThatDoSomethingElse)
{
    EXPECT_THAT(errorsOfMap("\n"
                            "  inputs: {read: 2}\n"
                            "  outputs: {read: 16, write: 5}\n"
                            "  parameters: {address: 1}\n"
                            "  identity: {address: 1, read: 17}\n"),
                ElementsAre("2:18 error found \"2\", expected function code 3 or 4",
                            "3:19 error found \"16\", expected function code 3 or 4",
                            "3:30 error found \"5\", expected function code 6, 16 or 22",
                            "5:32 error found \"17\", expected function code 3 or 4"));
    const auto station = stationWith("modbus: {inputs: {read: '4'}, outputs: {write: {}}, "
                                     "parameters: {address: 1}}\nmodules: []");
    EXPECT_THAT(shownFindings(station.findings),
                ElementsAre("1:25 error found the text \"4\", expected function code 3 or 4",
                            "1:48 error found a map, expected function code 6, 16 or 22"));
    EXPECT_EQ(station.findings[0].hint, "a number is without quotation marks");
    EXPECT_THAT(station.findings[1].accepted, ElementsAre("6", "16", "22"));
}

TEST(ModbusReader, refusesUnknownWords)
{
    EXPECT_THAT(
        errorsOfMap("\n"
                    "  parameters: {address: 1}\n"
                    "  commit: {address: 2, reads: stage}\n"
                    "  words: bigg\n"
                    "  bytes: [little]\n"),
        ElementsAre("3:31 error unknown state of parameters \"stage\", did you mean \"staged\"? "
                    "(accepted: staged, active)",
                    "4:10 error unknown order of words \"bigg\", did you mean \"big\"? (accepted: "
                    "big, little)",
                    "5:10 error found a list, expected one of the words big, little"));
}

TEST(ModbusReader, refusesKeysStatedTwiceAndWithoutValue)
{
    EXPECT_THAT(errorsOfMap("\n"
                            "  unit: 1\n"
                            "  unit: 2\n"
                            "  timeout:\n"
                            "  parameters: {address: }\n"),
                ElementsAre("3:3 error \"unit\" is stated twice",
                            "4:3 error \"timeout\" has no value",
                            "5:16 error \"address\" has no value"));
}

} // namespace
