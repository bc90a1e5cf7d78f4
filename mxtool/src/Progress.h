#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace mxtool {

/// Shows the progress of a long operation on standard error: the number done, the rate, the time
/// left. Only on a terminal, and only after the first second.
class Progress
{
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// For `total` items, which are called `things` ("files").
    Progress(std::string things, std::size_t total);

    /// For tests: `write` replaces the terminal, `clock` the clock.
    Progress(std::string things, std::size_t total, std::function<void(const std::string&)> write,
             Clock clock);

    /// Clears the line.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Sets the number of items that are done.
    void show(std::size_t done);

private:
    std::string line(std::size_t done, double seconds) const;

    std::string things;
    std::size_t total;
    std::function<void(const std::string&)> write; ///< Empty: no terminal.
    Clock now;
    std::chrono::steady_clock::time_point start;
    std::chrono::steady_clock::time_point shownAt;
    bool visible = false;
};

/// Clears the progress line if one is shown, so that other output begins in an empty line.
void clearProgressLine();

} // namespace mxtool
