#pragma once

#include <Poco/AutoPtr.h>
#include <Poco/Channel.h>
#include <Poco/Message.h>

#include <string>
#include <vector>

namespace testkit {

/// Collects the lines of the logger "mxparser-kv38" while it lives; restores the logger's channel
/// and level afterwards.
class LogCapture
{
public:
    struct Line
    {
        Poco::Message::Priority priority;
        std::string text;
    };

    /// Sets the logger's level to `level`, a Poco level name. A parser constructed later sets it to
    /// "information" again: construct the parser first, or call its `setLoggingLevel`.
    explicit LogCapture(const std::string& level = "trace");
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    const std::vector<Line>& lines() const;

    /// Returns the texts of the lines of `priority`.
    std::vector<std::string> texts(Poco::Message::Priority priority) const;

private:
    class Collector;
    Poco::AutoPtr<Collector> collector;
    Poco::AutoPtr<Poco::Channel> previousChannel;
    int previousLevel;
};

} // namespace testkit
