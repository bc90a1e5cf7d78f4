#include "mxmodule/WantedValues.h"

#include "InvalidInput.h"
#include "TranslatedModule.h"
#include "configuration/DecodedImage.h"
#include "configuration/ParameterNames.h"

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

#include <algorithm>
#include <iterator>
#include <set>

namespace mxmodule {

namespace {

bool isNumber(const std::string& text)
{
    const std::size_t digits = text.compare(0, 1, "-") == 0 ? 1 : 0;
    return text.size() > digits &&
           text.find_first_not_of("0123456789", digits) == std::string::npos;
}

// Turns "3" into "#3" if it is the number of an option, whatever the texts of the options are.
void nameOptionsByNumber(std::vector<Assignment>& assignments, const ParameterNames& names)
{
    for (Assignment& assignment : assignments) {
        const auto found = parametersCalled(assignment.name, names);
        if (found.size() == 1 && found.front()->hasOptionList && isNumber(assignment.value)) {
            assignment.value.insert(0, 1, '#');
        }
    }
}

// The identifier of the only matching parameter; empty if none or several match.
std::string matchedId(const Assignment& assignment, const ParameterNames& names)
{
    const auto found = parametersCalled(assignment.name, names);
    return found.size() == 1 ? found.front()->id : "";
}

// Whether `name` is the name of `parameter` in a table: unchanged, or with escaped control
// characters.
bool isNameInTable(const std::string& name, const DeviceReport::Parameter& parameter)
{
    return name == text::toUtf8(parameter.name) || name == text::forTerminal(parameter.name);
}

// Identifiers number the parameters: in another version of a module the same one may be another
// parameter.
void requireStatedNames(const std::vector<Assignment>& assignments, const ParameterNames& names)
{
    for (const Assignment& assignment : assignments) {
        const auto found = parametersCalled(assignment.name, names);
        if (assignment.statedName.empty() || found.size() != 1 ||
            isNameInTable(assignment.statedName, *found.front())) {
            continue;
        }
        throw Failure(Origin::Input, assignment.place,
                      fmt::format("Found \"{}\" as the name of parameter {}, expected \"{}\": the "
                                  "table is of another version of the module",
                                  text::abbreviated(assignment.statedName), assignment.name,
                                  text::toUtf8(found.front()->name)),
                      "without the column id rows are matched by name");
    }
}

Assignment assignmentOf(const std::string& words, const std::string& place,
                        const ParameterNames& names, ValueCheck check)
{
    try {
        auto [name, value] = splitAssignment(words, names, check);
        return {std::move(name), std::move(value), place};
    } catch (const InvalidInput& invalid) {
        throw Failure(findingOf(invalid, place, Origin::Request));
    }
}

} // namespace

WantedValues::WantedValues(const Module& wantedModule) : module(wantedModule) {}

void WantedValues::add(Values values, const std::string& file)
{
    const ParameterNames& names = module.content->names();
    requireIdentity(values.deviceTypeId, names.device(), module.name(), file);
    requireStatedNames(values.assignments, names);
    if (values.optionsByNumber) {
        nameOptionsByNumber(values.assignments, names);
    }
    if (values.image) {
        base = std::move(values.image);
        baseFile = file;
    }
    addOver(std::move(values.assignments));
}

void WantedValues::add(const std::vector<std::string>& words, const std::string& option,
                       ValueCheck check)
{
    std::vector<Assignment> ofCall;
    ofCall.reserve(words.size());
    for (const std::string& one : words) {
        ofCall.push_back(
            assignmentOf(one, fmt::format("{} {}", option, one), module.content->names(), check));
    }
    addOver(std::move(ofCall));
}

void WantedValues::addOver(std::vector<Assignment> later)
{
    const ParameterNames& names = module.content->names();
    std::set<std::string> replaced;
    if (!all.empty()) {
        std::transform(later.begin(), later.end(), std::inserter(replaced, replaced.end()),
                       [&names](const Assignment& one) { return matchedId(one, names); });
        replaced.erase("");
    }
    all.erase(std::remove_if(all.begin(), all.end(),
                             [&](const Assignment& one) {
                                 return replaced.count(matchedId(one, names)) != 0;
                             }),
              all.end());
    all.insert(all.end(), later.begin(), later.end());
}

} // namespace mxmodule
