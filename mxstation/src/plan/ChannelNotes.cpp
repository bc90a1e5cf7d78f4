#include "plan/ChannelNotes.h"

#include "plan/CalledChannels.h"

#include <Poco/String.h>

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/IecNames.h>

#include <algorithm>

namespace mxstation {

namespace {

using mxmodule::Severity;

// The one channel that the note is about; an error and nothing if it is not one.
std::optional<std::size_t> indexOf(const ChannelNote& note, const CalledChannels& channels,
                                   PlanFindings& findings)
{
    const std::vector<std::size_t> called = channels.called(note.channel);
    if (called.size() == 1) {
        return called.front();
    }
    findings.add(note.place, channels.rejected(note.channel));
    return std::nullopt;
}

// Sets `noted`, what is noted of `channel`.
void setNote(const ChannelNote& note, const CalledChannels& channels, std::size_t index,
             const ChannelNote*& noted, PlanFindings& findings)
{
    if (noted != nullptr) {
        findings.add(note.place, Severity::Error,
                     fmt::format("this is the channel {}, noted {} as well", channels.shown(index),
                                 lineText(noted->place)));
    } else {
        noted = &note;
    }
    if (!channels.hasAddress(index)) {
        findings.add(note.place, Severity::Warning,
                     fmt::format("the channel {} has no address, the note has no effect",
                                 channels.shown(index)));
    }
}

} // namespace

std::vector<const ChannelNote*> ChannelNotes::of(const Entry& entry,
                                                 const mxmodule::ChannelMap& map)
{
    std::vector<const ChannelNote*> notes(map.channels().size());
    if (entry.channels.empty()) {
        return notes;
    }
    const CalledChannels channels(map);
    std::vector<const ChannelNote*> noted(channels.count());
    for (const ChannelNote& note : entry.channels) {
        checkAlias(note);
        if (findings.isFull()) {
            break; // finding the nearest names takes time
        }
        if (const auto index = indexOf(note, channels, findings)) {
            setNote(note, channels, *index, noted[*index], findings);
        }
    }
    std::copy_n(noted.begin(), notes.size(), notes.begin());
    return notes;
}

void ChannelNotes::checkAlias(const ChannelNote& note)
{
    if (note.alias.empty()) {
        return;
    }
    const auto [first, isNew] = aliasPlaces.emplace(Poco::toLower(note.alias), note.aliasPlace);
    if (!isNew) {
        findings.add(note.aliasPlace, Severity::Error,
                     fmt::format("the alias \"{}\" is used {} as well",
                                 text::abbreviated(note.alias), lineText(first->second)),
                     "upper and lower case are the same in IEC 61131-3");
    }
    const std::string identifier = text::iecIdentifier(note.alias);
    if (identifier.empty()) {
        findings.add(
            note.aliasPlace, Severity::Error,
            fmt::format("the alias \"{}\" has no letter or digit", text::abbreviated(note.alias)));
    } else if (identifier != note.alias) {
        findings.add(note.aliasPlace, Severity::Note,
                     fmt::format("the alias \"{}\" is no identifier of IEC 61131-3, declarations "
                                 "call it {}",
                                 text::abbreviated(note.alias), identifier));
    }
}

} // namespace mxstation
