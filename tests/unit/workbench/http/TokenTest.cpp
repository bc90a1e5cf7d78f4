#include "http/Token.h"

#include <gmock/gmock.h>

#include <set>

namespace {

using testing::MatchesRegex;
using workbench::isSameSecret;
using workbench::newToken;

// 32 bytes are 256 bits: 42 characters of 6 bits and one with the last 4, then two zero bits.
TEST(Token, isAFragmentOfAnAddress)
{
    for (int count = 0; count < 50; ++count) {
        EXPECT_THAT(newToken(), MatchesRegex("[A-Za-z0-9_-]{42}[AEIMQUYcgkosw048]"));
    }
}

TEST(Token, isNewEachTime)
{
    std::set<std::string> tokens;
    for (int count = 0; count < 100; ++count) {
        tokens.insert(newToken());
    }
    EXPECT_EQ(tokens.size(), 100U);
}

TEST(Token, isComparedAsAWhole)
{
    EXPECT_TRUE(isSameSecret("", ""));
    EXPECT_TRUE(isSameSecret("abc", "abc"));
    EXPECT_FALSE(isSameSecret("abc", "abd"));
    EXPECT_FALSE(isSameSecret("abc", "xbc"));
    EXPECT_FALSE(isSameSecret("abc", "ab"));
    EXPECT_FALSE(isSameSecret("ab", "abc"));
    EXPECT_FALSE(isSameSecret(std::string("ab\0c", 4), std::string("ab\0d", 4)));
}

} // namespace
