#include "ParameterDefaults.h"
#include "mxauthor/Counted.h"

#include <devices/parser/mx/MxParameterDatatype.h>

#include <algorithm>

namespace mxauthor {

namespace {

// All options of the lists with this identifier, values by texts; readers join such lists.
std::map<std::string, std::uint64_t> optionsOf(std::uint8_t id, const BuildContext& context)
{
    std::map<std::string, std::uint64_t> options;
    for (const NamedEntry& list : context.optionLists) {
        if (id != 0 && list.id == id) {
            options.insert(list.options.begin(), list.options.end());
        }
    }
    return options;
}

std::vector<std::string> textsOf(const std::map<std::string, std::uint64_t>& options)
{
    std::vector<std::string> texts;
    texts.reserve(options.size());
    for (const auto& [option, value] : options) {
        texts.push_back(option);
    }
    return texts;
}

std::string naturalRange(const BlockField& field)
{
    const std::uint64_t low = field.lowestMagnitude();
    return (low == 0 ? "0" : "-" + std::to_string(low)) + " to " + std::to_string(field.highest());
}

bool holds(const BlockField& field, const Integer& number)
{
    return number.magnitude <= (number.negative ? field.lowestMagnitude() : field.highest());
}

void takeDefault(BuiltParameter& parameter, const std::string& text, const Integer& number,
                 const BlockField& field, SourceErrors& errors)
{
    if (!holds(field, number)) {
        errors.add(*parameter.initial, "default " + text + " does not fit into " +
                                           counted(field.bits, "bit") + ", " + naturalRange(field) +
                                           " is accepted");
        return;
    }
    parameter.value = number.bits();
}

Integer fromSlot(std::uint64_t bits, const BlockField& field)
{
    const bool negative = field.isSigned && bits >> 63 != 0;
    return {negative, negative ? std::uint64_t{0} - bits : bits};
}

// The text of the option with this value, when the same text leads back to it.
std::optional<std::string> optionText(std::uint8_t list, std::uint64_t value,
                                      const DumpContext& context)
{
    const auto* lists = context.group<OptionLists>(mxformat::group::optionLists);
    std::map<std::string, std::uint64_t> first;
    for (std::size_t i = 0; lists != nullptr && list != 0 && i < lists->lists.size(); ++i) {
        if (lists->lists[i].id.value != list) {
            continue;
        }
        for (const Option& option : lists->lists[i].options) {
            first.emplace(context.text(option.textId.value), option.value.value);
        }
    }
    for (const auto& [text, optionValue] : first) {
        if (optionValue == value && text.front() != '{') {
            return text;
        }
    }
    return std::nullopt;
}

bool overlapsOneBefore(const std::vector<BlockField>& before, const BlockField& field)
{
    return std::any_of(before.begin(), before.end(),
                       [&field](const BlockField& other) { return overlap(other, field); });
}

} // namespace

std::string slotText(std::uint64_t bits, std::uint8_t datatype)
{
    using devices::parser::mx::MxParameterDatatype;
    const bool isLarge = static_cast<MxParameterDatatype>(datatype) == MxParameterDatatype::UInt64;
    return isLarge ? std::to_string(bits) : signedText(bits);
}

DefaultsOfBlock defaultsOf(const DumpContext& context)
{
    DefaultsOfBlock defaults;
    const auto* parameters = context.group<Parameters>(mxformat::group::parameters);
    if (parameters == nullptr) {
        return defaults;
    }
    const auto* group = context.group<ParameterBlock>(mxformat::group::parameterBlock);
    const Bytes block = group == nullptr ? Bytes() : group->block.value;
    defaults.block.resize(
        blockSizeFor(parameters->records, [](const auto& record) { return record; }));
    std::vector<BlockField> before;
    for (const ParameterRecord& record : parameters->records) {
        StatedDefault& stated = defaults.stated.emplace_back();
        const auto field = blockFieldOf(record);
        if (!field) {
            continue;
        }
        stated.overlaps = overlapsOneBefore(before, *field);
        before.push_back(*field);
        if (!stated.overlaps && field->end() <= block.size()) {
            const std::uint64_t value = readBlockField(block, *field);
            writeBlockField(defaults.block, *field, value);
            stated.text = optionText(record.optionList.value, value, context)
                              .value_or(slotText(value, record.datatype.value));
        }
    }
    return defaults;
}

void readDefault(BuiltParameter& parameter, const ParameterUnit& unit, const BuildContext& context)
{
    const auto field = blockFieldOf(parameter.record);
    const auto text =
        parameter.initial && field ? readScalar(*parameter.initial, context.errors) : std::nullopt;
    if (!text) {
        return;
    }
    const auto options = optionsOf(parameter.record.optionList.value, context);
    const auto option = options.find(*text);
    if (option != options.end()) {
        const Integer number = fromSlot(option->second, *field);
        takeDefault(parameter, *text, number, *field, context.errors);
    } else if (const auto number = readParameterNumber(*parameter.initial, unit, field,
                                                       textsOf(options), context.errors)) {
        takeDefault(parameter, *text, number->raw, *field, context.errors);
    }
}

} // namespace mxauthor
