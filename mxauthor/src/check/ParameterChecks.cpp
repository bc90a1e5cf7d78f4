#include "check/Checks.h"
#include "mxauthor/Counted.h"

#include <mxformat/BitPlace.h>

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

std::string statedBits(const ParameterRecord& record)
{
    return counted(record.bitLength.value, "bit") + " from bit " +
           std::to_string(record.bitOffset.value);
}

void checkType(const Parameter& parameter, Findings& findings)
{
    const ParameterRecord& record = *parameter.record;
    if (!parameter.value.known) {
        findings.add("parameter-datatype", record.datatype.place, named(parameter),
                     "datatype " + std::to_string(record.datatype.value) + ", expected 1 to 9");
    } else if (record.datatype.value == byteDatatype &&
               !mxformat::bitPlace(record.bitLength.value, record.bitOffset.value).exists()) {
        const bool isLength = record.bitLength.value > 8;
        findings.add(
            "bit-field", (isLength ? record.bitLength : record.bitOffset).place, named(parameter),
            statedBits(record) + (record.bitLength.value == 1 ? " leaves its" : " leave their") +
                " byte, bits 0 to 7");
    } else if (record.datatype.value != byteDatatype &&
               (record.bitLength.value != 0 || record.bitOffset.value != 0)) {
        const bool isLength = record.bitLength.value != 0;
        findings.add("bits-ignored", (isLength ? record.bitLength : record.bitOffset).place,
                     named(parameter),
                     statedBits(record) + " stated, which readers ignore: its datatype is " +
                         datatypeNames.at(record.datatype.value) + ", only a Byte has bit fields");
    }
}

void checkChannel(const ModuleView& module, const Parameter& parameter, Findings& findings)
{
    const Field<std::uint8_t>& channel = parameter.record->channel;
    const auto& channels = module.channels();
    if (channel.value != moduleChannel &&
        std::none_of(channels.begin(), channels.end(), [&channel](const auto& candidate) {
            return candidate.record->number.value == channel.value;
        })) {
        findings.add("parameter-channel", channel.place, named(parameter),
                     "belongs to channel " + std::to_string(channel.value) +
                         ", which does not exist");
    }
}

} // namespace

void checkParameters(const ModuleView& module, Findings& findings)
{
    std::set<std::uint8_t> numbers;
    for (const Parameter& parameter : module.parameters()) {
        const ParameterRecord& record = *parameter.record;
        checkType(parameter, findings);
        checkChannel(module, parameter, findings);
        if (parameter.name.empty() && module.text(record.nameId.value) != nullptr) {
            findings.add("parameter-unnamed", record.nameId.place, named(parameter),
                         "its name is an empty text");
        }
        if (!numbers.insert(record.number.value).second) {
            findings.add("parameter-repeated", record.number.place, named(parameter),
                         "another parameter has this number as well");
        }
    }
}

} // namespace mxauthor
