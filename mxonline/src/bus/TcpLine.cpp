#include "bus/TcpLine.h"

#include "bus/ByteStream.h"
#include "bus/LineError.h"
#include "bus/WordBytes.h"

#include <fmt/format.h>
#include <text/Counted.h>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <cerrno>
#include <utility>

namespace mxonline {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t headerSize = 7;        // transaction, protocol, length, unit
constexpr std::size_t mostAnswerBytes = 253; // of function and data
constexpr const char* networkHint =
    "compare the address, look at the supply and the network cable of the coupler";

LineError connectError(const TcpTarget& target, int error, std::uint32_t timeout)
{
    if (error == ECONNREFUSED) {
        return {"the connection was refused",
                fmt::format("nothing listens at port {} of {}: compare the port, or start the "
                            "coupler's Modbus server",
                            target.port, target.host)};
    }
    if (error == ETIMEDOUT || error == EINPROGRESS) {
        return {fmt::format("no connection within {} ms", timeout), networkHint};
    }
    return {fmt::format("no connection: {}", modbus_strerror(error)), networkHint};
}

// libmodbus reports an unknown host as a refused connection.
void requireHost(const TcpTarget& target)
{
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const int error = getaddrinfo(target.host.c_str(), nullptr, &wanted, &found);
    if (error != 0) {
        throw LineError(
            fmt::format("the host \"{}\" is not known: {}", target.host, gai_strerror(error)),
            "compare the name, or state the address, such as tcp:192.168.1.10");
    }
    freeaddrinfo(found);
}

} // namespace

TcpLine::TcpLine(TcpTarget coupler, std::uint8_t unitIdentifier, std::uint32_t milliseconds)
    : target(std::move(coupler)), unit(unitIdentifier), timeout(milliseconds)
{}

void TcpLine::open()
{
    requireHost(target);
    context.reset(modbus_new_tcp_pi(target.host.c_str(), std::to_string(target.port).c_str()));
    if (context == nullptr) {
        throw LineError(fmt::format("no connection: {}", modbus_strerror(errno)), networkHint);
    }
    setTimeout(*context, timeout);
    errno = 0;
    if (modbus_connect(context.get()) != 0) {
        const int error = errno;
        context.reset();
        throw connectError(target, error, timeout);
    }
    // A request is one small packet that waits for its answer.
    const int on = 1;
    static_cast<void>(
        setsockopt(modbus_get_socket(context.get()), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on));
}

Exchange TcpLine::exchange(const Bytes& request)
{
    requireNothingUnasked();
    if (context == nullptr) {
        open();
    }
    Bytes sent;
    appendWord(sent, ++transaction);
    appendWord(sent, 0);
    appendWord(sent, request.size() + 1);
    sent.push_back(unit);
    sent.insert(sent.end(), request.begin(), request.end());
    try {
        const Bytes received = receive(sent);
        Exchange done{{received.begin() + headerSize, received.end()}, sent, received};
        requireFunction(request, done);
        return done;
    } catch (const LineError&) {
        context.reset();
        throw;
    }
}

// An end of the connection between two requests is no failure: it is opened again.
void TcpLine::requireNothingUnasked()
{
    if (context == nullptr || !ByteStream(modbus_get_socket(context.get())).hasInput()) {
        return;
    }
    Bytes unasked(mostAnswerBytes + headerSize);
    const ssize_t count = recv(modbus_get_socket(context.get()), unasked.data(), unasked.size(), 0);
    context.reset();
    if (count > 0) {
        unasked.resize(static_cast<std::size_t>(count));
        throw LineError(text::counted(unasked.size(), "byte") + " came that no request asked for",
                        "the last answer may be too long, or sent twice", {}, unasked);
    }
}

Bytes TcpLine::receive(const Bytes& sent) const
{
    const ByteStream stream(modbus_get_socket(context.get()));
    const auto deadline = ByteStream::Clock::now() + std::chrono::milliseconds(timeout);
    Bytes received;
    StreamEnd end = stream.write(sent, deadline);
    if (end == StreamEnd::Complete) {
        end = stream.read(received, headerSize, deadline);
    }
    if (end == StreamEnd::Complete) {
        requireHeader(sent, received);
        end = stream.read(received, headerSize - 1 + wordAt(received, 4), deadline);
    }
    if (end == StreamEnd::Closed) {
        throw LineError("the connection was closed before the answer was complete",
                        "the coupler ends connections: see its diagnosis and its number of "
                        "connections, or look for a second master",
                        sent, received);
    }
    if (end == StreamEnd::TimedOut) {
        throw LineError(received.empty()
                            ? fmt::format("no answer within {} ms", timeout)
                            : "the answer ends after " + text::counted(received.size(), "byte"),
                        "compare \"unit\" and \"timeout\" with the coupler, look at its supply",
                        sent, received);
    }
    return received;
}

void TcpLine::requireHeader(const Bytes& sent, const Bytes& received) const
{
    const auto reject = [&](const std::string& text) {
        throw LineError(text,
                        "another device may answer at this address, or a gateway mixes up "
                        "requests: compare address and \"unit\"",
                        sent, received);
    };
    const std::size_t length = wordAt(received, 4);
    if (wordAt(received, 2) != 0) {
        reject(fmt::format("the answer is of protocol {}, expected 0: this is no Modbus TCP",
                           wordAt(received, 2)));
    }
    if (wordAt(received, 0) != transaction) {
        reject(fmt::format("the answer is of transaction {}, expected {}", wordAt(received, 0),
                           transaction));
    }
    if (received[6] != unit) {
        reject(fmt::format("the answer is of unit {}, expected {}", received[6], unit));
    }
    if (length < 3 || length > mostAnswerBytes + 1) {
        reject(fmt::format("the answer states a length of {} bytes, expected 3 to {}", length,
                           mostAnswerBytes + 1));
    }
}

} // namespace mxonline
