#include "LogCapture.h"

#include <Poco/Logger.h>

namespace testkit {

class LogCapture::Collector : public Poco::Channel
{
public:
    void log(const Poco::Message& message) override
    {
        lines.push_back({message.getPriority(), message.getText()});
    }

    std::vector<Line> lines;
};

namespace {

Poco::Logger& parserLogger()
{
    return Poco::Logger::get("mxparser-kv38");
}

} // namespace

LogCapture::LogCapture(const std::string& level)
    : collector(new Collector),
      previousChannel(parserLogger().getChannel()),
      previousLevel(parserLogger().getLevel())
{
    parserLogger().setChannel(collector);
    parserLogger().setLevel(level);
}

LogCapture::~LogCapture()
{
    parserLogger().setChannel(previousChannel);
    parserLogger().setLevel(previousLevel);
}

const std::vector<LogCapture::Line>& LogCapture::lines() const
{
    return collector->lines;
}

std::vector<std::string> LogCapture::texts(Poco::Message::Priority priority) const
{
    std::vector<std::string> texts;
    for (const Line& line : collector->lines) {
        if (line.priority == priority) {
            texts.push_back(line.text);
        }
    }
    return texts;
}

} // namespace testkit
