#include "explain/ExplainOutput.h"

#include "Diagnostic.h"

#include <text/Hexadecimal.h>
#include <text/ShownText.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using mxauthor::ExplainedGroup;
using mxauthor::ExplainedPart;

constexpr std::size_t bytesPerLine = 8;
constexpr std::size_t hexColumns = bytesPerLine * 3 - 1;
constexpr std::size_t fieldColumns = 14;

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
std::string partLines(const ExplainedFile& file, const ExplainedPart& part, bool coloured)
{
    std::string lines;
    for (std::size_t begin = 0; begin < part.place.length; begin += bytesPerLine) {
        const std::size_t count = std::min<std::size_t>(bytesPerLine, part.place.length - begin);
        const std::string line =
            fmt::format("  {:#08x}  {:<{}}  {}", part.place.offset + begin,
                        text::hexOfBytes(file.bytes, part.place.offset + begin, count), hexColumns,
                        begin == 0 ? described(part) : "");
        lines += painted(withoutBlanksAtEnd(line), "2", coloured && !part.isRead) + "\n";
    }
    return lines;
}

} // namespace

std::string hexOfPart(const ExplainedFile& file, const ExplainedPart& part)
{
    return text::hexOfBytes(file.bytes, part.place.offset, part.place.length);
}

std::string valueOfPart(const ExplainedPart& part)
{
    if (part.kind == ExplainedPart::Kind::Text) {
        return "\"" + text::forTerminal(part.value) + "\"";
    }
    return part.value;
}

std::string meaningOfPart(const ExplainedPart& part)
{
    std::string meaning = text::forTerminal(part.meaning);
    if (part.isRead) {
        return meaning;
    }
    return meaning.empty() ? "(not read)" : meaning + " (not read)";
}

std::string headingOf(const ExplainedGroup& group)
{
    return fmt::format("group {}, {}: {} bytes at {:#08x} ({}){}", text::hexOf(group.id, 4),
                       group.name.empty() ? "not of the format" : group.name, group.place.length,
                       group.place.offset, group.place.offset, group.isRead ? "" : ", not read");
}

std::string explainText(const ExplainedFile& file, bool coloured)
{
    std::string text;
    const ExplainedPart* previous = nullptr;
    for (const ExplainedPart& part : file.explanation.parts) {
        if (part.group >= 0 && (previous == nullptr || previous->group != part.group)) {
            const auto& group = file.explanation.groups[static_cast<std::size_t>(part.group)];
            text += painted(headingOf(group), "1", coloured) + "\n";
        }
        const bool begins =
            previous == nullptr || previous->record != part.record || previous->group != part.group;
        if (begins && !part.subject.empty()) {
            text += painted(" " + text::forTerminal(part.subject), "36", coloured) + "\n";
        }
        text += partLines(file, part, coloured);
        previous = &part;
    }
    return text;
}

} // namespace mxtool
