#include "Plans.h"
#include "export/Provenance.h"

#include <mxstation/Declarations.h>

#include <Poco/AutoPtr.h>
#include <Poco/DOM/DOMParser.h>
#include <Poco/DOM/Document.h>
#include <Poco/DOM/Element.h>
#include <Poco/DOM/NodeList.h>
#include <gmock/gmock.h>

#include <cstdlib>

namespace {

using mxstation::AddressStyle;
using mxstation::VariableScope;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

// Sets the environment variable while a test runs.
class ProjectDate
{
public:
    explicit ProjectDate(const char* seconds) { set(seconds); }
    ~ProjectDate() { set(nullptr); }
    ProjectDate(const ProjectDate&) = delete;
    ProjectDate& operator=(const ProjectDate&) = delete;

private:
    static void set(const char* seconds)
    {
        if (seconds == nullptr) {
            unsetenv("SOURCE_DATE_EPOCH");
        } else {
            setenv("SOURCE_DATE_EPOCH", seconds, 1);
        }
    }
};

mxstation::Plan ofThreeChannels()
{
    return planOf({withNote(withSign(wholeAt("AI 1", 'I', 'W', 2)), "LT_101", "tank 1 < 2"),
                   bitsAt("F", 'Q', 5, 0, 24), wholeAt("E", 'I', 'D', 6)});
}

std::string headOf(const std::string& meaning)
{
    const std::string version = mxstation::Provenance::version();
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<project xmlns=\"http://www.plcopen.org/xml/tc6_0201\" "
           "xmlns:xhtml=\"http://www.w3.org/1999/xhtml\">\n"
           "  <!-- Made by mxtool " +
           version + " of: -->\n  <!-- SHA-256 " + sumOfAbc +
           " station -->\n"
           "  <fileHeader companyName=\"parser-mx\" productName=\"mxtool\" productVersion=\"" +
           version +
           "\" creationDateTime=\"1970-01-01T00:00:00\" contentDescription=\"Pump house. " +
           meaning + " SHA-256 of the station: " + sumOfAbc +
           "\"/>\n"
           "  <contentHeader name=\"Pump house\">\n"
           "    <coordinateInfo>\n"
           "      <fbd><scaling x=\"1\" y=\"1\"/></fbd>\n"
           "      <ld><scaling x=\"1\" y=\"1\"/></ld>\n"
           "      <sfc><scaling x=\"1\" y=\"1\"/></sfc>\n"
           "    </coordinateInfo>\n"
           "  </contentHeader>\n";
}

TEST(PlcopenXml, hasGlobalVariablesInAResource)
{
    const ProjectDate none(nullptr);
    const auto made = mxstation::plcopenXml(ofThreeChannels(), {AddressStyle::Index, {}});
    EXPECT_EQ(made.text, headOf("Addresses count units of their own size.") +
                             R"(  <types>
    <dataTypes/>
    <pous/>
  </types>
  <instances>
    <configurations>
      <configuration name="Pump_house">
        <resource name="Coupler">
          <globalVars>
            <variable name="LT_101" address="%IW1">
              <type><INT/></type>
              <documentation><xhtml:p>tank 1 &lt; 2</xhtml:p></documentation>
            </variable>
            <variable name="Levels_F" address="%QB5">
              <type><array><dimension lower="0" upper="2"/><baseType><BYTE/></baseType></array></type>
              <documentation><xhtml:p>Levels, F</xhtml:p></documentation>
            </variable>
            <!-- Levels_E is not declared (ID6, byte 6 is no multiple of 4): Levels, E -->
          </globalVars>
        </resource>
      </configuration>
    </configurations>
  </instances>
</project>
)");
    EXPECT_THAT(made.findings, SizeIs(1));
}

TEST(PlcopenXml, hasTheVariablesOfAProgram)
{
    const ProjectDate none(nullptr);
    const auto plan = planOf({wholeAt("A", 'I', 'W', 2)});
    EXPECT_EQ(mxstation::plcopenXml(plan, {{}, VariableScope::Program}).text,
              headOf("Addresses count bytes.") + R"(  <types>
    <dataTypes/>
    <pous>
      <pou name="Pump_house" pouType="program">
        <interface>
          <localVars>
            <variable name="Levels_A" address="%IW2">
              <type><WORD/></type>
              <documentation><xhtml:p>Levels, A</xhtml:p></documentation>
            </variable>
          </localVars>
        </interface>
        <body><ST><xhtml:p>;</xhtml:p></ST></body>
      </pou>
    </pous>
  </types>
  <instances>
    <configurations/>
  </instances>
</project>
)");
}

TEST(PlcopenXml, hasTheDateOfTheSources)
{
    const auto plan = planOf({});
    const auto dateWith = [&plan](const char* seconds) {
        const ProjectDate date(seconds);
        const std::string text = mxstation::plcopenXml(plan).text;
        const std::string name = "creationDateTime=\"";
        return text.substr(text.find(name) + name.size(), 19);
    };
    // date -u -d @1700000000
    EXPECT_EQ(dateWith("1700000000"), "2023-11-14T22:13:20");
    EXPECT_EQ(dateWith("253402300799"), "9999-12-31T23:59:59");
    for (const char* const wrong :
         {"", "-1", "253402300800", "99999999999999999999", "12x", " 1"}) {
        EXPECT_EQ(dateWith(wrong), "1970-01-01T00:00:00") << wrong;
    }
}

TEST(PlcopenXml, withoutAVariableThereIsNoList)
{
    for (const VariableScope scope : {VariableScope::Global, VariableScope::Program}) {
        const auto made = mxstation::plcopenXml(planOf({bitsAt("A", 'I', 2, 3, 33)}), {{}, scope});
        EXPECT_THAT(made.text, Not(HasSubstr("Vars>")));
        EXPECT_THAT(made.text, HasSubstr("<!-- Levels_A is not declared"));
    }
}

TEST(PlcopenXml, hostileTextsStayInTheirElements)
{
    // U+FFFE and halves of a pair are no characters of XML.
    const std::string hostile = "</p>--><!--\n\"'&amp;]]>-\x01\x1B[2J\xE2\x80\xAE\xEF\xBF\xBE";
    const std::string notUtf8 = "\xED\xA0\x80\xFF--";
    auto plan = planOf({withNote(wholeAt(hostile, 'I', 'W', 2), hostile, hostile),
                        wholeAt(notUtf8, 'I', 'W', 4), bitsAt(hostile, 'I', 2, 3, 33),
                        wholeAt(std::string(1000, '-'), 'I', 'W', 6)});
    plan.station = hostile;
    for (mxstation::Channel& channel : plan.channels) {
        channel.moduleName = hostile;
    }
    Poco::XML::DOMParser parser;
    const Poco::AutoPtr<Poco::XML::Document> document =
        parser.parseString(mxstation::plcopenXml(plan).text);
    const Poco::AutoPtr<Poco::XML::NodeList> variables = document->getElementsByTagName("variable");
    ASSERT_EQ(variables->length(), 3U);
    const auto* const first = static_cast<const Poco::XML::Element*>(variables->item(0));
    const std::string shown = "</p>--><!--\\x0a\"'&amp;]]>-\\x01\\x1b[2J\\u202e\xEF\xBF\xBD";
    EXPECT_THAT(first->innerText(), HasSubstr(shown));
}

} // namespace
