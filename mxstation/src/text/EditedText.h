#pragma once

#include "text/YamlEdit.h"

#include <mxstation/Station.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace mxstation {

/// The text of a station while it is changed, in steps: each is made in the text of the one before
/// it.
class EditedText
{
public:
    /// Throws a `mxmodule::Failure` if `text` is not the YAML of a station. `station`, the name of
    /// whose file is in messages, outlives the object.
    EditedText(const Station& station, std::string text);

    const std::string& source() const { return text; }
    const YamlNode& root() const { return *tree.root; }

    /// Returns the list of the modules; null if it is missing or has no value.
    const YamlNode* list() const;

    /// Returns the number of entries.
    std::size_t count() const { return list() == nullptr ? 0 : list()->items.size(); }

    /// Returns an entry, which exists.
    const YamlNode& entry(std::size_t index) const { return *list()->items[index]; }

    /// Throws a `mxmodule::Failure` with `errors`, if there are any, and what to do by hand.
    void require(const std::vector<YamlError>& errors) const;

    /// Throws a `mxmodule::Failure`: the change cannot be made at `place`.
    [[noreturn]] void reject(const SourcePlace& place) const;

    /// Takes the text of the next step. If it is not the YAML of a station, the change cannot be
    /// made at `place`.
    void take(std::string changed, const SourcePlace& place);

private:
    const Station& station;
    std::string text;
    YamlTree tree;
};

} // namespace mxstation
