// The type of a file that is neither an mx file nor a text form, and the finding for one as a
// product image.

#include <mxauthor/Check.h>
#include <mxauthor/ForeignContent.h>
#include <mxauthor/MxFile.h>
#include <mxauthor/TextForm.h>

#include <gmock/gmock.h>
#include <text/Gzip.h>

namespace {

using mxauthor::Bytes;
using mxauthor::foreignContent;

const std::string png = "\x89PNG\r\n\x1a\n rest";

// The finding of the rule "image-unreadable" for a product image of these bytes.
std::string problemOf(const std::string& image)
{
    mxauthor::MxFile file;
    mxauthor::Group group;
    group.id = 0x20F1;
    group.content = mxauthor::ProductImage{Bytes(image.begin(), image.end())};
    file.groups.push_back(group);
    const Bytes bytes = mxauthor::writeMxFile(file);
    for (const mxauthor::Finding& finding : mxauthor::check({bytes.begin(), bytes.end()})) {
        if (std::string(finding.rule->name) == "image-unreadable") {
            return finding.text;
        }
    }
    return "";
}

std::string compressed(const std::string& text)
{
    const Bytes bytes = text::gzipped(text);
    return {bytes.begin(), bytes.end()};
}

TEST(ForeignContent, isRecognisedByItsFirstBytes)
{
    EXPECT_EQ(foreignContent(png), "a PNG picture");
    EXPECT_EQ(foreignContent("\xFF\xD8\xFF\xE0 JFIF"), "a JPEG picture");
    EXPECT_EQ(foreignContent("GIF89a"), "a GIF picture");
    EXPECT_EQ(foreignContent("RIFF\x10\x20\x30\x40WEBPVP8"), "a WebP picture");
    EXPECT_EQ(foreignContent(std::string("BM\x36\x10\x0E\0\0\0\0\0\x36", 11)), "a BMP picture");
    EXPECT_EQ(foreignContent("\x1F\x8B\x08\x10"), "gzip data");
    EXPECT_EQ(foreignContent("PK\x03\x04"), "a ZIP archive");
    EXPECT_EQ(foreignContent("%PDF-1.7"), "a PDF document");
    EXPECT_EQ(foreignContent("<svg xmlns='x'/>"), "an SVG drawing");
    EXPECT_EQ(foreignContent("\xEF\xBB\xBF<?xml version='1.0'?>\n<svg/>"), "an SVG drawing");
    EXPECT_EQ(foreignContent("<?xml version='1.0'?>\n<a/>"), "an XML document");
}

TEST(ForeignContent, isNothingWhereTheFirstBytesShowNothing)
{
    for (const char* text : {"", "B", "BM", "RIFF", "module: {type: 1}", "BMP: 5\nAI 1: 7\n"}) {
        EXPECT_EQ(foreignContent(text), std::nullopt) << text;
    }
    EXPECT_EQ(foreignContent(std::string("\0\0\0\x0a", 4)), std::nullopt); // an mx file
}

TEST(ForeignContent, inAProductImageIsNamed)
{
    const std::string expected = ", expected an SVG drawing compressed with gzip";
    EXPECT_EQ(problemOf(png), "is a PNG picture" + expected);
    EXPECT_EQ(problemOf("<svg/>"), "is an SVG drawing" + expected);
    EXPECT_EQ(problemOf("abcde"), "begins with the bytes 61 62 63 64" + expected);
    EXPECT_EQ(problemOf("a"), "begins with the bytes 61" + expected);
    EXPECT_EQ(problemOf(compressed(png)), "is a PNG picture compressed with gzip" + expected);
    EXPECT_EQ(problemOf("\x1F"), "the compressed data ends early");
    EXPECT_EQ(problemOf(compressed("<svg/>")), "");
    EXPECT_EQ(problemOf(compressed("<html/>")), "is an XML document of \"html\", expected \"svg\"");
}

} // namespace
