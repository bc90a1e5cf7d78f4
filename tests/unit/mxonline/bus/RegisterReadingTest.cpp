#include "bus/RegisterReading.h"
#include "coupler/RegisterPeer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace mxonline {

namespace {

using SentRequests = std::vector<std::string>;
using ReadValues = std::vector<std::uint16_t>;

mxstation::ModbusMap mapOfReading()
{
    mxstation::ModbusMap map;
    map.timeout = 500;
    map.busyTime = 0;
    map.retries = 0;
    return map;
}

std::string readingReason(RegisterReading& reading, ModbusClient& client)
{
    try {
        reading.read(client);
        return "read";
    } catch (const mxmodule::Failure& failure) {
        const std::string& text = failure.reason().text;
        return text.substr(0, text.find(';'));
    }
}

TEST(RegisterReading, LeavesOutGapsThatDoNotExistFromThenOn)
{
    RegisterPeer peer;
    peer.put(10, {1, 2});
    peer.put(20, {3});
    ModbusClient client(peer.target(), mapOfReading(), nullptr);
    RegisterReading reading(3, {{{10, 2}, "m", "a"}, {{20, 1}, "m", "b"}}, 125);
    EXPECT_EQ(reading.requestCount(), 1U);
    EXPECT_EQ(readingReason(reading, client), "read");
    EXPECT_EQ(readingReason(reading, client), "read");
    EXPECT_EQ(peer.requests(), (SentRequests{"3 10 11", "3 10 2", "3 20 1", "3 10 2", "3 20 1"}));
    EXPECT_EQ(reading.values({10, 2}), (ReadValues{1, 2}));
    EXPECT_EQ(reading.values({20, 1}), (ReadValues{3}));
}

TEST(RegisterReading, NamesTheItemThatDoesNotExist)
{
    RegisterPeer peer;
    peer.put(10, {1, 2});
    ModbusClient client(peer.target(), mapOfReading(), nullptr);
    RegisterReading reading(3, {{{10, 2}, "m", "a"}, {{20, 1}, "m", "b"}}, 125);
    EXPECT_EQ(readingReason(reading, client),
              "m, b: register 20 (0x0014) cannot be read: exception 2 \"illegal data address\"");
}

// Ten registers in requests of four: 10 to 13, 14 to 17, 18 to 19. The last one goes on to "b".
TEST(RegisterReading, EndsWhenPartsOfAnItemDoNotExist)
{
    RegisterPeer peer;
    peer.put(10, {1, 2, 3, 4});
    ModbusClient client(peer.target(), mapOfReading(), nullptr);
    RegisterReading reading(3, {{{10, 10}, "m", "a"}, {{21, 1}, "m", "b"}}, 4);
    EXPECT_EQ(reading.requestCount(), 3U);
    EXPECT_EQ(readingReason(reading, client),
              "m, a: registers 14 to 17 (0x000e to 0x0011) cannot be "
              "read: exception 2 \"illegal data address\"");
    EXPECT_EQ(peer.requests(), (SentRequests{"3 10 4", "3 14 4"}));
}

// Registers 14 to 15 and 17 exist, 16 does not.
TEST(RegisterReading, LeavesOutTheGapAfterPartOfAnItem)
{
    RegisterPeer peer;
    peer.put(10, {1, 2, 3, 4, 5, 6});
    peer.put(17, {7});
    ModbusClient client(peer.target(), mapOfReading(), nullptr);
    RegisterReading reading(3, {{{10, 6}, "m", "a"}, {{17, 1}, "m", "b"}}, 4);
    EXPECT_EQ(readingReason(reading, client), "read");
    EXPECT_EQ(peer.requests(), (SentRequests{"3 10 4", "3 14 4", "3 14 2", "3 17 1"}));
    EXPECT_EQ(reading.values({10, 6}), (ReadValues{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(reading.values({17, 1}), (ReadValues{7}));
}

} // namespace

} // namespace mxonline
