#include "diff/OptionValues.h"

#include <algorithm>

namespace mxauthor {

OptionUse optionUse(const ModuleView::Parameter& parameter)
{
    return {parameter.record->optionList.value, parameter.value.size, parameter.value.isSigned};
}

bool usesOptions(const ModuleView::Parameter& parameter)
{
    return parameter.record->optionList.value != 0 &&
           (parameter.record->flags.value & convertedFlag) == 0;
}

OptionValues::OptionValues(const ModuleView& ofModule, const ModuleView::Parameter& parameter)
    : module(ofModule), isSigned(parameter.value.isSigned)
{
    for (const Option* option : module.options(parameter.record->optionList.value)) {
        const std::uint64_t value = numberOfSlot(parameter.value, option->value.value).bits;
        texts.emplace(value, option->textId.value);
        values.push_back(value);
    }
}

std::string OptionValues::number(std::uint64_t value) const
{
    return WideNumber{value, isSigned}.text();
}

std::string OptionValues::text(std::uint64_t value) const
{
    return "\"" + shortened(module.textOf(texts.at(value))) + "\"";
}

std::vector<std::uint64_t> OptionValues::missingIn(const OptionValues& others) const
{
    std::vector<std::uint64_t> missing;
    std::copy_if(values.begin(), values.end(), std::back_inserter(missing),
                 [&others](std::uint64_t value) { return !others.hold(value); });
    return missing;
}

std::string OptionValues::named(const std::vector<std::uint64_t>& some) const
{
    constexpr std::size_t shown = 4;
    std::string all = some.size() == 1 ? "option " : "options ";
    for (std::size_t i = 0; i < std::min(shown, some.size()); ++i) {
        all += (i == 0 ? "" : ", ") + number(some[i]) + " " + text(some[i]);
    }
    if (some.size() > shown) {
        all += " and " + std::to_string(some.size() - shown) + " more";
    }
    return all + (some.size() == 1 ? " is " : " are ");
}

} // namespace mxauthor
