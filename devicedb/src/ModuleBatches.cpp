#include "ModuleBatches.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace devices::database {

namespace {

// The memory of a row with its cells, without texts too long for a cell itself.
constexpr std::size_t bytesOfRow = 256;

std::size_t bytesOf(const DeviceProperties::Bytes& bytes)
{
    return bytes.isNull() ? 0 : bytes->size();
}

std::size_t bytesOf(const ModuleContent& content)
{
    std::size_t bytes = bytesOfRow + content.label.size() + content.orderCode.size();
    for (const ModuleContent::Channel& channel : content.channels) {
        bytes += bytesOfRow + channel.name.size();
    }
    for (const ModuleContent::Parameter& parameter : content.parameters) {
        bytes += bytesOfRow + parameter.name.size() + parameter.defaultValue.size() +
                 parameter.minimum.size() + parameter.maximum.size() + parameter.unit.size();
        for (const ModuleContent::Option& option : parameter.options) {
            bytes += bytesOfRow + option.text.size() + option.value.size();
        }
    }
    return bytes;
}

std::size_t bytesOf(const ModuleToStore& module)
{
    const DeviceProperties& record = *module.record;
    return bytesOfRow + record.brandLabelName.size() + bytesOf(record.hostBytes) +
           bytesOf(record.mxFileData) + bytesOf(record.defaultParameterBlock) +
           (module.content == nullptr ? 0 : bytesOf(*module.content));
}

// Returns the position after the last of the modules that are stored with the one at `first`.
std::size_t endOfBatch(const std::vector<ModuleToStore>& modules, std::size_t first)
{
    std::size_t end = first + 1;
    std::size_t bytes = bytesOf(modules[first]);
    while (end < modules.size() && end - first < modulesOfBatch &&
           (bytes += bytesOf(modules[end])) <= mostBytesOfBatch) {
        ++end;
    }
    return end;
}

// Adds a batch of the first modules of their keys, one of the second ones, and so on.
void addBatches(const std::vector<ModuleToStore>& modules, std::size_t first, std::size_t end,
                std::vector<ModulePositions>& batches)
{
    std::vector<ModulePositions> ranks;
    std::map<std::pair<std::string, std::string>, std::size_t> seen; // how often
    for (std::size_t position = first; position < end; ++position) {
        const DeviceProperties& record = *modules[position].record;
        const std::size_t rank = seen[{record.family, record.moduleIdText}]++;
        ranks.resize(std::max(ranks.size(), rank + 1));
        ranks[rank].push_back(position);
    }
    batches.insert(batches.end(), ranks.begin(), ranks.end());
}

} // namespace

std::vector<ModulePositions> batchesOf(const std::vector<ModuleToStore>& modules)
{
    std::vector<ModulePositions> batches;
    for (std::size_t first = 0; first < modules.size();) {
        const std::size_t end = endOfBatch(modules, first);
        addBatches(modules, first, end, batches);
        first = end;
    }
    return batches;
}

} // namespace devices::database
