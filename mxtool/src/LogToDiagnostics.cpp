#include "LogToDiagnostics.h"

#include "Diagnostic.h"

#include <Poco/Exception.h>
#include <Poco/Logger.h>

namespace mxtool {

namespace {

Poco::Logger& parserLogger()
{
    return Poco::Logger::get("mxparser-kv38");
}

const char* severityOf(Poco::Message::Priority priority)
{
    if (priority <= Poco::Message::PRIO_ERROR) {
        return "error";
    }
    return priority == Poco::Message::PRIO_WARNING ? "warning" : "note";
}

class Reporter : public Poco::Channel
{
public:
    void log(const Poco::Message& message) override
    {
        report({severityOf(message.getPriority()), "", message.getText(), ""});
    }
};

} // namespace

LogToDiagnostics::LogToDiagnostics(const std::string& level)
    : previousChannel(parserLogger().getChannel())
{
    parserLogger().setChannel(new Reporter);
    parserLogger().setLevel(level);
}

LogToDiagnostics::~LogToDiagnostics()
{
    parserLogger().setChannel(previousChannel);
}

void LogToDiagnostics::debug(const std::string& line) const
{
    parserLogger().debug(line);
}

bool isLoggingLevel(const std::string& level)
{
    try {
        Poco::Logger::parseLevel(level);
        return true;
    } catch (const Poco::Exception&) {
        return false;
    }
}

} // namespace mxtool
