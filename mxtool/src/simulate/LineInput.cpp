#include "simulate/LineInput.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <utility>

namespace mxtool {

namespace {

constexpr std::size_t mostBytesOfLine = 4096;
constexpr int slice = 100; // milliseconds

} // namespace

LineInput::LineInput(std::function<bool()> isEnded) : ended(std::move(isEnded))
{
    // Reading from the terminal would otherwise stop a program in the background.
    static_cast<void>(std::signal(SIGTTIN, SIG_IGN));
}

std::optional<std::string> LineInput::next()
{
    while (true) {
        if (auto line = takeLine()) {
            return line;
        }
        if (isAtEnd || !readMore()) {
            return std::nullopt;
        }
    }
}

// False: waiting is to end.
bool LineInput::readMore()
{
    while (!ended()) {
        pollfd one{STDIN_FILENO, POLLIN, 0};
        if (poll(&one, 1, slice) <= 0) {
            continue;
        }
        char bytes[mostBytesOfLine];
        const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
        if (count < 0 && errno == EIO) { // in the background
            static_cast<void>(poll(nullptr, 0, slice));
        } else if (count > 0) {
            received.append(bytes, static_cast<std::size_t>(count));
            return true;
        } else if (count == 0 || errno != EINTR) {
            isAtEnd = true;
            return true;
        }
    }
    return false;
}

std::optional<std::string> LineInput::takeLine()
{
    const std::size_t end = received.find('\n');
    const bool isWhole = end != std::string::npos;
    const bool isLast = !isWhole && isAtEnd && !received.empty();
    if (!isWhole && !isLast && received.size() <= mostBytesOfLine) {
        return std::nullopt;
    }
    std::string line = received.substr(0, std::min(end, mostBytesOfLine));
    received.erase(0, isWhole ? end + 1 : received.size());
    const bool isRest = std::exchange(skipsRest, !isWhole && !isLast);
    return isRest ? takeLine() : std::optional(line);
}

} // namespace mxtool
