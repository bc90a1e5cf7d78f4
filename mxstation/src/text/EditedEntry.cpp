#include "text/EditedEntry.h"

#include "text/EntryReader.h"
#include "text/SameYaml.h"

#include <algorithm>

namespace mxstation {

namespace {

// An entry as it is read, without its module.
struct ReadEntry
{
    Entry entry;
    std::vector<mxmodule::Finding> errors;
};

ReadEntry readAgain(const Station& station, const EditedText& text, std::size_t index)
{
    Station read;
    read.file = station.file;
    read.source = text.source();
    StationErrors errors(read);
    ModuleSource modules = ModuleSource::withoutFiles();
    return {readEntry(text.entry(index), modules, errors), read.findings};
}

// The errors of an entry that were not there before.
void requireNoNewError(const ReadEntry& before, const ReadEntry& after)
{
    std::vector<mxmodule::Finding> known = before.errors;
    for (mxmodule::Finding error : after.errors) {
        const auto found = std::find_if(known.begin(), known.end(), [&error](const auto& one) {
            return one.text == error.text;
        });
        if (found == known.end()) {
            error.origin = mxmodule::Origin::Request;
            error.excerpt.clear(); // it is of a text that there is not
            throw mxmodule::Failure(error);
        }
        known.erase(found);
    }
}

// An entry as a map: a reference alone is that of its module.
YamlNode mapOf(const YamlNodeP& entry)
{
    if (entry->kind != YamlNode::Kind::Scalar) {
        return *entry;
    }
    auto key = std::make_shared<YamlNode>();
    key->kind = YamlNode::Kind::Scalar;
    key->text = "module";
    YamlNode map;
    map.kind = YamlNode::Kind::Map;
    map.members.emplace_back(key, entry);
    return map;
}

bool isSameRow(const EditedText& before, const EditedText& after, const EditedRow& row)
{
    SameYaml same;
    if (after.count() != row.before.size() ||
        !same.isSameWithout({"modules"}, before.root(), after.root())) {
        return false;
    }
    for (std::size_t i = 0; i < row.before.size(); ++i) {
        const auto& old = row.before[i];
        const bool isChanged = row.changed == i;
        if (old && !isChanged && !same.isSame(before.list()->items[*old], after.list()->items[i])) {
            return false;
        }
        if (old && isChanged &&
            !same.isSameWithout(row.keys, mapOf(before.list()->items[*old]),
                                mapOf(after.list()->items[i]))) {
            return false;
        }
    }
    return true;
}

// The changed entry as it was counted; nothing if there is none, or it was added.
std::optional<std::size_t> changedBefore(const EditedRow& row)
{
    return row.changed && *row.changed < row.before.size() ? row.before[*row.changed]
                                                           : std::optional<std::size_t>();
}

} // namespace

void requireEdited(const Station& station, const EditedText& before, const EditedText& after,
                   const EditedRow& row)
{
    const std::size_t index = row.changed.value_or(0);
    const std::optional<std::size_t> old = changedBefore(row);
    const SourcePlace place = old ? before.entry(*old).place : before.root().place;
    if (!isSameRow(before, after, row)) {
        before.reject(place);
    }
    if (row.changed) {
        const ReadEntry known = old ? readAgain(station, before, *old) : ReadEntry();
        const ReadEntry read = readAgain(station, after, index);
        requireNoNewError(known, read);
        if (!row.isWanted(known.entry, read.entry)) {
            before.reject(place);
        }
    }
}

} // namespace mxstation
