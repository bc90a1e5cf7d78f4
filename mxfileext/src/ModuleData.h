#pragma once

#include "OptionLists.h"

#include <OneThreadAtATime.h>
#include <mxformat/ConversionTable.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace mxfileext {

/// How raw values become physical ones: raw * factor + offset.
struct Conversion
{
    mxformat::PhysicalScale scale;
    std::string unit;
};

/// What is kept of one mx file: copies of its text table, conversions and option lists.
class ModuleData
{
public:
    /// Takes note of the payload of `size` bytes of `group`; the first occurrence of a group holds.
    void addGroup(std::uint16_t group, const std::uint8_t* payload, std::uint32_t size);

    /// Returns the conversion `id`; one that changes nothing when `id` names none that is usable.
    Conversion conversion(std::uint8_t id);

    /// Returns the bytes of the first text `id`, empty when there is none.
    std::string text(std::uint16_t id) const;

    /// Returns the options of the lists `id`.
    std::vector<mxformat::OptionRecord> options(std::uint8_t id) const
    {
        return optionLists.options(id);
    }

private:
    /// Looks the unit's text up once: many parameters share a conversion.
    const std::string& unitOf(const mxformat::ConversionTable::Entry& entry);

    bool textsRead = false;
    bool conversionsRead = false;
    bool optionListsRead = false;
    std::vector<std::uint8_t> textTable; // whole: in a damaged table the texts may overlap
    mxformat::ConversionTable conversions;
    OptionLists optionLists;                   // for messages only
    std::map<std::uint8_t, std::string> units; // of the conversions that were looked up
};

/// The tables that are kept, for the whole process.
inline devices::parser::mx::OneThreadAtATime keptTables;

/// Returns what is kept for the module index `module`.
ModuleData& moduleData(std::uint8_t module);

/// Returns the size in bytes of module 0's parameter block, as given to `initializeModule`.
std::uint16_t blockSize();

} // namespace mxfileext
