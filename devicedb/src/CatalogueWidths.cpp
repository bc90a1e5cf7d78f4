#include "CatalogueWidths.h"

#include <mxformat/BigEndian.h>
#include <mxformat/BitPlace.h>
#include <mxformat/Datatype.h>
#include <mxformat/Groups.h>
#include <mxformat/ParameterRecord.h>

namespace devices::database {

namespace {

using Records = std::vector<mxformat::ParameterRecord>;

// Reads the records of a payload of `size` bytes, of which the last one may run past it, but not
// past the `available` bytes.
Records recordsAt(const std::uint8_t* payload, std::size_t size, std::size_t available)
{
    Records records;
    for (std::size_t at = 0; at < size && mxformat::parameterRecordSize <= available - at;
         at += mxformat::parameterRecordSize) {
        records.push_back(mxformat::readRecord<mxformat::ParameterRecord>(payload + at));
    }
    return records;
}

// Returns the parameter records of an mx file; empty if it has none or its framing is invalid.
Records recordsOf(const std::string& mxFile)
{
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(mxFile.data());
    std::size_t rest = mxFile.size();
    for (const std::uint8_t* group = bytes; rest >= mxformat::groupOverhead;) {
        const std::size_t length = mxformat::readBigEndian<std::uint16_t>(group + 2);
        if (length < mxformat::groupOverhead || length > rest) {
            break;
        }
        if (mxformat::readBigEndian<std::uint16_t>(group) == mxformat::group::parameters) {
            return recordsAt(group + mxformat::groupHeaderSize, length - mxformat::groupOverhead,
                             rest - mxformat::groupHeaderSize);
        }
        group += length;
        rest -= length;
    }
    return {};
}

// The key of a module in the catalogue.
using BoundKey = std::vector<SqlParameter>;

std::vector<BoundKey> modulesOf(SqlConnection& connection)
{
    std::vector<BoundKey> modules;
    connection.query("SELECT family, module FROM modules WHERE family = 'kv38'", {}, 2,
                     [&](const SqlConnection::Row& row) {
                         modules.push_back({{row[0], false}, {row[1], false}});
                     });
    return modules;
}

// Returns the records of a module; empty if the catalogue has another number of parameters.
Records recordsOf(SqlConnection& connection, const BoundKey& module)
{
    Records records;
    connection.query("SELECT r.mx_file_data,"
                     " (SELECT count(*) FROM parameters p"
                     " WHERE p.family = m.family AND p.module = m.module)"
                     " FROM modules m JOIN device_properties r"
                     " ON r.family = m.record_family AND r.module_id = m.record_module_id"
                     " WHERE m.family = $1 AND m.module = $2",
                     module, 2, [&](const SqlConnection::Row& row) {
                         records = recordsOf(row[0]);
                         if (static_cast<std::int64_t>(records.size()) != numberOf(row[1])) {
                             records.clear();
                         }
                     });
    return records;
}

} // namespace

// File by file: all at once, those of a large catalogue would fill the memory.
void takeWidthsFromFiles(SqlConnection& connection)
{
    for (const BoundKey& module : modulesOf(connection)) {
        const Records records = recordsOf(connection, module);
        for (std::size_t i = 0; i < records.size(); ++i) {
            if (records[i].datatype == mxformat::bitFieldDatatype) {
                const auto place = mxformat::bitPlace(records[i].bitLength, records[i].bitOffset);
                connection.change("UPDATE parameters SET width_bits = $1"
                                  " WHERE family = $2 AND module = $3 AND position = $4",
                                  {{std::to_string(place.count), false},
                                   module[0],
                                   module[1],
                                   {std::to_string(i), false}});
            }
        }
    }
}

} // namespace devices::database
