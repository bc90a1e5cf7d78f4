#include "http/RawConnection.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace workbenchtest {

namespace {

constexpr int mostMilliseconds = 5000;

} // namespace

std::string Received::field(const std::string& name) const
{
    const std::string beginning = "\r\n" + name + ": ";
    const std::size_t at = header.find(beginning);
    if (at == std::string::npos) {
        return {};
    }
    const std::size_t begin = at + beginning.size();
    return header.substr(begin, header.find("\r\n", begin) - begin);
}

RawConnection::RawConnection(unsigned short port)
    : descriptor(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::runtime_error("no connection");
    }
}

RawConnection::~RawConnection()
{
    close(descriptor);
}

bool RawConnection::send(const std::string& bytes) const
{
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            ::send(descriptor, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

void RawConnection::finishSending() const
{
    shutdown(descriptor, SHUT_WR);
}

bool RawConnection::readMore()
{
    pollfd one{descriptor, POLLIN, 0};
    if (poll(&one, 1, mostMilliseconds) <= 0) {
        throw std::runtime_error("nothing came for five seconds");
    }
    char bytes[4096];
    const ssize_t count = recv(descriptor, bytes, sizeof bytes, 0);
    received.append(bytes, count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}

Received RawConnection::receive()
{
    Received answer;
    std::size_t end = 0;
    while ((end = received.find("\r\n\r\n")) == std::string::npos) {
        if (!readMore()) {
            return answer;
        }
    }
    answer.header = received.substr(0, end + 2);
    answer.status = std::stoi(answer.header.substr(answer.header.find(' ') + 1));
    const std::string length = answer.field("Content-Length");
    const std::size_t size = length.empty() ? 0 : std::stoul(length);
    received.erase(0, end + 4);
    while (received.size() < size && readMore()) {
    }
    answer.body = received.substr(0, size);
    received.erase(0, size);
    return answer;
}

bool RawConnection::isEnded()
{
    try {
        while (readMore()) {
        }
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

Received answerTo(unsigned short port, const std::string& request)
{
    RawConnection connection(port);
    connection.send(request);
    return connection.receive();
}

} // namespace workbenchtest
