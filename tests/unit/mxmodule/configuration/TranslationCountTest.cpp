// How often a configuration translates the mx file: a translation costs more than everything else.
#include "LogCapture.h"

#include <mxmodule/Module.h>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using mxmodule::Assignment;
using mxmodule::Fieldbus;
using mxmodule::Module;

class TranslationCount : public testing::Test
{
protected:
    // Returns the number of translations since the construction.
    std::ptrdiff_t translations() const
    {
        const auto& lines = log.lines();
        return std::count_if(lines.begin(), lines.end(), [](const testkit::LogCapture::Line& line) {
            return line.text == ">> parseContent().";
        });
    }

    static Module analogueInputs() { return Module::fromFile(EXAMPLE_MODULES "/MX0304.bin"); }

    // Other values than those of the file.
    static std::vector<Assignment> values()
    {
        return {{"AI 1/Upper limit", "9 V"},
                {"AI 2/Filter depth", "3"},
                {"Mains suppression", "60 Hz"},
                {"AI 3/Signal range", "4-20 mA"}};
    }

private:
    Module first = analogueInputs(); // makes the parser, which sets the level of the log
    testkit::LogCapture log;
};

TEST_F(TranslationCount, makingAModuleTranslatesOnce)
{
    const Module module = analogueInputs();
    EXPECT_EQ(translations(), 1);
    module.parameters();
    module.channelMap();
    module.json();
    EXPECT_EQ(translations(), 1);
}

TEST_F(TranslationCount, composingValuesTranslatesNoMore)
{
    const Module module = analogueInputs();
    const auto made = module.compose(values());
    ASSERT_TRUE(made.ok()) << made.findings.front().text;
    EXPECT_FALSE(made.registers.empty());
    module.configuration(made.image, Fieldbus::Modbus).parameters();
    EXPECT_EQ(translations(), 1);
}

TEST_F(TranslationCount, composingIntoAnotherImageTranslatesNoMore)
{
    const Module module = analogueInputs();
    auto other = module.compose(values()).image;
    ASSERT_NE(other, module.defaultImage());
    mxmodule::ComposeOptions options;
    options.image = other;
    EXPECT_EQ(module.compose({{"AI 1/Upper limit", "8.5 V"}}, options).findings.size(), 0U);
    EXPECT_EQ(translations(), 1);
}

TEST_F(TranslationCount, decodingTranslatesNoMore)
{
    const Module module = analogueInputs();
    const auto image = module.compose(values()).image;
    module.decode(image, Fieldbus::Raw).parameters();
    module.decode(module.configuration(image, Fieldbus::Modbus).bytes(), Fieldbus::Modbus);
    EXPECT_EQ(translations(), 1);
}

TEST_F(TranslationCount, anotherPlaceIsATranslation)
{
    const Module module = analogueInputs();
    module.at({4, 0});
    EXPECT_EQ(translations(), 2);
}

} // namespace
