#pragma once

#include "Csv.h"

#include <devices/database/DeviceDatabase.h>

#include <string>
#include <vector>

namespace mxtool {

// Modules of a device database for people and for programs.

std::string moduleTable(const std::vector<devices::database::ModuleSummary>& modules);
std::string moduleCsv(const std::vector<devices::database::ModuleSummary>& modules,
                      const CsvStyle& style = {});

/// Reads the records of `modules` from `database`: each shows its parameter block.
std::string moduleListJson(const std::vector<devices::database::ModuleSummary>& modules,
                           devices::database::DeviceDatabase& database);

std::string recordText(const devices::database::DeviceProperties& record);
std::string recordJson(const devices::database::DeviceProperties& record);

/// Returns what the record shows in a list.
devices::database::ModuleSummary summaryOf(const devices::database::DeviceProperties& record);

} // namespace mxtool
