#include "mxauthor/Check.h"

#include "check/Checks.h"

#include <devices/parser/mx/HexText.h>

namespace mxauthor {

namespace {

using ContentCheck = void (*)(const ModuleView&, Findings&);

constexpr ContentCheck contentChecks[] = {
    checkFileEnds,        checkGroups,     checkIdentity,
    checkEntries,         checkExtension,  checkParameterBlock,
    checkDataSizes,       checkTexts,      checkOptionLists,
    checkConversions,     checkParameters, checkParameterPlaces,
    checkParameterValues, checkChannels,   checkChannelNames,
    checkProcessImage,    checkImage};

} // namespace

const char* severityName(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    default:
        return "note";
    }
}

std::string describe(const Finding& finding)
{
    std::string where;
    if (finding.inGroup) {
        where = "group " + devices::parser::mx::u16AsHex(finding.place.group);
        if (!finding.subject.empty()) {
            where += ", " + finding.subject;
        }
        where += ": ";
    }
    return where + finding.text;
}

std::vector<Finding> check(const std::vector<char>& bytes)
{
    std::string failure;
    const MxFile file = readWholeGroups(bytes, &failure);
    Findings findings;
    if (failure.empty()) {
        const ModuleView module(file);
        for (const ContentCheck checkContent : contentChecks) {
            checkContent(module, findings);
        }
    } else {
        // What stands behind the failure is unknown, so nothing can be said to be missing.
        checkFraming(bytes, file, failure, findings);
    }
    checkWithParser(bytes, file, findings);
    return std::move(findings).sorted();
}

} // namespace mxauthor
