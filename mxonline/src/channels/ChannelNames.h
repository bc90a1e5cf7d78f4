#pragma once

#include <mxmodule/Finding.h>
#include <mxonline/NamedChannel.h>
#include <mxstation/Plan.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace mxonline {

/// Finds the channels of a station by name.
///
/// A channel is called by its alias; by MODULE/CHANNEL with the name or position of the module, and
/// the name, number, "NUMBER NAME" or "#ID" of the channel; by its name, if that fits no other. An
/// alias comes before everything else that it fits.
class ChannelNames
{
public:
    /// `planned` outlives the object.
    explicit ChannelNames(const mxstation::Plan& planned);

    /// Returns the index in `Plan::channels` of the channel `name`, which has a value. Throws a
    /// `mxmodule::Failure` of origin `Request`, without a place: unknown, with the nearest names;
    /// of several channels; without a value.
    std::size_t find(const std::string& name) const;

    /// Returns the indexes of the channels that `names` select, ordered, each once. The name or
    /// position of a module selects all of its channels with a value; no names select all of the
    /// station. Throws one `mxmodule::Failure` with an error for each other name.
    std::vector<std::size_t> select(const std::vector<std::string>& names) const;

    /// Returns the first name by which `find` finds this channel of these: its alias,
    /// MODULE/CHANNEL, MODULE/#ID, the last also with the position of the module.
    std::string nameOf(std::size_t channel) const;

private:
    std::vector<std::size_t> called(const std::string& name) const;
    std::vector<std::size_t> selected(const std::string& name) const;
    std::vector<std::string> knownNames() const;
    std::size_t oneOf(const std::string& name, const std::vector<std::size_t>& channels) const;
    mxmodule::Failure ambiguous(const std::string& name,
                                const std::vector<std::size_t>& channels) const;

    const mxstation::Plan& plan;
    std::map<std::string, std::size_t> byAlias;
    std::map<std::string, std::vector<std::size_t>> byWord;   // everything else that calls one
    std::map<std::string, std::vector<std::size_t>> byModule; // name or position, those with values
};

/// Returns the channels of `plan` at `indexes` with the names that `names` gives them.
std::vector<NamedChannel> namedChannels(const mxstation::Plan& plan, const ChannelNames& names,
                                        const std::vector<std::size_t>& indexes);

/// Returns `channel "AI 1" of module 2 "Levels"`.
std::string channelText(const mxstation::Channel& channel);

} // namespace mxonline
