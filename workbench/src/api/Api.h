#pragma once

#include "api/Calls.h"

namespace workbench {

/// Answers the calls of the API. For several threads; it does not know HTTP beyond method, path,
/// body and status.
class Api
{
public:
    /// Both outlive the object; `session` may be null.
    Api(Workplace& place, OnlineSession* session) : context{place, session} {}

    /// Never throws but for lack of memory.
    Response answer(const Request& request) const;

private:
    CallContext context;
};

} // namespace workbench
