#include <text/YamlScalar.h>

#include <gtest/gtest.h>

namespace {

using text::yamlQuoted;
using text::yamlScalar;

TEST(YamlScalar, IsPlainWhereThatIsSafe)
{
    for (const char* const plain : {"4-20 mA", "60 Hz", "-5", "9.5 V", "90.5 °C", "AI 1"}) {
        EXPECT_EQ(yamlScalar(plain), plain);
    }
}

// Texts that a reader would take for something else, in brackets or not.
TEST(YamlScalar, IsInQuotesOtherwise)
{
    EXPECT_EQ(yamlScalar(""), R"("")");
    EXPECT_EQ(yamlScalar("No"), R"("No")");
    EXPECT_EQ(yamlScalar("~"), R"("~")");
    EXPECT_EQ(yamlScalar("-5 V"), R"("-5 V")");
    EXPECT_EQ(yamlScalar("#12"), R"("#12")");
    EXPECT_EQ(yamlScalar("a: b"), R"("a: b")");
    EXPECT_EQ(yamlScalar("a, b"), R"("a, b")");
    EXPECT_EQ(yamlScalar("a]"), R"("a]")");
    EXPECT_EQ(yamlScalar("a "), R"("a ")");
    EXPECT_EQ(yamlScalar("a\"\\\n\x1b"), R"("a\"\\\n\u001b")");
}

TEST(YamlScalar, QuotesAsInJson)
{
    EXPECT_EQ(yamlQuoted("60 Hz"), R"("60 Hz")");
}

} // namespace
