#pragma once

#include "diff/Differences.h"
#include "diff/OptionValues.h"

#include <map>

namespace mxauthor {

/// A parameter of each file that are the same one.
struct ParameterPair
{
    const ModuleView::Parameter* before;
    const ModuleView::Parameter* after;
};

/// Compares the values that parameters accept: their ranges or options. What was found for one is
/// kept for those that share its lists.
class AcceptedValues
{
public:
    AcceptedValues(const ModuleView& oldModule, const ModuleView& newModule)
        : before(oldModule), after(newModule)
    {}

    void compare(const ParameterPair& pair, Differences& differences);

    /// Whether the parameter of the new file accepts `number`.
    bool accepts(const ModuleView::Parameter& parameter, const WideNumber& number);

private:
    using Lists = std::map<OptionUse, OptionValues>;

    void compareOptions(const ParameterPair& pair, Differences& differences);

    const ModuleView& before;
    const ModuleView& after;
    Lists oldLists;
    Lists newLists;
    std::map<std::pair<OptionUse, OptionUse>, std::vector<Difference>> compared;
};

} // namespace mxauthor
