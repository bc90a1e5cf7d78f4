#include "TextIds.h"

namespace mxauthor {

void TextIds::start(std::uint16_t first, std::uint16_t step)
{
    next = first;
    stride = step;
}

void TextIds::fix(std::uint16_t id, const std::string& text)
{
    TextRecord record;
    record.id = id;
    record.text = text;
    texts.push_back(record);
    // Readers take the first text of an identifier: a later one cannot be referred to.
    if (used.insert(id).second) {
        idOfText.emplace(text, id);
    }
}

std::optional<std::uint16_t> TextIds::idOf(const std::string& text)
{
    const auto found = idOfText.find(text);
    if (found != idOfText.end()) {
        return found->second;
    }
    while (next <= 0xFFFF && used.count(static_cast<std::uint16_t>(next)) != 0) {
        next += stride;
    }
    if (next > 0xFFFF) {
        return std::nullopt;
    }
    const auto id = static_cast<std::uint16_t>(next);
    fix(id, text);
    return id;
}

} // namespace mxauthor
