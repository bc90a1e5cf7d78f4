#include "mxmodule/Build.h"

#include "ExpectedKind.h"
#include "ProcessParser.h"
#include "TextBuild.h"
#include "check/FileCheck.h"

#include <mxmodule/FileKind.h>

#include <mxauthor/CheckText.h>

#include <algorithm>
#include <iterator>

namespace mxmodule {

namespace {

constexpr const char* expectedText = "the text form of an mx file";

void requireText(const std::string& name, const std::string& content)
{
    if (kindOf(content) == FileKind::MxFile) {
        throw Failure(Origin::Input, name, "This is an mx file already, expected its text form",
                      "mxtool dump FILE -o FILE.yaml writes the text form of an mx file");
    }
    if (content.empty()) {
        throw Failure(Origin::Input, name,
                      std::string("The file is empty, expected ") + expectedText,
                      "mxtool new writes the text of a new module");
    }
    requireModule(name, content, expectedText);
}

std::vector<Finding> withoutDetails(const std::vector<CheckFinding>& found)
{
    std::vector<Finding> findings;
    std::transform(found.begin(), found.end(), std::back_inserter(findings),
                   [](const CheckFinding& one) { return one.finding; });
    return findings;
}

} // namespace

BuiltFile build(const std::string& content, const std::string& name, const BuildOptions& options)
{
    requireText(name, content);
    const mxauthor::BuildResult result = buildText(name, content, options.observer);
    if (!result.errors.empty()) {
        return {{}, errorsInText(name, content, result.errors, expectedText)};
    }
    const TextCheck checked = checkOfText(name, content, result);
    BuiltFile made;
    made.findings = withoutDetails(checked.findings);
    made.isRefused = checked.isRefused;
    if (!made.isRefused || options.force) {
        made.bytes = bytesOf(result);
    }
    return made;
}

} // namespace mxmodule
