#pragma once

#include "SqlConnection.h"

#include "devices/database/DeviceProperties.h"
#include "devices/database/ModuleContent.h"

#include <memory>

namespace devices::database {

/// The tables of the content of modules: modules, channels, parameters, options. Whatever fails is
/// a `SqlFailure`.
class ContentTables
{
public:
    explicit ContentTables(SqlConnection& connection);

    /// Removes the content of `record`, if there is any.
    void remove(const DeviceProperties& record);

    /// Stores the content of `record`, which has none.
    void insert(const DeviceProperties& record, const ModuleContent& content);

private:
    std::unique_ptr<RowStatement> deletion;
    std::unique_ptr<RowStatement> modules;
    std::unique_ptr<RowStatement> channels;
    std::unique_ptr<RowStatement> parameters;
    std::unique_ptr<RowStatement> options;
};

/// Returns the content of the module of `family` and `moduleId`, if there is any.
std::optional<ModuleContent> readContent(SqlConnection& connection, const std::string& family,
                                         const std::string& moduleId);

/// Returns `text` in the form used for searching, which ignores case.
std::string foldedText(const std::string& text);

} // namespace devices::database
