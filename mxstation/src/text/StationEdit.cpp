#include "mxstation/StationEdit.h"

#include "mxstation/Pin.h"
#include "text/EditedEntry.h"
#include "text/EntryContent.h"
#include "text/EntryEdits.h"
#include "text/EntryMembers.h"
#include "text/RowEditor.h"

#include <fmt/format.h>

#include <numeric>

namespace mxstation {

namespace {

using mxmodule::Failure;
using mxmodule::Origin;

// The entries from 0 on, in their order.
std::vector<std::optional<std::size_t>> rowOf(std::size_t count)
{
    std::vector<std::optional<std::size_t>> row;
    for (std::size_t i = 0; i < count; ++i) {
        row.emplace_back(i);
    }
    return row;
}

// Makes a change in the text of a station.
class Editing
{
public:
    explicit Editing(const Station& edited)
        : station(edited), before(edited, edited.source), text(edited, edited.source)
    {}

    std::string operator()(const AddModule& edit)
    {
        return added(edit.before, moduleMember(edit, isQuoted()),
                     [&edit](const Entry& /*before*/, const Entry& after) {
                         return after.reference == edit.reference && after.name == edit.name;
                     });
    }

    std::string operator()(const AddReserve& edit)
    {
        return added(edit.before, reserveMember(edit, isQuoted()),
                     [&edit](const Entry& /*before*/, const Entry& after) {
                         return isReserve(after, edit.input, edit.output) &&
                                after.reserve->name == edit.name;
                     });
    }

    std::string operator()(const MoveEntry& edit)
    {
        requireEntry(edit.entry);
        requireBefore(edit.before);
        moveInRow(text, edit.entry, edit.before);
        EditedRow row{rowOf(before.count()), {}, {}, {}};
        const auto moved = row.before[edit.entry];
        row.before.erase(at(row.before, edit.entry));
        row.before.insert(at(row.before, edit.before - (edit.before > edit.entry ? 1 : 0)), moved);
        return finished(row);
    }

    std::string operator()(const RemoveEntry& edit)
    {
        requireEntry(edit.entry);
        removeFromRow(text, edit.entry);
        EditedRow row{rowOf(before.count()), {}, {}, {}};
        row.before.erase(at(row.before, edit.entry));
        return finished(row);
    }

    std::string operator()(const PinAll& /*edit*/) { return pinned(station, plan(station)); }

    // The content of an entry.
    template <typename Edit>
    std::string operator()(const Edit& edit)
    {
        requireEntry(edit.entry);
        const EntryEdit made = editEntry(station, text, edit);
        return finished({rowOf(before.count()), edit.entry, made.keys, made.isWanted});
    }

private:
    template <typename IsWanted>
    std::string added(std::size_t place, const YamlMember& member, const IsWanted& isWanted)
    {
        requireBefore(place);
        addToRow(text, place, member);
        EditedRow row{rowOf(before.count()), place, {}, isWanted};
        row.before.insert(at(row.before, place), std::nullopt);
        return finished(row);
    }

    std::string finished(const EditedRow& row) const
    {
        requireEdited(station, before, text, row);
        return text.source();
    }

    static std::vector<std::optional<std::size_t>>::iterator
    at(std::vector<std::optional<std::size_t>>& row, std::size_t index)
    {
        return row.begin() + static_cast<std::ptrdiff_t>(index);
    }

    bool isQuoted() const
    {
        return text.root().isFlow && hasQuotedKeys(text.source(), text.root());
    }

    void requireEntry(std::size_t index) const
    {
        if (index >= before.count()) {
            throw Failure(Origin::Request, station.file,
                          fmt::format("there is no entry {}, the station has {} of them", index,
                                      before.count()),
                          "entries count from 0");
        }
    }

    void requireBefore(std::size_t index) const
    {
        if (index > before.count()) {
            throw Failure(Origin::Request, station.file,
                          fmt::format("there is no place before entry {}, the station has {} "
                                      "entries",
                                      index, before.count()),
                          "entries count from 0, their number is the end of the row");
        }
    }

    const Station& station;
    const EditedText before;
    EditedText text;
};

} // namespace

std::string edited(const Station& station, const StationEdit& edit)
{
    if (station.source.empty() && !station.entries.empty()) {
        throw Failure(Origin::Request, station.name,
                      "the station was made without a text, which could be changed",
                      "a host changes its entries instead");
    }
    return std::visit(Editing(station), edit);
}

} // namespace mxstation
