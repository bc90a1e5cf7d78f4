#include "bus/AnsweringPeer.h"
#include "bus/ModbusClient.h"

#include <mxonline/Target.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Frames of Modbus TCP by hand: transaction, protocol 0, length, unit, function, data.

namespace mxonline {

namespace {

using Words = std::vector<std::uint16_t>;

mxstation::ModbusMap quickMap()
{
    mxstation::ModbusMap map;
    map.unit = 9;
    map.timeout = 200;
    map.busyTime = 0;
    map.retries = 0;
    return map;
}

// The answer to a read of two registers, 0x1234 and 0x5678.
Bytes twoRegisters(const Bytes& frame)
{
    return {frame[0], frame[1], 0, 0, 0, 7, 9, 3, 4, 0x12, 0x34, 0x56, 0x78};
}

struct Outcome
{
    Words values;
    std::string text;
    std::string hint;
};

Outcome readTwo(const Target& target, const mxstation::ModbusMap& map)
{
    ModbusClient client(target, map, nullptr);
    Outcome outcome;
    try {
        outcome.values = client.read(3, {0x4000, 2}, "module 1 \"Levels\", parameter \"Limit\"");
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Output);
        EXPECT_EQ(failure.reason().place, targetText(target) + " unit 9");
        outcome.text = failure.reason().text;
        outcome.hint = failure.reason().hint;
    }
    return outcome;
}

constexpr const char* subject =
    "module 1 \"Levels\", parameter \"Limit\": registers 16384 to 16385 (0x4000 to 0x4001) cannot "
    "be read: ";
constexpr const char* sentFrame = "; sent 00 01 00 00 00 06 09 03 40 00 00 02; received ";

std::string faultOf(const AnsweringPeer::React& react)
{
    const AnsweringPeer peer(react);
    const Outcome outcome = readTwo(peer.target(), quickMap());
    EXPECT_FALSE(outcome.hint.empty());
    EXPECT_EQ(outcome.text.substr(0, std::string(subject).size()), subject);
    return outcome.text.substr(std::string(subject).size());
}

Bytes changed(Bytes bytes, std::size_t index, std::uint8_t value)
{
    bytes[index] = value;
    return bytes;
}

TEST(TcpFaults, AnAnswerHasItsRegisters)
{
    const AnsweringPeer peer([](const Bytes& frame) { return Reaction{twoRegisters(frame)}; });
    EXPECT_EQ(readTwo(peer.target(), quickMap()).values, (Words{0x1234, 0x5678}));
    EXPECT_EQ(peer.frames(), (std::vector<Bytes>{{0, 1, 0, 0, 0, 6, 9, 3, 0x40, 0, 0, 2}}));
}

TEST(TcpFaults, Silence)
{
    EXPECT_EQ(faultOf([](const Bytes&) { return Reaction(); }),
              std::string("no answer within 200 ms") + sentFrame + "nothing");
}

TEST(TcpFaults, ClosedInTheMiddle)
{
    EXPECT_EQ(faultOf([](const Bytes&) {
                  return Reaction{{0, 1, 0, 0, 0, 7, 9, 3}, true};
              }),
              std::string("the connection was closed before the answer was complete") + sentFrame +
                  "00 01 00 00 00 07 09 03");
}

TEST(TcpFaults, TooShort)
{
    EXPECT_EQ(faultOf([](const Bytes&) {
                  return Reaction{{0, 1, 0, 0, 0, 7, 9, 3, 4, 0x12}};
              }),
              std::string("the answer ends after 10 bytes") + sentFrame +
                  "00 01 00 00 00 07 09 03 04 12");
}

TEST(TcpFaults, AnotherTransaction)
{
    EXPECT_EQ(
        faultOf([](const Bytes& frame) { return Reaction{changed(twoRegisters(frame), 1, 7)}; }),
        std::string("the answer is of transaction 7, expected 1") + sentFrame +
            "00 07 00 00 00 07 09");
}

TEST(TcpFaults, AnotherUnit)
{
    EXPECT_EQ(
        faultOf([](const Bytes& frame) { return Reaction{changed(twoRegisters(frame), 6, 8)}; }),
        std::string("the answer is of unit 8, expected 9") + sentFrame + "00 01 00 00 00 07 08");
}

TEST(TcpFaults, AnotherProtocol)
{
    EXPECT_EQ(
        faultOf([](const Bytes& frame) { return Reaction{changed(twoRegisters(frame), 3, 1)}; }),
        std::string("the answer is of protocol 1, expected 0: this is no Modbus TCP") + sentFrame +
            "00 01 00 01 00 07 09");
}

TEST(TcpFaults, AWrongLength)
{
    EXPECT_EQ(
        faultOf([](const Bytes& frame) { return Reaction{changed(twoRegisters(frame), 4, 1)}; }),
        std::string("the answer states a length of 263 bytes, expected 3 to 254") + sentFrame +
            "00 01 00 00 01 07 09");
    EXPECT_EQ(
        faultOf([](const Bytes& frame) { return Reaction{changed(twoRegisters(frame), 5, 2)}; }),
        std::string("the answer states a length of 2 bytes, expected 3 to 254") + sentFrame +
            "00 01 00 00 00 02 09");
}

TEST(TcpFaults, AnotherFunction)
{
    EXPECT_EQ(
        faultOf([](const Bytes& frame) { return Reaction{changed(twoRegisters(frame), 7, 4)}; }),
        std::string("the answer is of function 4, expected 3") + sentFrame +
            "00 01 00 00 00 07 09 04 04 12 34 56 78");
}

TEST(TcpFaults, AWrongNumberOfValues)
{
    EXPECT_EQ(faultOf([](const Bytes&) {
                  return Reaction{{0, 1, 0, 0, 0, 5, 9, 3, 2, 0x12, 0x34}};
              }),
              std::string("the answer has 2 bytes of values, stated as 2, expected 4") + sentFrame +
                  "00 01 00 00 00 05 09 03 02 12 34");
    EXPECT_EQ(
        faultOf([](const Bytes& frame) { return Reaction{changed(twoRegisters(frame), 8, 6)}; }),
        std::string("the answer has 4 bytes of values, stated as 6, expected 4") + sentFrame +
            "00 01 00 00 00 07 09 03 06 12 34 56 78");
}

TEST(TcpFaults, Exceptions)
{
    EXPECT_EQ(faultOf([](const Bytes&) {
                  return Reaction{{0, 1, 0, 0, 0, 3, 9, 0x83, 2}};
              }),
              std::string("exception 2 \"illegal data address\"") + sentFrame +
                  "00 01 00 00 00 03 09 83 02");
    EXPECT_EQ(faultOf([](const Bytes&) {
                  return Reaction{{0, 1, 0, 0, 0, 3, 9, 0x83, 99}};
              }),
              std::string("exception 99, which the protocol does not define") + sentFrame +
                  "00 01 00 00 00 03 09 83 63");
}

TEST(TcpFaults, ABusyCouplerIsAskedAgainForItsTime)
{
    int count = 0;
    const AnsweringPeer peer([&count](const Bytes& frame) {
        return ++count < 3 ? Reaction{{frame[0], frame[1], 0, 0, 0, 3, 9, 0x83, 6}}
                           : Reaction{twoRegisters(frame)};
    });
    mxstation::ModbusMap map = quickMap();
    map.busyTime = 60000;
    EXPECT_EQ(readTwo(peer.target(), map).values, (Words{0x1234, 0x5678}));
    EXPECT_EQ(peer.frames().size(), 3U);
}

TEST(TcpFaults, ABusyCouplerIsAFaultAfterItsTime)
{
    EXPECT_EQ(faultOf([](const Bytes& frame) {
                  return Reaction{{frame[0], frame[1], 0, 0, 0, 3, 9, 0x83, 6}};
              }),
              std::string("exception 6 \"server device busy\" for 0 ms") + sentFrame +
                  "00 01 00 00 00 03 09 83 06");
}

// The second request has a connection and a transaction of its own.
TEST(TcpFaults, ARequestWithoutAnswerIsSentAgain)
{
    const AnsweringPeer peer([](const Bytes& frame) {
        return frame[1] == 1 ? Reaction{{}, true} : Reaction{twoRegisters(frame)};
    });
    mxstation::ModbusMap map = quickMap();
    map.retries = 1;
    ModbusClient client(peer.target(), map, nullptr);
    EXPECT_EQ(client.read(3, {0x4000, 2}, "a"), (Words{0x1234, 0x5678}));
    EXPECT_EQ(client.traffic().requests, 1U);
    EXPECT_EQ(client.traffic().repetitions, 1U);
    EXPECT_EQ(client.traffic().registersRead, 2U);
    EXPECT_EQ(peer.frames().size(), 2U);
}

TEST(TcpFaults, TheNumberOfAttemptsIsNamed)
{
    const AnsweringPeer peer([](const Bytes&) { return Reaction{{}, true}; });
    mxstation::ModbusMap map = quickMap();
    map.retries = 2;
    const std::string text = readTwo(peer.target(), map).text;
    EXPECT_NE(text.find("complete, after 3 attempts; sent 00 03"), std::string::npos) << text;
    EXPECT_EQ(peer.frames().size(), 3U);
}

// The bytes after the first answer belong to none: the second request gets its own.
TEST(TcpFaults, ALateAnswerIsNeverTakenForAnother)
{
    const AnsweringPeer peer([](const Bytes& frame) {
        Bytes twice = twoRegisters(frame);
        if (frame[1] == 1) {
            const Bytes late = {0, 2, 0, 0, 0, 7, 9, 3, 4, 0xBA, 0xD0, 0xBA, 0xD0};
            twice.insert(twice.end(), late.begin(), late.end());
        }
        return Reaction{twice};
    });
    mxstation::ModbusMap map = quickMap();
    map.retries = 1;
    ModbusClient client(peer.target(), map, nullptr);
    EXPECT_EQ(client.read(3, {0x4000, 2}, "a"), (Words{0x1234, 0x5678}));
    EXPECT_EQ(client.read(3, {0x4000, 2}, "a"), (Words{0x1234, 0x5678}));
    EXPECT_EQ(client.traffic().repetitions, 1U);
}

TEST(TcpFaults, ACouplerThatClosesBetweenRequestsIsConnectedAgain)
{
    const AnsweringPeer peer([](const Bytes& frame) {
        return Reaction{twoRegisters(frame), true};
    });
    mxstation::ModbusMap map = quickMap();
    map.retries = 1; // the end may come only after the next request was sent
    ModbusClient client(peer.target(), map, nullptr);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(client.read(3, {0x4000, 2}, "a"), (Words{0x1234, 0x5678}));
    }
}

TEST(TcpFaults, ARefusedConnection)
{
    Target closed;
    {
        const AnsweringPeer peer([](const Bytes&) { return Reaction(); });
        closed = peer.target();
    }
    const Outcome outcome = readTwo(closed, quickMap());
    EXPECT_EQ(outcome.text, std::string(subject) + "the connection was refused");
    EXPECT_EQ(outcome.hint, "nothing listens at port " +
                                std::to_string(std::get<TcpTarget>(closed).port) +
                                " of 127.0.0.1: compare the port, or start the coupler's Modbus "
                                "server");
}

TEST(TcpFaults, AnUnknownHost)
{
    const Outcome outcome = readTwo(TcpTarget{"no-such-host.invalid", 502}, quickMap());
    EXPECT_EQ(outcome.text.find(std::string(subject) +
                                "the host \"no-such-host.invalid\" is not known: "),
              0U)
        << outcome.text;
}

TEST(TcpFaults, AWriteIsConfirmed)
{
    const AnsweringPeer peer([](const Bytes& frame) {
        return Reaction{{frame[0], frame[1], 0, 0, 0, 6, 9, 16, 0x40, 0, 0, 2}};
    });
    ModbusClient client(peer.target(), quickMap(), nullptr);
    client.write(0x4000, {0x1234, 0x5678}, "a");
    EXPECT_EQ(client.traffic().registersWritten, 2U);
    EXPECT_EQ(peer.frames(), (std::vector<Bytes>{{0, 1, 0, 0, 0, 11, 9, 16, 0x40, 0, 0, 2, 4, 0x12,
                                                  0x34, 0x56, 0x78}}));
}

TEST(TcpFaults, AWriteOfOtherRegistersIsNoConfirmation)
{
    const AnsweringPeer peer([](const Bytes& frame) {
        return Reaction{{frame[0], frame[1], 0, 0, 0, 6, 9, 16, 0x40, 1, 0, 2}};
    });
    ModbusClient client(peer.target(), quickMap(), nullptr);
    try {
        client.write(0x4000, {1, 2}, "a");
        FAIL() << "not reported";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().text,
                  "a: registers 16384 to 16385 (0x4000 to 0x4001) cannot be written: the answer "
                  "confirms 10 40 01 00 02, expected 10 40 00 00 02; sent 00 01 00 00 00 0b 09 10 "
                  "40 00 00 02 04 00 01 00 02; received 00 01 00 00 00 06 09 10 40 01 00 02");
    }
    EXPECT_EQ(client.traffic().registersWritten, 0U);
}

// Function 22 sends the bits to keep and those to set.
TEST(TcpFaults, SomeBitsOfARegister)
{
    const AnsweringPeer peer([](const Bytes& frame) { return Reaction{frame}; });
    ModbusClient client(peer.target(), quickMap(), nullptr);
    client.writeBits(0x10, 0x00F0, 0xFF5F, "a");
    client.writeOne(0x11, 0xABCD, "a");
    EXPECT_EQ(peer.frames(),
              (std::vector<Bytes>{{0, 1, 0, 0, 0, 8, 9, 22, 0, 0x10, 0xFF, 0x0F, 0x00, 0x50},
                                  {0, 2, 0, 0, 0, 6, 9, 6, 0, 0x11, 0xAB, 0xCD}}));
}

} // namespace

} // namespace mxonline
