#pragma once

#include "simulator/SimulatedLine.h"

#include <list>

namespace mxonline {

/// Modbus TCP for many clients in one thread. libmodbus opens the socket; the frames are read and
/// made here: libmodbus' replies know only one block of registers, and its requests end where an
/// unknown function begins.
class TcpServer : public SimulatedLine
{
public:
    /// Throws a `mxmodule::Failure` when it cannot listen.
    TcpServer(const TcpTarget& wanted, ServedUnit& servedUnit);
    ~TcpServer() override;

    Target address() const override { return target; }
    void serve(const StopSignal& stop) override;

private:
    struct Client
    {
        int descriptor;
        std::vector<std::uint8_t> received;
    };

    void accept(const StopSignal& stop);
    bool serveClient(Client& client, const StopSignal& stop);
    bool answerFrames(Client& client, const StopSignal& stop);
    bool answerFrame(const Client& client, std::size_t size, const StopSignal& stop);

    TcpTarget target;
    ServedUnit& served;
    int listener;
    std::list<Client> clients;
};

} // namespace mxonline
