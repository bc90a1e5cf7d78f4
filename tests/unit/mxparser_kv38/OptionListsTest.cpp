// The results of getOptionListById for group 0x20c1.

#include "Failure.h"
#include "MxBuffer.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

namespace {

using devices::parser::mx::MxParameterDatatype;
using testing::ElementsAre;
using testkit::Bytes;
using testkit::failureOf;
using testkit::MxBuffer;
using testkit::optionList;
using testkit::ParserAccess;

class OptionLists : public testing::Test
{
protected:
    void start(const Bytes& payload)
    {
        buffer =
            MxBuffer()
                .group(0x20C1, payload)
                .group(0x20D3, testkit::textTablePayload({{1, "one"}, {2, "two"}, {3, "three"}}))
                .chars();
        parser.index(buffer);
    }

    void get(std::uint8_t id, MxParameterDatatype datatype = MxParameterDatatype::UInt8)
    {
        parser.getOptionListById(id, datatype, &parameter);
    }

    std::vector<std::string> texts() const
    {
        std::vector<std::string> all;
        for (const auto& option : parameter.options) {
            all.push_back(option->text + "=" + option->value);
        }
        return all;
    }

    std::vector<char> buffer;
    ParserAccess parser;
    ParserAccess::ParameterP parameter;
};

TEST_F(OptionLists, aGroupOfLength0Or1HoldsNoList)
{
    for (const Bytes& payload : {Bytes{}, Bytes{3}}) {
        start(payload);
        get(3);
        EXPECT_THAT(texts(), ElementsAre());
    }
}

TEST_F(OptionLists, everyListWithTheIdentifierCountsInItsOrder)
{
    start(testkit::join(
        {optionList(3, {{10, 1}, {20, 2}}), optionList(4, {{9, 3}}), optionList(3, {{30, 3}})}));
    get(3);
    EXPECT_THAT(texts(), ElementsAre("one=10", "two=20", "three=30"));
    EXPECT_THAT(parameter.privateProps.optionValues, ElementsAre(10, 20, 30));
}

TEST_F(OptionLists, optionsAreReplacedAndRawValuesAppended)
{
    start(optionList(3, {{10, 1}}));
    get(3);
    get(3);
    EXPECT_THAT(texts(), ElementsAre("one=10"));
    EXPECT_THAT(parameter.privateProps.optionValues, ElementsAre(10, 10));
}

TEST_F(OptionLists, valuesAreShownInTheParametersDatatype)
{
    start(optionList(3, {{0xFFFFFFFFFFFFFFFE, 1}}));
    get(3, MxParameterDatatype::SInt16);
    EXPECT_THAT(texts(), ElementsAre("one=-2"));
    get(3, MxParameterDatatype::UInt64);
    EXPECT_THAT(texts(), ElementsAre("one=18446744073709551614"));
    EXPECT_THAT(parameter.privateProps.optionValues, ElementsAre(0xFE, 0xFE));
}

TEST_F(OptionLists, anEmptyListAndAnUnknownIdentifierGiveNoOptions)
{
    start(testkit::join({optionList(3, {}), optionList(4, {{9, 3}})}));
    get(3);
    get(99);
    EXPECT_THAT(texts(), ElementsAre());
}

TEST_F(OptionLists, aListThatEndsOneByteBeyondFailsWhateverIsAskedFor)
{
    Bytes payload = testkit::join({optionList(3, {{10, 1}}), optionList(4, {{9, 2}})});
    payload.pop_back();
    start(payload);
    EXPECT_EQ(failureOf([&] { get(3); }), "Bad alignment in group 20c1");
    EXPECT_THAT(texts(), ElementsAre("one=10")); // the options before it were added
    EXPECT_EQ(failureOf([&] { get(77); }), "Bad alignment in group 20c1");
}

TEST_F(OptionLists, oneByteAfterTheLastListIsIgnored)
{
    start(testkit::join({optionList(3, {{10, 1}}), {9}}));
    get(3);
    EXPECT_THAT(texts(), ElementsAre("one=10"));
}

TEST_F(OptionLists, twoBytesAfterTheLastListAreAListAgain)
{
    start(testkit::join({optionList(3, {{10, 1}}), {9, 1}}));
    EXPECT_EQ(failureOf([&] { get(3); }), "Bad alignment in group 20c1");
}

TEST_F(OptionLists, aMissingTextFailsAfterTheOptionsInFront)
{
    start(optionList(3, {{10, 1}, {20, 9}}));
    EXPECT_EQ(failureOf([&] { get(3); }), "Cannot find requested text string: ID = 9");
    EXPECT_THAT(texts(), ElementsAre("one=10"));
}

TEST_F(OptionLists, aMissingGroupFailsAfterTheOptionsWereReleased)
{
    start({});
    parser.groupIndex.erase(0x20C1);
    parameter.options.push_back(std::make_shared<datamodel::ParameterOption>());
    EXPECT_EQ(failureOf([&] { get(3); }), "Cannot find group 20c1");
    EXPECT_THAT(texts(), ElementsAre());
}

TEST(OptionListsDeath, aNullParameterIsAFailedAssertion)
{
    ParserAccess parser;
    EXPECT_DEATH(parser.getOptionListById(1, MxParameterDatatype::UInt8, nullptr),
                 "vendor/mx/src/mxparser_kv38/.*Assertion `param' failed");
}

} // namespace
