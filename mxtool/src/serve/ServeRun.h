#pragma once

#include "ExitCode.h"

#include <optional>
#include <string>

namespace mxtool {

/// The port of `mxtool serve` unless another is stated.
constexpr unsigned short defaultServePort = 8538;

/// What is served, and how long.
struct ServeOptions
{
    std::string file;
    std::string databaseUrl;
    std::string folder;
    std::string target;
    unsigned short port = defaultServePort;
    bool opensBrowser = false;
    std::optional<unsigned> seconds;
};

/// Serves the page until the time is over, or a signal comes. Throws a `Failure`.
ExitCode serve(const ServeOptions& options);

} // namespace mxtool
