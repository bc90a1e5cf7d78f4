#include "YamlMistakes.h"

#include "YamlTokens.h"

#include <text/InvisibleCharacters.h>
#include <yaml-cpp/depthguard.h>

#include <algorithm>
#include <optional>

namespace mxauthor {

namespace {

using Lines = std::vector<std::string>;
using Found = std::optional<YamlMistake>;

YAML::Mark markAt(std::size_t line, std::size_t column)
{
    YAML::Mark mark;
    mark.pos = 0;
    mark.line = static_cast<int>(line);
    mark.column = static_cast<int>(column);
    return mark;
}

std::size_t indentOf(const std::string& line)
{
    return std::min(line.find_first_not_of(' '), line.size());
}

bool isBlank(const std::string& line)
{
    const std::size_t first = line.find_first_not_of(" \t\r");
    return first == std::string::npos || line[first] == '#';
}

// The number of the last line with content before `line`; `line` itself if there is none.
std::size_t lineBefore(const Lines& lines, std::size_t line)
{
    for (std::size_t i = line; i > 0; --i) {
        if (!isBlank(lines[i - 1])) {
            return i - 1;
        }
    }
    return line;
}

// A tab or another character that looks like a blank, among the blanks that a line begins with.
Found findWrongIndent(const Lines& lines, std::size_t number)
{
    const std::string& line = lines[number];
    const std::size_t indent = indentOf(line);
    if (indent < line.size() && line[indent] == '\t') {
        return YamlMistake{markAt(number, indent), "a tab in the indentation, blanks are expected"};
    }
    const text::InvisibleCharacter* const character = text::invisibleAt(line, indent);
    if (character == nullptr) {
        return std::nullopt;
    }
    return YamlMistake{markAt(number, indent),
                       std::string(character->name) + " in the indentation, blanks are expected"};
}

Found findOpenQuote(const YamlTokens& tokens)
{
    for (const QuotedText& quoted : tokens.quotes) {
        if (!quoted.isClosed || (quoted.lastLine != quoted.line && !quoted.endsEntry)) {
            return YamlMistake{markAt(quoted.line, quoted.column),
                               std::string("this quotation mark (") + quoted.mark +
                                   ") is not closed on its line"};
        }
    }
    return std::nullopt;
}

// Whether a line from the opening bracket to the failure begins as far left as that of the bracket.
bool isFollowedOutside(const Lines& lines, const OpenBracket& bracket, std::size_t failure)
{
    for (std::size_t i = bracket.line + 1; i <= failure; ++i) {
        if (!isBlank(lines[i]) && indentOf(lines[i]) <= indentOf(lines[bracket.line])) {
            return true;
        }
    }
    return false;
}

std::string closing(char open)
{
    return open == '{' ? "}" : "]";
}

Found findOpenBracket(const YamlTokens& tokens, const Lines& lines, std::size_t failure)
{
    const auto text = [](const OpenBracket& bracket) {
        return std::string("this \"") + bracket.character + "\" is not closed, \"" +
               closing(bracket.character) + "\" is missing";
    };
    if (tokens.mismatched) {
        const OpenBracket& bracket = *tokens.mismatched;
        return YamlMistake{markAt(bracket.line, bracket.column), text(bracket)};
    }
    for (const OpenBracket& bracket : tokens.open) {
        const bool isLast = bracket.line < failure && failure + 1 >= lines.size();
        if (isLast || isFollowedOutside(lines, bracket, failure)) {
            return YamlMistake{markAt(bracket.line, bracket.column), text(bracket)};
        }
    }
    return std::nullopt;
}

// The YAML reader takes a line without key for the beginning of the next line's key.
Found findLineWithoutKey(const Lines& lines, std::size_t number)
{
    const std::string& line = lines[number];
    const std::size_t first = indentOf(line);
    if (line.compare(first, 2, "//") == 0) {
        return YamlMistake{markAt(number, first), "a comment begins with #"};
    }
    if (line.find(": ") != std::string::npos || line[first] == '-' || line.back() == ':') {
        return std::nullopt;
    }
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) {
        return YamlMistake{markAt(number, first), "\"KEY: VALUE\" expected, there is no colon"};
    }
    return YamlMistake{markAt(number, colon), "a blank is missing after this colon"};
}

Found explainMapValue(const Lines& lines, const YAML::Mark& mark)
{
    const auto number = static_cast<std::size_t>(mark.line);
    const std::size_t before = lineBefore(lines, number);
    const auto column = std::min(static_cast<std::size_t>(mark.column), lines[number].size());
    const bool isFirstColon = lines[number].substr(0, column).find(": ") == std::string::npos;
    const std::size_t indent = indentOf(lines[number]);
    if (isFirstColon && before != number && indent > indentOf(lines[before])) {
        const std::size_t key = indentOf(lines[before]);
        if (lines[before].find(':') == std::string::npos && lines[before][key] != '-') {
            return YamlMistake{
                markAt(before, key),
                "\"KEY:\" expected, there is no colon, and the next line is indented "
                "as its value"};
        }
        return YamlMistake{markAt(number, indent),
                           "this line is indented by " + std::to_string(indent) +
                               ", the line above by " + std::to_string(indentOf(lines[before])) +
                               ": it continues the value of that line"};
    }
    if (isFirstColon && before != number) {
        return findLineWithoutKey(lines, before);
    }
    return YamlMistake{mark, "a second colon in one value: a text with a colon and a blank in it "
                             "needs quotation marks"};
}

// The indentation of a line before which the reader expected the block to continue.
Found explainBlockEnd(const Lines& lines, const YAML::Mark& mark)
{
    const auto number = static_cast<std::size_t>(mark.line);
    const std::size_t before = lineBefore(lines, number);
    const std::size_t indent = indentOf(lines[number]);
    if (indent >= lines[number].size() || before == number) {
        return std::nullopt;
    }
    if (indent != indentOf(lines[before])) {
        return YamlMistake{markAt(number, indent),
                           "this line is indented by " + std::to_string(indent) +
                               ", which is neither a level of the lines above nor a new one; the "
                               "line above has " +
                               std::to_string(indentOf(lines[before]))};
    }
    const bool isItem = lines[before].compare(indent, 2, "- ") == 0;
    return YamlMistake{markAt(number, indent),
                       isItem ? "the lines of this list begin with \"- \""
                              : "\"KEY: VALUE\" expected as in the line above"};
}

Found explainCharacter(const Lines& lines, const YAML::Mark& mark)
{
    const std::string& line = lines[static_cast<std::size_t>(mark.line)];
    const auto column = static_cast<std::size_t>(mark.column);
    static const std::string special = "%@`*&!|>";
    // The reader points at the name of an anchor, after its sign.
    for (const std::size_t at : {column, column - 1}) {
        if (at < line.size() && special.find(line[at]) != std::string::npos) {
            return YamlMistake{markAt(static_cast<std::size_t>(mark.line), at),
                               std::string("a text that begins with \"") + line[at] +
                                   "\" needs quotation marks"};
        }
    }
    return std::nullopt;
}

Found explainMessage(const Lines& lines, const YAML::Exception& failure)
{
    const std::string& message = failure.msg;
    if (message == "illegal map value") {
        return explainMapValue(lines, failure.mark);
    }
    if (message == "end of map not found" || message == "end of sequence not found") {
        return explainBlockEnd(lines, failure.mark);
    }
    if (message == "unknown token" || message == "the referenced anchor is not defined") {
        return explainCharacter(lines, failure.mark);
    }
    if (message == "end of map flow not found" || message == "end of sequence flow not found") {
        return YamlMistake{
            failure.mark,
            "entries between brackets are separated by commas, one is missing before this"};
    }
    return std::nullopt;
}

} // namespace

YamlMistake explainYamlFailure(const std::string& source, const YAML::Exception& failure)
{
    if (const auto* const deep = dynamic_cast<const YAML::DeepRecursion*>(&failure)) {
        return {failure.mark,
                std::to_string(deep->depth()) + " nested lists and maps, which is too many"};
    }
    YamlMistake general{failure.mark, "this is not YAML: " + failure.msg};
    const Lines lines = linesOf(source);
    if (failure.mark.is_null() || static_cast<std::size_t>(failure.mark.line) >= lines.size()) {
        return general;
    }
    const auto line = static_cast<std::size_t>(failure.mark.line);
    const YamlTokens tokens = tokensUpTo(lines, line);
    Found found = findWrongIndent(lines, line);
    found = found ? found : findWrongIndent(lines, lineBefore(lines, line));
    found = found ? found : findOpenQuote(tokens);
    found = found ? found : findOpenBracket(tokens, lines, line);
    found = found ? found : explainMessage(lines, failure);
    return found.value_or(general);
}

} // namespace mxauthor
