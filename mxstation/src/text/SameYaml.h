#pragma once

#include "text/YamlTree.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace mxstation {

/// Compares the content of two texts, that is all besides places, comments and quotes. Aliases
/// count as what they name.
class SameYaml
{
public:
    /// Returns whether two values are the same.
    bool isSame(const YamlNodeP& a, const YamlNodeP& b);

    /// Returns whether two maps are the same besides the members called as one of `keys`.
    bool isSameWithout(const std::vector<std::string>& keys, const YamlNode& a, const YamlNode& b);

private:
    bool isSameKey(const YamlNodeP& a, const YamlNodeP& b);
    bool isSameContent(const YamlNode& a, const YamlNode& b);

    std::set<std::pair<YamlNodeP, YamlNodeP>> known; // that are the same: aliases repeat them
};

} // namespace mxstation
