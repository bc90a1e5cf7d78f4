#include "mxformat/WholeNumber.h"

#include <array>
#include <charconv>

namespace mxformat {

WholeNumber WholeNumber::ofBits(std::uint64_t bits, bool isSigned)
{
    const bool negative = isSigned && bits >> 63U != 0;
    return {negative, negative ? 0 - bits : bits};
}

std::string WholeNumber::text() const
{
    std::array<char, 21> digits; // a sign and as many as 2^64 - 1 has
    digits[0] = '-';
    const auto written = std::to_chars(digits.data() + 1, digits.data() + digits.size(), absolute);
    return {digits.data() + (negative ? 0 : 1), written.ptr};
}

WholeNumber WholeNumber::plus(std::uint64_t steps) const
{
    if (!negative) {
        return {false, absolute + steps};
    }
    return steps >= absolute ? WholeNumber(false, steps - absolute)
                             : WholeNumber(true, absolute - steps);
}

bool WholeNumber::operator==(const WholeNumber& other) const
{
    return negative == other.negative && absolute == other.absolute;
}

bool WholeNumber::operator<(const WholeNumber& other) const
{
    if (negative != other.negative) {
        return negative;
    }
    return negative ? other.absolute < absolute : absolute < other.absolute;
}

} // namespace mxformat
