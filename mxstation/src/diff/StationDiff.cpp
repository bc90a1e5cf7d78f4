#include "mxstation/StationDiff.h"

#include "diff/ModuleDiff.h"
#include "export/ByteText.h"
#include "export/Provenance.h"
#include "text/LayoutWords.h"

#include <fmt/format.h>
#include <text/Counted.h>

#include <algorithm>
#include <map>

namespace mxstation {

namespace {

ComparedStation comparedStation(const Plan& plan)
{
    return {plan.file.empty() ? plan.station : plan.file, Provenance(plan).stationSum()};
}

void addByteOrder(const Plan& a, const Plan& b, StationDifference& difference)
{
    if (a.layout.byteOrder == b.layout.byteOrder) {
        return;
    }
    const bool matters =
        std::any_of(a.channels.begin(), a.channels.end(),
                    [](const Channel& channel) { return !channel.isBitField && channel.bits > 8; });
    difference.changes.push_back({ChangeKind::ByteOrder, "", "",
                                  byteOrderWords[static_cast<std::size_t>(a.layout.byteOrder)],
                                  byteOrderWords[static_cast<std::size_t>(b.layout.byteOrder)],
                                  matters});
}

std::string wholeText(const ImageBytes& image)
{
    return text::counted(image.size, "byte") +
           (image.size == 0 ? "" : " at " + addressesText(image));
}

void addImage(const ImageBytes& a, const ImageBytes& b, const char* name,
              StationDifference& difference)
{
    if (wholeText(a) != wholeText(b)) {
        difference.changes.push_back(
            {ChangeKind::Image, "", name, wholeText(a), wholeText(b), false});
    }
}

std::vector<Gap> gapsOf(const Plan& plan, bool isInput, GapReason reason)
{
    std::vector<Gap> gaps;
    std::copy_if(plan.gaps.begin(), plan.gaps.end(), std::back_inserter(gaps),
                 [&](const Gap& gap) { return gap.isInput == isInput && gap.reason == reason; });
    return gaps;
}

// "10-13 flow meter, 20".
std::string gapsText(const std::vector<Gap>& gaps)
{
    std::vector<std::string> texts;
    texts.reserve(gaps.size());
    for (const Gap& gap : gaps) {
        texts.push_back(addressesText(touchedBytes(gap)) + (gap.name.empty() ? "" : " ") +
                        gap.name);
    }
    return fmt::format("{}", fmt::join(texts, ", "));
}

bool isWithin(const Gap& gap, const std::vector<Gap>& others)
{
    return std::any_of(others.begin(), others.end(), [&gap](const Gap& other) {
        return gap.firstBit == other.firstBit && gap.bits <= other.bits;
    });
}

void addGapChange(const Plan& a, const Plan& b, bool isInput, GapReason reason,
                  StationDifference& difference)
{
    const auto before = gapsOf(a, isInput, reason);
    const auto after = gapsOf(b, isInput, reason);
    if (gapsText(before) == gapsText(after)) {
        return;
    }
    const bool isStatus = reason == GapReason::Status; // reserved places have no values
    const bool isKept = std::all_of(before.begin(), before.end(),
                                    [&after](const Gap& gap) { return isWithin(gap, after); });
    difference.changes.push_back({isStatus ? ChangeKind::Status : ChangeKind::Reserved, "",
                                  isInput ? "in" : "out", gapsText(before), gapsText(after),
                                  isStatus && !isKept});
}

// Inserted modules move the others, but change nothing of their order.
void addOrder(const std::vector<ModulePair>& pairs, StationDifference& difference)
{
    std::vector<ModulePair> both;
    std::copy_if(pairs.begin(), pairs.end(), std::back_inserter(both),
                 [](const ModulePair& pair) { return pair.a != nullptr && pair.b != nullptr; });
    std::vector<ModulePair> asInA = both;
    std::sort(asInA.begin(), asInA.end(), [](const ModulePair& one, const ModulePair& other) {
        return one.a->position < other.a->position;
    });
    for (std::size_t i = 0; i < both.size(); ++i) {
        if (both[i].a != asInA[i].a) {
            difference.changes.push_back({ChangeKind::ModuleOrder, both[i].b->name, "",
                                          fmt::format("position {}", both[i].a->position),
                                          fmt::format("position {}", both[i].b->position), false});
        }
    }
}

void addModules(const Plan& a, const Plan& b, const std::vector<ModulePair>& pairs,
                StationDifference& difference)
{
    const ChannelsOfModules channelsOfA(a);
    const ChannelsOfModules channelsOfB(b);
    for (const ModulePair& pair : pairs) {
        if (pair.a == nullptr) {
            addNewModule(*pair.b, difference);
            continue;
        }
        if (pair.b == nullptr) {
            addRemovedModule(*pair.a, channelsOfA.of(*pair.a), difference);
            continue;
        }
        addModuleChanges(pair, difference);
        addChannelChanges(pair.b->name,
                          matchedChannels(channelsOfA.of(*pair.a), channelsOfB.of(*pair.b)),
                          difference);
        addParameterChanges(pair, difference);
    }
}

void addNotes(const std::vector<ModulePair>& pairs, StationDifference& difference)
{
    const auto& changes = difference.changes;
    if (std::any_of(changes.begin(), changes.end(), [](const StationChange& change) {
            return change.kind == ChangeKind::Parameter ||
                   change.kind == ChangeKind::ParameterImage;
        })) {
        difference.notes.emplace_back("changed parameters may change what values mean");
    }
    const auto count = std::count_if(pairs.begin(), pairs.end(), [](const ModulePair& pair) {
        return pair.a != nullptr && pair.b != nullptr &&
               !(pair.a->hasOwnName && pair.b->hasOwnName);
    });
    if (count != 0 && !changes.empty()) {
        difference.notes.push_back(fmt::format(
            "{} compared with those of the same type in their order, because they have no name of "
            "their own in both stations: state a \"name\" for each module to compare it with "
            "itself",
            count == 1 ? "1 module is" : fmt::format("{} modules are", count)));
    }
}

} // namespace

StationDifference compare(const Plan& a, const Plan& b)
{
    StationDifference difference;
    difference.a = comparedStation(a);
    difference.b = comparedStation(b);
    addByteOrder(a, b, difference);
    addImage(a.input, b.input, "in", difference);
    addImage(a.output, b.output, "out", difference);
    for (const GapReason reason : {GapReason::Status, GapReason::Reserved}) {
        addGapChange(a, b, true, reason, difference);
        addGapChange(a, b, false, reason, difference);
    }
    const std::vector<ModulePair> pairs = matchedModules(a, b);
    addOrder(pairs, difference);
    addModules(a, b, pairs, difference);
    addNotes(pairs, difference);
    return difference;
}

} // namespace mxstation
