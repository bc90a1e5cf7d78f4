#include "explain/ExplanationParts.h"

#include <text/Hexadecimal.h>
#include <text/ShownText.h>

#include <fmt/format.h>

namespace mxmodule {

namespace {

constexpr std::size_t bytesPerLine = 8;
constexpr std::size_t hexColumns = bytesPerLine * 3 - 1;
constexpr std::size_t fieldColumns = 14;

std::string painted(const std::string& text, const char* colour, bool coloured)
{
    return coloured ? fmt::format("\033[{}m{}\033[0m", colour, text) : text;
}

std::string withoutBlanksAtEnd(std::string line)
{
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string described(const ExplainedPart& part)
{
    const std::string value = valueOfPart(part);
    const std::string meaning = meaningOfPart(part);
    const std::string gap = value.empty() || meaning.empty() ? "" : "  ";
    return fmt::format("{}  {}{}{}",
                       part.field + std::string(part.field.size() < fieldColumns
                                                    ? fieldColumns - part.field.size()
                                                    : 0,
                                                ' '),
                       value, gap, meaning);
}

// A line per eight bytes; the first one states the meaning.
std::string partLines(const Explanation& explanation, const ExplainedPart& part, bool coloured)
{
    std::string lines;
    for (std::size_t begin = 0; begin < part.length; begin += bytesPerLine) {
        const std::size_t count = std::min<std::size_t>(bytesPerLine, part.length - begin);
        const std::string line =
            fmt::format("  {:#08x}  {:<{}}  {}", part.offset + begin,
                        text::hexOfBytes(explanation.file().bytes(), part.offset + begin, count),
                        hexColumns, begin == 0 ? described(part) : "");
        lines += painted(withoutBlanksAtEnd(line), "2", coloured && !part.isRead) + "\n";
    }
    return lines;
}

} // namespace

std::string Explanation::text(bool coloured) const
{
    std::string text;
    const ExplainedPart* previous = nullptr;
    for (const ExplainedPart& part : parts()) {
        if (part.group && beginsGroup(part, previous)) {
            text += painted(headingOf(groups()[*part.group]), "1", coloured) + "\n";
        }
        if (beginsRecord(part, previous) && !part.subject.empty()) {
            text += painted(" " + text::forTerminal(part.subject), "36", coloured) + "\n";
        }
        text += partLines(*this, part, coloured);
        previous = &part;
    }
    return text;
}

} // namespace mxmodule
