#pragma once

#include <Poco/AutoPtr.h>
#include <Poco/Channel.h>

#include <string>

namespace mxtool {

/// Reports the log lines of the device parser as diagnostics during its lifetime.
///
/// `level` is the name of a Poco level. Construct it after the parser, which sets a level of its
/// own.
class LogToDiagnostics
{
public:
    explicit LogToDiagnostics(const std::string& level);
    ~LogToDiagnostics();
    LogToDiagnostics(const LogToDiagnostics&) = delete;
    LogToDiagnostics& operator=(const LogToDiagnostics&) = delete;

    void debug(const std::string& line) const; ///< Logs a line with debug priority.

private:
    Poco::AutoPtr<Poco::Channel> previousChannel;
};

/// Whether `level` is the name or number of a Poco logging level.
bool isLoggingLevel(const std::string& level);

} // namespace mxtool
