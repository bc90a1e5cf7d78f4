#include "mxstation/ChannelExport.h"

#include "export/ImagePlace.h"
#include "export/Provenance.h"

#include <mxmodule/IecVariable.h>
#include <text/Csv.h>
#include <text/TextTable.h>

#include <fmt/format.h>

namespace mxstation {

namespace {

constexpr std::uint64_t bytesOfRegister = 2;

// "INT", "ARRAY [0..2] OF BYTE", for a bit field with a variable per bit "3 BOOL"; empty: none.
std::string iecTypeOf(const Channel& channel)
{
    const std::vector<mxmodule::IecVariable> variables = mxmodule::iecVariables(channel);
    if (variables.empty()) {
        return "";
    }
    return variables.front().suffix.empty() ? mxmodule::iecTypeText(variables.front())
                                            : fmt::format("{} BOOL", variables.size());
}

// The register of the channel's first byte, from 0 and from 1, and which byte of it that is.
text::CsvRow registerCells(const Plan& plan, const Channel& channel)
{
    if (!liesInImage(plan, channel)) {
        return {"", "", ""};
    }
    const std::uint64_t byte = byteInImage(plan, channel);
    return {std::to_string(byte / bytesOfRegister), std::to_string(byte / bytesOfRegister + 1),
            byte % bytesOfRegister == 0 ? "high" : "low"};
}

text::CsvRow csvRow(const Plan& plan, const Channel& channel, const Provenance& provenance)
{
    text::CsvRow row = {std::to_string(channel.module),
                        channel.moduleName,
                        std::to_string(channel.number),
                        channel.name,
                        channel.alias,
                        channel.comment,
                        channel.isInput ? "in" : "out",
                        channel.isInput ? "I" : "Q",
                        channel.symbol,
                        iecTypeOf(channel),
                        std::to_string(channel.firstBit / 8),
                        std::to_string(channel.firstBit % 8),
                        std::to_string(channel.bits)};
    text::append(registerCells(plan, channel), row);
    text::append(
        {Provenance::version(), provenance.stationSum(), provenance.moduleSum(channel.module)},
        row);
    return row;
}

} // namespace

std::string channelsText(const Plan& plan)
{
    requireOk(plan);
    text::TextTable table(
        {"Position", "Module", "Channel", "Alias", "Symbol", "Byte", "Bit", "Bits", "Comment"});
    for (const Channel& channel : plan.channels) {
        table.add({std::to_string(channel.module), channel.moduleName, channel.name, channel.alias,
                   channel.symbol, std::to_string(channel.firstBit / 8),
                   std::to_string(channel.firstBit % 8), std::to_string(channel.bits),
                   channel.comment});
    }
    return table.text();
}

std::string channelsCsv(const Plan& plan, const mxmodule::CsvStyle& style)
{
    const Provenance provenance(plan);
    std::vector<text::CsvRow> rows = {{"module", "module_name", "number", "name", "alias",
                                       "comment", "direction", "area", "symbol", "type", "byte",
                                       "bit", "bits", "register_from_0", "register_from_1",
                                       "register_byte", "mxtool", "station_sha256", "mx_sha256"}};
    rows.reserve(plan.channels.size() + 1);
    for (const Channel& channel : plan.channels) {
        rows.push_back(csvRow(plan, channel, provenance));
    }
    return text::csvText(rows, style.separator, style.byteOrderMark);
}

} // namespace mxstation
