#include "IndexWriter.h"

#include "KeySql.h"
#include "SearchBlock.h"
#include "SearchFacts.h"
#include "SummaryRow.h"

#include <algorithm>
#include <utility>

namespace devices::database {

namespace {

// Keys from `first`, or without it from the lowest, up to `end`, or without it to the highest.
struct KeyRange
{
    std::optional<ModuleKey> first;
    std::optional<ModuleKey> end;

    std::string condition(BoundValues& values) const
    {
        std::string sql = " WHERE true";
        if (first) {
            sql += " AND (family, module_id) >= " + values.key(*first);
        }
        if (end) {
            sql += " AND (family, module_id) < " + values.key(*end);
        }
        return sql;
    }
};

class IndexWriter
{
public:
    explicit IndexWriter(SqlConnection& openConnection)
        : connection(openConnection),
          blocks(connection.makeRowStatement(
              {"INSERT INTO search_blocks (block, first_family, first_module_id) ",
               {CellType::Number, CellType::Bytes, CellType::Bytes},
               ""})),
          members(connection.makeRowStatement(
              {"INSERT INTO search_members (block, place, family, module_id) ",
               {CellType::Number, CellType::Number, CellType::Bytes, CellType::Bytes},
               ""})),
          parts(connection.makeRowStatement({"INSERT INTO search_parts (block, part, members) ",
                                             {CellType::Number, CellType::Bytes, CellType::Bytes},
                                             ""}))
    {
        connection.query("SELECT block, first_family, first_module_id FROM search_blocks"
                         " ORDER BY first_family, first_module_id",
                         {}, 3, [this](const SqlConnection::Row& row) {
                             known.push_back({row[0], {row[1], row[2]}});
                             highest = std::max(highest, numberOf(row[0]));
                         });
    }

    // Writes the blocks to which `changed` belong.
    void writeBlocksOf(const ModuleKeys& changed)
    {
        std::vector<std::size_t> touched;
        for (const ModuleKey& key : changed) {
            const std::size_t block = blockOf(key);
            if (touched.empty() || touched.back() != block) {
                touched.push_back(block);
            }
        }
        remove(touched);
        for (const std::size_t block : touched) {
            writeAnew(rangeOf(block));
        }
    }

private:
    struct Block
    {
        std::string number;
        ModuleKey first;
    };

    // The last block whose first key is not above `key`; of a key below all the first one.
    std::size_t blockOf(const ModuleKey& key) const
    {
        const auto above = std::upper_bound(
            known.begin(), known.end(), key,
            [](const ModuleKey& left, const Block& right) { return isBefore(left, right.first); });
        return above == known.begin() ? 0 : static_cast<std::size_t>(above - known.begin()) - 1;
    }

    // The keys of a block; without blocks all of them are of block 0.
    KeyRange rangeOf(std::size_t block) const
    {
        KeyRange range;
        if (block > 0) {
            range.first = known[block].first;
        }
        if (block + 1 < known.size()) {
            range.end = known[block + 1].first;
        }
        return range;
    }

    std::size_t modulesIn(const KeyRange& range)
    {
        std::size_t count = 0;
        BoundValues values(connection.dialect());
        const std::string condition = range.condition(values);
        connection.query("SELECT count(*) FROM search_modules" + condition, values.all(), 1,
                         [&](const SqlConnection::Row& row) {
                             count = static_cast<std::size_t>(numberOf(row[0]));
                         });
        return count;
    }

    // All at once: the parts of a block are not next to each other.
    void remove(const std::vector<std::size_t>& touched)
    {
        std::string numbers;
        for (const std::size_t block : touched) {
            if (block < known.size()) {
                numbers += (numbers.empty() ? "" : ", ") + known[block].number;
            }
        }
        if (numbers.empty()) {
            return;
        }
        for (const char* const table : {"search_parts", "search_members", "search_blocks"}) {
            connection.execute(std::string("DELETE FROM ") + table + " WHERE block IN (" + numbers +
                               ")");
        }
    }

    // Writes as many blocks as the modules of the range need, of about the same size.
    void writeAnew(KeyRange range)
    {
        std::size_t rest = modulesIn(range);
        for (std::size_t left = (rest + mostMembers - 1) / mostMembers; left > 0; --left) {
            const std::size_t size = (rest + left - 1) / left;
            range.first = writeBlock(range, size);
            rest -= size;
            if (!range.first) {
                return; // another program may have removed some since they were counted
            }
        }
    }

    // Writes a block of the first `size` modules of `range`. Returns the first key after them, if
    // there is one.
    std::optional<ModuleKey> writeBlock(const KeyRange& range, std::size_t size)
    {
        std::vector<ModuleKey> keys;
        BlockParts made;
        BoundValues values(connection.dialect());
        const std::string condition = range.condition(values);
        connection.query("SELECT family, module_id, names, channels, parameters, options, facts"
                         " FROM search_modules" +
                             condition + " ORDER BY family, module_id LIMIT " +
                             std::to_string(size + 1),
                         values.all(), 7, [&](const SqlConnection::Row& row) {
                             keys.push_back({row[0], row[1]});
                             if (keys.size() <= size) {
                                 auto facts = splitFacts(row[6]);
                                 const auto keyFacts = factPartsOf(keys.back());
                                 facts.insert(facts.end(), keyFacts.begin(), keyFacts.end());
                                 made.add({row[2], row[3], row[4], row[5]}, facts);
                             }
                         });
        std::optional<ModuleKey> next;
        if (keys.size() > size) {
            next = keys.back();
            keys.pop_back();
        }
        if (!keys.empty()) {
            store(keys, made);
        }
        return next;
    }

    void store(const std::vector<ModuleKey>& keys, const BlockParts& made)
    {
        const std::string number = std::to_string(++highest);
        std::vector<RowStatement::Row> rows;
        rows.reserve(keys.size());
        for (const ModuleKey& key : keys) {
            rows.push_back({number, std::to_string(rows.size()), key.family, key.moduleIdText});
        }
        blocks->execute({{number, keys.front().family, keys.front().moduleIdText}});
        members->execute(rows);
        rows.clear();
        for (auto& part : made.stored()) {
            rows.push_back({number, std::move(part.first), std::move(part.second)});
        }
        parts->execute(rows);
    }

    SqlConnection& connection;
    std::unique_ptr<RowStatement> blocks;
    std::unique_ptr<RowStatement> members;
    std::unique_ptr<RowStatement> parts;
    std::vector<Block> known; // before this update, in the order of their keys
    std::int64_t highest = 0; // number of a block
};

} // namespace

// The table stays small: the rows of a large populate would slow down each search until the server
// has cleared them away.
void updateSearchIndex(SqlConnection& connection, const ModuleKeys& changed)
{
    if (changed.empty()) {
        return;
    }
    ModuleKeys all = changed;
    connection.query("SELECT family, module_id FROM search_new", {}, 2,
                     [&](const SqlConnection::Row& row) {
                         all.insert({row[0], row[1]});
                     });
    if (all.size() <= mostNotIndexed) {
        addToNotIndexed(connection, changed); // not all: another program may be removing some
        return;
    }
    IndexWriter(connection).writeBlocksOf(all);
    connection.execute("DELETE FROM search_new");
}

void addToNotIndexed(SqlConnection& connection, const ModuleKeys& changed)
{
    if (changed.empty()) {
        return;
    }
    std::vector<RowStatement::Row> rows;
    for (const ModuleKey& key : changed) {
        rows.push_back({key.family, key.moduleIdText});
    }
    connection
        .makeRowStatement({"INSERT INTO search_new (family, module_id) ",
                           {CellType::Bytes, CellType::Bytes},
                           " ON CONFLICT (family, module_id) DO NOTHING"})
        ->execute(rows);
}

} // namespace devices::database
