#pragma once

#include "http/Response.h"

#include <map>
#include <string>

namespace workbench {

/// The page and what it consists of, part of this module.
class Assets
{
public:
    Assets();

    /// Returns the asset at `path`; with status 404 if there is none.
    Response at(const std::string& path) const;

private:
    std::map<std::string, Response> responses;
};

} // namespace workbench
