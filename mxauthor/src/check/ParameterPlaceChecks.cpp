#include "check/Checks.h"

#include <algorithm>

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

std::string subjectOf(const Parameter& parameter)
{
    return named("parameter", parameter.record->number.value, parameter.name);
}

std::string bytesText(const ParameterValue& value)
{
    const std::string first = std::to_string(value.byteOffset);
    return value.size == 1
               ? "byte " + first
               : "bytes " + first + " to " + std::to_string(value.byteOffset + value.size - 1);
}

bool overlaps(const ParameterValue& a, const ParameterValue& b)
{
    return a.firstBit < b.firstBit + b.bits && b.firstBit < a.firstBit + a.bits;
}

// Every parameter with those in front of it.
void checkOverlaps(const std::vector<Parameter>& parameters, Findings& findings)
{
    for (auto later = parameters.begin(); later != parameters.end(); ++later) {
        const auto earlier = std::find_if(parameters.begin(), later, [&later](const auto& other) {
            return overlaps(other.value, later->value);
        });
        if (earlier != later) {
            findings.add("parameter-overlap", later->record->position.place, subjectOf(*later),
                         bytesText(later->value) + " of the block, which it shares with " +
                             subjectOf(*earlier));
        }
    }
}

bool holdsByte(const Parameter& parameter, std::size_t byte)
{
    const ParameterValue& value = parameter.value;
    return value.byteOffset <= byte && byte < std::size_t{value.byteOffset} + value.size;
}

void checkGaps(const ModuleView& module, Findings& findings)
{
    const auto* const group = module.content<ParameterBlock>(0x0010);
    if (group == nullptr) {
        return;
    }
    const Place& place = group->block.place;
    for (std::uint32_t byte = 0; byte < place.length; ++byte) {
        const auto& parameters = module.parameters();
        if (std::none_of(parameters.begin(), parameters.end(), [byte](const Parameter& parameter) {
                return holdsByte(parameter, byte);
            })) {
            findings.add("block-gap", {place.group, place.offset + byte, 1}, "",
                         "byte " + std::to_string(byte) + " of the block belongs to no parameter");
        }
    }
}

} // namespace

void checkParameterPlaces(const ModuleView& module, Findings& findings)
{
    const std::size_t size = module.block().size();
    for (const Parameter& parameter : module.parameters()) {
        const ParameterValue& value = parameter.value;
        if (value.byteOffset + value.size > size) {
            findings.add(
                "parameter-outside", parameter.record->position.place, subjectOf(parameter),
                bytesText(value) + " of the block, which has " + std::to_string(size) + " bytes");
        }
    }
    checkOverlaps(module.parameters(), findings);
    checkGaps(module, findings);
}

} // namespace mxauthor
