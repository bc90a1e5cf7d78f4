#include "ProcessParser.h"

#include <Poco/AutoPtr.h>
#include <Poco/Channel.h>
#include <Poco/Logger.h>

#include <pthread.h>

#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace mxmodule {

namespace {

Poco::Logger& parserLogger()
{
    static Poco::Logger& logger = Poco::Logger::get("mxparser-kv38");
    return logger;
}

Severity severityOf(Poco::Message::Priority priority)
{
    if (priority <= Poco::Message::PRIO_ERROR) {
        return Severity::Error;
    }
    return priority == Poco::Message::PRIO_WARNING ? Severity::Warning : Severity::Note;
}

// Keeps log lines as findings.
class LineCollector : public Poco::Channel
{
public:
    void log(const Poco::Message& message) override
    {
        lines.push_back({severityOf(message.getPriority()), "", message.getText()});
    }

    std::vector<Finding> lines;
};

// Where the parser's lines go instead of to the host's logging.
struct LineTarget
{
    Poco::AutoPtr<LineCollector> lines;
    int level;
};

int levelOf(const std::string& name)
{
    if (!isLogLevel(name)) {
        throw Failure(Origin::Request, "",
                      "Found the log level \"" + name +
                          "\", expected none, error, warning, information, debug or trace");
    }
    return Poco::Logger::parseLevel(name);
}

// The level and the channel of the parser's logger, restored at the end.
class LoggerOfHost
{
public:
    LoggerOfHost() : channel(parserLogger().getChannel()), level(parserLogger().getLevel()) {}
    ~LoggerOfHost()
    {
        parserLogger().setChannel(channel);
        parserLogger().setLevel(level);
    }
    LoggerOfHost(const LoggerOfHost&) = delete;
    LoggerOfHost& operator=(const LoggerOfHost&) = delete;

private:
    Poco::AutoPtr<Poco::Channel> channel;
    int level;
};

// The parser of the process: making one each time costs more than translating a small module. The
// construction of a parser changes the level of its logger.
GroupParser& parserOfProcess()
{
    static const std::unique_ptr<GroupParser> parser = [] {
        const LoggerOfHost restored;
        return std::make_unique<GroupParser>();
    }();
    return *parser;
}

std::mutex oneAtATime;
thread_local bool isInside = false;

// The mutex and the note that this thread has it.
class Inside
{
public:
    Inside() : lock(oneAtATime) { isInside = true; }
    ~Inside() { isInside = false; }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

private:
    std::lock_guard<std::mutex> lock;
};

// A child has the mutex as it was during the fork, but of all threads only the one that forked. If
// another one were inside, nothing would unlock it. The thread that forks may be inside itself.
void lockForFork()
{
    if (!isInside) {
        oneAtATime.lock();
    }
}

void unlockAfterFork()
{
    if (!isInside) {
        oneAtATime.unlock();
    }
}

// When the library is loaded, so that no fork comes before.
[[maybe_unused]] const int forkHandlers =
    pthread_atfork(lockForFork, unlockAfterFork, unlockAfterFork);

// Returns what `work` threw, or null.
std::exception_ptr lockedWork(const std::function<void(GroupParser&)>& work,
                              const std::optional<LineTarget>& target)
{
    const Inside inside;
    GroupParser& parser = parserOfProcess();
    const LoggerOfHost restored; // the work may make a parser, which sets the level
    if (target) {
        parserLogger().setChannel(target->lines);
        parserLogger().setLevel(target->level);
    }
    try {
        work(parser);
        return nullptr;
    } catch (...) {
        return std::current_exception();
    }
}

} // namespace

void withParser(Observer* observer, const std::function<void(GroupParser&)>& work)
{
    std::optional<LineTarget> target;
    if (observer != nullptr) {
        target = LineTarget{new LineCollector, levelOf(observer->logLevel())};
    }
    const std::exception_ptr failure = lockedWork(work, target);
    if (target) {
        for (const Finding& line : target->lines->lines) {
            observer->notice(line);
        }
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

void logDebug(Observer* observer, const std::string& line)
{
    if (observer != nullptr && levelOf(observer->logLevel()) >= Poco::Message::PRIO_DEBUG) {
        observer->notice({Severity::Note, "", line});
    }
}

} // namespace mxmodule
