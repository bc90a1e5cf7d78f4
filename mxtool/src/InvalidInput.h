#pragma once

#include <stdexcept>
#include <string>

namespace mxtool {

/// Why an input was rejected: what was found and what is accepted. It has no place: the caller,
/// which knows where the input came from, makes a `Failure` or a diagnostic of it.
class InvalidInput : public std::runtime_error
{
public:
    explicit InvalidInput(const std::string& text, std::string whatToDo = {})
        : std::runtime_error(text), hint(std::move(whatToDo))
    {}

    std::string hint; ///< What to do; may be empty.
};

} // namespace mxtool
