#include "ModuleData.h"
#include "ParameterWords.h"

#include "mxfileext/mxfileext.h"

#include <mxformat/Decimal.h>
#include <text/FixedDecimals.h>

#include <charconv>
#include <optional>
#include <stdexcept>

namespace mxfileext {

namespace {

using mxformat::BlockField;
using mxformat::WholeNumber;

// The parameter that a text is written to.
struct Target
{
    std::uint8_t module;
    Parameter parameter;
};

[[noreturn]] void fail(const Target& target, const std::string& text, const std::string& reason)
{
    throw std::runtime_error(parameterName(target.module, target.parameter) +
                             ": cannot set value " + quoted(text) + ": " + reason);
}

// The text in which `getParameterValue` or `getConvertedParameter` give a raw value.
std::string shownText(const Target& target, const Conversion& conversion, std::uint64_t rawValue)
{
    const Parameter& parameter = target.parameter;
    return parameter.isConverted()
               ? text::fixedDecimals(conversion.scale.value(parameter.field.number(rawValue)))
               : parameter.text(rawValue);
}

// What the parameter can hold, in the form in which it is set.
std::string limitsText(const Target& target, const Conversion& conversion)
{
    const BlockField& field = target.parameter.field;
    if (!target.parameter.isConverted()) {
        return target.parameter.text(field.lowest()) + " to " +
               target.parameter.text(field.highest());
    }
    std::string low = conversion.scale.text(field.number(field.lowest()));
    std::string high = conversion.scale.text(field.number(field.highest()));
    if (conversion.scale.factor < 0) {
        low.swap(high);
    }
    return low + " to " + high;
}

// Fails because `text` is not what is `expected`.
[[noreturn]] void refuse(const Target& target, const Conversion& conversion,
                         const std::string& text, const std::string& expected)
{
    fail(target, text,
         expected + limitsText(target, conversion) + optionsText(target.module, target.parameter));
}

// The raw value that the text of a parameter without conversion asks for; nothing when the field
// cannot hold it.
std::optional<WholeNumber> rawOfInteger(const Target& target, const Conversion& conversion,
                                        const std::string& text)
{
    const bool sign = !text.empty() && (text[0] == '-' || text[0] == '+');
    const char* const end = text.data() + text.size();
    std::uint64_t magnitude = 0;
    const auto [rest, error] = std::from_chars(text.data() + sign, end, magnitude);
    if (error == std::errc::invalid_argument || rest != end) {
        refuse(target, conversion, text, "expected a decimal integer, ");
    }
    const WholeNumber number(sign && text[0] == '-', magnitude);
    return error == std::errc() && target.parameter.field.holds(number) ? std::optional(number)
                                                                        : std::nullopt;
}

// The same for the physical value of a converted parameter.
std::optional<WholeNumber> rawOfPhysical(const Target& target, const Conversion& conversion,
                                         const std::string& text)
{
    const auto wanted = mxformat::Decimal::ofText(text);
    if (!wanted) {
        refuse(target, conversion, text, "expected a decimal number, ");
    }
    const BlockField& field = target.parameter.field;
    if (const auto raw = conversion.scale.nearestRaw(*wanted, field.number(field.lowest()),
                                                     field.number(field.highest()))) {
        return raw;
    }
    // A bound of many digits may be shown as a number beyond it.
    for (const std::uint64_t bound : {field.lowest(), field.highest()}) {
        if (text == shownText(target, conversion, bound)) {
            return field.number(bound);
        }
    }
    return std::nullopt;
}

std::string bitFieldOutside(unsigned bitLength, unsigned bitOffset)
{
    return "its bit field of " + std::to_string(bitLength) + " bit(s) at bit offset " +
           std::to_string(bitOffset) + " lies outside its byte, expected bits 0 to 7";
}

// Why there is nothing to write to; empty where the value lies in a raw image of `imageSize` bytes.
std::string misplacement(const Target& target, std::size_t imageSize)
{
    const auto& [record, field] = target.parameter;
    if (field.datatype() == nullptr) {
        return "its datatype is " + std::to_string(record.datatype) + ", expected 1 to " +
               std::to_string(mxformat::datatypes.size());
    }
    if (!field.exists()) {
        return bitFieldOutside(record.bitLength, record.bitOffset);
    }
    if (!field.liesWithin(imageSize)) {
        return "its place, " + std::to_string(field.size()) + " byte(s) at byte offset " +
               std::to_string(field.begin()) + ", lies outside the raw image of " +
               std::to_string(imageSize) + " byte(s)";
    }
    return {};
}

} // namespace

void setParameter(unsigned char module, unsigned char* raw, unsigned char* record,
                  const std::string& value)
{
    const devices::parser::mx::OneThreadAtATime::Use use(keptTables, "mxfileext::setParameter");
    const Target target{module, Parameter(record)};
    const Parameter& parameter = target.parameter;
    const std::string misplaced = misplacement(target, raw == nullptr ? 0 : blockSize());
    if (!misplaced.empty()) {
        fail(target, value, misplaced);
    }
    const Conversion conversion = moduleData(module).conversion(parameter.record.conversion);
    // Several raw values may have one physical text: the one that has it now is kept.
    if (value == shownText(target, conversion, parameter.field.read(raw))) {
        return;
    }
    const auto wanted = parameter.isConverted() ? rawOfPhysical(target, conversion, value)
                                                : rawOfInteger(target, conversion, value);
    if (!wanted) {
        refuse(target, conversion, value, "expected ");
    }
    parameter.field.write(raw, wanted->bits());
}

} // namespace mxfileext
