#include "check/Checks.h"
#include "mxauthor/Counted.h"

#include <algorithm>

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

std::string bytesText(const ParameterValue& value)
{
    const std::string first = std::to_string(value.byteOffset);
    return value.size == 1
               ? "byte " + first
               : "bytes " + first + " to " + std::to_string(value.byteOffset + value.size - 1);
}

bool overlaps(const ParameterValue& a, const ParameterValue& b)
{
    return a.bits != 0 && b.bits != 0 && a.firstBit < b.firstBit + b.bits &&
           b.firstBit < a.firstBit + a.bits;
}

// Every parameter with those in front of it.
void checkOverlaps(const std::vector<Parameter>& parameters, Findings& findings)
{
    for (auto later = parameters.begin(); later != parameters.end(); ++later) {
        const auto earlier = std::find_if(parameters.begin(), later, [&later](const auto& other) {
            return overlaps(other.value, later->value);
        });
        if (earlier != later) {
            findings.add("parameter-overlap", later->record->position.place, named(*later),
                         bytesText(later->value) + " of the block, which it shares with " +
                             named(*earlier));
        }
    }
}

// Whether each byte of a block of `size` bytes belongs to a parameter.
std::vector<bool> heldBytes(const ModuleView& module, std::size_t size)
{
    std::vector<bool> held(size);
    for (const Parameter& parameter : module.parameters()) {
        const ParameterValue& value = parameter.value;
        const std::size_t end = std::min<std::size_t>(value.byteOffset + value.size, size);
        for (std::size_t byte = value.byteOffset; byte < end; ++byte) {
            held[byte] = true;
        }
    }
    return held;
}

std::string runText(std::uint32_t begin, std::uint32_t end)
{
    if (end - begin == 1) {
        return "byte " + std::to_string(begin) + " of the block belongs to no parameter";
    }
    return "bytes " + std::to_string(begin) + " to " + std::to_string(end - 1) +
           " of the block belong to no parameter";
}

// A finding for each run of bytes without a parameter.
void checkGaps(const ModuleView& module, const Place& block, Findings& findings)
{
    const std::vector<bool> held = heldBytes(module, block.length);
    for (std::uint32_t begin = 0; begin < block.length; ++begin) {
        std::uint32_t end = begin;
        while (end < block.length && !held[end]) {
            ++end;
        }
        if (end > begin) {
            findings.add("block-gap", {block.group, block.offset + begin, end - begin}, "",
                         runText(begin, end));
            begin = end;
        }
    }
}

} // namespace

void checkParameterPlaces(const ModuleView& module, Findings& findings)
{
    const Group* const group = module.group(0x0010);
    if (group != nullptr && !std::holds_alternative<ParameterBlock>(group->content)) {
        return; // nobody can say where its bytes begin
    }
    const std::size_t size = module.block().size();
    for (const Parameter& parameter : module.parameters()) {
        const ParameterValue& value = parameter.value;
        if (value.byteOffset + value.size > size) {
            findings.add("parameter-outside", parameter.record->position.place, named(parameter),
                         bytesText(value) + " of the block, which has " + counted(size, "byte"));
        }
    }
    checkOverlaps(module.parameters(), findings);
    if (group != nullptr) {
        checkGaps(module, std::get<ParameterBlock>(group->content).block.place, findings);
    }
}

} // namespace mxauthor
