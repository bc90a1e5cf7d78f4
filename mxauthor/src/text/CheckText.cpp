#include "mxauthor/CheckText.h"

#include "GroupWords.h"
#include "SourceErrors.h"
#include "mxauthor/SourceMap.h"

#include <devices/parser/mx/HexText.h>
#include <text/Windows1252.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace mxauthor {

namespace {

// The group's key in the text form.
std::string shownGroup(std::uint16_t id)
{
    const std::string word = groupWord(id);
    return word == rawWord ? "group " + devices::parser::mx::u16AsHex(id) : word;
}

std::string shownText(const Finding& finding)
{
    std::string text = finding.text;
    if (!finding.subject.empty()) {
        text = finding.subject + ": " + text;
    } else if (finding.inGroup) {
        text = shownGroup(finding.place.group) + ": " + text;
    }
    return text::windows1252ToUtf8(text);
}

std::string hintOf(const Finding& finding)
{
    const std::string key = "{key}";
    std::string hint = finding.rule->hint;
    const std::size_t at = hint.find(key);
    return at == std::string::npos ? hint
                                   : hint.replace(at, key.size(), groupWord(finding.place.group));
}

bool isEarlier(const TextFinding& a, const TextFinding& b)
{
    return std::tie(a.where.line, a.where.column) < std::tie(b.where.line, b.where.column);
}

// The findings of a text, each once for all repetitions of a line.
class FindingsOfText
{
public:
    void add(TextFinding finding, const Repetition& repetition)
    {
        const Key key{finding.rule, finding.where.lineStart, finding.where.column};
        std::vector<std::size_t>& indices = indicesAt[key];
        const bool isKnown = repetition.count != 0 &&
                             std::any_of(indices.begin(), indices.end(), [&](std::size_t index) {
                                 return repetitions[index].add(repetition);
                             });
        if (isKnown) {
            return;
        }
        indices.push_back(findings.size());
        repetitions.emplace_back().add(repetition);
        findings.push_back(std::move(finding));
    }

    std::vector<TextFinding> inOrder() &&
    {
        for (std::size_t i = 0; i < findings.size(); ++i) {
            findings[i].where.text += repetitions[i].text();
            findings[i].finding.text += repetitions[i].text();
        }
        std::stable_sort(findings.begin(), findings.end(), isEarlier);
        return std::move(findings);
    }

private:
    using Key = std::tuple<const CheckRule*, std::size_t, std::size_t>;

    std::vector<TextFinding> findings;
    std::vector<Repetitions> repetitions;              // of each finding
    std::map<Key, std::vector<std::size_t>> indicesAt; // several where one repetition has several
};

} // namespace

std::vector<TextFinding> checkText(const std::string& source, const BuildResult& built)
{
    const Bytes bytes = writeMxFile(built.file);
    const SourceMap map(source, built);
    FindingsOfText findings;
    for (const Finding& finding : check({bytes.begin(), bytes.end()})) {
        findings.add({finding.rule, map.of(finding, shownText(finding)), hintOf(finding), finding},
                     map.repetitionOf(finding));
    }
    return std::move(findings).inOrder();
}

bool isRefused(const std::vector<TextFinding>& findings)
{
    return std::any_of(findings.begin(), findings.end(),
                       [](const TextFinding& finding) { return isRefusal(finding.finding); });
}

} // namespace mxauthor
