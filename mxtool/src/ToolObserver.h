#pragma once

#include "Progress.h"

#include <mxmodule/Observer.h>

#include <optional>
#include <string>

namespace mxtool {

/// Shows on standard error what an operation tells, and registers the files that it reads.
class ToolObserver : public mxmodule::Observer
{
public:
    /// `level`: the lowest priority of log lines shown.
    explicit ToolObserver(std::string level = "information") : lowestLevel(std::move(level)) {}

    void notice(const mxmodule::Finding& finding) override;
    void progress(std::size_t done, std::size_t total, const char* things) override;
    void reads(const std::string& path) override;
    std::string logLevel() const override { return lowestLevel; }

private:
    std::string lowestLevel;
    std::optional<Progress> line;
};

} // namespace mxtool
