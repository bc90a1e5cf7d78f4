#include "text/YamlTree.h"

#include <mxauthor/YamlDocument.h>
#include <text/Beginning.h>
#include <text/Utf8.h>
#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string_view>
#include <utility>

namespace mxstation {

namespace {

// Finds lines and columns in a text.
class Lines
{
public:
    explicit Lines(const std::string& source) : text(source)
    {
        // The YAML reader does not count a byte order mark.
        starts[0] = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
        lastOffset = starts[0];
        for (std::size_t end = text.find('\n'); end != std::string::npos;
             end = text.find('\n', end + 1)) {
            starts.push_back(end + 1);
        }
    }

    // The YAML reader counts columns in bytes.
    SourcePlace placeOf(const YAML::Mark& mark)
    {
        const std::size_t line = lineOf(mark);
        return {line + 1, charactersUntil(line, offsetOf(mark)) + 1, starts[line]};
    }

    std::size_t offsetOf(const YAML::Mark& mark) const
    {
        return std::min(starts[lineOf(mark)] + columnOf(mark), text.size());
    }

    // The dash of the item of `list` that is nothing and was found at `mark`: the YAML reader gives
    // the place of what follows. Empty for an item that says that it is nothing, "~", and for the
    // dash at the end of the text.
    std::optional<SourcePlace> dashBefore(const YAML::Mark& mark, const SourcePlace& list) const
    {
        const std::size_t column = list.column - 1;
        std::size_t line = lineOf(mark);
        const bool isEnd = offsetOf(mark) + 1 >= text.size();
        if (line == 0 || (isDashAt(line, column) && (columnOf(mark) > column || isEnd))) {
            return std::nullopt;
        }
        do {
            --line;
        } while (line > 0 && isWithoutContent(line));
        return isDashAt(line, column)
                   ? std::optional(SourcePlace{line + 1, column + 1, starts[line]})
                   : std::nullopt;
    }

private:
    // Whether the line begins with a dash in this column.
    bool isDashAt(std::size_t line, std::size_t column) const
    {
        const std::size_t first = text.find_first_not_of(' ', starts[line]);
        return first == starts[line] + column && text[first] == '-';
    }

    // Whether the line is blank or a comment.
    bool isWithoutContent(std::size_t line) const
    {
        const std::size_t first = text.find_first_not_of(" \t\r", starts[line]);
        return first == std::string::npos || text[first] == '\n' || text[first] == '#';
    }

    // The characters of a line that are before `offset`. They are counted from the place asked for
    // last: a text of a million values may be one line.
    std::size_t charactersUntil(std::size_t line, std::size_t offset)
    {
        if (line != lastLine) {
            lastLine = line;
            lastOffset = starts[line];
            lastCount = 0;
        }
        if (offset < lastOffset) {
            lastCount -= charactersBetween(offset, lastOffset);
        } else {
            lastCount += charactersBetween(lastOffset, offset);
        }
        lastOffset = offset;
        return lastCount;
    }

    std::size_t charactersBetween(std::size_t begin, std::size_t end) const
    {
        return text::characterCount(std::string_view(text).substr(begin, end - begin));
    }

    std::size_t lineOf(const YAML::Mark& mark) const
    {
        return std::min(static_cast<std::size_t>(std::max(mark.line, 0)), starts.size() - 1);
    }

    static std::size_t columnOf(const YAML::Mark& mark)
    {
        return static_cast<std::size_t>(std::max(mark.column, 0));
    }

    const std::string& text;
    std::vector<std::size_t> starts{0};
    std::size_t lastLine = 0;
    std::size_t lastOffset = 0;
    std::size_t lastCount = 0;
};

// Builds the tree from the events of the YAML reader. The reader's own tree has no ends of values,
// and an alias within its value makes it endless.
class TreeBuilder : public YAML::EventHandler
{
public:
    explicit TreeBuilder(const std::string& source) : lines(source) {}

    void OnDocumentStart(const YAML::Mark& /*mark*/) override {}
    void OnDocumentEnd() override {}

    void OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) override
    {
        const auto node = made(YamlNode::Kind::Nothing, mark, anchor);
        if (!open.empty() && open.back()->kind == YamlNode::Kind::List && !open.back()->isFlow) {
            if (const auto dash = lines.dashBefore(mark, open.back()->place)) {
                node->place = *dash;
                node->offset = dash->lineStart + dash->column - 1;
            }
        }
        add(node, node->offset);
    }

    void OnAlias(const YAML::Mark& mark, YAML::anchor_t anchor) override
    {
        const auto found = anchored.find(anchor);
        const bool isOpen = std::any_of(open.begin(), open.end(), [&](const auto& outer) {
            return found != anchored.end() && outer == found->second;
        });
        if ((isOpen || found == anchored.end()) && !error) {
            error = YamlError{lines.placeOf(mark),
                              "this alias is within the value that it names, which has no end"};
        }
        if (isOpen || found == anchored.end()) {
            add(made(YamlNode::Kind::Nothing, mark, 0), lines.offsetOf(mark));
        } else {
            found->second->aliases.push_back({lines.placeOf(mark), lines.offsetOf(mark)});
            add(found->second, lines.offsetOf(mark));
        }
    }

    void OnScalar(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                  const std::string& value) override
    {
        const auto node = made(YamlNode::Kind::Scalar, mark, anchor);
        node->text = value;
        node->isWord = tag == "!" || tag == "tag:yaml.org,2002:str";
        add(node, node->offset);
    }

    void OnSequenceStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t anchor,
                         YAML::EmitterStyle::value style) override
    {
        const auto node = made(YamlNode::Kind::List, mark, anchor);
        node->isFlow = style == YAML::EmitterStyle::Flow;
        begin(node);
    }

    void OnSequenceEnd() override { end(); }

    void OnMapStart(const YAML::Mark& mark, const std::string& /*tag*/, YAML::anchor_t anchor,
                    YAML::EmitterStyle::value style) override
    {
        const auto node = made(YamlNode::Kind::Map, mark, anchor);
        node->isFlow = style == YAML::EmitterStyle::Flow;
        begin(node);
    }

    void OnMapEnd() override { end(); }

    YamlNodeP root;
    std::optional<YamlError> error;

private:
    using NodeP = std::shared_ptr<YamlNode>;

    NodeP made(YamlNode::Kind kind, const YAML::Mark& mark, YAML::anchor_t anchor)
    {
        auto node = std::make_shared<YamlNode>();
        node->kind = kind;
        node->place = lines.placeOf(mark);
        node->offset = lines.offsetOf(mark);
        if (anchor != 0) {
            anchored[anchor] = node;
        }
        return node;
    }

    void begin(const NodeP& node)
    {
        add(node, node->offset);
        open.push_back(node);
        keys.emplace_back();
    }

    void end()
    {
        open.pop_back();
        keys.pop_back();
    }

    // `start` is where it is used, by an alias too.
    void add(const NodeP& node, std::size_t start)
    {
        if (open.empty()) {
            root = node;
        } else if (open.back()->kind == YamlNode::Kind::List) {
            open.back()->items.push_back(node);
            open.back()->starts.push_back(start);
        } else if (keys.back() == nullptr) {
            keys.back() = node;
        } else {
            open.back()->members.emplace_back(std::exchange(keys.back(), nullptr), node);
            open.back()->starts.push_back(start);
        }
    }

    Lines lines;
    std::vector<NodeP> open;
    std::vector<NodeP> keys; // of the open maps: the key whose value comes next
    std::map<YAML::anchor_t, NodeP> anchored;
};

} // namespace

std::string YamlNode::shown() const
{
    switch (kind) {
    case Kind::Scalar:
        return "\"" + text::abbreviated(text) + "\"";
    case Kind::List:
        return "a list";
    case Kind::Map:
        return "a map";
    default:
        return "nothing";
    }
}

YamlTree readYamlTree(const std::string& source)
{
    if (const auto mistake = mxauthor::findYamlMistake(source, "a file describes one station")) {
        return {nullptr,
                YamlError{{mistake->line, mistake->column, mistake->lineStart}, mistake->text}};
    }
    std::istringstream stream(source);
    YAML::Parser parser(stream);
    TreeBuilder builder(source);
    parser.HandleNextDocument(builder);
    if (builder.error) {
        return {nullptr, builder.error};
    }
    if (!builder.root) { // a text of comments alone
        const auto nothing = std::make_shared<YamlNode>();
        nothing->place = {1, 1, 0};
        return {nothing, std::nullopt};
    }
    return {builder.root, std::nullopt};
}

} // namespace mxstation
