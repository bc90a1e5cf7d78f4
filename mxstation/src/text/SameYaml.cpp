#include "text/SameYaml.h"

#include <algorithm>
#include <iterator>

namespace mxstation {

namespace {

using SortedMembers = std::vector<std::pair<YamlNodeP, YamlNodeP>>;

// The members of a map without those of `keys`, in the order of their names.
SortedMembers sortedMembers(const YamlNode& map, const std::vector<std::string>& keys)
{
    SortedMembers members;
    std::copy_if(map.members.begin(), map.members.end(), std::back_inserter(members),
                 [&keys](const auto& one) {
                     return std::find(keys.begin(), keys.end(), one.first->text) == keys.end();
                 });
    std::stable_sort(members.begin(), members.end(),
                     [](const auto& a, const auto& b) { return a.first->text < b.first->text; });
    return members;
}

} // namespace

bool SameYaml::isSame(const YamlNodeP& a, const YamlNodeP& b)
{
    if (known.count({a, b}) != 0) {
        return true;
    }
    const bool isEqual = isSameContent(*a, *b);
    if (isEqual) {
        known.insert({a, b});
    }
    return isEqual;
}

bool SameYaml::isSameWithout(const std::vector<std::string>& keys, const YamlNode& a,
                             const YamlNode& b)
{
    const SortedMembers before = sortedMembers(a, keys);
    const SortedMembers after = sortedMembers(b, keys);
    return std::equal(before.begin(), before.end(), after.begin(), after.end(),
                      [this](const auto& one, const auto& other) {
                          return isSameKey(one.first, other.first) &&
                                 isSame(one.second, other.second);
                      });
}

// Quotes make no other key.
bool SameYaml::isSameKey(const YamlNodeP& a, const YamlNodeP& b)
{
    const auto scalar = YamlNode::Kind::Scalar;
    return a->kind == scalar && b->kind == scalar ? a->text == b->text : isSame(a, b);
}

bool SameYaml::isSameContent(const YamlNode& a, const YamlNode& b)
{
    return a.kind == b.kind && a.text == b.text && a.isWord == b.isWord &&
           std::equal(a.items.begin(), a.items.end(), b.items.begin(), b.items.end(),
                      [this](const auto& one, const auto& other) { return isSame(one, other); }) &&
           isSameWithout({}, a, b);
}

} // namespace mxstation
