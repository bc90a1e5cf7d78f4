#include "RepeatedLines.h"

#include "Placeholders.h"
#include "Section.h"

#include <algorithm>

namespace mxauthor {

namespace {

constexpr std::uint64_t mostRepetitions = 256;   // the numbers of channels, 0 to 255
constexpr std::size_t mostCharacters = 0x100000; // far more than an mx file holds
constexpr std::size_t mostItems = 256;           // of a list within a line that is searched

using Pairs = std::vector<std::pair<YAML::Node, YAML::Node>>;

std::optional<YAML::Node> valueOf(const YAML::Node& line, const std::string& key)
{
    for (const auto& item : line) {
        if (item.first.IsScalar() && item.first.Scalar() == key) {
            return item.second;
        }
    }
    return std::nullopt;
}

bool isRepeated(const YAML::Node& line)
{
    return line.IsMap() && (valueOf(line, "repeat") || valueOf(line, "each"));
}

// Lines that are repeated together: one line with `repeat`, or a list under `each`.
struct Repeat
{
    YAML::Node count; // as stated
    std::uint32_t repetitions = 0;
    std::vector<Pairs> lines;
    std::vector<YAML::Mark> marks; // of the lines
};

class Writer
{
public:
    Writer(const YAML::Node& list, const RepeatableList& listForm, SourceErrors& sourceErrors)
        : form(listForm), errors(sourceErrors)
    {
        made.push_back(list);
    }

    void add(const YAML::Node& line);
    std::vector<YAML::Node> lines;

private:
    std::optional<Repeat> readRepeat(const YAML::Node& line);
    void readEach(const YAML::Node& line, const YAML::Node& each, Repeat& repeat);
    void addLine(const YAML::Node& line, Repeat& repeat);
    bool isDistinguishable(const Repeat& repeat, std::size_t line);
    bool fits(const Repeat& repeat);
    void writeOut(const Repeat& repeat);
    YAML::Node numbered(const YAML::Node& node, const Repetition& repetition, int depth);
    YAML::Node numberedText(const YAML::Node& node, const Repetition& repetition);
    YAML::Node newNode(const YAML::Node& node);

    const RepeatableList& form;
    SourceErrors& errors;
    std::size_t characters = 0; // of all lines that were written out
    YAML::Node made;            // holds the list of the text and every node that is made
};

void Writer::addLine(const YAML::Node& line, Repeat& repeat)
{
    Pairs pairs;
    for (const auto& [key, value] : readMapping(line, errors)) {
        if (key.Scalar() != "repeat") {
            pairs.emplace_back(key, value);
        }
    }
    repeat.lines.push_back(std::move(pairs));
    repeat.marks.push_back(line.Mark());
}

void Writer::readEach(const YAML::Node& line, const YAML::Node& each, Repeat& repeat)
{
    for (const auto& [key, value] : readMapping(line, errors)) {
        if (key.Scalar() != "repeat" && key.Scalar() != "each") {
            errors.add(key, "next to \"each\" only \"repeat\" is accepted: \"" + key.Scalar() +
                                "\" belongs in the lines under \"each\"");
        }
    }
    for (const YAML::Node& item : readSequence(each, errors)) {
        if (isRepeated(item)) {
            errors.add(item, "a repeat within a repeat, the lines under \"each\" are written out "
                             "once each");
            continue;
        }
        addLine(item, repeat);
    }
    if (each.IsSequence() && each.size() == 0) {
        errors.add(each, "there is nothing under \"each\" that could be repeated");
    }
}

std::optional<Repeat> Writer::readRepeat(const YAML::Node& line)
{
    const auto count = valueOf(line, "repeat");
    if (!count) {
        errors.add(line, "\"repeat\" is missing: how often the lines under \"each\" are written "
                         "out");
        return std::nullopt;
    }
    Repeat repeat;
    repeat.count = *count;
    const auto number = readInteger(*count, errors);
    if (number &&
        (number->negative || number->magnitude == 0 || number->magnitude > mostRepetitions)) {
        errors.add(*count, count->Scalar() + " is out of range, 1 to " +
                               std::to_string(mostRepetitions) + " is accepted");
    } else if (number) {
        repeat.repetitions = static_cast<std::uint32_t>(number->magnitude);
    }
    if (const auto each = valueOf(line, "each")) {
        readEach(line, *each, repeat);
    } else {
        addLine(line, repeat);
    }
    return repeat.repetitions == 0 ? std::nullopt : std::optional(repeat);
}

bool holdsPlaceholder(const YAML::Node& node)
{
    if (node.IsScalar()) {
        return hasPlaceholder(node.Scalar());
    }
    return node.IsMap() && std::any_of(node.begin(), node.end(), [](const auto& item) {
               return item.second.IsScalar() && hasPlaceholder(item.second.Scalar());
           });
}

// Whether the repetitions of a line can be distinguished. The number identifies a channel without a
// name; one with the name "-" is hidden.
bool Writer::isDistinguishable(const Repeat& repeat, std::size_t line)
{
    std::optional<YAML::Node> name;
    bool isDistinct = false;
    for (const auto& [key, value] : repeat.lines[line]) {
        if (key.Scalar() == "name") {
            name = value;
        }
        const bool distinguishes = std::find(form.distinguishing.begin(), form.distinguishing.end(),
                                             key.Scalar()) != form.distinguishing.end();
        isDistinct = isDistinct || (distinguishes && holdsPlaceholder(value));
    }
    if (isDistinct || repeat.repetitions == 1 || !name ||
        (name->IsScalar() && name->Scalar() == "-")) {
        return true;
    }
    const std::string shown = name->IsScalar() ? name->Scalar() : "NAME";
    errors.add(*name, "all " + std::to_string(repeat.repetitions) + " " + form.what +
                          " would have this name: put the number into it, such as \"" + shown +
                          " <n>\"");
    return false;
}

bool Writer::fits(const Repeat& repeat)
{
    const std::size_t count = repeat.repetitions * repeat.lines.size();
    if (repeat.lines.size() > form.most || lines.size() + count > form.most) {
        errors.add(repeat.count, std::to_string(repeat.repetitions) + " times " +
                                     std::to_string(repeat.lines.size()) + " lines are too many " +
                                     form.what + ": a group holds " + std::to_string(form.most) +
                                     " at most");
        return false;
    }
    return true;
}

// A node without memory of its own: otherwise each one would merge the memory of all nodes of the
// text when one of them is put into it, in quadratic time.
YAML::Node Writer::newNode(const YAML::Node& node)
{
    made.push_back(node);
    return node;
}

YAML::Node Writer::numberedText(const YAML::Node& node, const Repetition& repetition)
{
    characters += node.Scalar().size();
    if (!hasPlaceholder(node.Scalar())) {
        return node;
    }
    if (const auto wrong = wrongPlaceholder(node.Scalar())) {
        errors.add(node, *wrong + " is not a placeholder (accepted: <n>, <n-1>, <n+1>, <2*n>, "
                                  "<2*n+1> with other numbers)");
        return node;
    }
    const std::string text = withNumbers(node.Scalar(), repetition.number);
    return errors.madeFrom(newNode(YAML::Node(text)), node.Mark(), repetition);
}

// Searches no deeper than a list or mapping within a line: there is nothing deeper.
YAML::Node Writer::numbered(const YAML::Node& node, const Repetition& repetition, int depth)
{
    if (node.IsScalar()) {
        return numberedText(node, repetition);
    }
    if (depth == 0 || node.size() > mostItems || !(node.IsSequence() || node.IsMap())) {
        return node;
    }
    const auto type = node.IsMap() ? YAML::NodeType::Map : YAML::NodeType::Sequence;
    YAML::Node copy = newNode(YAML::Node(type));
    for (const auto& item : node) {
        if (node.IsMap()) {
            copy.force_insert(item.first, numbered(item.second, repetition, depth - 1));
        } else {
            copy.push_back(numbered(item, repetition, depth - 1));
        }
    }
    return errors.madeFrom(copy, node.Mark(), repetition);
}

void Writer::writeOut(const Repeat& repeat)
{
    for (std::uint32_t n = 1; n <= repeat.repetitions; ++n) {
        const Repetition repetition{n, repeat.repetitions};
        for (std::size_t i = 0; i < repeat.lines.size(); ++i) {
            YAML::Node line = newNode(YAML::Node(YAML::NodeType::Map));
            for (const auto& [key, value] : repeat.lines[i]) {
                line.force_insert(key, numbered(value, repetition, 1));
            }
            lines.push_back(errors.madeFrom(line, repeat.marks[i], repetition));
            if (characters > mostCharacters) {
                errors.add(repeat.count, "the repeated lines are longer than any mx file");
                return;
            }
        }
    }
}

void Writer::add(const YAML::Node& line)
{
    if (!isRepeated(line)) {
        lines.push_back(line);
        return;
    }
    const auto repeat = readRepeat(line);
    if (!repeat || !fits(*repeat)) {
        return;
    }
    bool isClear = true;
    for (std::size_t i = 0; i < repeat->lines.size(); ++i) {
        isClear = isDistinguishable(*repeat, i) && isClear;
    }
    if (isClear) {
        writeOut(*repeat);
    }
}

} // namespace

std::vector<YAML::Node> writtenOutLines(const YAML::Node& list, const RepeatableList& form,
                                        SourceErrors& errors)
{
    Writer writer(list, form, errors);
    for (const YAML::Node& line : readSequence(list, errors)) {
        writer.add(line);
    }
    return std::move(writer.lines);
}

} // namespace mxauthor
