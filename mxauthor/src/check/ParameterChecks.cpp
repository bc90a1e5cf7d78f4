#include "check/Checks.h"
#include <text/Counted.h>

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

const CheckRule parameterRows[] = {
    {"parameter-datatype", error, "The datatype of a parameter has to be 1 to 9.",
     "group 20c0, parameter 1 \"Filter\": datatype 10, expected 1 to 9"},
    {"bit-field", error, "A bit field has to be within its byte.",
     "group 20c0, parameter 3 \"Invert\": 3 bits from bit 6 leave their byte, bits 0 to 7"},
    {"bits-ignored", warning,
     "A number of bits or a bit offset is stated for a parameter of a datatype other than Byte "
     "(5). Readers use all bits of the datatype.",
     "group 20c0, parameter 4 \"Delay\": 3 bits from bit 2 stated, which readers ignore: its "
     "datatype is UInt16, only a Byte has bit fields"},
    {"parameter-outside", error,
     "The value of a parameter is outside the parameter block: it has no value and cannot be set.",
     "group 20c0, parameter 4 \"Delay\": bytes 5 to 6 of the block, which has 6 bytes"},
    {"parameter-overlap", error,
     "Two parameters share bits of the parameter block: setting one changes the other.",
     "group 20c0, parameter 2 \"Limit\": bytes 0 to 1 of the block, which it shares with parameter "
     "1 \"Filter\""},
    {"block-gap", note, "A byte of the parameter block belongs to no parameter.",
     "group 0010: byte 6 of the block belongs to no parameter"},
    {"parameter-channel", error,
     "A parameter belongs to a channel that does not exist. It is in no set and in no register.",
     "group 20c0, parameter 4 \"Delay\": belongs to channel 7, which does not exist"},
    {"parameter-unnamed", warning, "The name of a parameter is an empty text.",
     "group 20c0, parameter 1: its name is an empty text"},
    {"parameter-repeated", warning,
     "Two parameters have the same number, so messages do not distinguish them.",
     "group 20c0, parameter 1 \"Delay\": another parameter has this number as well"},
};
const auto& [parameterDatatype, bitField, bitsIgnored, parameterOutside, parameterOverlap, blockGap,
             parameterChannel, parameterUnnamed, parameterRepeated] = parameterRows;

using Parameter = ModuleView::Parameter;

std::string statedBits(const ParameterRecord& record)
{
    return text::counted(record.bitLength.value, "bit") + " from bit " +
           std::to_string(record.bitOffset.value);
}

std::string faultOfBits(const ParameterRecord& record)
{
    if (record.bitLength.value == 0) {
        return "bit offset " + std::to_string(record.bitOffset.value) + ", expected 0 to 7";
    }
    return statedBits(record) + (record.bitLength.value == 1 ? " leaves its" : " leave their") +
           " byte, bits 0 to 7";
}

void checkType(const Parameter& parameter, Findings& findings)
{
    const ParameterRecord& record = *parameter.record;
    const mxformat::BlockField& field = parameter.value.field;
    if (field.datatype() == nullptr) {
        findings.add(parameterDatatype, record.datatype.place, named(parameter),
                     "datatype " + std::to_string(record.datatype.value) + ", expected " +
                         datatypeNumbers());
    } else if (!field.exists()) {
        const bool isLength = record.bitLength.value > 8;
        findings.add(bitField, (isLength ? record.bitLength : record.bitOffset).place,
                     named(parameter), faultOfBits(record));
    } else if (record.datatype.value != mxformat::bitFieldDatatype &&
               (record.bitLength.value != 0 || record.bitOffset.value != 0)) {
        const bool isLength = record.bitLength.value != 0;
        findings.add(bitsIgnored, (isLength ? record.bitLength : record.bitOffset).place,
                     named(parameter),
                     statedBits(record) + " stated, which readers ignore: its datatype is " +
                         field.datatype()->name + ", only a Byte has bit fields");
    }
}

void checkChannel(const ModuleView& module, const Parameter& parameter, Findings& findings)
{
    const Field<std::uint8_t>& channel = parameter.record->channel;
    const auto& channels = module.channels();
    if (channel.value != mxformat::moduleLevel &&
        std::none_of(channels.begin(), channels.end(), [&channel](const auto& candidate) {
            return candidate.record->number.value == channel.value;
        })) {
        findings.add(parameterChannel, channel.place, named(parameter),
                     "belongs to channel " + std::to_string(channel.value) +
                         ", which does not exist");
    }
}

std::string bytesText(const mxformat::BlockField& field)
{
    const std::string first = std::to_string(field.begin());
    return field.size() == 1 ? "byte " + first
                             : "bytes " + first + " to " + std::to_string(field.end() - 1);
}

// Compares every parameter with those before it.
void checkOverlaps(const std::vector<Parameter>& parameters, Findings& findings)
{
    for (auto later = parameters.begin(); later != parameters.end(); ++later) {
        const auto earlier = std::find_if(parameters.begin(), later, [&later](const auto& other) {
            return other.value.field.overlaps(later->value.field);
        });
        if (earlier != later) {
            findings.add(parameterOverlap, later->record->position.place, named(*later),
                         bytesText(later->value.field) + " of the block, which it shares with " +
                             named(*earlier));
        }
    }
}

// Whether each byte of a block of `size` bytes belongs to a parameter.
std::vector<bool> heldBytes(const ModuleView& module, std::size_t size)
{
    std::vector<bool> held(size);
    for (const Parameter& parameter : module.parameters()) {
        const mxformat::BlockField& field = parameter.value.field;
        const std::size_t end = std::min<std::size_t>(field.end(), size);
        for (std::size_t byte = field.begin(); byte < end; ++byte) {
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
            findings.add(blockGap, {block.group, block.offset + begin, end - begin}, "",
                         runText(begin, end));
            begin = end;
        }
    }
}

void checkRecords(const ModuleView& module, Findings& findings)
{
    std::set<std::uint8_t> numbers;
    for (const Parameter& parameter : module.parameters()) {
        const ParameterRecord& record = *parameter.record;
        checkType(parameter, findings);
        checkChannel(module, parameter, findings);
        if (parameter.name.empty() && module.text(record.nameId.value) != nullptr) {
            findings.add(parameterUnnamed, record.nameId.place, named(parameter),
                         "its name is an empty text");
        }
        if (!numbers.insert(record.number.value).second) {
            findings.add(parameterRepeated, record.number.place, named(parameter),
                         "another parameter has this number as well");
        }
    }
}

void checkParameterPlaces(const ModuleView& module, Findings& findings)
{
    const Group* const group = module.group(mxformat::group::parameterBlock);
    if (group != nullptr && !std::holds_alternative<ParameterBlock>(group->content)) {
        return; // it is unknown where its bytes begin
    }
    const std::size_t size = module.block().size();
    for (const Parameter& parameter : module.parameters()) {
        const mxformat::BlockField& field = parameter.value.field;
        if (field.end() > size) {
            findings.add(parameterOutside, parameter.record->position.place, named(parameter),
                         bytesText(field) + " of the block, which has " +
                             text::counted(size, "byte"));
        }
    }
    checkOverlaps(module.parameters(), findings);
    if (group != nullptr) {
        checkGaps(module, std::get<ParameterBlock>(group->content).block.place, findings);
    }
}

void checkParameters(const ModuleView& module, Findings& findings)
{
    checkRecords(module, findings);
    checkParameterPlaces(module, findings);
}

} // namespace

const Check parameterCheck(parameterRows, checkParameters);

} // namespace mxauthor
