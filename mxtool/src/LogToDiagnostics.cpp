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

} // namespace

class LogToDiagnostics::Reporter : public Poco::Channel
{
public:
    void log(const Poco::Message& message) override
    {
        if (message.getPriority() <= Poco::Message::PRIO_ERROR) {
            ++errors;
        }
        report({severityOf(message.getPriority()), "", message.getText(), ""});
    }

    unsigned errors = 0;
};

LogToDiagnostics::LogToDiagnostics(const std::string& level)
    : reporter(new Reporter), previousChannel(parserLogger().getChannel())
{
    parserLogger().setChannel(reporter);
    parserLogger().setLevel(level);
}

LogToDiagnostics::~LogToDiagnostics()
{
    parserLogger().setChannel(previousChannel);
}

unsigned LogToDiagnostics::errorLines() const
{
    return reporter->errors;
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
