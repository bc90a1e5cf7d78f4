#include "ParameterField.h"
#include "ParameterWords.h"
#include "PhysicalValue.h"

#include "mxfileext/mxfileext.h"

#include <devices/parser/mx/ByteReaders.h>
#include <mxformat/Decimal.h>

#include <charconv>
#include <optional>
#include <stdexcept>

namespace mxfileext {

namespace {

using mxformat::WholeNumber;

// The parameter that a text is written to.
struct Target
{
    std::uint8_t module;
    const std::uint8_t* record;
    ParameterField field;
};

[[noreturn]] void fail(const Target& target, const std::string& text, const std::string& reason)
{
    throw std::runtime_error(parameterName(target.module, target.record) + ": cannot set value " +
                             quoted(text) + ": " + reason);
}

// The text in which `getParameterValue` or `getConvertedParameter` give a raw value.
std::string shownText(const Target& target, const Conversion& conversion, std::uint64_t rawValue)
{
    const ParameterField& field = target.field;
    return isConverted(target.record) ? physicalText(conversion.scale.value(field.number(rawValue)))
                                      : field.text(rawValue);
}

// What the parameter can hold, in the form in which it is set.
std::string limitsText(const Target& target, const Conversion& conversion)
{
    const ParameterField& field = target.field;
    if (!isConverted(target.record)) {
        return field.text(field.lowest()) + " to " + field.text(field.highest());
    }
    std::string low = conversion.scale.text(field.number(field.lowest()));
    std::string high = conversion.scale.text(field.number(field.highest()));
    if (conversion.scale.factor < 0) {
        low.swap(high);
    }
    return low + " to " + high;
}

// Fails because `text` is none of what is `expected`.
[[noreturn]] void refuse(const Target& target, const Conversion& conversion,
                         const std::string& text, const std::string& expected)
{
    fail(target, text,
         expected + limitsText(target, conversion) +
             optionsText(target.module, target.record, target.field));
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
    return error == std::errc() && target.field.holds(number) ? std::optional(number)
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
    const ParameterField& field = target.field;
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

// Why there is nothing to write to; empty where the value lies in a raw image of `imageSize` bytes.
std::string misplacement(const Target& target, std::size_t imageSize)
{
    using devices::parser::mx::readU8;
    const ParameterField& field = target.field;
    if (field.byteCount() == 0) {
        return "its datatype is " + std::to_string(readU8(target.record + 4)) + ", expected 1 to 9";
    }
    if (field.bitCount() == 0) {
        return "its bit offset is " + std::to_string(readU8(target.record + 27)) +
               ", expected 0 to 7";
    }
    if (!field.liesWithin(imageSize)) {
        return "its place, " + std::to_string(field.byteCount()) + " byte(s) at byte offset " +
               std::to_string(field.byteOffset()) + ", lies outside the raw image of " +
               std::to_string(imageSize) + " byte(s)";
    }
    return {};
}

} // namespace

void setParameter(unsigned char module, unsigned char* raw, unsigned char* record,
                  const std::string& value)
{
    const devices::parser::mx::OneThreadAtATime::Use use(keptTables, "mxfileext::setParameter");
    const Target target{module, record, ParameterField(record)};
    const std::string misplaced = misplacement(target, raw == nullptr ? 0 : blockSize());
    if (!misplaced.empty()) {
        fail(target, value, misplaced);
    }
    const Conversion conversion = conversionOf(module, record);
    // A physical text may stand for several raw values: the one that shows it now is kept.
    if (value == shownText(target, conversion, target.field.read(raw))) {
        return;
    }
    const auto wanted = isConverted(record) ? rawOfPhysical(target, conversion, value)
                                            : rawOfInteger(target, conversion, value);
    if (!wanted) {
        refuse(target, conversion, value, "expected ");
    }
    target.field.write(raw, wanted->bits());
}

} // namespace mxfileext
