#pragma once

#include <mxmodule/Finding.h>
#include <text/Json.h>

#include <string>
#include <vector>

namespace workbench {

/// Returns `finding` as an object. If its place is in the file at the path `file`, it is named
/// without its directory, and `line` and `column`, from 1, are those in it; otherwise they are
/// null.
text::Json findingJson(const mxmodule::Finding& finding, const std::string& file = {});

/// Returns the list of `findings`; after 1 MiB of texts a note says how many are left out.
text::Json findingsJson(const std::vector<mxmodule::Finding>& findings,
                        const std::string& file = {});

} // namespace workbench
