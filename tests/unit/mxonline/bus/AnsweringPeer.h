#pragma once

#include <mxonline/Target.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// What a peer does with a request.
struct Reaction
{
    Bytes answer = {};                    ///< Sent as it is; may be empty.
    bool closes = false;                  ///< The connection is closed after it.
    std::chrono::milliseconds pause = {}; ///< Before each byte of a serial line.
};

/// The other end of a connection, which answers each frame as a test wants. A thread of its own
/// serves one client after the other until the object is destroyed.
class AnsweringPeer
{
public:
    using React = std::function<Reaction(const Bytes& frame)>;

    /// Listens on loopback; on a serial line if `isSerial`: a pseudo terminal.
    explicit AnsweringPeer(React reaction, bool isSerial = false);
    ~AnsweringPeer();
    AnsweringPeer(const AnsweringPeer&) = delete;
    AnsweringPeer& operator=(const AnsweringPeer&) = delete;

    mxonline::Target target() const { return place; }

    /// Returns the frames received until now.
    std::vector<Bytes> frames() const;

private:
    void listenOnLoopback();
    void openTerminal();
    void serveClients();
    void serve(int client);
    bool waitFor(int descriptor, int milliseconds) const;
    bool readFrame(int client, Bytes& frame) const;

    React react;
    bool serial;
    int descriptor = -1;  // the listening socket, or the terminal's master
    int terminal = -1;    // its other end, kept open: closing it would end the line
    int stopPipe[2] = {}; // closed to stop
    mxonline::Target place;
    mutable std::mutex access;
    std::vector<Bytes> received;
    std::thread thread;
};
