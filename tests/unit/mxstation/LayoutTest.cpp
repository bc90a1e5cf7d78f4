#include <mxstation/Layout.h>

#include <gmock/gmock.h>

#include <set>

namespace {

TEST(NamedLayouts, beginWithTheDefault)
{
    const mxstation::Layout& first = mxstation::namedLayouts().front().layout;
    EXPECT_EQ(first.name, "plain");
    EXPECT_EQ(first.name, mxstation::Layout().name);
    EXPECT_EQ(first.mostModules, 64U);
}

TEST(NamedLayouts, haveDifferentNamesAndMeanings)
{
    std::set<std::string> names;
    std::set<std::string> meanings;
    for (const mxstation::NamedLayout& named : mxstation::namedLayouts()) {
        names.insert(named.layout.name);
        meanings.insert(named.meaning);
    }
    EXPECT_EQ(names.size(), 4U);
    EXPECT_EQ(meanings.size(), 4U);
}

} // namespace
