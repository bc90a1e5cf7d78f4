#include "mxauthor/CheckText.h"

#include "GroupWords.h"
#include "mxauthor/CodePage.h"
#include "mxauthor/SourceMap.h"

#include <devices/parser/mx/HexText.h>

#include <algorithm>
#include <tuple>

namespace mxauthor {

namespace {

// What the author calls the group.
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
    return windows1252ToUtf8(text);
}

std::string hintOf(const Finding& finding)
{
    const std::string rule = finding.rule->name;
    if (rule == "image-unreadable") {
        return "the build compresses a file whose name ends in .svg";
    }
    return rule == "group-missing" ? "the key \"" + groupWord(finding.place.group) + "\" states it"
                                   : "";
}

bool isEarlier(const TextFinding& a, const TextFinding& b)
{
    return std::tie(a.where.line, a.where.column) < std::tie(b.where.line, b.where.column);
}

} // namespace

std::vector<TextFinding> checkText(const std::string& source, const BuildResult& built)
{
    const Bytes bytes = writeMxFile(built.file);
    const SourceMap map(source, built);
    std::vector<TextFinding> findings;
    for (const Finding& finding : check({bytes.begin(), bytes.end()})) {
        findings.push_back(
            {finding.rule, map.of(finding, shownText(finding)), hintOf(finding), finding});
    }
    std::stable_sort(findings.begin(), findings.end(), isEarlier);
    return findings;
}

bool isRefused(const std::vector<TextFinding>& findings)
{
    return std::any_of(findings.begin(), findings.end(), [](const TextFinding& finding) {
        return std::string(finding.rule->name) == "parser-refuses";
    });
}

} // namespace mxauthor
