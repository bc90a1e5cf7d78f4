#pragma once

#include "text/StationErrors.h"
#include "text/YamlTree.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace mxstation {

/// A map of a station with its known keys. Others, and a key stated twice, are errors.
class YamlSection
{
public:
    /// `what` is the map in messages: "key of a module".
    YamlSection(const YamlNode& node, const std::string& what, const std::vector<std::string>& keys,
                StationErrors& errors);

    /// Returns the value of `key`, or null. A value of nothing is an error, and null.
    const YamlNode* find(const std::string& key) const;

    /// Returns whether a key is unknown or has no value: one that is missing may be meant.
    bool hasIncompleteKeys() const { return hasIncomplete; }

private:
    std::map<std::string, YamlNodeP> values;
    bool hasIncomplete = false;
};

/// Returns the text of `node`; an error and nothing if it is none, empty, or longer than 65,535
/// bytes. `what` is expected.
std::optional<std::string> readText(const YamlNode& node, const std::string& what,
                                    StationErrors& errors);

/// Returns the whole number in `node`, in decimal or, after 0x, in hexadecimal, also one in quotes.
std::optional<std::uint64_t> wholeNumberIn(const YamlNode& node);

/// Returns the whole number in `node`, in decimal or, after 0x, in hexadecimal, from `least` to
/// `most`; an error and nothing for anything else, a number in quotes too.
std::optional<std::uint32_t> readNumber(const YamlNode& node, std::uint32_t least,
                                        std::uint32_t most, StationErrors& errors);

/// Returns the whole number in `node` that is one of `numbers`; an error and nothing for anything
/// else, a number in quotes too. `what` is expected: "function code".
std::optional<std::uint32_t> readOneOf(const YamlNode& node, const std::string& what,
                                       const std::vector<std::uint32_t>& numbers,
                                       StationErrors& errors);

/// Returns the index of the text of `node` in `words`; an error and nothing if it is none of them.
std::optional<std::size_t> readWord(const YamlNode& node, const std::string& what,
                                    const std::vector<std::string>& words, StationErrors& errors);

} // namespace mxstation
