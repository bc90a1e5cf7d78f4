#include "bus/AnsweringPeer.h"
#include "bus/ModbusClient.h"
#include "bus/RtuFrame.h"

#include <mxonline/Target.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <variant>
#include <vector>

// Frames of Modbus RTU on a pseudo terminal: unit, function, data, checksum with its low byte
// first.

namespace mxonline {

namespace {

using Words = std::vector<std::uint16_t>;

mxstation::ModbusMap lineMap()
{
    mxstation::ModbusMap map;
    map.unit = 1;
    map.timeout = 200;
    map.busyTime = 0;
    map.retries = 0;
    return map;
}

std::string lineFaultOf(const AnsweringPeer::React& react)
{
    const AnsweringPeer peer(react, true);
    ModbusClient client(peer.target(), lineMap(), nullptr);
    try {
        static_cast<void>(client.read(3, {0, 10}, "a"));
    } catch (const mxmodule::Failure& failure) {
        EXPECT_FALSE(failure.reason().hint.empty());
        const std::string beginning = "a: registers 0 to 9 (0x0000 to 0x0009) cannot be read: ";
        EXPECT_EQ(failure.reason().text.substr(0, beginning.size()), beginning);
        return failure.reason().text.substr(beginning.size());
    }
    return "answered";
}

// The frame of the protocol's own description of RTU: unit 1 reads ten registers from 0.
constexpr const char* sentOnLine = "; sent 01 03 00 00 00 0a c5 cd; received ";

TEST(RtuFrame, HasTheChecksumOfTheProtocol)
{
    EXPECT_EQ(rtuFrame(1, {3, 0, 0, 0, 10}), (Bytes{1, 3, 0, 0, 0, 10, 0xC5, 0xCD}));
    EXPECT_EQ(rtuFrame(2, {7}), (Bytes{2, 7, 0x41, 0x12}));
    EXPECT_TRUE(hasRtuChecksum({2, 7, 0x41, 0x12}));
    EXPECT_FALSE(hasRtuChecksum({2, 7, 0x12, 0x41}));
}

TEST(RtuFrame, StatesItsSize)
{
    EXPECT_EQ(rtuAnswerSize({1, 0x83, 2}), 5U);
    EXPECT_EQ(rtuAnswerSize({1, 3, 20}), 25U);
    EXPECT_EQ(rtuAnswerSize({1, 4, 2}), 7U);
    EXPECT_EQ(rtuAnswerSize({1, 6, 0}), 8U);
    EXPECT_EQ(rtuAnswerSize({1, 16, 0}), 8U);
    EXPECT_EQ(rtuAnswerSize({1, 22, 0}), 10U);
    EXPECT_FALSE(rtuAnswerSize({1, 99, 0}).has_value());
}

TEST(SerialFaults, AnAnswerHasItsRegisters)
{
    const AnsweringPeer peer(
        [](const Bytes&) {
            return Reaction{rtuFrame(1, {3, 4, 0x12, 0x34, 0x56, 0x78})};
        },
        true);
    ModbusClient client(peer.target(), lineMap(), nullptr);
    EXPECT_EQ(client.read(3, {0, 2}, "a"), (Words{0x1234, 0x5678}));
    EXPECT_EQ(client.read(3, {0, 2}, "a"), (Words{0x1234, 0x5678}));
    EXPECT_EQ(peer.frames().front(), rtuFrame(1, {3, 0, 0, 0, 2}));
}

TEST(SerialFaults, Silence)
{
    EXPECT_EQ(lineFaultOf([](const Bytes&) { return Reaction(); }),
              std::string("no answer within 200 ms") + sentOnLine + "nothing");
}

TEST(SerialFaults, TooShort)
{
    EXPECT_EQ(lineFaultOf([](const Bytes&) {
                  return Reaction{{1, 3, 20, 0, 1}};
              }),
              std::string("the answer ends after 5 bytes") + sentOnLine + "01 03 14 00 01");
}

TEST(SerialFaults, AWrongChecksum)
{
    EXPECT_EQ(lineFaultOf([](const Bytes&) {
                  return Reaction{{1, 0x83, 2, 0, 0}};
              }),
              std::string("the answer has a wrong checksum") + sentOnLine + "01 83 02 00 00");
}

TEST(SerialFaults, AnotherUnit)
{
    EXPECT_EQ(lineFaultOf([](const Bytes&) {
                  return Reaction{rtuFrame(2, {0x83, 2})};
              }).substr(0, 36),
              "the answer is of unit 2, expected 1;");
}

TEST(SerialFaults, NoiseInPlaceOfAnAnswer)
{
    EXPECT_EQ(lineFaultOf([](const Bytes&) {
                  return Reaction{{0xFE, 0x55, 0x00}};
              }),
              std::string("the answer is of function 85, expected 3") + sentOnLine + "fe 55 00");
}

TEST(SerialFaults, AnException)
{
    EXPECT_EQ(lineFaultOf([](const Bytes&) {
                  return Reaction{rtuFrame(1, {0x83, 11})};
              }).substr(0, 55),
              "exception 11 \"gateway target device failed to respond\";");
}

// Bytes that came before the request are not its answer.
TEST(SerialFaults, OldBytesAreDropped)
{
    int count = 0;
    const AnsweringPeer peer(
        [&count](const Bytes&) {
            Bytes answer = rtuFrame(1, {3, 2, 0, 7});
            if (++count == 1) {
                answer.insert(answer.end(), {1, 3, 2, 0xBA, 0xD0});
            }
            return Reaction{answer};
        },
        true);
    ModbusClient client(peer.target(), lineMap(), nullptr);
    EXPECT_EQ(client.read(3, {0, 1}, "a"), (Words{7}));
    EXPECT_EQ(client.read(3, {0, 1}, "a"), (Words{7}));
}

Bytes addressAsValue(const Bytes& frame)
{
    return rtuFrame(1, {3, 2, frame[2], frame[3]});
}

// The first answer comes after its time, while the same request was sent again: it is taken, and
// that of the second request must not be taken for that of the third.
TEST(SerialFaults, ALateAnswerIsNeverTakenForAnother)
{
    int count = 0;
    const AnsweringPeer peer(
        [&count](const Bytes& frame) {
            const int delays[] = {150, 40, 0};
            std::this_thread::sleep_for(std::chrono::milliseconds(delays[std::min(count++, 2)]));
            return Reaction{addressAsValue(frame)};
        },
        true);
    mxstation::ModbusMap map = lineMap();
    map.timeout = 120;
    map.retries = 1;
    ModbusClient client(peer.target(), map, nullptr);
    EXPECT_EQ(client.read(3, {1, 1}, "a"), (Words{1}));
    EXPECT_EQ(client.read(3, {2, 1}, "a"), (Words{2}));
    EXPECT_EQ(client.read(3, {3, 1}, "a"), (Words{3}));
    EXPECT_EQ(peer.frames().size(), 4U);
}

TEST(SerialFaults, AfterSilenceAnotherRequestIsAnswered)
{
    int count = 0;
    const AnsweringPeer peer(
        [&count](const Bytes& frame) {
            return count++ == 0 ? Reaction() : Reaction{addressAsValue(frame)};
        },
        true);
    mxstation::ModbusMap map = lineMap();
    map.timeout = 100;
    ModbusClient client(peer.target(), map, nullptr);
    EXPECT_THROW(static_cast<void>(client.read(3, {1, 1}, "a")), mxmodule::Failure);
    EXPECT_EQ(client.read(3, {2, 1}, "a"), (Words{2}));
}

// An answer of 205 characters, 11 bits each, takes 1.9 s at 1200 baud, here 0.6 s.
TEST(SerialFaults, TheTimeToWaitIsWithoutThatOfTheFrames)
{
    const AnsweringPeer peer(
        [](const Bytes& /*frame*/) {
            std::this_thread::sleep_for(std::chrono::milliseconds(60));
            Bytes answer = {3, 200};
            answer.resize(202, 7);
            return Reaction{rtuFrame(1, answer), false, std::chrono::milliseconds(3)};
        },
        true);
    SerialTarget target = std::get<SerialTarget>(peer.target());
    target.baud = 1200;
    mxstation::ModbusMap map = lineMap();
    map.timeout = 30;
    ModbusClient client(target, map, nullptr);
    EXPECT_EQ(client.read(3, {7, 100}, "a"), Words(100, 0x0707));
}

TEST(SerialFaults, ALineThatDoesNotExist)
{
    SerialTarget target;
    target.device = "/dev/no-such-line";
    ModbusClient client(target, lineMap(), nullptr);
    try {
        static_cast<void>(client.read(3, {0, 1}, "a"));
        FAIL() << "opened";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().text,
                  "a: register 0 (0x0000) cannot be read: the serial line /dev/no-such-line cannot "
                  "be opened: No such file or directory");
        EXPECT_EQ(failure.reason().place, "rtu:/dev/no-such-line,19200,E,1 unit 1");
        EXPECT_EQ(failure.reason().hint, "the serial line does not exist: compare its name, look "
                                         "at the adapter's plug (ls /dev/ttyUSB* /dev/ttyS*)");
    }
}

TEST(SerialFaults, AFileIsNoLine)
{
    SerialTarget target;
    target.device = "/dev/null";
    ModbusClient client(target, lineMap(), nullptr);
    EXPECT_THROW(static_cast<void>(client.read(3, {0, 1}, "a")), mxmodule::Failure);
}

} // namespace

} // namespace mxonline
