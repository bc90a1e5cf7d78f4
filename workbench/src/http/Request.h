#pragma once

#include <map>
#include <string>

namespace workbench {

/// A request that has passed the `Gatekeeper`.
struct Request
{
    std::string method;                       ///< "GET", "POST", "PUT" or "DELETE".
    std::string path;                         ///< Begins with "/"; nothing in it is decoded.
    std::map<std::string, std::string> query; ///< Decoded; each name once.
    std::string body;
};

} // namespace workbench
