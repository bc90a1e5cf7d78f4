#include "configuration/WrittenTable.h"

#include "FindingAdvice.h"
#include "HexBytes.h"
#include "InvalidInput.h"
#include "configuration/ConfiguredImage.h"
#include "configuration/DecodedImage.h"
#include "configuration/RegisterWords.h"
#include <text/Counted.h>

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/Hexadecimal.h>

#include <algorithm>
#include <charconv>
#include <map>

namespace mxmodule {

namespace {

using TableRow = CsvTable::Row;

[[noreturn]] void failAt(const std::string& file, const TableRow& row, const std::string& text)
{
    throw Failure(Origin::Input, fmt::format("{}:{}", file, row.line), text);
}

std::size_t numberIn(const TableRow& row, std::size_t column, const std::string& file)
{
    const std::string& cell = row.cells[column];
    std::size_t number = 0;
    const auto [rest, error] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
    if (error != std::errc() || rest != cell.data() + cell.size() || cell.empty()) {
        failAt(file, row,
               fmt::format("Found \"{}\", expected a whole number", text::abbreviated(cell)));
    }
    return number;
}

// A buffer whose bytes may be written again only with the same value.
class TableBytes
{
public:
    TableBytes(std::vector<char> standard, const std::string& tableFile)
        : bytes(std::move(standard)), isWritten(bytes.size()), file(tableFile)
    {}

    void write(const TableRow& row, std::size_t begin, const std::vector<char>& part)
    {
        if (begin > bytes.size() || part.size() > bytes.size() - begin) {
            failAt(file, row,
                   fmt::format("Found {} from byte {}, expected a place within the {}",
                               text::counted(part.size(), "byte"), begin,
                               text::counted(bytes.size(), "byte")));
        }
        for (std::size_t i = 0; i < part.size(); ++i) {
            if (isWritten[begin + i] && bytes[begin + i] != part[i]) {
                failAt(file, row,
                       fmt::format("Found {} for byte {}, expected {} as in a row before",
                                   text::hexOfBytes(part, i, 1), begin + i,
                                   text::hexOfBytes(bytes, begin + i, 1)));
            }
            bytes[begin + i] = part[i];
            isWritten[begin + i] = true;
        }
    }

    const std::vector<char>& all() const { return bytes; }

    bool isComplete(const std::vector<ParameterPlace>& places) const
    {
        return std::all_of(places.begin(), places.end(), [this](const ParameterPlace& place) {
            return place.begin >= bytes.size() || isWritten[place.begin];
        });
    }

private:
    std::vector<char> bytes;
    std::vector<bool> isWritten;
    const std::string& file;
};

std::vector<char> hexIn(const TableRow& row, std::size_t column, const std::string& file)
{
    try {
        return bytesOfHex(row.cells[column]);
    } catch (const InvalidInput& invalid) {
        failAt(file, row, invalid.what());
    }
}

// A row for another version of the module could set only a part of a parameter.
void requirePlace(const TableRow& row, std::size_t begin, std::size_t size,
                  const ConfiguredImage& configuration, const std::string& file)
{
    const auto& places = configuration.places;
    if (std::none_of(places.begin(), places.end(), [&](const ParameterPlace& place) {
            return place.begin == begin && place.size == size;
        })) {
        failAt(file, row,
               fmt::format("Found {} from byte {}, where the module has no parameter of that "
                           "size: the table is of another version of the module",
                           text::counted(size, "byte"), begin));
    }
}

// Output of `mxtool config --format csv`.
TableImage imageOfOwnTable(const CsvTable& table, const TranslatedModule& module,
                           const std::string& file)
{
    const Fieldbus fieldbus = table.column("register_from_0") ? Fieldbus::Modbus : Fieldbus::Raw;
    const std::size_t byte = table.requiredColumn("byte", file);
    const std::size_t hex = table.requiredColumn("hex", file);
    const auto size = table.column("size");
    const auto identity = table.column("device_type_id");
    const DeviceReport& device = module.report();
    const ConfiguredImage standard = configurationOf(module, device.parameterBlock, fieldbus);
    TableBytes bytes(standard.bytes, file);
    TableImage written;
    for (const TableRow& row : table.rows) {
        const std::string deviceTypeId = identity ? row.cells[*identity] : "";
        requireIdentity(deviceTypeId, device, module.name(), fmt::format("{}:{}", file, row.line));
        written.hasIdentity = written.hasIdentity || !deviceTypeId.empty();
        const std::vector<char> part = hexIn(row, hex, file);
        const std::size_t begin = numberIn(row, byte, file);
        if (size) {
            requirePlace(row, begin, numberIn(row, *size, file), standard, file);
        }
        bytes.write(row, begin, part);
    }
    if (!bytes.isComplete(standard.places)) {
        written.notes.push_back({Severity::Note, file,
                                 "The table does not hold every parameter: the others are taken "
                                 "from the defaults of the module"});
    }
    written.image = decodedImage(bytes.all(), fieldbus, module, file);
    return written;
}

std::vector<char> registersIn(const CsvTable& table, std::size_t address, const std::string& file)
{
    const std::size_t value = table.requiredColumn("value", file);
    std::map<std::size_t, const TableRow*> byAddress;
    for (const TableRow& row : table.rows) {
        if (!byAddress.emplace(numberIn(row, address, file), &row).second) {
            failAt(file, row, fmt::format("Register {} occurs twice", row.cells[address]));
        }
    }
    std::vector<char> bytes;
    for (const auto& [number, row] : byAddress) {
        const auto found = registerOfWord(row->cells[value]);
        if (!found) {
            failAt(file, *row,
                   fmt::format("Found \"{}\", expected a register in decimal or as 0x1194",
                               text::abbreviated(row->cells[value])));
        }
        if (number - byAddress.begin()->first != bytes.size() / registerSize) {
            failAt(file, *row,
                   fmt::format("Found register {}, expected {}: there is a gap", number,
                               byAddress.begin()->first + bytes.size() / registerSize));
        }
        bytes.push_back(static_cast<char>(*found >> 8U));
        bytes.push_back(static_cast<char>(*found & 0xFFU));
    }
    return bytes;
}

} // namespace

TableImage imageOfTable(const CsvTable& table, Fieldbus fieldbus, const TranslatedModule& module,
                        const std::string& file)
{
    const auto address =
        table.column("register") ? table.column("register") : table.column("address");
    if (!address) {
        return imageOfOwnTable(table, module, file);
    }
    if (fieldbus != Fieldbus::Modbus) {
        Finding finding{Severity::Error, file,
                        "Found a table of registers, expected bytes of the image"};
        finding.origin = Origin::Request;
        giveAdvice(finding, Advice::ReadAsModbus);
        throw Failure(std::move(finding));
    }
    return {decodedImage(registersIn(table, *address, file), fieldbus, module, file), false, {}};
}

} // namespace mxmodule
