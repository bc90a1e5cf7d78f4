#include "mxformat/WholeNumber.h"

namespace mxformat {

WholeNumber WholeNumber::ofBits(std::uint64_t bits, bool isSigned)
{
    const bool negative = isSigned && bits >> 63U != 0;
    return {negative, negative ? 0 - bits : bits};
}

std::string WholeNumber::text() const
{
    return (negative ? "-" : "") + std::to_string(absolute);
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
