#pragma once

#include "mxformat/Decimal.h"
#include "mxformat/WholeNumber.h"

#include <optional>
#include <string>

namespace mxformat {

/// How raw values become physical ones: raw * factor + offset. The factor is finite and not 0, the
/// offset finite. Nothing is rounded but the result.
struct PhysicalScale
{
    float factor = 1;
    float offset = 0;

    bool isIdentity() const { return factor == 1 && offset == 0; }

    /// Returns the binary32 that is nearest to the physical value of `raw`.
    float value(const WholeNumber& raw) const;

    /// Returns the raw value from `lowest` to `highest` whose physical value is nearest to `value`,
    /// half way the one away from zero; nothing when the nearest raw value lies outside.
    [[nodiscard]] std::optional<WholeNumber>
    nearestRaw(const Decimal& value, const WholeNumber& lowest, const WholeNumber& highest) const;

    /// Returns the physical value of `raw` for people: with the fewest decimals that are the value
    /// as far as binary32 states factor and offset (9.9 for 9900 times 0.001F, which is
    /// 9.9000004...), and of which `raw` is the nearest raw value again.
    std::string text(const WholeNumber& raw) const;

    /// Whether `value` is the physical value of `raw`, factor and offset taken in decimal: 9.9 for
    /// 9900 times 0.001, or what `text` gives. Never where another raw value is nearer to `value`.
    bool states(const Decimal& value, const WholeNumber& raw) const;
};

} // namespace mxformat
