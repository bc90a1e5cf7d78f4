#include "explain/ExplanationParts.h"

#include <text/Hexadecimal.h>
#include <text/NearestWords.h>
#include <text/ShownText.h>
#include <text/TextTable.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace mxmodule {

namespace {

constexpr std::size_t mostBytesInLine = 16;

std::string line(const char* what, const std::string& text)
{
    return text.empty() ? "" : fmt::format("{:<8} {}\n", what, text::forTerminal(text));
}

std::string groupLine(const Explanation& explanation, const ExplainedPart& part)
{
    return part.group
               ? headingOf(explanation.groups()[*part.group]).substr(std::string("group ").size())
               : "none";
}

std::string fieldLine(const ExplainedPart& part, std::uint64_t offset)
{
    return part.length == 1 ? part.field
                            : fmt::format("{}, byte {} of {} from {:#08x}", part.field,
                                          offset - part.offset, part.length, part.offset);
}

[[noreturn]] void rejectName(const Explanation& explanation, const std::string& name)
{
    std::set<std::string> names;
    for (const NamedPlace& place : explanation.names()) {
        names.insert(place.name);
    }
    throw Failure(Origin::Request, explanation.file().name(),
                  "No parameter, channel or text is called \"" + name + "\"" +
                      text::didYouMean(name, {names.begin(), names.end()}));
}

} // namespace

std::string Explanation::at(std::uint64_t offset) const
{
    const ExplainedPart& part = partAt(offset);
    const auto byte = static_cast<unsigned char>(file().bytes()[offset]);
    return line("byte", fmt::format("{0:#04x} ({0}) at {1:#08x} ({1})", byte, offset)) +
           line("group", groupLine(*this, part)) + line("record", part.subject) +
           line("field", fieldLine(part, offset)) +
           line("bytes", part.length <= mostBytesInLine ? hexOfPart(*this, part) : "") +
           line("value", valueOfPart(part)) + line("meaning", part.meaning) +
           line("read", part.isRead ? "yes" : "no");
}

// Compares names as they are displayed.
std::string Explanation::where(const std::string& name) const
{
    text::TextTable table({"What", "Group", "Offset", "Bytes"});
    bool isFound = false;
    for (const NamedPlace& place : names()) {
        if (place.name == text::toUtf8(name)) {
            isFound = true;
            table.add({place.what, text::hexOf(place.group, 4),
                       fmt::format("{0:#08x} ({0})", place.offset), std::to_string(place.length)});
        }
    }
    if (!isFound) {
        rejectName(*this, name);
    }
    return table.text();
}

} // namespace mxmodule
