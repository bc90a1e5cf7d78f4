#include "mxauthor/Diff.h"

#include "diff/Differences.h"

namespace mxauthor {

namespace {

std::string described(const Difference& difference)
{
    const std::string& subject = difference.subject;
    return subject.empty() ? difference.text : subject + ": " + difference.text;
}

// Why an image stays valid.
std::string reasonForYes(const ParameterFates& fates, const ModuleView& before,
                         const ModuleView& after)
{
    if (before.parameters().empty()) {
        return "there are no parameters";
    }
    if (after.parameters().empty()) {
        return "no parameter is left";
    }
    return std::string("every ") + (fates.areAllThere ? "" : "remaining ") + "parameter " +
           (fates.keepTheirPlaces ? "keeps its place" : "keeps its value") +
           " and still accepts its old values";
}

// Says whether the image stays valid, and why.
void decide(Comparison& comparison, const ParameterFates& fates, const ModuleView& before,
            const ModuleView& after)
{
    std::vector<const Difference*> breaking;
    for (const Difference& difference : comparison.differences) {
        if (difference.breaksImage) {
            breaking.push_back(&difference);
        }
    }
    comparison.imageStaysValid = breaking.empty();
    if (breaking.empty()) {
        comparison.because = reasonForYes(fates, before, after);
        return;
    }
    comparison.because = described(*breaking.front());
    if (breaking.size() > 1) {
        comparison.because += ", and " + std::to_string(breaking.size() - 1) + " more";
    }
}

} // namespace

void Differences::add(Effect effect, const char* area, const std::string& subject,
                      const std::string& text)
{
    all.push_back({effect, false, area, subject, text});
}

void Differences::addBreakingImage(const char* area, const std::string& subject,
                                   const std::string& text)
{
    all.push_back({Effect::Breaking, true, area, subject, text});
}

void Differences::changed(Effect effect, const char* area, const std::string& subject,
                          const std::string& what, const std::string& before,
                          const std::string& after)
{
    if (before != after) {
        add(effect, area, subject, what + " " + before + " becomes " + after);
    }
}

void Differences::changedBreakingImage(const char* area, const std::string& subject,
                                       const std::string& what, const std::string& before,
                                       const std::string& after)
{
    if (before != after) {
        addBreakingImage(area, subject, what + " " + before + " becomes " + after);
    }
}

const char* effectName(Effect effect)
{
    switch (effect) {
    case Effect::Breaking:
        return "breaking";
    case Effect::Compatible:
        return "compatible";
    default:
        return "cosmetic";
    }
}

Comparison compare(const MxFile& before, const MxFile& after)
{
    const ModuleView old(before);
    const ModuleView now(after);
    Comparison comparison;
    Differences differences(comparison.differences);
    compareIdentity(old, now, differences);
    compareSizes(old, now, differences);
    const ParameterFates fates = compareParameters(old, now, differences);
    compareChannels(old, now, differences);
    compareTexts(old, now, differences);
    compareOtherGroups(old, now, differences);
    if (comparison.differences.empty() && writeMxFile(before) != writeMxFile(after)) {
        differences.add(
            Effect::Cosmetic, "group", "",
            "only bytes without effect differ: order, identifiers, bytes that are not read");
    }
    decide(comparison, fates, old, now);
    return comparison;
}

} // namespace mxauthor
