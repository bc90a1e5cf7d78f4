// Changes of what only modules have: values of parameters, notes of channels.
#include "plan/CalledChannels.h"
#include "text/ChangedValues.h"
#include "text/EntryContent.h"
#include "text/EntryEditor.h"
#include "text/EntryEdits.h"
#include "text/ParameterEditor.h"

#include <fmt/format.h>
#include <mxmodule/Module.h>

#include <algorithm>
#include <iterator>
#include <tuple>

namespace mxstation {

namespace {

using mxmodule::Failure;
using mxmodule::Finding;
using mxmodule::Module;
using mxmodule::Origin;

void requireModule(const Station& station, const YamlNode& entry, const char* what)
{
    if (entry.kind == YamlNode::Kind::Map && memberCalled(entry, "module") == nullptr) {
        throw Failure(Origin::Request, station.file,
                      fmt::format("this entry has no module, so there is no {}", what));
    }
}

// The module of an entry; empty if it is missing or cannot be read.
std::optional<Module> moduleOf(const Station& station, std::size_t entry)
{
    if (entry >= station.entries.size() || !station.entries[entry].module) {
        return std::nullopt;
    }
    try {
        return Module(*station.entries[entry].module);
    } catch (const Failure&) {
        return std::nullopt; // the plan says why
    }
}

[[noreturn]] void reject(const Station& station, Finding finding)
{
    finding.place = station.file;
    finding.origin = Origin::Request;
    throw Failure(finding);
}

// The parameter that is meant, and how a station names the parameters of the module.
struct MeantParameter
{
    ChangedValue named;
    ParametersCalled called;
};

MeantParameter meantParameter(const Station& station, const SetValue& edit)
{
    const auto module = moduleOf(station, edit.entry);
    if (!module) {
        return {{0, "", edit.parameter, "", false},
                [name = edit.parameter](const std::string& one) {
                    return std::vector<std::size_t>(one == name ? 1 : 0, 0);
                }};
    }
    const auto found = module->parametersCalled(edit.parameter);
    if (found.size() != 1) {
        mxmodule::Assignment assignment;
        assignment.name = edit.parameter;
        assignment.value = edit.value.value_or("0");
        reject(station, module->compose({assignment}).findings.front());
    }
    return {parameterOf(*module, found.front()),
            [module](const std::string& one) { return module->parametersCalled(one); }};
}

// The values that the first list has and the second one has not.
std::vector<StatedValue> onlyIn(std::vector<StatedValue> values, std::vector<StatedValue> others)
{
    const auto isBefore = [](const StatedValue& a, const StatedValue& b) {
        return std::tie(a.name, a.value) < std::tie(b.name, b.value);
    };
    std::sort(values.begin(), values.end(), isBefore);
    std::sort(others.begin(), others.end(), isBefore);
    std::vector<StatedValue> rest;
    std::set_difference(values.begin(), values.end(), others.begin(), others.end(),
                        std::back_inserter(rest), isBefore);
    return rest;
}

// Whether of all values at most that of `parameter` changed, to `value` or to nothing.
bool isOnlyValue(const Entry& before, const Entry& after, const MeantParameter& meant,
                 const std::optional<std::string>& value)
{
    const auto isMeant = [&meant](const StatedValue& one) {
        return meant.called(one.name) == std::vector<std::size_t>{meant.named.parameter};
    };
    const auto gone = onlyIn(before.parameters, after.parameters);
    const auto added = onlyIn(after.parameters, before.parameters);
    const auto has = [&](const StatedValue& one) { return isMeant(one) && one.value == *value; };
    const bool isStated = value ? std::any_of(after.parameters.begin(), after.parameters.end(), has)
                                : after.parameters.size() <= before.parameters.size();
    return isStated && gone.size() <= 1 && added.size() <= 1 &&
           std::all_of(gone.begin(), gone.end(), isMeant) &&
           std::all_of(added.begin(), added.end(), isMeant) && (value || added.empty());
}

void setValue(EditedText& text, const SetValue& edit, const MeantParameter& meant)
{
    ParameterEditor editor(text.source(), text.root());
    ChangedValue value = meant.named;
    value.value = *edit.value;
    value.isDefault = false;
    const YamlNode& entry = text.entry(edit.entry);
    text.require(editor.set(entry, *text.list(), meant.called, {value}));
    text.take(editor.text(1), entry.place);
}

void removeValue(EditedText& text, const SetValue& edit, const MeantParameter& meant)
{
    const YamlNode& entry = text.entry(edit.entry);
    const YamlNode* const parameters =
        entry.kind == YamlNode::Kind::Map ? memberCalled(entry, "parameters") : nullptr;
    if (parameters == nullptr) {
        return;
    }
    MemberPath path = statedPath(*parameters, meant.called, meant.named.parameter);
    if (!path.empty()) {
        path.insert(path.begin(), "parameters");
        EntryEditor(text, edit.entry).remove(path);
    }
}

using IsChannel = std::function<bool(const std::string& word)>;

// Which notes are about the channel that is meant, and how a new one calls it.
struct MeantChannel
{
    IsChannel isChannel;
    std::string newKey;
};

MeantChannel meantChannel(const Station& station, const NoteChannel& edit)
{
    const auto module = moduleOf(station, edit.entry);
    if (!module) {
        return {[name = edit.channel](const std::string& word) { return word == name; },
                edit.channel};
    }
    const CalledChannels channels(module->channelMap());
    const auto meant = channels.called(edit.channel);
    if (meant.size() != 1) {
        reject(station, channels.rejected(edit.channel));
    }
    return {[channels, meant](const std::string& word) { return channels.called(word) == meant; },
            channels.bestWord(meant.front())};
}

// The key of the note about the channel, also if there is none yet.
std::string noteKey(const YamlNode& entry, const MeantChannel& meant)
{
    const YamlNode* const notes =
        entry.kind == YamlNode::Kind::Map ? memberCalled(entry, "channels") : nullptr;
    if (notes == nullptr) {
        return meant.newKey;
    }
    const auto found =
        std::find_if(notes->members.begin(), notes->members.end(),
                     [&meant](const auto& note) { return meant.isChannel(note.first->text); });
    return found == notes->members.end() ? meant.newKey : found->first->text;
}

Entry withNote(Entry entry, const std::string& key, const NoteChannel& edit)
{
    const auto found = std::find_if(entry.channels.begin(), entry.channels.end(),
                                    [&key](const ChannelNote& one) { return one.channel == key; });
    const bool isNone = edit.alias.empty() && edit.comment.empty();
    if (found != entry.channels.end() && isNone) {
        entry.channels.erase(found);
    } else if (found != entry.channels.end()) {
        found->alias = edit.alias;
        found->comment = edit.comment;
    } else if (!isNone) {
        entry.channels.push_back({key, edit.alias, edit.comment, {}, {}});
    }
    return entry;
}

std::optional<std::string> noteText(const std::string& stated)
{
    return stated.empty() ? std::nullopt : std::optional(stated);
}

} // namespace

EntryEdit editEntry(const Station& station, EditedText& text, const SetValue& edit)
{
    requireModule(station, text.entry(edit.entry), "parameter");
    const MeantParameter meant = meantParameter(station, edit);
    if (edit.value) {
        setValue(text, edit, meant);
    } else {
        removeValue(text, edit, meant);
    }
    return {{"parameters"}, [meant, value = edit.value](const Entry& before, const Entry& after) {
                return isOnlyValue(before, after, meant, value);
            }};
}

EntryEdit editEntry(const Station& station, EditedText& text, const NoteChannel& edit)
{
    requireModule(station, text.entry(edit.entry), "channel");
    const std::string key = noteKey(text.entry(edit.entry), meantChannel(station, edit));
    EntryEditor(text, edit.entry)
        .state({"channels", key},
               {{"alias", noteText(edit.alias)}, {"comment", noteText(edit.comment)}});
    return {{"channels"}, [key, edit](const Entry& before, const Entry& after) {
                return isSameChannels(withNote(before, key, edit), after);
            }};
}

} // namespace mxstation
