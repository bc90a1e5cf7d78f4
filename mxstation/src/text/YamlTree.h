#pragma once

#include <mxstation/Station.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mxstation {

struct YamlNode;
using YamlNodeP = std::shared_ptr<const YamlNode>;

/// Where a value is used again.
struct YamlAlias
{
    SourcePlace place;
    std::size_t offset = 0; ///< Of its first byte in the text.
};

/// A value of a YAML text and where it is.
struct YamlNode
{
    enum class Kind
    {
        Nothing,
        Scalar,
        List,
        Map
    };

    Kind kind = Kind::Nothing;
    std::string text;    ///< Of a scalar.
    bool isWord = false; ///< A scalar in quotes, or tagged as a text: not a number.
    SourcePlace place;
    std::size_t offset = 0;         ///< Of its first byte in the text, its tag and anchor included.
    bool isFlow = false;            ///< A list or map in brackets.
    std::vector<YamlAlias> aliases; ///< Where it is used again.
    std::vector<YamlNodeP> items;   ///< Of a list.
    std::vector<std::pair<YamlNodeP, YamlNodeP>> members; ///< Keys and values of a map.
    std::vector<std::size_t> starts; ///< The first byte of each item or value, also of an alias.

    /// Returns what it is, for messages: "a list".
    std::string shown() const;
};

/// An error in a YAML text.
struct YamlError
{
    SourcePlace place;
    std::string text;
};

/// A YAML text as a tree; `root` is null after an error. A value that aliases name is shared.
struct YamlTree
{
    YamlNodeP root;
    std::optional<YamlError> error;
};

/// Reads `source`, which is UTF-8. An alias within the value that it names is an error: the value
/// would have no end.
YamlTree readYamlTree(const std::string& source);

} // namespace mxstation
