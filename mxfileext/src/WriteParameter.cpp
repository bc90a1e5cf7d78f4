#include "ParameterField.h"
#include "PhysicalValue.h"

#include "mxfileext/mxfileext.h"

#include <devices/parser/mx/ByteReaders.h>

#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>

namespace mxfileext {

namespace {

// An integer of any sign, before it is known whether the parameter can hold it.
struct Integer
{
    bool negative;
    std::uint64_t magnitude;
    bool tooLarge; // beyond 64 bits
};

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

std::optional<Integer> parseInteger(const std::string& text)
{
    const bool sign = !text.empty() && (text[0] == '-' || text[0] == '+');
    const char* const end = text.data() + text.size();
    Integer number{sign && text[0] == '-', 0, false};
    const auto [rest, error] = std::from_chars(text.data() + sign, end, number.magnitude);
    if (error == std::errc::invalid_argument || rest != end) {
        return std::nullopt;
    }
    number.tooLarge = error == std::errc::result_out_of_range;
    return number;
}

std::optional<double> parseDecimal(const std::string& text)
{
    // from_chars takes no plus sign, but the words for infinity and not-a-number.
    const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    const char* const end = text.data() + text.size();
    double number = 0;
    const auto [rest, error] = std::from_chars(text.data() + plus, end, number);
    if (error != std::errc() || rest != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

// The whole number nearest to `value`.
Integer nearestInteger(double value)
{
    constexpr double twoTo64 = 18446744073709551616.0;
    const double magnitude = std::fabs(std::round(value));
    if (!(magnitude < twoTo64)) {
        return {value < 0, 0, true};
    }
    return {value < 0, static_cast<std::uint64_t>(magnitude), false};
}

std::string shownText(const std::uint8_t* record, const Conversion& conversion,
                      const ParameterField& field, std::uint64_t rawValue)
{
    return isConverted(record) ? physicalText(physicalValue(field, conversion, rawValue))
                               : field.text(rawValue);
}

// What the parameter can hold, in the form in which it is set.
std::string limitsText(const std::uint8_t* record, const Conversion& conversion,
                       const ParameterField& field)
{
    std::string low = shownText(record, conversion, field, field.lowest());
    std::string high = shownText(record, conversion, field, field.highest());
    if (isConverted(record) && conversion.factor < 0) {
        low.swap(high);
    }
    return low + " to " + high;
}

Integer rawInteger(const std::uint8_t* record, const Conversion& conversion,
                   const ParameterField& field, const std::string& text)
{
    if (!isConverted(record)) {
        if (const auto number = parseInteger(text)) {
            return *number;
        }
        fail(record, text, "expected a decimal integer, " + limitsText(record, conversion, field));
    }
    if (const auto physical = parseDecimal(text)) {
        return nearestInteger((*physical - double{conversion.offset}) / double{conversion.factor});
    }
    fail(record, text, "expected a decimal number, " + limitsText(record, conversion, field));
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
    const Integer number = rawInteger(record, conversion, field, value);
    if (number.tooLarge || !field.holds(number.negative, number.magnitude)) {
        fail(record, value, "expected " + limitsText(record, conversion, field));
    }
    field.write(raw, number.negative ? 0 - number.magnitude : number.magnitude);
}

} // namespace mxfileext
