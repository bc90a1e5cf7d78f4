#pragma once

#include "Integer.h"
#include "SourceErrors.h"
#include "TextOrigins.h"
#include "mxauthor/Field.h"

#include <map>
#include <set>

namespace mxauthor {

// Scalars of the text form. Each reports an error at its node and is empty then.

/// A whole number from 0 to `limit`.
[[nodiscard]] std::optional<std::uint64_t> readNumber(const YAML::Node& node, std::uint64_t limit,
                                                      SourceErrors& errors);

/// A whole number that an 8-byte slot can hold.
[[nodiscard]] std::optional<Integer> readInteger(const YAML::Node& node, SourceErrors& errors);

/// The Windows-1252 bytes of a text that fit in a line of an mx file: without CR, LF and NUL.
[[nodiscard]] std::optional<std::string> readText(const YAML::Node& node, SourceErrors& errors);

/// Bytes as hexadecimal text.
[[nodiscard]] std::optional<Bytes> readHex(const YAML::Node& node, SourceErrors& errors);

/// The unchanged text of any scalar, in UTF-8.
[[nodiscard]] std::optional<std::string> readScalar(const YAML::Node& node, SourceErrors& errors);

/// A mapping of the text form with its known keys. Others, and a key stated twice, are errors.
/// Errors that only follow from a misspelt key, such as a missing one, are not reported.
class Section
{
public:
    /// `mapping` is the name of its keys, see `keysOf`.
    Section(const YAML::Node& node, const std::string& mapping, SourceErrors& errors);

    /// Returns the value of `key`, empty when it is not stated.
    std::optional<YAML::Node> find(const std::string& key) const;

    /// The same, and an error when it is not stated.
    std::optional<YAML::Node> require(const std::string& key) const;

    bool has(const std::string& key) const { return values.count(key) != 0; }

    /// Returns whether an unknown key was most likely meant to be `key`, which is not stated.
    bool isMisspelt(const std::string& key) const { return misspelt.count(key) != 0; }

    /// Returns whether there are unknown keys.
    bool hasUnknownKeys() const { return !unknown.empty(); }

    // Values, with a default for a key that is missing or has a wrong value.

    std::uint64_t number(const std::string& key, std::uint64_t limit, std::uint64_t fallback) const;
    std::uint8_t byte(const std::string& key, std::uint8_t fallback) const;
    std::uint16_t word(const std::string& key, std::uint16_t fallback) const;
    Bytes hex(const std::string& key, const Bytes& fallback = {}) const;
    bool flag(const std::string& key) const;

    /// Returns where the mapping and its values are stated.
    RecordOrigin origin() const;

    const YAML::Node& node() const { return mapping; }
    SourceErrors& errors() const { return problems; }

private:
    void noteMisspeltKeys(const std::vector<std::string>& keys);

    YAML::Node mapping;
    SourceErrors& problems;
    std::map<std::string, YAML::Node> values;
    std::vector<std::string> unknown;
    std::set<std::string> misspelt; // the known keys that unknown ones are most likely
};

/// Returns the items of a sequence; an error and nothing if it is not one.
std::vector<YAML::Node> readSequence(const YAML::Node& node, SourceErrors& errors);

/// Returns keys and values of a mapping whose keys are names; an error if it is not one, and for a
/// name stated twice.
std::vector<std::pair<YAML::Node, YAML::Node>> readMapping(const YAML::Node& node,
                                                           SourceErrors& errors);

} // namespace mxauthor
