#pragma once

#include <devices/database/DeviceDatabase.h>

#include <map>
#include <string>
#include <vector>

/// A catalogue in memory, to compare with what a reader of another database sees.
class KnownCatalogue
{
public:
    /// Reads the whole catalogue at `url`.
    explicit KnownCatalogue(const std::string& url);

    /// Returns the identifiers of its modules, in their order.
    const std::vector<std::string>& modules() const { return ids; }

    /// Returns the order code of one of its modules.
    const std::string& orderCode(const std::string& moduleId) const;

    /// Returns whether `record` is its record of the module, byte for byte.
    bool holds(const std::string& moduleId,
               const std::optional<devices::database::DeviceProperties>& record) const;

    /// Returns whether `content` is its content of the module, each row and cell.
    bool holds(const std::string& moduleId,
               const std::optional<devices::database::ModuleContent>& content) const;

    /// Returns whether `found` are all of its modules of `orderCode`, with their labels.
    bool holds(const std::string& orderCode,
               const std::vector<devices::database::ModuleSummary>& found) const;

private:
    struct Module
    {
        std::string file;    // its bytes
        std::string content; // every cell
        std::string orderCode;
        std::string label; // of the record
    };

    std::map<std::string, Module> byId;
    std::map<std::string, std::map<std::string, std::string>> labelsByOrderCode; // of each id
    std::vector<std::string> ids;
};
