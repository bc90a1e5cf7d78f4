#include "simulator/TcpServer.h"

#include "bus/ModbusContext.h"
#include "bus/WordBytes.h"

#include <fmt/format.h>
#include <mxmodule/Finding.h>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>

namespace mxonline {

namespace {

using Frame = std::vector<std::uint8_t>;

constexpr std::size_t prefixSize = 6;  // transaction, protocol, length
constexpr std::size_t leastLength = 2; // unit and function
constexpr std::size_t mostLength = 254;
constexpr std::size_t mostClients = 64;
constexpr int waitingConnections = 16;
constexpr auto pauseWithoutDescriptors = std::chrono::milliseconds(50);

[[noreturn]] void rejectListening(const TcpTarget& target, int error)
{
    std::string reason = modbus_strerror(error);
    std::string hint = "state an address of this computer, such as tcp:127.0.0.1:1502";
    if (error == EADDRINUSE) {
        reason = "another program listens there";
        hint = "end it, or state another port";
    } else if (error == EACCES) {
        reason = "only the administrator may listen there";
        hint = "state a port from 1024 on, such as 1502";
    } else if (error == ECONNREFUSED) { // what libmodbus makes of a name without address
        reason = "the host is not known";
    } else if (error == EADDRNOTAVAIL) {
        reason = "the address is not one of this computer";
    }
    throw mxmodule::Failure(mxmodule::Origin::Output, targetText(target),
                            "cannot listen: " + reason, hint);
}

int listenAt(const TcpTarget& target)
{
    errno = 0;
    const ModbusContext context(
        modbus_new_tcp_pi(target.host.c_str(), std::to_string(target.port).c_str()));
    const int listener =
        context == nullptr ? -1 : modbus_tcp_pi_listen(context.get(), waitingConnections);
    if (listener < 0) {
        rejectListening(target, errno);
    }
    return listener;
}

std::uint16_t portAt(int listener, std::uint16_t wanted)
{
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0) {
        return wanted;
    }
    return ntohs(address.ss_family == AF_INET6
                     ? reinterpret_cast<const sockaddr_in6&>(address).sin6_port
                     : reinterpret_cast<const sockaddr_in&>(address).sin_port);
}

Frame frameOf(const Frame& request, std::uint8_t unit, const ServedAnswer& answer)
{
    Frame frame;
    appendWord(frame, static_cast<std::size_t>(wordAt(request, 0)) + answer.transactionChange);
    appendWord(frame, answer.protocol);
    appendWord(frame, answer.pdu.size() + 1 + answer.lengthChange);
    frame.push_back(static_cast<std::uint8_t>(unit + answer.unitChange));
    frame.insert(frame.end(), answer.pdu.begin(), answer.pdu.end());
    return frame;
}

} // namespace

TcpServer::TcpServer(const TcpTarget& wanted, ServedUnit& servedUnit)
    : target(wanted), served(servedUnit), listener(listenAt(wanted))
{
    target.port = portAt(listener, wanted.port);
}

TcpServer::~TcpServer()
{
    for (const Client& client : clients) {
        close(client.descriptor);
    }
    close(listener);
}

void TcpServer::serve(const StopSignal& stop)
{
    while (true) {
        std::vector<pollfd> waiting = {{stop.descriptor(), POLLIN, 0}, {listener, POLLIN, 0}};
        for (const Client& client : clients) {
            waiting.push_back({client.descriptor, POLLIN, 0});
        }
        if (poll(waiting.data(), waiting.size(), -1) < 0) {
            continue; // interrupted
        }
        if (waiting[0].revents != 0) {
            return;
        }
        std::size_t index = 2;
        for (auto client = clients.begin(); client != clients.end(); ++index) {
            if (waiting[index].revents == 0 || serveClient(*client, stop)) {
                ++client;
            } else {
                close(client->descriptor);
                client = clients.erase(client);
            }
        }
        if (waiting[1].revents != 0) {
            accept(stop);
        }
    }
}

void TcpServer::accept(const StopSignal& stop)
{
    const int descriptor = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (descriptor < 0) {
        stop.waitFor(pauseWithoutDescriptors);
        return;
    }
    if (clients.size() == mostClients) {
        close(descriptor);
        return;
    }
    const int on = 1;
    static_cast<void>(setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on));
    clients.push_back({descriptor, {}});
    served.connected();
}

// False: the connection is to be closed.
bool TcpServer::serveClient(Client& client, const StopSignal& stop)
{
    Frame bytes(prefixSize + mostLength);
    const ssize_t count = recv(client.descriptor, bytes.data(), bytes.size(), 0);
    if (count <= 0) {
        return count < 0 && (errno == EAGAIN || errno == EINTR);
    }
    client.received.insert(client.received.end(), bytes.begin(), bytes.begin() + count);
    return answerFrames(client, stop);
}

bool TcpServer::answerFrames(Client& client, const StopSignal& stop)
{
    while (client.received.size() >= prefixSize) {
        const std::size_t length = wordAt(client.received, 4);
        if (wordAt(client.received, 2) != 0 || length < leastLength || length > mostLength) {
            return false; // no Modbus TCP: where the next request begins is not known
        }
        const std::size_t size = prefixSize + length;
        if (client.received.size() < size) {
            return true;
        }
        if (!answerFrame(client, size, stop)) {
            return false;
        }
        client.received.erase(client.received.begin(),
                              client.received.begin() + static_cast<std::ptrdiff_t>(size));
    }
    return true;
}

bool TcpServer::answerFrame(const Client& client, std::size_t size, const StopSignal& stop)
{
    const Frame& request = client.received;
    if (request[prefixSize] != served.unit()) {
        return true;
    }
    const ServedAnswer answer = served.answerTo(
        {request.begin() + prefixSize + 1, request.begin() + static_cast<std::ptrdiff_t>(size)});
    return sendAnswer(ByteStream(client.descriptor), frameOf(request, served.unit(), answer),
                      answer, stop);
}

} // namespace mxonline
