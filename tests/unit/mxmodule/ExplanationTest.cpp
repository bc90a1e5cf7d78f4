// The meaning of the bytes as plain values; the texts are those of the golden outputs of mxtool.
#include <mxmodule/Explanation.h>

#include "ExampleModules.h"
#include "MxBuffer.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using mxmodule::ExplainedPart;
using mxmodule::Explanation;
using mxmodule::Failure;
using mxmodule::ModuleFile;
using mxmodule::NamedPlace;
using testing::HasSubstr;
using testing::SizeIs;

Explanation explanationOf(const std::string& name)
{
    return Explanation(ModuleFile(name, exampleBytes(name)));
}

// A group of texts (20d3) of 8 bytes, then one (0005) whose length 5 is less than its header.
Explanation explanationUpToTheFraming()
{
    const testkit::Bytes bytes = testkit::hexBytes("20d3 0008 0002 0000  0005 0005 0000 0000");
    return Explanation(ModuleFile("cut.bin", {bytes.begin(), bytes.end()}));
}

TEST(Explanation, hasEachByteOnce)
{
    const Explanation explanation = explanationOf("MX0304.bin");
    std::size_t next = 0;
    for (const ExplainedPart& part : explanation.parts()) {
        EXPECT_EQ(part.offset, next);
        next += part.length;
    }
    EXPECT_EQ(next, 1816U);
    EXPECT_EQ(explanation.file().bytes().size(), 1816U);
    EXPECT_FALSE(explanation.failure());
}

// The block of MX0304 begins at 0x124; parameter 3 is in its bytes 4 and 5: 0x251c = 9500.
TEST(Explanation, givesAPartByItsBytes)
{
    const Explanation explanation = explanationOf("MX0304.bin");
    const ExplainedPart& part = explanation.partAt(0x129);
    EXPECT_EQ(&part, &explanation.partAt(0x128));
    EXPECT_EQ(part.offset, 0x128U);
    EXPECT_EQ(part.length, 2U);
    EXPECT_EQ(part.field, "block");
    EXPECT_EQ(part.kind, ExplainedPart::Kind::Raw);
    EXPECT_EQ(part.value, "");
    EXPECT_EQ(part.meaning, "default of parameter 3 \"Upper limit\": 9500");
    EXPECT_TRUE(part.isRead);
    EXPECT_EQ(part.record, std::nullopt);
    const mxmodule::ExplainedGroup& group = explanation.groups().at(part.group.value());
    EXPECT_EQ(group.id, 0x0010);
    EXPECT_EQ(group.name, "parameter block");
    EXPECT_EQ(group.offset, 0x11bU);
    EXPECT_EQ(group.length, 46U);
    EXPECT_TRUE(group.isRead);
}

TEST(Explanation, givesNumbersAndTexts)
{
    const Explanation explanation = explanationOf("MX0304.bin");
    const ExplainedPart& id = explanation.partAt(explanation.groups()[1].offset);
    EXPECT_EQ(id.kind, ExplainedPart::Kind::Number);
    EXPECT_EQ(id.value, std::to_string(explanation.groups()[1].id));
    const auto text = std::find_if(
        explanation.parts().begin(), explanation.parts().end(), [](const ExplainedPart& part) {
            return part.kind == ExplainedPart::Kind::Text && part.value == "±10 V";
        });
    ASSERT_NE(text, explanation.parts().end());
    EXPECT_EQ(text->length, 5U); // in Windows-1252
    EXPECT_EQ(text->subject, "text 100");
    EXPECT_TRUE(text->record);
}

TEST(Explanation, givesThePlacesOfNames)
{
    const Explanation explanation = explanationOf("MX0304.bin");
    const auto place =
        std::find_if(explanation.names().begin(), explanation.names().end(),
                     [](const NamedPlace& one) { return one.what == "channel 1 (IW2)"; });
    ASSERT_NE(place, explanation.names().end());
    EXPECT_EQ(place->name, "AI 2");
    EXPECT_EQ(place->group, 0x20d0);
    EXPECT_THAT(explanation.where("AI 2"), HasSubstr("channel 1 (IW2)"));
    try {
        explanation.where("AI 22");
        ADD_FAILURE() << "no failure";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Request);
        EXPECT_THAT(failure.reason().text, HasSubstr("is called \"AI 22\", did you mean \"AI 2\""));
    }
}

TEST(Explanation, refusesAnOffsetOutsideTheFile)
{
    const Explanation explanation = explanationUpToTheFraming();
    EXPECT_NO_THROW(explanation.at(15));
    for (const std::uint64_t offset : {std::uint64_t{16}, ~std::uint64_t{0}}) {
        EXPECT_THROW(explanation.at(offset), Failure);
        EXPECT_THROW(explanation.partAt(offset), Failure);
    }
}

TEST(Explanation, endsAtAFaultOfTheFraming)
{
    const Explanation explanation = explanationUpToTheFraming();
    ASSERT_THAT(explanation.groups(), SizeIs(1));
    ASSERT_TRUE(explanation.failure());
    EXPECT_EQ(explanation.failure()->place, "cut.bin:0x000008");
    EXPECT_EQ(explanation.failure()->text,
              "Parser::parse(): Error in group 5 (@ 8): Invalid group length");
    EXPECT_EQ(explanation.failure()->hint, "mxtool check cut.bin shows the details");
    const ExplainedPart& rest = explanation.parts().back();
    EXPECT_EQ(rest.offset, 8U);
    EXPECT_EQ(rest.length, 8U);
    EXPECT_EQ(rest.group, std::nullopt);
}

TEST(Explanation, isOfTheFileThatATextDescribes)
{
    const std::string text = "module: {type: 3, id: 0x01020304}\n";
    const Explanation explanation(ModuleFile("small.yaml", {text.begin(), text.end()}));
    EXPECT_FALSE(explanation.failure());
    EXPECT_EQ(explanation.parts().back().offset + explanation.parts().back().length,
              explanation.file().bytes().size());
    EXPECT_THAT(explanation.json(), HasSubstr("\"file\": \"small.yaml\""));
}

} // namespace
