#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace testkit {

/// Bytes that end where memory ends: behind the last one stands a page that nobody may read or
/// write. One byte too far is a crash, with and without a sanitizer.
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
