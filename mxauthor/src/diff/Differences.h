#pragma once

#include "module/ModuleView.h"
#include "mxauthor/Diff.h"

namespace mxauthor {

/// The text where a stored parameter image changes its meaning with unchanged bytes.
constexpr const char* sameBytesOtherValues = "same bytes, other values";

/// What happened to the parameters of the old file.
struct ParameterFates
{
    bool areAllThere = true;
    bool keepTheirPlaces = true; ///< Parameters in both files: byte, bits and width.
};

/// Collects the differences of one area.
class Differences
{
public:
    explicit Differences(std::vector<Difference>& target) : all(target) {}

    void add(Difference difference) { all.push_back(std::move(difference)); }

    void add(Effect effect, const char* area, const std::string& subject, const std::string& text);

    /// Adds a breaking difference that makes every stored parameter image invalid.
    void addBreakingImage(const char* area, const std::string& subject, const std::string& text);

    /// Adds "WHAT BEFORE becomes AFTER" when the two differ.
    void changed(Effect effect, const char* area, const std::string& subject,
                 const std::string& what, const std::string& before, const std::string& after);

    /// The same, for a difference that makes every stored parameter image invalid.
    void changedBreakingImage(const char* area, const std::string& subject, const std::string& what,
                              const std::string& before, const std::string& after);

private:
    std::vector<Difference>& all;
};

// The comparisons, each in a file of its own.

void compareIdentity(const ModuleView& before, const ModuleView& after, Differences& differences);
void compareSizes(const ModuleView& before, const ModuleView& after, Differences& differences);
void compareTexts(const ModuleView& before, const ModuleView& after, Differences& differences);
ParameterFates compareParameters(const ModuleView& before, const ModuleView& after,
                                 Differences& differences);
void compareChannels(const ModuleView& before, const ModuleView& after, Differences& differences);
void compareOtherGroups(const ModuleView& before, const ModuleView& after,
                        Differences& differences);

/// Returns `parameter 3 "Filter"`, with its channel where it has one.
std::string subjectOf(const ModuleView::Parameter& parameter);

} // namespace mxauthor
