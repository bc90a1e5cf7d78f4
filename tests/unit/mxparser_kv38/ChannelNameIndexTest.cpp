#include "ChannelNameIndex.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <vector>

namespace {

using devices::parser::mx::ChannelNameIndex;
using Bytes = std::vector<std::uint8_t>;

// Entry after entry from the start, every time.
std::optional<std::uint32_t> plainFind(const Bytes& entries, std::uint8_t number)
{
    for (std::uint32_t pos = 0; pos < entries.size(); pos += 3) {
        if (entries[pos] == number) {
            return pos;
        }
    }
    return std::nullopt;
}

TEST(ChannelNameIndex, answersAsTheScanFromTheStartDoesInWhateverOrder)
{
    std::mt19937 engine{2038};
    unsigned found = 0;
    unsigned missing = 0;
    for (int round = 0; round < 5000; ++round) {
        // Any length: the last entry may be cut off.
        Bytes entries(engine() % 40);
        for (std::uint8_t& byte : entries) {
            byte = static_cast<std::uint8_t>(engine() % 8 + 250);
        }
        ChannelNameIndex index;
        for (int lookup = 0; lookup < 8; ++lookup) {
            const auto number = static_cast<std::uint8_t>(engine() % 8 + 250);
            const auto expected = plainFind(entries, number);
            ASSERT_EQ(
                index.find(entries.data(), static_cast<std::uint32_t>(entries.size()), number),
                expected)
                << "round " << round << ", number " << int{number};
            ++(expected ? found : missing);
        }
    }
    EXPECT_GT(found, 10000U);
    EXPECT_GT(missing, 5000U);
}

TEST(ChannelNameIndex, findsTheLastEntryOfTheLargestList)
{
    Bytes entries(65529, 1);
    entries[65526] = 7;
    ChannelNameIndex index;
    EXPECT_EQ(index.find(entries.data(), 65529, 7), 65526U);
    EXPECT_EQ(index.find(entries.data(), 65529, 1), 0U);
    EXPECT_EQ(index.find(entries.data(), 65529, 2), std::nullopt);
}

} // namespace
