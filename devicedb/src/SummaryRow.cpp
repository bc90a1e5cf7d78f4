#include "SummaryRow.h"

#include <tuple>

namespace devices::database {

const char* const summaryColumns = "p.family, p.module_id, p.label, p.in_bytes, p.out_bytes,"
                                   " p.parameter_bytes, p.file_bytes, p.has_content";

const char* const summaries = "search_modules p";

// A stored file has one byte more than the file on disk.
const char* const oldSummaries =
    "(SELECT family, module_id, brand_label_name AS label, in_data_size AS in_bytes,"
    " out_data_size AS out_bytes, length(default_parameter_block) AS parameter_bytes,"
    " CASE WHEN length(mx_file_data) = 0 THEN 0 ELSE length(mx_file_data) - 1 END AS file_bytes,"
    " (SELECT count(*) FROM modules WHERE record_family = r.family"
    " AND record_module_id = r.module_id) AS has_content FROM device_properties r) AS p";

const char* const oldSearchText =
    "(SELECT m.search_text FROM modules m WHERE m.record_family = p.family"
    " AND m.record_module_id = p.module_id)";

ModuleSummary summaryOf(const SqlConnection::Row& row)
{
    ModuleSummary summary;
    summary.family = row[0];
    summary.moduleIdText = row[1];
    summary.brandLabelName = row[2];
    summary.inDataSize = static_cast<std::uint32_t>(numberOf(row[3]));
    summary.outDataSize = static_cast<std::uint32_t>(numberOf(row[4]));
    summary.parameterBlockSize = static_cast<std::uint64_t>(numberOf(row[5]));
    summary.mxFileSize = static_cast<std::uint64_t>(numberOf(row[6]));
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
