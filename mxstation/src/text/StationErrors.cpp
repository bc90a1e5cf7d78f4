#include "text/StationErrors.h"

#include <fmt/format.h>
#include <mxauthor/TextForm.h>
#include <text/Beginning.h>
#include <text/InvisibleCharacters.h>
#include <text/NearestWords.h>
#include <text/ShownText.h>

#include <algorithm>
#include <tuple>

namespace mxstation {

bool isBefore(const SourcePlace& a, const SourcePlace& b)
{
    return std::tie(a.line, a.column) < std::tie(b.line, b.column);
}

std::string placeText(const std::string& file, const SourcePlace& place)
{
    return place.line == 0 ? file : fmt::format("{}:{}:{}", file, place.line, place.column);
}

std::string lineText(const SourcePlace& place)
{
    return place.line == 0 ? "elsewhere" : fmt::format("in line {}", place.line);
}

mxmodule::Finding findingAt(const std::string& file, const std::string& source,
                            const SourcePlace& place, mxmodule::Severity severity,
                            const std::string& text, const std::string& hint)
{
    mxmodule::Finding finding{severity, placeText(file, place), text, hint};
    if (place.line != 0) {
        const auto excerpt =
            mxauthor::sourceExcerpt(source, {place.line, place.column, "", place.lineStart});
        finding.excerpt = text::forTerminal(excerpt.line) + "\n" + excerpt.caret + "\n";
    }
    return finding;
}

void StationErrors::add(const SourcePlace& place, const std::string& text, const std::string& hint,
                        const std::vector<std::string>& accepted)
{
    if (isFull()) {
        return;
    }
    if (station.findings.size() == mostFindings) {
        station.findings.push_back(findingAt(station.file, station.source, {},
                                             mxmodule::Severity::Error,
                                             fmt::format("stopped after {} errors", mostFindings)));
        return;
    }
    auto finding = findingAt(station.file, station.source, place, mxmodule::Severity::Error,
                             text::withInvisibleNamed(text), hint);
    finding.accepted = accepted;
    const auto after = std::upper_bound(places.begin(), places.end(), place, isBefore);
    station.findings.insert(station.findings.begin() + (after - places.begin()),
                            std::move(finding));
    places.insert(after, place);
}

void StationErrors::addUnknown(const SourcePlace& place, const std::string& what,
                               const std::string& word, const std::vector<std::string>& accepted)
{
    add(place,
        fmt::format("unknown {} \"{}\"{}", what, text::abbreviated(word),
                    text::acceptedWords(word, accepted)),
        {}, accepted);
}

} // namespace mxstation
