#include "export/ModuleParameters.h"

#include <mxstation/ParameterExport.h>
#include <text/JsonText.h>

#include <fmt/format.h>
#include <text/FileNamePart.h>

namespace mxstation {

namespace {

constexpr std::size_t mostBytesOfName = 100; // file systems allow 255

std::vector<std::string> parameterFileNames(const Plan& plan)
{
    const std::size_t digits = std::to_string(plan.modules.size()).size();
    std::vector<std::string> names;
    names.reserve(plan.modules.size());
    for (const PlannedModule& module : plan.modules) {
        names.push_back(fmt::format("{:0{}}-{}.bin", module.position, digits,
                                    text::fileNamePart(module.name, mostBytesOfName)));
    }
    return names;
}

} // namespace

std::vector<ParameterFile> parameterFiles(const Plan& plan, mxmodule::Fieldbus fieldbus)
{
    const std::vector<std::string> names = parameterFileNames(plan);
    const std::string manifest = text::jsonText(parametersJsonOf(plan, fieldbus, names));
    std::vector<ParameterFile> files;
    files.reserve(names.size() + 1);
    for (const PlannedModule& module : plan.modules) {
        files.push_back({names[module.position - 1], bytesOnBus(module, fieldbus)});
    }
    files.push_back({"station.json", {manifest.begin(), manifest.end()}});
    return files;
}

} // namespace mxstation
