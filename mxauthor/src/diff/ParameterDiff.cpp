#include "diff/AcceptedValues.h"
#include "diff/Differences.h"

#include "module/ConversionNumbers.h"

#include <algorithm>
#include <deque>
#include <map>
#include <set>

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

std::string datatypeText(const Parameter& parameter)
{
    return parameter.value.known ? datatypeNames.at(parameter.record->datatype.value)
                                 : std::to_string(parameter.record->datatype.value);
}

std::string placeText(const Parameter& parameter)
{
    const ParameterValue& value = parameter.value;
    std::string text = "byte " + std::to_string(value.byteOffset);
    if (parameter.record->datatype.value == byteDatatype) {
        text += ", " + std::to_string(value.bits) + (value.bits == 1 ? " bit" : " bits") +
                " from bit " + std::to_string(value.firstBit % 8);
    }
    return text;
}

std::string channelText(const Parameter& parameter)
{
    const std::uint8_t channel = parameter.record->channel.value;
    return channel == moduleChannel ? "the module" : "channel " + std::to_string(channel);
}

// Parameters are the same one when channel and name are, or else when the number is.
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

std::string conversionText(const ModuleView& module, const Parameter& parameter)
{
    const std::uint8_t id = parameter.record->conversion.value;
    const auto* const group = module.content<Conversions>(0x20C2);
    const bool isConverted = (parameter.record->flags.value & convertedFlag) != 0;
    for (std::size_t i = 0; isConverted && group != nullptr && i < group->entries.size(); ++i) {
        const Conversion& entry = group->entries[i];
        if (entry.id.value == id) {
            return "x " + numberText(floatOf(entry.factor.value)) + " + " +
                   numberText(floatOf(entry.offset.value)) + " \"" +
                   module.textOf(entry.unitId.value) + "\"";
        }
    }
    return "none";
}

std::string quotedText(const ModuleView& module, std::uint16_t id)
{
    return id == 0 ? "none" : "\"" + module.textOf(id) + "\"";
}

void comparePlaces(const ParameterPair& pair, Differences& differences)
{
    const std::string subject = subjectOf(*pair.after);
    if (placeText(*pair.before) != placeText(*pair.after)) {
        differences.addBreakingImage("parameter", subject,
                                     "place " + placeText(*pair.before) + " becomes " +
                                         placeText(*pair.after));
    }
    if (datatypeText(*pair.before) == datatypeText(*pair.after)) {
        return;
    }
    const std::string text =
        "datatype " + datatypeText(*pair.before) + " becomes " + datatypeText(*pair.after);
    const bool sameBits = pair.before->value.bits == pair.after->value.bits &&
                          pair.before->value.isSigned == pair.after->value.isSigned;
    if (sameBits) {
        differences.add(Effect::Compatible, "parameter", subject, text);
    } else {
        differences.addBreakingImage("parameter", subject, text);
    }
}

void compareShown(const ModuleView& before, const ModuleView& after, const ParameterPair& pair,
                  Differences& differences)
{
    const std::string subject = subjectOf(*pair.after);
    const ParameterRecord& old = *pair.before->record;
    const ParameterRecord& now = *pair.after->record;
    differences.changed(Effect::Cosmetic, "parameter", subject, "name",
                        "\"" + shortened(pair.before->name) + "\"",
                        "\"" + shortened(pair.after->name) + "\"");
    differences.changed(Effect::Cosmetic, "parameter", subject, "number",
                        std::to_string(old.number.value), std::to_string(now.number.value));
    differences.changed(Effect::Cosmetic, "parameter", subject, "unit",
                        quotedText(before, old.unitId.value), quotedText(after, now.unitId.value));
    differences.changed(Effect::Compatible, "parameter", subject, "flags",
                        std::to_string(old.flags.value), std::to_string(now.flags.value));
    differences.changed(Effect::Compatible, "parameter", subject, "conversion",
                        conversionText(before, *pair.before), conversionText(after, *pair.after));
}

void comparePair(const ModuleView& before, const ModuleView& after, const ParameterPair& pair,
                 AcceptedValues& accepted, Differences& differences)
{
    const std::string subject = subjectOf(*pair.after);
    comparePlaces(pair, differences);
    accepted.compare(pair, differences);
    if (pair.before->value.present && pair.after->value.present) {
        differences.changed(Effect::Compatible, "parameter", subject, "default",
                            pair.before->value.value.text(), pair.after->value.value.text());
    }
    compareShown(before, after, pair, differences);
    differences.changed(Effect::Breaking, "parameter", subject, "it belongs to",
                        channelText(*pair.before), channelText(*pair.after));
}

// What a stored image holds for a parameter that it does not know are the defaults of its time.
void addNew(const ModuleView& before, const Parameter& parameter, AcceptedValues& accepted,
            Differences& differences)
{
    const std::string subject = subjectOf(parameter);
    const ParameterValue then = parameterValues({*parameter.record}, before.block()).front();
    if (then.present && accepted.accepts(parameter, then.value)) {
        differences.add(Effect::Compatible, "parameter", subject,
                        "is new; a stored image holds " + then.value.text() + " there");
    } else {
        differences.addBreakingImage("parameter", subject,
                                     then.present
                                         ? "is new, and a stored image holds " + then.value.text() +
                                               ", which it does not accept"
                                         : "is new, and a stored image has no bytes for it");
    }
}

void compareOrder(const std::vector<ParameterPair>& pairs, Differences& differences)
{
    // Parameters stand in their vectors in file order, so their addresses tell it.
    std::vector<ParameterPair> sorted = pairs;
    std::sort(sorted.begin(), sorted.end(),
              [](const ParameterPair& a, const ParameterPair& b) { return a.after < b.after; });
    const bool inOrder = std::is_sorted(
        sorted.begin(), sorted.end(),
        [](const ParameterPair& a, const ParameterPair& b) { return a.before < b.before; });
    if (!inOrder) {
        differences.add(Effect::Breaking, "parameter", "",
                        "the order changes, which Modbus registers follow");
    }
}

} // namespace

std::string subjectOf(const Parameter& parameter)
{
    const std::uint8_t channel = parameter.record->channel.value;
    return named(parameter) +
           (channel == moduleChannel ? "" : " of channel " + std::to_string(channel));
}

void compareParameters(const ModuleView& before, const ModuleView& after, Differences& differences)
{
    std::vector<ParameterPair> pairs;
    Taken taken;
    pairUp(before, after, true, taken, pairs);
    pairUp(before, after, false, taken, pairs);
    AcceptedValues accepted(before, after);
    for (const ParameterPair& pair : pairs) {
        comparePair(before, after, pair, accepted, differences);
    }
    for (const Parameter& parameter : before.parameters()) {
        if (taken.count(&parameter) == 0) {
            differences.add(Effect::Breaking, "parameter", subjectOf(parameter),
                            "is gone: Modbus registers behind it move");
        }
    }
    for (const Parameter& parameter : after.parameters()) {
        if (taken.count(&parameter) == 0) {
            addNew(before, parameter, accepted, differences);
        }
    }
    compareOrder(pairs, differences);
}

} // namespace mxauthor
