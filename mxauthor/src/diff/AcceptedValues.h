#pragma once

#include "diff/Differences.h"
#include "diff/OptionValues.h"

#include <map>

namespace mxauthor {

/// The same parameter in each file.
struct ParameterPair
{
    const ModuleView::Parameter* before;
    const ModuleView::Parameter* after;
};

/// The values that the parameters of one file accept: their ranges or options. Options that
/// parameters share are read once. Refers to its module.
class AcceptedValues
{
public:
    explicit AcceptedValues(const ModuleView& ofModule) : module(ofModule) {}

    const OptionValues& optionsOf(const ModuleView::Parameter& parameter);

    /// Returns the values of `parameter` as bit patterns of its own field.
    PatternSet patternsOf(const ModuleView::Parameter& parameter);

    /// Returns the same numbers as bit patterns of the field of `other`.
    PatternSet patternsOf(const ModuleView::Parameter& parameter,
                          const mxformat::BlockField& other);

private:
    const ModuleView& module;
    std::map<OptionUse, OptionValues> lists;
};

/// Compares the values that parameters accept. What was found for two option lists is kept for the
/// parameters that share them.
class AcceptedValueComparison
{
public:
    AcceptedValueComparison(AcceptedValues& oldValues, AcceptedValues& newValues)
        : before(oldValues), after(newValues)
    {}

    void compare(const ParameterPair& pair, Differences& differences);

private:
    void compareOptions(const ParameterPair& pair, Differences& differences);
    void compareRanges(const ParameterPair& pair, Differences& differences);
    void compareRangeWithOptions(const ParameterPair& pair, Differences& differences);
    bool registersStay(const ParameterPair& pair);
    PatternSet missingAfter(const ParameterPair& pair);

    AcceptedValues& before;
    AcceptedValues& after;
    std::map<std::pair<OptionUse, OptionUse>, std::vector<Difference>> compared;
};

} // namespace mxauthor
