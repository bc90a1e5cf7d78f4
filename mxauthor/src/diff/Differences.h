#pragma once

#include "module/ModuleView.h"
#include "mxauthor/Diff.h"

namespace mxauthor {

/// Collects the differences of one area.
class Differences
{
public:
    explicit Differences(std::vector<Difference>& target) : all(target) {}

    void add(Effect effect, const char* area, const std::string& subject, const std::string& text);

    /// Adds a breaking difference that no parameter image survives.
    void addBreakingImage(const char* area, const std::string& subject, const std::string& text);

    /// Adds "WHAT BEFORE becomes AFTER" when the two differ.
    void changed(Effect effect, const char* area, const std::string& subject,
                 const std::string& what, const std::string& before, const std::string& after);

private:
    std::vector<Difference>& all;
};

// The comparisons, each in a file of its own.

void compareIdentity(const ModuleView& before, const ModuleView& after, Differences& differences);
void compareSizes(const ModuleView& before, const ModuleView& after, Differences& differences);
void compareTexts(const ModuleView& before, const ModuleView& after, Differences& differences);
void compareParameters(const ModuleView& before, const ModuleView& after, Differences& differences);
void compareChannels(const ModuleView& before, const ModuleView& after, Differences& differences);
void compareOtherGroups(const ModuleView& before, const ModuleView& after,
                        Differences& differences);

/// A parameter of each file that are the same one.
struct ParameterPair
{
    const ModuleView::Parameter* before;
    const ModuleView::Parameter* after;
};

/// Compares the values that a parameter accepts: its range or its options.
void compareAcceptedValues(const ModuleView& before, const ModuleView& after,
                           const ParameterPair& pair, Differences& differences);

/// Whether a value of `bits` read for `parameter` is one that it accepts.
bool accepts(const ModuleView& module, const ModuleView::Parameter& parameter,
             const WideNumber& number);

/// Returns `parameter 3 "Filter"`, with its channel where it has one.
std::string subjectOf(const ModuleView::Parameter& parameter);

} // namespace mxauthor
