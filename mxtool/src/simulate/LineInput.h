#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace mxtool {

/// The lines of standard input while they come. A program in the background of its terminal gets
/// none until it is in the foreground.
class LineInput
{
public:
    /// `isEnded` is asked at least every 100 ms whether waiting is to end.
    explicit LineInput(std::function<bool()> isEnded);

    /// Waits for the next line and returns it without its end; nothing at the end of the input, and
    /// when waiting is to end. Of a line of more than 4,096 bytes the rest is left out.
    std::optional<std::string> next();

private:
    bool readMore();
    std::optional<std::string> takeLine();

    std::function<bool()> ended;
    std::string received;
    bool isAtEnd = false;
    bool skipsRest = false; // of a line that was too long
};

} // namespace mxtool
