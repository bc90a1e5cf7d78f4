#include "mxformat/Decimal.h"

#include <algorithm>
#include <charconv>

namespace mxformat {

namespace {

constexpr std::uint32_t limbBase = 1000000000;

std::uint32_t powerOfTen(std::size_t exponent)
{
    std::uint32_t power = 1;
    for (std::size_t i = 0; i < exponent; ++i) {
        power *= 10;
    }
    return power;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::size_t digitsAtFront(std::string_view text)
{
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) -
                                    text.begin());
}

// The parts of a decimal text.
struct Spelling
{
    std::string_view whole;
    std::string_view fraction;
    int exponent = 0;
    bool negative = false;
};

// Takes "e", a sign and digits off the front of `text`; an exponent beyond every number is cut.
std::optional<int> takeExponent(std::string_view& text)
{
    constexpr int most = 1000000000; // beyond the length of any text
    std::string_view rest = text.substr(1);
    const bool negative = !rest.empty() && rest.front() == '-';
    if (!rest.empty() && (rest.front() == '-' || rest.front() == '+')) {
        rest.remove_prefix(1);
    }
    const std::size_t count = digitsAtFront(rest);
    if (count == 0) {
        return std::nullopt;
    }
    int exponent = 0;
    for (const char c : rest.substr(0, count)) {
        exponent = exponent >= most / 10 ? most : exponent * 10 + (c - '0');
    }
    text = rest.substr(count);
    return negative ? -exponent : exponent;
}

std::optional<Spelling> spellingOf(std::string_view text)
{
    Spelling spelling;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        spelling.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    spelling.whole = text.substr(0, digitsAtFront(text));
    text.remove_prefix(spelling.whole.size());
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        spelling.fraction = text.substr(0, digitsAtFront(text));
        text.remove_prefix(spelling.fraction.size());
    }
    if (spelling.whole.empty() && spelling.fraction.empty()) {
        return std::nullopt;
    }
    if (!text.empty() && (text.front() == 'e' || text.front() == 'E')) {
        const auto exponent = takeExponent(text);
        if (!exponent) {
            return std::nullopt;
        }
        spelling.exponent = *exponent;
    }
    return text.empty() ? std::optional(spelling) : std::nullopt;
}

// `number` as `std::to_chars` spells it.
template <typename... Form>
Decimal spelled(float number, Form... form)
{
    constexpr std::size_t longest = 256; // sign, 39 digits, point, 149 decimals
    std::array<char, longest> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), number, form...);
    return *Decimal::ofText({text.data(), static_cast<std::size_t>(written.ptr - text.data())});
}

} // namespace

Decimal::Decimal(float number)
{
    constexpr int mostDecimals = 149; // the smallest binary32 is 2^-149
    *this = spelled(number, std::chars_format::fixed, mostDecimals);
}

Decimal Decimal::shortestOf(float number)
{
    return spelled(number, std::chars_format::scientific);
}

std::optional<Decimal> Decimal::ofText(std::string_view text)
{
    const auto spelling = spellingOf(text);
    if (!spelling) {
        return std::nullopt;
    }
    Decimal number;
    std::int64_t place = static_cast<std::int64_t>(spelling->whole.size()) + spelling->exponent;
    for (const std::string_view part : {spelling->whole, spelling->fraction}) {
        for (const char c : part) {
            --place;
            if (c == '0') {
                continue;
            }
            if (place >= highestPlace - 1) {
                number = Decimal();
                number.addDigit(1, highestPlace - 1);
                number.negative = spelling->negative;
                return number;
            }
            if (place <= lowestPlace) {
                number.limbs[0] = std::max<std::uint32_t>(number.limbs[0], 1);
                break;
            }
            number.addDigit(static_cast<unsigned>(c - '0'), static_cast<int>(place));
        }
    }
    number.negative = spelling->negative && !number.isZero();
    return number;
}

void Decimal::addDigit(unsigned digit, int place)
{
    const auto position = static_cast<std::size_t>(place - lowestPlace);
    limbs[position / limbDigits] += digit * powerOfTen(position % limbDigits);
}

Decimal Decimal::operator-() const
{
    Decimal result = *this;
    result.negative = !negative && !isZero();
    return result;
}

Decimal Decimal::absolute() const
{
    Decimal result = *this;
    result.negative = false;
    return result;
}

std::optional<WholeNumber> Decimal::whole() const
{
    constexpr std::size_t mostLimbs = 3; // of 64 bits
    const auto* const ones = limbs.begin() + fractionLimbs;
    const auto isZeroLimb = [](std::uint32_t limb) { return limb == 0; };
    if (!std::all_of(limbs.begin(), ones, isZeroLimb) ||
        !std::all_of(ones + mostLimbs, limbs.end(), isZeroLimb)) {
        return std::nullopt;
    }
    std::uint64_t magnitude = 0;
    for (std::size_t i = mostLimbs; i-- > 0;) {
        if (magnitude > (~std::uint64_t{0} - ones[i]) / limbBase) {
            return std::nullopt;
        }
        magnitude = magnitude * limbBase + ones[i];
    }
    return WholeNumber(negative, magnitude);
}

long double Decimal::estimate() const
{
    long double fraction = 0;
    for (std::size_t i = 0; i < fractionLimbs; ++i) {
        fraction = (fraction + static_cast<long double>(limbs[i])) / limbBase;
    }
    long double whole = 0;
    for (std::size_t i = limbCount; i-- > fractionLimbs;) {
        whole = whole * limbBase + static_cast<long double>(limbs[i]);
    }
    return negative ? -(whole + fraction) : whole + fraction;
}

Decimal Decimal::operator+(const Decimal& other) const
{
    if (negative != other.negative && isBelow(limbs, other.limbs)) {
        return other + *this;
    }
    Decimal result = *this;
    std::uint32_t carry = 0;
    for (std::size_t i = 0; i < limbCount; ++i) {
        const std::uint32_t there = other.limbs[i] + carry;
        if (negative == other.negative) {
            result.limbs[i] += there;
            carry = result.limbs[i] >= limbBase ? 1 : 0;
            result.limbs[i] -= carry * limbBase;
        } else {
            carry = result.limbs[i] < there ? 1 : 0;
            result.limbs[i] += carry * limbBase - there;
        }
    }
    result.negative = negative && !result.isZero();
    return result;
}

Decimal Decimal::operator*(const WholeNumber& factor) const
{
    Decimal result;
    std::uint64_t left = factor.magnitude();
    for (std::size_t shift = 0; left != 0; ++shift, left /= limbBase) {
        const std::uint64_t digit = left % limbBase;
        std::uint64_t carry = 0;
        for (std::size_t i = 0; i + shift < limbCount; ++i) {
            const std::uint64_t sum = result.limbs[i + shift] + limbs[i] * digit + carry;
            result.limbs[i + shift] = static_cast<std::uint32_t>(sum % limbBase);
            carry = sum / limbBase;
        }
    }
    result.negative = negative != factor.isNegative() && !result.isZero();
    return result;
}

bool Decimal::isZero() const
{
    return std::all_of(limbs.begin(), limbs.end(), [](std::uint32_t limb) { return limb == 0; });
}

bool Decimal::isBelow(const Limbs& a, const Limbs& b)
{
    return std::lexicographical_compare(a.rbegin(), a.rend(), b.rbegin(), b.rend());
}

bool Decimal::operator==(const Decimal& other) const
{
    return negative == other.negative && limbs == other.limbs;
}

bool Decimal::operator<(const Decimal& other) const
{
    if (negative != other.negative) {
        return negative;
    }
    return negative ? isBelow(other.limbs, limbs) : isBelow(limbs, other.limbs);
}

Decimal Decimal::rounded(unsigned decimals) const
{
    if (decimals >= fractionLimbs * limbDigits) {
        return *this;
    }
    const std::size_t first = fractionLimbs - 1 - decimals / limbDigits; // to lose digits
    const std::uint32_t unit = powerOfTen(limbDigits - decimals % limbDigits);
    Decimal result = *this;
    const std::uint32_t lost = result.limbs[first] % unit;
    result.limbs[first] -= lost;
    std::fill_n(result.limbs.begin(), first, 0U);
    if (lost >= unit / 2) {
        Decimal one;
        one.negative = negative;
        one.limbs[unit == limbBase ? first + 1 : first] = unit == limbBase ? 1 : unit;
        result = result + one;
    }
    result.negative = negative && !result.isZero();
    return result;
}

// All digits there are, with zeros at both ends.
std::string Decimal::digits() const
{
    std::string all(limbCount * limbDigits, '0');
    for (std::size_t i = 0; i < limbCount; ++i) {
        std::uint32_t limb = limbs[i];
        for (std::size_t digit = 1; digit <= limbDigits; ++digit, limb /= 10) {
            all[all.size() - i * limbDigits - digit] = static_cast<char>('0' + limb % 10);
        }
    }
    return all;
}

std::string Decimal::text() const
{
    const std::string all = digits();
    const std::size_t point = all.size() - fractionLimbs * limbDigits;
    const std::size_t begin = std::min(all.find_first_not_of('0'), point - 1);
    const std::size_t end = std::max(all.find_last_not_of('0') + 1, point);
    return (negative ? "-" : "") + all.substr(begin, point - begin) +
           (end == point ? "" : "." + all.substr(point, end - point));
}

} // namespace mxformat
