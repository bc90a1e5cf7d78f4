#include "StoredModules.h"

#include <gmock/gmock.h>

#include <map>
#include <utility>

namespace {

using mxmodule::CatalogueQuery;
using mxmodule::Finding;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

Finding rejection(const std::string& condition)
{
    return reasonOf([&] { CatalogueQuery("", {condition}); });
}

TEST(CatalogueQuery, rejectsWhatIsNoCondition)
{
    for (const char* text : {"", "label", "in_bytes 4"}) {
        const Finding reason = rejection(text);
        EXPECT_EQ(reason.origin, mxmodule::Origin::Request);
        EXPECT_EQ(reason.place, "");
        EXPECT_EQ(reason.text, "\"" + std::string(text) +
                                   "\" is not a condition, expected a field, one of = != < <= > "
                                   ">= ~ and a value, such as in_bytes>4");
    }
}

TEST(CatalogueQuery, rejectsUnknownFieldsAndListsTheFields)
{
    const Finding reason = rejection("in_byte>4");
    EXPECT_THAT(reason.text, HasSubstr("\"in_byte>4\" names no field"));
    EXPECT_THAT(reason.text, HasSubstr("did you mean \"in_bytes\""));
    EXPECT_THAT(reason.accepted, Contains("in_bytes"));
    EXPECT_EQ(reason.accepted.size(), mxmodule::conditionFields().size());
    EXPECT_THAT(rejection(">4").text, HasSubstr("names no field"));
}

TEST(CatalogueQuery, comparesNumbersWithWholeNumbers)
{
    EXPECT_EQ(rejection("in_bytes = x").text,
              "\"in_bytes = x\" compares in_bytes with \"x\", expected a whole number");
    EXPECT_EQ(rejection("in_bytes>99999999999999999999").text,
              "\"in_bytes>99999999999999999999\" compares in_bytes with \"99999999999999999999\", "
              "expected a whole number");
    EXPECT_EQ(rejection("in_bytes~4").text,
              "\"in_bytes~4\" looks for a text in the number in_bytes, expected one of = != < <= > "
              ">=");
}

TEST(CatalogueQuery, blanksBelongToTexts)
{
    auto catalogue = mxmodule::Catalogue::openOrCreate("sqlite::memory:");
    ModuleDirectory directory;
    directory.add("MX1.bin", 0xa01);
    directory.populate(catalogue);
    const auto found = [&](const std::string& condition) {
        return catalogue.search(CatalogueQuery("", {condition})).size();
    };
    EXPECT_EQ(found("label=Test module"), 1U);
    EXPECT_EQ(found("label = Test module"), 1U);
    EXPECT_EQ(found("label= Test module"), 0U);
    EXPECT_EQ(found("label==Test module"), 1U);
    EXPECT_EQ(found("label!=Test module"), 0U);
    EXPECT_EQ(found(" in_bytes <= 7 "), 1U);
    EXPECT_EQ(found("out_bytes<4"), 0U);
}

TEST(CatalogueQuery, staysWholeAfterAMove)
{
    auto catalogue = mxmodule::Catalogue::openOrCreate("sqlite::memory:");
    CatalogueQuery query;
    const CatalogueQuery other = std::move(query);
    query = other;
    EXPECT_THAT(catalogue.search(query), IsEmpty());
}

TEST(ConditionFields, areNumbersOrTexts)
{
    std::map<std::string, bool> isNumber;
    for (const mxmodule::ConditionField& field : mxmodule::conditionFields()) {
        EXPECT_FALSE(field.meaning.empty()) << field.name;
        isNumber[field.name] = field.isNumber;
    }
    EXPECT_TRUE(isNumber.at("in_bytes"));
    EXPECT_TRUE(isNumber.at("channels"));
    EXPECT_FALSE(isNumber.at("label"));
    EXPECT_FALSE(isNumber.at("direction"));
}

TEST(ConditionFields, haveTheComparisonsThatAConditionTakes)
{
    for (const mxmodule::ConditionField& field : mxmodule::conditionFields()) {
        std::vector<std::string> expected = {"=", "!=", "<", "<=", ">", ">="};
        if (!field.isNumber) {
            expected.insert(expected.begin(), "~");
        }
        EXPECT_EQ(field.comparisons, expected) << field.name;
        for (const std::string& comparison : field.comparisons) {
            EXPECT_NO_THROW(CatalogueQuery("", {field.name + comparison + "1"})) << field.name;
        }
    }
}

} // namespace
