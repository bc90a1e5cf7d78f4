#include "SearchTexts.h"

#include "SearchFolding.h"

#include <algorithm>
#include <unordered_set>

namespace devices::database {

namespace {

// Lines of folded texts, each once: modules repeat the texts of options many times.
class FoldedLines
{
public:
    void add(const std::string& text)
    {
        if (seen.insert(text).second) {
            lines += (lines.empty() ? "" : "\n") + foldedForSearch(text);
        }
    }

    std::string take() { return std::move(lines); }

private:
    std::unordered_set<std::string> seen;
    std::string lines;
};

std::optional<TextClass> classOf(const SearchTexts& texts, const std::string& word)
{
    const auto found = std::find_if(texts.begin(), texts.end(), [&word](const std::string& text) {
        return text.find(word) != std::string::npos;
    });
    return found == texts.end() ? std::nullopt
                                : std::optional(static_cast<TextClass>(found - texts.begin()));
}

} // namespace

SearchTexts searchTextsOf(const ModuleContent& content)
{
    std::array<FoldedLines, textClassCount> lines;
    const auto linesOf = [&lines](TextClass place) -> FoldedLines& {
        return lines[static_cast<std::size_t>(place)];
    };
    linesOf(TextClass::Names).add(content.label);
    linesOf(TextClass::Names).add(content.orderCode);
    for (const ModuleContent::Channel& channel : content.channels) {
        linesOf(TextClass::Channels).add(channel.name);
    }
    for (const ModuleContent::Parameter& parameter : content.parameters) {
        linesOf(TextClass::Parameters).add(parameter.name);
        for (const ModuleContent::Option& option : parameter.options) {
            linesOf(TextClass::Options).add(option.text);
        }
    }
    SearchTexts texts;
    std::transform(lines.begin(), lines.end(), texts.begin(),
                   [](FoldedLines& of) { return of.take(); });
    return texts;
}

std::optional<TextClass> matchOf(const SearchTexts& texts, const std::vector<std::string>& words)
{
    TextClass poorest = TextClass::Names;
    for (const std::string& word : words) {
        const auto found = classOf(texts, word);
        if (!found) {
            return std::nullopt;
        }
        poorest = std::max(poorest, *found);
    }
    return poorest;
}

} // namespace devices::database
