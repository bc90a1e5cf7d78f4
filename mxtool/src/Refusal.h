#pragma once

#include <stdexcept>
#include <string>

namespace mxtool {

/// Why a wish of the user is not carried out: what was found and what is accepted. Whoever knows
/// where the wish comes from makes a diagnostic of it.
class Refusal : public std::runtime_error
{
public:
    explicit Refusal(const std::string& text, std::string whatToDo = {})
        : std::runtime_error(text), hint(std::move(whatToDo))
    {}

    std::string hint; ///< What to do; may be empty.
};

} // namespace mxtool
