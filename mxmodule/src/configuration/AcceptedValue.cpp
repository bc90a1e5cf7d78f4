#include "configuration/AcceptedValue.h"

#include "InvalidInput.h"
#include "ParameterText.h"
#include "configuration/ParameterPlace.h"

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/NearestWords.h>
#include <text/Utf8.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace mxmodule {

namespace {

using DeviceOption = DeviceReport::Option;
using DeviceParameter = DeviceReport::Parameter;

using mxformat::Decimal;

bool isInteger(const std::string& text)
{
    const std::size_t digits = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    return text.size() > digits &&
           text.find_first_not_of("0123456789", digits) == std::string::npos;
}

bool sameNumber(const std::string& a, const std::string& b)
{
    const auto left = Decimal::ofText(a);
    return left && left == Decimal::ofText(b);
}

[[noreturn]] void reject(const DeviceParameter& parameter, const std::string& value,
                         const std::string& reason, std::vector<std::string> accepted)
{
    throw InvalidInput(fmt::format("{}: value \"{}\" is not accepted: {}",
                                   text::toUtf8(described(parameter)), text::abbreviated(value),
                                   reason),
                       "", std::move(accepted));
}

// Whether `text`, the number `number`, is the present value of the parameter.
bool isShown(const DeviceParameter& parameter, const std::string& text, const Decimal& number)
{
    return text == parameter.value ||
           (parameter.raw && parameter.scale.states(number, *parameter.raw));
}

bool isListed(const DeviceParameter& parameter, const std::string& number)
{
    return std::any_of(
        parameter.options.begin(), parameter.options.end(),
        [&number](const DeviceOption& option) { return sameNumber(option.value, number); });
}

std::string numberWord(const std::string& number)
{
    return "#" + number;
}

// The number of the option with this text, if any.
std::optional<std::string> numberOfText(const DeviceParameter& parameter, const std::string& text)
{
    std::optional<std::string> number;
    for (const DeviceOption& option : parameter.options) {
        if (text::toUtf8(option.text) != text) {
            continue;
        }
        if (number && *number != option.value) {
            reject(parameter, text,
                   fmt::format("several options have this text, expected one of the numbers in {}",
                               text::toUtf8(acceptedValues(parameter))),
                   {numberWord(*number), numberWord(option.value)});
        }
        number = option.value;
    }
    return number;
}

std::vector<std::string> optionTexts(const DeviceParameter& parameter)
{
    std::vector<std::string> texts;
    for (const DeviceOption& option : parameter.options) {
        texts.push_back(text::toUtf8(option.text));
    }
    return texts;
}

[[noreturn]] void rejectOption(const DeviceParameter& parameter, const std::string& value)
{
    const std::string guess = text::didYouMean(value, optionTexts(parameter));
    reject(parameter, value,
           fmt::format("no such option{} Accepted: {}", guess.empty() ? "." : guess,
                       text::toUtf8(acceptedValues(parameter))),
           callTexts(parameter));
}

std::string limitsOf(const DeviceParameter& parameter)
{
    const mxformat::BlockField& field = parameter.field;
    std::string low = parameter.scale.text(field.number(field.lowest()));
    std::string high = parameter.scale.text(field.number(field.highest()));
    if (parameter.scale.factor < 0) {
        low.swap(high);
    }
    return low + " to " + high;
}

// Options, ranges and forced values may exceed the bits of a parameter.
void requireHeld(const DeviceParameter& parameter, const std::string& value,
                 const std::string& number)
{
    const mxformat::BlockField& field = parameter.field;
    if (!field.exists()) {
        reject(parameter, value, "the parameter has no value: " + faultOfBits(parameter), {});
    }
    const auto wanted = Decimal::ofText(number);
    if (wanted &&
        !parameter.scale.nearestRaw(*wanted, field.number(field.lowest()),
                                    field.number(field.highest())) &&
        !isShown(parameter, number, *wanted)) {
        reject(parameter, value,
               fmt::format("{} does not fit, expected {}, all that the parameter can hold",
                           number == value ? "it" : "its number " + number, limitsOf(parameter)),
               {limitsOf(parameter)});
    }
}

// Ambiguous: one option's text is another's number.
void rejectAmbiguous(const DeviceParameter& parameter, const std::string& value,
                     const std::string& numberOfItsText)
{
    if (isInteger(value) && !sameNumber(value, numberOfItsText) && isListed(parameter, value)) {
        reject(parameter, value,
               fmt::format("it is the text of option {} and the number of another one, write #{} "
                           "or #{}. Accepted: {}",
                           numberOfItsText, numberOfItsText, value,
                           text::toUtf8(acceptedValues(parameter))),
               {numberWord(numberOfItsText), numberWord(value)});
    }
}

std::string optionNumber(const DeviceParameter& parameter, const std::string& value,
                         ValueCheck check)
{
    std::string number = value;
    if (value.size() > 1 && value[0] == '#' && isInteger(value.substr(1))) {
        number = value.substr(1);
    } else if (const auto ofText = numberOfText(parameter, value)) {
        rejectAmbiguous(parameter, value, *ofText);
        return *ofText;
    }
    const bool accepted =
        isInteger(number) && (check == ValueCheck::NumberOnly || isListed(parameter, number) ||
                              sameNumber(number, parameter.value));
    if (!accepted) {
        rejectOption(parameter, value);
    }
    return number;
}

// `value` without the parameter's unit and the blanks before it. A unit that could continue a
// number must follow a blank.
std::string withoutUnit(const DeviceParameter& parameter, const std::string& value)
{
    const std::string unit = text::toUtf8(parameter.unit);
    if (Decimal::ofText(value) || unit.empty() || value.size() <= unit.size() ||
        value.compare(value.size() - unit.size(), unit.size(), unit) != 0) {
        return value;
    }
    const std::string number = value.substr(0, value.size() - unit.size());
    const bool continuesNumber = std::string(".0123456789").find(unit[0]) != std::string::npos;
    return continuesNumber && number.back() != ' '
               ? value
               : number.substr(0, number.find_last_not_of(' ') + 1);
}

// `text` with its decimal comma replaced by a point; empty if it is not a number with a comma.
std::string withDecimalPoint(std::string text)
{
    const std::size_t comma = text.find(',');
    if (comma != std::string::npos) {
        text[comma] = '.';
    }
    return comma != std::string::npos && Decimal::ofText(text) ? text : "";
}

// The hint for a number with a decimal comma or another unit.
std::string numberHint(const DeviceParameter& parameter, const std::string& value)
{
    const std::string text = withoutUnit(parameter, value);
    const std::string pointed = withDecimalPoint(text);
    if (parameter.converted && !pointed.empty()) {
        return ", with a decimal point: " + pointed;
    }
    const std::size_t end = text.find_first_not_of("+-.0123456789");
    const bool hasOtherUnit = end != std::string::npos && text[end] != ',' &&
                              text.compare(0, 2, "0x") != 0 && Decimal::ofText(text.substr(0, end));
    return hasOtherUnit && !parameter.unit.empty()
               ? fmt::format(", in {} or without a unit", text::toUtf8(parameter.unit))
               : "";
}

[[noreturn]] void rejectNumber(const DeviceParameter& parameter, const std::string& value)
{
    const std::string unit = parameter.unit.empty() ? "" : " " + text::toUtf8(parameter.unit);
    const std::string range = acceptedValues(parameter) + unit;
    reject(parameter, value,
           fmt::format("expected {}, {}{}", parameter.converted ? "a number" : "a whole number",
                       range, numberHint(parameter, value)),
           {range});
}

// The number in `value`. It must be in the range, unless it is the present value or only a number
// is asked for.
std::string rangedNumber(const DeviceParameter& parameter, const std::string& value,
                         ValueCheck check)
{
    std::string text = value == parameter.value ? value : withoutUnit(parameter, value);
    if (check == ValueCheck::Full && parameter.raw && text == parameter.value) {
        return text; // may be no number: a scale can lead beyond every number, shown as "inf"
    }
    const auto number = Decimal::ofText(text);
    if (!number || (!parameter.converted && !isInteger(text))) {
        rejectNumber(parameter, value);
    }
    // Compares raw values: texts of physical values may be rounded.
    const auto raw = check == ValueCheck::Full
                         ? parameter.scale.nearestRaw(*number, parameter.rawMin, parameter.rawMax)
                         : std::nullopt;
    if (raw && parameter.field.holds(*raw)) {
        return text;
    }
    if (check == ValueCheck::Full && !raw && !isShown(parameter, text, *number)) {
        rejectNumber(parameter, value);
    }
    requireHeld(parameter, value, text);
    return text;
}

} // namespace

std::vector<std::string> callTexts(const DeviceReport::Parameter& parameter)
{
    std::map<std::string, std::set<std::string>> numbers; // by text
    for (const DeviceOption& option : parameter.options) {
        numbers[text::toUtf8(option.text)].insert(option.value);
    }
    std::vector<std::string> words;
    for (const DeviceOption& option : parameter.options) {
        const std::string text = text::toUtf8(option.text);
        const bool mayBeNumber =
            text.empty() || text[0] == '#' || (isInteger(text) && !sameNumber(text, option.value));
        words.push_back(mayBeNumber || numbers[text].size() > 1 ? numberWord(option.value) : text);
    }
    return words;
}

std::string acceptedValue(const DeviceParameter& parameter, const std::string& value,
                          ValueCheck check)
{
    if (!parameter.hasOptionList) {
        return rangedNumber(parameter, value, check);
    }
    std::string number = optionNumber(parameter, value, check);
    requireHeld(parameter, value, number);
    return number;
}

} // namespace mxmodule
