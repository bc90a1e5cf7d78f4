#pragma once

#include "Csv.h"

#include <devices/database/DeviceDatabase.h>

#include <string>
#include <vector>

namespace mxtool {

// Lists and records of a device database as text, CSV and JSON.

std::string moduleTable(const std::vector<devices::database::ModuleSummary>& modules);
std::string moduleCsv(const std::vector<devices::database::ModuleSummary>& modules,
                      const CsvStyle& style = {});

/// Reads the records of `modules` from `database` for their parameter blocks.
std::string moduleListJson(const std::vector<devices::database::ModuleSummary>& modules,
                           devices::database::DeviceDatabase& database);

std::string recordText(const devices::database::DeviceProperties& record);
std::string recordJson(const devices::database::DeviceProperties& record);

/// Returns the summary of a record for lists.
devices::database::ModuleSummary summaryOf(const devices::database::DeviceProperties& record);

} // namespace mxtool
