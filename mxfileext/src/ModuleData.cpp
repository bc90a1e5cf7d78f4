#include "ModuleData.h"

#include "mxfileext/mxfileext.h"

#include <mxformat/BigEndian.h>
#include <mxformat/Groups.h>
#include <mxformat/TextTable.h>

#include <algorithm>
#include <atomic>

namespace mxfileext {

namespace {

using devices::parser::mx::OneThreadAtATime;

// Everything that is kept, by module index.
std::map<std::uint8_t, ModuleData>& allModules()
{
    static std::map<std::uint8_t, ModuleData> modules;
    return modules;
}

// One number, which a second thread may read at any time.
std::atomic<std::uint16_t> sizeOfBlock{0};

// Where the line end of the text at `pos` begins, `size` when there is none. A bare line feed ends
// a text too; the byte before it then belongs to the two-byte line end.
std::size_t findLineEnd(const std::uint8_t* payload, std::size_t size, std::size_t pos)
{
    while (pos < size && payload[pos] != '\r' && !(pos + 1 < size && payload[pos + 1] == '\n')) {
        ++pos;
    }
    return pos;
}

} // namespace

void ModuleData::addGroup(std::uint16_t group, const std::uint8_t* payload, std::uint32_t size)
{
    if (group == mxformat::group::texts && !textsRead) {
        textsRead = true;
        textTable.assign(payload, payload + size);
    } else if (group == mxformat::group::conversions && !conversionsRead) {
        conversionsRead = true;
        conversions = mxformat::ConversionTable(payload, size);
    } else if (group == mxformat::group::optionLists && !optionListsRead) {
        optionListsRead = true;
        optionLists = OptionLists(payload, size);
    }
}

// A damaged table gives the texts before the damage.
std::string ModuleData::text(std::uint16_t id) const
{
    const std::uint8_t* const table = textTable.data();
    const std::size_t size = textTable.size();
    for (std::size_t pos = mxformat::textTableHeaderSize; size > pos + mxformat::textIdSize;) {
        const std::uint8_t* const begin = table + pos + mxformat::textIdSize;
        if (mxformat::readBigEndian<std::uint16_t>(table + pos) == id) {
            const std::uint8_t* const end = std::find_if(begin, table + size, mxformat::endsText);
            return end == table + size ? std::string() : std::string(begin, end);
        }
        const std::size_t lineEnd = findLineEnd(table, size, pos + mxformat::textIdSize);
        if (lineEnd == size) {
            break;
        }
        pos = lineEnd + mxformat::lineEndSize;
    }
    return {};
}

const std::string& ModuleData::unitOf(const mxformat::ConversionTable::Entry& entry)
{
    static const std::string none;
    if (entry.unitTextId == 0 || !textsRead) {
        return none;
    }
    const auto [unit, isNew] = units.try_emplace(entry.id);
    if (isNew) {
        unit->second = text(entry.unitTextId);
    }
    return unit->second;
}

Conversion ModuleData::conversion(std::uint8_t id)
{
    const auto* const entry = conversions.find(id);
    return entry == nullptr ? Conversion{} : Conversion{entry->scale, unitOf(*entry)};
}

ModuleData& moduleData(std::uint8_t module)
{
    return allModules()[module];
}

std::uint16_t blockSize()
{
    return sizeOfBlock.load(std::memory_order_relaxed);
}

void clearParsedData(unsigned char module)
{
    const OneThreadAtATime::Use use(keptTables, "mxfileext::clearParsedData");
    allModules().erase(module);
    if (module == 0) {
        sizeOfBlock.store(0, std::memory_order_relaxed);
    }
}

void parseGroup(unsigned char module, unsigned short group, const unsigned char* data,
                unsigned short size)
{
    const OneThreadAtATime::Use use(keptTables, "mxfileext::parseGroup");
    if (size >= mxformat::groupOverhead) {
        moduleData(module).addGroup(group, data + mxformat::groupHeaderSize,
                                    size - mxformat::groupOverhead);
    }
}

void initializeModule(char* /*block*/, unsigned short size)
{
    sizeOfBlock.store(size, std::memory_order_relaxed);
}

} // namespace mxfileext
