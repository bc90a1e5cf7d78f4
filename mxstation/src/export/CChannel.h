#pragma once

#include <mxstation/Plan.h>

#include <map>
#include <optional>
#include <string>

namespace mxstation {

/// Values for the "$" and letter in a text of C.
using CWords = std::map<char, std::string>;

/// Returns `pattern` with each "$" and letter replaced.
std::string filledWith(const CWords& words, const std::string& pattern);

/// A channel of a plan as constants and functions of C.
class CChannel
{
public:
    /// `declared` is a channel of `plan`; both outlive the object. `prefix` begins every name,
    /// `identifier` is that of the channel.
    CChannel(const Plan& plan, const Channel& declared, const std::string& prefix,
             const std::string& identifier);

    /// Returns why it has no functions; empty: it has them.
    std::optional<std::string> reason() const;

    /// Returns its constants and functions. Only for a channel without a `reason`.
    std::string text() const;

private:
    std::string constants() const;
    std::string assertion() const;
    std::string functions() const;
    std::string type() const;
    unsigned size() const;
    std::string maskText() const;

    const Plan& plan;
    const Channel& channel;
    CWords words;
};

} // namespace mxstation
