#pragma once

#include "diff/PatternSet.h"
#include "module/ModuleView.h"

#include <map>
#include <tuple>

namespace mxauthor {

/// The key of the options of a parameter: list, size in bytes, bits, sign.
using OptionUse = std::tuple<std::uint8_t, unsigned, unsigned, bool>;

OptionUse optionUse(const ModuleView::Parameter& parameter);

/// The options of a parameter, found by their place and by their value. Refers to its module.
class OptionValues
{
public:
    OptionValues(const ModuleView& ofModule, const ModuleView::Parameter& parameter);

    const std::vector<std::uint64_t>& inOrder() const { return values; }

    /// The options that the bits of the parameter can hold.
    const PatternSet& patterns() const { return storable; }
    bool isStorable(std::uint64_t value) const; ///< Whether these bits can hold the option.

    bool hold(std::uint64_t value) const { return texts.count(value) != 0; }
    std::string number(std::uint64_t value) const; ///< In decimal.
    std::string text(std::uint64_t value) const;   ///< In quotes, shortened.

    /// Returns the values that `others` do not hold.
    std::vector<std::uint64_t> missingIn(const OptionValues& others) const;

    /// Returns `option 1 "off" is `, or several of them with "are", the first few by name.
    std::string named(const std::vector<std::uint64_t>& some) const;

private:
    const ModuleView& module;
    mxformat::BlockField shape;
    PatternSet storable;
    std::vector<std::uint64_t> values;
    std::map<std::uint64_t, std::uint16_t> texts; // the first text of a value is the one shown
};

} // namespace mxauthor
