#include "http/RequestTarget.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using workbench::parsedTarget;

TEST(RequestTarget, hasPathAndQuery)
{
    const auto target = parsedTarget("/api/v1/online?after=12&name=a%20b+c%26%C3%A4&flag&empty=");
    ASSERT_TRUE(target);
    EXPECT_EQ(target->path, "/api/v1/online");
    EXPECT_THAT(target->query, ElementsAre(Pair("after", "12"), Pair("empty", ""), Pair("flag", ""),
                                           Pair("name", "a b c&\xC3\xA4")));
    EXPECT_THAT(parsedTarget("/a?")->query, IsEmpty());
    EXPECT_EQ(parsedTarget("/a?b=c?d")->query.at("b"), "c?d");
}

TEST(RequestTarget, keepsThePathAsItIs)
{
    EXPECT_EQ(parsedTarget("/%2e%2e/%00")->path, "/%2e%2e/%00");
    EXPECT_EQ(workbench::pathOf("/?x"), "/");
    EXPECT_EQ(workbench::pathOf(""), "");
}

TEST(RequestTarget, hasNoMalformedQuery)
{
    for (const char* const text : {"/?a=%", "/?a=%1", "/?a=%g0", "/?a=%+1", "/?a=%-1", "/?a=%00",
                                   "/?%00=1", "/?a=1&a=2", "/?a=1&%61=2", "/?=1", "/?&a=1"}) {
        EXPECT_FALSE(parsedTarget(text)) << text;
    }
}

} // namespace
