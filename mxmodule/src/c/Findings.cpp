#include "c/FindingList.h"

#include <mxmodule/c/CallFromC.h>
#include <text/JsonText.h>
#include <text/Utf8.h>

namespace mxmodule {

namespace {

const char* originName(Origin origin)
{
    switch (origin) {
    case Origin::Request:
        return "request";
    case Origin::Input:
        return "input";
    default:
        return "output";
    }
}

text::Json findingJson(const Finding& finding)
{
    return {{"severity", severityName(finding.severity)},
            {"origin", originName(finding.origin)},
            {"place", text::toUtf8(finding.place)},
            {"text", text::toUtf8(finding.text)},
            {"hint", text::toUtf8(finding.hint)},
            {"accepted", text::textsJson(finding.accepted)},
            {"excerpt", text::toUtf8(finding.excerpt)}};
}

} // namespace

text::Json findingList(const std::vector<Finding>& findings)
{
    return text::listJson(findings, findingJson);
}

std::string findingsJson(const std::vector<Finding>& findings)
{
    return text::jsonText({{"schema", text::jsonSchema("mxmodule.findings", 1)},
                           {"findings", findingList(findings)}});
}

} // namespace mxmodule
