#include "http/HttpServer.h"

#include "http/Refusal.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <utility>

#include <netinet/in.h>

namespace workbench {

namespace {

// The HTTP library keeps what it has read of a header in it; longer ones it refuses itself.
constexpr std::size_t memoryOfConnection = std::size_t{32} << 10;

// Those that are shut down still exist for a moment. At the limit the HTTP library would close new
// ones: they are accepted at the rate at which it takes them.
constexpr unsigned furtherConnections = 32;
constexpr std::chrono::milliseconds mostWaitOfAccepting{100};

constexpr std::chrono::milliseconds leastTick{5};
constexpr std::chrono::milliseconds mostTick{500};

// Often enough that a time is not exceeded by more than a tenth.
std::chrono::milliseconds tickOf(const Limits& limits)
{
    const auto shortest =
        std::min({limits.forHeader, limits.forBody, limits.forReading, limits.forNextHeader});
    return std::clamp(shortest / 10, leastTick, mostTick);
}

int descriptorOf(MHD_Connection* connection)
{
    const MHD_ConnectionInfo* const info =
        MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD);
    return info == nullptr ? -1 : info->connect_fd;
}

Response busyResponse()
{
    return refusal(503, "the server has too many requests to answer", "try again in a second");
}

Response malformedHeaderResponse()
{
    return refusal(400, "the header has bytes that are in no field, such as one with the value 0",
                   "write each field as \"Name: value\", with one blank, without other bytes");
}

} // namespace

HttpServer::HttpServer(unsigned short port, std::string token, Answer answerToUse,
                       const Limits& limitsToUse)
    : limits(limitsToUse),
      answer(std::move(answerToUse)),
      sockets(port),
      gatekeeper(std::move(token), sockets.port(), limits),
      connections(limits),
      daemon(startDaemon()),
      reads(limits.readers, limits.waitingRequests),
      calls(limits.workers, limits.waitingRequests)
{
    loop = std::make_unique<AcceptLoop>(
        sockets, [this](int descriptor) { accept(descriptor); },
        [this] { connections.shutDownOverdue(Connections::Clock::now()); }, tickOf(limits));
}

// The daemon calls until its end what the other members need.
HttpServer::~HttpServer()
{
    isEnding = true;
    loop.reset();
    reads.finish();
    calls.finish();
    daemon.reset();
}

MHD_Daemon* HttpServer::startDaemon()
{
    constexpr unsigned flags = static_cast<unsigned>(MHD_USE_EPOLL) |
                               static_cast<unsigned>(MHD_USE_INTERNAL_POLLING_THREAD) |
                               static_cast<unsigned>(MHD_ALLOW_SUSPEND_RESUME) |
                               static_cast<unsigned>(MHD_USE_NO_LISTEN_SOCKET);
    const auto mostConnections = static_cast<unsigned>(limits.connections) + furtherConnections;
    MHD_Daemon* const started = MHD_start_daemon(
        flags, 0, nullptr, nullptr, &continueRequest, this, MHD_OPTION_URI_LOG_CALLBACK,
        &beginRequest, this, MHD_OPTION_NOTIFY_COMPLETED, &endRequest, this,
        MHD_OPTION_NOTIFY_CONNECTION, &changeConnection, this, MHD_OPTION_CONNECTION_LIMIT,
        mostConnections, MHD_OPTION_CONNECTION_MEMORY_LIMIT, memoryOfConnection,
        MHD_OPTION_STRICT_FOR_CLIENT, 1, MHD_OPTION_END);
    if (started == nullptr) {
        throw std::runtime_error("The HTTP server cannot be started");
    }
    return started;
}

void HttpServer::accept(int descriptor)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    connections.awaitRoom(limits.connections + furtherConnections, mostWaitOfAccepting);
    const std::size_t before = connections.countOfAdded();
    // It closes the socket also if it fails.
    if (MHD_add_connection(daemon.get(), descriptor, reinterpret_cast<const sockaddr*>(&address),
                           sizeof address) == MHD_YES) {
        connections.awaitAdded(before, mostWaitOfAccepting);
    }
}

void HttpServer::changeConnection(void* server, MHD_Connection* connection, void** /*context*/,
                                  MHD_ConnectionNotificationCode change)
{
    Connections& open = static_cast<HttpServer*>(server)->connections;
    const int descriptor = descriptorOf(connection);
    if (change == MHD_CONNECTION_NOTIFY_CLOSED) {
        open.remove(descriptor); // still open here: its number is not yet that of another
        return;
    }
    try {
        open.add(descriptor, Connections::Clock::now());
    } catch (const std::bad_alloc&) {
        static_cast<void>(shutdown(descriptor, SHUT_RDWR)); // not watched
    }
}

void* HttpServer::beginRequest(void* server, const char* target, MHD_Connection* /*connection*/)
{
    try {
        return new Conversation(target, static_cast<HttpServer*>(server)->bytesOfBodies);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void HttpServer::endRequest(void* server, MHD_Connection* connection, void** conversation,
                            MHD_RequestTerminationCode /*reason*/)
{
    delete static_cast<Conversation*>(std::exchange(*conversation, nullptr));
    static_cast<HttpServer*>(server)->enter(connection, Phase::Idle);
}

MHD_Result HttpServer::continueRequest(void* server, MHD_Connection* connection,
                                       const char* /*url*/, const char* method, const char* version,
                                       const char* data, std::size_t* size, void** conversation)
{
    if (*conversation == nullptr) {
        return MHD_NO;
    }
    try {
        HttpServer& self = *static_cast<HttpServer*>(server);
        Conversation& request = *static_cast<Conversation*>(*conversation);
        if (!request.hasHead()) {
            request.readHead(connection, method, version);
            return self.judgeHead(connection, request);
        }
        return self.advance(connection, request, data, *size);
    } catch (const std::exception&) {
        return MHD_NO; // without memory; the connection is closed
    }
}

MHD_Result HttpServer::advance(MHD_Connection* connection, Conversation& conversation,
                               const char* data, std::size_t& size)
{
    if (size > 0) {
        if (!conversation.receive(data, std::exchange(size, 0), limits.allBodies)) {
            conversation.refuse(busyResponse());
        }
        return MHD_YES;
    }
    if (conversation.isAnswered()) {
        return send(connection, conversation);
    }
    // Its answer was not made: without memory, or at the end of the server.
    return conversation.isStarted() ? MHD_NO : startAnswer(connection, conversation);
}

// A refused request is answered after its body: a client that is still sending would see that the
// connection is lost, not the answer. A body that is too long is not waited for.
MHD_Result HttpServer::judgeHead(MHD_Connection* connection, Conversation& conversation)
{
    const auto refused = conversation.hasHiddenBytes() ? std::optional(malformedHeaderResponse())
                                                       : gatekeeper.refusalOf(conversation.head());
    if (refused) {
        conversation.refuse(*refused);
    }
    const bool hasLength = conversation.head().valuesOf("Transfer-Encoding").empty();
    if (refused && (!hasLength || conversation.bodySize() > limits.body)) {
        return send(connection, conversation);
    }
    enter(connection, Phase::Receiving);
    return MHD_YES;
}

// While the answer is made, the HTTP library does nothing with the connection.
MHD_Result HttpServer::startAnswer(MHD_Connection* connection, Conversation& conversation)
{
    std::function<void()> work = [this, connection, &conversation] {
        if (!isEnding) {
            conversation.answerBy(answer);
        }
        MHD_resume_connection(connection);
    };
    WorkQueue& queue = conversation.head().method == "GET" ? reads : calls;
    conversation.start();
    enter(connection, Phase::Answering);
    MHD_suspend_connection(connection);
    bool isAdded = false;
    try {
        isAdded = queue.add(std::move(work));
        if (!isAdded) {
            conversation.refuse(busyResponse());
        }
    } catch (const std::exception&) { // without memory; resumed, it is closed
    }
    if (!isAdded) {
        MHD_resume_connection(connection);
    }
    return MHD_YES;
}

MHD_Result HttpServer::send(MHD_Connection* connection, const Conversation& conversation)
{
    enter(connection, Phase::Sending);
    const SentResponse& response = conversation.response();
    return MHD_queue_response(connection, response.status, response.content.get());
}

void HttpServer::enter(MHD_Connection* connection, Phase phase)
{
    connections.enter(descriptorOf(connection), phase, Connections::Clock::now());
}

} // namespace workbench
