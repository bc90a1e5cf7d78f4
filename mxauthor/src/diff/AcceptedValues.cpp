#include "diff/AcceptedValues.h"

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

// Modbus registers hold the place of an option in its list.
bool keepPlaces(const OptionValues& old, const OptionValues& now)
{
    for (std::size_t i = 0; i < old.inOrder().size(); ++i) {
        const std::uint64_t value = old.inOrder()[i];
        if (now.hold(value) && (i >= now.inOrder().size() || now.inOrder()[i] != value)) {
            return false;
        }
    }
    return true;
}

void compareTextsOf(const OptionValues& old, const OptionValues& now, Differences& differences)
{
    constexpr unsigned shown = 8;
    unsigned changes = 0;
    for (const std::uint64_t value : old.inOrder()) {
        if (now.hold(value) && old.text(value) != now.text(value) && ++changes <= shown) {
            differences.changed(Effect::Cosmetic, "parameter", "", "option " + now.number(value),
                                old.text(value), now.text(value));
        }
    }
    if (changes > shown) {
        differences.add(Effect::Cosmetic, "parameter", "",
                        std::to_string(changes - shown) + " more texts of options change");
    }
}

// The differences of two lists, for no parameter in particular.
std::vector<Difference> compareLists(const OptionValues& old, const OptionValues& now)
{
    std::vector<Difference> found;
    Differences differences(found);
    const auto gone = old.missingIn(now);
    if (!gone.empty()) {
        differences.addBreakingImage("parameter", "", old.named(gone) + "gone");
    }
    const auto added = now.missingIn(old);
    if (!added.empty()) {
        differences.add(Effect::Compatible, "parameter", "", now.named(added) + "new");
    }
    compareTextsOf(old, now, differences);
    if (!keepPlaces(old, now)) {
        differences.add(Effect::Breaking, "parameter", "",
                        "options change their places, which Modbus registers hold");
    }
    return found;
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

// The options of `parameter`, from `lists` when they were read already.
const OptionValues& optionsOf(const ModuleView& module, const Parameter& parameter,
                              std::map<OptionUse, OptionValues>& lists)
{
    const OptionUse use = optionUse(parameter);
    const auto found = lists.find(use);
    return found != lists.end() ? found->second
                                : lists.emplace(use, OptionValues(module, parameter)).first->second;
}

} // namespace

void AcceptedValues::compareOptions(const ParameterPair& pair, Differences& differences)
{
    const std::pair uses{optionUse(*pair.before), optionUse(*pair.after)};
    auto found = compared.find(uses);
    if (found == compared.end()) {
        const OptionValues& old = optionsOf(before, *pair.before, oldLists);
        const OptionValues& now = optionsOf(after, *pair.after, newLists);
        found = compared.emplace(uses, compareLists(old, now)).first;
    }
    for (Difference difference : found->second) {
        difference.subject = subjectOf(*pair.after);
        differences.add(difference);
    }
}

void AcceptedValues::compare(const ParameterPair& pair, Differences& differences)
{
    const bool oldOptions = usesOptions(*pair.before);
    const bool newOptions = usesOptions(*pair.after);
    if (oldOptions && newOptions) {
        compareOptions(pair, differences);
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

bool AcceptedValues::accepts(const Parameter& parameter, const WideNumber& number)
{
    if (usesOptions(parameter)) {
        return optionsOf(after, parameter, newLists).hold(number.bits);
    }
    return !number.isBelow(parameter.value.minimum) && !parameter.value.maximum.isBelow(number);
}

} // namespace mxauthor
