#pragma once

#include <mxmodule/ChannelMap.h>
#include <mxmodule/Finding.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace mxstation {

/// The channels of a module by the words that a station may use for them. Those with a place in an
/// image are first, in the order of the map.
class CalledChannels
{
public:
    explicit CalledChannels(const mxmodule::ChannelMap& map);

    std::size_t count() const { return channels.size(); }

    /// Returns the positions of the channels called `word`.
    std::vector<std::size_t> called(const std::string& word) const;

    /// Returns the word for the channel that a person would choose: its name if no other channel is
    /// called so, otherwise its identifier, "#5".
    std::string bestWord(std::size_t position) const;

    /// Returns why `word`, which does not name one channel, is rejected; without a place.
    mxmodule::Finding rejected(const std::string& word) const;

    /// Returns whether the channel has a place in an image.
    bool hasAddress(std::size_t position) const { return channels[position].hasAddress; }

    /// Returns the channel for messages: "#5 (1 AI 1, in)".
    std::string shown(std::size_t position) const { return channels[position].shown(); }

private:
    struct CalledChannel
    {
        std::string id;
        std::string number;
        std::string name;
        std::string direction;
        bool hasAddress;

        std::string shown() const;
    };

    mxmodule::Finding unknown(const std::string& word) const;

    std::vector<CalledChannel> channels;
    std::map<std::string, std::vector<std::size_t>> positions; // by word
};

} // namespace mxstation
