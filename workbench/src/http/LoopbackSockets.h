#pragma once

#include <vector>

namespace workbench {

/// The sockets that listen on this computer's own addresses: 127.0.0.1 and, where it exists, ::1.
class LoopbackSockets
{
public:
    /// Port 0: one that the system chooses. Throws a `mxmodule::Failure` if the port is in use.
    explicit LoopbackSockets(unsigned short port);
    ~LoopbackSockets();
    LoopbackSockets(const LoopbackSockets&) = delete;
    LoopbackSockets& operator=(const LoopbackSockets&) = delete;

    unsigned short port() const { return usedPort; }
    const std::vector<int>& descriptors() const { return sockets; }

private:
    std::vector<int> sockets;
    unsigned short usedPort = 0;
};

} // namespace workbench
