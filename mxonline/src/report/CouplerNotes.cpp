#include "report/CouplerNotes.h"

#include "bus/RegisterRange.h"

#include <fmt/format.h>
#include <text/Hexadecimal.h>

namespace mxonline {

namespace {

// What is read, and what that means for what is active.
std::vector<std::string> commitNotes(const mxstation::ModbusCommit& commit, bool isForWriting)
{
    std::vector<std::string> notes;
    notes.emplace_back(
        commit.readsAreStaged
            ? "Parameters are read as last written: they may not be active before a commit"
            : "Parameters are read as they are active: what was written without a commit is not "
              "seen");
    if (isForWriting && !commit.readsAreStaged) {
        notes.back() += ", so that apply writes all parameters";
    }
    if (isForWriting) {
        notes.push_back(fmt::format("apply writes the commit register {} in any case",
                                    addressesText({commit.address, 1})));
    }
    return notes;
}

void append(std::vector<std::string>& notes, const std::vector<std::string>& more)
{
    notes.insert(notes.end(), more.begin(), more.end());
}

} // namespace

bool isNoModule(const std::string& foundId)
{
    return foundId == "00000000" || foundId == "ffffffff";
}

std::string identityText(Identification identification, const std::string& foundId)
{
    switch (identification) {
    case Identification::Same:
        return "identified";
    case Identification::Other:
        return isNoModule(foundId) ? "no module" : "another module: " + foundId;
    default:
        return "not identified";
    }
}

std::vector<std::string> notesOf(const CouplerDifference& difference, DifferenceUse use)
{
    std::vector<std::string> notes;
    if (!difference.map.identity) {
        notes.emplace_back(noIdentityNote);
    }
    if (!difference.identityErrors().empty()) {
        notes.emplace_back("No parameter was read: the registers of another module have another "
                           "meaning");
    }
    if (difference.map.commit) {
        append(notes, commitNotes(*difference.map.commit, use != DifferenceUse::Verify));
    }
    for (const ModuleDifference& module : difference.modules) {
        append(notes, withoutRegistersNotes(module.position, module.name, module.withoutRegisters));
    }
    return notes;
}

std::vector<std::string> withoutRegistersNotes(std::size_t position, const std::string& name,
                                               const std::vector<std::string>& names)
{
    std::vector<std::string> notes;
    notes.reserve(names.size());
    for (const std::string& one : names) {
        notes.push_back(fmt::format("Module {} \"{}\": the parameter \"{}\" is in no register, its "
                                    "value is neither read nor written",
                                    position, name, one));
    }
    return notes;
}

std::string wordsText(const std::vector<std::uint16_t>& words)
{
    std::string text;
    for (const std::uint16_t word : words) {
        text += (text.empty() ? "" : " ") + text::hexOf(word, 4);
    }
    return text;
}

} // namespace mxonline
