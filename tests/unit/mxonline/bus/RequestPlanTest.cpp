#include "bus/RequestPlan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace mxonline {

bool operator==(const std::vector<RegisterRange>& a, const std::vector<RegisterRange>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

namespace {

using Ranges = std::vector<RegisterRange>;

TEST(RequestPlan, JoinsWhatFollows)
{
    EXPECT_EQ(requestsFor({{10, 1}, {11, 2}, {13, 4}}, 125, Gaps::LeftOut), (Ranges{{10, 7}}));
}

TEST(RequestPlan, GoesOverGapsWhereThatSavesARequest)
{
    const Ranges items = {{0, 2}, {16, 2}, {32, 2}};
    EXPECT_EQ(requestsFor(items, 125, Gaps::Included), (Ranges{{0, 34}}));
    EXPECT_EQ(requestsFor(items, 125, Gaps::LeftOut), items);
}

// Registers 0 to 17 take 18, one more than allowed.
TEST(RequestPlan, NeverDividesAnItem)
{
    EXPECT_EQ(requestsFor({{0, 2}, {14, 4}}, 17, Gaps::Included), (Ranges{{0, 2}, {14, 4}}));
    EXPECT_EQ(requestsFor({{0, 2}, {14, 4}}, 18, Gaps::Included), (Ranges{{0, 18}}));
}

TEST(RequestPlan, DividesOnlyAnItemOfMoreThanARequest)
{
    EXPECT_EQ(requestsFor({{5, 10}, {15, 1}}, 4, Gaps::Included),
              (Ranges{{5, 4}, {9, 4}, {13, 3}}));
}

TEST(RequestPlan, ContainsOverlappingItemsOnce)
{
    EXPECT_EQ(requestsFor({{0, 4}, {1, 1}, {3, 2}}, 125, Gaps::LeftOut), (Ranges{{0, 5}}));
}

TEST(RequestPlan, HasNothingForNothing)
{
    EXPECT_TRUE(requestsFor({}, 125, Gaps::Included).empty());
    EXPECT_TRUE(requestsFor({{7, 0}}, 125, Gaps::Included).empty());
}

// The fewest requests by trying every way to cut the list of items into consecutive parts.
std::size_t fewestOf(const Ranges& items, std::uint32_t most)
{
    std::vector<std::size_t> fewest(items.size() + 1, items.size() + 1);
    fewest[0] = 0;
    for (std::size_t end = 1; end <= items.size(); ++end) {
        for (std::size_t begin = 0; begin < end; ++begin) {
            if (items[end - 1].end() - items[begin].address <= most) {
                fewest[end] = std::min(fewest[end], fewest[begin] + 1);
            }
        }
    }
    return fewest.back();
}

TEST(RequestPlan, SendsTheFewestRequests)
{
    std::mt19937 random(5);
    const auto upTo = [&random](std::uint32_t most) {
        return static_cast<std::uint32_t>(random() % most);
    };
    for (int round = 0; round < 2000; ++round) {
        Ranges items;
        std::uint32_t address = 0;
        for (std::uint32_t i = 0, count = 1 + upTo(12); i < count; ++i) {
            address += upTo(20);
            items.push_back({address, 1 + upTo(4)});
            address = items.back().end();
        }
        const std::uint32_t most = 4 + upTo(60);
        const Ranges requests = requestsFor(items, most, Gaps::Included);
        EXPECT_EQ(requests.size(), fewestOf(items, most));
        for (const RegisterRange& item : items) {
            EXPECT_TRUE(std::any_of(requests.begin(), requests.end(), [&](const auto& one) {
                return one.address <= item.address && item.end() <= one.end();
            }));
        }
    }
}

} // namespace

} // namespace mxonline
