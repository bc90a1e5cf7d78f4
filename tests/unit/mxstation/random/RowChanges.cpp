#include "StatedRow.h"

namespace randomstations {

namespace {

using mxstation::AddModule;
using mxstation::AddReserve;
using mxstation::MoveEntry;
using mxstation::NameEntry;
using mxstation::NoteChannel;
using mxstation::PinAll;
using mxstation::PinEntry;
using mxstation::RemoveEntry;
using mxstation::SetReserve;
using mxstation::SetValue;
using mxstation::StationEdit;

struct Application
{
    std::vector<RowContent>& entries;

    void insert(std::size_t before, const RowContent& entry) const
    {
        entries.insert(entries.begin() + static_cast<std::ptrdiff_t>(before), entry);
    }
    RowContent taken(std::size_t index) const
    {
        RowContent entry = entries[index];
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(index));
        return entry;
    }
    void operator()(const AddModule& edit) const
    {
        insert(edit.before, {edit.reference, edit.name});
    }
    void operator()(const AddReserve& edit) const
    {
        insert(edit.before, {"", edit.name, {edit.input, edit.output}});
    }
    void operator()(const MoveEntry& edit) const
    {
        const RowContent entry = taken(edit.entry);
        insert(edit.before > edit.entry ? edit.before - 1 : edit.before, entry);
    }
    void operator()(const RemoveEntry& edit) const { taken(edit.entry); }
    void operator()(const NameEntry& edit) const { entries[edit.entry].name = edit.name; }
    void operator()(const SetReserve& edit) const
    {
        entries[edit.entry].reserve = {edit.input, edit.output};
    }
    void operator()(const SetValue& edit) const
    {
        entries[edit.entry].values.erase(edit.parameter);
        if (edit.value) {
            entries[edit.entry].values[edit.parameter] = *edit.value;
        }
    }
    void operator()(const NoteChannel& edit) const
    {
        entries[edit.entry].notes.erase(edit.channel);
        if (!edit.alias.empty() || !edit.comment.empty()) {
            entries[edit.entry].notes[edit.channel] = {edit.alias, edit.comment};
        }
    }
    void operator()(const PinEntry& edit) const
    {
        entries[edit.entry].at = {edit.input, edit.output};
    }
    void operator()(const PinAll& /*edit*/) const {}
};

struct Inversion
{
    using Made = std::optional<StationEdit>;

    const std::vector<RowContent>& entries;

    Made operator()(const AddModule& edit) const { return RemoveEntry{edit.before}; }
    Made operator()(const AddReserve& edit) const { return RemoveEntry{edit.before}; }
    Made operator()(const MoveEntry& edit) const
    {
        return edit.before > edit.entry ? MoveEntry{edit.before - 1, edit.entry}
                                        : MoveEntry{edit.before, edit.entry + 1};
    }
    Made operator()(const RemoveEntry& edit) const
    {
        const RowContent& entry = entries[edit.entry];
        if (entry == RowContent{entry.reference, entry.name} && !entry.isPlace()) {
            return AddModule{edit.entry, entry.reference, entry.name};
        }
        const bool isPlace = entry == RowContent{"", entry.name, entry.reserve};
        return isPlace ? Made(AddReserve{edit.entry, entry.reserve.first, entry.reserve.second,
                                         entry.name})
                       : Made();
    }
    Made operator()(const NameEntry& edit) const
    {
        return NameEntry{edit.entry, entries[edit.entry].name};
    }
    Made operator()(const SetReserve& edit) const
    {
        const auto& [input, output] = entries[edit.entry].reserve;
        return SetReserve{edit.entry, input, output};
    }
    Made operator()(const SetValue& edit) const
    {
        const auto& values = entries[edit.entry].values;
        const auto found = values.find(edit.parameter);
        return SetValue{edit.entry, edit.parameter,
                        found == values.end() ? std::nullopt : std::optional(found->second)};
    }
    Made operator()(const NoteChannel& edit) const
    {
        const auto& notes = entries[edit.entry].notes;
        const auto found = notes.find(edit.channel);
        return found == notes.end() ? NoteChannel{edit.entry, edit.channel, "", ""}
                                    : NoteChannel{edit.entry, edit.channel, found->second.first,
                                                  found->second.second};
    }
    Made operator()(const PinEntry& edit) const
    {
        const auto& [input, output] = entries[edit.entry].at;
        return PinEntry{edit.entry, input, output};
    }
    Made operator()(const PinAll& /*edit*/) const { return std::nullopt; }
};

} // namespace

StationEdit RowWriter::edit(const std::vector<RowContent>& entries)
{
    const auto count = static_cast<std::uint32_t>(entries.size());
    const std::uint32_t kind = count == 0 ? below(2) : below(9);
    const std::string text1 = oneOf(3) ? "" : word();
    if (kind == 0) {
        return AddModule{below(count + 1), oneOf(2) ? "MX0304.bin" : "../x/MX0304.bin", text1};
    }
    if (kind == 1) {
        return AddReserve{below(count + 1), below(3), 1 + below(3), text1};
    }
    const std::size_t entry = below(count);
    const bool isPlace = entries[entry].isPlace();
    if (kind == 2) {
        return MoveEntry{entry, below(count + 1)};
    }
    if (kind == 3) {
        return RemoveEntry{entry};
    }
    if (kind == 4) {
        return PinEntry{entry, oneOf(3) ? std::optional(below(100)) : std::nullopt,
                        oneOf(3) ? std::optional(below(100)) : std::nullopt};
    }
    if (kind == 5) {
        return SetReserve{entry, below(3), isPlace ? 1 + below(3) : below(2)};
    }
    if (kind == 6 || isPlace) {
        return NameEntry{entry, text1};
    }
    if (kind == 7) {
        const auto& values = entries[entry].values;
        const bool isStated = !values.empty() && oneOf(2);
        return SetValue{entry, isStated ? values.begin()->first : rowParameters[below(5)],
                        oneOf(2) ? std::nullopt : std::optional(word())};
    }
    return NoteChannel{entry, rowChannels[below(3)], text1, oneOf(2) ? word() : ""};
}

void apply(const StationEdit& edit, std::vector<RowContent>& entries)
{
    std::visit(Application{entries}, edit);
}

std::optional<StationEdit> inverse(const StationEdit& edit, const std::vector<RowContent>& entries)
{
    return std::visit(Inversion{entries}, edit);
}

} // namespace randomstations
