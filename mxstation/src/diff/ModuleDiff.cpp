#include "diff/ModuleDiff.h"

#include "export/ByteText.h"

#include <fmt/format.h>

namespace mxstation {

namespace {

// The type and the data of a module: "5a030304, in 0-7, out 4".
std::string dataText(const PlannedModule& module)
{
    std::string text;
    for (const auto& [image, bytes] : {std::pair("in", module.input), {"out", module.output}}) {
        if (bytes.size != 0) {
            text += fmt::format("{}{} {}", text.empty() ? "" : ", ", image, addressesText(bytes));
        }
    }
    return text;
}

std::string moduleText(const PlannedModule& module)
{
    const std::string data = dataText(module);
    return module.module.moduleId() + (data.empty() ? "" : ", " + data);
}

bool isSameBytes(const ImageBytes& a, const ImageBytes& b)
{
    return a.size == b.size && (a.size == 0 || a.offset == b.offset);
}

// Whether all of `a` is at the same addresses in `b`.
bool isKept(const ImageBytes& a, const ImageBytes& b)
{
    return a.size == 0 || (a.offset == b.offset && a.size <= b.size);
}

void addFileChange(const ModulePair& pair, StationDifference& difference)
{
    const std::string before = pair.a->module.moduleId();
    const std::string after = pair.b->module.moduleId();
    if (before != after) {
        difference.changes.push_back(
            {ChangeKind::ModuleType, pair.b->name, "", before, after, true});
    } else if (pair.a->file.bytes() != pair.b->file.bytes()) {
        difference.changes.push_back({ChangeKind::ModuleFile, pair.b->name, "", pair.a->reference,
                                      pair.b->reference, false});
    }
}

} // namespace

void addNewModule(const PlannedModule& module, StationDifference& difference)
{
    difference.changes.push_back(
        {ChangeKind::ModuleAdded, module.name, "", "", moduleText(module), false});
}

void addRemovedModule(const PlannedModule& module, const std::vector<const Channel*>& channels,
                      StationDifference& difference)
{
    const bool hasValues = module.input.size + module.output.size != 0 || !channels.empty();
    difference.changes.push_back(
        {ChangeKind::ModuleRemoved, module.name, "", moduleText(module), "", hasValues});
}

void addModuleChanges(const ModulePair& pair, StationDifference& difference)
{
    addFileChange(pair, difference);
    if (!isSameBytes(pair.a->input, pair.b->input) ||
        !isSameBytes(pair.a->output, pair.b->output)) {
        const bool isStill =
            isKept(pair.a->input, pair.b->input) && isKept(pair.a->output, pair.b->output);
        difference.changes.push_back({ChangeKind::ModuleMoved, pair.b->name, "", dataText(*pair.a),
                                      dataText(*pair.b), !isStill});
    }
}

} // namespace mxstation
