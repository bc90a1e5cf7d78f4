#pragma once

#include "mxmodule/Finding.h"

#include <cstddef>
#include <string>

namespace mxmodule {

/// Returns whether `level` is the name or number of a priority of log lines, as
/// `Observer::logLevel` returns it.
MXMODULE_API bool isLogLevel(const std::string& level);

/// What an operation tells its caller while it runs. Derive from it and override what is of
/// interest; by default nothing happens.
///
/// The calls come on the thread of the operation, while it holds no lock. An exception ends the
/// operation like any other failure.
///
/// Operations without an observer leave the parser's log lines to the host's logging, which they
/// call while they hold the lock: a log channel of the host must not call this library.
class MXMODULE_API Observer
{
public:
    Observer() = default;
    virtual ~Observer();
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    /// A note, a warning or an error in work that continues, and each line that the device parser
    /// logs.
    virtual void notice(const Finding& finding);

    /// `done` of `total` `things` ("files") are done.
    virtual void progress(std::size_t done, std::size_t total, const char* things);

    /// The file at `path` is read in addition to those that the caller named, as those of a
    /// directory or those that a text form names.
    virtual void reads(const std::string& path);

    /// Returns the lowest priority of the log lines of the device parser that `notice` is called
    /// for: "none", "error", "warning", "information" (the default), "debug", "trace". Another word
    /// ends the operation with a `Failure`.
    virtual std::string logLevel() const;
};

} // namespace mxmodule
