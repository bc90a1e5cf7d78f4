#include "diff/AcceptedValues.h"
#include "diff/Differences.h"
#include "diff/StoredImages.h"
#include "module/ParameterScale.h"
#include <text/Counted.h>

#include <algorithm>
#include <deque>
#include <map>
#include <set>

namespace mxauthor {

namespace {

using mxformat::BlockField;
using Parameter = ModuleView::Parameter;

std::string datatypeText(const Parameter& parameter)
{
    const auto* const type = parameter.value.field.datatype();
    return type == nullptr ? std::to_string(parameter.record->datatype.value) : type->name;
}

std::string placeText(const Parameter& parameter)
{
    const BlockField& field = parameter.value.field;
    std::string text = "byte " + std::to_string(field.begin());
    if (parameter.record->datatype.value != mxformat::bitFieldDatatype) {
        return text;
    }
    if (!field.exists()) {
        return text + ", bits outside it";
    }
    return text + ", " + text::counted(field.bits(), "bit") + " from bit " +
           std::to_string(field.firstBit());
}

std::string channelText(const Parameter& parameter)
{
    const std::uint8_t channel = parameter.record->channel.value;
    return channel == mxformat::moduleLevel ? "the module" : "channel " + std::to_string(channel);
}

// Parameters are paired by channel and name, the rest by number.
std::string keyOf(const Parameter& parameter, bool byName)
{
    const std::uint8_t channel = parameter.record->channel.value;
    return byName ? std::to_string(channel) + " " + parameter.name
                  : std::to_string(parameter.record->number.value);
}

using Taken = std::set<const Parameter*>;

// Pairs the parameters that are free on both sides, those of one key in file order.
void pairUp(const ModuleView& before, const ModuleView& after, bool byName, Taken& taken,
            std::vector<ParameterPair>& pairs)
{
    std::map<std::string, std::deque<const Parameter*>> free;
    for (const Parameter& old : before.parameters()) {
        if (taken.count(&old) == 0) {
            free[keyOf(old, byName)].push_back(&old);
        }
    }
    for (const Parameter& now : after.parameters()) {
        const auto found = free.find(keyOf(now, byName));
        if (taken.count(&now) == 0 && found != free.end() && !found->second.empty()) {
            pairs.push_back({found->second.front(), &now});
            taken.insert({found->second.front(), &now});
            found->second.pop_front();
        }
    }
}

std::string unitText(const ParameterScale& scale)
{
    return scale.unit.empty() ? "none" : quoted(scale.unit);
}

// The parameters of two files, and the images stored for the first.
class ParameterComparison
{
public:
    ParameterComparison(const ModuleView& oldModule, const ModuleView& newModule,
                        Differences& target)
        : before(oldModule),
          after(newModule),
          oldValues(oldModule),
          newValues(newModule),
          values(oldValues, newValues),
          images(oldModule.block()),
          differences(target)
    {
        for (const Parameter& parameter : before.parameters()) {
            if (parameter.value.present) {
                images.add(imageFieldOf(parameter.value.field), oldValues.patternsOf(parameter));
            }
        }
    }

    void comparePair(const ParameterPair& pair);
    void addGone(const Parameter& parameter);
    void addNew(const Parameter& parameter);

    ParameterFates fates;

private:
    void comparePlaces(const ParameterPair& pair);
    void compareScales(const ParameterPair& pair);
    void compareShown(const ParameterPair& pair);
    bool keepsNumber(const ParameterPair& pair);

    const ModuleView& before;
    const ModuleView& after;
    AcceptedValues oldValues;
    AcceptedValues newValues;
    AcceptedValueComparison values;
    StoredImages images;
    Differences& differences;
};

// Whether the new parameter reads the number that was stored for the old one, whatever it was. It
// does when both have the same last bit and no stored value needs a bit or sign that one of them
// lacks.
bool ParameterComparison::keepsNumber(const ParameterPair& pair)
{
    const BlockField& old = pair.before->value.field;
    const BlockField& now = pair.after->value.field;
    if (old.datatype() == nullptr || now.datatype() == nullptr ||
        imageFieldOf(old).end() != imageFieldOf(now).end()) {
        return false;
    }
    if (now.bits() <= old.bits()) {
        const PatternSet same = patternsOfSameNumber(old, now);
        return oldValues.patternsOf(*pair.before).without(same).empty();
    }
    const PatternSet others = patternsOfSameNumber(now, old).complement();
    return pair.after->value.present == pair.before->value.present &&
           !images.holding(imageFieldOf(now), others);
}

void ParameterComparison::comparePlaces(const ParameterPair& pair)
{
    const BlockField& old = pair.before->value.field;
    const BlockField& now = pair.after->value.field;
    const std::string oldPlace = placeText(*pair.before);
    const std::string newPlace = placeText(*pair.after);
    const std::string oldType = datatypeText(*pair.before);
    const std::string newType = datatypeText(*pair.after);
    if (oldPlace == newPlace && oldType == newType) {
        return;
    }
    fates.keepTheirPlaces &= imageFieldOf(old) == imageFieldOf(now);
    const std::string subject = subjectOf(*pair.after);
    if (!keepsNumber(pair)) {
        differences.changedBreakingImage("parameter", subject, "place", oldPlace, newPlace);
        differences.changedBreakingImage("parameter", subject, "datatype", oldType, newType);
        return;
    }
    differences.changed(Effect::Compatible, "parameter", subject, "place", oldPlace, newPlace);
    const bool registersStay =
        old.size() == now.size() || (pair.before->usesOptions() && pair.after->usesOptions());
    differences.changed(registersStay ? Effect::Compatible : Effect::Breaking, "parameter", subject,
                        "datatype", oldType,
                        newType + (registersStay ? "" : ": its Modbus registers change"));
}

void ParameterComparison::compareScales(const ParameterPair& pair)
{
    const std::string subject = subjectOf(*pair.after);
    const ParameterScale old = scaleOf(before, *pair.before);
    const ParameterScale now = scaleOf(after, *pair.after);
    const std::string otherValues = std::string(": ") + sameBytesOtherValues;
    if (old.unit != now.unit) {
        differences.addBreakingImage("parameter", subject,
                                     "unit " + unitText(old) + " becomes " + unitText(now) +
                                         otherValues);
    }
    if (!giveSameNumbers(old, now)) {
        differences.addBreakingImage("parameter", subject,
                                     "conversion " + old.text() + " becomes " + now.text() +
                                         otherValues);
    } else {
        differences.changed(Effect::Compatible, "parameter", subject, "conversion", old.text(),
                            now.text());
    }
}

void ParameterComparison::compareShown(const ParameterPair& pair)
{
    const std::string subject = subjectOf(*pair.after);
    const ParameterRecord& old = *pair.before->record;
    const ParameterRecord& now = *pair.after->record;
    differences.changed(Effect::Cosmetic, "parameter", subject, "name", quoted(pair.before->name),
                        quoted(pair.after->name));
    differences.changed(Effect::Cosmetic, "parameter", subject, "number",
                        std::to_string(old.number.value), std::to_string(now.number.value));
    differences.changed(Effect::Compatible, "parameter", subject, "flags",
                        std::to_string(old.flags.value), std::to_string(now.flags.value));
    compareScales(pair);
}

void ParameterComparison::comparePair(const ParameterPair& pair)
{
    const std::string subject = subjectOf(*pair.after);
    comparePlaces(pair);
    values.compare(pair, differences);
    if (pair.before->value.present && pair.after->value.present) {
        differences.changed(Effect::Compatible, "parameter", subject, "default",
                            pair.before->value.value.text(), pair.after->value.value.text());
    }
    compareShown(pair);
    differences.changed(Effect::Breaking, "parameter", subject, "owner", channelText(*pair.before),
                        channelText(*pair.after));
}

void ParameterComparison::addGone(const Parameter& parameter)
{
    fates.areAllThere = false;
    differences.add(Effect::Breaking, "parameter", subjectOf(parameter),
                    "is gone: Modbus registers after it move");
}

// A stored image holds for the new parameter what it holds for those that had its bits, the old
// defaults where there were none.
void ParameterComparison::addNew(const Parameter& parameter)
{
    const std::string subject = subjectOf(parameter);
    const ParameterValue then = parameterValue(*parameter.record, before.block());
    if (!then.present) {
        differences.addBreakingImage("parameter", subject,
                                     "is new, and a stored image has no bytes for it");
        return;
    }
    const ImageField field = imageFieldOf(then.field);
    const bool varies = images.mayVary(field);
    const auto refused = images.holding(field, newValues.patternsOf(parameter).complement());
    if (refused) {
        differences.addBreakingImage(
            "parameter", subject,
            std::string("is new, and a stored image ") + (varies ? "may hold " : "holds ") +
                numberOfSlot(then.field, *refused).text() + ", which it does not accept");
    } else {
        differences.add(Effect::Compatible, "parameter", subject,
                        varies ? "is new; it accepts all that a stored image may hold there"
                               : "is new; a stored image holds " + then.value.text() + " there");
    }
}

void compareOrder(const std::vector<ParameterPair>& pairs, Differences& differences)
{
    // Parameters are in their vectors in file order, so their addresses give it.
    std::vector<ParameterPair> sorted = pairs;
    std::sort(sorted.begin(), sorted.end(),
              [](const ParameterPair& a, const ParameterPair& b) { return a.after < b.after; });
    const bool inOrder = std::is_sorted(
        sorted.begin(), sorted.end(),
        [](const ParameterPair& a, const ParameterPair& b) { return a.before < b.before; });
    if (!inOrder) {
        differences.add(Effect::Breaking, "parameter", "",
                        "the order changes, and with it that of the Modbus registers");
    }
}

} // namespace

std::string subjectOf(const Parameter& parameter)
{
    const std::uint8_t channel = parameter.record->channel.value;
    return named(parameter) +
           (channel == mxformat::moduleLevel ? "" : " of channel " + std::to_string(channel));
}

ParameterFates compareParameters(const ModuleView& before, const ModuleView& after,
                                 Differences& differences)
{
    std::vector<ParameterPair> pairs;
    Taken taken;
    pairUp(before, after, true, taken, pairs);
    pairUp(before, after, false, taken, pairs);
    ParameterComparison comparison(before, after, differences);
    for (const ParameterPair& pair : pairs) {
        comparison.comparePair(pair);
    }
    for (const Parameter& parameter : before.parameters()) {
        if (taken.count(&parameter) == 0) {
            comparison.addGone(parameter);
        }
    }
    for (const Parameter& parameter : after.parameters()) {
        if (taken.count(&parameter) == 0) {
            comparison.addNew(parameter);
        }
    }
    compareOrder(pairs, differences);
    return comparison.fates;
}

} // namespace mxauthor
