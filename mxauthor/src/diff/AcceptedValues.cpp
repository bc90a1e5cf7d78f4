#include "diff/AcceptedValues.h"

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

using mxformat::BlockField;
using mxformat::WholeNumber;
using Parameter = ModuleView::Parameter;

// Modbus registers hold the position of an option in its list.
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

// The options of each text.
using ValuesByText = std::set<std::pair<std::string, std::uint64_t>>;

ValuesByText valuesByText(const OptionValues& options)
{
    ValuesByText values;
    for (const std::uint64_t value : options.inOrder()) {
        values.emplace(options.text(value), value);
    }
    return values;
}

// Whether an option other than `value` has `text`: a choice by text then meant another value.
bool belongsToAnother(const std::string& text, std::uint64_t value, const ValuesByText& values)
{
    auto found = values.lower_bound({text, 0});
    if (found != values.end() && *found == std::pair(text, value)) {
        ++found;
    }
    return found != values.end() && found->first == text;
}

void compareTextsOf(const OptionValues& old, const OptionValues& now, Differences& differences)
{
    constexpr unsigned shown = 8;
    const ValuesByText oldValues = valuesByText(old);
    unsigned meaningChanges = 0;
    unsigned rewordings = 0;
    for (const std::uint64_t value : old.inOrder()) {
        if (!now.hold(value) || old.text(value) == now.text(value)) {
            continue;
        }
        const std::string text =
            "option " + now.number(value) + " " + old.text(value) + " becomes " + now.text(value);
        if (!belongsToAnother(now.text(value), value, oldValues)) {
            if (++rewordings <= shown) {
                differences.add(Effect::Cosmetic, "parameter", "", text);
            }
        } else if (++meaningChanges <= shown) {
            differences.addBreakingImage("parameter", "", text + ": " + sameBytesOtherValues);
        }
    }
    const unsigned more =
        rewordings + meaningChanges - std::min(rewordings, shown) - std::min(meaningChanges, shown);
    if (more > 0) {
        differences.add(Effect::Cosmetic, "parameter", "",
                        std::to_string(more) + " more texts of options change");
    }
}

void addGone(const OptionValues& old, const OptionValues& now, Differences& differences)
{
    std::vector<std::uint64_t> gone;
    std::vector<std::uint64_t> neverHeld;
    for (const std::uint64_t value : old.missingIn(now)) {
        (old.isStorable(value) ? gone : neverHeld).push_back(value);
    }
    if (!gone.empty()) {
        differences.addBreakingImage("parameter", "", old.named(gone) + "gone");
    }
    if (!neverHeld.empty()) {
        differences.add(Effect::Compatible, "parameter", "",
                        old.named(neverHeld) + "gone, which its bits could not hold");
    }
}

// The differences of two lists, for no parameter in particular.
std::vector<Difference> compareLists(const OptionValues& old, const OptionValues& now)
{
    std::vector<Difference> found;
    Differences differences(found);
    addGone(old, now, differences);
    const auto added = now.missingIn(old);
    if (!added.empty()) {
        differences.add(Effect::Compatible, "parameter", "", now.named(added) + "new");
    }
    compareTextsOf(old, now, differences);
    if (!keepPlaces(old, now)) {
        differences.add(Effect::Breaking, "parameter", "",
                        "options change their positions, which Modbus registers hold");
    }
    return found;
}

std::string rangeText(const ParameterValue& value)
{
    return value.minimum.text() + " to " + value.maximum.text();
}

// Whether each option is at the position that equals its value, so that a register holds the same
// for both.
bool placesAreValues(const OptionValues& options, const PatternSet& values)
{
    constexpr std::uint64_t most = 0xFF; // a register holds the position in a byte
    const auto& order = options.inOrder();
    return std::all_of(values.intervals().begin(), values.intervals().end(),
                       [&order](const PatternSet::Interval& part) {
                           bool same = part.last <= most && part.last < order.size();
                           for (std::uint64_t value = part.first; same && value <= part.last;
                                ++value) {
                               same = order[value] == value;
                           }
                           return same;
                       });
}

using NumberRanges = std::vector<std::pair<WholeNumber, WholeNumber>>;

// The numbers of `patterns` in `field`; positive ones come first, then negative ones.
NumberRanges numbersOf(const BlockField& field, const PatternSet& patterns)
{
    const std::uint64_t lastPositive = field.highest();
    NumberRanges ranges;
    for (const PatternSet::Interval& part : patterns.intervals()) {
        const auto add = [&](std::uint64_t first, std::uint64_t last) {
            ranges.emplace_back(numberOfSlot(field, first), numberOfSlot(field, last));
        };
        if (part.first <= lastPositive && part.last > lastPositive) {
            add(part.first, lastPositive);
            add(lastPositive + 1, part.last);
        } else {
            add(part.first, part.last);
        }
    }
    return ranges;
}

PatternSet rangeOf(const ParameterValue& value)
{
    return patternsBetween(value.field, value.minimum, value.maximum);
}

} // namespace

const OptionValues& AcceptedValues::optionsOf(const Parameter& parameter)
{
    const OptionUse use = optionUse(parameter);
    const auto found = lists.find(use);
    return found != lists.end() ? found->second
                                : lists.emplace(use, OptionValues(module, parameter)).first->second;
}

PatternSet AcceptedValues::patternsOf(const Parameter& parameter)
{
    return parameter.usesOptions() ? optionsOf(parameter).patterns() : rangeOf(parameter.value);
}

PatternSet AcceptedValues::patternsOf(const Parameter& parameter, const BlockField& other)
{
    const BlockField& own = parameter.value.field;
    if (own.bits() == other.bits() && own.isSigned() == other.isSigned()) {
        return patternsOf(parameter);
    }
    std::vector<PatternSet::Interval> parts;
    for (const auto& [minimum, maximum] : numbersOf(own, patternsOf(parameter))) {
        const PatternSet found = patternsBetween(other, minimum, maximum);
        parts.insert(parts.end(), found.intervals().begin(), found.intervals().end());
    }
    PatternSet set(other.bits());
    set.add(parts);
    return set;
}

// The numbers that the parameter no longer accepts, as bit patterns of its old field.
PatternSet AcceptedValueComparison::missingAfter(const ParameterPair& pair)
{
    const PatternSet taken = before.patternsOf(*pair.before);
    return taken.without(after.patternsOf(*pair.after, pair.before->value.field));
}

void AcceptedValueComparison::compareOptions(const ParameterPair& pair, Differences& differences)
{
    const std::pair uses{optionUse(*pair.before), optionUse(*pair.after)};
    auto found = compared.find(uses);
    if (found == compared.end()) {
        const OptionValues& old = before.optionsOf(*pair.before);
        const OptionValues& now = after.optionsOf(*pair.after);
        found = compared.emplace(uses, compareLists(old, now)).first;
    }
    for (Difference difference : found->second) {
        difference.subject = subjectOf(*pair.after);
        differences.add(difference);
    }
}

void AcceptedValueComparison::compareRanges(const ParameterPair& pair, Differences& differences)
{
    const std::string old = rangeText(pair.before->value);
    const std::string now = rangeText(pair.after->value);
    if (old == now) {
        return;
    }
    const std::string text = "range " + old + " becomes " + now;
    if (missingAfter(pair).empty()) {
        differences.add(Effect::Compatible, "parameter", subjectOf(*pair.after), text);
    } else {
        differences.addBreakingImage("parameter", subjectOf(*pair.after), text);
    }
}

// Whether every value that the parameter accepted has the same Modbus register as before.
bool AcceptedValueComparison::registersStay(const ParameterPair& pair)
{
    const bool hadOptions = pair.before->usesOptions();
    const Parameter& listed = hadOptions ? *pair.before : *pair.after;
    AcceptedValues& values = hadOptions ? before : after;
    return pair.before->value.field.size() == 1 && pair.after->value.field.size() == 1 &&
           placesAreValues(values.optionsOf(listed), before.patternsOf(*pair.before));
}

void AcceptedValueComparison::compareRangeWithOptions(const ParameterPair& pair,
                                                      Differences& differences)
{
    const bool hadOptions = pair.before->usesOptions();
    const std::string subject = subjectOf(*pair.after);
    const std::string text =
        hadOptions ? "its option list becomes a range" : "its range becomes an option list";
    if (const auto missing = missingAfter(pair).lowest()) {
        const WholeNumber number = numberOfSlot(pair.before->value.field, *missing);
        differences.addBreakingImage("parameter", subject, text + " without " + number.text());
    } else if (registersStay(pair)) {
        differences.add(Effect::Compatible, "parameter", subject, text + " with all its values");
    } else {
        differences.add(Effect::Breaking, "parameter", subject,
                        text + (hadOptions ? ": Modbus registers hold the value itself"
                                           : ": Modbus registers hold the positions of options"));
    }
}

void AcceptedValueComparison::compare(const ParameterPair& pair, Differences& differences)
{
    const bool oldOptions = pair.before->usesOptions();
    const bool newOptions = pair.after->usesOptions();
    if (oldOptions && newOptions) {
        compareOptions(pair, differences);
    } else if (oldOptions || newOptions) {
        compareRangeWithOptions(pair, differences);
    } else {
        compareRanges(pair, differences);
    }
}

} // namespace mxauthor
