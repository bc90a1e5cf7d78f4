#include "SourceErrors.h"

#include "Integer.h"

#include <text/Beginning.h>
#include <text/ControlCharacters.h>
#include <text/InvisibleCharacters.h>
#include <text/Utf8.h>

#include <algorithm>
#include <tuple>

namespace mxauthor {

namespace {

// The line that starts here.
std::string lineAt(const std::string& source, std::size_t start)
{
    return source.substr(start, source.find('\n', start) - start);
}

// Typographic quotation marks do not quote in YAML: they become part of the value.
std::string quotesHint(const YAML::Node& node)
{
    static const char* const marks[] = {"\u201C", "\u201D", "\u201E", "\u2018", "\u2019", "\u201A"};
    const std::string text = node.IsScalar() ? node.Scalar() : "";
    const bool isQuoted =
        std::any_of(std::begin(marks), std::end(marks), [&text](const char* mark) {
            return text.compare(0, std::string(mark).size(), mark) == 0;
        });
    return isQuoted ? "; quotation marks of YAML are \" and '" : "";
}

// Where the character of this number starts.
std::size_t byteOfCharacter(const std::string& text, std::size_t number)
{
    std::size_t pos = 0;
    while (pos < text.size() && (number > 0 || text::continuesCharacter(text[pos]))) {
        number -= text::continuesCharacter(text[pos]) ? 0 : 1;
        ++pos;
    }
    return pos;
}

} // namespace

bool Repetitions::add(const Repetition& repetition)
{
    count = repetition.count;
    return numbers.insert(repetition.number).second;
}

std::string Repetitions::text() const
{
    if (count < 2 || numbers.empty()) {
        return "";
    }
    const std::string all = std::to_string(count);
    const std::string first = std::to_string(*numbers.begin());
    if (numbers.size() == count) {
        return count == 2 ? " (in both repetitions)" : " (in all " + all + " repetitions)";
    }
    if (numbers.size() == 1) {
        return " (in repetition " + first + " of " + all + ")";
    }
    return " (in " + std::to_string(numbers.size()) + " of " + all +
           " repetitions, first in repetition " + first + ")";
}

SourceErrors::SourceErrors(const std::string& source) : text(source)
{
    for (std::size_t pos = text.find('\n'); pos != std::string::npos;
         pos = text.find('\n', pos + 1)) {
        lineStarts.push_back(pos + 1);
    }
}

void SourceErrors::add(const YAML::Mark& mark, const std::string& what)
{
    constexpr std::size_t most = 100; // each may name everything that is accepted
    if (!append(mark, text::withInvisibleNamed(what))) {
        return; // the same for each line that a repeat wrote out
    }
    if (errors.size() == most) {
        isComplete = false;
        append(YAML::Mark::null_mark(), "stopped after 100 errors");
        throw TooManyErrors();
    }
}

void SourceErrors::add(const YAML::Node& node, const std::string& what)
{
    if (const Origin* const origin = originOf(node)) {
        addRepeated(origin->mark, origin->repetition, what + quotesHint(node));
    } else {
        add(node.Mark(), what + quotesHint(node));
    }
}

void SourceErrors::addInLine(const YAML::Node& line, const YAML::Node& node,
                             const std::string& what)
{
    const Origin* const origin = originOf(line);
    if (origin == nullptr) {
        add(node, what);
    } else {
        addRepeated(markOf(node), origin->repetition, what);
    }
}

void SourceErrors::addRepeated(const YAML::Mark& mark, const Repetition& repetition,
                               const std::string& what)
{
    const auto [place, isFirst] = repeated.try_emplace(mark.pos);
    place->second.add(repetition);
    if (isFirst) {
        add(mark, what);
    }
}

void SourceErrors::addCause(const YAML::Node& key, const YAML::Node& mapping,
                            const std::string& what)
{
    const std::size_t before = errors.size();
    add(key, what);
    if (errors.size() > before) {
        errors.back().order = markOf(mapping);
        errors.back().isCause = true;
    }
}

YAML::Node SourceErrors::madeFrom(const YAML::Node& made, const YAML::Mark& mark,
                                  const Repetition& repetition)
{
    YAML::Node tagged = made;
    tagged.SetTag(std::to_string(originsOfMade.size()));
    originsOfMade.push_back({mark, repetition});
    return tagged;
}

const SourceErrors::Origin* SourceErrors::originOf(const YAML::Node& node) const
{
    if (!node.Mark().is_null()) {
        return nullptr;
    }
    const auto number = parseInteger(node.Tag()); // only what was made has no mark, and a tag
    return number && number->magnitude < originsOfMade.size() ? &originsOfMade[number->magnitude]
                                                              : nullptr;
}

YAML::Mark SourceErrors::markOf(const YAML::Node& node) const
{
    const Origin* const origin = originOf(node);
    return origin == nullptr ? node.Mark() : origin->mark;
}

Repetition SourceErrors::repetitionOf(const YAML::Node& node) const
{
    const Origin* const origin = originOf(node);
    return origin == nullptr ? Repetition{} : origin->repetition;
}

bool SourceErrors::append(const YAML::Mark& mark, const std::string& what)
{
    const bool isNew = known.emplace(mark.pos, what).second;
    if (isNew) {
        errors.push_back({located(mark, what), mark.pos, mark});
    }
    return isNew;
}

SourceError SourceErrors::located(const YAML::Mark& mark, const std::string& what) const
{
    if (mark.is_null()) {
        return {1, 1, what, 0};
    }
    const std::size_t line = std::min(static_cast<std::size_t>(mark.line), lineStarts.size() - 1);
    // The YAML reader counts columns in bytes.
    const std::string before =
        lineAt(text, lineStarts[line]).substr(0, static_cast<std::size_t>(mark.column));
    return {line + 1, text::characterCount(before) + 1, what, lineStarts[line]};
}

bool SourceErrors::Entry::isReportedBefore(const Entry& other) const
{
    const auto key = [](const Entry& entry) {
        return std::make_tuple(entry.order.line, entry.order.column, !entry.isCause,
                               entry.error.line, entry.error.column);
    };
    return key(*this) != key(other) ? key(*this) < key(other) : error.text < other.error.text;
}

std::vector<SourceError> SourceErrors::sorted() const
{
    std::vector<Entry> ordered = errors;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const Entry& a, const Entry& b) { return a.isReportedBefore(b); });
    std::vector<SourceError> all;
    all.reserve(ordered.size());
    for (const Entry& entry : ordered) {
        all.push_back(entry.error);
        const auto repetitions = repeated.find(entry.position);
        if (isComplete && repetitions != repeated.end()) {
            all.back().text += repetitions->second.text();
        }
    }
    return all;
}

SourceExcerpt sourceExcerpt(const std::string& source, const SourceError& error)
{
    constexpr std::size_t before = 70; // characters shown at most before the caret
    constexpr std::size_t widest = 98;
    const std::string whole =
        text::repairedUtf8(lineAt(source, std::min(error.lineStart, source.size())));
    const std::size_t caret = error.column - 1;
    const std::size_t first = caret > before ? caret - before : 0;
    const std::size_t from = byteOfCharacter(whole, first);
    std::string line = whole.substr(from, byteOfCharacter(whole, first + widest) - from);
    for (char& c : line) {
        c = text::isControl(c) ? ' ' : c;
    }
    return {line, std::string(caret - first, ' ') + "^"};
}

} // namespace mxauthor
