#include "diff/ModuleDiff.h"

#include <text/Counted.h>
#include <text/Hexadecimal.h>

#include <set>

namespace mxstation {

namespace {

using mxmodule::Configuration;
using mxmodule::Fieldbus;

// The whole image, of which a line is shown.
std::string imageText(const std::vector<char>& image)
{
    constexpr std::size_t most = 16;
    return image.empty()
               ? "no bytes"
               : text::counted(image.size(), "byte") + ": " + text::hexOfBytes(image, 0, most) +
                     (image.size() > most ? " ..." : "");
}

void addImageChange(const ModulePair& pair, StationDifference& difference)
{
    difference.changes.push_back({ChangeKind::ParameterImage, pair.b->name, "",
                                  imageText(pair.a->image), imageText(pair.b->image), false});
}

void addNamedChanges(const ModulePair& pair, const mxmodule::Comparison& comparison,
                     const Configuration& a, const Configuration& b, StationDifference& difference)
{
    const auto before = a.parameters();
    const auto after = b.parameters();
    std::set<std::size_t> deviating;
    for (const mxmodule::PlacedParameter& place : comparison.deviations()) {
        deviating.insert(place.parameter);
    }
    for (const std::size_t i : deviating) {
        difference.changes.push_back({ChangeKind::Parameter, pair.b->name, after[i].callName,
                                      before[i].shown, after[i].shown, false});
    }
    if (!comparison.strayBytes().empty()) {
        addImageChange(pair, difference);
    }
}

} // namespace

void addParameterChanges(const ModulePair& pair, StationDifference& difference)
{
    if (pair.a->image == pair.b->image) {
        return;
    }
    const std::size_t known = difference.changes.size();
    try {
        const Configuration a = pair.a->module.configuration(pair.a->image, Fieldbus::Raw);
        const Configuration b = pair.b->module.configuration(pair.b->image, Fieldbus::Raw);
        addNamedChanges(pair, mxmodule::Comparison(a, b, pair.b->name), a, b, difference);
    } catch (const mxmodule::Failure&) {
        // other parameters: only the bytes can be compared
    }
    if (difference.changes.size() == known) {
        addImageChange(pair, difference);
    }
}

} // namespace mxstation
