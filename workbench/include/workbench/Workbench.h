#pragma once

#include <memory>
#include <string>

/// The page in the browser and its server.
namespace workbench {

/// What is served. Texts are as a user states them.
struct Options
{
    std::string file;         ///< A station, an mx file or its text form; empty: none.
    std::string folder;       ///< Files that texts name come from here; empty: that of `file`.
    std::string catalogueUrl; ///< Empty: the default catalogue, if there is one.
    std::string target;       ///< The coupler of the station; empty: none.
    unsigned short port = 0;  ///< 0: one that the system chooses.
};

/// A running server. It listens on this computer alone.
class Server
{
public:
    virtual ~Server() = default; ///< Ends the server and waits for the end of its work.
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// Returns the address that opens the page, "http://127.0.0.1:PORT/#TOKEN". Whoever has it may
    /// do what the page can do.
    virtual std::string address() const = 0;

    /// Returns the address without the token.
    virtual std::string plainAddress() const = 0;

protected:
    Server() = default;
};

/// The version of this interface: program and module are built from the same sources, and a module
/// of another version is not called.
constexpr int moduleVersion = 1;

/// The function that the module exports as "startWorkbench": starts a server, which the caller
/// owns. Throws a `mxmodule::Failure`.
using StartWorkbench = Server* (*)(const Options& options);

} // namespace workbench
