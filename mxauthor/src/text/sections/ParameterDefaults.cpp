#include "ParameterDefaults.h"
#include <text/Counted.h>

#include <algorithm>

namespace mxauthor {

namespace {

using mxformat::BlockField;
using mxformat::WholeNumber;

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
    return field.number(field.lowest()).text() + " to " + field.number(field.highest()).text();
}

void takeDefault(BuiltParameter& parameter, const std::string& text, const WholeNumber& number,
                 const BlockField& field, SourceErrors& errors)
{
    if (!field.holds(number)) {
        errors.add(*parameter.initial, "default " + text + " does not fit into " +
                                           text::counted(field.bits(), "bit") + ", " +
                                           naturalRange(field) + " is accepted");
        return;
    }
    parameter.value = number.bits();
}

// The text of the option with this value, if that text selects this value.
std::optional<std::string> optionText(std::uint8_t list, std::uint64_t value,
                                      const DumpContext& context)
{
    const auto& group = context.groupOrNone<OptionLists>(mxformat::group::optionLists);
    std::map<std::string, std::uint64_t> first;
    for (const OptionList& other : group.lists) {
        if (list == 0 || other.id.value != list) {
            continue;
        }
        for (const Option& option : other.options) {
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
                       [&field](const BlockField& other) { return other.overlaps(field); });
}

} // namespace

std::string slotText(std::uint64_t bits, std::uint8_t datatype)
{
    const auto* const type = mxformat::findDatatype(datatype);
    const bool isLarge = type != nullptr && type->bytes == 8 && !type->isSigned;
    return WholeNumber::ofBits(bits, !isLarge).text();
}

DefaultsOfBlock defaultsOf(const DumpContext& context)
{
    DefaultsOfBlock defaults;
    const auto& records = context.groupOrNone<Parameters>(mxformat::group::parameters).records;
    const Bytes& block =
        context.groupOrNone<ParameterBlock>(mxformat::group::parameterBlock).block.value;
    defaults.block.resize(blockSizeFor(records, [](const auto& record) { return record; }));
    std::vector<BlockField> before;
    for (const ParameterRecord& record : records) {
        StatedDefault& stated = defaults.stated.emplace_back();
        const BlockField field = blockFieldOf(record);
        if (!field.exists()) {
            continue;
        }
        stated.overlaps = overlapsOneBefore(before, field);
        before.push_back(field);
        if (!stated.overlaps && field.liesWithin(block.size())) {
            const std::uint64_t value = field.read(block.data());
            field.write(defaults.block.data(), value);
            stated.text = optionText(record.optionList.value, value, context)
                              .value_or(slotText(value, record.datatype.value));
        }
    }
    return defaults;
}

void readDefault(BuiltParameter& parameter, const ParameterUnit& unit, const BuildContext& context)
{
    const BlockField field = blockFieldOf(parameter.record);
    const auto text = parameter.initial && field.exists()
                          ? readScalar(*parameter.initial, context.errors)
                          : std::nullopt;
    if (!text) {
        return;
    }
    const auto options = optionsOf(parameter.record.optionList.value, context);
    const auto option = options.find(*text);
    if (option != options.end()) {
        takeDefault(parameter, *text, field.number(option->second), field, context.errors);
    } else if (const auto number = readParameterNumber(*parameter.initial, unit, field,
                                                       textsOf(options), context.errors)) {
        takeDefault(parameter, *text, number->raw, field, context.errors);
    }
}

} // namespace mxauthor
