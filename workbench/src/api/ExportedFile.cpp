#include "api/ExportedFile.h"

#include "api/CallFailure.h"
#include "http/Status.h"

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/FileNamePart.h>
#include <text/JsonText.h>

#include <map>

namespace workbench {

namespace {

constexpr std::size_t longestName = 100;

std::string typeOf(const std::string& fileName)
{
    static const std::map<std::string, std::string> types = {
        {".bin", "application/octet-stream"},
        {".csv", "text/csv; charset=utf-8"},
        {".html", "text/html; charset=utf-8"},
        {".json", "application/json"},
        {".svg", "image/svg+xml"},
        {".xml", "application/xml"},
    };
    const auto found = types.find(fileName.substr(fileName.find_last_of('.')));
    return found == types.end() ? "text/plain; charset=utf-8" : found->second;
}

} // namespace

text::Json exportFormatsJson(const std::vector<ExportFormat>& formats)
{
    return text::listJson(formats, [](const ExportFormat& one) {
        return text::Json{
            {"format", one.format}, {"label", one.label}, {"isOfModule", one.isOfModule}};
    });
}

mxmodule::CsvStyle csvStyleIn(const RequestBody& body)
{
    constexpr char separators[] = {',', ';', '\t'};
    return {separators[body.choice("separator", {"comma", "semicolon", "tab"})],
            body.isSet("byteOrderMark")};
}

Response exportedFile(const std::string& name, const std::string& suffix,
                      const std::string& content)
{
    Response response;
    response.fileName = text::fileNamePart(name, longestName) + suffix;
    response.type = typeOf(response.fileName);
    response.body = content;
    return response;
}

void rejectFormat(const std::vector<ExportFormat>& formats, const std::string& found)
{
    std::string accepted;
    for (const ExportFormat& one : formats) {
        accepted += (accepted.empty() ? "" : ", ") + one.format;
    }
    throw CallFailure(status::badRequest, fmt::format("format: found \"{}\", expected one of {}",
                                                      text::abbreviated(found), accepted));
}

} // namespace workbench
