#include "config/AcceptedValue.h"

#include "NearestWords.h"
#include "ParameterText.h"
#include "Refusal.h"
#include "ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace mxtool {

namespace {

using Option = DeviceReport::Option;
using Parameter = DeviceReport::Parameter;

// A long double holds every 64-bit integer.
using Number = long double;

std::optional<Number> parseNumber(const std::string& text)
{
    const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    Number number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data() + plus, end, number);
    if (error != std::errc() || rest != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

bool isInteger(const std::string& text)
{
    const std::size_t digits = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    return text.size() > digits &&
           text.find_first_not_of("0123456789", digits) == std::string::npos;
}

bool sameNumber(const std::string& a, const std::string& b)
{
    const auto left = parseNumber(a);
    return left && left == parseNumber(b);
}

[[noreturn]] void refuse(const Parameter& parameter, const std::string& value,
                         const std::string& reason)
{
    throw Refusal(fmt::format("{}: value \"{}\" is not accepted: {}", toUtf8(described(parameter)),
                              value, reason));
}

bool isListed(const Parameter& parameter, const std::string& number)
{
    return std::any_of(
        parameter.options.begin(), parameter.options.end(),
        [&number](const Option& option) { return sameNumber(option.value, number); });
}

// The number of the option that has this text; nothing when none has it.
std::optional<std::string> numberOfText(const Parameter& parameter, const std::string& text)
{
    std::optional<std::string> number;
    for (const Option& option : parameter.options) {
        if (toUtf8(option.text) != text) {
            continue;
        }
        if (number && *number != option.value) {
            refuse(parameter, text,
                   fmt::format("several options are called so, expected one of the numbers in {}",
                               toUtf8(acceptedValues(parameter))));
        }
        number = option.value;
    }
    return number;
}

std::vector<std::string> optionTexts(const Parameter& parameter)
{
    std::vector<std::string> texts;
    for (const Option& option : parameter.options) {
        texts.push_back(toUtf8(option.text));
    }
    return texts;
}

[[noreturn]] void refuseOption(const Parameter& parameter, const std::string& value)
{
    const std::string guess = didYouMean(value, optionTexts(parameter));
    refuse(parameter, value,
           fmt::format("no such option{} Accepted: {}", guess.empty() ? "." : guess,
                       toUtf8(acceptedValues(parameter))));
}

// Where one option is called by the number of another, nobody can tell which is meant.
void refuseTwoMeanings(const Parameter& parameter, const std::string& value,
                       const std::string& numberOfItsText)
{
    if (isInteger(value) && !sameNumber(value, numberOfItsText) && isListed(parameter, value)) {
        refuse(parameter, value,
               fmt::format("it is the text of option {} and the number of another one, write #{} "
                           "or #{}. Accepted: {}",
                           numberOfItsText, numberOfItsText, value,
                           toUtf8(acceptedValues(parameter))));
    }
}

std::string optionNumber(const Parameter& parameter, const std::string& value, ValueCheck check)
{
    std::string number = value;
    if (value.size() > 1 && value[0] == '#' && isInteger(value.substr(1))) {
        number = value.substr(1);
    } else if (const auto ofText = numberOfText(parameter, value)) {
        refuseTwoMeanings(parameter, value, *ofText);
        return *ofText;
    }
    const bool accepted =
        isInteger(number) && (check == ValueCheck::NumberOnly || isListed(parameter, number) ||
                              sameNumber(number, parameter.value));
    if (!accepted) {
        refuseOption(parameter, value);
    }
    return number;
}

// `value` without the parameter's unit and the blanks in front of it.
std::string withoutUnit(const Parameter& parameter, const std::string& value)
{
    const std::string unit = toUtf8(parameter.unit);
    if (unit.empty() || value.size() <= unit.size() ||
        value.compare(value.size() - unit.size(), unit.size(), unit) != 0) {
        return value;
    }
    const std::string number = value.substr(0, value.size() - unit.size());
    return number.substr(0, number.find_last_not_of(' ') + 1);
}

std::string expectation(const Parameter& parameter)
{
    const std::string unit = parameter.unit.empty() ? "" : " " + toUtf8(parameter.unit);
    return fmt::format("expected {}, {}{}", parameter.converted ? "a number" : "a whole number",
                       acceptedValues(parameter), unit);
}

std::string rangedNumber(const Parameter& parameter, const std::string& value, ValueCheck check)
{
    std::string text = withoutUnit(parameter, value);
    const std::optional<Number> number = parseNumber(text);
    if (!number || (!parameter.converted && !isInteger(text))) {
        refuse(parameter, value, expectation(parameter));
    }
    if (check == ValueCheck::NumberOnly || sameNumber(text, parameter.value)) {
        return text;
    }
    const auto low = parseNumber(parameter.min);
    const auto high = parseNumber(parameter.max);
    if ((low && *number < *low) || (high && *number > *high)) {
        refuse(parameter, value, expectation(parameter));
    }
    return text;
}

} // namespace

std::string acceptedValue(const Parameter& parameter, const std::string& value, ValueCheck check)
{
    return parameter.hasOptionList ? optionNumber(parameter, value, check)
                                   : rangedNumber(parameter, value, check);
}

} // namespace mxtool
