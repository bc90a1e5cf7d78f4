#include "text/EditedText.h"

#include "text/EditErrors.h"
#include "text/StationErrors.h"

#include <fmt/format.h>
#include <mxauthor/Utf8.h>

#include <utility>

namespace mxstation {

namespace {

using mxmodule::Failure;
using mxmodule::Severity;

constexpr const char* inText = "change the text of the station itself";

// The tree of `source`; with an error if it is not UTF-8.
YamlTree treeOf(const std::string& source)
{
    if (const auto wrong = mxauthor::findNonUtf8(source)) {
        return {nullptr, YamlError{{wrong->line, wrong->column, wrong->lineStart}, wrong->text}};
    }
    return readYamlTree(source);
}

std::optional<YamlError> errorOf(const YamlTree& tree)
{
    using Kind = YamlNode::Kind;
    if (tree.error) {
        return tree.error;
    }
    if (tree.root->kind != Kind::Map && tree.root->kind != Kind::Nothing) {
        return YamlError{tree.root->place, fmt::format("found {}, expected a map with \"modules\"",
                                                       tree.root->shown())};
    }
    const YamlNode* const list = memberCalled(*tree.root, "modules");
    if (list != nullptr && list->kind != Kind::List && list->kind != Kind::Nothing) {
        return YamlError{list->place,
                         fmt::format("found {}, expected a list of modules", list->shown())};
    }
    if (list != nullptr && !list->aliases.empty()) {
        return usedAgain(*list, "the row is changed in one place").front();
    }
    return std::nullopt;
}

} // namespace

EditedText::EditedText(const Station& edited, std::string source)
    : station(edited), text(std::move(source)), tree(treeOf(text))
{
    if (const auto error = errorOf(tree)) {
        throw Failure(
            findingAt(station.file, text, error->place, Severity::Error, error->text, inText));
    }
}

const YamlNode* EditedText::list() const
{
    const YamlNode* const modules = memberCalled(*tree.root, "modules");
    return modules == nullptr || modules->kind != YamlNode::Kind::List ? nullptr : modules;
}

void EditedText::require(const std::vector<YamlError>& errors) const
{
    std::vector<mxmodule::Finding> findings;
    findings.reserve(errors.size());
    for (const YamlError& error : errors) {
        findings.push_back(
            findingAt(station.file, text, error.place, Severity::Error, error.text, inText));
    }
    if (!findings.empty()) {
        throw Failure(findings);
    }
}

void EditedText::reject(const SourcePlace& place) const
{
    throw Failure(findingAt(station.file, text, place, Severity::Error,
                            "this cannot be changed as it is written", inText));
}

void EditedText::take(std::string changed, const SourcePlace& place)
{
    YamlTree next = treeOf(changed);
    if (errorOf(next)) {
        reject(place);
    }
    text = std::move(changed);
    tree = std::move(next);
}

} // namespace mxstation
