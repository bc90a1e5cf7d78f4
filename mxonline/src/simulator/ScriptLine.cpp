#include "simulator/ScriptLine.h"

#include <fmt/format.h>
#include <mxmodule/Finding.h>
#include <mxonline/TimeText.h>
#include <text/Beginning.h>
#include <text/Utf8.h>

#include <algorithm>
#include <string_view>

namespace mxonline {

namespace {

using Words = std::vector<ScriptWord>;

constexpr const char* blanks = " \t";
constexpr const char* forms = "NAME = VALUE, ramp NAME FROM TO in TIME, sleep TIME, show NAME, "
                              "repeat or # COMMENT";

std::size_t columnAt(const std::string& line, std::size_t index)
{
    return 1 + text::characterCount(std::string_view(line).substr(0, index));
}

// The characters from `begin` to `end` without the blanks around them.
ScriptWord wordIn(const std::string& line, std::size_t begin, std::size_t end)
{
    begin = std::min(line.find_first_not_of(blanks, begin), end);
    while (end > begin && (line[end - 1] == ' ' || line[end - 1] == '\t')) {
        --end;
    }
    return {line.substr(begin, end - begin), columnAt(line, begin)};
}

struct SplitLine
{
    std::string line; // without comment and end of line
    Words words;
    std::vector<std::size_t> ends; // of the words
};

std::string withoutComment(std::string line)
{
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    for (std::size_t at = line.find('#'); at != std::string::npos; at = line.find('#', at + 1)) {
        const bool begins = line.find_first_not_of(blanks) == at;
        const bool isApart = at > 0 && (line[at - 1] == ' ' || line[at - 1] == '\t') &&
                             (at + 1 == line.size() || line[at + 1] == ' ');
        if (begins || isApart) {
            return line.substr(0, at);
        }
    }
    return line;
}

SplitLine splitOf(const std::string& stated)
{
    SplitLine split;
    split.line = withoutComment(stated);
    std::size_t begin = split.line.find_first_not_of(blanks);
    while (begin != std::string::npos) {
        const std::size_t end =
            std::min(split.line.find_first_of(blanks, begin), split.line.size());
        split.words.push_back({split.line.substr(begin, end - begin), columnAt(split.line, begin)});
        split.ends.push_back(end);
        begin = split.line.find_first_not_of(blanks, end);
    }
    return split;
}

std::chrono::milliseconds timeIn(const ScriptWord& word)
{
    try {
        return timeOf(word.text);
    } catch (const mxmodule::Failure& failure) {
        throw ScriptError(word.column, failure.reason().text);
    }
}

ScriptLine sleepOf(const SplitLine& split)
{
    if (split.words.size() != 2) {
        throw ScriptError(split.words[0].column, "expected \"sleep TIME\", such as sleep 100ms");
    }
    ScriptLine line;
    line.action = ScriptAction::Sleep;
    line.time = timeIn(split.words[1]);
    return line;
}

// The name of the channel may contain blanks: the rest is counted from the end.
ScriptLine rampOf(const SplitLine& split)
{
    const Words& words = split.words;
    std::size_t count = words.size();
    ScriptLine line;
    line.action = ScriptAction::Ramp;
    if (count > 2 && words[count - 2].text == "step") {
        line.step = timeIn(words[count - 1]);
        count -= 2;
    }
    if (count < 6 || words[count - 2].text != "in") {
        throw ScriptError(words[0].column, "expected \"ramp NAME FROM TO in TIME [step TIME]\", "
                                           "such as ramp Level 0 1000 in 5s");
    }
    line.time = timeIn(words[count - 1]);
    if (line.step.count() == 0) {
        throw ScriptError(words.back().column, "found a step of 0, expected at least 1ms");
    }
    line.last = words[count - 3];
    line.value = words[count - 4];
    line.name = wordIn(split.line, split.ends[0], split.ends[count - 5]);
    return line;
}

ScriptLine showOf(const SplitLine& split)
{
    ScriptLine line;
    line.action = ScriptAction::Show;
    if (split.words.size() > 1) {
        line.name = wordIn(split.line, split.ends[0], split.line.size());
    }
    return line;
}

ScriptLine assignmentOf(const SplitLine& split)
{
    const std::size_t sign = split.line.rfind('=');
    if (sign == std::string::npos) {
        throw ScriptError(split.words[0].column, fmt::format("found \"{}\", expected {}",
                                                             text::abbreviated(split.line), forms));
    }
    ScriptLine line;
    line.action = ScriptAction::Set;
    line.name = wordIn(split.line, 0, sign);
    line.value = wordIn(split.line, sign + 1, split.line.size());
    if (line.name.text.empty() || line.value.text.empty()) {
        throw ScriptError(columnAt(split.line, sign),
                          fmt::format("the {} is missing, expected NAME = VALUE",
                                      line.value.text.empty() ? "value" : "name"));
    }
    return line;
}

} // namespace

ScriptLine scriptLineOf(const std::string& line)
{
    const SplitLine split = splitOf(line);
    if (split.words.empty()) {
        return {};
    }
    const std::string& first = split.words[0].text;
    const bool hasSign = split.line.find('=') != std::string::npos;
    if (first == "ramp" && split.words.size() > 1 && !hasSign) {
        return rampOf(split);
    }
    if (first == "show" && !hasSign) {
        return showOf(split);
    }
    if (first == "sleep" && !hasSign) {
        return sleepOf(split);
    }
    if (first == "repeat" && split.words.size() == 1) {
        ScriptLine repeat;
        repeat.action = ScriptAction::Repeat;
        return repeat;
    }
    return assignmentOf(split);
}

} // namespace mxonline
