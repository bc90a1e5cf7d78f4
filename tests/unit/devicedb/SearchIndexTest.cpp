#include "Records.h"

#include <TestDatabase.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <map>
#include <random>

namespace {

using devices::database::Comparison;
using devices::database::DeviceDatabase;
using devices::database::ModuleCondition;
using devices::database::ModuleContent;
using devices::database::ModuleKey;
using devices::database::PagedQuery;
using devices::database::SearchExplanation;
using testing::ElementsAre;
using testing::IsEmpty;

// A catalogue with more modules than are kept out of the index, compared with a plain walk over the
// texts that the test gave.
class SearchIndex : public testkit::OnEachEngine
{
protected:
    static constexpr std::size_t moduleCount = 1100; // two blocks

    SearchIndex()
    {
        for (std::size_t number = 0; number < moduleCount; ++number) {
            modules[idOf(number)] = randomContent();
        }
        std::vector<devices::database::DeviceProperties> records;
        records.reserve(modules.size());
        std::vector<devices::database::ModuleToStore> stored;
        for (const auto& module : modules) {
            records.push_back(recordOf(module.first, module.second));
            stored.push_back({&records.back(), &module.second});
        }
        auto transaction = database.beginTransaction();
        database.insertAll(stored);
        transaction.commit();
    }

    static std::string idOf(std::size_t number)
    {
        std::string digits = std::to_string(number * 7919 % 90001);
        return std::string(8 - digits.size(), '0') + digits;
    }

    static devices::database::DeviceProperties recordOf(const std::string& id,
                                                        const ModuleContent& content)
    {
        auto record = device(id, content.label);
        record.inDataSize = static_cast<std::uint32_t>(content.channels.size());
        return record;
    }

    std::string randomName()
    {
        static const std::array<const char*, 12> words = {"AI",
                                                          "DI",
                                                          "16",
                                                          "Z\xC3\xA4hler",
                                                          "Filter",
                                                          "4-20",
                                                          "x",
                                                          "Relais",
                                                          "zz",
                                                          "24 V",
                                                          "\xC2\xB1"
                                                          "10 V",
                                                          "Thermo"};
        std::string name;
        for (std::size_t i = random() % 3; i < 3; ++i) {
            name += std::string(name.empty() ? "" : " ") + words[random() % words.size()];
        }
        return name;
    }

    ModuleContent randomContent()
    {
        ModuleContent content;
        content.label = randomName();
        content.orderCode = "K" + std::to_string(random() % 5000);
        for (std::size_t i = random() % 3; i > 0; --i) {
            content.channels.push_back({1, randomName(), "in", random() % 9 == 0 ? "X" : "W", ""});
        }
        if (random() % 2 == 0) {
            content.parameters.emplace_back().name = randomName();
            if (random() % 3 == 0) {
                content.parameters.back().options.push_back({randomName(), "1"});
            }
        }
        return content;
    }

    // Whatever the library does: lower case and the one accent of these texts.
    static std::string plain(std::string text)
    {
        for (const char* const umlaut : {"\xC3\xA4", "\xC3\x84"}) {
            for (auto at = text.find(umlaut); at != std::string::npos; at = text.find(umlaut)) {
                text.replace(at, 2, "a");
            }
        }
        std::transform(text.begin(), text.end(), text.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
        return text;
    }

    static bool anyHolds(const std::vector<std::string>& texts, const std::string& word)
    {
        return std::any_of(texts.begin(), texts.end(), [&](const std::string& text) {
            return plain(text).find(plain(word)) != std::string::npos;
        });
    }

    // 0: names; 3: options; 4: nowhere.
    static int classOf(const ModuleContent& content, const std::string& word)
    {
        std::array<std::vector<std::string>, 4> texts;
        texts[0] = {content.label, content.orderCode};
        for (const auto& channel : content.channels) {
            texts[1].push_back(channel.name);
        }
        for (const auto& parameter : content.parameters) {
            texts[2].push_back(parameter.name);
            for (const auto& option : parameter.options) {
                texts[3].push_back(option.text);
            }
        }
        int found = 0;
        while (found < 4 && !anyHolds(texts[static_cast<std::size_t>(found)], word)) {
            ++found;
        }
        return found;
    }

    std::vector<std::string> expected(const std::vector<std::string>& words) const
    {
        std::vector<std::pair<int, std::string>> ranked;
        for (const auto& module : modules) {
            int poorest = 0;
            for (const std::string& word : words) {
                poorest = std::max(poorest, classOf(module.second, word));
            }
            if (poorest < 4) {
                ranked.emplace_back(poorest, module.first);
            }
        }
        std::sort(ranked.begin(), ranked.end());
        std::vector<std::string> ids;
        for (const auto& module : ranked) {
            ids.push_back(module.second);
        }
        return ids;
    }

    static bool anyContains(const std::vector<std::string>& texts, const std::string& part)
    {
        return std::any_of(texts.begin(), texts.end(), [&part](const std::string& text) {
            return text.find(part) != std::string::npos;
        });
    }

    static bool holdsOfNumber(std::size_t number, const ModuleCondition& condition)
    {
        const std::size_t value = std::stoul(condition.value);
        switch (condition.comparison) {
        case Comparison::Equal:
            return number == value;
        case Comparison::NotEqual:
            return number != value;
        case Comparison::Less:
            return number < value;
        case Comparison::LessOrEqual:
            return number <= value;
        case Comparison::Greater:
            return number > value;
        case Comparison::GreaterOrEqual:
            return number >= value;
        case Comparison::Contains:
            break;
        }
        return false;
    }

    // Conditions of the kinds that the test has.
    static bool holds(const ModuleContent& content, const ModuleCondition& condition)
    {
        if (condition.field == "in_bytes") {
            return holdsOfNumber(content.channels.size(), condition);
        }
        std::vector<std::string> texts;
        if (condition.field == "label") {
            texts.push_back(content.label);
        }
        for (const auto& channel : content.channels) {
            texts.push_back(condition.field == "channel"       ? channel.name
                            : condition.field == "direction"   ? channel.direction
                            : condition.field == "size_letter" ? channel.sizeLetter
                                                               : "");
        }
        for (const auto& parameter : content.parameters) {
            texts.push_back(condition.field == "parameter" ? parameter.name : "");
            for (const auto& option : parameter.options) {
                texts.push_back(condition.field == "option" ? option.text : "");
            }
        }
        return anyContains(texts, condition.value);
    }

    std::vector<std::string> found(const std::vector<std::string>& words)
    {
        PagedQuery query;
        query.words = words;
        return moduleIds(database.searchPage(query));
    }

    // Page after page.
    std::vector<std::string> foundInPages(const std::vector<std::string>& words, std::size_t limit)
    {
        PagedQuery query;
        query.words = words;
        query.limit = limit;
        std::vector<std::string> ids;
        for (auto page = database.searchPage(query); !page.empty();
             page = database.searchPage(query)) {
            EXPECT_LE(page.size(), limit);
            for (const auto& module : page) {
                ids.push_back(module.moduleIdText);
            }
            query.after = ModuleKey{page.back().family, page.back().moduleIdText};
        }
        return ids;
    }

    void expectEverySearch()
    {
        for (const std::vector<std::string>& words : searches) {
            EXPECT_EQ(found(words), expected(words)) << testing::PrintToString(words);
        }
    }

    const std::vector<std::vector<std::string>> searches = {{"a"},
                                                            {"ai"},
                                                            {"DI"},
                                                            {"16"},
                                                            {"zahler"},
                                                            {"Z\xC3\x84HL", "16"},
                                                            {"filter"},
                                                            {"x", "zz"},
                                                            {"4-20"},
                                                            {"24 v"},
                                                            {"\xC2\xB1"},
                                                            {"thermo", "relais", "ai"},
                                                            {"k49"},
                                                            {"k4999"},
                                                            {"nowhere"},
                                                            {"mofil"},
                                                            {"v th"},
                                                            {"r", "t", "k"},
                                                            {"filter", "ai", "16", "x"}};
    std::mt19937 random{1};
    std::map<std::string, ModuleContent> modules;
    DeviceDatabase database{url};
};

RUN_ON_EACH_ENGINE(SearchIndex);

TEST_P(SearchIndex, FindsWhatAWalkOverTheTextsFinds)
{
    PagedQuery query;
    query.words = {"filter"};
    EXPECT_EQ(database.explain(query).source, SearchExplanation::Source::Index);
    EXPECT_EQ(database.explain(query).blocks, 2U);
    expectEverySearch();
}

TEST_P(SearchIndex, HoldsEveryConditionWithEveryWord)
{
    const std::vector<std::vector<ModuleCondition>> conditionLists = {
        {{"in_bytes", Comparison::Greater, "0"}},
        {{"in_bytes", Comparison::Equal, "2"}},
        {{"in_bytes", Comparison::LessOrEqual, "1"}, {"channel", Comparison::Contains, "AI"}},
        {{"label", Comparison::Contains, "Filter"}, {"in_bytes", Comparison::GreaterOrEqual, "1"}},
        {{"size_letter", Comparison::Equal, "X"}, {"in_bytes", Comparison::Less, "2"}},
        {{"in_bytes", Comparison::NotEqual, "1"}, {"parameter", Comparison::Contains, "DI"}},
        {{"option", Comparison::Contains, "16"},
         {"in_bytes", Comparison::Less, "3"},
         {"in_bytes", Comparison::Greater, "0"},
         {"direction", Comparison::Equal, "in"}}};
    std::size_t matches = 0;
    for (const auto& conditions : conditionLists) {
        for (const std::vector<std::string>& words :
             std::vector<std::vector<std::string>>{{}, {"ai"}, {"zahler", "16"}}) {
            std::vector<std::string> ids;
            for (const std::string& id : expected(words)) {
                const ModuleContent& content = modules.at(id);
                if (std::all_of(conditions.begin(), conditions.end(),
                                [&](const ModuleCondition& one) { return holds(content, one); })) {
                    ids.push_back(id);
                }
            }
            matches += ids.size();
            EXPECT_EQ(moduleIds(database.search({words, conditions})), ids)
                << conditions.front().field << " " << testing::PrintToString(words);
        }
    }
    EXPECT_GT(matches, 1000U); // not in vain
}

TEST_P(SearchIndex, GivesTheSameInPagesOfAnySize)
{
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"zahler", "16"}, {"thermo", "ai"}, {"r", "t", "k"}, {"4-20"}}) {
        EXPECT_EQ(foundInPages(words, 97), expected(words)) << testing::PrintToString(words);
    }
    EXPECT_EQ(foundInPages({"k49"}, 1), expected({"k49"}));
    EXPECT_EQ(foundInPages({}, 1000), expected({}));
}

TEST_P(SearchIndex, KnowsChangedNewAndRemovedModules)
{
    for (std::size_t number = 0; number < moduleCount; number += 20) {
        const std::string id = idOf(number);
        if (number % 60 == 0) {
            database.remove(id);
            modules.erase(id);
        } else {
            modules[id] = randomContent();
            database.insert(recordOf(id, modules[id]), modules[id]);
        }
    }
    for (std::size_t number = moduleCount; number < moduleCount + 30; ++number) {
        modules[idOf(number)] = randomContent();
        database.insert(recordOf(idOf(number), modules[idOf(number)]), modules[idOf(number)]);
    }
    expectEverySearch();
    EXPECT_EQ(foundInPages({"ai"}, 50), expected({"ai"}));
}

TEST_P(SearchIndex, IsWrittenAnewWhenManyModulesChange)
{
    auto transaction = database.beginTransaction();
    for (std::size_t number = 500; number < moduleCount + 200; ++number) {
        modules[idOf(number)] = randomContent();
        database.insert(recordOf(idOf(number), modules[idOf(number)]), modules[idOf(number)]);
    }
    transaction.commit();
    PagedQuery query;
    query.words = {"ai"};
    EXPECT_EQ(database.explain(query).notIndexed, 0U);
    EXPECT_GE(database.explain(query).blocks, 2U);
    expectEverySearch();
}

// What is stored and removed again, rejected or rolled back is unknown to searches in and after the
// transaction.
TEST_P(SearchIndex, FollowsTransactions)
{
    place.refuseModuleBad();
    {
        auto transaction = database.beginTransaction();
        database.insert(device("a0000001"), contentNamed("qxrolledback"));
        EXPECT_THAT(found({"qxrolledback"}), ElementsAre("a0000001"));
    }
    EXPECT_THAT(found({"qxrolledback"}), IsEmpty());
    auto transaction = database.beginTransaction();
    database.insert(device("a0000001"), contentNamed("qxremoved"));
    database.remove("a0000001");
    database.insert(device("a0000002"), contentNamed("qxstored"));
    EXPECT_ANY_THROW(database.insert(device("bad"), contentNamed("qxrejected")));
    EXPECT_THAT(found({"qx"}), ElementsAre("a0000002"));
    database.remove("a0000002");
    database.insert(device("a0000002"), contentNamed("qxagain"));
    transaction.commit();
    EXPECT_THAT(found({"qx"}), ElementsAre("a0000002"));
    EXPECT_THAT(found({"qxagain"}), ElementsAre("a0000002"));
    PagedQuery query;
    query.words = {"qxagain"};
    EXPECT_EQ(database.explain(query).notIndexed, 1U);
}

TEST_P(SearchIndex, StopsWhenNoMoreIsWanted)
{
    std::vector<std::string> ids;
    PagedQuery query;
    query.words = {"a"};
    database.searchPage(query, [&](const auto& module) {
        ids.push_back(module.moduleIdText);
        return ids.size() < 3;
    });
    auto all = expected({"a"});
    all.resize(3);
    EXPECT_EQ(ids, all);
}

} // namespace
