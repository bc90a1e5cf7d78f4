// The page of a report: read by an XML parser, looked at in text.
#include "Reports.h"

#include <Poco/AutoPtr.h>
#include <Poco/DOM/DOMParser.h>
#include <Poco/DOM/Document.h>
#include <Poco/DOM/NodeList.h>

#include <gtest/gtest.h>

#include <string>

namespace mxonline {

namespace {

using Poco::AutoPtr;
using Poco::XML::Document;

// Throws when the page is not well-formed.
AutoPtr<Document> parsed(const std::string& page)
{
    Poco::XML::DOMParser parser;
    return parser.parseString(page);
}

// The text of the first element called `name`.
std::string textOf(const Document& page, const std::string& name)
{
    const AutoPtr<Poco::XML::NodeList> found = page.getElementsByTagName(name);
    return found->length() == 0 ? "" : found->item(0)->innerText();
}

std::size_t countOf(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(ReportPage, SaysFirstWhatCameOfIt)
{
    EXPECT_EQ(textOf(*parsed(doneReport().html()), "div"),
              "Done: read back and equal to the station; 2 parameters changed");
    EXPECT_EQ(textOf(*parsed(doneReport().html()), "title"), "Pump house: done");
    EXPECT_EQ(textOf(*parsed(reportOfAnotherValue().html()), "div"),
              "NOT DONE1 parameter is not as planned");
    EXPECT_EQ(textOf(*parsed(reportOfBrokenConnection().html()), "title"), "Pump house: NOT DONE");
}

TEST(ReportPage, HasEveryModuleAndParameter)
{
    const std::string page = reportOfAnotherValue().html();
    EXPECT_EQ(countOf(page, "<tr class=\"good\">"), 1U);
    EXPECT_EQ(countOf(page, "<tr class=\"bad\">"), 1U);
    for (const char* const part :
         {"<td data-name=\"Position\">2</td><td data-name=\"Name\">Flows</td>",
          ">2222222222222222222222222222222222222222222222222222222222222222</td>",
          "<td data-name=\"Registers\">1006 (0x03ee)</td>", "<p>read back 50 Hz</p>",
          "<p class=\"hint\">see its manual</p>", "tcp:127.0.0.1:1502, unit 9",
          "2026-01-31T08:15:01.456Z", "mxtool 3.1.4"}) {
        EXPECT_NE(page.find(part), std::string::npos) << part;
    }
}

TEST(ReportPage, NeedsNothingElse)
{
    const std::string page = doneReport().html();
    for (const char* const part : {"<script", "<link", "http", "url(", "@import", "src="}) {
        EXPECT_EQ(page.find(part), std::string::npos) << part;
    }
}

TEST(ReportPage, EscapesEveryText)
{
    const std::string hostile = "</style><script>&\"'\x1b\x01\xff";
    ApplyReport report = reportOfAnotherValue();
    report.station = report.target = report.version = hostile;
    report.modules[0].name = report.modules[0].foundId = hostile;
    report.modules[0].identification = Identification::Other;
    report.modules[1].withoutRegisters = {hostile};
    report.modules[0].parameters[0].parameter = hostile;
    report.modules[0].parameters[0].nowShown = hostile;
    report.findings[0].text = report.findings[0].hint = hostile;
    const std::string page = report.html();
    EXPECT_EQ(textOf(*parsed(page), "h1"), "Parameters of </style><script>&\"'\\x1b\\x01\xc3\xbf");
    EXPECT_EQ(page.find("<script"), std::string::npos);
    EXPECT_EQ(page.find('\x1b'), std::string::npos);
}

TEST(ReportPage, SaysThatNothingDiffered)
{
    ApplyReport report = doneReport();
    report.modules[0].parameters.clear();
    const std::string page = report.html();
    EXPECT_EQ(textOf(*parsed(page), "div"),
              "Done: read back and equal to the station; no parameter differed");
    EXPECT_NE(page.find("None: every parameter was as the station states."), std::string::npos);
}

} // namespace

} // namespace mxonline
