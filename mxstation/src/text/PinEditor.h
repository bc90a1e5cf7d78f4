#pragma once

#include "text/YamlEdit.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxstation {

/// Addresses that an entry of the row is to state, those that it does not state already.
struct AddedAddresses
{
    std::optional<std::uint64_t> input;
    std::optional<std::uint64_t> output;

    bool empty() const { return !input && !output; }
};

/// The error of an entry to which addresses cannot be added.
constexpr const char* cannotBeAdded = "addresses cannot be added to this entry as it is written";

/// Adds addresses to the entries of a station's text, by inserting alone.
class PinEditor
{
public:
    /// The text, and the tree that was read from it, outlive the object.
    PinEditor(const std::string& text, const YamlNode& tree);

    /// Adds `addresses` to `entry`, an item of `list`. Returns why that is not possible; nothing if
    /// they are added.
    [[nodiscard]] std::vector<YamlError> add(const YamlNode& entry, const YamlNode& list,
                                             const AddedAddresses& addresses);

    /// Returns the text with what was added to the first `entries` of them.
    std::string text(std::size_t entries) const { return edit.text(entries); }

private:
    bool addToMap(const YamlNode& entry, const AddedAddresses& addresses);
    bool addToAddresses(const YamlNode& stated, const AddedAddresses& addresses);

    const std::string& source;
    const YamlNode& root;
    YamlEdit edit;
};

} // namespace mxstation
