#pragma once

#include <sys/types.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tooltest {

/// The result of one run of the program.
struct ToolRun
{
    int exitCode; ///< Minus the signal's number when a signal ended it.
    std::string out;
    std::string err;
};

/// How the program is started, in addition to its arguments.
struct ToolSetup
{
    std::string standardInput = "/dev/null";        ///< File to read standard input from.
    std::string standardOutput;                     ///< File to write to instead of catching it.
    std::map<std::string, std::string> environment; ///< Variables to set.
    bool readerLeft = false;                        ///< Standard output is a pipe without reader.
    /// Standard input and standard error are a terminal at which this is typed.
    std::optional<std::string> typed;
    std::function<void(pid_t)> onStart; ///< Called with the process when it was started.
};

/// Runs mxtool as a process in the root of the build, where the built examples are, and waits for
/// its end.
ToolRun runTool(const std::vector<std::string>& arguments, const ToolSetup& setup = {});

/// Returns the whole content of the file at `path`.
std::string readFile(const std::string& path);

/// Splits a line of words separated by blanks.
std::vector<std::string> words(const std::string& line);

} // namespace tooltest
