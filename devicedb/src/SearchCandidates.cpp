#include "SearchCandidates.h"

#include "KeySql.h"
#include "SearchBlock.h"

#include <algorithm>
#include <array>
#include <map>

namespace devices::database {

namespace {

// The first blocks often have enough; a query that has to read all of them takes few round trips.
constexpr std::size_t blocksReadFirst = 8;
constexpr std::size_t growthOfRead = 4;

// How many of the wanted parts each module of a block has, and its poorest class of those that
// rank.
class Tally
{
public:
    void count(std::size_t wantedIndex, const WantedPart& wanted, const std::string& stored)
    {
        forEachMember(stored, [&](std::size_t place, TextClass best) {
            Module& module = modules[place];
            if (module.found == wantedIndex && best <= wanted.poorest) {
                ++module.found;
                module.match = wanted.ranks ? std::max(module.match, best) : module.match;
            }
        });
    }

    std::vector<SearchCandidates::Candidate> having(std::size_t wantedCount) const
    {
        std::vector<SearchCandidates::Candidate> found;
        for (std::size_t place = 0; place < modules.size(); ++place) {
            if (modules[place].found == wantedCount) {
                found.push_back({static_cast<std::uint16_t>(place), false, modules[place].match});
            }
        }
        return found;
    }

private:
    struct Module
    {
        std::uint32_t found = 0;
        TextClass match = TextClass::Names;
    };

    std::array<Module, mostMembers> modules{};
};

// The stored parts of one block.
using StoredParts = std::map<std::string, std::string>;

std::vector<SearchCandidates::Candidate> candidatesIn(const StoredParts& stored,
                                                      const std::vector<WantedPart>& wanted)
{
    Tally tally;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const auto begin = stored.lower_bound(wanted[i].part);
        const auto end = wanted[i].end.empty() ? stored.upper_bound(wanted[i].part)
                                               : stored.lower_bound(wanted[i].end);
        for (auto part = begin; part != end; ++part) {
            tally.count(i, wanted[i], part->second);
        }
    }
    return tally.having(wanted.size());
}

// Selects the parts that are looked up, of some blocks. Not one condition with OR: SQLite would
// read all parts of the blocks.
std::string partSql(const std::vector<WantedPart>& wanted, const std::string& numbers,
                    BoundValues& values)
{
    const std::string select =
        "SELECT block, part, members FROM search_parts WHERE block IN (" + numbers + ") AND part ";
    std::string single;
    for (const WantedPart& part : wanted) {
        if (part.end.empty()) {
            single += (single.empty() ? "" : ", ") + values.bytes(part.part);
        }
    }
    std::string sql = single.empty() ? "" : select + "IN (" + single + ")";
    for (const WantedPart& part : wanted) { // after the others: placeholders are in order
        if (!part.end.empty()) {
            sql += sql.empty() ? "" : " UNION ALL ";
            sql += select + ">= " + values.bytes(part.part);
            sql += " AND part < " + values.bytes(part.end);
        }
    }
    return sql;
}

} // namespace

SearchCandidates::SearchCandidates(SqlConnection& openConnection, const SearchLookup& wanted)
    : connection(openConnection), lookup(wanted)
{
    connection.query("SELECT block FROM search_blocks ORDER BY first_family, first_module_id", {},
                     1, [this](const SqlConnection::Row& row) {
                         blocks.push_back({row[0], {}});
                     });
}

SearchCandidates::Block& SearchCandidates::block(std::size_t index)
{
    while (index >= read) {
        readSome();
    }
    return blocks[index];
}

void SearchCandidates::readSome()
{
    const std::size_t end = std::min(std::max(blocksReadFirst, read * growthOfRead), blocks.size());
    std::string numbers;
    for (std::size_t i = read; i < end; ++i) {
        numbers += (numbers.empty() ? "" : ", ") + blocks[i].number;
    }
    std::map<std::string, StoredParts> stored; // by the number of the block
    BoundValues values(connection.dialect());
    const std::string sql = partSql(lookup.parts, numbers, values);
    connection.query(sql, values.all(), 3, [&](const SqlConnection::Row& row) {
        stored[row[0]].emplace(row[1], row[2]);
    });
    for (; read < end; ++read) {
        blocks[read].candidates = candidatesIn(stored[blocks[read].number], lookup.parts);
    }
}

} // namespace devices::database
