#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace mxonline {

/// How reading from a stream ended.
enum class StreamEnd
{
    Complete, ///< All bytes were read.
    TimedOut, ///< The time was over before.
    Closed    ///< The other side closed it, or it failed.
};

/// The bytes of an open socket or serial line, read and written with a limit of time. Does not own
/// the descriptor.
class ByteStream
{
public:
    using Clock = std::chrono::steady_clock;

    explicit ByteStream(int fileDescriptor) : descriptor(fileDescriptor) {}

    /// Writes all of `bytes`, until `deadline`.
    [[nodiscard]] StreamEnd write(const std::vector<std::uint8_t>& bytes,
                                  Clock::time_point deadline) const;

    /// Reads until `bytes` has `size` bytes, until `deadline`.
    [[nodiscard]] StreamEnd read(std::vector<std::uint8_t>& bytes, std::size_t size,
                                 Clock::time_point deadline) const;

    /// Returns whether bytes, or the end of the stream, can be read at once.
    bool hasInput() const;

private:
    bool waitFor(short events, Clock::time_point deadline) const;

    int descriptor;
};

} // namespace mxonline
