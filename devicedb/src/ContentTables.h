#pragma once

#include "SqlConnection.h"

#include "devices/database/DeviceDatabase.h"

#include <memory>

namespace devices::database {

/// The tables of the content of modules: modules, channels, parameters, options. Whatever fails is
/// a `SqlFailure`.
class ContentTables
{
public:
    explicit ContentTables(SqlConnection& connection);

    /// Replaces the content of `modules`, whose records are stored and of different keys. A module
    /// that comes without content has none afterwards.
    void replace(const std::vector<ModuleToStore>& modules);

    /// Removes what does not go with the records of `keys`: rows of family and module identifier.
    void removeParts(const std::vector<RowStatement::Row>& keys);

private:
    std::vector<std::unique_ptr<RowStatement>> partDeletions; ///< None if foreign keys do it.
    std::unique_ptr<RowStatement> deletion;
    std::unique_ptr<RowStatement> moduleRows;
    std::unique_ptr<RowStatement> channelRows;
    std::unique_ptr<RowStatement> parameterRows;
    std::unique_ptr<RowStatement> optionRows;
};

/// Returns whether `text` is UTF-8 without NUL, as each text of the content is.
bool isReadable(const std::string& text);

/// Returns `text` in the form used for searching, which ignores case.
std::string foldedText(const std::string& text);

} // namespace devices::database
