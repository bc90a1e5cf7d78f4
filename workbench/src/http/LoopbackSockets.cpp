#include "http/LoopbackSockets.h"

#include <mxmodule/Finding.h>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace workbench {

namespace {

constexpr int mostWaitingClients = 128;

int listenAt(const sockaddr* address, socklen_t size)
{
    const int listener = socket(address->sa_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const int on = 1;
    if (listener >= 0 && setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) == 0 &&
        bind(listener, address, size) == 0 && listen(listener, mostWaitingClients) == 0) {
        return listener;
    }
    const int error = errno;
    if (listener >= 0) {
        close(listener);
    }
    errno = error;
    return -1;
}

int listenAtIpv4(unsigned short port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return listenAt(reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

int listenAtIpv6(unsigned short port)
{
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_port = htons(port);
    address.sin6_addr = in6addr_loopback;
    return listenAt(reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

unsigned short portAt(int listener)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        throw std::system_error(errno, std::generic_category(), "getsockname");
    }
    return ntohs(address.sin_port);
}

[[noreturn]] void rejectPort(unsigned short port, int error)
{
    const std::string place = "127.0.0.1:" + std::to_string(port);
    if (error == EADDRINUSE) {
        throw mxmodule::Failure(mxmodule::Origin::Output, place,
                                "cannot listen: another program listens there",
                                "end it, or state --port 0 for a port that is free");
    }
    throw mxmodule::Failure(mxmodule::Origin::Output, place,
                            "cannot listen: " + std::generic_category().message(error),
                            "state --port 0 for a port that is free");
}

} // namespace

LoopbackSockets::LoopbackSockets(unsigned short wanted)
{
    sockets.reserve(2);
    const int first = listenAtIpv4(wanted);
    if (first < 0) {
        rejectPort(wanted, errno);
    }
    sockets.push_back(first);
    usedPort = portAt(first);
    const int second = listenAtIpv6(usedPort);
    if (second >= 0) {
        sockets.push_back(second);
    } else if (errno == EADDRINUSE && wanted != 0) {
        close(first);
        rejectPort(wanted, EADDRINUSE); // "localhost" would lead to the other program
    }
}

LoopbackSockets::~LoopbackSockets()
{
    for (const int one : sockets) {
        close(one);
    }
}

} // namespace workbench
