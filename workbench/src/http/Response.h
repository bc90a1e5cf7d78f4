#pragma once

#include "http/Request.h"

#include <functional>
#include <string>

namespace workbench {

/// What is sent for a request.
struct Response
{
    unsigned status = 200;
    std::string type; ///< Content type; empty: "application/json".
    std::string body;
    std::string fileName;    ///< In UTF-8. Not empty: the body is saved as a file of this name.
    std::string allowed;     ///< With status 405: the methods that are accepted, "GET, PUT".
    std::string gzippedBody; ///< The body as a gzip file, if it exists already; may be empty.
};

/// Answers a request. Called by several threads at once; must not throw anything but
/// `std::exception`, of which the client sees only that it happened.
using Answer = std::function<Response(const Request&)>;

} // namespace workbench
