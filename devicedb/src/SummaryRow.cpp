#include "SummaryRow.h"

#include <tuple>

namespace devices::database {

const char* const summaryColumns =
    "p.family, p.module_id, p.brand_label_name, p.in_data_size, p.out_data_size,"
    " length(p.default_parameter_block), length(p.mx_file_data),"
    " CASE WHEN m.module IS NULL THEN 0 ELSE 1 END";

const char* const joinModules = " LEFT JOIN modules m ON m.record_family = p.family"
                                " AND m.record_module_id = p.module_id";

ModuleSummary summaryOf(const SqlConnection::Row& row)
{
    ModuleSummary summary;
    summary.family = row[0];
    summary.moduleIdText = row[1];
    summary.brandLabelName = row[2];
    summary.inDataSize = static_cast<std::uint32_t>(numberOf(row[3]));
    summary.outDataSize = static_cast<std::uint32_t>(numberOf(row[4]));
    summary.parameterBlockSize = static_cast<std::uint64_t>(numberOf(row[5]));
    const auto stored = static_cast<std::uint64_t>(numberOf(row[6]));
    summary.mxFileSize = stored == 0 ? 0 : stored - 1; // one byte more than the file on disk
    summary.hasContent = row[7] == "1";
    return summary;
}

bool isBefore(const ModuleKey& left, const ModuleKey& right)
{
    return std::tie(left.family, left.moduleIdText) < std::tie(right.family, right.moduleIdText);
}

ModuleKey keyOf(const ModuleSummary& module)
{
    return {module.family, module.moduleIdText};
}

} // namespace devices::database
