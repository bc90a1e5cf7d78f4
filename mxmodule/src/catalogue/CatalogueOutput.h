#pragma once

#include <mxmodule/Catalogue.h>

#include <text/Json.h>

namespace mxmodule {

/// Returns `record` as in the JSON of lists and of one record.
text::Json recordJson(const CatalogueRecord& record);

} // namespace mxmodule
