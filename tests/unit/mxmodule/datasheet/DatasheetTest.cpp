#include "../ExampleModules.h"
#include "HtmlPage.h"

#include <mxmodule/Datasheet.h>
#include <text/Sha256.h>

#include <gtest/gtest.h>

namespace {

using mxmodule::Module;
using testkit::HtmlPage;

HtmlPage pageOf(const Module& module)
{
    return HtmlPage(datasheet(module));
}

HtmlPage exampleSheet(const std::string& name)
{
    return pageOf(exampleModule(name));
}

TEST(Datasheet, HasARowForEachChannelParameterByteAndRegister)
{
    const Module module = exampleModule("MX0304.bin");
    const HtmlPage page = pageOf(module);
    page.expectLinksLead();
    for (const auto& channel : module.channels()) {
        EXPECT_TRUE(page.has("channel-" + channel.id));
    }
    for (const auto& parameter : module.parameters()) {
        EXPECT_TRUE(page.has("parameter-" + parameter.id));
    }
    for (unsigned byte = 0; byte < 33; ++byte) { // the size of the parameter image
        EXPECT_TRUE(page.has("p-" + std::to_string(byte)));
    }
    for (unsigned byte = 0; byte < 8; ++byte) { // four inputs of 16 bits
        EXPECT_TRUE(page.has("in-" + std::to_string(byte)));
    }
    EXPECT_TRUE(page.has("r-24")); // the last of 25
    EXPECT_FALSE(page.has("p-33") || page.has("in-8") || page.has("out-0") || page.has("r-25"));
}

TEST(Datasheet, StatesWhatTheFileSaysOfAParameter)
{
    const HtmlPage page = exampleSheet("MX0304.bin");
    // The identifiers follow those of the 18 properties and the product image, 0 to 18.
    EXPECT_EQ(page.row("parameter-19"),
              "Mains suppression #19 | UInt8 | 0 to 60 Hz | 50 Hz | 0 | 0");
    EXPECT_EQ(
        page.row("parameter-20"),
        "Signal range #20 | UInt8 | 0 ±10 V1 0-10 V2 0-20 mA3 4-20 mA9 off | ±10 V 0 | 1 | 1");
    EXPECT_EQ(page.row("parameter-21"),
              "Upper limit #21 | SInt16 | -10 to 10 V | 9.5 V 9500 | 2–3 | 2");
    EXPECT_EQ(page.row("parameter-25"),
              "Filter depth #25 | Byte, 3 bits | 0 to 7 | 0 | 8, bits 1–3 | 6");
}

TEST(Datasheet, LeadsFromAByteToItsParameterAndBack)
{
    const HtmlPage page = exampleSheet("MX0304.bin");
    EXPECT_NE(page.between(" id=\"parameter-21\"", "</tr>").find("<a href=\"#p-2\">2</a>"),
              std::string::npos);
    EXPECT_NE(page.between(" id=\"p-3\"", "</tr>").find("<a href=\"#parameter-21\">"),
              std::string::npos);
    EXPECT_NE(page.between(" id=\"r-2\"", "</tr>").find("<a href=\"#parameter-21\">"),
              std::string::npos);
    EXPECT_EQ(page.row("p-2"), "2 | 25 | AI 1 / Upper limit 9.5 V"); // 9500 is 0x251c
    EXPECT_EQ(page.row("p-3"), "3 | 1c | AI 1 / Upper limit +1");
    EXPECT_EQ(page.row("p-8"), // bit 6 and bits 1 to 3: 0x40
              "8 | 40 | – | AI 1 / Wire break check 1 | – | AI 1 / Filter depth 0 | –");
    EXPECT_EQ(page.row("r-2"), "2 | 251c | 9500 | AI 1 / Upper limit | 2–3");
}

TEST(Datasheet, StatesThePlacesOfChannels)
{
    const HtmlPage page = exampleSheet("MX0304.bin");
    const auto id = exampleModule("MX0304.bin").channels()[1].id;
    EXPECT_EQ(page.row("channel-" + id), "AI 2 | 1 | input | IW2 | 2–3 | 16 bits | signed");
    EXPECT_EQ(page.row("in-2"), "2 | AI 2 IW2");
    EXPECT_EQ(page.row("in-3"), "3 | AI 2 +1");
    const HtmlPage moved = pageOf(exampleModule("MX0304.bin").at({10, 0}));
    moved.expectLinksLead();
    EXPECT_EQ(moved.row("in-12"), "12 | AI 2 IW12");
    const HtmlPage bits = exampleSheet("MX0116.bin");
    EXPECT_EQ(bits.row("in-1").substr(0, 18), "1 | DI 16 IX1_7 | ");
    // Channels with one parameter each need no headings.
    EXPECT_EQ(bits.row("parameter-20"),
              "DI 1 / Invert input 1 #20 | Byte, 1 bit | 0 to 1 | 0 | 1, bit 0 | 1");
}

TEST(Datasheet, StatesTheIdentityAndTheFile)
{
    const auto bytes = exampleBytes("MX0304.bin");
    const HtmlPage page = exampleSheet("MX0304.bin");
    EXPECT_EQ(page.between("<h1>", "</h1>"), "4 AI ±10 V / 0-20 mA");
    EXPECT_NE(page.page.find("<dt>Order code</dt><dd>K38-304</dd>"), std::string::npos);
    EXPECT_EQ(page.between("<dd class=\"sum\">", "</dd>"),
              text::sha256({bytes.data(), bytes.size()}));
    // The header of the file and the module identity after its ten bytes.
    EXPECT_EQ(HtmlPage::words(page.between("Groups of the file", "</tbody>")).find("0000header"),
              HtmlPage::words(page.between("Groups of the file", "</tbody>")).find("0000"));
    EXPECT_NE(page.page.find("<code>00000a</code>"), std::string::npos);
    ASSERT_EQ(page.images.size(), 1U);
    EXPECT_EQ(page.images[0].rfind("data:image/svg+xml;base64,", 0), 0U);
}

TEST(Datasheet, IsWellFormedForEveryExample)
{
    for (const char* name : {"MX0001.bin", "MX0116.bin", "MX0208.bin", "MX0602.bin", "MX0704.bin",
                             "MX0901.bin", "MX0911.bin", "MX0960.bin", "MX0990.bin"}) {
        SCOPED_TRACE(name);
        const HtmlPage page = exampleSheet(name);
        page.expectLinksLead();
        EXPECT_EQ(page.headings.front(), 1);
        EXPECT_EQ(page.names.count("script") + page.names.count("svg"), 0U);
        EXPECT_EQ(page.page, datasheet(exampleModule(name)));
    }
}

TEST(Datasheet, LoadsNothingAndRunsNothing)
{
    const std::string page = datasheet(exampleModule("MX0304.bin"));
    EXPECT_NE(
        page.find("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                  "style-src 'unsafe-inline'; img-src data:\">"),
        std::string::npos);
    for (const char* word : {"http://", "https://", "url(", "@import", "<script"}) {
        EXPECT_EQ(page.find(word), std::string::npos) << word;
    }
}

TEST(Datasheet, OfATypeAndOfValuesGoTogether)
{
    const Module module = exampleModule("MX0304.bin");
    std::vector<char> image = module.defaultImage();
    image[2] = 0x26; // 9756 in place of 9500
    image[3] = 0x1C;
    const HtmlPage page(mxmodule::datasheetPage(
        {"A",
         "<h1>A</h1>",
         {{"content", "All"}},
         datasheetOfType(module, {"t1-", 2}) + datasheetOfValues(module, image, {"m1-", 3})}));
    page.expectLinksLead();
    EXPECT_EQ(page.row("t1-parameter-21"), "Upper limit #21 | SInt16 | -10 to 10 V | 9.5 V 9500");
    EXPECT_EQ(page.row("m1-parameter-21"), "Upper limit #21 | 9.756 V 9756 | 9.5 V 9500 | 2–3 | 2");
    EXPECT_EQ(page.row("m1-parameter-22"), "Lower limit #22 | -9.5 V -9500 | the same | 4–5 | 3");
    EXPECT_NE(page.page.find("id=\"m1-parameter-21\" class=\"changed\""), std::string::npos);
    EXPECT_EQ(page.page.find("id=\"m1-parameter-22\" class=\"changed\""), std::string::npos);
    EXPECT_EQ(page.headings, (std::vector<int>{1, 2, 2, 2, 2, 3, 3, 3}));
    image.pop_back();
    EXPECT_THROW(datasheetOfValues(module, image, {}), mxmodule::Failure);
}

TEST(Datasheet, TextsAreNeverMarkup)
{
    // The last three characters of the order code are the bytes of U+202E.
    const std::string text = R"(module: {type: 1, id: 0x5a0100ff}
catalogue:
  BrandLabelName: "</style><script>alert(1)</script>"
  BrandVersion: ""
  BrandId: ""
  BrandSerialNumber: ""
  ProductVersion: ""
  BrandHwRevision: ""
  BrandOrderCode: "\" onload=\"xâ€®"
component: {Component: a, Creator: b}
channels:
  - {name: "<b>&amp;'", in: UInt8}
parameters:
  - {name: "<img src=x onerror=y>", channel: 0, at: 0, type: UInt8, default: "<i>", options: list}
optionLists:
  list: {id: 1, options: {0: "<i>"}}
parameterBlock: {descriptor: 1}
texts: {first: 100, step: 1}
)";
    const HtmlPage page = pageOf(Module::fromBytes({text.begin(), text.end()}, "<u>.yaml"));
    page.expectLinksLead();
    EXPECT_EQ(page.between("<h1>", "</h1>"), "&lt;/style&gt;&lt;script&gt;alert(1)&lt;/script&gt;");
    EXPECT_EQ(page.between("<dt>File</dt><dd>", "</dd>"), "&lt;u&gt;.yaml");
    for (const char* name : {"script", "b", "i", "u"}) {
        EXPECT_EQ(page.names.count(name), 0U) << name;
    }
    EXPECT_NE(page.page.find("&quot; onload=&quot;x\\u202e"), std::string::npos);
    EXPECT_EQ(page.page.find("\u202e"), std::string::npos);
}

} // namespace
