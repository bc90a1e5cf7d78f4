#include "GroupWords.h"

#include <algorithm>
#include <utility>

namespace mxauthor {

namespace {

const std::vector<std::pair<std::uint16_t, const char*>> namedGroups = {
    {headerGroup, "header"},
    {moduleGroup, "module"},
    {catalogueGroup, "catalogue"},
    {componentGroup, "component"},
    {extensionGroup, "extension"},
    {blockGroup, "parameterBlock"},
    {dataSizesGroup, "dataSizes"},
    {channelNamesGroup, "channelNames"},
    {conversionsGroup, "conversions"},
    {optionListsGroup, "optionLists"},
    {parametersGroup, "parameters"},
    {channelsGroup, "channels"},
    {textsGroup, "texts"},
    {imageGroup, "image"},
};

} // namespace

const std::string rawWord = "raw";

const std::vector<std::uint16_t>& usualOrder()
{
    static const std::vector<std::uint16_t> order = [] {
        std::vector<std::uint16_t> ids;
        ids.reserve(namedGroups.size());
        for (const auto& [id, word] : namedGroups) {
            ids.push_back(id);
        }
        return ids;
    }();
    return order;
}

std::string groupWord(std::uint16_t id)
{
    const auto found = std::find_if(namedGroups.begin(), namedGroups.end(),
                                    [id](const auto& entry) { return entry.first == id; });
    return found == namedGroups.end() ? rawWord : found->second;
}

std::optional<std::uint16_t> groupOfWord(const std::string& word)
{
    const auto found = std::find_if(namedGroups.begin(), namedGroups.end(),
                                    [&word](const auto& entry) { return entry.second == word; });
    return found == namedGroups.end() ? std::nullopt : std::optional(found->first);
}

std::vector<std::string> groupWords()
{
    std::vector<std::string> all;
    all.reserve(namedGroups.size());
    for (const auto& [id, word] : namedGroups) {
        all.emplace_back(word);
    }
    return all;
}

} // namespace mxauthor
