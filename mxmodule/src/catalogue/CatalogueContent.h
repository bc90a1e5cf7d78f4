#pragma once

#include <mxmodule/Catalogue.h>

#include <devices/database/DeviceDatabase.h>

#include <string>

namespace mxmodule {

struct Catalogue::Content
{
    Content(const std::string& url, devices::database::OpenMode mode) : database(url, mode) {}

    devices::database::DeviceDatabase database;
};

CatalogueEntry entryOf(const devices::database::ModuleSummary& module);

} // namespace mxmodule
