#pragma once

#include <mxmodule/Catalogue.h>

#include <devices/database/ModuleQuery.h>

namespace mxmodule {

struct CatalogueQuery::Content
{
    devices::database::PagedQuery query; // `after` without a family: see `after`
};

} // namespace mxmodule
