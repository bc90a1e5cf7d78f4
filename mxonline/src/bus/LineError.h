#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace mxonline {

/// A request that got no valid answer.
class LineError : public std::runtime_error
{
public:
    /// `text` says what happened, `advice` what to do; the bytes are whole frames as far as known.
    LineError(const std::string& text, std::string advice, std::vector<std::uint8_t> sentBytes = {},
              std::vector<std::uint8_t> receivedBytes = {})
        : std::runtime_error(text),
          hint(std::move(advice)),
          sent(std::move(sentBytes)),
          received(std::move(receivedBytes))
    {}

    std::string hint;                   ///< What to do.
    std::vector<std::uint8_t> sent;     ///< Empty: nothing was sent.
    std::vector<std::uint8_t> received; ///< What came until then.
};

} // namespace mxonline
