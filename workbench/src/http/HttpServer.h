#pragma once

#include "http/AcceptLoop.h"
#include "http/Connections.h"
#include "http/Conversation.h"
#include "http/Gatekeeper.h"
#include "http/LoopbackSockets.h"
#include "http/WorkQueue.h"

#include <microhttpd.h>

#include <atomic>
#include <memory>
#include <string>

namespace workbench {

/// Ends the threads of the HTTP library and closes the connections.
struct StopDaemon
{
    void operator()(MHD_Daemon* daemon) const { MHD_stop_daemon(daemon); }
};

/// A server on this computer's own addresses. One thread accepts connections and watches their
/// times, one reads and sends, a few answer: a slow client or a long answer does not delay others.
/// The threads have the signal mask of the thread that makes the object.
class HttpServer
{
public:
    /// Port 0: one that the system chooses. Throws a `mxmodule::Failure` if it cannot listen.
    HttpServer(unsigned short port, std::string token, Answer answer, const Limits& limits = {});

    /// Waits for the answers that are being made; requests that wait get none.
    ~HttpServer();
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    unsigned short port() const { return sockets.port(); }

private:
    // What the HTTP library calls; `server` is a HttpServer.
    static void* beginRequest(void* server, const char* target, MHD_Connection* connection);
    static MHD_Result continueRequest(void* server, MHD_Connection* connection, const char* url,
                                      const char* method, const char* version, const char* data,
                                      std::size_t* size, void** conversation);
    static void endRequest(void* server, MHD_Connection* connection, void** conversation,
                           MHD_RequestTerminationCode reason);
    static void changeConnection(void* server, MHD_Connection* connection, void** context,
                                 MHD_ConnectionNotificationCode change);

    MHD_Daemon* startDaemon();
    void accept(int descriptor);
    MHD_Result advance(MHD_Connection* connection, Conversation& conversation, const char* data,
                       std::size_t& size);
    MHD_Result judgeHead(MHD_Connection* connection, Conversation& conversation);
    MHD_Result startAnswer(MHD_Connection* connection, Conversation& conversation);
    MHD_Result send(MHD_Connection* connection, const Conversation& conversation);
    void enter(MHD_Connection* connection, Phase phase);

    const Limits limits;
    const Answer answer;
    LoopbackSockets sockets;
    const Gatekeeper gatekeeper;
    Connections connections;
    std::atomic<std::size_t> bytesOfBodies = 0;
    std::atomic<bool> isEnding = false;
    std::unique_ptr<MHD_Daemon, StopDaemon> daemon;
    WorkQueue reads; // GET
    WorkQueue calls; // the others
    std::unique_ptr<AcceptLoop> loop;
};

} // namespace workbench
