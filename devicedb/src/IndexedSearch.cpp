#include "IndexedSearch.h"

#include "FoundModules.h"
#include "NotInListFailure.h"
#include "SearchCandidates.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace devices::database {

namespace {

// One search. Class by class of matches it looks at the candidates which may be in the class, in
// the order of their keys. A candidate may turn out to be in a later class, or not to match.
class IndexedSearch
{
public:
    IndexedSearch(SqlConnection& connection, const PagedQuery& searched, const SearchLookup& wanted,
                  const SummaryTaker& taker)
        : query(searched),
          lookup(wanted),
          take(taker),
          candidates(connection, wanted),
          modules(connection, searched, wanted)
    {}

    void run()
    {
        readNotIndexed();
        const TextClass begin = beginOfPage();
        const std::size_t classes = lookup.words.empty() ? 1 : textClassCount;
        for (std::size_t i = 0; i < classes && !isDone; ++i) {
            current = static_cast<TextClass>(i);
            isShown = current >= begin;
            lowest = current == begin ? query.after : std::nullopt;
            searchClass();
        }
    }

private:
    struct Place
    {
        std::size_t block;
        std::size_t candidate;
    };

    void readNotIndexed()
    {
        for (FoundModule& found : modules.notIndexed()) {
            if (found.match) {
                newModules[static_cast<std::size_t>(*found.match)].push_back(
                    std::move(found.module));
            }
        }
        for (auto& ofClass : newModules) {
            std::sort(ofClass.begin(), ofClass.end(),
                      [](const ModuleSummary& left, const ModuleSummary& right) {
                          return isBefore(keyOf(left), keyOf(right));
                      });
        }
    }

    // The class of the module after which the page begins.
    TextClass beginOfPage()
    {
        if (!query.after) {
            return TextClass::Names;
        }
        const auto last = modules.of(*query.after);
        if (!last || !last->match) {
            throw NotInListFailure(*query.after);
        }
        return *last->match;
    }

    void searchClass()
    {
        nextNew = 0;
        std::vector<Place> places;
        for (std::size_t block = 0; block < candidates.blockCount() && !isDone; ++block) {
            addPlacesOf(block, places);
        }
        lookAt(places);
        showNewBefore(nullptr);
    }

    void addPlacesOf(std::size_t block, std::vector<Place>& places)
    {
        const auto& ofBlock = candidates.block(block).candidates;
        for (std::size_t i = 0; i < ofBlock.size() && !isDone; ++i) {
            if (isToRead(ofBlock[i])) {
                places.push_back({block, i});
            }
            if (places.size() == batchSize()) {
                lookAt(places);
                places.clear();
            }
        }
    }

    // Of a class before the page only those are read that may turn out to be in a later one.
    bool isToRead(const SearchCandidates::Candidate& candidate) const
    {
        return candidate.match == current && (isShown || !candidate.isKnown);
    }

    // The first ones are often enough for a page.
    std::size_t batchSize() const
    {
        constexpr std::size_t smallest = 32;
        constexpr std::size_t largest = 512;
        return std::min(std::max({smallest, query.limit, shown}), largest);
    }

    void lookAt(const std::vector<Place>& places)
    {
        if (places.empty() || isDone) {
            return;
        }
        std::vector<IndexPlace> numbers;
        for (const Place& place : places) {
            auto& block = candidates.block(place.block);
            auto& candidate = block.candidates[place.candidate];
            numbers.push_back({block.number, candidate.place});
            candidate.match = std::nullopt; // unless it is found
            candidate.isKnown = true;
        }
        for (const FoundModule& found : modules.at(numbers)) {
            const Place& place = places[found.number];
            candidates.block(place.block).candidates[place.candidate].match = found.match;
            if (found.match == current) {
                const ModuleKey key = keyOf(found.module);
                showNewBefore(&key);
                show(found.module);
            }
        }
    }

    void showNewBefore(const ModuleKey* end)
    {
        const auto& ofClass = newModules[static_cast<std::size_t>(current)];
        for (; nextNew < ofClass.size(); ++nextNew) {
            if (end != nullptr && !isBefore(keyOf(ofClass[nextNew]), *end)) {
                return;
            }
            show(ofClass[nextNew]);
        }
    }

    void show(const ModuleSummary& module)
    {
        const bool isBeforePage = lowest && !isBefore(*lowest, keyOf(module));
        if (isShown && !isBeforePage && !isDone) {
            isDone = !take(module) || ++shown == query.limit;
        }
    }

    const PagedQuery& query;
    const SearchLookup& lookup;
    const SummaryTaker& take;
    SearchCandidates candidates;
    FoundModules modules;
    std::array<std::vector<ModuleSummary>, textClassCount> newModules; // matching, not in the index
    std::size_t nextNew = 0;                                           // of the current class
    TextClass current = TextClass::Names;
    bool isShown = true;             // the page does not begin after the current class
    std::optional<ModuleKey> lowest; // only modules after it are shown
    std::size_t shown = 0;
    bool isDone = false;
};

} // namespace

void searchByIndex(SqlConnection& connection, const PagedQuery& query, const SearchLookup& lookup,
                   const SummaryTaker& take)
{
    IndexedSearch(connection, query, lookup, take).run();
}

void explainIndex(SqlConnection& connection, const PagedQuery& query, const SearchLookup& lookup,
                  SearchExplanation& explanation)
{
    SearchCandidates candidates(connection, lookup);
    FoundModules modules(connection, query, lookup);
    explanation.blocks = candidates.blockCount();
    for (std::size_t i = 0; i < candidates.blockCount(); ++i) {
        explanation.candidates += candidates.block(i).candidates.size();
    }
    connection.query("SELECT count(*) FROM search_new", {}, 1, [&](const SqlConnection::Row& row) {
        explanation.notIndexed = static_cast<std::size_t>(numberOf(row[0]));
    });
    explanation.sql = modules.sql();
}

} // namespace devices::database
