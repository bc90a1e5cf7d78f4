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

    unsigned errorLines() const; ///< How many lines had error priority or above.

private:
    class Reporter;
    Poco::AutoPtr<Reporter> reporter;
    Poco::AutoPtr<Poco::Channel> previousChannel;
};

/// Whether Poco knows `level` as the name or number of a logging level.
bool isLoggingLevel(const std::string& level);

} // namespace mxtool
