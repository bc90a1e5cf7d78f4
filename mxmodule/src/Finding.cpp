#include "mxmodule/Finding.h"

#include <utility>

namespace mxmodule {

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

Failure::Failure(Finding finding) : std::runtime_error(finding.text)
{
    all.push_back(std::move(finding));
}

Failure::Failure(std::vector<Finding> findings)
    : std::runtime_error(findings.back().text), all(std::move(findings))
{}

Failure::Failure(Origin origin, const std::string& place, const std::string& text,
                 const std::string& hint)
    : Failure(Finding{Severity::Error, place, text, hint, origin})
{}

Failure::~Failure() = default;

} // namespace mxmodule
