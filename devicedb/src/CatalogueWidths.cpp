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

// A module of the catalogue, with the record of each of its parameters.
struct Module
{
    SqlParameter family;
    SqlParameter id;
    Records records;
};

std::vector<Module> modulesOf(SqlConnection& connection)
{
    std::vector<Module> modules;
    connection.query(
        "SELECT m.family, m.module, r.mx_file_data,"
        " (SELECT count(*) FROM parameters p"
        " WHERE p.family = m.family AND p.module = m.module)"
        " FROM modules m JOIN device_properties r"
        " ON r.family = m.record_family AND r.module_id = m.record_module_id"
        " WHERE m.family = 'kv38'",
        {}, 4, [&](const SqlConnection::Row& row) {
            Records records = recordsOf(row[2]);
            if (static_cast<std::int64_t>(records.size()) == numberOf(row[3])) {
                modules.push_back({{row[0], false}, {row[1], false}, std::move(records)});
            }
        });
    return modules;
}

} // namespace

void takeWidthsFromFiles(SqlConnection& connection)
{
    for (const Module& module : modulesOf(connection)) {
        for (std::size_t i = 0; i < module.records.size(); ++i) {
            const mxformat::ParameterRecord& record = module.records[i];
            if (record.datatype == mxformat::bitFieldDatatype) {
                const unsigned width = mxformat::bitPlace(record.bitLength, record.bitOffset).count;
                connection.change("UPDATE parameters SET width_bits = $1"
                                  " WHERE family = $2 AND module = $3 AND position = $4",
                                  {{std::to_string(width), false},
                                   module.family,
                                   module.id,
                                   {std::to_string(i), false}});
            }
        }
    }
}

} // namespace devices::database
