#pragma once

#include <string>

namespace testkit {

/// Returns `text` as a regular expression that matches only it.
inline std::string literally(const std::string& text)
{
    std::string pattern;
    for (const char c : text) {
        if (std::string("\\^$.|?*+()[]{}").find(c) != std::string::npos) {
            pattern += '\\';
        }
        pattern += c;
    }
    return pattern;
}

/// Returns a regular expression for the message of a failed assertion: a source file of
/// `directory`, relative to the project's root, the operation's `signature` as gcc spells it (not
/// compared with other compilers, which spell it differently) and the `expression`.
inline std::string failedAssertion(const std::string& directory, const std::string& signature,
                                   const std::string& expression)
{
#if defined(__clang__)
    const std::string operation = (static_cast<void>(signature), ".*");
#else
    const std::string operation = literally(signature) + ": ";
#endif
    return ": " + literally(directory) + "/[A-Za-z0-9_]+\\.cpp:[0-9]+: " + operation +
           literally("Assertion `" + expression + "' failed");
}

} // namespace testkit
