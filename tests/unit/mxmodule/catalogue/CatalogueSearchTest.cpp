#include "StoredModules.h"

#include "TestDatabase.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using mxmodule::Catalogue;
using mxmodule::CatalogueEntry;
using mxmodule::CataloguePage;
using mxmodule::CatalogueQuery;
using mxmodule::Finding;
using mxmodule::Origin;
using mxmodule::SearchExplanation;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Three modules with the label "Test module" and content.
class CatalogueSearch : public testing::Test
{
protected:
    CatalogueSearch()
    {
        directory.add("MX1.bin", 0xa01);
        directory.add("MX2.bin", 0xa02);
        directory.add("MX3.bin", 0xa03);
        directory.populate(catalogue);
    }

    std::vector<std::string> found(const CatalogueQuery& query)
    {
        return idsOf(catalogue.search(query));
    }

    testkit::TestDatabase place{testkit::Engine::Sqlite};
    Catalogue catalogue = Catalogue::openOrCreate(place.url());
    ModuleDirectory directory;
    const CatalogueQuery words{"test module"};
};

TEST_F(CatalogueSearch, givesPages)
{
    for (const CatalogueQuery& query : {CatalogueQuery(), words}) {
        const CataloguePage first = catalogue.page(query.limitedTo(2));
        EXPECT_THAT(idsOf(first.modules), ElementsAre("00000a01", "00000a02"));
        EXPECT_TRUE(first.hasMore);
        const CataloguePage last = catalogue.page(query.limitedTo(2).after("00000a02"));
        EXPECT_THAT(idsOf(last.modules), ElementsAre("00000a03"));
        EXPECT_FALSE(last.hasMore);
        EXPECT_FALSE(catalogue.page(query.limitedTo(3)).hasMore);
        EXPECT_EQ(catalogue.page(query).modules.size(), 3U);
        EXPECT_THAT(found(query.after("00000a03")), IsEmpty());
    }
    EXPECT_EQ(found(words).size(), 3U); // the query itself is unchanged
    EXPECT_THAT(found(CatalogueQuery("absent").limitedTo(1)), IsEmpty());
}

TEST_F(CatalogueSearch, givesModulesUntilNoMoreAreTaken)
{
    std::vector<std::string> taken;
    catalogue.search(words, [&](const CatalogueEntry& module) {
        taken.push_back(module.moduleId);
        return taken.size() < 2;
    });
    EXPECT_THAT(taken, ElementsAre("00000a01", "00000a02"));
}

TEST_F(CatalogueSearch, exceptionOfATakerIsNotOneOfTheDatabase)
{
    const auto stop = [](const CatalogueEntry& /*module*/) -> bool {
        throw std::out_of_range("stop");
    };
    EXPECT_THROW(catalogue.search(words, stop), std::out_of_range);
    EXPECT_EQ(found(words).size(), 3U); // it can be used on
}

TEST_F(CatalogueSearch, goesOnAfterModulesOfTheListAlone)
{
    for (const CatalogueQuery& query : {CatalogueQuery(), words}) {
        for (const char* family : {"", "kv38"}) {
            const Finding unknown = reasonOf([&] { found(query.after("00000a09", family)); });
            EXPECT_EQ(unknown.origin, Origin::Request);
            EXPECT_THAT(unknown.text, HasSubstr("Module 00000a09 is not in the database"));
            EXPECT_EQ(unknown.hint, "it holds 00000a01, 00000a02, 00000a03");
        }
    }
    storeHostRecord(place.url(), "00000a05"); // without content
    const Finding absent = reasonOf([&] { found(words.after("00000a05")); });
    EXPECT_EQ(absent.origin, Origin::Request);
    EXPECT_EQ(absent.text, "Module 00000a05 is in the database, but not in this list, which is to "
                           "go on after it");
    EXPECT_THAT(absent.hint, HasSubstr("the last module of the part before"));
}

TEST_F(CatalogueSearch, namesTheFamilyOfAModuleThatIsOfAnother)
{
    for (const CatalogueQuery& query : {CatalogueQuery(), words}) {
        const Finding absent = reasonOf([&] { found(query.after("00000a02", "aa")); });
        EXPECT_EQ(absent.origin, Origin::Request);
        EXPECT_EQ(absent.text, "Module 00000a02 of family \"aa\" is not in the database, which "
                               "has the one of family \"kv38\"");
        EXPECT_EQ(absent.hint, "");
    }
}

// In the order of families "aa" is before "kv38".
TEST_F(CatalogueSearch, goesOnAfterTheModuleOfTheUsualFamilyUnlessAnotherIsStated)
{
    storeHostRecord(place.url(), "00000a02", "aa");
    storeHostRecord(place.url(), "00000a05", "aa");
    EXPECT_THAT(found(CatalogueQuery().after("00000a02")), ElementsAre("00000a03"));
    EXPECT_THAT(found(CatalogueQuery().after("00000a02", "aa")),
                ElementsAre("00000a05", "00000a01", "00000a02", "00000a03"));
    EXPECT_THAT(found(CatalogueQuery().after("00000a05").limitedTo(1)), ElementsAre("00000a01"));
}

TEST_F(CatalogueSearch, isExplained)
{
    const SearchExplanation byIndex = catalogue.explain(CatalogueQuery("M\xC3\x96"
                                                                       "DUL"));
    EXPECT_EQ(byIndex.source, SearchExplanation::Source::Index);
    EXPECT_THAT(byIndex.words, ElementsAre("modul"));
    EXPECT_EQ(byIndex.candidates + byIndex.notIndexed, 3U);
    EXPECT_THAT(byIndex.text(), HasSubstr("3 modules newer than the index"));
    EXPECT_THAT(byIndex.text(), HasSubstr("Words, without case and accents: \"modul\"\n"));
    EXPECT_THAT(byIndex.json(), HasSubstr("\"source\": \"index\",\n  \"words\": [\n    \"modul\""));
    const SearchExplanation byOrder = catalogue.explain({});
    EXPECT_EQ(byOrder.source, SearchExplanation::Source::Order);
    EXPECT_THAT(byOrder.text(), HasSubstr("All modules are compared with the search"));
    EXPECT_THAT(byOrder.text(), HasSubstr("ORDER BY"));
    EXPECT_EQ(reasonOf([&] { catalogue.explain(words.after("00000a09")); }).origin,
              Origin::Request);
}

TEST_F(CatalogueSearch, explanationHasOneSentenceForEachSource)
{
    SearchExplanation explanation;
    explanation.source = SearchExplanation::Source::Scan;
    explanation.words = {"a\nb"};
    explanation.sql = "SELECT 1";
    EXPECT_EQ(explanation.text(),
              "All modules are compared with the search, in the order of family and identifier: "
              "the database is of an older version, without a search index. It gets one when it is "
              "opened by a user who may change it.\n"
              "Words, without case and accents: \"a\\x0ab\"\n"
              "Statement that reads modules:\n"
              "  SELECT 1\n");
    explanation.source = SearchExplanation::Source::Index;
    explanation.parts = {"a", "b"};
    explanation.blocks = 1;
    explanation.candidates = 1;
    explanation.notIndexed = 2;
    EXPECT_EQ(explanation.text(),
              "Compared with the search: 1 module that the search index names, the best matches "
              "first, until there are enough; and 2 modules newer than the index, all of them.\n"
              "Words, without case and accents: \"a\\x0ab\"\n"
              "Parts looked up in the index: \"a\" \"b\"\n"
              "Index: 1 block of up to 1,024 modules\n"
              "Statement that reads modules:\n"
              "  SELECT 1\n");
}

} // namespace
