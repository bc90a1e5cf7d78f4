#pragma once

#include <mxmodule/Observer.h>

#include <devices/database/DeviceDatabase.h>

#include <optional>
#include <string>

namespace mxmodule {

/// The module of an mx file, as the database stores it.
struct ModuleOfFile
{
    devices::database::DeviceProperties record; ///< With the bytes of the file.
    devices::database::ModuleContent content;   ///< For the tables of the catalogue.
};

/// An mx file that was read.
struct TranslatedFile
{
    std::string name;                   ///< Without its directory.
    std::string failure;                ///< Why there is no module; empty if there is.
    std::optional<ModuleOfFile> module; ///< Of the file.
};

/// Reads and translates the mx file at `path`. Throws a `Failure` if it cannot be read, and what is
/// not the fault of the file: an exception of the observer, a use of the parser by another thread
/// of the host.
TranslatedFile translatedFile(const std::string& path, Observer* observer);

} // namespace mxmodule
