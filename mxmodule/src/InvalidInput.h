#pragma once

#include <mxmodule/Finding.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace mxmodule {

/// Why an input was rejected: what was found and what is accepted. It has no place: the caller,
/// which knows where the input came from, makes a `Failure` or a finding of it.
class InvalidInput : public std::runtime_error
{
public:
    explicit InvalidInput(const std::string& text, std::string whatToDo = {},
                          std::vector<std::string> acceptedInputs = {})
        : std::runtime_error(text), hint(std::move(whatToDo)), accepted(std::move(acceptedInputs))
    {}

    std::string hint;                  ///< What to do; may be empty.
    std::vector<std::string> accepted; ///< Accepted inputs, where they can be listed.
};

/// Returns `invalid` as an error at `place`.
inline Finding findingOf(const InvalidInput& invalid, const std::string& place, Origin origin)
{
    return {Severity::Error, place, invalid.what(), invalid.hint, origin, invalid.accepted};
}

} // namespace mxmodule
