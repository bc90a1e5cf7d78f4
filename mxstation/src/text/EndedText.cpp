#include "text/EndedText.h"

#include "text/YamlExtent.h"

namespace mxstation {

EndedText::EndedText(const EditedText& text)
    : source(text.source()),
      lineEnd(lineEndAfter(source, source.size())),
      isAdded(source.empty() || source.back() != '\n')
{
    source += isAdded ? lineEnd : "";
}

std::string EndedText::restored(const std::string& changed) const
{
    const std::size_t size = changed.size();
    const bool isEnded = size >= lineEnd.size() &&
                         changed.compare(size - lineEnd.size(), lineEnd.size(), lineEnd) == 0;
    return isAdded && isEnded ? changed.substr(0, size - lineEnd.size()) : changed;
}

std::string itemLines(const YamlMember& item, const std::string& indent, const std::string& newline)
{
    std::string all;
    for (const std::string& line : item.lines) {
        const char* const mark = all.empty() ? "- " : "  ";
        all.append(indent).append(mark).append(line).append(newline);
    }
    return all;
}

} // namespace mxstation
