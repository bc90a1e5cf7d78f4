#include "diff/StationMatch.h"

#include <gmock/gmock.h>

namespace {

using mxstation::Channel;
using mxstation::ChannelPair;

Channel named(const std::string& name, std::uint8_t number, bool isInput, std::uint64_t firstBit)
{
    Channel channel{};
    channel.name = name;
    channel.number = number;
    channel.isInput = isInput;
    channel.firstBit = firstBit;
    return channel;
}

// The first bits of matched channels, -1 for none.
std::vector<std::pair<int, int>> matchedBits(const std::vector<Channel>& a,
                                             const std::vector<Channel>& b)
{
    std::vector<const Channel*> ofA;
    std::vector<const Channel*> ofB;
    for (const Channel& channel : a) {
        ofA.push_back(&channel);
    }
    for (const Channel& channel : b) {
        ofB.push_back(&channel);
    }
    const auto bitOf = [](const Channel* channel) {
        return channel == nullptr ? -1 : static_cast<int>(channel->firstBit);
    };
    std::vector<std::pair<int, int>> bits;
    for (const ChannelPair& pair : matchedChannels(ofA, ofB)) {
        bits.emplace_back(bitOf(pair.a), bitOf(pair.b));
    }
    return bits;
}

using Bits = std::vector<std::pair<int, int>>;

TEST(StationMatch, findsChannelsByNameWhereverTheyAre)
{
    EXPECT_EQ(matchedBits({named("Level", 0, true, 0), named("Flow", 1, true, 1)},
                          {named("Flow", 0, true, 2), named("Level", 7, false, 3)}),
              (Bits{{0, 3}, {1, 2}}));
}

TEST(StationMatch, takesNumberAndDirectionWhereNamesRepeat)
{
    EXPECT_EQ(
        matchedBits(
            {named("Count", 0, true, 0), named("Count", 0, false, 1), named("Count", 1, true, 2)},
            {named("Count", 1, true, 3), named("Count", 0, false, 4), named("Count", 0, true, 5)}),
        (Bits{{0, 5}, {1, 4}, {2, 3}}));
}

TEST(StationMatch, takesTheOrderWhereNothingElseDiffers)
{
    EXPECT_EQ(matchedBits({named("", 0, true, 0), named("", 0, true, 1)},
                          {named("", 0, true, 2), named("", 0, true, 3), named("", 0, true, 4)}),
              (Bits{{0, 2}, {1, 3}, {-1, 4}}));
}

TEST(StationMatch, listsSingleChannels)
{
    EXPECT_EQ(matchedBits({named("Level", 0, true, 0)}, {named("Flow", 0, true, 1)}),
              (Bits{{0, -1}, {-1, 1}}));
}

} // namespace
