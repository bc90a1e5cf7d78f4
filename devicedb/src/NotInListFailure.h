#pragma once

#include "SqlConnection.h"

#include "devices/database/ModuleQuery.h"

namespace devices::database {

/// The failure of a search that is to go on after a module which it does not find. It becomes a
/// `NotInList`.
class NotInListFailure : public SqlFailure
{
public:
    explicit NotInListFailure(const ModuleKey& module)
        : SqlFailure("module " + module.moduleIdText +
                     ", after which the list is to go on, is not in it")
    {}
};

} // namespace devices::database
