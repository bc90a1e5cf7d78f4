// A catalogue of three small modules, and what observers in C are told.
#include "CallsOfC.h"

#include "catalogue/StoredModules.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <utility>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

// What the functions of an observer are told; they end the operation after `steps` files.
struct Told
{
    std::size_t steps = 100;
    std::vector<std::pair<std::size_t, std::size_t>> progress;
    std::vector<std::string> notices;
};

int onNotice(void* context, const char* findings)
{
    static_cast<Told*>(context)->notices.emplace_back(findings);
    return 0;
}

int onProgress(void* context, std::size_t finished, std::size_t total)
{
    auto& told = *static_cast<Told*>(context);
    told.progress.emplace_back(finished, total);
    return finished >= told.steps ? 1 : 0;
}

int refuse(void* /*context*/, const char* /*findings*/)
{
    return -1;
}

class CCatalogue : public testing::Test
{
protected:
    CCatalogue()
    {
        directory.add("MX1.bin", 0xa01);
        directory.add("MX2.bin", 0xa02);
    }

    OwnedByC<mxmodule_bytes> populate(const mxmodule_observer* observer, mxmodule_error** error,
                                      int replace = 0) const
    {
        return OwnedByC<mxmodule_bytes>(mxmodule_catalogue_populate(
            catalogue.get(), directory.path().c_str(), replace, observer, error));
    }

    std::string search(const char* words, const std::vector<const char*>& conditions = {}) const
    {
        return bytesOf([&](auto** error) {
            return mxmodule_catalogue_search(catalogue.get(), words, conditions.data(),
                                             conditions.size(), error);
        });
    }

    // Populating twice would count modules of the second run as replaced.
    void populateOnce() const { EXPECT_NE(populate(nullptr, nullptr), nullptr); }

    ModuleDirectory directory;
    const OwnedByC<mxmodule_catalogue> catalogue{
        mxmodule_catalogue_open("sqlite::memory:", 1, nullptr)};
};

TEST_F(CCatalogue, isPopulated)
{
    directory.add("MX3.bin", cutFile(0xa03));
    Told told;
    const mxmodule_observer observer = {&told, onNotice, onProgress};
    mxmodule_error* error = nullptr;
    const auto done = populate(&observer, &error);
    EXPECT_EQ(error, nullptr);
    const std::string json = mxmodule_bytes_data(done.get());
    EXPECT_THAT(json, HasSubstr("\"inserted\": 2"));
    EXPECT_THAT(json, HasSubstr("\"replaced\": 0"));
    EXPECT_THAT(json, HasSubstr("\"failed\": 1"));
    EXPECT_THAT(json, HasSubstr("File MX3.bin: "));
    EXPECT_EQ(told.progress.back(), std::make_pair(std::size_t{3}, std::size_t{3}));
    ASSERT_EQ(told.notices.size(), 1U);
    EXPECT_THAT(told.notices[0], HasSubstr("\"name\": \"mxmodule.findings\""));
    EXPECT_THAT(told.notices[0], HasSubstr("File MX3.bin: "));
}

TEST_F(CCatalogue, losesModulesWithoutFileWhenReplaced)
{
    populateOnce();
    std::filesystem::remove(directory.path("MX1.bin"));
    const std::string json = mxmodule_bytes_data(populate(nullptr, nullptr, 1).get());
    EXPECT_THAT(json, HasSubstr("\"replaced\": 1"));
    EXPECT_THAT(json, HasSubstr("\"module_id\": \"00000a01\""));
    EXPECT_THAT(search(nullptr), Not(HasSubstr("00000a01")));
}

TEST_F(CCatalogue, takesAnObserverWithoutFunctions)
{
    const mxmodule_observer observer = {nullptr, nullptr, nullptr};
    EXPECT_NE(populate(&observer, nullptr), nullptr);
}

TEST_F(CCatalogue, isAsBeforeWhenTheObserverEndsTheOperation)
{
    populateOnce();
    const std::string before = search(nullptr);
    directory.add("MX3.bin", 0xa03);
    std::filesystem::remove(directory.path("MX1.bin"));
    Told told;
    told.steps = 2;
    const mxmodule_observer observer = {&told, onNotice, onProgress};
    const auto error =
        errorOf([&](auto** failure) { return populate(&observer, failure, 1) != nullptr; });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_REQUEST);
    EXPECT_STREQ(mxmodule_error_text(error.get()), "The caller ended the operation");
    EXPECT_EQ(search(nullptr), before);
    populateOnce(); // it can be used on
}

TEST_F(CCatalogue, isAsBeforeWhenTheObserverRefusesAFinding)
{
    directory.add("MX3.bin", cutFile(0xa03));
    const mxmodule_observer observer = {nullptr, refuse, nullptr};
    const auto error =
        errorOf([&](auto** failure) { return populate(&observer, failure) != nullptr; });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_REQUEST);
    EXPECT_THAT(search(nullptr), Not(HasSubstr("00000a01")));
}

// Each has 7 bytes of input and 4 of output.
TEST_F(CCatalogue, isSearched)
{
    populateOnce();
    EXPECT_THAT(search(nullptr), HasSubstr("\"module_id\": \"00000a02\""));
    EXPECT_THAT(search("test MODULE", {"in_bytes>6", "out_bytes=4"}), HasSubstr("00000a01"));
    EXPECT_THAT(search("", {"in_bytes>7"}), Not(HasSubstr("00000a01")));
    EXPECT_THAT(search("other"), Not(HasSubstr("00000a01")));
    EXPECT_THAT(bytesOf([&](auto** error) {
                    return mxmodule_catalogue_search_findings(catalogue.get(), "test", nullptr, 0,
                                                              error);
                }),
                HasSubstr("\"findings\": []"));
    const char* const wrong[] = {"bytes>1"};
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_catalogue_search(catalogue.get(), nullptr, wrong, 1, failure);
    });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_REQUEST);
}

TEST_F(CCatalogue, isSearchedInPages)
{
    populateOnce();
    mxmodule_search part = {"test", nullptr, 0, 1, nullptr, nullptr};
    int hasMore = -1;
    const auto page = [&] {
        return bytesOf([&](auto** error) {
            return mxmodule_catalogue_search_page(catalogue.get(), &part, &hasMore, error);
        });
    };
    EXPECT_THAT(page(), AllOf(HasSubstr("00000a01"), Not(HasSubstr("00000a02"))));
    EXPECT_EQ(hasMore, 1);
    part.after = "00000a01";
    EXPECT_THAT(page(), AllOf(HasSubstr("00000a02"), Not(HasSubstr("00000a01"))));
    EXPECT_EQ(hasMore, 0);
    part.family = "kv38";
    EXPECT_THAT(page(), HasSubstr("00000a02"));
    part.after = "00000a03";
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_catalogue_search_page(catalogue.get(), &part, nullptr, failure);
    });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_REQUEST);
    const mxmodule_search all = {};
    EXPECT_EQ(bytesOf([&](auto** failure) {
                  return mxmodule_catalogue_search_page(catalogue.get(), &all, nullptr, failure);
              }),
              search(nullptr));
}

TEST_F(CCatalogue, explainsSearches)
{
    populateOnce();
    const char* const conditions[] = {"in_bytes>6"};
    const mxmodule_search part = {"Test", conditions, 1, 1, nullptr, nullptr};
    EXPECT_THAT(bytesOf([&](auto** error) {
                    return mxmodule_catalogue_explain_json(catalogue.get(), &part, error);
                }),
                AllOf(HasSubstr("\"name\": \"mxtool.search-explanation\""),
                      HasSubstr("\"source\": \"index\"")));
    EXPECT_THAT(bytesOf([&](auto** error) {
                    return mxmodule_catalogue_explain_text(catalogue.get(), &part, error);
                }),
                HasSubstr("Words, without case and accents: \"test\""));
}

TEST_F(CCatalogue, hasRecordFileAndModule)
{
    populateOnce();
    EXPECT_THAT(bytesOf([&](auto** error) {
                    return mxmodule_catalogue_find(catalogue.get(), "00000a01", error);
                }),
                HasSubstr("\"name\": \"mxtool.device-record\""));
    const std::vector<char> file = mxFile(0xa01);
    EXPECT_EQ(bytesOf([&](auto** error) {
                  return mxmodule_catalogue_file(catalogue.get(), "00000a01", error);
              }),
              std::string(file.begin(), file.end()));
    const auto made = done([&](auto** error) {
        return mxmodule_catalogue_module(catalogue.get(), "00000a01", 4, 0, error);
    });
    EXPECT_EQ(bytesOf([&](auto** error) { return mxmodule_module_id(made.get(), error); }),
              "00000a01");
}

TEST_F(CCatalogue, namesTheModulesThatThereAre)
{
    populateOnce();
    for (const auto& call : std::vector<std::function<bool(mxmodule_error**)>>{
             [&](auto** e) {
                 return mxmodule_catalogue_find(catalogue.get(), "00000a03", e) != nullptr;
             },
             [&](auto** e) {
                 return mxmodule_catalogue_file(catalogue.get(), "00000a03", e) != nullptr;
             },
             [&](auto** e) {
                 return mxmodule_catalogue_module(catalogue.get(), "00000a03", 0, 0, e) != nullptr;
             },
             [&](auto** e) {
                 return mxmodule_catalogue_remove(catalogue.get(), "00000a03", e) != 0;
             }}) {
        const auto error = errorOf(call);
        EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_REQUEST);
        EXPECT_THAT(mxmodule_error_text(error.get()), HasSubstr("00000a03"));
        EXPECT_THAT(mxmodule_error_hint(error.get()), HasSubstr("00000a02"));
    }
}

TEST_F(CCatalogue, losesARemovedModule)
{
    populateOnce();
    mxmodule_error* error = nullptr;
    EXPECT_EQ(mxmodule_catalogue_remove(catalogue.get(), "00000a01", &error), 1);
    EXPECT_EQ(error, nullptr);
    EXPECT_EQ(mxmodule_catalogue_remove(catalogue.get(), "00000a02", nullptr), 1);
    EXPECT_THAT(search(nullptr), HasSubstr("\"devices\": []"));
}

TEST_F(CCatalogue, isOpenedAndCreated)
{
    const std::string url = "sqlite:" + directory.path("devices.sqlite");
    const auto error =
        errorOf([&](auto** failure) { return mxmodule_catalogue_open(url.c_str(), 0, failure); });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_OUTPUT);
    done([&](auto** failure) { return mxmodule_catalogue_open(url.c_str(), 1, failure); });
    const auto opened =
        done([&](auto** failure) { return mxmodule_catalogue_open(url.c_str(), 0, failure); });
    EXPECT_THAT(
        bytesOf([&](auto** failure) { return mxmodule_catalogue_name(opened.get(), failure); }),
        HasSubstr("devices.sqlite"));
}

TEST_F(CCatalogue, isNotPopulatedFromAMissingDirectory)
{
    const std::string missing = directory.path("none");
    const auto error = errorOf([&](auto** failure) {
        return mxmodule_catalogue_populate(catalogue.get(), missing.c_str(), 0, nullptr, failure);
    });
    EXPECT_EQ(mxmodule_error_code(error.get()), MXMODULE_INPUT);
    EXPECT_EQ(mxmodule_error_place(error.get()), missing);
}

// A module owns what it needs of the catalogue.
TEST_F(CCatalogue, mayBeFreedBeforeItsModules)
{
    OwnedByC<mxmodule_catalogue> other(mxmodule_catalogue_open("sqlite::memory:", 1, nullptr));
    const OwnedByC<mxmodule_bytes> populated(
        mxmodule_catalogue_populate(other.get(), directory.path().c_str(), 0, nullptr, nullptr));
    const auto made = done([&](auto** error) {
        return mxmodule_catalogue_module(other.get(), "00000a01", 0, 0, error);
    });
    other.reset();
    EXPECT_THAT(bytesOf([&](auto** error) { return mxmodule_text(made.get(), error); }),
                HasSubstr("Test module"));
}

} // namespace
