#include "text/EntryEdits.h"

#include "text/EntryContent.h"
#include "text/EntryEditor.h"
#include "text/EntryMembers.h"

#include <fmt/format.h>

namespace mxstation {

namespace {

std::optional<std::string> textOrNothing(const std::string& stated)
{
    return stated.empty() ? std::nullopt : std::optional(stated);
}

std::optional<std::string> bytesOrNothing(std::uint32_t bytes)
{
    return bytes == 0 ? std::nullopt : std::optional(std::to_string(bytes));
}

std::optional<std::string> numberOrNothing(const std::optional<std::uint32_t>& number)
{
    return number ? std::optional(std::to_string(*number)) : std::nullopt;
}

bool isPinned(const std::optional<StatedByte>& stated, const std::optional<std::uint32_t>& wanted)
{
    return stated.has_value() == wanted.has_value() && (!stated || stated->value == *wanted);
}

// Whether it is a reserved place without a module.
bool isPlaceAlone(const YamlNode& entry)
{
    return entry.kind == YamlNode::Kind::Map && memberCalled(entry, "module") == nullptr;
}

} // namespace

EntryEdit editEntry(const Station& /*station*/, EditedText& text, const NameEntry& edit)
{
    const bool isPlace = isPlaceAlone(text.entry(edit.entry));
    const MemberPath path = isPlace ? MemberPath{"reserve"} : MemberPath{};
    EntryEditor(text, edit.entry).state(path, {{"name", textOrNothing(edit.name)}});
    return {{isPlace ? "reserve" : "name"},
            [isPlace, name = edit.name](const Entry& before, const Entry& after) {
                Entry wanted = before;
                if (isPlace && wanted.reserve) {
                    wanted.reserve->name = name;
                } else if (!isPlace) {
                    wanted.name = name;
                }
                return isSameBesidesParameters(wanted, after);
            }};
}

EntryEdit editEntry(const Station& station, EditedText& text, const SetReserve& edit)
{
    const bool isNone = edit.input == 0 && edit.output == 0;
    EntryEditor editor(text, edit.entry);
    if (isNone && isPlaceAlone(text.entry(edit.entry))) {
        throw mxmodule::Failure(mxmodule::Origin::Request, station.file,
                                "the reserved place has no bytes, \"in\", \"out\" or both are "
                                "expected");
    }
    if (isNone) {
        editor.remove({"reserve"});
    } else {
        editor.state({"reserve"}, {{"in", bytesOrNothing(edit.input), true},
                                   {"out", bytesOrNothing(edit.output), true}});
    }
    return {{"reserve"}, [isNone, edit](const Entry& before, const Entry& after) {
                const bool isSameName = !before.reserve || !after.reserve ||
                                        before.reserve->name == after.reserve->name;
                return isNone ? !after.reserve
                              : isSameName && isReserve(after, edit.input, edit.output);
            }};
}

EntryEdit editEntry(const Station& /*station*/, EditedText& text, const PinEntry& edit)
{
    EntryEditor(text, edit.entry)
        .state({"at"}, {{"in", numberOrNothing(edit.input), true},
                        {"out", numberOrNothing(edit.output), true}});
    return {{"at"}, [edit](const Entry& /*before*/, const Entry& after) {
                return isPinned(after.at.input, edit.input) &&
                       isPinned(after.at.output, edit.output);
            }};
}

} // namespace mxstation
