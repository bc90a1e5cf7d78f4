#pragma once

#include <stdexcept>
#include <string>

namespace devices::database {

/// Throws what was `attempted` ("open", "read", "write to", "change") with the database and why it
/// failed, in one sentence.
[[noreturn]] inline void fail(const std::string& database, const std::string& attempted,
                              const std::string& reason)
{
    throw std::runtime_error("Cannot " + attempted + " device database " + database + ": " +
                             reason);
}

} // namespace devices::database
