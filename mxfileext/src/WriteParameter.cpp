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

[[noreturn]] void fail(const std::uint8_t* record, const std::string& text,
                       const std::string& reason)
{
    throw std::runtime_error("Parameter " + std::to_string(devices::parser::mx::readU8(record)) +
                             ": cannot set value \"" + text + "\": " + reason);
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

Integer rawInteger(const std::uint8_t* record, const Conversion& conversion,
                   const std::string& text)
{
    if (!isConverted(record)) {
        if (const auto number = parseInteger(text)) {
            return *number;
        }
        fail(record, text, "expected a decimal integer");
    }
    if (const auto physical = parseDecimal(text)) {
        return nearestInteger((*physical - double{conversion.offset}) / double{conversion.factor});
    }
    fail(record, text, "expected a decimal number");
}

std::string shownText(const std::uint8_t* record, const Conversion& conversion,
                      const ParameterField& field, std::uint64_t rawValue)
{
    return isConverted(record) ? physicalText(physicalValue(field, conversion, rawValue))
                               : field.text(rawValue);
}

} // namespace

void setParameter(unsigned char module, unsigned char* raw, unsigned char* record,
                  const std::string& value)
{
    const ParameterField field(record);
    if (raw == nullptr || !field.liesWithin(blockSize())) {
        fail(record, value,
             "its place, " + std::to_string(field.byteCount()) + " bytes at byte offset " +
                 std::to_string(field.byteOffset()) + ", lies outside the raw image of " +
                 std::to_string(blockSize()) + " bytes");
    }
    const Conversion conversion = conversionOf(module, record);
    // A physical text may stand for several raw values: the one that shows it now is kept.
    if (value == shownText(record, conversion, field, field.read(raw))) {
        return;
    }
    const Integer number = rawInteger(record, conversion, value);
    if (number.tooLarge || !field.holds(number.negative, number.magnitude)) {
        fail(record, value,
             "expected " + shownText(record, conversion, field, field.lowest()) + " to " +
                 shownText(record, conversion, field, field.highest()));
    }
    field.write(raw, number.negative ? 0 - number.magnitude : number.magnitude);
}

} // namespace mxfileext
