#pragma once

#include "devices/database/DeviceDatabase.h"

#include <string>
#include <vector>

/// Returns a record of family "kv38" as the parser fills one, with sizes 2 and 3.
devices::database::DeviceProperties device(const std::string& moduleId,
                                           const std::string& label = "label");

/// Returns the content of a module with two channels and two parameters, the second of which has
/// options; `name` is in its label, order code and names.
devices::database::ModuleContent contentNamed(const std::string& name);

/// Returns `content` as one line per item, for comparison.
std::vector<std::string> linesOf(const devices::database::ModuleContent& content);

/// Returns the module identifiers of `records`.
std::vector<std::string> moduleIds(const std::vector<devices::database::DeviceProperties>& records);

/// Returns the module identifiers that a connection of its own sees in the database at `url`.
std::vector<std::string> storedIds(const std::string& url);

/// Returns the module identifiers of `modules`.
std::vector<std::string> moduleIds(const std::vector<devices::database::ModuleSummary>& modules);
