#include "text/FlowRow.h"

#include "text/YamlEdit.h"
#include "text/YamlRemoval.h"

#include <algorithm>
#include <numeric>

namespace mxstation {

FlowRow::FlowRow(const std::string& text, const YamlNode& list)
    : source(text), opened(contentOfNode(text, list) + 1), parts(partsInBrackets(text, list))
{}

std::string FlowRow::with(std::size_t before, const std::string& item) const
{
    std::string text = source;
    if (parts->empty()) {
        return text.insert(opened, item);
    }
    if (before < parts->size()) {
        const std::size_t begin = (*parts)[before].begin;
        return text.insert(begin, item + separator(begin));
    }
    return text.insert(parts->back().end, separator(parts->back().begin) + item);
}

// Between items: a new line if the one at `start` begins one.
std::string FlowRow::separator(std::size_t start) const
{
    const std::size_t line = start == 0 ? 0 : source.rfind('\n', start - 1) + 1;
    const bool isFirst = line > 0 && afterBlanks(source, line) == start;
    return isFirst ? "," + lineEndAfter(source, line - 1) + source.substr(line, start - line)
                   : ", ";
}

std::string FlowRow::without(std::size_t index) const
{
    YamlEdit edit(source);
    removePart(edit, source, *parts, index);
    return edit.text(0);
}

std::string FlowRow::moved(std::size_t index, std::size_t before) const
{
    std::vector<std::size_t> order(parts->size());
    std::iota(order.begin(), order.end(), 0U);
    const auto at = [&order](std::size_t position) {
        return order.begin() + static_cast<std::ptrdiff_t>(position);
    };
    if (before > index) {
        std::rotate(at(index), at(index + 1), at(before));
    } else {
        std::rotate(at(before), at(index), at(index + 1));
    }
    YamlEdit edit(source);
    for (std::size_t i = 0; i < order.size(); ++i) {
        const auto& [begin, end] = (*parts)[i];
        const YamlExtent& moved = (*parts)[order[i]];
        edit.replace(begin, end, source.substr(moved.begin, moved.end - moved.begin));
    }
    return edit.text(0);
}

} // namespace mxstation
