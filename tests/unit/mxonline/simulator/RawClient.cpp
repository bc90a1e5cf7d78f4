#include "simulator/RawClient.h"

#include <gtest/gtest.h>
#include <text/Hexadecimal.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <variant>

namespace {

int connectionTo(const mxonline::TcpTarget& target)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(target.port);
    inet_pton(AF_INET, target.host.c_str(), &address.sin_addr);
    const int connection = socket(AF_INET, SOCK_STREAM, 0);
    if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::runtime_error("no connection to the simulator");
    }
    return connection;
}

} // namespace

RawClient::RawClient(const mxonline::Target& target)
    : connection(connectionTo(std::get<mxonline::TcpTarget>(target)))
{}

RawClient::~RawClient()
{
    close(connection);
}

void RawClient::send(const std::string& bytes) const
{
    const std::vector<std::uint8_t> sent = text::fromHex(bytes).value();
    ASSERT_EQ(write(connection, sent.data(), sent.size()), static_cast<ssize_t>(sent.size()));
}

std::string RawClient::receive(std::size_t size, int milliseconds) const
{
    std::vector<std::uint8_t> bytes;
    while (bytes.size() < size) {
        pollfd one{connection, POLLIN, 0};
        std::uint8_t byte = 0;
        if (poll(&one, 1, milliseconds) <= 0 || read(connection, &byte, 1) <= 0) {
            break;
        }
        bytes.push_back(byte);
    }
    return text::hexOfBytes(bytes.data(), bytes.size(), " ");
}

bool RawClient::isClosed() const
{
    pollfd one{connection, POLLIN, 0};
    std::uint8_t byte = 0;
    return poll(&one, 1, 2000) > 0 && recv(connection, &byte, 1, MSG_PEEK) <= 0;
}

std::string RawClient::ask(const std::string& pdu) const
{
    const std::size_t size = text::fromHex(pdu)->size();
    send("12 34 00 00 00 " + text::hexOf(size + 1, 2) + " 07 " + pdu);
    const std::string header = receive(7);
    if (header.size() != 20 || header.substr(0, 14) != "12 34 00 00 00" ||
        header.substr(18) != "07") {
        return "frame " + header;
    }
    return receive(std::stoul(header.substr(15, 2), nullptr, 16) - 1);
}
