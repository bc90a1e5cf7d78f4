#pragma once

#include <stdexcept>
#include <string>

namespace devices::database {

/// Returns what was `attempted` ("open", "read", "write to", "change") with the database and why it
/// failed, in one sentence.
inline std::string failureText(const std::string& database, const std::string& attempted,
                               const std::string& reason)
{
    return "Cannot " + attempted + " device database " + database + ": " + reason;
}

/// Throws the same as a `std::runtime_error`.
[[noreturn]] inline void fail(const std::string& database, const std::string& attempted,
                              const std::string& reason)
{
    throw std::runtime_error(failureText(database, attempted, reason));
}

} // namespace devices::database
