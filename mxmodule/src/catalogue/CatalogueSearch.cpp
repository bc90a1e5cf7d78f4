#include "catalogue/CatalogueContent.h"
#include "catalogue/CatalogueQueryContent.h"
#include "catalogue/DatabaseWork.h"

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/Counted.h>
#include <text/NearestWords.h>
#include <text/Utf8.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <utility>

namespace mxmodule {

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::ModuleCounts;
using devices::database::ModuleSummary;
using devices::database::NotInList;
using devices::database::PagedQuery;

constexpr const char* usualFamily = "kv38";

std::string listOf(const std::vector<std::string>& ids)
{
    constexpr std::size_t most = 20;
    return ids.empty() ? "the database holds no module"
                       : "it holds " + text::beginningOfList(ids, most, ", ", " ");
}

bool isStored(DeviceDatabase& database, const devices::database::ModuleKey& module)
{
    ModuleSummary key;
    key.family = module.family;
    key.moduleIdText = module.moduleIdText;
    bool isFound = false;
    withDatabase("",
                 [&] { database.visit({key}, [&](const DeviceProperties&) { isFound = true; }); });
    return isFound;
}

Finding absentFromList(const std::string& moduleId)
{
    return {Severity::Error, "",
            fmt::format("Module {} is in the database, but not in this list, which is to go on "
                        "after it",
                        moduleId),
            "state the last module of the part before, which has the same words and conditions",
            Origin::Request};
}

// The list of identifiers would name the one that is said to be unknown.
Finding notOfFamily(const devices::database::ModuleKey& stated, const std::string& family)
{
    return {Severity::Error, "",
            fmt::format("Module {} of family \"{}\" is not in the database, which has the one of "
                        "family \"{}\"",
                        stated.moduleIdText, stated.family, text::toUtf8(family)),
            "", Origin::Request};
}

// Runs `read`. Returns whether the list has the module after which it is to go on.
bool isRead(const std::function<void()>& read)
{
    return withDatabase("", [&] {
        try {
            read();
            return true;
        } catch (const NotInList&) {
            return false;
        }
    });
}

// Calls `take` until it returns false; else as `isRead`. What `take` throws is not a failure of the
// database.
bool searchDatabase(DeviceDatabase& database, const PagedQuery& query,
                    const std::function<bool(const CatalogueEntry&)>& take)
{
    std::exception_ptr thrown;
    const auto takeOrEnd = [&](const ModuleSummary& module) {
        try {
            return take(entryOf(module));
        } catch (...) {
            thrown = std::current_exception();
            return false;
        }
    };
    const bool isInList = isRead([&] { database.searchPage(query, takeOrEnd); });
    if (thrown != nullptr) {
        std::rethrow_exception(thrown);
    }
    return isInList;
}

SearchExplanation::Source sourceOf(devices::database::SearchExplanation::Source source)
{
    using Stored = devices::database::SearchExplanation::Source;
    switch (source) {
    case Stored::Index:
        return SearchExplanation::Source::Index;
    case Stored::Order:
        return SearchExplanation::Source::Order;
    case Stored::Scan:
        break;
    }
    return SearchExplanation::Source::Scan;
}

Finding unknownModuleIn(DeviceDatabase& database, const std::string& moduleId)
{
    std::vector<std::string> ids;
    for (const ModuleSummary& module : withDatabase("", [&] { return database.searchPage({}); })) {
        ids.push_back(entryOf(module).moduleId);
    }
    Finding finding{Severity::Error, "",
                    fmt::format("Module {} is not in the database, expected eight hexadecimal "
                                "digits of one that is",
                                moduleId),
                    listOf(ids), Origin::Request};
    finding.accepted = text::nearestWords(moduleId, ids);
    return finding;
}

// With the family of the module after which the list goes on.
PagedQuery withFamily(PagedQuery query, DeviceDatabase& database)
{
    if (!query.after || !query.after->family.empty()) {
        return query;
    }
    const std::string& moduleId = query.after->moduleIdText;
    const auto found = withDatabase("", [&] { return database.find(moduleId); });
    if (!found) {
        throw Failure(unknownModuleIn(database, moduleId));
    }
    const bool isUsual = isStored(database, {usualFamily, moduleId});
    query.after->family = isUsual ? usualFamily : found->family;
    return query;
}

// Why a list cannot go on after `module`, which is not in it.
Finding notInListOf(DeviceDatabase& database, const devices::database::ModuleKey& module)
{
    if (isStored(database, module)) {
        return absentFromList(module.moduleIdText);
    }
    const auto other = withDatabase("", [&] { return database.find(module.moduleIdText); });
    return other ? notOfFamily(module, other->family)
                 : unknownModuleIn(database, module.moduleIdText);
}

} // namespace

void Catalogue::search(const CatalogueQuery& query,
                       const std::function<bool(const CatalogueEntry&)>& take)
{
    const PagedQuery searched = withFamily(query.content->query, content->database);
    if (!searchDatabase(content->database, searched, take)) {
        throw Failure(notInListOf(content->database, *searched.after));
    }
}

// As a list of the database, which is read again after a lost connection.
std::vector<CatalogueEntry> Catalogue::search(const CatalogueQuery& query)
{
    const PagedQuery searched = withFamily(query.content->query, content->database);
    std::vector<ModuleSummary> found;
    if (!isRead([&] { found = content->database.searchPage(searched); })) {
        throw Failure(notInListOf(content->database, *searched.after));
    }
    std::vector<CatalogueEntry> modules(found.size());
    std::transform(found.begin(), found.end(), modules.begin(), entryOf);
    return modules;
}

CataloguePage Catalogue::page(const CatalogueQuery& query)
{
    const std::size_t limit = query.content->query.limit;
    CataloguePage page;
    page.modules = search(limit == 0 ? query : query.limitedTo(limit + 1));
    if (limit != 0 && page.modules.size() > limit) {
        page.modules.pop_back();
        page.hasMore = true;
    }
    return page;
}

SearchExplanation Catalogue::explain(const CatalogueQuery& query)
{
    const PagedQuery searched = withFamily(query.content->query, content->database);
    const auto found = withDatabase("", [&] { return content->database.explain(searched); });
    return {sourceOf(found.source), found.words,      found.parts, found.blocks,
            found.candidates,       found.notIndexed, found.sql};
}

std::vector<Finding> Catalogue::searchFindings(const CatalogueQuery& query)
{
    if (query.content->query.words.empty() && query.content->query.conditions.empty()) {
        return {};
    }
    const ModuleCounts counts = withDatabase("", [&] { return content->database.counts(); });
    if (counts.withContent >= counts.modules) {
        return {};
    }
    return {{Severity::Warning, "",
             fmt::format("The catalogue does not have the content of {}: searches may not find it",
                         text::counted(counts.modules - counts.withContent, "module")),
             "mxtool populate DIRECTORY stores it"}};
}

Finding Catalogue::unknownModule(const std::string& moduleId)
{
    return unknownModuleIn(content->database, moduleId);
}

} // namespace mxmodule
