#include "api/FindingJson.h"

#include <fmt/format.h>
#include <text/JsonText.h>
#include <text/Utf8.h>

#include <charconv>
#include <optional>
#include <string_view>

namespace workbench {

namespace {

// Of the texts of a list: a text full of errors would make an answer that no page can show.
constexpr std::size_t mostBytes = std::size_t{1} << 20;

// Takes a number and the colon before it from the beginning of `text`.
std::optional<unsigned> takeNumber(std::string_view& text)
{
    unsigned number = 0;
    if (text.empty() || text.front() != ':') {
        return std::nullopt;
    }
    const auto [end, error] = std::from_chars(text.data() + 1, text.data() + text.size(), number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

struct LineAndColumn
{
    std::optional<unsigned> line;
    std::optional<unsigned> column;
};

// Whether `place` is `file`, or in it.
bool isIn(const std::string& file, const std::string& place)
{
    return !file.empty() && place.compare(0, file.size(), file) == 0 &&
           (place.size() == file.size() || place[file.size()] == ':');
}

// Of the place "FILE:LINE:COLUMN".
LineAndColumn placeIn(const std::string& file, const std::string& place)
{
    LineAndColumn found;
    if (isIn(file, place)) {
        std::string_view rest = std::string_view(place).substr(file.size());
        found.line = takeNumber(rest);
        found.column = takeNumber(rest);
    }
    return found;
}

// Without the directory of `file`: where the station is on its computer concerns no reader of the
// page.
std::string shownPlace(const std::string& file, const std::string& place)
{
    return isIn(file, place) ? place.substr(file.find_last_of('/') + 1) : place;
}

std::size_t bytesOf(const mxmodule::Finding& finding)
{
    std::size_t bytes = finding.text.size() + finding.hint.size() + finding.excerpt.size();
    for (const std::string& one : finding.accepted) {
        bytes += one.size();
    }
    return bytes;
}

text::Json orNull(const std::optional<unsigned>& number)
{
    return number ? text::Json(*number) : text::Json();
}

} // namespace

text::Json findingJson(const mxmodule::Finding& finding, const std::string& file)
{
    const LineAndColumn where = placeIn(file, finding.place);
    return {{"severity", mxmodule::severityName(finding.severity)},
            {"place", text::toUtf8(shownPlace(file, finding.place))},
            {"line", orNull(where.line)},
            {"column", orNull(where.column)},
            {"text", text::toUtf8(finding.text)},
            {"hint", text::toUtf8(finding.hint)},
            {"accepted", text::textsJson(finding.accepted)},
            {"excerpt", text::toUtf8(finding.excerpt)}};
}

text::Json findingsJson(const std::vector<mxmodule::Finding>& findings, const std::string& file)
{
    text::Json list = text::Json::array();
    std::size_t bytes = 0;
    for (const mxmodule::Finding& finding : findings) {
        if (bytes > mostBytes) {
            list.push_back(findingJson(
                {mxmodule::Severity::Note, "",
                 fmt::format("{} more findings are left out", findings.size() - list.size())}));
            break;
        }
        list.push_back(findingJson(finding, file));
        bytes += bytesOf(finding);
    }
    return list;
}

} // namespace workbench
