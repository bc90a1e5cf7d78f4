#include "ParameterNumbers.h"

#include <text/NearestWords.h>

#include <algorithm>

namespace mxauthor {

namespace {

using mxformat::Decimal;
using mxformat::WholeNumber;

// The values that a parameter can have: those of its field, without a field those of a slot.
struct Limits
{
    explicit Limits(const mxformat::BlockField& field)
        : lowest(field.exists() ? field.number(field.lowest())
                                : WholeNumber(true, std::uint64_t{1} << 63)),
          highest(field.exists() ? field.number(field.highest())
                                 : WholeNumber(false, ~std::uint64_t{0} >> 1))
    {}

    WholeNumber lowest;
    WholeNumber highest;
};

std::string shownValue(const WholeNumber& raw, const ParameterUnit& unit)
{
    return unit.scale.text(raw) + " " + unit.unit;
}

// The number before the unit. A unit that begins with a digit needs a blank before it.
std::optional<Decimal> physicalNumber(const std::string& text, const std::string& unit)
{
    if (unit.empty() || text.size() <= unit.size() ||
        text.compare(text.size() - unit.size(), unit.size(), unit) != 0) {
        return std::nullopt;
    }
    const std::string number = text.substr(0, text.size() - unit.size());
    const bool isDigit = unit[0] >= '0' && unit[0] <= '9';
    if (isDigit && number.back() != ' ') {
        return std::nullopt;
    }
    return Decimal::ofText(number.substr(0, number.find_last_not_of(' ') + 1));
}

std::optional<ParameterNumber> readPhysical(const YAML::Node& node, const Decimal& value,
                                            const ParameterUnit& unit, const Limits& limits,
                                            SourceErrors& errors)
{
    const auto raw = unit.scale.nearestRaw(value, limits.lowest, limits.highest);
    if (!raw) {
        std::string least = shownValue(limits.lowest, unit);
        std::string greatest = shownValue(limits.highest, unit);
        if (unit.scale.factor < 0) {
            std::swap(least, greatest);
        }
        errors.add(node, "\"" + node.Scalar() + "\" does not fit, " + least + " to " + greatest +
                             " is accepted");
        return std::nullopt;
    }
    if (!unit.scale.states(value, *raw)) {
        errors.add(node, "\"" + node.Scalar() + "\" is between two values, the nearest one is " +
                             shownValue(*raw, unit) + ", raw " + raw->text());
        return std::nullopt;
    }
    return ParameterNumber{*raw, true};
}

// Hint for a number without unit: a physical value needs its unit.
std::string physicalHint(const std::string& text, const ParameterUnit& unit, const Limits& limits)
{
    const auto value = Decimal::ofText(text);
    const auto raw =
        value ? unit.scale.nearestRaw(*value, limits.lowest, limits.highest) : std::nullopt;
    if (unit.unit.empty()) {
        return "";
    }
    if (!raw || !unit.scale.states(*value, *raw)) {
        return ", nor a physical value such as \"" + shownValue(limits.highest, unit) + "\"";
    }
    return ": state \"" + text + " " + unit.unit + "\", or the raw value " + raw->text();
}

const NamedEntry* conversionOf(const ParameterRecord& record, const BuildContext& context)
{
    const std::uint8_t id = record.conversion.value;
    const auto found = std::find_if(context.conversions.begin(), context.conversions.end(),
                                    [id](const NamedEntry& entry) { return entry.id == id; });
    return id == 0 || found == context.conversions.end() ? nullptr : &*found;
}

} // namespace

ParameterUnit unitOf(const Section& section, const BuiltParameter& parameter,
                     const BuildContext& context)
{
    if (!parameter.isCertain) {
        return {{}, "", false};
    }
    const ParameterRecord& record = parameter.record;
    ParameterUnit shown;
    const NamedEntry* const conversion = conversionOf(record, context);
    if (conversion != nullptr) {
        shown.scale = conversion->scale;
        shown.unit = conversion->unit;
    }
    if (const auto unit = section.find("unit")) {
        shown.unit = unit->IsScalar() ? unit->Scalar() : "";
    }
    const bool isKnown = record.conversion.value == 0 || conversion != nullptr;
    return isKnown ? shown : ParameterUnit{};
}

std::optional<ParameterNumber> readParameterNumber(const YAML::Node& node,
                                                   const ParameterUnit& unit,
                                                   const mxformat::BlockField& field,
                                                   const std::vector<std::string>& options,
                                                   SourceErrors& errors)
{
    const auto text = readScalar(node, errors);
    if (!text) {
        return std::nullopt;
    }
    if (const auto raw = parseInteger(*text)) {
        return ParameterNumber{WholeNumber(raw->negative, raw->magnitude), false};
    }
    const Limits limits(field);
    if (isIntegerText(*text)) {
        errors.add(node, *text + " does not fit into the parameter, " + limits.lowest.text() +
                             " to " + limits.highest.text() + " is accepted");
        return std::nullopt;
    }
    if (!unit.isCertain) {
        return std::nullopt;
    }
    if (const auto value = physicalNumber(*text, unit.unit)) {
        return readPhysical(node, *value, unit, limits, errors);
    }
    const std::string hint = physicalHint(*text, unit, limits);
    errors.add(node, "\"" + *text + "\" is " +
                         (options.empty() ? "not a whole number" + hint
                                          : "neither an option nor a whole number" + hint +
                                                text::acceptedWords(*text, options)));
    return std::nullopt;
}

} // namespace mxauthor
