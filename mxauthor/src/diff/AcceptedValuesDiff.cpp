#include "diff/Differences.h"

#include <algorithm>
#include <map>

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

struct OptionValue
{
    std::uint64_t value;
    std::string text;
};

bool usesOptions(const Parameter& parameter)
{
    return parameter.record->optionList.value != 0 &&
           (parameter.record->flags.value & convertedFlag) == 0;
}

std::vector<OptionValue> optionsOf(const ModuleView& module, const Parameter& parameter)
{
    std::vector<OptionValue> all;
    for (const Option* option : module.options(parameter.record->optionList.value)) {
        all.push_back({numberOfSlot(parameter.value, option->value.value).bits,
                       module.textOf(option->textId.value)});
    }
    return all;
}

const OptionValue* findValue(const std::vector<OptionValue>& options, std::uint64_t value)
{
    const auto found =
        std::find_if(options.begin(), options.end(),
                     [value](const OptionValue& option) { return option.value == value; });
    return found == options.end() ? nullptr : &*found;
}

std::string optionText(const Parameter& parameter, const OptionValue& option)
{
    return "option " + WideNumber{option.value, parameter.value.isSigned}.text() + " \"" +
           option.text + "\"";
}

// Modbus registers hold the place of an option in its list.
bool keepPlaces(const std::vector<OptionValue>& old, const std::vector<OptionValue>& now)
{
    for (std::size_t i = 0; i < old.size(); ++i) {
        if (findValue(now, old[i].value) != nullptr &&
            (i >= now.size() || now[i].value != old[i].value)) {
            return false;
        }
    }
    return true;
}

void compareOptions(const ModuleView& before, const ModuleView& after, const ParameterPair& pair,
                    Differences& differences)
{
    const std::string subject = subjectOf(*pair.after);
    const auto old = optionsOf(before, *pair.before);
    const auto now = optionsOf(after, *pair.after);
    for (const OptionValue& option : old) {
        const OptionValue* const same = findValue(now, option.value);
        if (same == nullptr) {
            differences.addBreakingImage("parameter", subject,
                                         optionText(*pair.before, option) + " is gone");
        } else {
            differences.changed(Effect::Cosmetic, "parameter", subject,
                                "option " +
                                    WideNumber{option.value, pair.after->value.isSigned}.text(),
                                "\"" + option.text + "\"", "\"" + same->text + "\"");
        }
    }
    for (const OptionValue& option : now) {
        if (findValue(old, option.value) == nullptr) {
            differences.add(Effect::Compatible, "parameter", subject,
                            optionText(*pair.after, option) + " is new");
        }
    }
    if (!keepPlaces(old, now)) {
        differences.add(Effect::Breaking, "parameter", subject,
                        "options change their places, which Modbus registers hold");
    }
}

std::string rangeText(const ParameterValue& value)
{
    return value.minimum.text() + " to " + value.maximum.text();
}

void compareRanges(const ParameterPair& pair, Differences& differences)
{
    const ParameterValue& old = pair.before->value;
    const ParameterValue& now = pair.after->value;
    if (rangeText(old) == rangeText(now)) {
        return;
    }
    const std::string text = "range " + rangeText(old) + " becomes " + rangeText(now);
    if (old.minimum.isBelow(now.minimum) || now.maximum.isBelow(old.maximum)) {
        differences.addBreakingImage("parameter", subjectOf(*pair.after), text);
    } else {
        differences.add(Effect::Compatible, "parameter", subjectOf(*pair.after), text);
    }
}

} // namespace

void compareAcceptedValues(const ModuleView& before, const ModuleView& after,
                           const ParameterPair& pair, Differences& differences)
{
    const bool oldOptions = usesOptions(*pair.before);
    const bool newOptions = usesOptions(*pair.after);
    if (oldOptions && newOptions) {
        compareOptions(before, after, pair, differences);
    } else if (!oldOptions && !newOptions) {
        compareRanges(pair, differences);
    } else if (newOptions) {
        differences.addBreakingImage("parameter", subjectOf(*pair.after),
                                     "its range becomes an option list");
    } else {
        differences.add(Effect::Breaking, "parameter", subjectOf(*pair.after),
                        "its option list becomes a range: Modbus registers hold the value itself");
    }
}

bool accepts(const ModuleView& module, const Parameter& parameter, const WideNumber& number)
{
    if (usesOptions(parameter)) {
        return findValue(optionsOf(module, parameter), number.bits) != nullptr;
    }
    return !number.isBelow(parameter.value.minimum) && !parameter.value.maximum.isBelow(number);
}

} // namespace mxauthor
