#pragma once

#include <Poco/Format.h>
#include <Poco/Logger.h>
#include <Poco/Message.h>

#include <string>

namespace devices::parser::mx {

/// Logs `pattern` filled with `arguments` (`int` for %i and %d, `std::string` for %s). The line is
/// formatted only when `priority` is enabled.
template <typename... Arguments>
void logLine(Poco::Logger& logger, Poco::Message::Priority priority, const char* pattern,
             const Arguments&... arguments)
{
    if (logger.is(priority)) {
        logger.log(Poco::Message(logger.name(), Poco::format(pattern, arguments...), priority));
    }
}

/// Logs that `operation` was entered; every operation of the parser says so first.
inline void traceEntry(Poco::Logger& logger, const char* operation)
{
    if (logger.trace()) {
        logLine(logger, Poco::Message::PRIO_TRACE, ">> %s().", std::string(operation));
    }
}

} // namespace devices::parser::mx
