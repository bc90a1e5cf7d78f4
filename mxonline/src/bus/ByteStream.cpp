#include "bus/ByteStream.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace mxonline {

namespace {

using std::chrono::milliseconds;

bool isTransient(int error)
{
    return error == EINTR || error == EAGAIN || error == EWOULDBLOCK;
}

// A socket whose other end is closed must not end the process by SIGPIPE; a serial line is no
// socket.
ssize_t writeSome(int descriptor, const std::uint8_t* bytes, std::size_t size)
{
    const ssize_t count = send(descriptor, bytes, size, MSG_NOSIGNAL);
    return count < 0 && errno == ENOTSOCK ? write(descriptor, bytes, size) : count;
}

} // namespace

StreamEnd ByteStream::write(const std::vector<std::uint8_t>& bytes,
                            Clock::time_point deadline) const
{
    std::size_t written = 0;
    while (written < bytes.size()) {
        if (!waitFor(POLLOUT, deadline)) {
            return StreamEnd::TimedOut;
        }
        const ssize_t count = writeSome(descriptor, bytes.data() + written, bytes.size() - written);
        if (count < 0 && !isTransient(errno)) {
            return StreamEnd::Closed;
        }
        written += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return StreamEnd::Complete;
}

StreamEnd ByteStream::read(std::vector<std::uint8_t>& bytes, std::size_t size,
                           Clock::time_point deadline) const
{
    while (bytes.size() < size) {
        if (!waitFor(POLLIN, deadline)) {
            return StreamEnd::TimedOut;
        }
        const std::size_t known = bytes.size();
        bytes.resize(size);
        const ssize_t count = ::read(descriptor, bytes.data() + known, size - known);
        bytes.resize(known + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        if (count == 0 || (count < 0 && !isTransient(errno))) {
            return StreamEnd::Closed;
        }
    }
    return StreamEnd::Complete;
}

bool ByteStream::hasInput() const
{
    pollfd one{descriptor, POLLIN, 0};
    return poll(&one, 1, 0) > 0;
}

// Also true after a failure, which the next call of the system then reports.
bool ByteStream::waitFor(short events, Clock::time_point deadline) const
{
    while (true) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
        pollfd one{descriptor, events, 0};
        const int ready = poll(&one, 1, static_cast<int>(std::max<std::int64_t>(left, 0)));
        if (ready > 0 || (ready < 0 && errno != EINTR)) {
            return true;
        }
        if (ready == 0 && left <= 0) {
            return false;
        }
    }
}

} // namespace mxonline
