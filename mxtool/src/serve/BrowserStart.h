#pragma once

#include <sys/types.h>

#include <string>

namespace mxtool {

/// A start of the user's browser by xdg-open. Ctrl+C at the terminal does not reach the browser.
class BrowserStart
{
public:
    /// Starts it with the file at `path`.
    explicit BrowserStart(const std::string& path);

    /// Returns whether it has failed until now.
    bool hasFailed();

private:
    pid_t process = -1; // -1: ended, or not started
    bool isFailure = false;
};

} // namespace mxtool
