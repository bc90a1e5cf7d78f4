#include "diff/OptionValues.h"

#include <text/Beginning.h>

#include <algorithm>

namespace mxauthor {

OptionUse optionUse(const ModuleView::Parameter& parameter)
{
    return {parameter.record->optionList.value, parameter.value.size, parameter.value.bits,
            parameter.value.isSigned};
}

bool usesOptions(const ModuleView::Parameter& parameter)
{
    return parameter.record->optionList.value != 0 &&
           (parameter.record->flags.value & convertedFlag) == 0;
}

OptionValues::OptionValues(const ModuleView& ofModule, const ModuleView::Parameter& parameter)
    : module(ofModule), shape(parameter.value), storable(parameter.value.bits)
{
    std::vector<PatternSet::Interval> points;
    for (const Option* option : module.options(parameter.record->optionList.value)) {
        const WideNumber number = numberOfSlot(shape, option->value.value);
        if (texts.emplace(number.bits, option->textId.value).second && isStorable(number.bits)) {
            points.push_back({number.bits, number.bits});
        }
        values.push_back(number.bits);
    }
    storable.add(points);
}

bool OptionValues::isStorable(std::uint64_t value) const
{
    const WideNumber number{value, shape.isSigned};
    return !patternsBetween(shape, number, number).empty();
}

std::string OptionValues::number(std::uint64_t value) const
{
    return WideNumber{value, shape.isSigned}.text();
}

std::string OptionValues::text(std::uint64_t value) const
{
    return "\"" + text::shortened(module.textOf(texts.at(value))) + "\"";
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
