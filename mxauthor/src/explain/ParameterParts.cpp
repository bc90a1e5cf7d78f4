#include "explain/GroupParts.h"
#include "module/ParameterScale.h"

#include <mxformat/ParameterBlock.h>

#include <algorithm>

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

std::string datatypeMeaning(std::uint8_t datatype)
{
    const auto* const type = mxformat::findDatatype(datatype);
    return type == nullptr ? "not a datatype, expected " + datatypeNumbers() : type->name;
}

std::string flagsMeaning(std::uint8_t flags)
{
    std::string text =
        mxformat::isConverted(flags) ? "shown in physical units" : "shown as raw value";
    text += (flags & mxformat::parameterFlag0) != 0 ? ", flag 0" : "";
    return text + ((flags & mxformat::parameterFlag1) != 0 ? ", flag 1" : "");
}

// "none" for an identifier 0.
std::string idMeaning(const char* what, std::uint8_t id)
{
    return id == 0 ? "none" : std::string(what) + " " + std::to_string(id);
}

std::string boundMeaning(const ParameterRecord& record, const mxformat::WholeNumber& number)
{
    const bool isNone = record.minimum.value == 0 && record.maximum.value == 0;
    return isNone ? "no range is stated" : number.text();
}

std::string bitMeaning(const ParameterRecord& record, const char* meaning)
{
    return record.datatype.value == mxformat::bitFieldDatatype ? meaning : "for datatype Byte only";
}

void explainRecord(PartList& parts, const ModuleView& module, const Parameter& parameter)
{
    const ParameterRecord& record = *parameter.record;
    const ParameterValue& value = parameter.value;
    parts.number(record.number, "number", "parameter number");
    parts.number(record.nameId, "name_id",
                 "name: " + textMeaning(module, record.nameId.value, false));
    parts.number(record.position, "position",
                 "byte " + std::to_string(value.field.begin()) + " of the parameter block");
    parts.number(record.datatype, "datatype", datatypeMeaning(record.datatype.value));
    parts.number(record.flags, "flags", flagsMeaning(record.flags.value));
    parts.number(record.conversion, "conversion", idMeaning("conversion", record.conversion.value));
    parts.number(record.optionList, "option_list",
                 idMeaning("option list", record.optionList.value));
    parts.number(record.minimum, "minimum", boundMeaning(record, value.minimum));
    parts.number(record.maximum, "maximum", boundMeaning(record, value.maximum));
    parts.number(record.unitId, "unit_id",
                 "unit: " + textMeaning(module, record.unitId.value, true));
    parts.number(record.bitLength, "bit_length", bitMeaning(record, "bits"));
    parts.number(record.bitOffset, "bit_offset", bitMeaning(record, "first bit"));
    parts.number(record.channel, "channel",
                 record.channel.value == mxformat::moduleLevel ? "the module itself" : "channel");
}

using Holders = std::vector<const Parameter*>;

// The parameters at each byte of the block; none after the last one.
std::vector<Holders> holdersOfBytes(const ModuleView& module)
{
    std::vector<Holders> holders;
    for (const Parameter& parameter : module.parameters()) {
        const mxformat::BlockField& field = parameter.value.field;
        holders.resize(std::max<std::size_t>(holders.size(), field.end()));
        for (std::size_t byte = field.begin(); byte < field.end(); ++byte) {
            holders[byte].push_back(&parameter);
        }
    }
    return holders;
}

// Which bits of its byte a bit field has; empty for whole bytes.
std::string bitsText(const mxformat::BlockField& field)
{
    if (field.bits() % 8 == 0) {
        return "";
    }
    const std::string first = std::to_string(field.firstBit());
    return field.bits() == 1 ? " (bit " + first + ")"
                             : " (bits " + first + " to " +
                                   std::to_string(field.firstBit() + field.bits() - 1) + ")";
}

std::string defaultsMeaning(const Holders& holders)
{
    constexpr std::size_t shown = 8;
    std::string text;
    for (const Parameter* parameter : holders) {
        if (parameter == holders[std::min(shown, holders.size() - 1)] && holders.size() > shown) {
            return text + "; and " + std::to_string(holders.size() - shown) + " more";
        }
        text += text.empty() ? "default of " : "; default of ";
        text += named(*parameter);
        if (parameter->value.present) {
            text += ": " + parameter->value.value.text();
        }
        text += bitsText(parameter->value.field);
    }
    return text;
}

} // namespace

void explainGroup(PartList& parts, const ModuleView& module, const ParameterBlock& group)
{
    parts.number(group.version, "version", "");
    parts.number(group.descriptor, "descriptor",
                 "a header of " +
                     std::to_string(mxformat::parameterBlockHeaderSize(group.descriptor.value)) +
                     " bytes");
    parts.bytes(group.skipped, "skipped", "the rest of the header");
    parts.unread();
    const Place& place = group.block.place;
    std::vector<Holders> all = holdersOfBytes(module);
    all.resize(std::max<std::size_t>(all.size(), place.length));
    for (std::uint32_t begin = 0; begin < place.length;) {
        const Holders& holders = all[begin];
        std::uint32_t end = begin + 1;
        while (end < place.length && all[end] == holders) {
            ++end;
        }
        parts.bytesAt({place.group, place.offset + begin, end - begin}, "block",
                      holders.empty() ? "no parameter" : defaultsMeaning(holders));
        if (holders.empty()) {
            parts.unread();
        }
        begin = end;
    }
}

void explainGroup(PartList& parts, const ModuleView& module, const Parameters& group)
{
    for (std::size_t i = 0; i < group.records.size(); ++i) {
        const ParameterRecord& record = group.records[i];
        // A repeated group is not part of the module: its values are decoded here.
        const Parameter parameter{&record, module.textOf(record.nameId.value),
                                  parameterValue(record, module.block())};
        parts.beginRecord(i, named(parameter));
        explainRecord(parts, module, parameter);
    }
    parts.endRecords();
    parts.bytes(group.rest, "rest", "incomplete record");
}

void explainGroup(PartList& parts, const ModuleView& module, const OptionLists& group)
{
    std::size_t record = 0;
    for (const OptionList& list : group.lists) {
        const std::string subject = named("option list", list.id.value, "");
        parts.beginRecord(record++, subject);
        parts.number(list.id, "id", "");
        parts.number(list.count, "count", "options");
        for (const Option& option : list.options) {
            parts.number(option.value, "value", "");
            parts.number(option.textId, "text_id",
                         "option: " + textMeaning(module, option.textId.value, false));
        }
    }
    parts.endRecords();
    parts.bytes(group.rest, "rest", "incomplete option list");
}

void explainGroup(PartList& parts, const ModuleView& module, const Conversions& group)
{
    for (std::size_t i = 0; i < group.entries.size(); ++i) {
        const Conversion& entry = group.entries[i];
        parts.beginRecord(i, named("conversion", entry.id.value, ""));
        parts.number(entry.id, "id", "");
        parts.number(entry.factor, "factor", numberText(mxformat::floatOf(entry.factor.value)));
        parts.number(entry.offset, "offset", numberText(mxformat::floatOf(entry.offset.value)));
        parts.number(entry.unitId, "unit_id",
                     "unit: " + textMeaning(module, entry.unitId.value, true));
    }
    parts.endRecords();
    parts.bytes(group.rest, "rest", "incomplete conversion");
}

} // namespace mxauthor
