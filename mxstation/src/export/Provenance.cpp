#include "export/Provenance.h"

#include <fmt/format.h>
#include <text/JsonText.h>
#include <text/Sha256.h>
#include <text/Utf8.h>

#include <map>
#include <utility>

namespace mxstation {

namespace {

// "module 3", "modules 1 to 3, 7".
std::string positionsText(const std::vector<std::size_t>& positions)
{
    std::string text = positions.size() == 1 ? "module " : "modules ";
    for (std::size_t first = 0; first < positions.size();) {
        std::size_t last = first;
        while (last + 1 < positions.size() && positions[last + 1] == positions[last] + 1) {
            ++last;
        }
        text += first == 0 ? "" : ", ";
        text += std::to_string(positions[first]);
        text += last == first ? "" : fmt::format(" to {}", positions[last]);
        first = last + 1;
    }
    return text;
}

} // namespace

void requireOk(const Plan& plan)
{
    std::vector<mxmodule::Finding> errors;
    for (const mxmodule::Finding& finding : plan.findings) {
        if (finding.severity == mxmodule::Severity::Error) {
            errors.push_back(finding);
        }
    }
    if (!errors.empty()) {
        throw mxmodule::Failure(std::move(errors));
    }
}

Provenance::Provenance(const Plan& plan)
{
    requireOk(plan);
    station = text::sha256(plan.source);
    std::map<const char*, std::size_t> known; // by the bytes, which modules of one file share
    for (const PlannedModule& module : plan.modules) {
        const std::vector<char>& bytes = module.file.bytes();
        const auto [found, isNew] = known.emplace(bytes.data(), files.size());
        if (isNew) {
            files.push_back({module.reference, text::sha256({bytes.data(), bytes.size()}), {}});
        }
        files[found->second].positions.push_back(module.position);
        fileOfModule.push_back(found->second);
    }
}

std::string Provenance::version()
{
    return MXSTATION_VERSION;
}

std::string Provenance::moduleSum(std::size_t position) const
{
    const bool isKnown = position > 0 && position <= fileOfModule.size();
    return isKnown ? files[fileOfModule[position - 1]].sum : "";
}

std::vector<std::string> Provenance::lines() const
{
    std::vector<std::string> all = {"Made by mxtool " + version() + " of:",
                                    "SHA-256 " + station + " station"};
    for (const File& file : files) {
        all.push_back(fmt::format("SHA-256 {} {} {}", file.sum, positionsText(file.positions),
                                  text::toUtf8(file.reference)));
    }
    return all;
}

void Provenance::addTo(text::Json& object) const
{
    object["mxtool"] = version();
    object["station_sha256"] = station;
    object["mx_files"] = text::listJson(files, [](const File& file) {
        return text::Json{{"reference", text::toUtf8(file.reference)},
                          {"mx_sha256", file.sum},
                          {"modules", file.positions}};
    });
}

} // namespace mxstation
