#include "GroupWords.h"

#include <algorithm>
#include <array>

namespace mxauthor {

namespace {

namespace group = mxformat::group;
using mxformat::groupNames;

constexpr std::array<mxformat::GroupName, groupNames.size()> namedGroups = {{
    {group::header, "header"},
    {group::identity, "module"},
    {group::catalogue, "catalogue"},
    {group::component, "component"},
    {group::extension, "extension"},
    {group::parameterBlock, "parameterBlock"},
    {group::dataSizes, "dataSizes"},
    {group::channelNames, "channelNames"},
    {group::conversions, "conversions"},
    {group::optionLists, "optionLists"},
    {group::parameters, "parameters"},
    {group::channels, "channels"},
    {group::texts, "texts"},
    {group::productImage, "image"},
}};

constexpr bool areInUsualOrder()
{
    for (std::size_t i = 0; i < groupNames.size(); ++i) {
        if (namedGroups[i].id != groupNames[i].id) {
            return false;
        }
    }
    return true;
}

static_assert(areInUsualOrder(), "every group of known shape has a word here, in the same order");

} // namespace

const std::string rawWord = "raw";

const std::vector<std::uint16_t>& usualOrder()
{
    static const std::vector<std::uint16_t> order = [] {
        std::vector<std::uint16_t> ids;
        ids.reserve(groupNames.size());
        for (const mxformat::GroupName& group : groupNames) {
            ids.push_back(group.id);
        }
        return ids;
    }();
    return order;
}

std::string groupWord(std::uint16_t id)
{
    const auto found = std::find_if(namedGroups.begin(), namedGroups.end(),
                                    [id](const auto& entry) { return entry.id == id; });
    return found == namedGroups.end() ? rawWord : found->name;
}

std::optional<std::uint16_t> groupOfWord(const std::string& word)
{
    const auto found = std::find_if(namedGroups.begin(), namedGroups.end(),
                                    [&word](const auto& entry) { return entry.name == word; });
    return found == namedGroups.end() ? std::nullopt : std::optional(found->id);
}

std::vector<std::string> groupWords()
{
    std::vector<std::string> all;
    all.reserve(namedGroups.size());
    for (const mxformat::GroupName& group : namedGroups) {
        all.emplace_back(group.name);
    }
    return all;
}

} // namespace mxauthor
