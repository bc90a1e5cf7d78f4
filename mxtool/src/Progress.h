#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace mxtool {

/// Tells on standard error how far a long work is: how many are done, the rate, the time left. Only
/// on a terminal, and only once the work has taken longer than a second.
class Progress
{
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// A work on `total` things, which are called `things` ("files").
    Progress(std::string things, std::size_t total);

    /// As above with another terminal and clock: `write` gets what is written to the terminal.
    Progress(std::string things, std::size_t total, std::function<void(const std::string&)> write,
             Clock clock);

    /// Takes the line away.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Says that `done` of them are done.
    void show(std::size_t done);

private:
    std::string line(std::size_t done, double seconds) const;

    std::string things;
    std::size_t total;
    std::function<void(const std::string&)> write; ///< Empty: there is no terminal.
    Clock now;
    std::chrono::steady_clock::time_point start;
    std::chrono::steady_clock::time_point shownAt;
    bool visible = false;
};

/// Takes the line of a progress away, if one is shown; what follows begins in an empty line.
void clearProgressLine();

} // namespace mxtool
