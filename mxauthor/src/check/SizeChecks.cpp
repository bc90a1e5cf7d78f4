#include "check/Checks.h"
#include "mxauthor/Counted.h"

#include <algorithm>

namespace mxauthor {

namespace {

constexpr std::size_t blockLimit = 255;
constexpr std::uint32_t withoutData = 0x0BC1E800;
constexpr std::uint32_t withTwoBytesMore = 0x0E81276D;

void checkLine(const Field<std::string>& line, Findings& findings)
{
    for (const std::string key : dataSizeKeys) {
        if (line.value.compare(0, key.size(), key) != 0) {
            continue;
        }
        const std::string codes = line.value.substr(key.size());
        const auto bad = std::find_if(codes.begin(), codes.end(),
                                      [](char code) { return dataSizeOfCode(code) < 0; });
        if (bad != codes.end()) {
            findings.add("data-size-code", line.place, key,
                         std::string("'") + *bad + "' stands for no size, expected D, W or B");
        }
        return;
    }
}

// What the module really has, where readers correct what its file states.
std::uint32_t correctedSize(const ModuleView& module, std::uint32_t stated)
{
    std::uint32_t id = 0;
    if (module.moduleId(id) && id == withoutData) {
        return 0;
    }
    return stated + (id == withTwoBytesMore ? 2 : 0);
}

std::uint32_t bytesOfChannels(const ModuleView& module, bool input)
{
    std::uint64_t end = 0;
    for (const ModuleView::Channel& channel : module.channels()) {
        if (channel.place.input == input && channel.place.bits != 0) {
            end = std::max(end, channel.place.firstBit + channel.place.bits);
        }
    }
    return static_cast<std::uint32_t>((end + 7) / 8);
}

void checkDirection(const ModuleView& module, bool input, Findings& findings)
{
    const char* const key = input ? "InData" : "OutData";
    const std::uint32_t stated = module.dataSize(key);
    const std::uint32_t size = correctedSize(module, stated);
    const std::uint32_t used = bytesOfChannels(module, input);
    const Place& place = module.group(0x0011)->place;
    if (used > size) {
        findings.add(input ? "input-size" : "output-size", place, key,
                     counted(size, "byte") + ", the channels take " + std::to_string(used));
    } else if (used < std::min(size, stated)) {
        findings.add("data-without-channel", place, key,
                     counted(stated, "byte") + ", the channels take " + std::to_string(used));
    }
}

} // namespace

void checkParameterBlock(const ModuleView& module, Findings& findings)
{
    const auto* const block = module.content<ParameterBlock>(0x0010);
    if (block == nullptr) {
        return;
    }
    if (block->version.value != 0) {
        findings.add("block-version", block->version.place, "",
                     "version " + std::to_string(block->version.value) + ", expected 0");
    }
    if (block->block.value.size() > blockLimit) {
        findings.add("block-limit", block->block.place, "",
                     counted(block->block.value.size(), "byte") +
                         " of parameters, 255 at most: readers count them in a byte");
    }
}

void checkDataSizes(const ModuleView& module, Findings& findings)
{
    const auto* const sizes = module.content<DataSizes>(0x0011);
    if (sizes == nullptr) {
        return;
    }
    for (const Field<std::string>& line : sizes->lines) {
        checkLine(line, findings);
    }
    const Group* const blockGroup = module.group(0x0010);
    const bool blockIsKnown =
        blockGroup == nullptr || std::holds_alternative<ParameterBlock>(blockGroup->content);
    if (blockIsKnown && module.dataSize("Parameter") != module.block().size()) {
        findings.add("block-size", module.group(0x0011)->place, "Parameter",
                     counted(module.dataSize("Parameter"), "byte") + ", the parameter block has " +
                         std::to_string(module.block().size()));
    }
    checkDirection(module, true, findings);
    checkDirection(module, false, findings);
}

} // namespace mxauthor
