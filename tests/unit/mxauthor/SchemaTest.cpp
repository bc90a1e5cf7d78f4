// The JSON Schema, which editors use, and the compiler know the same keys and words.

#include "RequiredEntries.h"
#include "mxauthor/Skeleton.h"
#include "text/FormKeys.h"
#include "text/GroupWords.h"
#include "text/TypeWords.h"
#include "text/UnreadBytes.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <fstream>

namespace {

using nlohmann::json;
using testing::UnorderedElementsAreArray;

const json& schema()
{
    static const json loaded = json::parse(std::ifstream(MX_MODULE_SCHEMA));
    return loaded;
}

std::vector<std::string> keysOfProperties(const json& definition)
{
    std::vector<std::string> keys;
    for (const auto& [key, value] : definition.at("properties").items()) {
        keys.push_back(key);
    }
    return keys;
}

TEST(Schema, hasTheKeysOfEveryMapping)
{
    for (const auto& [mapping, keys] : mxauthor::formKeys()) {
        const json& definition =
            mapping == "file" ? schema() : schema().at("definitions").at(mapping);
        EXPECT_THAT(keysOfProperties(definition), UnorderedElementsAreArray(keys)) << mapping;
        EXPECT_EQ(definition.at("additionalProperties"), false) << mapping;
    }
}

TEST(Schema, hasNoMappingThatTheCompilerDoesNotKnow)
{
    for (const auto& [name, definition] : schema().at("definitions").items()) {
        if (definition.contains("properties")) {
            EXPECT_EQ(mxauthor::formKeys().count(name), 1U) << name;
        }
    }
}

TEST(Schema, hasTheWordsOfTypesAndKinds)
{
    const json& definitions = schema().at("definitions");
    EXPECT_EQ(definitions.at("parameter").at("properties").at("type").at("anyOf")[0].at("enum"),
              json(mxauthor::typeWords()));
    for (const char* direction : {"in", "out"}) {
        const json& kind = definitions.at("channel").at("properties").at(direction);
        EXPECT_EQ(kind.at("anyOf")[0].at("enum"), json(mxauthor::kindWords()));
    }
}

// The keys that the schema asks for in the form of a group with keys and values.
std::vector<std::string> requiredKeys(const char* group)
{
    const json& form = schema().at("properties").at(group).at("anyOf")[0];
    const std::vector<std::string> required = form.at("required");
    EXPECT_THAT(keysOfProperties(form), UnorderedElementsAreArray(required));
    return required;
}

TEST(Schema, asksForTheEntriesThatReadersAskFor)
{
    EXPECT_THAT(requiredKeys("catalogue"), UnorderedElementsAreArray(mxauthor::catalogueKeys));
    EXPECT_THAT(requiredKeys("component"), UnorderedElementsAreArray(mxauthor::componentKeys));
}

TEST(Schema, describesEveryModuleType)
{
    const json& type = schema().at("definitions").at("module").at("properties").at("type");
    const json& forms = type.at("anyOf");
    ASSERT_EQ(forms.size(), mxauthor::moduleTypes().size() + 1); // and any other number
    for (std::size_t i = 0; i + 1 < forms.size(); ++i) {
        const mxauthor::ModuleType& known = mxauthor::moduleTypes()[i];
        EXPECT_EQ(forms[i].at("const"), known.number);
        EXPECT_EQ(forms[i].at("description"), known.meaning);
        EXPECT_NE(type.at("description")
                      .get<std::string>()
                      .find(std::to_string(known.number) + " " + known.meaning),
                  std::string::npos);
    }
}

TEST(Schema, hasTheWordsOfGroups)
{
    std::vector<std::string> words = mxauthor::groupWords();
    const json& properties = schema().at("properties");
    EXPECT_THAT(keysOfProperties(properties.at("checksums")), UnorderedElementsAreArray(words));
    EXPECT_THAT(keysOfProperties(properties.at("unread")),
                UnorderedElementsAreArray(mxauthor::wordsWithUnreadBytes()));
    words.push_back(mxauthor::rawWord);
    EXPECT_EQ(properties.at("order").at("items").at("enum"), json(words));
}

} // namespace
