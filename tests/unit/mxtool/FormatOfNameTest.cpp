#include "FormatOfName.h"

#include <gtest/gtest.h>

namespace {

using mxtool::formatOfName;

TEST(FormatOfName, isThatOfTheEndOfTheName)
{
    const std::vector<std::string> all = {"text", "json", "csv", "values", "binary"};
    EXPECT_EQ(formatOfName("a.json", all, "binary"), "json");
    EXPECT_EQ(formatOfName("a.b/C.CSV", all, "binary"), "csv");
    EXPECT_EQ(formatOfName("a.yaml", all, "binary"), "values");
    EXPECT_EQ(formatOfName("a.yml", all, "binary"), "values");
    EXPECT_EQ(formatOfName("a.txt", all, "binary"), "text");
    EXPECT_EQ(formatOfName("a.bin", all, "text"), "binary");
    EXPECT_EQ(formatOfName("a.json.old", all, "binary"), "binary");
    EXPECT_EQ(formatOfName(".json", all, "binary"), "binary");
    EXPECT_EQ(formatOfName("-", all, "text"), "text");
}

TEST(FormatOfName, isOneThatIsAccepted)
{
    EXPECT_EQ(formatOfName("a.yaml", {"text", "json"}, "text"), "text");
}

TEST(FormatOfName, knowsPicturesThatAreNoSvg)
{
    EXPECT_TRUE(mxtool::isOtherPicture("a.png"));
    EXPECT_TRUE(mxtool::isOtherPicture("a/b.PDF"));
    for (const char* name : {"a.svg", "-", "", "png", "a.xml", "a.png.svg", "/dev/stdout"}) {
        EXPECT_FALSE(mxtool::isOtherPicture(name)) << name;
    }
}

} // namespace
