#include "configuration/Composition.h"

#include "TestModule.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using mxmodule::Assignment;
using mxmodule::Composition;
using mxmodule::Origin;
using mxmodule::ValueCheck;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testkit::Bytes;
using testkit::hexBytes;

class Compose : public testing::Test
{
protected:
    Composition with(const std::vector<std::pair<std::string, std::string>>& values,
                     ValueCheck check = ValueCheck::Full)
    {
        std::vector<Assignment> assignments;
        for (const auto& [name, value] : values) {
            assignments.push_back({name, value, "--set " + name});
        }
        return compose(*module, module.report().parameterBlock, assignments, check);
    }

    static std::vector<std::string> linesOf(const Composition& composition)
    {
        std::vector<std::string> lines;
        for (const auto& finding : composition.findings) {
            lines.push_back(finding.place + ": " + severityName(finding.severity) + ": " +
                            finding.text);
        }
        return lines;
    }

    // Whether no image was made, because of values from `origin` alone.
    static bool isRefusedAs(const Composition& composition, Origin origin)
    {
        const auto isOther = [origin](const mxmodule::Finding& finding) {
            return finding.severity == mxmodule::Severity::Error && finding.origin != origin;
        };
        return !composition.ok() &&
               std::none_of(composition.findings.begin(), composition.findings.end(), isOther);
    }

    static Bytes bytesOf(const Composition& composition)
    {
        return {composition.image.begin(), composition.image.end()};
    }

    TestModule module;
};

TEST_F(Compose, withoutValuesIsTheImageOfTheDevice)
{
    const Composition composition = with({});
    EXPECT_EQ(bytesOf(composition), hexBytes("00 0a 0b 05 07 64 00 00"));
    EXPECT_TRUE(composition.ok());
    EXPECT_THAT(composition.findings, IsEmpty());
}

TEST(ComposeBeyondEveryNumber, aValueThatIsThereMayBeSetAgain)
{
    testkit::MxBuffer file = testkit::minimalModule({"Parameter B"});
    file.group(0x20D3, testkit::textTablePayload({{100, "Gain"}, {101, "V"}}));
    file.group(0x0010, hexBytes("00 00 02"));
    // Conversion 1: factor 1.7e38, offset 0, unit "V". Of 2 it makes more than a float holds.
    file.group(0x20C2, testkit::join({hexBytes("01 7f 00 00 00 00 00 00 00"), testkit::u16(101)}));
    testkit::ParameterRecord gain;
    gain.number = 1;
    gain.datatype = 1;
    gain.nameId = 100;
    gain.position = 4;
    gain.showMe = 7;
    gain.conversionId = 1;
    file.group(0x20C0, gain.bytes());
    const auto module = mxmodule::Module::fromBytes(file.chars());
    ASSERT_EQ(module.parameters().at(0).value, "inf");
    const Composition composition = module.compose({{"Gain", "inf"}});
    EXPECT_THAT(composition.findings, IsEmpty());
    EXPECT_EQ(composition.image, module.defaultImage());
}

TEST_F(Compose, whatForceAcceptsIsSaid)
{
    const Composition composition = with(
        {{"AI 1/Level", "21"}, {"Filter", "77"}, {"AI 2/Level", "20"}}, ValueCheck::NumberOnly);
    EXPECT_EQ(bytesOf(composition), hexBytes("4d 15 14 05 07 64 00 00"));
    EXPECT_THAT(
        linesOf(composition),
        ElementsAre(testing::AllOf(HasSubstr("--set AI 1/Level: warning: parameter "),
                                   HasSubstr("is forced to \"21\", accepted otherwise: 10 "
                                             "to 20 mA")),
                    HasSubstr("is forced to \"77\", accepted otherwise: [off = 0] | slow")));
}

TEST_F(Compose, writesEachValueAtItsPlace)
{
    // slow is 5, -1 is ff, 10 V at 0.5 V a step is 20 = 0x14.
    const Composition composition = with(
        {{"Filter", "slow"}, {"AI 2/Level", "20 mA"}, {"A=B", "-1"}, {"X/Y", "3"}, {"Gain", "10"}});
    EXPECT_EQ(bytesOf(composition), hexBytes("05 0a 14 ff 07 14 03 00"));
    EXPECT_THAT(composition.findings, IsEmpty());
}

TEST_F(Compose, refusesEveryWrongValueAtOnceAndWritesNothing)
{
    const Composition composition =
        with({{"Filter", "quick"}, {"Level", "11"}, {"AI 1/Level", "12"}, {"AI 2/Level", "99"}});
    EXPECT_TRUE(isRefusedAs(composition, Origin::Request));
    EXPECT_THAT(composition.image, IsEmpty());
    EXPECT_THAT(linesOf(composition),
                ElementsAre(HasSubstr("--set Filter: error: parameter \"Filter\""),
                            HasSubstr("--set Level: error: 2 parameters"),
                            HasSubstr("--set AI 2/Level: error: parameter")));
}

TEST_F(Compose, looksForNoMoreThanFiftyWrongValues)
{
    std::vector<std::pair<std::string, std::string>> values;
    for (int i = 0; i < 60; ++i) {
        values.emplace_back("unknown" + std::to_string(i), "1");
    }
    const Composition composition = with(values);
    const std::vector<std::string> lines = linesOf(composition);
    ASSERT_EQ(lines.size(), 51U);
    EXPECT_THAT(lines[49], HasSubstr("No parameter is called \"unknown49\""));
    EXPECT_THAT(lines[50], HasSubstr("note: 10 more values were not checked"));
    EXPECT_TRUE(isRefusedAs(composition, Origin::Request));
    EXPECT_THAT(composition.image, IsEmpty());
}

TEST_F(Compose, refusesAParameterThatIsSetTwice)
{
    EXPECT_THAT(linesOf(with({{"Filter", "slow"}, {"module/Filter", "off"}})),
                ElementsAre(HasSubstr("is set twice, first by --set Filter")));
}

TEST_F(Compose, refusesAParameterOutsideTheImage)
{
    EXPECT_THAT(linesOf(with({{"Far", "1"}})),
                ElementsAre(HasSubstr(
                    "parameter \"Far\" of the module (#" + module.report().parameters[7].id +
                    ", byte 9): Parameter 8 \"Far\": cannot set value \"1\": its place, "
                    "1 byte(s) at byte offset 9, lies outside the raw image of "
                    "8 byte(s)")));
}

TEST_F(Compose, forceCannotMakeAParameterHoldMore)
{
    const Composition composition = with({{"AI 1/Level", "256"}}, ValueCheck::NumberOnly);
    EXPECT_TRUE(isRefusedAs(composition, Origin::Request));
    EXPECT_THAT(linesOf(composition), ElementsAre(HasSubstr("expected 0 to 255")));
    EXPECT_EQ(bytesOf(with({{"AI 1/Level", "255"}}, ValueCheck::NumberOnly)),
              hexBytes("00 ff 0b 05 07 64 00 00"));
}

TEST_F(Compose, warnsOfAParameterThatChangesWithAnother)
{
    // Low bits 111 -> 001: the whole byte is 1.
    const Composition composition = with({{"Low bits", "1"}});
    EXPECT_EQ(bytesOf(composition), hexBytes("00 0a 0b 05 01 64 00 00"));
    EXPECT_THAT(linesOf(composition),
                ElementsAre(HasSubstr("warning: parameter \"Whole byte\" of the module (#" +
                                      module.report().parameters[6].id +
                                      ", byte 4) changes from 7 to 1: it shares bits")));
}

TEST_F(Compose, refusesValuesThatOverwriteEachOther)
{
    const Composition composition = with({{"Low bits", "1"}, {"Whole byte", "2"}});
    EXPECT_TRUE(isRefusedAs(composition, Origin::Request));
    EXPECT_THAT(composition.image, IsEmpty());
    EXPECT_THAT(linesOf(composition),
                ElementsAre(HasSubstr("--set Low bits: error: parameter \"Low bits\"")));
}

TEST_F(Compose, acceptsSharedBitsThatAgree)
{
    const Composition composition = with({{"Low bits", "1"}, {"Whole byte", "0x09"}});
    EXPECT_TRUE(isRefusedAs(composition, Origin::Request)); // no hexadecimal numbers
    EXPECT_EQ(bytesOf(with({{"Low bits", "1"}, {"Whole byte", "9"}})),
              hexBytes("00 0a 0b 05 09 64 00 00"));
}

TEST_F(Compose, notesAValueThatIsRounded)
{
    // 10.3 / 0.5 = 20.6, nearest 21 = 10.5 V.
    const Composition composition = with({{"Gain", "10.3"}});
    EXPECT_EQ(bytesOf(composition), hexBytes("00 0a 0b 05 07 15 00 00"));
    EXPECT_THAT(linesOf(composition), ElementsAre(HasSubstr("note: parameter \"Gain\"")));
    EXPECT_THAT(linesOf(composition)[0], HasSubstr("is set to 10.5, the nearest value"));
}

} // namespace
