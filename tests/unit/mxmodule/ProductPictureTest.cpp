#include <mxmodule/ProductPicture.h>

#include "ExampleModules.h"

#include <gmock/gmock.h>
#include <text/Base64.h>
#include <text/Gzip.h>

namespace {

using mxmodule::BinaryObject;
using mxmodule::pictureOf;
using testing::EndsWith;
using testing::StartsWith;

const std::string drawing = "<svg xmlns=\"http://www.w3.org/2000/svg\"/>";

BinaryObject objectOf(const std::string& mimeType, const std::vector<std::uint8_t>& bytes)
{
    return {"18", "productImage", mimeType, "base64", text::toBase64(bytes)};
}

BinaryObject objectOf(const std::string& mimeType, const std::string& bytes)
{
    return objectOf(mimeType, std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
}

TEST(ProductPicture, isTheDrawingDecompressed)
{
    const auto picture = pictureOf(objectOf("image/svgz", text::gzipped(drawing)));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->mimeType, "image/svg+xml");
    EXPECT_EQ(picture->bytes, drawing);
}

TEST(ProductPicture, isNoneIfTheDrawingIsDamaged)
{
    std::vector<std::uint8_t> cut = text::gzipped(drawing);
    cut.resize(cut.size() - 1);
    EXPECT_FALSE(pictureOf(objectOf("image/svgz", cut)));
    EXPECT_FALSE(pictureOf(objectOf("image/svgz", drawing)));
    EXPECT_FALSE(pictureOf(objectOf("image/svgz", text::gzipped("<svg>"))));
    EXPECT_FALSE(pictureOf(objectOf("image/svgz", text::gzipped("<html/>"))));
    EXPECT_FALSE(pictureOf(objectOf("image/svgz", "")));
}

// 1 MiB of blanks takes about one kilobyte when compressed.
TEST(ProductPicture, isAtMostOneMebibyte)
{
    const std::string blanks(1048576 - drawing.size(), ' ');
    EXPECT_TRUE(pictureOf(objectOf("image/svgz", text::gzipped(drawing + blanks))));
    EXPECT_FALSE(pictureOf(objectOf("image/svgz", text::gzipped(drawing + blanks + " "))));
}

TEST(ProductPicture, isWhatItsTypeSays)
{
    const std::string png = "\x89PNG\r\n\x1A\n....";
    const auto picture = pictureOf(objectOf("image/png", png));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->mimeType, "image/png");
    EXPECT_EQ(picture->bytes, png);
    EXPECT_TRUE(pictureOf(objectOf("image/jpeg", "\xFF\xD8\xFF\xE0")));
    EXPECT_TRUE(pictureOf(objectOf("image/gif", "GIF87a")));
    EXPECT_TRUE(pictureOf(objectOf("image/gif", "GIF89a")));
    EXPECT_FALSE(pictureOf(objectOf("image/gif", png)));
    EXPECT_FALSE(pictureOf(objectOf("image/png", "GIF89a")));
    EXPECT_FALSE(pictureOf(objectOf("image/png", "\x89PNG")));
    EXPECT_FALSE(pictureOf(objectOf("text/html", drawing)));
    EXPECT_FALSE(pictureOf(objectOf("", "GIF89a")));
}

TEST(ProductPicture, isNoneInAnotherEncoding)
{
    EXPECT_FALSE(pictureOf(BinaryObject{"18", "productImage", "image/gif", "hex", "474946383961"}));
    EXPECT_FALSE(pictureOf(BinaryObject{"18", "productImage", "image/gif", "base64", "R0lG*"}));
}

TEST(ProductPicture, isThatOfTheModule)
{
    const auto picture = pictureOf(exampleModule("MX0304.bin"));
    ASSERT_TRUE(picture);
    EXPECT_THAT(picture->bytes, StartsWith("<svg"));
    EXPECT_THAT(picture->bytes, EndsWith("</svg>"));
}

// "GIF89a" is 47 49 46 38 39 61: R0lG ODlh.
TEST(ProductPicture, isAUrl)
{
    EXPECT_EQ(dataUrl(mxmodule::ProductPicture{"image/gif", "GIF89a"}),
              "data:image/gif;base64,R0lGODlh");
}

} // namespace
