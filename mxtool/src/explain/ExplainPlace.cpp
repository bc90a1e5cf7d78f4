#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "explain/ExplainOutput.h"
#include <text/Counted.h>
#include <text/TextTable.h>

#include <text/Hexadecimal.h>
#include <text/NearestWords.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace mxtool {

namespace {

using mxauthor::ExplainedPart;
using mxauthor::NamedPlace;

std::size_t offsetIn(const ExplainedFile& file, const std::string& word)
{
    const std::size_t size = file.bytes.size();
    const auto offset = numberOfWord(word);
    if (!offset) {
        throw Failure(Origin::Request, file.name, "\"" + word + "\" is not an offset",
                      "a number in decimal, or in hexadecimal after 0x");
    }
    if (*offset >= size) {
        throw Failure(Origin::Request, file.name,
                      fmt::format("{0} ({0:#x}) lies outside the file of {1}", *offset,
                                  text::counted(size, "byte")));
    }
    return *offset;
}

const ExplainedPart& partAt(const ExplainedFile& file, std::size_t offset)
{
    const auto& parts = file.explanation.parts;
    return *std::find_if(parts.begin(), parts.end(), [offset](const ExplainedPart& part) {
        return offset < std::size_t{part.place.offset} + part.place.length;
    });
}

std::string line(const char* what, const std::string& text)
{
    return text.empty() ? "" : fmt::format("{:<8} {}\n", what, text::forTerminal(text));
}

std::string groupLine(const ExplainedFile& file, const ExplainedPart& part)
{
    return part.group < 0 ? "none"
                          : headingOf(file.explanation.groups[static_cast<std::size_t>(part.group)])
                                .substr(std::string("group ").size());
}

std::string fieldLine(const ExplainedPart& part, std::size_t offset)
{
    return part.place.length == 1
               ? part.field
               : fmt::format("{}, byte {} of {} from {:#08x}", part.field,
                             offset - part.place.offset, part.place.length, part.place.offset);
}

// Compares names as they are displayed.
std::vector<const NamedPlace*> placesOf(const ExplainedFile& file, const std::string& name)
{
    std::vector<const NamedPlace*> found;
    for (const NamedPlace& place : file.explanation.names) {
        if (text::toUtf8(place.name) == text::toUtf8(name)) {
            found.push_back(&place);
        }
    }
    return found;
}

} // namespace

std::string explainByte(const ExplainedFile& file, const std::string& word)
{
    const std::size_t offset = offsetIn(file, word);
    const ExplainedPart& part = partAt(file, offset);
    const auto byte = static_cast<unsigned char>(file.bytes[offset]);
    return line("byte", fmt::format("{0:#04x} ({0}) at {1:#08x} ({1})", byte, offset)) +
           line("group", groupLine(file, part)) + line("record", part.subject) +
           line("field", fieldLine(part, offset)) +
           line("bytes", part.place.length <= 16 ? hexOfPart(file, part) : "") +
           line("value", valueOfPart(part)) + line("meaning", part.meaning) +
           line("read", part.isRead ? "yes" : "no");
}

std::string explainName(const ExplainedFile& file, const std::string& name)
{
    const auto found = placesOf(file, name);
    if (found.empty()) {
        std::set<std::string> names;
        for (const NamedPlace& place : file.explanation.names) {
            names.insert(text::toUtf8(place.name));
        }
        throw Failure(Origin::Request, file.name,
                      "No parameter, channel or text is called \"" + name + "\"" +
                          text::didYouMean(name, {names.begin(), names.end()}));
    }
    text::TextTable table({"What", "Group", "Offset", "Bytes"});
    for (const NamedPlace* place : found) {
        table.add({place->what, text::hexOf(place->place.group, 4),
                   fmt::format("{0:#08x} ({0})", place->place.offset),
                   std::to_string(place->place.length)});
    }
    return table.text();
}

} // namespace mxtool
