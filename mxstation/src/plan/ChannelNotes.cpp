#include "plan/ChannelNotes.h"

#include <Poco/String.h>

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/IecNames.h>
#include <text/NearestWords.h>

#include <algorithm>

namespace mxstation {

namespace {

using mxmodule::Severity;

// What a note may call a channel.
struct CalledChannel
{
    std::string id;
    std::string number;
    std::string name;
    std::string direction;
    bool hasAddress;

    std::set<std::string> words() const { return {name, number, number + " " + name, "#" + id}; }

    std::string shown() const
    {
        return fmt::format("#{} ({} {}, {})", id, number, name, direction);
    }
};

// Those with a place in an image first, in the order of the map.
std::vector<CalledChannel> channelsOf(const mxmodule::ChannelMap& map)
{
    std::vector<CalledChannel> channels;
    for (const auto& channel : map.channels()) {
        channels.push_back({channel.id, std::to_string(channel.number), channel.name,
                            channel.isInput ? "in" : "out", true});
    }
    for (const auto& channel : map.withoutSymbol()) {
        channels.push_back(
            {channel.id, std::to_string(channel.number), channel.name, channel.direction, false});
    }
    return channels;
}

std::map<std::string, std::vector<std::size_t>>
positionsByWord(const std::vector<CalledChannel>& channels)
{
    std::map<std::string, std::vector<std::size_t>> positions;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        for (const std::string& word : channels[i].words()) {
            positions[word].push_back(i);
        }
    }
    return positions;
}

void addUnknown(const ChannelNote& note, const std::vector<CalledChannel>& channels,
                PlanFindings& findings)
{
    std::vector<std::string> names;
    names.reserve(channels.size());
    for (const CalledChannel& channel : channels) {
        names.push_back(channel.name);
    }
    findings.add(note.place, Severity::Error,
                 fmt::format("the module has no channel \"{}\"{}", text::abbreviated(note.channel),
                             names.empty() ? "" : text::acceptedWords(note.channel, names)),
                 "", text::nearestWords(note.channel, names));
}

void addAmbiguous(const ChannelNote& note, const std::vector<CalledChannel>& channels,
                  const std::vector<std::size_t>& called, PlanFindings& findings)
{
    std::vector<std::string> shown;
    std::vector<std::string> accepted;
    for (const std::size_t index : called) {
        shown.push_back(channels[index].shown());
        accepted.push_back("#" + channels[index].id);
    }
    findings.add(note.place, Severity::Error,
                 fmt::format("\"{}\" fits several channels: {}", text::abbreviated(note.channel),
                             text::beginningOfList(shown, 10, ", ", " ")),
                 "a channel is also called by its identifier, such as \"" + accepted.front() + "\"",
                 accepted);
}

// The one channel of `called` that the note is about; an error and nothing if it is not one.
std::optional<std::size_t> indexOf(const ChannelNote& note,
                                   const std::vector<CalledChannel>& channels,
                                   const std::vector<std::size_t>& called, PlanFindings& findings)
{
    if (called.size() == 1) {
        return called.front();
    }
    if (called.empty()) {
        addUnknown(note, channels, findings);
    } else {
        addAmbiguous(note, channels, called, findings);
    }
    return std::nullopt;
}

// Sets `noted`, what is noted of `channel`.
void setNote(const ChannelNote& note, const CalledChannel& channel, const ChannelNote*& noted,
             PlanFindings& findings)
{
    if (noted != nullptr) {
        findings.add(note.place, Severity::Error,
                     fmt::format("this is the channel {}, noted {} as well", channel.shown(),
                                 lineText(noted->place)));
    } else {
        noted = &note;
    }
    if (!channel.hasAddress) {
        findings.add(
            note.place, Severity::Warning,
            fmt::format("the channel {} has no address, the note has no effect", channel.shown()));
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
    const std::vector<CalledChannel> channels = channelsOf(map);
    auto byWord = positionsByWord(channels);
    std::vector<const ChannelNote*> noted(channels.size());
    for (const ChannelNote& note : entry.channels) {
        checkAlias(note);
        if (findings.isFull()) {
            break; // finding the nearest names takes time
        }
        if (const auto index = indexOf(note, channels, byWord[note.channel], findings)) {
            setNote(note, channels[*index], noted[*index], findings);
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
