#pragma once

#include "TemporaryDirectory.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace tooltest {

/// mxtool as a process that goes on beside the test. It is killed with the object at the latest.
class RunningTool
{
public:
    /// Starts it in the root of the build.
    explicit RunningTool(const std::vector<std::string>& arguments);
    ~RunningTool();
    RunningTool(const RunningTool&) = delete;
    RunningTool& operator=(const RunningTool&) = delete;

    /// Writes `text` to its standard input.
    void write(const std::string& text) const;

    /// Ends its standard input.
    void closeInput();

    /// Returns the next line of its standard output without its end; what there is of it when
    /// nothing more comes for five seconds.
    std::string line();

    /// Sends `signal`, unless it is 0, and returns its exit code; minus the number of the signal
    /// that ended it. It is killed if it does not end within five seconds.
    int end(int signal);

    /// Returns its standard error until now.
    std::string errors() const;

private:
    testkit::TemporaryDirectory caught;
    int input = -1;
    int output = -1;
    pid_t process = -1; // -1: ended
};

} // namespace tooltest
