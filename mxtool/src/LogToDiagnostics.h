#pragma once

#include <Poco/AutoPtr.h>
#include <Poco/Channel.h>

#include <string>

namespace mxtool {

/// Shows the log lines of the device parser as diagnostics while it lives.
///
/// The level is `level` (a Poco level name); construct the parser first, since it sets its own.
class LogToDiagnostics
{
public:
    explicit LogToDiagnostics(const std::string& level);
    ~LogToDiagnostics();
    LogToDiagnostics(const LogToDiagnostics&) = delete;
    LogToDiagnostics& operator=(const LogToDiagnostics&) = delete;

    void debug(const std::string& line) const; ///< Adds a line of debug priority to the parser's.

private:
    Poco::AutoPtr<Poco::Channel> previousChannel;
};

/// Whether Poco knows `level` as the name or number of a logging level.
bool isLoggingLevel(const std::string& level);

} // namespace mxtool
