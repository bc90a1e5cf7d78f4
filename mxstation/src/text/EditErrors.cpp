#include "text/EditErrors.h"

#include "text/StationErrors.h"

namespace mxstation {

void EditErrors::add(const std::vector<YamlError>& errors)
{
    for (const YamlError& error : errors) {
        if (places.emplace(error.place.line, error.place.column).second) {
            findings.push_back(findingAt(station.file, station.source, error.place,
                                         mxmodule::Severity::Error, error.text, byHand));
        }
    }
}

void EditErrors::requireNone() const
{
    if (!findings.empty()) {
        throw mxmodule::Failure(findings);
    }
}

} // namespace mxstation
