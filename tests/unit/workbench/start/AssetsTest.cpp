#include "start/Assets.h"

#include "http/OpenPaths.h"
#include "start/EmbeddedAssets.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using workbench::Assets;
using workbench::embeddedAssets;

TEST(Assets, areSmall)
{
    std::size_t size = 0;
    for (const auto& asset : embeddedAssets) {
        size += asset.size;
    }
    EXPECT_LE(size, 150U * 1024);
}

TEST(Assets, areThePathsThatNeedNoToken)
{
    const Assets assets;
    for (const auto& asset : embeddedAssets) {
        EXPECT_TRUE(workbench::isOpenPath(asset.path)) << asset.path;
        EXPECT_EQ(assets.at(asset.path).status, 200U) << asset.path;
    }
    EXPECT_EQ(assets.at("/index.html").status, 404U);
}

// What the browser would refuse because of the Content-Security-Policy.
TEST(Assets, havePageWithoutScriptsOrStylesInIt)
{
    const auto page = Assets().at("/");
    EXPECT_EQ(page.type, "text/html; charset=utf-8");
    EXPECT_THAT(page.body, StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(page.body, HasSubstr("<script type=\"module\" src=\"/workbench.js\"></script>"));
    EXPECT_THAT(page.body, HasSubstr("href=\"/workbench.css\""));
    EXPECT_THAT(page.body, Not(HasSubstr("<style")));
    EXPECT_THAT(page.body, Not(HasSubstr("style=")));
    EXPECT_THAT(page.body, Not(HasSubstr("//"))); // of another server
}

} // namespace
