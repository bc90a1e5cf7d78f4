#include "diff/Differences.h"

#include <algorithm>
#include <map>

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

// The options of a parameter, found by their place and by their value.
class Options
{
public:
    Options(const ModuleView& ofModule, const Parameter& ofParameter)
        : module(ofModule), isSigned(ofParameter.value.isSigned)
    {
        for (const Option* option : module.options(ofParameter.record->optionList.value)) {
            const auto value = numberOfSlot(ofParameter.value, option->value.value).bits;
            texts.emplace(value, option->textId.value);
            values.push_back(value);
        }
    }

    const std::vector<std::uint64_t>& inOrder() const { return values; }
    bool hold(std::uint64_t value) const { return texts.count(value) != 0; }

    std::string number(std::uint64_t value) const { return WideNumber{value, isSigned}.text(); }

    std::string text(std::uint64_t value) const
    {
        return "\"" + shortened(module.textOf(texts.at(value))) + "\"";
    }

private:
    const ModuleView& module;
    bool isSigned;
    std::vector<std::uint64_t> values;
    std::map<std::uint64_t, std::uint16_t> texts; // the first text of a value is the one shown
};

bool usesOptions(const Parameter& parameter)
{
    return parameter.record->optionList.value != 0 &&
           (parameter.record->flags.value & convertedFlag) == 0;
}

// Modbus registers hold the place of an option in its list.
bool keepPlaces(const Options& old, const Options& now)
{
    for (std::size_t i = 0; i < old.inOrder().size(); ++i) {
        const std::uint64_t value = old.inOrder()[i];
        if (now.hold(value) && (i >= now.inOrder().size() || now.inOrder()[i] != value)) {
            return false;
        }
    }
    return true;
}

// Names so many values of a list that a person still reads them.
std::string someOf(const std::vector<std::uint64_t>& values, const Options& options)
{
    constexpr std::size_t shown = 4;
    std::string text = values.size() == 1 ? "option " : "options ";
    for (std::size_t i = 0; i < std::min(shown, values.size()); ++i) {
        text += (i == 0 ? "" : ", ") + options.number(values[i]) + " " + options.text(values[i]);
    }
    if (values.size() > shown) {
        text += " and " + std::to_string(values.size() - shown) + " more";
    }
    return text + (values.size() == 1 ? " is " : " are ");
}

// The values of `options` that `others` do not hold.
std::vector<std::uint64_t> missingIn(const Options& others, const Options& options)
{
    std::vector<std::uint64_t> missing;
    for (const std::uint64_t value : options.inOrder()) {
        if (!others.hold(value)) {
            missing.push_back(value);
        }
    }
    return missing;
}

void compareTextsOf(const std::string& subject, const Options& old, const Options& now,
                    Differences& differences)
{
    constexpr unsigned shown = 8;
    unsigned changes = 0;
    for (const std::uint64_t value : old.inOrder()) {
        if (now.hold(value) && old.text(value) != now.text(value) && ++changes <= shown) {
            differences.changed(Effect::Cosmetic, "parameter", subject,
                                "option " + now.number(value), old.text(value), now.text(value));
        }
    }
    if (changes > shown) {
        differences.add(Effect::Cosmetic, "parameter", subject,
                        std::to_string(changes - shown) + " more texts of options change");
    }
}

void compareOptions(const ModuleView& before, const ModuleView& after, const ParameterPair& pair,
                    Differences& differences)
{
    const std::string subject = subjectOf(*pair.after);
    const Options old(before, *pair.before);
    const Options now(after, *pair.after);
    const auto gone = missingIn(now, old);
    if (!gone.empty()) {
        differences.addBreakingImage("parameter", subject, someOf(gone, old) + "gone");
    }
    const auto added = missingIn(old, now);
    if (!added.empty()) {
        differences.add(Effect::Compatible, "parameter", subject, someOf(added, now) + "new");
    }
    compareTextsOf(subject, old, now, differences);
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
        return Options(module, parameter).hold(number.bits);
    }
    return !number.isBelow(parameter.value.minimum) && !parameter.value.maximum.isBelow(number);
}

} // namespace mxauthor
