#pragma once

#include <chrono>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace mxonline {

/// A part of a script's line.
struct ScriptWord
{
    std::string text;
    std::size_t column = 1; ///< From 1, in characters.
};

/// What a script's line does.
enum class ScriptAction
{
    Nothing,
    Set,
    Ramp,
    Sleep,
    Show,
    Repeat
};

/// A line of a script.
struct ScriptLine
{
    ScriptAction action = ScriptAction::Nothing;
    ScriptWord name;                     ///< Of the channel; of `Show` also of a module, or empty.
    ScriptWord value;                    ///< Of `Set`; of `Ramp` the first.
    ScriptWord last;                     ///< Of `Ramp`.
    std::chrono::milliseconds time{0};   ///< Of `Sleep` and `Ramp`.
    std::chrono::milliseconds step{100}; ///< Of `Ramp`.
};

/// Why a line cannot be read.
class ScriptError : public std::runtime_error
{
public:
    /// `wrong` is the column of what is wrong.
    ScriptError(std::size_t wrong, const std::string& reason)
        : std::runtime_error(reason), column(wrong)
    {}

    std::size_t column;
};

/// Returns what `line` states. Throws a `ScriptError`.
ScriptLine scriptLineOf(const std::string& line);

} // namespace mxonline
