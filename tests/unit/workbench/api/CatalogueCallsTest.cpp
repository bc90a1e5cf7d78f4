#include "api/ApiFixture.h"

#include <gmock/gmock.h>
#include <mxmodule/Population.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using text::Json;

// A catalogue of "Field supply 24 V" (0bc1e800), "16 DI 24 V DC 3 ms" (5a010116), "8 DO 24 V DC
// 0.5 A" (5a020208) and "4 AI +-10 V / 0-20 mA" (5a030304).
class CatalogueCalls : public ApiTest
{
protected:
    CatalogueCalls()
    {
        const std::string url = "sqlite:" + path("devices.sqlite");
        auto catalogue = mxmodule::Catalogue::openOrCreate(url);
        mxmodule::populate(mxmodule::listMxDirectory(directory.path()), catalogue);
        open("", url);
    }

    Json search(const Json& body) const { return call("POST", "/catalogue", body); }

    static std::vector<std::string> referencesOf(const Json& answer)
    {
        std::vector<std::string> references;
        for (const auto& module : answer.at("modules")) {
            references.push_back(module.at("reference"));
        }
        return references;
    }
};

TEST_F(CatalogueCalls, GiveAllModulesWithoutALimit)
{
    const Json all = search(Json::object());
    EXPECT_THAT(referencesOf(all), ElementsAre("0bc1e800", "5a010116", "5a020208", "5a030304"));
    EXPECT_EQ(all.at("hasMore"), false);
    EXPECT_THAT(all.at("findings"), IsEmpty());
    EXPECT_EQ(all.at("modules").at(3).at("inputSize"), 8);
}

TEST_F(CatalogueCalls, GiveListsInParts)
{
    const Json first = search({{"words", "dc 24"}, {"limit", 1}});
    EXPECT_THAT(referencesOf(first), ElementsAre("5a010116"));
    EXPECT_EQ(first.at("hasMore"), true);
    for (const Json& last :
         {Json{{"reference", "5a010116"}, {"family", "kv38"}}, Json{{"reference", "5a010116"}}}) {
        const Json second = search({{"words", "dc 24"}, {"limit", 1}, {"after", last}});
        EXPECT_THAT(referencesOf(second), ElementsAre("5a020208"));
        EXPECT_EQ(second.at("hasMore"), false);
    }
}

TEST_F(CatalogueCalls, RefuseListsAfterAModuleThatIsNotInThem)
{
    EXPECT_THAT(failure("POST", "/catalogue", {{"after", {{"reference", "5a010117"}}}}, 422),
                ElementsAre(HasSubstr("Module 5a010117 is not in the database")));
    EXPECT_THAT(failure("POST", "/catalogue",
                        {{"words", "supply"}, {"after", {{"reference", "5a010116"}}}}, 422),
                ElementsAre(HasSubstr("but not in this list")));
    EXPECT_THAT(failure("POST", "/catalogue", {{"limit", "50"}}, 400),
                ElementsAre(HasSubstr("limit: found \"50\", expected a whole number")));
    EXPECT_THAT(failure("POST", "/catalogue", {{"after", "5a010116"}}, 400),
                ElementsAre(HasSubstr("after: found \"5a010116\", expected an object")));
}

} // namespace
