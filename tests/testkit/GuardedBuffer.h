#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace testkit {

/// Bytes at the end of accessible memory: the page after the last one can be neither read nor
/// written. An access one byte too far crashes, with and without a sanitizer.
class GuardedBuffer
{
public:
    explicit GuardedBuffer(const std::vector<std::uint8_t>& bytes);
    ~GuardedBuffer();
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;

    const std::uint8_t* data() const { return start; }
    std::uint8_t* data() { return start; }
    std::uint32_t size() const { return length; }

private:
    void* pages = nullptr;
    std::size_t pagesSize = 0;
    std::uint8_t* start = nullptr;
    std::uint32_t length = 0;
};

} // namespace testkit
