#pragma once

#include <chrono>
#include <cstddef>

namespace workbench {

/// How much a client may ask for, and how long it may take.
struct Limits
{
    std::size_t body = std::size_t{4} << 20;       ///< Bytes of one request.
    std::size_t allBodies = std::size_t{64} << 20; ///< Bytes held of all requests.
    std::size_t header = std::size_t{16} << 10;    ///< Bytes.
    std::size_t target = std::size_t{2} << 10;     ///< Bytes of path and query.
    std::size_t connections = 512;     ///< Fifty pages with the six that a browser opens for each.
    std::size_t waitingRequests = 256; ///< Of each of the two kinds below.
    std::size_t workers = 4; ///< Requests other than GET that are answered at the same time.
    /// The same of GET: what takes little time does not wait for what may take long.
    std::size_t readers = 2;

    std::chrono::milliseconds forHeader = std::chrono::seconds(10);  ///< From the connection on.
    std::chrono::milliseconds forBody = std::chrono::seconds(20);    ///< From the header on.
    std::chrono::milliseconds forReading = std::chrono::seconds(60); ///< Until an answer is taken.
    /// From an answer to the whole header of the next request of the connection.
    std::chrono::milliseconds forNextHeader = std::chrono::seconds(30);
};

} // namespace workbench
