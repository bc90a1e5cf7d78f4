#pragma once

#include <string>
#include <vector>

namespace mxauthor {

/// Channels of one kind of a new module.
struct ChannelGroup
{
    unsigned count = 0;
    std::string prefix; ///< Of the names: "AI".
    bool isInput = true;
    std::string kind;   ///< Word of the text form: "SInt16".
    unsigned first = 1; ///< Number in the name of the first one.

    unsigned bits() const;
    bool isDigital() const { return bits() == 1; }
};

/// Reads "3 AI, 2 DO". Throws a `SkeletonError`.
std::vector<ChannelGroup> readChannelGroups(const std::string& text);

/// Returns the key `repeat` of a line for the channels of `group`; empty for a single one.
std::string repeatKey(const ChannelGroup& group);

/// Returns the number in such a line that is `first` in the first repetition.
std::string numberFrom(const ChannelGroup& group, unsigned first);

} // namespace mxauthor
