#include "ParameterField.h"
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

// `text` with its NUL bytes spelled out: one of them would end the message.
std::string withoutNul(const std::string& text)
{
    std::string shown;
    for (const char c : text) {
        shown += c == '\0' ? std::string("\\0") : std::string(1, c);
    }
    return shown;
}

[[noreturn]] void fail(const std::uint8_t* record, const std::string& text,
                       const std::string& reason)
{
    throw std::runtime_error("Parameter " + std::to_string(devices::parser::mx::readU8(record)) +
                             ": cannot set value \"" + withoutNul(text) + "\": " + reason);
}

// The text in which `getParameterValue` or `getConvertedParameter` give a raw value.
std::string shownText(const std::uint8_t* record, const Conversion& conversion,
                      const ParameterField& field, std::uint64_t rawValue)
{
    return isConverted(record) ? physicalText(conversion.scale.value(field.number(rawValue)))
                               : field.text(rawValue);
}

// What the parameter can hold, in the form in which it is set.
std::string limitsText(const std::uint8_t* record, const Conversion& conversion,
                       const ParameterField& field)
{
    if (!isConverted(record)) {
        return field.text(field.lowest()) + " to " + field.text(field.highest());
    }
    std::string low = conversion.scale.text(field.number(field.lowest()));
    std::string high = conversion.scale.text(field.number(field.highest()));
    if (conversion.scale.factor < 0) {
        low.swap(high);
    }
    return low + " to " + high;
}

// The raw value that the text of a parameter without conversion asks for; nothing when the field
// cannot hold it.
std::optional<WholeNumber> rawOfInteger(const std::uint8_t* record, const Conversion& conversion,
                                        const ParameterField& field, const std::string& text)
{
    const bool sign = !text.empty() && (text[0] == '-' || text[0] == '+');
    const char* const end = text.data() + text.size();
    std::uint64_t magnitude = 0;
    const auto [rest, error] = std::from_chars(text.data() + sign, end, magnitude);
    if (error == std::errc::invalid_argument || rest != end) {
        fail(record, text, "expected a decimal integer, " + limitsText(record, conversion, field));
    }
    const WholeNumber number(sign && text[0] == '-', magnitude);
    return error == std::errc() && field.holds(number) ? std::optional(number) : std::nullopt;
}

// The same for the physical value of a converted parameter.
std::optional<WholeNumber> rawOfPhysical(const std::uint8_t* record, const Conversion& conversion,
                                         const ParameterField& field, const std::string& text)
{
    const auto wanted = mxformat::Decimal::ofText(text);
    if (!wanted) {
        fail(record, text, "expected a decimal number, " + limitsText(record, conversion, field));
    }
    if (const auto raw = conversion.scale.nearestRaw(*wanted, field.number(field.lowest()),
                                                     field.number(field.highest()))) {
        return raw;
    }
    // A bound of many digits may be shown as a number beyond it.
    for (const std::uint64_t bound : {field.lowest(), field.highest()}) {
        if (text == shownText(record, conversion, field, bound)) {
            return field.number(bound);
        }
    }
    return std::nullopt;
}

// Why there is nothing to write to; empty where the value lies in a raw image of `imageSize` bytes.
std::string misplacement(const std::uint8_t* record, const ParameterField& field,
                         std::size_t imageSize)
{
    using devices::parser::mx::readU8;
    if (field.byteCount() == 0) {
        return "its datatype is " + std::to_string(readU8(record + 4)) + ", expected 1 to 9";
    }
    if (field.bitCount() == 0) {
        return "its bit offset is " + std::to_string(readU8(record + 27)) + ", expected 0 to 7";
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
    const ParameterField field(record);
    const std::string misplaced = misplacement(record, field, raw == nullptr ? 0 : blockSize());
    if (!misplaced.empty()) {
        fail(record, value, misplaced);
    }
    const Conversion conversion = conversionOf(module, record);
    // A physical text may stand for several raw values: the one that shows it now is kept.
    if (value == shownText(record, conversion, field, field.read(raw))) {
        return;
    }
    const auto wanted = isConverted(record) ? rawOfPhysical(record, conversion, field, value)
                                            : rawOfInteger(record, conversion, field, value);
    if (!wanted) {
        fail(record, value, "expected " + limitsText(record, conversion, field));
    }
    field.write(raw, wanted->bits());
}

} // namespace mxfileext
