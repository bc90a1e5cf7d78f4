#pragma once

#include "text/YamlTree.h"

#include <optional>
#include <string>
#include <vector>

namespace mxstation {

/// A member of a map, as text.
struct YamlMember
{
    std::string flow;               ///< In brackets: "at: {in: 1}".
    std::vector<std::string> lines; ///< In a map of lines, the first one not indented.
};

/// Returns whether the keys of `map`, in brackets, have double quotes, as in JSON.
bool hasQuotedKeys(const std::string& source, const YamlNode& map);

/// Returns `name` as a key, with its colon and a blank.
std::string yamlKey(const std::string& name, bool isQuoted);

/// Returns the value of the member `key`, or null.
const YamlNode* memberCalled(const YamlNode& map, const std::string& key);

/// Returns the same; null also if it is an alias, whose value is elsewhere.
const YamlNode* ownMemberCalled(const YamlNode& map, const std::string& key);

/// Returns an error at each alias that uses `node` again: a change would be in all of these places.
/// `why` says what each of them has of its own.
std::vector<YamlError> usedAgain(const YamlNode& node, const std::string& why);

/// Changes of a YAML text that keep every other byte of it. They are made in groups, one for each
/// entry of a list.
class YamlEdit
{
public:
    /// `text` outlives the object.
    explicit YamlEdit(const std::string& text) : source(text) {}

    /// Begins the changes of the next entry.
    void next() { ++count; }

    void insert(std::size_t offset, const std::string& inserted);
    void replace(std::size_t begin, std::size_t end, const std::string& inserted);

    /// Inserts `member` after `value`, one of `map`; first, if `value` is null or has no known end.
    /// Returns whether that is possible.
    [[nodiscard]] bool insertMember(const YamlNode& map, const YamlNode* value,
                                    const YamlMember& member);

    /// Turns the scalar `entry` of a list into a map in which it is the value of "module" and
    /// `member` is next. `isQuoted` is for lists in brackets, `isInBrackets`.
    [[nodiscard]] bool wrapScalar(const YamlNode& entry, bool isInBrackets, bool isQuoted,
                                  const YamlMember& member);

    /// Returns the text with the changes of the first `entries` entries.
    std::string text(std::size_t entries) const;

private:
    struct Change
    {
        std::size_t begin;
        std::size_t end;
        std::string text;
        std::size_t entry; // how many were begun
    };

    bool insertFirst(const YamlNode& map, const YamlMember& member);
    std::optional<std::string> indentation(const YamlNode& node) const;

    const std::string& source;
    std::vector<Change> changes;
    std::size_t count = 0;
};

} // namespace mxstation
