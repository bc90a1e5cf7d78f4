#include "diff/OptionValues.h"

#include <algorithm>

namespace mxauthor {

OptionUse optionUse(const ModuleView::Parameter& parameter)
{
    const mxformat::BlockField& field = parameter.value.field;
    return {parameter.record->optionList.value, field.size(), field.bits(), field.isSigned()};
}

OptionValues::OptionValues(const ModuleView& ofModule, const ModuleView::Parameter& parameter)
    : module(ofModule), shape(parameter.value.field), storable(shape.bits())
{
    std::vector<PatternSet::Interval> points;
    for (const Option* option : module.options(parameter.record->optionList.value)) {
        const std::uint64_t value = numberOfSlot(shape, option->value.value).bits();
        if (texts.emplace(value, option->textId.value).second && isStorable(value)) {
            points.push_back({value, value});
        }
        values.push_back(value);
    }
    storable.add(points);
}

bool OptionValues::isStorable(std::uint64_t value) const
{
    const mxformat::WholeNumber number = shape.number(value);
    return !patternsBetween(shape, number, number).empty();
}

std::string OptionValues::number(std::uint64_t value) const
{
    return shape.number(value).text();
}

std::string OptionValues::text(std::uint64_t value) const
{
    return quoted(module.textOf(texts.at(value)));
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
