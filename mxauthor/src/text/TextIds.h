#pragma once

#include "mxauthor/groups/Texts.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace mxauthor {

/// Gives identifiers to texts in the order in which they are used; a text keeps the one that it was
/// given first.
class TextIds
{
public:
    /// Identifiers are given from `first` on, each `step` above the one before.
    void start(std::uint16_t first, std::uint16_t step);

    /// Appends a text with an identifier of its own.
    void fix(std::uint16_t id, const std::string& text);

    /// Returns the identifier of `text`; empty when there is none left.
    [[nodiscard]] std::optional<std::uint16_t> idOf(const std::string& text);

    /// Returns all texts: the fixed ones, then the others in order of use.
    const std::vector<TextRecord>& records() const { return texts; }

private:
    std::vector<TextRecord> texts;
    std::map<std::string, std::uint16_t> idOfText;
    std::set<std::uint16_t> used;
    std::uint32_t next = 1;
    std::uint16_t stride = 1;
};

} // namespace mxauthor
