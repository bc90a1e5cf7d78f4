#pragma once

#include "api/Calls.h"

#include <string>
#include <vector>

namespace workbench {

/// A call of the API.
struct CallEntry
{
    const char* method;
    const char* path; ///< Whole, as in docs/workbench-api.md.
    Call call;
};

/// Returns every call, in the order of the documentation.
const std::vector<CallEntry>& callTable();

} // namespace workbench
