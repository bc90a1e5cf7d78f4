#include "GuardedBuffer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace testkit {

GuardedBuffer::GuardedBuffer(const std::vector<std::uint8_t>& bytes)
    : length(static_cast<std::uint32_t>(bytes.size()))
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t readable = (bytes.size() + page - 1) / page * page;
    pagesSize = readable + page;
    pages = mmap(nullptr, pagesSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) {
        throw std::runtime_error("cannot map the pages of a guarded buffer");
    }
    auto* const guard = static_cast<std::uint8_t*>(pages) + readable;
    if (mprotect(guard, page, PROT_NONE) != 0) {
        munmap(pages, pagesSize);
        throw std::runtime_error("cannot protect the page after a guarded buffer");
    }
    start = guard - bytes.size();
    std::copy(bytes.begin(), bytes.end(), start);
}

GuardedBuffer::~GuardedBuffer()
{
    munmap(pages, pagesSize);
}

} // namespace testkit
